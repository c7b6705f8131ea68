#include <Posix/Waits/TOVFork.h>

#include <Posix/Base/TOVProcessLocks.h>
#include <Posix/Base/TOVStreamOwner.h>
#include <Posix/Base/TOVStreamStage.h>
#include <Posix/Waits/TOVThreadRecord.h>
#include <Posix/Waits/TOVTimeEventService.h>

#include <pthread.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
void (*s_pfInChild)() = nullptr;

void BeforeFork()
{
    for (CShortLock& oLock : s_aProcessLocks)
        oLock.Lock();
}

void AfterFork()
{
    for (int nLock = NUM_PROCESS_LOCKS; nLock-- > 0;)
        s_aProcessLocks[nLock].Unlock();
}

void AfterForkInChild()
{
    ContinueAlone();
    s_oTimeEventService.Forget();
    ForgetOtherStreamOwners();
    CStreamStage::ForgetOtherThreads();
    s_pfInChild();
    AfterFork();
}
} // namespace

void NoticeForks(void (*pfInChild)())
{
    s_pfInChild = pfInChild;
    ::pthread_atfork(BeforeFork, AfterFork, AfterForkInChild);
}
} // namespace TOVPosix
} // namespace TOVPlatform
