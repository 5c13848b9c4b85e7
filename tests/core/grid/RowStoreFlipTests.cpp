// Displays of several blocks under a test that rows pass and fail all the time, against the naive model that renumbers
// every row at once. Deferred and immediate deletes, adds, rebuilds, sorts and reverse display come in between. Ticks
// come in either way: followed up at once, or when somebody asks for a place.
#include "tests/core/grid/StoreHarness.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>

using namespace quor::grid;

namespace {

class FlipMix {
public:
    FlipMix(unsigned seed, int rows, bool later)
        : m_slow(m_slowNative, [](NaiveGrid::Row row) { return shown(row); }), m_random(seed), m_later(later) {
        m_fast.test.function = [](const void*, RowData data) { return shown(rowKey(data)); };
        m_fast.store.setReverse(m_slow.reverse = seed % 2 == 0);
        RowLayout layout;
        // The start of every repaint shows; or the page ends above the end of the list, so that ticks may wait.
        layout.topIndex = pick(later ? rows / 8 : rows / 2);
        layout.countPerPage = later ? rows / 8 : rows;
        layout.rowHeight = 1;
        layout.totalWidth = 100;
        layout.visible = true;
        m_fast.setLayout(layout);
        m_slow.layout = layout;
        for (int i = 0; i < rows; ++i) add(false);
        endBatch();
    }

    void step() {
        if (pick(m_later ? 100 : 4) == 0) forgetDirt();
        switch (pick(40)) {
            case 0:
                return add(pick(2) == 0);
            case 1:
            case 2:
                return m_rows.size() < 20 ? add(true) : remove(pick(3) == 0);
            case 3:
                return endBatch();
            case 4:
                return select();
            case 5:
                return pick(40) == 0 ? rebuild() : sort();
            default:
                return flip();
        }
    }

    // Asking for a place lets ticks that wait take effect: then it is only asked for now and then.
    std::string compareRow() {
        LiveRows& store = m_fast.store;
        if (store.displayCount() != m_slow.count()) return "the display counts differ";
        if (m_later && pick(30) != 0) return {};
        store.settle();
        if (store.slotOf(m_last) != slowSlot(m_last)) return "the slot of the row of the step differs";
        const RECT fast = m_fast.dirtyRect();
        if (fast.top != m_slow.dirty.top || fast.bottom != m_slow.dirty.bottom) return "the dirty rectangles differ";
        return m_fast.native == m_slowNative ? "" : "selection, focus, mark or native count differ";
    }

    std::string compareAll() {
        LiveRows& store = m_fast.store;
        if (const std::string fault = store.Check(); !fault.empty()) return fault;
        if (store.displayOrder() != m_slow.display) return "the orders differ";
        for (int slot = 0; slot < store.displayCount(); ++slot)
            if (store.mapIndexOfSlot(slot) != m_slow.display[static_cast<std::size_t>(slot)]) return "a slot differs";
        for (const auto& row : m_rows)
            if (store.slotOf(row.get()) != slowSlot(row.get())) return "a row says another slot";
        return {};
    }

    int flips() const { return m_flips; }

private:
    static NaiveGrid::Row rowKey(RowData data) { return reinterpret_cast<NaiveGrid::Row>(data); }
    static NaiveGrid::Row key(const TestRow* row) { return static_cast<const CFilterListBaseData*>(row); }
    static bool shown(NaiveGrid::Row row) {
        return static_cast<const TestRow*>(static_cast<const CFilterListBaseData*>(row))->value > 0;
    }

    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }
    int slowSlot(const TestRow* row) const {
        const auto found = m_slow.numbers.find(key(row));
        return found == m_slow.numbers.end() ? -1 : found->second.slot;
    }

    void add(bool now) {
        m_rows.push_back(std::make_unique<TestRow>('x', pick(2)));
        m_last = m_rows.back().get();
        EXPECT_EQ(m_fast.addRow(m_last, now), m_slow.addRow(key(m_last), now));
    }

    void remove(bool now) {
        std::swap(m_rows[static_cast<std::size_t>(pick(static_cast<int>(m_rows.size())))], m_rows.back());
        EXPECT_EQ(m_fast.deleteRow(m_rows.back().get(), now), m_slow.deleteRow(key(m_rows.back().get()), now));
        m_rows.pop_back();
        m_last = m_rows.front().get();
    }

    // One row in four stays as it is.
    void flip() {
        m_last = m_rows[static_cast<std::size_t>(pick(static_cast<int>(m_rows.size())))].get();
        if (pick(4) != 0) m_last->value = 1 - m_last->value;
        const int result = m_fast.updateRow(m_last);
        EXPECT_EQ(result, m_slow.updateRow(key(m_last)));
        m_flips += result != 0;
    }

    void select() {
        if (m_slow.count() == 0) return;
        m_fast.store.settle();  // as before any message of the control
        for (int i = pick(20); i > 0; --i) {
            const int visual = pick(m_slow.count());
            m_fast.native.setState(visual, 2, 2);
            m_slowNative.setState(visual, 2, 2);
        }
        m_fast.native.mark = m_slowNative.mark = pick(m_slow.count());
    }

    void endBatch() {
        m_fast.endBatch();
        m_slow.endBatch();
    }

    void rebuild() {
        m_fast.rebuild();
        m_slow.rebuild();
    }

    void sort() {
        if (pick(10) != 0) return;
        endBatch();
        std::shuffle(m_slow.display.begin(), m_slow.display.end(), m_random);
        for (int slot = 0; slot < m_slow.count(); ++slot) m_slow.numbers[m_slow.rowAt(slot)].slot = slot;
        m_fast.reorder(m_slow.display);
    }

    // Rectangles only grow; without a fresh start they would soon hide every difference.
    void forgetDirt() {
        m_fast.store.settle();
        m_fast.store.forgetDirt();
        m_slow.dirty = {};
        m_slow.dirtyNews = false;
    }

    std::vector<std::unique_ptr<TestRow>> m_rows;  // outlives the store
    StoreHarness m_fast;
    PretendedControl m_slowNative;
    NaiveGrid m_slow;
    std::mt19937 m_random;
    bool m_later;
    TestRow* m_last = nullptr;
    int m_flips = 0;
};

TEST(RowStoreFlips, RowsThatComeAndGoKeepTheOrderOfTheNaiveModel) {
    static const struct {
        int rows;
        int steps;
    } sizes[] = {{40, 3000}, {700, 3000}, {3000, 1500}};
    for (const auto& size : sizes) {
        for (unsigned seed = 1; seed <= 8; ++seed) {
            SCOPED_TRACE("rows " + std::to_string(size.rows) + ", seed " + std::to_string(seed));
            FlipMix mix(seed, size.rows, seed > 4);
            for (int step = 0; step < size.steps; ++step) {
                mix.step();
                ASSERT_EQ(mix.compareRow(), "") << "step " << step;
                ASSERT_EQ(step % 150 == 149 ? mix.compareAll() : "", "") << "step " << step;
                if (::testing::Test::HasFailure()) return;
            }
            EXPECT_GT(mix.flips(), size.steps / 2);
        }
    }
}

}  // namespace
