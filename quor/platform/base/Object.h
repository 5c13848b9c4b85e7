// CObject, the root of the framework's classes, and run-time class information: one CRuntimeClass for each class that
// asks for it, comparable by address in every module of the process.
//
// A PE module has its own copy of every inline variable, and the address of imported data is no constant there. So each
// CRuntimeClass is one static member defined in one .cpp, it reaches its base by a function, and RUNTIME_CLASS asks a
// function too. A class whose name is exported exports its run-time class with it.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/WinTypes.h"

#include <type_traits>

class CObject;

// What is known of a class at run time. Never copied; made by the IMPLEMENT_ macros alone.
struct QUOR_FRAMEWORK_API CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;                      // bytes
    CObject* (*m_pfnCreateObject)();        // null unless DECLARE_DYNCREATE
    CRuntimeClass* (*m_pfnGetBaseClass)();  // null for CObject

    // A new object of the class, owned by the caller; null if the class was not declared with DECLARE_DYNCREATE.
    CObject* CreateObject() const;
    // TRUE for the class itself and for every class above it.
    BOOL IsDerivedFrom(const CRuntimeClass* baseClass) const;
};

class QUOR_FRAMEWORK_API CObject {
public:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject();

    static CRuntimeClass* GetThisClass();
    virtual CRuntimeClass* GetRuntimeClass() const;

    // TRUE if the object's class is `runtimeClass` or derives from it.
    BOOL IsKindOf(const CRuntimeClass* runtimeClass) const;
    // Checks the object's own state with ASSERT; overridden where there is something to check.
    virtual void AssertValid() const;

protected:
    CObject() = default;
};

// The object if it is of that class, else null (also for null).
QUOR_FRAMEWORK_API CObject* AfxDynamicDownCast(const CRuntimeClass* runtimeClass, const CObject* object);
// Says where an assertion failed and ends the process. Called by ASSERT only.
[[noreturn]] QUOR_FRAMEWORK_API void AfxAssertFailed(LPCSTR expression, LPCSTR file, int line);

#define RUNTIME_CLASS(name) (name::GetThisClass())

// In the class body. A class with DECLARE_DYNCREATE needs a constructor without arguments.
#define DECLARE_DYNAMIC(name)                        \
public:                                              \
    static CRuntimeClass* GetThisClass();            \
    CRuntimeClass* GetRuntimeClass() const override; \
                                                     \
private:                                             \
    static CRuntimeClass* GetBaseRuntimeClass();     \
    static CRuntimeClass runtimeClass_;              \
                                                     \
public:

#define DECLARE_DYNCREATE(name) \
    DECLARE_DYNAMIC(name)       \
    static CObject* CreateObject();

// In one .cpp.
#define QUOR_IMPLEMENT_RUNTIME_CLASS(name, base, create)                                                             \
    CRuntimeClass name::runtimeClass_ = {#name, static_cast<int>(sizeof(name)), create, &name::GetBaseRuntimeClass}; \
    CRuntimeClass* name::GetBaseRuntimeClass() { return RUNTIME_CLASS(base); }                                       \
    CRuntimeClass* name::GetThisClass() { return &runtimeClass_; }                                                   \
    CRuntimeClass* name::GetRuntimeClass() const { return &runtimeClass_; }

#define IMPLEMENT_DYNAMIC(name, base) QUOR_IMPLEMENT_RUNTIME_CLASS(name, base, nullptr)
#define IMPLEMENT_DYNCREATE(name, base)                           \
    QUOR_IMPLEMENT_RUNTIME_CLASS(name, base, &name::CreateObject) \
    CObject* name::CreateObject() { return new name; }

// DYNAMIC_DOWNCAST gives null where the object is of another class; STATIC_DOWNCAST asserts that it is not.
#define DYNAMIC_DOWNCAST(name, object) (static_cast<name*>(AfxDynamicDownCast(RUNTIME_CLASS(name), object)))
#define STATIC_DOWNCAST(name, object) (quor::staticDownCast<name>(object))

// Active in the native build, which exists for its tests; nothing (and nothing evaluated) on Windows unless
// QUOR_ASSERTS is defined. VERIFY always evaluates.
#if !defined(_WIN32) || defined(QUOR_ASSERTS)
#define ASSERT(expression) \
    (static_cast<bool>(expression) ? static_cast<void>(0) : AfxAssertFailed(#expression, __FILE__, __LINE__))
#define VERIFY(expression) ASSERT(expression)
#define ASSERT_VALID(object) ((object)->AssertValid())
#else
#define ASSERT(expression) static_cast<void>(0)
#define VERIFY(expression) static_cast<void>(expression)
#define ASSERT_VALID(object) static_cast<void>(0)
#endif
#define TRACE(...) static_cast<void>(0)

namespace quor {

template <class T>
T* staticDownCast(CObject* object) {
    ASSERT(object == nullptr || object->IsKindOf(RUNTIME_CLASS(T)));
    return static_cast<T*>(object);
}

}  // namespace quor
