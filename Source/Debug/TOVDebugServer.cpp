#include <Debug/TOVDebugServer.h>

#include <Debug/TOVAudience.h>
#include <Debug/TOVMSDevLogger.h>
#include <TOVPlatform/Backend/TOVSystem.h>
#include <TOVPlatform/TOVString.h>
#include <TOVPlatform/TOVSynchronization.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iterator>
#include <typeinfo>

namespace TOVDebug
{
namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

namespace
{
// The servers that have closed down and still exist. Their lock handle keeps the value of a destroyed lock, so that the
// handle does not show that they have closed down. If there are more servers than places, the destructor of each
// further one destroys its lock a second time.
constexpr int MAX_CLOSED_SERVERS = 32;
std::atomic<const CTOVDebugServer*> s_apClosedServers[MAX_CLOSED_SERVERS];
std::atomic<int> s_nClosedServers(0);

bool HasClosedDown(const CTOVDebugServer* pServer)
{
    return s_nClosedServers != 0 && std::find(std::begin(s_apClosedServers), std::end(s_apClosedServers), pServer) !=
                                        std::end(s_apClosedServers);
}

// Replaces one entry by another; null is a free place. Returns false if pOld is not in the table.
bool ReplaceClosedServer(const CTOVDebugServer* pOld, const CTOVDebugServer* pNew)
{
    return std::any_of(std::begin(s_apClosedServers), std::end(s_apClosedServers), [=](auto& pPlace) {
        const CTOVDebugServer* pExpected = pOld;
        return pPlace.compare_exchange_strong(pExpected, pNew);
    });
}

void NoteClosedown(const CTOVDebugServer* pServer)
{
    if (!HasClosedDown(pServer) && ReplaceClosedServer(nullptr, pServer))
        ++s_nClosedServers;
}

void ForgetClosedown(const CTOVDebugServer* pServer)
{
    if (HasClosedDown(pServer) && ReplaceClosedServer(pServer, nullptr))
        --s_nClosedServers;
}

// Ends the process if there is no lock.
void RequireLock(tHandle hLock)
{
    if (hLock == 0)
        std::exit(-1); // NOLINT(concurrency-mt-unsafe): without the lock there is no order to keep.
}

bool IsOtherListener(const ITOVLogListener* pListener)
{
    return pListener != nullptr && pListener != &CTOVMSDevLogger::_m_this;
}

// Calls a function at the end of its scope, unless it is dropped before.
template<class TFunction> class CScopeEnd
{
public:
    explicit CScopeEnd(TFunction fnRun) : m_fnRun(fnRun), m_bDropped(false) {}

    ~CScopeEnd()
    {
        if (!m_bDropped)
            m_fnRun();
    }

    CScopeEnd(const CScopeEnd&) = delete;
    CScopeEnd& operator=(const CScopeEnd&) = delete;

    void Drop() { m_bDropped = true; }

private:
    const TFunction m_fnRun;
    bool m_bDropped;
};
} // namespace

std::atomic<eAudience> s_eAudience(eAudienceListeners);

CTOVDebugServer* CTOVDebugServer::s_pInstance = nullptr;

CTOVDebugServer& CTOVDebugServer::Instance()
{
    if (s_pInstance == nullptr)
    {
        s_pInstance = new CTOVDebugServer;
        NoteAudience(*s_pInstance);
    }
    return *s_pInstance;
}

CTOVDebugServer::CTOVDebugServer() : m_hLoggerLock(0), m_szApplicationName("<unknown>")
{
    CreateLock();
}

CTOVDebugServer::CTOVDebugServer(const CTOVDebugServer& oOther) : ITOVLogListener(), m_hLoggerLock(0)
{
    CTOVDebugServer::operator=(oOther);
}

CTOVDebugServer& CTOVDebugServer::operator=(const CTOVDebugServer& oOther)
{
    m_oLoggers = oOther.m_oLoggers;
    m_hLoggerLock = oOther.m_hLoggerLock;
    std::copy(std::begin(oOther.m_szApplicationName), std::end(oOther.m_szApplicationName), m_szApplicationName);
    if (HasClosedDown(&oOther))
        NoteClosedown(this);
    else
        ForgetClosedown(this);
    NoteAudience(*this);
    return *this;
}

CTOVDebugServer::~CTOVDebugServer() noexcept(false)
{
    const CScopeEnd oForget([this] { ForgetClosedown(this); });
    CTOVDebugServer::OnClosedown();
}

void CTOVDebugServer::Register(ITOVLogListener* pListener)
{
    if (pListener == nullptr)
        return;

    LockLoggers();
    CScopeEnd oUnlock([this] { UnlockLoggers(); });
    if (std::find(m_oLoggers.begin(), m_oLoggers.end(), pListener) != m_oLoggers.end())
    {
        // Settled: a listener found in the table leaves the lock entered once more, and events wait for the lock.
        if (this == s_pInstance)
            s_eAudience = eAudienceListeners;
        oUnlock.Drop();
        return;
    }
    m_oLoggers.push_back(pListener);
    NoteAudience(*this);

    // Settled: a listener that throws leaves the lock taken.
    oUnlock.Drop();
    const tHandle hEntered = m_hLoggerLock;
    StartupLogger(pListener);
    // A server that is its own listener has just replaced its lock; nobody has entered the new one.
    if (m_hLoggerLock == hEntered)
        UnlockLoggers();
    else
        CriticalSection::Leave(hEntered);
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
    NoteAudience(*this);
    UnlockLoggers();
}

template<class TCall> void CTOVDebugServer::Dispatch(TCall fnCall)
{
    LockLoggers();
    // The loop uses an index and reads the size at each step, since a listener may change the table during its call.
    for (std::size_t i = 0; i < m_oLoggers.size(); ++i)
    {
        // A server that is in its own table would call itself without end.
        ITOVLogListener* const pListener = m_oLoggers[i];
        if (pListener != nullptr && pListener != this)
            fnCall(pListener);
    }
    UnlockLoggers();
}

void CTOVDebugServer::OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity,
                             const char* szFormat, va_list pArguments)
{
    Dispatch([&](ITOVLogListener* pListener) {
        // Where an argument list is more than a pointer, reading it uses it up, so that each listener gets a copy.
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
    if (HasClosedDown(this))
        return;
    NoteClosedown(this);
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
        NoteClosedown(pServer);
        delete pOld;
    }
    s_pInstance = pServer;
    NoteAudience(*pServer);
}

void CTOVDebugServer::LockLoggers()
{
    RequireLock(m_hLoggerLock);
    if (!HasClosedDown(this))
        CriticalSection::Enter(m_hLoggerLock);
}

void CTOVDebugServer::UnlockLoggers()
{
    RequireLock(m_hLoggerLock);
    if (!HasClosedDown(this))
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

bool HasOtherListeners(CTOVDebugServer& oServer)
{
    oServer.LockLoggers();
    const bool bOthers = std::any_of(oServer.m_oLoggers.begin(), oServer.m_oLoggers.end(), IsOtherListener);
    oServer.UnlockLoggers();
    return bOthers;
}

bool IsHeard()
{
    const eAudience eNow = s_eAudience;
    return eNow == eAudienceListeners || (eNow == eAudienceDebugger && TOVPlatform::Backend::HasDebugOutput());
}

void NoteAudience(const CTOVDebugServer& oServer)
{
    if (&oServer != CTOVDebugServer::s_pInstance)
        return;

    const auto& aListeners = oServer.m_oLoggers;
    // A derived server may do more with an event than pass it on.
    if (typeid(oServer) != typeid(CTOVDebugServer) ||
        std::any_of(aListeners.begin(), aListeners.end(), IsOtherListener))
        s_eAudience = eAudienceListeners;
    else
        s_eAudience = aListeners.empty() ? eAudienceNobody : eAudienceDebugger;
}

void CTOVDebugServer::CreateLock()
{
    ForgetClosedown(this);
    m_hLoggerLock = CriticalSection::Create(2000);
    RequireLock(m_hLoggerLock);
}
} // namespace TOVDebug
