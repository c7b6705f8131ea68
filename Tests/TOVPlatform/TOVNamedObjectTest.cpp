// Events, mutexes and semaphores that have a name, inside one process.
#include "Support/TOVBlockableThread.h"
#include "TOVPlatform/TOVSynchronizationInstruments.h"

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
class TOVPlatformNamedObjectTest : public testing::TestWithParam<sObjectKind>
{
protected:
    static unsigned long long Create(const std::string& sName) { return GetParam().fnCreate(sName.c_str()); }

    static bool OthersCanHave(unsigned long long hObject)
    {
        bool bTaken = false;
        OnAnotherThread([&] { bTaken = TakesNow(hObject); });
        return bTaken;
    }

    const std::string m_sName = UniqueName();
};

INSTANTIATE_TEST_SUITE_P(Kind, TOVPlatformNamedObjectTest, testing::ValuesIn(OBJECT_KINDS), sRowName());
} // namespace

TEST_P(TOVPlatformNamedObjectTest, IsSharedByAllOfItsName)
{
    const COwnHandle hFirst(Create(m_sName));
    const COwnHandle hSecond(Create(m_sName));
    ASSERT_NE(0ull, hFirst);
    ASSERT_NE(0ull, hSecond);

    EXPECT_TRUE(TakesNow(hFirst));

    EXPECT_FALSE(OthersCanHave(hSecond));
}

TEST_P(TOVPlatformNamedObjectTest, IsNotSharedWithOtherNames)
{
    const COwnHandle hObject(Create(m_sName));
    const COwnHandle hLonger(Create(m_sName + "x"));
    const COwnHandle hShorter(Create(m_sName.substr(0, m_sName.size() - 1)));
    const COwnHandle hOtherCase(Create("T" + m_sName.substr(1)));

    EXPECT_TRUE(TakesNow(hObject));

    EXPECT_TRUE(OthersCanHave(hLonger));
    EXPECT_TRUE(OthersCanHave(hShorter));
    EXPECT_TRUE(OthersCanHave(hOtherCase));
}

TEST_P(TOVPlatformNamedObjectTest, MayStandInANameSpaceOfTheSystem)
{
    const COwnHandle hObject(Create(m_sName));
    const COwnHandle hLocal(Create("Local\\" + m_sName));
    EXPECT_TRUE(TakesNow(hObject));
    EXPECT_FALSE(OthersCanHave(hLocal)) << "the space of names without a prefix";

    const COwnHandle hGlobal(Create("Global\\" + m_sName + "g"));
    const COwnHandle hSameGlobal(Create("Global\\" + m_sName + "g"));
    EXPECT_TRUE(TakesNow(hGlobal));
    EXPECT_FALSE(OthersCanHave(hSameGlobal));

    EXPECT_EQ(0ull, Create("Other\\" + m_sName));
}

TEST_P(TOVPlatformNamedObjectTest, IsNotSharedWithoutAName)
{
    for (const char* szNone : {static_cast<const char*>(nullptr), ""})
    {
        const COwnHandle hFirst(GetParam().fnCreate(szNone));
        const COwnHandle hSecond(GetParam().fnCreate(szNone));
        EXPECT_TRUE(TakesNow(hFirst));
        EXPECT_TRUE(OthersCanHave(hSecond));
    }
}

TEST_P(TOVPlatformNamedObjectTest, LivesUntilItsLastHandleIsDestroyed)
{
    const unsigned long long hFirst = Create(m_sName);
    const unsigned long long hSecond = Create(m_sName);
    EXPECT_TRUE(TakesNow(hFirst));

    EXPECT_TRUE(GetParam().fnDestroy(hFirst));
    const unsigned long long hThird = Create(m_sName);
    EXPECT_FALSE(OthersCanHave(hThird)) << "still the same";
    EXPECT_TRUE(GetParam().fnDestroy(hSecond));
    EXPECT_TRUE(GetParam().fnDestroy(hThird));

    const COwnHandle hNew(Create(m_sName));
    EXPECT_TRUE(OthersCanHave(hNew));
}

TEST_P(TOVPlatformNamedObjectTest, CanBeHadThroughOneHandleAfterTheOtherIsDestroyed)
{
    const COwnHandle hFirst(Create(m_sName));
    const unsigned long long hSecond = Create(m_sName);

    EXPECT_TRUE(GetParam().fnDestroy(hSecond));

    EXPECT_EQ(-1, WaitForAny({hSecond}, 0));
    EXPECT_EQ(0, WaitForAny({hFirst}, 0));
}

TEST_P(TOVPlatformNamedObjectTest, TakesNamesOfAnyForm)
{
    const std::string aNames[] = {m_sName + " a/b/../c", m_sName + ".*?:|<>\"'%", m_sName + std::string(200, 'n'),
                                  "/" + m_sName, "." + m_sName};
    for (const std::string& sName : aNames)
    {
        const COwnHandle hFirst(Create(sName));
        const COwnHandle hSecond(Create(sName));
        EXPECT_NE(0ull, hFirst) << sName;
        EXPECT_TRUE(TakesNow(hFirst)) << sName;
        EXPECT_FALSE(OthersCanHave(hSecond)) << sName;
    }
}

TEST_P(TOVPlatformNamedObjectTest, TellsLongNamesApartByTheirEnd)
{
    const std::string sLong = m_sName + std::string(200, 'n');
    const COwnHandle hFirst(Create(sLong + "1"));
    const COwnHandle hSecond(Create(sLong + "2"));

    EXPECT_TRUE(TakesNow(hFirst));

    EXPECT_TRUE(OthersCanHave(hSecond));
}

TEST_P(TOVPlatformNamedObjectTest, RefusesANameOfAnotherKind)
{
    const COwnHandle hObject(Create(m_sName));
    for (const sObjectKind& oKind : OBJECT_KINDS)
    {
        const unsigned long long hOther = oKind.fnCreate(m_sName.c_str());
        EXPECT_EQ(oKind.fnCreate == GetParam().fnCreate, hOther != 0) << oKind.szName;
        if (hOther != 0)
            oKind.fnDestroy(hOther);
    }
    EXPECT_TRUE(TakesNow(hObject)) << "left alone";
}

TEST_P(TOVPlatformNamedObjectTest, LeavesItsNameToAnyKindWhenItIsGone)
{
    for (const sObjectKind& oKind : OBJECT_KINDS)
    {
        EXPECT_TRUE(GetParam().fnDestroy(Create(m_sName)));
        const unsigned long long hOther = oKind.fnCreate(m_sName.c_str());
        EXPECT_NE(0ull, hOther) << oKind.szName;
        EXPECT_TRUE(oKind.fnDestroy(hOther));
    }
}

TEST_P(TOVPlatformNamedObjectTest, IsTakenWithUnnamedOnesInOneWait)
{
    const COwnHandle hNamed(Create(m_sName));
    const COwnHandle hSame(Create(m_sName));
    const COwnHandle hUnnamed(Event::Create(false, false, nullptr));

    EXPECT_EQ(1, WaitForAny({hUnnamed, hNamed}));
    OnAnotherThread([&] { EXPECT_EQ(-2, WaitForAny({hUnnamed, hSame}, 20)); });
    Event::Signal(hUnnamed);
    OnAnotherThread([&] { EXPECT_EQ(-2, WaitForAll({hUnnamed, hSame}, 20)); });

    EXPECT_TRUE(TakesNow(hUnnamed)) << "nothing is taken by a wait that runs out";
}

TEST(TOVPlatformNamedEventTest, KeepsTheKindOfResetThatItWasMadeWith)
{
    const std::string sName = UniqueName();
    const COwnHandle hManual(Event::Create(true, false, sName.c_str()));
    const COwnHandle hSame(Event::Create(false, true, sName.c_str()));
    EXPECT_FALSE(TakesNow(hSame)) << "not signalled by being found";

    Event::Signal(hSame);

    EXPECT_TRUE(TakesNow(hManual));
    EXPECT_TRUE(TakesNow(hManual));
    Event::Reset(hManual);
    EXPECT_FALSE(TakesNow(hSame));
}

TEST(TOVPlatformNamedEventTest, ReleasesAWaiterThroughAnotherHandle)
{
    const std::string sName = UniqueName();
    const COwnHandle hEvent(Event::Create(false, false, sName.c_str()));
    const COwnHandle hSame(Event::Create(false, false, sName.c_str()));
    CBlockableThread oWaiter([&] { Event::Wait(hEvent); });
    EXPECT_TRUE(oWaiter.IsBlocked());

    Event::Signal(hSame);

    EXPECT_TRUE(oWaiter.Finishes());
    EXPECT_FALSE(TakesNow(hEvent));
}

TEST(TOVPlatformNamedEventTest, ReleasesAWaiterForManyThroughAnotherHandle)
{
    const std::string sName = UniqueName();
    const COwnHandle hNever(Event::Create(false, false, nullptr));
    const COwnHandle hEvent(Event::Create(false, false, sName.c_str()));
    const COwnHandle hSame(Event::Create(false, false, sName.c_str()));
    for (const bool bWaitForAll : {false, true})
    {
        CBlockableThread oWaiter([&] {
            if (bWaitForAll)
                EXPECT_LE(0, WaitForAll({hNever, hEvent}));
            else
                EXPECT_EQ(1, WaitForAny({hNever, hEvent}));
        });
        EXPECT_TRUE(oWaiter.IsBlocked());
        Event::Signal(hSame);
        if (bWaitForAll)
        {
            EXPECT_TRUE(oWaiter.IsBlocked());
            Event::Signal(hNever);
        }
        EXPECT_TRUE(oWaiter.Finishes());
    }
}

TEST(TOVPlatformNamedMutexTest, IsOwnedThroughEachOfItsHandles)
{
    const std::string sName = UniqueName();
    const COwnHandle hMutex(Mutex::Create(true, sName.c_str()));
    const COwnHandle hSame(Mutex::Create(false, sName.c_str()));

    Mutex::Lock(hSame);
    Mutex::Unlock(hSame);
    EXPECT_TRUE(IsLockedForOthers(hMutex));
    EXPECT_TRUE(IsLockedForOthers(hSame));

    Mutex::Unlock(hSame);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
}

TEST(TOVPlatformNamedMutexTest, IsNotOwnedByTheOneWhoFindsIt)
{
    const std::string sName = UniqueName();
    const COwnHandle hMutex(Mutex::Create(false, sName.c_str()));
    const COwnHandle hSame(Mutex::Create(true, sName.c_str()));

    EXPECT_FALSE(IsLockedForOthers(hSame));
}

TEST(TOVPlatformNamedMutexTest, IsAbandonedForEachOfItsHandles)
{
    const std::string sName = UniqueName();
    const COwnHandle hMutex(Mutex::Create(false, sName.c_str()));
    const COwnHandle hSame(Mutex::Create(false, sName.c_str()));

    OnAnotherThread([&] { Mutex::Lock(hMutex); });

    EXPECT_EQ(0x80, WaitForAny({hSame}));
    Mutex::Unlock(hMutex);
    EXPECT_FALSE(IsLockedForOthers(hSame));
}

TEST(TOVPlatformNamedMutexTest, StaysOwnedWhenOneOfItsHandlesIsDestroyed)
{
    const std::string sName = UniqueName();
    const COwnHandle hMutex(Mutex::Create(false, sName.c_str()));
    const unsigned long long hSame = Mutex::Create(false, sName.c_str());
    Mutex::Lock(hSame);

    EXPECT_TRUE(Mutex::Destroy(hSame));

    EXPECT_TRUE(IsLockedForOthers(hMutex));
    Mutex::Unlock(hMutex);
    EXPECT_FALSE(IsLockedForOthers(hMutex));
}

TEST(TOVPlatformNamedMutexTest, IsGoneWithItsLastHandleThoughAThreadOwnsIt)
{
    const std::string sName = UniqueName();
    const unsigned long long hOld = Mutex::Create(false, sName.c_str());
    CWorker oOwner;
    oOwner.Do([&] { Mutex::Lock(hOld); });

    EXPECT_TRUE(Mutex::Destroy(hOld));
    const COwnHandle hNew(Mutex::Create(false, sName.c_str()));
    EXPECT_FALSE(IsLockedForOthers(hNew));
    oOwner.End();

    EXPECT_EQ(0, WaitForAny({hNew}, 0)) << "not abandoned with the old one";
    Mutex::Unlock(hNew);
}

TEST(TOVPlatformNamedSemaphoreTest, KeepsTheCountsThatItWasMadeWith)
{
    const std::string sName = UniqueName();
    const COwnHandle hSemaphore(Semaphore::Create(2, 3, sName.c_str()));
    const COwnHandle hSame(Semaphore::Create(9, 10, sName.c_str()));

    EXPECT_EQ(2, Semaphore::Unlock(hSame, 1));
    EXPECT_EQ(0, Semaphore::Unlock(hSame, 1)) << "at its maximum";
    EXPECT_TRUE(TakesNow(hSemaphore));
    EXPECT_EQ(2, Semaphore::Unlock(hSame, 1));
}
