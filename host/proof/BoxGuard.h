// A run without a user: a message box that opens is closed at once and its text is kept. Without it the run would wait
// for an answer for ever.
#pragma once

#include "quor/platform/Framework.h"

#include <string>
#include <utility>
#include <vector>

namespace terminal {

// Works on the thread that makes it, as long as it lives; one at a time. The framework's own dialogs are left alone.
class BoxGuard {
public:
    BoxGuard();
    ~BoxGuard();
    BoxGuard(const BoxGuard&) = delete;
    BoxGuard& operator=(const BoxGuard&) = delete;

    // Of the boxes since the last call.
    std::vector<std::string> takeTexts() { return std::exchange(m_texts, {}); }

private:
    static LRESULT CALLBACK hook(int code, WPARAM wParam, LPARAM lParam);
    void close(HWND box);

    HHOOK m_hook;
    std::vector<HWND> m_closing;  // a box may be activated more than once
    std::vector<std::string> m_texts;
};

}  // namespace terminal
