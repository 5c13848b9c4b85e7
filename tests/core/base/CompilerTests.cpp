// The overflow words of Compiler.h against wider numbers; of the others DisplayOrderTests.cpp says so.
#include "quor/platform/Base.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

__extension__ using Wide = __int128;

TEST(Compiler, OverflowIsSeenAtBothEnds) {
    constexpr long long least = std::numeric_limits<long long>::min(), most = std::numeric_limits<long long>::max();
    for (const long long a : {least, least + 1, -3LL, -1LL, 0LL, 1LL, 5LL, most - 1, most})
        for (const long long b : {least, least + 1, -3LL, -1LL, 0LL, 1LL, 5LL, most - 1, most}) {
            const Wide sum = Wide{a} + b, difference = Wide{a} - b;
            long long result = 0;
            const bool sumFits = !quor::addOverflows(a, b, result);
            EXPECT_EQ(sumFits, sum >= least && sum <= most) << a << " " << b;
            EXPECT_TRUE(!sumFits || result == sum) << a << " " << b;
            const bool differenceFits = !quor::subtractOverflows(a, b, result);
            EXPECT_EQ(differenceFits, difference >= least && difference <= most) << a << " " << b;
            EXPECT_TRUE(!differenceFits || result == difference) << a << " " << b;
        }
}

}  // namespace
