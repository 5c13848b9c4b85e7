#include "core/base/Throws.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

class Animal : public CObject {
    DECLARE_DYNAMIC(Animal)
};
class Dog : public Animal {
    DECLARE_DYNCREATE(Dog)
};
class Cat : public Animal {
    DECLARE_DYNCREATE(Cat)
};
IMPLEMENT_DYNAMIC(Animal, CObject)
IMPLEMENT_DYNCREATE(Dog, Animal)
IMPLEMENT_DYNCREATE(Cat, Animal)

TEST(Objects, KindsAreKnownUpToTheRootAndMakeObjectsWhereDeclaredSo) {
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(Dog)->CreateObject());
    ASSERT_NE(object, nullptr);
    EXPECT_STREQ(object->GetRuntimeClass()->m_lpszClassName, "Dog");
    for (const CRuntimeClass* kind : {RUNTIME_CLASS(Dog), RUNTIME_CLASS(Animal), RUNTIME_CLASS(CObject)})
        EXPECT_TRUE(object->IsKindOf(kind)) << kind->m_lpszClassName;
    EXPECT_FALSE(object->IsKindOf(RUNTIME_CLASS(Cat)));
    EXPECT_EQ(DYNAMIC_DOWNCAST(Animal, object.get()), object.get());
    EXPECT_EQ(STATIC_DOWNCAST(Dog, object.get()), object.get());
    EXPECT_EQ(DYNAMIC_DOWNCAST(Cat, object.get()), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(Cat, static_cast<CObject*>(nullptr)), nullptr);
    EXPECT_EQ(RUNTIME_CLASS(Animal)->CreateObject(), nullptr);
}

// On Windows these are thrown in one module and caught in another.
TEST(Exceptions, AreCaughtByTheirClassAndTheirBaseAndCutTheirMessages) {
    EXPECT_TRUE(throwsException<CInvalidArgException>(AfxThrowInvalidArgException));
    EXPECT_TRUE(throwsException<CResourceException>(AfxThrowResourceException));
    EXPECT_TRUE(throwsException<CNotSupportedException>(AfxThrowNotSupportedException));
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(throwsException<CMemoryException>(AfxThrowMemoryException));
    EXPECT_TRUE(throwsException<CException>(AfxThrowUserException));
    EXPECT_TRUE(throwsException<CMemoryException>([] { CString text('x', 2147483647); }));
    const CInvalidArgException exception(FALSE);
    char text[64];
    EXPECT_TRUE(exception.GetErrorMessage(text, sizeof text));
    EXPECT_STREQ(text, "An invalid argument was encountered.");
    EXPECT_TRUE(exception.GetErrorMessage(text, 11));
    EXPECT_STREQ(text, "An invalid");
    EXPECT_FALSE(exception.GetErrorMessage(text, 0));
    EXPECT_FALSE(CException(FALSE).GetErrorMessage(text, sizeof text));
    EXPECT_STREQ(text, "");
}

}  // namespace
