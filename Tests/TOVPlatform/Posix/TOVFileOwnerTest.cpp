// A thread that uses a file without its lock, while it sleeps in the system, and in the child of a fork.
#include "Support/Posix/TOVForkedChild.h"
#include "Support/Posix/TOVPseudoTerminal.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVFullDisk.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
class TOVPlatformFileOwnerTest : public CFileFixture
{
protected:
    TOVPlatformFileOwnerTest() : m_sPipe(Path("pipe"))
    {
        EXPECT_EQ(0, ::mkfifo(m_sPipe.c_str(), 0600));
        m_nWriter = ::open(m_sPipe.c_str(), O_RDWR | O_CLOEXEC);
        m_hPipe = Open("pipe", "rb");
    }

    ~TOVPlatformFileOwnerTest() override { ::close(m_nWriter); }

    void Send(const char* szText) const
    {
        EXPECT_EQ(static_cast<ssize_t>(std::string(szText).size()),
                  ::write(m_nWriter, szText, std::string(szText).size()));
    }

    char Receive() const
    {
        char cRead = '?';
        EXPECT_EQ(1u, File::Read(m_hPipe, &cRead, 1, 1));
        return cRead;
    }

    const std::string m_sPipe;
    int m_nWriter;
    unsigned long long m_hPipe;
};
} // namespace

TEST_F(TOVPlatformFileOwnerTest, IsWaitedForWhileItSleeps)
{
    char cFirst = '?';
    CBlockableThread oOwner([&] { cFirst = Receive(); });
    ASSERT_TRUE(oOwner.IsBlocked());
    char cSecond = '?';
    CBlockableThread oOther([&] { cSecond = Receive(); });
    EXPECT_TRUE(oOther.IsBlocked());
    CBlockableThread oProgram([&] { File::CTOVHandleManager::Instance().GetFile(m_hPipe); });

    Send("ab");

    EXPECT_TRUE(oOwner.Finishes());
    EXPECT_TRUE(oOther.Finishes());
    EXPECT_TRUE(oProgram.Finishes());
    EXPECT_EQ('a' + 'b', cFirst + cSecond);
}

// Its lines are not kept until the buffer is full.
TEST_F(TOVPlatformFileOwnerTest, WritesLinesToATerminalAtOnce)
{
    CPseudoTerminal oTerminal;
    const unsigned long long hTerminal = File::Open(oTerminal.Name().c_str(), "wb");
    ASSERT_NE(FILE_INVALID_HANDLE, hTerminal);
    char szSeen[16] = "";

    EXPECT_EQ(5u, File::Write(hTerminal, "line\n", 1, 5));

    EXPECT_EQ(6, ::read(oTerminal.Descriptor(), szSeen, sizeof szSeen - 1));
    EXPECT_STREQ("line\r\n", szSeen);
    EXPECT_EQ(File::eFileSuccess, File::Close(hTerminal));
}

TEST_F(TOVPlatformFileOwnerTest, FailsOnAFullDiskWhereTheRuntimeDoes)
{
    const CFullDisk oDisk;
    const std::string sBytes(64, 'x');
    std::mt19937 oRandom(23);
    for (int i = 0; i < 40; ++i)
    {
        const bool bShared = i % 2 != 0;
        const unsigned long long hFile = File::Open(oDisk.Path(), "wb");
        ASSERT_NE(FILE_INVALID_HANDLE, hFile);
        if (bShared)
            File::CTOVHandleManager::Instance().GetFile(hFile);
        FILE* const pPlain = std::fopen(oDisk.Path(), "wb");
        ASSERT_NE(nullptr, pPlain);

        // After that, the runtime has lost what it held, and the library has not.
        std::size_t ulTaken = 1;
        while (ulTaken == 1)
        {
            const std::size_t ulSize = 1 + oRandom() % 64;
            ulTaken = std::fwrite(sBytes.data(), ulSize, 1, pPlain);
            ASSERT_EQ(ulTaken, File::Write(hFile, sBytes.data(), static_cast<long>(ulSize), 1));
        }

        std::fclose(pPlain);
        GiveUp(hFile);
    }
}

TEST_F(TOVPlatformFileOwnerTest, IsForgottenInAChildThoughItSleptThere)
{
    CBlockableThread oOwner([&] { Receive(); });
    ASSERT_TRUE(oOwner.IsBlocked());

    EXPECT_TRUE(IsTrueInFork([&] { return File::Close(m_hPipe) == File::eFileSuccess; }));

    Send("a");
    EXPECT_TRUE(oOwner.Finishes());
}

TEST_F(TOVPlatformFileOwnerTest, OwnsOnInAChildWhatItOwned)
{
    const unsigned long long hFile = OpenWith("", "wb");
    EXPECT_EQ(2u, File::Write(hFile, "ab", 1, 2));

    EXPECT_TRUE(IsTrueInFork([&] {
        bool bTaken = File::Write(hFile, "cd", 1, 2) == 2;
        if (TOV_CAN_FORK_AND_THREAD)
        {
            CWorker oOther;
            oOther.Do([&] { bTaken = bTaken && File::Write(hFile, "ef", 1, 2) == 2; });
        }
        return bTaken && File::Write(hFile, "gh", 1, 2) == 2 && File::Flush(hFile) == File::eFileSuccess;
    }));

    const std::string sExpected = TOV_CAN_FORK_AND_THREAD ? "abcdefgh" : "abcdgh";
    EXPECT_EQ(sExpected, ReadWholeFile(Path("contents")));
}

TEST_F(TOVPlatformFileOwnerTest, LeavesTheStreamToChildrenWhileItWrites)
{
    constexpr int FORKS = 100;
    const unsigned long long hFile = OpenWith("", "wb");
    const auto fnWrite = [hFile] {
        const int nNumber = 1;
        return File::Write(hFile, &nNumber, sizeof nNumber, 1) == 1;
    };

    EXPECT_EQ(FORKS, CountForksAmid(
                         FORKS, [&] { fnWrite(); }, fnWrite));
}
