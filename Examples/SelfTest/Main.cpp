// tovwords counts the words of a text, and carries its own tests, so that it can be checked where it is installed.
//
//   tovwords TEXT
//   tovwords --self-test       runs the program's own suite
//   tovwords --test-library    runs the suites of the library, one case of which fails by design
//
// Exit status: 0 done, 1 a test has failed or the result cannot be written, 2 wrong usage.
#include <TOVString/TOVStringA.h>
#include <Test/TOVCountingTracker.h>
#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestCase.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestHost.h>
#include <Test/TOVTestSuiteDefinition.h>
#include <Test/TOVTestSuiteFactory.h>
#include <Text/TOVStandardOutput.h>

#include <cstdio>

TOV_TEST_HOST

namespace
{
int CountWords(const CTOVStringA& oText)
{
    CTOVArray<CTOVStringA> aParts;
    oText.Split(aParts, ' ');
    int nWords = 0;
    for (const CTOVStringA& oPart : aParts)
        nWords += oPart.IsEmpty() ? 0 : 1;
    return nWords;
}

// Nobody registers this suite, so that only this program's runner finds it.
class CWordsTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CWordsTest)
    void CountsWords() { TOV_TEST_EQUALS(CountWords("three short words"), 3); }
    void IgnoresSpaces() { TOV_TEST_EQUALS(CountWords("  two   words "), 2); }
    void KnowsTheEmptyText() { TOV_TEST_EQUALS(CountWords(""), 0); }
};

// clang-format off
TOV_TEST_CASES_BEGIN(CWordsTest, "Words")
    TOV_TEST_CASE("counts words", CountsWords)
    TOV_TEST_CASE("ignores spaces", IgnoresSpaces)
    TOV_TEST_CASE("knows the empty text", KnowsTheEmptyText)
TOV_TEST_CASES_END
// clang-format on

// Prints each case with its result, and before it what has failed.
class CReport : public TOVTest::CTOVTestListener
{
public:
    void LeaveTestCase(const TOVTest::CTOVTestCase& oCase) override
    {
        std::printf("%s %s\n", TOVTest::CTOVTestTracker::Instance().HasTestFailed() ? "FAILED" : "passed",
                    oCase.GetDescription());
    }
    void FailedAssertEquals(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                            const char* szActualValue, const char* szExpectedValue) override
    {
        std::printf("%s(%ld): %s is %s, not %s = %s\n", szFile, lLine, szExpression, szActualValue, szExpected,
                    szExpectedValue);
    }
};

// Runs the cases of one suite, and returns how many have failed.
long RunSuite(TOVTest::CTOVTestSuite& oSuite)
{
    CReport oReport;
    TOVTest::CTOVCountingTracker oCounter;
    oCounter.SetListener(&oReport);
    TOVTest::CTOVTestListener::SetListener(&oCounter);
    TOVTest::CTOVTestTracker::SetTracker(&oCounter);

    oCounter.EnterSuite(oSuite);
    for (long i = 0; i < oSuite.GetNumTestCases(); ++i)
    {
        const TOVTest::CTOVTestCase& oCase = oSuite.GetTestCase(i);
        oCounter.EnterTestCase(oCase);
        oSuite.Startup();
        oCase.Run();
        oSuite.Closedown();
        oCounter.LeaveTestCase(oCase);
    }
    oCounter.LeaveSuite(oSuite);
    TOVTest::CTOVTestListener::SetListener(nullptr);
    TOVTest::CTOVTestTracker::SetTracker(nullptr);
    std::printf("%ld cases, %ld failed\n", oSuite.GetNumTestCases(), oCounter.GetNumFailedSuiteTests());
    return oCounter.GetNumFailedSuiteTests();
}

// Does the same for all suites that are registered.
long RunRegistered()
{
    CReport oReport;
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oReport);
    const int nFailed = oRunner.Run();
    std::printf("%ld suites, %d cases failed\n", TOVTest::CTOVTestSuiteFactory::GetNumSuites(), nFailed);
    return nFailed;
}

// Does what the argument asks for, and returns the exit status.
int Do(const CTOVStringA& oText)
{
    if (oText.Compare("--self-test") == 0)
    {
        CWordsTest oSuite;
        return RunSuite(oSuite) == 0 ? 0 : 1;
    }
    if (oText.Compare("--test-library") == 0)
        return RunRegistered() == 0 ? 0 : 1;
    std::printf("%d words\n", CountWords(oText));
    return 0;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 2)
    {
        std::fputs("usage: tovwords TEXT | --self-test | --test-library\n", stderr);
        return 2;
    }
    return TOVShownText::FinishProgram("tovwords", Do(aszArguments[1]));
}
