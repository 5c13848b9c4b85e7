// The pair of WM_SETREDRAW: painting stands still for a block, then the window shows as a whole. A grid's sort alone
// has a pair of its own, past its window procedure: NativeList::setRedraw.
#pragma once

#include "quor/platform/Framework.h"

namespace quor::foundation {

// By the handle: what the block asks of the host may end the window, and its object too.
class RedrawScope {
public:
    explicit RedrawScope(const CWnd& window) : m_window(window.m_hWnd) {
        ::SendMessageA(m_window, WM_SETREDRAW, FALSE, 0);
    }
    RedrawScope(const RedrawScope&) = delete;
    RedrawScope& operator=(const RedrawScope&) = delete;
    ~RedrawScope() {
        if (!::IsWindow(m_window)) return;
        ::SendMessageA(m_window, WM_SETREDRAW, TRUE, 0);
        ::InvalidateRect(m_window, nullptr, TRUE);
    }

private:
    HWND m_window;
};

}  // namespace quor::foundation
