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
#include <TestHost/TOVTestWorkers.h>
#include <Text/TOVStandardOutput.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>
#include <random>
#include <stdexcept>

namespace TOVTestHost
{
namespace
{
constexpr unsigned long MAX_SEED = 0xFFFFFFFF;

struct sOptions
{
    sTestRun oRun = {{}, {{}, {}, false, 1}, false};
    std::string sJUnit;
    std::string sHtml;
    bool bTap = false;
    bool bVerbose = false;
    bool bInProcess = false;
    bool bKeepGoing = false;
    double dTimeout = 0;
    long lSlowest = 0;

    bool UsesStandardOutput() const { return sJUnit == "-" || sHtml == "-"; }
};

// What the parser says of a wrong argument, which can have any characters.
std::string DescribeWrongUsage(const CLI::App* pProgram, const CLI::Error& oError)
{
    const std::string sMistake = oError.what();
    return pProgram->get_name() + ": " + OneLine(sMistake) +
           CLI::FailureMessage::simple(pProgram, oError).substr(sMistake.size());
}

// Also refuses what is not a number, which would be in every range.
std::string RefuseWrongSeconds(const std::string& sText)
{
    char* pEnd = nullptr;
    const double dSeconds = std::strtod(sText.c_str(), &pEnd);
    const bool bRight = !sText.empty() && *pEnd == '\0' && dSeconds >= 0 && dSeconds <= 1000000;
    return bRight ? "" : "'" + sText + "' is not a number of seconds from 0 to 1000000";
}

void Complain(const CLI::App& oProgram, const std::exception& oError)
{
    std::fprintf(stderr, "%s: %s\n", oProgram.get_name().c_str(), OneLine(oError.what()).c_str());
}

// Returns the name of the running program, without folder and ending.
std::string NameOf(const char* szProgram)
{
    std::string sName = szProgram != nullptr ? szProgram : "";
    sName.erase(0, sName.find_last_of("/\\") + 1);
    if (sName.size() > 4 && sName.compare(sName.size() - 4, 4, ".exe") == 0)
        sName.resize(sName.size() - 4);
    return sName.empty() ? "tovtest" : OneLine(sName);
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
    oProgram.add_flag("--shuffle", oChoice.bShuffle, "Run suites, and the cases of a suite, in a random order");
    oProgram.add_option("--seed", oChoice.ulSeed, "Shuffle in the order that had this number")
        ->type_name("N")
        ->check(CLI::Range(0UL, MAX_SEED));
    CLI::Option* pFailFast = oProgram.add_flag("--fail-fast", oChoice.bFailFast, "Stop after the first failed case");
    CLI::Option* pKeepGoing = oProgram.add_flag(
        "--keep-going", oOptions.bKeepGoing, "Go on, in a new process, after a case that threw or ended its process");
    CLI::Option* pTimeout =
        oProgram
            .add_option("--timeout", oOptions.dTimeout, "End a case that takes longer; 0, the default, is no limit")
            ->type_name("SECONDS")
            ->check(CLI::Validator(&RefuseWrongSeconds, ""));
    oProgram.add_option("--junit", oOptions.sJUnit, "Write a report in JUnit's XML format; - is standard output")
        ->type_name("FILE")
        ->check(oNotEmpty);
    oProgram.add_option("--html", oOptions.sHtml, "Write a report to read in a browser; - is standard output")
        ->type_name("FILE")
        ->check(oNotEmpty);
    oProgram.add_flag("--tap", oOptions.bTap, "Print the Test Anything Protocol instead of the report for people");
    oProgram.add_flag("--verbose", oOptions.bVerbose, "A line for each case");
    oProgram.add_option("--slowest", oOptions.lSlowest, "List so many of the slowest cases at the end")
        ->type_name("N")
        ->check(CLI::Range(0L, 1000000L));
    oProgram.add_flag("--in-process", oOptions.bInProcess, "Run in this process, for a debugger")
        ->excludes(pTimeout)
        ->excludes(pKeepGoing);
    pFailFast->excludes(pKeepGoing);
}

// Refuses options that do not go together.
void CheckReports(const sOptions& oOptions)
{
    if (!oOptions.sJUnit.empty() && oOptions.sJUnit == oOptions.sHtml)
        throw CLI::ValidationError("--junit and --html name the same file");
    if (oOptions.bTap && oOptions.UsesStandardOutput())
        throw CLI::ValidationError("--tap prints on standard output, where no other report can go");
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

    // The lines are read by other programs.
    void OnOutput(eTestStream /*eStream*/, const std::string& sText) override { std::fputs(sText.c_str(), stderr); }

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
    std::FILE* pStream = oOptions.UsesStandardOutput() ? stderr : stdout;
    const bool bProgress = IsTerminal(pStream) && !oOptions.bInProcess;
    if (oOptions.bTap)
        aReports.emplace_back(new CTOVTapReport(stdout, oOptions.lSlowest));
    else
        aReports.emplace_back(new CTOVConsoleReport(pStream, bProgress, oOptions.bVerbose, oOptions.lSlowest));
    return aReports;
}

int RunAsWorker(sOptions& oOptions, ITOVProcessLink& oParent)
{
    sWorkerTask oTask = {};
    if (!ReceiveTask(oParent, oTask))
        return eExitUsage;
    oOptions.oRun.oStart = oTask.oStart;
    oOptions.oRun.oChoice.ulSeed = oTask.ulSeed;
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

int ExitOf(const sTestRecord& oRecord)
{
    const sTestCounts oCounts = CountCases(oRecord);
    if (oCounts.lEnded > 0)
        return eExitEnded;
    return oCounts.lFailed > 0 ? eExitFailed : oCounts.lPassed > 0 ? eExitPassed : eExitUsage;
}

// Throws if anything that was printed has not arrived.
void FinishOutput()
{
    if (!TOVShownText::FinishOutput())
        throw std::runtime_error("cannot write all of standard output");
}

// Returns the exit status. A report that cannot be written is more important than a failed case, but not than an early
// end.
int FinishReports(const CLI::App& oProgram, CTOVTestRecorder& oRecorder)
{
    try
    {
        oRecorder.Finish();
        FinishOutput();
        return eExitPassed;
    }
    catch (const std::runtime_error& oError)
    {
        Complain(oProgram, oError);
        return eExitUsage;
    }
}

// Returns the exit status if the arguments are wrong, or ask for a text alone. Throws if that text has not arrived.
std::optional<int> Parse(CLI::App& oProgram, int nArguments, char** aszArguments, sOptions& oOptions)
{
    try
    {
        oProgram.parse(nArguments, aszArguments);
        CheckReports(oOptions);
        oOptions.oRun.oChoice.bShuffle |= oProgram.count("--seed") > 0;
        return std::nullopt;
    }
    catch (const CLI::ParseError& oError)
    {
        if (oProgram.exit(oError) != 0)
            return eExitUsage;
    }
    FinishOutput();
    return eExitPassed;
}

int RunAndReport(const CLI::App& oProgram, sOptions& oOptions, char** aszArguments)
{
    sTestChoice& oChoice = oOptions.oRun.oChoice;
    if (oChoice.bShuffle && oProgram.count("--seed") == 0)
        oChoice.ulSeed = std::random_device()() % 100000; // short enough to be typed again
    const std::vector<std::unique_ptr<ITOVTestReport>> aReports = MakeReports(oOptions);
    CTOVTestRecorder oRecorder;
    for (const std::unique_ptr<ITOVTestReport>& pReport : aReports)
        oRecorder.AddReport(*pReport);

    if (oOptions.bInProcess)
        RunTests(oOptions.oRun, oRecorder);
    else
        RunInWorkers(aszArguments, {oOptions.dTimeout, oOptions.bKeepGoing, oChoice.ulSeed}, oRecorder);
    if (oOptions.oRun.bListOnly)
    {
        FinishOutput();
        return eExitPassed;
    }
    if (oChoice.bFailFast)
        oRecorder.StopAfterFailure();
    const int nExit = FinishReports(oProgram, oRecorder);
    return std::max(nExit, ExitOf(oRecorder.GetRecord()));
}
} // namespace

int RunTestHost(int nArguments, char** aszArguments)
{
    const std::unique_ptr<ITOVProcessLink> pParent = FindParent();
    CLI::App oProgram(
        "Runs test suites and shows how they went.\n"
        "Exit status: 0 all passed, 1 a case failed, 2 wrong usage or nothing to run, 3 a case threw past "
        "its checks, ended the process or took too long.",
        NameOf(nArguments > 0 ? aszArguments[0] : nullptr));
    sOptions oOptions;
    oProgram.failure_message(DescribeWrongUsage);
    Define(oProgram, oOptions);
    try
    {
        if (const std::optional<int> nExit = Parse(oProgram, nArguments, aszArguments, oOptions))
            return *nExit;
        return pParent != nullptr ? RunAsWorker(oOptions, *pParent) : RunAndReport(oProgram, oOptions, aszArguments);
    }
    catch (const std::exception& oError)
    {
        Complain(oProgram, oError);
        return eExitUsage;
    }
}
} // namespace TOVTestHost
