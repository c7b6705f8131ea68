// What a process that has no listener says on standard error: a failed check that ends it, and its log when the
// environment asks for it.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <thread>
#include <vector>

namespace
{
constexpr char TOLD[] = "Folder/File.cpp(148) : check failed, and nobody caught it: nCount > 0\n";
constexpr char LOG_VARIABLE[] = "TOVKERNEL_LOG";

// A function that must not throw, compiled by clang, catches everything before it ends the process.
#if defined(__clang__)
constexpr bool NOEXCEPT_CATCHES = true;
#else
constexpr bool NOEXCEPT_CATCHES = false;
#endif

// Whether a check that fails there is told.
bool IsTold(const std::string& sWhere)
{
    return !NOEXCEPT_CATCHES || (sWhere != "noexcept" && sWhere != "clean-up");
}

// The texts are gone when nobody has caught the exception.
void FailCheck(const std::string& sExpression = "nCount > 0")
{
    const std::string sCopy(sExpression.c_str());
    TOVDebug::Assert(sCopy.c_str(), std::string("Folder/File.cpp").c_str(), 148);
}

void FailCheckInside() noexcept
{
    FailCheck();
}

bool Catches(void (*fnFail)())
{
    try
    {
        fnFail();
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return true;
    }
    return false;
}

// A process that ends by an exception says more than the check: the runtime's own words.
void ExpectToldOnce(const sChildResult& oResult, const std::string& sTold = TOLD)
{
    EXPECT_EQ(-1, oResult.nExitCode);
    const std::size_t nFound = oResult.sOutput.find(sTold);
    EXPECT_NE(std::string::npos, nFound) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("check failed", nFound + sTold.size())) << oResult.sOutput;
    EXPECT_EQ(nFound, oResult.sOutput.find("Folder/File.cpp")) << oResult.sOutput;
}

void ExpectNotTold(const sChildResult& oResult)
{
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("check failed")) << oResult.sOutput;
}

// A variable of the environment while it lives, for child processes.
class CVariable
{
public:
    explicit CVariable(const char* szValue) { ::setenv(LOG_VARIABLE, szValue, 1); }
    ~CVariable() { ::unsetenv(LOG_VARIABLE); }
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;
};
} // namespace

TOV_CHILD(EndsByACheck)
{
    const std::string& sHow = aArguments[0];
    if (sHow == "noexcept")
        FailCheckInside();
    else if (sHow == "thread")
        std::thread([] { FailCheck(); }).join();
    else if (sHow == "clean-up")
    {
        // Another check fails and is caught on the way to the function that must not throw.
        struct sCleanUp
        {
            ~sCleanUp()
            {
                Catches([] { TOVDebug::Assert("other", "Other.cpp", 1); });
            }
        };
        []() noexcept {
            const sCleanUp oCleanUp;
            FailCheck();
        }();
    }
    else
        FailCheck();
}

TEST(TOVUnheardCheckTest, ACheckThatNobodyCatchesIsTold)
{
    for (const char* szHow : {"main", "noexcept", "thread", "clean-up"})
    {
        const sChildResult oResult = RunChild("EndsByACheck", {szHow});
        EXPECT_EQ(-1, oResult.nExitCode) << szHow;
        if (IsTold(szHow))
            ExpectToldOnce(oResult);
        else
            ExpectNotTold(oResult);
    }
}

#if !defined(__clang__) // whose functions that must not throw tell nothing
namespace
{
CGate s_oFirstHasFailed;
CGate s_oSecondHasFailed;
CGate s_oFirstHasEnded;
CGate s_oNever;

void FailCheckAndGoOn(const char* szExpression, CGate& oHasFailed, CGate& oMayGoOn)
{
    try
    {
        FailCheck(szExpression);
    }
    catch (...)
    {
        oHasFailed.Open();
        oMayGoOn.Wait();
        throw;
    }
}

void EndSecond()
{
    static std::atomic<int> s_nEnds(0);
    if (++s_nEnds == 2)
        std::_Exit(7);
    s_oFirstHasEnded.Open();
    s_oNever.Wait();
}
} // namespace

TOV_CHILD(EndsByTwoChecks)
{
    static_cast<void>(aArguments);
    std::set_terminate(&EndSecond);
    std::thread([]() noexcept {
        s_oFirstHasFailed.Wait();
        FailCheckAndGoOn("second", s_oSecondHasFailed, s_oFirstHasEnded);
    }).detach();
    []() noexcept { FailCheckAndGoOn("first", s_oFirstHasFailed, s_oSecondHasFailed); }();
}

TEST(TOVUnheardCheckTest, TheChecksOfTwoThreadsThatEndTheProcessAreBothTold)
{
    const sChildResult oResult = RunChild("EndsByTwoChecks");

    EXPECT_EQ(7, oResult.nExitCode);
    for (const char* szTold : {"nobody caught it: first\n", "nobody caught it: second\n"})
        EXPECT_NE(std::string::npos, oResult.sOutput.find(szTold)) << oResult.sOutput;
}
#endif

TOV_CHILD(EndsByALongCheck)
{
    FailCheck(std::string(5000, 'e'));
}

TEST(TOVUnheardCheckTest, ALongCheckIsCut)
{
    const std::string sBegin = "Folder/File.cpp(148) : check failed, and nobody caught it: ";

    ExpectToldOnce(RunChild("EndsByALongCheck"), sBegin + std::string(1022 - sBegin.size(), 'e') + '\n');
}

TOV_CHILD(CatchesChecks)
{
    bool bAll = true;
    for (int nTime = 0; nTime < 100; ++nTime)
        bAll = Catches([] { FailCheck(); }) && bAll;
    std::printf("%s", bAll ? "caught" : "missed");
    std::fflush(stdout);
    if (aArguments[0] == "other exception")
        throw 1;
    if (aArguments[0] == "own exception")
        throw TOVDebug::CTOVAssertException();
}

TEST(TOVUnheardCheckTest, ACheckThatIsCaughtIsNotTold)
{
    EXPECT_EQ("caught", RunChild("CatchesChecks", {"end"}).sOutput);
    for (const char* szEnd : {"other exception", "own exception"})
    {
        const sChildResult oResult = RunChild("CatchesChecks", {szEnd});
        EXPECT_EQ(-1, oResult.nExitCode);
        ExpectNotTold(oResult);
    }
}

TOV_CHILD(EndsByACheckThatIsHeard)
{
    static tRecord s_aRecord;
    TOVDebug::CTOVDebugServer::Instance().Register(&MakeImmortal<CRecordingListener>("A", s_aRecord));
    FailCheck();
}

TEST(TOVUnheardCheckTest, ACheckThatAListenerHeardIsNotTold)
{
    const sChildResult oResult = RunChild("EndsByACheckThatIsHeard");

    EXPECT_EQ(-1, oResult.nExitCode);
    ExpectNotTold(oResult);
}

TOV_CHILD(EndsWithAHandlerOfItsOwn)
{
    if (aArguments[0] == "late")
        Catches([] { FailCheck("another"); });
    std::set_terminate([] {
        const bool bCheck = Catches([] { std::rethrow_exception(std::current_exception()); });
        std::fprintf(stderr, "handler%s\n", bCheck ? " of a check" : "");
        std::_Exit(7);
    });
    if (aArguments[0] == "noexcept")
        FailCheckInside();
    FailCheck();
}

TEST(TOVUnheardCheckTest, AHandlerOfTheApplicationIsCalledBehindIt)
{
    for (const char* szWhen : {"early", "late", "noexcept"})
    {
        const sChildResult oResult = RunChild("EndsWithAHandlerOfItsOwn", {szWhen});
        EXPECT_EQ(7, oResult.nExitCode) << szWhen;
        EXPECT_EQ((IsTold(szWhen) ? TOLD : "") + std::string("handler of a check\n"), oResult.sOutput) << szWhen;
    }
}

TEST(TOVUnheardCheckTest, ACaughtCheckLeavesTheTerminateHandlerAlone)
{
    const std::terminate_handler pfBefore = std::get_terminate();
    std::terminate_handler pfInside = nullptr;
    try
    {
        FailCheck();
    }
    catch (const CTOVException&)
    {
        pfInside = std::get_terminate();
    }
    EXPECT_EQ(pfBefore, pfInside);
    EXPECT_EQ(pfBefore, std::get_terminate());
}

TEST(TOVUnheardCheckTest, ManyThreadsMayFailChecksAtOnce)
{
    const std::terminate_handler pfBefore = std::get_terminate();
    std::atomic<int> nCaught(0);
    std::vector<std::thread> aThreads;
    for (int nThread = 0; nThread < 8; ++nThread)
        aThreads.emplace_back([&] {
            for (int nTime = 0; nTime < 2000; ++nTime)
                nCaught += Catches([] { FailCheck(); }) ? 1 : 0;
        });
    for (std::thread& oThread : aThreads)
        oThread.join();

    EXPECT_EQ(8 * 2000, nCaught);
    EXPECT_EQ(pfBefore, std::get_terminate());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TOV_CHILD(EndsByACheckWithoutMemory)
{
    std::set_terminate([] { std::_Exit(7); });
    const CAllocationFailure oFailure;
    if (aArguments[0] == "noexcept")
        []() noexcept { TOVDebug::Assert("nCount > 0", "Folder/File.cpp", 148); }();
    TOVDebug::Assert("nCount > 0", "Folder/File.cpp", 148);
}

TEST(TOVUnheardCheckTest, IsToldWithoutMemory)
{
    for (const char* szHow : {"main", "noexcept"})
    {
        const sChildResult oResult = RunChild("EndsByACheckWithoutMemory", {szHow});
        EXPECT_EQ(7, oResult.nExitCode);
        EXPECT_EQ(IsTold(szHow) ? TOLD : "", oResult.sOutput);
    }
}
#endif

TOV_CHILD(LogsToNobody)
{
    TOVDebug::_Log("Folder/File.cpp", 12, 0x1, eSeverityInfo, "%s of %d", "text", 7);
    FailCheck();
}

TEST(TOVUnheardCheckTest, TheEnvironmentSendsAllLinesToStandardError)
{
    const CVariable oLog("1");
    const sChildResult oResult = RunChild("LogsToNobody");

    EXPECT_EQ(-1, oResult.nExitCode);
    EXPECT_NE(std::string::npos, oResult.sOutput.find("CTOVClassServer::AddClass() : Adding class"));
    const std::string sExpected = "Folder/File.cpp(12) : text of 7\n******* ASSERTION *******\n"
                                  "Folder/File.cpp(148) : Expression: TOV_ASSERT( nCount > 0 )\n";
    EXPECT_NE(std::string::npos, oResult.sOutput.find(sExpected)) << oResult.sOutput;
    // Nothing is told twice.
    ExpectNotTold(oResult);
}

TEST(TOVUnheardCheckTest, AnEmptyVariableSendsNothing)
{
    const CVariable oLog("");
    const sChildResult oResult = RunChild("LogsToNobody");

    ExpectToldOnce(oResult);
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("text of 7")) << oResult.sOutput;
}
