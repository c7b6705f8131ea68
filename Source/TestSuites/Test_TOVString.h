// Internal. Declares the suite of the strings.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

class CTOVStringTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVStringTest)

    void TestStringA();
    void TestStringW();
    void TestPath(); // empty
};

TOV_TEST_CREATOR(CTOVStringTest, s_oTestSuiteNames.szString)
