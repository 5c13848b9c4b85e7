// What reaches the native control. A procedure of the test's own stands below the grid and counts.
#include "windows/grid/GridFixture.h"

namespace grid_tests {
namespace {

struct Spy {
    WNDPROC below = nullptr;
    int messages = 0;
    std::vector<int> counts;  // of LVM_SETITEMCOUNT, in order
    int focusGiven = 0;       // LVM_SETITEMSTATE that gives a row the focus
    int framesDrawn = 0;      // WM_NCPAINT
    static Spy* current;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        ++current->messages;
        if (message == LVM_SETITEMCOUNT) current->counts.push_back(static_cast<int>(wParam));
        current->framesDrawn += message == WM_NCPAINT;
        if (message == LVM_SETITEMSTATE && (reinterpret_cast<const LVITEMA*>(lParam)->state & LVIS_FOCUSED))
            ++current->focusGiven;
        return ::CallWindowProcA(current->below, window, message, wParam, lParam);
    }
};
Spy* Spy::current = nullptr;

class Traffic : public GridFixture {
protected:
    void SetUp() override {
        Spy::current = &spy;
        road = test::Road::subclassed;
        onControl = [this](HWND list) {
            spy.below = reinterpret_cast<WNDPROC>(
                ::SetWindowLongPtrA(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Spy::procedure)));
        };
        createOpti(grid);
        fill(grid, "abcdefghijklmnopqrstuvwxyz");
        pumpUntilIdle();
        grid.UpdateRow(row("a"));  // reads the layout anew
        spy.messages = 0;
        spy.counts.clear();
    }
    void TearDown() override {
        grid.DestroyWindow();
        GridFixture::TearDown();
    }

    Spy spy;
    CFilterListCtrl grid;
};

TEST_F(Traffic, ATickSendsTheControlNothing) {
    for (int i = 0; i < 1000; ++i) grid.UpdateRow(row({static_cast<char>('a' + i % 26)}));
    EXPECT_EQ(spy.messages, 0);
    processEndofBatchUpdates();
    EXPECT_EQ(spy.messages, 0);
}

TEST_F(Traffic, DeferredRowsCostNothingUntilTheBatchEndsAndThenOneCount) {
    for (const char* name : {"a", "f", "m"}) grid.DeleteRow(row(name), false);
    for (const char* name : {"1", "2"}) grid.AddRow(row(name), false);
    EXPECT_EQ(spy.messages, 0);
    processEndofBatchUpdates();
    EXPECT_EQ(spy.counts, std::vector<int>{25});
}

// The scroll bar is drawn with the next paint, not while the control hears the count; nothing else is lost or added.
TEST_F(Traffic, ACountThatIsToldLeavesWhatIsToBePaintedAndDrawsTheFrameLater) {
    const CRect row(0, 30, 50, 45), caption(10, 0, 30, 8);
    const auto toPaint = [](CWnd& window) {
        CRect area;
        ::GetUpdateRect(window.m_hWnd, &area, FALSE);
        return area;
    };
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    for (const bool pending : {true, false}) {
        grid.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        if (pending) {
            grid.InvalidateRect(&row, FALSE);
            header.InvalidateRect(&caption, FALSE);
        }
        spy.counts.clear();
        spy.framesDrawn = 0;
        grid.AddRow(this->row(pending ? "1" : "2"), false);
        processEndofBatchUpdates();
        ASSERT_EQ(spy.counts.size(), 1u);
        EXPECT_EQ(spy.framesDrawn, 0);
        EXPECT_TRUE(grid.IsWindowVisible());
        EXPECT_EQ(toPaint(grid), pending ? row : CRect());
        EXPECT_EQ(toPaint(header), pending ? caption : CRect());
        grid.UpdateWindow();
        EXPECT_EQ(spy.framesDrawn, 1);
    }
}

// Each move of the focus costs the control milliseconds: once a row it was 870 ms for 100 selected rows.
TEST_F(Traffic, ABatchWithoutAMarkMovesTheFocusTwice) {
    for (int visual = 2; visual < 12; ++visual) grid.SetItemState(visual, LVIS_SELECTED, LVIS_SELECTED);
    grid.SetSelectionMark(-1);
    spy.focusGiven = 0;
    grid.DeleteRow(row("a"), false);
    processEndofBatchUpdates();
    EXPECT_EQ(spy.focusGiven, 2);
    EXPECT_EQ(grid.GetSelectedCount(), 10u);
    EXPECT_EQ(grid.GetSelectionMark(), 1);
    EXPECT_EQ(grid.GetNextItem(-1, LVNI_FOCUSED), 10);
}

TEST_F(Traffic, ABatchOfTicksAloneTellsNoCount) {
    grid.AddRow(row("1"), true);
    grid.UpdateRow(row("b"));
    processEndofBatchUpdates();
    EXPECT_EQ(spy.counts, std::vector<int>{});
    grid.SendMessage(WM_TIMER, 4001);
    EXPECT_EQ(spy.counts, std::vector<int>{27});
}

TEST_F(Traffic, WhoeverLooksSeesTheCount) {
    grid.AddRow(row("1"), true);
    grid.AddRow(row("2"), true);
    EXPECT_EQ(grid.GetDisplayCount(), 28);
    EXPECT_EQ(spy.counts, std::vector<int>{});
    EXPECT_EQ(::SendMessageA(grid, LVM_GETITEMCOUNT, 0, 0), 28);
    EXPECT_EQ(spy.counts, std::vector<int>{28});
    grid.DeleteRow(row("1"), true);
    grid.RedrawWindow();
    EXPECT_EQ(spy.counts, (std::vector<int>{28, 27}));
}

TEST_F(Traffic, AFallThatNobodyCouldHaveFeltIsNotTold) {
    grid.DeleteRow(row("z"), true);
    grid.AddRow(row("z"), true);
    ::SendMessageA(grid, LVM_GETITEMCOUNT, 0, 0);
    EXPECT_EQ(spy.counts, std::vector<int>{});
    grid.SetItemState(25, LVIS_SELECTED, LVIS_SELECTED);
    spy.counts.clear();
    grid.DeleteRow(row("z"), true);
    grid.AddRow(row("z"), true);
    ::SendMessageA(grid, LVM_GETITEMCOUNT, 0, 0);
    EXPECT_EQ(spy.counts, (std::vector<int>{25, 26}));
    EXPECT_EQ(grid.GetSelectedCount(), 0u);
}

TEST_F(Traffic, MovingThePointerLeavesTheCountAlone) {
    grid.AddRow(row("1"), true);
    grid.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(20, 40));
    grid.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(20, 40));
    EXPECT_EQ(spy.counts, std::vector<int>{});
    grid.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(20, 40));
    EXPECT_EQ(spy.counts, std::vector<int>{27});
}

// A host that speaks to the control itself is believed.
TEST_F(Traffic, ACountToldByTheHostStands) {
    grid.SetItemCountEx(5, 0);
    spy.counts.clear();
    grid.UpdateRow(row("a"));
    EXPECT_EQ(::SendMessageA(grid, LVM_GETITEMCOUNT, 0, 0), 5);
    EXPECT_EQ(spy.counts, std::vector<int>{});
    grid.DeleteRow(row("z"), false);
    processEndofBatchUpdates();
    EXPECT_EQ(::SendMessageA(grid, LVM_GETITEMCOUNT, 0, 0), 25);
}

}  // namespace
}  // namespace grid_tests
