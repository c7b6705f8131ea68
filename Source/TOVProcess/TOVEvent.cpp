#include <TOVProcess/TOVEvent.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVSynchronization.h>

namespace Event = TOVPlatform::TOVSynchronization::Event;

CTOVEvent::~CTOVEvent()
{
    Event::Destroy(m_hEvent);
}

CTOVEvent::CTOVEvent(bool bManualReset) : m_hEvent(Event::Create(bManualReset, false, nullptr))
{
    if (m_hEvent == 0)
        TOVDebug::_Log(__FILE__, __LINE__, 0x8011, eSeverityFatal, "%s",
                       "CTOVEvent::CTOVEvent(): TOVPlatform::TOVSynchronization::Event_Create() failed!");
}

CTOVEvent::CTOVEvent(const CTOVEvent& oOther) = default;

CTOVEvent& CTOVEvent::operator=(const CTOVEvent& oOther) = default;

void CTOVEvent::Signal()
{
    Event::Signal(m_hEvent);
}

void CTOVEvent::Reset()
{
    Event::Reset(m_hEvent);
}

void CTOVEvent::Wait()
{
    Event::Wait(m_hEvent);
}

bool CTOVEvent::TimedWait(long lMilliseconds)
{
    return Event::TimedWait(m_hEvent, lMilliseconds);
}
