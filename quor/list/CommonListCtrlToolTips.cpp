// Header tool tips: one tool per header item, its id the item's index plus one, its rectangle in the header's client
// area. They move when columns do, and see every message of the list before it is dispatched. While the mouse is on a
// heading that shows whole and has no other text, they are off.
#include "quor/list/CommonListCtrlParts.h"

using namespace quor::list;

namespace {

constexpr int kLongestHeading = 256;

UINT_PTR toolId(int place) { return static_cast<UINT_PTR>(place) + 1; }

bool isReportView(const CWnd& list) { return (list.GetStyle() & LVS_TYPEMASK) == LVS_REPORT; }

bool readHeading(const CListCtrl& list, int place, CString& heading) {
    LVCOLUMN column{};
    column.mask = LVCF_TEXT;
    column.pszText = heading.GetBuffer(kLongestHeading);
    column.cchTextMax = kLongestHeading;
    const BOOL read = list.GetColumn(place, &column);
    heading.ReleaseBuffer(read ? -1 : 0);
    return read;
}

// With its text.
void moveTool(CCommonListCtrl& list, int from, int to) {
    CHeaderCtrl* const header = list.GetHeaderCtrl();
    CString text;
    list.m_ToolTip.GetText(text, header, toolId(from));
    list.m_ToolTip.DelTool(header, toolId(from));
    list.AddHeaderToolTip(to, text);
}

}  // namespace

int CCommonListCtrl::AddHeaderToolTip(int place, const char* text) {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!header || place < 0 || place >= header->GetItemCount() || !isReportView(*this)) return 0;
    CString heading;
    if (!text && !readHeading(*this, place, heading)) return 0;
    if (!m_ToolTip.m_hWnd) {
        m_ToolTip.Create(this, TTS_ALWAYSTIP | TTS_NOPREFIX);
        m_ToolTip.Activate(TRUE);
        m_parts->headerTipQuiet = false;
    }
    m_ToolTip.DelTool(header, toolId(place));  // a tool that is added twice would keep its first text
    const CRect rect = HeaderToolRect(place);
    m_ToolTip.AddTool(header, text ? text : heading.GetString(), rect, toolId(place));
    return 1;
}

// After the column is gone: the tools behind it move down by one.
void CCommonListCtrl::RemoveHeaderToolTip(int place) {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!m_ToolTip.m_hWnd || !header) return;
    m_ToolTip.DelTool(header, toolId(place));
    const int count = header->GetItemCount();
    for (int moved = place; moved < count; ++moved) moveTool(*this, moved + 1, moved);
}

void CCommonListCtrl::Parts::shiftHeaderToolTips(int inserted) {
    const CHeaderCtrl* header = m_list.GetHeaderCtrl();
    if (!m_list.m_ToolTip.m_hWnd || !header || inserted < 0) return;
    for (int moved = header->GetItemCount() - 1; moved > inserted; --moved) moveTool(m_list, moved - 1, moved);
}

// The header scrolls with the list by moving inside it, so a place along the list is brought back into the header.
CRect CCommonListCtrl::HeaderToolRect(int place) {
    CHeaderCtrl* header = GetHeaderCtrl();
    std::vector<int> widths(static_cast<std::size_t>(header->GetItemCount()));
    std::vector<int> sequence(widths.size());
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = CListCtrl::GetColumnWidth(static_cast<int>(i));
    header->GetOrderArray(sequence.data(), static_cast<int>(sequence.size()));
    const Span span = headerItemSpan(widths, sequence, place, GetScrollPos(SB_HORZ));
    CRect rect;
    header->GetClientRect(&rect);
    POINT origin{0, 0};
    ::MapWindowPoints(m_hWnd, header->m_hWnd, &origin, 1);
    rect.left = span.left + origin.x;
    rect.right = span.right + origin.x;
    return rect;
}

void CCommonListCtrl::LayOutHeaderToolTips() {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!m_ToolTip.m_hWnd || !header) return;
    for (int place = 0; place < header->GetItemCount(); ++place) {
        const CRect rect = HeaderToolRect(place);
        m_ToolTip.SetToolRect(header, toolId(place), rect);
    }
}

// Changed items may have moved the others. At the end of a drag the column's width is set anew, which makes the control
// lay its cells out again; the header changes its order only afterwards, so the tools are laid out once more before the
// next message that they may show for. While AutoSizeColumns runs, they wait for its end.
//
// The header paints itself whenever its items were moved, by whatever road: then the list looks, too.
BOOL CCommonListCtrl::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto* notification = reinterpret_cast<const NMHEADER*>(lParam);
    if (notification->hdr.code == static_cast<UINT>(HDN_DIVIDERDBLCLICKA) ||
        notification->hdr.code == static_cast<UINT>(HDN_DIVIDERDBLCLICKW)) {
        if (!CListCtrl::OnNotify(wParam, lParam, result)) FitColumnToView(*notification);
        return TRUE;
    }
    if (notification->hdr.code == static_cast<UINT>(NM_CUSTOMDRAW) && IsHeaderPaint(lParam)) FollowColumnOrder();
    if (m_bHeaderToolTips && m_bRedrawEnabled) {
        switch (notification->hdr.code) {
            case HDN_ITEMCHANGEDA:  // -301
            case HDN_ITEMCHANGEDW:  // -321
                LayOutHeaderToolTips();
                break;
            case HDN_ENDDRAG:  // -311
                m_parts->toolTipsStale = true;
                CListCtrl::SetColumnWidth(notification->iItem, CListCtrl::GetColumnWidth(notification->iItem));
                break;
        }
    }
    return CListCtrl::OnNotify(wParam, lParam, result);
}

BOOL CCommonListCtrl::PreTranslateMessage(MSG* message) {
    if (m_parts->toolTipsStale) {
        m_parts->toolTipsStale = false;
        LayOutHeaderToolTips();
    }
    if (message->message == WM_KEYDOWN) OnListKey(message->wParam);
    if (m_ToolTip.m_hWnd) {
        if (message->message == WM_MOUSEMOVE) QuietHeaderToolTip(*message);
        m_ToolTip.RelayEvent(message);
    }
    return CListCtrl::PreTranslateMessage(message);
}

// A heading that has no more than the control's own fit is cut: that is a pixel short.
bool CCommonListCtrl::HeadingSaysTheSame(int place) {
    CHeaderCtrl& header = *GetHeaderCtrl();
    CString heading, tip;
    m_ToolTip.GetText(tip, &header, toolId(place));
    if (!readHeading(*this, place, heading) || heading != tip) return false;
    CClientDC dc(&header);
    const SelectScope font(&dc, header.GetFont());
    return headingWidth(header, dc, place) < CListCtrl::GetColumnWidth(place);
}

void CCommonListCtrl::QuietHeaderToolTip(const MSG& move) {
    const CHeaderCtrl* const header = GetHeaderCtrl();
    if (!header || move.hwnd != header->m_hWnd) return;
    HDHITTESTINFO hit{};
    hit.pt = CPoint(move.lParam);
    const auto place = static_cast<int>(header->SendMessage(HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    const bool quiet = place >= 0 && HeadingSaysTheSame(place);
    if (quiet != m_parts->headerTipQuiet) m_ToolTip.Activate(!quiet);
    m_parts->headerTipQuiet = quiet;
}
