// When the queue signals its event: whether its mutex is held then.
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"
#include "Support/Windows/TOVImportHook.h"

#include <TOVContainers/TOVSafeQueue.h>

#include <windows.h>

namespace
{
typedef CTOVSafeQueue<int> tQueue;
typedef std::vector<bool> tStates;

TOV_PRIVATE_MEMBER(QueueMutexOf, tQueue, CTOVMutex, m_oMutex)
TOV_PRIVATE_MEMBER(MutexHandleOf, CTOVMutex, unsigned long long, m_hMutex)

unsigned long long s_hMutex;
tStates s_aLocked;

BOOL WINAPI LookAndSignal(HANDLE hEvent)
{
    s_aLocked.push_back(IsLockedForOthers(s_hMutex));
    return ::SetEvent(hEvent);
}

class CTOVSafeQueueCallsTest : public testing::Test
{
protected:
    CTOVSafeQueueCallsTest()
    {
        s_hMutex = MutexHandleOf(QueueMutexOf(m_oQueue));
        s_aLocked.clear();
    }

    tQueue m_oQueue;
};
} // namespace

TEST_F(CTOVSafeQueueCallsTest, AProducerSignalsWhenItHasUnlocked)
{
    const CImportHook oHook("SetEvent", &LookAndSignal);

    m_oQueue.Enqueue(1);
    m_oQueue.Enqueue(2);

    EXPECT_EQ((tStates{false, false}), s_aLocked);
}

TEST_F(CTOVSafeQueueCallsTest, AConsumerSignalsAgainWhileItHoldsTheMutex)
{
    for (const int nElement : {1, 2, 3})
        m_oQueue.Enqueue(nElement);
    const CImportHook oHook("SetEvent", &LookAndSignal);

    EXPECT_EQ(1, m_oQueue.Dequeue());
    EXPECT_EQ(2, m_oQueue.Dequeue());
    EXPECT_EQ((tStates{true, true}), s_aLocked);

    EXPECT_EQ(3, m_oQueue.Dequeue());
    EXPECT_EQ(2u, s_aLocked.size());
}
