// The parts of which a test program is made.
#include "Support/TOVShownTexts.h"
#include "TestHost/HostInstruments.h"

#include <TestHost/TOVCaseOutput.h>
#include <TestHost/TOVConsoleReport.h>
#include <TestHost/TOVTestEventListener.h>
#include <TestHost/TOVTestException.h>
#include <TestHost/TOVTestRecorder.h>
#include <TestHost/TOVTestSelection.h>
#include <TestHost/TOVTestText.h>

#include <Debug/TOVDebug.h>
#include <Debug/TOVException.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestHooks.h>

#include <stdexcept>

using namespace TOVTestHost;

namespace
{
// Writes down what it hears.
class CReportRecorder : public ITOVTestReport
{
public:
    void OnBegin(const sTestRecord& oRecord) override
    {
        m_sHeard += "begin " + std::to_string(CountPlannedCases(oRecord.oPlan)) + ";";
    }
    void OnEnterCase(const sCaseRecord& oCase) override { m_sHeard += oCase.sName + ";"; }
    void OnLeaveCase(const sCaseRecord& oCase) override
    {
        m_sHeard += std::to_string(oCase.eOutcome) + " with " + std::to_string(oCase.aNotes.size()) + ";";
    }
    void OnLeaveSuite(const sSuiteRecord& oSuite) override { m_sHeard += oSuite.oPlace.sDescription + ";"; }
    void OnEnd(const sTestRecord& /*oRecord*/) override { m_sHeard += "end;"; }

    std::string m_sHeard;
};

// Hears no more than it must.
class CIndifferentReport : public ITOVTestReport
{
public:
    void OnEnd(const sTestRecord& /*oRecord*/) override {}
};

const sTestNote s_oFailure = {eNoteFailure, "FailedTest", "file", 1, "text", {}};
} // namespace

TEST(MatchesPatternTest, TakesStarsAndQuestionMarks)
{
    for (const char* szPattern : {"Words.counts", "*", "**", "W*", "*s", "*.*", "Wo?ds.count?", "????????????", "*o*o*",
                                  "*Words.counts*", "W*ds.*ts"})
        EXPECT_TRUE(MatchesPattern("Words.counts", szPattern)) << szPattern;
    for (const char* szPattern : {"", "Words", "words.counts", "?", "*x*", "Words.counts?", "?Words.counts", "*o*o*o*",
                                  "*.", "W*ds", "???????????"})
        EXPECT_FALSE(MatchesPattern("Words.counts", szPattern)) << szPattern;
    EXPECT_TRUE(MatchesPattern("", "*"));
    EXPECT_TRUE(MatchesPattern("", ""));
    EXPECT_TRUE(MatchesPattern("a*b?", "a*b?"));
}

TEST(MatchesPatternTest, IsQuickWithManyStars)
{
    EXPECT_FALSE(MatchesPattern(std::string(2000, 'a'), "a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(HostTextTest, ShortensByCharacters)
{
    EXPECT_EQ("abcdef", Shortened("abcdef", 6));
    EXPECT_EQ("ab...", Shortened("abcdef", 5));
    EXPECT_EQ("\xc3\xa9\xc3\xa9...", Shortened("\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9", 5));
}

TEST(HostTextTest, ShowsWhatControlsATerminalOrHidesTextAsNumbers)
{
    for (const sShownText& oCase : SHOWN_TEXTS)
    {
        EXPECT_EQ(oCase.szShown, OneLine(oCase.szText));
        EXPECT_EQ(oCase.szShown, Markup(oCase.szText));
    }
}

TEST(HostTextTest, LeavesWhatXmlDoesNotKnowReadable)
{
    EXPECT_EQ("\\x00\\x1f \xf0\x9f\x98\x80\xee\x80\x80\xef\xbf\xbd",
              Markup(std::string("\0\x1f \xf0\x9f\x98\x80\xee\x80\x80\xef\xbf\xbd", 13)));
    EXPECT_EQ("\\xef\\xbf\\xbe\\xef\\xbf\\xbf\\xf4\\x90\\x80\\x80\\xf8\\x80",
              Markup("\xef\xbf\xbe\xef\xbf\xbf\xf4\x90\x80\x80\xf8\x80"));
    EXPECT_EQ("\\xe0\\x80\\x80\\xf0\\x80\\x80\\x80", Markup("\xe0\x80\x80\xf0\x80\x80\x80"));
    EXPECT_EQ("\\xc3", Markup("\xc3"));
    EXPECT_EQ("\\xc3x", Markup("\xc3x"));
}

TEST(CTOVTestRecorderTest, TellsReportsInOrder)
{
    CReportRecorder oReport;
    CTOVTestRecorder oRecorder;
    oRecorder.AddReport(oReport);
    oRecorder.OnEnterRun();
    oRecorder.OnEnterSuite({"Suite", "", 0});
    oRecorder.OnEnterCase({"one", "", 0});
    oRecorder.OnNote(s_oFailure);
    oRecorder.OnLeaveCase();
    oRecorder.OnEnterCase({"two", "", 0});
    oRecorder.OnLeaveCase();
    oRecorder.OnLeaveSuite();
    oRecorder.OnLeaveRun();
    oRecorder.Finish();

    EXPECT_EQ("begin 0;Suite.one;1 with 1;Suite.two;0 with 0;Suite;end;", oReport.m_sHeard);
}

TEST(CTOVTestRecorderTest, GivesNotesBeforeACaseToIt)
{
    CReportRecorder oReport;
    CTOVTestRecorder oRecorder;
    oRecorder.AddReport(oReport);
    oRecorder.OnEnterSuite({"Suite", "", 0});
    oRecorder.OnNote(s_oFailure);
    oRecorder.OnEnterCase({"one", "", 0});
    oRecorder.OnLeaveCase();
    oRecorder.OnNote(s_oFailure);
    oRecorder.OnCloseCase();

    EXPECT_EQ("Suite.one;1 with 2;", oReport.m_sHeard);
}

TEST(CTOVTestRecorderTest, KeepsAMillionCharactersOfWhatACaseWrites)
{
    const std::string sHalf(600000, 'h');
    CIndifferentReport oReport;
    CTOVTestRecorder oRecorder;
    oRecorder.AddReport(oReport);
    oRecorder.OnEnterRun();
    oRecorder.OnEnterSuite({"Suite", "", 0});
    oRecorder.OnEnterCase({"one", "", 0});
    for (int nTime = 0; nTime < 3; ++nTime)
        oRecorder.OnOutput(eStreamOutput, sHalf);
    oRecorder.OnOutput(eStreamErrors, "short");
    oRecorder.Finish();

    const sCaseRecord& oCase = oRecorder.GetRecord().aSuites.at(0).aCases.at(0);
    EXPECT_EQ(std::string(1000000, 'h') + "\n[the rest is left out]\n", oCase.sOutput);
    EXPECT_EQ("short", oCase.sErrors);
}

TEST(CTOVTestRecorderTest, GivesWhatIsWrittenBeforeTheFirstCaseToIt)
{
    CTOVTestRecorder oRecorder;
    oRecorder.OnOutput(eStreamOutput, "of nobody");
    oRecorder.OnEnterSuite({"Suite", "", 0});
    oRecorder.OnOutput(eStreamOutput, "output");
    oRecorder.OnOutput(eStreamErrors, "errors");
    oRecorder.OnEnterCase({"one", "", 0});

    const sCaseRecord& oCase = oRecorder.GetRecord().aSuites.at(0).aCases.at(0);
    EXPECT_EQ("output", oCase.sOutput);
    EXPECT_EQ("errors", oCase.sErrors);
}

TEST(CTOVTestRecorderTest, NamesTheEndAfterTheLastCase)
{
    CTOVTestRecorder oRecorder;
    oRecorder.OnPlan({{{{"A", "", 0}, {{"a", "", 0}}}}, 1});
    oRecorder.OnEnterRun();
    oRecorder.OnEnterSuite({"A", "", 0});
    oRecorder.OnEnterCase({"a", "", 0});
    oRecorder.OnLeaveCase();
    oRecorder.OnCloseCase();
    oRecorder.OnEndEarly("crashed");

    EXPECT_EQ("A.<outside of the cases> crashed", oRecorder.GetRecord().sEarlyEnd);
}

TEST(sTestPositionTest, IsARunASuiteAndACase)
{
    const sTestPosition oPosition = {1, 2, 3};
    EXPECT_TRUE(oPosition == (sTestPosition{1, 2, 3}));
    EXPECT_FALSE(oPosition == (sTestPosition{0, 2, 3}));
    EXPECT_FALSE(oPosition == (sTestPosition{1, 0, 3}));
    EXPECT_FALSE(oPosition == (sTestPosition{1, 2, 0}));
}

// A suite that nobody can make, for want of memory.
TEST(CTOVTestSelectionTest, LeavesOutASuiteThatIsNotMade)
{
    class CNoSuite : public TOVTest::ITOVTestSuiteCreator
    {
    public:
        TOVTest::CTOVTestSuite* New() override { return nullptr; }
    };
    CNoSuite oCreator;
    GetCreatorMapDirect()["No suite"] = &oCreator;
    {
        CTOVTestRecorder oRecorder;
        CTOVTestSelection oSelection;
        sTestChoice oChoice = {};
        oChoice.lRuns = 1;
        oChoice.bAll = true;
        for (const sPlannedSuite& oSuite : oSelection.Choose(oChoice, oRecorder).aSuites)
            EXPECT_NE("No suite", oSuite.oPlace.sDescription);
    }
    GetCreatorMapDirect().erase("No suite");
}

TEST(CTOVConsoleReportTest, CountsCasesWithoutAPlan)
{
    testing::internal::CaptureStdout();
    {
        CTOVConsoleReport oReport(stdout, true, false);
        sCaseRecord oCase = {};
        oCase.sName = "Suite.one";
        oReport.OnEnterCase(oCase);
    }
    EXPECT_TRUE(Contains(testing::internal::GetCapturedStdout(), "[1] Suite.one"));
}

TEST(CTOVCaseOutputTest, EndsNoLineThatNobodyBegan)
{
    CTOVCaseOutput oOutput;
    oOutput.Print(stdout, "");
    EXPECT_FALSE(oOutput.IsInLine());
}

TEST(CTOVTestRecorderTest, EndsARunThatCannotBeContinued)
{
    CTOVTestRecorder oRecorder;
    oRecorder.KeepGoing();
    oRecorder.OnPlan({{{{"A", "", 0}, {{"a", "", 0}, {"b", "", 0}}}}, 1});
    oRecorder.OnEnterRun();
    oRecorder.OnEnterSuite({"A", "", 0});
    oRecorder.OnEnterCase({"a", "", 0});
    oRecorder.OnEndEarly("crashed");
    ASSERT_TRUE(oRecorder.CanContinue());

    oRecorder.StopKeepingGoing("cannot start again");

    EXPECT_FALSE(oRecorder.CanContinue());
    EXPECT_EQ("A.a cannot start again", oRecorder.GetRecord().sEarlyEnd);
}

TEST(CTOVTestRecorderTest, KnowsByThePlanWhatWasNotRun)
{
    CTOVTestRecorder oRecorder;
    oRecorder.OnPlan({{{{"A", "", 0}, {{"a", "", 0}, {"b", "", 0}}}, {{"B", "", 0}, {{"c", "", 0}}}}, 2});
    oRecorder.OnEnterRun();
    oRecorder.OnEnterSuite({"A", "", 0});
    oRecorder.OnEnterCase({"a", "", 0});
    oRecorder.OnEndEarly("stopped");
    oRecorder.Finish();

    const sTestCounts oCounts = CountCases(oRecorder.GetRecord());
    EXPECT_EQ(6, oCounts.lCases);
    EXPECT_EQ(1, oCounts.lEnded);
    EXPECT_EQ(5, oCounts.lNotRun);
    EXPECT_EQ("A.a stopped", oRecorder.GetRecord().sEarlyEnd);
}

TEST(CTOVTestEventListenerTest, TakesMissingTextsAsEmptyOnes)
{
    CTOVTestRecorder oRecorder;
    CTOVTestEventListener oListener(oRecorder);
    oRecorder.OnEnterSuite({"Suite", "", 0});
    oRecorder.OnEnterCase({"one", "", 0});
    oListener.FailedTest(nullptr, 3, nullptr);
    oListener.FailedAssertEquals(nullptr, 0, nullptr, nullptr, nullptr, nullptr);

    const std::vector<sTestNote>& aNotes = oRecorder.GetRecord().aSuites[0].aCases[0].aNotes;
    ASSERT_EQ(2u, aNotes.size());
    EXPECT_EQ("", aNotes[0].sMessage);
    EXPECT_EQ(" == ", aNotes[1].sMessage);
}

// What a check that expects no exception shows of one.
static std::string ThrownBy(const std::function<void()>& fnThrow)
{
    const CTOVCheckListener oChecks;
    CTOVTestRecorder oRecorder;
    CTOVTestEventListener oListener(oRecorder, &oChecks);
    oRecorder.OnEnterSuite({"Suite", "", 0});
    oRecorder.OnEnterCase({"one", "", 0});
    try
    {
        fnThrow();
    }
    catch (...)
    {
        oListener.FailedAssertThrowsNot("file", 1, "x");
    }
    return oRecorder.GetRecord().aSuites[0].aCases[0].aNotes.at(0).aValues.at(0).second;
}

TEST(CTOVCheckListenerTest, KeepsTheLastFailedCheckAlone)
{
    CTOVCheckListener oChecks;
    oChecks.OnAssert("File.cpp", 12, "x > 0");
    oChecks.SetApplicationName("application");
    TOVDebug::_Log("File.cpp", 13, 0x1, eSeverityError, "a line");

    EXPECT_EQ("x > 0 (File.cpp:12)", oChecks.GetLastCheck());
    EXPECT_EQ("", DescribeHandledException(&oChecks)) << "nothing is handled";
}

TEST(CTOVTestEventListenerTest, ShowsWhatWasThrown)
{
    EXPECT_EQ("an exception: no such city", ThrownBy([] { throw std::runtime_error("no such city"); }));
    EXPECT_EQ("an exception: exception of class 5, code 0x12",
              ThrownBy([] { throw CTOVException(CTOVException::eClassFile, 0x12); }));
    EXPECT_EQ(0u, ThrownBy([] { TOV_ASSERT(1 > 2); }).find("an exception: failed check 1 > 2 ("));
    EXPECT_EQ("an exception", ThrownBy([] { throw 1; }));
}
