#include "servers/com/Module.h"

#include "servers/com/Registration.h"

#include <atomic>
#include <new>

namespace {

HINSTANCE theModule = nullptr;
std::atomic<long> locks = 0;

std::wstring modulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(theModule, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(2 * path.size());
    }
}

// One for the whole life of the DLL; only its locks are counted.
class ClassFactory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = ::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, IID_IClassFactory) ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        servers::lockModule();
        return 2;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        servers::unlockModule();
        return 1;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        try {
            const ComPointer<IDispatch> made(servers::serverDescription().create());
            return made->QueryInterface(iid, object);
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        lock ? servers::lockModule() : servers::unlockModule();
        return S_OK;
    }
};

ClassFactory factory;

}  // namespace

namespace servers {

void lockModule() { ++locks; }
void unlockModule() { --locks; }

HRESULT interfaceInfo(ITypeInfo** info) {
    ComPointer<ITypeLib> library;
    const HRESULT loaded = ::LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, library.out());
    if (FAILED(loaded)) return loaded;
    return library->GetTypeInfoOfGuid(serverDescription().interfaceId, info);
}

}  // namespace servers

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        theModule = module;
        ::DisableThreadLibraryCalls(module);
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!::IsEqualCLSID(classId, servers::serverDescription().classId)) return CLASS_E_CLASSNOTAVAILABLE;
    return factory.QueryInterface(iid, object);
}

STDAPI DllCanUnloadNow() { return locks == 0 ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() { return servers::registerServer(servers::serverDescription(), modulePath()); }

STDAPI DllUnregisterServer() { return servers::unregisterServer(servers::serverDescription()); }
