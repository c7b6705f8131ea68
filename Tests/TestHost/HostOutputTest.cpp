// What the cases write appears between the lines of the report, and in the reports.
#include "TestHost/HostInstruments.h"

namespace
{
sChildResult RunPrinting(const std::vector<std::string>& aArguments)
{
    std::vector<std::string> aAll = {PathOfSuites("SuitesPrinting")};
    aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
    sChildResult oResult = RunProgram(HostProgram(aAll), eErrorsApart);
    oResult.sOutput = WithoutTimes(oResult.sOutput);
    return oResult;
}

std::string ReportOf(const char* szOption, const std::vector<std::string>& aArguments)
{
    const CTempFolder oFolder;
    std::vector<std::string> aAll = {szOption, oFolder.File("report")};
    aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
    RunPrinting(aAll);
    return WithoutTimes(ReadWholeFile(oFolder.File("report")));
}
} // namespace

TEST(HostOutputTest, DoesNotMixWithTheLinesOfTheReport)
{
    const sChildResult oRun =
        RunPrinting({"--verbose", "--filter", "*.half", "--filter", "*.errors", "--filter", "*.stream"});

    EXPECT_EQ("startup\n"
              "half a line\n"
              "ok     Printing.half (TIME)\n"
              "startup\n"
              "ok     Printing.errors (TIME)\n"
              "startup\n"
              "by a stream\n"
              "ok     Printing.stream (TIME)\n"
              "ok     Printing: 3 cases (TIME)\n"
              "\n"
              "1 suite, 3 cases: 3 passed (TIME)\n",
              oRun.sOutput);
    EXPECT_EQ("an error\n", oRun.sErrors);
}

TEST(HostOutputTest, IsInTheReportOfItsCase)
{
    const std::string sReport = ReportOf("--junit", {"--filter", "Printing"});

    EXPECT_TRUE(Contains(sReport, "    <testcase name=\"half\" classname=\"Printing\" time=\"TIME\">\n"
                                  "      <system-out>startup\nhalf a line\n</system-out>\n"
                                  "    </testcase>\n"))
        << sReport;
    EXPECT_TRUE(Contains(sReport, "      <system-err>an error\n</system-err>\n"));
    EXPECT_TRUE(Contains(sReport, "<system-out>startup\n&lt;b&gt;&amp;amp;&lt;/b&gt; \\x01\\xff ]]&gt;\n\nend\n"
                                  "</system-out>"))
        << sReport;
}

TEST(HostOutputTest, IsOnThePageBesideItsCase)
{
    const std::string sReport = ReportOf("--html", {"--filter", "*.errors"});

    EXPECT_TRUE(Contains(sReport, "<summary>standard output</summary><pre class=\"output\">startup\n</pre>"))
        << sReport;
    EXPECT_TRUE(Contains(sReport, "<summary>standard errors</summary><pre class=\"output\">an error\n</pre>"));
}

TEST(HostOutputTest, GoesToStandardErrorBesideAProtocol)
{
    const sChildResult oRun = RunPrinting({"--tap", "--filter", "*.half", "--filter", "*.errors"});

    EXPECT_EQ("TAP version 13\n1..2\nok 1 - Printing.half\nok 2 - Printing.errors\n", oRun.sOutput);
    EXPECT_EQ("startup\nhalf a line\nstartup\nan error\n", oRun.sErrors);
}

TEST(HostOutputTest, IsKeptWhenTheCaseCrashes)
{
    const std::string sReport = ReportOf("--junit", {"--filter", "Last words"});

    EXPECT_TRUE(Contains(sReport, "<system-out>last words\n</system-out>")) << sReport;
}

TEST(HostOutputTest, LeavesStandardOutputToAReport)
{
    for (const char* szOption : {"--junit", "--html"})
    {
        const std::vector<std::string> aFilter = {"--filter", "Printing"};
        const sChildResult oRun = RunPrinting({szOption, "-", "--filter", "Printing"});

        EXPECT_EQ(0, oRun.nExitCode);
        EXPECT_EQ(ReportOf(szOption, aFilter), oRun.sOutput);
        EXPECT_TRUE(Contains(oRun.sErrors, "half a line\n")) << oRun.sErrors;
        EXPECT_TRUE(Contains(oRun.sErrors, "1 suite, 5 cases: 5 passed")) << oRun.sErrors;
    }
}

TEST(HostOutputTest, OfACaseIsNotAmongTheListedCases)
{
    EXPECT_EQ("", RunPrinting({"--list"}).sErrors);
    EXPECT_EQ(6u, LinesOf(RunPrinting({"--list"}).sOutput).size());
}
