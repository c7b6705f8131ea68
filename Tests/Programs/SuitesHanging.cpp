// Suites that do not come to an end: in Startup, in a case, in Closedown, and when the process ends.
#include <TOVPlatform/TOVSynchronization.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

#include <cstdlib>

namespace
{
// Longer than anybody waits, but not for ever.
void Hang()
{
    namespace Event = TOVPlatform::TOVSynchronization::Event;
    const unsigned long long hNever = Event::Create(true, false, "");
    Event::TimedWait(hNever, 600000);
    Event::Destroy(hNever);
}

void Nothing()
{
}
} // namespace

#define HANGING_SUITE(Suite, szDescription, Start, Body, Close)                                                        \
    class Suite : public TOVTest::CTOVTestSuite                                                                        \
    {                                                                                                                  \
        TOV_TEST_SUITE(Suite)                                                                                          \
        void Startup() override { Start(); }                                                                           \
        void Closedown() override { Close(); }                                                                         \
        void Hangs()                                                                                                   \
        {                                                                                                              \
            TOV_TEST_WARNING("has begun");                                                                             \
            Body();                                                                                                    \
        }                                                                                                              \
    };                                                                                                                 \
    TOV_TEST_CASES_BEGIN(Suite, szDescription)                                                                         \
    TOV_TEST_CASE("hangs", Hangs)                                                                                      \
    TOV_TEST_CASES_END                                                                                                 \
    TOV_REGISTER_TEST_SUITE(Suite)

HANGING_SUITE(CInStartupTest, "In Startup", Hang, Nothing, Nothing)
HANGING_SUITE(CInCaseTest, "In the case", Nothing, Hang, Nothing)
HANGING_SUITE(CInClosedownTest, "In Closedown", Nothing, Nothing, Hang)

class CAtEndTest : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CAtEndTest)
    void Passes() { std::atexit(&Hang); }
};

// clang-format off
TOV_TEST_CASES_BEGIN(CAtEndTest, "At the end")
    TOV_TEST_CASE("passes", Passes)
TOV_TEST_CASES_END
// clang-format on
TOV_REGISTER_TEST_SUITE(CAtEndTest)
