// The picture oracle over random mixes on visible grids of 0 to 60 rows: after each step what stands on the screen is,
// pixel by pixel, what a full repaint puts there. And between flushes: in a picture grabbed at any moment no row stands
// twice, and the rows in view are those of one moment.
//   QUOR_PICTURE_STEPS  steps of all mixes together (2,000 by default), QUOR_GRABS likewise for the grabs
#include "quor/foundation/TimerIds.h"
#include "support/PictureOracle.h"
#include "tests/support/Rounds.h"
#include "windows/grid/GridFixture.h"

#include <algorithm>
#include <cstdlib>
#include <random>

namespace grid_tests {
namespace {

constexpr int kMostRows = 60;
constexpr DWORD kPaintedGrid = kGridStyle | LVS_OWNERDRAWFIXED;
constexpr int kConfigurations = 16;

// Tells when it is about to paint.
class PaintedGrid : public CFilterListCtrl {
public:
    std::function<void()> onPaint;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_PAINT && onPaint) onPaint();
        return CFilterListCtrl::WindowProc(message, wParam, lParam);
    }
};

// Bit 0: reverse display, 1: filter bar, 2: classic mode, 3: the control is there before the grid.
class GridPictures : public GridFixture, public ::testing::WithParamInterface<int> {
protected:
    void TearDown() override {
        m_grid.DestroyWindow();
        GridFixture::TearDown();
    }

    void begin() {
        m_random.seed(static_cast<unsigned>(GetParam()) + 1);
        if (GetParam() & 8) road = test::Road::subclassed;
        create(m_grid, {{"name", 90}, {"value", 70}, {"more", 60}}, CRect(0, 0, 320, 240), kPaintedGrid);
        m_grid.SetUseFilter(TRUE);
        m_grid.SetReverseDisplay((GetParam() & 1) != 0);
        m_grid.m_bLockSortEnabled = TRUE;
        if (GetParam() & 2) m_grid.PutListFilter();
        m_classic = (GetParam() & 4) != 0;
        if (!m_classic) m_grid.SetOptiDataMode(true);
        ::SetFocus(frame().m_hWnd);
    }

    void step() {
        switch (pick(20)) {
            case 0:
            case 1:
            case 2:
            case 3:
                return add(1 + pick(4));
            case 4:
            case 5:
                return remove(1 + pick(3));
            case 6:
            case 7:
            case 8:
                return change();
            case 9:
                return select();
            case 10:
                return press();
            case 11:
            case 12:
                return scroll();
            case 13:
                return filter();
            case 14:
                return click();
            case 15:
                return pick(6) == 0 ? empty() : change();
            case 16:
                return resize();
            case 17:
                return add(20);
            case 18:
                return remove(15);
            default:
                m_grid.GetFocus() == &m_grid ? ::SetFocus(frame().m_hWnd) : ::SetFocus(m_grid.m_hWnd);
        }
    }

    // What the grid owes by its own rules before anybody may look.
    void payDebts() {
        processEndofBatchUpdates();
        if (m_grid.KillTimer(kFlushTimer)) m_grid.SendMessage(WM_TIMER, kFlushTimer);
        if (m_grid.KillTimer(kRepaintTimer)) m_grid.SendMessage(WM_TIMER, kRepaintTimer);
        m_grid.UpdateWindow();
    }

    int lastRowOfScrollBar() {
        int first = 0, last = 0;
        ::GetScrollRange(m_grid.m_hWnd, SB_VERT, &first, &last);
        return last;
    }
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    void select() {
        const int count = static_cast<int>(m_grid.SendMessage(LVM_GETITEMCOUNT));
        if (count > 0) m_grid.SetItemState(pick(count), static_cast<UINT>(pick(4)), 3);
    }
    PaintedGrid m_grid;
    bool m_classic = false;
    std::vector<std::string> m_names;

private:
    void add(int many) {
        for (; many > 0 && m_names.size() < kMostRows; --many) {
            m_names.push_back("r" + std::to_string(m_last++));
            Row* const added = row(m_names.back());
            added->cells[1] = std::to_string(pick(100));
            added->background = static_cast<COLORREF>(0x400000 + m_last);
            if (m_classic) {
                m_grid.InsertItem(0, "");
                m_grid.SetItemData(0, dataOf(added));
            } else {
                m_grid.AddRow(added, pick(3) == 0);
            }
        }
    }
    void remove(int many) {
        for (; many > 0 && !m_names.empty(); --many) {
            const auto at = m_names.begin() + pick(static_cast<int>(m_names.size()));
            if (m_classic) {
                const int mapIndex = mapIndexOf(row(*at));
                m_grid.DeleteMapItem(mapIndex);
                m_grid.InvalidateRect(nullptr);  // a hidden row that goes is the caller's to repaint
            } else {
                m_grid.DeleteRow(row(*at), pick(3) == 0);
            }
            freeRow(*at);
            m_names.erase(at);
        }
    }
    void change() {
        if (m_names.empty()) return;
        Row* const changed = row(m_names[static_cast<std::size_t>(pick(static_cast<int>(m_names.size())))]);
        changed->cells[1] = std::to_string(pick(100));
        if (m_classic) {
            m_grid.RepaintMapItem(mapIndexOf(changed));
        } else {
            m_grid.UpdateRow(changed);
        }
    }
    int mapIndexOf(Row* wanted) {
        for (int mapIndex = 0; mapIndex < m_grid.GetItemCount(); ++mapIndex)
            if (m_grid.GetMapItemData(static_cast<unsigned long long>(mapIndex)) == dataOf(wanted)) return mapIndex;
        return -1;
    }
    void press() {
        static constexpr WPARAM keys[] = {VK_DOWN, VK_UP, VK_HOME, VK_END, VK_NEXT, VK_PRIOR};
        m_grid.SendMessage(WM_KEYDOWN, keys[pick(6)]);
    }
    void scroll() { m_grid.Scroll(CSize((pick(3) - 1) * 20, (pick(41) - 20) * 10)); }
    void filter() {
        static const char* const texts[] = {"", "", "1", ">50", "<30", "*7", "x"};
        CString text = texts[pick(7)];
        m_grid.SetMapColumnFilter(1, text, 0);
        m_grid.PopulateList();
        ::SetFocus(frame().m_hWnd);
    }
    void click() {
        if (pick(4) == 0 && m_grid.m_bSorted) m_grid.m_bSortLocked = !m_grid.m_bSortLocked;
        m_grid.SortOn(pick(2), 1);
    }
    void empty() {
        if (m_names.empty()) return;
        m_grid.DeleteAllItems();
        for (const std::string& name : m_names) freeRow(name);
        m_names.clear();
    }
    void resize() { m_grid.SetWindowPos(nullptr, 0, 0, 260 + pick(80), 160 + pick(100), SWP_NOMOVE | SWP_NOZORDER); }

    std::mt19937 m_random;
    int m_last = 0;
};

TEST_P(GridPictures, AreThoseOfAFullRepaint) {
    begin();
    const long steps = test::fromEnvironment("QUOR_PICTURE_STEPS", 2000) / kConfigurations;
    for (int i = 0; i < steps; ++i) {
        step();
        payDebts();
        ASSERT_EQ(test::stalePixels(m_grid.m_hWnd), "") << "configuration " << GetParam() << ", step " << i;
        ASSERT_EQ(lastRowOfScrollBar(), std::max(m_grid.GetDisplayCount() - 1, 0))
            << "configuration " << GetParam() << ", step " << i;
    }
}

// The ground of each row has a colour of its own, so that a picture tells which row stands where.
class GridGrabs : public GridPictures {
protected:
    // The rows from the page's top down as the grid has them now, and as the screen shows them.
    using Page = std::vector<int>;
    Page pageNow() {
        Page page;
        for (int visual = m_grid.GetTopIndex(); visual < m_grid.GetDisplayCount(); ++visual) {
            const DWORD_PTR data = m_grid.GetItemData(visual);
            page.push_back(data ? static_cast<int>(rowOf(data)->background) : 0);
        }
        return page;
    }
    Page pageOnScreen() {
        WindowPicture picture;
        CRect item;
        Page page;
        const int count = static_cast<int>(m_grid.SendMessage(LVM_GETITEMCOUNT));
        if (!quorCaptureClientArea(m_grid.m_hWnd, picture)) return page;
        for (int visual = m_grid.GetTopIndex(); visual < count; ++visual) {
            m_grid.GetItemRect(visual, &item, LVIR_BOUNDS);
            const int y = item.top + 2, x = std::max<int>(item.left, 0) + 1;
            if (y >= picture.height || x >= picture.width || x >= item.right) break;
            const std::uint32_t pixel = picture.pixels[static_cast<std::size_t>(y * picture.width + x)];
            const int color = static_cast<int>(RGB(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255));
            page.push_back(color == static_cast<int>(::GetSysColor(COLOR_WINDOW)) ? 0 : color);
        }
        return page;
    }
    // Empty, or what is wrong with the page on the screen: it must begin one of the pages that the grid has had.
    std::string compare() {
        const Page shown = pageOnScreen();
        for (std::size_t i = 0; i < shown.size(); ++i)
            if (shown[i] != 0 && std::count(shown.begin(), shown.end(), shown[i]) > 1)
                return "the row of line " + std::to_string(i) + " stands twice";
        // A deleted row may stay until the end of its batch, and is blank where something else repaints it. The control
        // may know of more rows than it has painted so far.
        const auto isRow = [](int now, int then) { return now == then || now == 0 || then == 0; };
        const auto begins = [&](const Page& page) {
            const auto behind = shown.begin() + static_cast<std::ptrdiff_t>(std::min(page.size(), shown.size()));
            return std::equal(shown.begin(), behind, page.begin(), isRow) &&
                   std::all_of(behind, shown.end(), [](int color) { return color == 0; });
        };
        if (std::any_of(m_pages.begin(), m_pages.end(), begins)) return {};
        std::string told = "no moment had these rows:";
        for (const int color : shown) told += " " + std::to_string(color & 0xFFFF);
        told += "; now they are";
        for (const int color : pageNow()) told += " " + std::to_string(color & 0xFFFF);
        return told;
    }
    void remember() {
        m_pages.push_back(pageNow());
        if (m_pages.size() > kRemembered) m_pages.erase(m_pages.begin());
    }

private:
    static constexpr std::size_t kRemembered = 40;
    std::vector<Page> m_pages;
};

TEST_P(GridGrabs, ShowTheRowsOfOneMoment) {
    begin();
    m_grid.NoSelectionPaint = true;
    m_grid.onPaint = [this] { remember(); };
    remember();
    const long grabs = test::fromEnvironment("QUOR_GRABS", 2000) / kConfigurations;
    for (int i = 0; i < grabs; ++i) {
        step();
        if (pick(3) == 0) processEndofBatchUpdates();
        if (pick(4) == 0) m_grid.SendMessage(WM_TIMER, kFlushTimer);
        if (pick(2) == 0) select();
        m_grid.UpdateWindow();
        ASSERT_EQ(compare(), "") << "configuration " << GetParam() << ", grab " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(, GridGrabs, ::testing::Range(0, kConfigurations));
INSTANTIATE_TEST_SUITE_P(, GridPictures, ::testing::Range(0, kConfigurations));

}  // namespace
}  // namespace grid_tests
