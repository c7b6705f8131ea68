// What the tests of the test framework share.
#pragma once

#include <Test/TOVTestCase.h>
#include <Test/TOVTestListener.h>
#include <Test/TOVTestSuite.h>
#include <Test/TOVTestSuiteFactory.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

typedef std::vector<std::string> tTexts;

// Remembers each event as a line of text: its name, then the arguments. Something can be done in each of them.
class CEventRecorder : public TOVTest::CTOVTestListener
{
public:
    void EnterEnvironment() override { Remember("EnterEnvironment"); }
    void LeaveEnvironment() override { Remember("LeaveEnvironment"); }
    void EnterSuite(const TOVTest::CTOVTestSuite& oSuite) override { Remember("EnterSuite", oSuite.GetDescription()); }
    void LeaveSuite(const TOVTest::CTOVTestSuite& oSuite) override { Remember("LeaveSuite", oSuite.GetDescription()); }

    void EnterTestCase(const TOVTest::CTOVTestCase& oTestCase) override
    {
        Remember("EnterTestCase", oTestCase.GetDescription());
    }

    void LeaveTestCase(const TOVTest::CTOVTestCase& oTestCase) override
    {
        Remember("LeaveTestCase", oTestCase.GetDescription());
    }

    void Warning(const char* szFile, long lLine, const char* szMessage) override
    {
        Remember("Warning", szFile, lLine, szMessage);
    }

    void FailedTest(const char* szFile, long lLine, const char* szMessage) override
    {
        Remember("FailedTest", szFile, lLine, szMessage);
    }

    void FailedAssert(const char* szFile, long lLine, const char* szExpression) override
    {
        Remember("FailedAssert", szFile, lLine, szExpression);
    }

    void FailedAssertEquals(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                            const char* szActualValue, const char* szExpectedValue) override
    {
        Remember("FailedAssertEquals", szFile, lLine, szExpression, szExpected, szActualValue, szExpectedValue);
    }

    void FailedAssertDelta(const char* szFile, long lLine, const char* szExpression, const char* szExpected,
                           const char* szDelta, const char* szActualValue, const char* szExpectedValue,
                           const char* szDeltaValue) override
    {
        Remember("FailedAssertDelta", szFile, lLine, szExpression, szExpected, szDelta, szActualValue, szExpectedValue,
                 szDeltaValue);
    }

    void FailedAssertDiffers(const char* szFile, long lLine, const char* szExpression, const char* szOther,
                             const char* szValue) override
    {
        Remember("FailedAssertDiffers", szFile, lLine, szExpression, szOther, szValue);
    }

    void FailedAssertLessThan(const char* szFile, long lLine, const char* szExpression, const char* szLimit,
                              const char* szActualValue, const char* szLimitValue) override
    {
        Remember("FailedAssertLessThan", szFile, lLine, szExpression, szLimit, szActualValue, szLimitValue);
    }

    void FailedAssertThrows(const char* szFile, long lLine, const char* szExpression, const char* szException,
                            bool bOtherException) override
    {
        Remember("FailedAssertThrows", szFile, lLine, szExpression, szException, bOtherException ? "other" : "none");
    }

    void FailedAssertThrowsNot(const char* szFile, long lLine, const char* szExpression) override
    {
        Remember("FailedAssertThrowsNot", szFile, lLine, szExpression);
    }

    // For lines from elsewhere that belong between the events.
    template<class... T> void Remember(const T&... aParts)
    {
        std::ostringstream oLine;
        const char* szSeparator = "";
        (void)std::initializer_list<int>{(oLine << szSeparator << aParts, szSeparator = "|", 0)...};
        m_aEvents.push_back(oLine.str());
        if (m_fnOnEvent)
            m_fnOnEvent(m_aEvents.back());
    }

    tTexts m_aEvents;
    std::function<void(const std::string&)> m_fnOnEvent;
};

// Each failure event and the warning once, with arguments that tell which one they are, as CEventRecorder remembers
// them.
inline void RaiseWarning(TOVTest::CTOVTestListener& oListener)
{
    oListener.Warning("w.cpp", 7, "careful");
}

inline void RaiseAllFailures(TOVTest::CTOVTestListener& oListener)
{
    oListener.FailedTest("a.cpp", 8, "broken");
    oListener.FailedAssert("b.cpp", 9, "x");
    oListener.FailedAssertEquals("c.cpp", 10, "x", "y", "1", "2");
    oListener.FailedAssertDelta("d.cpp", 11, "x", "y", "z", "1", "2", "3");
    oListener.FailedAssertDiffers("e.cpp", 12, "x", "y", "1");
    oListener.FailedAssertLessThan("f.cpp", 13, "x", "y", "1", "2");
    oListener.FailedAssertThrows("g.cpp", 14, "x", "E", true);
    oListener.FailedAssertThrows("h.cpp", 15, "x", "...", false);
    oListener.FailedAssertThrowsNot("i.cpp", 16, "x");
}

inline tTexts AllFailures()
{
    return {"FailedTest|a.cpp|8|broken",
            "FailedAssert|b.cpp|9|x",
            "FailedAssertEquals|c.cpp|10|x|y|1|2",
            "FailedAssertDelta|d.cpp|11|x|y|z|1|2|3",
            "FailedAssertDiffers|e.cpp|12|x|y|1",
            "FailedAssertLessThan|f.cpp|13|x|y|1|2",
            "FailedAssertThrows|g.cpp|14|x|E|other",
            "FailedAssertThrows|h.cpp|15|x|...|none",
            "FailedAssertThrowsNot|i.cpp|16|x"};
}

// All 15 events once; the first seven are those without a failure.
inline void RaiseAllEvents(TOVTest::CTOVTestListener& oListener)
{
    oListener.EnterEnvironment();
    oListener.EnterSuite(TOVTest::CTOVTestSuite::Null());
    oListener.EnterTestCase(TOVTest::CTOVTestSuite::Null().GetTestCase(0));
    RaiseWarning(oListener);
    RaiseAllFailures(oListener);
    oListener.LeaveTestCase(TOVTest::CTOVTestSuite::Null().GetTestCase(0));
    oListener.LeaveSuite(TOVTest::CTOVTestSuite::Null());
    oListener.LeaveEnvironment();
}

inline tTexts AllEvents()
{
    tTexts aEvents = {"EnterEnvironment", "EnterSuite|<Unkown test suite>", "EnterTestCase|<invalid test case>",
                      "Warning|w.cpp|7|careful"};
    const tTexts aFailures = AllFailures();
    aEvents.insert(aEvents.end(), aFailures.begin(), aFailures.end());
    for (const char* szEvent :
         {"LeaveTestCase|<invalid test case>", "LeaveSuite|<Unkown test suite>", "LeaveEnvironment"})
        aEvents.push_back(szEvent);
    return aEvents;
}

// A suite of functions: what a test wants it to do.
class CFunctionSuite : public TOVTest::CTOVTestSuite
{
public:
    typedef std::function<void()> tFunction;

    explicit CFunctionSuite(const char* szDescription, const std::vector<tFunction>& aCases = {})
        : m_szDescription(szDescription), m_aCases(aCases)
    {
        ++s_nAlive;
    }

    CFunctionSuite(const CFunctionSuite& oOther)
        : CTOVTestSuite(oOther), m_fnStartup(oOther.m_fnStartup), m_fnClosedown(oOther.m_fnClosedown),
          m_fnNumTestCases(oOther.m_fnNumTestCases), m_szDescription(oOther.m_szDescription), m_aCases(oOther.m_aCases)
    {
        ++s_nAlive;
    }

    ~CFunctionSuite() override { --s_nAlive; }

    CFunctionSuite& operator=(const CFunctionSuite&) = delete;

    void Startup() override
    {
        if (m_fnStartup)
            m_fnStartup();
    }

    void Closedown() override
    {
        if (m_fnClosedown)
            m_fnClosedown();
    }

    long GetNumTestCases() const override
    {
        return m_fnNumTestCases ? m_fnNumTestCases() : static_cast<long>(m_aCases.size());
    }

    TOVTest::CTOVTestCase& GetTestCase(long lIndex) const override
    {
        m_lCase = lIndex;
        return SetupTestCase(this, static_cast<void (CTOVTestSuite::*)()>(&CFunctionSuite::RunCase),
                             NAMES[lIndex % NUM_NAMES], "functions.cpp", 100 + static_cast<unsigned long>(lIndex));
    }

    const char* GetDescription() const override { return m_szDescription; }

    tFunction m_fnStartup;
    tFunction m_fnClosedown;
    std::function<long()> m_fnNumTestCases;

    static inline int s_nAlive = 0;

private:
    void RunCase() { m_aCases[static_cast<std::size_t>(m_lCase)](); }

    static constexpr long NUM_NAMES = 4;
    static constexpr const char* NAMES[NUM_NAMES] = {"first", "second", "third", "fourth"};

    const char* m_szDescription;
    std::vector<tFunction> m_aCases;
    mutable long m_lCase = 0;
};

// Makes copies of one suite.
class CCopyCreator : public TOVTest::ITOVTestSuiteCreator
{
public:
    explicit CCopyCreator(const CFunctionSuite& oPattern) : m_oPattern(oPattern) {}
    virtual ~CCopyCreator() = default;

    TOVTest::CTOVTestSuite* New() override { return new CFunctionSuite(m_oPattern); }

    CFunctionSuite m_oPattern;
};

// Makes nothing.
class CBarrenCreator : public TOVTest::ITOVTestSuiteCreator
{
public:
    virtual ~CBarrenCreator() = default;

    TOVTest::CTOVTestSuite* New() override
    {
        ++m_nCalls;
        return nullptr;
    }

    int m_nCalls = 0;
};
