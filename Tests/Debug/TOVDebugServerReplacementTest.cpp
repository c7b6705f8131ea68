// The library's own server: its replacement by another, and a listener that is registered twice with it. Each in a
// process of its own, since what is done to it stays.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVBlockableThread.h"

#include <algorithm>
#include <cstdio>

using TOVDebug::CTOVDebugServer;
namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

namespace
{
// A server that tells its end.
class CTellingServer : public COpenServer
{
public:
    explicit CTellingServer(tRecord& aRecord) : m_aRecord(aRecord) {}

    ~CTellingServer() noexcept(false) override { m_aRecord.push_back("server deleted"); }

private:
    tRecord& m_aRecord;
};

void Tell(const std::string& sWhat, bool bTrue)
{
    std::printf("%s: %s\n", sWhat.c_str(), bTrue ? "yes" : "no");
}

void Tell(const tRecord& aRecord)
{
    for (const std::string& sEntry : aRecord)
        std::printf("%s\n", sEntry.c_str());
}

std::string WithoutReturns(std::string sText)
{
    sText.erase(std::remove(sText.begin(), sText.end(), '\r'), sText.end());
    return sText;
}
} // namespace

TOV_CHILD(ReplacesTheServer)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    CRecordingListener& oA = MakeImmortal<CRecordingListener>("A", aRecord);
    CRecordingListener& oOwn = MakeImmortal<CRecordingListener>("own", aRecord);
    CTOVDebugServer& oOld = CTOVDebugServer::Instance();
    oOld.Register(&oA);
    oOld.SetApplicationName("Application");
    const unsigned long long hLock = LockOf(oOld);
    const std::vector<TOVDebug::ITOVLogListener*> aTable = TableOf(oOld);
    COpenServer* pNew = new COpenServer;
    pNew->Register(&oOwn);
    const unsigned long long hOwnLock = LockOf(*pNew);
    aRecord.clear();

    COpenServer::SetDebugServer(pNew);
    Tell(aRecord);
    Tell("new instance", &CTOVDebugServer::Instance() == pNew);
    Tell("same table", TableOf(*pNew) == aTable);
    Tell("same lock", LockOf(*pNew) == hLock);
    Tell("same name", NameOf(*pNew) == Padded("Application"));

    CriticalSection::Destroy(hOwnLock);
    pNew->OnStartup();
    aRecord.clear();
    Tell("logged", TOVDebug::_Log("File", 3, 0x1, eSeverityInfo, "%s", "text"));
    Tell(aRecord);
}

TEST(CTOVDebugServerReplacementTest, AnotherServerTakesOverTableLockAndName)
{
    const sChildResult oResult = RunChild("ReplacesTheServer");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("A closedown\nnew instance: yes\nsame table: yes\nsame lock: yes\nsame name: yes\nlogged: yes\n"
              "A log File(3) 200: text\n",
              WithoutReturns(oResult.sOutput));
}

TOV_CHILD(ReplacesTheServerTwice)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    CRecordingListener& oA = MakeImmortal<CRecordingListener>("A", aRecord);
    COpenServer* pFirst = new CTellingServer(aRecord);
    const unsigned long long hFirstOwn = LockOf(*pFirst);
    COpenServer::SetDebugServer(pFirst);
    CriticalSection::Destroy(hFirstOwn);
    pFirst->OnStartup();
    CTOVDebugServer::Instance().Register(&oA);

    COpenServer* pSecond = new COpenServer;
    const unsigned long long hSecondOwn = LockOf(*pSecond);
    COpenServer::SetDebugServer(pSecond);
    Tell(aRecord);
    CriticalSection::Destroy(hSecondOwn);
    pSecond->OnStartup();
}

TEST(CTOVDebugServerReplacementTest, TheOldServerIsDeletedThroughItsVirtualDestructor)
{
    const sChildResult oResult = RunChild("ReplacesTheServerTwice");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("A startup\nserver deleted\nA closedown\n", WithoutReturns(oResult.sOutput));
}

TEST(CTOVDebugServerReplacementTest, ANullServerReplacesNothing)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    CTOVDebugServer& oServer = CTOVDebugServer::Instance();
    oServer.Register(&oListener);

    COpenServer::SetDebugServer(nullptr);

    EXPECT_EQ(&oServer, &CTOVDebugServer::Instance());
    EXPECT_EQ(tRecord{"A startup"}, aRecord);
    oServer.Unregister(&oListener);
}

TOV_CHILD(ReplacesTheServerByItself)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    CRecordingListener& oListener = MakeImmortal<CRecordingListener>("A", aRecord);
    CTOVDebugServer& oServer = CTOVDebugServer::Instance();
    oServer.Register(&oListener);
    oServer.SetApplicationName("Application");

    COpenServer::SetDebugServer(&oServer);

    Tell("same instance", &CTOVDebugServer::Instance() == &oServer);
    Tell("same name", NameOf(CTOVDebugServer::Instance()) == Padded("Application"));
    Tell("logged", TOVDebug::_Log("File", 3, 0x1, eSeverityInfo, "text"));
    Tell(aRecord);
}

TEST(CTOVDebugServerReplacementTest, TheServerItselfReplacesNothing)
{
    const sChildResult oResult = RunChild("ReplacesTheServerByItself");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("same instance: yes\nsame name: yes\nlogged: yes\nA startup\nA log File(3) 200: text\n",
              WithoutReturns(oResult.sOutput));
}

// Registers a listener twice with the library's own server.
TOV_CHILD(RegistersTwice)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    CRecordingListener& oListener = MakeImmortal<CRecordingListener>("A", aRecord);
    CTOVDebugServer& oServer = CTOVDebugServer::Instance();
    oServer.Register(&oListener);
    oServer.Register(&oListener);
    Tell(aRecord);

    Tell("this thread logs", TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "text"));
    {
        CBlockableThread oOther([] { TOVDebug::_Log("File", 2, 0x1, eSeverityInfo, "text"); });
        Tell("others wait", oOther.IsBlocked());
        LeaveLockOf(oServer);
        Tell("others go on", oOther.Finishes());
    }
    oServer.Unregister(&oListener);
}

TEST(CTOVDebugServerReplacementTest, ASecondRegistrationMakesAllOtherThreadsWait)
{
    const sChildResult oResult = RunChild("RegistersTwice");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("A startup\nthis thread logs: yes\nothers wait: yes\nothers go on: yes\n",
              WithoutReturns(oResult.sOutput));
}
