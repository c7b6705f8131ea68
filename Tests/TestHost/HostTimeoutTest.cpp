// What takes too long is ended and told.
#include "TestHost/HostInstruments.h"

namespace
{
// The first duration that follows the text.
double SecondsAfter(const std::string& sOutput, const std::string& sText)
{
    const std::size_t nAt = sOutput.find(sText);
    return nAt == std::string::npos ? -1 : std::stod(sOutput.substr(nAt + sText.size()));
}
} // namespace

TEST(HostTimeoutTest, EndsACaseThatHangsAndLeavesCompleteReports)
{
    const CTempFolder oFolder;
    const std::string sXml = oFolder.File("report.xml");
    const sChildResult oRun = RunProgram(
        HostProgram({PathOfSuites("SuitesHanging"), "--filter", "In the case", "--timeout", "0.5", "--junit", sXml}));

    EXPECT_EQ(3, oRun.nExitCode);
    // The time before the case begins counts as well.
    EXPECT_LE(0.5, SecondsAfter(oRun.sOutput, "ENDED  In the case: 1 case, 1 ended the run, 1 warning ("))
        << oRun.sOutput;
    EXPECT_LT(0, SecondsAfter(oRun.sOutput, "ENDED  In the case.hangs (")) << oRun.sOutput;
    EXPECT_TRUE(Contains(oRun.sOutput, "warning: has begun\n"));
    EXPECT_TRUE(Contains(oRun.sOutput, "\nThe run ended early: In the case.hangs took longer than 0.5 s\n"));
    EXPECT_TRUE(Contains(ReadWholeFile(sXml), "<error message=\"took longer than 0.5 s\""));
    EXPECT_TRUE(EndsWith(ReadWholeFile(sXml), "</testsuites>\n"));
}

TEST(HostTimeoutTest, CountsStartupAndClosedownAndTheEndOfTheProcess)
{
    const sHostRun oRun = RunSuites("SuitesHanging", {"--keep-going", "--timeout", "1"});

    EXPECT_EQ(3, oRun.nExitCode);
    for (const char* szCase : {"In Startup.hangs", "In the case.hangs", "In Closedown.hangs",
                               "<outside of the suites>.<outside of the cases>"})
        EXPECT_TRUE(Contains(oRun.sOutput, std::string("ENDED  ") + szCase + " (TIME)\n")) << oRun.sOutput;
    EXPECT_TRUE(Contains(oRun.sOutput, "ok     At the end: 1 case (TIME)\n")) << oRun.sOutput;
}

TEST(HostTimeoutTest, LeavesOtherCasesAlone)
{
    const sHostRun oRun = RunSuites("SuitesPassing", {"--timeout", "100"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ(RunSuites("SuitesPassing").sOutput, oRun.sOutput);
}
