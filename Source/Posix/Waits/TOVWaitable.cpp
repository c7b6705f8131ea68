#include <Posix/Waits/TOVWaitable.h>

namespace TOVPlatform
{
namespace TOVPosix
{
eTry CWaitable::TryTake(tDword nTag, sThreadRecord& oThread, bool& bAbandoned)
{
    const eKind eObject = KindOf(nTag);
    if (eObject == eKindMutex && EnterAgain(nTag, oThread.nId))
        return eTryDone;

    if (eObject == eKindManualEvent || eObject == eKindThread)
        return TryRead(nTag);

    const eTry eResult = TryChange(nTag, [&](tDword& nValue) {
        bAbandoned = eObject == eKindMutex && (nValue & MUTEX_ABANDONED) != 0;
        return TakeFromValue(eObject, oThread.nId, nValue);
    });
    if (eResult == eTryDone && eObject == eKindMutex)
        CountOwnership(oThread);
    return eResult;
}

eTry CWaitable::TryRead(tDword nTag) const
{
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
    m_nLevels.store(m_nLevels.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    return true;
}

bool CWaitable::Hold(tDword nTag)
{
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
    // An object that is not held may change at any moment, so it is released only once.
    const std::uint64_t nWord = m_nWord.load(std::memory_order_relaxed);
    if (m_pFirstWait == nullptr && (nWord & VALUE_HELD) != 0)
        m_nWord.store(nWord & ~static_cast<std::uint64_t>(VALUE_HELD), std::memory_order_release);
}

void CWaitable::Retire()
{
    m_nWord.store(MakeWord(GetTag() & ~TAG_KIND_MASK, 0), std::memory_order_release);
}

void CWaitable::LeaveTo(const sThreadRecord& oThread, tDword nFormerId)
{
    m_pFirstWait = nullptr; // the calling thread is not among them
    m_pLastWait = nullptr;

    const tDword nTag = GetTag();
    tDword nValue = GetHeldValue();
    if (KindOf(nTag) == eKindMutex && (nValue & MUTEX_OWNER) != 0)
        nValue = (nValue & MUTEX_OWNER) == nFormerId ? oThread.nId : MUTEX_ABANDONED;
    else if (KindOf(nTag) == eKindThread && GetHandle() == oThread.hThread)
        m_nSystemId.store(oThread.nId, std::memory_order_relaxed);
    else if (KindOf(nTag) == eKindThread)
        nValue = VALUE_SIGNALLED;
    else if (KindOf(nTag) == eKindCriticalSection)
    {
        const tDword nOwner = m_nLock.load(std::memory_order_relaxed) & ~SECTION_CONTENDED;
        m_nLock.store(nOwner != 0 && nOwner == nFormerId ? oThread.nId : 0, std::memory_order_relaxed);
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
        CountOwnership(oThread);
    return bAbandoned;
}

void CWaitable::CountOwnership(sThreadRecord& oThread)
{
    m_nLevels.store(1, std::memory_order_relaxed);
    ++oThread.nOwnedMutexes;
}
} // namespace TOVPosix
} // namespace TOVPlatform
