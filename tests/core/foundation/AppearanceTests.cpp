// Appearance settings: their stored texts, and who owns what after an assignment.
#include "quor/foundation/core/AppearanceRecords.h"
#include "quor/foundation/core/Globals.h"

#include <gtest/gtest.h>
#include <string>

using namespace quor::foundation;

namespace {

// Records free nothing themselves, so each test frees what it made.
struct Record : cCustomizedAppearanceSettings {
    using cCustomizedAppearanceSettings::operator=;
    Record() = default;
    Record(const Record&) = delete;
    ~Record() { freeKeywordArrays(); }
};

unsigned number(DWORD colour) { return static_cast<unsigned>(colour); }

std::string looks(const cCustomizedAppearanceSettings& s) {
    CString text;
    text.Format("%X %X %s %s", number(s.crBackground), number(s.crText), s.csFontName.GetString(),
                s.csFontSize.GetString());
    return text.GetString();
}

// Those of the list, and behind a line those of the user.
std::string keywords(const cCustomizedAppearanceSettings& s) {
    CString text(s.pKeywords ? "" : "none");
    for (INT_PTR i = 0; s.pKeywords && i < s.pKeywords->GetCount(); ++i)
        text.AppendFormat("%s=%X;", s.pKeywords->GetAt(i).GetString(), number(s.pKeywordColors->GetAt(i)));
    text += s.pUserKeywords ? "|" : "";
    for (INT_PTR i = 0; s.pUserKeywords && i < s.pUserKeywords->GetCount(); ++i)
        text.AppendFormat("%s=%X/%X;", s.pUserKeywords->GetAt(i).GetString(), number(s.pUserTextColors->GetAt(i)),
                          number(s.pUserBackColors->GetAt(i)));
    return text.GetString();
}

TEST(AppearanceRecords, ReadAs) {
    struct {
        const char *text, *looks;
        int column;
        const char* keywords;
    } const cases[] = {
        {"FF00,1a2B3c,Tahoma,10", "FF00 1A2B3C Tahoma 10", -1, "none"},
        {"0,FF,Arial,9,3,Buy,FF,sell,FF00,", "0 FF Arial 9", 3, "BUY=FF;SELL=FF00;"},
        {"0,FF,Arial,9,3,Buy,FF,sell", "0 FF Arial 9", 3, ""},  // a cut text loses all keywords
        {"0,FF,Arial,9,3,a,b,FF,", "0 FF Arial 9", 3, ""},      // so does a keyword with a comma
        {"0,FF,Arial,9,3,Buy,word,", "0 FF Arial 9", 3, "BUY=0;"},
        {"", "0 FF00 MS Shell Dlg 2 8", -1, "none"},
        {"-1,123456789,A,8", "FFFFFFFF FFFFFFFF A 8", -1, "none"},
        {"1,,2,A,8", "1 2 A 8", -1, "none"},  // an empty field is none
    };
    for (const auto& row : cases) {
        Record settings;
        parseAppearanceRecord(row.text, settings);
        EXPECT_EQ(looks(settings), row.looks) << row.text;
        EXPECT_EQ(settings.iKeywordColumn, row.column) << row.text;
        EXPECT_EQ(keywords(settings), row.keywords) << row.text;
    }
}

TEST(AppearanceRecords, WhatIsWrittenReadsBackInPlaceOfWhatWasThere) {
    const char* const record = "A0B0C0,FF,Arial,9,3,BUY,FF,SELL,FF00,";
    const char* const userRecord = "A0B0C0,FF,Arial,9,BUY,FF,1,SELL,FF00,2,";
    Record settings;
    parseAppearanceRecord("0,FF,Arial,9,3,old,1,", settings);
    parseUserAppearanceRecord("0,FF,Arial,9,old,1,2,", settings);
    parseAppearanceRecord(record, settings);
    parseUserAppearanceRecord(userRecord, settings);
    EXPECT_STREQ(formatAppearanceRecord(settings), "A0B0C0,FF,Arial,9");  // keywords are not enabled
    settings.bKeywordsEnabled = 1;
    EXPECT_STREQ(formatAppearanceRecord(settings), record);
    EXPECT_STREQ(formatUserAppearanceRecord(settings), userRecord);
    settings.pUserTextColors->RemoveAt(1);
    settings.pUserBackColors->RemoveAll();
    EXPECT_STREQ(formatUserAppearanceRecord(settings), "A0B0C0,FF,Arial,9,BUY,FF,FFFFFFFF,SELL,FF,FFFFFFFF,");
}

TEST(Appearance, AssignmentCopiesDeeplyKeepsWhatTheSourceLacksAndFreesNothingShared) {
    Record source, target;
    parseAppearanceRecord("0,FF,Arial,9,3,buy,1,", source);
    parseAppearanceRecord("0,FF,Arial,9,3,old,1,", target);
    cCustomizedAppearanceSettings sharing(target);
    target = source;
    source.pKeywords->SetAt(0, "SELL");
    EXPECT_EQ(keywords(target), "BUY=1;");
    EXPECT_EQ(target.pUserKeywords, nullptr);
    EXPECT_EQ(keywords(sharing), "OLD=1;");  // a read of freed memory if assignment freed it
    sharing.freeKeywordArrays();

    const CStringArray* kept = target.pKeywords;
    target = cCustomizedAppearanceSettings();
    EXPECT_EQ(target.pKeywords, kept);
    EXPECT_EQ(looks(target), "0 FF00 MS Shell Dlg 2 8");
    EXPECT_EQ(target.iKeywordColumn, -1);

    EXPECT_TRUE(Set_Apperance_setting(source));
    cCustomizedAppearanceSettings global = Get_Apperance_setting();
    EXPECT_NE(global.pKeywords, source.pKeywords) << "it is taken in deep";
    EXPECT_EQ(global.pKeywords, Get_Apperance_setting().pKeywords) << "and handed out shared";
    EXPECT_EQ(global.iKeywordColumn, 3);
    global.freeKeywordArrays();  // the test ends the global's arrays with itself
}

}  // namespace
