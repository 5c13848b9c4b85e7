// The heart of CWnd: which object belongs to a handle, how an object gets its window, and the road of a message.
#include "quor/platform/win/WndInternal.h"

#include <array>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

using quor::WindowCore;
using quor::windowState;

quor::WindowState& quor::windowState() {
    static WindowState& state = *new WindowState;
    return state;
}

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
    ON_WM_PARENTNOTIFY()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_DELETEITEM()
    ON_WM_COMPAREITEM()
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

CWnd::CWnd() = default;

CWnd::~CWnd() {
    if (m_hWnd == nullptr || FromHandlePermanent(m_hWnd) != this) return;
    ::DestroyWindow(m_hWnd);
    if (m_hWnd) Detach();  // the window was another thread's
}

// --- Handles and objects -------------------------------------------------------------------------------------------

CWnd* CWnd::FromHandlePermanent(HWND hWnd) {
    const auto& permanent = windowState().permanent;
    const auto found = permanent.find(hWnd);
    return found == permanent.end() ? nullptr : found->second;
}

CWnd* CWnd::FromHandle(HWND hWnd) {
    if (!hWnd) return nullptr;
    if (CWnd* owner = FromHandlePermanent(hWnd)) return owner;
    CWnd*& object = windowState().temporary[hWnd];
    if (!object) object = new CWnd;
    object->m_hWnd = hWnd;
    object->m_nFlags |= WF_TEMPORARY;
    return object;
}

void CWnd::DeleteTempMap() {
    auto& temporary = windowState().temporary;
    for (auto& entry : temporary) {
        entry.second->m_hWnd = nullptr;
        delete entry.second;
    }
    temporary.clear();
}

BOOL CWnd::Attach(HWND hWnd) {
    if (!hWnd || m_hWnd || FromHandlePermanent(hWnd)) return FALSE;
    windowState().permanent[hWnd] = this;
    m_hWnd = hWnd;
    return TRUE;
}

HWND CWnd::Detach() {
    const HWND window = m_hWnd;
    if (FromHandlePermanent(window) == this) windowState().permanent.erase(window);
    m_hWnd = nullptr;
    return window;
}

void WindowCore::takeOver(CWnd& window) {
    const auto former = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window.m_hWnd, GWLP_WNDPROC));
    if (former == &AfxWndProc) return;
    window.m_pfnSuper = former;
    ::SetWindowLongPtrA(window.m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc));
}

void WindowCore::giveBack(CWnd& window) {
    const auto current = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window.m_hWnd, GWLP_WNDPROC));
    if (window.m_pfnSuper && current == &AfxWndProc)  // else somebody subclassed above us
        ::SetWindowLongPtrA(window.m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(window.m_pfnSuper));
    window.m_pfnSuper = nullptr;
}

BOOL CWnd::SubclassWindow(HWND hWnd) {
    if (!Attach(hWnd)) return FALSE;
    PreSubclassWindow();
    WindowCore::takeOver(*this);
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent) {
    const HWND control = ::GetDlgItem(pParent->m_hWnd, static_cast<int>(nID));
    return control && SubclassWindow(control);
}

HWND CWnd::UnsubclassWindow() {
    WindowCore::giveBack(*this);
    return Detach();
}

// --- Creation ------------------------------------------------------------------------------------------------------

namespace {

// Windows that the system makes on the side must not be taken for the awaited one.
bool isInputMethodWindow(HWND window) {
    char name[16] = "";
    ::GetClassNameA(window, name, sizeof(name));
    return std::strcmp(name, "IME") == 0 || std::strncmp(name, "MSCTFIME", 8) == 0;
}

LRESULT CALLBACK createHook(int code, WPARAM wParam, LPARAM lParam) {
    auto& state = windowState();
    const auto window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_CREATEWND && state.hooked && !isInputMethodWindow(window)) {
        CWnd* object = std::exchange(state.hooked, nullptr);
        const quor::DepthScope depth;
        try {
            object->Attach(window);
            object->PreSubclassWindow();
        } catch (...) {
            quor::keepException(std::current_exception());
        }
        WindowCore::takeOver(*object);
    }
    return ::CallNextHookEx(state.createHook, code, wParam, lParam);
}

// A control under creation, for questions by id.
class CreationScope {
public:
    CreationScope(CWnd* window, HWND parent, HMENU id) {
        windowState().creations.push_back({window, parent, static_cast<UINT>(reinterpret_cast<UINT_PTR>(id))});
    }
    ~CreationScope() { windowState().creations.pop_back(); }
    CreationScope(const CreationScope&) = delete;
    CreationScope& operator=(const CreationScope&) = delete;
};

}  // namespace

void AfxHookWindowCreate(CWnd* pWnd) {
    auto& state = windowState();
    if (!state.createHook) state.createHook = ::SetWindowsHookExA(WH_CBT, &createHook, nullptr, ::GetCurrentThreadId());
    if (!state.createHook) AfxThrowResourceException();
    state.hooked = pWnd;
}

BOOL AfxUnhookWindowCreate() {
    auto& state = windowState();
    if (state.createHook) ::UnhookWindowsHookEx(std::exchange(state.createHook, nullptr));
    return std::exchange(state.hooked, nullptr) == nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW));
    return TRUE;
}

void CWnd::PreSubclassWindow() {}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam) {
    CREATESTRUCTA cs{};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    if (m_hWnd || !PreCreateWindow(cs)) {
        if (!m_hWnd) PostNcDestroy();
        return FALSE;
    }
    HWND window = nullptr;
    {
        const CreationScope scope(this, cs.hwndParent, cs.hMenu);
        AfxHookWindowCreate(this);
        window = ::CreateWindowExA(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                                   cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
        if (!AfxUnhookWindowCreate()) PostNcDestroy();  // there never was a window
    }
    quor::throwKeptException();
    return window != nullptr;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                    CWnd* pParentWnd, UINT nID, LPVOID lpParam) {
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd ? pParentWnd->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                  UINT nID, CCreateContext* pContext) {
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, pContext);
}

BOOL CWnd::DestroyWindow() {
    if (!m_hWnd) return FALSE;
    const HWND window = m_hWnd;  // the object may be deleted by its last message
    const BOOL destroyed = ::DestroyWindow(window);
    quor::throwKeptException();
    return destroyed;
}

void CWnd::PostNcDestroy() {}

void CWnd::OnNcDestroy() {
    auto& state = windowState();
    if (state.app && state.app->m_pMainWnd == this) {
        state.app->m_pMainWnd = nullptr;
        AfxPostQuitMessage(0);
    }
    if (state.mainWindow == this) state.mainWindow = nullptr;
    quor::forgetTipsOf(*this);
    Default();
    WindowCore::giveBack(*this);
    Detach();
    PostNcDestroy();
}

// --- Window classes ------------------------------------------------------------------------------------------------

BOOL AfxRegisterClass(WNDCLASSA* lpWndClass) {
    WNDCLASSA existing;
    if (::GetClassInfoA(lpWndClass->hInstance, lpWndClass->lpszClassName, &existing)) return TRUE;
    return ::RegisterClassA(lpWndClass) != 0;
}

LPCSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon) {
    static std::unordered_map<std::string, bool>& names = *new std::unordered_map<std::string, bool>;
    CString name;
    name.Format("QuorWindow:%x:%p:%p:%p", nClassStyle, static_cast<void*>(hCursor), static_cast<void*>(hbrBackground),
                static_cast<void*>(hIcon));
    const auto entry = names.try_emplace(name.GetString(), false).first;
    if (entry->second) return entry->first.c_str();
    WNDCLASSA description{};
    description.style = nClassStyle;
    description.lpfnWndProc = ::DefWindowProcA;
    description.hInstance = AfxGetInstanceHandle();
    description.hIcon = hIcon;
    description.hCursor = hCursor;
    description.hbrBackground = hbrBackground;
    description.lpszClassName = entry->first.c_str();
    if (!AfxRegisterClass(&description)) AfxThrowResourceException();
    entry->second = true;
    return entry->first.c_str();
}

// --- The road of a message -----------------------------------------------------------------------------------------

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam) {
    CWnd* window = CWnd::FromHandlePermanent(hWnd);
    if (!window) return ::DefWindowProcA(hWnd, nMsg, wParam, lParam);
    return WindowCore::call(*window, nMsg, wParam, lParam);
}

namespace {

// What the system gets in place of the answer that an exception prevented.
LRESULT answerAfterException(HWND window, UINT message) {
    if (message == WM_PAINT) ::ValidateRect(window, nullptr);  // or it would be sent again at once
    return message == WM_CREATE ? -1 : 0;
}

// Restores the outer message when the inner one is done.
class CurrentMessageScope {
public:
    explicit CurrentMessageScope(const MSG& message) : m_outer(std::exchange(windowState().current, message)) {}
    ~CurrentMessageScope() { windowState().current = m_outer; }
    CurrentMessageScope(const CurrentMessageScope&) = delete;
    CurrentMessageScope& operator=(const CurrentMessageScope&) = delete;

private:
    MSG m_outer;
};

}  // namespace

LRESULT WindowCore::call(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND handle = window.m_hWnd;  // the object may be gone afterwards
    const MSG current = {handle, message, wParam, lParam, 0, {0, 0}};
    const DepthScope depth;
    const CurrentMessageScope scope(current);
    try {
        return window.WindowProc(message, wParam, lParam);
    } catch (CException* e) {
        if (CWinApp* app = AfxGetApp()) {
            const LRESULT answer = app->ProcessWndProcException(e, &current);
            e->Delete();
            return answer;
        }
        keepException(std::current_exception());
    } catch (...) {
        keepException(std::current_exception());
    }
    return answerAfterException(handle, message);
}

void quor::keepException(std::exception_ptr exception) {
    auto& state = windowState();
    if (state.kept) return;  // the first one is the cause
    state.kept = std::move(exception);
    state.keptDepth = state.depth;
}

void quor::throwKeptException() {
    auto& state = windowState();
    if (!state.kept || state.depth >= state.keptDepth || std::uncaught_exceptions() > 0) return;
    std::rethrow_exception(std::exchange(state.kept, nullptr));
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result)) return result;
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = m_pfnSuper ? ::CallWindowProcA(m_pfnSuper, m_hWnd, message, wParam, lParam)
                                      : ::DefWindowProcA(m_hWnd, message, wParam, lParam);
    quor::throwKeptException();
    return result;
}

LRESULT CWnd::Default() {
    const MSG& current = windowState().current;
    return DefWindowProc(current.message, current.wParam, current.lParam);
}

const MSG* CWnd::GetCurrentMessage() {
    MSG& current = windowState().current;
    current.time = static_cast<DWORD>(::GetMessageTime());
    const DWORD point = ::GetMessagePos();
    current.pt = {static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    return &current;
}

namespace {

// All colour messages share one entry.
UINT mapKey(UINT message) {
    const UINT base = message >= WM_REFLECT_BASE && message < 0xC000 ? WM_REFLECT_BASE : 0;
    const UINT plain = message - base;
    return plain >= WM_CTLCOLORMSGBOX && plain <= WM_CTLCOLORSTATIC ? base + WM_CTLCOLORMSGBOX : message;
}

const AFX_MSGMAP_ENTRY* searchMessage(const AFX_MSGMAP* map, UINT message) {
    for (; map; map = map->baseMap ? map->baseMap() : nullptr)
        for (const AFX_MSGMAP_ENTRY* entry = map->entries; entry->thunk; ++entry) {
            if (entry->registered ? *entry->registered == message : entry->message == message && entry->code == 0)
                return entry;
        }
    return nullptr;
}

struct CachedEntry {
    const AFX_MSGMAP* map = nullptr;
    UINT message = 0;
    const AFX_MSGMAP_ENTRY* entry = nullptr;
};

}  // namespace

// Most messages have no entry and would cost a walk over every map of a class's line. Registered messages are not
// cached: their variables may be filled later.
const AFX_MSGMAP_ENTRY* quor::findMessage(const AFX_MSGMAP* map, UINT message) {
    if (message >= 0xC000) return searchMessage(map, message);
    static std::array<CachedEntry, 512> cache;
    CachedEntry& cached = cache[(reinterpret_cast<std::uintptr_t>(map) / 16 + message) % cache.size()];
    if (cached.map != map || cached.message != message) cached = {map, message, searchMessage(map, message)};
    return cached.entry;
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    LRESULT ignored = 0;
    LRESULT& result = pResult ? *pResult : ignored;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam)) return FALSE;
        result = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY) return lParam != 0 && OnNotify(wParam, lParam, &result);
    const AFX_MSGMAP_ENTRY* entry = quor::findMessage(GetMessageMap(), mapKey(message));
    if (!entry) return FALSE;
    AFX_MSG_ARGS args;
    args.message = message;
    args.wParam = wParam;
    args.lParam = lParam;
    args.result = &result;
    return entry->thunk(this, args);
}

BOOL CWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    return CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CWnd::PreTranslateMessage(MSG* pMsg) {
    FilterToolTipMessage(pMsg);
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg) {
    for (HWND window = pMsg->hwnd; window; window = ::GetParent(window)) {
        CWnd* object = FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(pMsg)) return TRUE;
        if (window == hWndStop) break;
        if (!(::GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD)) break;  // a top-level window: owners are not asked
    }
    return FALSE;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    const LRESULT result = ::SendMessageA(m_hWnd, message, wParam, lParam);
    quor::throwKeptException();
    return result;
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm) {
    for (HWND child = ::GetTopWindow(m_hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CWnd* object = FromHandlePermanent(child);
        if (object || !bOnlyPerm) ::SendMessageA(child, message, wParam, lParam);
        if (bDeep && ::GetTopWindow(child))
            FromHandle(child)->SendMessageToDescendants(message, wParam, lParam, bDeep, bOnlyPerm);
    }
    quor::throwKeptException();
}

// --- Modal loop ----------------------------------------------------------------------------------------------------

int CWnd::RunModalLoop(DWORD dwFlags) {
    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;
    bool show = (dwFlags & MLF_SHOWONIDLE) && !IsWindowVisible();
    struct Leave {
        CWnd& window;
        ~Leave() { window.m_nFlags &= ~(WF_MODALLOOP | WF_CONTINUEMODAL); }
    } leave{*this};
    while (ContinueModal()) {
        if (show) {
            show = false;
            ShowWindow(SW_SHOWNORMAL);
            UpdateWindow();
            continue;
        }
        LONG count = 0;
        quor::idleUntilMessage(count);
        if (!AfxPumpMessage()) {
            AfxPostQuitMessage(0);
            return -1;
        }
    }
    return m_nModalResult;
}

BOOL CWnd::ContinueModal() { return m_nFlags & WF_CONTINUEMODAL; }

void CWnd::EndModalLoop(int nResult) {
    m_nModalResult = nResult;
    if (!(m_nFlags & WF_CONTINUEMODAL)) return;
    m_nFlags &= ~WF_CONTINUEMODAL;
    ::PostMessageA(m_hWnd, WM_NULL, 0, 0);  // so that the loop looks
}
