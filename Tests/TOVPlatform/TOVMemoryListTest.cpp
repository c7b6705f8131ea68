// The lists of freed blocks that threads keep. The program's malloc counts what comes from the heap.
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVMemoryList.h>

#include <cstring>
#include <random>
#include <thread>
#include <vector>

namespace TOVMemoryList = TOVPlatform::TOVMemoryList;

namespace
{
// What the calling thread has taken from the heap and given back so far. In contrast to a CAllocationCounter, this
// leaves the lists in use.
unsigned long Taken()
{
    return AllocationCountsOfThisThread().ulTaken;
}

unsigned long Released()
{
    return AllocationCountsOfThisThread().ulReleased;
}

void* Allocate(std::size_t nSize)
{
    return TOVMemoryList::Allocate(TOVMemoryList::GetBlockSize(nSize));
}

void Free(void* pBlock, std::size_t nSize)
{
    TOVMemoryList::Free(pBlock, TOVMemoryList::GetBlockSize(nSize));
}

class TOVMemoryListTest : public testing::Test
{
protected:
    TOVMemoryListTest() { BeginWithEmptyLists(); }
    ~TOVMemoryListTest() override { BeginWithEmptyLists(); }

    static void BeginWithEmptyLists()
    {
        TOVMemoryList::UseLists(false);
        TOVMemoryList::UseLists(true);
    }
};

struct sBlock
{
    unsigned char* pBytes;
    std::size_t nSize;
    unsigned char ucMark;
};

sBlock NewBlock(std::size_t nSize, unsigned char ucMark)
{
    const sBlock oBlock = {static_cast<unsigned char*>(Allocate(nSize)), nSize, ucMark};
    std::memset(oBlock.pBytes, ucMark, nSize);
    return oBlock;
}

// Whether no other block has been written over this one.
bool IsIntact(const sBlock& oBlock)
{
    for (std::size_t i = 0; i < oBlock.nSize; ++i)
    {
        if (oBlock.pBytes[i] != oBlock.ucMark)
            return false;
    }
    return true;
}

void Delete(const sBlock& oBlock)
{
    EXPECT_TRUE(IsIntact(oBlock)) << oBlock.nSize;
    Free(oBlock.pBytes, oBlock.nSize);
}
} // namespace

TEST_F(TOVMemoryListTest, RoundsSizesUpToThatOfTheNextList)
{
    for (std::size_t nSize = 0; nSize < 3000; ++nSize)
    {
        const std::size_t nBlock = TOVMemoryList::GetBlockSize(nSize);
        EXPECT_LE(nSize, nBlock);
        EXPECT_EQ(nBlock, TOVMemoryList::GetBlockSize(nBlock));
        if (!TOV_ROUND_BLOCKS)
        {
            EXPECT_EQ(nSize, nBlock);
            continue;
        }
        EXPECT_GT(nSize < 24 ? 25 : nSize + 16, nBlock);
        EXPECT_EQ(nSize <= TOVMemoryList::LARGEST_SIZE ? 8u : 0u, nBlock % 16);
    }
}

// A module without rounding may free its blocks in one with lists.
TEST_F(TOVMemoryListTest, NeverTakesABlockForALargerOne)
{
    std::vector<sBlock> aBlocks;
    for (std::size_t nSize = 24; nSize < 1032; ++nSize)
    {
        TOVMemoryList::Free(::operator new(nSize), nSize);
        aBlocks.push_back(NewBlock(nSize, static_cast<unsigned char>(nSize)));
        aBlocks.push_back(NewBlock(nSize < 40 ? 24 : nSize - 15, static_cast<unsigned char>(nSize)));
    }
    for (const sBlock& oBlock : aBlocks)
        Delete(oBlock);
}

TEST_F(TOVMemoryListTest, GivesWholeBlocksOfEverySize)
{
    for (int nRound = 0; nRound < 3; ++nRound)
    {
        std::vector<sBlock> aBlocks;
        for (std::size_t nSize = 0; nSize < 1200; ++nSize)
        {
            aBlocks.push_back(NewBlock(nSize, static_cast<unsigned char>(nSize)));
            EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(aBlocks.back().pBytes) % (2 * sizeof(void*)));
        }
        for (const sBlock& oBlock : aBlocks)
            Delete(oBlock);
    }
}

TEST_F(TOVMemoryListTest, ServesARequestWithABlockThatWasFreed)
{
    for (const std::size_t nSize : {9u, 24u, 25u, 40u, 41u, 500u, 1032u})
    {
        void* const pFirst = Allocate(nSize);
        void* const pSecond = Allocate(nSize);
        Free(pFirst, nSize);
        Free(pSecond, nSize);
        const unsigned long ulTaken = Taken();
        void* const pThird = Allocate(nSize);
        void* const pFourth = Allocate(TOVMemoryList::GetBlockSize(nSize));
        const unsigned long ulTakenAgain = Taken() - ulTaken;

        EXPECT_EQ(TOV_USE_MEMORY_LISTS ? 0u : 2u, ulTakenAgain) << nSize;
        if (TOV_USE_MEMORY_LISTS)
        {
            EXPECT_EQ(pSecond, pThird) << nSize;
            EXPECT_EQ(pFirst, pFourth) << nSize;
        }
        Free(pThird, nSize);
        Free(pFourth, nSize);
    }
}

// Lists cost a thread that frees a few blocks more than they save it.
TEST_F(TOVMemoryListTest, MakesNoListsForAThreadThatFreesAFewBlocks)
{
    constexpr int FEW = 31;
    unsigned long ulOfFew = 0;
    unsigned long ulOfLast = 0;
    std::thread([&] {
        std::vector<void*> aBlocks(FEW + 1);
        for (void*& pBlock : aBlocks)
            pBlock = Allocate(40);
        const unsigned long ulBefore = Released();
        for (int nBlock = 0; nBlock < FEW; ++nBlock)
            Free(aBlocks[nBlock], 40);
        ulOfFew = Released() - ulBefore;
        Free(aBlocks[FEW], 40);
        ulOfLast = Released() - ulBefore - ulOfFew;
    }).join();

    EXPECT_EQ(static_cast<unsigned long>(FEW), ulOfFew);
    EXPECT_EQ(TOV_USE_MEMORY_LISTS ? 0u : 1u, ulOfLast);
}

TEST_F(TOVMemoryListTest, KeepsNoLargerBlock)
{
    const unsigned long ulReleased = Released();
    Free(Allocate(1033), 1033);
    Free(Allocate(100000), 100000);
    const unsigned long ulGivenBack = Released() - ulReleased;

    EXPECT_EQ(2u, ulGivenBack);
}

TEST_F(TOVMemoryListTest, KeepsEightKilobytesOfEachSize)
{
    for (const std::size_t nSize : {24u, 56u, 200u, 1032u})
    {
        BeginWithEmptyLists();
        std::vector<sBlock> aBlocks;
        for (int nBlock = 0; nBlock < 1000; ++nBlock)
            aBlocks.push_back(NewBlock(nSize, static_cast<unsigned char>(nBlock)));
        for (const sBlock& oBlock : aBlocks)
            EXPECT_TRUE(IsIntact(oBlock));
        const unsigned long ulReleased = Released();
        for (const sBlock& oBlock : aBlocks)
            Free(oBlock.pBytes, nSize);
        const unsigned long ulGivenBack = Released() - ulReleased;

        const std::size_t nKept = TOV_USE_MEMORY_LISTS ? 8192 / TOVMemoryList::GetBlockSize(nSize) : 0;
        EXPECT_EQ(1000 - nKept, ulGivenBack) << nSize;
    }
}

TEST_F(TOVMemoryListTest, GivesEverythingBackToWhoDoesWithoutLists)
{
    const unsigned long ulBefore = Taken() - Released();
    for (std::size_t nSize = 1; nSize < 1100; nSize += 10)
        Free(Allocate(nSize), nSize);
    const bool bUsed = TOVMemoryList::UseLists(false);
    const unsigned long ulBehind = Taken() - Released();
    const unsigned long ulTaken = Taken();
    Free(Allocate(40), 40);
    Free(Allocate(40), 40);
    const unsigned long ulTakenWithout = Taken() - ulTaken;
    const bool bStillUsed = TOVMemoryList::UseLists(true);

    EXPECT_EQ(TOV_USE_MEMORY_LISTS, bUsed);
    EXPECT_FALSE(bStillUsed);
    EXPECT_EQ(ulBefore, ulBehind);
    EXPECT_EQ(2u, ulTakenWithout);
}

// Blocks of random sizes around all bounds come and go in random order.
TEST_F(TOVMemoryListTest, NeverGivesABlockTwice)
{
    std::mt19937 oRandom(9);
    std::vector<sBlock> aBlocks;
    for (int nStep = 0; nStep < 100000; ++nStep)
    {
        if (aBlocks.size() < 50 || (oRandom() % 2 == 0 && aBlocks.size() < 500))
        {
            aBlocks.push_back(NewBlock(oRandom() % 70 * 16 + oRandom() % 5 + 6, static_cast<unsigned char>(nStep)));
        }
        else
        {
            std::swap(aBlocks[oRandom() % aBlocks.size()], aBlocks.back());
            Delete(aBlocks.back());
            aBlocks.pop_back();
        }
    }
    for (const sBlock& oBlock : aBlocks)
        Delete(oBlock);
}

// Each thread frees what the one before it has made.
TEST_F(TOVMemoryListTest, TakesBlocksOfOtherThreads)
{
    std::vector<sBlock> aBlocks;
    for (int nThread = 0; nThread < 8; ++nThread)
    {
        std::thread([&aBlocks, nThread] {
            std::vector<sBlock> aNew;
            for (std::size_t nSize = 1; nSize < 1100; nSize += 3)
                aNew.push_back(NewBlock(nSize, static_cast<unsigned char>(nSize + nThread)));
            for (const sBlock& oBlock : aBlocks)
                Delete(oBlock);
            for (std::size_t nSize = 1; nSize < 1100; nSize += 3)
                aNew.push_back(NewBlock(nSize, static_cast<unsigned char>(nSize * 3 + nThread)));
            aBlocks.swap(aNew);
        }).join();
    }
    for (const sBlock& oBlock : aBlocks)
        Delete(oBlock);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(TOVMemoryListTest, ThrowsWhereTheHeapIsExhausted)
{
    bool bThrown = false;
    {
        const CAllocationFailure oFailure;
        try
        {
            Allocate(40);
        }
        catch (const std::bad_alloc&)
        {
            bThrown = true;
        }
    }
    EXPECT_TRUE(bThrown);
}

// The thread's lists themselves need memory. Without it blocks go back to the heap.
TEST_F(TOVMemoryListTest, DoesWithoutListsWhereTheHeapIsExhausted)
{
    void* const pBlock = Allocate(40);
    sAllocationCounts& oCounts = AllocationCountsOfThisThread();
    oCounts.ulSuccessesLeft = 0;
    oCounts.bFailing = true;
    const unsigned long ulReleased = Released();
    Free(pBlock, 40);
    const unsigned long ulGivenBack = Released() - ulReleased;
    oCounts.bFailing = false;

    EXPECT_EQ(1u, ulGivenBack);
}
#endif
