// The picture oracle over random mixes on visible grids of 0 to 60 rows: after each step what stands on the screen is,
// pixel by pixel, what a full repaint puts there. And between flushes: in a picture grabbed at any moment no row stands
// twice, and the rows in view are those of one moment.
//   QUOR_PICTURE_STEPS  steps of all mixes together (2,000 by default), QUOR_GRABS likewise for the grabs
#include "quor/foundation/TimerIds.h"
#include "quor/platform/proving/WindowCapture.h"
#include "windows/grid/GridFixture.h"
#include "windows/list/PictureMix.h"

#include <algorithm>

namespace grid_tests {
namespace {

constexpr int kMostRows = 60;
constexpr int kConfigurations = 16;
constexpr DWORD kPaintedGrid = (kGridStyle | LVS_OWNERDRAWFIXED) & ~static_cast<DWORD>(LVS_NOSORTHEADER);

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
    void SetUp() override {
        if (GetParam() & 8) road = test::Road::subclassed;
        create(m_grid, {{"name", 90}, {"value", 70}, {"more", 60}, {"most"}}, CRect(0, 0, 320, 240), kPaintedGrid);
        m_grid.SetUseFilter(TRUE);
        m_grid.SetReverseDisplay((GetParam() & 1) != 0);
        m_grid.m_bLockSortEnabled = TRUE;
        if (GetParam() & 2) m_grid.PutListFilter();
        m_grid.SetOptiDataMode(!m_classic);
        ::SetFocus(frame().m_hWnd);
    }
    void TearDown() override {
        m_grid.DestroyWindow();
        GridFixture::TearDown();
    }

    const bool m_classic = (GetParam() & 4) != 0;
    PaintedGrid m_grid;
    list_tests::PictureMix m_mix{m_grid,
                                 {.insert = [this](int) { add(1); },
                                  .change = [this](int visual) { change(visual); },
                                  .remove = [this](int visual) { m_grid.DeleteItem(visual); },
                                  .clear = [this] { m_grid.DeleteAllItems(); },
                                  .settle = [this] { return settle(); }},
                                 static_cast<unsigned>(GetParam()) + 1,
                                 {{60, "add 20", false, [this] { add(20); }},
                                  {60, "delete 15", true, [this] { removeMany(15); }},
                                  {60, "filter", false, [this] { filter(); }},
                                  {60, "sort by the program", false, [this] { sort(); }}}};

private:
    // What the grid owes by its own rules before anybody may look.
    std::string settle() {
        processEndofBatchUpdates();
        if (m_grid.KillTimer(kFlushTimer)) m_grid.SendMessage(WM_TIMER, kFlushTimer);
        if (m_grid.KillTimer(kRepaintTimer)) m_grid.SendMessage(WM_TIMER, kRepaintTimer);
        m_grid.UpdateWindow();
        int first = 0, last = 0;
        ::GetScrollRange(m_grid.m_hWnd, SB_VERT, &first, &last);
        return last == std::max(m_grid.GetDisplayCount() - 1, 0) ? ""
                                                                 : "the scroll bar ends at " + std::to_string(last);
    }
    void add(int many) {
        for (; many > 0 && m_grid.GetItemCount() < kMostRows; --many) {
            Row* const added = row("r" + std::to_string(m_last++));
            added->cells[1] = std::to_string(m_mix.pick(100));
            added->background = static_cast<COLORREF>(0x400000 + m_last);
            if (m_classic) {
                m_grid.InsertItem(0, "");
                m_grid.SetItemData(0, dataOf(added));
            } else {
                m_grid.AddRow(added, m_mix.pick(3) == 0);
            }
        }
    }
    void removeMany(int many) {
        for (; many > 0 && m_grid.GetDisplayCount() > 0; --many) {
            const int visual = m_mix.pick(m_grid.GetDisplayCount());
            const DWORD_PTR data = m_grid.GetItemData(visual);
            if (m_classic || data == 0) {
                m_grid.DeleteItem(visual);
            } else {
                m_grid.DeleteRow(rowOf(data), true);
            }
        }
    }
    void change(int visual) {
        const DWORD_PTR data = m_grid.GetItemData(visual);
        if (data == 0) return;
        rowOf(data)->cells[1] = std::to_string(m_mix.pick(100));
        m_classic || m_mix.pick(2) ? m_grid.RepaintDisplayItem(visual) : m_grid.UpdateRow(rowOf(data));
    }
    void filter() {
        static const char* const texts[] = {"", "", "1", ">50", "<30", "*7", "x"};
        CString text = texts[m_mix.pick(7)];
        m_grid.SetMapColumnFilter(1, text, 0);
        m_grid.PopulateList();
        ::SetFocus(frame().m_hWnd);
    }
    void sort() {
        if (m_mix.pick(4) == 0 && m_grid.m_bSorted) m_grid.m_bSortLocked = !m_grid.m_bSortLocked;
        m_grid.SortOn(m_mix.pick(2), 1);
    }

    int m_last = 0;
};

TEST_P(GridPictures, AreThoseOfAFullRepaint) {
    EXPECT_EQ(m_mix.run(test::fromEnvironment("QUOR_PICTURE_STEPS", 2000) / kConfigurations), "");
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
            const int y = item.top, x = std::max<int>(item.left, 0);  // above every text
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
    m_grid.NoSelectionPaint = true;
    m_grid.onPaint = [this] { remember(); };
    remember();
    const long grabs = test::fromEnvironment("QUOR_GRABS", 2000) / kConfigurations;
    for (int i = 0; i < grabs; ++i) {
        const char* const step = m_mix.step();
        if (m_mix.pick(3) == 0) processEndofBatchUpdates();
        if (m_mix.pick(4) == 0) m_grid.SendMessage(WM_TIMER, kFlushTimer);
        if (m_mix.pick(2) == 0 && m_grid.CListCtrl::GetItemCount() != 0) m_mix.changeState();
        m_grid.UpdateWindow();
        ASSERT_EQ(compare(), "") << "configuration " << GetParam() << ", grab " << i << ", " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(, GridGrabs, ::testing::Range(0, kConfigurations));
INSTANTIATE_TEST_SUITE_P(, GridPictures, ::testing::Range(0, kConfigurations));

}  // namespace
}  // namespace grid_tests
