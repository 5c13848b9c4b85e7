// The header's filter bar: its fields, their notifications, the pop-up of values, the keys.
#include "quor/foundation/RedrawScope.h"
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/grid/FilterText.h"
#include "quor/grid/core/FilterValues.h"
#include "quor/resource/resource.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <unordered_set>
#include <utility>

using quor::foundation::RedrawScope;

namespace {

constexpr DWORD kFilterChangeDelay = 500;  // ms from the last key to the header's notification
constexpr std::size_t kFilterBufferSize = quor::grid::kLongestFilter + 1;  // bytes, the terminator included
constexpr int kFilterBufferChars = kFilterBufferSize / sizeof(wchar_t);    // the same buffer in wide characters
constexpr int kTabScrollMargin = 50;  // pixels shown beside a field that Tab brought into view

}  // namespace

// ---- Fields

// A filter of many values is long, so the buffer is made once per grid. It is all zeros before each use; a change of a
// field uses it three times, so a use tells in FilterTextBytes how far it wrote, and the next clears no more.
char* CFilterListCtrl::filterBuffer() {
    if (!FilterTextBuffer) {
        FilterTextBuffer.reset(static_cast<char*>(std::malloc(kFilterBufferSize)));
        FilterTextBytes = kFilterBufferSize;
    }
    if (!FilterTextBuffer) AfxThrowMemoryException();
    std::memset(FilterTextBuffer.get(), 0, std::exchange(FilterTextBytes, kFilterBufferSize));
    return FilterTextBuffer.get();
}

int CFilterListCtrl::SetVisibleColumnFilter(int place, CString& text, int exact) {
    if (place < 0) return 0;
    char* const buffer = filterBuffer();
    const auto length = std::min(static_cast<std::size_t>(text.GetLength()), kFilterBufferSize - 1);
    std::memcpy(buffer, text.GetString(), length);
    FilterTextBytes = length;
    if (m_header.m_hWnd) {
        const Presence presence(*this);
        quor::NarrowFilterItem(buffer, static_cast<int>(kFilterBufferSize)).send(m_header.m_hWnd, HDM_SETITEMA, place);
        if (presence.gone()) return 0;
        m_header.SetActiveWindow();
    }
    MatchExact = static_cast<BYTE>(exact);
    return 1;
}

// The wide form is only asked whether there is anything to read.
int CFilterListCtrl::GetHeaderText(int place, CString& text) {
    if (!m_header.m_hWnd) return 0;
    char* const buffer = filterBuffer();
    auto* const wide = reinterpret_cast<LPWSTR>(buffer);
    quor::WideFilterItem(wide, kFilterBufferChars).send(m_header.m_hWnd, HDM_GETITEMW, place);
    FilterTextBytes = ::wcsnlen(wide, kFilterBufferChars) * sizeof(wchar_t);
    if (buffer[0] == 0 && buffer[1] == 0) return 0;
    quor::NarrowFilterItem(filterBuffer(), static_cast<int>(kFilterBufferSize))
        .send(m_header.m_hWnd, HDM_GETITEMA, place);
    buffer[kFilterBufferSize - 1] = 0;
    FilterTextBytes = std::strlen(buffer);
    if (buffer[0] == 0) return 0;
    text = buffer;
    return text.GetLength();
}

// Fields are new with their columns. They say what filters already; nobody is told.
void CFilterListCtrl::showFilters() {
    const Presence presence(*this);
    const int former = std::exchange(DoFilter, 0);
    for (int i = 0; !presence.gone() && m_header.m_hWnd && i < m_parts->filters.count(); ++i) {
        CString text = m_parts->filters.textAt(i);
        const int place = placeOf(m_parts->filters.columnAt(i));
        if (place >= 0)
            quor::NarrowFilterItem(text.GetBuffer(), static_cast<int>(kFilterBufferSize))
                .send(m_header.m_hWnd, HDM_SETITEMA, place);
    }
    if (!presence.gone()) DoFilter = former;
}

// As the header tells of a cleared field; it has none for a column that went.
void CFilterListCtrl::tellFilterEnded() {
    if (m_header.m_hWnd) m_header.Invalidate(FALSE);
    if (!DoFilter) return;
    NMHEADERA change{};
    change.hdr = {m_header.m_hWnd, 0, static_cast<UINT>(HDN_FILTERCHANGE)};
    change.iItem = -1;
    forwardToOwner(&change.hdr);
}

void CFilterListCtrl::PutListFilter() {
    if (!m_header.m_hWnd) return;
    showFilterBar(!FilterBarVisible);
    if (FilterBarVisible && m_header.GetItemCount() > 0) m_header.PostMessage(HDM_EDITFILTER, 0, 0);
    // The control places its rows below the header anew when a width changes.
    m_parts->touchControl([this] {
        const int width = m_parts->native.columnWidth(0);
        m_parts->native.setColumnWidth(0, width + 1);
        m_parts->native.setColumnWidth(0, width);
    });
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

// Without a header there is nothing to show, and a header that comes later comes without a bar.
void CFilterListCtrl::showFilterBar(bool show) {
    FilterBarVisible = show && m_header.m_hWnd;
    if (!m_header.m_hWnd) return;
    m_header.ModifyStyle(show ? 0 : HDS_FILTERBAR, show ? HDS_FILTERBAR : 0);
    if (show) m_header.SetFilterChangeTimeout(kFilterChangeDelay);
}

// ---- Notifications of the header

// They go on under the grid's own control id.
LRESULT CFilterListCtrl::forwardToOwner(NMHDR* header) {
    header->idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    CWnd* const owner = GetOwner();
    if (!owner || !owner->m_hWnd) return 0;
    return owner->SendNotifyMessage(WM_NOTIFY, header->idFrom, reinterpret_cast<LPARAM>(header));
}

void CFilterListCtrl::OnFilterChange(NMHDR* header) {
    if (!DoFilter) return;
    const int place = reinterpret_cast<const NMHEADERA*>(header)->iItem;
    CString text;
    if (place >= 0 && place <= m_header.GetItemCount()) GetHeaderText(place, text);
    if (hasTextCallback()) {
        if (const int columnIndex = GetOriginalColumnPosition(place); columnIndex != -1)
            AddToFilteredCols(columnIndex, text);
    }
    forwardToOwner(header);
}

void CFilterListCtrl::OnFilterButtonClicked(NMHDR* header, LRESULT* result) {
    const int place = reinterpret_cast<const NMHDFILTERBTNCLICK*>(header)->iItem;
    const Presence presence(*this);
    *result = forwardToOwner(header);
    if (!presence.gone()) offerValues(place);
}

// Reads by columnIndex and hands the pop-up the header item, which it gives back as a place.
void CFilterListCtrl::offerValues(int place) {
    CFilterText* const popup = CFilterText::shared(this);
    if (!popup) return;
    POINT cursor;
    ::GetCursorPos(&cursor);
    popup->SetWindowPos(nullptr, cursor.x, cursor.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    popup->ShowWindow(SW_SHOW);
    popup->BringWindowToTop();
    const Presence presence(*this);
    {
        CListBox& values = popup->values();
        const RedrawScope frozen(values);  // a visible box would set its scroll bar and paint for every value
        values.ResetContent();
        visitUniqueTexts(GetOriginalColNo(place), [&values](const CString& text) { values.AddString(text); });
    }
    if (!presence.gone()) popup->SetFilterlist(this, place);
}

// Each text that the displayed rows show in the column, once, from the top.
void CFilterListCtrl::visitUniqueTexts(int columnIndex, const std::function<void(const CString&)>& visit) {
    std::unordered_set<std::string> seen;
    seen.reserve(static_cast<std::size_t>(GetDisplayCount()));
    quor::grid::CellAnswer cell;
    const Presence presence(*this);
    for (int visual = 0; visual < GetDisplayCount(); ++visual) {
        const DWORD_PTR data = GetItemData(visual);
        if (data == 0) continue;
        m_parts->readCell(data, columnIndex, cell);
        if (presence.gone()) return;
        const CString& text = cell.text;
        if (!text.IsEmpty() && seen.insert(text.GetString()).second) visit(text);
    }
}

int CFilterListCtrl::PopulateComboBoxWithUniques(CComboBox* combo, int columnIndex) {
    static const char kAll[] = "--ALL--";
    combo->ResetContent();
    visitUniqueTexts(columnIndex, [combo](const CString& text) { combo->AddString(text); });
    combo->InsertString(0, kAll);
    combo->SelectString(-1, kAll);
    return 1;
}

// ---- Keys and commands

BOOL CFilterListCtrl::PreTranslateMessage(MSG* message) {
    if (UseFilter && message->message == WM_KEYDOWN) {
        if (message->wParam == 'F' && FilterUiEnabled && ::GetKeyState(VK_CONTROL) < 0) {
            CCommonListCtrl::PreTranslateMessage(message);
            toggleFilterBarByKey();
            return TRUE;
        }
        if (message->wParam == VK_TAB && editNextFilter(::GetKeyState(VK_SHIFT) < 0)) return TRUE;
    }
    if (message->message == WM_COMMAND && LOWORD(message->wParam) == kCommandMatchExactly) {
        toggleMatchExact();
        return TRUE;
    }
    return CCommonListCtrl::PreTranslateMessage(message);
}

// A field that has the focus goes with the bar: the grid takes the focus first.
void CFilterListCtrl::toggleFilterBarByKey() {
    const HWND focus = ::GetFocus();
    if (focus && m_header.m_hWnd && (focus == m_header.m_hWnd || ::IsChild(m_header.m_hWnd, focus))) SetFocus();
    PutListFilter();
}

// False when no field has the focus.
bool CFilterListCtrl::editNextFilter(bool backwards) {
    const HWND focus = ::GetFocus();
    if (!focus || !m_header.m_hWnd || ::GetParent(focus) != m_header.m_hWnd) return false;
    const int count = m_header.GetItemCount();
    RECT field, item, common;
    ::GetWindowRect(focus, &field);
    ::MapWindowPoints(nullptr, m_header.m_hWnd, reinterpret_cast<POINT*>(&field), 2);
    LONG widest = 0;
    for (int place = 0; place < count; ++place) {
        if (!m_header.GetItemRect(place, &item) || !::IntersectRect(&common, &field, &item)) continue;
        if (common.right - common.left <= widest) continue;
        widest = common.right - common.left;
        FilterEditColumn = place;
    }
    if (count > 0) FilterEditColumn = (FilterEditColumn + (backwards ? count - 1 : 1)) % count;
    scrollToFilter(FilterEditColumn);
    m_header.PostMessage(HDM_EDITFILTER, static_cast<WPARAM>(FilterEditColumn), 0);
    return true;
}

// Onwards by the column's width and a margin, at least until it is in view; to the first column all the way back.
void CFilterListCtrl::scrollToFilter(int place) {
    RECT item, first, area;
    if (!m_header.GetItemRect(place, &item) || !m_header.GetItemRect(0, &first)) return;
    ::MapWindowPoints(m_header.m_hWnd, m_hWnd, reinterpret_cast<POINT*>(&item), 2);
    ::MapWindowPoints(m_header.m_hWnd, m_hWnd, reinterpret_cast<POINT*>(&first), 2);
    GetClientRect(&area);
    if (item.left >= area.left && item.right <= area.right) return;
    const LONG step = item.right - item.left + kTabScrollMargin;
    LONG distance = item.left < area.left ? -step : std::max(step, item.right - area.right);
    if (place == 0) distance = first.left;
    Scroll(CSize(static_cast<int>(distance), 0));
}

void CFilterListCtrl::toggleMatchExact() {
    MatchExactSticky = !MatchExactSticky;
    MatchExact = 0;
    const int place = m_parts->filters.isEmpty() ? -1 : placeOf(m_parts->filters.columnAt(0));
    CString text;
    if (place >= 0) {
        text = m_parts->filters.textAt(0);
        SetVisibleColumnFilter(place, text, 0);
    } else if (m_header.m_hWnd && m_header.GetItemCount() > 0) {
        SetVisibleColumnFilter(0, text, 0);
    }
}
