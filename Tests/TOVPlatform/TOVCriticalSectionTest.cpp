#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVSynchronization.h>

#include <cstdint>
#include <vector>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

namespace
{
constexpr unsigned long SPIN_COUNT = 2000;

class TOVPlatformCriticalSectionTest : public testing::Test
{
protected:
    TOVPlatformCriticalSectionTest() : m_hLock(CriticalSection::Create(SPIN_COUNT)) {}

    ~TOVPlatformCriticalSectionTest() override { CriticalSection::Destroy(m_hLock); }

    void EnterAndLeave()
    {
        CriticalSection::Enter(m_hLock);
        CriticalSection::Leave(m_hLock);
    }

    const unsigned long long m_hLock;
};
} // namespace

TEST_F(TOVPlatformCriticalSectionTest, HasAHandleThatIsNotZero)
{
    EXPECT_NE(0ull, m_hLock);
}

TEST_F(TOVPlatformCriticalSectionTest, HasAHandleOfItsOwn)
{
    const unsigned long long hOther = CriticalSection::Create(SPIN_COUNT);

    EXPECT_NE(m_hLock, hOther);

    CriticalSection::Destroy(hOther);
}

#if TOV_SYSTEM_WINDOWS
TEST_F(TOVPlatformCriticalSectionTest, WidensTheRecordsAddressWithItsSign)
{
    EXPECT_EQ(static_cast<unsigned long long>(static_cast<std::int32_t>(m_hLock)), m_hLock);
}

TEST_F(TOVPlatformCriticalSectionTest, KnowsItsRecordByTheLowHalfOfTheHandle)
{
    CriticalSection::Enter(m_hLock ^ 0xFFFFFFFF00000000ull);
    CBlockableThread oOther([this] { EnterAndLeave(); });
    EXPECT_TRUE(oOther.IsBlocked());

    CriticalSection::Leave(m_hLock ^ 0xFFFFFFFF00000000ull);
    EXPECT_TRUE(oOther.Finishes());
}
#endif

TEST(TOVPlatformCriticalSectionCreateTest, TakesAnySpinCount)
{
    for (const unsigned long ulSpinCount : {0ul, 1ul, 2000ul, 0xFFFFFFFFul})
    {
        const unsigned long long hLock = CriticalSection::Create(ulSpinCount);
        EXPECT_NE(0ull, hLock) << ulSpinCount;
        CriticalSection::Enter(hLock);
        CBlockableThread oOther([hLock] {
            CriticalSection::Enter(hLock);
            CriticalSection::Leave(hLock);
        });
        EXPECT_TRUE(oOther.IsBlocked()) << ulSpinCount;
        CriticalSection::Leave(hLock);
        EXPECT_TRUE(oOther.Finishes()) << ulSpinCount;
        CriticalSection::Destroy(hLock);
    }
}

TEST(TOVPlatformCriticalSectionCreateTest, ReleasesItsRecord)
{
    // The first one may bring a table to life that stays.
    CriticalSection::Destroy(CriticalSection::Create(SPIN_COUNT));
    CAllocationCounter oCounter;

    CriticalSection::Destroy(CriticalSection::Create(SPIN_COUNT));

    EXPECT_EQ(0, oCounter.Kept());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(TOVPlatformCriticalSectionCreateTest, GivesZeroWhenMemoryIsExhausted)
{
    // A platform may keep some records in store.
    std::vector<unsigned long long> aLocks;
    aLocks.reserve(100000);
    unsigned long long hLock = 1;
    {
        CAllocationFailure oFailure;
        while (hLock != 0 && aLocks.size() < aLocks.capacity())
        {
            hLock = CriticalSection::Create(SPIN_COUNT);
            if (hLock != 0)
                aLocks.push_back(hLock);
        }
    }
    EXPECT_EQ(0ull, hLock);
    for (const unsigned long long hToDestroy : aLocks)
        CriticalSection::Destroy(hToDestroy);
}
#endif

TEST_F(TOVPlatformCriticalSectionTest, KeepsAnotherThreadOutUntilItsOwnerHasLeft)
{
    CriticalSection::Enter(m_hLock);
    CBlockableThread oOther([this] { EnterAndLeave(); });
    EXPECT_TRUE(oOther.IsBlocked());

    CriticalSection::Leave(m_hLock);

    EXPECT_TRUE(oOther.Finishes());
}

TEST_F(TOVPlatformCriticalSectionTest, IsLeftAsOftenAsItWasEntered)
{
    CriticalSection::Enter(m_hLock);
    CriticalSection::Enter(m_hLock);
    CriticalSection::Enter(m_hLock);
    CBlockableThread oOther([this] { EnterAndLeave(); });

    CriticalSection::Leave(m_hLock);
    CriticalSection::Leave(m_hLock);
    EXPECT_TRUE(oOther.IsBlocked());

    CriticalSection::Leave(m_hLock);
    EXPECT_TRUE(oOther.Finishes());
}

TEST_F(TOVPlatformCriticalSectionTest, IsIndependentOfOthers)
{
    const unsigned long long hOther = CriticalSection::Create(SPIN_COUNT);
    CriticalSection::Enter(hOther);

    CBlockableThread oThread([this] { EnterAndLeave(); });
    EXPECT_TRUE(oThread.Finishes());

    CriticalSection::Leave(hOther);
    CriticalSection::Destroy(hOther);
}

TEST_F(TOVPlatformCriticalSectionTest, LogsNothing)
{
    CLogRecorder oLog;

    EnterAndLeave();
    CriticalSection::Destroy(CriticalSection::Create(SPIN_COUNT));

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(TOVPlatformCriticalSectionCreateTest, PassesOverAHandleOfZeroWhenItDestroys)
{
    EXPECT_NO_CHECK(CriticalSection::Destroy(0));
}
