// Internal. Declares the suite of counted ownership.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

class CTOVDesignPatternsTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVDesignPatternsTest)

    void TestSmartPointer();
    void TestRef(); // empty
};

TOV_TEST_CREATOR(CTOVDesignPatternsTest, s_oTestSuiteNames.szDesignPatterns)
