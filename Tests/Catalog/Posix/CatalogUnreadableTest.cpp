// Files that cannot be read on Posix.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Posix/CatalogHindrance.h"

#include <CatalogFile.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
class CatalogPosixUnreadableTest : public CatalogTest
{
protected:
    CatalogPosixUnreadableTest()
    {
        Write("tree/a", "a");
        Write("tree/sub/z", "z");
    }

    void WriteUnreadable(const std::string& sName)
    {
        Write(sName, "secret");
        Forbid(sName);
    }

    // The permission keeps out all users but root, and the runs here give up the privileges of root.
    void Forbid(const std::string& sName) { ASSERT_EQ(0, ::chmod(Path(sName).c_str(), 0)); }

    sRun RunUnprivileged(const std::vector<std::string>& aArguments)
    {
        return RunHindered(aArguments, Folder(), &GiveUpPrivileges);
    }
};
} // namespace

TEST_F(CatalogPosixUnreadableTest, IsNamedAndCountedAndTheRestGoesOn)
{
    WriteUnreadable("tree/bad");
    WriteUnreadable("tree/sub/bad too");

    const sRun oRun = RunUnprivileged({"create", "c.cat", "tree"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"tree/bad", "tree/sub/bad too"}), Unreadable(oRun));
    EXPECT_EQ("2 files, 2 bytes: catalogued, 2 unreadable", Summary(oRun));
    EXPECT_EQ((tNames{"e8b7be43 1 tree/a", "62d277af 1 tree/sub/z"}), Listed());
}

TEST_F(CatalogPosixUnreadableTest, LeavesNoCatalogueIfThereIsNothingElse)
{
    WriteUnreadable("locked/bad");

    const sRun oRun = RunUnprivileged({"create", "c.cat", "locked", "--exclude", "none"});

    EXPECT_EQ(2, oRun.nExitCode);
    EXPECT_EQ((tNames{"unreadable locked/bad",
                      "tovcatalog: no file in locked can be read: c.cat is not written (--allow-empty does it)"}),
              Lines(oRun.sErrors));
    EXPECT_FALSE(Exists("c.cat"));
}

TEST_F(CatalogPosixUnreadableTest, IsToldOfStandardInput)
{
    const sRun oRun = RunHindered({"check", "-"}, Folder(), [] {
        ::close(STDIN_FILENO);
        if (::open(".", O_RDONLY) != STDIN_FILENO)
            ::_exit(97);
    });

    EXPECT_TRUE(IsRefused(oRun, "standard input cannot be read"));
}

TEST_F(CatalogPosixUnreadableTest, IsNamedOnceWithAnyNumberOfThreads)
{
    tNames aExpected;
    for (int nFile = 10; nFile < 50; ++nFile)
    {
        aExpected.push_back("tree/bad" + std::to_string(nFile));
        WriteUnreadable(aExpected.back());
    }

    for (const char* szThreads : {"1", "8"})
    {
        const sRun oRun = RunUnprivileged({"create", "c.cat", "tree", "--threads", szThreads});
        EXPECT_EQ(1, oRun.nExitCode);
        EXPECT_EQ(aExpected, Unreadable(oRun));
        EXPECT_EQ("2 files, 2 bytes: catalogued, 40 unreadable", Summary(oRun));
    }
}

TEST_F(CatalogPosixUnreadableTest, IsNeitherChangedNorMissing)
{
    Write("tree/bad", "good");
    Create({"c.cat", "tree"});
    Forbid("tree/bad");
    Write("tree/sub/z", "Z");

    const sRun oRun = RunUnprivileged({"verify", "c.cat"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"changed tree/sub/z", "unreadable tree/bad"}), Reports(oRun));
    EXPECT_NE(std::string::npos, Summary(oRun).find("1 changed, 0 missing, 0 new, 1 unreadable")) << Summary(oRun);
}

TEST_F(CatalogPosixUnreadableTest, MayBeTheOnlyDifference)
{
    Write("tree/bad", "good");
    Create({"c.cat", "tree"});
    Forbid("tree/bad");

    EXPECT_EQ(1, RunUnprivileged({"verify", "c.cat"}).nExitCode);
    EXPECT_EQ(0, ::chmod(Path("tree/bad").c_str(), 0400));
    EXPECT_EQ(0, RunUnprivileged({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogPosixUnreadableTest, MayBeADirectory)
{
    Write("tree/bad/inside", "secret");
    Forbid("tree/bad");

    const sRun oRun = RunUnprivileged({"create", "c.cat", "tree"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"tree/bad"}), Unreadable(oRun));
    EXPECT_EQ((tNames{"e8b7be43 1 tree/a", "62d277af 1 tree/sub/z"}), Listed());
}

TEST_F(CatalogPosixUnreadableTest, MayBeTheCatalogue)
{
    Create({"c.cat", "tree"});
    Forbid("c.cat");

    EXPECT_TRUE(IsRefused(RunUnprivileged({"verify", "c.cat"}), "c.cat"));
    EXPECT_TRUE(IsRefused(RunUnprivileged({"list", "c.cat"}), "c.cat"));
}

// The file can be opened, but its first read fails.
TEST_F(CatalogPosixUnreadableTest, MayBeACatalogueOnABadDisk)
{
    std::filesystem::create_symlink("/proc/self/mem", Path("c.cat"));

    const std::string sReason = std::string("c.cat cannot be read: ") + std::strerror(EIO);
    EXPECT_TRUE(IsRefused(Run({"verify", "c.cat"}), sReason));
    EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), sReason));
}

TEST_F(CatalogPosixUnreadableTest, IsNotMissingFromALockedDirectory)
{
    Write("locked/c.cat", "x");
    Forbid("locked");
    Write("list", "locked/c.cat 8CDC1683\ntree/gone 8CDC1683\ntree/a/none 8CDC1683\n");

    EXPECT_EQ((tNames{"missing tree/a/none", "missing tree/gone", "unreadable locked/c.cat"}),
              Reports(RunUnprivileged({"check", "list"})));
    EXPECT_TRUE(IsRefused(RunUnprivileged({"list", "locked/c.cat"}), "locked/c.cat cannot be opened"));
    EXPECT_TRUE(IsRefused(RunUnprivileged({"list", "tree/gone"}), "tree/gone does not exist"));
}

// The system can look up no name below such a link.
TEST_F(CatalogPosixUnreadableTest, IsNotTakenForACatalogueThatMayBeWritten)
{
    std::filesystem::create_symlink("loop", Path("loop"));

    EXPECT_THROW(RequireReplaceable(Path("loop/c.cat").c_str()), CCatalogError);
    EXPECT_NO_THROW(RequireReplaceable(Path("tree/gone").c_str()));
    EXPECT_NO_THROW(RequireReplaceable(Path("tree/a").c_str()));
}
