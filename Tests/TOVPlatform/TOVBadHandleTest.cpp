// Handles that name no object, in every function that takes one: the documented failure, and no crash.
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
class TOVPlatformBadHandleTest : public testing::TestWithParam<int>
{
protected:
    TOVPlatformBadHandleTest() : m_oBad(BadHandles()[static_cast<std::size_t>(GetParam())]) {}

    const sBadHandle m_oBad;
};

INSTANTIATE_TEST_SUITE_P(Handle, TOVPlatformBadHandleTest, testing::Range(0, static_cast<int>(BadHandles().size())),
                         [](const testing::TestParamInfo<int>& oInfo) {
                             std::string sName = BadHandles()[static_cast<std::size_t>(oInfo.param)].szWhat;
                             for (char& cCharacter : sName)
                                 cCharacter = cCharacter == ' ' ? '_' : cCharacter;
                             return sName;
                         });
} // namespace

TEST_P(TOVPlatformBadHandleTest, DestroysNothing)
{
    EXPECT_FALSE(Event::Destroy(m_oBad.hObject));
    EXPECT_FALSE(Mutex::Destroy(m_oBad.hObject));
    EXPECT_FALSE(Semaphore::Destroy(m_oBad.hObject));
}

TEST_P(TOVPlatformBadHandleTest, EndsPlainWaitsAtOnce)
{
    Event::Wait(m_oBad.hObject);
    Mutex::Lock(m_oBad.hObject);
    Semaphore::Lock(m_oBad.hObject);
    Thread::WaitForExitInfinite(m_oBad.hObject);
    Thread::WaitForExit(m_oBad.hObject, 0);
    Thread::WaitForExit(m_oBad.hObject, 0xFFFFFFFF);
}

TEST_P(TOVPlatformBadHandleTest, MakesTimedWaitsTrueAtOnce)
{
    for (const long lTime : {0l, 1l, DEADLINE, -1l})
    {
        EXPECT_TRUE(Event::TimedWait(m_oBad.hObject, lTime)) << lTime;
        EXPECT_TRUE(Semaphore::TryLock(m_oBad.hObject, lTime)) << lTime;
    }
}

TEST_P(TOVPlatformBadHandleTest, FailsWaitsForMany)
{
    unsigned long long hObject = m_oBad.hObject;
    for (const bool bWaitForAll : {false, true})
    {
        EXPECT_EQ(-1, Event::MultipleWait(&hObject, 1, bWaitForAll));
        EXPECT_EQ(-1, Event::MultipleTimedWait(&hObject, 1, bWaitForAll, 0));
        EXPECT_EQ(-1, Event::MultipleTimedWait(&hObject, 1, bWaitForAll, -1));
    }
}

TEST_P(TOVPlatformBadHandleTest, CountsAsALockedMutex)
{
    EXPECT_TRUE(Mutex::IsLocked(m_oBad.hObject));
}

TEST_P(TOVPlatformBadHandleTest, TakesNoSignal)
{
    EXPECT_NO_CHECK(Event::Signal(m_oBad.hObject));
    EXPECT_NO_CHECK(Event::SignalIfClear(m_oBad.hObject));
    EXPECT_NO_CHECK(Event::Reset(m_oBad.hObject));
    EXPECT_NO_CHECK(Mutex::Unlock(m_oBad.hObject));
    EXPECT_EQ(0, Semaphore::Unlock(m_oBad.hObject, 1));
}

TEST_P(TOVPlatformBadHandleTest, HasNoPriority)
{
    EXPECT_NO_CHECK(Thread::SetPriority(m_oBad.hObject, Thread::eThreadPriorityHigh));

    EXPECT_EQ(-1, Thread::GetPriority(m_oBad.hObject));
}

TEST(TOVPlatformStaleHandleTest, FailsForEachKind)
{
    const tHandles aStale = {Event::Create(true, true, nullptr), Mutex::Create(true, nullptr),
                             Semaphore::Create(1, 1, nullptr)};
    for (const unsigned long long hObject : aStale)
        EXPECT_TRUE(Event::Destroy(hObject));

    for (const unsigned long long hObject : aStale)
    {
        EXPECT_EQ(-1, WaitForAny({hObject}, 0));
        EXPECT_TRUE(Mutex::IsLocked(hObject));
        EXPECT_EQ(0, Semaphore::Unlock(hObject, 1));
        EXPECT_FALSE(Event::Destroy(hObject));
    }
}

TEST(TOVPlatformOtherKindTest, HasNoPriorityUnlessItIsAThread)
{
    const COwnHandle hEvent(Event::Create(true, true, nullptr));

    EXPECT_NO_CHECK(Thread::SetPriority(hEvent, Thread::eThreadPriorityHigh));

    EXPECT_EQ(-1, Thread::GetPriority(hEvent));
}
