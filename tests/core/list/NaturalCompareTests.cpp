#include "quor/list/core/NaturalCompare.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

using namespace quor::list;

namespace {

TEST(NaturalCompare, Cases) {
    const auto expect = [](int result, int mode, std::initializer_list<std::pair<const char*, const char*>> cases) {
        for (const auto& [x, y] : cases) EXPECT_EQ(naturalCompare(x, y, mode), result) << x << " | " << y;
    };
    expect(-1, 0, {{"", "a"}, {"a", "a1"}, {"a9", "a10"}, {"a2b3", "a2b20"}, {"1", "a"}, {"1", "-1"}, {"-5", "-10"}});
    // Of equal values that with more leading zeros is first, whatever follows; saturated ones are equal.
    expect(-1, 0, {{"a01", "a1"}, {"001", "1"}, {"01b", "1a"}, {"00", "0"}});
    expect(-1, 0, {{"99999999999999999999", "9999999999999999999"}});
    expect(0, 0, {{"", ""}, {"9223372036854775808", "9223372036854775807"}});
    // Bytes are signed; modes but 0 and 1 compare nothing.
    expect(-1, 0, {{"\xE9", "a"}, {"B", "a"}});
    expect(-1, 1, {{"A", "b"}, {"\xC9", "\xE9"}, {"z9", "Z10"}});
    expect(0, 1, {{"A", "a"}});
    for (const int mode : {-1, 2}) expect(0, mode, {{"a", "b"}});
    // Around the mark only the first digits count, and they end the comparison: equal to 2 and to 20.
    expect(0, 0, {{"2147483647", "2"}, {"2147483647", "20"}, {"2147483647b", "2147483647a"}, {"x2147483647", "x200"}});
    expect(-1, 0, {{"2147483647", "3"}, {"02147483647", "5"}});
    expect(1, 0, {{"9", "2147483647"}, {"2147483646", "2"}, {"2147483648", "2"}});
    EXPECT_EQ(naturalCompare(nullptr, "a"), -1);
    EXPECT_EQ(naturalCompare(nullptr, nullptr), 0);
}

TEST(NaturalCompare, IsAntisymmetricAndTransitiveWithoutTheMark) {
    std::vector<std::string> texts{""};  // all of up to four characters of a small alphabet
    for (std::size_t i = 0; texts[i].size() < 4; ++i)
        for (const char c : {'0', '1', '9', 'a'}) texts.push_back(texts[i] + c);
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
