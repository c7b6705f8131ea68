// Streams that one thread uses without the runtime's lock.
#pragma once

#include <Posix/Base/TOVFutex.h>

#include <cstdint>

namespace TOVPlatform
{
namespace TOVPosix
{
// Only its address counts.
inline TOV_FAST_THREAD_LOCAL tDword t_nOwnAddress = 0;

// A biased lock, one for each slot of the table of files. The runtime's functions lock their stream by two atomic
// exchanges, which take longer than moving a few bytes. As long as one thread alone uses a stream, this lock costs it
// two plain stores instead.
//
//   shared <--> unused --first Enter--> owned --Enter, Share of another thread--> revoked --> shared
//
// The first thread that uses a stream owns it. The owner marks the stream as busy, looks whether it still is the owner,
// and uses the stream without its lock. Another thread revokes the ownership for good: it writes that, and waits until
// the owner is not busy. From then on, all threads use the functions that lock. Each side writes one word and then
// reads the other's, so that one of them must see the other, if neither processor delays its store beyond its load.
// The revoking thread alone pays for that: it has the system make all processors of the process wait for their stores.
// (Biased locking: Kawachiya, Koseki and Onodera, "Lock Reservation", 2002; the asymmetric form of Dekker's
// synchronisation: Dice, Huang and Yang, 2001.)
//
// Each has a line of the cache to itself, as it is written at each use, while other threads use the next slots.
//
// An owner that has ended is not busy. A later thread at the same address is taken for it, which does no harm, as
// both cannot run at once.
class alignas(64) CStreamOwner
{
public:
    constexpr CStreamOwner() : m_nOwner(SHARED), m_nBusy(0) {}

    // Called before the first stream is opened, best while the process has one thread.
    static void Prepare();

    // Called for a new stream, which nobody uses yet and only the library knows. Does nothing where the system cannot
    // revoke.
    void Admit();

    // Called before each use of the stream. If the result is true, the calling thread owns the stream: it must call
    // Leave after the use. Otherwise it must use functions that lock.
    bool Enter()
    {
        if (!IsOwn())
            return IsShared() ? false : EnterSlowly();

        m_nBusy.store(1, std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_seq_cst);
        if (IsOwn())
            return true;

        Leave();
        return EnterSlowly();
    }

    void Leave()
    {
        m_nBusy.store(0, std::memory_order_release);
        std::atomic_signal_fence(std::memory_order_seq_cst);
        if (m_nOwner.load(std::memory_order_relaxed) == REVOKED)
            FutexWake(&m_nBusy, INT_MAX, eFutexPrivate);
    }

    // Revokes the ownership, if there is any, and returns after the owner's last use. Nobody owns the stream again.
    void Share();

    // Called in the child of a fork: threads other than the calling one do not exist there.
    static void ForgetOtherThreads();

private:
    static constexpr std::uintptr_t SHARED = 0;
    static constexpr std::uintptr_t UNUSED = 1;
    static constexpr std::uintptr_t REVOKED = 2;

    // An address of the calling thread's own, which is none of the values above.
    static std::uintptr_t Self() { return reinterpret_cast<std::uintptr_t>(&t_nOwnAddress); }

    bool IsOwn() const { return m_nOwner.load(std::memory_order_relaxed) == Self(); }
    bool IsShared() const { return m_nOwner.load(std::memory_order_acquire) == SHARED; }
    bool Change(std::uintptr_t nFrom, std::uintptr_t nTo);
    bool EnterSlowly();

    std::atomic<std::uintptr_t> m_nOwner; // the owner's address, or one of the values above
    tFutex m_nBusy;                       // 1 while the owner uses the stream
};

// A use of a stream.
class COwnerScope
{
public:
    explicit COwnerScope(CStreamOwner& oOwner) : m_oOwner(oOwner), m_bEntered(oOwner.Enter()) {}

    ~COwnerScope()
    {
        if (m_bEntered)
            m_oOwner.Leave();
    }

    COwnerScope(const COwnerScope&) = delete;
    COwnerScope& operator=(const COwnerScope&) = delete;

    bool HasEntered() const { return m_bEntered; }

private:
    CStreamOwner& m_oOwner;
    const bool m_bEntered;
};

// The owners of the streams in the library's own table.
extern CStreamOwner s_aStreamOwners[];
} // namespace TOVPosix
} // namespace TOVPlatform
