#include "support/FakeHost.h"

#include <type_traits>

// An exported function, of the type that the library calls it by.
#define HOST_ENTRY(result, name, ...)                                              \
    extern "C" __declspec(dllexport) result name(__VA_ARGS__);                     \
    static_assert(std::is_same_v<decltype(&name), decltype(CControlBlock::name)>); \
    result name(__VA_ARGS__)

FakeHost& fakeHost() {
    static FakeHost host;
    return host;
}

void resetFakeHost() {
    fakeHost() = FakeHost();
    g_pControlBlock->csAppdataHashCode.Empty();
}

namespace {

template <class... Values>
void record(const Values&... values) {
    fakeHost().calls.record(values...);
}

// For entries that tell nothing but what the test set.
template <class... Values>
int answer(int result, const Values&... values) {
    record(values...);
    return result;
}

const char* text(const CString& value) { return value.GetString(); }

// Operation 0 reads, 1 writes.
int store(const FakeHost::Key& key, int operation, CString& value) {
    FakeHost::Settings& map = fakeHost().settings;
    if (fakeHost().onStore && !fakeHost().onStore(operation)) return 0;
    if (operation == 1) {
        if (fakeHost().refuseWrites) return 0;
        map[key] = std::string(value.GetString(), static_cast<std::size_t>(value.GetLength()));
        return 1;
    }
    const auto found = map.find(key);
    if (found == map.end()) return 0;
    value = CString(found->second.data(), static_cast<int>(found->second.size()));
    return 1;
}

}  // namespace

HOST_ENTRY(HICON, pu_get_application_iCon) {
    record("pu_get_application_iCon");
    return ::LoadIcon(nullptr, IDI_APPLICATION);
}

HOST_ENTRY(void, pu_get_peer_data, CString& first, CString& second, CString& third) {
    record("pu_get_peer_data");
    first = "first";
    second = "second";
    third = fakeHost().clientName.c_str();
}

HOST_ENTRY(int, UserSettingMWColumns, int operation, CString section, CString& value) {
    record("UserSettingMWColumns", operation, text(section));
    return store({text(section), FakeHost::sharedColumns}, operation, value);
}

HOST_ENTRY(void, AddToTabbedLog, const char* line, int first, int second) {
    record("AddToTabbedLog", line, first, second);
}

HOST_ENTRY(HMODULE, quoru_call_LoadLibrary, const char* fileName) {
    record("quoru_call_LoadLibrary", fileName);
    return ::LoadLibraryA(fileName);
}

HOST_ENTRY(void, FillShadeRect, CDC* dc, const RECT* rect, COLORREF from, COLORREF to, int last) {
    record("FillShadeRect", from, to, last);
    dc->FillSolidRect(rect, from);
}

HOST_ENTRY(void, quoru_add_extra_columns) { record("quoru_add_extra_columns"); }

HOST_ENTRY(void, MrktWatchGetColumnText, CWnd* parent, void* row, int columnIndex, CString& value) {
    if (fakeHost().marketCell) return fakeHost().marketCell(parent, row, columnIndex, value);
    record("MrktWatchGetColumnText", columnIndex);
}

HOST_ENTRY(int, UserSetting, int operation, CString section, CString& value, CString key) {
    record("UserSetting", operation, text(section), text(key));
    return store({text(section), text(key)}, operation, value);
}

HOST_ENTRY(int, quoru_get_app_status) { return answer(fakeHost().appStatus, "quoru_get_app_status"); }

HOST_ENTRY(int, pu_get_find_menu_item_in_roles, int menuId) {
    return answer(0, "pu_get_find_menu_item_in_roles", menuId);
}

HOST_ENTRY(int, IsOptimizedMWUpdate) { return answer(fakeHost().optimizedMarketWatch, "IsOptimizedMWUpdate"); }

HOST_ENTRY(int, pu_RegisterForWindowDisplayAffinity, CWnd*) {
    return answer(FakeHost::affinityResult, "pu_RegisterForWindowDisplayAffinity");
}

HOST_ENTRY(void, pu_GetScreenSharingStatus) { record("pu_GetScreenSharingStatus"); }

HOST_ENTRY(int, pu_GetDefaultScreenSharingStatus, CWnd*, int first, int second) {
    return answer(fakeHost().defaultSharingStatus, "pu_GetDefaultScreenSharingStatus", first, second);
}

HOST_ENTRY(void, pu_GetAppdataHashCode, CString& value) {
    record("pu_GetAppdataHashCode");
    value = fakeHost().hashText.c_str();
}

HOST_ENTRY(void, pu_RemoveWindowFromDispAffinityWindowsMap, CWnd*) {
    record("pu_RemoveWindowFromDispAffinityWindowsMap");
}
