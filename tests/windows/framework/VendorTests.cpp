#include "Probe.h"
#include "support/DialogTemplate.h"

namespace {

using Vendor = test::WindowFixture;

TEST(VisualManager, OneIsCurrentAndKnownByItsClass) {
    EXPECT_EQ(CBCGPVisualManager::GetInstance(), nullptr);
    for (CRuntimeClass* kind : {RUNTIME_CLASS(CBCGPVisualManager2007), RUNTIME_CLASS(CBCGPWinXPVisualManager)}) {
        CBCGPVisualManager::SetDefaultManager(kind);
        ASSERT_NE(CBCGPVisualManager::GetInstance(), nullptr);
        EXPECT_EQ(CBCGPVisualManager::GetInstance()->GetRuntimeClass(), kind);
    }
    CBCGPVisualManager::SetDefaultManager(RUNTIME_CLASS(CWnd));  // no manager at all
    EXPECT_EQ(CBCGPVisualManager::GetInstance(), nullptr);
}

TEST_F(Vendor, FloatingBarsAreFoundByTheirIds) {
    CBCGPMiniFrameWnd mini;
    ASSERT_TRUE(mini.CreateEx(0, "mini", WS_POPUP, CRect(0, 0, 200, 100), &frame()));
    CBCGPDialogBar bar;
    ASSERT_TRUE(bar.Create(&mini, LPCSTR(nullptr), CBRS_LEFT, 6075));
    EXPECT_EQ(CBCGPMiniFrameWnd::FindFloatingBarByID(6075), &bar);
    EXPECT_EQ(CBCGPMiniFrameWnd::FindFloatingBarByID(10000), nullptr);
    mini.DestroyWindow();
    EXPECT_EQ(CBCGPMiniFrameWnd::FindFloatingBarByID(6075), nullptr);
}

class PlacedDialog : public CBCGPDialog {
public:
    BOOL OnInitDialog() override {
        CBCGPDialog::OnInitDialog();
        EnableLoadWindowPlacement(TRUE, "Software\\Quor\\framework_tests\\");
        return TRUE;
    }
};

TEST_F(Vendor, PlacementSurvivesTheDialog) {
    ::RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\Quor");
    test::DialogTemplate form("Placed", WS_POPUP | WS_CAPTION | WS_THICKFRAME);
    form.addButton(IDOK, "OK");
    const CRect place(120, 130, 420, 330);
    {
        PlacedDialog first;
        ASSERT_TRUE(first.CreateIndirect(form.get(), &frame()));
        first.MoveWindow(place);
    }
    PlacedDialog second;
    ASSERT_TRUE(second.CreateIndirect(form.get(), &frame()));
    CRect found;
    second.GetWindowRect(&found);
    EXPECT_EQ(found, place);
    EXPECT_FALSE(second.IsWindowVisible());

    const CRect later(150, 160, 450, 360);
    second.MoveWindow(later);
    for (const BOOL ends : {FALSE, TRUE}) {
        second.SendMessage(WM_ENDSESSION, static_cast<WPARAM>(ends));
        PlacedDialog third;
        ASSERT_TRUE(third.CreateIndirect(form.get(), &frame()));
        third.GetWindowRect(&found);
        EXPECT_EQ(found, ends ? later : place);
    }
}

TEST_F(Vendor, MessageBoxTakesTheApplicationsNameForAMissingCaption) {
    test::MessageBoxAnswerer answerer({IDCANCEL});
    EXPECT_EQ(BCGPMessageBox(frame(), "text", "caption", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(BCGPMessageBox(frame(), "text", nullptr, MB_OKCANCEL), IDCANCEL);
    ASSERT_EQ(answerer.boxes().size(), 2u);
    EXPECT_EQ(answerer.boxes()[0], (test::MessageBoxSeen{"text", "caption"}));
    EXPECT_EQ(answerer.boxes()[1].caption, "framework_tests");
}

}  // namespace
