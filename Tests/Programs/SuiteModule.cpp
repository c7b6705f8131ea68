// A library of test suites, which brings them by being loaded and does nothing else.
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

class CModuleFirstTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CModuleFirstTest)
    void Passes() { TOV_TEST_EQUALS(1 + 1, 2); }
    void Fails() { TOV_TEST_EQUALS(1 + 1, 3); }
};

// clang-format off
TOV_TEST_CASES_BEGIN(CModuleFirstTest, "First of the module")
    TOV_TEST_CASE("passes", Passes)
    TOV_TEST_CASE("fails", Fails)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CModuleFirstTest)

class CModuleSecondTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CModuleSecondTest)
};

// clang-format off
TOV_TEST_CASES_BEGIN(CModuleSecondTest, "Second of the module")
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CModuleSecondTest)
