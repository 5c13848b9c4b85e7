// Brick texts and the shares of panes, without windows.
#include "quor/bars/core/BrickTexts.h"
#include "quor/bars/core/PaneShares.h"

#include <gtest/gtest.h>

using namespace quor::bars;

namespace {

using Ints = std::vector<int>;

TEST(PaneShares, EdgesLieAtTheNearestPixel) {
    const struct {
        Ints shares;
        int room;
        Ints sizes;
    } cases[] = {
        {{1, 1, 1}, 100, {33, 34, 33}},
        {{0, -1}, 100, {0, 100}},
        {{2, 1}, -4, {0, 0}},
        {{}, 10, {}},
        {{1 << 30, 1 << 30}, 1 << 30, {1 << 29, 1 << 29}},
    };
    for (const auto& c : cases) EXPECT_EQ(sharedOut(c.shares, c.room), c.sizes) << c.room;
}

TEST(BrickTexts, ACaptionIsSwappedAndTheValueStays) {
    const char* const cases[][5] = {
        {"", "", "LTP", " : ", "LTP : "},
        {"LTP : 10", "LTP", "Last", " : ", "Last : 10"},
        {"Other 10", "LTP", "Last", " : ", "Other 10"},
        {"10", "", "Last", "", "10"},
        {"A : 10 A", "A", "B", " : ", "B : 10 A"},
    };
    for (const auto& c : cases) EXPECT_EQ(recaptioned(c[0], c[1], c[2], c[3]), c[4]) << c[0];
    EXPECT_EQ(withoutSeparator("LTP : 10 : 11", " : "), "LTP1011");
}

// A stored text, "|" for its delimiter.
CString stored(CString text) {
    text.Replace('|', '\xA7');
    return text;
}

// What a text says, as one line.
CString told(const StoredBrick& brick) {
    CString text = brick.complete ? "complete" : "ends";
    if (brick.width) text.AppendFormat(" width %d", *brick.width);
    if (brick.color) text.AppendFormat(" color %x", static_cast<unsigned>(*brick.color));
    if (brick.font)
        text.AppendFormat(" font %d %d %s", brick.font->numbers[0], brick.font->numbers[12],
                          brick.font->face.GetString());
    return text;
}

TEST(BrickTexts, AStoredBrickSaysWhatItHas) {
    const char* const cases[][2] = {
        {"Settings not found", "complete"},
        {"120", "ends width 120"},
        {"-5|", "ends width 0"},
        {"120|255", "ends width 120 color ff"},
        {"|255|", "complete color ff"},
        {"a|b|", "complete width 0 color 0"},
        {"120|-1|18,0,0,0,400,0,0,0,0,0,0,0,32", "ends width 120 color ffffffff"},
        {"120|1|18,,,,,,,,,,,,32,", "complete width 120 color 1 font 18 32 "},
        {"1|2|18,0,0,0,400,0,0,0,0,0,0,0,32,Arial Narrow,7|x", "complete width 1 color 2 font 18 32 Arial Narrow"},
    };
    for (const auto& c : cases) EXPECT_EQ(told(parseBrick(stored(c[0]))), c[1]) << c[0];
    const BrickRecord brick{77, 0xFFFFFFFF, {{-13, 1, 2, 3, 600, 1, 1, 0, 2, 3, 4, 5, 32}, "Trebuchet MS"}};
    const CString text = formatBrick(brick);
    EXPECT_EQ(text, stored("77|-1|-13,1,2,3,600,1,1,0,2,3,4,5,32,Trebuchet MS"));
    const StoredBrick read = parseBrick(text);
    EXPECT_TRUE(read.complete && read.font->numbers == brick.font.numbers && read.font->face == brick.font.face);
    EXPECT_EQ(*read.color, brick.color);
}

}  // namespace
