#include <TestSuites/Test_TOVProcess.h>

// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVProcessTest, "TOVProcess Test", "TestSuites\\Test_TOVProcess", 32)
TOV_TEST_CASES_END
// clang-format on
