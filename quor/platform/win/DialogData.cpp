// Data exchange between controls and members.
#include "quor/platform/win/WndInternal.h"

#include <cerrno>
#include <cstdlib>

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

HWND CDataExchange::PrepareCtrl(int nIDC) {
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    if (!control) AfxThrowNotSupportedException();
    m_hWndLastControl = control;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) {
    const HWND control = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate && m_hWndLastControl) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl) ::SendMessageA(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!rControl.m_hWnd && !rControl.SubclassWindow(control)) AfxThrowNotSupportedException();
}

namespace {

void textOf(HWND control, CString& text) {
    const int length = ::GetWindowTextLengthA(control);
    ::GetWindowTextA(control, text.GetBuffer(length), length + 1);
    text.ReleaseBuffer();
}

// Setting an equal text would lose the selection and notify for nothing.
void setText(HWND control, const CString& text) {
    CString former;
    textOf(control, former);
    if (former.Compare(text) != 0) ::SetWindowTextA(control, text);
}

// One number and blanks around it.
template <class Number, class Reader>
bool readNumber(const CString& text, Number& value, Reader read) {
    const LPCSTR begin = text;
    char* end = nullptr;
    errno = 0;
    const auto parsed = read(begin, &end);
    if (end == begin || errno == ERANGE) return false;
    while (*end == ' ' || *end == '\t') ++end;
    value = static_cast<Number>(parsed);
    return *end == '\0' && static_cast<decltype(parsed)>(value) == parsed;
}

template <class Number, class Reader>
void exchangeNumber(CDataExchange* pDX, int nIDC, Number& value, LPCSTR shown, Reader read, LPCSTR complaint) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        setText(control, shown);
        return;
    }
    CString text;
    textOf(control, text);
    if (readNumber(text, value, read)) return;
    AfxMessageBox(complaint);
    pDX->Fail();
}

LPCSTR const wantsInteger = "Please enter an integer.";
LPCSTR const wantsPositive = "Please enter a positive integer.";
LPCSTR const wantsNumber = "Please enter a number.";

long long readInteger(const char* text, char** end) { return std::strtoll(text, end, 10); }

template <class Number>
CString shownInteger(Number value) {
    CString text;
    text.Format("%lld", static_cast<long long>(value));
    return text;
}

}  // namespace

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        textOf(control, value);
    else
        setText(control, value);
}

void DDX_Text(CDataExchange* pDX, int nIDC, int& value) {
    exchangeNumber(pDX, nIDC, value, shownInteger(value), &readInteger, wantsInteger);
}

void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value) {
    exchangeNumber(pDX, nIDC, value, shownInteger(value), &readInteger, wantsPositive);
}

void DDX_Text(CDataExchange* pDX, int nIDC, long& value) {
    exchangeNumber(pDX, nIDC, value, shownInteger(value), &readInteger, wantsInteger);
}

void DDX_Text(CDataExchange* pDX, int nIDC, double& value) {
    CString shown;
    shown.Format("%.15g", value);
    exchangeNumber(
        pDX, nIDC, value, shown, [](const char* text, char** end) { return std::strtod(text, end); }, wantsNumber);
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessageA(control, BM_GETCHECK, 0, 0));
    else
        ::SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value < 0 || value > 2 ? 1 : value), 0);
}

// The group ends before the next control that begins one; other controls in between do not count.
void DDX_Radio(CDataExchange* pDX, int nIDC, int& value) {
    HWND control = pDX->PrepareCtrl(nIDC);
    const int wanted = value;
    if (pDX->m_bSaveAndValidate) value = -1;
    int index = 0;
    do {
        if (::SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) {
            if (!pDX->m_bSaveAndValidate)
                ::SendMessageA(control, BM_SETCHECK, index == wanted, 0);
            else if (::SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED)
                value = index;
            ++index;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control && !(::GetWindowLongPtrA(control, GWL_STYLE) & WS_GROUP));
}

void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageA(control, CB_GETCURSEL, 0, 0));
    else
        ::SendMessageA(control, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        textOf(control, value);
    else if (::SendMessageA(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(value.GetString())) == CB_ERR)
        ::SetWindowTextA(control, value);
}

void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageA(control, LB_GETCURSEL, 0, 0));
    else
        ::SendMessageA(control, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value) {
    const HWND control = pDX->PrepareCtrl(nIDC);
    if (!pDX->m_bSaveAndValidate) {
        ::SendMessageA(control, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(value.GetString()));
        return;
    }
    const auto selected = static_cast<WPARAM>(::SendMessageA(control, LB_GETCURSEL, 0, 0));
    const auto length = static_cast<int>(::SendMessageA(control, LB_GETTEXTLEN, selected, 0));
    value.Empty();
    if (length < 0) return;
    ::SendMessageA(control, LB_GETTEXT, selected, reinterpret_cast<LPARAM>(value.GetBuffer(length)));
    value.ReleaseBuffer();
}

void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal) {
    if (!pDX->m_bSaveAndValidate || (value >= minVal && value <= maxVal)) return;
    CString complaint;
    complaint.Format("Please enter an integer between %d and %d.", minVal, maxVal);
    AfxMessageBox(complaint, MB_ICONEXCLAMATION);
    pDX->Fail();
}

void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars) {
    if (!pDX->m_bSaveAndValidate) {
        if (pDX->m_bEditLastControl)
            ::SendMessageA(pDX->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
        return;
    }
    if (value.GetLength() <= nChars) return;
    CString complaint;
    complaint.Format("Please enter no more than %d characters.", nChars);
    AfxMessageBox(complaint, MB_ICONEXCLAMATION);
    pDX->Fail();
}
