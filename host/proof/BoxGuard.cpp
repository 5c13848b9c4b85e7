#include "host/proof/BoxGuard.h"

#include <algorithm>
#include <cstring>

namespace terminal {

namespace {
constexpr int kTextControl = 0xFFFF;
constexpr const char* kDialogClass = "#32770";
BoxGuard* current = nullptr;

bool isMessageBox(HWND window) {
    char name[16] = "";
    ::GetClassNameA(window, name, sizeof name);
    return std::strcmp(name, kDialogClass) == 0 && !CWnd::FromHandlePermanent(window) &&
           ::GetDlgItem(window, kTextControl);
}
}  // namespace

BoxGuard::BoxGuard() : m_hook(::SetWindowsHookExA(WH_CBT, &hook, nullptr, ::GetCurrentThreadId())) { current = this; }

BoxGuard::~BoxGuard() {
    ::UnhookWindowsHookEx(m_hook);
    current = nullptr;
}

LRESULT CALLBACK BoxGuard::hook(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (current && code == HCBT_ACTIVATE && isMessageBox(window)) current->close(window);
    if (current && code == HCBT_DESTROYWND) std::erase(current->m_closing, window);
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

// The button that lets go: what was asked is not done.
void BoxGuard::close(HWND box) {
    if (std::find(m_closing.begin(), m_closing.end(), box) != m_closing.end()) return;
    m_closing.push_back(box);
    char text[512] = "";
    ::GetWindowTextA(::GetDlgItem(box, kTextControl), text, sizeof text);
    m_texts.push_back(text);
    for (const int button : {IDCANCEL, IDNO, IDABORT, IDOK})
        if (const HWND control = ::GetDlgItem(box, button)) {
            ::PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(control));
            return;
        }
}

}  // namespace terminal
