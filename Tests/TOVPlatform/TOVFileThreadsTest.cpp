// One file in the hands of several threads, and its transfers beside those of the runtime.
#include "Support/TOVNativeFile.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <random>
#include <thread>

namespace File = TOVPlatform::TOVFile;

namespace
{
// An element that a torn or doubled transfer would break.
struct sRecord
{
    unsigned int nThread;
    unsigned int nIndex;
    unsigned int nCheck;
};

sRecord MakeRecord(unsigned int nThread, unsigned int nIndex)
{
    return {nThread, nIndex, ~(nThread * 1000003u + nIndex)};
}

// Writes records, and returns how many the library took.
unsigned int WriteRecords(unsigned long long hFile, unsigned int nThread, unsigned int nCount)
{
    unsigned int nTaken = 0;
    for (unsigned int nIndex = 0; nIndex < nCount; ++nIndex)
    {
        const sRecord oRecord = MakeRecord(nThread, nIndex);
        nTaken += static_cast<unsigned int>(File::Write(hFile, &oRecord, sizeof oRecord, 1));
    }
    return nTaken;
}

// How many records of the thread stand in the bytes, all in their order and whole; -1 if any is not.
int CountRecords(const std::string& sBytes, unsigned int nThread)
{
    int nCount = 0;
    for (std::size_t i = 0; i + sizeof(sRecord) <= sBytes.size(); i += sizeof(sRecord))
    {
        sRecord oRecord;
        std::memcpy(&oRecord, sBytes.data() + i, sizeof oRecord);
        const sRecord oWhole = MakeRecord(oRecord.nThread, oRecord.nIndex);
        if (oRecord.nCheck != oWhole.nCheck)
            return -1;
        if (oRecord.nThread == nThread && oRecord.nIndex != static_cast<unsigned int>(nCount++))
            return -1;
    }
    return sBytes.size() % sizeof(sRecord) == 0 ? nCount : -1;
}

// Who may use the stream before the transfers: nobody, so that the first thread does without its lock, or the program.
class TOVPlatformFileBesideRuntimeTest : public CFileFixture, public testing::WithParamInterface<bool>
{
protected:
    void Share(unsigned long long hFile) const
    {
        if (GetParam())
            File::CTOVHandleManager::Instance().GetFile(hFile);
    }

    // The size of an element and the number of elements; few bytes most of the time, none at all now and then.
    std::array<long, 2> NextBlock()
    {
        const long lMax = m_oRandom() % 16 == 0 ? 9000 : 12;
        return {static_cast<long>(m_oRandom() % static_cast<unsigned>(lMax)), static_cast<long>(m_oRandom() % 5)};
    }

    std::mt19937 m_oRandom{20};
};

class TOVPlatformFileThreadsTest : public CFileFixture
{
};

std::string RandomBytes(std::mt19937& oRandom, std::size_t ulCount)
{
    std::string sBytes(ulCount, '\0');
    for (char& cByte : sBytes)
        cByte = static_cast<char>(oRandom());
    return sBytes;
}
} // namespace

TEST_P(TOVPlatformFileBesideRuntimeTest, Writes)
{
    const std::string sBytes = RandomBytes(m_oRandom, 9000 * 5);
    const unsigned long long hFile = OpenWith("", "wb");
    Share(hFile);
    FILE* const pPlain = std::fopen(Path("plain").c_str(), "wb");
    ASSERT_NE(nullptr, pPlain);

    for (int i = 0; i < 4000; ++i)
    {
        const auto [lSize, lCount] = NextBlock();
        const std::size_t ulPlain =
            std::fwrite(sBytes.data(), static_cast<std::size_t>(lSize), static_cast<std::size_t>(lCount), pPlain);
        ASSERT_EQ(ulPlain, File::Write(hFile, sBytes.data(), lSize, lCount)) << lSize << " x " << lCount;
        if (i % 100 == 0)
        {
            ASSERT_EQ(std::ftell(pPlain), File::Tell(hFile));
            File::Flush(hFile);
        }
        if (i % 333 == 0)
        {
            std::fseek(pPlain, 5, SEEK_SET);
            File::Seek(hFile, 5, File::eSeekOriginStart);
        }
    }

    std::fclose(pPlain);
    EXPECT_EQ(ReadWholeFile(Path("plain")), CloseAndRead(hFile));
}

TEST_P(TOVPlatformFileBesideRuntimeTest, Reads)
{
    const unsigned long long hFile = OpenWith(RandomBytes(m_oRandom, 100003), "rb");
    Share(hFile);
    FILE* const pPlain = std::fopen(Path("contents").c_str(), "rb");
    ASSERT_NE(nullptr, pPlain);

    int nEnds = 0;
    while (nEnds < 20)
    {
        const auto [lSize, lCount] = NextBlock();
        const std::size_t ulBytes = static_cast<std::size_t>(lSize * lCount);
        std::string sPlain(ulBytes + 1, '?');
        std::string sOurs(ulBytes + 1, '?');
        const std::size_t ulPlain =
            std::fread(&sPlain[0], static_cast<std::size_t>(lSize), static_cast<std::size_t>(lCount), pPlain);
        ASSERT_EQ(ulPlain, File::Read(hFile, &sOurs[0], lSize, lCount)) << lSize << " x " << lCount;
        ASSERT_EQ(sPlain, sOurs) << lSize << " x " << lCount;
        ASSERT_EQ(std::ftell(pPlain), File::Tell(hFile));
        if (ulBytes > 0 && ulPlain < static_cast<std::size_t>(lCount))
        {
            const long lTo = static_cast<long>(m_oRandom() % 100003);
            std::fseek(pPlain, lTo, SEEK_SET);
            File::Seek(hFile, lTo, File::eSeekOriginStart);
            ++nEnds;
        }
    }

    std::fclose(pPlain);
}

TEST_P(TOVPlatformFileBesideRuntimeTest, ChangesDirections)
{
    const std::string sBytes = RandomBytes(m_oRandom, 20000);
    WriteWholeFile(Path("plain"), sBytes);
    const unsigned long long hFile = OpenWith(sBytes, "r+b");
    Share(hFile);
    FILE* const pPlain = std::fopen(Path("plain").c_str(), "r+b");
    ASSERT_NE(nullptr, pPlain);

    for (int i = 0; i < 3000; ++i)
    {
        const long lTo = static_cast<long>(m_oRandom() % 20010);
        std::fseek(pPlain, lTo, SEEK_SET);
        File::Seek(hFile, lTo, File::eSeekOriginStart);
        const bool bWrites = m_oRandom() % 2 == 0;
        for (auto nBlocks = m_oRandom() % 4; nBlocks > 0; --nBlocks)
        {
            char aPlain[8] = {};
            char aOurs[8] = {};
            const std::size_t ulSize = 1 + m_oRandom() % 8;
            if (bWrites)
            {
                ASSERT_EQ(std::fwrite(&sBytes[static_cast<std::size_t>(i)], ulSize, 1, pPlain),
                          File::Write(hFile, &sBytes[static_cast<std::size_t>(i)], static_cast<long>(ulSize), 1));
            }
            else
            {
                ASSERT_EQ(std::fread(aPlain, ulSize, 1, pPlain),
                          File::Read(hFile, aOurs, static_cast<long>(ulSize), 1));
            }
            ASSERT_EQ(std::string(aPlain, 8), std::string(aOurs, 8));
        }
        ASSERT_EQ(std::ftell(pPlain), File::Tell(hFile));
    }

    std::fclose(pPlain);
    EXPECT_EQ(ReadWholeFile(Path("plain")), CloseAndRead(hFile));
}

INSTANTIATE_TEST_SUITE_P(StreamUsers, TOVPlatformFileBesideRuntimeTest, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& oInfo) {
                             return oInfo.param ? "TheProgramToo" : "TheLibraryAlone";
                         });

TEST_F(TOVPlatformFileThreadsTest, KeepsTheRecordsOfTwoThreadsWhole)
{
    static constexpr unsigned int RECORDS = 200000;
    const unsigned long long hFile = OpenWith("", "wb");

    std::thread oOther([hFile] { EXPECT_EQ(RECORDS, WriteRecords(hFile, 1, RECORDS)); });
    EXPECT_EQ(RECORDS, WriteRecords(hFile, 2, RECORDS));
    oOther.join();

    const std::string sBytes = CloseAndRead(hFile);
    EXPECT_EQ(static_cast<int>(RECORDS), CountRecords(sBytes, 1));
    EXPECT_EQ(static_cast<int>(RECORDS), CountRecords(sBytes, 2));
}

// The second thread comes at another moment of the first one's work each time.
TEST_F(TOVPlatformFileThreadsTest, KeepsAllRecordsWhenAnotherThreadComes)
{
    constexpr int FILES = 200;
    static constexpr unsigned int RECORDS = 1500;
    std::atomic<unsigned long long> hShared(FILE_INVALID_HANDLE);
    std::atomic<unsigned int> nReached(0);
    std::atomic<unsigned int> nComeAt(1);
    std::atomic<int> nDone(0);

    std::thread oOther([&] {
        for (int i = 0; i < FILES; ++i)
        {
            while (nDone < 2 * i || nReached < nComeAt)
                std::this_thread::yield();
            EXPECT_EQ(RECORDS, WriteRecords(hShared, 1, RECORDS));
            ++nDone;
            while (nDone < 2 * (i + 1))
                std::this_thread::yield();
        }
    });

    std::mt19937 oRandom(21);
    for (int i = 0; i < FILES; ++i)
    {
        const unsigned long long hFile = OpenWith("", "wb");
        nReached = 0;
        nComeAt = 1 + static_cast<unsigned int>(oRandom()) % RECORDS;
        hShared = hFile;
        unsigned int nTaken = 0;
        for (unsigned int nIndex = 0; nIndex < RECORDS; ++nIndex)
        {
            const sRecord oRecord = MakeRecord(2, nIndex);
            nTaken += static_cast<unsigned int>(File::Write(hFile, &oRecord, sizeof oRecord, 1));
            nReached.store(nIndex + 1, std::memory_order_relaxed);
        }
        EXPECT_EQ(RECORDS, nTaken);

        while (nDone < 2 * i + 1)
            std::this_thread::yield();
        const std::string sBytes = CloseAndRead(hFile);
        ASSERT_EQ(static_cast<int>(RECORDS), CountRecords(sBytes, 1)) << i;
        ASSERT_EQ(static_cast<int>(RECORDS), CountRecords(sBytes, 2)) << i;
        nReached = 0;
        nComeAt = 1;
        ++nDone;
    }
    oOther.join();
}

TEST_F(TOVPlatformFileThreadsTest, GivesEachNumberToOneOfFourReaders)
{
    constexpr int NUMBERS = 200000;
    std::string sBytes(NUMBERS * sizeof(int), '\0');
    for (int i = 0; i < NUMBERS; ++i)
        std::memcpy(&sBytes[static_cast<std::size_t>(i) * sizeof i], &i, sizeof i);
    const unsigned long long hFile = OpenWith(sBytes, "rb");

    std::vector<std::vector<int>> aaRead(4);
    std::vector<std::thread> aReaders;
    for (std::vector<int>& aRead : aaRead)
        aReaders.emplace_back([&aRead, hFile] {
            for (int nNumber = 0; File::Read(hFile, &nNumber, sizeof nNumber, 1) == 1;)
                aRead.push_back(nNumber);
        });
    std::vector<int> aAll;
    for (std::size_t i = 0; i < aaRead.size(); ++i)
    {
        aReaders[i].join();
        EXPECT_TRUE(std::is_sorted(aaRead[i].begin(), aaRead[i].end()));
        aAll.insert(aAll.end(), aaRead[i].begin(), aaRead[i].end());
    }

    std::sort(aAll.begin(), aAll.end());
    ASSERT_EQ(static_cast<std::size_t>(NUMBERS), aAll.size());
    for (int i = 0; i < NUMBERS; ++i)
        ASSERT_EQ(i, aAll[static_cast<std::size_t>(i)]);
}

TEST_F(TOVPlatformFileThreadsTest, LetsTheProgramUseTheStreamBesideItsFirstThread)
{
    static constexpr unsigned int RECORDS = 100000;
    const unsigned long long hFile = OpenWith("", "wb");
    EXPECT_EQ(1u, WriteRecords(hFile, 3, 1));

    std::thread oProgram([hFile] {
        FILE* const pFile = File::CTOVHandleManager::Instance().GetFile(hFile);
        for (unsigned int nIndex = 0; nIndex < RECORDS; ++nIndex)
        {
            const sRecord oRecord = MakeRecord(1, nIndex);
            EXPECT_EQ(1u, std::fwrite(&oRecord, sizeof oRecord, 1, pFile));
        }
    });
    EXPECT_EQ(RECORDS, WriteRecords(hFile, 2, RECORDS));
    oProgram.join();

    const std::string sBytes = CloseAndRead(hFile);
    EXPECT_EQ(1, CountRecords(sBytes, 3));
    EXPECT_EQ(static_cast<int>(RECORDS), CountRecords(sBytes, 1));
    EXPECT_EQ(static_cast<int>(RECORDS), CountRecords(sBytes, 2));
}

TEST_F(TOVPlatformFileThreadsTest, LeavesAStreamWholeThatTheProgramTakesOutOfItsSlot)
{
    File::CTOVHandleManager& oTable = File::CTOVHandleManager::Instance();
    WriteWholeFile(Path("taken"), "");
    const unsigned long long hTaken = File::Open(Path("taken").c_str(), "wb");
    EXPECT_EQ(10u, WriteRecords(hTaken, 1, 10));
    FILE* const pTaken = oTable.GetFile(hTaken);
    oTable.ClearHandle(hTaken);

    const unsigned long long hNext = OpenWith("", "wb");
    EXPECT_EQ(hTaken, hNext);
    EXPECT_EQ(10u, WriteRecords(hNext, 2, 10));
    const sRecord oLast = MakeRecord(1, 10);
    EXPECT_EQ(1u, std::fwrite(&oLast, sizeof oLast, 1, pTaken));

    EXPECT_EQ(10, CountRecords(CloseAndRead(hNext), 2));
    EXPECT_EQ(0, std::fclose(pTaken));
    EXPECT_EQ(11, CountRecords(ReadWholeFile(Path("taken")), 1));
}

TEST_F(TOVPlatformFileThreadsTest, PassesAFileFromThreadToThread)
{
    const unsigned long long hFile = OpenWith("", "wb");

    for (unsigned int nThread = 0; nThread < 20; ++nThread)
        std::thread([=] { EXPECT_EQ(10u, WriteRecords(hFile, nThread, 10)); }).join(); // each has ended before the next

    const std::string sBytes = CloseAndRead(hFile);
    for (unsigned int nThread = 0; nThread < 20; ++nThread)
        EXPECT_EQ(10, CountRecords(sBytes, nThread));
}

TEST_F(TOVPlatformFileThreadsTest, ClosesAFileThatAnotherThreadHasUsed)
{
    CWorker oOther;
    for (int i = 0; i < 100; ++i)
    {
        const unsigned long long hFile = OpenWith("", "wb");
        oOther.Do([hFile] { EXPECT_EQ(10u, WriteRecords(hFile, 1, 10)); });
        EXPECT_EQ(10, CountRecords(CloseAndRead(hFile), 1));
    }
}

TEST_F(TOVPlatformFileThreadsTest, ReusesTheSlotOfAnotherThread)
{
    CWorker oOther;
    unsigned long long hFirst = FILE_INVALID_HANDLE;
    oOther.Do([&] {
        hFirst = OpenWith("", "wb");
        EXPECT_EQ(10u, WriteRecords(hFirst, 1, 10));
        EXPECT_EQ(File::eFileSuccess, File::Close(hFirst));
    });

    const unsigned long long hSecond = OpenWith("", "wb");
    EXPECT_EQ(hFirst, hSecond);
    EXPECT_EQ(10u, WriteRecords(hSecond, 2, 10));
    oOther.Do([hSecond] { EXPECT_EQ(10u, WriteRecords(hSecond, 1, 10)); });

    const std::string sBytes = CloseAndRead(hSecond);
    EXPECT_EQ(10, CountRecords(sBytes, 1));
    EXPECT_EQ(10, CountRecords(sBytes, 2));
}
