// What a thread writes to a file without the runtime's lock, beside a stream that the runtime alone writes, and as
// others find it: fflush(nullptr), the end of the process, the child of a fork, and other streams of the same file.
#include "Support/Posix/TOVForkedChild.h"
#include "Support/TOVChildProcess.h"
#include "Support/TOVFullDisk.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <random>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
typedef unsigned long long tFile;

constexpr std::size_t MAX_BLOCK = 10000;

// Bytes from which each block is told apart by its position.
std::string MakeBytes(std::size_t ulCount)
{
    std::mt19937 oRandom(30);
    std::string sBytes(ulCount, '\0');
    for (char& cByte : sBytes)
        cByte = static_cast<char>(oRandom());
    return sBytes;
}

long long SizeOnDisk(const std::string& sPath)
{
    struct stat oStat;
    return ::stat(sPath.c_str(), &oStat) == 0 ? oStat.st_size : -1;
}

// The descriptor that the next file opened will get.
int NextDescriptor()
{
    const int nNext = ::dup(STDIN_FILENO);
    ::close(nNext);
    return nNext;
}

bool WriteNumber(tFile hFile, int nNumber)
{
    return File::Write(hFile, &nNumber, sizeof nNumber, 1) == 1;
}

bool WriteNumbers(tFile hFile, int nFirst, int nCount)
{
    for (int nNumber = nFirst; nNumber < nFirst + nCount; ++nNumber)
    {
        if (!WriteNumber(hFile, nNumber))
            return false;
    }
    return true;
}

// How many numbers the bytes hold, which count from 0 on; -1 if they do not.
int CountNumbers(const std::string& sBytes)
{
    int nCount = 0;
    for (std::size_t i = 0; i + sizeof nCount <= sBytes.size(); i += sizeof nCount, ++nCount)
    {
        int nNumber;
        std::memcpy(&nNumber, &sBytes[i], sizeof nNumber);
        if (nNumber != nCount)
            return -1;
    }
    return sBytes.size() % sizeof nCount == 0 ? nCount : -1;
}

class TOVPlatformStreamStageTest : public CFileFixture
{
protected:
    TOVPlatformStreamStageTest() : m_sBytes(MakeBytes(2 * MAX_BLOCK)) {}

    // Few bytes most of the time, so that they end at each distance from the buffer's end; now and then more than it.
    std::size_t NextSize() { return m_oRandom() % 64 == 0 ? m_oRandom() % MAX_BLOCK : m_oRandom() % 24; }

    // Writes the same block by the library and by the runtime. Returns whether they agree on it.
    bool WriteBoth(tFile hFile, FILE* pPlain, std::size_t ulSize)
    {
        const char* pBlock = &m_sBytes[m_oRandom() % MAX_BLOCK];
        const std::size_t ulPlain = std::fwrite(pBlock, ulSize, 1, pPlain);
        m_nFailures += ulPlain == 0 && ulSize > 0 ? 1 : 0;
        return File::Write(hFile, pBlock, static_cast<long>(ulSize), 1) == ulPlain;
    }

    // Does so until the runtime fails. What it held is lost then, and the library keeps it.
    bool WriteBothUntilFailure(tFile hFile, FILE* pPlain)
    {
        m_nFailures = 0;
        while (m_nFailures == 0)
        {
            if (!WriteBoth(hFile, pPlain, 1 + NextSize()))
                return false;
        }
        return true;
    }

    const std::string m_sBytes;
    std::mt19937 m_oRandom{31};
    int m_nFailures = 0;
};
} // namespace

TEST_F(TOVPlatformStreamStageTest, HandsOverAtTheSameBytesAsTheRuntime)
{
    for (const char* szMode : {"wb", "ab", "w+b", "r+b"})
    {
        WriteWholeFile(Path("plain"), "1234567");
        const tFile hFile = OpenWith("1234567", szMode);
        FILE* const pPlain = std::fopen(Path("plain").c_str(), szMode);
        ASSERT_NE(nullptr, pPlain);

        for (int i = 0; i < 5000; ++i)
        {
            ASSERT_TRUE(WriteBoth(hFile, pPlain, NextSize()));
            ASSERT_EQ(SizeOnDisk(Path("plain")), SizeOnDisk(Path("contents"))) << szMode << i;
        }

        std::fclose(pPlain);
        EXPECT_TRUE(ReadWholeFile(Path("plain")) == CloseAndRead(hFile)) << szMode;
    }
}

TEST_F(TOVPlatformStreamStageTest, KeepsTheOrderOfAllOperations)
{
    WriteWholeFile(Path("plain"), "");
    const tFile hFile = OpenWith("", "w+b");
    FILE* const pPlain = std::fopen(Path("plain").c_str(), "w+b");
    ASSERT_NE(nullptr, pPlain);

    for (int i = 0; i < 20000; ++i)
    {
        ASSERT_TRUE(WriteBoth(hFile, pPlain, NextSize()));
        switch (m_oRandom() % 32)
        {
        case 0:
            File::Puts(hFile, "text");
            std::fputs("text", pPlain);
            break;
        case 1:
            ASSERT_EQ(std::fprintf(pPlain, "%d", i), File::Printf(hFile, "%d", i));
            break;
        case 2:
            ASSERT_EQ(std::ftell(pPlain), File::Tell(hFile));
            break;
        case 3:
            File::Flush(hFile);
            std::fflush(pPlain);
            break;
        case 4:
        {
            const long lTo = static_cast<long>(m_oRandom() % 50000);
            char aOurs[8] = {};
            char aPlain[8] = {};
            std::fseek(pPlain, lTo, SEEK_SET);
            File::Seek(hFile, lTo, File::eSeekOriginStart);
            ASSERT_EQ(std::fread(aPlain, 1, 8, pPlain), File::Read(hFile, aOurs, 1, 8));
            ASSERT_EQ(std::string(aPlain, 8), std::string(aOurs, 8));
            std::fseek(pPlain, 0, SEEK_CUR);
            File::Seek(hFile, 0, File::eSeekOriginCurrent);
            break;
        }
        default:
            break;
        }
        ASSERT_EQ(SizeOnDisk(Path("plain")), SizeOnDisk(Path("contents"))) << i;
    }

    std::fclose(pPlain);
    EXPECT_TRUE(ReadWholeFile(Path("plain")) == CloseAndRead(hFile));
}

TEST_F(TOVPlatformStreamStageTest, MixesWithAnotherStreamOfTheFileAsTheRuntimesDo)
{
    WriteWholeFile(Path("contents"), "");
    WriteWholeFile(Path("plain"), "");
    const tFile aFiles[] = {Open("contents", "ab"), Open("contents", "ab")};
    FILE* const aPlain[] = {std::fopen(Path("plain").c_str(), "ab"), std::fopen(Path("plain").c_str(), "ab")};

    for (int i = 0; i < 5000; ++i)
    {
        const auto nWhich = m_oRandom() % 2;
        ASSERT_TRUE(WriteBoth(aFiles[nWhich], aPlain[nWhich], NextSize()));
    }

    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(0, std::fclose(aPlain[i]));
        EXPECT_EQ(File::eFileSuccess, File::Close(aFiles[i]));
    }
    EXPECT_TRUE(ReadWholeFile(Path("plain")) == ReadWholeFile(Path("contents")));
}

TEST_F(TOVPlatformStreamStageTest, FailsAtAClosedDescriptorWhereTheRuntimeDoes)
{
    WriteWholeFile(Path("contents"), "");
    const int nOurs = NextDescriptor();
    const tFile hFile = Open("contents", "wb");
    FILE* const pPlain = std::fopen(Path("plain").c_str(), "wb");
    ASSERT_NE(nullptr, pPlain);
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(WriteBoth(hFile, pPlain, 8));

    ::close(nOurs);
    ::close(::fileno(pPlain));
    EXPECT_TRUE(WriteBothUntilFailure(hFile, pPlain));

    std::fclose(pPlain);
    GiveUp(hFile);
}

TEST_F(TOVPlatformStreamStageTest, FailsAtTheLimitOfSizesWhereTheRuntimeDoes)
{
    EXPECT_TRUE(IsTrueInFork([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit oLimit = {50000, 50000};
        ::setrlimit(RLIMIT_FSIZE, &oLimit);
        for (int i = 0; i < 20; ++i)
        {
            const tFile hFile = OpenWith("", "wb");
            FILE* const pPlain = std::fopen(Path("plain").c_str(), "wb");
            if (!WriteBothUntilFailure(hFile, pPlain))
                return false;
            if (SizeOnDisk(Path("contents")) != 50000 || SizeOnDisk(Path("plain")) != 50000)
                return false;
        }
        return true;
    }));
}

TEST_F(TOVPlatformStreamStageTest, IsWrittenOutInPartsAsTheLimitOfSizesAllows)
{
    EXPECT_TRUE(IsTrueInFork([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit oLimit = {};
        ::getrlimit(RLIMIT_FSIZE, &oLimit);
        for (const char* szMode : {"wb", "ab", "w+b", "r+b"})
        {
            // What has been read ahead stands in the buffer before what is written.
            const tFile hFile = OpenWith("head-and-more", szMode);
            std::string sExpected = *szMode == 'w' ? "" : "head-and-more";
            if (*szMode == 'r')
            {
                char szHead[4];
                File::Read(hFile, szHead, 1, sizeof szHead);
                File::Seek(hFile, 0, File::eSeekOriginCurrent);
                sExpected = "head";
            }
            sExpected += m_sBytes.substr(0, 3000);
            File::Write(hFile, m_sBytes.data(), 1, 1000);
            File::Write(hFile, &m_sBytes[1000], 1, 2000);

            for (rlim_t ulSize = 0; ulSize < sExpected.size(); ulSize += 1 + ulSize / 2)
            {
                const rlimit oSmall = {ulSize, oLimit.rlim_max};
                ::setrlimit(RLIMIT_FSIZE, &oSmall);
                const bool bFailed = (ulSize % 2 == 0 ? File::Close(hFile) : File::Flush(hFile)) == File::eFileFailure;
                ::setrlimit(RLIMIT_FSIZE, &oLimit);
                if (!bFailed)
                    return false;
            }
            if (File::Close(hFile) != File::eFileSuccess || ReadWholeFile(Path("contents")) != sExpected)
                return false;
        }
        return true;
    }));
}

TEST_F(TOVPlatformStreamStageTest, IsWrittenOutByAFlushOfAllStreams)
{
    for (int nNumbers = 0; nNumbers < 3000; nNumbers += 1 + nNumbers / 4)
    {
        const tFile hFile = OpenWith("", "wb");
        EXPECT_TRUE(WriteNumbers(hFile, 0, nNumbers));
        EXPECT_EQ(0, std::fflush(nullptr));
        EXPECT_EQ(nNumbers, CountNumbers(ReadWholeFile(Path("contents"))));

        EXPECT_TRUE(WriteNumbers(hFile, nNumbers, 10));
        OnAnotherThread([] { EXPECT_EQ(0, std::fflush(nullptr)); });
        EXPECT_EQ(nNumbers + 10, CountNumbers(ReadWholeFile(Path("contents"))));
        EXPECT_EQ(nNumbers + 10, CountNumbers(CloseAndRead(hFile)));
    }
}

TEST_F(TOVPlatformStreamStageTest, IsWrittenOutByAFlushOfAllStreamsInAnotherThread)
{
    const tFile aFiles[] = {OpenWith("", "wb"), Open("second", "wb"), Open("third", "wb")};
    for (const tFile hFile : aFiles)
        EXPECT_TRUE(WriteNumbers(hFile, 0, 500));

    OnAnotherThread([] { EXPECT_EQ(0, std::fflush(nullptr)); });

    for (const char* szName : {"contents", "second", "third"})
        EXPECT_EQ(500, CountNumbers(ReadWholeFile(Path(szName)))) << szName;
}

TEST_F(TOVPlatformStreamStageTest, FailsAFlushOfAllStreamsThatTheSystemDoesNotTake)
{
    const CFullDisk oDisk;
    const tFile hFile = File::Open(oDisk.Path(), "wb");
    ASSERT_NE(FILE_INVALID_HANDLE, hFile);
    EXPECT_TRUE(WriteNumbers(hFile, 0, 10));

    EXPECT_EQ(EOF, std::fflush(nullptr));
    EXPECT_EQ(ENOSPC, errno);

    EXPECT_EQ(0, std::fflush(nullptr)); // what could not be written is gone
    EXPECT_EQ(File::eFileSuccess, File::Close(hFile));
}

// Each flush finds all that was written before it, at whichever step of a write it comes.
TEST_F(TOVPlatformStreamStageTest, LosesNothingToAFlushOfAllStreams)
{
    constexpr int FILES = 300;
    constexpr int NUMBERS = 3000;
    for (int nFile = 0; nFile < FILES; ++nFile)
    {
        const tFile hFile = OpenWith("", "wb");
        const int nFlushAt = 1 + static_cast<int>(m_oRandom() % NUMBERS);
        std::atomic<int> nWritten(0);
        std::thread oFlushing([&] {
            while (nWritten.load(std::memory_order_relaxed) < nFlushAt)
                std::this_thread::yield();
            const int nBefore = nWritten.load(std::memory_order_acquire);
            std::fflush(nullptr);
            const std::string sBytes = ReadWholeFile(Path("contents"));
            EXPECT_LE(nBefore, CountNumbers(sBytes.substr(0, sBytes.size() / sizeof(int) * sizeof(int))));
        });

        int nTaken = 0;
        for (int i = 0; i < NUMBERS; ++i)
        {
            nTaken += WriteNumber(hFile, i) ? 1 : 0;
            nWritten.store(i + 1, std::memory_order_release);
        }
        oFlushing.join();

        EXPECT_EQ(NUMBERS, nTaken);
        ASSERT_EQ(NUMBERS, CountNumbers(CloseAndRead(hFile))) << nFile;
    }
}

TEST_F(TOVPlatformStreamStageTest, OpensAndClosesWhileOthersFlushAllStreams)
{
    std::atomic<bool> bDone(false);
    CThreadGroup oOthers;
    oOthers.Start(2, [&](int nThread) {
        while (!bDone)
        {
            std::fflush(nullptr);
            for (tFile hFile = 0; nThread == 0 && hFile < 4; ++hFile)
                File::CTOVHandleManager::Instance().GetFile(hFile);
        }
    });

    for (int i = 0; i < 300; ++i)
    {
        const tFile hFile = OpenWith("", "wb");
        const int nNumbers = static_cast<int>(m_oRandom() % 2000);
        ASSERT_TRUE(WriteNumbers(hFile, 0, nNumbers));
        ASSERT_EQ(nNumbers, CountNumbers(CloseAndRead(hFile)));
    }
    bDone = true;
}

TEST_F(TOVPlatformStreamStageTest, IsWrittenOutByAFlushInAChildToo)
{
    const tFile hOwn = OpenWith("", "wb");
    EXPECT_TRUE(WriteNumbers(hOwn, 0, 10));
    const tFile hOthers = Open("others", "wb");
    CWorker oOther;
    oOther.Do([hOthers] { EXPECT_TRUE(WriteNumbers(hOthers, 0, 10)); });

    EXPECT_TRUE(IsTrueInFork(
        [&] { return WriteNumbers(hOwn, 10, 10) && WriteNumbers(hOthers, 10, 10) && std::fflush(nullptr) == 0; }));

    EXPECT_EQ(20, CountNumbers(ReadWholeFile(Path("contents"))));
    EXPECT_EQ(20, CountNumbers(ReadWholeFile(Path("others"))));
}

TEST_F(TOVPlatformStreamStageTest, ForksWhileAllStreamsAreFlushed)
{
    constexpr int FORKS = 50;
    const tFile hFile = OpenWith("", "wb");
    const auto fnBusy = [hFile] {
        WriteNumber(hFile, 0);
        std::fflush(nullptr);
    };

    EXPECT_EQ(FORKS, CountForksAmid(FORKS, fnBusy, [hFile] { return WriteNumber(hFile, 0); }));
}

TOV_CHILD(EndsWithOpenFiles)
{
    const bool bByAnotherThread = aArguments.at(1) == "thread";
    const tFile hFile = File::Open(aArguments.at(0).c_str(), "wb");
    WriteNumbers(hFile, 0, 1500);
    if (bByAnotherThread)
        OnAnotherThread([] { std::exit(0); });
}

TEST_F(TOVPlatformStreamStageTest, IsWrittenOutAtTheEndOfTheProcess)
{
    for (const char* szWay : {"main", "thread"})
    {
        const sChildResult oResult = RunChild("EndsWithOpenFiles", {Path("contents"), szWay});
        EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
        EXPECT_EQ(1500, CountNumbers(ReadWholeFile(Path("contents")))) << szWay;
    }
}

#if !TOV_THREAD_SANITIZER // it takes the end of statics for a race with a thread that is never joined
// What a block has beyond the stream's buffer goes to the system at once. At the end, the runtime then has nothing to
// write to the pipe, and does not wait for the thread that sleeps there.
TOV_CHILD(EndsWhileAnotherThreadWrites)
{
    const tFile hPipe = File::Open(aArguments.at(0).c_str(), "r+b"); // its reader, too: nobody empties it
    const tFile hFile = File::Open(aArguments.at(1).c_str(), "wb");
    WriteNumbers(hFile, 0, 1500);
    CTally oStarted;
    std::thread([&] {
        const std::string sBlock(1000000, 'x');
        WriteNumbers(hPipe, 0, 2);
        oStarted.Add();
        File::Write(hPipe, sBlock.data(), 1000000, 1);
    }).detach();
    oStarted.Reaches(1);
    oStarted.Stays(1);
    std::exit(0);
}

TEST_F(TOVPlatformStreamStageTest, DoesNotHinderTheEndOfTheProcess)
{
    ASSERT_EQ(0, ::mkfifo(Path("pipe").c_str(), 0600));
    for (int i = 0; i < 5; ++i)
    {
        const sChildResult oResult = RunChild("EndsWhileAnotherThreadWrites", {Path("pipe"), Path("contents")});
        EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
    }
}
#endif
