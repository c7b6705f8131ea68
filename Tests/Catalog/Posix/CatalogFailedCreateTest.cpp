// Failures and interruptions of create that only Posix can bring about.
#include "Catalog/CatalogFiles.h"
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Catalog/Posix/CatalogSteps.h"
#include "Support/TOVTerminal.h"

#include <csignal>
#include <filesystem>
#include <sys/stat.h>

namespace
{
class CatalogPosixFailedCreateTest : public CatalogTest
{
protected:
    // The catalogue of this tree is larger than any buffer.
    CatalogPosixFailedCreateTest()
    {
        for (int nFile = 1000; nFile < 1150; ++nFile)
            Write("tree/" + std::string(60, 'n') + std::to_string(nFile), "x");
        Create({"good.cat", "tree"});
        Write("c.cat", EXISTING);
    }

    // Sizes at which the growth of the file is stopped.
    std::vector<unsigned long> Sizes() const
    {
        const unsigned long ulAll = Read("good.cat").size();
        EXPECT_GT(ulAll, 10000u);
        return {0, 1, 8, 100, 4095, 4096, 4097, 8192, 10000, ulAll - 4, ulAll - 1};
    }

    void ExpectThatTheNextOneSucceeds()
    {
        Create({"c.cat", "tree"});
        EXPECT_EQ(Read("good.cat"), Read("c.cat"));
        EXPECT_EQ((tNames{"c.cat", "good.cat", "tree"}), NamesInFolder());
    }
};
} // namespace

TEST_F(CatalogPosixFailedCreateTest, LeavesItWhenTheDiskIsFull)
{
    for (const unsigned long ulSize : Sizes())
    {
        const sRun oRun = RunHindered({"create", "c.cat", "tree"}, Folder(), [ulSize] { LimitFileSize(ulSize); });

        EXPECT_TRUE(IsRefused(oRun, "c.cat")) << ulSize;
        EXPECT_EQ(EXISTING, Read("c.cat")) << ulSize;
        EXPECT_EQ((tNames{"c.cat", "good.cat", "tree"}), NamesInFolder()) << ulSize;
    }
    ExpectThatTheNextOneSucceeds();
}

TEST_F(CatalogPosixFailedCreateTest, LeavesItWhenTheProcessDiesInTheMiddleOfWriting)
{
    for (const unsigned long ulSize : Sizes())
    {
        const sRun oRun = RunHindered({"create", "c.cat", "tree"}, Folder(), [ulSize] { DieBeyondFileSize(ulSize); });

        EXPECT_EQ(-1, oRun.nExitCode) << ulSize;
        EXPECT_EQ(EXISTING, Read("c.cat")) << ulSize;
    }
    ExpectThatTheNextOneSucceeds();
}

TEST_F(CatalogPosixFailedCreateTest, SucceedsWithJustEnoughRoom)
{
    const unsigned long ulSize = Read("good.cat").size();

    EXPECT_EQ(0, RunHindered({"create", "c.cat", "tree"}, Folder(), [=] { LimitFileSize(ulSize); }).nExitCode);
    EXPECT_EQ(Read("good.cat"), Read("c.cat"));
}

TEST_F(CatalogPosixFailedCreateTest, LeavesItInAFolderThatMayNotBeChanged)
{
    Write("kept/c.cat", EXISTING);
    ASSERT_EQ(0, ::chmod(Path("kept").c_str(), 0555));

    const sRun oRun = RunHindered({"create", "kept/c.cat", "tree"}, Folder(), &GiveUpPrivileges);

    EXPECT_TRUE(IsRefused(oRun, "kept/c.cat"));
    EXPECT_EQ(EXISTING, Read("kept/c.cat"));
}

TEST_F(CatalogPosixFailedCreateTest, LeavesItOrHasTheNewOneAtEachMoment)
{
    const std::string sGood = Read("good.cat");
    int nWithOld = 0;
    int nWithNew = 0;
    int nWithout = 0;

    const int nExitCode = RunStepByStep({"create", "c.cat", "tree"}, Folder(), [&](int) {
        const std::string sNow = Exists("c.cat") ? Read("c.cat") : "";
        nWithOld += sNow == EXISTING ? 1 : 0;
        nWithNew += sNow == sGood ? 1 : 0;
        nWithout += sNow != EXISTING && sNow != sGood ? 1 : 0;
    });

    EXPECT_EQ(0, nExitCode);
    EXPECT_GT(nWithOld, 100);
    EXPECT_GT(nWithNew, 0);
    EXPECT_EQ(0, nWithout);
}

TEST_F(CatalogPosixFailedCreateTest, LeavesItWhateverSignalEndsTheProcess)
{
    WriteSparseFile(Path("tree/big"), ENDLESS_SIZE, "");
    for (const int nSignal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGKILL})
    {
        CTerminal oTerminal(Program({"create", "c.cat", "tree"}));
        ASSERT_TRUE(oTerminal.WaitUntilItShows("MB/s"));

        ::kill(static_cast<pid_t>(oTerminal.ProcessId()), nSignal);

        EXPECT_NE(0, oTerminal.WaitForEnd()) << nSignal;
        EXPECT_EQ(EXISTING, Read("c.cat")) << nSignal;
    }
    Remove("tree/big");
    ExpectThatTheNextOneSucceeds();
}

// Each signal comes while the new file is there.
TEST_F(CatalogPosixFailedCreateTest, LeavesNoNewFileWhicheverSignalComes)
{
    for (const int nSignal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE})
    {
        bool bSent = false;
        const int nExitCode = RunStepByStep({"create", "c.cat", "tree"}, Folder(), [&](int nProcess) {
            if (!bSent && Exists("tovcatalog-1.new"))
                bSent = ::kill(nProcess, nSignal) == 0;
        });

        EXPECT_TRUE(bSent) << nSignal;
        EXPECT_TRUE(nExitCode == 0 || nExitCode == 2) << nSignal << ": " << nExitCode;
        EXPECT_EQ((tNames{"c.cat", "good.cat", "tree"}), NamesInFolder()) << nSignal;
    }
}

// Otherwise a device of the system could be lost in this way.
TEST_F(CatalogPosixFailedCreateTest, PutsNothingInThePlaceOfWhatIsNoFile)
{
    Remove("c.cat");
    ASSERT_EQ(0, ::mkfifo(Path("c.cat").c_str(), 0666));

    EXPECT_TRUE(IsRefused(Run({"create", "c.cat", "tree"}), "c.cat"));
    EXPECT_EQ(std::filesystem::file_type::fifo, std::filesystem::symlink_status(Path("c.cat")).type());
    EXPECT_EQ((tNames{"c.cat", "good.cat", "tree"}), NamesInFolder());
}

// The program would wait for ever for somebody who writes into it.
TEST_F(CatalogPosixFailedCreateTest, LeavesItAloneAlsoWhenAPipeIsToBeRead)
{
    Remove("c.cat");
    ASSERT_EQ(0, ::mkfifo(Path("c.cat").c_str(), 0666));

    EXPECT_TRUE(IsRefused(Run({"verify", "c.cat"}), "c.cat"));
    EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), "c.cat"));
}
