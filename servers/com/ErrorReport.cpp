#include "servers/com/ErrorReport.h"

#include "servers/core/Refusal.h"
#include "servers/interfaces/CalculationServers.h"

#include <memory>
#include <new>

namespace servers {

namespace {

HRESULT codeOf(Reason reason) {
    switch (reason) {
        case Reason::BadArgument:
            return E_INVALIDARG;
        case Reason::NoOutput:
            return E_POINTER;
        case Reason::OutsideBounds:
            return kOutsideBounds;
        case Reason::NotFound:
            return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
        case Reason::AlreadyThere:
            return HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
        case Reason::NotCalculated:
            return kNotCalculated;
    }
    return E_FAIL;
}

struct FreeBstr {
    void operator()(BSTR text) const { ::SysFreeString(text); }
};

}  // namespace

Failure currentFailure() noexcept {
    try {
        throw;
    } catch (const Refusal& refusal) {
        return {codeOf(refusal.reason()), refusal.what()};
    } catch (const std::bad_alloc&) {
        return {E_OUTOFMEMORY, "Out of memory"};
    } catch (...) {
        return {E_UNEXPECTED, "Server error"};
    }
}

HRESULT report(const Failure& failure) noexcept {
    ::SetErrorInfo(0, nullptr);
    ComPointer<ICreateErrorInfo> creating;
    if (FAILED(::CreateErrorInfo(creating.out()))) return failure.code;
    creating->SetGUID(serverDescription().interfaceId);
    creating->SetSource(const_cast<wchar_t*>(serverDescription().programId));
    const std::unique_ptr<OLECHAR, FreeBstr> sentence(newBstr(failure.sentence));
    if (sentence) creating->SetDescription(sentence.get());
    ComPointer<IErrorInfo> info;
    if (SUCCEEDED(creating->QueryInterface(IID_IErrorInfo, info.outUntyped()))) ::SetErrorInfo(0, info.get());
    return failure.code;
}

std::string textOf(BSTR text) {
    const int length = static_cast<int>(::SysStringLen(text));
    if (length == 0) return {};
    const int size = ::WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text, length, result.data(), size, nullptr, nullptr);
    return result;
}

BSTR newBstr(std::string_view text) noexcept {
    const int length = static_cast<int>(text.size());
    const int size = length == 0 ? 0 : ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    const BSTR result = ::SysAllocStringLen(nullptr, static_cast<UINT>(size));
    if (result && size > 0) ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result, size);
    return result;
}

}  // namespace servers
