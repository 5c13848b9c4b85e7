#include "host/panes/PaneHolder.h"

#include "host/panes/Theme.h"

#include <algorithm>

namespace terminal {

using quor::platform::scaled;

namespace {

constexpr int kStripHeight = 22, kCloseBox = 15, kControlLeft = 110, kDroppedHeight = 200;
constexpr int kFontTenths = 90;
constexpr const char* kEllipsis = "...";

}  // namespace

IMPLEMENT_DYNCREATE(CPaneHolder, CHolderView)

BEGIN_MESSAGE_MAP(CPaneHolder, CHolderView)
    ON_WM_CREATE()
    ON_WM_SIZE()
END_MESSAGE_MAP()

CPaneHolder* CPaneHolder::around(const CWnd& pane) { return dynamic_cast<CPaneHolder*>(pane.GetParent()); }

int CPaneHolder::OnCreate(LPCREATESTRUCT create) {
    if (CHolderView::OnCreate(create) == -1) return -1;
    m_font.CreatePointFont(kFontTenths, "Tahoma");
    SetStyleZT(HV_TITLE_CLOSE);
    SetTitleHeight(scaled(m_hWnd, kStripHeight));
    return 0;
}

void CPaneHolder::hold(CWnd& pane, const char* title) {
    m_title = title;
    SetTitle(title, palette::kText);
    setNotifyWindow(&pane);
    setWnd(&pane);
}

CRect CPaneHolder::strip() const {
    CRect area;
    GetClientRect(&area);
    area.bottom = std::min<LONG>(area.bottom, GetTopOffset());
    area.right = std::max<LONG>(area.left, area.right - scaled(m_hWnd, kCloseBox));
    return area;
}

void CPaneHolder::setRemark(const std::string& remark) {
    if (remark == m_remark) return;
    m_remark = remark;
    InvalidateRect(strip(), FALSE);
}

void CPaneHolder::putIntoStrip(CWnd& control, int width) {
    m_control = control.m_hWnd;
    m_controlWidth = width;
    placeControl();
    InvalidateRect(strip(), FALSE);
}

void CPaneHolder::placeControl() {
    RECT field{};
    if (!::GetWindowRect(m_control, &field)) return;  // its height is the font's
    const int top = std::max<int>(0, (strip().Height() - (field.bottom - field.top)) / 2);
    ::MoveWindow(m_control, scaled(m_hWnd, kControlLeft), top, scaled(m_hWnd, m_controlWidth),
                 scaled(m_hWnd, kDroppedHeight), TRUE);
}

// The remark stands at the right edge.
void CPaneHolder::OnSize(UINT type, int width, int height) {
    CHolderView::OnSize(type, width, height);
    InvalidateRect(strip(), FALSE);
    placeControl();
}

BOOL CPaneHolder::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (wParam != kCommandCloseHolder || !m_onClose) return CHolderView::OnCommand(wParam, lParam);
    m_onClose();
    return TRUE;
}

void CPaneHolder::DrawTitleLable(CDC* dc) {
    CRect area = strip();
    dc->FillSolidRect(&area, palette::kSurface);
    const RECT foot{area.left, area.bottom - 1, area.right, area.bottom};
    dc->FillSolidRect(&foot, palette::kEdge);
    const DcStateScope state(*dc);
    dc->SelectObject(&m_font);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor(palette::kText);
    drawCellText(*dc, m_title.c_str(), static_cast<int>(m_title.size()), area, 0);
    const int padding = scaled(m_hWnd, kCellPadding);
    const auto widthOf = [dc](const char* text) { return dc->GetTextExtent(text, ::lstrlenA(text)).cx; };
    area.left = m_control ? scaled(m_hWnd, kControlLeft + m_controlWidth)
                          : area.left + 2 * padding + static_cast<int>(widthOf(m_title.c_str()));
    if (area.Width() < 2 * padding + widthOf(kEllipsis)) return;
    dc->SetTextColor(palette::kDim);
    drawCellText(*dc, m_remark.c_str(), static_cast<int>(m_remark.size()), area, 1);
}

}  // namespace terminal
