// The panes below the watch in a window of the test's own: what closes, comes back and keeps the focus.
#include "host/WorkspaceArea.h"
#include "support/WindowFixture.h"

#include <cmath>

namespace terminal {
namespace {

struct AreaTest : ::test::WindowFixture, CWorkspaceArea::Owner {
    AreaTest() {
        area.CreateArea(&frame(), 1);
        area.MoveWindow(0, 0, 780, 500);
        for (int pane = 0; pane < kLowerPanes; ++pane) {
            CPaneHolder& holder = area.holder(LowerPane{pane});
            forms[pane].Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), &holder, 1);
            holder.hold(forms[pane], "Pane");
        }
        area.setShares(CWorkspaceArea::firstShares());
        pumpUntilIdle();
    }
    void showWorkspace(int) override {}
    void moveWorkspace(int, int) override {}
    void copyWorkspace(int, const std::string&) override {}
    std::string workspaceName(int) const override { return {}; }
    bool renameWorkspace(int, const std::string&) override { return true; }
    void closeWorkspace(int) override {}
    void addWorkspace() override {}

    void close(LowerPane pane) { area.holder(pane).GetDlgItem(kCommandCloseHolder)->SendMessage(BM_CLICK); }
    // What shows, each with its share in hundredths of its row, and the rows.
    std::string shown() {
        std::string text;
        for (const PaneShare& one : area.shares())
            if (one.shown) text += one.pane.substr(0, 2) + std::to_string(std::lround(one.share * 100)) + " ";
        return text;
    }

    CWorkspaceArea area{*this};
    CWnd forms[kLowerPanes];
};

TEST_F(AreaTest, ARowWithoutPanesGoesAndComesBackWithOne) {
    const std::string first = "Or54 Tr46 Op50 Po34 Lo16 Up52 Lo48 ";
    EXPECT_EQ(shown(), first);
    forms[0].SetFocus();
    close(LowerPane::orders);
    EXPECT_EQ(::GetFocus(), forms[1].m_hWnd) << "not in a pane that nobody sees";
    close(LowerPane::trades);
    const std::string without = "Op50 Po34 Lo16 Lo100 ";
    EXPECT_EQ(shown(), without);
    EXPECT_EQ(::GetFocus(), forms[2].m_hWnd);
    EXPECT_FALSE(area.shows(LowerPane::trades));
    area.setShares(area.shares());  // as after a restart
    EXPECT_EQ(shown(), without);
    area.show(LowerPane::trades, true);
    area.show(LowerPane::orders, true);
    EXPECT_EQ(shown(), first) << "each with its first share";
    // Of three neighbours the last one goes alone.
    close(LowerPane::positions);
    close(LowerPane::log);
    EXPECT_EQ(shown(), "Or54 Tr46 Op100 Up52 Lo48 ");
    for (const LowerPane pane : {LowerPane::orders, LowerPane::trades, LowerPane::chain}) close(pane);
    EXPECT_EQ(shown(), "Op100 Lo100 ") << "the last one stays";
}

}  // namespace
}  // namespace terminal
