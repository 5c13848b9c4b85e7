#include "quor/list/core/CellTips.h"

#include <gtest/gtest.h>
#include <string>
#include <tuple>

using namespace quor::list;

namespace {

constexpr int kIcon = kFormatHeaderImage;

// Labels of 60 by 18 in a view of 0..100 by 20..80, a line of 14.
TEST(CellTips, AClippedTextIsOneOfWhichAPartIsNotSeen) {
    struct Case {
        const char* what;
        int format, left, top;
        SIZE text;
        bool clipped;
        LONG textLeft;
    };
    const Case cases[] = {
        {"fits to the pixel, left", kFormatLeft, 0, 20, {57, 14}, false, 3},
        {"a pixel too wide, left", kFormatLeft, 0, 20, {58, 14}, true, 3},
        {"fits to the pixel, right", kFormatRight, 0, 20, {57, 14}, false, 0},
        {"a pixel too wide, right", kFormatRight, 0, 20, {58, 14}, true, 0},
        {"at its right edge", kFormatRight, 0, 20, {20, 14}, false, 37},
        {"fits to the pixel, centred", kFormatCentre, 0, 20, {60, 14}, false, 0},
        {"in the middle", kFormatCentre, 0, 20, {21, 14}, false, 19},
        {"anything else is centred", kIcon, 0, 20, {20, 14}, false, 20},
        {"begins before the view", kFormatLeft, -10, 20, {30, 14}, true, -7},
        {"the cell does, its text not", kFormatRight, -10, 20, {30, 14}, false, 17},
        {"ends behind the view", kFormatRight, 50, 20, {30, 14}, true, 77},
        {"the cell does, its text not", kFormatLeft, 50, 20, {30, 14}, false, 53},
        {"two lines in a row of one", kFormatLeft, 0, 20, {20, 28}, true, 3},
        {"the last row, cut below its text", kFormatLeft, 0, 66, {20, 14}, false, 3},
        {"the last row, its text cut", kFormatLeft, 0, 67, {20, 14}, true, 3},
        {"a row above the view", kFormatLeft, 0, 19, {20, 14}, true, 3},
    };
    for (const Case& c : cases) {
        TextCell cell;
        cell.area = cellTextArea({c.left, c.top, c.left + 60, c.top + 18}, c.format);
        cell.view = {0, 20, 100, 80};
        cell.text = c.text;
        cell.lineHeight = 14;
        cell.format = c.format;
        EXPECT_EQ(isClipped(cell), c.clipped) << c.what;
        EXPECT_EQ(wholeText(cell).left, c.textLeft) << c.what;
        EXPECT_EQ(wholeText(cell).bottom, c.top + c.text.cy) << c.what;
    }
    TextCell high;
    high.area = {0, 0, 50, 18};
    high.view = {0, 0, 50, 18};
    high.text = {20, 30};
    high.lineHeight = 30;
    EXPECT_FALSE(isClipped(high)) << "a line that is higher than its row";
    high.area.bottom = high.view.bottom = 36;
    high.text.cy = 36;
    high.lineHeight = 18;
    EXPECT_FALSE(isClipped(high)) << "two lines in a row of two";
}

// A screen left of the primary one.
TEST(CellTips, StandOnTheScreen) {
    const RECT screen{-200, 10, 0, 110};
    const SIZE tip{50, 20};
    const auto text = [](POINT at) { return std::to_string(at.x) + "," + std::to_string(at.y); };
    const std::tuple<POINT, SIZE, const char*> inPlace[] = {
        {{-100, 50}, tip, "-100,50"}, {{-50, 90}, tip, "-50,90"},          {{-49, 91}, tip, "-50,90"},
        {{-201, 9}, tip, "-200,10"},  {{-100, 50}, {300, 200}, "-200,10"},
    };
    for (const auto& [corner, size, place] : inPlace) EXPECT_EQ(text(cornerOnScreen(corner, size, screen)), place);
    const std::tuple<RECT, int, SIZE, const char*> beside[] = {
        {{-180, 30, -120, 48}, -150, tip, "-150,48"},
        {{-60, 72, 0, 90}, -10, tip, "-50,90"},
        {{-60, 73, 0, 91}, -10, tip, "-50,53"},
        {{-60, 73, 0, 91}, -10, {50, 100}, "-50,10"},
    };
    for (const auto& [cell, mouse, size, place] : beside)
        EXPECT_EQ(text(cornerBesideCell(cell, mouse, size, screen)), place);
}

}  // namespace
