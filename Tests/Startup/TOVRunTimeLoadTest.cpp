// The library loaded by a program that is not linked with it.
#include "Support/TOVChildProcess.h"
#include "Support/TOVTestSupport.h"

namespace
{
sChildResult RunLoader(const std::string& sHow)
{
    const std::string sProgram = PathOfThisProgram();
    const std::string sFolder = sProgram.substr(0, sProgram.find_last_of("/\\") + 1);
    return RunProgram({sFolder + TOV_LOADER, sFolder + TOV_LIBRARY, sHow});
}
} // namespace

TEST(TOVRunTimeLoadTest, ComesToLifeAndIsGoneWithItsUnloading)
{
    const sChildResult oResult = RunLoader("1");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

// More often than a process has keys for its threads' storage.
TEST(TOVRunTimeLoadTest, CanBeLoadedAndUnloadedMoreThanAThousandTimes)
{
    const sChildResult oResult = RunLoader("1100");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1100, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

TEST(TOVRunTimeLoadTest, AThreadThatUsedItMayEndAfterItsUnloading)
{
    const sChildResult oResult = RunLoader("thread");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}

#if !TOV_SYSTEM_WINDOWS
// A thread's end could not be noticed, and nobody could wait for it.
TEST(TOVRunTimeLoadTest, StartsNoThreadWhereTheProcessHasNoKeyLeft)
{
    const sChildResult oResult = RunLoader("keys");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ(1, std::atoi(oResult.sOutput.c_str())) << oResult.sOutput;
}
#endif
