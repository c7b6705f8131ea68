#include <TestSuites/Test_TOVException.h>

// Settled: the file name and the lines of the table are given; they are not the places in this source.
// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVExceptionTest, "TOVException Test", "TestSuites\\Test_TOVException", 32)
TOV_TEST_CASES_END
// clang-format on
