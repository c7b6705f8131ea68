// Handles and the databases that give them: life, access, comparison.
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "TOVDesignPatterns/TOVHandleInstruments.h"

#include <cstdint>
#include <type_traits>

static_assert(std::has_virtual_destructor<CTOVHandle>::value);
static_assert(std::is_nothrow_destructible<CTOVHandle>::value);
static_assert(!std::is_constructible<CTOVHandle, ITOVHandleDatabase&, long, ITOVRefCount*>::value);
static_assert(std::is_abstract<ITOVHandleDatabase>::value);
static_assert(!std::has_virtual_destructor<ITOVHandleDatabase>::value);
static_assert(std::is_same<decltype(&CTOVHandle::Compare), int (CTOVHandle::*)(const CTOVHandle&) const>::value);

namespace
{
TOV_PRIVATE_MEMBER(ObjectOf, CTOVHandle, ITOVRefCount*, m_pObject)
TOV_PRIVATE_MEMBER(IdOf, CTOVHandle, long, m_lHandle)
TOV_PRIVATE_MEMBER(DatabaseOf, CTOVHandle, ITOVHandleDatabase*, m_pDatabase)

class CTOVHandleTest : public CHandleFixture
{
};
} // namespace

TEST_F(CTOVHandleTest, NamesNothingAtFirst)
{
    CTOVHandle oHandle;

    EXPECT_EQ(nullptr, ObjectOf(oHandle));
    EXPECT_EQ(-1, IdOf(oHandle));
    EXPECT_EQ(nullptr, DatabaseOf(oHandle));
    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ(-1, static_cast<long>(oHandle));
}

TEST_F(CTOVHandleTest, HoldsItsMembersInOrder)
{
    CTOVHandle oHandle;

    ExpectMembersInOrder(oHandle, ObjectOf(oHandle), IdOf(oHandle), DatabaseOf(oHandle));
}

TEST_F(CTOVHandleTest, IsMadeOfAnIdByTheDatabase)
{
    CTOVHandle oHandle(m_oDatabase, 5l);

    EXPECT_EQ((tCalls{"id 5"}), m_oDatabase.Calls());
    EXPECT_TRUE(oHandle.IsValid());
    EXPECT_EQ(5, static_cast<long>(oHandle));
    EXPECT_EQ(&m_oFive, oHandle.Get());
    EXPECT_EQ(&m_oDatabase, DatabaseOf(oHandle));
    EXPECT_EQ(2, m_oFive.GetRefCount());
}

TEST_F(CTOVHandleTest, IsMadeOfAnObjectByTheDatabase)
{
    CTOVHandle oHandle(m_oDatabase, &m_oEight);

    EXPECT_EQ((tCalls{"object"}), m_oDatabase.Calls());
    EXPECT_TRUE(oHandle.IsValid());
    EXPECT_EQ(8, static_cast<long>(oHandle));
    EXPECT_EQ(&m_oEight, oHandle.Get());
    EXPECT_EQ(2, m_oEight.GetRefCount());
}

TEST_F(CTOVHandleTest, MadeOfNoIdOrNoObjectIsBoundToTheDatabaseWithoutAskingIt)
{
    CTOVHandle oNoId(m_oDatabase, -1l);
    CTOVHandle oNoObject(m_oDatabase, static_cast<ITOVRefCount*>(nullptr));
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());

    for (CTOVHandle* const pHandle : {&oNoId, &oNoObject})
    {
        EXPECT_FALSE(pHandle->IsValid());
        EXPECT_EQ(-1, static_cast<long>(*pHandle));
        EXPECT_EQ(nullptr, ObjectOf(*pHandle));
        EXPECT_EQ(&m_oDatabase, DatabaseOf(*pHandle));
    }
}

TEST_F(CTOVHandleTest, IsValidWithIdObjectAndDatabaseOnly)
{
    EXPECT_TRUE(m_oDatabase.New(5, &m_oFive).IsValid());
    EXPECT_TRUE(m_oDatabase.New(0, &m_oFive).IsValid());
    EXPECT_TRUE(m_oDatabase.New(-2, &m_oFive).IsValid());
    EXPECT_FALSE(m_oDatabase.New(-1, &m_oFive).IsValid());
    EXPECT_FALSE(m_oDatabase.New(5, nullptr).IsValid());
    EXPECT_FALSE(m_oDatabase.New(-1, nullptr).IsValid());

    CTOVHandle oHandle(m_oDatabase, 5l);
    DatabaseOf(oHandle) = nullptr;
    EXPECT_FALSE(oHandle.IsValid());
    DatabaseOf(oHandle) = &m_oDatabase;
}

TEST_F(CTOVHandleTest, GivesItsObject)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    const CTOVHandle& oSame = oHandle;

    EXPECT_EQ(&m_oFive, oHandle.Get());
    EXPECT_EQ(&m_oFive, oSame.Get());
}

TEST_F(CTOVHandleTest, RefusesToGiveAnObjectWhileInvalid)
{
    CTOVHandle oHandle;
    CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);
    CTOVHandle oNoObject = m_oDatabase.New(5, nullptr);

    for (CTOVHandle* const pHandle : {&oHandle, &oNoId, &oNoObject})
    {
        const CTOVHandle& oSame = *pHandle;
        EXPECT_CHECK("IsValid()", pHandle->Get());
        EXPECT_CHECK("IsValid()", oSame.Get());
        EXPECT_FALSE(pHandle->IsValid());
    }
}

TEST_F(CTOVHandleTest, ACopyHoldsAReferenceOfItsOwn)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    m_oDatabase.Calls();
    {
        CTOVHandle oCopy(oHandle);
        EXPECT_EQ(3, m_oFive.GetRefCount());
        EXPECT_EQ(5, static_cast<long>(oCopy));
        EXPECT_EQ(&m_oFive, oCopy.Get());
        EXPECT_EQ(&m_oDatabase, DatabaseOf(oCopy));
    }
    EXPECT_EQ(2, m_oFive.GetRefCount());
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, ACopyOfAnInvalidHandleHoldsTheObjectThatIsSet)
{
    const CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);
    EXPECT_EQ(2, m_oFive.GetRefCount());

    CTOVHandle oCopy(oNoId);
    EXPECT_EQ(3, m_oFive.GetRefCount());
    EXPECT_EQ(&m_oFive, ObjectOf(oCopy));

    CTOVHandle oNone((CTOVHandle()));
    EXPECT_EQ(nullptr, DatabaseOf(oNone));
}

TEST_F(CTOVHandleTest, TheEndOfAHandleIsNoEndOfAnObjectThatOthersHold)
{
    {
        const CTOVHandle oHandle(m_oDatabase, 5l);
    }

    EXPECT_EQ(1, m_oFive.GetRefCount());
    EXPECT_EQ((tCalls{"id 5"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, TheLastHandleTellsTheDatabaseAfterTheObjectsEnd)
{
    class CWatcher : public CTestDatabase
    {
    public:
        void RemoveHandle(long lHandle) override
        {
            CTestDatabase::RemoveHandle(lHandle);
            m_nDeathsAtRemoval = m_nDeaths;
        }
        int m_nDeaths = 0;
        int m_nDeathsAtRemoval = -1;
    };
    CWatcher oDatabase;
    CMortal* const pMortal = new CMortal(oDatabase.m_nDeaths);
    oDatabase.m_aThings[3] = pMortal;
    {
        const CTOVHandle oHandle(oDatabase, 3l);
        const CTOVHandle oCopy(oHandle);
        pMortal->Release();
        EXPECT_EQ((tCalls{"id 3"}), oDatabase.Calls());
    }

    EXPECT_EQ(1, oDatabase.m_nDeaths);
    EXPECT_EQ(1, oDatabase.m_nDeathsAtRemoval);
    EXPECT_EQ((tCalls{"remove 3"}), oDatabase.Calls());
}

TEST_F(CTOVHandleTest, TheLastHandleOnAnObjectWithoutAnIdTellsThat)
{
    {
        const CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);
        m_oFive.Release();
        EXPECT_EQ(tCalls(), m_oDatabase.Calls());
    }

    EXPECT_EQ(1, m_oFive.m_nDeaths);
    EXPECT_EQ((tCalls{"remove -1"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, DeleteGivesUpTheReferenceAndLeavesTheMembers)
{
    {
        CTOVHandle oHandle(m_oDatabase, 5l);
        m_oFive.AddRef();

        oHandle.Delete();

        EXPECT_EQ(2, m_oFive.GetRefCount());
        EXPECT_TRUE(oHandle.IsValid());
        EXPECT_EQ(&m_oFive, oHandle.Get());
        EXPECT_EQ(5, static_cast<long>(oHandle));
        EXPECT_EQ(&m_oDatabase, DatabaseOf(oHandle));
    }
    EXPECT_EQ(1, m_oFive.GetRefCount()) << "released once more";
    EXPECT_EQ((tCalls{"id 5"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, DeleteOfTheLastReferenceTellsTheDatabaseOnce)
{
    {
        CTOVHandle oHandle(m_oDatabase, 5l);
        m_oFive.Release();
        m_oDatabase.Calls();

        oHandle.Delete();

        EXPECT_EQ((tCalls{"remove 5"}), m_oDatabase.Calls());
        EXPECT_EQ(1, m_oFive.m_nDeaths);
        EXPECT_TRUE(oHandle.IsValid());
    }
    EXPECT_EQ(-1, m_oFive.GetRefCount()) << "released once more";
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, OnlyTellsAtItsEndWhatTheObjectsReleaseRaises)
{
    CSpent oSpent;
    m_oDatabase.m_aThings[3] = &oSpent;

    EXPECT_TOLD_CHECK("lRefCount >= 0", {
        const CTOVHandle oHandle(m_oDatabase, 3l);
        oSpent.Spend();
    });
    EXPECT_EQ(-1, oSpent.GetRefCount());
    EXPECT_EQ((tCalls{"id 3"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, DeleteOfNothingDoesNothing)
{
    CTOVHandle oNone;
    CTOVHandle oBound(m_oDatabase, -1l);

    EXPECT_NO_CHECK(oNone.Delete());
    EXPECT_NO_CHECK(oBound.Delete());

    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, ThereIsOneHandleOnNothing)
{
    const CTOVHandle& oNull = CTOVHandle::Null();

    EXPECT_FALSE(oNull.IsValid());
    EXPECT_EQ(-1, static_cast<long>(oNull));
    EXPECT_EQ(&oNull, &CTOVHandle::Null());
    EXPECT_EQ(0, oNull.Compare(CTOVHandle()));
    static_assert(std::is_same<const CTOVHandle&, decltype(CTOVHandle::Null())>::value);
}

TEST_F(CTOVHandleTest, ComparesTheIdsFirstWithTheirSigns)
{
    const CTOVHandle oFive(m_oDatabase, 5l);
    const CTOVHandle oEight(m_oDatabase, 8l);
    const CTOVHandle oNegative = m_oDatabase.New(-2, &m_oEight);

    EXPECT_EQ(-1, oFive.Compare(oEight));
    EXPECT_EQ(1, oEight.Compare(oFive));
    EXPECT_EQ(0, oFive.Compare(CTOVHandle(oFive)));
    EXPECT_EQ(-1, oNegative.Compare(CTOVHandle::Null()));
    EXPECT_EQ(1, CTOVHandle::Null().Compare(oNegative));
    EXPECT_EQ(-1, CTOVHandle::Null().Compare(oFive));
    EXPECT_EQ(1, oFive.Compare(CTOVHandle::Null()));
    EXPECT_EQ(0, CTOVHandle().Compare(CTOVHandle()));
}

TEST_F(CTOVHandleTest, ComparesTheObjectsNextByTheirAddresses)
{
    CCountedThing aThings[2];
    CTestDatabase aDatabases[2];
    const CTOVHandle oFirst = aDatabases[1].New(5, &aThings[0]);
    const CTOVHandle oSecond = aDatabases[0].New(5, &aThings[1]);
    const CTOVHandle oNoObject = aDatabases[1].New(5, nullptr);

    EXPECT_EQ(-1, oFirst.Compare(oSecond));
    EXPECT_EQ(1, oSecond.Compare(oFirst));
    EXPECT_EQ(-1, oNoObject.Compare(oFirst));
    EXPECT_EQ(1, oFirst.Compare(oNoObject));
}

TEST_F(CTOVHandleTest, ComparesTheDatabasesLastByTheirAddresses)
{
    CTestDatabase aDatabases[2];
    const CTOVHandle oFirst = aDatabases[0].New(5, &m_oFive);
    const CTOVHandle oSecond = aDatabases[1].New(5, &m_oFive);

    EXPECT_EQ(-1, oFirst.Compare(oSecond));
    EXPECT_EQ(1, oSecond.Compare(oFirst));
    EXPECT_EQ(0, oFirst.Compare(aDatabases[0].New(5, &m_oFive)));
    EXPECT_EQ(-1, CTOVHandle().Compare(CTOVHandle(m_oDatabase, -1l)));
    EXPECT_EQ(1, CTOVHandle(m_oDatabase, -1l).Compare(CTOVHandle()));
}

// Addresses of the upper half would be negative as numbers with a sign.
TEST_F(CTOVHandleTest, AddressesAreComparedWithoutASign)
{
    CTOVHandle oLow;
    CTOVHandle oHigh;
    ObjectOf(oLow) = reinterpret_cast<ITOVRefCount*>(static_cast<std::uintptr_t>(8));
    ObjectOf(oHigh) = reinterpret_cast<ITOVRefCount*>(~static_cast<std::uintptr_t>(7));
    EXPECT_EQ(-1, oLow.Compare(oHigh));
    EXPECT_EQ(1, oHigh.Compare(oLow));

    ObjectOf(oLow) = nullptr;
    ObjectOf(oHigh) = nullptr;
    DatabaseOf(oLow) = reinterpret_cast<ITOVHandleDatabase*>(static_cast<std::uintptr_t>(8));
    DatabaseOf(oHigh) = reinterpret_cast<ITOVHandleDatabase*>(~static_cast<std::uintptr_t>(7));
    EXPECT_EQ(-1, oLow.Compare(oHigh));
    EXPECT_EQ(1, oHigh.Compare(oLow));
}

TEST_F(CTOVHandleTest, TheDatabaseMakesHandlesOfItsOwn)
{
    CTOVHandle oHandle = m_oDatabase.New(42, &m_oFive);

    EXPECT_EQ(42, static_cast<long>(oHandle));
    EXPECT_EQ(&m_oFive, oHandle.Get());
    EXPECT_EQ(&m_oDatabase, DatabaseOf(oHandle));
    EXPECT_EQ(2, m_oFive.GetRefCount());
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, DatabasesAreCopiedAndAssignedWithoutEffect)
{
    CTestDatabase oOther;
    const CTOVHandle oHandle(m_oDatabase, 5l);

    const CTestDatabase oCopy(m_oDatabase);
    oOther = oCopy;

    EXPECT_EQ(&m_oFive, CTOVHandle(oOther, 5l).Get());
    EXPECT_EQ(2, m_oFive.GetRefCount());
}
