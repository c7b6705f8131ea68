// Internal. Declares the suite of the exceptions.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

// Has no cases yet.
class CTOVExceptionTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVExceptionTest)
};

TOV_TEST_CREATOR(CTOVExceptionTest, s_oTestSuiteNames.szException)
