// A market out of a seed, so that nothing is needed to start: N instruments with believable prices, tick sizes, sizes,
// spreads and session figures; orders that appear, change and leave all the time; trades; bursts in which a few
// instruments run one way at many times the usual rate.
//
// The same seed and count give the same ticks in every build: whole numbers and a generator of its own, no library
// distribution and no floating point on the way to a decision.
#pragma once

#include "host/core/Feed.h"

namespace terminal {

struct SimulatorSettings {
    std::uint64_t seed = 1;
    int instruments = 500;        // 1 to 1,000,000
    int ticksPerSecond = 10'000;  // on the long average, bursts included; 1 to 10,000,000
    int ordersPerInstrument = 4;  // live ones, about; 1 to 100
};

// What always holds of its ticks: bid < ask; every price is a multiple of the tick size and more than 0; low <= open,
// last <= high; volume never falls; an order is added before it changes, and removed once; times never step back. The
// first N ticks announce one instrument each, with a full quote and its opening trade, all at the opening time.
std::unique_ptr<TickSource> makeSimulator(const SimulatorSettings& settings);

}  // namespace terminal
