#include "Support/TOVBlockableThread.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVProcess/TOVSemaphore.h>

#include <new>
#include <type_traits>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVSemaphore, unsigned long long, m_hSemaphore)
TOV_PRIVATE_MEMBER(StateOf, CTOVSemaphore, long, m_lSemaphoreState)

static_assert(std::has_virtual_destructor<CTOVSemaphore>::value);
static_assert(std::is_same<decltype(&CTOVSemaphore::Lock), void (CTOVSemaphore::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVSemaphore::TryLock), bool (CTOVSemaphore::*)(long) const>::value);
static_assert(std::is_same<decltype(&CTOVSemaphore::Unlock), long (CTOVSemaphore::*)(long) const>::value);

// Takes the handle away for a time.
class CLostHandle
{
public:
    explicit CLostHandle(CTOVSemaphore& oSemaphore) : m_oSemaphore(oSemaphore), m_hKept(HandleOf(oSemaphore))
    {
        HandleOf(m_oSemaphore) = 0;
    }
    ~CLostHandle() { HandleOf(m_oSemaphore) = m_hKept; }
    CLostHandle(const CLostHandle&) = delete;
    CLostHandle& operator=(const CLostHandle&) = delete;

private:
    CTOVSemaphore& m_oSemaphore;
    const unsigned long long m_hKept;
};

int Drain(const CTOVSemaphore& oSemaphore)
{
    int nCount = 0;
    while (oSemaphore.TryLock(0))
        ++nCount;
    return nCount;
}
} // namespace

TEST(CTOVSemaphoreTest, AdmitsOneByDefault)
{
    const CTOVSemaphore oSemaphore;

    EXPECT_TRUE(oSemaphore.TryLock(0));
    EXPECT_FALSE(oSemaphore.TryLock(0));
    EXPECT_EQ(0, oSemaphore.Unlock(1));
    EXPECT_TRUE(oSemaphore.TryLock(0));
}

TEST(CTOVSemaphoreTest, HasAMaximumOfOneByDefault)
{
    const CTOVSemaphore oSemaphore;
    EXPECT_EQ(0, oSemaphore.Unlock(1));
    EXPECT_EQ(1, Drain(oSemaphore));

    const CTOVSemaphore oEmpty(0);
    EXPECT_EQ(0, Drain(oEmpty));
}

TEST(CTOVSemaphoreTest, CountsBetweenZeroAndItsMaximum)
{
    const CTOVSemaphore oSemaphore(2, 4);

    EXPECT_EQ(2, oSemaphore.Unlock(2));
    EXPECT_EQ(0, oSemaphore.Unlock(1)) << "beyond the maximum";
    EXPECT_EQ(4, Drain(oSemaphore));
    EXPECT_EQ(0, oSemaphore.Unlock(3));
    EXPECT_EQ(3, oSemaphore.Unlock(1));
}

TEST(CTOVSemaphoreTest, BlocksAtZero)
{
    const CTOVSemaphore oSemaphore(0, 2);
    CBlockableThread oWaiter([&] { oSemaphore.Lock(); });
    EXPECT_TRUE(oWaiter.IsBlocked());

    EXPECT_EQ(0, oSemaphore.Unlock(1));

    EXPECT_TRUE(oWaiter.Finishes());
    EXPECT_EQ(0, Drain(oSemaphore));
}

TEST(CTOVSemaphoreTest, TryLockIsFalseOnlyWhenTheTimeRanOut)
{
    const CTOVSemaphore oSemaphore(0, 1);
    EXPECT_FALSE(oSemaphore.TryLock(20));
    for (const long lTime : {DEADLINE, -1l})
    {
        bool bLocked = false;
        CBlockableThread oWaiter([&] { bLocked = oSemaphore.TryLock(lTime); });
        EXPECT_TRUE(oWaiter.IsBlocked()) << lTime;

        oSemaphore.Unlock(1);

        ASSERT_TRUE(oWaiter.Finishes()) << lTime;
        EXPECT_TRUE(bLocked) << lTime;
    }
}

TEST(CTOVSemaphoreTest, IsSharedByItsName)
{
    const std::string sName = UniqueName();
    const CTOVSemaphore oFirst(1, 2, sName.c_str());
    const CTOVSemaphore oSecond(2, 2, sName.c_str());

    EXPECT_EQ(1, oSecond.Unlock(1));
    EXPECT_EQ(2, Drain(oFirst));
    EXPECT_EQ(0, Drain(oSecond));
}

TOV_CHILD(UnlocksNamedSemaphore)
{
    const CTOVSemaphore oSemaphore(1, 1, aArguments[0].c_str());
    std::exit(static_cast<int>(oSemaphore.Unlock(2)));
}

TEST(CTOVSemaphoreTest, IsSharedByItsNameBetweenProcesses)
{
    const std::string sName = UniqueName();
    const CTOVSemaphore oSemaphore(3, 5, sName.c_str());

    EXPECT_EQ(3, RunChild("UnlocksNamedSemaphore", {sName}).nExitCode);

    EXPECT_EQ(5, Drain(oSemaphore));
}

TEST(CTOVSemaphoreTest, SharesItsSemaphoreAndItsStateWithACopy)
{
    CTOVSemaphore oSemaphore(1, 3);
    StateOf(oSemaphore) = 0x12345678;
    alignas(CTOVSemaphore) unsigned char aMemory[sizeof(CTOVSemaphore)];
    CTOVSemaphore& oCopy = *new (aMemory) CTOVSemaphore(oSemaphore);

    EXPECT_EQ(HandleOf(oSemaphore), HandleOf(oCopy));
    EXPECT_EQ(0x12345678, StateOf(oCopy));
    EXPECT_EQ(1, oCopy.Unlock(2));
    EXPECT_EQ(3, Drain(oSemaphore));
}

TEST(CTOVSemaphoreTest, IsClosedByTheFirstDestructorOfTwoCopies)
{
    CLogRecorder oLog;
    CTOVSemaphore oSemaphore;
    StateOf(oSemaphore) = 0;
    {
        CTOVSemaphore oCopy(oSemaphore);
    }

    EXPECT_TRUE(oSemaphore.TryLock(0)) << "a wait that failed";
    EXPECT_EQ(-1, WaitForAny({HandleOf(oSemaphore)}, 0));
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(CTOVSemaphoreTest, SharesWhatIsAssignedAndLeavesItsOldSemaphoreOpen)
{
    CTOVSemaphore oTarget(1, 1);
    const COwnHandle hOld(HandleOf(oTarget));
    CTOVSemaphore oSource(2, 2);
    StateOf(oSource) = 77;
    StateOf(oTarget) = 0;

    EXPECT_EQ(&oTarget, &(oTarget = oSource));

    EXPECT_EQ(HandleOf(oSource), HandleOf(oTarget));
    EXPECT_EQ(77, StateOf(oTarget));
    EXPECT_EQ(0, WaitForAny({hOld}, 0)) << "still there";
}

TEST(CTOVSemaphoreTest, ClosesItsHandleAtTheEnd)
{
    unsigned long long hSemaphore = 0;
    {
        CTOVSemaphore oSemaphore;
        hSemaphore = HandleOf(oSemaphore);
        EXPECT_NE(0ull, hSemaphore);
    }

    EXPECT_EQ(-1, WaitForAny({hSemaphore}, 0));
}

TEST(CTOVSemaphoreTest, CannotBeConstructedWithImpossibleCounts)
{
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", CTOVSemaphore(2, 1));
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", CTOVSemaphore(0, 0));
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", CTOVSemaphore(-1, 1));
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", CTOVSemaphore(2));
}

TEST(CTOVSemaphoreTest, CannotBeConstructedWithTheNameOfAnotherKind)
{
    const std::string sName = UniqueName();
    const COwnHandle hEvent(Event::Create(true, true, sName.c_str()));

    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", CTOVSemaphore(1, 1, sName.c_str()));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVSemaphoreTest, CannotBeConstructedWhenTheSystemHasNoMore)
{
    CQuietRecorder oLog;
    bool bRaised = false;
    {
        CExhaustedSystem oNoMore;
        try
        {
            const CTOVSemaphore oSemaphore;
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
            bRaised = true;
        }
    }
    EXPECT_TRUE(bRaised);
    EXPECT_EQ(1, oLog.Count());
    EXPECT_STREQ("m_hSemaphore != NULL", oLog.Text());
}
#endif

TEST(CTOVSemaphoreTest, RefusesToLockWithoutAHandle)
{
    CTOVSemaphore oSemaphore;
    const CLostHandle oLost(oSemaphore);
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", oSemaphore.Lock());
}

TEST(CTOVSemaphoreTest, RefusesToTryToLockWithoutAHandle)
{
    CTOVSemaphore oSemaphore;
    const CLostHandle oLost(oSemaphore);
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", oSemaphore.TryLock(0));
}

TEST(CTOVSemaphoreTest, RefusesToUnlockWithoutAHandle)
{
    CTOVSemaphore oSemaphore;
    const CLostHandle oLost(oSemaphore);
    EXPECT_CHECK_AT("TOVProcess/TOVSemaphore", "m_hSemaphore != NULL", oSemaphore.Unlock(1));
}

TEST(CTOVSemaphoreTest, EndsQuietlyWithoutAHandle)
{
    CLogRecorder oLog;
    {
        CTOVSemaphore oSemaphore;
        Event::Destroy(HandleOf(oSemaphore));
        HandleOf(oSemaphore) = 0;
    }
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}
