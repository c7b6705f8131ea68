// What the library's own listener makes of a panic: a box, and a piece of text for the debugger.
#include "Debug/TOVDebugInstruments.h"
#include "Debug/TOVDebuggerLines.h"
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"

#include <cstdlib>

namespace
{
constexpr int FAILED_EXIT = 255; // exit(-1)
constexpr char PREFIX[] = "Folder/File.cpp(148) : ";

// Stands behind the library's own in the table.
class CLaterListener : public CRecordingListener
{
public:
    using CRecordingListener::CRecordingListener;

    void OnPanicV(const char* szFile, unsigned long, const char* szFormat, va_list) override
    {
        std::printf("%s heard of %s; ", szFile, szFormat != nullptr ? szFormat : "nothing");
    }
};

void TellLock()
{
    CBlockableThread oOther([] { TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "text"); });
    std::printf("%s", oOther.Finishes() ? "free" : "locked");
}
} // namespace

TOV_CHILD(PanicsWithPercentSigns)
{
    TOVPanic("Folder/File.cpp", 148, "%s", aArguments[0].c_str());
}

// Settled: the finished message serves as a format once more on its way to the debugger.
TEST(CTOVMSDevLoggerPanicTest, APanicReadsThePercentSignsOfItsMessage)
{
    const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {"lost 50%% of %d"});

    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("Folder/File.cpp(148) : lost 50%% of %d", oChild.aBoxes[0].sText);
    EXPECT_EQ(1, std::count(oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(),
                            "Folder/File.cpp(148) : lost 50% of 0"))
        << Joined(oChild.aDebuggerTexts);
    EXPECT_EQ(FAILED_EXIT, oChild.nExitCode);
}

TEST(CTOVMSDevLoggerPanicTest, DoublePercentSignsAreNoConversions)
{
    std::string sMessage;
    for (int nSign = 0; nSign < 30; ++nSign)
        sMessage += "%%";
    const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {sMessage + " of %d and %.1f"});

    EXPECT_EQ(1, std::count(oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(),
                            PREFIX + std::string(30, '%') + " of 0 and 0.0"))
        << Joined(oChild.aDebuggerTexts);
}

TEST(CTOVMSDevLoggerPanicTest, APanicReadsZerosForAsManyConversionsAsThereAre)
{
    std::string sMessage;
    std::string sRead;
    for (int nConversion = 0; nConversion < 8; ++nConversion)
    {
        sMessage += "%d %.1f %I64d ";
        sRead += "0 0.0 0 ";
    }
    EXPECT_NE(std::string::npos,
              Joined(RunDebugged("PanicsWithPercentSigns", {sMessage}).aDebuggerTexts).find(PREFIX + sRead));
    // One more is too many.
    EXPECT_NE(std::string::npos,
              Joined(RunDebugged("PanicsWithPercentSigns", {sMessage + "%d"}).aDebuggerTexts).find(sMessage + "%d"));
}

TEST(CTOVMSDevLoggerPanicTest, AStarCountsAsAConversion)
{
    std::string sMessage;
    for (int nConversion = 0; nConversion < 12; ++nConversion)
        sMessage += "%*d ";
    EXPECT_EQ(std::string::npos,
              Joined(RunDebugged("PanicsWithPercentSigns", {sMessage}).aDebuggerTexts).find(sMessage));
    sMessage += "%*d ";
    EXPECT_NE(std::string::npos,
              Joined(RunDebugged("PanicsWithPercentSigns", {sMessage}).aDebuggerTexts).find(sMessage));
}

TEST(CTOVMSDevLoggerPanicTest, APanicWithoutPercentSignsIsOnePieceAsItStands)
{
    const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {"lost all"});

    EXPECT_EQ(1,
              std::count(oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(), "Folder/File.cpp(148) : lost all"))
        << Joined(oChild.aDebuggerTexts);
    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("Critical Application Error", oChild.aBoxes[0].sCaption);
}

// There are no arguments for the conversions that a message happens to hold: none of them may reach for one.
TEST(CTOVMSDevLoggerPanicTest, APanicSurvivesEveryConversionInItsMessage)
{
    std::string sMany;
    for (int nConversion = 0; nConversion < 500; ++nConversion)
        sMany += "%s%f%I64d";
    for (const std::string& sMessage : {std::string("%n%hn%ln"), std::string("%*.*d %-*s"), std::string("100%"), sMany})
    {
        const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {sMessage});
        EXPECT_EQ(FAILED_EXIT, oChild.nExitCode) << sMessage;
        ASSERT_EQ(1u, oChild.aBoxes.size()) << sMessage;
        EXPECT_EQ("Folder/File.cpp(148) : " + sMessage, oChild.aBoxes[0].sText);
        EXPECT_EQ(1, std::count_if(
                         oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(),
                         [](const std::string& sText) { return sText.compare(0, 23, "Folder/File.cpp(148) : ") == 0; }))
            << sMessage;
    }
}

TEST(CTOVMSDevLoggerPanicTest, ALongPanicComesOutWhole)
{
    const std::string sLong(3000, 'p');
    const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {sLong});

    EXPECT_EQ(
        1, std::count(oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(), "Folder/File.cpp(148) : " + sLong));
    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("Folder/File.cpp(148) : " + sLong, oChild.aBoxes[0].sText);
}

TEST(CTOVMSDevLoggerPanicTest, AWidthInAPanicsMessageAsksForNoLongText)
{
    for (const char* szMessage : {"%20000d", "%-12345.3d", "%.99999d", "%99999999999d", "%1.00000d"})
    {
        const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {szMessage});
        EXPECT_EQ(
            1, std::count(oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(), PREFIX + std::string(szMessage)))
            << szMessage;
    }
    const sObservedChild oChild = RunDebugged("PanicsWithPercentSigns", {"%1000d%-+8.4lld|"});
    EXPECT_EQ(1, std::count(oChild.aDebuggerTexts.begin(), oChild.aDebuggerTexts.end(),
                            PREFIX + std::string(999, ' ') + "0+0000   |"));
}

// The argument behind "=" is the format; without one there is no format.
TOV_CHILD(PanicsWithTheFormat)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    TOVDebug::CTOVDebugServer::Instance().Register(&MakeImmortal<CLaterListener>("A", aRecord));
    std::atexit(TellLock);
    const char* szFormat = aArguments.empty() ? nullptr : aArguments[0].c_str() + 1;
    try
    {
        TOVPanic("Folder/File.cpp", 148, szFormat);
    }
    catch (...)
    {
        std::printf("came back; ");
    }
}

TEST(CTOVMSDevLoggerPanicTest, AFormatThatCannotBeUsedIsTheMessageAsItStands)
{
    for (const char* szFormat : {"", "100%", "%E", "at 100% and %y"})
    {
        const std::string sFormat = szFormat;
        const sObservedChild oChild = RunDebugged("PanicsWithTheFormat", {'=' + sFormat});
        EXPECT_EQ(FAILED_EXIT, oChild.nExitCode) << sFormat;
        ASSERT_EQ(1u, oChild.aBoxes.size()) << sFormat;
        EXPECT_EQ(PREFIX + sFormat, oChild.aBoxes[0].sText);
        EXPECT_EQ("Folder/File.cpp heard of " + sFormat + "; free", oChild.sOutput);
    }
}

TEST(CTOVMSDevLoggerPanicTest, APanicWithoutAFormatShowsItsPosition)
{
    const sObservedChild oChild = RunDebugged("PanicsWithTheFormat");

    EXPECT_EQ(FAILED_EXIT, oChild.nExitCode);
    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ(PREFIX, oChild.aBoxes[0].sText);
    EXPECT_EQ("Folder/File.cpp heard of nothing; free", oChild.sOutput);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TOV_CHILD(PanicsWithoutMemory)
{
    // The clean-up of a process that ends has its memory back.
    std::atexit([] { AllocationCountsOfThisThread().bFailing = false; });
    const CAllocationFailure oFailure;
    TOVPanic("Folder/File.cpp", 148, "%s of %d", aArguments[0].c_str(), 7);
}

TEST(CTOVMSDevLoggerPanicTest, APanicComesToItsEndWithoutMemory)
{
    const sObservedChild oShort = RunDebugged("PanicsWithoutMemory", {"lost"});
    EXPECT_EQ(FAILED_EXIT, oShort.nExitCode);
    ASSERT_EQ(1u, oShort.aBoxes.size());
    EXPECT_EQ(std::string(PREFIX) + "lost of 7", oShort.aBoxes[0].sText);

    const sObservedChild oLong = RunDebugged("PanicsWithoutMemory", {std::string(2000, 'p')});
    EXPECT_EQ(FAILED_EXIT, oLong.nExitCode);
    ASSERT_EQ(1u, oLong.aBoxes.size());
    EXPECT_EQ((PREFIX + std::string(2000, 'p')).substr(0, 1022), oLong.aBoxes[0].sText.substr(0, 1022));
}
#endif
