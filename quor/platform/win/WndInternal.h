// What the window classes share: the state of the one GUI thread. Private to quor/platform/win.
#pragma once

#include "quor/platform/Framework.h"

#include <exception>
#include <unordered_map>
#include <vector>

namespace quor {

// A control inside CreateWindow: its parent may ask for it by id before the system does know it.
struct Creation {
    CWnd* window;
    HWND parent;
    UINT id;
};

struct WindowState {
    std::unordered_map<HWND, CWnd*> permanent;
    std::unordered_map<HWND, CWnd*> temporary;
    std::vector<Creation> creations;
    CWnd* hooked = nullptr;  // takes the next window that is created
    HHOOK createHook = nullptr;
    MSG current = {};  // the message being handled
    int depth = 0;     // window procedures and pumped messages under way
    std::exception_ptr kept;
    int keptDepth = 0;           // how deep the message was whose handler threw
    CWnd* mainWindow = nullptr;  // without an application object
    CWinApp* app = nullptr;
    std::vector<CWinApp*> libraryApps;  // static objects of DLLs
    HINSTANCE resources = nullptr;
    WPARAM exitCode = 0;  // of the last quit message
    CWnd* tip = nullptr;  // the shared tool tip window, owned by itself
};

// Never destroyed: objects of other modules may detach after this module's statics are gone.
WindowState& windowState();

// The parts of CWnd's inside that free functions need.
struct WindowCore {
    static void takeOver(CWnd& window);
    static void giveBack(CWnd& window);
    static void endWithoutWindow(CWnd& window) { window.PostNcDestroy(); }
    static LRESULT call(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam);
};

// While it lives, temporary objects stay.
class DepthScope {
public:
    DepthScope() { ++windowState().depth; }
    ~DepthScope() { --windowState().depth; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;
};

// Keeps an exception that leaves a message's handling until the call that sent the message can throw it again.
void keepException(std::exception_ptr exception);
// Throws the kept exception, if the message that it belongs to lies below the caller: a window that dies of an
// exception must still get its last messages handled.
void throwKeptException();

// Offers a message to the control that caused it. False without a permanent object.
bool reflect(HWND child, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

// The shared tip window has no tool of this window any more.
void forgetTipsOf(const CWnd& window);

// The entry of a window message, or null.
const AFX_MSGMAP_ENTRY* findMessage(const AFX_MSGMAP* map, UINT message);

// A dialog resource; null for a name that is not found. No name: a form without controls.
LPCDLGTEMPLATE dialogTemplate(HINSTANCE module, LPCSTR name);
// Makes the dialog window of an object (a dialog, form or bar). False without a template.
bool createFromTemplate(CWnd& window, LPCDLGTEMPLATE dialogTemplate, CWnd* parent, HINSTANCE module);
// A key or mouse message.
bool isInput(const MSG& message);

// The framework's part of an idle turn.
BOOL idle(LONG count);
BOOL pump();
int showMessageBox(LPCSTR text, UINT nType);
// Idle turns until there is a message or nothing left to do.
void idleUntilMessage(LONG& count);

}  // namespace quor
