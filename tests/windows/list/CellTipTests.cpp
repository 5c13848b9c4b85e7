// Tool tips of a list's cells. Which cell is clipped, and where a tip stands, is tested in the core.
#include "ListFixture.h"
#include "quor/list/CommonListToolTip.h"
#include "support/CellTip.h"
#include "support/HandleCounts.h"
#include "support/PretendedScreens.h"

namespace {

using namespace list_tests;
using test::restAt;
using test::restOn;
using test::shownTip;
using test::tipText;

const std::string kLong = "A name that is longer than its cell";

class TellingOwner : public Owner {
public:
    std::function<int(int row, int place, CString& text)> tells;
    int tell(int row, int place, CString& text) { return tells(row, place, text); }
};

// The symbols are long in every second row, from the first.
struct CellTips : ListFixture {
    void SetUp() override {
        tips = std::make_unique<CCommonListToolTip>();
        start(*tips);
        for (int row = 0; row < 40; ++row) tips->InsertItem(row, row % 2 ? "short" : kLong.c_str());
        pumpUntilIdle();
    }
    void TearDown() override {
        tips.reset();
        if (teller.m_hWnd) teller.DestroyWindow();
        ListFixture::TearDown();
    }
    void ask(std::function<int(int row, int place, CString& text)> tells) {
        teller.tells = std::move(tells);
        if (teller.m_hWnd) return;
        teller.create(frame());
        tips->SetOwner(&teller);
        tips->InitToolTipRetFunc(static_cast<ToolTipTextCallback>(&TellingOwner::tell));
    }
    CRect labelOf(int row) {
        CRect label;
        tips->GetSubItemRect(row, 0, LVIR_LABEL, label);
        tips->ClientToScreen(&label);
        return label;
    }
    std::unique_ptr<CCommonListToolTip> tips;
    TellingOwner teller;
};

TEST_F(CellTips, TheWholeTextShowsOnceTheMouseRests) {
    quor::sendMouseMove(*tips, test::middleOf(*tips, 2, 0));
    pumpUntilIdle();
    EXPECT_EQ(shownTip(), nullptr) << "not at once";
    EXPECT_TRUE(pumpFor([] { return tipText() == kLong; })) << "but by itself";
    const CRect before = test::tipRect();
    tips->SetWindowPos(nullptr, kListRect.left + 5, kListRect.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    test::lookAgain(*tips);
    EXPECT_EQ(test::tipRect(), before + CSize(5, 0)) << "it goes with its list";
    EXPECT_EQ(restOn(*tips, 2, 1), "") << "a cell without a text";
    EXPECT_EQ(restAt(*tips, {300, test::middleOf(*tips, 2, 0).y}), "") << "beside the columns";
    EXPECT_EQ(restAt(*tips, {20, 8}), "") << "the header";
    tips->m_bCellToolTips = 0;
    EXPECT_EQ(restOn(*tips, 6, 0), "");
}

TEST_F(CellTips, EndWithWhatTheUserDoes) {
    CEdit elsewhere;
    elsewhere.Create(WS_CHILD | WS_VISIBLE, CRect(0, 250, 100, 270), &frame(), 9);
    const CPoint there = test::middleOf(*tips, 2, 0);
    const auto leave = [&] {
        quor::sendMouseMove(elsewhere, CPoint(5, 5));
        pumpUntilIdle();
    };
    const std::pair<const char*, std::function<void()>> deeds[] = {
        {"a key", [] { quor::sendKeys({VK_SHIFT}); }},
        {"a key to another window", [&] { elsewhere.SetFocus(), quor::sendText("x"); }},
        {"the right button", [&] { quor::sendClick(*tips, there, quor::MouseButton::right); }},
        {"a side button", [&] { tips->PostMessage(WM_XBUTTONDOWN, MAKEWPARAM(MK_XBUTTON1, XBUTTON1)); }},
        {"the wheel", [&] { tips->PostMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0); }},
        {"the scroll bar", [&] { tips->SendMessage(WM_VSCROLL, SB_LINEDOWN); }},
        {"another cell", [&] { quor::sendMouseMove(*tips, test::middleOf(*tips, 3, 0)); }},
        {"another window", [&] { leave(), test::lookAgain(*tips); }},
        {"the list hides", [&] { tips->ShowWindow(SW_HIDE); }},
        {"a click", [&] { quor::sendClick(*tips, there); }},
    };
    for (const auto& [what, deed] : deeds) {
        tips->ShowWindow(SW_SHOW);
        tips->EnsureVisible(0, FALSE);
        tips->SetFocus();
        restOn(*tips, 3, 0);
        ASSERT_EQ(restAt(*tips, there), kLong) << "before " << what;
        deed();
        pumpUntilIdle();
        EXPECT_EQ(shownTip(), nullptr) << what;
    }
    quor::sendMouseMove(*tips, there + CSize(5, 0));
    EXPECT_FALSE(pumpFor([] { return shownTip(); }, ::GetDoubleClickTime() + 200)) << "in the cell that was clicked";
    leave();
    test::lookAgain(*tips);
    quor::sendMouseMove(*tips, there);
    EXPECT_TRUE(pumpFor([] { return shownTip(); })) << "until the mouse has left it";
}

TEST_F(CellTips, TheOwnersTextStandsBesideTheCell) {
    ask([](int row, int place, CString& text) {
        text.Format("row %d\r\nplace %d", row, place);
        return row != 4;
    });
    EXPECT_EQ(restOn(*tips, 3, 0), "row 3\r\nplace 0") << "of a cell that shows whole, too";
    EXPECT_EQ(test::tipRect().top, labelOf(3).bottom);
    EXPECT_GT(test::tipRect().Height(), 25) << "two lines";
    EXPECT_EQ(restOn(*tips, 4, 0), "") << "the owner has no text";
    ask([](int row, int, CString& text) { return text = row % 2 ? "short" : row == 2 ? "" : kLong.c_str(), 1; });
    EXPECT_EQ(restOn(*tips, 3, 0), "") << "the cell's own text, which shows whole";
    EXPECT_EQ(restOn(*tips, 2, 0), "");
    EXPECT_EQ(restOn(*tips, 4, 0), kLong);
    EXPECT_LE(test::tipRect().top, labelOf(4).top) << "the cell's own text, clipped, stands in its place";
}

TEST_F(CellTips, AnOwnerThatThrowsEndsTheTip) {
    bool throws = false;
    ask([&](int, int, CString& text) { return throws ? AfxThrowUserException(), 0 : (text = "told", 1); });
    ASSERT_EQ(restOn(*tips, 2, 0), "told");
    throws = true;
    EXPECT_ANY_THROW(test::lookAgain(*tips));
    EXPECT_EQ(shownTip(), nullptr);
}

TEST_F(CellTips, StandOnTheScreen) {
    const CRect label = labelOf(2), narrow(label.left - 30, 0, label.left + 90, 600);
    const test::PretendedScreens screens({{narrow, narrow}});
    ASSERT_EQ(restOn(*tips, 2, 0), kLong);
    const CRect tip = test::tipRect();
    EXPECT_TRUE(tip.left >= narrow.left && tip.right <= narrow.right);
    EXPECT_GT(tip.Height(), 2 * label.Height()) << "a text that is wider than the screen takes more lines";
}

TEST_F(CellTips, HandlesReturn) {
    test::expectHandlesReturn(200, [&](int round) {
        EXPECT_EQ(restOn(*tips, 2 + round % 3 * 2, 0), kLong);
        if (round % 20 == 0) CellTips::SetUp();  // the list ends while the tip shows
    });
}

}  // namespace
