#include <Debug/TOVDebugServer.h>

#include <TOVPlatform/TOVString.h>
#include <TOVPlatform/TOVSynchronization.h>

#include <algorithm>
#include <cstdlib>

namespace TOVDebug
{
namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

CTOVDebugServer* CTOVDebugServer::s_pInstance = nullptr;

CTOVDebugServer& CTOVDebugServer::Instance()
{
    if (s_pInstance == nullptr)
        s_pInstance = new CTOVDebugServer;
    return *s_pInstance;
}

CTOVDebugServer::CTOVDebugServer() : m_hLoggerLock(0), m_szApplicationName()
{
    TOVPlatform::TOVStringA::SNPrintf(m_szApplicationName, NAME_SIZE, "<unknown>");
    CreateLock();
}

CTOVDebugServer::CTOVDebugServer(const CTOVDebugServer& oOther) = default;
CTOVDebugServer& CTOVDebugServer::operator=(const CTOVDebugServer& oOther) = default;

CTOVDebugServer::~CTOVDebugServer() noexcept(false)
{
    CTOVDebugServer::OnClosedown();
}

void CTOVDebugServer::Register(ITOVLogListener* pListener)
{
    if (pListener == nullptr)
        return;

    LockLoggers();
    // Settled: a listener found in the table leaves the lock entered once more.
    if (std::find(m_oLoggers.begin(), m_oLoggers.end(), pListener) != m_oLoggers.end())
        return;
    m_oLoggers.push_back(pListener);
    StartupLogger(pListener);
    UnlockLoggers();
}

void CTOVDebugServer::Unregister(ITOVLogListener* pListener)
{
    if (pListener == nullptr)
        return;

    LockLoggers();
    // Settled: a listener that was never registered is closed down as well.
    ClosedownLogger(pListener);
    const auto pFound = std::find(m_oLoggers.begin(), m_oLoggers.end(), pListener);
    if (pFound != m_oLoggers.end())
        m_oLoggers.erase(pFound);
    UnlockLoggers();
}

template<class TCall> void CTOVDebugServer::Dispatch(TCall fnCall)
{
    LockLoggers();
    // By index and with the size read anew: a listener may change the table from inside its call.
    for (std::size_t i = 0; i < m_oLoggers.size(); ++i)
    {
        if (ITOVLogListener* pListener = m_oLoggers[i])
            fnCall(pListener);
    }
    UnlockLoggers();
}

void CTOVDebugServer::OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                             const char* szFormat, va_list pArguments)
{
    Dispatch([&](ITOVLogListener* pListener) {
        // Where a list is more than a pointer, whoever reads it uses it up: each listener gets it afresh.
        va_list pCopy;
        va_copy(pCopy, pArguments);
        pListener->OnLogV(szFile, ulLine, eSeverity, szFormat, pCopy);
        va_end(pCopy);
    });
}

void CTOVDebugServer::OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression)
{
    Dispatch([&](ITOVLogListener* pListener) { pListener->OnAssert(szFile, ulLine, szExpression); });
}

void CTOVDebugServer::OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments)
{
    Dispatch([&](ITOVLogListener* pListener) {
        va_list pCopy;
        va_copy(pCopy, pArguments);
        pListener->OnPanicV(szFile, ulLine, szFormat, pCopy);
        va_end(pCopy);
    });
}

void CTOVDebugServer::OnStartup()
{
    CreateLock();
}

void CTOVDebugServer::OnClosedown()
{
    Dispatch([this](ITOVLogListener* pListener) { ClosedownLogger(pListener); });
    CriticalSection::Destroy(m_hLoggerLock);
}

void CTOVDebugServer::SetApplicationName(const char* szName)
{
    if (szName != nullptr)
        TOVPlatform::TOVStringA::NCopy(m_szApplicationName, szName, NAME_SIZE);
}

void CTOVDebugServer::SetDebugServer(CTOVDebugServer* pServer)
{
    if (pServer == nullptr || pServer == s_pInstance)
        return;

    CTOVDebugServer* pOld = s_pInstance;
    if (pOld != nullptr)
    {
        pServer->CTOVDebugServer::operator=(*pOld);
        delete pOld;
    }
    s_pInstance = pServer;
}

void CTOVDebugServer::LockLoggers()
{
    if (m_hLoggerLock == 0)
        std::exit(-1);
    CriticalSection::Enter(m_hLoggerLock);
}

void CTOVDebugServer::UnlockLoggers()
{
    if (m_hLoggerLock == 0)
        std::exit(-1);
    CriticalSection::Leave(m_hLoggerLock);
}

void CTOVDebugServer::StartupLogger(ITOVLogListener* pListener)
{
    if (pListener != nullptr)
        pListener->OnStartup();
}

void CTOVDebugServer::ClosedownLogger(ITOVLogListener* pListener)
{
    if (pListener != nullptr)
        pListener->OnClosedown();
}

void CTOVDebugServer::CreateLock()
{
    m_hLoggerLock = CriticalSection::Create(2000);
    if (m_hLoggerLock == 0)
        std::exit(-1);
}
} // namespace TOVDebug
