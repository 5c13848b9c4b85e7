#include "host/FeedPump.h"

#include "quor/grid/FilterListCtrl.h"

namespace terminal {

namespace {
// The watch's cells change faster than anyone reads: five times a second is plenty.
constexpr std::int64_t kWatchPeriodMicros = 200'000;
}  // namespace

FeedPump::FeedPump(Feed& feed, Speed speed, Clock& clock, const Panes& panes)
    : m_feed(feed), m_clock(clock), m_panes(panes), m_speed(speed) {}

FeedState FeedPump::slice() {
    if (m_paused) return m_feed.state();
    const std::int64_t begin = m_clock.nowMicros();
    if (m_firstSlice < 0) m_firstSlice = begin;
    m_panes.orders->grid().beginSlice();
    m_panes.trades->grid().beginSlice();
    m_panes.positions->grid().beginSlice();
    const bool running = m_feed.state() == FeedState::running;
    const Slice slice = m_feed.take(m_clock, SliceLimit{}, *this);
    if (running) m_lastSlice = m_clock.nowMicros();
    m_behind = slice.more ? m_feed.behindMicros(m_lastSlice) : 0;
    if (running) m_mostBehind.add(m_lastSlice, m_behind);
    m_rate.add(begin, slice.ticks);
    if (slice.state != FeedState::running) {
        if (running) settle();
        return slice.state;
    }
    if (slice.ticks) closeBatch();
    if (begin - m_watchWritten >= kWatchPeriodMicros) {
        m_watchWritten = begin;
        m_mostUnpainted.add(begin, m_panes.watch->unpainted());
        m_panes.watch->showChanged();
        m_panes.positions->showTotals();
    }
    return slice.state;
}

void FeedPump::closeBatch() {
    m_panes.trades->dropOldest();
    processEndofBatchUpdates();
    for (CLiveGrid* grid : {&m_panes.orders->grid(), &m_panes.trades->grid(), &m_panes.positions->grid()})
        grid->batchClosed();
    m_panes.orders->refillIfNeeded();
    m_panes.trades->refillIfNeeded();
    m_panes.orders->keepOrder(m_clock.nowMicros());
}

void FeedPump::settle() {
    m_panes.watch->showChanged();
    closeBatch();
    m_panes.orders->keepOrder();
    m_panes.positions->showTotals();
}

void FeedPump::pause(bool on) {
    if (on && !m_paused) settle();           // no later slice brings what this one left waiting
    if (m_paused && !on) setSpeed(m_speed);  // what was not due in the pause is not due at its end
    m_paused = on;
}

void FeedPump::setSpeed(Speed speed) {
    m_speed = speed;
    m_feed.setSpeed(speed);
}

double FeedPump::secondsRun() const {
    return m_firstSlice < 0 ? 0 : static_cast<double>(m_lastSlice - m_firstSlice) / 1e6;
}

std::int64_t FeedPump::rows() const {
    return static_cast<std::int64_t>(m_panes.watch->market().size()) + m_panes.orders->grid().GetDisplayCount() +
           m_panes.trades->grid().GetDisplayCount();
}

void FeedPump::instrument(const Instrument& news) {
    m_panes.watch->addInstrument(news);
    m_panes.orders->instrument(news);
    m_panes.trades->instrument(news);
    m_panes.positions->instrument(news);
}

void FeedPump::quote(const Quote& news) {
    m_panes.watch->quote(news);
    m_panes.positions->quote(news, now());
    if (m_panes.pulse) m_panes.pulse->quote(news);
}
void FeedPump::order(const OrderEvent& news) {
    m_panes.watch->order(news);
    m_panes.orders->order(news, now());
}
void FeedPump::trade(const Trade& news) {
    m_panes.watch->trade(news);
    m_panes.trades->trade(news, now());
}
void FeedPump::level(const BookLevel& news) {
    m_panes.watch->level(news);
    m_panes.orders->level(news, now());
}
void FeedPump::tickEnd(MarketTime) { m_now = 0; }

}  // namespace terminal
