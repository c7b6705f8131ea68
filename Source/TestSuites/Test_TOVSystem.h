// Internal. Declares the suite of the base types and the macros.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

class CTOVSystemTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVSystemTest)

    // TestTypes and TestBitMacros compare when they are compiled, and do nothing when they run.
    void TestTypes();
    void TestMacros();
    void TestBitMacros();
};

TOV_TEST_CREATOR(CTOVSystemTest, s_oTestSuiteNames.szSystem)
