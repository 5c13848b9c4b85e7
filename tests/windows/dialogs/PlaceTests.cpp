// Where dialogs stand: over a restart, with records that make no sense, and on monitors that come and go.
#include "DialogFixture.h"
#include "support/PretendedScreens.h"

namespace {

using test::PretendedScreens;
using test::TestDialog;

class Place : public test::ZTDialogFixture {
protected:
    // A record as it stands in the file; null takes it out.
    void store(UINT dialog, const char* record) {
        ::WritePrivateProfileStringA("DIALOG_POSITION", std::to_string(dialog).c_str(), record, fullPath(positions));
    }
    std::string stored(UINT dialog) {
        char text[200]{};
        ::GetPrivateProfileStringA("DIALOG_POSITION", std::to_string(dialog).c_str(), "none", text, sizeof(text),
                                   fullPath(positions));
        return text;
    }
    void storeMode(const char* mode) {
        ::WritePrivateProfileStringA("MultiMonitor Settings", std::to_string(IDD_FIXED).c_str(), mode,
                                     fullPath(recovery));
    }
};

TEST_F(Place, IsKeptOverARestartOnEveryRoadToTheEnd) {
    const std::pair<const char*, void (*)(TestDialog&, CWnd&)> roads[] = {
        {"closed, then destroyed", [](TestDialog& dialog, CWnd&) { dialog.press(IDCANCEL), dialog.DestroyWindow(); }},
        {"destroyed while it shows", [](TestDialog& dialog, CWnd&) { dialog.DestroyWindow(); }},
        {"with its owner", [](TestDialog&, CWnd& owner) { owner.DestroyWindow(); }},
        {"by its object", [](TestDialog&, CWnd&) {}},
    };
    int step = 0;
    for (const UINT id : {IDD_FIXED, IDD_SIZED}) {
        for (const auto& [road, end] : roads) {
            SCOPED_TRACE(road);
            ++step;
            CWnd owner;
            ASSERT_TRUE(
                owner.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 9, 9), &frame(), 0));
            CRect place;
            {
                TestDialog dialog(id);
                dialog.open(owner);
                dialog.MoveWindow(100 + step, 90 + step, 260 + (id == IDD_SIZED ? step : 0), 220);
                place = dialog.place();
                end(dialog, owner);
            }
            EXPECT_EQ(CZTDialog::AllDlgArray.GetCount(), 0);
            TestDialog next(id);
            next.open(frame());
            EXPECT_EQ(next.place().TopLeft(), place.TopLeft());
            EXPECT_EQ(next.place().Width() == place.Width(), id == IDD_SIZED);
        }
    }
}

// How a record is read stands in the core; here: what is logged, and when the mode is read.
TEST_F(Place, ARecordThatDoesNotFitLeavesTheTemplates) {
    TestDialog plain;
    plain.open(frame());
    const CRect own = plain.place();
    plain.DestroyWindow();
    const struct {
        const char* record;
        CPoint place;
        std::string log;
        bool modeRead;
    } cases[] = {
        {"66,77,500,600,-1,-1,-1,-1,1", {77, 66}, "", true},
        {nullptr, own.TopLeft(), "", false},
        {"", own.TopLeft(), "Could Not Find Saved Positions", true},
        {"66,77,500,600,-1,-1,1-,-1,1", own.TopLeft(), "Error Occured While Reading saved Positions", false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.record ? each.record : "none");
        store(IDD_FIXED, each.record);
        storeMode("YES");
        fakeHost().calls.clear();
        TestDialog dialog;
        dialog.open(frame());
        EXPECT_EQ(dialog.place(), CRect(each.place, own.Size()));
        const std::string line = "AddToTabbedLog " + each.log + " for 201Dialog; Loading Defualt 0 0";
        EXPECT_EQ(fakeHost().calls.count(line), each.log.empty() ? 0 : 1);
        const auto checked = [&] { return dialog.GetSystemMenu(FALSE)->GetMenuState(65, MF_BYCOMMAND) & MF_CHECKED; };
        EXPECT_EQ(checked() != 0, each.modeRead);
        dialog.SendMessage(WM_SYSCOMMAND, 65);
        EXPECT_EQ(checked() != 0, !each.modeRead);
        dialog.DestroyWindow();
        char mode[9]{};
        ::GetPrivateProfileStringA("MultiMonitor Settings", "201", "", mode, sizeof(mode), fullPath(recovery));
        EXPECT_STREQ(mode, each.modeRead ? "NO" : "YES");
    }
}

TEST_F(Place, WithoutAFileNothingIsStored) {
    CCommonListCtrl::SetRecoveryFiles(fullPath(recovery), "");
    TestDialog().open(frame());
    EXPECT_EQ(positions.bytes() + recovery.bytes(), "");
}

const CRect kLeft(0, 0, 800, 600), kRight(800, 0, 1600, 600);

TEST_F(Place, ADialogFollowsTheMonitorsThatAreLeft) {
    PretendedScreens screens({{kLeft, kLeft}, {kRight, kRight}});
    store(IDD_FIXED, "50,900,150,1000,-1,-1,-1,-1,1");
    TestDialog dialog;
    dialog.open(frame());
    EXPECT_EQ(dialog.place().TopLeft(), CPoint(900, 50));
    dialog.ShowWindow(SW_HIDE);
    screens.show({{kLeft, kLeft}});
    dialog.open(frame());
    CRect owner;
    frame().GetWindowRect(&owner);
    EXPECT_NEAR(dialog.place().CenterPoint().x, owner.CenterPoint().x, 1);
    EXPECT_TRUE(kLeft.PtInRect(dialog.place().TopLeft()) && kLeft.PtInRect(dialog.place().BottomRight()));
}

TEST_F(Place, ABarAtTheTopMovesItDownOnEveryShowButTheFirst) {
    const PretendedScreens screens({{kLeft, CRect(0, 30, 800, 600)}});
    store(IDD_FIXED, "50,60,150,160,-1,-1,-1,-1,1");
    TestDialog dialog;
    for (const int top : {50, 80, 110}) {
        dialog.open(frame());
        EXPECT_EQ(dialog.place().TopLeft(), CPoint(60, top));
        dialog.ShowWindow(SW_HIDE);
    }
}

TEST_F(Place, AMaximisedDialogComesBackMaximised) {
    store(IDD_SIZED, "50,60,250,360,-1,-1,-1,-1,3");
    TestDialog dialog(IDD_SIZED);
    dialog.open(frame());
    EXPECT_TRUE(dialog.IsZoomed());
    dialog.DestroyWindow();
    EXPECT_EQ(stored(IDD_SIZED), "50,60,250,360,-1,-1,-1,-1,3");
}

// Which bars come and how far a step goes stands in the core.
TEST_F(Place, ADialogOnASmallScreenScrolls) {
    const PretendedScreens screens({{kLeft, CRect(0, 0, 300, 200)}});
    TestDialog dialog;
    dialog.open(frame());
    dialog.m_dXScale = dialog.m_dYScale = 2.0;
    const int bar = ::GetSystemMetrics(SM_CXVSCROLL);
    const std::pair<int, CRect> outcomes[] = {{0, {10, 20, 140, 121}},
                                              {kScalePosition, {20, 40, 150, 141}},
                                              {kScaleSize, {10, 20, 270 + bar, 220}},
                                              {kScaleBoth, {20, 40, 280 + bar, 240}}};
    for (const auto& [flag, place] : outcomes) {
        dialog.MoveWindowZT(10, 20, 130, 91, static_cast<eMultiplierFlag>(flag), true);
        EXPECT_EQ(dialog.place(), place) << flag;
        EXPECT_EQ((dialog.GetStyle() & WS_VSCROLL) != 0, place.Height() == 200) << flag;
    }
    dialog.SetWindowPosZT(nullptr, 0, 0, 250, 379, SWP_NOZORDER, true, true);  // 399 of 200 pixels are wanted
    const int before = dialog.placeOf(IDC_TEXT).top;
    for (const auto& [code, outcome] : {std::pair{SB_LINEDOWN, 10}, {SB_TOP, 10}, {SB_THUMBTRACK, 195}}) {
        dialog.SendMessage(WM_VSCROLL, static_cast<WPARAM>(MAKELONG(code, 195)));
        EXPECT_EQ(dialog.GetScrollPos(SB_VERT), outcome) << code;
        EXPECT_EQ(before - dialog.placeOf(IDC_TEXT).top, outcome) << code;
    }
    int cx = 250, cy = 200;
    dialog.ResetScrollbars(cx, cy, true, false);
    EXPECT_EQ(dialog.placeOf(IDC_TEXT).top, before);
    EXPECT_EQ(CSize(cx, cy), CSize(250 - bar, 200));
}

TEST_F(Place, AControlIsPlacedByAnother) {
    TestDialog dialog;
    dialog.open(frame());
    dialog.m_dXScale = 2.0;
    dialog.m_dYScale = 1.5;
    CWnd *const target = dialog.GetDlgItem(IDC_CLOSE), *const other = dialog.GetDlgItem(IDC_LIST);
    const CRect own = dialog.placeOf(IDC_CLOSE), others = dialog.placeOf(IDC_LIST);
    dialog.DeflateRectZT(nullptr, other, 1, 1, 1, 1);
    dialog.DeflateRectZT(target, nullptr, 1, 2, 3, 4);
    EXPECT_EQ(dialog.placeOf(IDC_CLOSE), CRect(own.left - 2, own.top - 3, own.right - 6, own.bottom - 6));
    dialog.InflateRectZT(target, other, 1, -1, 3, 4);
    EXPECT_EQ(dialog.placeOf(IDC_CLOSE), CRect(others.left + 2, others.top - 1, others.right + 6, others.bottom + 6));
}

}  // namespace
