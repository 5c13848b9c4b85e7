// Titles, fonts of children and the colour of dialogs.
#include "quor/foundation/HostServices.h"
#include "quor/framework/ZTDialog.h"
#include "quor/framework/core/TitleTexts.h"

#include <cstring>
#include <vector>

namespace {

constexpr int kPeerDataAvailable = 4;  // a status of the application
constexpr const char* kTitledDialog = "CSnapQuoteDlg";
constexpr const char* kFontKeepers[] = {"SysListView32", "SysHeader32"};

// The client's name, empty without one.
CString clientName() {
    CString first, second, name;
    if (g_pControlBlock->quoru_get_app_status() == kPeerDataAvailable)
        g_pControlBlock->pu_get_peer_data(first, second, name);
    return name;
}

std::vector<HWND> childrenOf(HWND parent) {
    std::vector<HWND> children;
    const auto note = [](HWND child, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
        return TRUE;
    };
    ::EnumChildWindows(parent, note, reinterpret_cast<LPARAM>(&children));
    return children;
}

bool keepsFont(HWND child) {
    char name[128]{};
    ::RealGetWindowClassA(child, name, sizeof(name));
    for (const char* keeper : kFontKeepers) {
        if (std::strcmp(name, keeper) != 0) continue;
        const CWnd* const parent = CWnd::FromHandle(::GetParent(child));
        return !parent || std::strcmp(parent->GetRuntimeClass()->m_lpszClassName, kTitledDialog) != 0;
    }
    return false;
}

COLORREF colorOf2007(CBCGPVisualManager2007::Style style) {
    switch (style) {
        case CBCGPVisualManager2007::VS2007_ObsidianBlack:
            return 0xE5E2E1;
        case CBCGPVisualManager2007::VS2007_Aqua:
            return 0xE9DAD4;
        case CBCGPVisualManager2007::VS2007_Silver:
            return 0xDDD4D0;
        default:
            return 0xF5D7C1;
    }
}

COLORREF themeColor() {
    const CBCGPVisualManager* const theme = CBCGPVisualManager::GetInstance();
    if (!theme) return ::GetSysColor(COLOR_BTNFACE);
    if (theme->IsKindOf(RUNTIME_CLASS(CBCGPVisualManager2007))) return colorOf2007(CBCGPVisualManager2007::GetStyle());
    const bool plain = theme->IsKindOf(RUNTIME_CLASS(CBCGPVisualManagerVS2005)) ||
                       theme->IsKindOf(RUNTIME_CLASS(CBCGPVisualManager2003)) ||
                       theme->IsKindOf(RUNTIME_CLASS(CBCGPVisualManagerXP)) ||
                       theme->IsKindOf(RUNTIME_CLASS(CBCGPWinXPVisualManager));
    return ::GetSysColor(plain ? COLOR_WINDOW : COLOR_BTNFACE);
}

// Of all dialogs; none until VisualizationColor makes it.
CBrush& classBrush() {
    static CBrush brush;
    return brush;
}

}  // namespace

// --- Titles --------------------------------------------------------------------------------------------------------

void CZTDialog::quoru_add_details_to_window_title(CWnd* pWnd, CString details) {
    if (!pWnd) return;
    CString title;
    pWnd->GetWindowText(title);
    if (g_pControlBlock->quoru_get_app_status() != kPeerDataAvailable) return;
    const CString whole = quor::framework::titleWithDetails(title, clientName(), details);
    if (whole != title) pWnd->SetWindowText(whole);
}

void CZTDialog::SetWindowTitleWithClientName(int nCtrlId) {
    CString title, selection;
    const CString name = clientName();
    GetWindowText(title);
    const HWND combo = ::GetDlgItem(m_hWnd, nCtrlId);
    const LRESULT chosen = combo ? ::SendMessageA(combo, CB_GETCURSEL, 0, 0) : CB_ERR;
    if (chosen != CB_ERR) static_cast<CComboBox*>(GetDlgItem(nCtrlId))->GetLBText(static_cast<int>(chosen), selection);
    SetWindowText(quor::framework::titleWithSelection(title, name, selection));
}

// --- Children ------------------------------------------------------------------------------------------------------

// What is done to one child may end others, or the dialog.
void CZTDialog::EnumerateChildWindow() {
    sEnumChildContext own;
    sEnumChildContext& context = m_pEnumContext ? *m_pEnumContext : own;
    context.pDialog = this;
    const HWND window = m_hWnd;
    for (const HWND child : childrenOf(window)) {
        if (CWnd::FromHandlePermanent(window) != this) return;
        if (::IsChild(window, child)) MyMemberEnumFunction(child, reinterpret_cast<LPARAM>(&context));
    }
}

BOOL CZTDialog::MyMemberEnumFunction(HWND hWnd, LPARAM) {
    if (CWnd* const control = GetDlgItem(::GetDlgCtrlID(hWnd))) control->EnableWindow(FALSE);
    return TRUE;
}

void CZTDialog::EnumerateChildWindowForFontChange(HFONT hFont) {
    for (const HWND child : childrenOf(m_hWnd))
        if (::IsWindow(child) && !keepsFont(child))
            ::SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(hFont), TRUE);
}

// --- Colours -------------------------------------------------------------------------------------------------------

void CZTDialog::VisualizationColor() {
    classBrush().DeleteObject();
    classBrush().CreateSolidBrush(themeColor());
}

HBRUSH CZTDialog::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor) {
    const bool bases = nCtlColor != CTLCOLOR_DLG && m_bDefaultCtlColor;
    if (bases || !classBrush().m_hObject) return CZTBCGPDialog::OnCtlColor(pDC, pWnd, nCtlColor);
    return classBrush();
}
