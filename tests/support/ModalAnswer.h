// Answers the next modal dialog that a window opens, the system's included, from inside the dialog's message loop. The
// test fails if none came.
#pragma once

#include "quor/platform/Framework.h"

#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace test {

class ModalAnswer {
public:
    ModalAnswer(HWND owner, std::function<void(HWND)> answer)
        : m_owner(owner), m_answer(std::move(answer)), m_timer(::SetTimer(nullptr, 0, kPeriod, &look)) {
        s_current = this;
    }
    ModalAnswer(const ModalAnswer&) = delete;
    ModalAnswer& operator=(const ModalAnswer&) = delete;
    ~ModalAnswer() {
        ::KillTimer(nullptr, m_timer);
        s_current = nullptr;
        EXPECT_EQ(m_answer, nullptr) << "No dialog opened";
    }

private:
    static constexpr UINT kPeriod = 10;  // ms

    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
        HWND found = nullptr;
        ::EnumThreadWindows(::GetCurrentThreadId(), &take, reinterpret_cast<LPARAM>(&found));
        if (found && s_current->m_answer) std::exchange(s_current->m_answer, nullptr)(found);
    }
    static BOOL CALLBACK take(HWND window, LPARAM found) {
        const bool isIt = ::GetWindow(window, GW_OWNER) == s_current->m_owner && ::IsWindowVisible(window) &&
                          ::GetClassLongPtrA(window, GCW_ATOM) == kDialogAtom;
        if (isIt) *reinterpret_cast<HWND*>(found) = window;
        return !isIt;
    }
    static constexpr ULONG_PTR kDialogAtom = 0x8002;  // the class of all dialogs

    inline static ModalAnswer* s_current = nullptr;
    HWND m_owner;
    std::function<void(HWND)> m_answer;
    UINT_PTR m_timer;
};

// In the system's colour dialog: this colour, then OK.
inline void chooseColor(HWND dialog, COLORREF color) {
    constexpr int kRed = 706, kGreen = 707, kBlue = 708;
    ::SetDlgItemInt(dialog, kRed, GetRValue(color), FALSE);
    ::SetDlgItemInt(dialog, kGreen, GetGValue(color), FALSE);
    ::SetDlgItemInt(dialog, kBlue, GetBValue(color), FALSE);
    ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

}  // namespace test
