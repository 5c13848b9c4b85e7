#include "support/MessageBoxAnswerer.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

namespace test {

namespace {

constexpr int textControl = 0xFFFF;
MessageBoxAnswerer* current = nullptr;
std::vector<HWND> answered;  // a box may be activated more than once

std::string textOf(HWND window) {
    std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool isMessageBox(HWND window) {
    char name[16] = "";
    ::GetClassNameA(window, name, sizeof(name));
    return std::strcmp(name, "#32770") == 0 && !CWnd::FromHandlePermanent(window) && ::GetDlgItem(window, textControl);
}

// Whatever lets go of a box that nobody expected.
int anyButton(HWND box) {
    for (const int id : {IDCANCEL, IDNO, IDABORT, IDOK, IDYES})
        if (::GetDlgItem(box, id)) return id;
    return IDCANCEL;
}

}  // namespace

struct MessageBoxHook {
    static void answer(HWND box);
    static LRESULT CALLBACK procedure(int code, WPARAM wParam, LPARAM lParam) {
        const auto window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_ACTIVATE && isMessageBox(window) && std::ranges::find(answered, window) == answered.end())
            answer(window);
        if (code == HCBT_DESTROYWND) std::erase(answered, window);
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
};

void MessageBoxHook::answer(HWND box) {
    answered.push_back(box);
    const MessageBoxSeen seen{textOf(::GetDlgItem(box, textControl)), textOf(box)};
    int button = 0;
    if (current) {
        button = current->nextButton();
        current->m_boxes.push_back(seen);
    } else {
        ADD_FAILURE() << "Unexpected message box \"" << seen.caption << "\": " << seen.text;
    }
    if (current && !::GetDlgItem(box, button))
        ADD_FAILURE() << "The box \"" << seen.text << "\" has no button " << button;
    if (!::GetDlgItem(box, button)) button = anyButton(box);
    ::PostMessageA(box, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(box, button)));
}

void watchMessageBoxes() {
    static const HHOOK hook = ::SetWindowsHookExA(WH_CBT, &MessageBoxHook::procedure, nullptr, ::GetCurrentThreadId());
    static_cast<void>(hook);
}

MessageBoxAnswerer::MessageBoxAnswerer(std::vector<int> buttons)
    : m_buttons(std::move(buttons)), m_outer(std::exchange(current, this)) {
    watchMessageBoxes();
}

MessageBoxAnswerer::~MessageBoxAnswerer() { current = m_outer; }

int MessageBoxAnswerer::nextButton() { return m_buttons[std::min(m_boxes.size(), m_buttons.size() - 1)]; }

std::vector<std::string> MessageBoxAnswerer::texts() const {
    std::vector<std::string> all;
    for (const MessageBoxSeen& box : m_boxes) all.push_back(box.text);
    return all;
}

}  // namespace test
