#include "host/core/Statistics.h"

#include <algorithm>
#include <bit>

namespace terminal {

// Values of 64 and more: the position of the highest bit chooses the doubling, the five bits below it the step.
int Percentiles::bucketOf(std::int64_t value) {
    if (value < kExactValues) return static_cast<int>(value);
    const int shift = static_cast<int>(std::bit_width(static_cast<std::uint64_t>(value))) - 6;
    return kExactValues + (shift - 1) * kSteps + static_cast<int>(value >> shift) - kSteps;
}

std::int64_t Percentiles::bucketEnd(int bucket) {
    if (bucket < kExactValues) return bucket;
    const int shift = (bucket - kExactValues) / kSteps + 1;
    const auto step = static_cast<std::uint64_t>((bucket - kExactValues) % kSteps) + kSteps;
    return static_cast<std::int64_t>(((step + 1) << shift) - 1);
}

void Percentiles::add(std::int64_t value) {
    value = std::max<std::int64_t>(value, 0);
    ++m_buckets[static_cast<std::size_t>(bucketOf(value))];
    ++m_count;
    m_largest = std::max(m_largest, value);
}

void Percentiles::clear() { *this = {}; }

std::int64_t Percentiles::percentile(double percent) const {
    std::int64_t seen = 0;
    for (std::size_t bucket = 0; bucket < m_buckets.size() && m_count > 0; ++bucket) {
        seen += m_buckets[bucket];
        const bool enough = seen > 0 && static_cast<double>(seen) * 100 >= percent * static_cast<double>(m_count);
        if (enough) return std::min(bucketEnd(static_cast<int>(bucket)), m_largest);
    }
    return m_largest;
}

// Slots that passed without an add are emptied on the way.
void RateCounter::moveTo(std::int64_t slot) {
    const std::int64_t passed = std::min<std::int64_t>(slot - m_current, kSlots);
    for (std::int64_t i = 1; i <= passed; ++i) m_slots[static_cast<std::size_t>((slot - passed + i) % kSlots)] = 0;
    m_current = std::max(m_current, slot);
}

void RateCounter::add(std::int64_t nowMicros, std::int64_t times) {
    moveTo(nowMicros / kSlotMicros);
    if (m_first < 0) m_first = m_current;
    m_slots[static_cast<std::size_t>(m_current % kSlots)] += times;
}

double RateCounter::perSecond(std::int64_t nowMicros) {
    if (m_first < 0) return 0;
    moveTo(nowMicros / kSlotMicros);
    const std::int64_t full = std::min<std::int64_t>(m_current - m_first, kSlots - 1);
    if (full == 0) return 0;
    std::int64_t sum = 0;
    for (std::int64_t i = 1; i <= full; ++i) sum += m_slots[static_cast<std::size_t>((m_current - i) % kSlots)];
    return static_cast<double>(sum) * (1e6 / kSlotMicros) / static_cast<double>(full);
}

void HalfMaxima::makeRoom() {
    for (std::size_t i = 0; i < kSlots / 2; ++i) m_slots[i] = std::max(m_slots[2 * i], m_slots[2 * i + 1]);
    std::fill(m_slots.begin() + kSlots / 2, m_slots.end(), 0);
    m_span *= 2;
}

void HalfMaxima::add(std::int64_t nowMicros, std::int64_t value) {
    if (m_begin < 0) m_begin = nowMicros;
    m_end = nowMicros;
    while ((nowMicros - m_begin) / m_span >= static_cast<std::int64_t>(kSlots)) makeRoom();
    std::int64_t& slot = m_slots[static_cast<std::size_t>((nowMicros - m_begin) / m_span)];
    slot = std::max(slot, value);
}

HalfMaxima::Halves HalfMaxima::halves() const {
    Halves found;
    const std::int64_t middle = (m_end - m_begin) / 2;
    for (std::size_t i = 0; i < kSlots; ++i) {
        const bool early = static_cast<std::int64_t>(i) * m_span < middle;
        std::int64_t& half = early ? found.first : found.second;
        half = std::max(half, m_slots[i]);
    }
    return found;
}

}  // namespace terminal
