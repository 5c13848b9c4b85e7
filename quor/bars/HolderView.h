// CHolderView: one cell of a splitter. As a brick (HV_BRICK) it shows a short text in a colour and font of its own and
// offers a menu of looks; with a title (HV_TITLE, HV_TITLE_CLOSE) it holds a child control beneath a strip, and its
// close box closes the splitter's column or row; HV_PLAIN is an empty face that reports its sizes.
//
// Commands, notifications and three messages are forwarded to the notify window. Child, notify window and font are
// their owners'; the view follows none that is gone. Like every view it deletes itself with its window: whoever holds
// one looks whether it is still there after anything that may end windows.
#pragma once

#include "quor/bars/FlatSplitterWnd.h"
#include "quor/edits/ClrButton.h"
#include "quor/foundation/Messages.h"

#include <memory>
#include <string>

// Bits of SetStyleZT.
inline constexpr DWORD HV_TITLE = 2;        // a title strip; a held child covers it
inline constexpr DWORD HV_TITLE_CLOSE = 4;  // one with a close box at its right, above the child
inline constexpr DWORD HV_BRICK = 8;
inline constexpr DWORD HV_PLAIN = 16;
inline constexpr DWORD HV_GRADIENT = 32;  // the strip has a gradient and white text

// Commands of a brick's menu, and of the close box.
inline constexpr UINT kCommandBrickColor = 1111;
inline constexpr UINT kCommandBrickFont = 1112;
inline constexpr UINT kCommandAllBrickColors = 33519;
inline constexpr UINT kCommandAllBrickFonts = 33518;
inline constexpr UINT kCommandFitBricks = 2805;
inline constexpr UINT kCommandDefaultBricks = 33139;
inline constexpr UINT kCommandCloseHolder = 2630;

class QUOR_CONTROLS_API CHolderView : public CView, public CFittingPane {
    DECLARE_DYNCREATE(CHolderView)

public:
    CHolderView();
    ~CHolderView() override;

    // The text is kept with a blank in front, which GetTitle leaves out.
    void SetTitle(CString title, DWORD color);
    CString GetTitle() const { return m_strTitle.Mid(1); }
    void SetTitleColor(DWORD color);
    DWORD GetTitleColor() const { return m_clrTitle; }
    // Borrowed; it must live as long as the view or until it gets another.
    void SetTitleFont(CFont* font);
    CFont* GetTitleFont() const { return m_pTitleFont; }
    // True for a font that a command made for a view that had none: it goes with the view.
    bool OwnsTitleFont() const { return m_pTitleFont && m_pTitleFont == m_ownFont.get(); }
    // In pixels.
    void SetTitleHeight(int height);
    // What the strip takes from the top: 0 where none is painted.
    int GetTopOffset() const;
    void SetMsgText(CString text) { m_strMsgText = text; }
    CString GetMsgText() const { return m_strMsgText; }
    DWORD GetMsgColor() const { return m_clrTitle; }
    // The title's first characters stand at the left and the others at the right edge; 0: all at the left.
    void SetTitleSplit(int length);

    // The held child, placed at once; with HV_TITLE_CLOSE, which is set before, the close box is made. Null lets go.
    void setWnd(CWnd* child);
    CWnd* GetCtrlWnd() const;
    void setNotifyWindow(CWnd* window);
    CWnd* GetNotifyWindow() const;
    void setOwner(CWnd* owner) { SetOwner(owner); }
    void SetStyleZT(DWORD style);
    DWORD GetStyleZT() const { return m_dwStyleZT; }

    // Every column of the splitter around gets the same width.
    void FitToWindow();
    // A brick's text with its margins; else what the child says, and the strip above it.
    CSize GetFittingSize() override;

    INT_PTR OnToolHitTest(CPoint point, TOOLINFO* info) const override;

protected:
    void OnDraw(CDC* dc) override;
    virtual void DrawTitleLable(CDC* dc);
    virtual void DrawBrickRect(CDC* dc);
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnSize(UINT type, int cx, int cy);
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnContextMenu(CWnd* window, CPoint point);
    afx_msg void OnSetFocus(CWnd* former);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnSysColorChange();
    afx_msg LRESULT OnCheckClick(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    // A window of somebody else, and whether it is still there.
    struct Other {
        CWnd* object = nullptr;
        HWND window = nullptr;

        void set(CWnd* other);
        CWnd* get() const;
    };
    enum class Bricks { one, all };  // whose looks a command changes
    static constexpr INT_PTR kBrickTool = 1;

    CFlatSplitterWnd* splitter() const;
    template <class Do>
    void forBricks(Bricks which, Do act);
    void act(UINT command);
    void takeDefaults();
    void chooseColor(Bricks which);
    void chooseFont(Bricks which);
    void makeFont(const LOGFONT& font);
    void closeThis();
    void makeCloseBox();
    void placeChild();
    bool asksForTipText(const NMHDR& asked) const;
    BOOL giveTipText(LPARAM notification);
    CRect closeBoxPlace() const;
    void fillStrip(CDC& dc, CRect strip);
    int brickTextWidth() const;
    void invalidateTitle();

    CString m_strTitle;
    CString m_strMsgText;
    COLORREF m_clrTitle = 0;
    COLORREF m_clrGradientFrom;
    COLORREF m_clrGradientTo;
    Other m_pCtrlWnd;
    Other m_pNotifyWnd;
    std::unique_ptr<CClrButton> m_pCloseButton;
    DWORD m_dwStyleZT = 0;
    CFont* m_pTitleFont = nullptr;
    int m_nTitleHeight;

    std::unique_ptr<CFont> m_ownFont;
    CFont m_closeFont;
    int m_titleSplit = 0;
    DWORD m_waitingSince = 0;
    bool m_waiting = false;  // for the paint that shows the title
    std::string m_tipText;
    std::wstring m_wideTipText;
};
