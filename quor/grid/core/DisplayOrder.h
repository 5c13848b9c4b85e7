// DisplayOrder: a sequence of map indices in which a row can leave or enter anywhere at a cost that hardly depends on
// the number of rows behind it. The row store holds its display order here from the first such change on; a display
// that nothing has left or entered needs no more than an array. Row numbers: see FilterListBaseData.h.
//
// The sequence is cut into blocks of `kBlockCapacity` places, the blocks into groups. A block may have free places
// anywhere: a row that leaves frees its own, one that enters takes a free one, and few others ever move. `m_home` says
// in which place a map index lies. A group holds the sizes and the largest map indices of its blocks side by side, the
// order those of its groups, so that a slot is counted and the place of a row found by three short runs through packed
// numbers. Nothing is written to rows, which lie far apart in memory.
//
// Blocks and groups that run empty stay where they are. When less than a quarter of the room is in use the whole
// sequence is laid out anew, which happens at most once in as many changes as a fraction of its rows.
//
// Invariants, verified by Check(): every map index is at home in the place that holds it; free places hold -1; the
// sizes and maxima are those of the blocks; size() is their sum.
#pragma once

#include "quor/platform/Base.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quor::grid {

class DisplayOrder {
public:
    static constexpr int kBlockCapacity = 128;
    static constexpr int kGroupCapacity = 64;

    // Each map index at most once, none negative.
    explicit DisplayOrder(const std::vector<std::int32_t>& mapIndices);

    int size() const { return m_size; }
    bool contains(int mapIndex) const { return homeOf(mapIndex) != -1; }
    // The slot must be in range.
    int at(int slot) const;
    // What slotOf, erase and enter will read of a map index: the first before the second, a few rows before the call.
    void prefetchHome(int mapIndex) const {
        if (static_cast<std::size_t>(mapIndex) < m_home.size())
            prefetchToWrite(&m_home[static_cast<std::size_t>(mapIndex)]);
    }
    void prefetchPlace(int mapIndex) const {
        if (const int home = homeOf(mapIndex); home != -1) prefetchToWrite(&itemAt(positionOf(home)));
    }

    // -1 when the order does not hold the map index.
    int slotOf(int mapIndex) const;
    // Calls with each map index from the first slot to the last.
    template <class Function>
    void forEach(Function function) const;

    // These take a map index that the order does not hold. Result: its slot.
    int append(int mapIndex);
    // Just behind the rightmost slot with a larger map index, at the end when there is none.
    int enter(int mapIndex);

    // The order must hold the map index. Result: the slot that it had.
    int erase(int mapIndex);

    // Empty when every invariant holds, else the first one that does not.
    std::string Check() const;

private:
    struct Block {
        std::array<std::uint64_t, kBlockCapacity / 64> taken;  // a bit for each place, the first one lowest
        std::int32_t group;                                    // an index into m_groups
        std::int32_t place;                                    // in that group
    };
    using Items = std::array<std::int32_t, kBlockCapacity>;  // of a block, -1 in a free place
    struct Group {
        std::array<std::uint8_t, kGroupCapacity> sizes{};  // of the blocks, 0 behind the last
        std::array<std::int32_t, kGroupCapacity> maxima;   // their largest map indices, -1 for an empty one or none
        std::array<std::int32_t, kGroupCapacity> blocks;   // indices into m_blocks
        std::int32_t used = 0;
        std::int32_t ordinal = 0;
    };
    // A place of a block; -1 stands in front of the first.
    struct Position {
        int block;
        int index;
    };

    int homeOf(int mapIndex) const {
        const auto index = static_cast<std::size_t>(mapIndex);
        return index < m_home.size() ? m_home[index] : -1;
    }
    std::int32_t& home(int mapIndex) { return m_home[static_cast<std::size_t>(mapIndex)]; }
    Block& block(int number) { return m_blocks[static_cast<std::size_t>(number)]; }
    const Block& block(int number) const { return m_blocks[static_cast<std::size_t>(number)]; }
    Group& group(int number) { return m_groups[static_cast<std::size_t>(number)]; }
    const Group& group(int number) const { return m_groups[static_cast<std::size_t>(number)]; }
    Items& items(int number) { return m_items[static_cast<std::size_t>(number)]; }
    const Items& items(int number) const { return m_items[static_cast<std::size_t>(number)]; }
    static Position positionOf(int home) { return {home / kBlockCapacity, home % kBlockCapacity}; }
    const std::int32_t& itemAt(Position position) const {
        return items(position.block)[static_cast<std::size_t>(position.index)];
    }
    std::uint8_t& sizeOf(const Block& own) { return group(own.group).sizes[static_cast<std::size_t>(own.place)]; }
    int sizeOf(const Block& own) const { return group(own.group).sizes[static_cast<std::size_t>(own.place)]; }
    const Group& groupAt(std::size_t ordinal) const { return group(m_groupAt[ordinal]); }

    int slotOf(Position position) const;
    int insertBehind(Position position, int mapIndex);
    Position lastPosition() const;
    Position rightmostLarger(int mapIndex) const;
    int freePlaceBehind(Position position);
    void moveItem(int number, int from, int to);
    void put(Position position, int mapIndex);
    void changeSize(const Block& own, int by);
    void fill(int number, const std::int32_t* mapIndices, int count);
    Position makeRoom(Position position);
    int openBlockBehind(int number);
    void splitGroup(int number);
    static Group emptyGroup();
    void maximumGrew(const Block& own, int mapIndex);
    void maximumWent(int number, int mapIndex);
    void layOut(const std::vector<std::int32_t>& mapIndices);
    bool isSparse() const;
    std::string checkItems(int number) const;

    std::vector<Block> m_blocks;
    std::vector<Items> m_items;  // by block
    std::vector<Group> m_groups;
    std::vector<std::int32_t> m_home;  // by map index: block * kBlockCapacity + index, -1 when not held
    // By ordinal, the place of a group in the order.
    std::vector<std::int32_t> m_groupAt;
    std::vector<std::int32_t> m_groupSizes;
    std::vector<std::int32_t> m_groupMaxima;
    int m_size = 0;
};

template <class Function>
void DisplayOrder::forEach(Function function) const {
    for (const std::int32_t number : m_groupAt) {
        const Group& own = group(number);
        for (std::size_t place = 0; place < static_cast<std::size_t>(own.used); ++place) {
            for (const std::int32_t mapIndex : items(own.blocks[place]))
                if (mapIndex != -1) function(int{mapIndex});
        }
    }
}

}  // namespace quor::grid
