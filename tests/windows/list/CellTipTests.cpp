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

struct CellTips : ListFixture {
    // The symbols are long in every second row, from the first.
    void SetUp() override {
        tips = std::make_unique<CCommonListToolTip>();
        start(*tips);
        for (int row = 0; row < 40; ++row) {
            tips->InsertItem(row, row % 2 ? "short" : kLong.c_str());
            tips->CListCtrl::SetItemText(row, 1, row % 2 ? kLong.c_str() : "");
        }
        pumpUntilIdle();
    }
    void TearDown() override {
        tips.reset();
        ListFixture::TearDown();
    }

    std::unique_ptr<CCommonListToolTip> tips;
};

using CellTipsOnEachRoad = test::OnEachRoad<CellTips>;
INSTANTIATE_TEST_SUITE_P(, CellTipsOnEachRoad, test::eachRoad, test::roadName);

TEST_P(CellTipsOnEachRoad, TheWholeTextShowsInItsPlaceOnceTheMouseRests) {
    quor::sendMouseMove(*tips, test::middleOf(*tips, 2, 0));
    pumpUntilIdle();
    EXPECT_EQ(shownTip(), nullptr) << "not at once";
    EXPECT_TRUE(pumpFor([] { return shownTip() != nullptr; })) << "but by itself";
    EXPECT_EQ(tipText(), kLong);
    CRect label;
    tips->GetSubItemRect(2, 0, LVIR_LABEL, label);
    tips->ClientToScreen(&label);
    const CRect shown = test::tipRect();
    EXPECT_TRUE(shown.PtInRect(CPoint(label.left + 3, label.top)));
    EXPECT_LT(label.top - shown.top, 8) << "no more of it than its edge";
    EXPECT_GT(shown.right, label.right);
    LOGFONT own{}, ofCells{};
    CWnd::FromHandle(shownTip())->GetFont()->GetLogFont(&own);
    tips->GetFont()->GetLogFont(&ofCells);
    EXPECT_EQ(own.lfHeight, ofCells.lfHeight);
    EXPECT_STREQ(own.lfFaceName, ofCells.lfFaceName);

    EXPECT_EQ(restOn(*tips, 3, 0), "") << "a text that shows whole";
    EXPECT_EQ(restOn(*tips, 3, 1), kLong);
    EXPECT_EQ(restOn(*tips, 2, 1), "") << "a cell without a text";
    EXPECT_EQ(restAt(*tips, {300, test::middleOf(*tips, 2, 0).y}), "") << "beside the columns";
    EXPECT_EQ(restAt(*tips, {20, 8}), "") << "the header";
    tips->SetColumnWidth(0, 400);
    EXPECT_EQ(restOn(*tips, 4, 0), "") << "the column is wide enough";
    tips->SetColumnWidth(0, 80);
    EXPECT_EQ(restOn(*tips, 4, 0), kLong);
    tips->m_bCellToolTips = 0;
    EXPECT_EQ(restOn(*tips, 6, 0), "");
}

TEST_F(CellTips, EndWithWhatTheUserDoes) {
    CEdit elsewhere;
    elsewhere.Create(WS_CHILD | WS_VISIBLE, CRect(0, 250, 100, 270), &frame(), 9);
    const CPoint there = test::middleOf(*tips, 2, 0);
    const std::pair<const char*, std::function<void()>> deeds[] = {
        {"a key", [] { quor::sendKeys({VK_SHIFT}); }},
        {"a key to another window",
         [&] {
             elsewhere.SetFocus();
             quor::sendText("x");
         }},
        {"a click", [&] { quor::sendClick(*tips, there); }},
        {"a click of the right button", [&] { quor::sendClick(*tips, there, quor::MouseButton::right); }},
        {"the wheel", [&] { tips->PostMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0); }},
        {"the scroll bar", [&] { tips->SendMessage(WM_VSCROLL, SB_LINEDOWN); }},
        {"another cell", [&] { quor::sendMouseMove(*tips, test::middleOf(*tips, 3, 0)); }},
        {"another window",
         [&] {
             quor::sendMouseMove(elsewhere, CPoint(5, 5));
             pumpUntilIdle();
             test::lookAgain(*tips);
         }},
        {"the list hides", [&] { tips->ShowWindow(SW_HIDE); }},
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
    elsewhere.DestroyWindow();
}

// The tip that a click ended is not back for a move in its cell.
TEST_F(CellTips, StayAwayUntilTheMouseHasLeftTheCell) {
    const CPoint there = test::middleOf(*tips, 2, 0);
    restAt(*tips, there);
    quor::sendClick(*tips, there);
    pumpUntilIdle();
    quor::sendMouseMove(*tips, there + CSize(5, 0));
    EXPECT_FALSE(pumpFor([] { return shownTip() != nullptr; }, ::GetDoubleClickTime() + 200));
    EXPECT_EQ(restOn(*tips, 3, 0), "");
    EXPECT_EQ(restAt(*tips, there), kLong);
}

class TellingOwner : public Owner {
public:
    std::function<int(int row, int place, CString& text)> tells;
    int tell(int row, int place, CString& text) { return tells(row, place, text); }
};

struct ToldTips : CellTips {
    void SetUp() override {
        CellTips::SetUp();
        teller.create(frame());
        tips->SetOwner(&teller);
        tips->InitToolTipRetFunc(static_cast<ToolTipTextCallback>(&TellingOwner::tell));
    }
    void TearDown() override {
        CellTips::TearDown();
        teller.DestroyWindow();
    }
    TellingOwner teller;
};

TEST_F(ToldTips, TheOwnersTextStandsBesideTheCell) {
    teller.tells = [](int row, int place, CString& text) {
        text.Format("row %d\r\nplace %d", row, place);
        return row != 4;
    };
    EXPECT_EQ(restOn(*tips, 3, 0), "row 3\r\nplace 0") << "of a cell that shows whole, too";
    const CRect tip = test::tipRect();
    CRect label;
    tips->GetSubItemRect(3, 0, LVIR_LABEL, label);
    tips->ClientToScreen(&label);
    EXPECT_EQ(tip.top, label.bottom);
    EXPECT_GT(tip.Height(), 25) << "two lines";
    EXPECT_EQ(restOn(*tips, 4, 0), "") << "the owner has no text";
    teller.tells = [](int row, int, CString& text) {
        text = row % 2 ? "short" : row == 2 ? "" : kLong.c_str();
        return 1;
    };
    EXPECT_EQ(restOn(*tips, 3, 0), "") << "the cell's own text, which shows whole";
    EXPECT_EQ(restOn(*tips, 2, 0), "");
    EXPECT_EQ(restOn(*tips, 4, 0), kLong);
    tips->GetSubItemRect(4, 0, LVIR_LABEL, label);
    tips->ClientToScreen(&label);
    EXPECT_LE(test::tipRect().top, label.top) << "the cell's own text, clipped, stands in its place";
}

TEST_F(ToldTips, AnOwnerMayEndTheListOrThrow) {
    teller.tells = [](int, int, CString&) -> int { AfxThrowUserException(); };
    EXPECT_ANY_THROW(restOn(*tips, 2, 0));
    EXPECT_EQ(shownTip(), nullptr);
    teller.tells = [this](int, int, CString& text) {
        tips.reset();
        text = "too late";
        return 1;
    };
    EXPECT_EQ(restOn(*tips, 3, 0), "");
    EXPECT_EQ(tips, nullptr);
}

TEST_F(CellTips, StandOnTheScreen) {
    CRect label;
    tips->GetSubItemRect(2, 0, LVIR_LABEL, label);
    tips->ClientToScreen(&label);
    const CRect narrow(label.left - 30, 0, label.left + 90, 600);
    const test::PretendedScreens screens({{narrow, narrow}});
    ASSERT_EQ(restOn(*tips, 2, 0), kLong);
    const CRect tip = test::tipRect();
    EXPECT_GE(tip.left, narrow.left);
    EXPECT_LE(tip.right, narrow.right);
    EXPECT_GT(tip.Height(), 2 * label.Height()) << "a text that is wider than the screen takes more lines";
}

TEST_F(CellTips, HandlesReturn) {
    test::expectHandlesReturn(200, [&](int round) {
        EXPECT_EQ(restOn(*tips, 2 + round % 3 * 2, 0), kLong);
        if (round % 20 != 0) return;
        tips = std::make_unique<CCommonListToolTip>();  // while the tip shows
        CellTips::SetUp();
    });
}

}  // namespace
