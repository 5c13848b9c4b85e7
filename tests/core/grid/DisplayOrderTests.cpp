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

Indices rising(int count) {
    Indices indices(static_cast<std::size_t>(count));
    std::iota(indices.begin(), indices.end(), 0);
    return indices;
}

// The order and the same as a plain array, by walks.
class BothOrders {
public:
    explicit BothOrders(const Indices& start) : m_order(start), m_plain(start) {}

    int size() const { return m_order.size(); }
    void append(int mapIndex) {
        m_plain.push_back(mapIndex);
        ASSERT_EQ(m_order.append(mapIndex), static_cast<int>(m_plain.size()) - 1);
    }
    // Leaves, or enters behind the last greater one.
    void flip(int mapIndex) {
        auto at = std::find(m_plain.begin(), m_plain.end(), mapIndex);
        const bool leaves = at != m_plain.end();
        ASSERT_EQ(m_order.contains(mapIndex), leaves) << mapIndex;
        if (leaves) {
            ASSERT_EQ(m_order.erase(mapIndex), at - m_plain.begin()) << "leaving: " << mapIndex;
            m_plain.erase(at);
            ASSERT_EQ(m_order.slotOf(mapIndex), -1);
        } else {
            const auto greater =
                std::find_if(m_plain.rbegin(), m_plain.rend(), [&](int one) { return one > mapIndex; });
            at = m_plain.insert(greater == m_plain.rend() ? m_plain.end() : greater.base(), mapIndex);
            const auto slot = static_cast<int>(at - m_plain.begin());
            ASSERT_EQ(m_order.enter(mapIndex), slot) << "entering: " << mapIndex;
            ASSERT_EQ(m_order.slotOf(mapIndex), slot);
            ASSERT_EQ(m_order.at(slot), mapIndex);
        }
        ASSERT_EQ(m_order.size(), static_cast<int>(m_plain.size()));
    }
    void compare() const {
        ASSERT_EQ(m_order.Check(), "");
        Indices content;
        m_order.forEach([&](int mapIndex) { content.push_back(mapIndex); });
        ASSERT_EQ(content, m_plain);
        for (int slot = 0; slot < m_order.size(); ++slot) {
            ASSERT_EQ(m_order.at(slot), m_plain[static_cast<std::size_t>(slot)]);
            ASSERT_EQ(m_order.slotOf(m_order.at(slot)), slot);
        }
    }

private:
    DisplayOrder m_order;
    Indices m_plain;
};

TEST(DisplayOrder, RandomFlipsEndAsInAPlainArray) {
    enum class Start { rising, falling, shuffled, empty };
    static const struct {
        const char* name;
        Start start;
        int rows;
        int flips;
        int window;  // rows that flip lie this close together
    } mixes[] = {
        {"a few", Start::rising, 5, 200, 5},
        {"one block and its neighbour", Start::rising, 200, 3000, 200},
        {"arrival order", Start::rising, 30'000, 8000, 30'000},
        {"sorted by something else", Start::shuffled, 20'000, 8000, 20'000},
        {"all enter", Start::empty, 9000, 12'000, 9000},
        {"many splits at one place", Start::falling, 20'000, 12'000, 9000},
        {"the last rows", Start::rising, 12'000, 8000, 30},
    };
    for (const auto& mix : mixes) {
        SCOPED_TRACE(mix.name);
        std::mt19937 random(7);
        Indices start = rising(mix.start == Start::empty ? 0 : mix.rows);
        if (mix.start == Start::falling) std::reverse(start.begin(), start.end());
        if (mix.start == Start::shuffled) std::shuffle(start.begin(), start.end(), random);
        BothOrders orders(start);
        for (int i = 1; i <= mix.flips; ++i) {
            const int back = std::uniform_int_distribution<int>(1, mix.window)(random);
            ASSERT_NO_FATAL_FAILURE(orders.flip(mix.rows - back));
            if (i % (mix.flips / 5) != 0) continue;
            ASSERT_NO_FATAL_FAILURE(orders.compare());
        }
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
    EXPECT_EQ(orders.size(), 0);
    for (int mapIndex = 0; mapIndex < 2000; ++mapIndex) ASSERT_NO_FATAL_FAILURE(orders.append(mapIndex + rows));
    for (int mapIndex = 0; mapIndex < 4000; ++mapIndex) ASSERT_NO_FATAL_FAILURE(orders.flip(mapIndex * 5));
    orders.compare();
}

}  // namespace
