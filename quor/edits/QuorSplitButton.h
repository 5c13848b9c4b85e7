// CQuorSplitButton: a push button with a strip at its right that opens a menu. The menu is the host's to fill (m_menu);
// while it is empty there is no strip and the whole face is the main part.
//
// Commands go to the registered parent (RegisterParentDlg), which must outlive the button; without one nothing is sent.
// A click on the main part posts WM_COMMAND with the button's id; a menu command is sent with its own id, both with the
// button's handle. Space and Down open the menu; Enter, the mnemonic and BM_CLICK are the main part. Each road leads to
// one WM_COMMAND; Enter and the mnemonic are the dialog's, so theirs goes to the button's parent window.
// The command id 1 cannot come from the menu. A host may destroy the button from its menu command.
#pragma once

#include "quor/edits/ThemeUtil.h"

class QUOR_CONTROLS_API CQuorSplitButton : public CButton {
    DECLARE_DYNAMIC(CQuorSplitButton)

public:
    CQuorSplitButton();

    // The menu's own operations, with their results; the text is not used.
    UINT EnableMenuItem(UINT id, CString text, UINT flags);
    BOOL RemoveMenuItem(UINT id, CString text, UINT flags);
    // MF_CHECKED or MF_UNCHECKED, with MF_BYCOMMAND or MF_BYPOSITION; the former state.
    UINT ChangeMenuFlags(UINT id, UINT flags);
    // Makes it its dialog's default button, or no longer: DM_GETDEFID then says so.
    void SetDefaultButton(int isDefault);
    // Null leaves the one that is registered.
    void RegisterParentDlg(CWnd* parent);

    void DrawItem(LPDRAWITEMSTRUCT item) override;
    // A triangle in the middle of the strip.
    void DrawArrow(CDC* dc, CRect strip);
    // Whether a client point lies on the strip. Closes a menu that another button has open.
    BOOL HitMenuBtn(CPoint point);
    void OnShowMenu();

    CMenu m_menu;
    int m_bPushed = 0;
    int m_bMenuPushed = 0;
    int m_nMenuFlags = 0;  // the results of EnableMenuItem and RemoveMenuItem, joined
    int m_bDefaultButton = 0;
    int m_nMenuStripWidth;  // pixels: 16 on a screen of 96 dots an inch
    CWnd* m_pParentDlg = nullptr;
    int m_nLastCommand = 0;  // the menu's, or kMainPart after a click on the main part

    enum { kMainPart = 100 };

    BOOL PreCreateWindow(CREATESTRUCT& create) override;
    void PreSubclassWindow() override;

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* window);
    afx_msg void OnSetFocus(CWnd* former);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg void OnSysColorChange();
    afx_msg LRESULT OnThemeChanged();
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg LRESULT OnGetDialogCode(WPARAM key, LPARAM message);
    afx_msg LRESULT OnSetStyle(WPARAM style, LPARAM redraw);
    afx_msg LRESULT OnClick(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    bool hasMenu() const;
    void pressMainPart();
    void paintPart(CDC& dc, const CRect& area, bool pressed, const DRAWITEMSTRUCT& item);

    bool m_inMenuCommand = false;
    CThemeUtil m_theme;
};
