#include "Faults/TOVFaultWitness.h"

#include "Faults/TOVFaultScenario.h"

#include <Debug/TOVDebug.h>
#include <Debug/TOVDebugServer.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVSynchronization.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace File = TOVPlatform::TOVFile;
namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
constexpr std::chrono::seconds WITNESS_DEADLINE(10);

class CLineCounter : public TOVDebug::ITOVLogListener
{
public:
    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override { ++m_nLines; }
    void OnAssert(const char*, unsigned long, const char*) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

    int m_nLines = 0;
};

bool LogsALine()
{
    CLineCounter oCounter;
    TOVDebug::CTOVDebugServer::Instance().Register(&oCounter);
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%s", "witness");
    TOVDebug::CTOVDebugServer::Instance().Unregister(&oCounter);
    return oCounter.m_nLines == 1;
}

bool UsesAFile(const char* szName)
{
    const tHandle hFile = File::Open(szName, "wb");
    const bool bWritten = hFile != FILE_INVALID_HANDLE && File::Write(hFile, "text", 1, 4) == 4;
    const bool bClosed = hFile != FILE_INVALID_HANDLE && File::Close(hFile) == File::eFileSuccess;
    File::sTOVFindData oRecord;
    const tHandle hFind = File::FindFirst(szName, &oRecord);
    File::FindClose(hFind);
    return bWritten && bClosed && hFind != FILE_INVALID_HANDLE && File::Delete(szName) == File::eFileSuccess;
}

bool UsesANamedEvent()
{
    const tHandle hEvent = Event::Create(false, true, FaultName("witness"));
    const bool bSignalled = hEvent != 0 && Event::TimedWait(hEvent, 0);
    return Event::Destroy(hEvent) && bSignalled;
}
} // namespace

CFaultWitness::CFaultWitness() : m_sFile(m_oFolder.File("witness")), m_oThread([this] { Serve(); })
{
}

CFaultWitness::~CFaultWitness()
{
    {
        const std::lock_guard<std::mutex> oGuard(m_oMutex);
        m_bEnding = true;
        m_oChanged.notify_all();
    }
    m_oThread.join();
}

bool CFaultWitness::CanWork()
{
    std::unique_lock<std::mutex> oLock(m_oMutex);
    m_bAsked = true;
    m_oChanged.notify_all();
    if (m_oChanged.wait_for(oLock, WITNESS_DEADLINE, [this] { return !m_bAsked; }))
        return m_bResult;
    std::fprintf(stderr, "a lock is still taken: another thread can work no more\n");
    std::_Exit(1); // nothing more can be told of this process
}

void CFaultWitness::Serve()
{
    std::unique_lock<std::mutex> oLock(m_oMutex);
    for (;;)
    {
        m_oChanged.wait(oLock, [this] { return m_bAsked || m_bEnding; });
        if (m_bEnding)
            return;
        oLock.unlock();
        const bool bResult = Work();
        oLock.lock();
        m_bResult = bResult;
        m_bAsked = false;
        m_oChanged.notify_all();
    }
}

bool CFaultWitness::Work() const
{
    const bool bLogs = LogsALine();
    const bool bUsesFiles = UsesAFile(m_sFile.c_str());
    const bool bUsesNames = UsesANamedEvent();
    if (!bLogs || !bUsesFiles || !bUsesNames)
        std::fprintf(stderr, "another thread: logs %d, uses files %d, uses names %d\n", bLogs, bUsesFiles, bUsesNames);
    return bLogs && bUsesFiles && bUsesNames;
}
