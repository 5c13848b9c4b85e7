// Tool tips. A tool is a whole window (tool id 0) or a rectangle of a window with an id of its own (not 0). The tip
// shows while mouse messages of the tool's window are relayed to it.
//
// Tools are described with the oldest form of the record, since the newer ones are refused by some versions of the
// common controls. Texts are copied; LPSTR_TEXTCALLBACK asks the window (TTN_NEEDTEXT, in the W form for Unicode
// windows).
#pragma once

#include "quor/platform/base/Strings.h"
#include "quor/platform/win/Wnd.h"

#include <commctrl.h>

class QUOR_FRAMEWORK_API CToolTipCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolTipCtrl)
public:
    CToolTipCtrl() = default;
    // Style TTS_...; the window is a popup that the parent owns.
    virtual BOOL Create(CWnd* parent, DWORD style = 0);

    // Without a rectangle the tool is the whole window and the id must be 0.
    BOOL AddTool(CWnd* window, LPCTSTR text = LPSTR_TEXTCALLBACK, LPCRECT rect = nullptr, UINT_PTR id = 0);
    // The text from the program's string resources.
    BOOL AddTool(CWnd* window, UINT textId, LPCRECT rect = nullptr, UINT_PTR id = 0);
    void DelTool(CWnd* window, UINT_PTR id = 0);
    int GetToolCount() const;
    void SetToolRect(CWnd* window, UINT_PTR id, LPCRECT rect);
    void UpdateTipText(LPCTSTR text, CWnd* window, UINT_PTR id = 0);
    void UpdateTipText(UINT textId, CWnd* window, UINT_PTR id = 0);
    // The tool's text; cut at 1023 characters.
    void GetText(CString& text, CWnd* window, UINT_PTR id = 0) const;
    // Fills `info` (cbSize is set here; lpszText points to the caller's buffer or is null). FALSE if there is no such
    // tool.
    BOOL GetToolInfo(TOOLINFO& info, CWnd* window, UINT_PTR id = 0) const;
    void SetToolInfo(LPTOOLINFO info);
    BOOL HitTest(CWnd* window, POINT point, LPTOOLINFO info) const;

    void Activate(BOOL activate);
    void RelayEvent(LPMSG message);
    // Hides the tip that is shown.
    void Pop();
    void Update();
    // Milliseconds; which: TTDT_AUTOPOP, TTDT_INITIAL, TTDT_RESHOW, TTDT_AUTOMATIC.
    void SetDelayTime(UINT delay) { SetDelayTime(TTDT_AUTOMATIC, static_cast<int>(delay)); }
    void SetDelayTime(DWORD which, int time);
    int GetDelayTime(DWORD which) const;
    // Pixels; -1 is one line of any width. Returns the former width.
    int SetMaxTipWidth(int width);
    int GetMaxTipWidth() const;
    void SetTipBkColor(COLORREF color);
    COLORREF GetTipBkColor() const;
    void SetTipTextColor(COLORREF color);
    COLORREF GetTipTextColor() const;
    void SetMargin(LPRECT rect);
    // Icon TTI_...
    BOOL SetTitle(UINT icon, LPCTSTR title);
};
