#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVDesignPatterns/TOVHandle.h>
#include <TOVDesignPatterns/TOVRefCount.h>

#include <cstdint>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
TOV_PRIVATE_MEMBER(ObjectOf, CTOVHandle, ITOVRefCount*, m_pObject)
TOV_PRIVATE_MEMBER(IdOf, CTOVHandle, long, m_lHandle)
TOV_PRIVATE_MEMBER(DatabaseOf, CTOVHandle, ITOVHandleDatabase*, m_pDatabase)

const char NO_DATABASE[] = "m_pDatabase != NULL";

static_assert(std::has_virtual_destructor<CTOVHandle>::value);
static_assert(std::is_abstract<ITOVHandleDatabase>::value);
static_assert(!std::has_virtual_destructor<ITOVHandleDatabase>::value);
static_assert(std::is_same<decltype(&CTOVHandle::Compare), int (CTOVHandle::*)(const CTOVHandle&) const>::value);

// Counted without ever being freed, so that it can be looked at after its end.
class CThing : public ITOVRefCount
{
public:
    long AddRef() override { return ++m_lCount; }
    long Release() override
    {
        const long lCount = --m_lCount;
        if (lCount == 0)
            ++m_nDeaths;
        return lCount;
    }
    long GetRefCount() const override { return m_lCount; }

    long m_lCount = 1;
    int m_nDeaths = 0;
};

// Really gone after its end.
class CMortal : public CTOVRefCount
{
public:
    explicit CMortal(int& nDeaths) : m_nDeaths(nDeaths) {}
    ~CMortal() override { ++m_nDeaths; }
    CMortal(const CMortal&) = delete;
    CMortal& operator=(const CMortal&) = delete;

private:
    int& m_nDeaths;
};

// Knows things by number, and remembers what it was called for.
class CDatabase : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override
    {
        m_aCalls.push_back("id " + std::to_string(lHandle));
        if (m_bRefuses)
            throw 7;
        return m_aThings.count(lHandle) == 0 ? CTOVHandle() : NewHandle(lHandle, m_aThings[lHandle]);
    }

    CTOVHandle GetHandle(ITOVRefCount* pObject) override
    {
        m_aCalls.push_back("object");
        if (m_bRefuses)
            throw 7;
        for (const auto& oThing : m_aThings)
            if (oThing.second == pObject)
                return NewHandle(oThing.first, pObject);
        return CTOVHandle();
    }

    void RemoveHandle(long lHandle) override
    {
        m_aCalls.push_back("remove " + std::to_string(lHandle));
        m_aThings.erase(lHandle);
    }

    CTOVHandle New(long lHandle, ITOVRefCount* pObject) { return NewHandle(lHandle, pObject); }

    // The calls since the last look.
    std::vector<std::string> Calls()
    {
        std::vector<std::string> aCalls;
        aCalls.swap(m_aCalls);
        return aCalls;
    }

    std::map<long, ITOVRefCount*> m_aThings;
    bool m_bRefuses = false;

private:
    std::vector<std::string> m_aCalls;
};

typedef std::vector<std::string> tCalls;

// A database with two things of the numbers 5 and 8; each is held once by the test.
class CTOVHandleTest : public testing::Test
{
protected:
    CTOVHandleTest()
    {
        m_oDatabase.m_aThings[5] = &m_oFive;
        m_oDatabase.m_aThings[8] = &m_oEight;
    }

    CThing m_oFive;
    CThing m_oEight;
    CDatabase m_oDatabase;
};
} // namespace

TEST_F(CTOVHandleTest, NamesNothingAtFirst)
{
    CTOVHandle oHandle;

    EXPECT_EQ(NULL, ObjectOf(oHandle));
    EXPECT_EQ(-1, IdOf(oHandle));
    EXPECT_EQ(NULL, DatabaseOf(oHandle));
    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ(-1, static_cast<long>(oHandle));
}

TEST_F(CTOVHandleTest, HoldsItsMembersInOrder)
{
    struct sLayout
    {
        virtual ~sLayout() = default;
        ITOVRefCount* m_pObject;
        long m_lHandle;
        ITOVHandleDatabase* m_pDatabase;
    };
    CTOVHandle oHandle;
    const char* const pHandle = reinterpret_cast<const char*>(&oHandle);

    EXPECT_EQ(sizeof(sLayout), sizeof(CTOVHandle));
    EXPECT_EQ(pHandle + sizeof(void*), reinterpret_cast<const char*>(&ObjectOf(oHandle)));
    EXPECT_EQ(pHandle + 2 * sizeof(void*), reinterpret_cast<const char*>(&IdOf(oHandle)));
    EXPECT_EQ(pHandle + 2 * sizeof(void*) + sizeof(long), reinterpret_cast<const char*>(&DatabaseOf(oHandle)));
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
    CTOVHandle oNoObject(m_oDatabase, static_cast<ITOVRefCount*>(NULL));
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());

    for (CTOVHandle* const pHandle : {&oNoId, &oNoObject})
    {
        EXPECT_FALSE(pHandle->IsValid());
        EXPECT_EQ(-1, static_cast<long>(*pHandle));
        EXPECT_EQ(NULL, ObjectOf(*pHandle));
        EXPECT_EQ(&m_oDatabase, DatabaseOf(*pHandle));
    }
}

TEST_F(CTOVHandleTest, BoundToADatabaseItTakesIdsAndObjects)
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

TEST_F(CTOVHandleTest, TheDatabaseIsAskedForTheIdOfNoneAndForNoObjectToo)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    m_oDatabase.Calls();

    oHandle = -1l;
    EXPECT_EQ((tCalls{"id -1"}), m_oDatabase.Calls());

    CTOVHandle oOther(m_oDatabase, 5l);
    m_oDatabase.Calls();
    oOther = static_cast<ITOVRefCount*>(NULL);
    EXPECT_EQ((tCalls{"object"}), m_oDatabase.Calls());
}

TEST_F(CTOVHandleTest, WhatTheDatabaseGivesForAnUnknownIdIsTaken)
{
    CTOVHandle oHandle(m_oDatabase, 5l);

    const CTOVHandle& oResult = oHandle = 77l;

    EXPECT_EQ(&oHandle, &oResult);
    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ(NULL, DatabaseOf(oHandle));
    EXPECT_EQ(1, m_oFive.GetRefCount());
    EXPECT_FALSE(CTOVHandle(m_oDatabase, 77l).IsValid());
}

TEST_F(CTOVHandleTest, ADatabaseThatThrowsLeavesTheHandleAsItWas)
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

TEST_F(CTOVHandleTest, RefusesIdsAndObjectsWithoutADatabase)
{
    CTOVHandle oHandle;

    EXPECT_CHECK(NO_DATABASE, oHandle = 5l);
    EXPECT_CHECK(NO_DATABASE, oHandle = &m_oFive);
    EXPECT_CHECK(NO_DATABASE, oHandle = -1l);
    EXPECT_CHECK(NO_DATABASE, oHandle = static_cast<ITOVRefCount*>(NULL));

    EXPECT_FALSE(oHandle.IsValid());
    EXPECT_EQ(-1, static_cast<long>(oHandle));
    EXPECT_EQ(1, m_oFive.GetRefCount());
}

TEST_F(CTOVHandleTest, IsValidWithIdObjectAndDatabaseOnly)
{
    EXPECT_TRUE(m_oDatabase.New(5, &m_oFive).IsValid());
    EXPECT_TRUE(m_oDatabase.New(0, &m_oFive).IsValid());
    EXPECT_TRUE(m_oDatabase.New(-2, &m_oFive).IsValid());
    EXPECT_FALSE(m_oDatabase.New(-1, &m_oFive).IsValid());
    EXPECT_FALSE(m_oDatabase.New(5, NULL).IsValid());
    EXPECT_FALSE(m_oDatabase.New(-1, NULL).IsValid());

    CTOVHandle oHandle(m_oDatabase, 5l);
    DatabaseOf(oHandle) = NULL;
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
    CTOVHandle oNoObject = m_oDatabase.New(5, NULL);

    for (CTOVHandle* const pHandle : {&oHandle, &oNoId, &oNoObject})
    {
        const CTOVHandle& oSame = *pHandle;
        EXPECT_CHECK("IsValid()", pHandle->Get());
        EXPECT_CHECK("IsValid()", oSame.Get());
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
    EXPECT_EQ(NULL, DatabaseOf(oNone));
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
    class CWatcher : public CDatabase
    {
    public:
        void RemoveHandle(long lHandle) override
        {
            CDatabase::RemoveHandle(lHandle);
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

TEST_F(CTOVHandleTest, IsAssigned)
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

TEST_F(CTOVHandleTest, IsAssignedTheHandleOfAnotherDatabase)
{
    CDatabase oOther;
    CThing oThing;
    oOther.m_aThings[1] = &oThing;
    CTOVHandle oTarget(m_oDatabase, 5l);

    oTarget = CTOVHandle(oOther, 1l);
    oTarget = 1l;

    EXPECT_EQ(&oOther, DatabaseOf(oTarget));
    EXPECT_EQ(&oThing, oTarget.Get());
    EXPECT_EQ(1, m_oFive.GetRefCount());
}

TEST_F(CTOVHandleTest, AssigningLetsTheLastReferenceGo)
{
    CTOVHandle oTarget(m_oDatabase, 5l);
    m_oFive.Release();
    m_oDatabase.Calls();

    oTarget = CTOVHandle::Null();

    EXPECT_EQ(1, m_oFive.m_nDeaths);
    EXPECT_EQ((tCalls{"remove 5"}), m_oDatabase.Calls());
    EXPECT_FALSE(oTarget.IsValid());
    EXPECT_EQ(NULL, DatabaseOf(oTarget));
}

TEST_F(CTOVHandleTest, AssigningToAnInvalidHandleDoesNotReleaseTheObjectThatIsSet)
{
    const CTOVHandle oSource(m_oDatabase, 8l);
    CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);

    oNoId = oSource;

    EXPECT_EQ(2, m_oFive.GetRefCount()) << "kept for good";
    EXPECT_EQ(3, m_oEight.GetRefCount());
    EXPECT_EQ(&m_oEight, oNoId.Get());
}

TEST_F(CTOVHandleTest, AnInvalidHandleIsAssignedWithTheObjectThatIsSet)
{
    const CTOVHandle oNoId = m_oDatabase.New(-1, &m_oFive);
    CTOVHandle oTarget(m_oDatabase, 8l);

    oTarget = oNoId;

    EXPECT_EQ(3, m_oFive.GetRefCount());
    EXPECT_EQ(1, m_oEight.GetRefCount());
    EXPECT_FALSE(oTarget.IsValid());
    EXPECT_EQ(&m_oFive, ObjectOf(oTarget));
}

TEST_F(CTOVHandleTest, AssignedToItselfWhileOthersHoldTheObjectItStays)
{
    CTOVHandle oHandle(m_oDatabase, 5l);
    const CTOVHandle& oSame = oHandle;

    oHandle = oSame;

    EXPECT_EQ(2, m_oFive.GetRefCount());
    EXPECT_EQ(&m_oFive, oHandle.Get());
}

TEST_F(CTOVHandleTest, AssignedToItselfAsTheLastReferenceItEndsTheObject)
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
        EXPECT_EQ(NULL, ObjectOf(oHandle));
        EXPECT_EQ(3, static_cast<long>(oHandle));
    }
    EXPECT_EQ(1, nDeaths);
    EXPECT_EQ(tCalls(), m_oDatabase.Calls());
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
    CThing aThings[2];
    CDatabase aDatabases[2];
    const CTOVHandle oFirst = aDatabases[1].New(5, &aThings[0]);
    const CTOVHandle oSecond = aDatabases[0].New(5, &aThings[1]);
    const CTOVHandle oNoObject = aDatabases[1].New(5, NULL);

    EXPECT_EQ(-1, oFirst.Compare(oSecond));
    EXPECT_EQ(1, oSecond.Compare(oFirst));
    EXPECT_EQ(-1, oNoObject.Compare(oFirst));
    EXPECT_EQ(1, oFirst.Compare(oNoObject));
}

TEST_F(CTOVHandleTest, ComparesTheDatabasesLastByTheirAddresses)
{
    CDatabase aDatabases[2];
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

    ObjectOf(oLow) = NULL;
    ObjectOf(oHigh) = NULL;
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
    CDatabase oOther;
    const CTOVHandle oHandle(m_oDatabase, 5l);

    const CDatabase oCopy(m_oDatabase);
    oOther = oCopy;

    EXPECT_EQ(&m_oFive, CTOVHandle(oOther, 5l).Get());
    EXPECT_EQ(2, m_oFive.GetRefCount());
}
