#include <Posix/Base/TOVStreamOwner.h>

#include <TOVPlatform/Backend/TOVFile.h>

#include <linux/membarrier.h>

namespace TOVPlatform
{
namespace TOVPosix
{
CStreamOwner s_aStreamOwners[Backend::File::MAX_HANDLES];

namespace
{
// A processor has long made its stores visible after this time.
constexpr tDword LONG_FOR_A_STORE_MS = 10;

bool MemoryBarrier(int nCommand)
{
    return ::syscall(SYS_membarrier, nCommand, 0, 0) == 0;
}

// What begins as zero would stand behind the table of owners, on a page of its own, which every program would touch.
enum eRevocation
{
    eRevocationUnknown = 1,
    eRevocationRefused,
    eRevocationGranted
};
std::atomic<eRevocation> s_eRevocation(eRevocationUnknown);

// A tool that watches for races knows the locks of the runtime, and not this one.
bool CanRevoke()
{
#if defined(__SANITIZE_THREAD__)
    return false;
#else
    if (s_eRevocation.load(std::memory_order_relaxed) == eRevocationUnknown)
    {
        const bool bGranted = MemoryBarrier(MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED);
        s_eRevocation.store(bGranted ? eRevocationGranted : eRevocationRefused, std::memory_order_relaxed);
    }
    return s_eRevocation.load(std::memory_order_relaxed) == eRevocationGranted;
#endif
}

// Makes every other thread's stores so far visible to the calling thread, and the latter's to them.
void WaitForStores()
{
    if (MemoryBarrier(MEMBARRIER_CMD_PRIVATE_EXPEDITED))
        return;

    // The process has forbidden itself the call since then.
    const tFutex nNever(0);
    FutexSleep(&nNever, 0, eFutexPrivate, CDeadline(LONG_FOR_A_STORE_MS));
}
} // namespace

void CStreamOwner::Prepare()
{
    CanRevoke();
}

void CStreamOwner::Admit()
{
    if (CanRevoke())
        m_nOwner.store(UNUSED, std::memory_order_release);
}

bool CStreamOwner::Change(std::uintptr_t nFrom, std::uintptr_t nTo)
{
    return m_nOwner.compare_exchange_strong(nFrom, nTo, std::memory_order_acq_rel, std::memory_order_acquire);
}

bool CStreamOwner::EnterSlowly()
{
    if (Change(UNUSED, Self()))
        return Enter();

    Share();
    return false;
}

void CStreamOwner::Share()
{
    // A thread takes its own ownership back by itself.
    if (IsShared() || Change(UNUSED, SHARED) || Change(Self(), SHARED))
        return;

    for (std::uintptr_t nOwner = m_nOwner.load(std::memory_order_acquire); nOwner != REVOKED;
         nOwner = m_nOwner.load(std::memory_order_acquire))
    {
        if (nOwner == SHARED)
            return;
        Change(nOwner, REVOKED);
    }

    // Of several threads that get here, each waits for the owner itself.
    WaitForStores();
    while (m_nBusy.load(std::memory_order_acquire) != 0)
        FutexSleep(&m_nBusy, 1, eFutexPrivate, CDeadline::Never());
    Change(REVOKED, SHARED);
}

void CStreamOwner::ForgetOtherThreads()
{
    for (CStreamOwner& oStream : s_aStreamOwners)
    {
        const std::uintptr_t nOwner = oStream.m_nOwner.load(std::memory_order_relaxed);
        if (nOwner == SHARED || nOwner == UNUSED || nOwner == Self())
            continue;

        oStream.m_nOwner.store(SHARED, std::memory_order_relaxed);
        oStream.m_nBusy.store(0, std::memory_order_relaxed);
    }
}
} // namespace TOVPosix
} // namespace TOVPlatform
