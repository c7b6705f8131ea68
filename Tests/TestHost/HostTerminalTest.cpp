// What is seen on a terminal.
#include "TestHost/HostInstruments.h"

#include <TOVPlatform/TOVSynchronization.h>

namespace
{
namespace Event = TOVPlatform::TOVSynchronization::Event;

// Opens the gate at which the second case of SuitesWaiting waits.
class HostTerminalTest : public testing::Test
{
protected:
    HostTerminalTest()
    {
        // The folder is this test's own, and so is the name.
        const std::string sFolder = m_oFolder.Path();
        m_sGate = "TOVTestGate" + sFolder.substr(sFolder.find_last_of("\\/") + 1);
        m_hGate = Event::Create(true, false, m_sGate.c_str());
    }

    ~HostTerminalTest() override { Event::Destroy(m_hGate); }

    // tovtest with these options and SuitesWaiting, which waits at the gate.
    sProgram Waiting(const std::vector<std::string>& aOptions) const
    {
        std::vector<std::string> aArguments = {PathOfSuites("SuitesWaiting")};
        aArguments.insert(aArguments.end(), aOptions.begin(), aOptions.end());
        sProgram oProgram = HostProgram(aArguments);
        oProgram.aVariables["TOV_TEST_GATE"] = m_sGate;
        return oProgram;
    }

    sTerminalRun Run(const std::string& sText, const std::vector<std::string>& aOptions = {})
    {
        return RunOnTerminal(Waiting(aOptions), sText, [this](CTerminal&) { OpenGate(); });
    }

    void OpenGate() { Event::Signal(m_hGate); }

    // The colours of the lines at the end, by the first words of each.
    static std::map<std::string, std::string> ColoursOf(const sProgram& oProgram)
    {
        CTerminal oTerminal(oProgram);
        oTerminal.WaitForEnd();
        std::map<std::string, std::string> aColours;
        for (const sShownLine& oLine : oTerminal.ScreenInColours())
            aColours[oLine.sText.substr(0, oLine.sText.find_first_of("(:"))] = oLine.sColour;
        return aColours;
    }

    static tLines WithoutTimesOf(const tLines& aScreen)
    {
        tLines aLines;
        for (const std::string& sLine : aScreen)
            aLines.push_back(WithoutTimes(sLine));
        return aLines;
    }

private:
    CTempFolder m_oFolder;
    std::string m_sGate;
    unsigned long long m_hGate;
};
} // namespace

TEST_F(HostTerminalTest, ShowsTheCaseThatRunsOnALineThatFits)
{
    const sTerminalRun oRun = Run("than the window of th...");

    EXPECT_EQ((tLines{"[2/3] Waiting.waits, and has a name that is far longer than the window of th..."}),
              oRun.aDuring);
    EXPECT_EQ(79u, oRun.aDuring.empty() ? 0 : oRun.aDuring[0].size());
}

TEST_F(HostTerminalTest, TakesTheLineOfProgressAwayAtTheEnd)
{
    const sTerminalRun oRun = Run("[2/3] ");

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ((tLines{"ok     Waiting: 3 cases (TIME)", "1 suite, 3 cases: 3 passed (TIME)"}),
              WithoutTimesOf(oRun.aAfter));
}

TEST_F(HostTerminalTest, CountsTheCasesOfAllRuns)
{
    const sTerminalRun oRun = Run("[2/6] ", {"--repeat", "2"});

    EXPECT_EQ(0, oRun.nExitCode);
    ASSERT_EQ(2u, oRun.aDuring.size()) << testing::PrintToString(oRun.aDuring);
    EXPECT_EQ("Run 1 of 2", oRun.aDuring[0]);
}

TEST_F(HostTerminalTest, ReportsWhatRanWhenTheUserInterrupts)
{
    const sTerminalRun oRun = RunOnTerminal(Waiting({"--tap"}), "ok 1 - Waiting.before",
                                            [](CTerminal& oTerminal) { oTerminal.PressInterruptKeys(); });

    EXPECT_EQ(3, oRun.nExitCode);
    ASSERT_FALSE(oRun.aAfter.empty());
    EXPECT_EQ("Bail out! Waiting.waits, and has a name that is far longer than the window of the terminal is wide was "
              "interrupted",
              oRun.aAfter.back());
}

TEST_F(HostTerminalTest, ShowsNoProgressBetweenTheLinesOfAProtocol)
{
    const sTerminalRun oRun = Run("ok 1 - Waiting.before", {"--tap"});

    EXPECT_EQ((tLines{"TAP version 13", "1..3", "ok 1 - Waiting.before"}), oRun.aDuring);
}

TEST_F(HostTerminalTest, ShortensTheLineForANarrowWindow)
{
    CTerminal oTerminal(Waiting({}), 40);

    EXPECT_TRUE(oTerminal.WaitUntilItShows("[2/3] Waiting.waits, and has a name ..."));
    EXPECT_EQ(1u, oTerminal.Screen().size());
    OpenGate();
    EXPECT_EQ(0, oTerminal.WaitForEnd());
    EXPECT_EQ((tLines{"ok     Waiting: 3 cases (TIME)", "1 suite, 3 cases: 3 passed (TIME)"}),
              WithoutTimesOf(oTerminal.Screen()));
}

TEST_F(HostTerminalTest, ShowsWhatACaseWritesOnLinesOfItsOwn)
{
    CTerminal oTerminal(HostProgram({PathOfSuites("SuitesPrinting"), "--filter", "Printing", "--exclude", "*.markup"}));
    EXPECT_EQ(0, oTerminal.WaitForEnd());

    EXPECT_EQ((tLines{"startup", "half a line", "startup", "an error", "startup", "by a stream", "startup",
                      "ok     Printing: 4 cases (TIME)", "1 suite, 4 cases: 4 passed (TIME)"}),
              WithoutTimesOf(oTerminal.Screen()));
}

TEST_F(HostTerminalTest, HasColoursForWhatIsNotGood)
{
    auto aColours = ColoursOf(HostProgram({PathOfSuites("SuitesFailing"), "--verbose", "--filter", "Failing*"}));
    EXPECT_EQ("none", aColours["ok     Failing.passes "]);
    EXPECT_EQ("red", aColours["FAILED Failing.boolean "]);
    EXPECT_EQ("red", aColours["1 suite, 8 cases"]);

    aColours = ColoursOf(HostProgram({PathOfSuites("SuitesEnding"), "--filter", "Abort"}));
    EXPECT_EQ("bright red", aColours["ENDED  Abort.ends "]);
    EXPECT_EQ("bright red", aColours["The run ended early"]);

    aColours = ColoursOf(HostProgram({PathOfSuites("SuitesPassing"), "--filter", "*.adds"}));
    EXPECT_EQ("yellow", aColours["ok     Numbers.adds "]);
}

TEST_F(HostTerminalTest, HasNoColoursForWhoWantsNone)
{
    sProgram oProgram = HostProgram({PathOfSuites("SuitesFailing"), "--filter", "*.boolean"});
    oProgram.aVariables["NO_COLOR"] = "1";

    EXPECT_EQ("none", ColoursOf(oProgram)["FAILED Failing.boolean "]);
}
