#include "quor/list/core/NaturalCompare.h"

#include <gtest/gtest.h>
#include <utility>

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

}  // namespace
