#include <TOVProcess/TOVEventCondition.h>

#include <TOVContainers/TOVArray.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVProcess/TOVEvent.h>

#include <climits>
#include <new>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
// NULL when there is no memory, also for so many that their bytes cannot be counted: new would throw then.
unsigned long long* NewHandles(int nNumEvents)
{
    if (nNumEvents > INT_MAX / static_cast<int>(sizeof(unsigned long long)))
        return NULL;
    return new (std::nothrow) unsigned long long[static_cast<std::size_t>(nNumEvents)];
}
} // namespace

CTOVEventCondition::~CTOVEventCondition() noexcept(false)
{
    TOV_ASSERT(m_pEventHandles != NULL);
    delete[] m_pEventHandles;
}

CTOVEventCondition::CTOVEventCondition(eConditionType eType, CTOVEvent* pEvents, int nNumEvents)
    : m_eConditionType(eType), m_pEventHandles(NULL), m_nNumEvents(nNumEvents)
{
    TOV_ASSERT(pEvents != NULL);
    TOV_ASSERT(nNumEvents > 0);
    m_pEventHandles = NewHandles(nNumEvents);
    TOV_ASSERT(m_pEventHandles != NULL);
    for (int nEvent = 0; nEvent < nNumEvents; ++nEvent)
        m_pEventHandles[nEvent] = pEvents[nEvent].GetHandle();
}

CTOVEventCondition::CTOVEventCondition(eConditionType eType, CTOVEvent** pEvents, int nNumEvents)
    : m_eConditionType(eType), m_pEventHandles(NULL), m_nNumEvents(nNumEvents)
{
    TOV_ASSERT(pEvents != NULL);
    TOV_ASSERT(nNumEvents > 0);
    m_pEventHandles = NewHandles(nNumEvents);
    TOV_ASSERT(m_pEventHandles != NULL);
    for (int nEvent = 0; nEvent < nNumEvents; ++nEvent)
        m_pEventHandles[nEvent] = pEvents[nEvent]->GetHandle();
}

CTOVEventCondition::CTOVEventCondition(eConditionType eType, const CTOVArray<CTOVEvent>& oEvents)
    : m_eConditionType(eType), m_pEventHandles(NULL), m_nNumEvents(static_cast<int>(oEvents.GetSize()))
{
    TOV_ASSERT(!oEvents.IsEmpty());
    m_pEventHandles = NewHandles(m_nNumEvents);
    TOV_ASSERT(m_pEventHandles != NULL);
    for (int nEvent = 0; nEvent < m_nNumEvents; ++nEvent)
        m_pEventHandles[nEvent] = oEvents[nEvent].GetHandle();
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
