#include "quor/foundation/ControlBlock.h"

#include <bit>

namespace {

// The slot's own type says what the name is called with.
template <class Function>
void find(HMODULE host, const char* name, Function*& slot) {
    slot = std::bit_cast<Function*>(::GetProcAddress(host, name));
}

}  // namespace

CControlBlock* g_pControlBlock = new CControlBlock;

CControlBlock::CControlBlock() : hHost(::GetModuleHandleA(nullptr)), pReserved(nullptr) {
    find(hHost, "pu_get_application_iCon", pu_get_application_iCon);
    find(hHost, "pu_get_peer_data", pu_get_peer_data);
    find(hHost, "UserSettingMWColumns", UserSettingMWColumns);
    find(hHost, "AddToTabbedLog", AddToTabbedLog);
    find(hHost, "quoru_call_LoadLibrary", quoru_call_LoadLibrary);
    find(hHost, "FillShadeRect", FillShadeRect);
    find(hHost, "quoru_add_extra_columns", quoru_add_extra_columns);
    find(hHost, "MrktWatchGetColumnText", MrktWatchGetColumnText);
    find(hHost, "UserSetting", UserSetting);
    find(hHost, "quoru_get_app_status", quoru_get_app_status);
    find(hHost, "pu_get_find_menu_item_in_roles", pu_get_find_menu_item_in_roles);
    find(hHost, "IsOptimizedMWUpdate", IsOptimizedMWUpdate);
    find(hHost, "pu_RegisterForWindowDisplayAffinity", pu_RegisterForWindowDisplayAffinity);
    find(hHost, "pu_GetScreenSharingStatus", pu_GetScreenSharingStatus);
    find(hHost, "pu_GetDefaultScreenSharingStatus", pu_GetDefaultScreenSharingStatus);
    find(hHost, "pu_GetAppdataHashCode", pu_GetAppdataHashCode);
    find(hHost, "pu_RemoveWindowFromDispAffinityWindowsMap", pu_RemoveWindowFromDispAffinityWindowsMap);
}
