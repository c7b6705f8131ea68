// The heaps of the process are looked at after each scenario (see TOVFaultProcess.cpp): the look finds what it looks
// for.
#include "Faults/Windows/TOVHeapCheck.h"
#include "Support/TOVTestSupport.h"

#include <cstring>
#include <windows.h>

TEST(TOVHeapCheckTest, FindsAllHeapsWhole)
{
    EXPECT_TRUE(AreHeapsWhole());
}

TEST(TOVHeapCheckTest, FindsABlockThatWasOverrun)
{
    constexpr std::size_t BLOCK = 64;
    constexpr std::size_t BEYOND = 32; // the next block's description, which is put back
    const HANDLE hHeap = HeapCreate(0, 0, 0);
    ASSERT_NE(nullptr, hHeap);
    char* const pBlock = static_cast<char*>(HeapAlloc(hHeap, 0, BLOCK));
    ASSERT_NE(nullptr, HeapAlloc(hHeap, 0, BLOCK));
    char acBefore[BEYOND];
    std::memcpy(acBefore, pBlock + BLOCK, BEYOND);

    std::memset(pBlock + BLOCK, 0x55, BEYOND);
    const bool bFound = !AreHeapsWhole();
    std::memcpy(pBlock + BLOCK, acBefore, BEYOND);

    EXPECT_TRUE(bFound);
    EXPECT_TRUE(AreHeapsWhole());
    HeapDestroy(hHeap);
}
