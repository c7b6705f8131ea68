// Sleeping and waking on a 32-bit word in memory: the ground of all locks and waits of this backend.
#pragma once

#include <Posix/Base/TOVClock.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
typedef std::atomic<tDword> tFutex;
static_assert(sizeof(tFutex) == sizeof(tDword) && tFutex::is_always_lock_free,
              "the kernel reads the word as it stands");

enum eFutexScope
{
    eFutexPrivate = FUTEX_PRIVATE_FLAG, // only this process uses the word
    eFutexShared = 0                    // the word stands in memory that processes share
};

enum eSleepResult
{
    eSleepWoken, // woken, or the word differed, or spurious: the caller must look again
    eSleepTimeout,
    eSleepFailed // the kernel cannot do it
};

inline eSleepResult ToSleepResult(long lSystemResult)
{
    if (lSystemResult >= 0 || errno == EAGAIN || errno == EINTR)
        return eSleepWoken;
    return errno == ETIMEDOUT ? eSleepTimeout : eSleepFailed;
}

// The sleepers on a word can be of several groups, each of which is a bit.
constexpr tDword ALL_SLEEPERS = FUTEX_BITSET_MATCH_ANY;

// Sleeps as long as the word holds the value.
inline eSleepResult FutexSleep(const void* pWord, tDword nValue, eFutexScope eScope, const CDeadline& oDeadline,
                               tDword nGroups = ALL_SLEEPERS)
{
    return ToSleepResult(::syscall(SYS_futex, pWord, FUTEX_WAIT_BITSET | static_cast<int>(eScope), nValue,
                                   oDeadline.Get(), nullptr, nGroups));
}

// The word is only an address here: its memory may be gone, when the sleeper has seen the new value and left. Then
// nobody is woken, or some other sleeper, which looks again. Returns whether any sleeper of these groups was woken.
inline bool FutexWake(const void* pWord, int nSleepers, eFutexScope eScope, tDword nGroups = ALL_SLEEPERS)
{
    return ::syscall(SYS_futex, pWord, FUTEX_WAKE_BITSET | static_cast<int>(eScope), nSleepers, nullptr, nullptr,
                     nGroups) > 0;
}

// The lock of this backend's own structures. It is held for a few steps, never while its owner sleeps, and is not
// recursive.
class CShortLock
{
public:
    constexpr CShortLock() : m_nState(FREE) {}

    void Lock()
    {
        tDword nState = FREE;
        if (m_nState.compare_exchange_strong(nState, TAKEN, std::memory_order_acquire, std::memory_order_relaxed))
            return;
        while (m_nState.exchange(CONTENDED, std::memory_order_acquire) != FREE)
            FutexSleep(&m_nState, CONTENDED, eFutexPrivate, CDeadline::Never());
    }

    void Unlock()
    {
        if (m_nState.exchange(FREE, std::memory_order_release) == CONTENDED)
            FutexWake(&m_nState, 1, eFutexPrivate);
    }

private:
    static constexpr tDword FREE = 0;
    static constexpr tDword TAKEN = 1;
    static constexpr tDword CONTENDED = 2;

    tFutex m_nState;
};

// Holds a short lock for a scope.
class CShortLockScope
{
public:
    explicit CShortLockScope(CShortLock& oLock) : m_oLock(oLock) { m_oLock.Lock(); }

    ~CShortLockScope() { m_oLock.Unlock(); }

    CShortLockScope(const CShortLockScope&) = delete;
    CShortLockScope& operator=(const CShortLockScope&) = delete;

private:
    CShortLock& m_oLock;
};
} // namespace TOVPosix
} // namespace TOVPlatform
