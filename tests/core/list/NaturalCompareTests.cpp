#include "quor/list/core/NaturalCompare.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace quor::list;

namespace {

struct NaturalCase {
    const char* x;
    const char* y;
    int result;
    int mode = 0;
};

TEST(NaturalCompare, Cases) {
    const NaturalCase cases[] = {{"", "", 0},       {"", "a", -1},      {"a", "b", -1},        {"a", "a1", -1},
                                 {"a9", "a10", -1}, {"a2b", "a2c", -1}, {"a2b3", "a2b20", -1}, {"1", "a", -1},
                                 {"-1", "1", 1},    {"-5", "-10", -1}};
    const NaturalCase zeros[] = {{"a01", "a1", -1}, {"1", "001", 1}, {"01b", "1a", -1}, {"0", "00", 1}};
    const NaturalCase bytes[] = {{"\xE9", "a", -1},   {"B", "a", -1},   {"A", "a", -1},
                                 {"A", "a", 0, 1},    {"b", "A", 1, 1}, {"\xC9", "\xE9", -1, 1},
                                 {"Z10", "z9", 1, 1}, {"a", "b", 0, 2}, {"a", "b", 0, -1}};
    // Around the mark only the first digits count, and they end the comparison: equal to 2 and to 20.
    const NaturalCase mark[] = {{"2147483647", "2", 0},
                                {"2147483647", "20", 0},
                                {"2147483647", "3", -1},
                                {"9", "2147483647", 1},
                                {"2147483647b", "2147483647a", 0},
                                {"02147483647", "5", -1},
                                {"x2147483647", "x200", 0},
                                {"2147483646", "2", 1},
                                {"2147483648", "2", 1},
                                {"4294967296", "5", 1}};
    // Saturated values are equal: then the longer run is first.
    const NaturalCase saturated[] = {{"9223372036854775808", "9223372036854775807", 0},
                                     {"99999999999999999999", "9999999999999999999", -1}};
    const auto check = [](const auto& table) {
        for (const NaturalCase& c : table)
            EXPECT_EQ(naturalCompare(c.x, c.y, c.mode), c.result) << c.x << " | " << c.y << " | " << c.mode;
    };
    check(cases);
    check(zeros);  // equal values: more leading zeros first, whatever follows
    check(bytes);  // signed; modes but 0 and 1 compare nothing
    check(mark);
    check(saturated);
    EXPECT_EQ(naturalCompare(nullptr, "a"), -1);
    EXPECT_EQ(naturalCompare(nullptr, nullptr), 0);
}

// All texts of up to four characters of a small alphabet.
std::vector<std::string> shortTexts() {
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; texts[i].size() < 4; ++i) {
        for (const char c : {'0', '1', '9', 'a'}) texts.push_back(texts[i] + c);
    }
    return texts;
}

TEST(NaturalCompare, IsAntisymmetricAndTransitiveWithoutTheMark) {
    const std::vector<std::string> texts = shortTexts();
    const auto compare = [&](std::size_t x, std::size_t y) {
        return naturalCompare(texts[x].c_str(), texts[y].c_str());
    };
    for (std::size_t x = 0; x < texts.size(); ++x) {
        for (std::size_t y = 0; y < texts.size(); ++y) {
            ASSERT_EQ(compare(x, y), -compare(y, x)) << texts[x] << " | " << texts[y];
            for (std::size_t z = 0; std::max({x, y, z}) < 150 && compare(x, y) <= 0; ++z)
                ASSERT_TRUE(compare(y, z) > 0 || compare(x, z) <= 0)
                    << texts[x] << " | " << texts[y] << " | " << texts[z];
        }
    }
}

}  // namespace
