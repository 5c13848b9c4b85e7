// Message boxes in tests. While a MessageBoxAnswerer lives, each box that opens is recorded and answered; outside of
// one (with a WindowFixture running) a box is unexpected: it is closed, recorded, and the test fails.
//
// The framework's own dialogs are no message boxes and are left alone.
#pragma once

#include "quor/platform/Framework.h"

#include <string>
#include <vector>

namespace test {

struct MessageBoxSeen {
    std::string text;
    std::string caption;
    bool operator==(const MessageBoxSeen&) const = default;
};

class MessageBoxAnswerer {
public:
    // Buttons (IDOK...) for the first, second... box; the last one serves for the rest. A box without the button fails
    // the test and is closed.
    explicit MessageBoxAnswerer(std::vector<int> buttons = {IDOK});
    ~MessageBoxAnswerer();
    MessageBoxAnswerer(const MessageBoxAnswerer&) = delete;
    MessageBoxAnswerer& operator=(const MessageBoxAnswerer&) = delete;

    const std::vector<MessageBoxSeen>& boxes() const { return m_boxes; }
    std::vector<std::string> texts() const;

private:
    friend struct MessageBoxHook;
    int nextButton();

    std::vector<int> m_buttons;
    std::vector<MessageBoxSeen> m_boxes;
    MessageBoxAnswerer* m_outer;
};

// From now on this thread's boxes are seen. The fixture calls it; so does an answerer.
void watchMessageBoxes();

}  // namespace test
