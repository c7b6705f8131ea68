// The library loaded by a program that is not linked with it.
#include "Support/TOVChildProcess.h"
#include "Support/TOVTestSupport.h"

namespace
{
sChildResult RunLoader(const std::vector<std::string>& aHow)
{
    std::vector<std::string> aCommand = {PathBesideThisProgram(TOV_LOADER), PathBesideThisProgram(TOV_LIBRARY)};
    aCommand.insert(aCommand.end(), aHow.begin(), aHow.end());
    return RunProgram({aCommand, "", NO_LEAK_CHECK});
}
} // namespace

TEST(TOVRunTimeLoadTest, ComesToLifeAndIsGoneWithItsUnloading)
{
    const sChildResult oResult = RunLoader({"1"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

// The process has fewer keys for the storage of threads than that.
TEST(TOVRunTimeLoadTest, CanBeLoadedAndUnloadedMoreThanAThousandTimes)
{
    const sChildResult oResult = RunLoader({"1100"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1100, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

TEST(TOVRunTimeLoadTest, AThreadThatUsedItMayEndAfterItsUnloading)
{
    const sChildResult oResult = RunLoader({"thread"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

TEST(TOVRunTimeLoadTest, CanBeUnloadedAsSoonAsItsThreadsWereWaitedFor)
{
    const sChildResult oResult = RunLoader({"waited", "500"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(500, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

TEST(TOVRunTimeLoadTest, AFailedCheckLeavesNoHandlerBehindThatIsUnloaded)
{
    const sChildResult oResult = RunLoader({"check"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

#if !TOV_SYSTEM_WINDOWS
TEST(TOVRunTimeLoadTest, StaysUntilItsLastThreadHasEnded)
{
    const sChildResult oResult = RunLoader({"held"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

// Without a key the end of a thread could not be noticed, and no other thread could wait for it.
TEST(TOVRunTimeLoadTest, StartsNoThreadWhereTheProcessHasNoKeyLeft)
{
    const sChildResult oResult = RunLoader({"keys"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

TEST(TOVRunTimeLoadTest, GoesAndLeavesAFileWithAllThatWasWritten)
{
    const sChildResult oResult = RunLoader({"file"});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}
#endif
