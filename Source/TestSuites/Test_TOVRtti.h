// Internal. Declares the suite of the runtime classes.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

class CTOVRttiTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVRttiTest)

    void TestClass();
    void TestClassServer(); // empty
};

TOV_TEST_CREATOR(CTOVRttiTest, s_oTestSuiteNames.szRtti)
