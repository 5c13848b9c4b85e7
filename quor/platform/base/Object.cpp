#include "quor/platform/base/Object.h"

#include <cstdio>
#include <cstdlib>

CObject* CRuntimeClass::CreateObject() const { return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr; }

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* baseClass) const {
    for (const CRuntimeClass* one = this; one != nullptr;
         one = one->m_pfnGetBaseClass != nullptr ? one->m_pfnGetBaseClass() : nullptr) {
        if (one == baseClass) return TRUE;
    }
    return FALSE;
}

namespace {

CRuntimeClass objectClass = {"CObject", static_cast<int>(sizeof(CObject)), nullptr, nullptr};

}  // namespace

CObject::~CObject() = default;
CRuntimeClass* CObject::GetThisClass() { return &objectClass; }
CRuntimeClass* CObject::GetRuntimeClass() const { return &objectClass; }
BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
void CObject::AssertValid() const {}

CObject* AfxDynamicDownCast(const CRuntimeClass* runtimeClass, const CObject* object) {
    if (object == nullptr || !object->IsKindOf(runtimeClass)) return nullptr;
    return const_cast<CObject*>(object);
}

void AfxAssertFailed(LPCSTR expression, LPCSTR file, int line) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, expression);
    std::fflush(stderr);
    std::abort();
}
