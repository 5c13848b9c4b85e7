#include "quor/bars/FlatSplitterWnd.h"

#include "quor/bars/core/PaneShares.h"

#include <utility>

using namespace quor::bars;

IMPLEMENT_DYNCREATE(CFlatSplitterWnd, CSplitterWnd)

BEGIN_MESSAGE_MAP(CFlatSplitterWnd, CSplitterWnd)
    ON_WM_SIZE()
    ON_WM_LBUTTONDBLCLK()
END_MESSAGE_MAP()

namespace {

constexpr int kFlatBarWidth = 3;

// What ends the block may be an exception, or the window itself.
class DividingScope {
public:
    DividingScope(const CWnd& window, bool& flag)
        : m_object(window), m_window(window.m_hWnd), m_flag(flag), m_former(std::exchange(flag, true)) {}
    DividingScope(const DividingScope&) = delete;
    DividingScope& operator=(const DividingScope&) = delete;
    ~DividingScope() {
        if (isThere()) m_flag = m_former;
    }
    bool isThere() const { return CWnd::FromHandlePermanent(m_window) == &m_object; }

private:
    const CWnd& m_object;
    const HWND m_window;
    bool& m_flag;
    const bool m_former;
};

bool hasArea(const CWnd& window) {
    CRect client;
    if (window.m_hWnd) window.GetClientRect(&client);
    return !client.IsRectEmpty();
}

}  // namespace

CFittingPane::CFittingPane() = default;
CFittingPane::~CFittingPane() = default;

CFlatSplitterWnd::CFlatSplitterWnd() { m_cxSplitter = m_cySplitter = quor::platform::scaled(nullptr, kFlatBarWidth); }

CFlatSplitterWnd::~CFlatSplitterWnd() = default;

// ---- Shares

void CFlatSplitterWnd::SetKeepShares(int keep) {
    m_keepShares = keep != 0;
    if (hasArea(*this)) takeShares();
}

// What was told is used up; shares that are kept are as the panes stand.
void CFlatSplitterWnd::takeShares() {
    m_columnShares.clear();
    m_rowShares.clear();
    if (m_keepShares) settleShares();
}

// Those that nobody told are as the panes stand.
void CFlatSplitterWnd::settleShares() {
    if (m_columnShares.empty()) m_columnShares = GetColumnShares();
    if (m_rowShares.empty()) m_rowShares = GetRowShares();
}

BOOL CFlatSplitterWnd::SetColumnShares(const std::vector<int>& shares) {
    if (static_cast<int>(shares.size()) != GetColumnCount()) return FALSE;
    m_columnShares = shares;
    if (hasArea(*this)) divide();
    return TRUE;
}

BOOL CFlatSplitterWnd::SetRowShares(const std::vector<int>& shares) {
    if (static_cast<int>(shares.size()) != GetRowCount()) return FALSE;
    m_rowShares = shares;
    if (hasArea(*this)) divide();
    return TRUE;
}

std::vector<int> CFlatSplitterWnd::GetColumnShares() const {
    std::vector<int> shares(static_cast<std::size_t>(GetColumnCount()));
    int least = 0;
    for (int col = 0; col < GetColumnCount(); ++col) GetColumnInfo(col, shares[static_cast<std::size_t>(col)], least);
    return shares;
}

std::vector<int> CFlatSplitterWnd::GetRowShares() const {
    std::vector<int> shares(static_cast<std::size_t>(GetRowCount()));
    int least = 0;
    for (int row = 0; row < GetRowCount(); ++row) GetRowInfo(row, shares[static_cast<std::size_t>(row)], least);
    return shares;
}

// Shares that nobody told or made leave the panes what they asked for.
void CFlatSplitterWnd::divide() {
    CRect client;
    GetClientRect(&client);
    int former = 0, least = 0;
    const auto columns = sharedOut(m_columnShares, client.Width() - (GetColumnCount() - 1) * m_cxSplitter);
    for (int col = 0; col < static_cast<int>(columns.size()); ++col) {
        GetColumnInfo(col, former, least);
        SetColumnInfo(col, columns[static_cast<std::size_t>(col)], least);
    }
    const auto rows = sharedOut(m_rowShares, client.Height() - (GetRowCount() - 1) * m_cySplitter);
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        GetRowInfo(row, former, least);
        SetRowInfo(row, rows[static_cast<std::size_t>(row)], least);
    }
    const DividingScope dividing(*this, m_dividing);
    RecalcLayout();
    if (!dividing.isThere()) return;
    if (m_keepShares)
        settleShares();
    else
        takeShares();
}

void CFlatSplitterWnd::RecalcLayout() {
    const HWND self = m_hWnd;
    CSplitterWnd::RecalcLayout();
    // Somebody asked for this layout, and not just the window's size.
    if (FromHandlePermanent(self) == this && !m_dividing && m_keepShares && hasArea(*this)) takeShares();
}

void CFlatSplitterWnd::OnSize(UINT type, int width, int height) {
    if (type != SIZE_MINIMIZED && hasArea(*this) && (!m_columnShares.empty() || !m_rowShares.empty()))
        divide();
    else
        CSplitterWnd::OnSize(type, width, height);
}

// ---- Bars

int CFlatSplitterWnd::HitTest(CPoint point) const { return m_resizable ? CSplitterWnd::HitTest(point) : int{kNoBar}; }

BOOL CFlatSplitterWnd::DoKeyboardSplit() { return m_resizable && CSplitterWnd::DoKeyboardSplit(); }

// The bar that keys move stands out.
void CFlatSplitterWnd::OnDrawSplitter(CDC* dc, const CRect& bar) {
    const bool moving = m_bTracking && bar == barRect(m_htTrack);
    dc->FillSolidRect(bar, ::GetSysColor(moving ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
}

// Live: the panes follow at once, and nothing is inverted.
void CFlatSplitterWnd::OnInvertTracker(const CRect& bar) {
    if (!m_bTracking) return;
    if (bar == barRect(m_htTrack)) {  // it stands there
        InvalidateRect(bar, FALSE);
        return;
    }
    if (m_htTrack < kRowBar)
        TrackColumnSize(bar.left, m_htTrack - kColumnBar);
    else
        TrackRowSize(bar.top, m_htTrack - kRowBar);
    const HWND self = m_hWnd;
    RecalcLayout();
    if (FromHandlePermanent(self) == this) UpdateWindow();
}

void CFlatSplitterWnd::StopTracking(BOOL accept) {
    const HWND self = m_hWnd;
    CSplitterWnd::StopTracking(accept);
    if (self && FromHandlePermanent(self) == this) Invalidate(FALSE);
}

void CFlatSplitterWnd::OnLButtonDblClk(UINT, CPoint point) {
    const int hit = HitTest(point);
    if (hit == kNoBar) return;
    const bool column = hit < kRowBar;
    const int number = hit - (column ? kColumnBar : kRowBar);
    const HWND self = m_hWnd;
    int wanted = 0;
    for (int other = 0; other < (column ? GetRowCount() : GetColumnCount()); ++other) {
        auto* pane = dynamic_cast<CFittingPane*>(column ? GetPane(other, number) : GetPane(number, other));
        if (!pane) continue;
        const CSize size = pane->GetFittingSize();
        if (FromHandlePermanent(self) != this) return;
        wanted = std::max(wanted, static_cast<int>(column ? size.cx : size.cy));
    }
    if (wanted <= 0) return;
    // The bar's edge now is where the pane ends now.
    int size = 0, least = 0;
    const CRect bar = barRect(hit);
    if (column) {
        GetColumnInfo(number, size, least);
        TrackColumnSize(bar.left + wanted - size, number);
    } else {
        GetRowInfo(number, size, least);
        TrackRowSize(bar.top + wanted - size, number);
    }
    RecalcLayout();
}
