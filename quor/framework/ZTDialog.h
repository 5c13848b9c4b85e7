// CZTDialog: the base of the terminal's dialogs. It keeps each dialog's place over a restart, stays usable on a screen
// that is smaller than the dialog, scales places with the font, gives the focus to a sensible window when it closes,
// and puts the client's name into its title.
//
// A dialog is known by its key, in all that is stored: the number or the name of its template. Its place stands in the
// file that the host gave CCommonListCtrl::SetRecoveryFiles as the second one; while that is empty nothing is stored.
// The place is read in OnInitDialog, taken when the dialog is shown, and stored once per window: in DestroyWindow, or
// at WM_DESTROY for a window that goes with its owner.
//
// Buttons that close are told by their caption alone, "OK" or "Cancel" (an "&" does not count): before the click runs
// it is settled who gets the focus, by the focus stack, or by the order of the windows behind the dialog. Of these only
// windows of this program that can be seen count; a dialog in multi-monitor mode (its system menu has the item) is
// passed over while m_bGlobalMmmMode is on. If the next window runs a modal loop, the click is dropped. So a dialog
// that opens over a modal CZTDialog cannot be left by OK or Cancel: let it derive from CZTBCGPDialog.
//
// The class-wide members are the host's to set, before or between dialogs. Hosts' callbacks may end the dialog.
#pragma once

#include "quor/foundation/core/Watchers.h"
#include "quor/framework/ZTBCGPDialog.h"

class CZTDialog;

// What EnumerateChildWindow passes along.
struct sEnumChildContext {
    void* pData = nullptr;         // the derived dialog's own
    CZTDialog* pDialog = nullptr;  // whose children they are
};

// What MoveWindowZT scales; any other value scales nothing.
enum eMultiplierFlag {
    kScalePosition = 1,
    kScaleSize = 2,
    kScaleBoth = 3,
};

class QUOR_CONTROLS_API CZTDialog : public CZTBCGPDialog {
    DECLARE_DYNAMIC(CZTDialog)

public:
    // Without a template the key is empty, and no place is kept.
    CZTDialog();
    explicit CZTDialog(UINT nIDTemplate, CWnd* pParent = nullptr);
    explicit CZTDialog(const char* lpszTemplateName, CWnd* pParent = nullptr);
    ~CZTDialog() override;

    // --- Class-wide. ---
    // Every dialog between OnInitDialog and the end of its window.
    static CArray<CZTDialog*, CZTDialog*> AllDlgArray;
    // True while a dialog has just taken or returned the focus through the bar. Read by the host alone.
    static bool m_bFocusStatus;
    // The host's: multi-monitor handling is on in the whole application.
    static bool m_bGlobalMmmMode;
    // The host's: the window that takes the focus when a dialog closes; borrowed, may be null.
    static CWnd* m_pDgBar;
    // The host's, borrowed: hears of each dialog, event 1 when it is made and 0 when it ends. The event's data are the
    // CZTDialog itself.
    static CWatcher* pWatcherr;

    // Makes the brush of dialogs anew, in the colour of the current theme.
    static void VisualizationColor();
    static void ResetBWLDlgPtr();
    static void SetLayoutWatcher(CWatcher* pWatcher);

    // --- Life. ---
    BOOL OnInitDialog() override;
    BOOL DestroyWindow() override;
    // A dialog that was last minimised is restored by SW_SHOW.
    BOOL ShowWindow(int nCmdShow);

    // --- Place. ---
    // Reads the stored place; where there is none, or it makes no sense, the window's own is taken.
    void GetWindowPos();
    // Stores the place now. Nothing without a window.
    void SaveWindowPos();
    // Whether something takes the top of the dialog's monitor.
    int IsMonitorTopOccupied();

    // --- Focus. ---
    // Brings the window behind this dialog to the top, or gives the bar the focus if that is asked for and there is
    // one. False: there was no such window, or the bar got it.
    bool ActivatePrevWindow(bool bCheckBar);
    // Non-zero if the window may take the focus: it is no dialog in multi-monitor mode.
    int CheckforMultiMonitor(CWnd* pWnd);
    // The control gets the focus when the dialog is next activated.
    void ZTDGotoDlgCtrl(CWnd* pWnd);
    // At once, as by the Tab key.
    void SetFocus(int nCtrlId);
    void SetFocus(CWnd* pWnd);
    using CZTBCGPDialog::SetFocus;

    // --- Scaling and scroll bars. Pixels at the size that the dialog was made for. ---
    // Sets the factors from the dialog's font; nFontKind counts for a face that is not known. An unknown kind leaves
    // both.
    void CalculateXYScaleFactor(double& x, double& y, int nFontKind);
    // The height is `cy` and 10 more.
    void MoveWindowZT(int x, int y, int cx, int cy, eMultiplierFlag flag, bool bRepaint);
    void SetWindowPosZT(const CWnd* pInsertAfter, int x, int y, int cx, int cy, UINT nFlags, bool bAdjustWidth,
                        bool bAdjustHeight);
    // Moves a control to the rectangle of another, or its own where that is null, with its sides moved by scaled
    // amounts. DeflateRectZT: right and bottom in, left and top out. InflateRectZT: right and bottom out, left and top
    // in.
    void DeflateRectZT(CWnd* pTarget, CWnd* pReference, int l, int t, int r, int b);
    void InflateRectZT(CWnd* pTarget, CWnd* pReference, int l, int t, int r, int b);
    // One bar (SB_HORZ, SB_VERT) from 0 to nMax, at 0.
    void SetupScrollbar(int nBar, int nMax, int nPage);
    // Gives a dialog of this size the bars that it needs on the screen, and the size that fits.
    void InitializeScrollBars(int& cx, int& cy, bool bAdjustWidth, bool bAdjustHeight);
    // Takes the bars off. Each flag takes the room of the other direction's bar off that size.
    void ResetScrollbars(int& cx, int& cy, bool bAdjustWidth, bool bAdjustHeight);

    // --- Looks. ---
    // Appends the chosen text of a combo box, and the client's name, to the title. A second call appends again.
    void SetWindowTitleWithClientName(int nCtrlId);
    // Appends the client's name, once, and details (may be empty) to a window's title. Null: nothing.
    void quoru_add_details_to_window_title(CWnd* pWnd, CString details);
    // Calls MyMemberEnumFunction for each child, children's children included.
    void EnumerateChildWindow();
    // Gives each child the font. Lists and headers keep theirs, but directly in a CSnapQuoteDlg.
    void EnumerateChildWindowForFontChange(HFONT hFont);
    // For derived dialogs, which route WM_CTLCOLOR here.
    HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);

    // One child of EnumerateChildWindow; lParam is the sEnumChildContext. The base disables the dialog's control with
    // the child's id.
    virtual BOOL MyMemberEnumFunction(HWND hWnd, LPARAM lParam);

    // --- What a click does. ---
    // Both end the dialog; after OnCancel the bar has the focus, if there is one.
    void OnOK() override;
    void OnCancel() override;
    // Hands the focus on where a button says "OK" or "Cancel". TRUE: handled, or dropped because the window behind runs
    // a modal loop.
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

protected:
    afx_msg void OnDestroy();
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus);
    afx_msg void OnWindowPosChanged(WINDOWPOS* pPos);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnSysColorChange();
    afx_msg void OnSysCommand(UINT nID, LPARAM lParam);
    afx_msg void OnEnterSizeMove();
    afx_msg void OnExitSizeMove();
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg LRESULT OnDelayedSetFocus(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    CString m_strDialogKey;
    CString m_strTitleDetails;  // goes into the title when the dialog is shown
    // For derived dialogs that want data of their own in MyMemberEnumFunction; borrowed.
    sEnumChildContext* m_pEnumContext = nullptr;
    bool m_bDefaultCtlColor = true;  // false: the brush paints the controls too
    // The screen when the object was made, never read again.
    CRect m_rcDesktop;
    bool m_bHorzScrollOn = false;
    bool m_bVertScrollOn = false;
    bool m_bClosedByCancel = false;
    int m_nVisibleHeight = 0;
    int m_nVisibleWidth = 0;
    int m_nContentHeight = 0;
    int m_nContentWidth = 0;
    int m_nVScrollPos = 0;
    int m_nHScrollPos = 0;
    int m_nHScrollBarHeight;
    int m_nVScrollBarWidth;
    int m_nWorkAreaWidth;
    int m_nWorkAreaHeight;
    int m_bAdjustForOccupiedTop = 1;
    int m_nOccupiedTop = 0;
    int m_bTopCheckedOnce = 0;
    double m_dXScale = 1.0;
    double m_dYScale = 1.0;
    bool m_bReturnFocusToBar = true;
    WINDOWPLACEMENT m_wpPlacement{};
    bool m_bMmmMode = false;
    CWnd* m_pDelayedFocusCtrl = nullptr;

private:
    void takeScreenMetrics();
    void tellWatcher(int event);
    void addSystemMenuItem();
    void checkSystemMenuItem();
    void endWindow();

    bool readPosition();
    void readMultiMonitorMode();
    void writeMultiMonitorMode();
    void takeShownPlace();

    BOOL closeToFocusWindow(CWnd* window, WPARAM wParam, LPARAM lParam);
    BOOL closeToBar(HWND button, WPARAM wParam, LPARAM lParam);
    BOOL closeToNextWindow(HWND button, WPARAM wParam, LPARAM lParam);
    BOOL closeAndActivateBar(WPARAM wParam, LPARAM lParam);

    enum class Axis { horizontal, vertical };
    // Whether the dialog moved.
    bool scroll(Axis axis, UINT code, int thumb);
    struct Sides {
        int left, top, right, bottom;
    };
    Sides scaled(const Sides& sides) const;
    CRect referenceRect(const CWnd& target, const CWnd* reference);

    CFont m_font;                         // the dialog's own; its controls keep the template's
    HWND m_delayedFocusWindow = nullptr;  // of m_pDelayedFocusCtrl, whose object may go first
    bool m_inFocusStack = false;          // since it was last shown
    bool m_takingPlace = false;           // inside OnShowWindow, which may show the window
    bool m_windowEnded = false;           // endWindow has run for this window
};
