#include "quor/platform/base/Exception.h"

#include <cstring>
#include <string_view>

namespace {

BOOL copyMessage(std::string_view message, LPSTR text, UINT maxLength) {
    if (text == nullptr || maxLength == 0) return FALSE;
    const std::size_t length = message.size() < maxLength ? message.size() : maxLength - 1u;
    std::memcpy(text, message.data(), length);
    text[length] = '\0';
    return TRUE;
}

}  // namespace

IMPLEMENT_DYNAMIC(CException, CObject)

CException::~CException() = default;

void CException::Delete() {
    if (m_autoDelete) delete this;
}

BOOL CException::GetErrorMessage(LPSTR text, UINT maxLength, UINT* helpContext) const {
    if (helpContext != nullptr) *helpContext = 0;
    copyMessage("", text, maxLength);
    return FALSE;
}

#define QUOR_IMPLEMENT_EXCEPTION(name, message)                                       \
    IMPLEMENT_DYNAMIC(name, CException)                                               \
    name::~name() = default;                                                          \
    BOOL name::GetErrorMessage(LPSTR text, UINT maxLength, UINT* helpContext) const { \
        if (helpContext != nullptr) *helpContext = 0;                                 \
        return copyMessage(message, text, maxLength);                                 \
    }

QUOR_IMPLEMENT_EXCEPTION(CMemoryException, "Out of memory.")
QUOR_IMPLEMENT_EXCEPTION(CInvalidArgException, "An invalid argument was encountered.")
QUOR_IMPLEMENT_EXCEPTION(CResourceException, "A required resource was unavailable.")
QUOR_IMPLEMENT_EXCEPTION(CNotSupportedException, "An unsupported operation was attempted.")
QUOR_IMPLEMENT_EXCEPTION(CUserException, "The operation was cancelled by the user.")

void AfxThrowMemoryException() {
    // Made at the first call's start, not by `new`: there is no memory to be had at this point.
    static CMemoryException exception(FALSE);
    throw &exception;
}

void AfxThrowInvalidArgException() { throw new CInvalidArgException; }
void AfxThrowResourceException() { throw new CResourceException; }
void AfxThrowNotSupportedException() { throw new CNotSupportedException; }
void AfxThrowUserException() { throw new CUserException; }
