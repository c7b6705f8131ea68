// A report for which there is no room: this system has a file that is always full.
#include "TestHost/HostInstruments.h"

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
