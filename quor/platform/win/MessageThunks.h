// What stands behind the entries of a message map: how each kind of message is unpacked into a handler's arguments, and
// the functions (thunks) that call a handler. Only MessageMap.h uses it.
#pragma once

#include "quor/platform/win/Wnd.h"

#include <tuple>

class CScrollBar;

namespace quor {

// --- From handles to objects: permanent where there is one, else temporary. ---------------------------------------
QUOR_FRAMEWORK_API CDC* dcFromParam(WPARAM hdc);
QUOR_FRAMEWORK_API CMenu* menuFromParam(WPARAM hmenu);
QUOR_FRAMEWORK_API CScrollBar* scrollBarFromParam(LPARAM hwnd);
inline CWnd* wndFromParam(LPARAM hwnd) { return CWnd::FromHandle(reinterpret_cast<HWND>(hwnd)); }
inline CWnd* wndFromParam(WPARAM hwnd) { return CWnd::FromHandle(reinterpret_cast<HWND>(hwnd)); }
QUOR_FRAMEWORK_API LRESULT brushResult(HBRUSH brush);

// Picks the overload with this signature; the class is the one that declares the member, at or above the map's.
template <class Signature>
struct Pick;
template <class R, class... Args>
struct Pick<R(Args...)> {
    template <class Class>
    static constexpr auto of(R (Class::*member)(Args...)) {
        return member;
    }
};

// --- How a window message is unpacked: one struct for each shape. --------------------------------------------------
inline int xOf(LPARAM lParam) { return static_cast<short>(LOWORD(lParam)); }
inline int yOf(LPARAM lParam) { return static_cast<short>(HIWORD(lParam)); }
inline CPoint pointOf(LPARAM lParam) { return CPoint(xOf(lParam), yOf(lParam)); }

struct NoArgs {
    using Signature = void();
    static std::tuple<> unpack(const AFX_MSG_ARGS&) { return {}; }
};
struct BoolNoArgs : NoArgs {
    using Signature = BOOL();
};
struct UintNoArgs : NoArgs {
    using Signature = UINT();
};
struct ResultNoArgs : NoArgs {
    using Signature = LRESULT();
};
struct CreateArgs {
    using Signature = int(LPCREATESTRUCT);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(reinterpret_cast<LPCREATESTRUCT>(a.lParam)); }
};
struct NcCreateArgs : CreateArgs {
    using Signature = BOOL(LPCREATESTRUCT);
};
struct SizeArgs {  // kind, width, height (or x, y for a move, without the first)
    using Signature = void(UINT, int, int);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(a.wParam), static_cast<int>(LOWORD(a.lParam)),
                          static_cast<int>(HIWORD(a.lParam)));
    }
};
struct MoveArgs {
    using Signature = void(int, int);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(xOf(a.lParam), yOf(a.lParam)); }
};
struct SideRectArgs {
    using Signature = void(UINT, LPRECT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(a.wParam), reinterpret_cast<LPRECT>(a.lParam));
    }
};
struct DcBoolArgs {
    using Signature = BOOL(CDC*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(dcFromParam(a.wParam)); }
};
struct TimerArgs {
    using Signature = void(UINT_PTR);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(static_cast<UINT_PTR>(a.wParam)); }
};
struct WndWParamArgs {
    using Signature = void(CWnd*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(wndFromParam(a.wParam)); }
};
struct WndLParamArgs {
    using Signature = void(CWnd*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(wndFromParam(a.lParam)); }
};
struct ActivateArgs {
    using Signature = void(UINT, CWnd*, BOOL);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(LOWORD(a.wParam)), wndFromParam(a.lParam),
                          static_cast<BOOL>(HIWORD(a.wParam)));
    }
};
struct ActivateAppArgs {
    using Signature = void(BOOL, DWORD);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<BOOL>(a.wParam), static_cast<DWORD>(a.lParam));
    }
};
struct MouseActivateArgs {
    using Signature = int(CWnd*, UINT, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(wndFromParam(a.wParam), static_cast<UINT>(LOWORD(a.lParam)),
                          static_cast<UINT>(HIWORD(a.lParam)));
    }
};
struct MouseArgs {
    using Signature = void(UINT, CPoint);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(static_cast<UINT>(a.wParam), pointOf(a.lParam)); }
};
struct WheelArgs {
    using Signature = BOOL(UINT, short, CPoint);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(LOWORD(a.wParam)), static_cast<short>(HIWORD(a.wParam)), pointOf(a.lParam));
    }
};
struct KeyArgs {
    using Signature = void(UINT, UINT, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(a.wParam), static_cast<UINT>(LOWORD(a.lParam)),
                          static_cast<UINT>(HIWORD(a.lParam)));
    }
};
struct SysCommandArgs {
    using Signature = void(UINT, LPARAM);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(static_cast<UINT>(a.wParam), a.lParam); }
};
struct ContextMenuArgs {
    using Signature = void(CWnd*, CPoint);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(wndFromParam(a.wParam), pointOf(a.lParam)); }
};
struct ShowArgs {
    using Signature = void(BOOL, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<BOOL>(a.wParam), static_cast<UINT>(a.lParam));
    }
};
struct BoolArgs {
    using Signature = void(BOOL);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(static_cast<BOOL>(a.wParam)); }
};
struct NcActivateArgs : BoolArgs {
    using Signature = BOOL(BOOL);
};
struct ScrollArgs {
    using Signature = void(UINT, UINT, CScrollBar*);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(LOWORD(a.wParam)), static_cast<UINT>(HIWORD(a.wParam)),
                          scrollBarFromParam(a.lParam));
    }
};
struct ScrollReflectArgs {
    using Signature = void(UINT, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(LOWORD(a.wParam)), static_cast<UINT>(HIWORD(a.wParam)));
    }
};
struct SetCursorArgs {
    using Signature = BOOL(CWnd*, UINT, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(wndFromParam(a.wParam), static_cast<UINT>(LOWORD(a.lParam)),
                          static_cast<UINT>(HIWORD(a.lParam)));
    }
};
struct NcHitTestArgs {
    using Signature = LRESULT(CPoint);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(pointOf(a.lParam)); }
};
struct NcMouseArgs {
    using Signature = void(UINT, CPoint);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(static_cast<UINT>(a.wParam), pointOf(a.lParam)); }
};
struct NcCalcSizeArgs {
    using Signature = void(BOOL, NCCALCSIZE_PARAMS*);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<BOOL>(a.wParam), reinterpret_cast<NCCALCSIZE_PARAMS*>(a.lParam));
    }
};
struct MinMaxArgs {
    using Signature = void(MINMAXINFO*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(reinterpret_cast<MINMAXINFO*>(a.lParam)); }
};
struct WindowPosArgs {
    using Signature = void(WINDOWPOS*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(reinterpret_cast<WINDOWPOS*>(a.lParam)); }
};
struct StyleArgs {
    using Signature = void(int, LPSTYLESTRUCT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<int>(a.wParam), reinterpret_cast<LPSTYLESTRUCT>(a.lParam));
    }
};
template <class Struct>
struct ItemArgs {  // owner-drawn items, seen by the parent
    using Signature = void(int, Struct*);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<int>(a.wParam), reinterpret_cast<Struct*>(a.lParam));
    }
};
struct CompareArgs : ItemArgs<COMPAREITEMSTRUCT> {
    using Signature = int(int, COMPAREITEMSTRUCT*);
};
template <class Struct, class Result = void>
struct ItemReflectArgs {  // the same, seen by the control
    using Signature = Result(Struct*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(reinterpret_cast<Struct*>(a.lParam)); }
};
// All WM_CTLCOLOR messages are one to a map; `message` tells which.
struct CtlColorArgs {
    using Signature = HBRUSH(CDC*, CWnd*, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(dcFromParam(a.wParam), wndFromParam(a.lParam), a.message - WM_CTLCOLORMSGBOX);
    }
};
struct CtlColorReflectArgs {
    using Signature = HBRUSH(CDC*, UINT);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(dcFromParam(a.wParam), a.message - WM_REFLECT_BASE - WM_CTLCOLORMSGBOX);
    }
};
struct InitMenuPopupArgs {
    using Signature = void(CMenu*, UINT, BOOL);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(menuFromParam(a.wParam), static_cast<UINT>(LOWORD(a.lParam)),
                          static_cast<BOOL>(HIWORD(a.lParam)));
    }
};
struct InitMenuArgs {
    using Signature = void(CMenu*);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(menuFromParam(a.wParam)); }
};
struct ParentNotifyArgs {
    using Signature = void(UINT, LPARAM);
    static auto unpack(const AFX_MSG_ARGS& a) { return std::tuple(static_cast<UINT>(a.wParam), a.lParam); }
};
struct SettingArgs {
    using Signature = void(UINT, LPCSTR);
    static auto unpack(const AFX_MSG_ARGS& a) {
        return std::tuple(static_cast<UINT>(a.wParam), reinterpret_cast<LPCSTR>(a.lParam));
    }
};
inline LRESULT resultOf(HBRUSH brush) { return brushResult(brush); }
template <class Number>
LRESULT resultOf(Number number) {
    return static_cast<LRESULT>(number);
}

// --- Thunks. ---------------------------------------------------------------------------------------------------------
template <class Target, class Unpacker, auto Member>
bool onWindowMessage(CCmdTarget* target, AFX_MSG_ARGS& args) {
    auto* self = static_cast<Target*>(target);
    const auto call = [self](auto... values) { return (self->*Member)(values...); };
    if constexpr (std::is_void_v<decltype(std::apply(call, Unpacker::unpack(args)))>) {
        std::apply(call, Unpacker::unpack(args));
        *args.result = 0;
    } else {
        *args.result = resultOf(std::apply(call, Unpacker::unpack(args)));
    }
    return true;
}

// A brush of null means: the parent's, or the default one.
template <class Target, class Unpacker, auto Member>
bool onReflectedColour(CCmdTarget* target, AFX_MSG_ARGS& args) {
    onWindowMessage<Target, Unpacker, Member>(target, args);
    return *args.result != 0;
}

template <class Target, auto Member>
bool onMessage(CCmdTarget* target, AFX_MSG_ARGS& args) {
    *args.result = (static_cast<Target*>(target)->*Member)(args.wParam, args.lParam);
    return true;
}
template <class Target, auto Member>
bool onCommand(CCmdTarget* target, AFX_MSG_ARGS&) {
    (static_cast<Target*>(target)->*Member)();
    return true;
}
template <class Target, auto Member>
bool onCommandEx(CCmdTarget* target, AFX_MSG_ARGS& args) {
    return (static_cast<Target*>(target)->*Member)(args.id) != FALSE;
}
template <class Target, auto Member>
bool onCommandRange(CCmdTarget* target, AFX_MSG_ARGS& args) {
    (static_cast<Target*>(target)->*Member)(args.id);
    return true;
}
template <class Target, auto Member>
bool onReflectedControlEx(CCmdTarget* target, AFX_MSG_ARGS&) {
    return (static_cast<Target*>(target)->*Member)() != FALSE;
}
template <class Target, auto Member>
bool onUpdateCommandUi(CCmdTarget* target, AFX_MSG_ARGS& args) {
    auto* ui = static_cast<CCmdUI*>(args.extra);
    (static_cast<Target*>(target)->*Member)(ui);
    const bool handled = !ui->m_bContinueRouting;
    ui->m_bContinueRouting = FALSE;
    return handled;
}
template <class Target, auto Member>
bool onNotify(CCmdTarget* target, AFX_MSG_ARGS& args) {
    auto* notify = static_cast<AFX_NOTIFY*>(args.extra);
    (static_cast<Target*>(target)->*Member)(notify->pNMHDR, notify->pResult);
    return true;
}
template <class Target, auto Member>
bool onNotifyEx(CCmdTarget* target, AFX_MSG_ARGS& args) {
    auto* notify = static_cast<AFX_NOTIFY*>(args.extra);
    return (static_cast<Target*>(target)->*Member)(args.id, notify->pNMHDR, notify->pResult) != FALSE;
}
template <class Target, auto Member>
bool onNotifyRange(CCmdTarget* target, AFX_MSG_ARGS& args) {
    auto* notify = static_cast<AFX_NOTIFY*>(args.extra);
    (static_cast<Target*>(target)->*Member)(args.id, notify->pNMHDR, notify->pResult);
    return true;
}
template <class Target, auto Member>
bool onReflectedNotifyEx(CCmdTarget* target, AFX_MSG_ARGS& args) {
    auto* notify = static_cast<AFX_NOTIFY*>(args.extra);
    return (static_cast<Target*>(target)->*Member)(notify->pNMHDR, notify->pResult) != FALSE;
}

}  // namespace quor
