// Long random mixes of everything a host does in opti-data mode, against the naive model. Three grids share the rows;
// a row is freed as soon as it left the last of them, with the batch still open.
#include "tests/core/grid/StoreHarness.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>

using namespace quor::grid;

namespace {

constexpr int gridCount = 3;
constexpr int steps = 4000;

struct Threshold {
    int lowest = 0;
    bool passes(int value) const { return value >= lowest; }
};

struct Pair {
    Pair()
        : slow(slowNative, [this](NaiveGrid::Row row) {
              const auto* base = static_cast<const CFilterListBaseData*>(row);
              return threshold.passes(static_cast<const TestRow*>(base)->value);
          }) {}

    void useTest(bool on) {
        fast.test = {};
        if (!on) return;
        fast.test.context = &threshold;
        fast.test.function = [](const void* context, RowData data) {
            return static_cast<const Threshold*>(context)->passes(rowOf(data)->value);
        };
    }

    Threshold threshold;
    StoreHarness fast;
    PretendedControl slowNative;
    NaiveGrid slow;
};

class RandomMix {
public:
    explicit RandomMix(unsigned seed) : m_random(seed) {
        for (int i = 0; i < gridCount; ++i) m_grids.push_back(std::make_unique<Pair>());
        for (auto& grid : m_grids) setLayout(*grid);
        for (unsigned bit = 0; bit < 3; ++bit)
            if (seed >> bit & 1) setReverse(*m_grids[bit]);
    }

    void step() {
        // Rectangles only grow; without a fresh start now and then they would soon hide every difference.
        if (pick(3) == 0) forgetDirt();
        // Stretches without adds: only then the deletes decide where a repaint starts.
        if (pick(60) == 0) m_adding = !m_adding;
        switch (pick(16)) {
            case 0:
            case 1:
            case 2:
            case 3:
                return m_adding || m_rows.size() < 8 ? add() : endBatch();
            case 4:
            case 5:
            case 6:
                return remove();
            case 7:
            case 8:
            case 9:
            case 10:
                return update();
            case 11:
                return select();
            case 12:
                return endBatch();
            case 13:
                return changeTest();
            case 14:
                return pick(12) == 0 ? setReverse(anyGrid()) : endBatch();
            default:
                return pick(20) == 0 ? empty() : setLayout(anyGrid());
        }
    }

    std::string compare() const {
        for (int i = 0; i < gridCount; ++i) {
            const std::string fault = compare(*m_grids[static_cast<std::size_t>(i)]);
            if (!fault.empty()) return "grid " + std::to_string(i) + ": " + fault;
        }
        return {};
    }

private:
    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }
    Pair& anyGrid() { return *m_grids[static_cast<std::size_t>(pick(gridCount))]; }
    TestRow* anyRow() { return m_rows[static_cast<std::size_t>(pick(static_cast<int>(m_rows.size())))].get(); }
    static NaiveGrid::Row key(TestRow* row) { return static_cast<CFilterListBaseData*>(row); }

    void add() {
        m_rows.push_back(std::make_unique<TestRow>('x', pick(10)));
        TestRow* const row = m_rows.back().get();
        for (auto& grid : m_grids) {
            if (pick(8) == 0) continue;  // not every grid shows every row
            const bool now = pick(4) == 0;
            EXPECT_EQ(grid->fast.addRow(row, now), grid->slow.addRow(key(row), now));
        }
    }

    void remove() {
        if (m_rows.empty()) return;
        const auto at = m_rows.begin() + pick(static_cast<int>(m_rows.size()));
        for (auto& grid : m_grids) {
            const bool now = pick(5) == 0;
            EXPECT_EQ(grid->fast.deleteRow(at->get(), now), grid->slow.deleteRow(key(at->get()), now));
        }
        m_rows.erase(at);
    }

    void update() {
        if (m_rows.empty()) return;
        TestRow* const row = anyRow();
        if (pick(2) == 0) row->value = pick(10);
        for (auto& grid : m_grids) EXPECT_EQ(grid->fast.updateRow(row), grid->slow.updateRow(key(row)));
    }

    void select() {
        Pair& grid = anyGrid();
        const int count = grid.slowNative.count;
        if (count == 0) return;
        const int many = pick(3) == 0 ? count : 4;
        for (int i = pick(many) + 1; i > 0; --i) {
            const int visual = pick(count);
            const unsigned state = static_cast<unsigned>(pick(4));
            grid.fast.native.setState(visual, state, 3);
            grid.slowNative.setState(visual, state, 3);
        }
        grid.fast.native.mark = grid.slowNative.mark = pick(count + 1) - 1;
    }

    void endBatch() {
        for (auto& grid : m_grids) {
            grid->fast.endBatch();
            grid->slow.endBatch();
        }
    }

    void changeTest() {
        Pair& grid = anyGrid();
        grid.threshold.lowest = pick(2) == 0 ? 0 : pick(8);
        grid.useTest(grid.threshold.lowest > 0);
        if (pick(2) == 0) return;
        grid.fast.rebuild();
        grid.slow.rebuild();
    }

    void forgetDirt() {
        for (auto& grid : m_grids) {
            grid->fast.store.forgetDirt();
            grid->slow.dirty = {};
            grid->slow.dirtyNews = false;
        }
    }

    static void setReverse(Pair& grid) {
        grid.slow.reverse = !grid.slow.reverse;
        grid.fast.store.setReverse(grid.slow.reverse);
    }

    void setLayout(Pair& grid) {
        RowLayout layout{.rowHeight = 16, .topIndex = pick(30), .countPerPage = 1 + pick(12)};
        layout.horizontalScroll = pick(100);
        layout.totalWidth = 400;
        layout.headerHeight = 17;
        layout.visible = pick(8) != 0;
        layout.countFellTo(grid.slowNative.count);
        grid.fast.setLayout(layout);
        grid.slow.layout = layout;
    }

    void empty() {
        for (auto& grid : m_grids) {
            grid->fast.empty();
            grid->slow.clear();
        }
        m_rows.clear();
    }

    std::string compare(Pair& grid) const {
        grid.fast.store.settle();
        if (const std::string fault = grid.fast.store.Check(); !fault.empty()) return fault;
        LiveRows& store = grid.fast.store;
        if (store.itemCount() != static_cast<int>(grid.slow.map.size())) return "the item counts differ";
        if (store.displayCount() != grid.slow.count()) return "the display counts differ";
        for (int visual = 0; visual < store.displayCount(); ++visual) {
            const auto* row = reinterpret_cast<NaiveGrid::Row>(store.dataOfVisual(visual));
            if (row != grid.slow.rowAt(grid.slow.visualOf(visual))) return "a visual row differs";
        }
        if (!(grid.fast.native == grid.slowNative)) return "selection, focus, mark or native count differ";
        const RECT fast = grid.fast.dirtyRect();
        const RECT slow = grid.slow.dirty;
        if (fast.left != slow.left || fast.top != slow.top || fast.right != slow.right || fast.bottom != slow.bottom)
            return "the dirty rectangles differ";
        return grid.fast.store.hasNews() == grid.slow.dirtyNews ? "" : "the dirty flags differ";
    }

    std::mt19937 m_random;
    bool m_adding = true;
    std::vector<std::unique_ptr<TestRow>> m_rows;  // outlives no grid: declared first, freed last
    std::vector<std::unique_ptr<Pair>> m_grids;
};

TEST(RowStoreRandom, AnyMixOfAddsUpdatesAndDeletesEndsAsTheNaiveModelSays) {
    for (unsigned seed = 1; seed <= 16; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomMix mix(seed);
        for (int step = 0; step < steps; ++step) {
            mix.step();
            const std::string fault = mix.compare();
            ASSERT_TRUE(fault.empty()) << "seed " << seed << ", step " << step << ": " << fault;
            if (::testing::Test::HasFailure()) return;
        }
    }
}

}  // namespace
