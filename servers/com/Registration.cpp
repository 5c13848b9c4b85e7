#include "servers/com/Registration.h"

#include <olectl.h>

namespace servers {

namespace {

// {xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}
std::wstring textOf(const GUID& id) {
    wchar_t text[39] = L"";
    ::StringFromGUID2(id, text, 39);
    return text;
}

bool writeValue(const std::wstring& key, const wchar_t* name, const std::wstring& data) {
    const auto bytes = static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t));
    const std::wstring path = L"Software\\Classes\\" + key;
    return ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), name, REG_SZ, data.c_str(), bytes) == ERROR_SUCCESS;
}

bool removeKey(const std::wstring& key) {
    const std::wstring path = L"Software\\Classes\\" + key;
    const LSTATUS status = ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

std::wstring classKey(const ServerDescription& server) { return L"CLSID\\" + textOf(server.classId); }

bool writeClass(const ServerDescription& server, const std::wstring& dllPath) {
    const std::wstring key = classKey(server);
    return writeValue(key, nullptr, server.name) && writeValue(key + L"\\InprocServer32", nullptr, dllPath) &&
           writeValue(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
           writeValue(key + L"\\ProgID", nullptr, server.programId) &&
           writeValue(key + L"\\TypeLib", nullptr, textOf(server.libraryId)) &&
           writeValue(server.programId, nullptr, server.name) &&
           writeValue(std::wstring(server.programId) + L"\\CLSID", nullptr, textOf(server.classId));
}

bool writeTypeLibrary(const std::wstring& dllPath) {
    ComPointer<ITypeLib> library;
    if (FAILED(::LoadTypeLibEx(dllPath.c_str(), REGKIND_NONE, library.out()))) return false;
    return SUCCEEDED(::RegisterTypeLib(library.get(), const_cast<wchar_t*>(dllPath.c_str()), nullptr));
}

}  // namespace

HRESULT registerServer(const ServerDescription& server, const std::wstring& dllPath) {
    if (writeClass(server, dllPath) && writeTypeLibrary(dllPath)) return S_OK;
    unregisterServer(server);
    return SELFREG_E_CLASS;
}

HRESULT unregisterServer(const ServerDescription& server) {
    ::UnRegisterTypeLib(server.libraryId, 1, 0, 0, SYS_WIN64);  // fails when there is none
    const bool classGone = removeKey(classKey(server));
    const bool programGone = removeKey(server.programId);
    return classGone && programGone ? S_OK : SELFREG_E_CLASS;
}

}  // namespace servers
