// What moves through an open file, and its position.
#include "Support/TOVNativeFile.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <cstdarg>
#include <cstring>

namespace File = TOVPlatform::TOVFile;

namespace
{
constexpr unsigned long long EMPTY_SLOT = FILE_SLOTS - 1;
constexpr unsigned long long GIBIBYTE = 1ull << 30;

class TOVPlatformFileTransferTest : public CFileFixture
{
};

// The low 32 bits count, however wide a long is.
long LongOf(long long llValue)
{
    return static_cast<long>(llValue);
}

struct sSeek
{
    long lOffset;
    int nOrigin;
    long lReached; // in a file of 10 bytes, from position 4
};

const sSeek SEEKS[] = {
    {0, 0, 0},  {3, 0, 3},  {10, 0, 10}, {25, 0, 25}, // from the start
    {0, 1, 4},  {3, 1, 7},  {-4, 1, 0},  {20, 1, 24}, // from the position
    {0, 2, 10}, {-3, 2, 7}, {-10, 2, 0}, {5, 2, 15},  // from the end
    {3, 3, 3},  {3, 9, 3},  {3, -1, 3},               // any other origin is the start
};

const sSeek FAILING_SEEKS[] = {{-1, 0, 4}, {-5, 1, 4}, {-11, 2, 4}, {-1, 9, 4}};
} // namespace

TEST_F(TOVPlatformFileTransferTest, CountsWholeElementsThatItReads)
{
    const unsigned long long hFile = OpenWith("..0123456789", "rb");
    File::Seek(hFile, -10, File::eSeekOriginEnd);
    char szBuffer[13] = "";

    EXPECT_EQ(2u, File::Read(hFile, szBuffer, 4, 3));
    EXPECT_EQ("01234567", std::string(szBuffer, 8));
}

TEST_F(TOVPlatformFileTransferTest, CountsBytesWhereAnElementIsOne)
{
    const unsigned long long hFile = OpenWith("0123456789", "rb");
    char szBuffer[33] = "";

    EXPECT_EQ(10u, File::Read(hFile, szBuffer, 1, 32));
    EXPECT_STREQ("0123456789", szBuffer);
    EXPECT_EQ(0u, File::Read(hFile, szBuffer, 1, 32));
}

TEST_F(TOVPlatformFileTransferTest, CountsWholeElementsThatItWrites)
{
    const unsigned long long hFile = OpenWith("", "wb");

    EXPECT_EQ(3u, File::Write(hFile, "0123456789AB", 4, 3));
    EXPECT_EQ(1u, File::Write(hFile, "CDEF", 4, 1));

    EXPECT_EQ("0123456789ABCDEF", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, MovesNothingForASizeOrACountOfZero)
{
    const unsigned long long hFile = OpenWith("0123", "r+b");
    char szBuffer[] = "????";

    EXPECT_EQ(0u, File::Read(hFile, szBuffer, 0, 4));
    EXPECT_EQ(0u, File::Read(hFile, szBuffer, 4, 0));
    EXPECT_EQ(0u, File::Write(hFile, "xxxx", 0, 4));
    EXPECT_EQ(0u, File::Write(hFile, "xxxx", 4, 0));

    EXPECT_STREQ("????", szBuffer);
    EXPECT_EQ(0, File::Tell(hFile));
    EXPECT_EQ("0123", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, MovesNothingWithoutABuffer)
{
    const unsigned long long hFile = OpenWith("0123", "r+b");

    EXPECT_EQ(0u, File::Read(hFile, nullptr, 0, 1));
    EXPECT_EQ(0u, File::Read(hFile, nullptr, 1, 4));
    EXPECT_EQ(File::eFileFailure, File::Gets(hFile, nullptr, 1));
    EXPECT_EQ(File::eFileFailure, File::Gets(hFile, nullptr, 8));
    EXPECT_EQ(0, File::Tell(hFile));
    EXPECT_EQ(0u, File::Write(hFile, nullptr, 0, 1));
    EXPECT_EQ(0u, File::Write(hFile, nullptr, 1, 4));
    EXPECT_EQ(File::eFileSuccess, File::Puts(hFile, nullptr)); // turned around, as for every text that is not written

    EXPECT_EQ("0123", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, CountsSizesIn32Bits)
{
    const unsigned long long hFile = OpenWith("0123", "r+b");
    char szBuffer[] = "????";

    EXPECT_EQ(1u, File::Read(hFile, szBuffer, LongOf(0x100000002), 1));
    EXPECT_EQ(1u, File::Read(hFile, szBuffer + 2, 1, LongOf(0x300000001)));
    File::Seek(hFile, 0, File::eSeekOriginCurrent);
    EXPECT_EQ(1u, File::Write(hFile, "xyz", LongOf(0x100000001), LongOf(0x200000001)));

    EXPECT_STREQ("012?", szBuffer);
    EXPECT_EQ("012x", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, ReadsNothingFromAFileOpenForWriting)
{
    const unsigned long long hFile = OpenWith("", "wb");
    File::Write(hFile, "0123", 1, 4);
    File::Seek(hFile, 0, File::eSeekOriginStart);
    char cRead = '?';

    EXPECT_EQ(0u, File::Read(hFile, &cRead, 1, 1));
    EXPECT_EQ('?', cRead);
}

TEST_F(TOVPlatformFileTransferTest, WritesNothingToAFileOpenForReading)
{
    const unsigned long long hFile = OpenWith("0123", "rb");

    EXPECT_EQ(0u, File::Write(hFile, "x", 1, 1));

    EXPECT_EQ("0123", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, MovesNothingThroughAnEmptySlot)
{
    char szBuffer[] = "????";

    EXPECT_EQ(0u, File::Read(EMPTY_SLOT, szBuffer, 1, 4));
    EXPECT_EQ(0u, File::Write(EMPTY_SLOT, "x", 1, 1));
    EXPECT_EQ(File::eFileFailure, File::Gets(EMPTY_SLOT, szBuffer, 4));
    EXPECT_EQ(File::eFileFailure, File::Puts(EMPTY_SLOT, "x"));
    EXPECT_EQ(-1, File::Printf(EMPTY_SLOT, "%d", 1));
    EXPECT_EQ(-1, CallVprintf(EMPTY_SLOT, "%d", 1));
    EXPECT_EQ(-1, File::Tell(EMPTY_SLOT));
    EXPECT_EQ(File::eFileFailure, File::Seek(EMPTY_SLOT, 0, File::eSeekOriginStart));
    EXPECT_EQ(File::eFileFailure, File::Flush(EMPTY_SLOT));

    EXPECT_STREQ("????", szBuffer);
}

TEST_F(TOVPlatformFileTransferTest, ReadsALineWithItsLineFeed)
{
    const unsigned long long hFile = OpenWith("one\n\nlast", "rb");
    char szBuffer[16];

    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, sizeof(szBuffer)));
    EXPECT_STREQ("one\n", szBuffer);
    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, sizeof(szBuffer)));
    EXPECT_STREQ("\n", szBuffer);
    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, sizeof(szBuffer)));
    EXPECT_STREQ("last", szBuffer);
}

TEST_F(TOVPlatformFileTransferTest, ReadsALongLineInPieces)
{
    const unsigned long long hFile = OpenWith("12345\n", "rb");
    char szBuffer[] = "????????";

    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, 4));
    EXPECT_EQ(std::string("123\0????", 8), std::string(szBuffer, 8));
    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, 4));
    EXPECT_STREQ("45\n", szBuffer);
}

TEST_F(TOVPlatformFileTransferTest, ReadsNoLineAtTheEndOfTheFile)
{
    const unsigned long long hFile = OpenWith("x", "rb");
    char szBuffer[8] = "";
    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, sizeof(szBuffer)));

    EXPECT_EQ(File::eFileFailure, File::Gets(hFile, szBuffer, sizeof(szBuffer)));
    EXPECT_STREQ("x", szBuffer);
    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, 1)); // room for the terminator
    EXPECT_STREQ("", szBuffer);
}

TEST_F(TOVPlatformFileTransferTest, ReadsNoLineIntoNoRoom)
{
    const unsigned long long hFile = OpenWith("line\n", "rb");
    char szBuffer[] = "???";

    EXPECT_EQ(File::eFileFailure, File::Gets(hFile, szBuffer, 0));
    EXPECT_EQ(File::eFileFailure, File::Gets(hFile, szBuffer, -1));
    EXPECT_STREQ("???", szBuffer);

    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, 1)); // room for the terminator
    EXPECT_STREQ("", szBuffer);
    EXPECT_EQ('?', szBuffer[1]);
    EXPECT_EQ(0, File::Tell(hFile));
}

TEST_F(TOVPlatformFileTransferTest, ReadsNoLineFromAFileOpenForWriting)
{
    const unsigned long long hFile = OpenWith("", "wb");
    char szBuffer[8] = "";

    EXPECT_EQ(File::eFileFailure, File::Gets(hFile, szBuffer, sizeof(szBuffer)));
}

TEST_F(TOVPlatformFileTransferTest, ReadsTheSystemsLineEndsInText)
{
    const unsigned long long hFile = OpenWith(std::string("one") + LINE_END + "two", "rt");
    char szBuffer[16];

    EXPECT_EQ(File::eFileSuccess, File::Gets(hFile, szBuffer, sizeof(szBuffer)));
    EXPECT_STREQ("one\n", szBuffer);
}

// Settled: a text that was put is reported as a failure, and one that was not as a success.
TEST_F(TOVPlatformFileTransferTest, ReportsATextThatItPutsAsAFailure)
{
    const unsigned long long hFile = OpenWith("", "wb");

    EXPECT_EQ(File::eFileFailure, File::Puts(hFile, "one\n"));
    EXPECT_EQ(File::eFileFailure, File::Puts(hFile, ""));
    EXPECT_EQ(File::eFileFailure, File::Puts(hFile, std::string(20000, 'x').c_str()));

    EXPECT_EQ("one\n" + std::string(20000, 'x'), CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, ReportsATextThatItCannotPutAsASuccess)
{
    const unsigned long long hFile = OpenWith("0123", "rb");

    EXPECT_EQ(File::eFileSuccess, File::Puts(hFile, "x"));

    EXPECT_EQ("0123", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, PrintsAndCountsTheCharacters)
{
    const unsigned long long hFile = OpenWith("", "wb");

    EXPECT_EQ(7, File::Printf(hFile, "%d-%s|%c", 42, "ab", '!'));
    EXPECT_EQ(5, CallVprintf(hFile, "%5.1f", 2.5));
    EXPECT_EQ(0, File::Printf(hFile, "%s", ""));
    EXPECT_EQ(4, File::Printf(hFile, "100%%"));

    EXPECT_EQ("42-ab|!  2.5100%", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, PrintsAsTheSystemsFormatsAreUsedEverywhere)
{
    const unsigned long long hFile = OpenWith("", "wb");

    EXPECT_EQ(16, File::Printf(hFile, "%I64x", 0xFEDCBA9876543210ull));

    EXPECT_EQ("fedcba9876543210", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, PrintsLongText)
{
    const unsigned long long hFile = OpenWith("", "wb");
    const std::string sText(70000, 'x');

    EXPECT_EQ(70002, File::Printf(hFile, "<%s>", sText.c_str()));

    EXPECT_EQ("<" + sText + ">", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, CountsPrintedLineFeedsOnce)
{
    const unsigned long long hFile = OpenWith("", "wt");

    EXPECT_EQ(4, File::Printf(hFile, "a\nb%c", '\n'));

    EXPECT_EQ(std::string("a") + LINE_END + "b" + LINE_END, CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, GivesANegativeCountWhenItCannotPrint)
{
    const unsigned long long hFile = OpenWith("0123", "rb");

    EXPECT_GT(0, File::Printf(hFile, "%d", 1));
    EXPECT_GT(0, CallVprintf(hFile, "%d", 1));

    EXPECT_EQ("0123", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, PrintsNothingWithoutAFormat)
{
    const unsigned long long hFile = OpenWith("", "wb");
    const char* szFormat = nullptr;

    EXPECT_EQ(-1, File::Printf(hFile, szFormat));
    EXPECT_EQ(-1, CallVprintf(hFile, szFormat));

    EXPECT_EQ("", CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, TellsThePosition)
{
    const unsigned long long hFile = OpenWith("0123456789", "r+b");
    char szBuffer[4];
    EXPECT_EQ(0, File::Tell(hFile));

    File::Read(hFile, szBuffer, 1, 3);
    EXPECT_EQ(3, File::Tell(hFile));

    File::Seek(hFile, 0, File::eSeekOriginCurrent);
    File::Write(hFile, "xx", 1, 2);
    EXPECT_EQ(5, File::Tell(hFile));
}

TEST_F(TOVPlatformFileTransferTest, SeeksFromEachOrigin)
{
    const unsigned long long hFile = OpenWith("0123456789", "rb");
    for (const sSeek& oSeek : SEEKS)
    {
        File::Seek(hFile, 4, File::eSeekOriginStart);

        EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, oSeek.lOffset, static_cast<File::eSeekOrigin>(oSeek.nOrigin)));
        EXPECT_EQ(oSeek.lReached, File::Tell(hFile)) << oSeek.lOffset << " from " << oSeek.nOrigin;
    }
}

TEST_F(TOVPlatformFileTransferTest, FailsToSeekBeforeTheStart)
{
    const unsigned long long hFile = OpenWith("0123456789", "rb");
    for (const sSeek& oSeek : FAILING_SEEKS)
    {
        File::Seek(hFile, 4, File::eSeekOriginStart);

        EXPECT_EQ(File::eFileFailure, File::Seek(hFile, oSeek.lOffset, static_cast<File::eSeekOrigin>(oSeek.nOrigin)));
        EXPECT_EQ(oSeek.lReached, File::Tell(hFile)) << oSeek.lOffset << " from " << oSeek.nOrigin;
    }
}

TEST_F(TOVPlatformFileTransferTest, ReadsOnWhereItWasSoughtTo)
{
    const unsigned long long hFile = OpenWith("0123456789", "rb");
    char szBuffer[11] = "";
    EXPECT_EQ(10u, File::Read(hFile, szBuffer, 1, 11));

    File::Seek(hFile, 8, File::eSeekOriginStart);

    EXPECT_EQ(2u, File::Read(hFile, szBuffer, 1, 2));
    EXPECT_EQ("89", std::string(szBuffer, 2));
}

TEST_F(TOVPlatformFileTransferTest, FillsWithZerosWhatLiesBeforeAWriteBeyondTheEnd)
{
    const unsigned long long hFile = OpenWith("01", "r+b");
    File::Seek(hFile, 4, File::eSeekOriginStart);

    EXPECT_EQ(1u, File::Write(hFile, "x", 1, 1));

    EXPECT_EQ(std::string("01\0\0x", 5), CloseAndRead(hFile));
}

TEST_F(TOVPlatformFileTransferTest, SeeksBy32BitsAlone)
{
    const unsigned long long hFile = OpenWith("0123456789", "rb");

    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, LongOf(0x100000003), File::eSeekOriginStart));
    EXPECT_EQ(3, File::Tell(hFile));
    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, LongOf(0x0FFFFFFFF), File::eSeekOriginCurrent));
    EXPECT_EQ(2, File::Tell(hFile));
    EXPECT_EQ(File::eFileFailure, File::Seek(hFile, LongOf(0x080000000), File::eSeekOriginStart));
    EXPECT_EQ(2, File::Tell(hFile));
}

TEST_F(TOVPlatformFileTransferTest, TellsNoPositionBeyond32Bits)
{
    MakeBigFile(Path("big"), 3 * GIBIBYTE);
    const unsigned long long hFile = Open("big", "rb");
    ASSERT_NE(FILE_INVALID_HANDLE, hFile);

    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, 0x7FFFFFFF, File::eSeekOriginStart));
    EXPECT_EQ(0x7FFFFFFF, File::Tell(hFile));
    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, 1, File::eSeekOriginCurrent));
    EXPECT_EQ(-1, File::Tell(hFile));
    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, 0, File::eSeekOriginEnd));
    EXPECT_EQ(-1, File::Tell(hFile));
}

TEST_F(TOVPlatformFileTransferTest, ReachesAndReadsWhatLiesBeyond32Bits)
{
    MakeBigFile(Path("big"), 3 * GIBIBYTE);
    const unsigned long long hFile = Open("big", "r+b");
    ASSERT_NE(FILE_INVALID_HANDLE, hFile);
    char szBuffer[4] = "";

    File::Seek(hFile, -3, File::eSeekOriginEnd);
    EXPECT_EQ(3u, File::Write(hFile, "end", 1, 3));
    File::Seek(hFile, 0x7FFFFFFF, File::eSeekOriginStart);
    File::Seek(hFile, 0x40000001 - 3, File::eSeekOriginCurrent);

    EXPECT_EQ(3u, File::Read(hFile, szBuffer, 1, 3));
    EXPECT_STREQ("end", szBuffer);
    EXPECT_EQ(3 * GIBIBYTE, std::filesystem::file_size(Path("big")));
}

TEST_F(TOVPlatformFileTransferTest, FlushesWhatWasWritten)
{
    const unsigned long long hFile = OpenWith("", "wb");
    File::Write(hFile, "text", 1, 4);

    EXPECT_EQ(File::eFileSuccess, File::Flush(hFile));

    EXPECT_EQ("text", ReadWholeFile(Path("contents")));
}

TEST_F(TOVPlatformFileTransferTest, FlushesAndClosesAFileThatOnlyReads)
{
    for (const char* szMode : {"r", "rb", "rc", "rbc", "rtn"})
    {
        const unsigned long long hFile = OpenWith("text", szMode);
        char cRead = '?';
        EXPECT_EQ(1u, File::Read(hFile, &cRead, 1, 1));

        EXPECT_EQ(File::eFileSuccess, File::Flush(hFile)) << szMode;
        EXPECT_EQ(File::eFileSuccess, File::Close(hFile)) << szMode;
    }
}

TEST_F(TOVPlatformFileTransferTest, FailsToFlushWhatTheSystemDoesNotTake)
{
    const unsigned long long hFile = OpenWith("", "wb");
    File::Write(hFile, "text", 1, 4);

    CUnusableStream oUnusable(File::CTOVHandleManager::Instance().GetFile(hFile));

    EXPECT_EQ(File::eFileFailure, File::Flush(hFile));
}
