// What the tests of the terminal's windowless half share: a clock that is set, a sink that remembers, files that go
// away.
#pragma once

#include "host/core/Feed.h"
#include "tests/support/TestFile.h"

#include <string>
#include <vector>

namespace terminal::test {

using ::test::TestFile;

struct SetClock final : Clock {
    std::int64_t now = 0;
    std::int64_t stepPerRead = 0;
    std::int64_t nowMicros() override { return now += stepPerRead; }
};

struct EventLog final : FeedSink {
    std::vector<Tick> ticks;
    void instrument(const Instrument& news) override { add(news); }
    void quote(const Quote& news) override { add(news); }
    void order(const OrderEvent& news) override { add(news); }
    void trade(const Trade& news) override { add(news); }
    void level(const BookLevel& news) override { add(news); }
    void tickEnd(MarketTime time) override {
        if (!m_open) ticks.emplace_back();
        ticks.back().time = time;
        m_open = false;
    }
    template <class Event>
    std::vector<Event> all() const {
        std::vector<Event> found;
        for (const Tick& tick : ticks) {
            for (const FeedEvent& event : tick.events) {
                if (const Event* one = std::get_if<Event>(&event)) found.push_back(*one);
            }
        }
        return found;
    }

private:
    void add(FeedEvent event) {
        if (!m_open) ticks.emplace_back();
        m_open = true;
        ticks.back().events.push_back(std::move(event));
    }
    bool m_open = false;
};

// A source of ticks without events at the given times, that then ends or fails.
class ListedTicks : public TickSource {
public:
    explicit ListedTicks(std::vector<MarketTime> times, Next last = Next::end)
        : m_times(std::move(times)), m_last(last), m_error(last == Next::failed ? "it broke" : "") {}
    Next next(Tick& tick) override {
        tick.events.clear();
        if (m_at == m_times.size()) return m_last;
        tick.time = m_times[m_at++];
        return Next::tick;
    }
    const std::string& error() const override { return m_error; }

private:
    std::vector<MarketTime> m_times;
    std::size_t m_at = 0;
    Next m_last;
    std::string m_error;
};

}  // namespace terminal::test
