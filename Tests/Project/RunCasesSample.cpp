// Cases that end in every way, for the check of CMake/run-cases. Each passes, unless TOV_SAMPLE asks for its own way.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace
{
int s_nCases = 0;

bool IsAsked(const char* szWay)
{
    const char* const szAsked = std::getenv("TOV_SAMPLE");
    return szAsked != nullptr && std::string(szAsked) == szWay;
}

class RunCasesSample : public testing::Test
{
protected:
    void TearDown() override { s_nCases++; }
};

// Ends a process of several cases badly when all of them have passed.
class CEnd
{
public:
    ~CEnd()
    {
        if (IsAsked("EndsBadly") && s_nCases > 1)
            std::_Exit(3);
    }
};
const CEnd s_oEnd;
} // namespace

TEST_F(RunCasesSample, Passes)
{
}

TEST_F(RunCasesSample, NeedsAProcessOfItsOwn)
{
    EXPECT_EQ(0, s_nCases);
}

TEST_F(RunCasesSample, Fails)
{
    EXPECT_FALSE(IsAsked("Fails"));
}

TEST_F(RunCasesSample, IsSkipped)
{
    if (IsAsked("IsSkipped"))
        GTEST_SKIP();
}

TEST_F(RunCasesSample, Crashes)
{
    if (IsAsked("Crashes"))
        std::abort();
}

TEST_F(RunCasesSample, CrashesInCompany)
{
    if (IsAsked("CrashesInCompany") && s_nCases > 0)
        std::abort();
}

TEST_F(RunCasesSample, Exits)
{
    if (IsAsked("Exits"))
        std::_Exit(0);
}

TEST_F(RunCasesSample, Hangs)
{
    while (IsAsked("Hangs"))
        std::this_thread::sleep_for(std::chrono::hours(1));
}

int main(int nArguments, char** aszArguments)
{
    if (IsAsked("DoesNotTell"))
        return 4;
    testing::InitGoogleTest(&nArguments, aszArguments);
    return RUN_ALL_TESTS();
}
