// The macros of message maps. Their typed thunks are in MessageThunks.h.
//
//     BEGIN_MESSAGE_MAP(CPane, CWnd)
//         ON_WM_SIZE()
//         ON_COMMAND(ID_EXIT, &CPane::OnExit)
//         ON_NOTIFY_REFLECT(LVN_COLUMNCLICK, &CPane::OnColumnClick)
//     END_MESSAGE_MAP()
//
// Handlers are named as `&Class::Function`. ON_WM_ macros know the handler's name and signature; a handler with
// another signature does not compile. Handlers may be protected: the map is a member of their class.
#pragma once

#include "quor/platform/win/MessageThunks.h"

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                        \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                 \
        using ThisClass [[maybe_unused]] = theClass;                                  \
        using TheBaseClass = baseClass;                                               \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                      \
    { 0, 0, 0, 0, nullptr, nullptr }                                           \
    }                                                                          \
    ;                                                                          \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries}; \
    return &map;                                                               \
    }

#define QUOR_CODE16(code) (static_cast<UINT>(static_cast<WORD>(static_cast<int>(code))))
#define QUOR_THUNK(thunk, signature, member) (&quor::thunk<ThisClass, quor::Pick<signature>::of(member)>)
#define QUOR_WM(message, unpacker, member)             \
    {message,                                          \
     0,                                                \
     0,                                                \
     0,                                                \
     nullptr,                                          \
     &quor::onWindowMessage<ThisClass, quor::unpacker, \
                            quor::Pick<quor::unpacker::Signature>::of(&ThisClass::member)>},
#define QUOR_WM_ITEM(message, unpacker, structure, member)        \
    {message,                                                     \
     0,                                                           \
     0,                                                           \
     0,                                                           \
     nullptr,                                                     \
     &quor::onWindowMessage<ThisClass, quor::unpacker<structure>, \
                            quor::Pick<quor::unpacker<structure>::Signature>::of(&ThisClass::member)>},

// --- Messages by number, and registered messages: LRESULT f(WPARAM, LPARAM). -----------------------------------------
#define ON_MESSAGE(message, member) {message, 0, 0, 0, nullptr, QUOR_THUNK(onMessage, LRESULT(WPARAM, LPARAM), member)},
// `variable` is a `const UINT` or `UINT` filled by RegisterWindowMessage; it may be filled after the map was built.
#define ON_REGISTERED_MESSAGE(variable, member) \
    {0xC000, 0, 0, 0, &(variable), QUOR_THUNK(onMessage, LRESULT(WPARAM, LPARAM), member)},

// --- Commands: void f(); range and EX forms take the id. -------------------------------------------------------------
#define QUOR_COMMAND(code, first, last, thunk, signature, member) \
    {WM_COMMAND,                                                  \
     QUOR_CODE16(code),                                           \
     static_cast<UINT>(first),                                    \
     static_cast<UINT>(last),                                     \
     nullptr,                                                     \
     QUOR_THUNK(thunk, signature, member)},
#define ON_COMMAND(id, member) QUOR_COMMAND(CN_COMMAND, id, id, onCommand, void(), member)
#define ON_COMMAND_EX(id, member) QUOR_COMMAND(CN_COMMAND, id, id, onCommandEx, BOOL(UINT), member)
#define ON_COMMAND_RANGE(first, last, member) QUOR_COMMAND(CN_COMMAND, first, last, onCommandRange, void(UINT), member)
#define ON_UPDATE_COMMAND_UI(id, member) \
    QUOR_COMMAND(CN_UPDATE_COMMAND_UI, id, id, onUpdateCommandUi, void(CCmdUI*), member)
#define ON_UPDATE_COMMAND_UI_RANGE(first, last, member) \
    QUOR_COMMAND(CN_UPDATE_COMMAND_UI, first, last, onUpdateCommandUi, void(CCmdUI*), member)

// --- Control notifications: void f(). --------------------------------------------------------------------------------
#define ON_CONTROL(code, id, member) QUOR_COMMAND(code, id, id, onCommand, void(), member)
#define ON_CONTROL_RANGE(code, first, last, member) QUOR_COMMAND(code, first, last, onCommandRange, void(UINT), member)
#define QUOR_REFLECTED(base, code, thunk, signature, member) \
    {WM_REFLECT_BASE + base, QUOR_CODE16(code), 0, 0, nullptr, QUOR_THUNK(thunk, signature, member)},
#define ON_CONTROL_REFLECT(code, member) QUOR_REFLECTED(WM_COMMAND, code, onCommand, void(), member)
// BOOL f(): FALSE hands the notification on to the parent.
#define ON_CONTROL_REFLECT_EX(code, member) QUOR_REFLECTED(WM_COMMAND, code, onReflectedControlEx, BOOL(), member)

#define ON_BN_CLICKED(id, member) ON_CONTROL(BN_CLICKED, id, member)
#define ON_BN_DOUBLECLICKED(id, member) ON_CONTROL(BN_DOUBLECLICKED, id, member)
#define ON_BN_SETFOCUS(id, member) ON_CONTROL(BN_SETFOCUS, id, member)
#define ON_BN_KILLFOCUS(id, member) ON_CONTROL(BN_KILLFOCUS, id, member)
#define ON_STN_CLICKED(id, member) ON_CONTROL(STN_CLICKED, id, member)
#define ON_STN_DBLCLK(id, member) ON_CONTROL(STN_DBLCLK, id, member)
#define ON_EN_SETFOCUS(id, member) ON_CONTROL(EN_SETFOCUS, id, member)
#define ON_EN_KILLFOCUS(id, member) ON_CONTROL(EN_KILLFOCUS, id, member)
#define ON_EN_CHANGE(id, member) ON_CONTROL(EN_CHANGE, id, member)
#define ON_EN_UPDATE(id, member) ON_CONTROL(EN_UPDATE, id, member)
#define ON_EN_MAXTEXT(id, member) ON_CONTROL(EN_MAXTEXT, id, member)
#define ON_LBN_DBLCLK(id, member) ON_CONTROL(LBN_DBLCLK, id, member)
#define ON_LBN_SELCHANGE(id, member) ON_CONTROL(LBN_SELCHANGE, id, member)
#define ON_LBN_SETFOCUS(id, member) ON_CONTROL(LBN_SETFOCUS, id, member)
#define ON_LBN_KILLFOCUS(id, member) ON_CONTROL(LBN_KILLFOCUS, id, member)
#define ON_CLBN_CHKCHANGE(id, member) ON_CONTROL(CLBN_CHKCHANGE, id, member)
#define ON_CBN_SELCHANGE(id, member) ON_CONTROL(CBN_SELCHANGE, id, member)
#define ON_CBN_DBLCLK(id, member) ON_CONTROL(CBN_DBLCLK, id, member)
#define ON_CBN_SETFOCUS(id, member) ON_CONTROL(CBN_SETFOCUS, id, member)
#define ON_CBN_KILLFOCUS(id, member) ON_CONTROL(CBN_KILLFOCUS, id, member)
#define ON_CBN_EDITCHANGE(id, member) ON_CONTROL(CBN_EDITCHANGE, id, member)
#define ON_CBN_EDITUPDATE(id, member) ON_CONTROL(CBN_EDITUPDATE, id, member)
#define ON_CBN_DROPDOWN(id, member) ON_CONTROL(CBN_DROPDOWN, id, member)
#define ON_CBN_CLOSEUP(id, member) ON_CONTROL(CBN_CLOSEUP, id, member)
#define ON_CBN_SELENDOK(id, member) ON_CONTROL(CBN_SELENDOK, id, member)
#define ON_CBN_SELENDCANCEL(id, member) ON_CONTROL(CBN_SELENDCANCEL, id, member)

// --- WM_NOTIFY: void f(NMHDR*, LRESULT*). The EX forms return BOOL (FALSE goes on) and, but for reflection, take the
// id.
#define QUOR_NOTIFY(code, first, last, thunk, signature, member) \
    {WM_NOTIFY,                                                  \
     QUOR_CODE16(code),                                          \
     static_cast<UINT>(first),                                   \
     static_cast<UINT>(last),                                    \
     nullptr,                                                    \
     QUOR_THUNK(thunk, signature, member)},
#define ON_NOTIFY(code, id, member) QUOR_NOTIFY(code, id, id, onNotify, void(NMHDR*, LRESULT*), member)
#define ON_NOTIFY_EX(code, id, member) QUOR_NOTIFY(code, id, id, onNotifyEx, BOOL(UINT, NMHDR*, LRESULT*), member)
#define ON_NOTIFY_RANGE(code, first, last, member) \
    QUOR_NOTIFY(code, first, last, onNotifyRange, void(UINT, NMHDR*, LRESULT*), member)
#define ON_NOTIFY_EX_RANGE(code, first, last, member) \
    QUOR_NOTIFY(code, first, last, onNotifyEx, BOOL(UINT, NMHDR*, LRESULT*), member)
#define ON_NOTIFY_REFLECT(code, member) QUOR_REFLECTED(WM_NOTIFY, code, onNotify, void(NMHDR*, LRESULT*), member)
#define ON_NOTIFY_REFLECT_EX(code, member) \
    QUOR_REFLECTED(WM_NOTIFY, code, onReflectedNotifyEx, BOOL(NMHDR*, LRESULT*), member)

// --- Window messages. ------------------------------------------------------------------------------------------------
#define ON_WM_CREATE() QUOR_WM(WM_CREATE, CreateArgs, OnCreate)
#define ON_WM_NCCREATE() QUOR_WM(WM_NCCREATE, NcCreateArgs, OnNcCreate)
#define ON_WM_DESTROY() QUOR_WM(WM_DESTROY, NoArgs, OnDestroy)
#define ON_WM_NCDESTROY() QUOR_WM(WM_NCDESTROY, NoArgs, OnNcDestroy)
#define ON_WM_CLOSE() QUOR_WM(WM_CLOSE, NoArgs, OnClose)
#define ON_WM_QUERYENDSESSION() QUOR_WM(WM_QUERYENDSESSION, BoolNoArgs, OnQueryEndSession)
#define ON_WM_ENDSESSION() QUOR_WM(WM_ENDSESSION, BoolArgs, OnEndSession)
#define ON_WM_SIZE() QUOR_WM(WM_SIZE, SizeArgs, OnSize)
#define ON_WM_SIZING() QUOR_WM(WM_SIZING, SideRectArgs, OnSizing)
#define ON_WM_MOVE() QUOR_WM(WM_MOVE, MoveArgs, OnMove)
#define ON_WM_MOVING() QUOR_WM(WM_MOVING, SideRectArgs, OnMoving)
// void OnEnterSizeMove(), OnExitSizeMove().
#define ON_WM_ENTERSIZEMOVE() QUOR_WM(WM_ENTERSIZEMOVE, NoArgs, OnEnterSizeMove)
#define ON_WM_EXITSIZEMOVE() QUOR_WM(WM_EXITSIZEMOVE, NoArgs, OnExitSizeMove)
#define ON_WM_PAINT() QUOR_WM(WM_PAINT, NoArgs, OnPaint)
#define ON_WM_NCPAINT() QUOR_WM(WM_NCPAINT, NoArgs, OnNcPaint)
#define ON_WM_ERASEBKGND() QUOR_WM(WM_ERASEBKGND, DcBoolArgs, OnEraseBkgnd)
#define ON_WM_TIMER() QUOR_WM(WM_TIMER, TimerArgs, OnTimer)
#define ON_WM_SETFOCUS() QUOR_WM(WM_SETFOCUS, WndWParamArgs, OnSetFocus)
#define ON_WM_KILLFOCUS() QUOR_WM(WM_KILLFOCUS, WndWParamArgs, OnKillFocus)
#define ON_WM_CAPTURECHANGED() QUOR_WM(WM_CAPTURECHANGED, WndLParamArgs, OnCaptureChanged)
#define ON_WM_CANCELMODE() QUOR_WM(WM_CANCELMODE, NoArgs, OnCancelMode)
#define ON_WM_ACTIVATE() QUOR_WM(WM_ACTIVATE, ActivateArgs, OnActivate)
#define ON_WM_NCACTIVATE() QUOR_WM(WM_NCACTIVATE, NcActivateArgs, OnNcActivate)
#define ON_WM_ACTIVATEAPP() QUOR_WM(WM_ACTIVATEAPP, ActivateAppArgs, OnActivateApp)
#define ON_WM_MOUSEACTIVATE() QUOR_WM(WM_MOUSEACTIVATE, MouseActivateArgs, OnMouseActivate)
#define ON_WM_MOUSEMOVE() QUOR_WM(WM_MOUSEMOVE, MouseArgs, OnMouseMove)
#define ON_WM_MOUSELEAVE() QUOR_WM(WM_MOUSELEAVE, NoArgs, OnMouseLeave)
#define ON_WM_MOUSEWHEEL() QUOR_WM(WM_MOUSEWHEEL, WheelArgs, OnMouseWheel)
#define ON_WM_LBUTTONDOWN() QUOR_WM(WM_LBUTTONDOWN, MouseArgs, OnLButtonDown)
#define ON_WM_LBUTTONUP() QUOR_WM(WM_LBUTTONUP, MouseArgs, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() QUOR_WM(WM_LBUTTONDBLCLK, MouseArgs, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() QUOR_WM(WM_RBUTTONDOWN, MouseArgs, OnRButtonDown)
#define ON_WM_RBUTTONUP() QUOR_WM(WM_RBUTTONUP, MouseArgs, OnRButtonUp)
#define ON_WM_RBUTTONDBLCLK() QUOR_WM(WM_RBUTTONDBLCLK, MouseArgs, OnRButtonDblClk)
#define ON_WM_MBUTTONDOWN() QUOR_WM(WM_MBUTTONDOWN, MouseArgs, OnMButtonDown)
#define ON_WM_MBUTTONUP() QUOR_WM(WM_MBUTTONUP, MouseArgs, OnMButtonUp)
#define ON_WM_MBUTTONDBLCLK() QUOR_WM(WM_MBUTTONDBLCLK, MouseArgs, OnMButtonDblClk)
#define ON_WM_NCLBUTTONDOWN() QUOR_WM(WM_NCLBUTTONDOWN, NcMouseArgs, OnNcLButtonDown)
#define ON_WM_NCLBUTTONUP() QUOR_WM(WM_NCLBUTTONUP, NcMouseArgs, OnNcLButtonUp)
#define ON_WM_NCMOUSEMOVE() QUOR_WM(WM_NCMOUSEMOVE, NcMouseArgs, OnNcMouseMove)
#define ON_WM_NCHITTEST() QUOR_WM(WM_NCHITTEST, NcHitTestArgs, OnNcHitTest)
#define ON_WM_NCCALCSIZE() QUOR_WM(WM_NCCALCSIZE, NcCalcSizeArgs, OnNcCalcSize)
#define ON_WM_KEYDOWN() QUOR_WM(WM_KEYDOWN, KeyArgs, OnKeyDown)
#define ON_WM_KEYUP() QUOR_WM(WM_KEYUP, KeyArgs, OnKeyUp)
#define ON_WM_CHAR() QUOR_WM(WM_CHAR, KeyArgs, OnChar)
#define ON_WM_SYSKEYDOWN() QUOR_WM(WM_SYSKEYDOWN, KeyArgs, OnSysKeyDown)
#define ON_WM_SYSKEYUP() QUOR_WM(WM_SYSKEYUP, KeyArgs, OnSysKeyUp)
#define ON_WM_SYSCHAR() QUOR_WM(WM_SYSCHAR, KeyArgs, OnSysChar)
#define ON_WM_SYSCOMMAND() QUOR_WM(WM_SYSCOMMAND, SysCommandArgs, OnSysCommand)
#define ON_WM_GETDLGCODE() QUOR_WM(WM_GETDLGCODE, UintNoArgs, OnGetDlgCode)
#define ON_WM_CONTEXTMENU() QUOR_WM(WM_CONTEXTMENU, ContextMenuArgs, OnContextMenu)
#define ON_WM_SHOWWINDOW() QUOR_WM(WM_SHOWWINDOW, ShowArgs, OnShowWindow)
#define ON_WM_ENABLE() QUOR_WM(WM_ENABLE, BoolArgs, OnEnable)
#define ON_WM_HSCROLL() QUOR_WM(WM_HSCROLL, ScrollArgs, OnHScroll)
#define ON_WM_VSCROLL() QUOR_WM(WM_VSCROLL, ScrollArgs, OnVScroll)
#define ON_WM_SETCURSOR() QUOR_WM(WM_SETCURSOR, SetCursorArgs, OnSetCursor)
#define ON_WM_GETMINMAXINFO() QUOR_WM(WM_GETMINMAXINFO, MinMaxArgs, OnGetMinMaxInfo)
#define ON_WM_WINDOWPOSCHANGING() QUOR_WM(WM_WINDOWPOSCHANGING, WindowPosArgs, OnWindowPosChanging)
#define ON_WM_WINDOWPOSCHANGED() QUOR_WM(WM_WINDOWPOSCHANGED, WindowPosArgs, OnWindowPosChanged)
#define ON_WM_STYLECHANGED() QUOR_WM(WM_STYLECHANGED, StyleArgs, OnStyleChanged)
#define ON_WM_STYLECHANGING() QUOR_WM(WM_STYLECHANGING, StyleArgs, OnStyleChanging)
#define ON_WM_SYSCOLORCHANGE() QUOR_WM(WM_SYSCOLORCHANGE, NoArgs, OnSysColorChange)
// LRESULT OnThemeChanged().
#define ON_WM_THEMECHANGED() QUOR_WM(WM_THEMECHANGED, ResultNoArgs, OnThemeChanged)
#define ON_WM_CUT() QUOR_WM(WM_CUT, NoArgs, OnCut)
#define ON_WM_COPY() QUOR_WM(WM_COPY, NoArgs, OnCopy)
#define ON_WM_PASTE() QUOR_WM(WM_PASTE, NoArgs, OnPaste)
#define ON_WM_CLEAR() QUOR_WM(WM_CLEAR, NoArgs, OnClear)
#define ON_WM_SETTINGCHANGE() QUOR_WM(WM_SETTINGCHANGE, SettingArgs, OnSettingChange)
#define ON_WM_INITMENU() QUOR_WM(WM_INITMENU, InitMenuArgs, OnInitMenu)
#define ON_WM_INITMENUPOPUP() QUOR_WM(WM_INITMENUPOPUP, InitMenuPopupArgs, OnInitMenuPopup)
#define ON_WM_PARENTNOTIFY() QUOR_WM(WM_PARENTNOTIFY, ParentNotifyArgs, OnParentNotify)
// Owner-drawn controls and colours. The parent's handler is asked first; CWnd's own hands the message to the control.
#define ON_WM_DRAWITEM() QUOR_WM_ITEM(WM_DRAWITEM, ItemArgs, DRAWITEMSTRUCT, OnDrawItem)
#define ON_WM_MEASUREITEM() QUOR_WM_ITEM(WM_MEASUREITEM, ItemArgs, MEASUREITEMSTRUCT, OnMeasureItem)
#define ON_WM_DELETEITEM() QUOR_WM_ITEM(WM_DELETEITEM, ItemArgs, DELETEITEMSTRUCT, OnDeleteItem)
#define ON_WM_COMPAREITEM() QUOR_WM(WM_COMPAREITEM, CompareArgs, OnCompareItem)
#define ON_WM_CTLCOLOR() QUOR_WM(WM_CTLCOLORMSGBOX, CtlColorArgs, OnCtlColor)
// The control's side: void DrawItem(LPDRAWITEMSTRUCT), void MeasureItem(LPMEASUREITEMSTRUCT), HBRUSH CtlColor(CDC*,
// UINT) (null: the parent decides), void HScroll(UINT, UINT), void VScroll(UINT, UINT).
#define ON_WM_DRAWITEM_REFLECT() QUOR_WM_ITEM(WM_REFLECT_BASE + WM_DRAWITEM, ItemReflectArgs, DRAWITEMSTRUCT, DrawItem)
#define ON_WM_MEASUREITEM_REFLECT() \
    QUOR_WM_ITEM(WM_REFLECT_BASE + WM_MEASUREITEM, ItemReflectArgs, MEASUREITEMSTRUCT, MeasureItem)
#define ON_WM_DELETEITEM_REFLECT() \
    QUOR_WM_ITEM(WM_REFLECT_BASE + WM_DELETEITEM, ItemReflectArgs, DELETEITEMSTRUCT, DeleteItem)
#define ON_WM_HSCROLL_REFLECT() QUOR_WM(WM_REFLECT_BASE + WM_HSCROLL, ScrollReflectArgs, HScroll)
#define ON_WM_VSCROLL_REFLECT() QUOR_WM(WM_REFLECT_BASE + WM_VSCROLL, ScrollReflectArgs, VScroll)
#define ON_WM_CTLCOLOR_REFLECT()                                    \
    {WM_REFLECT_BASE + WM_CTLCOLORMSGBOX,                           \
     0,                                                             \
     0,                                                             \
     0,                                                             \
     nullptr,                                                       \
     &quor::onReflectedColour<ThisClass, quor::CtlColorReflectArgs, \
                              quor::Pick<quor::CtlColorReflectArgs::Signature>::of(&ThisClass::CtlColor)>},
