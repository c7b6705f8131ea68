// A suite whose second case waits until the test has seen it.
#include <TOVPlatform/TOVSynchronization.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

#include <cstdlib>

class CWaitingTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CWaitingTest)
    void Passes() {}
    void Waits();
};

// clang-format off
TOV_TEST_CASES_BEGIN(CWaitingTest, "Waiting")
    TOV_TEST_CASE("before", Passes)
    TOV_TEST_CASE("waits, and has a name that is far longer than the window of the terminal is wide", Waits)
    TOV_TEST_CASE("after", Passes)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CWaitingTest)

void CWaitingTest::Waits()
{
    namespace Event = TOVPlatform::TOVSynchronization::Event;
    const char* szGate = std::getenv("TOV_TEST_GATE");
    const unsigned long long hGate = Event::Create(true, false, szGate != nullptr ? szGate : "TOVNoGate");
    TOV_TEST_CHECK(Event::TimedWait(hGate, 60000));
    Event::Destroy(hGate);
}
