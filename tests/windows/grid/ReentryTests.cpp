// Hosts that come back, on real grids. Each step makes one call on a visible grid; in any text, colour or notification
// that the grid then asks of its host, at a random moment, the host throws, pumps messages, adds, changes, deletes,
// empties, sorts, filters, measures, or destroys the window or the grid, also nested. Afterwards the rows' own check
// holds, the grid has the rows that the host thinks it has, and a quiet rebuild shows exactly those that pass.
//
// The memory of a deleted row, and of a grid that went, cannot be touched: whoever does, crashes.
//   QUOR_REENTRY_STEPS  steps of all grids together, 5,000 by default      QUOR_SEED  of the first grid
#include "quor/foundation/TimerIds.h"
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/list/CommonListCtrlInternal.h"
#include "quor/list/ListCommands.h"
#include "tests/support/Rounds.h"
#include "windows/grid/GridFixture.h"

#include <algorithm>
#include <random>
#include <set>
#include <stdexcept>

// The grid's own parts, for the check that no host has a use for.
auto& partsOf(CFilterListCtrl& grid);
template <auto Member>
struct PartsDoor {
    friend auto& partsOf(CFilterListCtrl& grid) { return grid.*Member; }
};
template struct PartsDoor<&CFilterListCtrl::m_parts>;

namespace grid_tests {
namespace {

constexpr UINT kFiltersChanged = WM_APP + 1;
constexpr int kValueColumn = 1, kUserColumn = 2;
constexpr int kRowsAtStart = 30;
constexpr std::size_t kMostRows = 60;

// Its memory cannot be touched once it is deleted, until the next grid: a process has only so many addresses.
struct Mortal {
    void* operator new(std::size_t size) {
        return ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    }
    void operator delete(void* memory, std::size_t size) {
        ::VirtualFree(memory, size, MEM_DECOMMIT);
        graves().push_back(memory);
    }
    static void clearGraves() {
        for (void* const memory : graves()) ::VirtualFree(memory, 0, MEM_RELEASE);
        graves().clear();
    }

private:
    static std::vector<void*>& graves() {
        static std::vector<void*> all;
        return all;
    }
};

struct HostRow : CFilterListBaseData, Mortal {
    explicit HostRow(int firstKey) : key(firstKey) {}
    int key;
};
class MortalGrid : public CFilterListCtrl, public Mortal {};

DWORD_PTR dataOf(HostRow* row) { return reinterpret_cast<DWORD_PTR>(static_cast<CFilterListBaseData*>(row)); }
HostRow* hostRowOf(DWORD_PTR data) { return static_cast<HostRow*>(reinterpret_cast<CFilterListBaseData*>(data)); }

class HostThrew : public std::runtime_error {
public:
    HostThrew() : std::runtime_error("the host") {}
};

// The window that owns the grid.
class ReentryOwner : public CWnd {
public:
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF&, COLORREF&, int&) {
        if (!mayAsk(data)) return 0;
        const int key = hostRowOf(data)->key;  // the row may be gone behind the moment
        moment();
        text.Format(columnIndex == 0 ? "row %d" : "%d", key);
        return 1;
    }
    int rowColor(DWORD_PTR data, COLORREF& color, int, int) {
        if (!mayAsk(data)) return 0;
        moment();
        color = RGB(0, 0, 128);
        return 1;
    }

    std::function<bool(DWORD_PTR)> mayAsk;
    std::function<void()> moment;  // what a text, a colour or a notification does besides
    std::function<void()> rebuild;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == kFiltersChanged) return rebuild(), 0;
        if (message == WM_NOTIFY) {
            const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
            const bool isFilter = code == static_cast<UINT>(HDN_FILTERCHANGE);
            if (isFilter) PostMessage(kFiltersChanged);
            // Of what the control shows the grid answers by itself; a host has no say in it.
            if (isFilter || code == static_cast<UINT>(LVN_ITEMCHANGED)) moment();
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

// Bit 0: classic mode, 1: reverse display, 2: custom draw, 3: a filter from the start.
class ReentryMix : public GridFixture, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        m_owner.mayAsk = [this](DWORD_PTR data) { return mayAsk(data); };
        m_owner.moment = [this] { moment(); };
        m_owner.rebuild = [this] {
            if (isThere()) m_grid->PopulateList();
        };
        const CString windowClass = AfxRegisterWndClass(0);
        ASSERT_TRUE(m_owner.CreateEx(0, windowClass, "", WS_CHILD | WS_VISIBLE, client(), &frame(), 6));
    }
    void TearDown() override {
        m_quiet = true;
        m_grid.reset();
        while (!m_rows.empty()) forget(m_rows.back());
        m_owner.DestroyWindow();
        GridFixture::TearDown();
    }

    void begin() {
        m_quiet = true;
        m_grid.reset();
        while (!m_rows.empty()) forget(m_rows.back());
        Mortal::clearGraves();
        m_filter.clear();
        m_grid = std::make_unique<MortalGrid>();
        for (const auto& [name, dataType] : {std::pair{"name", 3}, std::pair{"value", 1}}) {
            sQuorColInfo record;
            setColumnName(record, name);
            record.iWidth = 70;
            record.iDataType = dataType;
            m_grid->m_arrColumns.Add(record);
        }
        const bool customDraw = (GetParam() & 4) != 0;
        const DWORD style = kGridStyle | (customDraw ? 0u : DWORD{LVS_OWNERDRAWFIXED});
        m_grid->Create(style, CRect(0, 0, 300, 200), &m_owner, kGridId);
        ASSERT_TRUE(m_grid->m_hWnd);
        m_grid->CustomDrawMode = customDraw;
        m_grid->m_bCustomDraw = customDraw;
        m_grid->InsertColumnsForList(nullptr);
        m_grid->m_arrColumns.Add(makeUserColumn("twice", " \"1\" + \"1\"", "twice"));
        CArray<int, int> columns, widths;
        for (int i = 0; i < 3; ++i) columns.Add(i), widths.Add(70);
        m_grid->LoadHeaders(&columns, &widths);
        m_grid->InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(&ReentryOwner::cellText));
        m_grid->m_Appearance.bKeywordsEnabled = 1;
        if (GetParam() & 8) {
            m_grid->m_Appearance.pKeywords = new CStringArray;
            m_grid->m_Appearance.pKeywords->Add("1");
            m_grid->m_Appearance.iKeywordColumn = 1;
        } else {
            m_grid->SetPointerToGetTextColor(static_cast<TextColorCallback>(&ReentryOwner::rowColor));
        }
        m_grid->m_bLockSortEnabled = 1;
        m_grid->SetUseFilter(TRUE);
        m_grid->SetReverseDisplay((GetParam() & 2) != 0);
        if (!classic()) m_grid->SetOptiDataMode(true);
        m_ended = false;
        for (int i = 0; i < kRowsAtStart; ++i) add();
        if (GetParam() & 8) filter();
        m_isDefinite = m_filter.empty();
    }

    // The fault that the step leaves, or empty.
    std::string step() {
        m_fault.clear();
        m_quiet = false;
        m_depth = 0;
        m_innerAtStart = m_inner;
        try {
            act();
        } catch (const HostThrew&) {
            m_isDefinite = false;
        }
        m_quiet = true;
        try {
            pumpUntilIdle();  // what was thrown below the system's own code comes out at the latest here
        } catch (const HostThrew&) {
            m_isDefinite = false;
        }
        if (m_fault.empty() && !m_ended) {
            m_isDefinite = m_isDefinite && !isDisturbed();
            m_fault = compare();
            if (m_fault.empty() && pick(4) == 0) m_fault = compareQuietly();
        }
        if (m_ended) begin();
        return m_fault.empty() ? "" : m_fault + " in " + m_name;
    }

    std::mt19937 m_random;
    long m_inner = 0;

private:
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    bool classic() const { return (GetParam() & 1) != 0; }
    bool isThere() const { return !m_ended && m_grid && m_grid->m_hWnd; }
    bool isDisturbed() const { return m_inner != m_innerAtStart; }
    LiveRows& rows() { return partsOf(*m_grid)->rows; }

    // ---- Moments

    bool mayAsk(DWORD_PTR data) {
        if (!isRow(hostRowOf(data))) m_fault = "a row was asked for that is not there";
        if (m_ended) m_fault = "a grid asked that went";
        return m_fault.empty();
    }
    void moment() {
        if (m_quiet || m_ended || m_depth >= 3 || pick(15) != 0) return;
        const quor::list::FlagScope<int> deeper(m_depth, m_depth + 1);
        ++m_inner;
        const char* const name = m_name;
        const int choice = pick(40);
        if (choice < 8) throw HostThrew();
        if (choice == 8) {
            endWindow();
        } else if (choice < 18) {
            pump();
        } else {
            try {
                act();
            } catch (const HostThrew&) {
                if (pick(2) == 0) throw;
            }
        }
        m_name = name;
    }
    void endWindow() {
        m_ended = true;
        if (pick(2) == 0) {
            m_grid->DestroyWindow();
        } else {
            m_grid.reset();
        }
    }
    // Timers and paints that wait are delivered.
    void pump() {
        m_name = "pump";
        if (!isThere()) return;
        m_grid->PostMessage(WM_TIMER, classic() ? kRepaintTimer : kFlushTimer);
        if (pick(2) == 0) m_grid->Invalidate();
        MSG message;
        for (int many = 30; many > 0 && ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); --many) AfxPumpMessage();
    }

    // ---- Calls

    void act() {
        using Mix = ReentryMix;
        static constexpr struct {
            const char* name;
            void (ReentryMix::*call)();
            int weight;
        } kCalls[] = {{"add", &Mix::add, 64},   {"update", &Mix::change, 48},         {"delete", &Mix::remove, 48},
                      {"sort", &Mix::sort, 24}, {"end of batch", &Mix::endBatch, 16}, {"rebuild", &Mix::populate, 16},
                      {"fit", &Mix::fit, 16},   {"filter", &Mix::filter, 16},         {"paint", &Mix::paint, 24},
                      {"ask", &Mix::ask, 16},   {"scroll", &Mix::scroll, 16},         {"select", &Mix::select, 15},
                      {"empty", &Mix::empty, 1}};
        if (!isThere()) return;
        int at = pick(320);
        const auto* call = kCalls;
        while (at >= call->weight) at -= (call++)->weight;
        if (m_rows.size() > kMostRows && pick(2) == 0) call = &kCalls[2];
        m_name = call->name;
        (this->*call->call)();
    }

    HostRow* anyRow() {
        return m_rows.empty() ? nullptr : m_rows[static_cast<std::size_t>(pick(static_cast<int>(m_rows.size())))];
    }
    bool isRow(const HostRow* row) const { return std::find(m_rows.begin(), m_rows.end(), row) != m_rows.end(); }
    void forget(HostRow* row) {
        if (std::erase(m_rows, row) != 0) delete row;
    }
    // By a walk; -1 for none.
    int mapIndexOf(HostRow* row) {
        for (int mapIndex = 0; mapIndex < m_grid->GetItemCount(); ++mapIndex)
            if (m_grid->GetMapItemData(static_cast<unsigned>(mapIndex)) == dataOf(row)) return mapIndex;
        return -1;
    }

    void add() {
        HostRow* const row = m_rows.emplace_back(new HostRow(pick(10)));
        try {
            if (classic()) {
                addClassic(row);
            } else if (m_grid->AddRow(row, pick(3) == 0) < 0 && !m_ended) {
                m_fault = "a row was refused";
            }
        } catch (const HostThrew&) {
            if (!m_ended) forget(row);
            throw;
        }
    }
    void addClassic(HostRow* row) {
        m_grid->InsertItem(0, "");
        m_grid->SetItemData(0, dataOf(row));
        if (m_ended || mapIndexOf(row) != -1) return;
        if (!isDisturbed()) m_fault = "the data of a new row are nowhere";
        forget(row);
    }
    void change() {
        HostRow* const row = anyRow();
        if (!row) return;
        row->key = pick(10);
        if (!classic()) {
            m_grid->UpdateRow(row);
        } else if (const int mapIndex = mapIndexOf(row); mapIndex != -1) {
            m_grid->RepaintMapItem(mapIndex);
        }
    }
    void remove() {
        HostRow* const row = anyRow();
        const int mapIndex = row && classic() ? mapIndexOf(row) : 0;
        if (!row || mapIndex == -1) return;
        const bool done = classic() ? m_grid->DeleteMapItem(mapIndex) == 1 : m_grid->DeleteRow(row, pick(3) == 0) >= 0;
        if (m_ended) return;
        if (!done && (classic() ? mapIndexOf(row) != -1 : isRow(row))) m_fault = "a delete was refused";
        forget(row);
    }
    void empty() {
        m_grid->DeleteAllItems();
        while (!m_ended && !m_rows.empty()) forget(m_rows.back());
    }
    void endBatch() { processEndofBatchUpdates(); }
    void populate() { m_grid->PopulateList(); }
    void sort() {
        if (m_grid->m_bSortLocked) {
            if (pick(2) == 0) return m_grid->SortByLastColumnWithLock();
            m_grid->m_bSortLocked = 0;
        }
        m_grid->SortOn(pick(3), pick(2) ? 1 : -1);
        if (!m_ended && m_grid->m_bSorted && pick(3) == 0) m_grid->m_bSortLocked = 1;
    }
    // By the header's field as a user does it, or at once.
    void filter() {
        m_filter.clear();
        for (int key = 0; key < 10 && pick(4) != 0; ++key)
            if (pick(3) != 0) m_filter += (m_filter.empty() ? "" : "~") + std::to_string(key);
        CString text = m_filter.c_str();
        if (pick(2) == 0) {
            m_grid->SetMapColumnFilter(kValueColumn, text, 0);
        } else {
            m_grid->AddToFilteredCols(kValueColumn, text);
            m_grid->PopulateList();
        }
    }
    void fit() {
        static constexpr int kCommands[] = {kFitColumnsToData, kFitColumnsToHeader, kFitColumnsToWindow};
        const int choice = pick(4);
        if (choice < 3) return m_grid->AutoSizeColumns(kCommands[choice]);
        CRect item;
        m_grid->GetHeaderCtrl()->GetItemRect(pick(3), &item);
        m_grid->GetHeaderCtrl()->SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(item.right - 1, 5));
    }
    void paint() {
        m_grid->Invalidate();
        m_grid->UpdateWindow();
    }
    void ask() {
        HostRow* const row = anyRow();
        CString text;
        if (row) m_grid->GetCustomColumnText(dataOf(row), kUserColumn, text);
        if (isThere()) text = m_grid->GetItemText(pick(m_grid->GetDisplayCount() + 1), pick(3));
    }
    void scroll() {
        const int count = m_grid->GetDisplayCount();
        if (pick(2) == 0 && count > 0) {
            m_grid->EnsureVisible(pick(count), FALSE);
        } else {
            m_grid->SendMessage(WM_VSCROLL, pick(2) ? SB_PAGEDOWN : SB_LINEUP);
        }
    }
    void select() {
        const int count = static_cast<int>(m_grid->SendMessage(LVM_GETITEMCOUNT));
        if (count > 0 && isThere()) m_grid->SetItemState(pick(count), static_cast<UINT>(pick(4)), 3);
    }

    // ---- What must hold after each step

    bool passes(const HostRow& row) const {
        return m_filter.empty() || m_filter.find(static_cast<char>('0' + row.key)) != std::string::npos;
    }
    bool isHere(DWORD_PTR data) const { return data == 0 || isRow(hostRowOf(data)); }

    std::string compare() {
        if (!isThere()) return "the window went by itself";
        if (std::string fault = rows().Check(); !fault.empty()) return fault;
        if (rows().innermostWalk() != nullptr) return "a walk is left";
        if (partsOf(*m_grid)->rebuilding != nullptr) return "a rebuild is left";
        if (partsOf(*m_grid)->native.redrawIsOff()) return "redraw is off";
        std::size_t live = 0;
        for (int mapIndex = 0; mapIndex < m_grid->GetItemCount(); ++mapIndex) {
            const DWORD_PTR data = m_grid->GetMapItemData(static_cast<unsigned>(mapIndex));
            live += data != 0;
            if (!isHere(data)) return "a row that went stands in the map";
        }
        if (live != m_rows.size()) return "rows are missing in the map";
        std::set<DWORD_PTR> shown;
        for (int visual = 0; visual < m_grid->GetDisplayCount(); ++visual) {
            const DWORD_PTR data = m_grid->GetItemData(visual);
            if (!isHere(data)) return "a row that went is displayed";
            if (data != 0 && !shown.insert(data).second) return "a row is displayed twice";
        }
        if (!m_isDefinite) return {};
        for (HostRow* const row : m_rows)
            if ((shown.count(dataOf(row)) != 0) != passes(*row)) return "a row is wrongly displayed or not";
        return {};
    }
    // Nobody comes back: then everything is certain.
    std::string compareQuietly() {
        m_grid->PopulateList();
        processEndofBatchUpdates();
        m_isDefinite = true;
        if (std::string fault = compare(); !fault.empty()) return fault + " after a quiet rebuild";
        std::vector<int> keys;
        for (int visual = 0; visual < m_grid->GetDisplayCount(); ++visual)
            if (const DWORD_PTR data = m_grid->GetItemData(visual)) keys.push_back(hostRowOf(data)->key);
        if (m_grid->m_bSortLocked && m_grid->m_nLockSortColumn == kValueColumn &&
            !std::is_sorted(keys.begin(), keys.end()) && !std::is_sorted(keys.rbegin(), keys.rend()))
            return "a locked sort left the rows out of order";
        if (static_cast<int>(m_grid->SendMessage(LVM_GETITEMCOUNT)) != m_grid->GetDisplayCount())
            return "the control has another count";
        return {};
    }

    std::vector<HostRow*> m_rows;  // those that the grid has, or is being given
    ReentryOwner m_owner;
    std::unique_ptr<MortalGrid> m_grid;
    std::string m_filter;  // digits between '~'
    std::string m_fault;
    long m_innerAtStart = 0;
    int m_depth = 0;
    bool m_quiet = true;
    bool m_ended = false;  // the window or the grid went in this step
    bool m_isDefinite = false;
    const char* m_name = "";
};

TEST_P(ReentryMix, SurvivesAHostThatComesBackAtAnyMoment) {
    constexpr int kGrids = 16;
    constexpr long kStepsOfASeed = 100;
    const long steps = test::fromEnvironment("QUOR_REENTRY_STEPS", 5000) / kGrids;
    const auto first = static_cast<unsigned>(test::fromEnvironment("QUOR_SEED", 1));
    for (long done = 0; done < steps; ++done) {
        const unsigned seed = first + static_cast<unsigned>(done / kStepsOfASeed);
        if (done % kStepsOfASeed == 0) {
            m_random.seed(seed * kGrids + static_cast<unsigned>(GetParam()));
            begin();
        }
        if (std::getenv("QUOR_REENTRY_TRACE")) std::fprintf(stderr, "seed %u step %ld\n", seed, done % kStepsOfASeed);
        const std::string fault = step();
        ASSERT_EQ(fault, "") << "seed " << seed << ", step " << done % kStepsOfASeed;
    }
    EXPECT_GT(m_inner, steps / 20);
}

INSTANTIATE_TEST_SUITE_P(, ReentryMix, ::testing::Range(0, 16));

}  // namespace
}  // namespace grid_tests
