#include "host/panes/WindowWatch.h"

#include <deque>
#include <unordered_map>
#include <utility>

namespace terminal {

class WindowWatchers {
public:
    static void add(HWND window, WindowWatcher watcher) {
        std::shared_ptr<WindowWatchers>& own = all()[window];
        if (!own) own = std::make_shared<WindowWatchers>(window);
        own->m_watchers.push_back(std::move(watcher));
    }

    // A window has one kind of procedure, and keeps it.
    explicit WindowWatchers(HWND window) : m_wide(::IsWindowUnicode(window) != FALSE) {
        const auto procedure = reinterpret_cast<LONG_PTR>(&WindowWatchers::proc);
        m_former = reinterpret_cast<WNDPROC>(m_wide ? ::SetWindowLongPtrW(window, GWLP_WNDPROC, procedure)
                                                    : ::SetWindowLongPtrA(window, GWLP_WNDPROC, procedure));
    }

    // `at` watchers have not seen it yet.
    LRESULT send(std::size_t at, const WindowMessage& message) {
        if (at > 0) return m_watchers[at - 1](message, PassOn(*this, at - 1, message));
        const auto call = m_wide ? &::CallWindowProcW : &::CallWindowProcA;
        return call(m_former, message.window, message.message, message.wParam, message.lParam);
    }

private:
    using All = std::unordered_map<HWND, std::shared_ptr<WindowWatchers>>;
    static All& all() {
        static All windows;
        return windows;
    }

    static LRESULT CALLBACK proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        const auto found = all().find(window);
        if (found == all().end()) return 0;  // the last message is on its way
        const std::shared_ptr<WindowWatchers> own = found->second;
        if (message == WM_NCDESTROY) all().erase(found);
        return own->send(own->m_watchers.size(), {window, message, wParam, lParam});
    }

    std::deque<WindowWatcher> m_watchers;  // one that comes while another works moves none
    WNDPROC m_former = nullptr;
    bool m_wide;
};

LRESULT PassOn::operator()() const { return m_watchers.send(m_at, m_message); }

void watchWindow(HWND window, WindowWatcher watcher) {
    if (::IsWindow(window)) WindowWatchers::add(window, std::move(watcher));
}

}  // namespace terminal
