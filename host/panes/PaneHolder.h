// A pane in its splitter: a strip with the pane's title, a remark and a close box, and the pane below it.
//
// A splitter makes it (CreateView), whoever asked for that puts one pane in. The pane goes with it.
#pragma once

#include "quor/bars/HolderView.h"

#include <functional>
#include <string>

namespace terminal {

class CPaneHolder : public CHolderView {
    DECLARE_DYNCREATE(CPaneHolder)

public:
    // The holder that a pane is in; null: none.
    static CPaneHolder* around(const CWnd& pane);

    // `pane` is a child of this window, and hears its commands and notifications.
    void hold(CWnd& pane, const char* title);
    // Shown at the right of the strip, where there is room for it; repainted only when it changes.
    void setRemark(const std::string& remark);
    // A control of the pane's, as a child of this window, stands behind the title, as wide as it says on a plain
    // screen.
    void putIntoStrip(CWnd& control, int width);
    // What the close box does instead of closing this holder's column or row by itself.
    void setOnClose(std::function<void()> onClose) { m_onClose = std::move(onClose); }

protected:
    // The pane paints itself.
    void OnDraw(CDC* dc) override { DrawTitleLable(dc); }
    void DrawTitleLable(CDC* dc) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

private:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    CRect strip() const;
    void placeControl();

    std::string m_title, m_remark;
    std::function<void()> m_onClose;
    HWND m_control = nullptr;  // may have gone with its pane
    int m_controlWidth = 0;
    CFont m_font;

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
