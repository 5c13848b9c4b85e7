// The system's own controls: static, button, edit, combo box, list box, scroll bar. Indexes and positions count from 0,
// -1 (CB_ERR, LB_ERR) is "none". Each call is one message; the classes add no data to CWnd, so a pointer from
// GetDlgItem may be used through them. The DrawItem and similar virtuals serve owner-drawn styles and do nothing here.
#pragma once

#include "quor/platform/base/Strings.h"
#include "quor/platform/win/Wnd.h"

#include <commctrl.h>

class QUOR_FRAMEWORK_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
public:
    CStatic() = default;
    virtual BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);

    // The pictures stay the caller's; each setter returns the former one.
    HICON SetIcon(HICON icon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;

    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QUOR_FRAMEWORK_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    CButton() = default;
    virtual BOOL Create(LPCTSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    UINT GetState() const;
    void SetState(BOOL highlight);
    // BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE.
    int GetCheck() const;
    void SetCheck(int check);
    UINT GetButtonStyle() const;
    void SetButtonStyle(UINT style, BOOL redraw = TRUE);
    HICON SetIcon(HICON icon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;
    // Presses and releases it as the mouse would.
    void Click();

    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QUOR_FRAMEWORK_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)
public:
    CEdit() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Selection, from the first character to behind the last; 0, -1 is all, -1 none.
    void GetSel(int& start, int& end) const;
    DWORD GetSel() const;
    void SetSel(DWORD selection, BOOL noScroll = FALSE);
    void SetSel(int start, int end, BOOL noScroll = FALSE);
    void ReplaceSel(LPCTSTR text, BOOL canUndo = FALSE);

    // The most characters that can be typed or pasted; 0 means the control's maximum. SetWindowText is not limited.
    void LimitText(int characters = 0);
    void SetLimitText(UINT characters) { LimitText(static_cast<int>(characters)); }
    UINT GetLimitText() const;
    BOOL GetModify() const;
    void SetModify(BOOL modified = TRUE);
    BOOL SetReadOnly(BOOL readOnly = TRUE);
    char GetPasswordChar() const;
    void SetPasswordChar(char character);
    BOOL CanUndo() const;
    BOOL Undo();
    void EmptyUndoBuffer();
    void Clear();
    void Copy();
    void Cut();
    void Paste();

    // Lines; a line of -1 is the one with the caret.
    int GetLineCount() const;
    int GetLine(int line, LPTSTR buffer, int maxLength) const;
    int LineFromChar(int index = -1) const;
    int LineIndex(int line = -1) const;
    int LineLength(int line = -1) const;
    void LineScroll(int lines, int characters = 0);
    int GetFirstVisibleLine() const;
    void GetRect(LPRECT rect) const;
    void SetRect(LPCRECT rect);
    void SetMargins(UINT left, UINT right);
    DWORD GetMargins() const;
    CPoint PosFromChar(UINT index) const;
    // The character in the low word, the line in the high word.
    int CharFromPos(CPoint point) const;

    // A grey text shown while the field is empty; needs the common controls of version 6, else FALSE.
    BOOL SetCueBanner(LPCWSTR text, BOOL drawFocused = FALSE);
    BOOL GetCueBanner(LPWSTR text, int maxLength) const;
    // A balloon under the field, TTI_... as icon. FALSE where the system's edit control has none: the message is sent
    // to this window, so a class that offers a balloon of its own takes EM_SHOWBALLOONTIP and EM_HIDEBALLOONTIP there.
    BOOL ShowBalloonTip(PEDITBALLOONTIP tip);
    BOOL ShowBalloonTip(LPCWSTR title, LPCWSTR text, INT icon = TTI_NONE);
    BOOL HideBalloonTip();
};

class QUOR_FRAMEWORK_API CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    CComboBox() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCount() const;
    int GetCurSel() const;
    // -1 clears the selection.
    int SetCurSel(int index);
    // The index of the added text (sorted lists choose it), CB_ERR or CB_ERRSPACE.
    int AddString(LPCTSTR text);
    int InsertString(int index, LPCTSTR text);
    int DeleteString(UINT index);
    void ResetContent();
    int GetLBText(int index, LPTSTR text) const;
    // Empty for an index outside.
    void GetLBText(int index, CString& text) const;
    int GetLBTextLen(int index) const;
    // Searches behind `after` and wraps; by beginning, or the whole text. Case does not count.
    int FindString(int after, LPCTSTR text) const;
    int FindStringExact(int after, LPCTSTR text) const;
    int SelectString(int after, LPCTSTR text);
    DWORD_PTR GetItemData(int index) const;
    int SetItemData(int index, DWORD_PTR data);
    void* GetItemDataPtr(int index) const { return reinterpret_cast<void*>(GetItemData(index)); }
    int SetItemDataPtr(int index, void* data) { return SetItemData(index, reinterpret_cast<DWORD_PTR>(data)); }

    DWORD GetEditSel() const;
    BOOL SetEditSel(int start, int end);
    BOOL LimitText(int characters);
    void ShowDropDown(BOOL show = TRUE);
    BOOL GetDroppedState() const;
    void GetDroppedControlRect(LPRECT rect) const;
    int GetDroppedWidth() const;
    int SetDroppedWidth(UINT width);
    int GetItemHeight(int index) const;
    int SetItemHeight(int index, UINT height);
    int GetTopIndex() const;
    int SetTopIndex(int index);
    BOOL SetExtendedUI(BOOL extended = TRUE);
    BOOL SetCueBanner(LPCWSTR text);
    void Clear();
    void Copy();
    void Cut();
    void Paste();

    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT measureItem);
    // < 0, 0 or > 0 as the first item sorts before, with or after the second.
    virtual int CompareItem(LPCOMPAREITEMSTRUCT compareItem);
    virtual void DeleteItem(LPDELETEITEMSTRUCT deleteItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QUOR_FRAMEWORK_API CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    CListBox() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCount() const;
    int AddString(LPCTSTR text);
    int InsertString(int index, LPCTSTR text);
    int DeleteString(UINT index);
    void ResetContent();
    int GetText(int index, LPTSTR text) const;
    void GetText(int index, CString& text) const;
    int GetTextLen(int index) const;
    int FindString(int after, LPCTSTR text) const;
    int FindStringExact(int after, LPCTSTR text) const;
    DWORD_PTR GetItemData(int index) const;
    int SetItemData(int index, DWORD_PTR data);

    // Single selection.
    int GetCurSel() const;
    int SetCurSel(int index);
    int SelectString(int after, LPCTSTR text);
    // Multiple selection; positive where the item is selected.
    int GetSel(int index) const;
    int SetSel(int index, BOOL select = TRUE);
    int GetSelCount() const;
    // Fills at most maxItems indexes; returns how many.
    int GetSelItems(int maxItems, LPINT indexes) const;
    int SelItemRange(BOOL select, int first, int last);
    int GetCaretIndex() const;
    int SetCaretIndex(int index, BOOL scroll = TRUE);

    int GetTopIndex() const;
    int SetTopIndex(int index);
    int GetItemRect(int index, LPRECT rect) const;
    int GetItemHeight(int index) const;
    int SetItemHeight(int index, UINT height);
    // outside: the point lies outside the client area and the nearest item is returned.
    UINT ItemFromPoint(CPoint point, BOOL& outside) const;
    int GetHorizontalExtent() const;
    void SetHorizontalExtent(int width);

    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT measureItem);
    virtual int CompareItem(LPCOMPAREITEMSTRUCT compareItem);
    virtual void DeleteItem(LPDELETEITEMSTRUCT deleteItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QUOR_FRAMEWORK_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    CScrollBar() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetScrollPos() const;
    // Returns the former position.
    int SetScrollPos(int position, BOOL redraw = TRUE);
    void GetScrollRange(LPINT minimum, LPINT maximum) const;
    void SetScrollRange(int minimum, int maximum, BOOL redraw = TRUE);
    BOOL GetScrollInfo(LPSCROLLINFO info, UINT mask = SIF_ALL);
    BOOL SetScrollInfo(LPSCROLLINFO info, BOOL redraw = TRUE);
    void ShowScrollBar(BOOL show = TRUE);
    BOOL EnableScrollBar(UINT arrows = ESB_ENABLE_BOTH);
};
