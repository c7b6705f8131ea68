// Files that have become something else by the time they are read, and an output that takes nothing.
#include "Catalog/CatalogFiles.h"
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Support/TOVTerminal.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
class CatalogPipeTest : public CatalogTest
{
protected:
    // The only thread reads the first file for as long as that is big.
    CatalogPipeTest()
    {
        Write("tree/z", "x");
        Write("tree/zz", "x");
        WriteSparseFile(Path("tree/big"), ENDLESS_SIZE, "");
    }

    // Waits until all files have been found. Puts a pipe in the place of one, and then lets the reading go on.
    void SwapAndGoOn(CTerminal& oTerminal)
    {
        ASSERT_TRUE(oTerminal.WaitUntilItShows("MB/s"));
        Remove("tree/z");
        ASSERT_EQ(0, ::mkfifo(Path("tree/z").c_str(), 0666));
        CutFile(Path("tree/big"), 10);
    }
};
} // namespace

TEST_F(CatalogPipeTest, InThePlaceOfAFileIsUnreadableToCreate)
{
    CTerminal oTerminal(Program({"create", "c.cat", "tree", "--threads", "1"}));
    SwapAndGoOn(oTerminal);

    EXPECT_EQ(1, oTerminal.WaitForEnd());
    const tNames aScreen = oTerminal.Screen();
    ASSERT_EQ(3u, aScreen.size()) << testing::PrintToString(aScreen);
    EXPECT_EQ("unreadable tree/big", aScreen[0]); // it has become shorter
    EXPECT_EQ("unreadable tree/z", aScreen[1]);
    EXPECT_EQ((tNames{"8cdc1683 1 tree/zz"}), Listed());
}

TEST_F(CatalogPipeTest, InThePlaceOfAFileIsUnreadableToVerify)
{
    Write("c.cat",
          CatalogVersion3({"tree"}, {}, {{0, "big", 10, 0}, {0, "z", 1, 0x8cdc1683}, {0, "zz", 1, 0x8cdc1683}}));
    CTerminal oTerminal(Program({"verify", "c.cat", "--threads", "1"}));
    SwapAndGoOn(oTerminal);

    EXPECT_EQ(1, oTerminal.WaitForEnd());
    const tNames aScreen = oTerminal.Screen();
    ASSERT_EQ(3u, aScreen.size()) << testing::PrintToString(aScreen);
    EXPECT_EQ("unreadable tree/z", aScreen[1]);
}

TEST_F(CatalogPipeTest, InThePlaceOfAFileDoesNotKeepASignalFromEndingTheRun)
{
    for (const int nSignal : {SIGINT, SIGTERM})
    {
        WriteSparseFile(Path("tree/big"), ENDLESS_SIZE, "");
        Remove("tree/z");
        Write("tree/z", "x");
        CTerminal oTerminal(Program({"create", "c.cat", "tree", "--threads", "1"}));
        SwapAndGoOn(oTerminal);

        ::kill(static_cast<pid_t>(oTerminal.ProcessId()), nSignal);

        EXPECT_NE(-1, oTerminal.WaitForEnd()) << nSignal;
    }
}

TEST_F(CatalogPipeTest, IsNotWaitedForByCheck)
{
    ASSERT_EQ(0, ::mkfifo(Path("tree/pipe").c_str(), 0666));
    ASSERT_EQ(0, ::mkfifo(Path("pipe").c_str(), 0666));
    Write("list", "tree/pipe 8CDC1683\ntree/zz 8CDC1683\n");
    const auto fnEndIfItWaits = [] { ::alarm(20); };

    const sRun oRun = RunHindered({"check", "list"}, Folder(), fnEndIfItWaits);

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"unreadable tree/pipe"}), Reports(oRun));
    EXPECT_TRUE(IsRefused(RunHindered({"check", "pipe"}, Folder(), fnEndIfItWaits), "pipe cannot be read"));
}

TEST_F(CatalogPipeTest, ThatIsFullLosesNoReportInSilence)
{
    Remove("tree/big");
    Create({"c.cat", "tree"});
    const auto fnFullOutput = [] { ::dup2(::open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); };

    Write("list", "tree/gone 00000000\n");
    for (const tNames& aCommand : {tNames{"list", "c.cat"},
                                   {"list", "c.cat", "--json"},
                                   {"verify", "c.cat"},
                                   {"check", "list"},
                                   {"create", "c.cat", "tree"},
                                   {"--version"},
                                   {"--help"},
                                   {"create", "--help"}})
        EXPECT_TRUE(IsRefused(RunHindered(aCommand, Folder(), fnFullOutput), "standard output"))
            << testing::PrintToString(aCommand);
}
