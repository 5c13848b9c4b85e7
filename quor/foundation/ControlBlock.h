// The link back to the host: the entry points that the host executable exports by name.
//
// The library is loaded into a host and never linked against it. When QuorControls.dll is loaded, one CControlBlock is
// made and looks every name up in the process's own executable; none is called then. The host's image is mapped by that
// time, but its static objects are not yet constructed, so its entry points may touch only zero-initialised or
// function-local state until main runs.
//
// Any slot may be null. "Must" below marks what the library calls without looking: a host that uses the feature must
// export it. For all others HostServices.h holds the rule for a missing entry. All strings are narrow, one byte a
// character; a string by value is a copy. Written once during the load, only read afterwards, with no lock.
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CControlBlock {
public:
    // Looks the entry points up, in the order below; a name that is not exported leaves its slot null.
    CControlBlock();

    HMODULE hHost;  // the process's executable

    // Must. The icon of the library's dialogs.
    HICON (*pu_get_application_iCon)();
    // Always null, never read.
    void* pReserved;
    // Must, once quoru_get_app_status gives 4. Three texts; the third is shown in window titles.
    void (*pu_get_peer_data)(CString& first, CString& second, CString& third);
    // Must. The market watches' user columns; operation 0 reads. Non-zero on success.
    int (*UserSettingMWColumns)(int operation, CString section, CString& value);
    // One line for the host's log. The two ints are 0.
    void (*AddToTabbedLog)(const char* text, int, int);
    // Must. Loads a library by file name; null if it cannot.
    HMODULE (*quoru_call_LoadLibrary)(const char* fileName);
    // Must. Paints a shaded background; `to` is always white and the last value 0.
    void (*FillShadeRect)(CDC* dc, const RECT* rect, COLORREF from, COLORREF to, int);
    // Looked up, never called.
    void (*quoru_add_extra_columns)();
    // Must. The text of one market watch cell; the record is passed on as the host gave it.
    void (*MrktWatchGetColumnText)(CWnd* parent, void* record, int columnIndex, CString& text);
    // Must. The store of all settings of a list: operation 0 reads, 1 writes; the section is the list's name. Non-zero
    // on success; a value comes back byte for byte.
    int (*UserSetting)(int operation, CString section, CString& value, CString key);
    // Must. 4: peer data are available.
    int (*quoru_get_app_status)();
    // Must. Non-zero if the user's role forbids the menu item.
    int (*pu_get_find_menu_item_in_roles)(int menuId);
    // Non-zero while market watches run in their optimised update mode. Missing: 0.
    int (*IsOptimizedMWUpdate)();
    // Takes a dialog out of screen captures and gives its own result. Missing: 1.
    int (*pu_RegisterForWindowDisplayAffinity)(CWnd* dialog);
    // Looked up, never called.
    void (*pu_GetScreenSharingStatus)();
    // The low byte alone counts: non-zero means that sharing is allowed and nothing is to be registered.
    int (*pu_GetDefaultScreenSharingStatus)(CWnd* dialog, int, int);
    // Fills csAppdataHashCode. Missing: the text stays empty.
    void (*pu_GetAppdataHashCode)(CString& text);
    // Part of the registry path of every dialog; empty until the first dialog asks for it.
    CString csAppdataHashCode;
    // Tells the host that a registered dialog closes. Missing: nothing.
    void (*pu_RemoveWindowFromDispAffinityWindowsMap)(CWnd* dialog);
};

// The one block, there before the host's main and never freed.
extern QUOR_CONTROLS_API CControlBlock* g_pControlBlock;
