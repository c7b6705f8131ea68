#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVMemory.h>

#include <cstring>
#include <random>
#include <vector>

namespace TOVMemory = TOVPlatform::TOVMemory;

namespace
{
constexpr char SOURCE[] = TOV_PLATFORM_SOURCE("TOVMemory");

// The block functions' checks name what they were given by the wrong pointer or size.
constexpr char NO_SIZE[] = "dwSize > 0";
constexpr char NO_MEMORY[] = "pMemory != NULL";
constexpr char NO_BLOCK[] = "pMemoryBlock != NULL";
constexpr char NO_DESTINATION[] = "pDestination != NULL";
constexpr char NO_SOURCE[] = "pSource != NULL";
constexpr char BAD_WORD_SIZE[] = "(dwSize > 0) && ((dwSize % 4) == 0)";

// Blocks to compare: equal but for one byte, at any distance from an aligned address.
struct sBlocks
{
    sBlocks(std::size_t nSize, std::size_t nOffset)
        : aFirst(nSize + nOffset, 0x55), aSecond(nSize + nOffset, 0x55), pFirst(aFirst.data() + nOffset),
          pSecond(aSecond.data() + nOffset)
    {
    }

    std::vector<tByte> aFirst;
    std::vector<tByte> aSecond;
    tByte* pFirst;
    tByte* pSecond;
};
} // namespace

TEST(TOVPlatformMemoryTest, AllocatesReallocatesAndFrees)
{
    void* pMemory = TOVMemory::Alloc(128);
    ASSERT_NE(nullptr, pMemory);
    std::memset(pMemory, 0x5A, 128);

    tByte* pGrown = static_cast<tByte*>(TOVMemory::Realloc(pMemory, 256));

    ASSERT_NE(nullptr, pGrown);
    EXPECT_EQ(std::vector<tByte>(128, 0x5A), std::vector<tByte>(pGrown, pGrown + 128));
    std::memset(pGrown, 0x5A, 256);
    TOVMemory::Free(pGrown);
}

TEST(TOVPlatformMemoryTest, AllocatesASingleByte)
{
    tByte* pMemory = static_cast<tByte*>(TOVMemory::Alloc(1));
    ASSERT_NE(nullptr, pMemory);
    *pMemory = 1;
    TOVMemory::Free(pMemory);
}

TEST(TOVPlatformMemoryTest, AllocationTakesOneBlockOfExactlyItsSize)
{
    CAllocationCounter oCounter;

    void* pMemory = TOVMemory::Alloc(77);
    const unsigned long ulTaken = oCounter.Taken();
    const std::size_t nSize = oCounter.LastSize();
    TOVMemory::Free(pMemory);
    const long lKept = oCounter.Kept();

    EXPECT_EQ(1ul, ulTaken);
    EXPECT_EQ(77u, nSize);
    EXPECT_EQ(0, lKept);
}

TEST(TOVPlatformMemoryTest, ShrinksAndKeepsTheStart)
{
    char* pMemory = static_cast<char*>(TOVMemory::Alloc(16));
    std::memcpy(pMemory, "0123456789abcdef", 16);

    pMemory = static_cast<char*>(TOVMemory::Realloc(pMemory, 4));

    EXPECT_EQ(0, std::memcmp("0123", pMemory, 4));
    TOVMemory::Free(pMemory);
}

TEST(TOVPlatformMemoryTest, RefusesToAllocateNothing)
{
    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Alloc(0));
}

TEST(TOVPlatformMemoryTest, RefusesToFreeANullPointer)
{
    EXPECT_CHECK_AT(SOURCE, NO_MEMORY, TOVMemory::Free(nullptr));
}

TEST(TOVPlatformMemoryTest, RefusesToReallocateANullPointer)
{
    EXPECT_CHECK_AT(SOURCE, NO_BLOCK, TOVMemory::Realloc(nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, NO_BLOCK, TOVMemory::Realloc(nullptr, 0));
}

TEST(TOVPlatformMemoryTest, KeepsTheBlockThatItRefusesToReallocateToNothing)
{
    char* pMemory = static_cast<char*>(TOVMemory::Alloc(4));
    std::memcpy(pMemory, "abc", 4);

    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Realloc(pMemory, 0));

    EXPECT_STREQ("abc", pMemory);
    TOVMemory::Free(pMemory);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(TOVPlatformMemoryTest, GivesNullWhenMemoryIsExhausted)
{
    CLogRecorder oLog;
    void* pMemory = &oLog;
    {
        CAllocationFailure oFailure;
        EXPECT_NO_THROW(pMemory = TOVMemory::Alloc(16));
    }

    EXPECT_EQ(nullptr, pMemory);
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(TOVPlatformMemoryTest, KeepsTheOldBlockWhenMemoryIsExhausted)
{
    char* pMemory = static_cast<char*>(TOVMemory::Alloc(4));
    std::memcpy(pMemory, "abc", 4);
    CLogRecorder oLog;
    void* pGrown = pMemory;
    {
        CAllocationFailure oFailure;
        EXPECT_NO_THROW(pGrown = TOVMemory::Realloc(pMemory, 4096));
    }

    EXPECT_EQ(nullptr, pGrown);
    EXPECT_STREQ("abc", pMemory);
    EXPECT_TRUE(oLog.Lines().empty());
    TOVMemory::Free(pMemory);
}
#endif

TEST(TOVPlatformMemoryTest, ClearsExactlyTheGivenBytes)
{
    tByte aMemory[] = {1, 2, 3, 4, 5};

    TOVMemory::Zero(aMemory, 4);

    tDword dwWord = 1;
    std::memcpy(&dwWord, aMemory, 4);
    EXPECT_EQ(0u, dwWord);
    EXPECT_EQ(5, aMemory[4]);
}

TEST(TOVPlatformMemoryTest, ZeroRefusesNullAndNothing)
{
    tByte aMemory[4] = {7};
    EXPECT_CHECK_AT(SOURCE, NO_MEMORY, TOVMemory::Zero(nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, NO_MEMORY, TOVMemory::Zero(nullptr, 0));
    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Zero(aMemory, 0));
    EXPECT_EQ(7, aMemory[0]);
}

TEST(TOVPlatformMemoryTest, FillsWithTheLowByteOfTheValue)
{
    tByte aMemory[] = {1, 2, 3, 4, 5};

    TOVMemory::Set(aMemory, 0xFF, 4);
    tDword dwWord = 0;
    std::memcpy(&dwWord, aMemory, 4);
    EXPECT_EQ(0xFFFFFFFFu, dwWord);
    EXPECT_EQ(5, aMemory[4]);

    TOVMemory::Set(aMemory, 0x1234, 2);
    EXPECT_EQ(0x34, aMemory[1]);
    EXPECT_EQ(0xFF, aMemory[2]);
}

TEST(TOVPlatformMemoryTest, SetRefusesNullAndNothing)
{
    tByte aMemory[4] = {};
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Set(nullptr, 0xFF, 4));
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Set(nullptr, 0xFF, 0));
    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Set(aMemory, 0xFF, 0));
    EXPECT_EQ(0, aMemory[0]);
}

TEST(TOVPlatformMemoryTest, CopiesAndMovesAWordUnchanged)
{
    const tDword dwSource = 0x89ABCDEF;
    tDword dwCopied = 0;
    tDword dwMoved = 0;

    TOVMemory::Copy(&dwCopied, &dwSource, 4);
    TOVMemory::Move(&dwMoved, &dwSource, 4);

    EXPECT_EQ(dwSource, dwCopied);
    EXPECT_EQ(dwSource, dwMoved);
}

TEST(TOVPlatformMemoryTest, CopiesNoFurtherThanTheSize)
{
    char szDestination[] = "........";

    TOVMemory::Copy(szDestination, "abcdefgh", 3);
    EXPECT_STREQ("abc.....", szDestination);

    TOVMemory::Move(szDestination + 5, "xyz", 2);
    EXPECT_STREQ("abc..xy.", szDestination);
}

TEST(TOVPlatformMemoryTest, MovesBetweenBlocksThatOverlap)
{
    char szUp[] = "abcdefgh";
    char szDown[] = "abcdefgh";

    TOVMemory::Move(szUp + 2, szUp, 6);
    TOVMemory::Move(szDown, szDown + 2, 6);

    EXPECT_STREQ("ababcdef", szUp);
    EXPECT_STREQ("cdefghgh", szDown);
}

TEST(TOVPlatformMemoryTest, CopyRefusesNullAndNothing)
{
    tDword dwWord = 7;
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Copy(nullptr, &dwWord, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::Copy(&dwWord, nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::Copy(&dwWord, nullptr, 0));
    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Copy(&dwWord, &dwWord, 0));
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Copy(nullptr, nullptr, 0));
    EXPECT_EQ(7u, dwWord);
}

TEST(TOVPlatformMemoryTest, MoveRefusesNullAndNothing)
{
    tDword dwWord = 7;
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Move(nullptr, &dwWord, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::Move(&dwWord, nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Move(&dwWord, &dwWord, 0));
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Move(nullptr, nullptr, 0));
    EXPECT_EQ(7u, dwWord);
}

TEST(TOVPlatformMemoryTest, ComparesTheFirstDifferingByteAtEveryPlace)
{
    for (std::size_t nSize = 1; nSize <= 70; ++nSize)
    {
        for (std::size_t nPlace = 0; nPlace < nSize; ++nPlace)
        {
            sBlocks oBlocks(nSize, nPlace % 4);
            oBlocks.pFirst[nPlace] = 0x01;
            oBlocks.pSecond[nPlace] = 0xFF;
            // What comes behind the first difference says the contrary.
            if (nPlace + 1 < nSize)
                oBlocks.pFirst[nPlace + 1] = 0xFF;

            EXPECT_EQ(-1, TOVMemory::Compare(oBlocks.pFirst, oBlocks.pSecond, static_cast<unsigned long>(nSize)))
                << nSize << " bytes, place " << nPlace;
            EXPECT_EQ(1, TOVMemory::Compare(oBlocks.pSecond, oBlocks.pFirst, static_cast<unsigned long>(nSize)))
                << nSize << " bytes, place " << nPlace;
        }
    }
}

TEST(TOVPlatformMemoryTest, ComparesEqualBlocksOfAnySize)
{
    for (unsigned long ulSize = 1; ulSize <= 70; ++ulSize)
    {
        sBlocks oBlocks(ulSize + 1, 1);
        oBlocks.pFirst[ulSize] = 1; // behind the size
        EXPECT_EQ(0, TOVMemory::Compare(oBlocks.pFirst, oBlocks.pSecond, ulSize)) << ulSize;
    }
}

TEST(TOVPlatformMemoryTest, ComparesBytesAsUnsignedNumbers)
{
    EXPECT_EQ(1, TOVMemory::Compare("\xFF", "\x01", 1));
    EXPECT_EQ(-1, TOVMemory::Compare("\x01", "\xFF", 1));
    EXPECT_EQ(1, TOVMemory::Compare("\x80", "\x7F", 1));
    EXPECT_EQ(1, TOVMemory::Compare("\xFF\x01\x01\x01", "\x01\xFF\xFF\xFF", 4));
    EXPECT_EQ(-1, TOVMemory::Compare("\x01\x01\x01\xFF", "\x02\x01\x01\x01", 4));
}

// The plain comparison of bytes decides, for blocks that differ in any number of places.
TEST(TOVPlatformMemoryTest, ComparesRandomBlocksAsTheirBytesDo)
{
    std::mt19937 oRandom(20261122);
    for (int nRound = 0; nRound < 20000; ++nRound)
    {
        sBlocks oBlocks(oRandom() % 100 + 1, oRandom() % 16);
        const std::size_t nSize =
            static_cast<std::size_t>(oBlocks.aFirst.data() + oBlocks.aFirst.size() - oBlocks.pFirst);
        for (unsigned int uChange = oRandom() % 4; uChange > 0; --uChange)
            oBlocks.pFirst[oRandom() % nSize] = static_cast<tByte>(oRandom());

        std::size_t nSame = 0;
        while (nSame < nSize && oBlocks.pFirst[nSame] == oBlocks.pSecond[nSame])
            ++nSame;
        const int nExpected = nSame == nSize ? 0 : oBlocks.pFirst[nSame] < oBlocks.pSecond[nSame] ? -1 : 1;

        ASSERT_EQ(nExpected, TOVMemory::Compare(oBlocks.pFirst, oBlocks.pSecond, static_cast<unsigned long>(nSize)));
        if (nSize % 4 == 0)
        {
            ASSERT_EQ(nExpected == 0,
                      TOVMemory::FastCompare(oBlocks.pFirst, oBlocks.pSecond, static_cast<unsigned long>(nSize)));
        }
    }
}

TEST(TOVPlatformMemoryTest, CompareRefusesNullAndNothing)
{
    const tDword dwWord = 0;
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Compare(nullptr, &dwWord, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::Compare(&dwWord, nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SIZE, TOVMemory::Compare(&dwWord, &dwWord, 0));
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::Compare(nullptr, nullptr, 0));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::Compare(&dwWord, nullptr, 0));
}

TEST(TOVPlatformMemoryTest, FastComparesEqualWords)
{
    for (unsigned long ulSize = 4; ulSize <= 72; ulSize += 4)
    {
        for (std::size_t nOffset = 0; nOffset < 4; ++nOffset)
        {
            sBlocks oBlocks(ulSize + 1, nOffset);
            oBlocks.pFirst[ulSize] = 1; // behind the size
            EXPECT_TRUE(TOVMemory::FastCompare(oBlocks.pFirst, oBlocks.pSecond, ulSize)) << ulSize;
        }
    }
}

TEST(TOVPlatformMemoryTest, FastComparesEveryByte)
{
    for (unsigned long ulSize = 4; ulSize <= 72; ulSize += 4)
    {
        for (std::size_t nPlace = 0; nPlace < ulSize; ++nPlace)
        {
            sBlocks oBlocks(ulSize, nPlace % 3);
            oBlocks.pSecond[nPlace] = 0xD5;
            EXPECT_FALSE(TOVMemory::FastCompare(oBlocks.pFirst, oBlocks.pSecond, ulSize)) << nPlace;
        }
    }
}

TEST(TOVPlatformMemoryTest, FastCompareRefusesWhatIsNoWholeNumberOfWords)
{
    const tDword aWords[2] = {};
    for (const unsigned long ulSize : {0ul, 1ul, 2ul, 3ul, 5ul, 6ul, 7ul})
        EXPECT_CHECK_AT(SOURCE, BAD_WORD_SIZE, TOVMemory::FastCompare(aWords, aWords, ulSize));
}

TEST(TOVPlatformMemoryTest, FastCompareRefusesNull)
{
    const tDword dwWord = 0;
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::FastCompare(nullptr, &dwWord, 4));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::FastCompare(&dwWord, nullptr, 4));
    EXPECT_CHECK_AT(SOURCE, NO_DESTINATION, TOVMemory::FastCompare(nullptr, nullptr, 3));
    EXPECT_CHECK_AT(SOURCE, NO_SOURCE, TOVMemory::FastCompare(&dwWord, nullptr, 3));
}
