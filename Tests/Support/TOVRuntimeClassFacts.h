// What holds for every class with a descriptor that stands below one interface.
#pragma once

#include <TOVRtti/TOVClass.h>

#include <gtest/gtest.h>

// The object answers for its class and for the interface, seen as either.
template<class TInterface, class TClass>
void ExpectClassBelowItsInterface(TClass& oObject, const char* szClass, const char* szInterface)
{
    const CTOVClass& oClass = TClass::GetClass();
    const CTOVClass& oInterfaceClass = TInterface::GetClass();
    TInterface& oInterface = oObject;

    EXPECT_STREQ(szClass, oClass.GetName());
    ASSERT_EQ(1, oClass.GetNumSuperClasses());
    EXPECT_EQ(&oInterfaceClass, &oClass.GetSuperClass(0));
    EXPECT_STREQ(szInterface, oInterfaceClass.GetName());
    EXPECT_FALSE(oInterfaceClass.HasSuperClasses());
    EXPECT_LT(oInterfaceClass.GetClassId(), oClass.GetClassId());
    EXPECT_EQ(&oClass, &TClass::GetClass());
    EXPECT_EQ(&oInterfaceClass, &TInterface::GetClass());

    EXPECT_EQ(&oClass, &oObject.GetRuntimeClass());
    EXPECT_EQ(&oClass, &oInterface.GetRuntimeClass());
    EXPECT_TRUE(oInterface.IsInstanceOf(oClass));
    EXPECT_FALSE(oInterface.IsInstanceOf(oInterfaceClass));
    EXPECT_FALSE(oInterface.IsInstanceOf(CTOVClass::Invalid()));
    EXPECT_TRUE(oInterface.IsKindOf(oClass));
    EXPECT_TRUE(oInterface.IsKindOf(oInterfaceClass));
    EXPECT_FALSE(oInterface.IsKindOf(CTOVClass::Invalid()));
    EXPECT_EQ(&oObject, oInterface.QueryInterface(oClass));
    EXPECT_EQ(&oInterface, oInterface.QueryInterface(oInterfaceClass));
    EXPECT_EQ(nullptr, oInterface.QueryInterface(CTOVClass::Invalid()));
}

// An object that has what the interface gives, and no descriptor of its own, answers for the interface.
template<class TClass, class TInterface> void ExpectInterfaceAlone(TInterface& oBare)
{
    EXPECT_EQ(&TInterface::GetClass(), &oBare.GetRuntimeClass());
    EXPECT_TRUE(oBare.IsInstanceOf(TInterface::GetClass()));
    EXPECT_FALSE(oBare.IsInstanceOf(TClass::GetClass()));
    EXPECT_TRUE(oBare.IsKindOf(TInterface::GetClass()));
    EXPECT_FALSE(oBare.IsKindOf(TClass::GetClass()));
    EXPECT_EQ(&oBare, oBare.QueryInterface(TInterface::GetClass()));
    EXPECT_EQ(nullptr, oBare.QueryInterface(TClass::GetClass()));
}
