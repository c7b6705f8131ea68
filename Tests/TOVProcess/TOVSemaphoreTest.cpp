#include "Support/TOVBlockableThread.h"
#include "Support/TOVUnended.h"
#include "TOVProcess/TOVLockInstruments.h"

#include <type_traits>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
TOV_PRIVATE_MEMBER(StateOf, CTOVSemaphore, long, m_lSemaphoreState)

static_assert(std::has_virtual_destructor<CTOVSemaphore>::value);
static_assert(std::is_same<decltype(&CTOVSemaphore::Lock), void (CTOVSemaphore::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVSemaphore::TryLock), bool (CTOVSemaphore::*)(long) const>::value);
static_assert(std::is_same<decltype(&CTOVSemaphore::Unlock), long (CTOVSemaphore::*)(long) const>::value);

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

TEST(CTOVSemaphoreTest, CopiesItsState)
{
    CUnended<CTOVSemaphore> oSemaphore;
    StateOf(*oSemaphore) = 0x12345678;
    CUnended<CTOVSemaphore> oCopy(*oSemaphore);
    EXPECT_EQ(0x12345678, StateOf(*oCopy));

    CTOVSemaphore oTarget;
    const COwnHandle hOld(HandleOf(oTarget));
    StateOf(oTarget) = 0;
    oTarget = *oCopy;
    EXPECT_EQ(0x12345678, StateOf(oTarget));
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
