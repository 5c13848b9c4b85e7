// The system's dialogs for files, colours and fonts. DoModal returns IDOK or IDCANCEL; the results may be read after
// IDOK. The system runs its own message loop meanwhile: PreTranslateMessage is not asked, and these objects have no
// window of their own.
#pragma once

#include "quor/platform/base/List.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/win/Dialog.h"

#include <commdlg.h>
#include <vector>

class QUOR_FRAMEWORK_API CCommonDialog : public CDialog {
    DECLARE_DYNAMIC(CCommonDialog)
public:
    explicit CCommonDialog(CWnd* parent);

protected:
    // The window that the dialog disables: the parent that was given, else the main window. May be null.
    HWND ownerWindow() const;
};

class QUOR_FRAMEWORK_API CFileDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFileDialog)
public:
    // open: "Open", else "Save as". Filter: pairs of name and pattern, "Text files (*.txt)|*.txt||". Flags OFN_...
    explicit CFileDialog(BOOL open, LPCTSTR defaultExtension = nullptr, LPCTSTR fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR filter = nullptr,
                         CWnd* parent = nullptr);
    INT_PTR DoModal() override;

    OPENFILENAME& GetOFN() { return m_ofn; }
    // "C:\out\rows.csv": the whole, "rows.csv", "csv", "rows", "C:\out".
    CString GetPathName() const;
    CString GetFileName() const;
    CString GetFileExt() const;
    CString GetFileTitle() const;
    CString GetFolderPath() const;
    // With OFN_ALLOWMULTISELECT: the chosen paths, one after the other. Null when there is none.
    POSITION GetStartPosition() const;
    CString GetNextPathName(POSITION& position) const;

    OPENFILENAME m_ofn{};

private:
    BOOL m_open;
    CString m_defaultExtension;
    std::vector<char> m_filter;  // the system's form: NULs in place of bars
    std::vector<char> m_path;
};

class QUOR_FRAMEWORK_API CColorDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CColorDialog)
public:
    // Begins with the colour; flags CC_...
    explicit CColorDialog(COLORREF color = 0, DWORD flags = 0, CWnd* parent = nullptr);
    INT_PTR DoModal() override;

    COLORREF GetColor() const { return m_cc.rgbResult; }
    void SetCurrentColor(COLORREF color) { m_cc.rgbResult = color; }
    // The 16 colours of the user's own row, kept for the life of the process.
    static COLORREF* GetSavedCustomColors();

    CHOOSECOLOR m_cc{};
};

class QUOR_FRAMEWORK_API CFontDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFontDialog)
public:
    // Begins with the font, which is copied; null begins with none. Flags CF_...; a printer's context adds its fonts.
    explicit CFontDialog(LPLOGFONT font = nullptr, DWORD flags = CF_EFFECTS | CF_SCREENFONTS, CDC* printer = nullptr,
                         CWnd* parent = nullptr);
    INT_PTR DoModal() override;

    void GetCurrentFont(LPLOGFONT font) const { *font = m_lf; }
    CString GetFaceName() const { return m_lf.lfFaceName; }
    CString GetStyleName() const { return m_style; }
    // Tenths of a point.
    int GetSize() const { return m_cf.iPointSize; }
    COLORREF GetColor() const { return m_cf.rgbColors; }
    int GetWeight() const { return m_lf.lfWeight; }
    BOOL IsStrikeOut() const { return m_lf.lfStrikeOut; }
    BOOL IsUnderline() const { return m_lf.lfUnderline; }
    BOOL IsBold() const { return m_lf.lfWeight == FW_BOLD; }
    BOOL IsItalic() const { return m_lf.lfItalic != 0; }

    CHOOSEFONT m_cf{};
    LOGFONT m_lf{};

private:
    char m_style[64] = "";
};
