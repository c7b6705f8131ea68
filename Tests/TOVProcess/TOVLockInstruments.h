// The handles of events, mutexes, semaphores and critical sections, and objects that have lost theirs.
#pragma once

#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVProcess/TOVCriticalSection.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVMutex.h>
#include <TOVProcess/TOVSemaphore.h>

namespace
{
TOV_PRIVATE_MEMBER(HandleOfEvent, CTOVEvent, unsigned long long, m_hEvent)
TOV_PRIVATE_MEMBER(HandleOfMutex, CTOVMutex, unsigned long long, m_hMutex)
TOV_PRIVATE_MEMBER(HandleOfSection, CTOVCriticalSection, unsigned long long, m_hCriticalSection)
TOV_PRIVATE_MEMBER(HandleOfSemaphore, CTOVSemaphore, unsigned long long, m_hSemaphore)

inline unsigned long long& HandleOf(CTOVEvent& oEvent)
{
    return HandleOfEvent(oEvent);
}

inline unsigned long long& HandleOf(CTOVMutex& oMutex)
{
    return HandleOfMutex(oMutex);
}

inline unsigned long long& HandleOf(CTOVCriticalSection& oSection)
{
    return HandleOfSection(oSection);
}

inline unsigned long long& HandleOf(CTOVSemaphore& oSemaphore)
{
    return HandleOfSemaphore(oSemaphore);
}
} // namespace

// Takes the handle away until its own end.
class CLostHandle
{
public:
    explicit CLostHandle(unsigned long long& hHandle) : m_hHandle(hHandle), m_hKept(hHandle) { m_hHandle = 0; }
    ~CLostHandle() { m_hHandle = m_hKept; }

    CLostHandle(const CLostHandle&) = delete;
    CLostHandle& operator=(const CLostHandle&) = delete;

private:
    unsigned long long& m_hHandle;
    const unsigned long long m_hKept;
};
