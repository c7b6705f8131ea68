// TOVDebug::_Log, the entrance for log lines.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <Debug/TOVMSDevLogger.h>

#include <cstdio>

namespace
{
// Listens to the library's own server while it lives.
class TOVLogTest : public testing::Test
{
protected:
    TOVLogTest() : m_oListener("A", m_aRecord)
    {
        TOVDebug::CTOVDebugServer::Instance().Register(&m_oListener);
        m_aRecord.clear();
    }

    ~TOVLogTest() override { TOVDebug::CTOVDebugServer::Instance().Unregister(&m_oListener); }

    tRecord m_aRecord;
    CRecordingListener m_oListener;
};

// Counts lines and keeps nothing.
class CCountingListener : public CRecordingListener
{
public:
    using CRecordingListener::CRecordingListener;

    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override { ++nLines; }

    int nLines = 0;
};
} // namespace

TEST(TOVDebugSeverityTest, HasStepsOfAHundred)
{
    EXPECT_EQ(100, static_cast<int>(eSeverityTrace));
    EXPECT_EQ(200, static_cast<int>(eSeverityInfo));
    EXPECT_EQ(400, static_cast<int>(eSeverityWarning));
    EXPECT_EQ(500, static_cast<int>(eSeverityError));
    EXPECT_EQ(600, static_cast<int>(eSeverityFatal));
    EXPECT_EQ(4u, sizeof(eTOVDebugSeverity));
}

TEST_F(TOVLogTest, GivesTheListenersFileLineSeverityAndText)
{
    EXPECT_TRUE(TOVDebug::_Log("Folder/File.cpp", 148, 0x1, eSeverityInfo, "%s: %d", "text", 7));

    EXPECT_EQ(tRecord{"A log Folder/File.cpp(148) 200: text: 7"}, m_aRecord);
}

TEST_F(TOVLogTest, ReachesEveryListenerAtEverySeverity)
{
    tRecord aExpected;
    for (const int nSeverity : {100, 200, 300, 400, 500, 600, 0, 1})
    {
        EXPECT_TRUE(TOVDebug::_Log("File", 1, 0x1, static_cast<eTOVDebugSeverity>(nSeverity), "text"));
        aExpected.push_back("A log File(1) " + std::to_string(nSeverity) + ": text");
    }
    EXPECT_EQ(aExpected, m_aRecord);
}

TEST_F(TOVLogTest, DropsItsFlags)
{
    for (const unsigned long ulFlags : {0ul, 0x1ul, 0x11ul, 0x8011ul, 0xFFFFFFFFul})
        EXPECT_TRUE(TOVDebug::_Log("File", 1, ulFlags, eSeverityInfo, "text"));

    EXPECT_EQ(tRecord(5, "A log File(1) 200: text"), m_aRecord);
}

TEST_F(TOVLogTest, KeepsPercentSignsOfAPlainMessage)
{
    TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "%s", "100%s %d %n");

    EXPECT_EQ(tRecord{"A log File(1) 200: 100%s %d %n"}, m_aRecord);
}

namespace
{
enum eColour : unsigned char
{
    eColourRed = 7
};
struct sBits
{
    unsigned int nThree : 3;
    long long llFive : 5;
};
} // namespace

// What is refused among the arguments is told when a program is compiled; all else is handed on as C hands it on.
TEST_F(TOVLogTest, TakesScalarsOfAllKinds)
{
    const sBits oBits = {5, -3};
    char szArray[] = "array";
    const char* szText = "text";

    TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "%s %s %s %d %d %d %d %lld %c %.1f %d", "literal", szArray, szText,
                   eColourRed, oBits.nThree, oBits.llFive, true, 1LL << 40, 'c', 1.5F, 9);

    EXPECT_EQ(tRecord{"A log File(1) 200: literal array text 7 5 -3 1 1099511627776 c 1.5 9"}, m_aRecord);
}

TEST_F(TOVLogTest, TakesALineNumberOf32Bits)
{
    TOVDebug::_Log("File", 4294967295ul, 0x1, eSeverityInfo, "text");

    EXPECT_EQ(tRecord{"A log File(4294967295) 200: text"}, m_aRecord);
}

TEST_F(TOVLogTest, AllocatesNothingItself)
{
    CCountingListener oCounting("C", m_aRecord);
    TOVDebug::CTOVDebugServer oServer;
    oServer.Register(&oCounting);
    CAllocationCounter oCounter;

    for (int nLine = 0; nLine < 100; ++nLine)
        oServer.OnLog("File", 1, eSeverityInfo, "%s %d", "text", nLine);
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0ul, ulTaken);
    EXPECT_EQ(100, oCounting.nLines);
}

TOV_CHILD(LogsWithoutListeners)
{
    TOVDebug::CTOVMSDevLogger* pLogger = const_cast<TOVDebug::CTOVMSDevLogger*>(&TOVDebug::CTOVMSDevLogger::_m_this);
    TOVDebug::CTOVDebugServer& oServer = TOVDebug::CTOVDebugServer::Instance();
    oServer.Unregister(pLogger);
    std::printf("%zu listeners, %d", TableOf(oServer).size(),
                static_cast<int>(TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "text")));
}

TEST(TOVLogWithoutListenersTest, IsTrue)
{
    const sChildResult oResult = RunChild("LogsWithoutListeners");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("0 listeners, 1", oResult.sOutput);
}
