// A report for which there is no room: this system has a file that is always full.
#include "TestHost/HostInstruments.h"

namespace
{
// Standard output is full, so that the result has standard error alone.
sHostRun RunWithFullOutput(sProgram oProgram)
{
    oProgram.aCommand.insert(oProgram.aCommand.begin(), {"/bin/sh", "-c", "exec \"$0\" \"$@\" > /dev/full"});
    const sChildResult oResult = RunProgram(oProgram);
    return {oResult.nExitCode, WithoutTimes(oResult.sOutput)};
}

// Runs tovtest with a library of suites.
sHostRun RunSuitesWithFullOutput(const std::string& sSuites, const std::vector<std::string>& aArguments = {})
{
    sProgram oProgram = HostProgram({PathOfSuites(sSuites)});
    oProgram.aCommand.insert(oProgram.aCommand.end(), aArguments.begin(), aArguments.end());
    return RunWithFullOutput(oProgram);
}
} // namespace

TEST(HostFullDiskTest, IsToldAndKeepsNoOtherReportFromBeingComplete)
{
    const CTempFolder oFolder;
    const std::string sHtml = oFolder.File("report.html");
    const sHostRun oRun = RunSuites("SuitesFailing", {"--junit", "/dev/full", "--html", sHtml});

    EXPECT_EQ(2, oRun.nExitCode);
    EXPECT_TRUE(Contains(oRun.sOutput, "tovtest: cannot write all of /dev/full\n"));
    EXPECT_TRUE(Contains(oRun.sOutput, "3 suites, 15 cases: 2 passed, 13 failed, 1 warning (TIME)\n"));
    EXPECT_TRUE(EndsWith(ReadWholeFile(sHtml), "</html>\n"));
}

TEST(HostFullDiskTest, IsLessThanACrash)
{
    EXPECT_EQ(3, RunSuites("SuitesEnding", {"--filter", "Crash", "--junit", "/dev/full"}).nExitCode);
}

TEST(HostFullDiskTest, TakesNoReportForPeopleInSilence)
{
    EXPECT_TRUE(IsRefused(RunSuitesWithFullOutput("SuitesPassing"), "cannot write all of standard output"));
}

TEST(HostFullDiskTest, TakesNoProtocolAndNoListInSilence)
{
    EXPECT_TRUE(IsRefused(RunSuitesWithFullOutput("SuitesPassing", {"--list"}), "cannot write all of standard output"));
    // What a case prints goes to standard error then.
    const sHostRun oRun = RunSuitesWithFullOutput("SuitesPassing", {"--tap"});
    EXPECT_EQ(2, oRun.nExitCode);
    EXPECT_EQ("tovtest: cannot write all of standard output", LastLineOf(oRun.sOutput));
}

TEST(HostFullDiskTest, IsToldOnceForAReportOnStandardOutput)
{
    const sHostRun oRun = RunSuitesWithFullOutput("SuitesPassing", {"--junit", "-"});

    EXPECT_EQ(2, oRun.nExitCode);
    EXPECT_EQ("tovtest: cannot write all of standard output", LastLineOf(oRun.sOutput));
    EXPECT_EQ(oRun.sOutput.find("cannot write"), oRun.sOutput.rfind("cannot write"));
}

TEST(HostFullDiskTest, TakesNoVersionAndNoHelpInSilence)
{
    for (const char* szOption : {"--version", "--help"})
        EXPECT_TRUE(IsRefused(RunWithFullOutput(HostProgram({szOption})), "cannot write all of standard output"))
            << szOption;
}
