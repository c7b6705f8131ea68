// What the walk asks of the system. The program's opendir and fchdir go before those of the C library.
#include "Catalog/CatalogInstruments.h"

#include <Commands.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <unistd.h>

static thread_local int s_nGoodReturns = INT_MAX;

extern "C" __attribute__((visibility("default"))) int fchdir(int nFolder) noexcept
{
    if (s_nGoodReturns == 0)
    {
        errno = EACCES;
        return -1;
    }
    --s_nGoodReturns;
    return ::chdir(("/proc/self/fd/" + std::to_string(nFolder)).c_str());
}

namespace
{
class CatalogPosixWalkTest : public CatalogTest
{
protected:
    CatalogPosixWalkTest()
    {
        Write("tree/a", "x");
        Write("tree/q?r/b", "x");
        std::filesystem::current_path(Folder());
    }

    ~CatalogPosixWalkTest()
    {
        s_nGoodReturns = INT_MAX;
        std::filesystem::current_path(m_oFormer);
    }

    // Runs create in the folder, in this process. What ends it is its only error.
    sRun CreateHere()
    {
        sCreateOptions oOptions;
        oOptions.oCatalog = "c.cat";
        oOptions.aDirectories.Add(Path("tree"));
        oOptions.nThreads = 1;
        sRun oRun;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        try
        {
            oRun.nExitCode = CreateCatalog(oOptions, m_bStop);
            oRun.sErrors = testing::internal::GetCapturedStderr();
        }
        catch (const CCatalogError& oError)
        {
            testing::internal::GetCapturedStderr();
            oRun.nExitCode = eExitFailure;
            oRun.sErrors = oError.what();
        }
        oRun.sOutput = testing::internal::GetCapturedStdout();
        return oRun;
    }

    std::atomic<bool> m_bStop{false};

private:
    const std::filesystem::path m_oFormer = std::filesystem::current_path();
};
} // namespace

TEST_F(CatalogPosixWalkTest, DoesNotEnterADirectoryFromWhichItCouldNotReturn)
{
    s_nGoodReturns = 0;
    const sRun oRun = CreateHere();

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{Path("tree/q?r")}), Unreadable(oRun));
    EXPECT_EQ((tNames{"8cdc1683 1 " + Path("tree/a")}), Listed());
}

TEST_F(CatalogPosixWalkTest, EndsTheRunIfItCannotReturnFromADirectory)
{
    s_nGoodReturns = 1; // the one before it enters the directory
    const sRun oRun = CreateHere();

    EXPECT_EQ(2, oRun.nExitCode);
    EXPECT_EQ("the working directory can no longer be entered", oRun.sErrors);
    EXPECT_FALSE(Exists("c.cat"));
    EXPECT_FALSE(Exists("tree/q?r/c.cat"));
}
