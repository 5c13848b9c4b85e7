#include "quor/grid/core/CellPainting.h"

#include <gtest/gtest.h>

using namespace quor::grid;

namespace {

constexpr COLORREF even = 0x111111, odd = 0x222222, listText = 0x333333, listBack = 0x444444;
constexpr COLORREF hostText = 0x555555, hostBack = 0x666666;

struct Weights {
    const char* fact;
    bool alternate, checked, grey, host;
    int visual;
    COLORREF text, background;
};

const Weights weightTable[] = {
    {"nothing said: the list's own", false, false, false, false, 0, listText, listBack},
    {"stripes outweigh the list", true, false, false, false, 2, 0, even},
    {"odd stripes", true, false, false, false, 3, 0, odd},
    {"the host outweighs stripes", true, false, false, true, 2, hostText, hostBack},
    {"a check outweighs the host", false, true, false, true, 0, hostText, kColorCheckedRow},
    {"grey outweighs all", true, true, true, true, 0, hostText, kColorGreyedOut},
};

TEST(CellPainting, ColoursArriveInTheOrderOfTheirWeight) {
    for (const Weights& row : weightTable) {
        SCOPED_TRACE(row.fact);
        const RowLook look{row.alternate, even, odd, row.grey, row.checked, {listText, listBack}};
        RowColors colors = startingColors(look, row.visual);
        if (row.grey) {
            EXPECT_EQ(colors.background, kColorGreyedOut) << "before the host is asked";
        }
        if (row.host) colors = {hostText, hostBack};
        colors = finalColors(look, colors);
        EXPECT_EQ(colors.text, row.text);
        EXPECT_EQ(colors.background, row.background);
    }
}

TEST(CellPainting, OnlyPlainDecimalsAreGrouped) {
    const struct {
        int type;
        const char* text;
        bool grouped;
    } table[] = {{2, "1234567.5", true}, {2, "-12", true}, {2, "12a", false},     {2, "1,234", false},
                 {2, "1e5", false},      {2, "", false},   {1, "1234567", false}, {5, "1234567.5", false}};
    for (const auto& row : table) EXPECT_EQ(wantsGrouping(row.type, row.text), row.grouped) << row.type << row.text;
}

TEST(CellPainting, RowsAreAsHighAsTheirFontAsksPerLine) {
    EXPECT_EQ(rowHeightFor(-11, 1), 15);
    EXPECT_EQ(rowHeightFor(11, 2), 30);
    EXPECT_EQ(rowHeightFor(0, 1), 4);
}

}  // namespace
