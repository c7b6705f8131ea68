// A suite that passes, in a library that calls abort() when the process ends.
#include <Test/TOVTestSuiteDefinition.h>

#include <cstdlib>

class CLateTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CLateTest)
    void Passes() { std::atexit(&std::abort); }
};

// clang-format off
TOV_TEST_CASES_BEGIN(CLateTest, "Late")
    TOV_TEST_CASE("passes", Passes)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CLateTest)
