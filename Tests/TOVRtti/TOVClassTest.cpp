#include "Support/TOVAllocationCounter.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>

#include <string>
#include <type_traits>
#include <vector>

namespace
{
// An interface: its descriptor comes to life at the first call.
class IDrawable
{
public:
    virtual ~IDrawable() = default;
    static const CTOVClass& GetClass()
    {
        static const CTOVClass _s_oClass("IDrawable");
        return _s_oClass;
    }
    virtual const CTOVClass& GetRuntimeClass() const { return GetClass(); }
    virtual bool IsInstanceOf(const CTOVClass& oClass) const { return GetClass() == oClass; }
    virtual bool IsKindOf(const CTOVClass& oClass) const { return GetClass().IsKindOf(oClass); }
    virtual void* QueryInterface(const CTOVClass& oClass) { return oClass == GetClass() ? this : NULL; }
};

// Classes with descriptors that the program makes at its start.
class CFigure
{
public:
    virtual ~CFigure() = default;
    static const CTOVClass& GetClass() { return _s_oClass; }
    virtual const CTOVClass& GetRuntimeClass() const { return GetClass(); }
    virtual bool IsInstanceOf(const CTOVClass& oClass) const { return GetClass() == oClass; }
    virtual bool IsKindOf(const CTOVClass& oClass) const { return GetClass().IsKindOf(oClass); }
    virtual void* QueryInterface(const CTOVClass& oClass) { return oClass == GetClass() ? this : NULL; }

    static const CTOVClass _s_oClass;
};

class CCircle : public CFigure, public IDrawable
{
public:
    static const CTOVClass& GetClass() { return _s_oClass; }
    const CTOVClass& GetRuntimeClass() const override { return GetClass(); }
    bool IsInstanceOf(const CTOVClass& oClass) const override { return GetClass() == oClass; }
    bool IsKindOf(const CTOVClass& oClass) const override { return GetClass().IsKindOf(oClass); }
    void* QueryInterface(const CTOVClass& oClass) override
    {
        if (oClass == GetClass())
            return this;
        if (void* const pFigure = CFigure::QueryInterface(oClass))
            return pFigure;
        return IDrawable::QueryInterface(oClass);
    }

    static const CTOVClass _s_oClass;
};

const CTOVClass CFigure::_s_oClass("CFigure");
const CTOVClass CCircle::_s_oClass("CCircle", &CFigure::_s_oClass, &IDrawable::GetClass());

// Opens what derived classes may do.
class COpenClass : public CTOVClass
{
public:
    using CTOVClass::AddSuperClass;
    using CTOVClass::CTOVClass;
    using CTOVClass::Register;
    using CTOVClass::RemoveSuperClass;
    using CTOVClass::Unregister;

    std::string DescribeSuperClasses() const
    {
        std::string sNames;
        for (int nIndex = 0; nIndex < GetNumSuperClasses(); ++nIndex)
            sNames += GetSuperClass(nIndex).GetName();
        return sNames;
    }
};

TOV_PRIVATE_MEMBER(ClassId, CTOVClass, unsigned long, m_dwClassId)

const char INDEX_CHECK[] = "(0 <= nSuperClass) && (nSuperClass < GetNumSuperClasses())";

bool IsHeld(const char* szName)
{
    return CTOVClassServer::Instance().HasClass(CTOVStringA(szName));
}

long GetNumHeld()
{
    return CTOVClassServer::Instance().GetNumClasses();
}
} // namespace

TEST(CTOVClassTest, RefusesAMissingName)
{
    const long lHeld = GetNumHeld();

    EXPECT_CHECK_AT("TOVRtti/TOVClass", "szClassName != NULL", CTOVClass(NULL));
    EXPECT_EQ(lHeld, GetNumHeld());
}

TEST(CTOVClassTest, MissingNameTakesNoId)
{
    const CTOVClass oBefore("Before");
    EXPECT_CHECK("szClassName != NULL", CTOVClass(0, &oBefore));
    const CTOVClass oAfter("After");

    EXPECT_EQ(oBefore.GetClassId() + 1, oAfter.GetClassId());
}

TEST(CTOVClassTest, RegistersItself)
{
    const CTOVClass oClass("Registers");

    EXPECT_TRUE(IsHeld("Registers"));
    EXPECT_EQ(&oClass, &TOVRuntimeClass("Registers"));
}

TEST(CTOVClassTest, IsReadAsItsName)
{
    const CTOVClass oClass("Named");

    EXPECT_STREQ("Named", oClass.GetName());
    EXPECT_STREQ("Named", (const tChar*)oClass);
    EXPECT_STREQ("Named", ((CTOVStringA)oClass).GetString());
    EXPECT_STREQ("Named", ((const CTOVStringA&)oClass).GetString());
}

TEST(CTOVClassTest, CopiesTheName)
{
    char szName[] = "Original";
    const CTOVClass oClass(szName);
    szName[0] = 'X';

    EXPECT_STREQ("Original", oClass.GetName());
}

TEST(CTOVClassTest, MayHaveAnEmptyName)
{
    const CTOVClass oClass("");

    EXPECT_STREQ("", oClass.GetName());
    EXPECT_TRUE(IsHeld(""));
}

TEST(CTOVClassTest, HasNoSuperClassByItself)
{
    const CTOVClass oClass("Alone");

    EXPECT_EQ(0, oClass.GetNumSuperClasses());
    EXPECT_FALSE(oClass.HasSuperClasses());
    EXPECT_CHECK_AT("TOVRtti/TOVClass", INDEX_CHECK, oClass.GetSuperClass(0));
}

TEST(CTOVClassTest, HoldsItsSuperClassesInTheirOrder)
{
    const CTOVClass oA("A");
    const CTOVClass oB("B");
    const CTOVClass oC("C");
    const CTOVClass oD("D");
    const CTOVClass oClass("Four", &oD, &oB, &oC, &oA);

    EXPECT_TRUE(oClass.HasSuperClasses());
    ASSERT_EQ(4, oClass.GetNumSuperClasses());
    EXPECT_EQ(&oD, &oClass.GetSuperClass(0));
    EXPECT_EQ(&oB, &oClass.GetSuperClass(1));
    EXPECT_EQ(&oC, &oClass.GetSuperClass(2));
    EXPECT_EQ(&oA, &oClass.GetSuperClass(3));
}

TEST(CTOVClassTest, LooksBehindAMissingSuperClass)
{
    const CTOVClass oA("A");
    const CTOVClass oB("B");
    const CTOVClass oClass("Gaps", 0, &oB, 0, &oA);

    ASSERT_EQ(2, oClass.GetNumSuperClasses());
    EXPECT_EQ(&oB, &oClass.GetSuperClass(0));
    EXPECT_EQ(&oA, &oClass.GetSuperClass(1));
}

TEST(CTOVClassTest, RefusesASuperClassIndexOutOfRange)
{
    EXPECT_CHECK_AT("TOVRtti/TOVClass", INDEX_CHECK, CCircle::GetClass().GetSuperClass(-1));
    EXPECT_CHECK_AT("TOVRtti/TOVClass", INDEX_CHECK, CCircle::GetClass().GetSuperClass(2));
    EXPECT_NO_CHECK(CCircle::GetClass().GetSuperClass(1));
}

TEST(CTOVClassTest, IdsAreDenseInTheOrderOfConstruction)
{
    const CTOVClass oFirst("First of three");
    const CTOVClass oSecond("Second of three");
    const CTOVClass oThird("A third");

    EXPECT_EQ(oFirst.GetClassId() + 1, oSecond.GetClassId());
    EXPECT_EQ(oFirst.GetClassId() + 2, oThird.GetClassId());
}

TEST(CTOVClassTest, IsEqualByItsId)
{
    const CTOVClass oA("A");
    const CTOVClass oB("B");

    EXPECT_TRUE(oA == oA);
    EXPECT_FALSE(oA != oA);
    EXPECT_TRUE(oA.IsInstanceOf(oA));
    EXPECT_FALSE(oA == oB);
    EXPECT_TRUE(oA != oB);
    EXPECT_FALSE(oA.IsInstanceOf(oB));
}

TEST(CTOVClassTest, DescribesAClassWithoutSuperClasses)
{
    const CFigure oFigure;

    EXPECT_TRUE(oFigure.GetRuntimeClass() == CFigure::GetClass());
    EXPECT_STREQ("CFigure", oFigure.GetRuntimeClass().GetName());
    EXPECT_EQ(0, oFigure.GetRuntimeClass().GetNumSuperClasses());
    EXPECT_FALSE(oFigure.GetRuntimeClass().HasSuperClasses());
    EXPECT_CHECK(INDEX_CHECK, oFigure.GetRuntimeClass().GetSuperClass(0));
}

TEST(CTOVClassTest, TellsKindAndInstanceOfABase)
{
    const CFigure oFigure;

    EXPECT_FALSE(oFigure.IsKindOf(IDrawable::GetClass()));
    EXPECT_TRUE(oFigure.IsKindOf(CFigure::GetClass()));
    EXPECT_FALSE(oFigure.IsKindOf(CCircle::GetClass()));
    EXPECT_FALSE(oFigure.IsInstanceOf(IDrawable::GetClass()));
    EXPECT_TRUE(oFigure.IsInstanceOf(CFigure::GetClass()));
    EXPECT_FALSE(oFigure.IsInstanceOf(CCircle::GetClass()));
}

TEST(CTOVClassTest, DescribesAClassWithTwoSuperClasses)
{
    const CCircle oCircle;
    const CTOVClass& oClass = oCircle.GetRuntimeClass();

    EXPECT_TRUE(oClass == CCircle::GetClass());
    EXPECT_STREQ("CCircle", oClass.GetName());
    ASSERT_EQ(2, oClass.GetNumSuperClasses());
    EXPECT_TRUE(oClass.GetSuperClass(0) == CFigure::GetClass());
    EXPECT_TRUE(oClass.GetSuperClass(1) == IDrawable::GetClass());
}

TEST(CTOVClassTest, TellsKindAndInstanceThroughABasePointer)
{
    const CCircle oCircle;
    const CFigure* pFigure = &oCircle;

    EXPECT_TRUE(pFigure->GetRuntimeClass() == CCircle::GetClass());
    EXPECT_TRUE(pFigure->IsKindOf(IDrawable::GetClass()));
    EXPECT_TRUE(pFigure->IsKindOf(CFigure::GetClass()));
    EXPECT_TRUE(pFigure->IsKindOf(CCircle::GetClass()));
    EXPECT_FALSE(pFigure->IsInstanceOf(IDrawable::GetClass()));
    EXPECT_FALSE(pFigure->IsInstanceOf(CFigure::GetClass()));
    EXPECT_TRUE(pFigure->IsInstanceOf(CCircle::GetClass()));
}

TEST(CTOVClassTest, TellsKindAndInstanceThroughAnInterfacePointer)
{
    const CCircle oCircle;
    const IDrawable* pDrawable = &oCircle;

    EXPECT_TRUE(pDrawable->GetRuntimeClass() == CCircle::GetClass());
    EXPECT_TRUE(pDrawable->IsKindOf(IDrawable::GetClass()));
    EXPECT_TRUE(pDrawable->IsKindOf(CFigure::GetClass()));
    EXPECT_TRUE(pDrawable->IsKindOf(CCircle::GetClass()));
    EXPECT_FALSE(pDrawable->IsInstanceOf(IDrawable::GetClass()));
    EXPECT_FALSE(pDrawable->IsInstanceOf(CFigure::GetClass()));
    EXPECT_TRUE(pDrawable->IsInstanceOf(CCircle::GetClass()));
}

TEST(CTOVClassTest, ServesAnObjectThatHandsOutItsInterfaces)
{
    CCircle oCircle;
    IDrawable* pDrawable = &oCircle;
    CFigure* pFigure = &oCircle;

    EXPECT_EQ(&oCircle, pDrawable->QueryInterface(CCircle::GetClass()));
    EXPECT_EQ(pFigure, pDrawable->QueryInterface(CFigure::GetClass()));
    EXPECT_EQ(pDrawable, pFigure->QueryInterface(IDrawable::GetClass()));
    EXPECT_NE(static_cast<void*>(&oCircle), pFigure->QueryInterface(IDrawable::GetClass()));
    EXPECT_EQ(NULL, pFigure->QueryInterface(CTOVClass::Invalid()));
}

TEST(CTOVClassTest, IsOfTheKindOfFarSuperClasses)
{
    const CTOVClass oRoot("Root");
    const CTOVClass oOther("Other");
    const CTOVClass oMiddle("Middle", &oRoot);
    const CTOVClass oLeaf("Leaf", &oOther, &oMiddle);

    EXPECT_TRUE(oLeaf.IsKindOf(oRoot));
    EXPECT_TRUE(oLeaf.IsKindOf(oOther));
    EXPECT_TRUE(oLeaf.IsKindOf(oLeaf));
    EXPECT_FALSE(oRoot.IsKindOf(oLeaf));
    EXPECT_FALSE(oMiddle.IsKindOf(oOther));
}

TEST(CTOVClassTest, ComparesWithoutAllocations)
{
    const CTOVClass oRoot("Root");
    const CTOVClass oLeaf("Leaf", &oRoot);
    CAllocationCounter oCounter;
    const bool bKind = oLeaf.IsKindOf(oRoot) && !oRoot.IsKindOf(oLeaf) && oLeaf != oRoot;
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_TRUE(bKind);
    EXPECT_EQ(0u, ulTaken);
}

TEST(CTOVClassTest, InvalidClassIsOneRegisteredDescriptor)
{
    const CTOVClass& oInvalid = CTOVClass::Invalid();

    EXPECT_STREQ("<invalid class>", oInvalid.GetName());
    EXPECT_FALSE(oInvalid.HasSuperClasses());
    EXPECT_EQ(&oInvalid, &CTOVClass::Invalid());
    EXPECT_EQ(&oInvalid, &TOVRuntimeClass("<invalid class>"));
    EXPECT_TRUE(IsHeld("<invalid class>"));
}

TEST(CTOVClassTest, LeavesTheServerAtItsEnd)
{
    {
        const CTOVClass oClass("Passing");
        EXPECT_TRUE(IsHeld("Passing"));
    }

    EXPECT_FALSE(IsHeld("Passing"));
}

TEST(CTOVClassTest, EndsThroughItsBase)
{
    CTOVClass* pClass = new COpenClass("Derived");
    delete pClass;

    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVClass>);
    EXPECT_FALSE(IsHeld("Derived"));
}

TEST(CTOVClassTest, SecondOfANameEqualsTheFirst)
{
    const CTOVClass oRoot("Root");
    const CTOVClass oFirst("Twin");
    const CTOVClass oSecond("Twin");
    const CTOVClass oLeaf("Leaf", &oFirst);

    EXPECT_TRUE(oFirst == oSecond);
    EXPECT_EQ(oFirst.GetClassId(), oSecond.GetClassId());
    EXPECT_TRUE(oSecond.IsInstanceOf(oFirst));
    EXPECT_TRUE(oLeaf.IsKindOf(oSecond));
    EXPECT_EQ(&oFirst, &TOVRuntimeClass("Twin"));
}

TEST(CTOVClassTest, SecondOfANameTakesTheEntryOfTheFirstWithIt)
{
    const CTOVClass oFirst("Twin");
    {
        const CTOVClass oSecond("Twin");
    }

    EXPECT_FALSE(IsHeld("Twin"));
    EXPECT_STREQ("Twin", oFirst.GetName());
}

TEST(CTOVClassTest, RemovalGoesByNameAlone)
{
    COpenClass* pFirst = new COpenClass("Heir");
    pFirst->Unregister();
    const CTOVClass oSecond("Heir");
    EXPECT_EQ(&oSecond, &TOVRuntimeClass("Heir"));
    EXPECT_TRUE(*pFirst != oSecond);

    delete pFirst;

    EXPECT_FALSE(IsHeld("Heir"));
}

TEST(CTOVClassTest, UnregisterLeavesTheServerAndKeepsTheId)
{
    COpenClass oClass("Leaver");
    const unsigned long ulId = oClass.GetClassId();

    oClass.Unregister();

    EXPECT_FALSE(IsHeld("Leaver"));
    EXPECT_EQ(ulId, oClass.GetClassId());
}

TEST(CTOVClassTest, UnregisterWithoutAnEntryIsSilent)
{
    COpenClass oClass("Leaver");
    oClass.Unregister();
    const long lHeld = GetNumHeld();
    const CLogRecorder oLog;

    oClass.Unregister();

    EXPECT_EQ(lHeld, GetNumHeld());
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST(CTOVClassTest, UnregisterWithoutAnIdDoesNothing)
{
    COpenClass oClass("Without id");
    const unsigned long ulId = oClass.GetClassId();
    ClassId(oClass) = 0xFFFFFFFFul;

    oClass.Unregister();

    EXPECT_TRUE(IsHeld("Without id"));
    ClassId(oClass) = ulId;
}

TEST(CTOVClassTest, RegisterTakesANewId)
{
    COpenClass oClass("Returner");
    const unsigned long ulId = oClass.GetClassId();
    oClass.Unregister();

    oClass.Register();

    EXPECT_EQ(ulId + 1, oClass.GetClassId());
    EXPECT_EQ(&oClass, &TOVRuntimeClass("Returner"));
}

TEST(CTOVClassTest, RegisterTwiceKeepsTheId)
{
    COpenClass oClass("Twice");
    const unsigned long ulId = oClass.GetClassId();
    const CLogRecorder oLog;

    oClass.Register();

    EXPECT_EQ(ulId, oClass.GetClassId());
    EXPECT_EQ(1, oLog.CountLines("Class Twice already registered!"));
}

TEST(CTOVClassTest, AddsSuperClassesAlsoRepeatedly)
{
    const CTOVClass oA("A");
    const CTOVClass oB("B");
    COpenClass oClass("Collector", &oB);

    oClass.AddSuperClass(oA);
    oClass.AddSuperClass(oB);
    oClass.AddSuperClass(oB);

    EXPECT_EQ("BABB", oClass.DescribeSuperClasses());
    EXPECT_TRUE(oClass.IsKindOf(oA));
}

TEST(CTOVClassTest, RemovesSuperClassesButSkipsTheEntryBehindARemovedOne)
{
    const CTOVClass oA("A");
    const CTOVClass oB("B");
    const struct
    {
        const char* szBefore;
        const char* szAfter;
    } aCases[] = {{"", ""},         {"B", "B"},       {"A", ""},      {"AA", "A"},   {"ABA", "B"},
                  {"BAAB", "BAB"},  {"AAA", "A"},     {"AAAA", "AA"}, {"BAA", "BA"}, {"ABBA", "BB"},
                  {"BABAB", "BBB"}, {"AABAA", "ABA"}, {"AAAAA", "AA"}};

    for (const auto& oCase : aCases)
    {
        COpenClass oClass("Shrinking");
        for (const char* pName = oCase.szBefore; *pName != 0; ++pName)
            oClass.AddSuperClass(*pName == 'A' ? oA : oB);

        oClass.RemoveSuperClass(oA);

        EXPECT_EQ(oCase.szAfter, oClass.DescribeSuperClasses()) << oCase.szBefore;
    }
}

TEST(CTOVClassTest, RemovesASuperClassByItsAddress)
{
    const CTOVClass oFirst("Twin");
    const CTOVClass oSecond("Twin");
    COpenClass oClass("Son", &oFirst);

    oClass.RemoveSuperClass(oSecond);

    EXPECT_EQ(1, oClass.GetNumSuperClasses());
}

TEST(CTOVClassTest, CopySharesNameIdAndSuperClasses)
{
    const CTOVClass oRoot("Root");
    const CTOVClass oClass("Copied", &oRoot);
    const CLogRecorder oLog;
    const CTOVClass oCopy(oClass);

    EXPECT_EQ(static_cast<const void*>(oClass.GetName()), static_cast<const void*>(oCopy.GetName()));
    EXPECT_EQ(oClass.GetClassId(), oCopy.GetClassId());
    EXPECT_TRUE(oClass == oCopy);
    ASSERT_EQ(1, oCopy.GetNumSuperClasses());
    EXPECT_EQ(&oRoot, &oCopy.GetSuperClass(0));
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST(CTOVClassTest, EndOfACopyRemovesTheClass)
{
    const CTOVClass oClass("Copied");
    {
        const CTOVClass oCopy(oClass);
        EXPECT_TRUE(IsHeld("Copied"));
    }

    EXPECT_FALSE(IsHeld("Copied"));
    EXPECT_STREQ("Copied", oClass.GetName());
}

TEST(CTOVClassTest, CopyKeepsTheNameOfADeadOriginal)
{
    const CTOVClass* pClass = new CTOVClass("Copied");
    const CTOVClass oCopy(*pClass);
    delete pClass;

    EXPECT_STREQ("Copied", oCopy.GetName());
    EXPECT_FALSE(IsHeld("Copied"));
}

TEST(CTOVClassTest, AssignmentSharesNameIdAndSuperClasses)
{
    const CTOVClass oRoot("Root");
    const CTOVClass oClass("Assigned", &oRoot);
    CTOVClass oTarget("Target");

    CTOVClass& oResult = (oTarget = oClass);

    EXPECT_EQ(&oTarget, &oResult);
    EXPECT_EQ(static_cast<const void*>(oClass.GetName()), static_cast<const void*>(oTarget.GetName()));
    EXPECT_EQ(oClass.GetClassId(), oTarget.GetClassId());
    ASSERT_EQ(1, oTarget.GetNumSuperClasses());
    EXPECT_EQ(&oRoot, &oTarget.GetSuperClass(0));
}

TEST(CTOVClassTest, AssignmentToItselfChangesNothing)
{
    CTOVClass oClass("Assigned");
    const CTOVClass& oSame = oClass;
    const unsigned long ulId = oClass.GetClassId();

    oClass = oSame;

    EXPECT_STREQ("Assigned", oClass.GetName());
    EXPECT_EQ(ulId, oClass.GetClassId());
    EXPECT_EQ(&oClass, &TOVRuntimeClass("Assigned"));
}

TEST(CTOVClassTest, EndOfAnAssignedDescriptorLeavesNothingOfItInTheServer)
{
    const CTOVClass oClass("Assigned");
    {
        CTOVClass oTarget("Target");
        oTarget = oClass;
        EXPECT_TRUE(IsHeld("Assigned"));
    }

    EXPECT_FALSE(IsHeld("Assigned"));
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("Target"));
}

TEST(CTOVClassTest, FreesItsName)
{
    {
        const CTOVClass oWarmUp("Of a certain length");
    }
    CAllocationCounter oCounter;
    {
        const CTOVClass oClass("Of a certain length");
        const CTOVClass oCopy(oClass);
    }

    EXPECT_EQ(0, oCounter.Kept());
}

TEST(CTOVClassTest, HoldsItsMembersInTheirOrder)
{
    struct sLayout
    {
        void* pVirtualTable;
        char* szName;
        unsigned long dwClassId;
        bool bRegistered;
        std::vector<const CTOVClass*> aSuperClasses;
    };

    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVClass));
}
