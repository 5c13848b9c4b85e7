#include "src/list/core/SortTexts.h"

#include <gtest/gtest.h>

using namespace quor::list;

namespace {

TEST(SortLockText, Parses) {
    struct {
        const char* text;
        bool locked;
        int columnIndex;
        int order;
    } const cases[] = {
        {"True,3,-1", true, 3, -1},  {"True,0,1,9", true, 0, 1},    {"True,x,1", true, 0, 1},
        {"True,,4,1", true, 4, 1},   {"False,-1,0", false, -1, 0},  {"False,3,1", false, -1, 0},
        {"true,3,1", false, -1, 0},  {"True,3", false, -1, 0},      {"", false, -1, 0},
        {"True,-1,1", false, -1, 0}, {"True,4096,1", false, -1, 0}, {"True,4095,7", true, 4095, 7},
        {" True,3,1", false, -1, 0}, {",,,", false, -1, 0},         {"True,99999999999,1", false, -1, 0},
    };
    for (const auto& c : cases) {
        const SortLock lock = parseSortLock(c.text);
        EXPECT_EQ(lock.locked, c.locked) << c.text;
        EXPECT_EQ(lock.columnIndex, c.columnIndex) << c.text;
        EXPECT_EQ(lock.order, c.order) << c.text;
    }
}

TEST(SortLockText, Formats) {
    EXPECT_EQ(formatSortLock({true, 3, -1}), "True,3,-1");
    EXPECT_EQ(formatSortLock({false, 3, -1}), "False,-1,0");
}

std::string picture(const SortLevelsText& text) {
    std::string result;
    for (const SortLevelText& level : text.levels) {
        result += "[" + std::string(level.heading.GetString()) + " " + std::to_string(level.order) + "]";
    }
    return result + (!text.hasFlag ? " -" : text.active ? " on" : " off");
}

TEST(SortLevelsText, Parses) {
    const std::pair<const char*, const char*> cases[] = {
        {"Price->1,Qty->-1#1", "[Price 1][Qty -1] on"},
        {"Price->1,Qty->-1#0", "[Price 1][Qty -1] off"},
        {"Price->1", "[Price 1] -"},
        {" Last Price -> -1 ,,Qty->x#2", "[Last Price -1][Qty 0] off"},
        {"a-b->1#1x", "[a-b 1] on"},
        {"Price#1", " on"},
        {"->1#1", "[ 1] on"},
        {"Price->1#", "[Price 1] -"},
        {"P#0->1,Q->1#1", "[Q 1] on"},  // a heading with "#" is lost
        {"#1", " on"},
        {"", " -"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(picture(parseSortLevels(text)), expected) << text;
}

TEST(SortLevelsText, FormatsAndComesBack) {
    EXPECT_EQ(formatSortLevels({{"Price", 1}, {"Qty", -1}}, true), "Price->1,Qty->-1#1");
    EXPECT_EQ(formatSortLevels({{"Price", 1}}, false), "Price->1#0");
    EXPECT_EQ(formatSortLevels({}, true), "");
    EXPECT_EQ(picture(parseSortLevels(formatSortLevels({{"A b", -1}, {"C", 1}}, true))), "[A b -1][C 1] on");
}

}  // namespace
