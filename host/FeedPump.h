// Takes what the feed has, slice by slice, and hands it to the panes; ends each slice by closing the grids' batch.
//
// Called from the frame's timer: a slice ends after 8 ms or 10,000 ticks and the next one comes with the next timer, so
// the window stays alive however fast the feed is. Nothing here posts a message or waits.
#pragma once

#include "host/core/Feed.h"
#include "host/core/MarketPulse.h"
#include "host/core/Statistics.h"
#include "host/panes/OrdersPane.h"
#include "host/panes/PositionsPane.h"
#include "host/panes/TradesPane.h"
#include "host/panes/WatchPane.h"

#include <cstdint>

namespace terminal {

// The panes that a feed fills. All borrowed, none null while a pump works.
struct Panes {
    CWatchPane* watch = nullptr;
    COrdersPane* orders = nullptr;
    CTradesPane* trades = nullptr;
    CPositionsPane* positions = nullptr;
    MarketPulse* pulse = nullptr;  // may be null
};

class FeedPump final : private FeedSink {
public:
    // All borrowed; they outlive the pump.
    FeedPump(Feed& feed, Speed speed, Clock& clock, const Panes& panes);

    // One slice. Gives the feed's state after it; while paused, nothing is taken.
    FeedState slice();
    // Brings every cell up to date, whatever it takes, and closes the batch.
    void settle();

    // A pause begins settled: what came before it is shown, and stands in its order. Not from inside a slice.
    void pause(bool on);
    bool paused() const { return m_paused; }
    Speed speed() const { return m_speed; }
    // The source's time runs at the new speed from its next tick on.
    void setSpeed(Speed speed);

    double ticksPerSecond() { return m_rate.perSecond(m_clock.nowMicros()); }
    // How late the feed was when its last slice ended.
    std::int64_t behindMicros() const { return m_behind; }
    // The largest that was in each half of the time that the feed ran.
    HalfMaxima::Halves mostBehind() const { return m_mostBehind.halves(); }
    // Rows of the watch that still waited for their paint when a fifth of a second later the next news were shown: the
    // most in each half.
    HalfMaxima::Halves mostUnpainted() const { return m_mostUnpainted.halves(); }
    // Seconds in which the feed ran: from the first slice to the last tick's, or to now while it runs.
    double secondsRun() const;
    std::int64_t rows() const;

private:
    void instrument(const Instrument& news) override;
    void quote(const Quote& news) override;
    void order(const OrderEvent& news) override;
    void trade(const Trade& news) override;
    void level(const BookLevel& news) override;
    void tickEnd(MarketTime time) override;

    void closeBatch();
    // The clock is read once a tick.
    std::int64_t now() { return m_now ? m_now : m_now = m_clock.nowMicros(); }

    Feed& m_feed;
    Clock& m_clock;
    Panes m_panes;
    RateCounter m_rate;
    Speed m_speed;
    bool m_paused = false;
    std::int64_t m_now = 0;
    std::int64_t m_watchWritten = 0;
    std::int64_t m_firstSlice = -1;
    std::int64_t m_lastSlice = -1;
    std::int64_t m_behind = 0;
    HalfMaxima m_mostBehind, m_mostUnpainted;
};

}  // namespace terminal
