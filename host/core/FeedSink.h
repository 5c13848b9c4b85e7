// Whoever listens to a feed: the windows, the tally, the recorder.
#pragma once

#include "host/core/MarketData.h"

namespace terminal {

// The references given are valid for the call only.
class FeedSink {
public:
    virtual ~FeedSink() = default;
    // Once for each instrument, before anything else names its id. A host with a book pane adds 2 * bookLevels rows
    // here, from the worst ask to the worst bid; they are empty until their first level() comes.
    virtual void instrument(const Instrument& news) = 0;
    virtual void quote(const Quote& news) = 0;
    virtual void order(const OrderEvent& news) = 0;
    virtual void trade(const Trade& news) = 0;
    // Only levels that changed come.
    virtual void level(const BookLevel& news) = 0;
    // After the last event of a tick.
    virtual void tickEnd(MarketTime /*time*/) {}
};

}  // namespace terminal
