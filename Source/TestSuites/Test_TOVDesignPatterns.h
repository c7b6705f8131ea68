// The suite of counted ownership. Internal.
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
