// Lines that nobody would notice are not passed on, and no listener may miss a line for that.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVBlockableThread.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using TOVDebug::CTOVDebugServer;

namespace
{
constexpr int ROUNDS = 500;

void LogLine(const char* szText = "text")
{
    TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "%s", szText);
}

// Counts the lines of one file.
class CCountingListener : public CRecordingListener
{
public:
    CCountingListener(const char* szFile, tRecord& aRecord) : CRecordingListener("A", aRecord), m_sFile(szFile) {}

    void OnLogV(const char* szFile, unsigned long, eTOVDebugSeverity, const char*, va_list) override
    {
        m_nLines += szFile == m_sFile ? 1 : 0;
    }

    int Lines() const { return m_nLines; }

private:
    const std::string m_sFile;
    int m_nLines = 0;
};
} // namespace

TEST(TOVAudienceTest, AListenerGetsExactlyTheLinesBetweenItsRegistrationAndItsEnd)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    for (int nRound = 0; nRound < 3; ++nRound)
    {
        LogLine("before");
        CTOVDebugServer::Instance().Register(&oListener);
        LogLine();
        CTOVDebugServer::Instance().Unregister(&oListener);
        LogLine("after");
    }

    const tRecord aRound = {"A startup", "A log File(1) 200: text", "A closedown"};
    tRecord aExpected;
    for (int nRound = 0; nRound < 3; ++nRound)
        aExpected.insert(aExpected.end(), aRound.begin(), aRound.end());
    EXPECT_EQ(aExpected, aRecord);
}

TEST(TOVAudienceTest, AListenerStaysWhenAnotherOneGoes)
{
    tRecord aRecord;
    CRecordingListener oStaying("A", aRecord);
    CRecordingListener oGoing("B", aRecord);
    CTOVDebugServer& oServer = CTOVDebugServer::Instance();
    oServer.Register(&oStaying);
    oServer.Register(&oGoing);
    oServer.Unregister(&oGoing);
    aRecord.clear();

    LogLine();

    EXPECT_EQ((tRecord{"A log File(1) 200: text"}), aRecord);
    oServer.Unregister(&oStaying);
}

TEST(TOVAudienceTest, AnotherServersListenersChangeNothing)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    CTOVDebugServer::Instance().Register(&oListener);
    {
        COpenServer oOther;
        const COpenServer oCopy;
        oOther = oCopy;
        oOther.OnStartup();
        aRecord.clear();
        LogLine();
    }
    EXPECT_EQ((tRecord{"A log File(1) 200: text"}), aRecord);
    CTOVDebugServer::Instance().Unregister(&oListener);
}

TEST(TOVAudienceTest, ALineAfterARegistrationIsHeardWhileOtherThreadsLog)
{
    std::atomic<bool> bEnd(false);
    std::vector<std::thread> aThreads;
    for (int nThread = 0; nThread < 3; ++nThread)
        aThreads.emplace_back([&bEnd] {
            while (!bEnd)
                LogLine();
        });

    tRecord aRecord;
    CCountingListener oListener("Mine", aRecord);
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        CTOVDebugServer::Instance().Register(&oListener);
        TOVDebug::_Log("Mine", 1, 0x1, eSeverityInfo, "text");
        CTOVDebugServer::Instance().Unregister(&oListener);
    }
    bEnd = true;
    for (std::thread& oThread : aThreads)
        oThread.join();

    EXPECT_EQ(ROUNDS, oListener.Lines());
}

// A server that was derived may do more with a line than pass it on.
namespace
{
class CTellingServer : public COpenServer
{
public:
    void OnLogV(const char* szFile, unsigned long, eTOVDebugSeverity, const char*, va_list) override
    {
        std::printf("%s", szFile);
    }
};
} // namespace

TOV_CHILD(LogsToADerivedServer)
{
    COpenServer::SetDebugServer(new CTellingServer);
    CTOVDebugServer::Instance().OnStartup();
    TOVDebug::_Log("heard", 1, 0x1, eSeverityInfo, "text");
}

TEST(TOVAudienceTest, ADerivedServerGetsEveryLineWithoutListeners)
{
    EXPECT_EQ("heard", RunChild("LogsToADerivedServer").sOutput.substr(0, 5));
}
