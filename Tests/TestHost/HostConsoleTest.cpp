// What a run looks like.
#include "TestHost/HostInstruments.h"

TEST(HostConsoleTest, ShowsASuiteOnALineAndWhatTheCasesSay)
{
    EXPECT_EQ("ok     Words: 2 cases (TIME)\n"
              "ok     Numbers.adds (TIME)\n"
              "       Tests/Programs/SuitesPassing.cpp:17: warning: adds slowly\n"
              "printed by a case\n"
              "ok     Numbers: 2 cases, 1 warning (TIME)\n"
              "ok     Nothing: 0 cases (TIME)\n"
              "\n"
              "3 suites, 4 cases: 4 passed, 1 warning (TIME)\n",
              RunSuites("SuitesPassing").sOutput);
}

TEST(HostConsoleTest, ShowsEveryCaseWhenAsked)
{
    EXPECT_EQ("ok     Words.counts (TIME)\n"
              "ok     Words.joins (TIME)\n"
              "ok     Words: 2 cases (TIME)\n"
              "\n"
              "1 suite, 2 cases: 2 passed (TIME)\n",
              RunSuites("SuitesPassing", {"--verbose", "--filter", "Words"}).sOutput);
}

TEST(HostConsoleTest, ShowsExpressionsAndBothValuesOfFailedChecks)
{
    const std::string sFile = "       Tests/Programs/SuitesFailing.cpp:";
    const std::string sOutput = RunSuites("SuitesFailing").sOutput;

    EXPECT_TRUE(Contains(sOutput, "FAILED Failing.boolean (TIME)\n" + sFile +
                                      "11: 1 > 2\n"
                                      "FAILED Failing.equality (TIME)\n" +
                                      sFile +
                                      "14: 1 + 1 == 3\n"
                                      "           actual:   2\n"
                                      "           expected: 3\n" +
                                      sFile +
                                      "15: 'a' == '\\n'\n"
                                      "           actual:   'a'\n"
                                      "           expected: '\\n'\n"
                                      "FAILED Failing.delta (TIME)\n" +
                                      sFile +
                                      "17: 1.5 within 0.25 of 2.0\n"
                                      "           actual:   1.5000\n"
                                      "           expected: 2.0000\n"
                                      "           delta:    0.2500\n"
                                      "FAILED Failing.difference (TIME)\n" +
                                      sFile +
                                      "18: 7 != 7\n"
                                      "           both: 7\n"
                                      "FAILED Failing.order (TIME)\n" +
                                      sFile +
                                      "19: 5 < 4\n"
                                      "           actual: 5\n"
                                      "           limit:  4\n"))
        << sOutput;
}

TEST(HostConsoleTest, ShowsWhatWasThrownAndWhatWasSaidByHand)
{
    const std::string sFile = "       Tests/Programs/SuitesFailing.cpp:";
    const std::string sOutput = RunSuites("SuitesFailing").sOutput;

    EXPECT_TRUE(Contains(sOutput, "FAILED Failing.throwing (TIME)\n" + sFile +
                                      "22: ++m_nCalls throws ...\n"
                                      "           thrown: nothing\n" +
                                      sFile +
                                      "23: throw std::runtime_error(\"other\") throws std::logic_error\n"
                                      "           thrown: another exception: other\n" +
                                      sFile +
                                      "24: throw 1 throws nothing\n"
                                      "           thrown: an exception\n"
                                      "FAILED Failing.by hand (TIME)\n" +
                                      sFile + "28: warning: warned too\n" + sFile +
                                      "29: failed by hand\n"
                                      "FAILED Failing: 8 cases, 7 failed, 1 warning (TIME)\n"))
        << sOutput;
}

TEST(HostConsoleTest, EscapesWhatDoesNotPrint)
{
    const std::string sOutput = RunSuites("SuitesFailing", {"--filter", "Trial*"}).sOutput;

    EXPECT_TRUE(Contains(sOutput, "FAILED Trial <\"&'>\\x01.control (TIME)\n"));
    EXPECT_TRUE(Contains(sOutput, ": bell \\x07, tab \\t, line\\nend, return \\r, delete \\x7f\n"));
    EXPECT_TRUE(Contains(sOutput, ": caf\xc3\xa9, cut \\xe2\\x82, lone \\xff, overlong \\xc0\\x80, "
                                  "surrogate \\xed\\xa0\\x80\n"))
        << sOutput;
}

TEST(HostConsoleTest, CountsChecksAroundACaseAsTheCases)
{
    const std::string sFile = "       Tests/Programs/SuitesFailing.cpp:";

    EXPECT_EQ("FAILED Around.second (TIME)\n" + sFile +
                  "51: s_nCase++ != 1\n"
                  "FAILED Around.third (TIME)\n" +
                  sFile +
                  "52: s_nCase != 3\n"
                  "FAILED Around: 3 cases, 2 failed (TIME)\n"
                  "\n"
                  "Failed: Around.second\n"
                  "Failed: Around.third\n"
                  "1 suite, 3 cases: 1 passed, 2 failed (TIME)\n",
              RunSuites("SuitesFailing", {"--filter", "Around"}).sOutput);
}
