#include <TestHost/TOVTestHostProgram.h>

#include <TestHost/TOVConsoleReport.h>
#include <TestHost/TOVHtmlReport.h>
#include <TestHost/TOVJUnitReport.h>
#include <TestHost/TOVTapReport.h>
#include <TestHost/TOVTestChannel.h>
#include <TestHost/TOVTestRecorder.h>
#include <TestHost/TOVTestRun.h>
#include <TestHost/TOVTestSystem.h>
#include <TestHost/TOVTestText.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <stdexcept>

namespace TOVTestHost
{
namespace
{
struct sOptions
{
    sTestRun oRun = {{}, {{}, {}, false, 1}, false};
    std::string sJUnit;
    std::string sHtml;
    bool bTap = false;
    bool bVerbose = false;
    bool bInProcess = false;
};

// What the parser says of a wrong argument, which can have any characters.
std::string DescribeWrongUsage(const CLI::App* pProgram, const CLI::Error& oError)
{
    const std::string sMistake = oError.what();
    return OneLine(sMistake) + CLI::FailureMessage::simple(pProgram, oError).substr(sMistake.size());
}

void Define(CLI::App& oProgram, sOptions& oOptions)
{
    const CLI::Validator oNotEmpty([](const std::string& sText) { return sText.empty() ? "is empty" : ""; }, "");
    sTestChoice& oChoice = oOptions.oRun.oChoice;
    oProgram.set_version_flag("--version", "tovtest " TOV_VERSION);
    oProgram.allow_windows_style_options(false); // "/tmp/suites.so" is a library on every system
    oProgram.add_option("LIBRARY", oOptions.oRun.aLibraries, "Shared libraries of test suites")->check(oNotEmpty);
    oProgram.add_flag("--all", oChoice.bAll, "Also the suites of TOVKernel itself, which else run only alone");
    oProgram.add_option("--filter", oChoice.aFilters, "Only cases that match, with * and ?; may be given again")
        ->type_name("PATTERN")
        ->allow_extra_args(false)
        ->check(oNotEmpty);
    oProgram.add_option("--exclude", oChoice.aExcludes, "No cases that match; may be given again")
        ->type_name("PATTERN")
        ->allow_extra_args(false)
        ->check(oNotEmpty);
    oProgram.add_flag("--list", oOptions.oRun.bListOnly, "Print the cases that would run, a line each, and run none");
    oProgram.add_option("--repeat", oChoice.lRuns, "Run everything so many times")
        ->type_name("N")
        ->check(CLI::Range(1L, 1000000L));
    oProgram.add_option("--junit", oOptions.sJUnit, "Write a report in JUnit's XML format")
        ->type_name("FILE")
        ->check(oNotEmpty);
    oProgram.add_option("--html", oOptions.sHtml, "Write a report to read in a browser")
        ->type_name("FILE")
        ->check(oNotEmpty);
    oProgram.add_flag("--tap", oOptions.bTap, "Print the Test Anything Protocol instead of the report for people");
    oProgram.add_flag("--verbose", oOptions.bVerbose, "A line for each case");
    oProgram.add_flag("--in-process", oOptions.bInProcess, "Run in this process, for a debugger");
}

// Prints the plan and ignores all other events.
class CListPrinter : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override
    {
        for (const sPlannedSuite& oSuite : oRecord.oPlan.aSuites)
            for (const sTestPlace& oCase : oSuite.aCases)
                std::printf("%s.%s\n", OneLine(oSuite.oPlace.sDescription).c_str(),
                            OneLine(oCase.sDescription).c_str());
    }

    void OnEnd(const sTestRecord& /*oRecord*/) override {}
};

std::vector<std::unique_ptr<ITOVTestReport>> MakeReports(const sOptions& oOptions)
{
    std::vector<std::unique_ptr<ITOVTestReport>> aReports;
    if (oOptions.oRun.bListOnly)
    {
        aReports.emplace_back(new CListPrinter);
        return aReports;
    }
    // The files come first, so that a name that cannot be written is reported before anything is printed.
    if (!oOptions.sJUnit.empty())
        aReports.emplace_back(new CTOVJUnitReport(oOptions.sJUnit));
    if (!oOptions.sHtml.empty())
        aReports.emplace_back(new CTOVHtmlReport(oOptions.sHtml));
    if (oOptions.bTap)
        aReports.emplace_back(new CTOVTapReport(stdout));
    else
        aReports.emplace_back(new CTOVConsoleReport(stdout, IsTerminal(stdout), oOptions.bVerbose));
    return aReports;
}

int RunAsWorker(const sOptions& oOptions, ITOVProcessLink& oParent)
{
    CTOVTestSender oSender(oParent);
    std::string sError;
    try
    {
        RunTests(oOptions.oRun, oSender);
    }
    catch (const std::exception& oError)
    {
        sError = oError.what();
    }
    oSender.SendDone(sError);
    return 0;
}

void RunInWorker(char** aszArguments, CTOVTestRecorder& oRecorder)
{
    const std::unique_ptr<ITOVProcessLink> pWorker = StartWorker(aszArguments);
    const bool bDone = ReceiveTestEvents(*pWorker, oRecorder);
    std::string sEnd = pWorker->WaitForEnd();
    if (sEnd.empty() && !bDone)
        sEnd = "ended the process with status 0";
    if (sEnd.empty() || !oRecorder.GetRecord().sEarlyEnd.empty())
        return;
    if (oRecorder.GetRecord().oPlan.lRuns == 0)
        throw std::runtime_error("while the libraries were loaded, one of them " + sEnd);
    oRecorder.OnEndEarly(sEnd);
}

int ExitOf(const sTestRecord& oRecord)
{
    if (!oRecord.sEarlyEnd.empty())
        return eExitEnded;
    const sTestCounts oCounts = CountCases(oRecord);
    return oCounts.lFailed > 0 ? eExitFailed : oCounts.lPassed > 0 ? eExitPassed : eExitUsage;
}

// Returns the exit status. A report that cannot be written is more important than a failed case, but not than an early
// end.
int FinishReports(CTOVTestRecorder& oRecorder)
{
    try
    {
        oRecorder.Finish();
        return eExitPassed;
    }
    catch (const std::runtime_error& oError)
    {
        std::fprintf(stderr, "tovtest: %s\n", OneLine(oError.what()).c_str());
        return eExitUsage;
    }
}

int RunAndReport(const sOptions& oOptions, char** aszArguments)
{
    const std::vector<std::unique_ptr<ITOVTestReport>> aReports = MakeReports(oOptions);
    CTOVTestRecorder oRecorder;
    for (const std::unique_ptr<ITOVTestReport>& pReport : aReports)
        oRecorder.AddReport(*pReport);

    if (oOptions.bInProcess)
        RunTests(oOptions.oRun, oRecorder);
    else
        RunInWorker(aszArguments, oRecorder);
    if (oOptions.oRun.bListOnly)
        return eExitPassed;
    const int nExit = FinishReports(oRecorder);
    return std::max(nExit, ExitOf(oRecorder.GetRecord()));
}
} // namespace

int RunTestHost(int nArguments, char** aszArguments)
{
    const std::unique_ptr<ITOVProcessLink> pParent = FindParent();
    CLI::App oProgram(
        "Runs test suites and shows how they went.\n"
        "Exit status: 0 all passed, 1 a case failed, 2 wrong usage or nothing to run, 3 a case threw past "
        "its checks or ended the process.",
        "tovtest");
    sOptions oOptions;
    oProgram.failure_message(DescribeWrongUsage);
    Define(oProgram, oOptions);
    try
    {
        oProgram.parse(nArguments, aszArguments);
        if (!oOptions.sJUnit.empty() && oOptions.sJUnit == oOptions.sHtml)
            throw CLI::ValidationError("--junit and --html name the same file");
    }
    catch (const CLI::ParseError& oError)
    {
        return oProgram.exit(oError) == 0 ? eExitPassed : eExitUsage;
    }

    try
    {
        // The output of the cases must not mix with the lines that another program reads.
        if (pParent != nullptr && (oOptions.bTap || oOptions.oRun.bListOnly))
            SendOutputToErrors();
        return pParent != nullptr ? RunAsWorker(oOptions, *pParent) : RunAndReport(oOptions, aszArguments);
    }
    catch (const std::exception& oError)
    {
        std::fprintf(stderr, "tovtest: %s\n", OneLine(oError.what()).c_str());
        return eExitUsage;
    }
}
} // namespace TOVTestHost
