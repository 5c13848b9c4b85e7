// CFontSettingDlg: a modal dialog for a font's name and its size in points, with a sample that follows. Names are
// offered in their faces. A size that is no whole number from 4 to 72 is refused with a message, and the dialog stays.
#pragma once

#include "quor/edits/HotFontCombo.h"
#include "quor/framework/ZTBCGPDialog.h"

class QUOR_CONTROLS_API CFontSettingDlg : public CZTBCGPDialog {
    DECLARE_DYNAMIC(CFontSettingDlg)

public:
    // What the dialog begins with, and what GetFont and GetSize give until OK. A name that is not installed stays
    // unless another one is chosen.
    CFontSettingDlg(CString font, CString size, CWnd* parent = nullptr);

    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;

    // The font's name; the dialog's own font is CWnd's GetFont.
    CString GetFont() const { return m_font; }
    // Points as text.
    CString GetSize() const { return m_size; }

protected:
    void OnOK() override;
    afx_msg void OnFontChanged();
    afx_msg void OnSizeChanged();
    DECLARE_MESSAGE_MAP()

private:
    int sizeInField() const;
    void showSample();

    CString m_font;
    CString m_size;
    CHotFontCombo m_names;
    CFont m_sampleFont;
};
