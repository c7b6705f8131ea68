// Internal. Declares the suite of the process classes.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

// Has no cases yet.
class CTOVProcessTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVProcessTest)
};

TOV_TEST_CREATOR(CTOVProcessTest, s_oTestSuiteNames.szProcess)
