// The ground of the dialog tests: a host with all entries, files of its own for places, and the class-wide members as
// at start.
#pragma once

#include "DialogTestsIds.h"
#include "quor/framework/FocusStack.h"
#include "quor/framework/ZTDialog.h"
#include "quor/list/CommonListCtrl.h"
#include "support/FakeHost.h"
#include "support/TestFile.h"
#include "support/WindowFixture.h"

namespace test {

class TestDialog : public CZTDialog {
public:
    explicit TestDialog(UINT dialogTemplate = IDD_FIXED) : CZTDialog(dialogTemplate), id(dialogTemplate) {}

    // Makes it, hidden, and shows it as a user would.
    void open(CWnd& owner) {
        if (!m_hWnd) Create(id, &owner);
        ASSERT_NE(m_hWnd, nullptr);
        ShowWindow(SW_SHOW);
    }
    void press(int button) { GetDlgItem(button)->SendMessage(BM_CLICK); }
    CRect place() const { return placeOf(*this); }
    CRect placeOf(int control) const { return placeOf(*GetDlgItem(control)); }
    static CRect placeOf(const CWnd& window) {
        CRect rect;
        window.GetWindowRect(&rect);
        return rect;
    }

    using CZTDialog::m_bDefaultCtlColor;
    using CZTDialog::m_bMmmMode;
    using CZTDialog::m_dXScale;
    using CZTDialog::m_dYScale;
    using CZTDialog::m_strTitleDetails;

    const UINT id;
};

class ZTDialogFixture : public WindowFixture {
protected:
    ZTDialogFixture() {
        resetFakeHost();
        CCommonListCtrl::SetRecoveryFiles(fullPath(recovery), fullPath(positions));
        resetClass();
    }
    void TearDown() override {
        resetClass();
        CCommonListCtrl::SetRecoveryFiles("", "");
        WindowFixture::TearDown();
    }

    // A bare name would be sought in the system's folder.
    static CString fullPath(const TestFile& file) {
        char path[MAX_PATH]{};
        ::GetFullPathNameA(file.name.c_str(), sizeof(path), path, nullptr);
        return path;
    }

    const TestFile recovery, positions;

private:
    static void resetClass() {
        CZTDialog::ResetBWLDlgPtr();
        CZTDialog::SetLayoutWatcher(nullptr);
        CZTDialog::m_bFocusStatus = CZTDialog::m_bGlobalMmmMode = false;
    }
};

}  // namespace test
