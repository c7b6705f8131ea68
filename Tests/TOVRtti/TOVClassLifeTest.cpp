// Class descriptors and the server that holds them: names that come twice, copies, what derived classes may do.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRefusal.h"
#include "TOVRtti/TOVClassInstruments.h"

namespace
{
TOV_PRIVATE_MEMBER(ClassId, CTOVClass, unsigned long, m_dwClassId)
TOV_PRIVATE_MEMBER(IsRegistered, CTOVClass, bool, m_bRegistered)
TOV_PRIVATE_MEMBER(NextIdOf, CTOVClassServer, unsigned long, m_dwNextClassId)

constexpr unsigned long NO_ID = 0xFFFFFFFFul;

// The ids of the process's server are used up while it lives.
class CUsedUpIds
{
public:
    CUsedUpIds() : m_dwNext(NextIdOf(CTOVClassServer::Instance())) { NextIdOf(CTOVClassServer::Instance()) = NO_ID; }
    ~CUsedUpIds() { NextIdOf(CTOVClassServer::Instance()) = m_dwNext; }
    CUsedUpIds(const CUsedUpIds&) = delete;
    CUsedUpIds& operator=(const CUsedUpIds&) = delete;

private:
    const unsigned long m_dwNext;
};
} // namespace

TEST(CTOVClassLifeTest, SecondOfANameEqualsTheFirst)
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

TEST(CTOVClassLifeTest, SecondOfANameTakesTheEntryOfTheFirstWithIt)
{
    const CTOVClass oFirst("Twin");
    {
        const CTOVClass oSecond("Twin");
    }

    EXPECT_FALSE(IsHeld("Twin"));
    EXPECT_STREQ("Twin", oFirst.GetName());
}

TEST(CTOVClassLifeTest, RemovalGoesByNameAlone)
{
    COpenClass* pFirst = new COpenClass("Heir");
    pFirst->Unregister();
    const CTOVClass oSecond("Heir");
    EXPECT_EQ(&oSecond, &TOVRuntimeClass("Heir"));
    EXPECT_TRUE(*pFirst != oSecond);

    delete pFirst;

    EXPECT_FALSE(IsHeld("Heir"));
}

TEST(CTOVClassLifeTest, UnregisterLeavesTheServerAndKeepsTheId)
{
    COpenClass oClass("Leaver");
    const unsigned long ulId = oClass.GetClassId();

    oClass.Unregister();

    EXPECT_FALSE(IsHeld("Leaver"));
    EXPECT_EQ(ulId, oClass.GetClassId());
}

TEST(CTOVClassLifeTest, UnregisterWithoutAnEntryIsSilent)
{
    COpenClass oClass("Leaver");
    oClass.Unregister();
    const long lHeld = GetNumHeld();
    const CLogRecorder oLog;

    oClass.Unregister();

    EXPECT_EQ(lHeld, GetNumHeld());
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST(CTOVClassLifeTest, UnregisterWithoutAnIdDoesNothing)
{
    COpenClass oClass("Without id");
    const unsigned long ulId = oClass.GetClassId();
    ClassId(oClass) = 0xFFFFFFFFul;

    oClass.Unregister();

    EXPECT_TRUE(IsHeld("Without id"));
    ClassId(oClass) = ulId;
}

TEST(CTOVClassLifeTest, RegisterTakesANewId)
{
    COpenClass oClass("Returner");
    const unsigned long ulId = oClass.GetClassId();
    oClass.Unregister();

    oClass.Register();

    EXPECT_EQ(ulId + 1, oClass.GetClassId());
    EXPECT_EQ(&oClass, &TOVRuntimeClass("Returner"));
}

TEST(CTOVClassLifeTest, RegisterTwiceKeepsTheId)
{
    COpenClass oClass("Twice");
    const unsigned long ulId = oClass.GetClassId();
    const CLogRecorder oLog;

    oClass.Register();

    EXPECT_EQ(ulId, oClass.GetClassId());
    EXPECT_EQ(1, oLog.CountLines("Class Twice already registered!"));
}

TEST(CTOVClassLifeTest, AddsSuperClassesAlsoRepeatedly)
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

TEST(CTOVClassLifeTest, RemovesSuperClassesButSkipsTheEntryBehindARemovedOne)
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

TEST(CTOVClassLifeTest, RemovesASuperClassByItsAddress)
{
    const CTOVClass oFirst("Twin");
    const CTOVClass oSecond("Twin");
    COpenClass oClass("Son", &oFirst);

    oClass.RemoveSuperClass(oSecond);

    EXPECT_EQ(1, oClass.GetNumSuperClasses());
}

TEST(CTOVClassLifeTest, CopySharesNameIdAndSuperClasses)
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

TEST(CTOVClassLifeTest, EndOfACopyRemovesTheClass)
{
    const CTOVClass oClass("Copied");
    {
        const CTOVClass oCopy(oClass);
        EXPECT_TRUE(IsHeld("Copied"));
    }

    EXPECT_FALSE(IsHeld("Copied"));
    EXPECT_STREQ("Copied", oClass.GetName());
}

TEST(CTOVClassLifeTest, CopyKeepsTheNameOfADeadOriginal)
{
    const CTOVClass* pClass = new CTOVClass("Copied");
    const CTOVClass oCopy(*pClass);
    delete pClass;

    EXPECT_STREQ("Copied", oCopy.GetName());
    EXPECT_FALSE(IsHeld("Copied"));
}

TEST(CTOVClassLifeTest, AssignmentSharesNameIdAndSuperClasses)
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

TEST(CTOVClassLifeTest, AssignmentToItselfChangesNothing)
{
    CTOVClass oClass("Assigned");
    const CTOVClass& oSame = oClass;
    const unsigned long ulId = oClass.GetClassId();

    oClass = oSame;

    EXPECT_STREQ("Assigned", oClass.GetName());
    EXPECT_EQ(ulId, oClass.GetClassId());
    EXPECT_EQ(&oClass, &TOVRuntimeClass("Assigned"));
}

TEST(CTOVClassLifeTest, EndOfAnAssignedDescriptorLeavesNothingOfItInTheServer)
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

TEST(CTOVClassLifeTest, FreesItsName)
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

TEST(CTOVClassLifeTest, WithoutAnIdLeavesItsNameInTheServer)
{
    const CLogRecorder oLog;
    {
        CTOVClass oClass("Without id");
        ClassId(oClass) = NO_ID;
    }

    EXPECT_EQ(0, oLog.CountLines("Removing class"));
    EXPECT_TRUE(IsHeld("Without id"));
    CTOVClassServer::Instance().RemoveClass("Without id");
}

TEST(CTOVClassLifeTest, RefusesToComeToLifeWhenTheIdsAreUsedUp)
{
    const long lHeld = GetNumHeld();
    {
        const CUsedUpIds oUsedUp;
        EXPECT_CHECK_AT("TOVRtti/TOVClassServer", "m_dwNextClassId != -1", CTOVClass("Too late"));
    }

    EXPECT_FALSE(IsHeld("Too late"));
    EXPECT_EQ(lHeld, GetNumHeld());
}

TEST(CTOVClassLifeTest, FreesItsNameWhenTheIdsAreUsedUp)
{
    const CTOVClass oRoot("Root");
    const CUsedUpIds oUsedUp;
    CAllocationCounter oCounter;
    const bool bRaised =
        FailsACheck([&oRoot] { const CTOVClass oClass("A name of some length that nobody needs", &oRoot); });
    const long lKept = oCounter.Kept();

    EXPECT_TRUE(bRaised);
    EXPECT_EQ(0, lKept);
}

// Settled: nothing sets it, and copies take what they find.
TEST(CTOVClassLifeTest, CopiesTheMarkThatNothingReads)
{
    CTOVClass oClass("Marked");
    CTOVClass oTarget("Target");
    EXPECT_FALSE(IsRegistered(oClass));

    IsRegistered(oClass) = true;
    CTOVClass oCopy(oClass);
    oTarget = oClass;

    EXPECT_TRUE(IsRegistered(oCopy));
    EXPECT_TRUE(IsRegistered(oTarget));
}
