#include "quor/platform/tools/QuorTools.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(Tools, BoundedCopyTerminatesAndReportsTheWholeLength) {
    const struct {
        const char* source;
        std::size_t size, result;
        const char* buffer;  // eight bytes afterwards; "." stands for NUL
    } cases[] = {{"abc", 8, 3, "abc.####"}, {"abc", 4, 3, "abc.####"}, {"abc", 3, 3, "ab.#####"},
                 {"abc", 1, 3, ".#######"}, {"abc", 0, 3, "########"}, {nullptr, 2, 0, ".#######"}};
    for (const auto& one : cases) {
        char destination[9] = "########";
        EXPECT_EQ(strlcpy(destination, one.source, one.size), one.result);
        std::replace(destination, destination + 8, '\0', '.');
        EXPECT_STREQ(destination, one.buffer);
    }
}

TEST(Tools, NumbersSplitAtTheFirstPoint) {
    const char* const cases[][3] = {
        {"-12", "-12", ""}, {".5", "", "5"}, {"5.", "5", ""}, {"", "", ""}, {"1.2.3", "1", "2.3"}};
    for (const auto& [value, integerPart, decimalPart] : cases) {
        CString integer(value), decimal("left over");
        getIntegerAndDecimal(integer, integer, decimal);  // into itself
        EXPECT_STREQ(integer, integerPart) << value;
        EXPECT_STREQ(decimal, decimalPart) << value;
    }
}

TEST(Tools, DateComparisonComesMultipliedByTheOrder) {
    char older[] = "2012-06-21 09:30:00", newer[] = "21-06-2012 09:30:00.001", unreadable[] = "-", other[] = "";
    EXPECT_EQ(CompareDateTime(older, newer, 1), -1);
    EXPECT_EQ(CompareDateTime(older, newer, -1), 1);
    EXPECT_EQ(CompareDateTime(unreadable, older, 1), -1);
    EXPECT_EQ(CompareDateTime(older, nullptr, 1), 1);
    EXPECT_EQ(CompareDateTime(unreadable, other, 1), 0);
}

}  // namespace
