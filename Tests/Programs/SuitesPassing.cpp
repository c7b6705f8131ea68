// Suites whose cases all pass, some of them with a warning or with output.
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

#include <cstdio>

class CWordsTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CWordsTest)
    void Counts() { TOV_TEST_EQUALS(1 + 1, 2); }
    void Joins() { TOV_TEST_CHECK(true); }
};

class CNumbersTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CNumbersTest)
    void Adds() { TOV_TEST_WARNING("adds slowly"); }
    void Prints()
    {
        std::printf("printed by a case\n");
        std::fflush(stdout);
    }
};

class CNothingTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CNothingTest)
};

// clang-format off
TOV_TEST_CASES_BEGIN(CWordsTest, "Words")
    TOV_TEST_CASE("counts", Counts)
    TOV_TEST_CASE("joins", Joins)
TOV_TEST_CASES_END
TOV_TEST_CASES_BEGIN(CNumbersTest, "Numbers")
    TOV_TEST_CASE("adds", Adds)
    TOV_TEST_CASE("prints", Prints)
TOV_TEST_CASES_END
TOV_TEST_CASES_BEGIN(CNothingTest, "Nothing")
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CNothingTest)
TOV_REGISTER_TEST_SUITE(CNumbersTest)
TOV_REGISTER_TEST_SUITE(CWordsTest)
