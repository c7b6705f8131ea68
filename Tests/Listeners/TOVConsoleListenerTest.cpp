#include "Listeners/ListenerInstruments.h"
#include "Listeners/ListenerTerminal.h"

#include <Listeners/TOVConsoleListener.h>

#include <algorithm>
#include <cstdlib>

using namespace TOVDebug;

namespace
{
eTOVConsoleStream StreamOf(const std::vector<std::string>& aArguments)
{
    if (aArguments[0] == "split")
        return eConsoleSplit;
    return aArguments[0] == "output" ? eConsoleOutput : eConsoleError;
}

// The text with \n alone as its line end; files have the line ends of the system.
std::string Piped(std::string sText)
{
    sText.erase(std::remove(sText.begin(), sText.end(), '\r'), sText.end());
    return WithoutTimes(sText);
}
} // namespace

// Standard output goes to the file that the second argument names.
TOV_CHILD(LogsToAConsole)
{
    if (aArguments.size() > 1 && std::freopen(aArguments[1].c_str(), "w", stdout) == nullptr)
        std::exit(97);
    CTOVConsoleListener oConsole(StreamOf(aArguments));
    oConsole.Register();
    for (const int nSeverity : {100, 200, 300, 400, 500, 600, 150})
        Log(nSeverity, "100% %s");
    FailCheck("nCount > 0");
    oConsole.OnPanic("Folder/File.cpp", 9, eSeverityTrace, "%d cities", 0);
    Log(200, "last");
    std::printf("%s", oConsole.HasLostLines() ? "lost\n" : "");
}

namespace
{
const tLines LOGGED = {Printed("trace", "100% %s"),
                       Printed("info", "100% %s"),
                       Printed("severity 300", "100% %s"),
                       Printed("warning", "100% %s"),
                       Printed("error", "100% %s"),
                       Printed("fatal error", "100% %s"),
                       Printed("severity 150", "100% %s"),
                       "Folder/File.cpp(12) : error: TIME check failed: nCount > 0",
                       "Folder/File.cpp(9) : fatal error: TIME panic: 0 cities",
                       Printed("info", "last")};

tLines ColoursOf(const std::vector<sShownLine>& aLines)
{
    tLines aColours;
    for (const sShownLine& oLine : aLines)
        aColours.push_back(oLine.sColour);
    return aColours;
}

tLines TextsOf(const std::vector<sShownLine>& aLines)
{
    tLines aTexts;
    for (const sShownLine& oLine : aLines)
        aTexts.push_back(WithoutTimes(oLine.sText));
    return aTexts;
}
} // namespace

TEST(CTOVConsoleListenerTest, WritesToTheStreamOfItsChoice)
{
    const CTempFolder oFolder;
    const std::string sOutput = oFolder.File("output");

    EXPECT_EQ("", RunChild("LogsToAConsole", {"output", sOutput}).sOutput);
    EXPECT_EQ(LOGGED, LinesOf(Piped(ReadWholeFile(sOutput))));

    EXPECT_EQ(LOGGED, LinesOf(Piped(RunChild("LogsToAConsole", {"error", sOutput}).sOutput)));
    EXPECT_EQ("", ReadWholeFile(sOutput));
}

TEST(CTOVConsoleListenerTest, SplitsLinesBetweenItsStreams)
{
    const CTempFolder oFolder;
    const std::string sOutput = oFolder.File("output");

    const tLines aLoud = LinesOf(Piped(RunChild("LogsToAConsole", {"split", sOutput}).sOutput));

    EXPECT_EQ(tLines(LOGGED.begin() + 3, LOGGED.begin() + 6), tLines(aLoud.begin(), aLoud.begin() + 3));
    EXPECT_EQ(tLines(LOGGED.begin() + 7, LOGGED.begin() + 9), tLines(aLoud.begin() + 3, aLoud.end()));
    EXPECT_EQ((tLines{LOGGED[0], LOGGED[1], LOGGED[2], LOGGED[6], LOGGED[9]}), LinesOf(Piped(ReadWholeFile(sOutput))));
}

TEST(CTOVConsoleListenerTest, KeepsTheOrderOfSplitLinesInOnePlace)
{
    EXPECT_EQ(LOGGED, LinesOf(Piped(RunChild("LogsToAConsole", {"split"}).sOutput)));
}

TEST(CTOVConsoleListenerTest, ShowsSeveritiesInColourOnATerminal)
{
    const tLines aColours = {"grey",       "none", "none", "yellow",     "red",
                             "bright red", "grey", "red",  "bright red", "none"};
    const std::vector<sShownLine> aShown = ShownOnTerminal("LogsToAConsole", {"output"});

    EXPECT_EQ(LOGGED, TextsOf(aShown));
    EXPECT_EQ(aColours, ColoursOf(aShown));
}

TEST(CTOVConsoleListenerTest, ShowsNoColourWhereNoneIsWanted)
{
    const std::vector<sShownLine> aShown = ShownOnTerminal("LogsToAConsole", {"output"}, {{"NO_COLOR", "1"}});

    EXPECT_EQ(LOGGED, TextsOf(aShown));
    EXPECT_EQ(tLines(LOGGED.size(), "none"), ColoursOf(aShown));
}

TEST(CTOVConsoleListenerTest, TakesAnEmptyVariableForNone)
{
    const tLines aColours = ColoursOf(ShownOnTerminal("LogsToAConsole", {"error"}, {{"NO_COLOR", ""}}));

    EXPECT_EQ(1, std::count(aColours.begin(), aColours.end(), "yellow"));
}

TOV_CHILD(LogsLongLinesToAConsole)
{
    CTOVConsoleListener oConsole(StreamOf(aArguments));
    oConsole.Register();
    Log(200, std::string(100000, 'x'));
    Log(500, std::string(1000, 'y'));
}

TEST(CTOVConsoleListenerTest, WritesLongLinesWhole)
{
    for (const char* szStream : {"output", "error"})
        EXPECT_TRUE((tLines{Printed("info", std::string(100000, 'x')), Printed("error", std::string(1000, 'y'))}) ==
                    LinesOf(Piped(RunChild("LogsLongLinesToAConsole", {szStream}).sOutput)));
}

TOV_CHILD(LogsToAConsoleFromThreads)
{
    CTOVConsoleListener oConsole(StreamOf(aArguments));
    oConsole.Register();
    LogFromThreads(4, 50, 200);
}

TEST(CTOVConsoleListenerTest, HasAllLinesOfAllThreadsWhole)
{
    for (const char* szStream : {"output", "error"})
    {
        tLines aLines = LinesOf(Piped(RunChild("LogsToAConsoleFromThreads", {szStream}).sOutput));
        std::sort(aLines.begin(), aLines.end());
        EXPECT_EQ(PrintedInfos(TextsOfThreads(4, 50)), aLines) << szStream;
    }
}
