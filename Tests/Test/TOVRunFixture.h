// A main program whose suites a test puts together.
#pragma once

#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVTestTracker.h>

#include <list>

class CRunFixture : public testing::Test
{
protected:
    // The counter of the process stays in force behind a run, but no listener of a test.
    ~CRunFixture() override { TOVTest::CTOVTestTracker::SetTracker(nullptr); }

    // Suites run in the order of their adding.
    CFunctionSuite& AddSuite(const char* szDescription, const std::vector<CFunctionSuite::tFunction>& aCases)
    {
        m_aCreators.emplace_back(CFunctionSuite(szDescription, aCases));
        AddCreator(&m_aCreators.back());
        return m_aCreators.back().m_oPattern;
    }

    // A suite with so many cases, each with two failed checks.
    void AddFailingSuite(std::size_t nCases)
    {
        const auto fnFail = [] {
            TOVTest::CTOVTestListener::Instance().FailedAssert("a.cpp", 1, "x");
            TOVTest::CTOVTestListener::Instance().FailedAssert("a.cpp", 2, "y");
        };
        AddSuite("failing", std::vector<CFunctionSuite::tFunction>(nCases, fnFail));
    }

    void AddCreator(TOVTest::ITOVTestSuiteCreator* pCreator)
    {
        TOVTest::CTOVTestSuiteFactory::Register(NameOf(m_nCreators++), pCreator);
    }

    const char* NameOf(std::size_t nIndex) const { return m_szNames + nIndex; }

    CControlledHost m_oHost;
    CEventRecorder m_oRecorder;

private:
    std::list<CCopyCreator> m_aCreators;
    std::size_t m_nCreators = 0;
    char m_szNames[16] = "";
};
