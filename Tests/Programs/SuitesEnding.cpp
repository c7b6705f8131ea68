// Suites that end the run, each in another way, in the second of three cases.
#include <Debug/TOVDebug.h>
#include <Debug/TOVException.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestSuiteDefinition.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace
{
volatile int s_nDepth = 0;

// The compiler must not see that the recursion never ends.
int Recurse(int nDepth)
{
    volatile char szBlock[4096];
    szBlock[0] = static_cast<char>(nDepth);
    s_nDepth = nDepth;
    return s_nDepth < 0 ? 0 : Recurse(nDepth + 1) + szBlock[0];
}

void ThrowStandard()
{
    throw std::runtime_error("no \"good\" <at> all");
}

void ThrowNumber()
{
    throw 42;
}

void ThrowException()
{
    throw CTOVException(CTOVException::eClassFile, 0x12);
}

void FailCheck()
{
    TOV_ASSERT(s_nDepth == -1);
}

void Overflow()
{
    Recurse(0);
}

void WriteAstray()
{
    *reinterpret_cast<volatile int*>(static_cast<std::size_t>(s_nDepth)) = 1;
}

void Abort()
{
    std::abort();
}

void Exit()
{
    std::exit(5);
}

void ExitWell()
{
    std::exit(0);
}

template<int nSignal> void Raise()
{
    std::raise(nSignal);
}

void Nothing()
{
}
} // namespace

#define ENDING_SUITE(Suite, szDescription, Start, Body, Close)                                                         \
    class Suite : public TOVTest::CTOVTestSuite                                                                        \
    {                                                                                                                  \
        TOV_TEST_SUITE(Suite)                                                                                          \
        void Startup() override                                                                                        \
        {                                                                                                              \
            if (++m_nCase == 2)                                                                                        \
                Start();                                                                                               \
        }                                                                                                              \
        void Closedown() override                                                                                      \
        {                                                                                                              \
            if (m_nCase == 2)                                                                                          \
                Close();                                                                                               \
        }                                                                                                              \
        void Before() {}                                                                                               \
        void Ends()                                                                                                    \
        {                                                                                                              \
            TOV_TEST_CHECK(m_nCase == 0);                                                                              \
            Body();                                                                                                    \
        }                                                                                                              \
                                                                                                                       \
        int m_nCase = 0;                                                                                               \
    };                                                                                                                 \
    TOV_TEST_CASES_BEGIN(Suite, szDescription)                                                                         \
    TOV_TEST_CASE("before", Before)                                                                                    \
    TOV_TEST_CASE("ends", Ends)                                                                                        \
    TOV_TEST_CASE("after", Before)                                                                                     \
    TOV_TEST_CASES_END                                                                                                 \
    TOV_REGISTER_TEST_SUITE(Suite)

ENDING_SUITE(CThrowTest, "Throw", Nothing, ThrowStandard, Nothing)
ENDING_SUITE(CThrowNumberTest, "Throw number", Nothing, ThrowNumber, Nothing)
ENDING_SUITE(CThrowExceptionTest, "Throw exception", Nothing, ThrowException, Nothing)
ENDING_SUITE(CCheckTest, "Check", Nothing, FailCheck, Nothing)
ENDING_SUITE(CStartupTest, "Startup", ThrowStandard, Nothing, Nothing)
ENDING_SUITE(CClosedownTest, "Closedown", Nothing, Nothing, ThrowStandard)
ENDING_SUITE(COverflowTest, "Overflow", Nothing, Overflow, Nothing)
ENDING_SUITE(CCrashTest, "Crash", Nothing, WriteAstray, Nothing)
ENDING_SUITE(CAbortTest, "Abort", Nothing, Abort, Nothing)
ENDING_SUITE(CExitTest, "Exit", Nothing, Exit, Nothing)
ENDING_SUITE(CExitWellTest, "Exit well", Nothing, ExitWell, Nothing)
ENDING_SUITE(CArithmeticTest, "Raise arithmetic", Nothing, Raise<SIGFPE>, Nothing)
ENDING_SUITE(CIllegalTest, "Raise illegal", Nothing, Raise<SIGILL>, Nothing)
ENDING_SUITE(CInterruptTest, "Raise interrupt", Nothing, Raise<SIGINT>, Nothing)
ENDING_SUITE(CTerminateTest, "Raise terminate", Nothing, Raise<SIGTERM>, Nothing)
