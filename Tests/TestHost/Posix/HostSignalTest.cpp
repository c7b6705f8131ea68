// A signal that ends a case is named in the words that both systems share, and by its number where they have none. One
// that asks for the end of the run leaves complete reports.
#include "TestHost/HostInstruments.h"

#include <csignal>

TEST(HostSignalTest, IsNamedAsTheReason)
{
    const struct
    {
        const char* szSuite;
        const char* szReason;
    } aEnds[] = {
        {"Raise arithmetic", "crashed: arithmetic fault"},
        {"Raise illegal", "crashed: illegal instruction"},
        {"Raise interrupt", "was interrupted"},
        {"Raise terminate", "was ended by signal 15"},
    };
    for (const auto& oEnd : aEnds)
    {
        const sHostRun oRun = RunSuites("SuitesEnding", {"--filter", oEnd.szSuite});

        EXPECT_EQ(3, oRun.nExitCode) << oEnd.szSuite;
        EXPECT_TRUE(Contains(oRun.sOutput, std::string(".ends ") + oEnd.szReason + "\n")) << oRun.sOutput;
    }
}

TEST(HostSignalTest, OfTheUserLeavesCompleteReports)
{
    for (const int nSignal : {SIGTERM, SIGINT})
    {
        const CTempFolder oFolder;
        const std::string sXml = oFolder.File("report.xml");
        const sTerminalRun oRun =
            RunOnTerminal(HostProgram({PathOfSuites("SuitesWaiting"), "--junit", sXml, "--keep-going"}), "[2/3] ",
                          [&](CTerminal& oTerminal) { ::kill(static_cast<pid_t>(oTerminal.ProcessId()), nSignal); });

        const std::string sReport = ReadWholeFile(sXml);
        EXPECT_EQ(3, oRun.nExitCode);
        EXPECT_TRUE(Contains(sReport, nSignal == SIGTERM ? "<error message=\"was terminated\""
                                                         : "<error message=\"was interrupted\""))
            << sReport;
        EXPECT_TRUE(Contains(sReport, "<testcase name=\"after\""));
        EXPECT_TRUE(EndsWith(sReport, "</testsuites>\n"));
    }
}
