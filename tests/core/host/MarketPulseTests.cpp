#include "host/core/MarketPulse.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

using namespace terminal;

namespace {

// Against a count over all instruments after each piece of news.
TEST(MarketPulse, FiguresFollowEveryPieceOfNews) {
    std::mt19937 random(7);
    const auto anyPrice = [&] { return random() % 8 == 0 ? kNoPrice : static_cast<Price>(random() % 5) * kPriceOne; };
    MarketPulse pulse;
    std::map<InstrumentId, std::pair<Price, Price>> model;
    EXPECT_FALSE(pulse.all() || pulse.leaders());
    for (int step = 0; step < 3'000; ++step) {
        Quote news;
        news.instrument = static_cast<InstrumentId>(random() % 80);
        news.fields = static_cast<std::uint16_t>((random() % 2 ? quoteLast : 0) | (random() % 2 ? quoteClose : 0));
        news.last = anyPrice();
        news.close = anyPrice();
        pulse.quote(news);
        auto& [last, close] = model.try_emplace(news.instrument, kNoPrice, kNoPrice).first->second;
        if (news.has(quoteLast)) last = news.last;
        if (news.has(quoteClose)) close = news.close;
        double sums[2] = {}, counts[2] = {};
        int advances = 0, declines = 0;
        for (const auto& [id, prices] : model) {
            if (prices.first == kNoPrice || prices.second == kNoPrice || prices.second == 0) continue;
            advances += prices.first > prices.second;
            declines += prices.first < prices.second;
            for (const int index : {0, 1}) {
                if (index == 1 && id >= MarketPulse::kLeaders) continue;
                sums[index] += static_cast<double>(prices.first) / static_cast<double>(prices.second);
                ++counts[index];
            }
        }
        ASSERT_EQ(pulse.advances(), advances) << step;
        ASSERT_EQ(pulse.declines(), declines) << step;
        for (const int index : {0, 1}) {
            const auto figure = index == 0 ? pulse.all() : pulse.leaders();
            ASSERT_EQ(figure.has_value(), counts[index] > 0) << step;
            if (!figure) continue;
            ASSERT_NEAR(figure->value, 1000 * sums[index] / counts[index], 1e-4) << step;
            ASSERT_NEAR(figure->change, figure->value / 10 - 100, 1e-9) << step;
        }
    }
}

}  // namespace
