// Smaller common controls: slider, date and time field, status bar, tabs, progress bar, spin button. Each call is one
// message; the classes add no data to CWnd, so a pointer from GetDlgItem may be used through them.
#pragma once

#include "quor/platform/base/Strings.h"
#include "quor/platform/win/Wnd.h"

#include <commctrl.h>

class CImageList;

class QUOR_FRAMEWORK_API CSliderCtrl : public CWnd {
    DECLARE_DYNAMIC(CSliderCtrl)
public:
    CSliderCtrl() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetPos() const;
    // A position outside the range becomes its nearest end.
    void SetPos(int position);
    void GetRange(int& minimum, int& maximum) const;
    void SetRange(int minimum, int maximum, BOOL redraw = FALSE);
    int GetRangeMin() const;
    void SetRangeMin(int minimum, BOOL redraw = FALSE);
    int GetRangeMax() const;
    void SetRangeMax(int maximum, BOOL redraw = FALSE);
    // Steps of the arrow keys and of the page keys; setting returns the former step.
    int GetLineSize() const;
    int SetLineSize(int size);
    int GetPageSize() const;
    int SetPageSize(int size);
    // A tick mark every so many positions.
    void SetTicFreq(int frequency);
    BOOL SetTic(int position);
    void ClearTics(BOOL redraw = FALSE);
    UINT GetNumTics() const;
    void GetThumbRect(LPRECT rect) const;
    void GetChannelRect(LPRECT rect) const;
};

class QUOR_FRAMEWORK_API CDateTimeCtrl : public CWnd {
    DECLARE_DYNAMIC(CDateTimeCtrl)
public:
    CDateTimeCtrl() = default;
    // Style DTS_...
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // GDT_VALID; GDT_NONE where the field's check box is clear.
    DWORD GetTime(LPSYSTEMTIME time) const;
    // Null clears the check box of DTS_SHOWNONE.
    BOOL SetTime(LPSYSTEMTIME time = nullptr);
    // A picture such as "dd-MM-yyyy"; null restores the locale's.
    BOOL SetFormat(LPCTSTR format);
};

class QUOR_FRAMEWORK_API CStatusBarCtrl : public CWnd {
    DECLARE_DYNAMIC(CStatusBarCtrl)
public:
    CStatusBarCtrl() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Right edges of the panes in client coordinates; -1 is the window's edge. At most 256 panes.
    BOOL SetParts(int count, int* rightEdges);
    // The number of panes; fills at most `count` edges.
    int GetParts(int count, int* rightEdges) const;
    // Type 0 (sunken), SBT_NOBORDERS, SBT_POPOUT, SBT_OWNERDRAW.
    BOOL SetText(LPCTSTR text, int pane, int type);
    CString GetText(int pane, int* type = nullptr) const;
    int GetTextLength(int pane, int* type = nullptr) const;
    BOOL GetRect(int pane, LPRECT rect) const;
    BOOL SetSimple(BOOL simple = TRUE);
    BOOL IsSimple() const;
    void SetMinHeight(int height);
    BOOL SetIcon(int pane, HICON icon);
    COLORREF SetBkColor(COLORREF color);

    // A pane of SBT_OWNERDRAW. Does nothing here.
    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QUOR_FRAMEWORK_API CTabCtrl : public CWnd {
    DECLARE_DYNAMIC(CTabCtrl)
public:
    CTabCtrl() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetItemCount() const;
    // The new tab's index, or -1.
    LONG InsertItem(int index, TCITEM* item);
    LONG InsertItem(int index, LPCTSTR text);
    BOOL GetItem(int index, TCITEM* item) const;
    BOOL SetItem(int index, TCITEM* item);
    BOOL DeleteItem(int index);
    BOOL DeleteAllItems();
    int GetCurSel() const;
    // Sends no notification. Returns the former tab, -1 on failure.
    int SetCurSel(int index);
    BOOL GetItemRect(int index, LPRECT rect) const;
    // larger: from display area to window; else from window to display area.
    void AdjustRect(BOOL larger, LPRECT rect);
    int HitTest(TCHITTESTINFO* info) const;
    CImageList* SetImageList(CImageList* list);

    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QUOR_FRAMEWORK_API CProgressCtrl : public CWnd {
    DECLARE_DYNAMIC(CProgressCtrl)
public:
    CProgressCtrl() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    void SetRange(short lower, short upper);
    void SetRange32(int lower, int upper);
    int GetPos() const;
    // These return the former position.
    int SetPos(int position);
    int OffsetPos(int by);
    int StepIt();
    int SetStep(int step);
};

class QUOR_FRAMEWORK_API CSpinButtonCtrl : public CWnd {
    DECLARE_DYNAMIC(CSpinButtonCtrl)
public:
    CSpinButtonCtrl() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // The field that shows the position; returns the former one.
    CWnd* SetBuddy(CWnd* buddy);
    CWnd* GetBuddy() const;
    void SetRange(short lower, short upper);
    void SetRange32(int lower, int upper);
    void GetRange32(int& lower, int& upper) const;
    int GetPos(BOOL* failed = nullptr) const;
    int SetPos(int position);
};
