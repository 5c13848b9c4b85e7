// What reaches the native control. A procedure of the test's own stands below the grid and counts.
#include "windows/grid/GridFixture.h"

namespace grid_tests {
namespace {

struct Spy {
    WNDPROC below = nullptr;
    int messages = 0;
    std::vector<int> counts;  // of LVM_SETITEMCOUNT, in order
    int framesDrawn = 0;      // WM_NCPAINT
    static Spy* current;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        ++current->messages;
        if (message == LVM_SETITEMCOUNT) current->counts.push_back(static_cast<int>(wParam));
        current->framesDrawn += message == WM_NCPAINT;
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

TEST_F(Traffic, TicksAndDeferredRowsCostNothingUntilTheBatchEndsAndThenOneCount) {
    for (int i = 0; i < 1000; ++i) grid.UpdateRow(row({static_cast<char>('a' + i % 26)}));
    processEndofBatchUpdates();
    for (const char* name : {"a", "f", "m"}) grid.DeleteRow(row(name), false);
    for (const char* name : {"1", "2"}) grid.AddRow(row(name), false);
    EXPECT_EQ(spy.messages, 0);
    processEndofBatchUpdates();
    EXPECT_EQ(spy.counts, std::vector<int>{25});
}

// The scroll bar is drawn with the next paint, not while the control hears the count. That nothing to be painted is
// lost, the pictures tell.
TEST_F(Traffic, ACountThatIsToldDrawsTheFrameLater) {
    grid.RedrawWindow();
    spy.framesDrawn = 0;
    grid.AddRow(row("1"), false);
    processEndofBatchUpdates();
    ASSERT_EQ(spy.counts.size(), 1u);
    EXPECT_EQ(spy.framesDrawn, 0);
    CRect toPaint;
    grid.GetUpdateRect(&toPaint);
    EXPECT_TRUE(toPaint.IsRectEmpty()) << "nothing is added";
    grid.UpdateWindow();
    EXPECT_EQ(spy.framesDrawn, 1);
}

TEST_F(Traffic, TheCountIsToldWhenSomebodyCouldSeeIt) {
    using Counts = std::vector<int>;
    const auto heard = [this] { return std::exchange(spy.counts, {}); };
    const auto look = [this] { return ::SendMessageA(grid, LVM_GETITEMCOUNT, 0, 0); };
    grid.AddRow(row("1"), true);
    grid.UpdateRow(row("b"));
    processEndofBatchUpdates();
    EXPECT_EQ(heard(), Counts{}) << "a batch of ticks alone";
    grid.SendMessage(WM_TIMER, 4001);
    EXPECT_EQ(heard(), Counts{27});

    grid.AddRow(row("2"), true);
    grid.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(20, 40));
    grid.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(20, 40));
    EXPECT_EQ(heard(), Counts{}) << "the pointer alone";
    grid.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(20, 40));
    EXPECT_EQ(heard(), Counts{28});

    grid.AddRow(row("3"), true);
    EXPECT_EQ(grid.GetDisplayCount(), 29);
    EXPECT_EQ(heard(), Counts{});
    EXPECT_EQ(look(), 29);
    grid.DeleteRow(row("3"), true);
    grid.RedrawWindow();
    EXPECT_EQ(heard(), (Counts{29, 28}));

    for (const bool felt : {false, true}) {
        if (felt) grid.SetItemState(27, LVIS_SELECTED, LVIS_SELECTED);
        heard();
        grid.DeleteRow(row("2"), true);
        grid.AddRow(row("2"), true);
        look();
        EXPECT_EQ(heard(), felt ? (Counts{27, 28}) : Counts{}) << "a fall";
    }
    EXPECT_EQ(grid.GetSelectedCount(), 0u);
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
