// What class descriptors tell, by themselves and through the objects of their classes.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "TOVRtti/TOVClassInstruments.h"

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
    virtual void* QueryInterface(const CTOVClass& oClass) { return oClass == GetClass() ? this : nullptr; }
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
    virtual void* QueryInterface(const CTOVClass& oClass) { return oClass == GetClass() ? this : nullptr; }

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

constexpr char INDEX_CHECK[] = "(0 <= nSuperClass) && (nSuperClass < GetNumSuperClasses())";
} // namespace

TEST(CTOVClassTest, RefusesAMissingName)
{
    const long lHeld = GetNumHeld();

    EXPECT_CHECK_AT("TOVRtti/TOVClass", "szClassName != NULL", CTOVClass(nullptr));
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

namespace
{
template<class TBase> void ExpectTheAnswersOfACircle(const TBase& oSeen)
{
    EXPECT_TRUE(oSeen.GetRuntimeClass() == CCircle::GetClass());
    EXPECT_TRUE(oSeen.IsKindOf(IDrawable::GetClass()));
    EXPECT_TRUE(oSeen.IsKindOf(CFigure::GetClass()));
    EXPECT_TRUE(oSeen.IsKindOf(CCircle::GetClass()));
    EXPECT_FALSE(oSeen.IsInstanceOf(IDrawable::GetClass()));
    EXPECT_FALSE(oSeen.IsInstanceOf(CFigure::GetClass()));
    EXPECT_TRUE(oSeen.IsInstanceOf(CCircle::GetClass()));
}
} // namespace

TEST(CTOVClassTest, TellsKindAndInstanceThroughEachBase)
{
    const CCircle oCircle;

    ExpectTheAnswersOfACircle<CFigure>(oCircle);
    ExpectTheAnswersOfACircle<IDrawable>(oCircle);
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
    EXPECT_EQ(nullptr, pFigure->QueryInterface(CTOVClass::Invalid()));
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

namespace
{
TOV_PRIVATE_MEMBER(NameOf, CTOVClass, char*, m_szName)
TOV_PRIVATE_MEMBER(IdOf, CTOVClass, unsigned long, m_dwClassId)
TOV_PRIVATE_MEMBER(RegisteredOf, CTOVClass, bool, m_bRegistered)
TOV_PRIVATE_MEMBER(SupersOf, CTOVClass, std::vector<const CTOVClass*>, m_aSuperClasses)
} // namespace

TEST(CTOVClassTest, HoldsItsMembersInTheirOrder)
{
    CTOVClass oClass("Laid out");

    ExpectMembersInOrder(oClass, NameOf(oClass), IdOf(oClass), RegisteredOf(oClass), SupersOf(oClass));
}
