// The suite of the containers. Internal.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

class CTOVContainersTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVContainersTest)

    void TestQueue(); // makes one and lets it go
    void TestStack();
    void TestBitArray();
    void TestArray();
    void TestBuffer();
    void TestRingBuffer();
    void TestSafeQueue();
};

TOV_TEST_CREATOR(CTOVContainersTest, s_oTestSuiteNames.szContainers)
