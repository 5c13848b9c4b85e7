// CCmdTarget, the root of everything that receives messages and commands, with the shape of a message map and CCmdUI,
// through which a command handler enables, checks and labels a menu item or button. The macros that fill a map are in
// MessageMap.h.
//
// A map is a static array inside a function; it names its base map by that base's function, never by address, since a
// PE module cannot take the address of another module's data as a constant. An entry holds no pointer to member: the
// member is a template argument of the entry's thunk, so the compiler checks each handler's signature.
#pragma once

#include "quor/platform/base/Object.h"

class CCmdTarget;
class CMenu;
class CWnd;

// Marks a function that a message map calls.
#define afx_msg

// What a thunk is given. For window messages `message`, `wParam`, `lParam`; for commands and notifications `id`,
// `code` and `extra` (an AFX_NOTIFY or a CCmdUI). `result` is never null for window messages.
struct AFX_MSG_ARGS {
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    LRESULT* result = nullptr;
    UINT id = 0;
    int code = 0;
    void* extra = nullptr;
};

// A WM_NOTIFY on its way through OnCmdMsg.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

// Runs one handler. False: the handler declined, and the next target (view, frame, parent) is asked.
using AFX_THUNK = bool (*)(CCmdTarget* target, AFX_MSG_ARGS& args);

struct AFX_MSGMAP_ENTRY {
    UINT message;            // WM_ message; 0 ends a map
    UINT code;               // notification code (low 16 bits), CN_ code for commands, else 0
    UINT id;                 // first control or command id
    UINT lastId;             // last id, the same for a single one
    const UINT* registered;  // a registered message's variable, read at dispatch; else null
    AFX_THUNK thunk;
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*baseMap)();   // null at the root
    const AFX_MSGMAP_ENTRY* entries;  // ended by an entry without a thunk
};

// Who would handle a command, when OnCmdMsg is only asked (the handler is not run).
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_THUNK thunk;
};

// Codes of command entries.
constexpr int CN_COMMAND = 0;
constexpr int CN_UPDATE_COMMAND_UI = -1;

// Added to the code of a message that a parent hands back to the child that caused it.
constexpr UINT WM_REFLECT_BASE = 0xBC00;

#define DECLARE_MESSAGE_MAP()                     \
protected:                                        \
    static const AFX_MSGMAP* GetThisMessageMap(); \
    const AFX_MSGMAP* GetMessageMap() const override;

// Command state: one menu item (or one control) whose handler is asked how it should look. Lives during the question.
class QUOR_FRAMEWORK_API CCmdUI {
public:
    CCmdUI();
    virtual ~CCmdUI();

    UINT m_nID = 0;               // the command
    UINT m_nIndex = 0;            // position in m_pMenu
    UINT m_nIndexMax = 0;         // number of positions
    CMenu* m_pMenu = nullptr;     // null for a control
    CMenu* m_pSubMenu = nullptr;  // set when the item opens a menu
    CWnd* m_pOther = nullptr;     // the control, null for a menu

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1);  // 0 off, 1 on, 2 undetermined (shown as on in a menu)
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCSTR lpszText);
    // The handler was found but wants the search to go on.
    void ContinueRouting() { m_bContinueRouting = TRUE; }

    // Asks `pTarget`. With bDisableIfNoHndler an item that nobody handles is disabled. TRUE if a handler answered.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    BOOL m_bEnableChanged = FALSE;
    BOOL m_bContinueRouting = FALSE;
};

// Base of CWnd and CWinApp: owns a message map and routes commands through it.
class QUOR_FRAMEWORK_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget();
    ~CCmdTarget() override;

    // Offers a command or notification to this object's map. `nCode` is CN_COMMAND, CN_UPDATE_COMMAND_UI, a control's
    // notification code, or MAKELONG(code, message) for WM_NOTIFY and reflected messages. With `pHandlerInfo` the
    // handler is only named, not run. TRUE if someone handled it.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    // The hour-glass; calls nest.
    void BeginWaitCursor();
    void EndWaitCursor();

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};

// The hour-glass while it lives.
class QUOR_FRAMEWORK_API CWaitCursor {
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    // Sets it again after something, a message box for instance, changed it.
    void Restore();
};
