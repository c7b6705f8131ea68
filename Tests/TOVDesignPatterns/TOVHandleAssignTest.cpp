// What is assigned to handles: other handles, ids and objects.
#include "Support/TOVPrivateMember.h"
#include "TOVDesignPatterns/TOVHandleInstruments.h"

namespace
{
TOV_PRIVATE_MEMBER(ObjectOf, CTOVHandle, ITOVRefCount*, m_pObject)
TOV_PRIVATE_MEMBER(DatabaseOf, CTOVHandle, ITOVHandleDatabase*, m_pDatabase)

class CTOVHandleAssignTest : public CHandleFixture
{
};

// An element of a list that handles hold together.
class CNode : public CTOVRefCount
{
public:
    explicit CNode(int& nDeaths) : m_nDeaths(nDeaths) {}
    ~CNode() override { ++m_nDeaths; }
    CNode(const CNode&) = delete;
    CNode& operator=(const CNode&) = delete;

    CTOVHandle m_oNext;

private:
    int& m_nDeaths;
};

// A list of nodes with the ids from 1 on, held by its first handle alone.
CTOVHandle MakeList(CTestDatabase& oDatabase, long lNodes, int& nDeaths)
{
    CTOVHandle oHead;
    for (long lId = lNodes; lId > 0; --lId)
    {
        CNode* const pNode = new CNode(nDeaths);
        pNode->m_oNext = oHead;
        oDatabase.m_aThings[lId] = pNode;
        oHead = CTOVHandle(oDatabase, lId);
        pNode->Release();
    }
    oDatabase.Calls();
    return oHead;
}

CTOVHandle& NextOf(CTOVHandle& oHandle)
{
    return static_cast<CNode*>(oHandle.Get())->m_oNext;
}
} // namespace

TEST_F(CTOVHandleAssignTest, BoundToADatabaseItTakesIdsAndObjects)
{
    CTOVHandle oHandle(m_oDatabase, -1l);

    oHandle = 5l;
    EXPECT_EQ(&m_oFive, oHandle.Get());

    oHandle = &m_oEight;
    EXPECT_EQ(8, static_cast<long>(oHandle));

    EXPECT_EQ((tCalls{"id 5", "object"}), m_oDatabase.Calls());
    EXPECT_EQ(1, m_oFive.GetRefCount());
    EXPECT_EQ(2, m_oEight.GetRefCount());
}

TEST_F(CTOVHandleAssignTest, TheDatabaseIsAskedForTheIdOfNoneAndForNoObjectToo)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    m_oDatabase.Calls();

    oHandle = -1l;
    EXPECT_EQ((tCalls{"id -1"}), m_oDatabase.Calls());

    CTOVHandle oOther(m_oDatabase, 5l);
    m_oDatabase.Calls();
    oOther = static_cast<ITOVRefCount*>(nullptr);
    EXPECT_EQ((tCalls{"object"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleAssignTest, WhatTheDatabaseGivesForAnUnknownIdIsTaken)
{
    CTOVHandle oHandle(m_oDatabase, 5l);

    const CTOVHandle& oResult = oHandle = 77l;

    EXPECT_EQ(&oHandle, &oResult);
    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ(nullptr, DatabaseOf(oHandle));
    EXPECT_EQ(1, m_oFive.GetRefCount());
    EXPECT_FALSE(CTOVHandle(m_oDatabase, 77l).IsValid());
}

TEST_F(CTOVHandleAssignTest, ADatabaseThatThrowsLeavesTheHandleAsItWas)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    m_oDatabase.m_bRefuses = true;

    EXPECT_THROW(oHandle = 8l, int);
    EXPECT_THROW(oHandle = &m_oEight, int);
    EXPECT_THROW(CTOVHandle(m_oDatabase, 8l), int);

    EXPECT_EQ(&m_oFive, oHandle.Get());
    EXPECT_EQ(2, m_oFive.GetRefCount());
    EXPECT_EQ(1, m_oEight.GetRefCount());
}

TEST_F(CTOVHandleAssignTest, RefusesIdsAndObjectsWithoutADatabase)
{
    CTOVHandle oHandle;

    EXPECT_CHECK(NO_DATABASE, oHandle = 5l);
    EXPECT_CHECK(NO_DATABASE, oHandle = &m_oFive);
    EXPECT_CHECK(NO_DATABASE, oHandle = -1l);
    EXPECT_CHECK(NO_DATABASE, oHandle = static_cast<ITOVRefCount*>(nullptr));

    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ(-1, static_cast<long>(oHandle));
    EXPECT_EQ(1, m_oFive.GetRefCount());
}

TEST_F(CTOVHandleAssignTest, IsAssigned)
{
    const CTOVHandle oSource(m_oDatabase, 5l);
    CTOVHandle oTarget(m_oDatabase, 8l);
    m_oDatabase.Calls();

    EXPECT_EQ(&oTarget, &(oTarget = oSource));

    EXPECT_EQ(3, m_oFive.GetRefCount());
    EXPECT_EQ(1, m_oEight.GetRefCount());
    EXPECT_EQ(&m_oFive, oTarget.Get());
    EXPECT_EQ(5, static_cast<long>(oTarget));
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
}

TEST_F(CTOVHandleAssignTest, IsAssignedTheHandleOfAnotherDatabase)
{
    CTestDatabase oOther;
    CCountedThing oThing;
    oOther.m_aThings[1] = &oThing;
    CTOVHandle oTarget(m_oDatabase, 5l);

    oTarget = CTOVHandle(oOther, 1l);
    oTarget = 1l;

    EXPECT_EQ(&oOther, DatabaseOf(oTarget));
    EXPECT_EQ(&oThing, oTarget.Get());
    EXPECT_EQ(1, m_oFive.GetRefCount());
}

TEST_F(CTOVHandleAssignTest, AssigningLetsTheLastReferenceGo)
{
    CTOVHandle oTarget(m_oDatabase, 5l);
    m_oFive.Release();
    m_oDatabase.Calls();

    oTarget = CTOVHandle::Null();

    EXPECT_EQ(1, m_oFive.m_nDeaths);
    EXPECT_EQ((tCalls{"remove 5"}), m_oDatabase.Calls());
    EXPECT_FALSE(oTarget.IsValid());
    EXPECT_EQ(nullptr, DatabaseOf(oTarget));
}

TEST_F(CTOVHandleAssignTest, AssigningToAnInvalidHandleDoesNotReleaseTheObjectThatIsSet)
{
    const CTOVHandle oSource(m_oDatabase, 8l);
    CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);

    oNoId = oSource;

    EXPECT_EQ(2, m_oFive.GetRefCount()) << "kept for good";
    EXPECT_EQ(3, m_oEight.GetRefCount());
    EXPECT_EQ(&m_oEight, oNoId.Get());
}

TEST_F(CTOVHandleAssignTest, AnInvalidHandleIsAssignedWithTheObjectThatIsSet)
{
    const CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);
    CTOVHandle oTarget(m_oDatabase, 8l);

    oTarget = oNoId;

    EXPECT_EQ(3, m_oFive.GetRefCount());
    EXPECT_EQ(1, m_oEight.GetRefCount());
    EXPECT_FALSE(oTarget.IsValid());
    EXPECT_EQ(&m_oFive, ObjectOf(oTarget));
}

TEST_F(CTOVHandleAssignTest, AssignedToItselfWhileOthersHoldTheObjectItStays)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    const CTOVHandle& oSame = oHandle;

    oHandle = oSame;

    EXPECT_EQ(2, m_oFive.GetRefCount());
    EXPECT_EQ(&m_oFive, oHandle.Get());
}

TEST_F(CTOVHandleAssignTest, AssignedToItselfAsTheLastReferenceItEndsTheObject)
{
    int nDeaths = 0;
    CMortal* const pMortal = new CMortal(nDeaths);
    m_oDatabase.m_aThings[3] = pMortal;
    {
        CTOVHandle oHandle(m_oDatabase, 3l);
        const CTOVHandle& oSame = oHandle;
        pMortal->Release();
        m_oDatabase.Calls();

        oHandle = oSame;

        EXPECT_EQ(1, nDeaths);
        EXPECT_EQ((tCalls{"remove 3"}), m_oDatabase.Calls());
        EXPECT_FALSE(oHandle.IsValid());
        EXPECT_EQ(nullptr, ObjectOf(oHandle));
        EXPECT_EQ(3, static_cast<long>(oHandle));
    }
    EXPECT_EQ(1, nDeaths);
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
}

TEST_F(CTOVHandleAssignTest, WalksAListThatDiesBehindIt)
{
    int nDeaths = 0;
    CTOVHandle oHandle(MakeList(m_oDatabase, 3, nDeaths));

    for (const long lId : {1, 2, 3})
    {
        EXPECT_EQ(lId, static_cast<long>(oHandle));
        EXPECT_EQ(1, oHandle.Get()->GetRefCount());
        oHandle = NextOf(oHandle);
        EXPECT_EQ(lId, nDeaths);
    }

    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ((tCalls{"remove 1", "remove 2", "remove 3"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleAssignTest, TakesAnElementOutOfItsList)
{
    int nDeaths = 0;
    CTOVHandle oHead(MakeList(m_oDatabase, 3, nDeaths));

    NextOf(oHead) = NextOf(NextOf(oHead));

    EXPECT_EQ(1, nDeaths);
    EXPECT_EQ(3, static_cast<long>(NextOf(oHead)));
    EXPECT_EQ((tCalls{"remove 2"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleAssignTest, GoesWithTheObjectThatItHoldsItself)
{
    int nDeaths = 0;
    CNode* pNode = nullptr;
    {
        const CTOVHandle oHandle(MakeList(m_oDatabase, 1, nDeaths));
        pNode = static_cast<CNode*>(oHandle.Get());
        pNode->m_oNext = oHandle;
    }
    ASSERT_EQ(1, pNode->GetRefCount());

    EXPECT_NO_CHECK(pNode->m_oNext = CTOVHandle::Null());

    EXPECT_EQ(1, nDeaths);
    EXPECT_EQ((tCalls{"remove 1"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleAssignTest, HasTheNewObjectAlsoWhenTheOldOnesReleaseRaises)
{
    CSpent oSpent;
    m_oDatabase.m_aThings[3] = &oSpent;
    CTOVHandle oHandle(m_oDatabase, 3l);
    oSpent.Spend();
    {
        const CTOVHandle oSource(m_oDatabase, 5l);
        EXPECT_CHECK("lRefCount >= 0", oHandle = oSource);
    }

    EXPECT_EQ(5, static_cast<long>(oHandle));
    EXPECT_EQ(2, m_oFive.GetRefCount());
}
