// The blocks of the display order. The numbers that a search runs through are packed, so that four are looked at in one
// step and no search tree with its jumps is needed: a million displayed rows have about a hundred groups.
#include "quor/grid/core/DisplayOrder.h"

#include <algorithm>
#include <bit>

namespace quor::grid {

namespace {

constexpr int kLaidOutSize = DisplayOrder::kBlockCapacity * 3 / 4;  // room for rows that enter in the middle
constexpr int kLaidOutBlocks = DisplayOrder::kGroupCapacity / 2;
constexpr int kSparseBlocks = 64;  // an order with fewer blocks is never laid out anew

using Sizes = std::array<std::uint8_t, DisplayOrder::kGroupCapacity>;

// The sum of the first `count` sizes: all are read, and the rest masked out, so that nothing depends on the count.
int sumOf(const Sizes& sizes, int count) {
    alignas(64) static constexpr auto kMasks = [] {
        std::array<std::uint8_t, 2 * DisplayOrder::kGroupCapacity> bytes{};
        for (std::size_t i = 0; i < DisplayOrder::kGroupCapacity; ++i) bytes[i] = 0xff;
        return bytes;
    }();
    const std::uint8_t* const mask = kMasks.data() + DisplayOrder::kGroupCapacity - count;
    return sumOfBytes(sizes.data(), mask, sizes.size());
}

// Counted by sums of neighbours: the instruction for it is not there on every machine.
int bitsOf(std::uint64_t low, std::uint64_t high) {
    constexpr std::uint64_t kTwos = 0x5555555555555555, kFours = 0x3333333333333333, kEights = 0x0f0f0f0f0f0f0f0f;
    low -= low >> 1 & kTwos;
    high -= high >> 1 & kTwos;
    const std::uint64_t nibbles = (low & kFours) + (low >> 2 & kFours) + (high & kFours) + (high >> 2 & kFours);
    return static_cast<int>(((nibbles & kEights) + (nibbles >> 4 & kEights)) * 0x0101010101010101 >> 56);
}

using Taken = std::array<std::uint64_t, DisplayOrder::kBlockCapacity / 64>;

std::uint64_t bitOf(int index) { return std::uint64_t{1} << (index % 64); }
std::uint64_t& wordOf(Taken& taken, int index) { return taken[static_cast<std::size_t>(index / 64)]; }

int takenBefore(const Taken& taken, int index) {
    const std::uint64_t below = bitOf(index) - 1;
    const std::uint64_t inSecond = index < 64 ? 0 : ~std::uint64_t{0};
    return bitsOf(taken[0] & (below | inSecond), taken[1] & below & inSecond);
}

// The first place from `index` on whose bit is set, kBlockCapacity when there is none.
int firstFrom(const Taken& bits, int index) {
    for (; index < DisplayOrder::kBlockCapacity; index = (index / 64 + 1) * 64)
        if (const std::uint64_t rest = bits[static_cast<std::size_t>(index / 64)] >> (index % 64); rest != 0)
            return index + std::countr_zero(rest);
    return DisplayOrder::kBlockCapacity;
}

// The last place up to `index`, -1 when there is none.
int lastUpTo(const Taken& bits, int index) {
    for (; index >= 0; index = index / 64 * 64 - 1)
        if (const std::uint64_t rest = bits[static_cast<std::size_t>(index / 64)] << (63 - index % 64); rest != 0)
            return index - std::countl_zero(rest);
    return -1;
}

Taken freeOf(const Taken& taken) { return {~taken[0], ~taken[1]}; }

// The last place below `count` with a number above the limit, -1 when there is none.
int lastAbove(const std::int32_t* numbers, int count, int limit) {
    int end = count;
    while (end >= 16 && bitsAbove16(numbers + end - 16, limit) == 0) end -= 16;
    for (; end >= 4; end -= 4)
        if (const unsigned bits = bitsAbove4(numbers + end - 4, limit); bits != 0)
            return end - 5 + static_cast<int>(std::bit_width(bits));
    while (end > 0 && numbers[end - 1] <= limit) --end;
    return end - 1;
}

// A bit for each of 64 numbers, set where it is above the limit. All are looked at: a loop that ends at the first one
// found costs more, since where that is cannot be foretold.
std::uint64_t above(const std::int32_t* numbers, std::int32_t limit) {
    std::uint64_t bits = 0;
    for (int i = 0; i < 64; i += 16) bits |= std::uint64_t{bitsAbove16(numbers + i, limit)} << i;
    return bits;
}

// The last place with a number above the limit; there is one.
int lastAbove(const std::array<std::int32_t, DisplayOrder::kGroupCapacity>& maxima, int limit) {
    return static_cast<int>(std::bit_width(above(maxima.data(), limit))) - 1;
}

int lastAbove(const std::array<std::int32_t, DisplayOrder::kBlockCapacity>& items, int limit) {
    const std::uint64_t low = above(items.data(), limit), high = above(items.data() + 64, limit);
    return static_cast<int>(std::bit_width(high != 0 ? high : low)) + (high != 0 ? 63 : -1);
}

int maximumOf(const std::int32_t* numbers, int count) {
    int maximum = -1;
    for (int i = 0; i < count; ++i) maximum = std::max(maximum, numbers[i]);
    return maximum;
}

}  // namespace

DisplayOrder::DisplayOrder(const std::vector<std::int32_t>& mapIndices) { layOut(mapIndices); }

DisplayOrder::Group DisplayOrder::emptyGroup() {
    Group empty{};
    empty.maxima.fill(-1);
    return empty;
}

void DisplayOrder::layOut(const std::vector<std::int32_t>& mapIndices) {
    m_size = static_cast<int>(mapIndices.size());
    const int blockCount = std::max(1, (m_size + kLaidOutSize - 1) / kLaidOutSize);
    const int groupCount = (blockCount + kLaidOutBlocks - 1) / kLaidOutBlocks;
    m_blocks.resize(static_cast<std::size_t>(blockCount));
    m_items.resize(m_blocks.size());
    m_groups.assign(static_cast<std::size_t>(groupCount), emptyGroup());
    m_groupAt.resize(m_groups.size());
    m_groupSizes.assign(m_groups.size(), 0);
    m_groupMaxima.assign(m_groups.size(), -1);
    const int largest = maximumOf(mapIndices.data(), m_size);
    m_home.assign(std::max(m_home.size(), static_cast<std::size_t>(largest + 1)), -1);
    for (int number = 0; number < blockCount; ++number) {
        const int ordinal = number / kLaidOutBlocks;
        Group& own = group(ordinal);
        Block& filled = block(number);
        filled.group = own.ordinal = m_groupAt[static_cast<std::size_t>(ordinal)] = ordinal;
        filled.place = own.used++;
        own.blocks[static_cast<std::size_t>(filled.place)] = number;
        const int first = number * kLaidOutSize;
        const int size = std::min(kLaidOutSize, m_size - first);
        fill(number, mapIndices.data() + first, size);
        m_groupSizes[static_cast<std::size_t>(ordinal)] += size;
    }
}

// A block with these and no other entries, evenly apart. The sum of the group's sizes is the caller's.
void DisplayOrder::fill(int number, const std::int32_t* mapIndices, int count) {
    Block& filled = block(number);
    filled.taken = {};
    items(number).fill(-1);
    for (int i = 0; i < count; ++i) put({number, i * kBlockCapacity / count}, mapIndices[i]);
    sizeOf(filled) = static_cast<std::uint8_t>(count);
    group(filled.group).maxima[static_cast<std::size_t>(filled.place)] = -1;
    maximumGrew(filled, maximumOf(mapIndices, count));
}

void DisplayOrder::put(Position position, int mapIndex) {
    items(position.block)[static_cast<std::size_t>(position.index)] = mapIndex;
    wordOf(block(position.block).taken, position.index) |= bitOf(position.index);
    home(mapIndex) = position.block * kBlockCapacity + position.index;
}

bool DisplayOrder::isSparse() const {
    return m_blocks.size() > kSparseBlocks && m_blocks.size() * kBlockCapacity / 4 > static_cast<std::size_t>(m_size);
}

int DisplayOrder::at(int slot) const {
    std::size_t ordinal = 0;
    while (slot >= m_groupSizes[ordinal]) slot -= m_groupSizes[ordinal++];
    const Group& own = groupAt(ordinal);
    std::size_t place = 0;
    while (slot >= own.sizes[place]) slot -= own.sizes[place++];
    const Taken& taken = block(own.blocks[place]).taken;
    int index = firstFrom(taken, 0);
    while (slot-- > 0) index = firstFrom(taken, index + 1);
    return itemAt({own.blocks[place], index});
}

int DisplayOrder::slotOf(int mapIndex) const {
    const int home = homeOf(mapIndex);
    return home == -1 ? -1 : slotOf(positionOf(home));
}

int DisplayOrder::slotOf(Position position) const {
    const Block& held = block(position.block);
    const Group& own = group(held.group);
    return sumOfNumbers(m_groupSizes.data(), own.ordinal) + sumOf(own.sizes, held.place) +
           takenBefore(held.taken, position.index);
}

int DisplayOrder::append(int mapIndex) { return insertBehind(lastPosition(), mapIndex); }

int DisplayOrder::enter(int mapIndex) { return insertBehind(rightmostLarger(mapIndex), mapIndex); }

DisplayOrder::Position DisplayOrder::lastPosition() const {
    const Group& last = group(m_groupAt.back());
    const int number = last.blocks[static_cast<std::size_t>(last.used - 1)];
    return {number, lastUpTo(block(number).taken, kBlockCapacity - 1)};
}

DisplayOrder::Position DisplayOrder::rightmostLarger(int mapIndex) const {
    const int ordinal = lastAbove(m_groupMaxima.data(), static_cast<int>(m_groupMaxima.size()), mapIndex);
    if (ordinal == -1) return lastPosition();
    const Group& own = groupAt(static_cast<std::size_t>(ordinal));
    const int number = own.blocks[static_cast<std::size_t>(lastAbove(own.maxima, mapIndex))];
    return {number, lastAbove(items(number), mapIndex)};
}

int DisplayOrder::insertBehind(Position position, int mapIndex) {
    if (sizeOf(block(position.block)) == kBlockCapacity) position = makeRoom(position);
    position.index = freePlaceBehind(position);
    if (static_cast<std::size_t>(mapIndex) >= m_home.size()) m_home.resize(static_cast<std::size_t>(mapIndex) + 1, -1);
    put(position, mapIndex);
    const int slot = slotOf(position);
    const Block& held = block(position.block);
    changeSize(held, 1);
    maximumGrew(held, mapIndex);
    return slot;
}

// Behind the entry of the position, if need be by moving all up to the nearest free place, to the right if there is
// one. The block is not full.
int DisplayOrder::freePlaceBehind(Position position) {
    const Taken free = freeOf(block(position.block).taken);
    const int before = position.index;
    const int right = firstFrom(free, before + 1);
    if (right < kBlockCapacity) {
        for (int i = right; i > before + 1; --i) moveItem(position.block, i - 1, i);
        return before + 1;
    }
    for (int i = lastUpTo(free, before); i < before; ++i) moveItem(position.block, i + 1, i);
    return before;
}

// The former place is left as it is, for the next entry to be put there.
void DisplayOrder::moveItem(int number, int from, int to) {
    put({number, to}, items(number)[static_cast<std::size_t>(from)]);
}

void DisplayOrder::changeSize(const Block& own, int by) {
    std::uint8_t& size = sizeOf(own);
    size = static_cast<std::uint8_t>(size + by);
    m_groupSizes[static_cast<std::size_t>(group(own.group).ordinal)] += by;
    m_size += by;
}

int DisplayOrder::erase(int mapIndex) {
    const Position position = positionOf(homeOf(mapIndex));
    const int slot = slotOf(position);
    Block& held = block(position.block);
    wordOf(held.taken, position.index) &= ~bitOf(position.index);
    items(position.block)[static_cast<std::size_t>(position.index)] = -1;
    home(mapIndex) = -1;
    changeSize(held, -1);
    maximumWent(position.block, mapIndex);
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
void DisplayOrder::maximumWent(int number, int mapIndex) {
    const Block& own = block(number);
    Group& around = group(own.group);
    std::int32_t& ofBlock = around.maxima[static_cast<std::size_t>(own.place)];
    if (ofBlock != mapIndex) return;
    ofBlock = maximumOf(items(number).data(), kBlockCapacity);
    std::int32_t& ofGroup = m_groupMaxima[static_cast<std::size_t>(around.ordinal)];
    if (ofGroup == mapIndex) ofGroup = maximumOf(around.maxima.data(), around.used);
}

// The block of the position is full: its upper half moves into a new block behind it. Behind the last entry nothing
// moves, so that rows that come in at one place fill their blocks.
DisplayOrder::Position DisplayOrder::makeRoom(Position position) {
    const int added = openBlockBehind(position.block);
    if (position.index == kBlockCapacity - 1) return {added, -1};
    constexpr int kKept = kBlockCapacity / 2;
    const Items former = items(position.block);
    fill(position.block, former.data(), kKept);
    fill(added, former.data() + kKept, kBlockCapacity - kKept);
    if (position.index < kKept) return {position.block, position.index * 2};
    return {added, (position.index - kKept) * 2};
}

int DisplayOrder::openBlockBehind(int number) {
    if (group(block(number).group).used == kGroupCapacity) splitGroup(block(number).group);
    const int added = static_cast<int>(m_blocks.size());
    m_blocks.emplace_back();
    m_items.emplace_back().fill(-1);
    Group& own = group(block(number).group);
    const int place = block(number).place + 1;
    const auto shift = [&]<class Value>(std::array<Value, kGroupCapacity>& values, Value value) {
        std::copy_backward(values.begin() + place, values.begin() + own.used, values.begin() + own.used + 1);
        values[static_cast<std::size_t>(place)] = value;
    };
    shift(own.blocks, std::int32_t{added});
    shift(own.sizes, std::uint8_t{0});
    shift(own.maxima, std::int32_t{-1});
    ++own.used;
    block(added).group = block(number).group;
    for (int i = place; i < own.used; ++i) block(own.blocks[static_cast<std::size_t>(i)]).place = i;
    return added;
}

void DisplayOrder::splitGroup(int number) {
    const int added = static_cast<int>(m_groups.size());
    m_groups.push_back(emptyGroup());
    Group& from = group(number);
    Group& to = group(added);
    constexpr int kKept = kGroupCapacity / 2;
    std::copy(from.blocks.begin() + kKept, from.blocks.end(), to.blocks.begin());
    std::copy(from.sizes.begin() + kKept, from.sizes.end(), to.sizes.begin());
    std::copy(from.maxima.begin() + kKept, from.maxima.end(), to.maxima.begin());
    std::fill(from.sizes.begin() + kKept, from.sizes.end(), std::uint8_t{0});
    std::fill(from.maxima.begin() + kKept, from.maxima.end(), -1);
    from.used = kKept;
    to.used = kGroupCapacity - kKept;
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
        m_groupSizes[ordinal] = sumOf(half->sizes, half->used);
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
        if (sumOf(own.sizes, kGroupCapacity) != m_groupSizes[ordinal]) return where + " has another size";
        if (maximumOf(own.maxima.data(), own.used) != m_groupMaxima[ordinal]) return where + " has another maximum";
        for (int place = 0; place < own.used; ++place, ++blocks) {
            const auto index = static_cast<std::size_t>(place);
            const int number = own.blocks[index];
            const std::string which = where + ", block " + std::to_string(place);
            if (block(number).place != place || block(number).group != m_groupAt[ordinal])
                return which + " says another place";
            if (maximumOf(items(number).data(), kBlockCapacity) != own.maxima[index])
                return which + " has another maximum";
            if (takenBefore(block(number).taken, kBlockCapacity - 1) + (items(number).back() != -1) != own.sizes[index])
                return which + " has another size";
            if (const std::string fault = checkItems(number); !fault.empty()) return which + fault;
            total += own.sizes[index];
        }
    }
    if (blocks != m_blocks.size()) return "a block lies in no group";
    if (total != m_size) return "the size is not the sum of the blocks";
    const auto held = std::count_if(m_home.begin(), m_home.end(), [](std::int32_t number) { return number != -1; });
    return held == m_size ? std::string() : "a map index is at home that no block holds";
}

std::string DisplayOrder::checkItems(int number) const {
    for (int index = 0; index < kBlockCapacity; ++index) {
        const int mapIndex = itemAt({number, index});
        const bool isTaken = firstFrom(block(number).taken, index) == index;
        if (isTaken != (mapIndex != -1)) return " is wrong about a free place";
        if (isTaken && homeOf(mapIndex) != number * kBlockCapacity + index)
            return " holds a map index that is at home elsewhere";
    }
    return {};
}

}  // namespace quor::grid
