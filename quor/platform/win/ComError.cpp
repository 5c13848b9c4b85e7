#include "quor/platform/win/ComError.h"

#include "quor/platform/base/Export.h"

namespace {

bool setsErrorInfo(IUnknown* server, REFIID iid) {
    ComPointer<ISupportErrorInfo> support;
    if (!server || FAILED(server->QueryInterface(IID_ISupportErrorInfo, support.outUntyped()))) return false;
    return support->InterfaceSupportsErrorInfo(iid) == S_OK;
}

}  // namespace

QUOR_FRAMEWORK_API void WINAPI _com_issue_errorex(HRESULT hr, IUnknown* server, REFIID iid) {
    ComPointer<IErrorInfo> info;
    if (setsErrorInfo(server, iid)) ::GetErrorInfo(0, info.out());
    throw _com_error(hr, info.detach());
}

namespace _com_util {

// A null text is a null BSTR.
QUOR_FRAMEWORK_API BSTR WINAPI ConvertStringToBSTR(const char* text) {
    if (!text) return nullptr;
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    const BSTR result = length > 0 ? ::SysAllocStringLen(nullptr, static_cast<UINT>(length - 1)) : nullptr;
    if (!result) _com_issue_error(E_OUTOFMEMORY);
    ::MultiByteToWideChar(CP_ACP, 0, text, -1, result, length);
    return result;
}

// The caller frees the text with delete[].
QUOR_FRAMEWORK_API char* WINAPI ConvertBSTRToString(BSTR text) {
    if (!text) return nullptr;
    const int length = static_cast<int>(::SysStringLen(text)) + 1;
    const int size = ::WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    char* result = new char[static_cast<std::size_t>(size)];
    ::WideCharToMultiByte(CP_ACP, 0, text, length, result, size, nullptr, nullptr);
    return result;
}

}  // namespace _com_util
