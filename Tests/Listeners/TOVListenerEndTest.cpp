// What stands in a listener's file after the process has ended in each of the possible ways.
#include "Listeners/ListenerInstruments.h"
#include "Support/TOVObservedChild.h"

#include <Listeners/TOVConsoleListener.h>
#include <Listeners/TOVFileListener.h>
#include <Listeners/TOVMemoryListener.h>
#include <Listeners/TOVRotatingFileListener.h>
#include <Listeners/TOVSeverityFilter.h>

#include <algorithm>
#include <cstdlib>

using namespace TOVDebug;

namespace
{
constexpr int FAILED_EXIT = 255; // exit(-1)

// A listener of the kind, which is never destroyed.
CTOVLineListener& MakeListener(const std::string& sKind, const std::string& sPath)
{
    if (sKind == "rotating")
        return *new CTOVRotatingFileListener(sPath.c_str(), 1000000, 2);
    return *new CTOVFileListener(sPath.c_str());
}

// Ends the process without any clean-up, by an access to memory that does not exist.
void Crash()
{
    volatile int* volatile pNothing = nullptr;
    *pNothing = 1;
}

class CTOVListenerEndTest : public testing::TestWithParam<std::string>
{
protected:
    CTOVListenerEndTest() : m_sPath(m_oFolder.File("a.log")) {}

    // The child's file, without what the library itself has logged.
    tLines Written() const
    {
        tLines aLines = LinesOfFile(m_sPath);
        aLines.erase(std::remove_if(aLines.begin(), aLines.end(),
                                    [](const std::string& sLine) { return sLine.find("Folder/File.cpp") != 0; }),
                     aLines.end());
        return aLines;
    }

    CTempFolder m_oFolder;
    const std::string m_sPath;
};

INSTANTIATE_TEST_SUITE_P(OfAFile, CTOVListenerEndTest, testing::Values("file", "rotating"),
                         [](const auto& oInfo) { return oInfo.param; });
} // namespace

TOV_CHILD(EndsNormally)
{
    CTOVLineListener& oListener = MakeListener(aArguments[0], aArguments[1]);
    oListener.Register();
    std::atexit([] { Log(200, "at the exit"); });
    Log(200, "before");
}

TEST_P(CTOVListenerEndTest, ANormalExitLosesNothing)
{
    EXPECT_EQ(0, RunChild("EndsNormally", {GetParam(), m_sPath}).nExitCode);

    EXPECT_EQ(PrintedInfos({"before", "at the exit"}), Written());
}

// The library removes its classes after all of the application is gone.
TEST_P(CTOVListenerEndTest, ANormalExitDoesNotLoseTheLibrarysLastLines)
{
    EXPECT_EQ(0, RunChild("EndsNormally", {GetParam(), m_sPath}).nExitCode);

    const std::string sAll = ReadWholeFile(m_sPath);
    EXPECT_NE(std::string::npos, sAll.find("Removing class CTOVVirtualFileSystem")) << sAll;
}

TOV_CHILD(EndsWithAStaticListener)
{
    static CTOVFileListener s_oFile(aArguments[0].c_str());
    static CTOVMemoryListener s_oMemory;
    static CTOVSeverityFilter s_oFilter(s_oMemory, eSeverityTrace);
    s_oFilter.Register();
    s_oFile.Register();
    Log(200, "before");
}

TEST_F(CTOVListenerEndTest, AStaticListenerLosesNothing)
{
    EXPECT_EQ(0, RunChild("EndsWithAStaticListener", {m_sPath}).nExitCode);

    EXPECT_EQ(PrintedInfos({"before"}), Written());
}

TOV_CHILD(Panics)
{
    CTOVLineListener& oListener = MakeListener(aArguments[0], aArguments[1]);
    oListener.Register();
    static CTOVFileListener s_oStatic((aArguments[1] + ".static").c_str());
    s_oStatic.Register();
    std::atexit([] { Log(200, "at the exit"); });
    Log(200, "before");
    TOVPanic("Folder/File.cpp", 148, "%s at %d%%", "the end", 50);
}

TEST_P(CTOVListenerEndTest, APanicLosesNothing)
{
    sObservation oHow;
    oHow.aAnswers = {eUserOk};
    oHow.aArguments = {GetParam(), m_sPath};
    const sObservedChild oChild = RunObserved("Panics", oHow);

    EXPECT_EQ(FAILED_EXIT, oChild.nExitCode);
    EXPECT_EQ(1u, oChild.aBoxes.size());
    const tLines aExpected = {Printed("info", "before"), Printed("fatal error", "panic: the end at 50%"),
                              Printed("info", "at the exit")};
    EXPECT_EQ(aExpected, Written());
    EXPECT_EQ(aExpected, LinesOfFile(m_sPath + ".static"));
}

TOV_CHILD(Crashes)
{
    CTOVLineListener& oListener = MakeListener(aArguments[0], aArguments[1]);
    oListener.Register();
    Log(200, "before");
    if (aArguments[2] == "check")
        FailCheck("nCount > 0");
    else if (aArguments[2] == "panic")
        oListener.OnPanic("Folder/File.cpp", 12, eSeverityTrace, "nCount > 0");
    else
        Log(std::stoi(aArguments[2]), "nCount > 0");
    Log(200, "after");
    Crash();
}

TEST_P(CTOVListenerEndTest, ACrashLosesNothingBeforeTheLastFlush)
{
    for (const char* szGrave : {"500", "600", "check", "panic"})
    {
        WriteWholeFile(m_sPath, "");
        EXPECT_NE(0, RunChild("Crashes", {GetParam(), m_sPath, szGrave}).nExitCode);

        const tLines aLines = Written();
        ASSERT_LE(2u, aLines.size()) << szGrave;
        EXPECT_EQ(Printed("info", "before"), aLines[0]);
        EXPECT_NE(std::string::npos, aLines[1].find("nCount > 0"));
    }
}

TOV_CHILD(CrashesWithAConsole)
{
    CTOVConsoleListener oConsole(eConsoleOutput);
    oConsole.Register();
    Log(200, "before");
    Log(500, "grave");
    Log(200, "after");
    Crash();
}

TEST_F(CTOVListenerEndTest, ACrashLosesNothingOnTheConsoleBeforeTheLastFlush)
{
    const sChildResult oResult = RunChild("CrashesWithAConsole");

    EXPECT_NE(0, oResult.nExitCode);
    const std::string sOutput = WithoutTimes(oResult.sOutput);
    EXPECT_EQ(0u, sOutput.find(Printed("info", "before"))) << sOutput;
    EXPECT_NE(std::string::npos, sOutput.find(Printed("error", "grave"))) << sOutput;
}

TOV_CHILD(IsCancelled)
{
    CTOVLineListener& oListener = MakeListener(aArguments[0], aArguments[1]);
    oListener.Register();
    Log(200, "before");
    Alternate_Assert("nCount > 0", "Folder/File.cpp", 12);
}

TEST_P(CTOVListenerEndTest, AnEndAtOnceBehindAFailedCheckLosesNothing)
{
    sObservation oHow;
    oHow.aAnswers = {eUserCancel};
    oHow.aArguments = {GetParam(), m_sPath};

    EXPECT_EQ(0, RunObserved("IsCancelled", oHow).nExitCode);

    EXPECT_EQ((tLines{Printed("info", "before"), "Folder/File.cpp(12) : error: TIME check failed: nCount > 0"}),
              Written());
}
