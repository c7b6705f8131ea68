#include <TestSuites/Test_TOVDebug.h>

// clang-format off
TOV_TEST_CASES_BEGIN_AT(CTOVDebugTest, "TOVDebug Test", "TestSuites\\Test_TOVDebug", 32)
TOV_TEST_CASES_END
// clang-format on
