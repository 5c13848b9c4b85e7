// Stand-ins for the closed GUI library: classes of the same names with the behaviour that the terminal relies on. They
// are told apart by their run-time classes; visual managers only say which theme is current, and paint nothing.
#pragma once

#include "quor/platform/win/Dialog.h"
#include "quor/platform/win/StandardControls.h"
#include "quor/platform/win/View.h"

// Registered "BCGM_CHANGEVISUALMANAGER": sent to a window when the theme changed.
QUOR_FRAMEWORK_API extern UINT BCGM_CHANGEVISUALMANAGER;

// The current theme. One object at most, owned by the class.
class QUOR_FRAMEWORK_API CBCGPVisualManager : public CObject {
    DECLARE_DYNCREATE(CBCGPVisualManager)
public:
    CBCGPVisualManager();
    ~CBCGPVisualManager() override;
    // The current manager or null: none is made on demand.
    static CBCGPVisualManager* GetInstance();
    // Makes a manager of that class the current one, null: none. The former one dies.
    static void SetDefaultManager(CRuntimeClass* pRTI);
    static void DestroyInstance();
};
class QUOR_FRAMEWORK_API CBCGPVisualManagerXP : public CBCGPVisualManager {
    DECLARE_DYNCREATE(CBCGPVisualManagerXP)
};
class QUOR_FRAMEWORK_API CBCGPWinXPVisualManager : public CBCGPVisualManager {
    DECLARE_DYNCREATE(CBCGPWinXPVisualManager)
};
class QUOR_FRAMEWORK_API CBCGPVisualManager2003 : public CBCGPVisualManager {
    DECLARE_DYNCREATE(CBCGPVisualManager2003)
};
class QUOR_FRAMEWORK_API CBCGPVisualManagerVS2005 : public CBCGPVisualManager {
    DECLARE_DYNCREATE(CBCGPVisualManagerVS2005)
};
class QUOR_FRAMEWORK_API CBCGPVisualManager2007 : public CBCGPVisualManager {
    DECLARE_DYNCREATE(CBCGPVisualManager2007)
public:
    enum Style {
        VS2007_LunaBlue = 0,
        VS2007_ObsidianBlack = 1,
        VS2007_Aqua = 2,
        VS2007_Silver = 3,
    };
    // Kept for the process, whichever manager is current.
    static void SetStyle(Style style);
    static Style GetStyle();
};

// A dialog that redraws itself when the theme changed.
class QUOR_FRAMEWORK_API CBCGPDialog : public CDialog {
    DECLARE_DYNAMIC(CBCGPDialog)
public:
    CBCGPDialog();
    explicit CBCGPDialog(UINT nIDTemplate, CWnd* pParent = nullptr);
    explicit CBCGPDialog(LPCSTR lpszTemplateName, CWnd* pParent = nullptr);
    ~CBCGPDialog() override;

    // Whether and where in the registry the dialog would keep its placement. Remembered only: nothing is read or
    // written there. A null section leaves the last one.
    void EnableLoadWindowPlacement(BOOL bEnable = TRUE, LPCSTR lpszProfileSection = nullptr);
    BOOL IsLoadWindowPlacement() const { return m_loadPlacement; }
    const CString& GetProfileSection() const { return m_profileSection; }

protected:
    afx_msg LRESULT OnChangeVisualManager(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    BOOL m_loadPlacement = FALSE;
    CString m_profileSection;
};

// A form view; may be made as a child of any window, without frame, document or template (id 0: an empty form).
class QUOR_FRAMEWORK_API CBCGPFormView : public CFormView {
    DECLARE_DYNAMIC(CBCGPFormView)
protected:
    explicit CBCGPFormView(LPCSTR lpszTemplateName);
    explicit CBCGPFormView(UINT nIDTemplate);
    ~CBCGPFormView() override;
};

// A bar whose controls come from a dialog template (0: empty), along one side of its frame (CBRS_ALIGN bits).
class QUOR_FRAMEWORK_API CBCGPDialogBar : public CWnd {
    DECLARE_DYNCREATE(CBCGPDialogBar)
public:
    CBCGPDialogBar();
    ~CBCGPDialogBar() override;
    // FALSE if there is no such template.
    BOOL Create(CWnd* pParentWnd, UINT nIDTemplate, UINT nStyle, UINT nID);
    BOOL Create(CWnd* pParentWnd, LPCSTR lpszTemplateName, UINT nStyle, UINT nID);
    using CWnd::Create;
    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    afx_msg LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    UINT m_side = 0;
};

// The frame of a bar that floats. It knows its bars by their control ids.
class QUOR_FRAMEWORK_API CBCGPMiniFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CBCGPMiniFrameWnd)
public:
    CBCGPMiniFrameWnd();
    ~CBCGPMiniFrameWnd() override;
    BOOL CreateEx(DWORD dwStyleEx, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd);
    using CWnd::CreateEx;
    // The bar with this id in any living mini frame, or null.
    static CWnd* FindFloatingBarByID(UINT uBarID);

protected:
    afx_msg void OnDestroy();
    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    DECLARE_MESSAGE_MAP()
};

// A push button with a standard icon by number; drawn by the system.
class QUOR_FRAMEWORK_API CBCGPButton : public CButton {
    DECLARE_DYNAMIC(CBCGPButton)
public:
    CBCGPButton();
    ~CBCGPButton() override;
    // Kept with the button; the caller draws or sets the icon itself.
    void SetStdImage(int id) { m_stdImage = id; }
    int GetStdImage() const { return m_stdImage; }
    // The text shown by the button's tip; empty: none.
    void SetTooltip(LPCSTR text);
    INT_PTR OnToolHitTest(CPoint point, TOOLINFO* pTI) const override;

private:
    int m_stdImage = -1;
    CString m_tooltip;
};

// A message box under the theme's look; here the system's. Null caption: the application's name.
QUOR_FRAMEWORK_API int BCGPMessageBox(HWND hwndOwner, LPCSTR lpszText, LPCSTR lpszCaption = nullptr,
                                      UINT uiFlags = MB_OK);

// Sides for bars.
constexpr DWORD CBRS_ALIGN_LEFT = 0x1000;
constexpr DWORD CBRS_ALIGN_TOP = 0x2000;
constexpr DWORD CBRS_ALIGN_RIGHT = 0x4000;
constexpr DWORD CBRS_ALIGN_BOTTOM = 0x8000;
constexpr DWORD CBRS_LEFT = CBRS_ALIGN_LEFT;
constexpr DWORD CBRS_TOP = CBRS_ALIGN_TOP;
constexpr DWORD CBRS_RIGHT = CBRS_ALIGN_RIGHT;
constexpr DWORD CBRS_BOTTOM = CBRS_ALIGN_BOTTOM;
