// Internal. Declares the suite of the containers.
#pragma once

#include <Test/TOVTestSuiteDefinition.h>
#include <TestSuites/TOVTestSuiteNames.h>

class CTOVContainersTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CTOVContainersTest)

    void TestQueue(); // constructs and destroys a queue
    void TestStack();
    void TestBitArray();
    void TestArray();
    void TestBuffer();
    void TestRingBuffer();
    void TestSafeQueue();
};

TOV_TEST_CREATOR(CTOVContainersTest, s_oTestSuiteNames.szContainers)
