// The main program's exports, in the hands of each test.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuiteFactory.h>

// While it lives, this program's map of creators and its listeners are the ones in here, and empty at first. Outside of
// its life the program has a map of its own, which holds what libraries registered when they were loaded.
class CControlledHost
{
public:
    CControlledHost();
    ~CControlledHost();
    CControlledHost(const CControlledHost&) = delete;
    CControlledHost& operator=(const CControlledHost&) = delete;

    TOVTest::tCreatorMap m_aCreators;
    TOVTest::CTOVTestListener m_oNull;
    TOVTest::CTOVTestListener* m_pListener;
    TOVTest::CTOVTestListener* m_pLastSet; // as it was given

    // How often each of the exported functions was called.
    int m_nMapCalls = 0;
    int m_nNullCalls = 0;
    int m_nListenerCalls = 0;
    int m_nSetListenerCalls = 0;

private:
    CControlledHost* m_pFormer;
};
