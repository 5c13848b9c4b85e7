// Auto-sort: a list sorts itself again every five seconds by the column and order that the user left.
#include "quor/foundation/HostServices.h"
#include "quor/foundation/TimerIds.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/ListSettings.h"

#include <algorithm>

using namespace quor::list;
using namespace quor::foundation;

namespace {

constexpr const char* kTickedKey = "AutoSortTicked";
constexpr const char* kPlaceKey = "AutoSort";
constexpr const char* kOrderKey = "AutoSortOrder";

CString text(int number) {
    CString result;
    result.Format("%d", number);
    return result;
}

}  // namespace

int CCommonListCtrl::IsAutoSortEnabled() {
    if (IsMarketWatch() && hostRunsOptimizedMarketWatch()) m_bAutoSort = 0;
    return m_bAutoSort;
}

int CCommonListCtrl::ReadAutoSort() {
    m_autoSortRead = true;
    CString value;
    if (IsMarketWatch() && hostRunsOptimizedMarketWatch()) {
        m_bAutoSort = 0;
    } else if (readListSetting(m_csListName, kTickedKey, value)) {
        m_bAutoSort = value == "true";
    }
    if (readListSetting(m_csListName, kPlaceKey, value)) m_nSortCol = quor::atoi(value);
    if (m_nSortCol >= m_arrColumns.GetCount()) {
        m_nSortCol = 0;
        return -1;
    }
    if (readListSetting(m_csListName, kOrderKey, value)) {
        m_nSortOrder = quor::atoi(value);
        // The first step takes the column for the sorted one and keeps its order.
        if (m_nSortOrder == 1) m_nLastSortCol = m_nSortCol;
    }
    return 1;
}

void CCommonListCtrl::SaveAutoSort() {
    writeListSetting(m_csListName, kTickedKey, m_bAutoSort ? "true" : "false");
    if (!m_bAutoSort) return;
    writeListSetting(m_csListName, kPlaceKey, text(m_nSortCol));
    writeListSetting(m_csListName, kOrderKey, text(m_nSortOrder));
}

void CCommonListCtrl::InitializeAutoSort() {
    if (!IsAutoSortEnabled()) {
        KillTimer(kAutoSortTimer);
        return OnAutoSortTimerTaken();
    }
    m_nAutoSortTimer = SetTimer(kAutoSortTimer, kAutoSortPeriod);
    const bool isEmpty = CListCtrl::GetItemCount() == 0;
    if (isEmpty) SetTimer(kAutoSortTimer, kAutoSortPeriodWhenEmpty);
    OnAutoSortTimerTaken();
    if (!isEmpty) SortOnVisibleIndex(m_nSortCol, m_nSortOrder);
}

void CCommonListCtrl::OnAutoSortTimerTaken() {}

// A timer that was started for an empty list keeps its short period: m_nAutoSortTimer is set then, too.
void CCommonListCtrl::OnTimer(UINT_PTR id) {
    if (id == kCellTipTimer) return m_parts->cellTip.onTimer();
    if (id != kAutoSortTimer) {
        CListCtrl::OnTimer(id);
        return;
    }
    if (m_nAutoSortTimer == 0 && CListCtrl::GetItemCount() > 0) {
        KillTimer(kAutoSortTimer);
        m_nAutoSortTimer = SetTimer(kAutoSortTimer, kAutoSortPeriod);
    }
    SortOnVisibleIndex(m_nSortCol, 1);
}

void CCommonListCtrl::KillAutoSortTimer() {
    KillTimer(kAutoSortTimer);
    m_bAutoSort = 0;
    OnAutoSortTimerTaken();
}

int CCommonListCtrl::SortOnVisibleIndex(int place, int) {
    if (!m_bAutoSort) return 1;
    NMLISTVIEW click = headerClick(*this, std::max(place, 0));
    LRESULT result = 0;
    const RedrawScope frozen(*this);
    if (m_nSortCol == m_nLastSortCol) m_nSortOrder = -m_nSortOrder;  // the click turns it back
    OnAutoSortClick(&click.hdr, &result);
    return 1;
}

void CCommonListCtrl::OnAutoSortClick(NMHDR* header, LRESULT* result) {
    CCommonListCtrl::OnLvnColumnclick(header, result);
}
