// Figures of a run: times spent (median, 99th percentile), rates, and what grows. Fixed size, no allocation after
// construction.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace terminal {

// Counts values in buckets that are exact below 64 and at most 1/32 wide above: every answer is within 3.2 % of a value
// that was added. Any number of values.
class Percentiles {
public:
    void add(std::int64_t value);  // below 0 counts as 0
    void clear();
    std::int64_t count() const { return m_count; }
    std::int64_t largest() const { return m_largest; }  // exact; 0 without values
    // The smallest bucket end that at least `percent` (0 to 100) of the values do not exceed; 0 without values.
    std::int64_t percentile(double percent) const;
    std::int64_t median() const { return percentile(50); }

private:
    static constexpr int kExactValues = 64;
    static constexpr int kSteps = 32;  // buckets for each doubling above
    static constexpr int kDoublings = 57;
    static int bucketOf(std::int64_t value);
    static std::int64_t bucketEnd(int bucket);

    std::array<std::int64_t, kExactValues + kSteps * kDoublings> m_buckets{};
    std::int64_t m_count = 0;
    std::int64_t m_largest = 0;
};

// How often something happened in the last second, in tenths of a second. Times are a Clock's and do not go back.
class RateCounter {
public:
    void add(std::int64_t nowMicros, std::int64_t times = 1);
    // Per second, over the ten full tenths before this one, or what of them has passed since the first add.
    double perSecond(std::int64_t nowMicros);

private:
    static constexpr std::int64_t kSlotMicros = 100'000;
    static constexpr int kSlots = 11;  // ten that are full and the one that fills
    void moveTo(std::int64_t slot);

    std::array<std::int64_t, kSlots> m_slots{};
    std::int64_t m_current = 0;
    std::int64_t m_first = -1;  // slot of the first add; -1: none yet
};

// The largest value of each half of a stretch of time whose length nobody knows before its end. 64 slots of equal span;
// when time runs out of them, two become one: at the end the middle is met to within a 32nd of the whole.
class HalfMaxima {
public:
    // Times are a Clock's and do not go back; the stretch begins at the first one.
    void add(std::int64_t nowMicros, std::int64_t value);
    struct Halves {
        std::int64_t first = 0;  // 0 without values
        std::int64_t second = 0;
    };
    // Of the time from the first add to the last.
    Halves halves() const;

private:
    static constexpr std::size_t kSlots = 64;
    void makeRoom();

    std::array<std::int64_t, kSlots> m_slots{};
    std::int64_t m_begin = -1;
    std::int64_t m_end = -1;
    std::int64_t m_span = 100'000;  // microseconds of a slot
};

}  // namespace terminal
