#include <TOVProcess/TOVEventCondition.h>

#include <Debug/TOVCheck.h>
#include <TOVContainers/TOVArray.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVProcess/TOVEvent.h>

#include <climits>
#include <memory>
#include <new>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
// Returns the handles of the events, which fnEventAt returns by index. Returns null if there is no memory, and if the
// array would be so large that new would throw.
template<class TEventAt> tHandle* TakeHandles(int nNumEvents, const TEventAt& fnEventAt)
{
    if (nNumEvents > INT_MAX / static_cast<int>(sizeof(tHandle)))
        return nullptr;

    std::unique_ptr<tHandle[]> pHandles(new (std::nothrow) tHandle[static_cast<std::size_t>(nNumEvents)]);
    for (int nEvent = 0; pHandles != nullptr && nEvent < nNumEvents; ++nEvent)
        pHandles[nEvent] = fnEventAt(nEvent).GetHandle(); // an array's own access may throw
    return pHandles.release();
}
} // namespace

CTOVEventCondition::~CTOVEventCondition()
{
    TOV_TELL_TEXT(m_pEventHandles != NULL, "m_pEventHandles != NULL");
    delete[] m_pEventHandles;
}

CTOVEventCondition::CTOVEventCondition(eConditionType eType, CTOVEvent* pEvents, int nNumEvents)
    : m_eConditionType(eType), m_pEventHandles(nullptr), m_nNumEvents(nNumEvents)
{
    TOV_ASSERT(pEvents != NULL);
    TOV_ASSERT(nNumEvents > 0);
    m_pEventHandles = TakeHandles(nNumEvents, [&](int nEvent) -> const CTOVEvent& { return pEvents[nEvent]; });
    TOV_ASSERT(m_pEventHandles != NULL);
}

CTOVEventCondition::CTOVEventCondition(eConditionType eType, CTOVEvent** pEvents, int nNumEvents)
    : m_eConditionType(eType), m_pEventHandles(nullptr), m_nNumEvents(nNumEvents)
{
    TOV_ASSERT(pEvents != NULL);
    TOV_ASSERT(nNumEvents > 0);
    m_pEventHandles = TakeHandles(nNumEvents, [&](int nEvent) -> const CTOVEvent& { return *pEvents[nEvent]; });
    TOV_ASSERT(m_pEventHandles != NULL);
}

CTOVEventCondition::CTOVEventCondition(eConditionType eType, const CTOVArray<CTOVEvent>& oEvents)
    : m_eConditionType(eType), m_pEventHandles(nullptr), m_nNumEvents(static_cast<int>(oEvents.GetSize()))
{
    TOV_ASSERT(!oEvents.IsEmpty());
    m_pEventHandles = TakeHandles(m_nNumEvents, [&](int nEvent) -> const CTOVEvent& { return oEvents[nEvent]; });
    TOV_ASSERT(m_pEventHandles != NULL);
}

CTOVEventCondition::CTOVEventCondition(const CTOVEventCondition& oOther) = default;

CTOVEventCondition& CTOVEventCondition::operator=(const CTOVEventCondition& oOther) = default;

int CTOVEventCondition::Wait()
{
    TOV_ASSERT(m_pEventHandles != NULL);
    TOV_ASSERT(m_nNumEvents > 0);
    return Event::MultipleWait(m_pEventHandles, m_nNumEvents, m_eConditionType == eConditionTypeAll);
}

int CTOVEventCondition::TimedWait(unsigned long ulMilliseconds)
{
    TOV_ASSERT(m_pEventHandles != NULL);
    TOV_ASSERT(m_nNumEvents > 0);
    return Event::MultipleTimedWait(m_pEventHandles, m_nNumEvents, m_eConditionType == eConditionTypeAll,
                                    static_cast<long>(ulMilliseconds));
}
