#include "quor/list/AppearanceDialog.h"

#include "quor/edits/FontSettingDlg.h"
#include "quor/foundation/Messages.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/list/core/KeywordRows.h"
#include "quor/list/core/Keywords.h"
#include "quor/platform/tools/QuorTools.h"
#include "quor/resource/resource.h"

#include <algorithm>

namespace quor::list {

namespace {

constexpr int kKeywordColumnWidth = 100;  // of each column of the table, at 96 dots an inch
constexpr int kTextColumn = 1;
constexpr int kBackColumn = 2;

std::vector<AppearanceDialog*>& allDialogs() {
    static auto& all = *new std::vector<AppearanceDialog*>;  // lists may outlive this module's statics
    return all;
}

std::optional<COLORREF> boxColor(const CXListCtrl& list, int row, int column) {
    const COLORREF color = list.GetColorboxColor(row, column);
    if (color == CXListCtrl::kNoColor) return std::nullopt;
    return color;
}

bool isDroppedCombo(HWND window) { return ::SendMessageA(window, CB_GETDROPPEDSTATE, 0, 0) != 0; }

}  // namespace

IMPLEMENT_DYNAMIC(AppearanceDialog, CZTDialog)

BEGIN_MESSAGE_MAP(AppearanceDialog, CZTDialog)
    ON_WM_SHOWWINDOW()
    ON_BN_CLICKED(IDC_LIST_FONT, &AppearanceDialog::OnFont)
    ON_BN_CLICKED(IDC_ADD_KEYWORD, &AppearanceDialog::OnAddKeyword)
    ON_BN_CLICKED(IDC_APPLY_APPEARANCE, &AppearanceDialog::OnApply)
    ON_NOTIFY(LVN_KEYDOWN, IDC_KEYWORDS, &AppearanceDialog::OnKeywordKey)
    ON_NOTIFY(LVN_KEYDOWN, IDC_USER_KEYWORDS, &AppearanceDialog::OnKeywordKey)
    ON_REGISTERED_MESSAGE(WM_XLISTCTRL_COLORBOX_CLICKED, &AppearanceDialog::OnColorboxClicked)
END_MESSAGE_MAP()

// --- Life ----------------------------------------------------------------------------------------------------------

AppearanceDialog::AppearanceDialog(const Kind& kind, CWnd* parent)
    : CZTDialog(kind.dialogTemplate, parent), m_kind(kind) {
    allDialogs().push_back(this);
}

AppearanceDialog::~AppearanceDialog() {
    std::erase(allDialogs(), this);
    m_record.freeKeywordArrays();
}

BOOL AppearanceDialog::OnInitDialog() {
    CZTDialog::OnInitDialog();
    m_fontButton.SubclassDlgItem(IDC_LIST_FONT, this);
    m_keywords.SubclassDlgItem(static_cast<UINT>(m_kind.keywordList), this);
    int column = 0;
    for (const char* heading : m_kind.headings)
        m_keywords.InsertColumn(column++, heading, LVCFMT_LEFT, platform::scaled(m_hWnd, kKeywordColumnWidth));
    return TRUE;
}

bool AppearanceDialog::isStill(const Moment& then) const {
    return CWnd::FromHandlePermanent(then.window) == this && m_pParentList == then.list && m_filled == then.filled;
}

void AppearanceDialog::forgetList(const CCommonListCtrl* list) {
    const std::vector<AppearanceDialog*> all = allDialogs();
    for (AppearanceDialog* dialog : all)
        if (std::ranges::find(allDialogs(), dialog) != allDialogs().end() && dialog->m_pParentList == list)
            dialog->forget();
}

void AppearanceDialog::forget() {
    m_pParentList = nullptr;
    ++m_filled;
    if (m_hWnd && (GetStyle() & WS_VISIBLE)) ShowWindow(SW_HIDE);
}

// --- Filling -------------------------------------------------------------------------------------------------------

void AppearanceDialog::SetParentList(CCommonListCtrl* list) {
    m_pParentList = list;
    if (m_hWnd) fillFromList();
}

void AppearanceDialog::openOn(CCommonListCtrl& list) {
    SetWindowText(m_kind.title + list.m_csListName + " ");
    SetParentList(&list);
    const HWND window = m_hWnd;
    const auto isOpen = [&] { return CWnd::FromHandlePermanent(window) == this && m_pParentList == &list; };
    ShowWindow(SW_SHOW);
    if (isOpen()) BringWindowToTop();
    if (isOpen()) CenterWindow(&list);
    if (isOpen()) keepFocusUsable();
}

// A window that only comes back with its owner keeps what was not applied.
void AppearanceDialog::OnShowWindow(BOOL show, UINT status) {
    const HWND window = m_hWnd;
    CZTDialog::OnShowWindow(show, status);
    if (show && status == 0 && CWnd::FromHandlePermanent(window) == this) fillFromList();
}

void AppearanceDialog::fillFromList() {
    ++m_filled;
    if (!m_pParentList) return;
    m_record.freeKeywordArrays();
    m_record = m_pParentList->m_Appearance;
    m_keywords.DeleteAllItems();
    SetDlgItemText(IDC_NEW_KEYWORD, "");
    fill();
    m_fontButton.DisplayFont(m_record.csFontName, m_record.csFontSize, kFontStyleNotShown);
    keepFocusUsable();
}

void AppearanceDialog::columnsRebuilt(const CCommonListCtrl* list) {
    for (AppearanceDialog* dialog : allDialogs())
        if (dialog->m_hWnd && dialog->m_pParentList == list) dialog->fillColumns();
}

// A control that is disabled loses the focus, to nobody.
void AppearanceDialog::keepFocusUsable() {
    if (::GetActiveWindow() != m_hWnd) return;
    const HWND focus = ::GetFocus();
    const bool isOurs = focus && ::IsChild(m_hWnd, focus);
    const auto style = isOurs ? static_cast<DWORD>(::GetWindowLongA(focus, GWL_STYLE)) : 0;
    if ((style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE) return;  // also while the dialog is still hidden
    const HWND next = ::GetNextDlgTabItem(m_hWnd, isOurs ? focus : nullptr, FALSE);
    if (next) SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
}

// --- Keywords ------------------------------------------------------------------------------------------------------

void AppearanceDialog::insertRow(int place, const KeywordRow& row) {
    const int at = m_keywords.InsertItem(place, row.keyword);
    const int columns = static_cast<int>(m_kind.headings.size());
    for (int column = kTextColumn; column < columns; ++column)
        m_keywords.SetColorboxColor(at, column,
                                    (column == kBackColumn ? row.back : row.text).value_or(CXListCtrl::kNoColor));
}

std::vector<KeywordRow> AppearanceDialog::rows() const {
    std::vector<KeywordRow> all;
    for (int row = 0; row < m_keywords.GetItemCount(); ++row)
        all.push_back({m_keywords.GetItemText(row, 0), boxColor(m_keywords, row, kTextColumn),
                       boxColor(m_keywords, row, kBackColumn)});
    return all;
}

void AppearanceDialog::OnAddKeyword() {
    if (!m_pParentList) return;
    CWnd& field = *GetDlgItem(IDC_NEW_KEYWORD);
    CString keyword;
    field.GetWindowText(keyword);
    if (keyword.IsEmpty()) {
        AfxMessageBox("Enter text to add a new keyword to list");
        return;
    }
    std::vector<int> lengths;
    for (const KeywordRow& row : rows()) lengths.push_back(row.keyword.GetLength());
    insertRow(keywordPlace(lengths, keyword.GetLength()), newRow(keyword));
    field.SetWindowText("");
}

// The numbers are those from before the first row went: of several rows others go than were selected. Kept.
void AppearanceDialog::OnKeywordKey(NMHDR* header, LRESULT* result) {
    *result = 0;
    if (reinterpret_cast<const NMLVKEYDOWN*>(header)->wVKey != VK_DELETE) return;
    std::vector<int> selected;
    for (int row = m_keywords.GetNextItem(-1, LVNI_SELECTED); row >= 0;
         row = m_keywords.GetNextItem(row, LVNI_SELECTED))
        selected.push_back(row);
    for (const int row : selected) m_keywords.DeleteItem(row);
}

LRESULT AppearanceDialog::OnColorboxClicked(WPARAM row, LPARAM column) {
    const int at = static_cast<int>(row), box = static_cast<int>(column);
    if (!m_pParentList || at < 0) return 0;
    const COLORREF standard = box == kBackColumn ? m_record.crBackground : m_record.crText;
    const CString keyword = m_keywords.GetItemText(at, 0);
    const std::optional<COLORREF> chosen = pickColor(boxColor(m_keywords, at, box).value_or(standard));
    // Rows may have gone meanwhile.
    if (chosen && at < m_keywords.GetItemCount() && m_keywords.GetItemText(at, 0) == keyword)
        m_keywords.SetColorboxColor(at, box, *chosen);
    return 0;
}

// --- Colours and font ----------------------------------------------------------------------------------------------

std::optional<COLORREF> AppearanceDialog::pickColor(COLORREF present) {
    const Moment then = moment();
    CColorDialog dialog(present, 0, this);
    if (dialog.DoModal() != IDOK || !isStill(then)) return std::nullopt;
    return dialog.GetColor();
}

void AppearanceDialog::OnFont() {
    if (!m_pParentList) return;
    const Moment then = moment();
    CFontSettingDlg dialog(m_record.csFontName, m_record.csFontSize, this);
    if (dialog.DoModal() != IDOK || !isStill(then)) return;
    m_record.csFontName = dialog.GetFont();
    m_record.csFontSize = dialog.GetSize();
    m_fontButton.DisplayFont(m_record.csFontName, m_record.csFontSize, kFontStyleNotShown);
}

// --- Applying ------------------------------------------------------------------------------------------------------

void AppearanceDialog::OnApply() {
    CCommonListCtrl* const list = m_pParentList;
    if (!list) return;
    const Moment then = moment();
    CCommonListCtrl::SetListFontProperty(list, list->GetDlgCtrlID(), m_record.csFontName, m_record.csFontSize);
    if (!isStill(then)) return;
    applyColors(*list);
    if (!isStill(then)) return;
    list->Invalidate();
    const CString tail = takeRows(rows());
    replaceAppearance(list->m_Appearance, m_record);
    applied(*list);
    storeAppearance(*list, tail);
}

void AppearanceDialog::storeAppearance(CCommonListCtrl& list, const CString& tail) {
    CString key, value = appearanceText(list.m_Appearance, tail), file = CCommonListCtrl::m_csGetRecoveryFile, error;
    key.Format("%s-%d", list.m_csListName.GetString(), list.GetDlgCtrlID());
    quoru_appdata_ini_file_operations(1, m_kind.section, key, value, file, error);
}

// A combo box that is open takes Enter itself.
BOOL AppearanceDialog::PreTranslateMessage(MSG* message) {
    const bool isEnter = message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
    if (!isEnter || !::IsChild(m_hWnd, message->hwnd) || isDroppedCombo(message->hwnd))
        return CZTDialog::PreTranslateMessage(message);
    OnOK();
    return TRUE;
}

void AppearanceDialog::OnOK() {
    const CWnd* const field = GetDlgItem(IDC_NEW_KEYWORD);
    if (field && ::GetFocus() == field->m_hWnd) {
        OnAddKeyword();
    } else {
        OnApply();
    }
}

}  // namespace quor::list
