// The part of a server object that does not depend on what it calculates: reference count, IDispatch by the type
// library, ISupportErrorInfo, and the guard around every method.
#pragma once

#include "servers/com/ErrorReport.h"
#include "servers/core/Refusal.h"

#include <atomic>

namespace servers {

template <class Derived, class Interface>
class ServerObject : public Interface, public ISupportErrorInfo {
public:
    ServerObject() = default;
    ServerObject(const ServerObject&) = delete;
    ServerObject& operator=(const ServerObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return withoutInfo(E_POINTER);
        *object = nullptr;
        if (::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, IID_IDispatch) ||
            ::IsEqualIID(iid, serverDescription().interfaceId))
            *object = static_cast<Interface*>(this);
        else if (::IsEqualIID(iid, IID_ISupportErrorInfo))
            *object = static_cast<ISupportErrorInfo*>(this);
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override {
        const long left = --m_references;
        if (left == 0) delete static_cast<Derived*>(this);
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return withoutInfo(E_POINTER);
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
        if (!info) return withoutInfo(E_POINTER);
        *info = nullptr;
        return index == 0 ? interfaceInfo(info) : DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        return withInfo([&](ITypeInfo& info) { return info.GetIDsOfNames(names, count, ids); });
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                     EXCEPINFO* exception, UINT* badArgument) override {
        return withInfo([&](ITypeInfo& info) {
            return info.Invoke(static_cast<Interface*>(this), id, flags, arguments, result, exception, badArgument);
        });
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
        return ::IsEqualIID(iid, serverDescription().interfaceId) ? S_OK : S_FALSE;
    }

protected:
    ~ServerObject() = default;

    // Runs a method's body, which returns its HRESULT; exceptions become failures with error info.
    template <class Body>
    HRESULT guarded(Body&& body) noexcept {
        try {
            return body();
        } catch (...) {
            m_lastFailure = currentFailure();
            return report(m_lastFailure);
        }
    }

    // Refuses a call that would write to nowhere.
    static void requireOutput(const void* output) {
        if (!output) throw Refusal(Reason::NoOutput, "An output has no address.");
    }

    // A place of the interface that nobody calls.
    static HRESULT unnamed() { return withoutInfo(E_NOTIMPL); }

    // Of the last method that failed; an empty sentence if none has.
    const Failure& lastFailure() const { return m_lastFailure; }

private:
    // A failure that says nothing more: no older error info may be taken for its own.
    static HRESULT withoutInfo(HRESULT code) {
        ::SetErrorInfo(0, nullptr);
        return code;
    }

    template <class Call>
    HRESULT withInfo(Call&& call) {
        if (!m_info) {
            const HRESULT found = interfaceInfo(m_info.out());
            if (FAILED(found)) return found;
        }
        return call(*m_info);
    }

    struct ModuleLock {
        ModuleLock() { lockModule(); }
        ModuleLock(const ModuleLock&) = delete;
        ModuleLock& operator=(const ModuleLock&) = delete;
        ~ModuleLock() { unlockModule(); }
    };

    ModuleLock m_lock;  // first, so that it goes last
    std::atomic<long> m_references = 1;
    ComPointer<ITypeInfo> m_info;  // read from the type library at the first late-bound call
    Failure m_lastFailure{S_OK, {}};
};

}  // namespace servers
