// Column sets that travel: export to a file, import from one, and both over all lists of the process.
#include "quor/list/ColumnNumbers.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/core/ColumnImport.h"
#include "quor/platform/tools/QuorTools.h"

using namespace quor::list;

namespace {

constexpr char kProfileKey[] = "COLUMNPROFILE";

}  // namespace

void CCommonListCtrl::ExportColumnToFile(CString file) {
    if (!m_bUseColumnProfile) return;
    CString error, text = formatExchangeProfile(m_parts->currentProfile());
    quoru_appdata_ini_file_operations(1, m_csListName, kProfileKey, text, file, error);
}

void CCommonListCtrl::ImportColumnsFromFile(CString file) {
    const ColumnNumbers before = TakeColumnNumbers();
    const bool imported = TakeColumnsFrom(file);
    const std::vector<int> moved = FollowNumbers(before, imported);
    if (imported) FollowPlaces(before, moved);
    const HWND window = m_hWnd;
    OnColumnsRebuilt(imported);  // an owner that hears of a filter's end may end the list
    if (!imported || !::IsWindow(window)) return;
    const bool parentLives = isLive(GetParent());
    NotifyColumnsRebuilt(m_bGroupList ? 0 : 1);
    if (parentLives && !m_bGroupList) OnColumnsImported();
}

// A file that cannot be read leaves the arrays at the built-in columns and the control as it was.
bool CCommonListCtrl::TakeColumnsFrom(CString file) {
    const FlagScope changing(m_columnsChanging, true);
    for (INT_PTR i = m_arrColumns.GetUpperBound(); i >= 0; --i) {
        if (!m_arrColumns.GetAt(i).csToolTip.IsEmpty()) m_arrColumns.RemoveAt(i);
    }
    std::vector<ImportColumn> columns;
    for (INT_PTR i = 0; i < m_arrColumns.GetCount(); ++i) {
        columns.push_back({m_arrColumns.GetAt(i).szColumnName, m_arrColumns.GetAt(i).iWidth});
    }
    m_parts->takePlan(planBuiltInColumns(columns));
    CString text, error;
    if (!m_bUseColumnProfile || !quoru_appdata_ini_file_operations(0, m_csListName, kProfileKey, text, file, error)) {
        return false;
    }
    const ColumnSetPlan plan = planColumnImport(columns, parseExchangeProfile(text));
    m_parts->takePlan(plan);
    m_parts->showPlan(plan);
    return true;
}

bool CCommonListCtrl::DoesColumnExist(const CString& heading, int* index, int* found, CArray<int, int>* seen) {
    const auto headingAt = [this](int i) { return CString(m_arrColumns.GetAt(i).szColumnName); };
    const int column = findHeading(static_cast<int>(m_arrColumns.GetCount()), headingAt, heading, *index);
    if (column == -1) return false;
    seen->Add(column);
    *found = column;
    return true;
}

void CCommonListCtrl::ExportColumns(CString name, CString file) {
    if (m_csListName.IsEmpty() || ExportMarketWatch(name, file)) return;
    ExportColumnToFile(file);
}

void CCommonListCtrl::ImportColumns(CString file) {
    if (m_csListName.IsEmpty() || ImportMarketWatch(file)) return;
    ImportColumnsFromFile(file);
}

// A list without a window has no columns to give and shows none: it is left out.
void CCommonListCtrl::RecoverColumnProfile(bool import, CString name, CString file) {
    const auto recover = [&](CCommonListCtrl& list) {
        if (import) {
            list.ImportColumns(file);
        } else {
            list.ExportColumns(name, file);
        }
    };
    for (INT_PTR i = 0; i < g_listRegistry.GetCount(); ++i) {
        if (isLive(g_listRegistry.GetAt(i))) recover(*g_listRegistry.GetAt(i));
    }
    for (INT_PTR i = 0; i < g_groupListRegistry.GetCount(); ++i) {
        CCommonListCtrl& list = *g_groupListRegistry.GetAt(i);
        if (!isLive(&list)) continue;
        // A watch exports only under its frame's title.
        CWnd* frame = import ? nullptr : list.GetParentFrame();
        if (frame) frame->SetWindowText(name);
        recover(list);
    }
}

bool CCommonListCtrl::SaveMarketWatchProfile() { return false; }

bool CCommonListCtrl::ExportMarketWatch(const CString&, const CString&) { return false; }

bool CCommonListCtrl::ImportMarketWatch(const CString&) { return false; }

void CCommonListCtrl::OnColumnsImported() {}
