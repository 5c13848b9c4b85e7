#include "quor/grid/FilterText.h"

#include "quor/grid/FilterListCtrl.h"
#include "quor/grid/core/FilterValues.h"
#include "quor/resource/LibraryResources.h"
#include "quor/resource/resource.h"

namespace {

constexpr int kHorizontalExtent = 500;  // pixels that the list box can scroll to

CFilterText* g_popup = nullptr;  // lives as long as the process

}  // namespace

IMPLEMENT_DYNAMIC(CFilterText, CZTBCGPDialog)

BEGIN_MESSAGE_MAP(CFilterText, CZTBCGPDialog)
    ON_LBN_DBLCLK(IDC_FILTER_VALUES, &CFilterText::OnLbnDblclkFilterlist)
    ON_WM_ACTIVATE()
END_MESSAGE_MAP()

CFilterText::CFilterText(CWnd* parent) : CZTBCGPDialog(IDD_FILTER_TEXT, parent) {}

// The window dies with the top-level window of the grid that made it; the next grid makes a new one.
CFilterText* CFilterText::shared(CWnd* parent) {
    if (!g_popup) g_popup = new CFilterText(parent);
    if (!g_popup->m_hWnd) {
        const quor::LibraryResources resources;
        if (!g_popup->Create(IDD_FILTER_TEXT, parent)) return nullptr;
    }
    return g_popup;
}

void CFilterText::forget(const CCommonListCtrl* list) {
    if (g_popup && g_popup->m_pFilterList == list) g_popup->m_pFilterList = nullptr;
}

CListBox& CFilterText::values() { return *static_cast<CListBox*>(GetDlgItem(IDC_FILTER_VALUES)); }

BOOL CFilterText::OnInitDialog() {
    CZTBCGPDialog::OnInitDialog();
    values().SetHorizontalExtent(kHorizontalExtent);
    return TRUE;
}

void CFilterText::SetFilterlist(CCommonListCtrl* list, int column) {
    m_pFilterList =
        list && list->IsKindOf(RUNTIME_CLASS(CFilterListCtrl)) ? static_cast<CFilterListCtrl*>(list) : nullptr;
    m_nColumn = column;
}

BOOL CFilterText::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN && message->wParam == VK_RETURN) OnLbnDblclkFilterlist();
    return CZTBCGPDialog::PreTranslateMessage(message);
}

void CFilterText::OnLbnDblclkFilterlist() {
    if (values().GetSelCount() <= 0) return;
    CString text = chosenText();
    if (m_pFilterList) m_pFilterList->SetVisibleColumnFilter(m_nColumn, text, 0);
    ShowWindow(SW_HIDE);
}

CString CFilterText::chosenText() {
    CListBox& list = values();
    std::vector<int> chosen(static_cast<std::size_t>(list.GetSelCount()));
    list.GetSelItems(static_cast<int>(chosen.size()), chosen.data());
    auto index = chosen.begin();
    return quor::grid::joinFilterValues([&](CString& value) {
               if (index == chosen.end()) return false;
               list.GetText(*index++, value);
               return true;
           })
        .c_str();
}

void CFilterText::OnActivate(UINT state, CWnd* other, BOOL minimized) {
    CZTBCGPDialog::OnActivate(state, other, minimized);
    if (state == WA_INACTIVE) ShowWindow(SW_HIDE);
}
