#include "quor/list/core/CellTips.h"

#include <gtest/gtest.h>
#include <string>
#include <tuple>

using namespace quor::list;

namespace {

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
        {"fits to the pixel, anything else", kFormatHeaderImage, 0, 20, {60, 14}, false, 0},
        {"in the middle", kFormatCentre, 0, 20, {21, 14}, false, 19},
        {"begins before the view", kFormatLeft, -10, 20, {30, 14}, true, -7},
        {"the cell does, its text not", kFormatRight, -10, 20, {30, 14}, false, 17},
        {"ends behind the view", kFormatRight, 50, 20, {30, 14}, true, 77},
        {"the cell does, its text not", kFormatLeft, 50, 20, {30, 14}, false, 53},
        {"two lines in a row of one", kFormatLeft, 0, 20, {20, 28}, true, 3},
        {"two low ones", kFormatLeft, 0, 20, {20, 18}, false, 3},
        {"the last row, cut below its text", kFormatLeft, 0, 66, {20, 14}, false, 3},
        {"the last row, its text cut", kFormatLeft, 0, 67, {20, 14}, true, 3},
        {"a row above the view", kFormatLeft, 0, 19, {20, 14}, true, 3},
    };
    for (const Case& c : cases) {
        const RECT label{c.left, c.top, c.left + 60, c.top + 18};
        const TextCell cell{cellTextArea(label, c.format), {0, 20, 100, 80}, c.text, 14, c.format};
        EXPECT_EQ(isClipped(cell), c.clipped) << c.what;
        EXPECT_EQ(wholeText(cell).left, c.textLeft) << c.what;
    }
    EXPECT_FALSE(isClipped({{0, 0, 50, 18}, {0, 0, 50, 18}, {20, 30}, 30, kFormatLeft}))
        << "a line that is higher than its row";
}

// A screen left of the primary one.
TEST(CellTips, StandOnTheScreen) {
    const RECT screen{-200, 10, 0, 110};
    const SIZE tip{50, 20};
    const auto text = [](POINT at) { return std::to_string(at.x) + "," + std::to_string(at.y); };
    EXPECT_EQ(text(cornerOnScreen({-49, 91}, tip, screen)), "-50,90");
    EXPECT_EQ(text(cornerOnScreen({-100, 50}, {300, 200}, screen)), "-200,10") << "of a large one the beginning";
    EXPECT_EQ(text(cornerBesideCell({-60, 72, 0, 90}, -70, tip, screen)), "-70,90") << "below";
    EXPECT_EQ(text(cornerBesideCell({-60, 73, 0, 91}, -10, tip, screen)), "-50,53") << "above";
}

}  // namespace
