// What holds for events, mutexes and semaphores alike.
#include "Support/TOVExhaustedSystem.h"
#include "TOVPlatform/TOVSynchronizationInstruments.h"

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
class TOVPlatformSynchronizationObjectTest : public testing::TestWithParam<sObjectKind>
{
protected:
    static unsigned long long Create() { return GetParam().fnCreate(nullptr); }
};

INSTANTIATE_TEST_SUITE_P(Kind, TOVPlatformSynchronizationObjectTest, testing::ValuesIn(OBJECT_KINDS), sRowName());
} // namespace

TEST_P(TOVPlatformSynchronizationObjectTest, HasAHandleOfItsOwn)
{
    const COwnHandle hFirst(Create());
    const COwnHandle hSecond(Create());

    EXPECT_NE(0ull, hFirst);
    EXPECT_NE(static_cast<unsigned long long>(hFirst), static_cast<unsigned long long>(hSecond));
}

TEST_P(TOVPlatformSynchronizationObjectTest, WidensANativeHandleWithItsSign)
{
    const COwnHandle hObject(Create());
    const unsigned long long hValue = hObject;

    if (sizeof(void*) == 4)
    {
        EXPECT_EQ(static_cast<unsigned long long>(static_cast<std::int32_t>(hValue)), hValue);
    }
    else
    {
        EXPECT_NE(0ull, hValue);
    }
}

TEST_P(TOVPlatformSynchronizationObjectTest, IsDestroyedOnce)
{
    const unsigned long long hObject = Create();

    EXPECT_TRUE(GetParam().fnDestroy(hObject));
    EXPECT_FALSE(GetParam().fnDestroy(hObject));
}

TEST_P(TOVPlatformSynchronizationObjectTest, LogsNothing)
{
    CLogRecorder oLog;

    GetParam().fnDestroy(Create());
    GetParam().fnDestroy(0);

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(TOVPlatformMissingObjectTest, IsNotLogged)
{
    CLogRecorder oLog;

    Event::Signal(0);
    Mutex::Lock(0);
    Mutex::Unlock(0);
    EXPECT_EQ(0, Semaphore::Unlock(0, 1));
    EXPECT_EQ(0ull, Semaphore::Create(2, 1, nullptr));

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_P(TOVPlatformSynchronizationObjectTest, IsZeroWhenTheSystemHasNoMore)
{
    unsigned long long hObject = 1;
    {
        CExhaustedSystem oNoMore;
        hObject = Create();
    }
    EXPECT_EQ(0ull, hObject);
}
#endif
