// Framework exceptions. They are thrown by pointer and caught by pointer; whoever catches one and does not throw it on
// calls Delete():
//
//     try { ... } catch (CInvalidArgException* e) { e->Delete(); }
//
// The classes are exported with their key functions in one DLL, so a throw in one module is caught in another.
#pragma once

#include "quor/platform/base/Object.h"

class QUOR_FRAMEWORK_API CException : public CObject {
    DECLARE_DYNAMIC(CException)
public:
    // autoDelete: the object was made with `new` and Delete() frees it.
    explicit CException(BOOL autoDelete = TRUE) : m_autoDelete(autoDelete) {}
    ~CException() override;

    // Frees the object if it was made on the heap. The pointer is dead afterwards.
    void Delete();

    // Writes a plain text about the error into `text` (at most maxLength bytes with the terminator). FALSE when there
    // is none, or no room; the buffer then holds an empty text if it has room for one.
    virtual BOOL GetErrorMessage(LPSTR text, UINT maxLength, UINT* helpContext = nullptr) const;

private:
    BOOL m_autoDelete;
};

#define QUOR_DECLARE_EXCEPTION(name)                                                                  \
    class QUOR_FRAMEWORK_API name : public CException {                                               \
        DECLARE_DYNAMIC(name)                                                                         \
    public:                                                                                           \
        using CException::CException;                                                                 \
        ~name() override;                                                                             \
        BOOL GetErrorMessage(LPSTR text, UINT maxLength, UINT* helpContext = nullptr) const override; \
    }

// Memory ran out.
QUOR_DECLARE_EXCEPTION(CMemoryException);
// An argument had no valid value: an index out of range, a negative length.
QUOR_DECLARE_EXCEPTION(CInvalidArgException);
// A window, GDI object, template or other resource was not to be had.
QUOR_DECLARE_EXCEPTION(CResourceException);
// The operation is not offered.
QUOR_DECLARE_EXCEPTION(CNotSupportedException);
// The operation was ended by the user's choice; the user has already been told.
QUOR_DECLARE_EXCEPTION(CUserException);
#undef QUOR_DECLARE_EXCEPTION

// Each throws a pointer to the class it names and never returns. The memory exception is allocated beforehand.
[[noreturn]] QUOR_FRAMEWORK_API void AfxThrowMemoryException();
[[noreturn]] QUOR_FRAMEWORK_API void AfxThrowInvalidArgException();
[[noreturn]] QUOR_FRAMEWORK_API void AfxThrowResourceException();
[[noreturn]] QUOR_FRAMEWORK_API void AfxThrowNotSupportedException();
[[noreturn]] QUOR_FRAMEWORK_API void AfxThrowUserException();
