#include <TestSuites/Test_TOVProcess.h>

// Settled: the file name and the lines of the table are given; they are not the places in this source.
// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVProcessTest, "TOVProcess Test", "TestSuites\\Test_TOVProcess", 32)
TOV_TEST_CASES_END
// clang-format on
