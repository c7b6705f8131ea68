#include "Debug/TOVDebugInstruments.h"
#include "Debug/TOVDebuggerLines.h"
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVRefusal.h"

#include <Debug/TOVMSDevLogger.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <type_traits>

using TOVDebug::CTOVDebugServer;
using TOVDebug::CTOVMSDevLogger;

namespace
{
// The private functions, as TOV_PRIVATE_MEMBER reaches data.
struct sPrintf
{
    typedef int (CTOVMSDevLogger::*tPointer)(const char*, ...);
    friend tPointer ReachMember(sPrintf);
};
struct sVPrintf
{
    typedef int (CTOVMSDevLogger::*tPointer)(const char*, va_list);
    friend tPointer ReachMember(sVPrintf);
};
template<class TReach, typename TReach::tPointer pFunction> struct sOpener
{
    friend typename TReach::tPointer ReachMember(TReach) { return pFunction; }
};
template struct sOpener<sPrintf, &CTOVMSDevLogger::Printf>;
template struct sOpener<sVPrintf, &CTOVMSDevLogger::VPrintf>;

int CallVPrintf(CTOVMSDevLogger& oLogger, const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nCount = (oLogger.*ReachMember(sVPrintf()))(szFormat, pArguments);
    va_end(pArguments);
    return nCount;
}

TOV_PRIVATE_MEMBER(ApplicationNameOf, CTOVMSDevLogger, CTOVStringA, m_oApplicationName)

std::string NameKeptBy(CTOVMSDevLogger& oLogger)
{
    const char* szName = ApplicationNameOf(oLogger).GetString();
    return szName != nullptr ? szName : "";
}

void LogPlainly(const std::string& sFile, const std::string& sText)
{
    TOVDebug::_Log(sFile.c_str(), 148, 0x1, eSeverityInfo, "%s", sText.c_str());
}

void FailCheck(const std::string& sExpression)
{
    try
    {
        TOVDebug::Assert(sExpression.c_str(), "Folder/File.cpp", 12);
    }
    catch (const CTOVException&)
    {
    }
}
} // namespace

TOV_CHILD(LogsOneLine)
{
    MarkBegin();
    TOVDebug::_Log("Folder/File.cpp", 148, 0x1, eSeverityInfo, "%s of %d and %.1f", "text", 7, 8.5);
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, SendsPositionMessageAndLineEndAsThreePieces)
{
    EXPECT_EQ((tTexts{"Folder/File.cpp(148) : ", "text of 7 and 8.5", "\n"}), TextsBetweenMarks("LogsOneLine"));
}

TEST(CTOVMSDevLoggerTest, SaysNothingWithoutADebugger)
{
    const sObservedChild oChild = RunObserved("LogsOneLine", sObservation());

    EXPECT_EQ(0, oChild.nExitCode);
    EXPECT_EQ("", oChild.sOutput);
    EXPECT_TRUE(oChild.aDebuggerTexts.empty()) << Joined(oChild.aDebuggerTexts);
}

TOV_CHILD(LogsAtEverySeverity)
{
    MarkBegin();
    for (const int nSeverity : {100, 200, 300, 400, 500, 600})
        TOVDebug::_Log("File", 1, 0x1, static_cast<eTOVDebugSeverity>(nSeverity), "text");
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, LinesLookTheSameAtAllSeverities)
{
    std::string sExpected;
    for (int nLine = 0; nLine < 6; ++nLine)
        sExpected += "File(1) : text\n";

    EXPECT_EQ(sExpected, Joined(TextsBetweenMarks("LogsAtEverySeverity")));
}

TOV_CHILD(LogsPercentSigns)
{
    MarkBegin();
    LogPlainly("100%s/File%d", "100%s %d%% %n");
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, KeepsPercentSignsInMessagesAndFileNames)
{
    EXPECT_EQ((tTexts{"100%s/File%d(148) : ", "100%s %d%% %n", "\n"}), TextsBetweenMarks("LogsPercentSigns"));
}

TOV_CHILD(LogsAnEmptyMessage)
{
    MarkBegin();
    LogPlainly("File", "");
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, AnEmptyMessageLeavesPositionAndLineEnd)
{
    EXPECT_EQ("File(148) : \n", Joined(TextsBetweenMarks("LogsAnEmptyMessage")));
}

TOV_CHILD(LogsTheLastLine)
{
    MarkBegin();
    TOVDebug::_Log("File", 2147483647ul, 0x1, eSeverityInfo, "text");
    TOVDebug::_Log("File", 4294967295ul, 0x1, eSeverityInfo, "text");
    MarkEnd();
}

// Settled: the line goes through "%d".
TEST(CTOVMSDevLoggerTest, WritesTheLineAsASignedNumberOf32Bits)
{
    EXPECT_EQ("File(2147483647) : text\nFile(-1) : text\n", Joined(TextsBetweenMarks("LogsTheLastLine")));
}

TOV_CHILD(LogsTextsOfLength)
{
    const std::string sLong(std::stoul(aArguments[0]), 'x');
    MarkBegin();
    LogPlainly("File", sLong);
    LogPlainly(sLong, "text");
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, LongLinesComeOutWhole)
{
    for (const std::size_t nLength : {1u, 1022u, 1023u, 1024u, 1025u, 2048u, 20000u})
    {
        const std::string sLong(nLength, 'x');
        EXPECT_EQ((tTexts{"File(148) : ", sLong, "\n", sLong + "(148) : ", "text", "\n"}),
                  TextsBetweenMarks("LogsTextsOfLength", {std::to_string(nLength)}))
            << nLength;
    }
}

TOV_CHILD(FailsChecks)
{
    MarkBegin();
    FailCheck("nCount % 2 == 0");
    FailCheck(std::string(1500, 'e'));
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, SendsAFailedCheckAsOneBlock)
{
    const std::string sBegin = "******* ASSERTION *******\nFolder/File.cpp(12) : Expression: TOV_ASSERT( ";

    EXPECT_EQ((tTexts{sBegin + "nCount % 2 == 0 )\n", sBegin + std::string(1500, 'e') + " )\n"}),
              TextsBetweenMarks("FailsChecks"));
}

TEST(CTOVMSDevLoggerTest, TheInstanceOfTheLibraryIsConstAndTheFirstListener)
{
    EXPECT_TRUE((std::is_same_v<const CTOVMSDevLogger, decltype(CTOVMSDevLogger::_m_this)>));
    EXPECT_TRUE((std::is_base_of_v<TOVDebug::ITOVLogListener, CTOVMSDevLogger>));
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVMSDevLogger>);
    ASSERT_FALSE(TableOf(CTOVDebugServer::Instance()).empty());
    EXPECT_EQ(&CTOVMSDevLogger::_m_this, TableOf(CTOVDebugServer::Instance())[0]);
}

TEST(CTOVMSDevLoggerTest, RegistersItselfWhileItLives)
{
    CTOVDebugServer& oServer = CTOVDebugServer::Instance();
    const std::vector<TOVDebug::ITOVLogListener*> aBefore = TableOf(oServer);
    {
        CTOVMSDevLogger oLogger;
        ASSERT_EQ(aBefore.size() + 1, TableOf(oServer).size());
        EXPECT_EQ(&oLogger, TableOf(oServer).back());
    }
    EXPECT_EQ(aBefore, TableOf(oServer));
}

TEST(CTOVMSDevLoggerTest, ACopyDoesNotRegisterItself)
{
    CTOVDebugServer& oServer = CTOVDebugServer::Instance();
    const std::vector<TOVDebug::ITOVLogListener*> aBefore = TableOf(oServer);
    {
        CTOVMSDevLogger oCopy(CTOVMSDevLogger::_m_this);
        EXPECT_EQ(aBefore, TableOf(oServer));
    }
    EXPECT_EQ(aBefore, TableOf(oServer));
}

TOV_CHILD(LogsWithMoreLoggers)
{
    MarkBegin();
    {
        CTOVMSDevLogger oCopy(CTOVMSDevLogger::_m_this);
        LogPlainly("copy", "once");
        CTOVMSDevLogger oSecond;
        LogPlainly("second", "twice");
    }
    LogPlainly("gone", "once");
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, EveryRegisteredLoggerWritesALineOfItsOwn)
{
    EXPECT_EQ("copy(148) : once\nsecond(148) : twice\nsecond(148) : twice\ngone(148) : once\n",
              Joined(TextsBetweenMarks("LogsWithMoreLoggers")));
}

// Unregistering takes the server's lock, also for a logger that is not in the table.
TEST(CTOVMSDevLoggerTest, ACopyUnregistersItselfAllTheSame)
{
    const unsigned long long hLock = LockOf(CTOVDebugServer::Instance());
    std::unique_ptr<CTOVMSDevLogger> pCopy;
    TOVPlatform::TOVSynchronization::CriticalSection::Enter(hLock);
    CBlockableThread oCopying([&] { pCopy = std::make_unique<CTOVMSDevLogger>(CTOVMSDevLogger::_m_this); });
    EXPECT_TRUE(oCopying.Finishes());

    CBlockableThread oDeleting([&] { pCopy.reset(); });
    EXPECT_TRUE(oDeleting.IsBlocked());

    TOVPlatform::TOVSynchronization::CriticalSection::Leave(hLock);
    EXPECT_TRUE(oDeleting.Finishes());
}

TEST(CTOVMSDevLoggerTest, KeepsCopiesAndAssignsItsName)
{
    CTOVMSDevLogger oLogger;
    EXPECT_EQ("", NameKeptBy(oLogger));
    oLogger.SetApplicationName("Application");
    EXPECT_EQ("Application", NameKeptBy(oLogger));

    CTOVMSDevLogger oCopy(oLogger);
    EXPECT_EQ("Application", NameKeptBy(oCopy));

    CTOVMSDevLogger oTarget;
    EXPECT_EQ(&oTarget, &(oTarget = oLogger));
    EXPECT_EQ("Application", NameKeptBy(oTarget));
}

TOV_CHILD(CallsEmptyOperations)
{
    CTOVMSDevLogger oLogger;
    MarkBegin();
    oLogger.OnStartup();
    oLogger.OnClosedown();
    oLogger.SetApplicationName("Application");
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, StartupClosedownAndNameSayNothing)
{
    // The second logger repeats each piece of the marks.
    EXPECT_EQ("begin(1) : mark\n", Joined(TextsBetweenMarks("CallsEmptyOperations")));
}

TEST(CTOVMSDevLoggerTest, RefusesANullFormat)
{
    CTOVMSDevLogger oLogger;
    const char* szFormat = nullptr;

    EXPECT_CHECK_AT(TOV_PLATFORM_SOURCE("TOVString"), "szFormat != NULL",
                    oLogger.OnLog("File", 1, eSeverityInfo, szFormat));
}

// The check fails inside the dispatch, so that the lock stays taken: a child's affair.
TOV_CHILD(LogsANullFormat)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    CRecordingListener& oListener = MakeImmortal<CRecordingListener>("A", aRecord);
    CTOVDebugServer::Instance().Register(&oListener);
    const char* szFormat = nullptr;
    aRecord.clear();
    try
    {
        TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, szFormat);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        std::printf("raised; ");
    }
    std::printf("%s; ", aRecord.size() == 1 && aRecord[0].find("szFormat != NULL") != std::string::npos ? "heard"
                                                                                                        : "not heard");

    CBlockableThread oOther([] { LogPlainly("File", "text"); });
    std::printf("%s; ", oOther.IsBlocked() ? "locked" : "free");
    LeaveLockOf(CTOVDebugServer::Instance());
    std::printf("%s", oOther.Finishes() ? "freed" : "still locked");
    CTOVDebugServer::Instance().Unregister(&oListener);
}

TEST(CTOVMSDevLoggerTest, ANullFormatInALogCallReachesTheListenersUnderTheLock)
{
    const sChildResult oResult = RunChild("LogsANullFormat");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("raised; heard; locked; freed", oResult.sOutput);
}

TEST(CTOVMSDevLoggerTest, PrintingGivesTheCountOfCharacters)
{
    CTOVMSDevLogger oLogger;
    const auto pPrintf = ReachMember(sPrintf());
    for (const int nLength : {0, 1, 1022, 1023, 1024, 5000})
    {
        const std::string sText(static_cast<std::size_t>(nLength), 'x');
        EXPECT_EQ(nLength, (oLogger.*pPrintf)("%s", sText.c_str()));
        EXPECT_EQ(nLength + 3, CallVPrintf(oLogger, "%s %d", sText.c_str(), 42));
    }
}

namespace
{
// Blocks that lines of all kinds take, with the longest text that the work buffer holds.
unsigned long CountAllocationsOfLines()
{
    const std::string sLongest(1023, 'x');
    CTOVMSDevLogger oLogger;
    CAllocationCounter oCounter;

    TOVDebug::_Log("Folder/File.cpp", 148, 0x1, eSeverityInfo, "%s of %d and %.1f", "text", 7, 8.5);
    TOVDebug::_Log("Folder/File.cpp", 148, 0x1, eSeverityInfo, "%s", sLongest.c_str());
    oLogger.OnLog("Folder/File.cpp", 148, eSeverityFatal, "%s", "");
    oLogger.OnAssert("Folder/File.cpp", 12, "nCount > 0");
    return oCounter.Taken();
}
} // namespace

TOV_CHILD(CountsAllocationsOfLines)
{
    std::printf("%lu blocks", CountAllocationsOfLines());
}

TEST(CTOVMSDevLoggerTest, ALineAllocatesNothing)
{
    EXPECT_EQ(0ul, CountAllocationsOfLines());
}

TEST(CTOVMSDevLoggerTest, ALineAllocatesNothingWithADebugger)
{
    EXPECT_EQ("0 blocks", RunDebugged("CountsAllocationsOfLines").sOutput);
}

namespace
{
// Blocks that a line takes whose text has no narrow form in the "C" locale.
unsigned long CountAllocationsOfAWideLine()
{
    const wchar_t szCity[] = {'N', 0x100, 'N', 0x4eac, 0};
    CTOVMSDevLogger oLogger;
    CAllocationCounter oCounter;

    TOVDebug::_Log("Folder/File.cpp", 148, 0x1, eSeverityInfo, "text %S", szCity);
    return oCounter.Taken();
}
} // namespace

TOV_CHILD(LogsATextWithoutANarrowForm)
{
    MarkBegin();
    std::printf("%lu blocks", CountAllocationsOfAWideLine());
    MarkEnd();
}

TEST(CTOVMSDevLoggerTest, ATextWithoutANarrowFormTakesNoBlock)
{
    EXPECT_EQ(0ul, CountAllocationsOfAWideLine());

    const sObservedChild oChild = RunDebugged("LogsATextWithoutANarrowForm");
    EXPECT_EQ("0 blocks", oChild.sOutput);
    const std::string sLine = Joined(SplitAtMarks(oChild.aDebuggerTexts).aBetween);
    EXPECT_EQ("Folder/File.cpp(148) : text ", sLine.substr(0, 28)) << sLine;
}

// A line that nobody would see is not printed, so that a debugger has to be there.
TOV_CHILD(CountsAllocationsOfALongLine)
{
    const std::string sLong(20000, 'x');
    CTOVMSDevLogger oLogger;
    CAllocationCounter oCounter;
    oLogger.OnLog("File", 1, eSeverityInfo, "%s", sLong.c_str());
    const unsigned long ulTaken = oCounter.Taken();
    const std::size_t nLast = oCounter.LastSize();

    std::printf("%lu blocks, the last of %u bytes", ulTaken, static_cast<unsigned int>(nLast));
}

TEST(CTOVMSDevLoggerTest, ALineThatIsTooLongForTheBufferTakesOneBlockOfItsLength)
{
    EXPECT_EQ("1 blocks, the last of 20002 bytes", RunDebugged("CountsAllocationsOfALongLine").sOutput);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TOV_CHILD(LogsALongLineWithoutMemory)
{
    const std::string sLong(3000, 'x');
    MarkBegin();
    if (RunsOutOfMemory([&sLong] { TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "%s", sLong.c_str()); }))
        std::printf("thrown; ");
    MarkEnd();
    CBlockableThread oOther([] { LogPlainly("File", "text"); });
    std::printf("%s", oOther.Finishes() ? "free" : "locked");
    std::fflush(stdout);
    std::_Exit(0);
}

TEST(CTOVMSDevLoggerTest, WithoutMemoryALongLineIsCutAndTheLockIsFree)
{
    const sObservedChild oChild = RunDebugged("LogsALongLineWithoutMemory");

    EXPECT_EQ("free", oChild.sOutput);
    EXPECT_EQ("File(1) : " + std::string(1023, 'x') + '\n', Joined(SplitAtMarks(oChild.aDebuggerTexts).aBetween));
}
#endif
