#include "host/StatusStrip.h"

#include "host/core/Utf8.h"
#include "host/panes/Theme.h"

namespace terminal {

namespace {
constexpr int kPartCount = static_cast<int>(StatusPart::count);
constexpr int kWidths[kPartCount] = {0, 110, 110, 110, 160, 100};  // the state takes the rest
constexpr int kLineInset = 4;
}  // namespace

BEGIN_MESSAGE_MAP(CStatusStrip, CStatusBarCtrl)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

BOOL CStatusStrip::CreateStrip(CWnd* parent, UINT id) {
    const CRect none(0, 0, 0, 0);
    return Create(WS_CHILD | WS_VISIBLE | CCS_BOTTOM, none, parent, id);
}

void CStatusStrip::setPart(StatusPart part, const std::string& text) {
    std::string& shown = m_texts[static_cast<std::size_t>(part)];
    if (shown == text) return;
    shown = text;
    Invalidate(FALSE);
}

void CStatusStrip::OnPaint() {
    CPaintDC dc(this);
    CRect area;
    GetClientRect(&area);
    dc.FillSolidRect(&area, palette::kSurface);
    const SelectScope font(dc, reinterpret_cast<HGDIOBJ>(SendMessage(WM_GETFONT)));
    RECT cell = area;
    cell.left = cell.right;
    for (int part = kPartCount - 1; part >= 0; --part) {
        const bool isState = part == static_cast<int>(StatusPart::state);
        cell.right = cell.left;
        cell.left = isState ? area.left : cell.right - scaled(dc, kWidths[part]);
        const int inset = scaled(dc, kLineInset);
        const RECT line{cell.left, cell.top + inset, cell.left + 1, cell.bottom - inset};
        if (!isState) dc.FillSolidRect(&line, palette::kEdge);
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextColor(!isState ? palette::kDim : m_fault ? palette::kDown : palette::kText);
        drawCellText(dc, wideText(m_texts[static_cast<std::size_t>(part)]), cell, isState ? 0 : 1);
    }
}

BOOL CStatusStrip::OnEraseBkgnd(CDC*) { return TRUE; }

}  // namespace terminal
