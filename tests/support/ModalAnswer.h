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
    ModalAnswer(HWND owner, std::function<void(HWND)> answer) {
        s_owner = owner;
        s_answer = std::move(answer);
        s_timer = ::SetTimer(nullptr, 0, kPeriod, &look);
    }
    ModalAnswer(const ModalAnswer&) = delete;
    ModalAnswer& operator=(const ModalAnswer&) = delete;
    ~ModalAnswer() {
        ::KillTimer(nullptr, s_timer);
        EXPECT_EQ(std::exchange(s_answer, nullptr), nullptr) << "No dialog opened";
    }

private:
    static constexpr UINT kPeriod = 10;               // ms
    static constexpr ULONG_PTR kDialogAtom = 0x8002;  // the class of all dialogs

    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) { ::EnumThreadWindows(::GetCurrentThreadId(), &take, 0); }
    static BOOL CALLBACK take(HWND window, LPARAM) {
        const bool isIt = s_answer && ::GetWindow(window, GW_OWNER) == s_owner && ::IsWindowVisible(window) &&
                          ::GetClassLongPtrA(window, GCW_ATOM) == kDialogAtom;
        if (isIt) {
            ::KillTimer(nullptr, s_timer);  // or on a busy machine the answer would never see an empty queue
            std::exchange(s_answer, nullptr)(window);
        }
        return !isIt;
    }

    inline static HWND s_owner = nullptr;
    inline static std::function<void(HWND)> s_answer;
    inline static UINT_PTR s_timer = 0;
};

// In the system's colour dialog: this colour, then OK.
inline void chooseColor(HWND dialog, COLORREF color) {
    constexpr int kRed = 706;  // green and blue follow
    const int parts[] = {GetRValue(color), GetGValue(color), GetBValue(color)};
    for (int i = 0; i < 3; ++i) ::SetDlgItemInt(dialog, kRed + i, static_cast<UINT>(parts[i]), FALSE);
    ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

}  // namespace test
