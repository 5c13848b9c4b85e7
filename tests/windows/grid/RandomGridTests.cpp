// Random mixes on a real grid against a second real list view, which the naive model drives call by call: no count held
// back, every row deselected, every selected row walked for every tombstone. Both must end with the same rows, native
// count, selection, focus and mark after every step that a user could look between.
#include "core/grid/NaiveGrid.h"
#include "windows/grid/GridFixture.h"

#include <random>

namespace grid_tests {
namespace {

class RealControl : public NativeControl {
public:
    explicit RealControl(CListCtrl& list) : m_list(list) {}
    int selectionMark() override { return m_list.GetSelectionMark(); }
    int nextSelected(int after) override { return m_list.GetNextItem(after, LVNI_SELECTED); }
    void setState(int visual, unsigned state, unsigned mask) override { m_list.SetItemState(visual, state, mask); }
    void setCount(int count) override { m_list.SetItemCountEx(count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL); }

private:
    CListCtrl& m_list;
};

// What can be asked of either control.
struct NativeState {
    int count, mark, focus, top;
    std::vector<int> selected;

    explicit NativeState(CListCtrl& list)
        : count(static_cast<int>(list.SendMessage(LVM_GETITEMCOUNT))),
          mark(list.GetSelectionMark()),
          focus(list.GetNextItem(-1, LVNI_FOCUSED)),
          top(list.GetTopIndex()) {
        for (int row = list.GetNextItem(-1, LVNI_SELECTED); row != -1; row = list.GetNextItem(row, LVNI_SELECTED))
            selected.push_back(row);
    }
    std::string compare(const NativeState& other) const {
        if (count != other.count) return "count";
        if (selected != other.selected) return "selection";
        if (focus != other.focus) return "focus";
        if (mark != other.mark) return "mark";
        return top == other.top ? "" : "top index";
    }
};

class RandomGrid : public GridFixture {
protected:
    RandomGrid() : m_real(m_plain), m_naive(m_real, [](NaiveGrid::Row) { return true; }) {}

    void begin(unsigned seed, bool reverse) {
        m_random.seed(seed);
        createOpti(m_grid, reverse);
        m_naive.reverse = reverse;
        create(m_plain, {{"name"}}, CRect(0, 200, 300, 400));  // no store: every call reaches the control
    }

    void step() {
        switch (pick(13)) {
            case 0:
            case 1:
            case 2:
            case 3:
                return add();
            case 4:
            case 5:
                return remove();
            case 6:
            case 7:
                return update();
            case 8:
                return select();
            case 9:
                return scroll();
            case 10:
                return pick(4) == 0 ? add(40) : remove();
            case 11:
                return dip();
            default:
                return endBatch();
        }
    }

    std::string compare() {
        if (m_grid.GetDisplayCount() != m_naive.count()) return "display count";
        for (int visual = 0; visual < m_naive.count(); ++visual) {
            if (m_grid.GetItemData(visual) != reinterpret_cast<DWORD_PTR>(m_naive.rowAt(m_naive.visualOf(visual))))
                return "row " + std::to_string(visual);
        }
        return NativeState(m_grid).compare(NativeState(m_plain));
    }

    // Some steps pass unlooked at, so that counts are held back over several of them.
    bool looks() { return pick(3) == 0; }

private:
    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(m_random); }

    void add(int many = 1) {
        for (const bool now = many == 1 && pick(3) == 0; many > 0; --many) {
            m_order.push_back(std::make_unique<Row>("r"));
            CFilterListBaseData* const row = m_order.back().get();
            EXPECT_EQ(m_grid.AddRow(row, now), m_naive.addRow(row, now));
        }
    }
    // The count falls and rises before anybody looks: rows that it fell below lose selection and focus all the same.
    void dip() {
        select();
        for (int i = 0; i < 3; ++i) removeAt(pick(static_cast<int>(m_order.size()) + 1), true);
        for (int i = 0; i < 3; ++i) add();
    }
    void remove() { removeAt(pick(static_cast<int>(m_order.size()) + 1), pick(4) == 0); }
    void removeAt(int index, bool now) {
        if (index >= static_cast<int>(m_order.size())) return;
        const auto at = m_order.begin() + index;
        CFilterListBaseData* const row = at->get();
        EXPECT_EQ(m_grid.DeleteRow(row, now), m_naive.deleteRow(row, now));
        m_order.erase(at);
    }
    void update() {
        if (m_order.empty()) return;
        CFilterListBaseData* const row =
            m_order[static_cast<std::size_t>(pick(static_cast<int>(m_order.size())))].get();
        EXPECT_EQ(m_grid.UpdateRow(row), m_naive.updateRow(row));
    }
    void select() {
        const auto count = static_cast<int>(m_plain.SendMessage(LVM_GETITEMCOUNT));
        for (int i = pick(5); i > 0 && count > 0; --i) {
            const int visual = pick(count);
            const auto state = static_cast<UINT>(pick(4));
            m_grid.SetItemState(visual, state, 3);
            m_plain.SetItemState(visual, state, 3);
        }
        const int mark = pick(count + 1) - 1;
        m_grid.SetSelectionMark(mark);
        m_plain.SetSelectionMark(mark);
    }
    void scroll() {
        const CSize by(0, (pick(41) - 20) * 10);
        m_grid.Scroll(by);
        m_plain.Scroll(by);
    }
    void endBatch() {
        processEndofBatchUpdates();
        m_naive.endBatch();
    }

    std::mt19937 m_random;
    std::vector<std::unique_ptr<Row>> m_order;  // freed after the grid: declared before it
    CFilterListCtrl m_grid;
    CFilterListCtrl m_plain;
    RealControl m_real;
    NaiveGrid m_naive;
};

class RandomGridSeeds : public RandomGrid, public ::testing::WithParamInterface<unsigned> {};

TEST_P(RandomGridSeeds, EndsAsTheNaiveModelOnAControlOfItsOwn) {
    road = GetParam() % 4 < 2 ? test::Road::created : test::Road::subclassed;
    begin(GetParam(), GetParam() % 2 == 0);
    for (int i = 0; i < 400; ++i) {
        step();
        if (!looks()) continue;
        const std::string fault = compare();
        ASSERT_EQ(fault, "") << "seed " << GetParam() << ", step " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(, RandomGridSeeds, ::testing::Range(1u, 7u));

}  // namespace
}  // namespace grid_tests
