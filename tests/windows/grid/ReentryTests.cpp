// Hosts that come back, on real grids. Each step makes one call on a visible grid; in any text, colour or notification
// that the grid then asks of its host, at a random moment, the host throws, pumps messages, adds, changes, deletes,
// empties, sorts, filters, measures, or destroys the window or the grid, also nested. Afterwards the rows' own check
// holds, the grid has the rows that the host thinks it has, and a quiet rebuild shows exactly those that pass.
//
// A deleted row's page, and the memory of a grid that went, cannot be touched: whoever does, crashes.
//   QUOR_REENTRY_STEPS  steps of all grids together, 5,000 by default      QUOR_SEED  of the first grid
#include "quor/foundation/TimerIds.h"
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/list/ListCommands.h"
#include "tests/support/Rounds.h"
#include "windows/grid/GridFixture.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
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

struct HostRow : CFilterListBaseData {
    int key = 0;
};

// One page a row. A page that was given back is used again when all others were.
class RowPages {
public:
    RowPages()
        : m_begin(
              static_cast<char*>(::VirtualAlloc(nullptr, kPages * kPage, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS))) {
        for (std::size_t i = 0; i < kPages; ++i) m_free.push_back(m_begin + i * kPage);
    }
    RowPages(const RowPages&) = delete;
    RowPages& operator=(const RowPages&) = delete;
    ~RowPages() { ::VirtualFree(m_begin, 0, MEM_RELEASE); }

    HostRow* make(int key) {
        char* const page = m_free.front();
        m_free.pop_front();
        protect(page, PAGE_READWRITE);
        auto* const row = new (page) HostRow;
        row->key = key;
        return row;
    }
    void end(HostRow* row) {
        row->~HostRow();
        protect(reinterpret_cast<char*>(row), PAGE_NOACCESS);
        m_free.push_back(reinterpret_cast<char*>(row));
    }

private:
    static constexpr std::size_t kPage = 4096, kPages = 2048;
    static void protect(char* page, DWORD access) {
        DWORD former = 0;
        ::VirtualProtect(page, kPage, access, &former);
    }

    char* m_begin;
    std::deque<char*> m_free;
};

// Its memory goes for good when it is deleted.
class MortalGrid : public CFilterListCtrl {
public:
    void* operator new(std::size_t size) {
        return ::VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    }
    void operator delete(void* grid, std::size_t size) { ::VirtualFree(grid, size, MEM_DECOMMIT); }
};

DWORD_PTR dataOf(HostRow* row) { return reinterpret_cast<DWORD_PTR>(static_cast<CFilterListBaseData*>(row)); }
HostRow* hostRowOf(DWORD_PTR data) { return static_cast<HostRow*>(reinterpret_cast<CFilterListBaseData*>(data)); }

class HostThrew : public std::runtime_error {
public:
    HostThrew() : std::runtime_error("the host") {}
};

class ReentryMix;

// The window that owns the grid.
class ReentryOwner : public CWnd {
public:
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF&, COLORREF&, int&);
    int rowColor(DWORD_PTR data, COLORREF& color, int, int);
    ReentryMix* mix = nullptr;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// Bit 0: classic mode, 1: reverse display, 2: custom draw, 3: a filter from the start.
class ReentryMix : public GridFixture, public ::testing::WithParamInterface<int> {
public:
    // What a text, a colour or a notification does besides.
    void moment();
    bool mayAsk(DWORD_PTR data);
    void rebuild() {
        if (isThere()) m_grid->PopulateList();
    }

protected:
    void SetUp() override {
        m_owner.mix = this;
        const CString windowClass = AfxRegisterWndClass(0);
        ASSERT_TRUE(m_owner.CreateEx(0, windowClass, "", WS_CHILD | WS_VISIBLE, client(), &frame(), 6));
    }
    void TearDown() override {
        m_quiet = true;
        m_grid.reset();
        m_owner.DestroyWindow();
        GridFixture::TearDown();
    }

    void begin();
    // The fault that the step leaves, or empty.
    std::string step();
    std::mt19937 m_random;
    long m_inner = 0, m_ends = 0, m_throws = 0;

private:
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    bool classic() const { return (GetParam() & 1) != 0; }
    bool isThere() const { return !m_ended && m_grid && m_grid->m_hWnd; }
    LiveRows& rows() { return partsOf(*m_grid)->rows; }

    void act(int choice);
    void pump();
    void add();
    void addClassic(HostRow* row);
    void change();
    void remove();
    void empty();
    void sort();
    void filter();
    void paint();
    void ask();
    void scroll();
    void select();
    void endWindow();
    bool isInMap(HostRow* row);
    HostRow* anyRow();
    void forget(HostRow* row) {
        if (m_rows.erase(row)) m_pages.end(row);
    }
    bool passes(const HostRow& row) const {
        return m_filter.empty() || m_filter.find(static_cast<char>('0' + row.key)) != std::string::npos;
    }
    std::string compare();
    std::string compareQuietly();

    RowPages m_pages;
    std::set<HostRow*> m_rows;  // those that the grid has, or is being given
    ReentryOwner m_owner;
    std::unique_ptr<MortalGrid> m_grid;
    std::string m_filter;  // digits between '~'
    std::string m_fault;
    int m_depth = 0;
    bool m_quiet = true;
    bool m_ended = false;  // the window or the grid went in this step
    bool m_disturbed = false;
    bool m_isDefinite = false;
    const char* m_name = "";
};

int ReentryOwner::cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF&, COLORREF&, int&) {
    if (!mix->mayAsk(data)) return 0;
    const int key = hostRowOf(data)->key;  // the row may be gone behind the moment
    mix->moment();
    if (columnIndex == 0) {
        text.Format("row %d", key);
    } else {
        text.Format("%d", key);
    }
    return 1;
}

int ReentryOwner::rowColor(DWORD_PTR data, COLORREF& color, int, int) {
    if (!mix->mayAsk(data)) return 0;
    mix->moment();
    color = RGB(0, 0, 128);
    return 1;
}

LRESULT ReentryOwner::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kFiltersChanged) return mix->rebuild(), 0;
    if (message == WM_NOTIFY) {
        const auto& news = *reinterpret_cast<const NMHDR*>(lParam);
        if (news.code == static_cast<UINT>(HDN_FILTERCHANGE)) PostMessage(kFiltersChanged);
        // Of what the control shows the grid answers by itself; a host has no say in it.
        if (news.code == static_cast<UINT>(LVN_ITEMCHANGED) || news.code == static_cast<UINT>(HDN_FILTERCHANGE))
            mix->moment();
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

void ReentryMix::begin() {
    m_quiet = true;
    m_grid.reset();
    for (HostRow* const row : m_rows) m_pages.end(row);
    m_rows.clear();
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
    m_grid->SetPointerToGetTextColor(static_cast<TextColorCallback>(&ReentryOwner::rowColor));
    m_grid->m_bLockSortEnabled = 1;
    m_grid->SetUseFilter(TRUE);
    m_grid->SetReverseDisplay((GetParam() & 2) != 0);
    if (!classic()) m_grid->SetOptiDataMode(true);
    m_ended = false;
    for (int i = 0; i < kRowsAtStart; ++i) add();
    if (GetParam() & 8) filter();
    m_isDefinite = m_filter.empty();
}

// ---- Moments

bool ReentryMix::mayAsk(DWORD_PTR data) {
    if (m_rows.count(hostRowOf(data)) == 0) m_fault = "a row was asked for that is not there";
    if (m_ended) m_fault = "a grid asked that went";
    return m_fault.empty();
}

void ReentryMix::moment() {
    if (m_quiet || m_ended || m_depth >= 3 || pick(15) != 0) return;
    struct DepthScope {
        explicit DepthScope(int& depth) : m_depth(++depth) {}
        ~DepthScope() { --m_depth; }
        int& m_depth;
    } const deeper(m_depth);
    ++m_inner;
    m_disturbed = true;
    const char* const name = m_name;
    const int choice = pick(40);
    if (choice < 8) {
        ++m_throws;
        throw HostThrew();
    }
    if (choice == 8) {
        endWindow();
    } else if (choice < 18) {
        pump();
    } else {
        try {
            act(pick(40));
        } catch (const HostThrew&) {
            if (pick(2) == 0) throw;
        }
    }
    m_name = name;
}

void ReentryMix::endWindow() {
    m_ended = true;
    ++m_ends;
    if (pick(2) == 0) {
        m_grid->DestroyWindow();
    } else {
        m_grid.reset();
    }
}

// Timers and paints that wait are delivered.
void ReentryMix::pump() {
    m_name = "pump";
    if (!isThere()) return;
    m_grid->PostMessage(WM_TIMER, classic() ? kRepaintTimer : kFlushTimer);
    if (pick(2) == 0) m_grid->Invalidate();
    MSG message;
    for (int many = 30; many > 0 && ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); --many) AfxPumpMessage();
}

// ---- Calls

void ReentryMix::act(int choice) {
    if (!isThere()) return;
    if (choice < 8) {
        add();
    } else if (choice < 14) {
        change();
    } else if (choice < 20 || m_rows.size() > kMostRows) {
        remove();
    } else if (choice < 22) {
        m_name = "end of batch";
        processEndofBatchUpdates();
    } else if (choice < 24) {
        m_name = "rebuild";
        m_grid->PopulateList();
    } else if (choice < 27) {
        sort();
    } else if (choice < 29) {
        filter();
    } else if (choice < 31) {
        m_name = "fit";
        static constexpr int kCommands[] = {kFitColumnsToData, kFitColumnsToHeader, kFitColumnsToWindow};
        m_grid->AutoSizeColumns(kCommands[pick(3)]);
    } else if (choice < 34) {
        paint();
    } else if (choice < 36) {
        ask();
    } else if (choice < 38) {
        scroll();
    } else if (choice < 39 || pick(8) != 0) {
        select();
    } else {
        empty();
    }
}

void ReentryMix::add() {
    m_name = "add";
    HostRow* const row = m_pages.make(pick(10));
    m_rows.insert(row);
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

void ReentryMix::addClassic(HostRow* row) {
    m_grid->InsertItem(0, "");
    m_grid->SetItemData(0, dataOf(row));
    if (m_ended || isInMap(row)) return;
    if (!m_disturbed) m_fault = "the data of a new row are nowhere";
    forget(row);
}

bool ReentryMix::isInMap(HostRow* row) {
    for (int mapIndex = 0; mapIndex < m_grid->GetItemCount(); ++mapIndex)
        if (m_grid->GetMapItemData(static_cast<unsigned>(mapIndex)) == dataOf(row)) return true;
    return false;
}

HostRow* ReentryMix::anyRow() {
    if (m_rows.empty()) return nullptr;
    auto row = m_rows.begin();
    std::advance(row, pick(static_cast<int>(m_rows.size())));
    return *row;
}

void ReentryMix::change() {
    m_name = "update";
    HostRow* const row = anyRow();
    if (!row) return;
    row->key = pick(10);
    if (!classic()) {
        m_grid->UpdateRow(row);
        return;
    }
    for (int mapIndex = 0; mapIndex < m_grid->GetItemCount(); ++mapIndex) {
        if (m_grid->GetMapItemData(static_cast<unsigned>(mapIndex)) != dataOf(row)) continue;
        m_grid->RepaintMapItem(mapIndex);
        return;
    }
}

void ReentryMix::remove() {
    m_name = "delete";
    HostRow* const row = anyRow();
    if (!row) return;
    if (!classic()) {
        if (m_grid->DeleteRow(row, pick(3) == 0) < 0 && !m_ended && m_rows.count(row)) m_fault = "a delete was refused";
        return m_ended ? void() : forget(row);
    }
    for (int mapIndex = 0; mapIndex < m_grid->GetItemCount(); ++mapIndex) {
        if (m_grid->GetMapItemData(static_cast<unsigned>(mapIndex)) != dataOf(row)) continue;
        if (m_grid->DeleteMapItem(mapIndex) != 1 && !m_ended && isInMap(row)) m_fault = "a delete was refused";
        return m_ended ? void() : forget(row);
    }
}

void ReentryMix::empty() {
    m_name = "empty";
    m_grid->DeleteAllItems();
    while (!m_ended && !m_rows.empty()) forget(*m_rows.begin());
}

void ReentryMix::sort() {
    m_name = "sort";
    if (m_grid->m_bSortLocked) {
        if (pick(2) == 0) return m_grid->SortByLastColumnWithLock();
        m_grid->m_bSortLocked = 0;
    }
    m_grid->SortOn(pick(3), pick(2) ? 1 : -1);
    if (!m_ended && m_grid->m_bSorted && pick(3) == 0) m_grid->m_bSortLocked = 1;
}

// By the header's field as a user does it, or at once.
void ReentryMix::filter() {
    m_name = "filter";
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

void ReentryMix::paint() {
    m_name = "paint";
    m_grid->Invalidate();
    m_grid->UpdateWindow();
}

void ReentryMix::ask() {
    m_name = "ask";
    HostRow* const row = anyRow();
    CString text;
    if (row) m_grid->GetCustomColumnText(dataOf(row), kUserColumn, text);
    if (isThere()) text = m_grid->GetItemText(pick(m_grid->GetDisplayCount() + 1), pick(3));
}

void ReentryMix::scroll() {
    m_name = "scroll";
    const int count = m_grid->GetDisplayCount();
    if (pick(2) == 0 && count > 0) {
        m_grid->EnsureVisible(pick(count), FALSE);
    } else {
        m_grid->SendMessage(WM_VSCROLL, pick(2) ? SB_PAGEDOWN : SB_LINEUP);
    }
}

void ReentryMix::select() {
    m_name = "select";
    const int count = static_cast<int>(m_grid->SendMessage(LVM_GETITEMCOUNT));
    if (count > 0 && isThere()) m_grid->SetItemState(pick(count), static_cast<UINT>(pick(4)), 3);
}

// ---- A step

std::string ReentryMix::step() {
    m_fault.clear();
    m_quiet = m_disturbed = false;
    m_depth = 0;
    const long inner = m_inner;
    try {
        act(pick(40));
    } catch (const HostThrew&) {
        m_isDefinite = false;
    }
    m_quiet = true;
    try {
        pumpUntilIdle();  // what was thrown below the system's own code comes out at the latest here
    } catch (const HostThrew&) {
        m_isDefinite = false;
    }
    if (!m_fault.empty() || m_ended) {
        if (m_ended) begin();
        return m_fault.empty() ? "" : m_fault + std::string(" in ") + m_name;
    }
    if (m_inner != inner) m_isDefinite = false;
    if (std::string fault = compare(); !fault.empty()) return fault + std::string(" after ") + m_name;
    return pick(4) == 0 ? compareQuietly() : std::string();
}

std::string ReentryMix::compare() {
    if (!isThere()) return "the window went by itself";
    if (std::string fault = rows().Check(); !fault.empty()) return fault;
    if (rows().innermostWalk() != nullptr) return "a walk is left";
    if (partsOf(*m_grid)->rebuilding != nullptr) return "a rebuild is left";
    if (partsOf(*m_grid)->native.redrawIsOff()) return "redraw is off";
    std::size_t live = 0;
    for (int mapIndex = 0; mapIndex < m_grid->GetItemCount(); ++mapIndex) {
        const DWORD_PTR data = m_grid->GetMapItemData(static_cast<unsigned>(mapIndex));
        live += data != 0;
        if (data != 0 && m_rows.count(hostRowOf(data)) == 0) return "a row that went stands in the map";
    }
    if (live != m_rows.size()) return "rows are missing in the map";
    std::set<DWORD_PTR> shown;
    for (int visual = 0; visual < m_grid->GetDisplayCount(); ++visual) {
        const DWORD_PTR data = m_grid->GetItemData(visual);
        if (data != 0 && m_rows.count(hostRowOf(data)) == 0) return "a row that went is displayed";
        if (data != 0 && !shown.insert(data).second) return "a row is displayed twice";
    }
    if (!m_isDefinite) return {};
    for (HostRow* const row : m_rows)
        if ((shown.count(dataOf(row)) != 0) != passes(*row)) return "a row is wrongly displayed or not";
    return {};
}

// Nobody comes back: then everything is certain.
std::string ReentryMix::compareQuietly() {
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
    std::printf("%ld steps, %ld inner calls, %ld throws, %ld ends\n", steps, m_inner, m_throws, m_ends);
}

INSTANTIATE_TEST_SUITE_P(, ReentryMix, ::testing::Range(0, 16));

}  // namespace
}  // namespace grid_tests
