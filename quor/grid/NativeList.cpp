#include "quor/grid/NativeList.h"

#include "quor/grid/core/CellPainting.h"
#include "quor/platform/Framework.h"

#include <algorithm>

namespace quor::grid {

// Blind: the pointer moves over the window, the control comes or goes, or the header paints itself.
MessageKind messageKind(UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr WPARAM kAnyButton = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON;
    switch (message) {
        case WM_NCHITTEST:
        case WM_SETCURSOR:
        case WM_NCMOUSEMOVE:
        case WM_NCCREATE:
        case WM_CREATE:
        case WM_DESTROY:
            return MessageKind::blind;
        case WM_MOUSEMOVE:
            return (wParam & kAnyButton) == 0 ? MessageKind::blind : MessageKind::quiet;
        case WM_NOTIFY:
            return reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(NM_CUSTOMDRAW)
                       ? MessageKind::blind
                       : MessageKind::general;
        case WM_PAINT:
            return MessageKind::paint;
        case WM_NCPAINT:
        case WM_ERASEBKGND:
            return MessageKind::quiet;
        case LVM_SETITEMCOUNT:
        case LVM_INSERTITEMA:
        case LVM_INSERTITEMW:
        case LVM_DELETEITEM:
        case LVM_DELETEALLITEMS:
            return MessageKind::counts;
        default:
            return MessageKind::general;
    }
}

LRESULT NativeList::send(UINT message, INT_PTR wParam, LPARAM lParam) {
    return m_list.m_hWnd ? m_list.DefWindowProc(message, static_cast<WPARAM>(wParam), lParam) : 0;
}

void NativeList::beforeMessage(UINT message, WPARAM wParam) {
    if (!m_measuring) m_labels.clear();
    if (message == WM_SETREDRAW) m_redrawIsOff = wParam == 0;
    if (message == WM_NCDESTROY) m_redrawIsOff = false;
}

RowLayout NativeList::readLayout() {
    RowLayout layout;
    if (!m_list.m_hWnd) return layout;
    RECT client{};
    ::GetClientRect(m_list.m_hWnd, &client);
    layout.clientWidth = client.right;
    layout.clientHeight = client.bottom;
    layout.topIndex = static_cast<int>(send(LVM_GETTOPINDEX));
    layout.countPerPage = static_cast<int>(send(LVM_GETCOUNTPERPAGE));
    RECT top{.left = LVIR_BOUNDS, .top = 0, .right = 0, .bottom = 0};
    if (!send(LVM_GETITEMRECT, layout.topIndex, reinterpret_cast<LPARAM>(&top))) return layout;
    layout.rowHeight = top.bottom - top.top;
    layout.headerHeight = top.top;
    layout.horizontalScroll = -top.left;
    layout.totalWidth = top.right - top.left;
    return layout;
}

void NativeList::tellCount(int count) {
    if (m_list.m_hWnd) quor::platform::tellRowCount(m_list, count);
}

// Rows that it fell below lose selection and focus, and a page that ends above the last row moves up.
bool NativeList::fallingMatters(int lowest) {
    if (nextItem(lowest - 1, LVNI_SELECTED) != -1 || nextItem(-1, LVNI_FOCUSED) >= lowest) return true;
    const int top = static_cast<int>(send(LVM_GETTOPINDEX));
    return top > 0 && top + static_cast<int>(send(LVM_GETCOUNTPERPAGE)) > lowest;
}

// The control walks row by row to the next selected one: not behind the last, and not at all when none is selected.
void NativeList::collectSelected(std::vector<int>& rows) {
    rows.clear();
    const auto count = static_cast<std::size_t>(send(LVM_GETSELECTEDCOUNT));
    for (int visual = -1; rows.size() < count;) {
        visual = nextItem(visual, LVNI_SELECTED);
        if (visual == -1) break;
        rows.push_back(visual);
    }
}

void NativeList::setState(int visual, unsigned state, unsigned mask) {
    LVITEMA item{};
    item.state = state;
    item.stateMask = mask;
    send(LVM_SETITEMSTATE, visual, reinterpret_cast<LPARAM>(&item));
}

void NativeList::scrollRows(int rows) {
    RECT row{.left = LVIR_BOUNDS, .top = 0, .right = 0, .bottom = 0};
    if (!send(LVM_GETITEMRECT, send(LVM_GETTOPINDEX), reinterpret_cast<LPARAM>(&row))) return;
    send(LVM_SCROLL, 0, static_cast<LPARAM>(rows) * (row.bottom - row.top));
}

UINT NativeList::itemState(int visual, UINT mask) {
    LVITEMA item{};
    item.mask = LVIF_IMAGE | LVIF_STATE;
    item.iItem = visual;
    item.stateMask = mask;
    return send(LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) ? item.state : 0;
}

void NativeList::insertRow(int visual) {
    char noText[] = "";
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = visual;
    item.pszText = noText;
    send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

bool NativeList::labelRect(const RowLayout& layout, int visual, int place, RECT& rect) {
    const auto index = static_cast<std::size_t>(place);
    const int rowTop = layout.rowRect(visual).top;
    if (place < 0) return false;
    if (index >= m_labels.size()) m_labels.resize(index + 1, RECT{0, 0, 0, -1});
    RECT& label = m_labels[index];
    if (label.bottom < label.top) {
        if (!subItemRect(visual, place, LVIR_LABEL, rect)) return false;
        label = rect;
        ::OffsetRect(&label, 0, -rowTop);
    }
    rect = label;
    ::OffsetRect(&rect, 0, rowTop);
    return true;
}

bool NativeList::subItemRect(int visual, int place, int part, RECT& rect) {
    rect = {.left = part, .top = place, .right = 0, .bottom = 0};
    m_measuring = true;
    const bool found = send(LVM_GETSUBITEMRECT, visual, reinterpret_cast<LPARAM>(&rect)) != 0;
    m_measuring = false;
    return found;
}

CellPlace NativeList::cellAt(POINT point) {
    LVHITTESTINFO hit{};
    hit.pt = point;
    m_measuring = true;
    const auto visual = static_cast<int>(send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    m_measuring = false;
    return visual < 0 ? CellPlace{-1, -1} : CellPlace{visual, hit.iSubItem};
}

// A region takes its rectangles in rows from the top.
void NativeList::invalidateCells(std::vector<CellPlace> cells) {
    std::sort(cells.begin(), cells.end());
    std::vector<char> bytes(sizeof(RGNDATAHEADER) + cells.size() * sizeof(RECT));
    auto& data = *reinterpret_cast<RGNDATA*>(bytes.data());
    auto* const rects = reinterpret_cast<RECT*>(data.Buffer);
    DWORD count = 0;
    for (const CellPlace& cell : cells)
        if (subItemRect(cell.visual, cell.place, LVIR_BOUNDS, rects[count])) ++count;
    if (count == 0) return;
    data.rdh = {sizeof data.rdh, RDH_RECTANGLES, count, static_cast<DWORD>(count * sizeof(RECT)), rects[0]};
    for (DWORD i = 1; i < count; ++i) ::UnionRect(&data.rdh.rcBound, &data.rdh.rcBound, &rects[i]);
    const HRGN region = ::ExtCreateRegion(nullptr, static_cast<DWORD>(bytes.size()), &data);
    if (!region) return;
    ::InvalidateRgn(m_list.m_hWnd, region, FALSE);
    ::DeleteObject(region);
}

void NativeList::invalidate(const RECT& rect, bool erase) {
    if (m_list.m_hWnd) ::InvalidateRect(m_list.m_hWnd, &rect, erase);
}

void NativeList::invalidateAll() {
    if (m_list.m_hWnd) ::InvalidateRect(m_list.m_hWnd, nullptr, TRUE);
}

void NativeList::widenUpdate(const RowLayout& layout) {
    RECT update;
    if (!m_list.m_hWnd || !::GetUpdateRect(m_list.m_hWnd, &update, FALSE)) return;
    const LONG edge = layout.rowRect(0).left;
    const RECT margin{edge, update.top, edge + kMarginOfFirstCell, update.bottom};
    invalidate(margin, false);
}

void NativeList::setRedraw(bool on) {
    m_redrawIsOff = !on;
    send(WM_SETREDRAW, on);
}

}  // namespace quor::grid
