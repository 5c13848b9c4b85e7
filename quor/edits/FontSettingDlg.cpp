#include "quor/edits/FontSettingDlg.h"

#include "quor/edits/core/FontNames.h"
#include "quor/resource/LibraryResources.h"
#include "quor/resource/resource.h"

using namespace quor::edits;

namespace {

LPCDLGTEMPLATE dialogTemplate() {
    const HMODULE library = quor::LibraryResources::module();
    const HRSRC found = ::FindResourceA(library, MAKEINTRESOURCEA(IDD_FONT_SETTING), RT_DIALOG);
    const HGLOBAL loaded = found ? ::LoadResource(library, found) : nullptr;
    return loaded ? static_cast<LPCDLGTEMPLATE>(::LockResource(loaded)) : nullptr;
}

}  // namespace

IMPLEMENT_DYNAMIC(CFontSettingDlg, CZTBCGPDialog)

BEGIN_MESSAGE_MAP(CFontSettingDlg, CZTBCGPDialog)
    ON_CBN_SELCHANGE(IDC_FONT_NAME, &CFontSettingDlg::OnFontChanged)
    ON_EN_CHANGE(IDC_FONT_SIZE, &CFontSettingDlg::OnSizeChanged)
END_MESSAGE_MAP()

CFontSettingDlg::CFontSettingDlg(CString font, CString size, CWnd* parent) : m_font(font), m_size(size) {
    m_pParentWnd = parent;
}

// From memory: while a modal dialog runs, the host's resources are the host's.
INT_PTR CFontSettingDlg::DoModal() {
    return InitModalIndirect(dialogTemplate(), m_pParentWnd) ? CZTBCGPDialog::DoModal() : -1;
}

BOOL CFontSettingDlg::OnInitDialog() {
    m_names.SubclassDlgItem(IDC_FONT_NAME, this);
    CZTBCGPDialog::OnInitDialog();
    m_names.InitFonts();
    if (!m_names.SelectFont(m_font) && !m_font.IsEmpty()) {
        m_names.OfferMissingFont(m_font);
        m_names.SelectFont(m_font);
    }
    SetDlgItemText(IDC_FONT_SIZE, m_size);
    showSample();
    return TRUE;
}

int CFontSettingDlg::sizeInField() const {
    CString text;
    GetDlgItemText(IDC_FONT_SIZE, text);
    return pointsOf({text, static_cast<std::size_t>(text.GetLength())});
}

// While the size is none the sample keeps its last one.
void CFontSettingDlg::showSample() {
    const int points = sizeInField();
    const CString name = m_names.GetSelectedFont();
    if (points == 0 && m_sampleFont.m_hObject) return;
    LOGFONT description{};
    description.lfHeight = quor::platform::fontHeight(*this, points != 0 ? points : kLeastPoints);
    description.lfCharSet = DEFAULT_CHARSET;
    ::lstrcpynA(description.lfFaceName, name.IsEmpty() ? m_font : name, LF_FACESIZE);
    CFont font;
    if (!font.CreateFontIndirect(&description)) return;
    GetDlgItem(IDC_FONT_SAMPLE)->SetFont(&font);
    m_sampleFont.DeleteObject();  // the control does not use it any more
    m_sampleFont.Attach(font.Detach());
}

void CFontSettingDlg::OnFontChanged() { showSample(); }

void CFontSettingDlg::OnSizeChanged() {
    if (m_names.m_hWnd) showSample();
}

void CFontSettingDlg::OnOK() {
    const int points = sizeInField();
    if (points == 0) {
        CString text;
        text.Format("The size must be a whole number from %d to %d.", kLeastPoints, kMostPoints);
        MessageBox(text, "Font", MB_OK | MB_ICONEXCLAMATION);
        if (!m_hWnd) return;
        auto& field = *static_cast<CEdit*>(GetDlgItem(IDC_FONT_SIZE));
        GotoDlgCtrl(&field);
        field.SetSel(0, -1);
        return;
    }
    if (const CString name = m_names.GetSelectedFont(); !name.IsEmpty()) m_font = name;
    m_size.Format("%d", points);
    CZTBCGPDialog::OnOK();
}
