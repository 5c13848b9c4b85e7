// CZTBrickBar: a strip of bricks, each with a caption and a value. The user makes them wider and gives them colours and
// fonts; with a name the bar keeps all that in the host's settings (docs/formats.md).
//
// The object is its owner's, and so are texts and colours that the owner sets; the views delete themselves with their
// windows, and each cell's font belongs to its record. A cell that does not exist, or whose view is gone, gives 0.
// Settings are written once a window, by DestroyWindow or else when it goes with its parent, and at WM_ENDSESSION,
// which a host passes on.
#pragma once

#include "quor/bars/FlatFrameWnd.h"
#include "quor/bars/FlatSplitterWnd.h"
#include "quor/bars/HolderView.h"
#include "quor/foundation/core/ColumnRecords.h"

class QUOR_CONTROLS_API CZTBrickBar : public CFlatFrameWnd {
    DECLARE_DYNAMIC(CZTBrickBar)

public:
    CZTBrickBar();
    ~CZTBrickBar() override;

    // Before CreateBrickBars.
    int m_bSaveOnDestroy = 1;
    int m_bGroupDigits = 0;       // SetText groups digits
    int m_bRightAlignValues = 0;  // values stand at the right edge of their cells
    CString m_strBarName;         // in the settings; empty: nothing is kept

    // 0, and nothing is made, without a pane or a caption, with more captions than panes, or while there is a window.
    // Without `bResizable` the user cannot move the bars.
    int CreateBrickBars(CWnd* pParent, int nPanes, CArray<CString>& captions, RECT* pRect, int bResizable);

    // 1, or 0 for an unknown cell. The value stays; the colour is not used.
    int SetCaption(int nPane, CString caption, DWORD color);
    // Of titles that are set from now on.
    int SetCaptionSeperator(CString separator);
    // What follows the text means nothing.
    int SetText(int nPane, CString text, ...);
    int SetTextColor(int nPane, DWORD color);
    // Takes over a font made by `new`; 0 for null.
    int SetFont(int nPane, CFont* font);
    // Caption and value without the separator ("LTP10"); empty for an unknown cell.
    int GetText(int nPane, CString& text);
    int GetCaption(int nPane, CString& caption);
    // With it ("LTP : 10").
    int GetTextWithCaption(int nPane, CString& text);

    int GetPaneCount() const { return m_nPaneCount; }
    CFlatSplitterWnd* GetSplitterWnd() { return &m_wndSplitter; }

    // Both 0 without a name or a window. Reading stops with 0 at the first cell whose stored text ends too early; what
    // was read stands. A write that the host refuses is told in a box, and the next cell follows.
    int ReadFromINI();
    int WriteToINI();
    // The views' colours and fonts become the records'.
    void UpdateUIData();
    // Ends the records and their fonts; the window must be gone.
    void FreeMap();
    // Every cell gets the same width.
    void FitToWindow();
    CString GetCommaData(CString& text);

    BOOL DestroyWindow() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg void OnDestroy();
    afx_msg void OnEndSession(BOOL ending);
    afx_msg void OnSetFocus(CWnd* former);
    DECLARE_MESSAGE_MAP()

private:
    struct sPaneInfo {
        CHolderView* pView = nullptr;
        COLORREF clrText = 0;
        CString strCaption;
        CFont* pFont = nullptr;
        HWND window = nullptr;  // the view's
    };

    sPaneInfo* pane(int number) const;
    bool createWindows(CWnd& parent, int panes, const CRect& place);
    bool makePane(int number, const CString& caption);
    void makeFonts(int width);
    bool readPane(int number);
    bool writePane(int number, const sPaneInfo& info);
    void takeFont(sPaneInfo& info, CFont* font);
    CString section() const;

    CFlatSplitterWnd m_wndSplitter;
    CString m_strSeparator = " : ";
    int m_nPaneCount = 0;
    CZTMap<int, int, sPaneInfo*, sPaneInfo*> m_mapPanes;
    HWND m_hBrickWnd = nullptr;
    CString m_title;       // SetText's, kept for its room
    bool m_saved = false;  // this window's settings are written
};
