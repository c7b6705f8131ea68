#include <TOVProcess/TOVMutex.h>

#include <Debug/TOVCheck.h>
#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVSynchronization.h>

namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;

CTOVMutex::~CTOVMutex()
{
    TOV_TELL_TEXT(m_hMutex != 0, "m_hMutex != NULL");

    Mutex::Destroy(m_hMutex);
}

CTOVMutex::CTOVMutex() : m_hMutex(Mutex::Create(false, nullptr)), m_bMutexState(false)
{
    if (m_hMutex == 0)
        TOVDebug::_Log(__FILE__, __LINE__, 0x8011, eSeverityFatal, "%s",
                       "CTOVMutex::CTOVMutex(): TOVPlatform::TOVSynchronization::Mutex_Create() failed!");
}

CTOVMutex::CTOVMutex(const CTOVMutex& oOther) : m_hMutex(oOther.m_hMutex), m_bMutexState(oOther.m_bMutexState)
{
}

CTOVMutex& CTOVMutex::operator=(const CTOVMutex& oOther)
{
    m_hMutex = oOther.m_hMutex;
    m_bMutexState = oOther.m_bMutexState;
    return *this;
}

void CTOVMutex::Lock() const
{
    TOV_ASSERT_TEXT(m_hMutex != 0, "m_hMutex != NULL");

    Mutex::Lock(m_hMutex);
}

void CTOVMutex::Unlock() const
{
    TOV_ASSERT_TEXT(m_hMutex != 0, "m_hMutex != NULL");

    Mutex::Unlock(m_hMutex);
}

bool CTOVMutex::IsLocked() const
{
    TOV_ASSERT_TEXT(m_hMutex != 0, "m_hMutex != NULL");

    return Mutex::IsLocked(m_hMutex);
}

tHandle CTOVMutex::GetHandle() const
{
    TOV_ASSERT_TEXT(m_hMutex != 0, "m_hMutex != NULL");

    return m_hMutex;
}
