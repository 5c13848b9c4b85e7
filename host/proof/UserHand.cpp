#include "host/proof/UserHand.h"

#include <utility>

namespace terminal {

namespace {
constexpr UINT kMenuPatience = 5'000;
constexpr UINT kLookPeriod = 20;

// What is done inside a loop that is not ours: of a menu, or of a modal dialog. The item of a menu may open a dialog:
// the outer ones go on.
class Meanwhile {
public:
    // `step` is called again and again as long as this lives.
    explicit Meanwhile(std::function<void()> step)
        : m_step(std::move(step)), m_outer(s_current), m_timer(::SetTimer(nullptr, 0, kLookPeriod, &tick)) {
        s_current = this;
    }
    ~Meanwhile() {
        ::KillTimer(nullptr, m_timer);
        s_current = m_outer;
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
        for (const Meanwhile* each = s_current; each; each = each->m_outer) each->m_step();
    }
    inline static const Meanwhile* s_current = nullptr;
    std::function<void()> m_step;
    const Meanwhile* m_outer;
    UINT_PTR m_timer;
};

// False: the menu has not opened yet, or has no such item.
bool clickItem(UINT command) {
    constexpr UINT kGetMenu = 0x01E1;
    const HWND popup = ::FindWindowA("#32768", nullptr);
    if (!popup || !::IsWindowVisible(popup)) return false;
    const auto menu = reinterpret_cast<HMENU>(::SendMessageA(popup, kGetMenu, 0, 0));
    for (int place = 0; place < ::GetMenuItemCount(menu); ++place) {
        RECT item{};
        if (::GetMenuItemID(menu, place) != command) continue;
        if (!::GetMenuItemRect(nullptr, menu, static_cast<UINT>(place), &item)) return false;
        POINT middle{(item.left + item.right) / 2, (item.top + item.bottom) / 2};
        ::ScreenToClient(popup, &middle);
        quor::sendClick(popup, middle);
        return true;
    }
    return false;
}

HWND dialogOf(HWND owner) {
    struct Search {
        HWND owner, found;
    } search{owner, nullptr};
    constexpr ULONG_PTR kDialogClass = 0x8002;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM data) -> BOOL {
            Search& asked = *reinterpret_cast<Search*>(data);
            const bool isIt = ::GetWindow(window, GW_OWNER) == asked.owner && ::IsWindowVisible(window) &&
                              ::GetClassLongPtrA(window, GCW_ATOM) == kDialogClass;
            if (isIt) asked.found = window;
            return !isIt;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}
}  // namespace

bool pumpUntil(const std::function<bool()>& condition, ULONGLONG milliseconds) {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    while (!condition()) {
        MSG message;
        if (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
            AfxPumpMessage();
        else if (::GetTickCount64() >= end)
            return false;
        else
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

void pumpAll() {
    MSG message;
    pumpUntil([&message] { return !::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); });
}

void bringToFront(CFrameWnd& frame) {
    frame.ShowWindow(SW_SHOWNORMAL);
    frame.BringWindowToTop();
    frame.SetForegroundWindow();
    frame.UpdateWindow();
    pumpAll();
}

void click(HWND window, POINT point, quor::MouseButton button) {
    quor::sendClick(window, point, button);
    pumpAll();
}

void press(std::initializer_list<WORD> keys) {
    quor::sendKeys(keys);
    pumpAll();
}

void type(const std::string& text) {
    quor::sendText(text);
    pumpAll();
}

// The letter waits behind the click and finds the menu open. A menu that does not take it is closed after a while.
void chooseInMenu(HWND window, POINT point, WORD letter) {
    const UINT_PTR guard = ::SetTimer(nullptr, 0, kMenuPatience, [](HWND, UINT, UINT_PTR, DWORD) { ::EndMenu(); });
    quor::sendClick(window, point, quor::MouseButton::right);
    quor::sendKeys({letter});
    pumpAll();
    ::KillTimer(nullptr, guard);
}

void clickInMenu(HWND window, POINT point, UINT command) {
    const ULONGLONG end = ::GetTickCount64() + kMenuPatience;
    bool chosen = false;
    const Meanwhile choosing([&] {
        if (!chosen) chosen = clickItem(command);
        if (::GetTickCount64() >= end) ::EndMenu();
    });
    quor::sendClick(window, point, quor::MouseButton::right);
    pumpAll();
}

bool throughDialog(HWND owner, const std::function<void()>& open, const std::function<void(HWND dialog)>& answer) {
    bool answered = false, cancelled = false;
    ULONGLONG end = ::GetTickCount64() + kPatience;
    const HWND root = ::GetAncestor(owner, GA_ROOT);
    const Meanwhile answering([&] {
        const HWND dialog = dialogOf(root);
        if (cancelled) return;
        if (dialog && !std::exchange(answered, true)) {
            end = ::GetTickCount64() + kPatience;
            answer(dialog);
        } else if (::GetTickCount64() >= end) {  // whatever it is that holds the program
            cancelled = true;
            const HWND holder = dialog ? dialog : ::GetActiveWindow();
            if (holder != root) ::PostMessageA(holder, WM_COMMAND, IDCANCEL, 0);
        }
    });
    open();
    return answered && !cancelled;
}

bool throughColours(HWND owner, const std::function<void()>& open, ColourBox box) {
    return throughDialog(owner, open, [box](HWND dialog) {
        constexpr int kBasicColours = 0x2D0, kColumns = 8, kRows = 6;
        const HWND colours = ::GetDlgItem(dialog, kBasicColours);
        RECT area{};
        ::GetClientRect(colours, &area);
        quor::sendClick(colours, {area.right * (2 * box.column + 1) / (2 * kColumns),
                                  area.bottom * (2 * box.row + 1) / (2 * kRows)});
        quor::sendKeys({VK_RETURN});
    });
}

bool throughFonts(HWND owner, const std::function<void()>& open, const char* points) {
    return throughDialog(owner, open, [points](HWND) {  // face, style, size
        for (const WORD key : {VK_TAB, VK_TAB}) quor::sendKeys({key});
        quor::sendText(points);
        quor::sendKeys({VK_RETURN});
    });
}

}  // namespace terminal
