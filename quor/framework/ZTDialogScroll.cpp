// Scaled places, and the scroll bars of a dialog that is larger than the work area.
#include "quor/framework/ZTDialog.h"
#include "quor/framework/core/DialogScroll.h"
#include "quor/framework/core/ScaleFactors.h"

#include <optional>

using quor::framework::ScrollAxis;
using quor::framework::ScrollCommand;

namespace {

constexpr int kExtraHeight = 10;  // below the last control, before scaling

int truncated(double value) { return static_cast<int>(value); }

// The numbers of both directions are the same.
std::optional<ScrollCommand> commandOf(UINT code) {
    switch (code) {
        case SB_LINEUP:
            return ScrollCommand::lineBack;
        case SB_LINEDOWN:
            return ScrollCommand::lineForward;
        case SB_PAGEUP:
            return ScrollCommand::pageBack;
        case SB_PAGEDOWN:
            return ScrollCommand::pageForward;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            return ScrollCommand::thumb;
        default:
            return std::nullopt;
    }
}

}  // namespace

// --- Scale ---------------------------------------------------------------------------------------------------------

void CZTDialog::CalculateXYScaleFactor(double& x, double& y, int nFontKind) {
    CClientDC screen(nullptr);
    CFont* const font = m_hWnd ? GetFont() : nullptr;
    LOGFONT description{};
    if (font && font->GetLogFont(&description))
        nFontKind = quor::framework::fontKind(description.lfFaceName, nFontKind);
    const SelectScope selected(screen, font);
    TEXTMETRIC metrics{};
    screen.GetTextMetrics(&metrics);
    const CSize extent = screen.GetTextExtent(quor::framework::kAlphabet);
    quor::framework::scaleFactors(nFontKind, extent.cx, metrics.tmHeight, x, y);
}

void CZTDialog::MoveWindowZT(int x, int y, int cx, int cy, eMultiplierFlag flag, bool bRepaint) {
    cy += kExtraHeight;
    if (flag == kScalePosition || flag == kScaleBoth) {
        x = truncated(x * m_dXScale);
        y = truncated(y * m_dYScale);
    }
    if (flag == kScaleSize || flag == kScaleBoth) {
        cx = truncated(cx * m_dXScale);
        cy = truncated(cy * m_dYScale);
    }
    InitializeScrollBars(cx, cy, false, false);
    MoveWindow(x, y, cx, cy, bRepaint);
}

void CZTDialog::SetWindowPosZT(const CWnd* pInsertAfter, int x, int y, int cx, int cy, UINT nFlags, bool bAdjustWidth,
                               bool bAdjustHeight) {
    cy = truncated(cy + kExtraHeight * m_dYScale);
    InitializeScrollBars(cx, cy, bAdjustWidth, bAdjustHeight);
    SetWindowPos(pInsertAfter, x, y, cx, cy, nFlags);
}

// Left and top have the opposite sign on purpose: positive amounts move them out where the others move in.
CZTDialog::Sides CZTDialog::scaled(const Sides& sides) const {
    return {-truncated(sides.left * m_dXScale), -truncated(sides.top * m_dYScale), truncated(sides.right * m_dXScale),
            truncated(sides.bottom * m_dYScale)};
}

CRect CZTDialog::referenceRect(const CWnd& target, const CWnd* reference) {
    CRect rect;
    (reference ? reference : &target)->GetWindowRect(&rect);
    ScreenToClient(&rect);
    return rect;
}

void CZTDialog::DeflateRectZT(CWnd* pTarget, CWnd* pReference, int l, int t, int r, int b) {
    if (!pTarget) return;
    const Sides by = scaled({l, t, r, b});
    CRect rect = referenceRect(*pTarget, pReference);
    rect.DeflateRect(by.left, by.top, by.right, by.bottom);
    pTarget->MoveWindow(rect);
}

void CZTDialog::InflateRectZT(CWnd* pTarget, CWnd* pReference, int l, int t, int r, int b) {
    if (!pTarget) return;
    const Sides by = scaled({l, t, r, b});
    CRect rect = referenceRect(*pTarget, pReference);
    rect.InflateRect(by.left, by.top, by.right, by.bottom);
    pTarget->MoveWindow(rect);
}

// --- Scroll bars ---------------------------------------------------------------------------------------------------

void CZTDialog::SetupScrollbar(int nBar, int nMax, int nPage) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;
    info.nMax = nMax;
    info.nPage = static_cast<UINT>(nPage);
    ::SetScrollInfo(m_hWnd, nBar, &info, TRUE);
}

void CZTDialog::ResetScrollbars(int& cx, int& cy, bool bAdjustWidth, bool bAdjustHeight) {
    if (m_bHorzScrollOn) {
        ScrollWindow(m_nHScrollPos, 0);
        m_nHScrollPos = 0;
        SetScrollPos(SB_HORZ, 0);
        SetScrollRange(SB_HORZ, 0, 0);
        m_bHorzScrollOn = false;
        if (bAdjustHeight) cy -= m_nHScrollBarHeight;
    }
    if (m_bVertScrollOn) {
        ScrollWindow(0, m_nVScrollPos);
        m_nVScrollPos = 0;
        SetScrollPos(SB_VERT, 0);
        SetScrollRange(SB_VERT, 0, 0);
        m_bVertScrollOn = false;
        if (bAdjustWidth) cx -= m_nVScrollBarWidth;
    }
}

void CZTDialog::InitializeScrollBars(int& cx, int& cy, bool bAdjustWidth, bool bAdjustHeight) {
    m_nContentWidth = cx;
    m_nContentHeight = cy;
    ResetScrollbars(cx, cy, bAdjustWidth, bAdjustHeight);
    quor::framework::ScrollMetrics metrics;
    metrics.workArea = CSize(m_nWorkAreaWidth, m_nWorkAreaHeight);
    metrics.barWidth = m_nVScrollBarWidth;
    metrics.barHeight = m_nHScrollBarHeight;
    const auto plan = planScrollBars(CSize(m_nContentWidth, m_nContentHeight), CSize(cx, cy), metrics);
    m_bHorzScrollOn = plan.horizontal;
    m_bVertScrollOn = plan.vertical;
    if (plan.horizontal) {
        m_nVisibleWidth = plan.visible.cx;
        SetupScrollbar(SB_HORZ, m_nContentWidth, plan.page.cx);
    }
    if (plan.vertical) {
        m_nVisibleHeight = plan.visible.cy;
        SetupScrollbar(SB_VERT, m_nContentHeight, plan.page.cy);
    }
    cx = plan.window.cx;
    cy = plan.window.cy;
}

// A child's scroll bar is the child's business.
void CZTDialog::OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    if (pScrollBar) return CZTBCGPDialog::OnHScroll(nSBCode, nPos, pScrollBar);
    if (m_bHorzScrollOn && scroll(Axis::horizontal, nSBCode, static_cast<int>(nPos)))
        CZTBCGPDialog::OnHScroll(nSBCode, nPos, pScrollBar);
}

void CZTDialog::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    if (pScrollBar) return CZTBCGPDialog::OnVScroll(nSBCode, nPos, pScrollBar);
    if (m_bVertScrollOn && scroll(Axis::vertical, nSBCode, static_cast<int>(nPos)))
        CZTBCGPDialog::OnVScroll(nSBCode, nPos, pScrollBar);
}

bool CZTDialog::scroll(Axis axis, UINT code, int thumb) {
    const auto command = commandOf(code);
    if (!command) {
        Invalidate();
        return false;
    }
    const bool both = m_bHorzScrollOn && m_bVertScrollOn;
    const bool horizontal = axis == Axis::horizontal;
    int& position = horizontal ? m_nHScrollPos : m_nVScrollPos;
    ScrollAxis numbers;
    numbers.content = horizontal ? m_nContentWidth : m_nContentHeight;
    numbers.visible = horizontal ? m_nVisibleWidth : m_nVisibleHeight;
    numbers.position = position;
    if (both) numbers.otherBar = horizontal ? m_nVScrollBarWidth : m_nHScrollBarHeight;
    const int target = scrollTarget(numbers, *command, thumb);
    const int moved = target - position;
    if (moved == 0) return false;
    position = target;
    SetScrollPos(horizontal ? SB_HORZ : SB_VERT, target);
    ScrollWindow(horizontal ? -moved : 0, horizontal ? 0 : -moved);
    return true;
}
