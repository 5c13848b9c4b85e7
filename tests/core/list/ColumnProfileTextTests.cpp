#include "src/list/core/ColumnProfileText.h"

#include <gtest/gtest.h>

#include "ColumnTextTools.h"
#include "src/list/core/ColumnSetPlan.h"
#include "src/list/core/DealSlipText.h"

using namespace quor::list;

namespace {

using column_texts::picture;

struct TextCase {
    const char* name;
    const char* text;
    const char* picture;
};

std::string nameOf(const testing::TestParamInfo<TextCase>& row) { return row.param.name; }

class ColumnProfile : public testing::TestWithParam<TextCase> {};

TEST_P(ColumnProfile, ReadsAs) { EXPECT_EQ(picture(parseColumnProfile(GetParam().text, 2)), GetParam().picture); }

INSTANTIATE_TEST_SUITE_P(
    TwoBuiltInColumns, ColumnProfile,
    testing::Values(TextCase{"Whole", "0,0,80,1,-1,0,2,1,60,Ratio#F#T", "0,0,80 1,-1,0 2,1,60[Ratio|F|T]"},
                    TextCase{"Empty", "", ""}, TextCase{"OnlyCommas", ",,,", ""},
                    TextCase{"CutAfterTheIndex", "0,0,80,1", "0,0,80"},
                    TextCase{"CutAfterThePlace", "0,0,80,1,1", "0,0,80"},
                    TextCase{"CutInTheLastNumber", "0,0,80,1,1,6", "0,0,80 1,1,6"},
                    TextCase{"UserPartMissing", "0,0,80,2,1,60", "0,0,80 2,1,60"},
                    TextCase{"UserPartWithoutToolTip", "0,0,80,2,1,60,Ratio#F", "0,0,80 2,1,60"},
                    TextCase{"UserPartWithoutToolTipEatsTheNextEntry", "2,0,60,Ratio#F#,1,1,5", "2,0,60[Ratio|F|1]"},
                    TextCase{"EmptyExpressionLetsTheToolTipShift", "2,0,60,Ratio##T,3,1,5,A#B#C",
                             "2,0,60[Ratio|T,3,1,5,A|B#C]"},
                    TextCase{"CommaInAUserNameBelongsToTheName", "2,0,60,a,b#F#T", "2,0,60[a,b|F|T]"},
                    TextCase{"CommaInAToolTipStartsAnEntry", "2,0,60,Ratio#F#T,x,1,1,70", "2,0,60[Ratio|F|T] 0,1,1"},
                    TextCase{"HashInAToolTipStays", "2,0,60,Ratio#F#T#U,1,1,70", "2,0,60[Ratio|F|T#U] 1,1,70"},
                    TextCase{"WordsAreZero", "a,b,c", "0,0,0"}, TextCase{"EmptyFieldsShift", "0,,0,,80", "0,0,80"},
                    TextCase{"HostileNumbers", "1,99999999999,-99999999999", "1,2147483647,-2147483648"},
                    TextCase{"NegativeIndexHasNoUserPart", "-5,0,1,1,0,1", "-5,0,1 1,0,1"},
                    TextCase{"BlanksAndSigns", " 1, +1,60px", "1,1,60"}),
    nameOf);

class Exchange : public testing::TestWithParam<TextCase> {};

TEST_P(Exchange, ReadsAs) {
    const ExchangeProfile profile = parseExchangeProfile(GetParam().text);
    EXPECT_EQ(picture(profile.builtIn) + (profile.hasMarker ? " + " : "") + picture(profile.user), GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Exchange,
    testing::Values(TextCase{"Whole", "0,0,80,Symbol,1,-1,0,Price,CUSTOMCOLUMN,2,1,60,Ratio,Ratio#F#T,",
                             "0,0,80[Symbol] 1,-1,0[Price] + 2,1,60[Ratio|F|T]"},
                    TextCase{"NoUserColumns", "0,0,80,Symbol,", "0,0,80[Symbol]"},
                    TextCase{"MarkerWithNothingBehind", "0,0,80,Symbol,CUSTOMCOLUMN,", "0,0,80[Symbol] + "},
                    TextCase{"MarkerFirst", ",CUSTOMCOLUMN,0,0,60,Ratio,Ratio#F#T,", " + 0,0,60[Ratio|F|T]"},
                    TextCase{"HeadingCutOff", "0,0,80", "0,0,80"},
                    TextCase{"CutInsideATriple", "0,0,80,Symbol,1,1", "0,0,80[Symbol]"},
                    TextCase{"UserPartCutOff", "0,0,80,Symbol,CUSTOMCOLUMN,1,1,60,Ratio,Ratio#F", "0,0,80[Symbol] + "},
                    TextCase{"NameDiffersFromTheHeading", "CUSTOMCOLUMN,0,0,60,Old,New#F#T,", " + 0,0,60[New|F|T]"},
                    TextCase{"SecondMarkerIsANumber", "CUSTOMCOLUMN,CUSTOMCOLUMN,0,60,h,N#F#T", " + 0,0,60[N|F|T]"},
                    TextCase{"CommaInAHeadingShifts", "0,0,80,a,b,1,1,60,Price", "0,0,80[a] 0,1,1[60]"}),
    nameOf);

TEST(ColumnProfileText, RandomSetsComeBackThroughBothForms) {
    std::mt19937 random(20251121);
    for (int round = 0; round < 2000; ++round) {
        const std::vector<ProfileEntry> set = column_texts::randomColumnSet(random);
        int builtIn = 0;
        std::vector<ProfileEntry> nameless = set;
        for (ProfileEntry& entry : nameless) {
            if (entry.isUserColumn) continue;
            entry.name.Empty();
            ++builtIn;
        }
        ASSERT_EQ(picture(parseColumnProfile(formatColumnProfile(set), builtIn)), picture(nameless)) << round;
        ExchangeProfile exchange = parseExchangeProfile(formatExchangeProfile(set));
        EXPECT_EQ(exchange.hasMarker, !exchange.user.empty());
        exchange.builtIn.insert(exchange.builtIn.end(), exchange.user.begin(), exchange.user.end());
        ASSERT_EQ(picture(exchange.builtIn), picture(set)) << round;
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
    EXPECT_STREQ(formatColumnProfile({}), "");
    EXPECT_STREQ(formatExchangeProfile({}), "");
}

// What an index beyond the cap does reaches the plan through the text too, cut or not.
TEST(ColumnProfileText, AnIndexBeyondTheCapMakesTheTextUnfit) {
    for (const char* text : {"0,1,50,1,0,50,4096,2,60,Far#F#T", "0,1,50,1,0,50,4096,2,60", "0,1,50,1,0,50,1,4096,5"}) {
        ColumnSetInput input;
        input.widths = {80, 90};
        input.hasProfile = true;
        input.profile = parseColumnProfile(text, 2);
        EXPECT_EQ(planColumnSet(input).widths, (std::vector<int>{80, 90})) << text;
    }
}

TEST(FactoryProfile, ReadsPlacesAndLetsAMissingNumberStand) {
    struct {
        const char* text;
        std::vector<int> columns, widths;
    } const cases[] = {
        {"2,0,70,0,1,50,1,-1,0", {2, 0}, {70, 50}},
        {"", {}, {}},
        {"0", {}, {}},
        {"0,-1,5,1,-1,5", {}, {}},
        {"2,0,70,1", {1}, {70}},
        {"2,0,70,1,1", {2, 1}, {70, 70}},
        {"1,2,60", {0, 0, 1}, {0, 0, 60}},
        {"0,0,80,1,0,90", {1}, {90}},
        {"0,0,80,4096,1,90", {}, {}},
        {"0,0,80,1,4096,90", {}, {}},
        {"0,0,80,1,-2,90", {}, {}},
    };
    for (const auto& row : cases) {
        const FactoryColumns read = parseFactoryProfile(row.text);
        EXPECT_EQ(read.columns, row.columns) << row.text;
        EXPECT_EQ(read.widths, row.widths) << row.text;
    }
}

TEST(DealSlipText, ReadsStrictPairs) {
    using Places = std::optional<std::vector<int>>;
    struct {
        const char* text;
        Places places;
    } const cases[] = {
        {"0,1,1,-1,2,0", Places(std::vector<int>{1, -1, 0})},
        {"2,0", Places(std::vector<int>{-1, -1, 0})},
        {"", std::nullopt},
        {"0", std::nullopt},
        {"0,1,1", Places(std::vector<int>{1})},
        // The user part of column 1 reads as index 0, and column 2 shifts.
        {"0,0,1,1,Ratio#F#T,2,2", Places(std::vector<int>{2, 1})},
        {"0,0,1,1,Ratio#F#T,2,3,4", Places(std::vector<int>{2, 1, -1, 4})},
        {"0,4096", std::nullopt},
        {"4096,0", std::nullopt},
        {"-1,0", std::nullopt},
        {"0,-2", std::nullopt},
    };
    for (const auto& row : cases) EXPECT_EQ(parseDealSlipProfile(row.text), row.places) << row.text;
}

TEST(DealSlipText, NamesCarryTheirPrefixInTheStoreOnly) {
    EXPECT_STREQ(formatProfileNames({"day", "dealslip_x"}), "dealslip_day,dealslip_dealslip_x");
    const std::vector<CString> names = parseProfileNames("dealslip_day,,bare,dealslip_dealslip_x,DEALSLIP_y,");
    EXPECT_EQ(names, (std::vector<CString>{"day", "bare", "dealslip_x", "DEALSLIP_y"}));
    EXPECT_STREQ(withoutDealSlipPrefix("dealslip_"), "");
    EXPECT_STREQ(formatProfileNames({}), "");
}

}  // namespace
