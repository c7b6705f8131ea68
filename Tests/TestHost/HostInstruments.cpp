#include "TestHost/HostInstruments.h"

#include <regex>
#include <sstream>

sProgram HostProgram(const std::vector<std::string>& aArguments)
{
    sProgram oProgram;
    oProgram.aCommand = {PathBesideThisProgram(TOV_HOST)};
    oProgram.aCommand.insert(oProgram.aCommand.end(), aArguments.begin(), aArguments.end());
    const std::string sFaults = "handle_segv=0:handle_abort=0:handle_sigfpe=0:handle_sigill=0";
    oProgram.aVariables = {{"ASAN_OPTIONS", sFaults + ":detect_stack_use_after_return=0"},
                           {"LSAN_OPTIONS", "detect_leaks=1"},
                           {"TSAN_OPTIONS", sFaults}};
    return oProgram;
}

std::string PathOfSuites(const std::string& sName)
{
    return PathBesideThisProgram(sName + TOV_SUITES_SUFFIX);
}

sHostRun RunHost(const std::vector<std::string>& aArguments)
{
    const sChildResult oResult = RunProgram(HostProgram(aArguments));
    return {oResult.nExitCode, WithoutTimes(oResult.sOutput)};
}

sHostRun RunSuites(const std::string& sSuites, const std::vector<std::string>& aArguments)
{
    std::vector<std::string> aAll = {PathOfSuites(sSuites)};
    aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
    return RunHost(aAll);
}

sTerminalRun RunOnTerminal(const sProgram& oProgram, const std::string& sText,
                           const std::function<void(CTerminal&)>& fnWhenSeen)
{
    CTerminal oTerminal(oProgram);
    sTerminalRun oRun = {-1, {}, {}};
    if (oTerminal.WaitUntilItShows(sText))
    {
        oRun.aDuring = oTerminal.Screen();
        fnWhenSeen(oTerminal);
    }
    oRun.nExitCode = oTerminal.WaitForEnd();
    oRun.aAfter = oTerminal.Screen();
    return oRun;
}

std::string WithoutTimes(const std::string& sText)
{
    const std::string sBrackets = std::regex_replace(sText, std::regex("[0-9]+\\.[0-9]{3} s"), "TIME");
    const std::string sSeconds =
        std::regex_replace(sBrackets, std::regex("time=\"[0-9]+\\.[0-9]{3}\""), "time=\"TIME\"");
    return std::regex_replace(sSeconds, std::regex("timestamp=\"[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\""),
                              "timestamp=\"TIME\"");
}

tLines LinesOf(const std::string& sText)
{
    tLines aLines;
    std::istringstream oStream(sText);
    for (std::string sLine; std::getline(oStream, sLine);)
        aLines.push_back(sLine);
    return aLines;
}

std::string LastLineOf(const std::string& sText)
{
    const tLines aLines = LinesOf(sText);
    return aLines.empty() ? "" : aLines.back();
}

bool Contains(const std::string& sText, const std::string& sPart)
{
    return sText.find(sPart) != std::string::npos;
}

bool EndsWith(const std::string& sText, const std::string& sEnd)
{
    return sText.size() >= sEnd.size() && sText.compare(sText.size() - sEnd.size(), sEnd.size(), sEnd) == 0;
}

testing::AssertionResult IsRefused(const sHostRun& oRun, const std::string& sPart)
{
    if (oRun.nExitCode == 2 && LinesOf(oRun.sOutput).size() == 1 && Contains(oRun.sOutput, sPart))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit status " << oRun.nExitCode << "\n" << oRun.sOutput;
}
