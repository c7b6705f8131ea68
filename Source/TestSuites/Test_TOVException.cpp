#include <TestSuites/Test_TOVException.h>

// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVExceptionTest, "TOVException Test", "TestSuites\\Test_TOVException", 32)
TOV_TEST_CASES_END
// clang-format on
