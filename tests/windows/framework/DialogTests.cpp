#include "FrameworkTestsIds.h"
#include "quor/platform/proving/UserInput.h"
#include "support/WindowFixture.h"

#include <stdexcept>

namespace {

class TestDialog : public CDialog {
public:
    std::function<void(TestDialog&)> onInit;
    CEdit edit;
    CString text;
    explicit TestDialog(CWnd& owner) : CDialog(IDD_MODAL, &owner) {}

    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        if (onInit) onInit(*this);
        return TRUE;
    }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, IDC_TEXT, edit);
        DDX_Text(exchange, IDC_TEXT, text);
    }
};

class Dialog : public test::WindowFixture {
protected:
    TestDialog dialog{frame()};

    // Runs it modally; `act` is called once the dialog stands.
    INT_PTR runModal(const std::function<void(TestDialog&)>& act) {
        frame().onMessage = [this, act](UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == WM_APP) act(dialog);
            return false;
        };
        frame().PostMessage(WM_APP);
        return dialog.DoModal();
    }
};

TEST_F(Dialog, ModalDialogEndsByKeys) {
    const struct {
        WORD key;
        INT_PTR result;
        const char* text;
    } cases[] = {{VK_RETURN, IDOK, "an initial"}, {VK_ESCAPE, IDCANCEL, "initial"}};
    for (const auto& each : cases) {
        dialog.text = "initial";
        dialog.onInit = [](TestDialog& made) { EXPECT_FALSE(made.IsWindowVisible()); };
        EXPECT_EQ(runModal([&](TestDialog& shown) {
                      EXPECT_TRUE(shown.IsWindowVisible());
                      EXPECT_FALSE(frame().IsWindowEnabled());
                      EXPECT_EQ(::GetFocus(), shown.edit.m_hWnd);
                      quor::sendKeys({VK_HOME});
                      quor::sendText("an ");
                      quor::sendKeys({each.key});
                  }),
                  each.result);
        EXPECT_TRUE(frame().IsWindowEnabled());
        EXPECT_EQ(::GetActiveWindow(), frame().m_hWnd);
        EXPECT_STREQ(dialog.text, each.text);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    }
}

TEST_F(Dialog, ExceptionsLeaveNoDialogAndNoDisabledOwner) {
    dialog.onInit = [](TestDialog&) { throw std::runtime_error("in OnInitDialog"); };
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_TRUE(frame().IsWindowEnabled());
    dialog.onInit = [](TestDialog& made) { made.EndDialog(42); };
    EXPECT_EQ(dialog.DoModal(), 42);
    dialog.onInit = nullptr;
    EXPECT_THROW(runModal([](TestDialog&) { throw std::logic_error("in the loop"); }), std::logic_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_TRUE(frame().IsWindowEnabled());
}

TEST_F(Dialog, TheModalLoopLeavesTheQuitMessageToTheOuterOne) {
    dialog.onInit = [](TestDialog&) { AfxPostQuitMessage(3); };
    EXPECT_EQ(dialog.DoModal(), -1);
    MSG message;
    ASSERT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
}

}  // namespace
