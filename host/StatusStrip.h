// The status bar: the state of the feed at the left, the run's figures in cells from the right, painted in the
// terminal's colours.
#pragma once

#include "quor/platform/Framework.h"

#include <string>
#include <vector>

namespace terminal {

enum class StatusPart { state, ticks, rows, repaints, latency, speed, count };

class CStatusStrip : public CStatusBarCtrl {
public:
    // At the bottom of `parent`; finds its own place at WM_SIZE. FALSE: the system gave no window.
    BOOL CreateStrip(CWnd* parent, UINT id);
    // A text in UTF-8. Repaints only when it changes.
    void setPart(StatusPart part, const std::string& text);
    // The state stands in the colour of a fault from now on.
    void showFault() { m_fault = true; }

private:
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);

    std::vector<std::string> m_texts = std::vector<std::string>(static_cast<std::size_t>(StatusPart::count));
    bool m_fault = false;

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
