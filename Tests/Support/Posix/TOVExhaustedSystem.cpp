#include "Support/TOVExhaustedSystem.h"

#include <TOVPlatform/TOVSynchronization.h>

#if TOV_CAN_FAIL_ALLOCATIONS
namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;

struct CExhaustedSystem::sRefusals
{
};

// The backend may keep free records for reuse, so these are used up.
CExhaustedSystem::CExhaustedSystem()
{
    m_aEvents.reserve(100000);
    m_aCriticalSections.reserve(100000);
    m_pFailure.reset(new CAllocationFailure);

    unsigned long long hObject = 0;
    while (m_aEvents.size() < m_aEvents.capacity() && (hObject = Event::Create(false, false, nullptr)) != 0)
        m_aEvents.push_back(hObject);
    while (m_aCriticalSections.size() < m_aCriticalSections.capacity() && (hObject = CriticalSection::Create(0)) != 0)
        m_aCriticalSections.push_back(hObject);
}

CExhaustedSystem::~CExhaustedSystem()
{
    m_pFailure.reset();
    for (const unsigned long long hEvent : m_aEvents)
        Event::Destroy(hEvent);
    for (const unsigned long long hCriticalSection : m_aCriticalSections)
        CriticalSection::Destroy(hCriticalSection);
}
#endif
