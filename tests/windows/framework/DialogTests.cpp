#include "Probe.h"
#include "support/DialogTemplate.h"
#include "support/Input.h"

#include <stdexcept>

namespace {

test::CallRecorder calls;

constexpr UINT editId = 101;
constexpr UINT largeId = 131073;  // its low word is IDOK

test::DialogTemplate simple() {
    test::DialogTemplate form("Simple");
    form.addEdit(editId).addButton(IDOK, "OK", BS_DEFPUSHBUTTON).addButton(IDCANCEL, "Cancel");
    form.addButton(largeId, "Other");
    return form;
}

class TestDialog : public CDialog {
public:
    std::function<void(TestDialog&)> onInit;
    CEdit edit;
    CString text = "initial";
    using CDialog::OnCmdMsg;

    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        calls.record("init", IsWindowVisible());
        if (onInit) onInit(*this);
        return TRUE;
    }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, editId, edit);
        DDX_Text(exchange, editId, text);
    }
    void OnOK() override {
        calls.record("ok");
        CDialog::OnOK();
    }
    void OnCancel() override {
        calls.record("cancel");
        CDialog::OnCancel();
    }
    void PostNcDestroy() override { calls.record("end"); }
    afx_msg void OnLarge() { calls.record("large"); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(TestDialog, CDialog)
    ON_BN_CLICKED(largeId, &TestDialog::OnLarge)
END_MESSAGE_MAP()

class Dialog : public test::WindowFixture {
protected:
    test::DialogTemplate form = simple();
    TestDialog dialog;

    void SetUp() override { calls.clear(); }
    // Runs it modally; `act` is called once the dialog stands.
    INT_PTR runModal(const std::function<void(TestDialog&)>& act, CWnd* parent = nullptr) {
        dialog.InitModalIndirect(form.get(), parent);
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
        const char* call;
    } cases[] = {{VK_RETURN, IDOK, "ok"}, {VK_ESCAPE, IDCANCEL, "cancel"}};
    for (const auto& each : cases) {
        calls.clear();
        bool ownerEnabled = true;
        bool focusInFirst = false;
        const INT_PTR result = runModal([&](TestDialog& shown) {
            EXPECT_TRUE(shown.IsWindowVisible());
            ownerEnabled = frame().IsWindowEnabled();
            focusInFirst = ::GetFocus() == shown.edit.m_hWnd;
            test::sendKeys({each.key});
        });
        EXPECT_EQ(result, each.result);
        EXPECT_EQ(calls.take(), (test::Calls{"init 0", each.call, "end"}));
        EXPECT_FALSE(ownerEnabled);
        EXPECT_TRUE(focusInFirst);
        EXPECT_TRUE(frame().IsWindowEnabled());
        EXPECT_EQ(::GetActiveWindow(), frame().m_hWnd);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    }
}

TEST_F(Dialog, TypedTextArrivesInTheMember) {
    runModal([](TestDialog&) {
        test::sendKeys({VK_HOME});
        test::sendText("an ");
        test::sendKeys({VK_RETURN});
    });
    EXPECT_STREQ(dialog.text, "an initial");
}

TEST_F(Dialog, OnInitDialogMayEndIt) {
    dialog.onInit = [](TestDialog& made) { made.EndDialog(42); };
    dialog.InitModalIndirect(form.get());
    EXPECT_EQ(dialog.DoModal(), 42);
    EXPECT_EQ(calls.take(), (test::Calls{"init 0", "end"}));
}

TEST_F(Dialog, ExceptionsLeaveNoDialogAndNoDisabledOwner) {
    dialog.onInit = [](TestDialog&) { throw std::runtime_error("in OnInitDialog"); };
    dialog.InitModalIndirect(form.get());
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_TRUE(frame().IsWindowEnabled());
    dialog.onInit = nullptr;
    EXPECT_THROW(runModal([](TestDialog&) { throw std::logic_error("in the loop"); }), std::logic_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_TRUE(frame().IsWindowEnabled());
}

TEST_F(Dialog, LargeControlIdIsNotTakenForItsLowWord) {
    runModal([](TestDialog& shown) {
        shown.GetDlgItem(largeId)->SendMessage(BM_CLICK);
        EXPECT_TRUE(shown.m_nFlags & WF_MODALLOOP);
        shown.GetDlgItem(IDCANCEL)->SendMessage(BM_CLICK);
    });
    EXPECT_EQ(calls.take(), (test::Calls{"init 0", "large", "cancel", "end"}));
}

TEST_F(Dialog, ModelessDialogIsHiddenByItsButtonsAndEndedByItsOwner) {
    form = test::DialogTemplate("Simple", WS_POPUP | WS_CAPTION | WS_VISIBLE);
    form.addEdit(editId).addButton(IDOK, "OK", BS_DEFPUSHBUTTON);
    ASSERT_TRUE(dialog.CreateIndirect(form.get(), &frame()));
    EXPECT_TRUE(dialog.IsWindowVisible());
    EXPECT_TRUE(frame().IsWindowEnabled());
    EXPECT_EQ(dialog.GetParent(), &frame());
    pumpUntilIdle();
    dialog.edit.SetFocus();
    test::sendKeys({VK_RETURN});
    pumpUntilIdle();
    EXPECT_TRUE(::IsWindow(dialog));
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_TRUE(dialog.DestroyWindow());
    EXPECT_EQ(calls.take(), (test::Calls{"init 0", "ok", "end"}));
}

TEST_F(Dialog, WithoutATemplateThereIsNoDialog) {
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_FALSE(dialog.CreateIndirect(nullptr));
    EXPECT_FALSE(dialog.Create("NoSuchTemplate"));
    EXPECT_EQ(CDialog(UINT(60000)).DoModal(), -1);
    EXPECT_TRUE(frame().IsWindowEnabled());
}

TEST_F(Dialog, TheModalLoopLeavesTheQuitMessageToTheOuterOne) {
    dialog.InitModalIndirect(form.get());
    dialog.onInit = [](TestDialog&) { AfxPostQuitMessage(3); };
    EXPECT_EQ(dialog.DoModal(), -1);
    MSG message;
    ASSERT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
}

// --- Data exchange ---

class DataDialog : public CDialog {
public:
    int number = 7;
    double fraction = 0.5;
    int check = 2;
    int radio = 1;
    CString text = "t";

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Text(exchange, 1, number);
        DDV_MinMaxInt(exchange, number, 0, 100);
        DDX_Text(exchange, 2, fraction);
        DDX_Check(exchange, 3, check);
        DDX_Radio(exchange, 4, radio);
        DDX_Text(exchange, 6, text);
    }
};

class DataExchange : public test::WindowFixture {
protected:
    DataDialog dialog;
    void SetUp() override {
        test::DialogTemplate form;
        form.addEdit(1).addEdit(2).addButton(3, "check", BS_AUTO3STATE);
        form.addButton(4, "first", BS_AUTORADIOBUTTON | WS_GROUP).addButton(5, "second", BS_AUTORADIOBUTTON);
        form.add({"EDIT", 6, WS_VISIBLE | WS_GROUP});
        ASSERT_TRUE(dialog.CreateIndirect(form.get(), &frame()));
    }
    CString shown(int id) {
        CString text;
        dialog.GetDlgItemText(id, text);
        return text;
    }
};

TEST_F(DataExchange, MembersAreShown) {
    EXPECT_STREQ(shown(1), "7");
    EXPECT_STREQ(shown(2), "0.5");
    EXPECT_EQ(dialog.IsDlgButtonChecked(3), static_cast<UINT>(BST_INDETERMINATE));
    EXPECT_FALSE(dialog.IsDlgButtonChecked(4));
    EXPECT_TRUE(dialog.IsDlgButtonChecked(5));
    EXPECT_STREQ(shown(6), "t");
}

TEST_F(DataExchange, ControlsAreReadBack) {
    dialog.SetDlgItemText(1, " 42 ");
    dialog.SetDlgItemText(2, "1.25");
    dialog.CheckDlgButton(3, BST_UNCHECKED);
    dialog.CheckRadioButton(4, 5, 4);
    dialog.SetDlgItemText(6, "x\xA7y");
    EXPECT_TRUE(dialog.UpdateData());
    EXPECT_EQ(dialog.number, 42);
    EXPECT_EQ(dialog.fraction, 1.25);
    EXPECT_EQ(dialog.check, 0);
    EXPECT_EQ(dialog.radio, 0);
    EXPECT_STREQ(dialog.text, "x\xA7y");
}

TEST_F(DataExchange, BadInputIsTold) {
    const struct {
        int id;
        const char* typed;
        const char* complaint;
    } cases[] = {
        {1, "", "Please enter an integer."},
        {1, "4x", "Please enter an integer."},
        {1, "99999999999", "Please enter an integer."},
        {1, "101", "Please enter an integer between 0 and 100."},
        {2, "half", "Please enter a number."},
    };
    for (const auto& each : cases) {
        dialog.UpdateData(FALSE);
        dialog.number = 7;
        dialog.SetDlgItemText(1, "7");
        dialog.SetDlgItemText(2, "1");
        dialog.SetDlgItemText(each.id, each.typed);
        test::MessageBoxAnswerer answerer;
        EXPECT_FALSE(dialog.UpdateData());
        EXPECT_EQ(answerer.texts(), std::vector<std::string>{each.complaint}) << each.typed;
    }
}

}  // namespace
