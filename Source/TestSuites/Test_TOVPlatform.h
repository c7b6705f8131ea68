// Internal. Declares the suites of the platform layer's memory and text functions.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>
#include <TestSuites/Test_TOVPlatformString.h>

class CTOVPlatformMemoryApiTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVPlatformMemoryApiTest)

    void TestAllocAndFree();
    void TestZeroAndSet();
    void TestCompareAndFastCompare();
    void TestCopyAndMove();
};

class CTOVPlatformAsciiStringApiTest : public CTOVPlatformStringCases<char>
{
    TOV_TEST_SUITE(CTOVPlatformAsciiStringApiTest)
};

class CTOVPlatformUnicodeStringApiTest : public CTOVPlatformStringCases<wchar_t>
{
    TOV_TEST_SUITE(CTOVPlatformUnicodeStringApiTest)
};

class CTOVPlatformCharApiTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVPlatformCharApiTest)

    void TestTodo(); // only reports a warning
};

TOV_TEST_CREATOR(CTOVPlatformMemoryApiTest, s_oTestSuiteNames.szPlatformMemoryApi)
TOV_TEST_CREATOR(CTOVPlatformAsciiStringApiTest, s_oTestSuiteNames.szPlatformAsciiStringApi)
TOV_TEST_CREATOR(CTOVPlatformUnicodeStringApiTest, s_oTestSuiteNames.szPlatformUnicodeStringApi)
TOV_TEST_CREATOR(CTOVPlatformCharApiTest, s_oTestSuiteNames.szPlatformCharApi)
