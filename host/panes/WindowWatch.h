// Who sees the messages of a window before the window does: for what the terminal adds to windows of all kinds, the
// library's and the system's.
#pragma once

#include "quor/platform/Framework.h"

#include <functional>
#include <memory>

namespace terminal {

struct WindowMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// Lets the window, and those who watch it longer, have the message. The window may be gone afterwards.
class PassOn {
public:
    LRESULT operator()() const;

private:
    friend class WindowWatchers;
    PassOn(class WindowWatchers& watchers, std::size_t at, const WindowMessage& message)
        : m_watchers(watchers), m_at(at), m_message(message) {}

    WindowWatchers& m_watchers;
    std::size_t m_at;
    const WindowMessage& m_message;
};

// Answers the message, most by passing it on. It may throw.
using WindowWatcher = std::function<LRESULT(const WindowMessage& message, const PassOn& passOn)>;

// The latest sees a message first. A watcher goes with its window; no window, no watcher.
void watchWindow(HWND window, WindowWatcher watcher);

}  // namespace terminal
