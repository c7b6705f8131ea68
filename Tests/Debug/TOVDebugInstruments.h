// Instruments for the tests of the debug server: a listener that writes what it hears into a record, and a server whose
// protected side is open.
#pragma once

#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <Debug/TOVDebugServer.h>
#include <TOVPlatform/TOVSynchronization.h>

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

typedef std::vector<std::string> tRecord;

inline std::string FormatPlainly(const char* szFormat, va_list pArguments)
{
    char szText[512];
    std::vsnprintf(szText, sizeof(szText), szFormat, pArguments);
    return szText;
}

// Writes each call as one entry: "A log File(12) 200: text". What a call is to do besides can be set.
class CRecordingListener : public TOVDebug::ITOVLogListener
{
public:
    CRecordingListener(const std::string& sName, tRecord& aRecord) : m_sName(sName), m_aRecord(aRecord) {}
    virtual ~CRecordingListener() = default;

    void OnStartup() override
    {
        m_aRecord.push_back(m_sName + " startup");
        if (fnOnStartup)
            fnOnStartup();
    }

    void OnClosedown() override
    {
        m_aRecord.push_back(m_sName + " closedown");
        if (fnOnClosedown)
            fnOnClosedown();
    }

    void OnLogV(const char* szFile, unsigned long ulLine, eTOVDebugSeverity eSeverity, const char* szFormat,
                va_list pArguments) override
    {
        m_aRecord.push_back(m_sName + " log " + szFile + '(' + std::to_string(ulLine) + ") " +
                            std::to_string(static_cast<int>(eSeverity)) + ": " + FormatPlainly(szFormat, pArguments));
        if (fnOnLog)
            fnOnLog();
    }

    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override
    {
        m_aRecord.push_back(m_sName + " assert " + szFile + '(' + std::to_string(ulLine) + "): " + szExpression);
        if (fnOnAssert)
            fnOnAssert();
    }

    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override
    {
        m_aRecord.push_back(m_sName + " panic " + szFile + '(' + std::to_string(ulLine) +
                            "): " + FormatPlainly(szFormat, pArguments));
        if (fnOnPanic)
            fnOnPanic();
    }

    void SetApplicationName(const char* szName) override { m_aRecord.push_back(m_sName + " name " + szName); }

    std::function<void()> fnOnStartup;
    std::function<void()> fnOnClosedown;
    std::function<void()> fnOnLog;
    std::function<void()> fnOnAssert;
    std::function<void()> fnOnPanic;

private:
    const std::string m_sName;
    tRecord& m_aRecord;
};

// Makes an object that is never destroyed, for children that end with a listener in the table: the library's own
// clean-up still logs after theirs.
template<class T, class... TArguments> T& MakeImmortal(TArguments&&... oArguments)
{
    return *new T(std::forward<TArguments>(oArguments)...);
}

// The members of a server, in their order.
typedef char tApplicationName[256];
TOV_PRIVATE_MEMBER(TableOf, TOVDebug::CTOVDebugServer, std::vector<TOVDebug::ITOVLogListener*>, m_oLoggers)
TOV_PRIVATE_MEMBER(LockOf, TOVDebug::CTOVDebugServer, unsigned long long, m_hLoggerLock)
TOV_PRIVATE_MEMBER(NameMemberOf, TOVDebug::CTOVDebugServer, tApplicationName, m_szApplicationName)

// All 256 characters.
inline std::string NameOf(TOVDebug::CTOVDebugServer& oServer)
{
    return std::string(NameMemberOf(oServer), sizeof(tApplicationName));
}

// The same for a name that is shorter.
inline std::string Padded(const std::string& sName)
{
    return sName + std::string(sizeof(tApplicationName) - sName.size(), '\0');
}

class COpenServer : public TOVDebug::CTOVDebugServer
{
public:
    using CTOVDebugServer::ClosedownLogger;
    using CTOVDebugServer::LockLoggers;
    using CTOVDebugServer::SetDebugServer;
    using CTOVDebugServer::StartupLogger;
    using CTOVDebugServer::UnlockLoggers;
};

// Leaves the lock of any server once.
inline void LeaveLockOf(TOVDebug::CTOVDebugServer& oServer)
{
    TOVPlatform::TOVSynchronization::CriticalSection::Leave(LockOf(oServer));
}
