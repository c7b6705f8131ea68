#include <Posix/Base/TOVOwner.h>

#include <linux/membarrier.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// A processor has long made its stores visible after this time.
constexpr tDword LONG_FOR_A_STORE_MS = 10;

// A short use takes some ten steps, unless its processor does something else meanwhile.
constexpr tDword LOOKS_BEFORE_SLEEP = 100;
constexpr tDword LONG_FOR_A_USE_MS = 1;

// A process whose threads pass their objects on, once each, would pay for revoking without end. This bounds it to some
// 10 milliseconds.
constexpr tDword MAX_REVOCATIONS = 10000;
std::atomic<tDword> s_nRevocations = {0};

bool MemoryBarrier(int nCommand)
{
    return ::syscall(SYS_membarrier, nCommand, 0, 0) == 0;
}

// What begins as zero would stand with large tables, on a page of its own, which every program would touch.
enum eRevocation
{
    eRevocationUnknown = 1,
    eRevocationRefused,
    eRevocationGranted
};
std::atomic<eRevocation> s_eRevocation(eRevocationUnknown);

bool CanRevoke()
{
    // ThreadSanitizer knows the locks of the runtime, and not this one.
    if (TOV_THREAD_SANITIZER)
        return false;
    if (s_eRevocation.load(std::memory_order_relaxed) == eRevocationUnknown)
    {
        const bool bGranted = MemoryBarrier(MEMBARRIER_CMD_REGISTER_PRIVATE_EXPEDITED);
        s_eRevocation.store(bGranted ? eRevocationGranted : eRevocationRefused, std::memory_order_relaxed);
    }
    return s_eRevocation.load(std::memory_order_relaxed) == eRevocationGranted;
}

// Sleeps while the word is 1.
TOV_NOINLINE void SleepShortly(const tFutex& nWord, tDword nMilliseconds)
{
    FutexSleep(&nWord, 1, eFutexPrivate, CDeadline(nMilliseconds));
}

// Makes every other thread's stores so far visible to the calling thread, and the latter's to them.
void WaitForStores()
{
    if (MemoryBarrier(MEMBARRIER_CMD_PRIVATE_EXPEDITED))
        return;

    // The process has forbidden itself the call since then.
    const tFutex nNever(1);
    SleepShortly(nNever, LONG_FOR_A_STORE_MS);
}
} // namespace

void COwner::Prepare()
{
    CanRevoke();
}

void COwner::Admit()
{
    if (CanRevoke() && s_nRevocations.load(std::memory_order_relaxed) < MAX_REVOCATIONS)
        m_nOwner.store(UNUSED, std::memory_order_release);
}

bool COwner::Change(std::uintptr_t nFrom, std::uintptr_t nTo)
{
    return m_nOwner.compare_exchange_strong(nFrom, nTo, std::memory_order_acq_rel, std::memory_order_acquire);
}

bool COwner::EnterSlowly(std::uintptr_t nSelf)
{
    if (Change(UNUSED, nSelf))
        return Enter(nSelf);

    Share(nSelf);
    return false;
}

void COwner::WakeRevoking()
{
    FutexWake(&m_nBusy, INT_MAX, eFutexPrivate);
}

void COwner::Share(std::uintptr_t nSelf)
{
    // A thread takes its own ownership back by itself.
    if (IsShared() || Change(UNUSED, SHARED) || Change(nSelf, SHARED))
        return;

    for (std::uintptr_t nOwner = m_nOwner.load(std::memory_order_acquire); nOwner != REVOKED;
         nOwner = m_nOwner.load(std::memory_order_acquire))
    {
        if (nOwner == SHARED)
            return;
        Change(nOwner, REVOKED);
    }

    // Of several threads that get here, each waits for the owner itself.
    s_nRevocations.fetch_add(1, std::memory_order_relaxed);
    WaitForStores();
    for (tDword nLooks = 1; m_nBusy.load(std::memory_order_acquire) != 0; ++nLooks)
    {
        if (nLooks > LOOKS_BEFORE_SLEEP)
            SleepShortly(m_nBusy, LONG_FOR_A_USE_MS);
    }
    Change(REVOKED, SHARED);
}

void COwner::ForgetOtherThreads(std::uintptr_t nSelf)
{
    const std::uintptr_t nOwner = m_nOwner.load(std::memory_order_relaxed);
    if (nOwner == SHARED || nOwner == UNUSED || nOwner == nSelf)
        return;

    m_nOwner.store(SHARED, std::memory_order_relaxed);
    m_nBusy.store(0, std::memory_order_relaxed);
}
} // namespace TOVPosix
} // namespace TOVPlatform
