// A lock that one thread alone has without an atomic operation.
#pragma once

#include <Posix/Base/TOVFutex.h>

#include <cstdint>

namespace TOVPlatform
{
namespace TOVPosix
{
// A biased lock, for a stream or a record of a handle. Whoever shares such an object with other threads needs atomic
// exchanges, which take longer than what they protect. As long as one thread alone uses an object, this lock costs it
// two plain stores instead.
//
//   shared <--> unused --first Enter--> owned --Enter, Share of another thread--> revoked --> shared
//
// The first thread that uses an object owns it. The owner marks the object as busy, looks whether it still is the
// owner, and uses the object as nobody else does. Another thread revokes the ownership for good: it writes that, and
// waits until the owner is not busy. From then on, all threads use the object in a way that many can. Each side writes
// one word and then reads the other's, so that one of them must see the other, if neither processor delays its store
// beyond its load. The revoking thread alone pays for that, with about a microsecond: it has the system make all
// processors of the process wait for their stores.
// (Biased locking: Kawachiya, Koseki and Onodera, "Lock Reservation", 2002; the asymmetric form of Dekker's
// synchronisation: Dice, Huang and Yang, 2001.)
//
// Every use has to pass this lock, even one that only reads. Then all stores of the owner are visible to whoever finds
// the object shared, as if each had been followed by a barrier.
//
// The calling thread names itself by a number, nSelf, that no other living thread has. An owner that has ended is not
// busy. A later thread of the same number is taken for it, which does no harm, as both cannot run at once.
class COwner
{
public:
    constexpr COwner() : m_nOwner(SHARED), m_nBusy(0) {}

    // Called before the first use, best while the process has one thread.
    static void Prepare();

    // Called for a new object, which only the library knows. Does nothing where the system cannot revoke, and in a
    // process that has revoked so often that owners do not pay.
    void Admit();

    // Enter is called before each use. If the result is true, the calling thread owns the object: it must call Leave
    // after the use. Otherwise the object is shared from now on.
    bool Enter(std::uintptr_t nSelf) { return EnterShortly(nSelf) || (!IsShared() && EnterSlowly(nSelf)); }

    void Leave()
    {
        LeaveShortly();
        if (m_nOwner.load(std::memory_order_relaxed) == REVOKED)
            WakeRevoking();
    }

    // The same for a use of a few steps without a call: EnterShortly returns false for any object of which the calling
    // thread is not the owner yet, and LeaveShortly does not wake a thread that waits; this one looks again soon.
    bool EnterShortly(std::uintptr_t nSelf)
    {
        if (!IsOwn(nSelf))
            return false;
        m_nBusy.store(1, std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_seq_cst);
        if (IsOwn(nSelf))
            return true;
        LeaveShortly();
        return false;
    }

    void LeaveShortly()
    {
        m_nBusy.store(0, std::memory_order_release);
        std::atomic_signal_fence(std::memory_order_seq_cst);
    }

    // Revokes the ownership, if there is any, and returns after the owner's last use. Nobody owns the object again.
    void Share(std::uintptr_t nSelf);

    // Whether nobody owns the object, nor will.
    bool IsShared() const { return m_nOwner.load(std::memory_order_acquire) == SHARED; }

    // Whether the calling thread may read, without Enter, what one load reads.
    bool CanRead(std::uintptr_t nSelf) const { return IsShared() || IsOwn(nSelf); }

    // Called in the child of a fork: threads other than nSelf do not exist there.
    void ForgetOtherThreads(std::uintptr_t nSelf);

private:
    static constexpr std::uintptr_t SHARED = 0;
    static constexpr std::uintptr_t UNUSED = UINTPTR_MAX;
    static constexpr std::uintptr_t REVOKED = UINTPTR_MAX - 1;

    bool IsOwn(std::uintptr_t nSelf) const { return m_nOwner.load(std::memory_order_relaxed) == nSelf; }
    bool Change(std::uintptr_t nFrom, std::uintptr_t nTo);
    bool EnterSlowly(std::uintptr_t nSelf);
    void WakeRevoking();

    std::atomic<std::uintptr_t> m_nOwner; // the owner's number, or one of the values above
    tFutex m_nBusy;                       // 1 while the owner uses the object
};
} // namespace TOVPosix
} // namespace TOVPlatform
