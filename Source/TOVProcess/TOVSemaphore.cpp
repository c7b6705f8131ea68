#include <TOVProcess/TOVSemaphore.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVSynchronization.h>

namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

CTOVSemaphore::~CTOVSemaphore()
{
    Semaphore::Destroy(m_hSemaphore);
}

CTOVSemaphore::CTOVSemaphore(long lInitialCount, long lMaximumCount, const char* szName)
    : m_lSemaphoreState(0), m_hSemaphore(Semaphore::Create(lInitialCount, lMaximumCount, szName))
{
    TOV_ASSERT_TEXT(m_hSemaphore != 0, "m_hSemaphore != NULL");
}

CTOVSemaphore::CTOVSemaphore(const CTOVSemaphore& oOther)
    : m_lSemaphoreState(oOther.m_lSemaphoreState), m_hSemaphore(oOther.m_hSemaphore)
{
}

CTOVSemaphore& CTOVSemaphore::operator=(const CTOVSemaphore& oOther)
{
    m_lSemaphoreState = oOther.m_lSemaphoreState;
    m_hSemaphore = oOther.m_hSemaphore;
    return *this;
}

void CTOVSemaphore::Lock() const
{
    TOV_ASSERT_TEXT(m_hSemaphore != 0, "m_hSemaphore != NULL");

    Semaphore::Lock(m_hSemaphore);
}

bool CTOVSemaphore::TryLock(long lMilliseconds) const
{
    TOV_ASSERT_TEXT(m_hSemaphore != 0, "m_hSemaphore != NULL");

    return Semaphore::TryLock(m_hSemaphore, lMilliseconds);
}

long CTOVSemaphore::Unlock(long lCount) const
{
    TOV_ASSERT_TEXT(m_hSemaphore != 0, "m_hSemaphore != NULL");

    return Semaphore::Unlock(m_hSemaphore, lCount);
}
