// CClrButton: a push button with colours of its own, which can also show a font's name, size and style.
//
// It is owner-drawn however it is made (Create, or a dialog's control that is subclassed), and stays a push button to
// its dialog: the default button by Tab and DM_SETDEFID, pressed by Enter, Space, mnemonic and mouse.
// A face that nobody set is the system theme's where one is on. The fields that nobody set follow WM_SYSCOLORCHANGE,
// which the system sends to top-level windows only: the parent passes it on.
#pragma once

#include "quor/edits/ThemeUtil.h"

enum eFontStyle {
    kFontStyleNotShown = -1,
    kFontRegular = 0,
    kFontBold = 1,
    kFontItalic = 2,
    kFontBoldItalic = 3,
};

class QUOR_CONTROLS_API CClrButton : public CButton {
    DECLARE_DYNAMIC(CClrButton)

public:
    CClrButton();

    // Without a disabled face that one is COLOR_BTNFACE. Both repaint without erasing.
    void SetColour(DWORD text, DWORD face);
    void SetColour(DWORD text, DWORD face, DWORD disabled);
    void SetColor(DWORD text, DWORD face) { SetColour(text, face); }
    void SetColor(DWORD text, DWORD face, DWORD disabled) { SetColour(text, face, disabled); }
    // All seven colours become the system's again.
    void ResetColour();
    // The text's.
    DWORD GetColor() const { return m_clrText; }

    // Of the font that is shown, not the one that the button writes with: that is CWnd's GetFont and SetFont.
    CString GetFont() const { return m_strFont; }
    CString GetSize() const { return m_strSize; }
    eFontStyle GetFontStyle() const { return m_eFontStyle; }
    void SetFont(CString font) { m_strFont = font; }
    void SetSize(CString size) { m_strSize = size; }
    void SetFontStyle(eFontStyle style) { m_eFontStyle = style; }
    // Makes "Arial (Bold , 10)" the button's text, without a style "Arial (10)", and keeps the three.
    void DisplayFont(CString font, CString size, eFontStyle style);

    void DrawItem(LPDRAWITEMSTRUCT item) override;
    // `state`: ODS_... bits; ODS_SELECTED gives a sunken frame.
    void DrawFrame(CDC* dc, CRect area, int state);
    void DrawFilledRect(CDC* dc, CRect area, DWORD color);
    // One pixel wide; the end is not drawn.
    void DrawLine(CDC* dc, long left, long top, long right, long bottom, DWORD color);
    void DrawButtonText(CDC* dc, CRect area, const char* text, DWORD color);

    COLORREF m_clrText;
    COLORREF m_clrFace;
    COLORREF m_clrDisabled;
    COLORREF m_clrLight;
    COLORREF m_clrHighlight;
    COLORREF m_clrShadow;
    COLORREF m_clrDarkShadow;
    CString m_strFont;
    CString m_strSize;
    eFontStyle m_eFontStyle = kFontStyleNotShown;

    BOOL PreCreateWindow(CREATESTRUCT& create) override;
    void PreSubclassWindow() override;

protected:
    afx_msg void OnSysColorChange();
    afx_msg LRESULT OnThemeChanged();
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg LRESULT OnGetDialogCode(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetStyle(WPARAM style, LPARAM redraw);
    DECLARE_MESSAGE_MAP()

private:
    void takeSystemColours();
    int lineWidth() const;

    bool m_faceSet = false;      // text and face are somebody's
    bool m_disabledSet = false;  // and so is the disabled face
    bool m_isDefault = false;    // of its dialog
    bool m_keysShow = true;      // the mnemonic's underline, while it paints
    CThemeUtil m_theme;
};
