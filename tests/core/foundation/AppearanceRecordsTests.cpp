#include "src/foundation/core/AppearanceRecords.h"

#include <gtest/gtest.h>

#include <string>

using namespace quor::foundation;

namespace {

// A record that frees its arrays.
struct Record : cCustomizedAppearanceSettings {
    Record() = default;
    Record(const Record&) = delete;
    ~Record() { freeKeywordArrays(); }
};

std::string hex(DWORD value) {
    CString text;
    text.Format("%X", static_cast<unsigned>(value));
    return text.GetString();
}

std::string looks(const cCustomizedAppearanceSettings& settings) {
    return hex(settings.crBackground) + " " + hex(settings.crText) + " " + settings.csFontName.GetString() + " " +
           settings.csFontSize.GetString();
}

std::string keywords(const cCustomizedAppearanceSettings& s) {
    if (!s.pKeywords) return "none";
    std::string text;
    for (INT_PTR i = 0; i < s.pKeywords->GetCount(); ++i) {
        text += std::string(s.pKeywords->GetAt(i)) + "=" + hex(s.pKeywordColors->GetAt(i)) + ";";
    }
    return text;
}

std::string userKeywords(const cCustomizedAppearanceSettings& s) {
    if (!s.pUserKeywords) return "none";
    std::string text;
    for (INT_PTR i = 0; i < s.pUserKeywords->GetCount(); ++i) {
        text += std::string(s.pUserKeywords->GetAt(i)) + "=" + hex(s.pUserTextColors->GetAt(i)) + "/" +
                hex(s.pUserBackColors->GetAt(i)) + ";";
    }
    return text;
}

TEST(AppearanceRecord, ReadsAs) {
    struct {
        const char* text;
        const char* looks;
        int column;
        const char* keywords;
    } const cases[] = {
        {"FF00,1a2B3c,Tahoma,10", "FF00 1A2B3C Tahoma 10", -1, "none"},
        {"0,FF,Arial,9,3,Buy,FF,sell,FF00,", "0 FF Arial 9", 3, "BUY=FF;SELL=FF00;"},
        {"0,FF,Arial,9,3", "0 FF Arial 9", 3, "none"},
        {"0,FF,Arial,9,-1,Buy,FF,", "0 FF Arial 9", -1, "none"},
        {"0,FF,Arial,9,3,Buy,FF,sell", "0 FF Arial 9", 3, ""},  // a cut text loses all keywords
        {"0,FF,Arial,9,3,a,b,FF,", "0 FF Arial 9", 3, ""},      // so does a keyword with a comma
        {"0,FF,Arial,9,3,Buy,word,", "0 FF Arial 9", 3, "BUY=0;"},
        {"", "0 FF00 MS Shell Dlg 2 8", -1, "none"},
        {"FF", "FF FF00 MS Shell Dlg 2 8", -1, "none"},
        {"Settings not found", "0 FF00 MS Shell Dlg 2 8", -1, "none"},
        {"0x10, +20,A,8", "10 20 A 8", -1, "none"},
        {"-1,123456789,A,8", "FFFFFFFF FFFFFFFF A 8", -1, "none"},
        {"word,+,A,8", "0 FF00 A 8", -1, "none"},  // no number: the colour stays
        {"0x,0xz,A,8", "0 0 A 8", -1, "none"},
        {"1,,2,A,8", "1 2 A 8", -1, "none"},  // an empty field is none
        {"1,2,A,8,word,K,1,", "1 2 A 8", -1, "none"},
    };
    for (const auto& row : cases) {
        Record settings;
        parseAppearanceRecord(row.text, settings);
        EXPECT_EQ(looks(settings), row.looks) << row.text;
        EXPECT_EQ(settings.iKeywordColumn, row.column) << row.text;
        EXPECT_EQ(keywords(settings), row.keywords) << row.text;
        EXPECT_EQ(userKeywords(settings), "none");
    }
}

TEST(UserAppearanceRecord, ReadsAs) {
    struct {
        const char* text;
        const char* keywords;
    } const cases[] = {
        {"0,FF,Arial,9", "none"},
        {"0,FF,Arial,9,Buy,FF,1,sell,FF00,2,", "BUY=FF/1;SELL=FF00/2;"},
        {"0,FF,Arial,9,Buy,FF,1,sell,FF00", "BUY=FF/1;"},  // what was read before the cut stays
        {"0,FF,Arial,9,Buy", ""},
    };
    for (const auto& row : cases) {
        Record settings;
        parseUserAppearanceRecord(row.text, settings);
        EXPECT_EQ(looks(settings), "0 FF Arial 9");
        EXPECT_EQ(userKeywords(settings), row.keywords) << row.text;
        EXPECT_EQ(settings.iKeywordColumn, -1);
    }
}

TEST(AppearanceRecords, ReadingAgainReplacesTheKeywords) {
    Record settings;
    for (const char* keyword : {"old", "new"}) {
        const std::string text = std::string("0,FF,Arial,9,");
        parseAppearanceRecord((text + "3," + keyword + ",1,").c_str(), settings);
        parseUserAppearanceRecord((text + keyword + ",1,2,").c_str(), settings);
    }
    EXPECT_EQ(keywords(settings), "NEW=1;");
    EXPECT_EQ(userKeywords(settings), "NEW=1/2;");
}

TEST(AppearanceRecords, WhatIsWrittenReadsBack) {
    const char* const record = "A0B0C0,FF,Arial,9,3,BUY,FF,SELL,FF00,";
    const char* const userRecord = "A0B0C0,FF,Arial,9,BUY,FF,1,SELL,FF00,2,";
    Record settings;
    parseAppearanceRecord(record, settings);
    parseUserAppearanceRecord(userRecord, settings);
    EXPECT_STREQ(formatAppearanceRecord(settings), "A0B0C0,FF,Arial,9");  // keywords are not enabled
    settings.bKeywordsEnabled = 1;
    EXPECT_STREQ(formatAppearanceRecord(settings), record);
    EXPECT_STREQ(formatUserAppearanceRecord(settings), userRecord);
    settings.iKeywordColumn = -2;
    EXPECT_STREQ(formatAppearanceRecord(settings), "A0B0C0,FF,Arial,9") << "no column";
    settings.pUserTextColors->RemoveAt(1);
    settings.pUserBackColors->RemoveAll();
    EXPECT_STREQ(formatUserAppearanceRecord(settings), "A0B0C0,FF,Arial,9,BUY,FF,FFFFFFFF,SELL,FF,FFFFFFFF,");
}

}  // namespace
