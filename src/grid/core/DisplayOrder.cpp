// The blocks of the display order. The numbers that a search runs through are packed, so that four are looked at in one
// step and no search tree with its jumps is needed: a million displayed rows have about a hundred groups.
#include "src/grid/core/DisplayOrder.h"

#include <algorithm>
#include <bit>
#include <emmintrin.h>

namespace {

constexpr int laidOutSize = DisplayOrder::blockCapacity * 3 / 4;  // room for rows that enter in the middle
constexpr int laidOutBlocks = DisplayOrder::groupCapacity / 2;
constexpr int sparseBlocks = 64;  // an order with fewer blocks is never laid out anew

__m128i fourAt(const std::int32_t* numbers) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(numbers)); }
unsigned maskOf(__m128i fours) { return static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(fours))); }

int sumOf(const std::int32_t* numbers, int count) {
    __m128i sums = _mm_setzero_si128();
    int i = 0;
    for (; i + 4 <= count; i += 4) sums = _mm_add_epi32(sums, fourAt(numbers + i));
    alignas(16) std::int32_t parts[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(parts), sums);
    int sum = parts[0] + parts[1] + parts[2] + parts[3];
    for (; i < count; ++i) sum += numbers[i];
    return sum;
}

// The place of a number that is among the first of a block. What lies behind them may be read and is not met.
int indexOf(const std::array<std::int32_t, DisplayOrder::blockCapacity>& items, int wanted) {
    const __m128i four = _mm_set1_epi32(wanted);
    for (int i = 0; i < DisplayOrder::blockCapacity; i += 16) {
        const std::int32_t* const at = items.data() + i;
        const __m128i low = _mm_packs_epi32(_mm_cmpeq_epi32(fourAt(at), four), _mm_cmpeq_epi32(fourAt(at + 4), four));
        const __m128i high =
            _mm_packs_epi32(_mm_cmpeq_epi32(fourAt(at + 8), four), _mm_cmpeq_epi32(fourAt(at + 12), four));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
        if (mask != 0) return i + std::countr_zero(mask);
    }
    return -1;
}

// The last place below `count` with a number above the limit, -1 when there is none.
int lastAbove(const std::int32_t* numbers, int count, int limit) {
    const __m128i four = _mm_set1_epi32(limit);
    const auto above = [&](int at) { return _mm_cmpgt_epi32(fourAt(numbers + at), four); };
    int end = count;
    while (end >= 16 && maskOf(_mm_or_si128(_mm_or_si128(above(end - 4), above(end - 8)),
                                            _mm_or_si128(above(end - 12), above(end - 16)))) == 0)
        end -= 16;
    for (; end >= 4; end -= 4)
        if (const unsigned mask = maskOf(above(end - 4)); mask != 0)
            return end - 5 + static_cast<int>(std::bit_width(mask));
    while (end > 0 && numbers[end - 1] <= limit) --end;
    return end - 1;
}

int maximumOf(const std::int32_t* numbers, int count) {
    int maximum = -1;
    for (int i = 0; i < count; ++i) maximum = std::max(maximum, numbers[i]);
    return maximum;
}

}  // namespace

DisplayOrder::DisplayOrder(const std::vector<std::int32_t>& mapIndices) { layOut(mapIndices); }

void DisplayOrder::layOut(const std::vector<std::int32_t>& mapIndices) {
    m_size = static_cast<int>(mapIndices.size());
    const int blockCount = std::max(1, (m_size + laidOutSize - 1) / laidOutSize);
    const int groupCount = (blockCount + laidOutBlocks - 1) / laidOutBlocks;
    m_blocks.resize(static_cast<std::size_t>(blockCount));
    m_groups.assign(static_cast<std::size_t>(groupCount), {});
    m_groupAt.resize(m_groups.size());
    m_groupSizes.assign(m_groups.size(), 0);
    m_groupMaxima.assign(m_groups.size(), -1);
    const int largest = maximumOf(mapIndices.data(), m_size);
    m_home.assign(std::max(m_home.size(), static_cast<std::size_t>(largest + 1)), -1);
    for (int number = 0; number < blockCount; ++number) {
        const int ordinal = number / laidOutBlocks;
        Group& own = group(ordinal);
        Block& filled = block(number);
        filled.group = own.ordinal = m_groupAt[static_cast<std::size_t>(ordinal)] = ordinal;
        filled.place = own.used++;
        const int first = number * laidOutSize;
        const int size = std::min(laidOutSize, m_size - first);
        std::copy_n(mapIndices.begin() + first, size, filled.items.begin());
        for (int i = first; i < first + size; ++i) home(mapIndices[static_cast<std::size_t>(i)]) = number;
        const auto place = static_cast<std::size_t>(filled.place);
        own.blocks[place] = number;
        own.sizes[place] = size;
        own.maxima[place] = -1;
        m_groupSizes[static_cast<std::size_t>(ordinal)] += size;
        maximumGrew(filled, maximumOf(filled.items.data(), size));
    }
}

bool DisplayOrder::isSparse() const {
    return m_blocks.size() > sparseBlocks && m_blocks.size() * blockCapacity / 4 > static_cast<std::size_t>(m_size);
}

int DisplayOrder::at(int slot) const {
    std::size_t ordinal = 0;
    while (slot >= m_groupSizes[ordinal]) slot -= m_groupSizes[ordinal++];
    const Group& own = groupAt(ordinal);
    std::size_t place = 0;
    while (slot >= own.sizes[place]) slot -= own.sizes[place++];
    return block(own.blocks[place]).items[static_cast<std::size_t>(slot)];
}

int DisplayOrder::slotOf(int mapIndex) const {
    const int number = homeOf(mapIndex);
    return number == -1 ? -1 : slotOf(Position{number, indexOf(block(number).items, mapIndex)});
}

int DisplayOrder::slotOf(Position position) const {
    const Block& held = block(position.block);
    const Group& own = group(held.group);
    return sumOf(m_groupSizes.data(), own.ordinal) + sumOf(own.sizes.data(), held.place) + position.index;
}

int DisplayOrder::append(int mapIndex) { return insert(endPosition(), mapIndex); }

int DisplayOrder::enter(int mapIndex) { return insert(behindRightmostLarger(mapIndex), mapIndex); }

DisplayOrder::Position DisplayOrder::endPosition() const {
    const Group& last = group(m_groupAt.back());
    const auto place = static_cast<std::size_t>(last.used - 1);
    return {last.blocks[place], last.sizes[place]};
}

DisplayOrder::Position DisplayOrder::behindRightmostLarger(int mapIndex) const {
    const int ordinal = lastAbove(m_groupMaxima.data(), static_cast<int>(m_groupMaxima.size()), mapIndex);
    if (ordinal == -1) return endPosition();
    const Group& own = groupAt(static_cast<std::size_t>(ordinal));
    const auto place = static_cast<std::size_t>(lastAbove(own.maxima.data(), own.used, mapIndex));
    return {own.blocks[place], lastAbove(block(own.blocks[place]).items.data(), own.sizes[place], mapIndex) + 1};
}

int DisplayOrder::insert(Position position, int mapIndex) {
    if (sizeOf(block(position.block)) == blockCapacity) position = makeRoom(position);
    Block& held = block(position.block);
    std::int32_t& size = sizeOf(held);
    const auto at = held.items.begin() + position.index;
    std::copy_backward(at, held.items.begin() + size, held.items.begin() + size + 1);
    *at = mapIndex;
    const int slot = slotOf(position);
    ++size;
    ++m_size;
    ++m_groupSizes[static_cast<std::size_t>(group(held.group).ordinal)];
    maximumGrew(held, mapIndex);
    if (static_cast<std::size_t>(mapIndex) >= m_home.size()) m_home.resize(static_cast<std::size_t>(mapIndex) + 1, -1);
    home(mapIndex) = position.block;
    return slot;
}

int DisplayOrder::erase(int mapIndex) {
    const int number = homeOf(mapIndex);
    Block& held = block(number);
    const Position position{number, indexOf(held.items, mapIndex)};
    const int slot = slotOf(position);
    std::int32_t& size = sizeOf(held);
    std::copy(held.items.begin() + position.index + 1, held.items.begin() + size, held.items.begin() + position.index);
    --size;
    --m_size;
    --m_groupSizes[static_cast<std::size_t>(group(held.group).ordinal)];
    maximumWent(held, mapIndex);
    home(mapIndex) = -1;
    if (isSparse()) {
        std::vector<std::int32_t> mapIndices;
        mapIndices.reserve(static_cast<std::size_t>(m_size));
        forEach([&](int value) { mapIndices.push_back(value); });
        layOut(mapIndices);
    }
    return slot;
}

void DisplayOrder::maximumGrew(const Block& own, int mapIndex) {
    Group& around = group(own.group);
    std::int32_t& ofBlock = around.maxima[static_cast<std::size_t>(own.place)];
    std::int32_t& ofGroup = m_groupMaxima[static_cast<std::size_t>(around.ordinal)];
    ofBlock = std::max(ofBlock, mapIndex);
    ofGroup = std::max(ofGroup, mapIndex);
}

// Only the largest of a block has to be replaced, which few of those that leave are.
void DisplayOrder::maximumWent(const Block& own, int mapIndex) {
    Group& around = group(own.group);
    std::int32_t& ofBlock = around.maxima[static_cast<std::size_t>(own.place)];
    if (ofBlock != mapIndex) return;
    ofBlock = maximumOf(own.items.data(), sizeOf(own));
    std::int32_t& ofGroup = m_groupMaxima[static_cast<std::size_t>(around.ordinal)];
    if (ofGroup == mapIndex) ofGroup = maximumOf(around.maxima.data(), around.used);
}

// The block of the position is full: its upper half moves into a new block behind it. Behind the last entry nothing
// moves, so that rows that come in at one place fill their blocks.
DisplayOrder::Position DisplayOrder::makeRoom(Position position) {
    const int added = openBlockBehind(position.block);
    if (position.index == blockCapacity) return {added, 0};
    Block& from = block(position.block);
    Block& to = block(added);
    constexpr int kept = blockCapacity / 2;
    std::copy(from.items.begin() + kept, from.items.end(), to.items.begin());
    for (int i = 0; i < blockCapacity - kept; ++i) home(to.items[static_cast<std::size_t>(i)]) = added;
    for (Block* const half : {&from, &to}) {
        sizeOf(*half) = half == &from ? kept : blockCapacity - kept;
        group(half->group).maxima[static_cast<std::size_t>(half->place)] = maximumOf(half->items.data(), sizeOf(*half));
    }
    if (position.index <= kept) return position;
    return {added, position.index - kept};
}

// An empty block in the same group. Both are found anew by their numbers: the blocks may have moved in memory.
int DisplayOrder::openBlockBehind(int number) {
    if (group(block(number).group).used == groupCapacity) splitGroup(block(number).group);
    const int added = static_cast<int>(m_blocks.size());
    m_blocks.emplace_back();
    Group& own = group(block(number).group);
    const int place = block(number).place + 1;
    const auto shift = [&](auto& values, std::int32_t value) {
        std::copy_backward(values.begin() + place, values.begin() + own.used, values.begin() + own.used + 1);
        values[static_cast<std::size_t>(place)] = value;
    };
    shift(own.blocks, added);
    shift(own.sizes, 0);
    shift(own.maxima, -1);
    ++own.used;
    block(added).group = block(number).group;
    for (int i = place; i < own.used; ++i) block(own.blocks[static_cast<std::size_t>(i)]).place = i;
    return added;
}

void DisplayOrder::splitGroup(int number) {
    const int added = static_cast<int>(m_groups.size());
    m_groups.emplace_back();
    Group& from = group(number);
    Group& to = group(added);
    constexpr int kept = groupCapacity / 2;
    std::copy(from.blocks.begin() + kept, from.blocks.end(), to.blocks.begin());
    std::copy(from.sizes.begin() + kept, from.sizes.end(), to.sizes.begin());
    std::copy(from.maxima.begin() + kept, from.maxima.end(), to.maxima.begin());
    from.used = kept;
    to.used = groupCapacity - kept;
    for (int i = 0; i < to.used; ++i) {
        Block& moved = block(to.blocks[static_cast<std::size_t>(i)]);
        moved.group = added;
        moved.place = i;
    }
    const int behind = from.ordinal + 1;
    m_groupAt.insert(m_groupAt.begin() + behind, added);
    m_groupSizes.insert(m_groupSizes.begin() + behind, 0);
    m_groupMaxima.insert(m_groupMaxima.begin() + behind, -1);
    for (std::size_t i = static_cast<std::size_t>(behind); i < m_groupAt.size(); ++i)
        group(m_groupAt[i]).ordinal = static_cast<std::int32_t>(i);
    for (const Group* const half : {&from, &to}) {
        const auto ordinal = static_cast<std::size_t>(half->ordinal);
        m_groupSizes[ordinal] = sumOf(half->sizes.data(), half->used);
        m_groupMaxima[ordinal] = maximumOf(half->maxima.data(), half->used);
    }
}

std::string DisplayOrder::Check() const {
    int total = 0;
    std::size_t blocks = 0;
    for (std::size_t ordinal = 0; ordinal < m_groupAt.size(); ++ordinal) {
        const Group& own = groupAt(ordinal);
        const std::string where = "group " + std::to_string(ordinal);
        if (own.ordinal != static_cast<int>(ordinal)) return where + " says another place";
        if (sumOf(own.sizes.data(), own.used) != m_groupSizes[ordinal]) return where + " has another size";
        if (maximumOf(own.maxima.data(), own.used) != m_groupMaxima[ordinal]) return where + " has another maximum";
        for (int place = 0; place < own.used; ++place, ++blocks) {
            const auto index = static_cast<std::size_t>(place);
            const Block& held = block(own.blocks[index]);
            const std::string which = where + ", block " + std::to_string(place);
            if (held.place != place || held.group != m_groupAt[ordinal]) return which + " says another place";
            if (maximumOf(held.items.data(), own.sizes[index]) != own.maxima[index])
                return which + " has another maximum";
            for (int i = 0; i < own.sizes[index]; ++i)
                if (homeOf(held.items[static_cast<std::size_t>(i)]) != own.blocks[index])
                    return which + " holds a map index that is at home elsewhere";
            total += own.sizes[index];
        }
    }
    if (blocks != m_blocks.size()) return "a block lies in no group";
    if (total != m_size) return "the size is not the sum of the blocks";
    const auto held = std::count_if(m_home.begin(), m_home.end(), [](std::int32_t number) { return number != -1; });
    return held == m_size ? std::string() : "a map index is at home that no block holds";
}
