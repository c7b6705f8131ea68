// The record of a handle: event, mutex, semaphore, thread, critical section, or the way to a named object.
#pragma once

#include <Posix/Base/TOVOwner.h>
#include <Posix/Waits/TOVThreadRecord.h>

namespace TOVPlatform
{
namespace TOVPosix
{
class CNamedObject;
struct sWaitNode;

enum eKind : tDword
{
    eKindNone, // a free record
    eKindAutoEvent,
    eKindManualEvent,
    eKindMutex,
    eKindSemaphore,
    eKindThread,
    eKindCriticalSection,
    eKindNamed // an event, mutex or semaphore in memory that processes share
};

// A tag says which use of a record a handle means: its kind, and how often the record has been used before. It stands
// in the handle and in the record, so that a stale or invented handle finds no match.
constexpr tDword TAG_KIND_BITS = 3;
constexpr tDword TAG_KIND_MASK = (1u << TAG_KIND_BITS) - 1;

inline eKind KindOf(tDword nTag)
{
    return static_cast<eKind>(nTag & TAG_KIND_MASK);
}

// The value of an object depends on its kind:
//
//   event, thread    SIGNALLED or 0
//   semaphore        the count
//   mutex            the owner's id or 0, with MUTEX_ABANDONED if the last one ended as its owner
//
// VALUE_HELD is set while threads wait for the object, or are about to. A value without it changes by compare and swap
// alone, so that an object for which nobody waits costs no system call; a value with it changes only under the lock of
// the waits (see TOVWakeList.h), so that a wait for several objects sees and takes them at one point in time. A mutex
// is also not held while its next owner is already on its way.
constexpr tDword VALUE_HELD = 0x80000000;
constexpr tDword VALUE_SIGNALLED = 1;
constexpr tDword MUTEX_ABANDONED = 0x40000000;
constexpr tDword MUTEX_OWNER = 0x3FFFFFFF;

// The state of a critical section is its owner's id or 0, with these bits: while a thread may sleep on it, and while it
// passes only to threads that have slept for long.
constexpr tDword SECTION_CONTENDED = 0x80000000;
constexpr tDword SECTION_RESERVED = 0x40000000;
constexpr tDword SECTION_OWNER = 0x3FFFFFFF;

// How long a thread competes for an object before it gets precedence over those that run, in nanoseconds.
constexpr long long PATIENCE = 100 * NANOSECONDS_PER_MILLISECOND;

enum eTry
{
    eTryDone,
    eTryRefused, // the value does not allow it
    eTryHeld,    // the object can change only under the lock of the waits
    eTryStale    // the handle names no object any more
};

// Takes from a value what a released wait takes; false if the value does not release a wait of this thread.
inline bool TakeFromValue(eKind eObject, tDword nThreadId, tDword& nValue)
{
    switch (eObject)
    {
    case eKindAutoEvent:
        if (nValue != VALUE_SIGNALLED)
            return false;
        nValue = 0;
        return true;
    case eKindManualEvent:
    case eKindThread:
        return nValue == VALUE_SIGNALLED;
    case eKindSemaphore:
        if (nValue == 0)
            return false;
        --nValue;
        return true;
    case eKindMutex:
        if ((nValue & MUTEX_OWNER) == nThreadId)
            return true;
        if ((nValue & MUTEX_OWNER) != 0)
            return false;
        nValue = nThreadId;
        return true;
    default:
        return false;
    }
}

// What the creator of a thread hands to it.
struct sThreadStart
{
    unsigned long (*pEntry)(unsigned long long ullParam);
    void* pParam;
    void* pLibraryHold; // the new thread's hold: it runs in this library's code
    tFutex nStep;
};

// Records are never given back to the system, only used again: a stale handle leads to a record with another tag, not
// to released memory. Tag and value stand in one word and change together.
class alignas(64) CWaitable
{
public:
    // A record that has never been used is all zeros, so that a table of them needs no construction.
    constexpr CWaitable() = default;
    CWaitable(const CWaitable&) = delete;
    CWaitable& operator=(const CWaitable&) = delete;

    // These need no lock. All changes of words are in one order, which a thread that unlocks one object and then only
    // reads another one relies on (see Event::SignalIfClear). An owner's plain changes have their place in it, since
    // nobody else sees the object before they are visible.

    tHandle GetHandle() const { return static_cast<tHandle>(GetTag()) << 32 | m_nPlace; }

    tDword GetTag() const { return static_cast<tDword>(m_nWord.load(std::memory_order_acquire) >> 32); }

    // Applies bool fnChange(tDword& nValue), which may be called again for a newer value. It always writes, so that
    // signalling an event that is signalled already still publishes what the signalling thread did before.
    template<class TChange> eTry TryChange(tDword nTag, TChange fnChange)
    {
        const bool bOwner = Enter();
        std::uint64_t nWord = m_nWord.load(std::memory_order_acquire);
        eTry eResult = eTryDone;
        for (bool bChanged = false; eResult == eTryDone && !bChanged;)
        {
            tDword nValue = static_cast<tDword>(nWord);
            if (static_cast<tDword>(nWord >> 32) != nTag)
                eResult = eTryStale;
            else if ((nValue & VALUE_HELD) != 0)
                eResult = eTryHeld;
            else if (!fnChange(nValue))
                eResult = eTryRefused;
            else if (!bOwner)
                bChanged = m_nWord.compare_exchange_weak(nWord, MakeWord(nTag, nValue));
            else
            {
                m_nWord.store(MakeWord(nTag, nValue), std::memory_order_release);
                bChanged = true;
            }
        }
        if (bOwner)
            m_oOwner.Leave();
        return eResult;
    }

    // These are the quick steps. They do nothing, and return false, for an object of which another thread is the owner,
    // or nobody yet, and for a thread that has not been seen yet. HasValue tells whether the object is not held and has
    // this value. Exchange changes one value into another, and ExchangeLock does so with the state of a critical
    // section; they return false, too, if that is not the value.
    bool HasValue(tDword nTag, tDword nValue) const
    {
        return m_oOwner.CanRead(t_oThread.nId) && m_nWord.load() == MakeWord(nTag, nValue);
    }

    bool Exchange(tDword nTag, tDword nFrom, tDword nTo)
    {
        return ExchangeQuickly(m_nWord, MakeWord(nTag, nFrom), MakeWord(nTag, nTo));
    }

    // Exchange for an event, which returns true as well if the event has the new value already.
    bool ChangeSignal(tDword nTag, tDword nTo)
    {
        const std::uint64_t nNew = MakeWord(nTag, nTo);
        std::uint64_t nOld = MakeWord(nTag, nTo ^ VALUE_SIGNALLED);
        if (!m_oOwner.EnterShortly(t_oThread.nId))
            return CanUseShared() && (m_nWord.load() == nNew || m_nWord.compare_exchange_strong(nOld, nNew));
        const bool bLike = ((m_nWord.load(std::memory_order_relaxed) ^ nNew) & ~std::uint64_t(VALUE_SIGNALLED)) == 0;
        if (bLike)
            m_nWord.store(nNew, std::memory_order_release);
        m_oOwner.LeaveShortly();
        return bLike;
    }

    bool ExchangeLock(tDword nFrom, tDword nTo) { return ExchangeQuickly(m_nLock, nFrom, nTo); }

    // The value as it is, for the next quick step.
    tDword PeekValue() const { return static_cast<tDword>(m_nWord.load(std::memory_order_relaxed)); }

    // MakeReadable makes the calling thread the owner, if there was none, and all threads equal if another one was.
    // Share makes all threads equal in any case.
    void MakeReadable();
    void Share() { m_oOwner.Share(t_oThread.nId); }

    // Changes of one kind of object, each a single step that serves the waits for it (TOVWakeList.h). They do nothing
    // if the tag does not match any more. LeaveMutex does nothing unless that thread is the owner; ReleaseSemaphore
    // returns false, and changes nothing, if the count would exceed the maximum.
    void SetSignalled(tDword nTag) { SetValue(nTag, VALUE_SIGNALLED); }
    void ClearSignal(tDword nTag) { SetValue(nTag, 0); }
    void SetValue(tDword nTag, tDword nNew);
    void LeaveMutex(tDword nTag, sThreadRecord& oThread);
    bool ReleaseSemaphore(tDword nTag, tDword nCount, tDword& nPrevious);

    // Takes the object as a wait does. bAbandoned is set if it is a mutex whose last owner ended as its owner. A named
    // object always counts as held.
    eTry TryTake(tDword nTag, sThreadRecord& oThread, bool& bAbandoned);

    // Adds a level to a mutex of the calling thread. False if that is not the owner.
    bool EnterAgain(tDword nTag, tDword nThreadId);

    bool IsSignalled() const { return (m_nWord.load(std::memory_order_acquire) & VALUE_SIGNALLED) != 0; }

    bool IsOwnedBy(tDword nThreadId) const
    {
        return (static_cast<tDword>(m_nWord.load(std::memory_order_acquire)) & MUTEX_OWNER) == nThreadId;
    }

    // The owner's levels of ownership beyond the first. LeaveInnerLevel returns false if there is none, so that the
    // lock has to be freed.
    void AddInnerLevel()
    {
        m_nInnerLevels.store(m_nInnerLevels.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }

    bool LeaveInnerLevel()
    {
        if (!HasInnerLevels())
            return false;
        m_nInnerLevels.store(m_nInnerLevels.load(std::memory_order_relaxed) - 1, std::memory_order_relaxed);
        return true;
    }

    bool HasInnerLevels() const { return m_nInnerLevels.load(std::memory_order_relaxed) != 0; }

    // These need the lock of the waits.

    // Keeps all changes to the holders of that lock; false if the tag does not match. Release undoes it, unless linked
    // waits have to learn of each change.
    bool Hold(tDword nTag);
    void Release();

    // Makes the handle of a held object stale, for good.
    void Retire();

    // Does for this object what EndOtherThreads does for all.
    void LeaveTo(const sThreadRecord& oThread, tDword nFormerId);

    tDword GetHeldValue() const { return static_cast<tDword>(m_nWord.load(std::memory_order_relaxed)) & ~VALUE_HELD; }

    template<class TChange> bool ChangeHeld(TChange fnChange)
    {
        tDword nValue = GetHeldValue();
        if (!fnChange(nValue))
            return false;
        m_nWord.store(MakeWord(GetTag(), nValue | VALUE_HELD), std::memory_order_release);
        return true;
    }

    // Whether a wait of that thread could take the held object now; and the taking, which returns true for a mutex that
    // was abandoned.
    bool CanTakeHeld(tDword nThreadId) const;
    bool TakeHeld(sThreadRecord& oThread);

    // The number of units that a mutex or a semaphore has for threads that compete for it.
    tDword CountFree() const;

    // The count of a semaphore without the units for which threads are on their way.
    tDword GetUnpromised() const;

    sWaitNode* m_pFirstWait = nullptr; // waits for this object, oldest first
    sWaitNode* m_pLastWait = nullptr;
    tDword m_nFirmWaits = 0;   // among them: those that get the object handed over
    tDword m_nComingWaits = 0; // among them: those of threads that were woken and are on their way

    // Members of single kinds. The creator sets them before the handle is known to anybody.

    tFutex m_nLock{0};        // critical section: its state
    tFutex m_nInnerLevels{0}; // mutex, critical section: levels of ownership beyond the first, used only by the owner
    tFutex m_nMaximum{0};     // semaphore

private:
    friend class CHandleTable;

    static std::uint64_t MakeWord(tDword nTag, tDword nValue)
    {
        return static_cast<std::uint64_t>(nTag) << 32 | nValue;
    }

    // Does what TryTake does for objects of which a wait takes nothing, so that it need not write.
    eTry TryRead(tDword nTag);

    // Does what ReleaseSemaphore does, unless the semaphore is held.
    eTry TryReleaseSemaphore(tDword nTag, tDword nCount, tDword& nPrevious)
    {
        const tDword nMaximum = m_nMaximum.load(std::memory_order_relaxed);
        return TryChange(nTag, [=, &nPrevious](tDword& nValue) {
            nPrevious = nValue;
            nValue += nCount;
            return nCount <= nMaximum - nPrevious;
        });
    }

    // Whether the calling thread is the owner, or becomes it, so that it must leave the object after a use.
    bool Enter();

    bool CanUseShared() const { return m_oOwner.IsShared() && t_oThread.nId != NO_ID; }

    template<class TWord> bool ExchangeQuickly(std::atomic<TWord>& nWord, TWord nFrom, TWord nTo)
    {
        if (!m_oOwner.EnterShortly(t_oThread.nId))
            return CanUseShared() && nWord.compare_exchange_strong(nFrom, nTo);
        const bool bSame = nWord.load(std::memory_order_relaxed) == nFrom;
        if (bSame)
            nWord.store(nTo, std::memory_order_release);
        m_oOwner.LeaveShortly();
        return bSame;
    }

    // Does what ReleaseSemaphore does while threads wait for the semaphore.
    bool ReleaseHeldSemaphore(tDword nTag, tDword nCount, tDword& nPrevious);

    tDword m_nPlace = 0;                   // in the handle table
    std::atomic<std::uint64_t> m_nWord{0}; // tag, value
    COwner m_oOwner;                       // all steps up to here are in one line of the cache
    CWaitable* m_pNextFree = nullptr;

public:
    // Members of single kinds that are seldom used.

    std::atomic<tDword> m_nSystemId{0};   // thread
    std::atomic<int> m_nPriorityLevel{0}; // thread: as last set
    std::atomic<int> m_nNice{0};          // thread: what the system made of it
    std::atomic<CNamedObject*> m_pNamed{nullptr};
    sThreadStart m_oStart = {}; // thread
};
} // namespace TOVPosix
} // namespace TOVPlatform
