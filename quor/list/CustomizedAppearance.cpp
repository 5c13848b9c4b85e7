#include "quor/list/CustomizedAppearance.h"

#include "quor/list/CommonListCtrl.h"
#include "quor/list/core/DialogFold.h"
#include "quor/list/core/KeywordRows.h"
#include "quor/resource/LibraryResources.h"
#include "quor/resource/resource.h"

using namespace quor::list;

namespace {

// Entries of the property box.
constexpr int kTextProperty = 0;
constexpr int kBackgroundProperty = 1;
constexpr const char* kProperties[] = {"Text", "Background"};

constexpr int kToolTipDelay = 1;  // ms
constexpr COLORREF kToolTipText = RGB(0, 0, 255);
constexpr UINT kPlaceOnly = SWP_NOZORDER | SWP_NOACTIVATE;

struct ToolTip {
    int control;
    const char* text;
};
constexpr ToolTip kToolTips[] = {
    {IDC_KEYWORD_COLUMN, "Choose the column for Keywords"},
    {IDC_CHANGE_KEYWORD_COLUMN, "Click to change column for Keywords"},
    {IDC_NEW_KEYWORD, "Enter Text to add a keyword to list"},
    {IDC_ADD_KEYWORD, "Click to add a keyword to list"},
};

// The group and what it holds, and what gives way when it folds.
constexpr int kKeywordControls[] = {IDC_KEYWORD_GROUP, IDC_KEYWORD_COLUMN, IDC_CHANGE_KEYWORD_COLUMN,
                                    IDC_NEW_KEYWORD,   IDC_ADD_KEYWORD,    IDC_KEYWORDS_LABEL,
                                    IDC_KEYWORDS};
constexpr int kControlsBelow[] = {IDC_FONT_LABEL, IDC_LIST_FONT, IDC_APPLY_APPEARANCE, IDCANCEL};

CCustomizedAppearance* g_dialog = nullptr;  // lives as long as the process

int heightOf(const CWnd& window) {
    CRect rect;
    window.GetWindowRect(&rect);
    return rect.Height();
}

}  // namespace

IMPLEMENT_DYNAMIC(CCustomizedAppearance, AppearanceDialog)

BEGIN_MESSAGE_MAP(CCustomizedAppearance, AppearanceDialog)
    ON_CBN_SELCHANGE(IDC_PROPERTY, &CCustomizedAppearance::OnPropertyChange)
    ON_BN_CLICKED(IDC_PROPERTY_COLOR, &CCustomizedAppearance::OnPropertyColor)
    ON_BN_CLICKED(IDC_CHANGE_KEYWORD_COLUMN, &CCustomizedAppearance::OnChangeKeywordColumn)
    ON_CBN_SELCHANGE(IDC_KEYWORD_COLUMN, &CCustomizedAppearance::OnKeywordColumnChange)
END_MESSAGE_MAP()

CCustomizedAppearance::CCustomizedAppearance(CWnd* parent)
    : AppearanceDialog(
          {IDD_CUSTOMIZE_APPEARANCE, "Customize Appearance :", "CUSTOMIZE_LISTS", IDC_KEYWORDS, {"Keyword", "Color"}},
          parent) {}

// The window dies with the top-level window of the list that made it; the next list makes a new one.
CCustomizedAppearance* CCustomizedAppearance::shared(CCommonListCtrl& list) {
    if (!g_dialog) g_dialog = new CCustomizedAppearance(&list);
    const quor::LibraryResources resources;
    const bool stands = g_dialog->m_hWnd || g_dialog->Create(IDD_CUSTOMIZE_APPEARANCE, &list);
    return stands ? g_dialog : nullptr;
}

BOOL CCustomizedAppearance::OnInitDialog() {
    AppearanceDialog::OnInitDialog();
    m_colorButton.SubclassDlgItem(IDC_PROPERTY_COLOR, this);
    for (const char* name : kProperties) property().AddString(name);
    m_groupHeight = heightOf(*GetDlgItem(IDC_KEYWORD_GROUP));
    m_frameHeight = heightOf(*GetDlgItem(IDC_APPEARANCE_GROUP));
    addToolTips();
    return TRUE;
}

void CCustomizedAppearance::addToolTips() {
    if (!m_toolTip.Create(this)) return;
    for (const ToolTip& tip : kToolTips) m_toolTip.AddTool(GetDlgItem(tip.control), tip.text);
    m_toolTip.SetDelayTime(TTDT_INITIAL, kToolTipDelay);
    m_toolTip.SetTipTextColor(kToolTipText);
    m_toolTip.Activate(TRUE);
}

BOOL CCustomizedAppearance::PreTranslateMessage(MSG* message) {
    if (m_toolTip.m_hWnd) m_toolTip.RelayEvent(message);
    return AppearanceDialog::PreTranslateMessage(message);
}

CComboBox& CCustomizedAppearance::property() const { return *static_cast<CComboBox*>(GetDlgItem(IDC_PROPERTY)); }

CComboBox& CCustomizedAppearance::keywordColumn() const {
    return *static_cast<CComboBox*>(GetDlgItem(IDC_KEYWORD_COLUMN));
}

void CCustomizedAppearance::enable(std::initializer_list<int> ids, bool on) {
    for (const int id : ids) GetDlgItem(id)->EnableWindow(on);
}

// --- Filling -------------------------------------------------------------------------------------------------------

// Without colours of the list's own only the font remains.
void CCustomizedAppearance::fill() {
    keywordColumn().ResetContent();
    enable({IDC_PROPERTY, IDC_KEYWORD_COLUMN, IDC_PROPERTY_COLOR, IDC_KEYWORDS, IDC_CHANGE_KEYWORD_COLUMN,
            IDC_NEW_KEYWORD, IDC_ADD_KEYWORD},
           m_pParentList->m_bUseColors != 0);
    if (m_record.bKeywordsEnabled) {
        listColumns(m_record.iKeywordColumn);
        enable({IDC_KEYWORD_COLUMN}, false);
        for (const KeywordRow& row : keywordRows(m_record)) insertRow(m_keywords.GetItemCount(), row);
    }
    property().SetCurSel(kBackgroundProperty);
    OnPropertyChange();
}

// A place in the box is a columnIndex.
void CCustomizedAppearance::listColumns(int selected) {
    CComboBox& box = keywordColumn();
    for (INT_PTR i = 0; i < m_pParentList->m_arrColumns.GetCount(); ++i)
        box.SetItemData(box.AddString(m_pParentList->m_arrColumns.GetAt(i).szColumnName), static_cast<DWORD_PTR>(i));
    box.SetCurSel(selected);
}

// The chosen column stays chosen by its name, and keeps its keywords; if it went, none is chosen.
void CCustomizedAppearance::fillColumns() {
    m_record.iKeywordColumn = m_pParentList->m_Appearance.iKeywordColumn;
    if (!m_record.bKeywordsEnabled) return;
    CComboBox& box = keywordColumn();
    const int former = box.GetCurSel();
    CString name;
    if (former != CB_ERR) box.GetLBText(former, name);
    box.ResetContent();
    listColumns(CB_ERR);
    if (former == CB_ERR) return;
    const auto isNamed = [&](int index) {
        CString text;
        if (index < box.GetCount()) box.GetLBText(index, text);
        return index < box.GetCount() && text == name;
    };
    int index = isNamed(former) ? former : 0;
    while (index < box.GetCount() && !isNamed(index)) ++index;
    box.SetCurSel(index < box.GetCount() ? index : CB_ERR);
}

void CCustomizedAppearance::OnPropertyChange() {
    const bool isText = property().GetCurSel() != kBackgroundProperty;
    const COLORREF color = isText ? m_record.crText : m_record.crBackground;
    m_colorButton.SetColour(color, color);
    EnableAttributeColorWindow(isText);
}

void CCustomizedAppearance::OnPropertyColor() {
    const int chosen = property().GetCurSel();
    if (!m_pParentList || chosen == CB_ERR) return;
    COLORREF& color = chosen == kTextProperty ? m_record.crText : m_record.crBackground;
    const std::optional<COLORREF> picked = pickColor(color);
    if (!picked) return;
    color = *picked;
    m_colorButton.SetColour(*picked, *picked);
}

void CCustomizedAppearance::OnChangeKeywordColumn() {
    keywordColumn().EnableWindow(TRUE);
    SetFocus(&keywordColumn());
}

// The keywords were meant for the other column.
void CCustomizedAppearance::OnKeywordColumnChange() { m_keywords.DeleteAllItems(); }

KeywordRow CCustomizedAppearance::newRow(const CString& keyword) const {
    return {keyword, m_record.crText, std::nullopt};
}

// --- Folding -------------------------------------------------------------------------------------------------------

void CCustomizedAppearance::EnableAttributeColorWindow(bool on) {
    enable({IDC_CHANGE_KEYWORD_COLUMN, IDC_NEW_KEYWORD, IDC_ADD_KEYWORD, IDC_KEYWORDS}, on);
    const bool shown = on && m_record.bKeywordsEnabled;
    showKeywordGroup(shown);
    const int step = foldStep({m_groupHeight, m_frameHeight}, heightOf(*GetDlgItem(IDC_APPEARANCE_GROUP)), shown);
    if (step != 0) moveBelowKeywords(step);
}

void CCustomizedAppearance::showKeywordGroup(bool shown) {
    for (const int id : kKeywordControls) GetDlgItem(id)->ShowWindow(shown ? SW_SHOWNA : SW_HIDE);
}

// The buttons stand at the dialog's end.
int CCustomizedAppearance::topInView(int top, int height) const {
    MONITORINFO monitor{};
    const auto& screens = quor::platform::screens();
    if (!screens.describe(screens.monitorFromWindow(m_hWnd), monitor)) return top;
    return unfoldedTop(top, height, monitor.rcWork.top, monitor.rcWork.bottom);
}

void CCustomizedAppearance::moveBelowKeywords(int step) {
    CWnd& frame = *GetDlgItem(IDC_APPEARANCE_GROUP);
    CRect rect;
    frame.GetWindowRect(&rect);
    frame.SetWindowPos(nullptr, 0, 0, rect.Width(), rect.Height() + step, kPlaceOnly | SWP_NOMOVE);
    for (const int id : kControlsBelow) {
        CWnd& control = *GetDlgItem(id);
        control.GetWindowRect(&rect);
        ScreenToClient(&rect);
        control.SetWindowPos(nullptr, rect.left, rect.top + step, 0, 0, kPlaceOnly | SWP_NOSIZE);
    }
    GetWindowRect(&rect);
    const int height = rect.Height() + step;
    const int top = step > 0 ? topInView(rect.top, height) : rect.top;
    SetWindowPos(nullptr, rect.left, top, rect.Width(), height, kPlaceOnly);
    // A frame paints its lines alone, so those of its former size would stay.
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// --- Applying ------------------------------------------------------------------------------------------------------

void CCustomizedAppearance::applyColors(CCommonListCtrl& list) {
    if (!list.m_bUseColors) return;
    list.SetBkColor(m_record.crBackground);
    list.SetTextBkColor(m_record.crBackground);
    list.SetTextColor(m_record.crText);
}

// Without a column there is no keyword text, and the record's arrays stay.
CString CCustomizedAppearance::takeRows(const std::vector<KeywordRow>& rows) {
    const int column = keywordColumn().GetCurSel();
    return column == CB_ERR ? CString() : takeKeywords(m_record, column, rows);
}

void CCustomizedAppearance::applied(CCommonListCtrl& list) { list.m_bCustomized = 1; }

// --- The list's side -----------------------------------------------------------------------------------------------

void CCommonListCtrl::OnCustomize() {
    if (IsMarketWatch() || !m_hWnd) return;
    if (CCustomizedAppearance* const dialog = CCustomizedAppearance::shared(*this)) dialog->openOn(*this);
}

void CCommonListCtrl::OnColumnsRebuilt(bool) { AppearanceDialog::columnsRebuilt(this); }
