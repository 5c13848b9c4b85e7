#include "quor/list/UserCusomize.h"

#include "quor/list/CommonListCtrl.h"
#include "quor/list/core/KeywordRows.h"
#include "quor/resource/LibraryResources.h"
#include "quor/resource/resource.h"

using namespace quor::list;

namespace {

CUserCusomize* g_dialog = nullptr;  // lives as long as the process

}  // namespace

IMPLEMENT_DYNAMIC(CUserCusomize, AppearanceDialog)

BEGIN_MESSAGE_MAP(CUserCusomize, AppearanceDialog)
    ON_BN_CLICKED(IDC_BACKGROUND_COLOR, &CUserCusomize::OnBackgroundColor)
END_MESSAGE_MAP()

CUserCusomize::CUserCusomize(CWnd* parent)
    : AppearanceDialog({IDD_USER_CUSTOMIZE,
                        "User Customize Appearance :",
                        "USER_CUSTOMIZE_LISTS",
                        IDC_USER_KEYWORDS,
                        {"Property", "Text Color", "Text BK Color"}},
                       parent) {}

// The window dies with the top-level window of the list that made it; the next list makes a new one.
CUserCusomize* CUserCusomize::shared(CCommonListCtrl& list) {
    if (!g_dialog) g_dialog = new CUserCusomize(&list);
    const quor::LibraryResources resources;
    const bool stands = g_dialog->m_hWnd || g_dialog->Create(IDD_USER_CUSTOMIZE, &list);
    return stands ? g_dialog : nullptr;
}

BOOL CUserCusomize::OnInitDialog() {
    AppearanceDialog::OnInitDialog();
    m_backgroundButton.SubclassDlgItem(IDC_BACKGROUND_COLOR, this);
    return TRUE;
}

void CUserCusomize::fill() {
    for (const KeywordRow& row : userKeywordRows(m_record)) insertRow(m_keywords.GetItemCount(), row);
    m_backgroundButton.SetColour(m_record.crBackground, m_record.crBackground);
}

void CUserCusomize::OnBackgroundColor() {
    if (!m_pParentList) return;
    const std::optional<COLORREF> picked = pickColor(m_record.crBackground);
    if (!picked) return;
    m_record.crBackground = *picked;
    m_backgroundButton.SetColour(*picked, *picked);
}

KeywordRow CUserCusomize::newRow(const CString& keyword) const {
    return {keyword, m_record.crText, m_record.crBackground};
}

// The text colour stays, and whether the list uses colours of its own is not asked. Both as it always was.
void CUserCusomize::applyColors(CCommonListCtrl& list) {
    list.SetBkColor(m_record.crBackground);
    list.SetTextBkColor(m_record.crBackground);
}

CString CUserCusomize::takeRows(const std::vector<KeywordRow>& rows) { return takeUserKeywords(m_record, rows); }

void CCommonListCtrl::OnUserCustomize() {
    if (IsMarketWatch() || !m_hWnd) return;
    if (CUserCusomize* const dialog = CUserCusomize::shared(*this)) dialog->openOn(*this);
}
