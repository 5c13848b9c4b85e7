#include "host/core/SortLevels.h"

#include <gtest/gtest.h>

#include <functional>

using namespace terminal;

namespace {

std::string picture(const SortLevels& levels) {
    std::string text;
    for (const SortLevel& level : levels) text += level.heading + (level.order < 0 ? "+" : "-");
    return text;
}

TEST(SortLevels, EachChoiceLeavesEveryColumnOnce) {
    struct {
        const char* what;
        std::function<void(SortLevels&)> choice;
        const char* left;
    } const cases[] = {
        {"another column keeps the order", [](SortLevels& l) { chooseColumn(l, 1, "D"); }, "A+D-C+"},
        {"the same column changes nothing", [](SortLevels& l) { chooseColumn(l, 1, "B"); }, "A+B-C+"},
        {"two levels change columns", [](SortLevels& l) { chooseColumn(l, 0, "B"); }, "B+A-C+"},
        {"behind the last one is the next", [](SortLevels& l) { chooseColumn(l, 9, "D"); }, "A+B-C+D+"},
        {"a column moves to a new level", [](SortLevels& l) { chooseColumn(l, 3, "A"); }, "B-C+A+"},
        {"order", [](SortLevels& l) { chooseOrder(l, 0, 1); }, "A-B-C+"},
        {"order of no level", [](SortLevels& l) { chooseOrder(l, 3, 1); }, "A+B-C+"},
        {"one goes, the rest move up", [](SortLevels& l) { removeLevel(l, 0); }, "B-C+"},
        {"no level goes", [](SortLevels& l) { removeLevel(l, 3); }, "A+B-C+"},
    };
    for (const auto& c : cases) {
        SortLevels levels{{"A", -1}, {"B", 1}, {"C", -1}};
        c.choice(levels);
        EXPECT_EQ(picture(levels), c.left) << c.what;
    }
}

}  // namespace
