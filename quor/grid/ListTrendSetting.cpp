#include "quor/grid/ListTrendSetting.h"

#include "quor/grid/FilterListCtrl.h"
#include "quor/grid/core/TrendChoices.h"
#include "quor/resource/LibraryResources.h"
#include "quor/resource/resource.h"

#include <algorithm>
#include <utility>
#include <vector>

using namespace quor::grid;

namespace {

// Of the buttons, until a grid gives its own.
constexpr COLORREF kFirstRiseColor = RGB(0, 0, 255);
constexpr COLORREF kFirstFallColor = RGB(255, 125, 125);

constexpr int kThumbAir = 3;  // above the slider's thumb and below it

struct ToolTip {
    int control;
    const char* text;
};
constexpr ToolTip kToolTips[] = {
    {IDC_TREND_COLUMNS, "Columns that show a trend"},
    {IDC_RISE_COLOR, "Color of a rise"},
    {IDC_FALL_COLOR, "Color of a fall"},
    {IDC_TREND_INTERVAL, "How long a trend is shown"},
};

CListTrendSetting* g_dialog = nullptr;  // lives as long as the process

std::vector<CListTrendSetting*>& allDialogs() {
    static auto& all = *new std::vector<CListTrendSetting*>;  // grids may outlive this module's statics
    return all;
}

}  // namespace

IMPLEMENT_DYNAMIC(CListTrendSetting, CZTDialog)

BEGIN_MESSAGE_MAP(CListTrendSetting, CZTDialog)
    ON_WM_HSCROLL()
    ON_BN_CLICKED(IDC_TREND_BACKGROUND, &CListTrendSetting::OnBnClickedBackground)
    ON_BN_CLICKED(IDC_TREND_TEXT, &CListTrendSetting::OnBnClickedText)
    ON_BN_CLICKED(IDC_RISE_COLOR, &CListTrendSetting::OnRiseColor)
    ON_BN_CLICKED(IDC_FALL_COLOR, &CListTrendSetting::OnFallColor)
    ON_NOTIFY(NM_RELEASEDCAPTURE, IDC_TREND_INTERVAL, &CListTrendSetting::OnSliderReleased)
    ON_BN_CLICKED(IDOK, &CListTrendSetting::OnBnClickedOk)
END_MESSAGE_MAP()

// --- Life ----------------------------------------------------------------------------------------------------------

CListTrendSetting::CListTrendSetting(CWnd* parent) : CZTDialog(IDD_TREND_SETTINGS, parent) {
    allDialogs().push_back(this);
}

CListTrendSetting::~CListTrendSetting() { std::erase(allDialogs(), this); }

// The window dies with the top-level window of the grid that made it; the next grid makes a new one.
CListTrendSetting* CListTrendSetting::shared(CFilterListCtrl& grid) {
    if (!g_dialog) g_dialog = new CListTrendSetting(&grid);
    const quor::LibraryResources resources;
    const bool stands = g_dialog->m_hWnd || g_dialog->Create(IDD_TREND_SETTINGS, &grid);
    return stands ? g_dialog : nullptr;
}

BOOL CListTrendSetting::OnInitDialog() {
    CZTDialog::OnInitDialog();
    m_riseButton.SubclassDlgItem(IDC_RISE_COLOR, this);
    m_fallButton.SubclassDlgItem(IDC_FALL_COLOR, this);
    m_riseButton.SetColour(kFirstRiseColor, kFirstRiseColor);
    m_fallButton.SetColour(kFirstFallColor, kFirstFallColor);
    slider().SetRange(0, kLastTrendPosition);
    fitThumb();
    CheckDlgButton(IDC_TREND_BACKGROUND, BST_CHECKED);
    SetDlgItemText(IDC_TREND_TIME, openedTrendLabel(0));
    addToolTips();
    return TRUE;
}

// The control's own thumb grows with the screen's resolution faster than the control, which is measured in letters.
void CListTrendSetting::fitThumb() {
    CRect area;
    slider().GetClientRect(&area);
    slider().SendMessage(TBM_SETTHUMBLENGTH,
                         static_cast<WPARAM>(area.Height() - 2 * quor::platform::scaled(m_hWnd, kThumbAir)));
}

void CListTrendSetting::addToolTips() {
    if (!m_toolTip.Create(this)) return;
    for (const ToolTip& tip : kToolTips) m_toolTip.AddTool(GetDlgItem(tip.control), tip.text);
    m_toolTip.Activate(TRUE);
}

BOOL CListTrendSetting::PreTranslateMessage(MSG* message) {
    if (m_toolTip.m_hWnd) m_toolTip.RelayEvent(message);
    return CZTDialog::PreTranslateMessage(message);
}

void CListTrendSetting::forgetGrid(const CFilterListCtrl* grid) {
    const std::vector<CListTrendSetting*> all = allDialogs();
    for (CListTrendSetting* dialog : all)
        if (std::ranges::find(allDialogs(), dialog) != allDialogs().end() && dialog->m_pFilterList == grid)
            dialog->forget();
}

void CListTrendSetting::forget() {
    m_pFilterList = nullptr;
    if (m_hWnd && (GetStyle() & WS_VISIBLE)) ShowWindow(SW_HIDE);
}

CListBox& CListTrendSetting::columnBox() const { return *static_cast<CListBox*>(GetDlgItem(IDC_TREND_COLUMNS)); }

CSliderCtrl& CListTrendSetting::slider() const { return *static_cast<CSliderCtrl*>(GetDlgItem(IDC_TREND_INTERVAL)); }

// --- Filling -------------------------------------------------------------------------------------------------------

void CListTrendSetting::openOn(CFilterListCtrl& grid) {
    SetTrendColumns(&grid.m_arrColumns);
    SetFilterList(&grid);
    DisplayTrendColumns();
    ReadDlgValues();
    ShowSelectedTrendColumns();
    const HWND window = m_hWnd;
    ShowWindow(SW_SHOW);
    if (CWnd::FromHandlePermanent(window) == this && m_pFilterList == &grid) BringWindowToTop();
}

int CListTrendSetting::SetTrendColumns(CArray<sQuorColInfo, sQuorColInfo>* columns) {
    if (!columns) return 1;
    m_mapColumns.clear();
    for (INT_PTR i = 0; i < columns->GetCount(); ++i)
        if (mayHaveTrend(columns->GetAt(i).iDataType))
            m_mapColumns.emplace(static_cast<int>(i), columns->GetAt(i).szColumnName);
    return 1;
}

void CListTrendSetting::DisplayTrendColumns() {
    CListBox& box = columnBox();
    box.SetRedraw(FALSE);  // a sorted box lays itself out with every string
    box.ResetContent();
    for (const auto& [columnIndex, name] : m_mapColumns)
        box.SetItemData(box.AddString(name), static_cast<DWORD_PTR>(columnIndex));
    box.SetRedraw(TRUE);
    box.Invalidate();
}

void CListTrendSetting::ReadDlgValues() {
    if (!m_pFilterList) return;
    CheckDlgButton(IDC_TREND_BACKGROUND, m_pFilterList->TrendBackground ? BST_CHECKED : BST_UNCHECKED);
    CheckDlgButton(IDC_TREND_TEXT, m_pFilterList->TrendBackground ? BST_UNCHECKED : BST_CHECKED);
    m_riseButton.SetColour(m_pFilterList->PosColor, m_pFilterList->PosColor);
    m_fallButton.SetColour(m_pFilterList->NegColor, m_pFilterList->NegColor);
    slider().SetPos(trendPosition(m_pFilterList->TrendInterval));
    SetDlgItemText(IDC_TREND_TIME, openedTrendLabel(slider().GetPos()));
    CArray<int, int> columns;
    m_pFilterList->GetTrendColumns(columns);
    m_mapSelected.clear();
    for (INT_PTR i = 0; i < columns.GetCount(); ++i) {
        const int columnIndex = columns.GetAt(i);
        if (columnIndex >= 0 && columnIndex < m_pFilterList->m_arrColumns.GetCount())
            m_mapSelected.emplace(columnIndex, m_pFilterList->m_arrColumns.GetAt(columnIndex).szColumnName);
    }
}

void CListTrendSetting::ShowSelectedTrendColumns() {
    CListBox& box = columnBox();
    for (int i = 0; i < box.GetCount(); ++i)
        if (m_mapSelected.contains(static_cast<int>(box.GetItemData(i)))) box.SetSel(i);
}

std::map<int, CString> CListTrendSetting::selectedColumns() const {
    const CListBox& box = columnBox();
    std::map<int, CString> selected;
    for (int i = 0; i < box.GetCount(); ++i) {
        if (box.GetSel(i) <= 0) continue;
        CString name;
        box.GetText(i, name);
        selected.emplace(static_cast<int>(box.GetItemData(i)), name);
    }
    return selected;
}

// What the user has selected stays so by its heading.
void CListTrendSetting::columnsRebuilt(const CFilterListCtrl* grid) {
    for (CListTrendSetting* dialog : allDialogs()) {
        if (!dialog->m_hWnd || dialog->m_pFilterList != grid) continue;
        const std::map<int, CString> former = dialog->selectedColumns();
        dialog->SetTrendColumns(&dialog->m_pFilterList->m_arrColumns);
        dialog->DisplayTrendColumns();
        dialog->m_mapSelected.clear();
        for (const auto& column : dialog->m_mapColumns)
            if (std::ranges::any_of(former, [&](const auto& other) { return other.second == column.second; }))
                dialog->m_mapSelected.insert(column);
        dialog->ShowSelectedTrendColumns();
    }
}

// --- The user ------------------------------------------------------------------------------------------------------

// Of the two at most one is checked.
void CListTrendSetting::OnBnClickedBackground() {
    if (IsDlgButtonChecked(IDC_TREND_BACKGROUND)) CheckDlgButton(IDC_TREND_TEXT, BST_UNCHECKED);
}

void CListTrendSetting::OnBnClickedText() {
    if (IsDlgButtonChecked(IDC_TREND_TEXT)) CheckDlgButton(IDC_TREND_BACKGROUND, BST_UNCHECKED);
}

void CListTrendSetting::OnRiseColor() { pickColor(m_riseButton); }
void CListTrendSetting::OnFallColor() { pickColor(m_fallButton); }

void CListTrendSetting::pickColor(CClrButton& button) {
    CFilterListCtrl* const grid = m_pFilterList;
    if (!grid) return;
    const HWND window = m_hWnd;
    CColorDialog dialog(button.GetColor(), 0, this);
    if (dialog.DoModal() != IDOK || CWnd::FromHandlePermanent(window) != this || m_pFilterList != grid) return;
    button.SetColour(dialog.GetColor(), dialog.GetColor());
}

void CListTrendSetting::OnSliderReleased(NMHDR*, LRESULT* result) {
    SetDlgItemText(IDC_TREND_TIME, movedTrendLabel(slider().GetPos()));
    *result = 0;
}

// Keys move the slider without a capture.
void CListTrendSetting::OnHScroll(UINT code, UINT position, CScrollBar* bar) {
    if (bar && bar->GetDlgCtrlID() == IDC_TREND_INTERVAL)
        SetDlgItemText(IDC_TREND_TIME, movedTrendLabel(slider().GetPos()));
    CZTDialog::OnHScroll(code, position, bar);
}

// Neither box checked counts as background.
void CListTrendSetting::OnBnClickedOk() {
    if (m_pFilterList) {
        m_mapSelected = selectedColumns();
        CArray<int, int> columns;
        for (const auto& column : m_mapSelected) columns.Add(column.first);
        m_pFilterList->TrendBackground = !IsDlgButtonChecked(IDC_TREND_TEXT);
        m_pFilterList->PosColor = m_riseButton.GetColor();
        m_pFilterList->NegColor = m_fallButton.GetColor();
        m_pFilterList->TrendInterval = trendInterval(slider().GetPos());
        m_pFilterList->SetTrendColumns(&columns);
        m_pFilterList->Invalidate(FALSE);  // no fade will come for what is shown
    }
    OnOK();
}

// --- The grid's side -----------------------------------------------------------------------------------------------

void CFilterListCtrl::OnSetTrendColumns() {
    if (!m_hWnd) return;
    if (CListTrendSetting* const dialog = CListTrendSetting::shared(*this)) dialog->openOn(*this);
}

void CFilterListCtrl::OnColumnsRebuilt(bool shown) {
    CCommonListCtrl::OnColumnsRebuilt(shown);
    CListTrendSetting::columnsRebuilt(this);
    if (shown) showFilters();
    if (std::exchange(m_filterEnded, false)) tellFilterEnded();
}
