// The host's entry points, exported by name from the executable. The library looks them up while it is loaded, before
// this program's static objects exist: nothing here may touch anything but zero-initialised data.
#include "host/panes/HostEntries.h"

#include "host/core/WatchStore.h"
#include "host/panes/ListPane.h"
#include "host/panes/LogPane.h"
#include "host/panes/Theme.h"
#include "host/panes/WatchPane.h"

#define HOST_ENTRY extern "C" __declspec(dllexport)

namespace terminal {

namespace {
SettingsFile* settingsFile;  // zero-initialised

// Texts go in whole: what stands behind a NUL is for the store to judge.
int readOrWrite(int operation, const CString& section, CString& value, std::string_view key) {
    if (!settingsFile) return 0;
    if (operation == 1) return settingsFile->set(viewOf(section), key, viewOf(value)) ? 1 : 0;
    if (operation != 0) return 0;
    const auto found = settingsFile->get(viewOf(section), key);
    if (!found) return 0;
    assignText(value, *found);
    return 1;
}
}  // namespace

void useSettings(SettingsFile* settings) { settingsFile = settings; }
SettingsFile* settingsInUse() { return settingsFile; }
bool settingStored(const char* section, const char* key) { return settingsFile && settingsFile->get(section, key); }

std::string setting(const char* section, const char* key) {
    const auto found = settingsFile ? settingsFile->get(section, key) : std::nullopt;
    return std::string(found.value_or(""));
}

void keepSetting(const char* section, const char* key, const std::string& value) {
    if (settingsFile) settingsFile->set(section, key, value);
}

}  // namespace terminal

// The icon of the library's dialogs.
HOST_ENTRY HICON pu_get_application_iCon() { return ::LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_APPLICATION)); }

// Nobody is logged on in the demo: there are no peer data, and quoru_get_app_status says so.
HOST_ENTRY void pu_get_peer_data(CString& first, CString& second, CString& third) {
    first.Empty();
    second.Empty();
    third.Empty();
}
HOST_ENTRY int quoru_get_app_status() { return 0; }

HOST_ENTRY int UserSetting(int operation, CString section, CString& value, CString key) {
    return terminal::readOrWrite(operation, section, value, terminal::viewOf(key));
}
HOST_ENTRY int UserSettingMWColumns(int operation, CString section, CString& value) {
    return terminal::readOrWrite(operation, section, value, terminal::kUserColumnsKey);
}

HOST_ENTRY void AddToTabbedLog(const char* text, int, int) { terminal::Log::instance().add(text); }

HOST_ENTRY HMODULE quoru_call_LoadLibrary(const char* fileName) {
    return fileName ? ::LoadLibraryA(fileName) : nullptr;
}

HOST_ENTRY void FillShadeRect(CDC* dc, const RECT* rect, COLORREF from, COLORREF to, int) {
    if (dc && rect) terminal::fillShade(*dc, *rect, from, to);
}

// Looked up and never called.
HOST_ENTRY void quoru_add_extra_columns() {}
HOST_ENTRY void pu_GetScreenSharingStatus() {}

// The watch's own text; for a user column, what the list computes. Whatever is no record of a watch has no text.
HOST_ENTRY void MrktWatchGetColumnText(CWnd* parent, void* record, int columnIndex, CString& text) {
    auto* const pane = dynamic_cast<terminal::CWatchPane*>(parent);
    const sMWStruct* const row = sMWStruct::of(record);
    if (pane && row)
        pane->cellText(*row, columnIndex, text);
    else
        text.Empty();
}
HOST_ENTRY int IsOptimizedMWUpdate() { return 0; }

// Every menu item is allowed.
HOST_ENTRY int pu_get_find_menu_item_in_roles(int) { return 0; }

// Screen sharing is allowed: no dialog needs protection.
HOST_ENTRY int pu_GetDefaultScreenSharingStatus(CWnd*, int, int) { return 1; }
HOST_ENTRY int pu_RegisterForWindowDisplayAffinity(CWnd*) { return 1; }
HOST_ENTRY void pu_RemoveWindowFromDispAffinityWindowsMap(CWnd*) {}

HOST_ENTRY void pu_GetAppdataHashCode(CString& text) { text = "QuorTerminal"; }
