#include <Posix/Waits/TOVWaitable.h>

#include <algorithm>

namespace TOVPlatform
{
namespace TOVPosix
{
TOV_NOINLINE bool CWaitable::Enter()
{
    return m_oOwner.Enter(ThisThreadId());
}

TOV_NOINLINE void CWaitable::MakeReadable()
{
    if (Enter())
        m_oOwner.Leave();
}

eTry CWaitable::TryTake(tDword nTag, sThreadRecord& oThread, bool& bAbandoned)
{
    const eKind eObject = KindOf(nTag);
    if (eObject == eKindNamed || eObject == eKindCriticalSection)
        return eTryHeld;

    if (eObject == eKindMutex && EnterAgain(nTag, oThread.nId))
        return eTryDone;

    if (eObject == eKindManualEvent || eObject == eKindThread)
        return TryRead(nTag);

    const eTry eResult = TryChange(nTag, [&](tDword& nValue) {
        bAbandoned = eObject == eKindMutex && (nValue & MUTEX_ABANDONED) != 0;
        return TakeFromValue(eObject, oThread.nId, nValue);
    });
    if (eResult == eTryDone && eObject == eKindMutex)
        ++oThread.nOwnedMutexes;
    return eResult;
}

eTry CWaitable::TryRead(tDword nTag)
{
    MakeReadable();
    const std::uint64_t nWord = m_nWord.load(std::memory_order_acquire);
    if (static_cast<tDword>(nWord >> 32) != nTag)
        return eTryStale;
    return (nWord & VALUE_SIGNALLED) != 0 ? eTryDone : eTryRefused;
}

bool CWaitable::EnterAgain(tDword nTag, tDword nThreadId)
{
    const std::uint64_t nWord = m_nWord.load(std::memory_order_acquire);
    if (static_cast<tDword>(nWord >> 32) != nTag || (static_cast<tDword>(nWord) & MUTEX_OWNER) != nThreadId)
        return false;
    AddInnerLevel();
    return true;
}

bool CWaitable::Hold(tDword nTag)
{
    Share();
    std::uint64_t nWord = m_nWord.load(std::memory_order_acquire);
    do
    {
        if (static_cast<tDword>(nWord >> 32) != nTag)
            return false;
    } while (!m_nWord.compare_exchange_weak(nWord, nWord | VALUE_HELD, std::memory_order_acq_rel,
                                            std::memory_order_acquire));
    return true;
}

void CWaitable::Release()
{
    // The thread that is on its way holds the mutex again when it comes. Until then the others need no lock for it. The
    // maximum of a semaphore, however, is compared with what those who come leave.
    const std::uint64_t nWord = m_nWord.load(std::memory_order_relaxed);
    const bool bNextIsComing = KindOf(GetTag()) == eKindMutex && m_nComingWaits != 0 && m_nFirmWaits == 0;

    // An object that is not held may change at any moment, so it is released only once.
    if ((m_pFirstWait == nullptr || bNextIsComing) && (nWord & VALUE_HELD) != 0)
        m_nWord.store(nWord & ~static_cast<std::uint64_t>(VALUE_HELD), std::memory_order_release);
}

void CWaitable::Retire()
{
    m_nWord.store(MakeWord(GetTag() & ~TAG_KIND_MASK, 0), std::memory_order_release);
}

void CWaitable::LeaveTo(const sThreadRecord& oThread, tDword nFormerId)
{
    m_oOwner.ForgetOtherThreads(NO_ID); // the calling thread has a new id
    const tDword nTag = GetTag();
    tDword nValue = KindOf(nTag) == eKindSemaphore ? GetUnpromised() : GetHeldValue();
    m_pFirstWait = nullptr; // the calling thread is not among them
    m_pLastWait = nullptr;
    m_nFirmWaits = 0;
    m_nComingWaits = 0;

    if (KindOf(nTag) == eKindMutex && (nValue & MUTEX_OWNER) != 0)
    {
        const bool bOwn = (nValue & MUTEX_OWNER) == nFormerId;
        nValue = bOwn ? oThread.nId : MUTEX_ABANDONED;
        if (!bOwn)
            m_nInnerLevels.store(0, std::memory_order_relaxed);
    }
    else if (KindOf(nTag) == eKindThread && GetHandle() == oThread.hThread)
        m_nSystemId.store(oThread.nId, std::memory_order_relaxed);
    else if (KindOf(nTag) == eKindThread)
        nValue = VALUE_SIGNALLED;
    else if (KindOf(nTag) == eKindCriticalSection)
    {
        const tDword nOwner = m_nLock.load(std::memory_order_relaxed) & SECTION_OWNER;
        const bool bOwn = nOwner != 0 && nOwner == nFormerId;
        m_nLock.store(bOwn ? oThread.nId : 0, std::memory_order_relaxed);
        if (!bOwn)
            m_nInnerLevels.store(0, std::memory_order_relaxed);
    }
    m_nWord.store(MakeWord(nTag, nValue), std::memory_order_release);
}

bool CWaitable::CanTakeHeld(tDword nThreadId) const
{
    tDword nValue = GetHeldValue();
    return TakeFromValue(KindOf(GetTag()), nThreadId, nValue);
}

bool CWaitable::TakeHeld(sThreadRecord& oThread)
{
    const eKind eObject = KindOf(GetTag());
    if (eObject == eKindMutex && EnterAgain(GetTag(), oThread.nId))
        return false;

    const bool bAbandoned = eObject == eKindMutex && (GetHeldValue() & MUTEX_ABANDONED) != 0;
    ChangeHeld([&](tDword& nValue) { return TakeFromValue(eObject, oThread.nId, nValue); });
    if (eObject == eKindMutex)
        ++oThread.nOwnedMutexes;
    return bAbandoned;
}

tDword CWaitable::CountFree() const
{
    const tDword nValue = GetHeldValue();
    if (KindOf(GetTag()) == eKindSemaphore)
        return nValue;
    return (nValue & MUTEX_OWNER) == 0 ? 1 : 0;
}

tDword CWaitable::GetUnpromised() const
{
    const tDword nValue = GetHeldValue();
    return nValue - std::min(nValue, m_nComingWaits);
}
} // namespace TOVPosix
} // namespace TOVPlatform
