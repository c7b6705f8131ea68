// Internal. Declares the suite of the diagnostics.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

// Has no cases yet.
class CTOVDebugTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVDebugTest)
};

TOV_TEST_CREATOR(CTOVDebugTest, s_oTestSuiteNames.szDebug)
