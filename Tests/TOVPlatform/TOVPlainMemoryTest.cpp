#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVMemory.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{
constexpr char SOURCE[] = TOV_PLATFORM_SOURCE("TOVMemory");

// How a child ends.
constexpr int CRASHED = -1;
constexpr int RAISED = 2;

// A size as a caller with wider numbers hands it over: the functions' own 16 bits cut it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
bool Cmp(const void* pFirst, const void* pSecond, unsigned long ulSize)
{
    return TOVMemory_Cmp(pFirst, pSecond, ulSize);
}

void Copy(void* pDestination, const void* pSource, unsigned long ulSize)
{
    TOVMemory_Copy(pDestination, pSource, ulSize);
}

void Set(void* pDestination, int nValue, unsigned long ulSize)
{
    TOVMemory_Set(pDestination, nValue, ulSize);
}

void Zero(void* pMemory, unsigned long ulSize)
{
    TOVMemory_Zero(pMemory, ulSize);
}
#pragma GCC diagnostic pop
} // namespace

TEST(TOVPlatformPlainMemoryTest, CmpIsTrueForEqualBytes)
{
    EXPECT_TRUE(TOVMemory_Cmp("abcd", "abcx", 3));
    EXPECT_TRUE(TOVMemory_Cmp("a\0b", "a\0b", 3));
}

TEST(TOVPlatformPlainMemoryTest, CmpIsFalseForADifferenceAnywhere)
{
    for (unsigned short usPlace = 0; usPlace < 9; ++usPlace)
    {
        char szOther[] = "abcdefghi";
        szOther[usPlace] = '!';
        EXPECT_FALSE(TOVMemory_Cmp("abcdefghi", szOther, 9)) << usPlace;
        EXPECT_TRUE(TOVMemory_Cmp("abcdefghi", szOther, usPlace)) << usPlace;
    }
}

TEST(TOVPlatformPlainMemoryTest, CmpStopsAtTheFirstDifference)
{
    // Blocks of one byte each: what lies behind must not be read.
    const std::vector<tByte> aFirst(1, 1);
    const std::vector<tByte> aSecond(1, 2);

    EXPECT_FALSE(TOVMemory_Cmp(aFirst.data(), aSecond.data(), 0xFFFF));
}

TEST(TOVPlatformPlainMemoryTest, CmpOfNoBytesIsTrueWhateverThePointersAre)
{
    EXPECT_TRUE(TOVMemory_Cmp("a", "b", 0));
    EXPECT_TRUE(TOVMemory_Cmp(nullptr, nullptr, 0));
    EXPECT_TRUE(TOVMemory_Cmp("a", nullptr, 0));
}

TEST(TOVPlatformPlainMemoryTest, CmpAndCopyCheckNothing)
{
    EXPECT_NO_CHECK(TOVMemory_Cmp(nullptr, nullptr, 0));
    EXPECT_NO_CHECK(TOVMemory_Copy(nullptr, nullptr, 0));
}

TOV_CHILD(TouchesNullMemory)
{
    char szText[] = "abcd";
    try
    {
        if (aArguments[0] == "first")
            std::printf("%d", TOVMemory_Cmp(nullptr, szText, 4));
        else if (aArguments[0] == "second")
            std::printf("%d", TOVMemory_Cmp(szText, nullptr, 4));
        else if (aArguments[0] == "destination")
            TOVMemory_Copy(nullptr, szText, 4);
        else
            TOVMemory_Copy(szText, nullptr, 4);
    }
    catch (const CTOVException&)
    {
        std::exit(RAISED);
    }
}

// Settled: a null pointer with a size is a fault of the caller's, which no check meets.
TEST(TOVPlatformPlainMemoryTest, CmpAndCopyFaultAtANullPointerWithASize)
{
    for (const char* szWhich : {"first", "second", "destination", "source"})
    {
        const sChildResult oResult = RunChild("TouchesNullMemory", {szWhich});
        const bool bReported = oResult.sOutput.find("null pointer") != std::string::npos ||
                               oResult.sOutput.find("SEGV on") != std::string::npos; // by a sanitizer

        EXPECT_TRUE(bReported || oResult.nExitCode == CRASHED) << szWhich << ": " << oResult.nExitCode;
        EXPECT_EQ(std::string::npos, oResult.sOutput.find("deadline")) << szWhich;
    }
}

TEST(TOVPlatformPlainMemoryTest, CopiesTheGivenBytes)
{
    char szDestination[] = "......";

    TOVMemory_Copy(szDestination, "ab\0d", 4);

    EXPECT_EQ(0, std::memcmp("ab\0d..", szDestination, 6));
}

TEST(TOVPlatformPlainMemoryTest, CopyWithinABlockSmearsUpwardAndMovesDownward)
{
    char szUp[] = "abcdef";
    char szDown[] = "abcdef";
    char szByTwo[] = "abcdefgh";

    TOVMemory_Copy(szUp + 1, szUp, 5);
    TOVMemory_Copy(szDown, szDown + 1, 5);
    TOVMemory_Copy(szByTwo + 2, szByTwo, 6);

    EXPECT_STREQ("aaaaaa", szUp);
    EXPECT_STREQ("bcdeff", szDown);
    EXPECT_STREQ("abababab", szByTwo);
}

TEST(TOVPlatformPlainMemoryTest, SetFillsWithTheLowByte)
{
    tByte aMemory[] = {1, 2, 3, 4};

    TOVMemory_Set(aMemory, 0x1A5, 3);

    EXPECT_EQ(0xA5, aMemory[0]);
    EXPECT_EQ(0xA5, aMemory[2]);
    EXPECT_EQ(4, aMemory[3]);
}

TEST(TOVPlatformPlainMemoryTest, ZeroClearsTheGivenBytes)
{
    tByte aMemory[] = {1, 2, 3, 4};

    TOVMemory_Zero(aMemory, 3);

    EXPECT_EQ(0, aMemory[0]);
    EXPECT_EQ(0, aMemory[2]);
    EXPECT_EQ(4, aMemory[3]);
}

TEST(TOVPlatformPlainMemoryTest, ASizeOfZeroTouchesNothing)
{
    tByte nByte = 9;

    TOVMemory_Copy(&nByte, "x", 0);
    TOVMemory_Set(&nByte, 1, 0);
    TOVMemory_Zero(&nByte, 0);

    EXPECT_EQ(9, nByte);
}

TEST(TOVPlatformPlainMemoryTest, TheLargestSizeIs65535)
{
    std::vector<tByte> aMemory(65536, 1);
    const std::vector<tByte> aSource(65536, 7);

    TOVMemory_Zero(aMemory.data(), 65535);
    EXPECT_EQ(0, aMemory[65534]);
    EXPECT_EQ(1, aMemory[65535]);

    TOVMemory_Copy(aMemory.data(), aSource.data(), 65535);
    EXPECT_EQ(7, aMemory[65534]);
    EXPECT_EQ(1, aMemory[65535]);
    EXPECT_TRUE(TOVMemory_Cmp(aMemory.data(), aSource.data(), 65535));
}

TEST(TOVPlatformPlainMemoryTest, CutsTheSizeToItsLow16Bits)
{
    tByte aMemory[] = {9, 9, 9};

    Zero(aMemory, 65536);
    Set(aMemory, 1, 65536);
    Copy(aMemory, "xyz", 65536);
    EXPECT_EQ(9, aMemory[0]);
    EXPECT_TRUE(Cmp("a", "b", 65536));

    Copy(aMemory, "\1\2\3", 65538);
    EXPECT_EQ(2, aMemory[1]);
    EXPECT_EQ(9, aMemory[2]);
}

TEST(TOVPlatformPlainMemoryTest, SetRefusesANullDestinationAlsoForNoBytes)
{
    EXPECT_CHECK_AT(SOURCE, "pDestination != NULL", TOVMemory_Set(nullptr, 0, 4));
    EXPECT_CHECK_AT(SOURCE, "pDestination != NULL", TOVMemory_Set(nullptr, 0, 0));
    EXPECT_CHECK_AT(SOURCE, "pDestination != NULL", Set(nullptr, 0, 65536));
}

TEST(TOVPlatformPlainMemoryTest, ZeroRefusesNullMemoryAlsoForNoBytes)
{
    EXPECT_CHECK_AT(SOURCE, "pMemory != NULL", TOVMemory_Zero(nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, "pMemory != NULL", TOVMemory_Zero(nullptr, 0));
}
