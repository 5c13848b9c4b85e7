#include "quor/platform/win/Splitter.h"

#include "quor/platform/Framework.h"
#include "quor/platform/win/WndInternal.h"
#include "quor/platform/win/core/SplitterLayout.h"

#include <algorithm>
#include <tuple>

IMPLEMENT_DYNCREATE(CSplitterWnd, CWnd)

BEGIN_MESSAGE_MAP(CSplitterWnd, CWnd)
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_CANCELMODE()
    ON_WM_KILLFOCUS()
    ON_WM_SETCURSOR()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

namespace {

constexpr int kMostPanes = 16;  // rows or columns; the ids leave room for no more
constexpr int kBarWidth = 6;
constexpr int kKeyStep = 8;  // an arrow moves a bar by so much

// A pane that gets a new size may end its splitter.
class Presence {
public:
    explicit Presence(const CWnd& window) : m_object(&window), m_window(window.m_hWnd) {}
    explicit operator bool() const { return m_window && CWnd::FromHandlePermanent(m_window) == m_object; }

private:
    const CWnd* m_object;
    HWND m_window;
};

}  // namespace

struct CSplitterWnd::Parts {
    std::vector<quor::SplitterPart> rows;
    std::vector<quor::SplitterPart> columns;
    // While a bar is tracked: what Esc gives back, and who had the focus. By keys only if the splitter has it.
    std::vector<quor::SplitterPart> formerRows, formerColumns;
    HWND formerFocus = nullptr;
    bool byKeys = false;
    int grip = 0;  // from the tracked bar's edge to the mouse

    static quor::SplitterPart& at(std::vector<quor::SplitterPart>& parts, int index) {
        if (index < 0 || index >= static_cast<int>(parts.size())) AfxThrowInvalidArgException();
        return parts[static_cast<std::size_t>(index)];
    }
    static void ask(quor::SplitterPart& part, int ideal, int least) {
        part.ideal = std::max(ideal, 0);
        part.least = std::max(least, 0);
    }
};

CSplitterWnd::CSplitterWnd()
    : m_cxSplitter(quor::platform::scaled(nullptr, kBarWidth)),
      m_cySplitter(m_cxSplitter),
      m_parts(std::make_unique<Parts>()) {}

CSplitterWnd::~CSplitterWnd() = default;

BOOL CSplitterWnd::CreateStatic(CWnd* pParentWnd, int nRows, int nCols, DWORD dwStyle, UINT nID) {
    if (m_hWnd || nRows < 1 || nRows > kMostPanes || nCols < 1 || nCols > kMostPanes) return FALSE;
    m_parts->rows.assign(static_cast<std::size_t>(nRows), {});
    m_parts->columns.assign(static_cast<std::size_t>(nCols), {});
    const LPCSTR ownClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    return Create(ownClass, nullptr, dwStyle | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, CRect(0, 0, 0, 0), pParentWnd, nID);
}

BOOL CSplitterWnd::CreateView(int row, int col, CRuntimeClass* pViewClass, SIZE sizeInit, CCreateContext* pContext) {
    Parts::ask(Parts::at(m_parts->columns, col), sizeInit.cx, Parts::at(m_parts->columns, col).least);
    Parts::ask(Parts::at(m_parts->rows, row), sizeInit.cy, Parts::at(m_parts->rows, row).least);
    CObject* object = pViewClass && !GetPane(row, col) ? pViewClass->CreateObject() : nullptr;
    auto* pane = dynamic_cast<CWnd*>(object);
    if (!pane) {
        delete object;
        return FALSE;
    }
    // One that fails deletes itself if it is of a kind that does.
    return pane->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                        CRect(CPoint(), sizeInit), this, static_cast<UINT>(IdFromRowCol(row, col)), pContext);
}

// ---- What stands where

int CSplitterWnd::GetRowCount() const { return static_cast<int>(m_parts->rows.size()); }
int CSplitterWnd::GetColumnCount() const { return static_cast<int>(m_parts->columns.size()); }

void CSplitterWnd::GetRowInfo(int row, int& cyCur, int& cyMin) const {
    cyCur = Parts::at(m_parts->rows, row).size;
    cyMin = Parts::at(m_parts->rows, row).least;
}

void CSplitterWnd::SetRowInfo(int row, int cyIdeal, int cyMin) {
    Parts::ask(Parts::at(m_parts->rows, row), cyIdeal, cyMin);
}

void CSplitterWnd::GetColumnInfo(int col, int& cxCur, int& cxMin) const {
    cxCur = Parts::at(m_parts->columns, col).size;
    cxMin = Parts::at(m_parts->columns, col).least;
}

void CSplitterWnd::SetColumnInfo(int col, int cxIdeal, int cxMin) {
    Parts::ask(Parts::at(m_parts->columns, col), cxIdeal, cxMin);
}

int CSplitterWnd::IdFromRowCol(int row, int col) const {
    return static_cast<int>(AFX_IDW_PANE_FIRST) + row * kMostPanes + col;
}

CWnd* CSplitterWnd::GetPane(int row, int col) const { return FromHandle(::GetDlgItem(m_hWnd, IdFromRowCol(row, col))); }

BOOL CSplitterWnd::IsChildPane(const CWnd* pWnd, int* pRow, int* pCol) const {
    const int number = ::GetDlgCtrlID(pWnd->m_hWnd) - static_cast<int>(AFX_IDW_PANE_FIRST);
    const int row = number / kMostPanes, col = number % kMostPanes;
    if (number < 0 || row >= GetRowCount() || col >= GetColumnCount() || ::GetParent(pWnd->m_hWnd) != m_hWnd)
        return FALSE;
    if (pRow) *pRow = row;
    if (pCol) *pCol = col;
    return TRUE;
}

void CSplitterWnd::RecalcLayout() {
    CRect client;
    if (m_hWnd) GetClientRect(&client);
    if (client.IsRectEmpty()) return;
    auto& rows = m_parts->rows;
    auto& columns = m_parts->columns;
    quor::layOutParts(columns, client.Width() - (GetColumnCount() - 1) * m_cxSplitter);
    quor::layOutParts(rows, client.Height() - (GetRowCount() - 1) * m_cySplitter);
    const Presence here(*this);
    HDWP moves = ::BeginDeferWindowPos(GetRowCount() * GetColumnCount());
    for (int row = 0; row < GetRowCount(); ++row) {
        for (int col = 0; col < GetColumnCount(); ++col) {
            const HWND pane = ::GetDlgItem(m_hWnd, IdFromRowCol(row, col));
            if (!pane || !moves) continue;
            moves = ::DeferWindowPos(moves, pane, nullptr, quor::partStart(columns, col, m_cxSplitter),
                                     quor::partStart(rows, row, m_cySplitter), Parts::at(columns, col).size,
                                     Parts::at(rows, row).size, SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
    if (moves) ::EndDeferWindowPos(moves);
    if (here) Invalidate(FALSE);  // the bars
    quor::throwKeptException();
}

void CSplitterWnd::OnSize(UINT nType, int cx, int cy) {
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED) RecalcLayout();
}

void CSplitterWnd::ActivateNext(BOOL bPrev) {
    const int count = GetRowCount() * GetColumnCount();
    int from = bPrev ? 0 : -1;
    for (int i = 0; i < count; ++i) {
        const HWND pane = ::GetDlgItem(m_hWnd, IdFromRowCol(i / GetColumnCount(), i % GetColumnCount()));
        const HWND focus = ::GetFocus();
        if (pane && (focus == pane || ::IsChild(pane, focus))) from = i;
    }
    for (int step = 1; step <= count; ++step) {
        const int next = ((from + (bPrev ? -step : step)) % count + count) % count;
        const int row = next / GetColumnCount(), col = next % GetColumnCount();
        CWnd* pane = GetPane(row, col);
        if (!pane || Parts::at(m_parts->rows, row).size == 0 || Parts::at(m_parts->columns, col).size == 0) continue;
        if (auto* view = dynamic_cast<CView*>(pane))
            if (CFrameWnd* frame = GetParentFrame()) frame->SetActiveView(view);
        pane->SetFocus();
        return;
    }
}

// ---- Painting

CRect CSplitterWnd::barRect(int hit) const {
    CRect client;
    GetClientRect(&client);
    const bool column = hit < kRowBar;
    const int bar = hit - (column ? kColumnBar : kRowBar);
    const int width = column ? m_cxSplitter : m_cySplitter;
    const int edge = quor::partStart(column ? m_parts->columns : m_parts->rows, bar + 1, width) - width;
    if (column) return CRect(edge, 0, edge + width, client.bottom);
    return CRect(0, edge, client.right, edge + width);
}

void CSplitterWnd::OnPaint() {
    CPaintDC dc(this);
    for (int row = 0; row + 1 < GetRowCount(); ++row) OnDrawSplitter(&dc, barRect(kRowBar + row));
    for (int col = 0; col + 1 < GetColumnCount(); ++col) OnDrawSplitter(&dc, barRect(kColumnBar + col));
}

// Panes and bars cover all of it, but for a pane that nobody made.
BOOL CSplitterWnd::OnEraseBkgnd(CDC* pDC) {
    CRect client;
    GetClientRect(&client);
    pDC->FillSolidRect(client, ::GetSysColor(COLOR_BTNFACE));
    return TRUE;
}

void CSplitterWnd::OnDrawSplitter(CDC* pDC, const CRect& rect) {
    CRect edge = rect;
    pDC->FillSolidRect(edge, ::GetSysColor(COLOR_BTNFACE));
    pDC->DrawEdge(edge, BDR_RAISEDINNER, rect.Width() < rect.Height() ? BF_LEFT | BF_RIGHT : BF_TOP | BF_BOTTOM);
}

void CSplitterWnd::OnInvertTracker(const CRect& rect) {
    // Over the panes as well.
    const HDC dc = ::GetDCEx(m_hWnd, nullptr, DCX_CACHE | DCX_CLIPSIBLINGS);
    ::PatBlt(dc, rect.left, rect.top, rect.Width(), rect.Height(), DSTINVERT);
    ::ReleaseDC(m_hWnd, dc);
}

// ---- Moving a bar

int CSplitterWnd::HitTest(CPoint pt) const {
    for (int col = 0; col + 1 < GetColumnCount(); ++col)
        if (barRect(kColumnBar + col).PtInRect(pt)) return kColumnBar + col;
    for (int row = 0; row + 1 < GetRowCount(); ++row)
        if (barRect(kRowBar + row).PtInRect(pt)) return kRowBar + row;
    return kNoBar;
}

void CSplitterWnd::TrackColumnSize(int x, int col) {
    Parts::at(m_parts->columns, col + 1);
    quor::moveBar(m_parts->columns, col, x - quor::partStart(m_parts->columns, col, m_cxSplitter));
}

void CSplitterWnd::TrackRowSize(int y, int row) {
    Parts::at(m_parts->rows, row + 1);
    quor::moveBar(m_parts->rows, row, y - quor::partStart(m_parts->rows, row, m_cySplitter));
}

void CSplitterWnd::StartTracking(int ht) {
    if (ht == kNoBar || m_bTracking) return;
    m_parts->formerRows = m_parts->rows;
    m_parts->formerColumns = m_parts->columns;
    m_parts->byKeys = false;
    m_bTracking = TRUE;
    m_htTrack = ht;
    m_rectTracker = barRect(ht);
    OnInvertTracker(m_rectTracker);
}

void CSplitterWnd::StopTracking(BOOL bAccept) {
    if (!m_bTracking) return;
    m_bTracking = FALSE;  // first: losing the capture or the focus comes back here
    const Presence here(*this);
    const HWND self = m_hWnd;
    OnInvertTracker(m_rectTracker);
    if (!bAccept) {
        m_parts->rows = m_parts->formerRows;
        m_parts->columns = m_parts->formerColumns;
    } else if (m_htTrack < kRowBar) {
        TrackColumnSize(m_rectTracker.left, m_htTrack - kColumnBar);
    } else {
        TrackRowSize(m_rectTracker.top, m_htTrack - kRowBar);
    }
    m_htTrack = kNoBar;
    if (::GetCapture() == self) ::ReleaseCapture();
    if (m_parts->byKeys && ::GetFocus() == self) ::SetFocus(m_parts->formerFocus);
    if (here) RecalcLayout();
}

// Along the bar's own axis, inside the window.
void CSplitterWnd::moveTracker(int position) {
    CRect client;
    GetClientRect(&client);
    CRect bar = m_rectTracker;
    if (m_htTrack < kRowBar)
        bar.MoveToX(std::clamp(position, 0, std::max(0, client.Width() - bar.Width())));
    else
        bar.MoveToY(std::clamp(position, 0, std::max(0, client.Height() - bar.Height())));
    if (bar == m_rectTracker) return;
    const Presence here(*this);
    OnInvertTracker(m_rectTracker);
    if (!here) return;
    m_rectTracker = bar;
    OnInvertTracker(m_rectTracker);
}

void CSplitterWnd::OnLButtonDown(UINT, CPoint point) {
    const Presence here(*this);
    if (m_bTracking) StopTracking(TRUE);
    const int hit = here ? HitTest(point) : int{kNoBar};
    if (hit == kNoBar) return;
    SetCapture();
    if (here) StartTracking(hit);
    if (here) m_parts->grip = hit < kRowBar ? point.x - m_rectTracker.left : point.y - m_rectTracker.top;
}

void CSplitterWnd::OnLButtonUp(UINT, CPoint point) {
    if (!m_bTracking || m_parts->byKeys) return;
    const Presence here(*this);
    moveTracker((m_htTrack < kRowBar ? point.x : point.y) - m_parts->grip);
    if (here) StopTracking(TRUE);
}

void CSplitterWnd::OnMouseMove(UINT, CPoint point) {
    if (!m_bTracking || m_parts->byKeys) return;
    moveTracker((m_htTrack < kRowBar ? point.x : point.y) - m_parts->grip);
}

void CSplitterWnd::OnCaptureChanged(CWnd* pWnd) {
    CWnd::OnCaptureChanged(pWnd);
    if (!m_parts->byKeys) StopTracking(FALSE);
}

void CSplitterWnd::OnCancelMode() {
    CWnd::OnCancelMode();
    StopTracking(FALSE);
}

BOOL CSplitterWnd::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message) {
    CPoint point;
    ::GetCursorPos(&point);
    ScreenToClient(&point);
    const int hit = nHitTest == HTCLIENT && pWnd == this ? HitTest(point) : int{kNoBar};
    if (hit == kNoBar) return CWnd::OnSetCursor(pWnd, nHitTest, message);
    ::SetCursor(::LoadCursorA(nullptr, hit < kRowBar ? IDC_SIZEWE : IDC_SIZENS));
    return TRUE;
}

// ---- By keys

BOOL CSplitterWnd::DoKeyboardSplit() {
    if (m_bTracking || GetRowCount() * GetColumnCount() < 2) return FALSE;
    const Presence here(*this);
    m_parts->formerFocus = ::GetFocus();
    SetFocus();
    if (here) StartTracking(GetColumnCount() > 1 ? kColumnBar : kRowBar);
    if (here) m_parts->byKeys = m_bTracking;
    return !here || m_bTracking;
}

void CSplitterWnd::nextBar(int step) {
    const int columns = GetColumnCount() - 1, bars = columns + GetRowCount() - 1;
    const int current = m_htTrack < kRowBar ? m_htTrack - kColumnBar : columns + m_htTrack - kRowBar;
    const int next = (current + step + bars) % bars;
    const auto [rows, cols, focus] = std::tuple(m_parts->formerRows, m_parts->formerColumns, m_parts->formerFocus);
    m_parts->byKeys = false;  // the focus stays
    const Presence here(*this);
    StopTracking(TRUE);
    if (!here) return;
    StartTracking(next < columns ? kColumnBar + next : kRowBar + next - columns);
    if (!here) return;
    m_parts->formerRows = rows;  // Esc undoes all bars
    m_parts->formerColumns = cols;
    m_parts->formerFocus = focus;
    m_parts->byKeys = true;
}

void CSplitterWnd::trackKey(UINT key) {
    const bool column = m_htTrack < kRowBar;
    const int step = ::GetKeyState(VK_CONTROL) < 0 ? 1 : quor::platform::scaled(m_hWnd, kKeyStep);
    const int place = column ? m_rectTracker.left : m_rectTracker.top;
    switch (key) {
        case VK_LEFT:
        case VK_RIGHT:
            if (column) moveTracker(place + (key == VK_LEFT ? -step : step));
            break;
        case VK_UP:
        case VK_DOWN:
            if (!column) moveTracker(place + (key == VK_UP ? -step : step));
            break;
        case VK_TAB:
            nextBar(::GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
            break;
        case VK_RETURN:
        case VK_ESCAPE:
            StopTracking(key == VK_RETURN);
            break;
    }
}

// Before the frames' accelerators and a dialog's keys see it.
BOOL CSplitterWnd::PreTranslateMessage(MSG* pMsg) {
    if (!m_bTracking || !m_parts->byKeys || pMsg->hwnd != m_hWnd || pMsg->message != WM_KEYDOWN)
        return CWnd::PreTranslateMessage(pMsg);
    trackKey(static_cast<UINT>(pMsg->wParam));
    return TRUE;
}

void CSplitterWnd::OnKillFocus(CWnd* pNewWnd) {
    CWnd::OnKillFocus(pNewWnd);
    if (m_parts->byKeys) StopTracking(TRUE);
}

UINT CSplitterWnd::OnGetDlgCode() { return m_bTracking && m_parts->byKeys ? DLGC_WANTALLKEYS : 0; }

// ---- What panes tell

BOOL CSplitterWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    return CWnd::OnCommand(wParam, lParam) || GetParent()->SendMessage(WM_COMMAND, wParam, lParam);
}

BOOL CSplitterWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (!CWnd::OnNotify(wParam, lParam, pResult)) *pResult = GetParent()->SendMessage(WM_NOTIFY, wParam, lParam);
    return TRUE;
}
