#include "quor/platform/tools/QuorTools.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(Tools, BoundedCopyTerminatesAndReportsTheWholeLength) {
    const struct {
        const char* source;
        std::size_t size;
        std::size_t result;
        const char* buffer;  // eight bytes afterwards; "." stands for NUL
    } cases[] = {
        {"abc", 8, 3, "abc.####"}, {"abc", 4, 3, "abc.####"}, {"abc", 3, 3, "ab.#####"},   {"abc", 1, 3, ".#######"},
        {"abc", 0, 3, "########"}, {"", 2, 0, ".#######"},    {nullptr, 2, 0, ".#######"},
    };
    for (const auto& one : cases) {
        char destination[9] = "########";
        EXPECT_EQ(strlcpy(destination, one.source, one.size), one.result);
        std::replace(destination, destination + 8, '\0', '.');
        EXPECT_STREQ(destination, one.buffer);
    }
}

TEST(Tools, NumbersSplitAtTheFirstPoint) {
    const struct {
        const char *value, *integerPart, *decimalPart;
    } cases[] = {{"-12", "-12", ""}, {".5", "", "5"}, {"5.", "5", ""}, {"", "", ""}, {"1.2.3", "1", "2.3"}};
    for (const auto& one : cases) {
        CString integerPart("left over");
        CString decimalPart("left over");
        getIntegerAndDecimal(one.value, integerPart, decimalPart);
        EXPECT_STREQ(integerPart, one.integerPart) << one.value;
        EXPECT_STREQ(decimalPart, one.decimalPart) << one.value;
    }
    CString both("3.25");
    CString rest;
    getIntegerAndDecimal(both, both, rest);
    EXPECT_STREQ(both, "3");
    EXPECT_STREQ(rest, "25");
}

TEST(Tools, DateComparisonComesMultipliedByTheOrder) {
    char older[] = "2012-06-21 09:30:00";
    char newer[] = "21-06-2012 09:30:00.001";
    char unreadable[] = "-";
    char other[] = "";
    EXPECT_EQ(CompareDateTime(older, newer, 1), -1);
    EXPECT_EQ(CompareDateTime(older, newer, -1), 1);
    EXPECT_EQ(CompareDateTime(unreadable, older, 1), -1);
    EXPECT_EQ(CompareDateTime(older, nullptr, 1), 1);
    EXPECT_EQ(CompareDateTime(unreadable, other, 1), 0);
}

}  // namespace
