// The stored texts of a list's columns: what they read as, and the bytes that are written.
#include "core/list/RandomColumnSet.h"
#include "quor/list/core/DealSlipText.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace quor::list;

namespace {

// "index,place,width" for each entry, and what it carries in brackets.
std::string picture(const std::vector<ProfileEntry>& entries) {
    std::string text;
    for (const ProfileEntry& e : entries) {
        text += (text.empty() ? "" : " ") + std::to_string(e.columnIndex) + "," + std::to_string(e.place) + "," +
                std::to_string(e.width);
        if (!e.name.IsEmpty()) text += "[" + std::string(e.name) + (e.isUserColumn ? "" : "]");
        if (e.isUserColumn) text += "|" + std::string(e.expression) + "|" + e.toolTip.GetString() + "]";
    }
    return text;
}

struct Texts {
    const char *text, *picture;
};

TEST(ColumnProfile, ReadsAs) {
    const Texts cases[] = {
        {"0,0,80,1,-1,0,2,1,60,Ratio#F#T", "0,0,80 1,-1,0 2,1,60[Ratio|F|T]"},
        {"", ""},
        {"0,0,80,1,1,6", "0,0,80 1,1,6"},
        {"0,0,80,2,1,60,Ratio#F", "0,0,80 2,1,60"},
        {"2,0,60,Ratio#F#,1,1,5", "2,0,60[Ratio|F|1]"},  // no tool tip: it eats the next entry
        {"2,0,60,Ratio##T,3,1,5,A#B#C", "2,0,60[Ratio|T,3,1,5,A|B#C]"},
        {"2,0,60,Ratio#F#T,x,1,1,70", "2,0,60[Ratio|F|T] 0,1,1"},
        {"2,0,60,Ratio#F#T#U,1,1,70", "2,0,60[Ratio|F|T#U] 1,1,70"},
        {"a,b,c", "0,0,0"},
        {"1,99999999999,-99999999999", "1,2147483647,-2147483648"},
        {"-5,0,1,1,0,1", "-5,0,1 1,0,1"},
        {" 1, +1,60px", "1,1,60"},
    };
    for (const Texts& c : cases) EXPECT_EQ(picture(parseColumnProfile(c.text, 2)), c.picture) << c.text;
}

TEST(Exchange, ReadsAs) {
    const Texts cases[] = {
        {"0,0,80,Symbol,1,-1,0,Price,CUSTOMCOLUMN,2,1,60,Ratio,Ratio#F#T,",
         "0,0,80[Symbol] 1,-1,0[Price] + 2,1,60[Ratio|F|T]"},
        {"0,0,80,Symbol,CUSTOMCOLUMN,", "0,0,80[Symbol] + "},
        {",CUSTOMCOLUMN,0,0,60,Ratio,Ratio#F#T,", " + 0,0,60[Ratio|F|T]"},
        {"0,0,80,Symbol,1,1", "0,0,80[Symbol]"},
        {"0,0,80,Symbol,CUSTOMCOLUMN,1,1,60,Ratio,Ratio#F", "0,0,80[Symbol] + "},
        {"CUSTOMCOLUMN,0,0,60,Old,New#F#T,", " + 0,0,60[New|F|T]"},
        {"CUSTOMCOLUMN,CUSTOMCOLUMN,0,60,h,N#F#T", " + 0,0,60[N|F|T]"},  // the second one is a number
        {"0,0,80,a,b,1,1,60,Price", "0,0,80[a] 0,1,1[60]"},              // a comma in a heading
    };
    for (const Texts& c : cases) {
        const ExchangeProfile profile = parseExchangeProfile(c.text);
        EXPECT_EQ(picture(profile.builtIn) + (profile.hasMarker ? " + " : "") + picture(profile.user), c.picture);
    }
}

TEST(ColumnProfileText, WritersMakeTheDocumentedBytes) {
    std::vector<ProfileEntry> set = parseColumnProfile("0,0,80,1,-1,0,2,1,60,Ratio#F#T", 2);
    EXPECT_STREQ(formatColumnProfile(set), "0,0,80,1,-1,0,2,1,60,Ratio#F#T");
    set[0].name = "Symbol";
    set[1].name = "Price";
    EXPECT_STREQ(formatExchangeProfile(set), "0,0,80,Symbol,1,-1,0,Price,CUSTOMCOLUMN,2,1,60,Ratio,Ratio#F#T,");
    EXPECT_STREQ(formatExchangeProfile({set[2]}), ",CUSTOMCOLUMN,2,1,60,Ratio,Ratio#F#T,");
    EXPECT_STREQ(formatDealSlipProfile(set), "0,0,1,-1,2,1,Ratio#F#T");
}

// Of the exchange form RandomSetsLookTheSameInAListWithOtherIndices says so.
TEST(ColumnProfileText, RandomSetsComeBack) {
    RandomColumnSets random;
    for (long round = random.rounds(); round > 0; --round) {
        std::vector<ProfileEntry> set = random.next();
        const CString text = formatColumnProfile(set);
        const auto user = std::ranges::find_if(set, &ProfileEntry::isUserColumn);
        for (auto entry = set.begin(); entry != user; ++entry) entry->name.Empty();
        ASSERT_EQ(picture(parseColumnProfile(text, static_cast<int>(user - set.begin()))), picture(set));
    }
}

TEST(FactoryProfile, ReadsPlacesAndLetsAMissingNumberStand) {
    struct {
        const char* text;
        std::vector<int> columns, widths;
    } const cases[] = {
        {"2,0,70,0,1,50,1,-1,0", {2, 0}, {70, 50}},
        {"0", {}, {}},
        {"2,0,70,1", {1}, {70}},
        {"2,0,70,1,1", {2, 1}, {70, 70}},
        {"1,2,60", {0, 0, 1}, {0, 0, 60}},
        {"0,0,80,4096,1,90", {}, {}},
        {"0,0,80,1,-2,90", {}, {}},
    };
    for (const auto& row : cases) {
        const FactoryColumns read = parseFactoryProfile(row.text);
        EXPECT_EQ(read.columns, row.columns) << row.text;
        EXPECT_EQ(read.widths, row.widths) << row.text;
    }
}

TEST(DealSlipText, ReadsStrictPairs) {
    const std::pair<const char*, std::vector<int>> cases[] = {
        {"0,1,1,-1,2,0", {1, -1, 0}},
        {"2,0", {-1, -1, 0}},
        {"0,0,1,1,Ratio#F#T,2,2", {2, 1}},  // the user part reads as index 0, and column 2 shifts
        {"0,0,1,1,Ratio#F#T,2,3,4", {2, 1, -1, 4}},
    };
    for (const auto& [text, places] : cases) EXPECT_EQ(parseDealSlipProfile(text), places) << text;
    for (const char* none : {"", "0", "0,4096", "4096,0", "-1,0", "0,-2"})
        EXPECT_FALSE(parseDealSlipProfile(none)) << none;
}

}  // namespace
