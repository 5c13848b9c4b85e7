#include "host/core/MarketPulse.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

using namespace terminal;

// Against a count over all instruments after each piece of news.
TEST(MarketPulse, FiguresFollowEveryPieceOfNews) {
    std::mt19937 random(7);
    const auto anyPrice = [&] { return random() % 8 == 0 ? kNoPrice : static_cast<Price>(random() % 5) * kPriceOne; };
    MarketPulse pulse;
    std::map<InstrumentId, std::pair<Price, Price>> model;
    for (int step = 0; step < 3'000; ++step) {
        Quote news{.instrument = static_cast<InstrumentId>(random() % 80), .last = anyPrice(), .close = anyPrice()};
        news.fields = static_cast<std::uint16_t>((random() % 2 ? quoteLast : 0) | (random() % 2 ? quoteClose : 0));
        pulse.quote(news);
        auto& [last, close] = model.try_emplace(news.instrument, kNoPrice, kNoPrice).first->second;
        if (news.has(quoteLast)) last = news.last;
        if (news.has(quoteClose)) close = news.close;
        double sum = 0, sumOfLeaders = 0;
        int count = 0, leaders = 0, advances = 0, declines = 0;
        for (const auto& [id, prices] : model) {
            if (prices.first == kNoPrice || prices.second == kNoPrice || prices.second == 0) continue;
            const double relative = static_cast<double>(prices.first) / static_cast<double>(prices.second);
            advances += relative > 1;
            declines += relative < 1;
            sum += relative, ++count;
            if (id < MarketPulse::kLeaders) sumOfLeaders += relative, ++leaders;
        }
        ASSERT_TRUE(pulse.advances() == advances && pulse.declines() == declines) << step;
        const auto all = pulse.all(), few = pulse.leaders();
        ASSERT_TRUE(all.has_value() == (count > 0) && few.has_value() == (leaders > 0)) << step;
        ASSERT_NEAR(all ? all->value : 0, count ? 1000 * sum / count : 0, 1e-4) << step;
        ASSERT_NEAR(few ? few->change : 0, leaders ? 100 * sumOfLeaders / leaders - 100 : 0, 1e-5) << step;
    }
}
