// A suite whose cases write to the standard streams.
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

class CPrintingTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CPrintingTest)
    void Startup() override { std::printf("startup\n"); }
    void HalfALine() { std::printf("half a line"); }
    void Errors() { std::fprintf(stderr, "an error\n"); }
    void Stream() { std::cout << "by a stream\n"; }
    void Markup() { std::printf("<b>&amp;</b> \x01\xff ]]>\n\nend\n"); }
    void Nothing() {}
};

class CLastWordsTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CLastWordsTest)
    void Crashes()
    {
        std::printf("last words\n");
        std::abort();
    }
};

// clang-format off
TOV_TEST_CASES_BEGIN(CPrintingTest, "Printing")
    TOV_TEST_CASE("half", HalfALine)
    TOV_TEST_CASE("errors", Errors)
    TOV_TEST_CASE("stream", Stream)
    TOV_TEST_CASE("markup", Markup)
    TOV_TEST_CASE("nothing", Nothing)
TOV_TEST_CASES_END
TOV_TEST_CASES_BEGIN(CLastWordsTest, "Last words")
    TOV_TEST_CASE("crashes", Crashes)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CPrintingTest)
TOV_REGISTER_TEST_SUITE(CLastWordsTest)
