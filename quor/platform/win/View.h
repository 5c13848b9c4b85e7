// Views: the child windows that fill a frame. CView paints through OnDraw; CScrollView scrolls a surface of a fixed
// size in pixels; CFormView is laid out by a dialog template. There are no documents: a view works for itself.
//
// Views are made with new (PostNcDestroy deletes the object) and may also be plain children of any window.
#pragma once

#include "quor/platform/win/Dialog.h"
#include "quor/platform/win/Frame.h"
#include "quor/platform/win/Wnd.h"

class QUOR_FRAMEWORK_API CView : public CWnd {
    DECLARE_DYNAMIC(CView)
public:
    // Called after the first layout (WM_INITIALUPDATE); updates the view.
    virtual void OnInitialUpdate();
    virtual void OnPrepareDC(CDC* pDC);
    // Something that the view shows has changed; invalidates all unless overridden.
    virtual void OnUpdate(CView* pSender, LPARAM lHint, CObject* pHint);
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

protected:
    CView();
    ~CView() override;

    virtual void OnDraw(CDC* pDC) = 0;
    // The frame made this view active, or took that away.
    virtual void OnActivateView(BOOL bActivate, CView* pActivateView, CView* pDeactiveView);
    void PostNcDestroy() override;

    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg LRESULT OnInitialUpdateMessage(WPARAM wParam, LPARAM lParam);
    // ID_WINDOW_SPLIT: the nearest splitter around the view moves its bars by keys.
    afx_msg BOOL OnSplitCmd(UINT nID);
    afx_msg void OnUpdateSplitCmd(CCmdUI* pCmdUI);
    DECLARE_MESSAGE_MAP()

    friend class CFrameWnd;
};

// Scrolls in pixels; scroll bars appear when the surface is larger than the client area.
class QUOR_FRAMEWORK_API CScrollView : public CView {
    DECLARE_DYNAMIC(CScrollView)
public:
    // Only MM_TEXT. Zero page or line sizes become a tenth of the surface, and of the page.
    void SetScrollSizes(int nMapMode, SIZE sizeTotal, const SIZE& sizePage = SIZE{0, 0},
                        const SIZE& sizeLine = SIZE{0, 0});
    CPoint GetScrollPosition() const;
    // Clipped to the range.
    void ScrollToPosition(POINT pt);
    CSize GetTotalSize() const { return m_total; }
    void OnPrepareDC(CDC* pDC) override;

protected:
    CScrollView();
    ~CScrollView() override;
    void OnDraw(CDC* pDC) override = 0;

    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    DECLARE_MESSAGE_MAP()

private:
    void updateBars();
    void scrollBy(int bar, int code);

    CSize m_total = CSize(0, 0);
    CSize m_page = CSize(0, 0);
    CSize m_line = CSize(0, 0);
};

// A view whose controls come from a dialog template: a resource, or none at all (template id 0: an empty form).
class QUOR_FRAMEWORK_API CFormView : public CScrollView {
    DECLARE_DYNAMIC(CFormView)
public:
    BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                UINT nID, CCreateContext* pContext = nullptr) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    // UpdateData(FALSE), then the base.
    void OnInitialUpdate() override;

protected:
    explicit CFormView(LPCSTR lpszTemplateName);
    explicit CFormView(UINT nIDTemplate);
    ~CFormView() override;
    void OnDraw(CDC* pDC) override;

    LPCSTR m_lpszTemplateName = nullptr;  // an id or a name; null: empty
};
