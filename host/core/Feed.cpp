#include "host/core/Feed.h"

#include <chrono>
#include <cmath>
#include <utility>

namespace terminal {
namespace {

constexpr int kTicksBetweenClockReads = 16;

struct Caller {
    FeedSink& sink;
    void operator()(const Instrument& news) const { sink.instrument(news); }
    void operator()(const Quote& news) const { sink.quote(news); }
    void operator()(const OrderEvent& news) const { sink.order(news); }
    void operator()(const Trade& news) const { sink.trade(news); }
    void operator()(const BookLevel& news) const { sink.level(news); }
};

}  // namespace

std::int64_t SteadyClock::nowMicros() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

void dispatch(const Tick& tick, FeedSink& sink) {
    for (const FeedEvent& event : tick.events) std::visit(Caller{sink}, event);
    sink.tickEnd(tick.time);
}

Feed::Feed(std::unique_ptr<TickSource> source, Speed speed, FeedSink* alsoTo)
    : m_source(std::move(source)), m_speed(speed), m_alsoTo(alsoTo) {}

Feed::~Feed() = default;

// Makes the next tick wait in m_pending. False: there is none, and the state says why.
bool Feed::fetch() {
    if (m_hasPending) return true;
    switch (m_source->next(m_pending)) {
        case TickSource::Next::tick:
            m_hasPending = true;
            return true;
        case TickSource::Next::end:
            m_state = FeedState::ended;
            return false;
        case TickSource::Next::failed:
            m_state = FeedState::failed;
            return false;
    }
    return false;
}

bool Feed::isDue(std::int64_t now) {
    if (!m_started) {
        m_started = true;
        m_startMicros = now;
        m_firstTime = m_pending.time;
    }
    if (m_speed.max) return true;
    // In double: a factor of a million and years of gaps between two lines stay far from any overflow.
    const double ran = static_cast<double>(now - m_startMicros) * 1e3 * m_speed.factor;
    return static_cast<double>(m_pending.time) - static_cast<double>(m_firstTime) <= ran;
}

std::int64_t Feed::behindMicros(std::int64_t now) const {
    if (!m_hasPending || !m_started || m_speed.max) return 0;
    const double waits = static_cast<double>(m_pending.time) - static_cast<double>(m_firstTime);
    const double behind = static_cast<double>(now - m_startMicros) - waits / 1e3 / m_speed.factor;
    return behind > 0 ? static_cast<std::int64_t>(behind) : 0;
}

void Feed::setSpeed(Speed speed) {
    m_speed = speed;
    m_started = false;  // isDue starts the source's time anew, at the tick that waits
}

void Feed::deliver(FeedSink& sink) {
    dispatch(m_pending, m_tally);
    dispatch(m_pending, sink);
    if (m_alsoTo) dispatch(m_pending, *m_alsoTo);
    m_hasPending = false;
    ++m_ticksTaken;
}

Slice Feed::take(Clock& clock, const SliceLimit& limit, FeedSink& sink) {
    Slice slice;
    const std::int64_t now = clock.nowMicros();
    while (m_state == FeedState::running && fetch() && isDue(now)) {
        const bool late =
            slice.ticks > 0 && slice.ticks % kTicksBetweenClockReads == 0 && clock.nowMicros() - now >= limit.maxMicros;
        if (late || slice.ticks >= limit.maxTicks) {
            slice.more = true;
            break;
        }
        deliver(sink);
        ++slice.ticks;
    }
    slice.state = m_state;
    return slice;
}

}  // namespace terminal
