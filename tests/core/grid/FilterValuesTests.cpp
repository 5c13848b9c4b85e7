#include "quor/grid/core/FilterValues.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

using namespace quor::grid;

namespace {

std::string joined(const std::vector<std::string>& values, std::size_t longest) {
    std::size_t next = 0;
    return joinFilterValues(
        [&](CString& value) {
            if (next == values.size()) return false;
            value = values[next++].c_str();
            return true;
        },
        longest);
}

// The rule as it stands.
std::string plainlyJoined(const std::vector<std::string>& values, std::size_t longest) {
    std::string text;
    for (const std::string& value : values) {
        if (text.empty()) {
            text = value;
        } else if (text.find(value) == std::string::npos) {
            text += '~' + value;
        }
    }
    return text.substr(0, longest);
}

// Few letters and a small limit: values that contain each other, across "~" too, several batches, cuts anywhere.
TEST(FilterValues, AreJoinedAsThePlainLoopJoinsThem) {
    std::mt19937 random(7);
    const auto below = [&](unsigned limit) { return static_cast<std::size_t>(random() % limit); };
    std::size_t leftOut = 0;
    for (int round = 0; round < 5'000; ++round) {
        const std::string letters = std::string("ab~\xE9").substr(0, 2 + below(3));
        std::vector<std::string> values(below(40));
        for (std::string& value : values)
            for (std::size_t length = below(8); length > 0; --length)
                value += letters[below(static_cast<unsigned>(letters.size()))];
        const std::size_t longest = below(4) == 0 ? kLongestFilter : 1 + below(120);
        const std::string expected = plainlyJoined(values, longest);
        ASSERT_EQ(joined(values, longest), expected) << "round " << round << ", longest " << longest;
        leftOut += values.size() - static_cast<std::size_t>(std::count(expected.begin(), expected.end(), '~'));
    }
    EXPECT_GT(leftOut, 25'000u);
}

// As many as the longest filter takes, and no more are read than may still count.
TEST(FilterValues, EndWithTheLongestFilter) {
    std::size_t asked = 0;
    const std::string text = joinFilterValues([&](CString& value) {
        value.Format("%08u", static_cast<unsigned>(asked++));
        return asked < 10'000'000;
    });
    EXPECT_EQ(text.size(), kLongestFilter);
    EXPECT_EQ(text.substr(0, 18), "00000000~00000001~");
    EXPECT_LT(asked, 2 * kLongestFilter / 8);
}

}  // namespace
