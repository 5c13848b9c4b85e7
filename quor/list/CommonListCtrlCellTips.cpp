// The tool tip of the cell under the mouse.
//
// The system's tip control shows it and does nothing else: it can neither stand in a cell nor follow a text. So the
// list waits for the mouse to rest, for as long as the system's tips do, and looks again while the tip shows, at the
// cell that is under the mouse then: rows move below it. A paint would not do for that, since the tip covers its cell.
// Keys and clicks end the tip wherever in the thread they go.
#include "quor/foundation/TimerIds.h"
#include "quor/list/CommonListCtrlParts.h"

#include <algorithm>

using namespace quor::list;

namespace {

constexpr UINT_PTR kToolId = 1;
constexpr BYTE kOpaque = 255;
constexpr int kMostAround = 32;  // a text, by the tip's window
constexpr int kLongestTip = 1023;
constexpr int kOverhangShare = 4;  // of a line's height: what a last letter has beyond the width that is told of a text
// Of the system's tips: shares of the double click time, which is what they wait at first.
constexpr UINT kReshowShare = 5;
constexpr UINT kAutopopFactor = 10;
constexpr WPARAM kAnyButton = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON;
constexpr UINT kMeasure = DT_CALCRECT | DT_NOPREFIX;

bool endsTip(UINT message) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
        case WM_XBUTTONDOWN:
        case WM_NCLBUTTONDOWN:
        case WM_NCRBUTTONDOWN:
            return true;
        default:
            return false;
    }
}

// After these other rows may be under the mouse, or none. A list that scrolls itself (LVM_SCROLL) keeps its row there
// while others arrive: the tip follows.
bool movesRows(UINT message) {
    switch (message) {
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_MOUSEWHEEL:
        case WM_MOUSEHWHEEL:
        case WM_SIZE:
        case WM_SETFONT:
        case WM_ENABLE:
        case WM_SHOWWINDOW:
        case WM_CANCELMODE:
        case WM_DESTROY:
            return true;
        default:
            return false;
    }
}

// What the rows are seen in: not the header.
CRect rowsView(CListCtrl& list) {
    CRect view;
    list.GetClientRect(&view);
    const CHeaderCtrl* const header = list.GetHeaderCtrl();
    if (!isLive(header) || !header->IsWindowVisible()) return view;
    CRect taken;
    header->GetWindowRect(&taken);
    list.ScreenToClient(&taken);
    view.top = std::max(view.top, taken.bottom);
    return view;
}

CRect workAreaAt(const CRect& rect, HWND window) {
    const quor::platform::Screens& screens = quor::platform::screens();
    HMONITOR monitor = screens.monitorFromRect(rect);
    if (!monitor) monitor = screens.monitorFromWindow(window);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    return screens.describe(monitor, info) ? CRect(info.rcWork) : screens.workArea();
}

CSize textExtent(CWnd& window, const CString& text, int width, UINT format) {
    CClientDC dc(&window);
    const SelectScope font(&dc, window.GetFont());
    CRect extent(0, 0, width, 0);
    dc.DrawText(text, &extent, format);
    return extent.Size();
}

// Where in the window, if it is in none of its children.
bool mouseIn(CWnd& window, CPoint& mouse) {
    ::GetCursorPos(&mouse);
    if (::WindowFromPoint(mouse) != window.m_hWnd) return false;
    window.ScreenToClient(&mouse);
    return true;
}

// A list that is asked may end meanwhile.
class Presence {
public:
    explicit Presence(const CWnd& list) : m_list(&list), m_window(list.m_hWnd) {}
    bool gone() const { return CWnd::FromHandlePermanent(m_window) != m_list; }

private:
    const CWnd* m_list;
    HWND m_window;
};

}  // namespace

// ---- The window of the tip

// The mouse goes through it, to the cell below: a hit test's answer alone would not do that everywhere.
class CCommonListCtrl::CellTip::Window : public CToolTipCtrl {
public:
    ~Window() override {
        if (m_hWnd) CToolTipCtrl::DestroyWindow();
    }
    bool open(CCommonListCtrl& list, const CString& text, CFont* font) {
        if (!Create(&list, TTS_ALWAYSTIP | TTS_NOPREFIX)) return false;
        ModifyStyleEx(0, WS_EX_LAYERED | WS_EX_TRANSPARENT);
        ::SetLayeredWindowAttributes(m_hWnd, 0, kOpaque, LWA_ALPHA);
        if (font) SetFont(font);
        m_tool.cbSize = TTTOOLINFOA_V1_SIZE;
        m_tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
        m_tool.hwnd = list;
        m_tool.uId = kToolId;
        m_tool.lpszText = const_cast<LPSTR>(text.GetString());
        return SendMessage(TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&m_tool)) != 0;
    }
    void showAt(CPoint corner) {
        SendMessage(TTM_TRACKPOSITION, 0, MAKELPARAM(corner.x, corner.y));
        SendMessage(TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&m_tool));
    }
    CRect shown() const {
        CRect rect;
        GetWindowRect(&rect);
        return rect;
    }
    void moveTo(const CRect& rect) {
        SetWindowPos(nullptr, rect.left, rect.top, rect.Width(), rect.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);  // the letter that was cut, too
    }

private:
    TOOLINFO m_tool{};
};

// ---- What is under the mouse

bool CCommonListCtrl::CellTip::Found::operator==(const Found& other) const {
    return origin == other.origin && cell == other.cell && whole == other.whole && text == other.text &&
           inPlace == other.inPlace;
}

// False: the cell has no tip, or the list went.
bool CCommonListCtrl::CellTip::askText(int row, int place, Found& found) {
    const Presence here(m_list);
    const CString shown = m_list.ShownText(row, place);
    if (here.gone()) return false;
    found.text = shown;
    if (const ToolTipTextCallback callback = m_list.m_pfnToolTipText) {
        CWnd* const owner = m_list.callbackOwner();
        found.text.Empty();
        if (!owner || !(owner->*callback)(row, place, found.text) || here.gone()) return false;
    }
    found.inPlace = found.text == shown;
    found.text = found.text.Left(kLongestTip);
    m_list.ClientToScreen(&found.origin);
    return !found.text.IsEmpty();
}

TextCell CCommonListCtrl::CellTip::measure(const Found& found, CRect label, int place) {
    const int columnIndex = m_list.GetOriginalColumnPosition(place);
    TextCell cell;
    if (columnIndex >= 0 && columnIndex < m_list.m_arrColumns.GetSize())
        cell.format = m_list.m_arrColumns.GetAt(columnIndex).iFormat;
    cell.area = cellTextArea(label, cell.format);
    cell.view = rowsView(m_list);
    cell.text = textExtent(m_list, found.text, 0, kMeasure);
    cell.lineHeight = textExtent(m_list, " ", 0, kMeasure).cy;
    return cell;
}

std::optional<CCommonListCtrl::CellTip::Found> CCommonListCtrl::CellTip::cellAt(CPoint point, INT_PTR& number) {
    constexpr int kPlaceBits = 16;
    const Presence here(m_list);
    int row = -1, place = -1;
    CRect label;
    Found found;
    if (!m_list.CellAt(point, row, place) || here.gone()) return std::nullopt;
    if (!m_list.LabelRect(row, place, label) || here.gone()) return std::nullopt;
    if (!askText(row, place, found)) return std::nullopt;
    const TextCell cell = measure(found, label, place);
    found.cell.IntersectRect(label, &cell.view);
    found.whole = wholeText(cell);
    number = (static_cast<INT_PTR>(row) << kPlaceBits) | place;
    return !found.inPlace || isClipped(cell) ? std::optional(found) : std::nullopt;
}

INT_PTR CCommonListCtrl::CellTip::hitTest(CPoint point, TOOLINFO* info) {
    const Presence here(m_list);
    INT_PTR number = -1;
    std::optional<Found> found = cellAt(point, number);
    if (here.gone()) return -1;
    m_found = std::move(found);
    if (!m_found) return -1;
    if (info) {
        info->hwnd = m_list;
        info->uId = static_cast<UINT_PTR>(number);
        info->rect = m_found->cell;
        info->lpszText = LPSTR_TEXTCALLBACK;
    }
    return number;
}

// Whether the mouse is on a cell that has a tip. Not while a button or a menu has the mouse.
bool CCommonListCtrl::CellTip::look() {
    const Presence here(m_list);
    CPoint mouse;
    m_found.reset();
    if (::GetCapture() || !mouseIn(m_list, mouse)) return false;
    TOOLINFO info{};
    const INT_PTR number = m_list.OnToolHitTest(mouse, &info);
    return !here.gone() && number != -1 && m_found;
}

// ---- Its life

CCommonListCtrl::CellTip::CellTip(CCommonListCtrl& list) : m_list(list) {}

CCommonListCtrl::CellTip::~CellTip() { hide(); }

CCommonListCtrl::CellTip* CCommonListCtrl::CellTip::s_shown;
HHOOK CCommonListCtrl::CellTip::s_hook;

void CCommonListCtrl::CellTip::beforeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!isWanted()) return;
    if (message == WM_MOUSEMOVE) return mouseMoved(CPoint(lParam), wParam);
    if (endsTip(message)) return end();
    if (movesRows(message)) hide();
}

// The system tells of moves that are none, whenever a window comes or goes below the mouse.
void CCommonListCtrl::CellTip::mouseMoved(CPoint point, WPARAM buttons) {
    CPoint onScreen = point;
    m_list.ClientToScreen(&onScreen);
    if (onScreen == m_mouse) return;
    m_mouse = onScreen;
    if (m_spent.PtInRect(point) || (m_window && m_found && m_found->cell.PtInRect(point))) return;
    m_spent.SetRectEmpty();
    m_fromCellToCell = m_fromCellToCell || m_window;
    hide();
    const UINT delay = ::GetDoubleClickTime();
    if (m_list.m_bCellToolTips && !(buttons & kAnyButton))
        m_list.SetTimer(kCellTipTimer, m_fromCellToCell ? delay / kReshowShare : delay);
}

void CCommonListCtrl::CellTip::onTimer() {
    if (!m_spent.IsRectEmpty()) {
        CPoint mouse;
        if (!mouseIn(m_list, mouse) || !m_spent.PtInRect(mouse)) m_spent.SetRectEmpty();
        return hide();
    }
    const Presence here(m_list);
    const std::optional<Found> former = m_found;
    bool found = false;
    try {
        found = look();
    } catch (...) {
        if (!here.gone()) end();  // whoever throws is not asked again and again
        throw;
    }
    if (here.gone()) return;
    if (!found) {
        m_fromCellToCell = false;
        return hide();
    }
    if (!m_window) return show();
    if (::GetTickCount() - m_shownAt > ::GetDoubleClickTime() * kAutopopFactor) return end();
    if (m_found == former) return;
    if (!former || m_found->inPlace != former->inPlace) return show();
    m_window->UpdateTipText(m_found->text, &m_list, kToolId);
    place();
}

void CCommonListCtrl::CellTip::show() {
    hide();
    if (s_shown) s_shown->hide();
    auto window = std::make_unique<Window>();
    if (!window->open(m_list, m_found->text, m_found->inPlace ? m_list.GetFont() : nullptr)) return;
    m_window = std::move(window);
    m_shownAt = ::GetTickCount();
    s_shown = this;
    s_hook = ::SetWindowsHookExA(WH_GETMESSAGE, &CellTip::onMessageTaken, nullptr, ::GetCurrentThreadId());
    m_list.SetTimer(kCellTipTimer, kCellTipPeriod);
    place();
}

// A text that is wider than the screen takes more lines. What the control puts around a text is known once it shows:
// TTM_ADJUSTRECT does not tell everywhere. It cuts a letter that reaches beyond the text's width, so it gets more.
void CCommonListCtrl::CellTip::place() {
    const CRect cell = m_found->cell + m_found->origin, whole = m_found->whole + m_found->origin;
    CPoint mouse;
    ::GetCursorPos(&mouse);
    const CRect screen = workAreaAt(cell, m_list);
    const int width = std::max<int>(screen.Width() - quor::platform::scaled(m_list, kMostAround), 1);
    m_window->SetMaxTipWidth(width);
    m_window->showAt(whole.TopLeft());
    CSize size = m_window->shown().Size();
    const CSize around =
        size - textExtent(*m_window, m_found->text, width, kMeasure | DT_WORDBREAK | DT_EXTERNALLEADING);
    size.cx += textExtent(*m_window, " ", 0, kMeasure).cy / kOverhangShare;
    const CPoint corner = m_found->inPlace
                              ? cornerOnScreen(whole.TopLeft() - CSize(around.cx / 2, around.cy / 2), size, screen)
                              : cornerBesideCell(cell, mouse.x, size, screen);
    m_window->moveTo(CRect(corner, size));
}

void CCommonListCtrl::CellTip::hide() {
    if (m_list.m_hWnd && m_spent.IsRectEmpty()) m_list.KillTimer(kCellTipTimer);
    if (m_list.m_hWnd && !m_spent.IsRectEmpty()) m_list.SetTimer(kCellTipTimer, kCellTipPeriod);
    if (!m_window) return;
    ::UnhookWindowsHookEx(s_hook);
    s_shown = nullptr;
    m_window.reset();
}

void CCommonListCtrl::CellTip::end() {
    if (m_window && m_found) m_spent = m_found->cell;
    m_fromCellToCell = false;
    hide();
}

LRESULT CALLBACK CCommonListCtrl::CellTip::onMessageTaken(int code, WPARAM removed, LPARAM message) {
    const HHOOK hook = s_hook;
    if (code == HC_ACTION && removed == PM_REMOVE && s_shown) {
        const UINT taken = reinterpret_cast<const MSG*>(message)->message;
        if (endsTip(taken)) s_shown->end();
        if (s_shown && taken == WM_MOUSEWHEEL) s_shown->hide();
    }
    return ::CallNextHookEx(hook, code, removed, message);
}

// ---- The list's side

LRESULT CCommonListCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    m_parts->cellTip.beforeMessage(message, wParam, lParam);
    return CListCtrl::WindowProc(message, wParam, lParam);
}

INT_PTR CCommonListCtrl::OnToolHitTest(CPoint point, TOOLINFO* info) const {
    return m_bCellToolTips ? m_parts->cellTip.hitTest(point, info) : CListCtrl::OnToolHitTest(point, info);
}

bool CCommonListCtrl::CellAt(CPoint point, int& row, int& place) {
    LVHITTESTINFO hit{};
    hit.pt = point;
    row = SubItemHitTest(&hit);
    place = hit.iSubItem;
    return row >= 0 && place >= 0;
}

bool CCommonListCtrl::LabelRect(int row, int place, CRect& label) {
    return CListCtrl::GetSubItemRect(row, place, LVIR_LABEL, label) != FALSE;
}
