#include <Posix/TOVProcessLocks.h>

#include <Posix/TOVThreadRecord.h>
#include <Posix/TOVTimeEvent.h>

#include <pthread.h>

namespace TOVPlatform
{
namespace TOVPosix
{
CShortLock s_aProcessLocks[NUM_PROCESS_LOCKS];

namespace
{
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
    ForgetTimeEvents();
    AfterFork();
}
} // namespace

void NoticeForks()
{
    ::pthread_atfork(BeforeFork, AfterFork, AfterForkInChild);
}
} // namespace TOVPosix
} // namespace TOVPlatform
