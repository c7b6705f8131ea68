// What the walk asks of the system. The program's opendir and fchdir go before those of the C library.
#include "Catalog/CatalogInstruments.h"

#include <Commands.h>

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <dlfcn.h>
#include <filesystem>
#include <unistd.h>

static thread_local int s_nGoodReturns = INT_MAX;
static thread_local int s_nSearches = 0;
static thread_local int s_nLastSearch = 0;
static thread_local std::atomic<bool>* s_pStop = nullptr;

extern "C" __attribute__((visibility("default"))) DIR* opendir(const char* szName)
{
    typedef DIR* (*tOpen)(const char*);
    static const tOpen s_fnOpen = reinterpret_cast<tOpen>(::dlsym(RTLD_NEXT, "opendir"));

    if (++s_nSearches == s_nLastSearch)
        *s_pStop = true;
    return s_fnOpen(szName);
}

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

    // Runs create in the folder, in this thread. What ends it is its only error.
    sRun CreateHere()
    {
        m_oOptions.oCatalog = "c.cat";
        m_oOptions.aDirectories.Add(Path("tree"));
        m_oOptions.nThreads = 1;
        sRun oRun;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        try
        {
            oRun.nExitCode = CreateCatalog(m_oOptions, m_bStop);
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

    // Interrupts create at a search. Expects that it ends without a further one.
    void ExpectEndAtSearch(int nSearch)
    {
        s_nSearches = 0;
        s_nLastSearch = nSearch;
        s_pStop = &m_bStop;
        const sRun oRun = CreateHere();
        s_nLastSearch = 0;

        EXPECT_EQ(nSearch, s_nSearches);
        EXPECT_EQ("interrupted", oRun.sErrors);
        EXPECT_FALSE(Exists("c.cat"));
    }

    static CNameList ManyPatterns()
    {
        CNameList aPatterns;
        for (int n = 0; n < 100; ++n)
            aPatterns.Add("none" + std::to_string(n) + "*");
        return aPatterns;
    }

    sCreateOptions m_oOptions;
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

TEST_F(CatalogPosixWalkTest, CanBeInterruptedBetweenTwoPatterns)
{
    m_oOptions.aPatterns = ManyPatterns();

    ExpectEndAtSearch(3);
}

TEST_F(CatalogPosixWalkTest, CanBeInterruptedBetweenTwoExcludes)
{
    m_oOptions.aExcludes = ManyPatterns();

    ExpectEndAtSearch(3);
}

TEST_F(CatalogPosixWalkTest, CanBeInterruptedBetweenTwoDirectories)
{
    for (int n = 0; n < 20; ++n)
        Write("tree/sub" + std::to_string(n) + "/below/a", "x");

    ExpectEndAtSearch(5);
}

TEST_F(CatalogPosixWalkTest, CanBeInterruptedBetweenTwoDirectoriesOfNamesWithWildcards)
{
    for (int n = 0; n < 20; ++n)
        Write("tree/sub*" + std::to_string(n) + "/a", "x");

    ExpectEndAtSearch(5);
}

TEST_F(CatalogPosixWalkTest, ReadsTwoHundredLevelsOfDirectories)
{
    std::string sLevels = "deep";
    for (int nLevel = 0; nLevel < 200; ++nLevel)
        sLevels += "/d";
    Write(sLevels + "/a", "x");

    Create({"c.cat", "deep"});
    EXPECT_EQ((tNames{"8cdc1683 1 " + sLevels + "/a"}), Listed());

    Write(sLevels + "/d/too deep", "x");
    const sRun oRun = Run({"create", "c.cat", "deep"});
    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{sLevels + "/d"}), Unreadable(oRun));
    EXPECT_EQ((tNames{"8cdc1683 1 " + sLevels + "/a"}), Listed());
}
