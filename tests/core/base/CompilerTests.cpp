// The words of Compiler.h against their definitions, at the edges where a packed form goes wrong.
#include "quor/platform/Base.h"

#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <vector>

namespace {

constexpr int kLow = std::numeric_limits<int>::min(), kHigh = std::numeric_limits<int>::max();

TEST(Compiler, NumbersAboveALimitHaveTheirOwnBit) {
    const std::vector<std::int32_t> numbers{kLow, -1, 0,  1,  kHigh, 32767, 32768, -32769, 65536, 2,
                                            1,    0,  -1, -2, kLow,  kHigh, 5,     5,      5,     5};
    for (const std::int32_t limit : {kLow, -2, -1, 0, 1, 32767, kHigh - 1, kHigh})
        for (std::size_t start = 0; start + 16 <= numbers.size(); ++start) {
            unsigned bits = 0;
            for (unsigned i = 0; i < 16; ++i) bits |= (numbers[start + i] > limit ? 1U : 0U) << i;
            EXPECT_EQ(quor::bitsAbove16(numbers.data() + start, limit), bits) << limit;
            EXPECT_EQ(quor::bitsAbove4(numbers.data() + start, limit), bits & 15U) << limit;
        }
}

TEST(Compiler, SumsTakeWhatTheyAreToldAndNoMore) {
    std::vector<std::int32_t> numbers(23);
    std::iota(numbers.begin(), numbers.end(), -3);
    for (int count = 0; count <= 23; ++count)
        EXPECT_EQ(quor::sumOfNumbers(numbers.data(), count),
                  std::accumulate(numbers.begin(), numbers.begin() + count, 0));
    std::vector<std::uint8_t> bytes(64, 255), mask(64, 0);
    EXPECT_EQ(quor::sumOfBytes(bytes.data(), mask.data(), 64), 0);
    mask[0] = mask[15] = mask[63] = 255;
    EXPECT_EQ(quor::sumOfBytes(bytes.data(), mask.data(), 64), 765);
    EXPECT_EQ(quor::sumOfBytes(bytes.data(), bytes.data(), 64), 64 * 255);
}

TEST(Compiler, OverflowIsSeenAtBothEnds) {
    constexpr long long kLeast = std::numeric_limits<long long>::min(), kMost = std::numeric_limits<long long>::max();
    struct {
        long long a, b;
        bool added, subtracted;
    } const cases[] = {{kMost, 1, true, false},   {kMost, 0, false, false}, {kLeast, -1, true, false},
                       {kLeast, 1, false, true},  {kMost, -1, false, true}, {0, kLeast, false, true},
                       {-1, kLeast, true, false}, {-3, 5, false, false}};
    for (const auto& c : cases) {
        long long result = 0;
        EXPECT_EQ(quor::addOverflows(c.a, c.b, result), c.added) << c.a << " " << c.b;
        if (!c.added) {
            EXPECT_EQ(result, c.a + c.b);
        }
        EXPECT_EQ(quor::subtractOverflows(c.a, c.b, result), c.subtracted) << c.a << " " << c.b;
        if (!c.subtracted) {
            EXPECT_EQ(result, c.a - c.b);
        }
    }
}

}  // namespace
