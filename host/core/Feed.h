// The road of the data into the terminal: a TickSource says what happens and when, a Feed takes what is due, slice by
// slice, and hands it to a FeedSink. All of it runs on the thread of the windows; nothing here starts a thread or
// waits.
#pragma once

#include "host/core/MarketData.h"
#include "host/core/Tally.h"

#include <memory>
#include <string>

namespace terminal {

// Microseconds from any fixed start, never going back. Tests bring one of their own.
class Clock {
public:
    virtual ~Clock() = default;
    virtual std::int64_t nowMicros() = 0;
};

class SteadyClock final : public Clock {
public:
    std::int64_t nowMicros() override;
};

// How fast a source's time runs. 2 is twice as fast as it happened; `max` waits for nothing.
struct Speed {
    bool max = false;
    double factor = 1;  // more than 0; unused with max
};

// The one interface behind which every source of data stands.
class TickSource {
public:
    enum class Next { tick, end, failed };
    virtual ~TickSource() = default;
    // Fills `tick` with what happens next; its former contents are dropped, its memory is used again. After `end` or
    // `failed` it is not called again, and `tick` holds nothing. Times may step back; such a tick is due at once.
    virtual Next next(Tick& tick) = 0;
    // What went wrong, ready for the user, after `failed`; else empty.
    virtual const std::string& error() const = 0;
};

// When a slice ends, though more may be due. The clock is read once in every 16 ticks.
struct SliceLimit {
    std::int64_t maxMicros = 8'000;
    int maxTicks = 10'000;
};

enum class FeedState { running, ended, failed };

struct Slice {
    int ticks = 0;  // taken in this call
    FeedState state = FeedState::running;
    bool more = false;  // the limit ended the slice, not the data: something was still due
};

// Takes what is due from a source, at a speed. Owns the source and the tally, which hears each event before the sink
// does and knows nothing of rows.
class Feed {
public:
    // `source` is not null. `alsoTo` (a recorder, or null) hears every event after the sink; it is not owned and must
    // live as long as the feed is asked.
    Feed(std::unique_ptr<TickSource> source, Speed speed, FeedSink* alsoTo = nullptr);
    ~Feed();

    // Hands over all that is due by now, up to the limit. The source's time starts to run at the first call. Once the
    // state is `ended` or `failed` it stays so, and calls do nothing. The sink must not call back into the feed.
    Slice take(Clock& clock, const SliceLimit& limit, FeedSink& sink);

    // From the next tick on the source's time runs at this speed: what was not due before is not due by the change, and
    // what passes between two calls of take before it (a pause) is passed over.
    void setSpeed(Speed speed);

    // How long ago, in microseconds of the clock, the tick that waits was due. 0: nothing waits that is due, or the
    // speed is the largest, at which nothing is late.
    std::int64_t behindMicros(std::int64_t now) const;

    std::int64_t ticksTaken() const { return m_ticksTaken; }
    FeedState state() const { return m_state; }
    const std::string& error() const { return m_source->error(); }  // empty unless the state is `failed`
    const Tally& tally() const { return m_tally; }

private:
    bool fetch();
    bool isDue(std::int64_t now);
    void deliver(FeedSink& sink);

    std::unique_ptr<TickSource> m_source;
    Speed m_speed;
    FeedSink* m_alsoTo;
    Tally m_tally;
    Tick m_pending;
    bool m_hasPending = false;
    bool m_started = false;
    std::int64_t m_startMicros = 0;
    MarketTime m_firstTime = 0;
    std::int64_t m_ticksTaken = 0;
    FeedState m_state = FeedState::running;
};

// Calls the sink's function for each event of a tick in order, then tickEnd.
void dispatch(const Tick& tick, FeedSink& sink);

}  // namespace terminal
