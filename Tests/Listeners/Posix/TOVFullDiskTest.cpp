// Full disks, and terminals without colours, which only Posix has.
#include "Listeners/ListenerInstruments.h"
#include "Listeners/ListenerTerminal.h"

#include <Listeners/TOVConsoleListener.h>
#include <Listeners/TOVFileListener.h>
#include <Listeners/TOVRotatingFileListener.h>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

using namespace TOVDebug;

namespace
{
// Each write to it fails as on a full disk.
constexpr char FULL_DISK[] = "/dev/full";

// No file can grow beyond this size.
void LimitFileSize(unsigned long ulBytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit oLimit = {};
    ::getrlimit(RLIMIT_FSIZE, &oLimit);
    oLimit.rlim_cur = ulBytes;
    ::setrlimit(RLIMIT_FSIZE, &oLimit);
}
} // namespace

TEST(CTOVListenerFullDiskTest, LinesAreDroppedAndThatIsTold)
{
    CTOVFileListener oFile(FULL_DISK);
    oFile.Register();
    EXPECT_TRUE(oFile.IsOpen());
    EXPECT_FALSE(oFile.HasLostLines());

    EXPECT_NO_CHECK(Log(600, "text"));
    EXPECT_TRUE(oFile.HasLostLines());
    for (int nLine = 0; nLine < 100; ++nLine)
        EXPECT_NO_CHECK(Log(200, std::string(1000, 'x')));
    EXPECT_NO_THROW(FailCheck("nCount > 0"));
}

TEST(CTOVListenerFullDiskTest, ALossAtTheEndIsToldByTheFlush)
{
    CTOVFileListener oFile(FULL_DISK);
    oFile.Register();
    Log(200, "text");
    EXPECT_FALSE(oFile.HasLostLines());

    oFile.Flush();

    EXPECT_TRUE(oFile.HasLostLines());
}

TOV_CHILD(FillsTheDisk)
{
    CTOVFileListener oFile(aArguments[0].c_str());
    oFile.Register();
    LimitFileSize(10000);
    for (int nLine = 0; nLine < 400; ++nLine)
        Log(nLine % 2 == 0 ? 200 : 500, "before");
    const bool bLost = oFile.HasLostLines();
    LimitFileSize(1000000);
    Log(500, "after");
    std::printf("%s", bLost ? "lost" : "not lost");
}

TEST(CTOVListenerFullDiskTest, LinesAreWrittenAgainWhenThereIsRoom)
{
    const CTempFolder oFolder;
    const sChildResult oResult = RunChild("FillsTheDisk", {oFolder.File("a.log")});

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("lost", oResult.sOutput);
    const tLines aLines = LinesOfFile(oFolder.File("a.log"));
    EXPECT_LT(100u, aLines.size());
    EXPECT_NE(std::string::npos, aLines.back().find("after"));
}

TOV_CHILD(LogsToAFullConsole)
{
    std::FILE* const pFull = std::freopen(FULL_DISK, "w", stdout);
    CTOVConsoleListener oConsole(eConsoleOutput);
    oConsole.Register();
    Log(200, "text");
    Log(500, "text");
    std::fprintf(stderr, "%s", pFull != nullptr && oConsole.HasLostLines() ? "lost" : "not lost");
}

TEST(CTOVListenerFullDiskTest, TheConsoleTellsToo)
{
    EXPECT_EQ("lost", RunChild("LogsToAFullConsole").sOutput);
}

TOV_CHILD(RunsOutOfFiles)
{
    const CTempFolder oFolder;
    CTOVRotatingFileListener oFile(oFolder.File("a.log").c_str(), 0, 9);
    oFile.Register();
    Log(200, "1");
    rlimit oLimit = {};
    ::getrlimit(RLIMIT_NOFILE, &oLimit);
    const rlimit oNone = {0, oLimit.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &oNone);
    Log(200, "2");
    std::printf("%s, ", oFile.IsOpen() ? "open" : "not open");
    ::setrlimit(RLIMIT_NOFILE, &oLimit);
    Log(500, "3");
    std::printf("%s, %s", oFile.IsOpen() ? "open" : "not open", oFile.HasLostLines() ? "lost" : "not lost");
    const tLines aLines = LinesOfFile(oFolder.File("a.log"));
    std::printf(", %s", aLines.empty() ? "" : aLines.back().c_str());
}

TEST(CTOVListenerFullDiskTest, ARotatingFileIsOpenedAgainWhenThatIsPossible)
{
    EXPECT_EQ("not open, open, lost, " + Printed("error", "3"), RunChild("RunsOutOfFiles").sOutput);
}

TOV_CHILD(LogsAWarning)
{
    CTOVConsoleListener oConsole(eConsoleOutput);
    oConsole.Register();
    Log(400, "text");
}

TEST(CTOVConsoleListenerTerminalTest, ShowsNoColourOnADumbTerminal)
{
    const std::vector<sShownLine> aShown = ShownOnTerminal("LogsAWarning", {}, {{"TERM", "dumb"}});

    ASSERT_EQ(1u, aShown.size());
    EXPECT_EQ("none", aShown[0].sColour);
    EXPECT_EQ("yellow", ShownOnTerminal("LogsAWarning", {})[0].sColour);
}
