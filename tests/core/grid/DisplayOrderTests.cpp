// The lazy display order against a plain array that moves everything, with enough rows for many groups of blocks.
#include "quor/grid/core/DisplayOrder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <vector>

using namespace quor::grid;

namespace {

using Indices = std::vector<std::int32_t>;

Indices contentOf(const DisplayOrder& order) {
    Indices content;
    order.forEach([&](int mapIndex) { content.push_back(mapIndex); });
    return content;
}

Indices rising(int count) {
    Indices indices(static_cast<std::size_t>(count));
    std::iota(indices.begin(), indices.end(), 0);
    return indices;
}

// The same operations, by a walk.
struct PlainOrder {
    int slotOf(int mapIndex) const {
        const auto at = std::find(items.begin(), items.end(), mapIndex);
        return at == items.end() ? -1 : static_cast<int>(at - items.begin());
    }
    int append(int mapIndex) {
        items.push_back(mapIndex);
        return static_cast<int>(items.size()) - 1;
    }
    int enter(int mapIndex) {
        const auto larger = std::find_if(items.rbegin(), items.rend(), [&](int value) { return value > mapIndex; });
        if (larger == items.rend()) return append(mapIndex);
        const auto placed = items.insert(larger.base(), mapIndex);
        return static_cast<int>(placed - items.begin());
    }
    int erase(int mapIndex) {
        const int slot = slotOf(mapIndex);
        items.erase(items.begin() + slot);
        return slot;
    }
    Indices items;
};

struct BothOrders {
    explicit BothOrders(const Indices& start) : fast(start), slow{start} {}

    void append(int mapIndex) { ASSERT_EQ(fast.append(mapIndex), slow.append(mapIndex)); }
    void flip(int mapIndex) {
        if (fast.contains(mapIndex)) {
            ASSERT_EQ(fast.erase(mapIndex), slow.erase(mapIndex)) << "leaving: " << mapIndex;
            ASSERT_EQ(fast.slotOf(mapIndex), -1);
        } else {
            const int slot = fast.enter(mapIndex);
            ASSERT_EQ(slot, slow.enter(mapIndex)) << "entering: " << mapIndex;
            ASSERT_EQ(fast.slotOf(mapIndex), slot);
            ASSERT_EQ(fast.at(slot), mapIndex);
        }
        ASSERT_EQ(fast.size(), static_cast<int>(slow.items.size()));
    }
    void compare() const {
        ASSERT_EQ(fast.Check(), "");
        ASSERT_EQ(contentOf(fast), slow.items);
        for (int slot = 0; slot < fast.size(); ++slot) {
            ASSERT_EQ(fast.at(slot), slow.items[static_cast<std::size_t>(slot)]);
            ASSERT_EQ(fast.slotOf(fast.at(slot)), slot);
        }
    }

    DisplayOrder fast;
    PlainOrder slow;
};

enum class Start { rising, falling, shuffled, empty };

struct Mix {
    const char* name;
    Start start;
    int rows;
    int flips;
    int window;  // rows that flip lie this close together; 0: anywhere
};

Indices startOf(const Mix& mix, std::mt19937& random) {
    Indices indices = rising(mix.start == Start::empty ? 0 : mix.rows);
    if (mix.start == Start::falling) std::reverse(indices.begin(), indices.end());
    if (mix.start == Start::shuffled) std::shuffle(indices.begin(), indices.end(), random);
    return indices;
}

TEST(DisplayOrder, RandomFlipsEndAsInAPlainArray) {
    static const Mix mixes[] = {
        {"a few", Start::rising, 5, 200, 0},
        {"one block and its neighbour", Start::rising, 200, 3000, 0},
        {"arrival order", Start::rising, 30'000, 8000, 0},
        {"falling", Start::falling, 20'000, 8000, 0},
        {"sorted by something else", Start::shuffled, 20'000, 8000, 0},
        {"all enter", Start::empty, 9000, 12'000, 0},
        {"many splits at one place", Start::falling, 20'000, 12'000, 9000},
        {"the last rows", Start::rising, 12'000, 8000, 30},
    };
    for (const Mix& mix : mixes) {
        SCOPED_TRACE(mix.name);
        std::mt19937 random(7);
        const auto pick = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
        BothOrders orders(startOf(mix, random));
        for (int i = 0; i < mix.flips; ++i) {
            const int mapIndex = mix.window == 0 ? pick(mix.rows) : mix.rows - 1 - pick(mix.window);
            ASSERT_NO_FATAL_FAILURE(orders.flip(mapIndex));
            if (i % (mix.flips / 5) != 0) continue;
            ASSERT_NO_FATAL_FAILURE(orders.compare());
        }
        ASSERT_NO_FATAL_FAILURE(orders.compare());
    }
}

// The order is laid out anew on the way down, with most blocks empty, and fills again.
TEST(DisplayOrder, AnOrderThatRunsEmptyFillsAgain) {
    constexpr int rows = 25'000;
    BothOrders orders(rising(rows));
    Indices leaving = rising(rows);
    std::shuffle(leaving.begin(), leaving.end(), std::mt19937(3));
    for (const std::int32_t mapIndex : leaving) {
        ASSERT_NO_FATAL_FAILURE(orders.flip(mapIndex));
        if (mapIndex % 4000 != 0) continue;
        ASSERT_NO_FATAL_FAILURE(orders.compare());
    }
    EXPECT_EQ(orders.fast.size(), 0);
    for (int mapIndex = 0; mapIndex < 2000; ++mapIndex) ASSERT_NO_FATAL_FAILURE(orders.append(mapIndex + rows));
    for (int mapIndex = 0; mapIndex < 4000; ++mapIndex) ASSERT_NO_FATAL_FAILURE(orders.flip(mapIndex * 5));
    orders.compare();
}

// Rows that leave at the front and come at the end leave empty blocks behind.
TEST(DisplayOrder, AQueueKeepsItsOrder) {
    constexpr int length = 3000;
    BothOrders orders(rising(length));
    for (int i = 0; i < 30'000; ++i) {
        ASSERT_NO_FATAL_FAILURE(orders.append(length + i));
        ASSERT_NO_FATAL_FAILURE(orders.flip(i));
    }
    orders.compare();
}

}  // namespace
