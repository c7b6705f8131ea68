// The reports that are files.
#include "TestHost/HostInstruments.h"

namespace
{
// What tovtest writes into a file for an option.
std::string Report(const char* szOption, const std::string& sSuites, const std::vector<std::string>& aArguments = {})
{
    const CTempFolder oFolder;
    std::vector<std::string> aAll = {szOption, oFolder.File("report")};
    aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
    RunSuites(sSuites, aAll);
    return WithoutTimes(ReadWholeFile(oFolder.File("report")));
}
} // namespace

TEST(HostJUnitTest, HasSuitesWithTheirPlacesAndCases)
{
    EXPECT_EQ(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<testsuites tests=\"2\" failures=\"0\" errors=\"0\" time=\"TIME\">\n"
        "  <testsuite name=\"Words\" id=\"0\" file=\"Tests/Programs/SuitesPassing.cpp\" timestamp=\"TIME\" tests=\"1\" "
        "failures=\"0\" errors=\"0\" time=\"TIME\" skipped=\"0\">\n"
        "    <testcase name=\"joins\" classname=\"Words\" time=\"TIME\"/>\n"
        "  </testsuite>\n"
        "  <testsuite name=\"Numbers\" id=\"1\" file=\"Tests/Programs/SuitesPassing.cpp\" timestamp=\"TIME\" "
        "tests=\"1\" failures=\"0\" errors=\"0\" time=\"TIME\" skipped=\"0\">\n"
        "    <testcase name=\"adds\" classname=\"Numbers\" time=\"TIME\">\n"
        "      <system-out>Tests/Programs/SuitesPassing.cpp:17: warning: adds slowly\n"
        "</system-out>\n"
        "    </testcase>\n"
        "  </testsuite>\n"
        "</testsuites>\n",
        Report("--junit", "SuitesPassing", {"--filter", "*joins", "--filter", "*.adds"}));
}

TEST(HostJUnitTest, HasOneElementForTheFailedChecksOfACase)
{
    const std::string sReport = Report("--junit", "SuitesFailing", {"--filter", "*equality"});

    EXPECT_TRUE(Contains(sReport, "<testsuites tests=\"1\" failures=\"1\" errors=\"0\" "));
    EXPECT_TRUE(Contains(sReport, "      <failure message=\"1 + 1 == 3\" type=\"FailedAssertEquals\">"
                                  "Tests/Programs/SuitesFailing.cpp:14: 1 + 1 == 3\n"
                                  "    actual:   2\n"
                                  "    expected: 3\n"
                                  "Tests/Programs/SuitesFailing.cpp:15: 'a'"))
        << sReport;
}

TEST(HostJUnitTest, TakesAnyTextAsText)
{
    const std::string sReport = Report("--junit", "SuitesFailing", {"--filter", "Trial*"});

    EXPECT_TRUE(Contains(sReport, "<testsuite name=\"Trial &lt;&quot;&amp;'&gt;\\x01\" "));
    EXPECT_TRUE(Contains(sReport, "message=\"&lt;a href=&quot;x&quot;&gt;&amp;amp;'quoted'&lt;/a&gt; ]]&gt; "
                                  "&lt;![CDATA[\""));
    EXPECT_TRUE(Contains(sReport, "message=\"bell \\x07, tab &#9;, line&#10;end, return &#13;, delete \\x7f\""));
    EXPECT_TRUE(Contains(sReport, "message=\"caf\xc3\xa9, cut \\xe2\\x82, lone \\xff, overlong \\xc0\\x80, surrogate "
                                  "\\xed\\xa0\\x80\""));
}

TEST(HostJUnitTest, HasASuiteOnceForEachRun)
{
    const std::string sReport = Report("--junit", "SuitesPassing", {"--filter", "Words", "--repeat", "2"});

    EXPECT_TRUE(Contains(sReport, "<testsuites tests=\"4\" "));
    EXPECT_TRUE(Contains(sReport, "<testsuite name=\"Words\" id=\"0\" "));
    EXPECT_TRUE(Contains(sReport, "<testsuite name=\"Words\" id=\"1\" "));
}

TEST(HostHtmlTest, HasSuitesCasesAndWhatTheySaid)
{
    const std::string sReport = Report("--html", "SuitesFailing");

    EXPECT_EQ(0u, sReport.find("<!DOCTYPE html>\n"));
    EXPECT_TRUE(Contains(sReport, "<h1>Tests failed</h1>\n<p>3 suites, 15 cases, 13 failed, 1 warning, TIME</p>"));
    EXPECT_TRUE(Contains(sReport, "<li class=\"passed\"><b>passes</b> <span>TIME</span></li>\n"));
    EXPECT_TRUE(Contains(sReport,
                         "<li class=\"failed\"><b>order</b> <span>TIME</span><pre>"
                         "Tests/Programs/SuitesFailing.cpp:19: 5 &lt; 4\n    actual: 5\n    limit:  4\n</pre>"));
    EXPECT_TRUE(EndsWith(sReport, "</html>\n"));
}

TEST(HostHtmlTest, NeedsNothingFromElsewhere)
{
    const std::string sReport = Report("--html", "SuitesPassing");

    EXPECT_TRUE(Contains(sReport, "<h1>All tests passed</h1>"));
    for (const char* szPart : {"http:", "https:", "src=", "href=", "<link", "<script"})
        EXPECT_FALSE(Contains(sReport, szPart)) << szPart;
}

TEST(HostHtmlTest, TellsHowTheRunCanBeRepeated)
{
    const CTempFolder oFolder;
    const std::string sHtml = oFolder.File("report.html");
    RunSuites("SuitesPassing", {"--html", sHtml, "--repeat", "2", "--shuffle", "--seed", "5"});

    EXPECT_TRUE(Contains(WithoutTimes(ReadWholeFile(sHtml)), " in 2 runs, shuffled with --seed 5</p>\n"));
}

TEST(HostReportTest, WritesAllReportsAtOnce)
{
    const CTempFolder oFolder;
    const std::string sXml = oFolder.File("report.xml");
    const std::string sHtml = oFolder.File("report.html");
    const sHostRun oRun = RunSuites("SuitesFailing", {"--tap", "--junit", sXml, "--html", sHtml});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ(RunSuites("SuitesFailing", {"--tap"}).sOutput, oRun.sOutput);
    EXPECT_EQ(Report("--junit", "SuitesFailing"), WithoutTimes(ReadWholeFile(sXml)));
    EXPECT_EQ(Report("--html", "SuitesFailing"), WithoutTimes(ReadWholeFile(sHtml)));
}

TEST(HostReportTest, ReplacesTheLastOne)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("report"), std::string(100000, 'x'));
    RunSuites("SuitesPassing", {"--junit", oFolder.File("report")});

    EXPECT_EQ(Report("--junit", "SuitesPassing"), WithoutTimes(ReadWholeFile(oFolder.File("report"))));
}
