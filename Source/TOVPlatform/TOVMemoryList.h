// Declares the memory of the library's small blocks: lists of freed blocks that each thread keeps for itself.
#pragma once

#include <Debug/TOVBase.h>

#include <cstddef>
#include <new>

namespace TOVPlatform
{
// The control blocks of smart pointers, buffers and strings come from here. Each block is one of operator new. A small
// block that is freed goes into a list of the thread that frees it, one list for each size, and serves that thread's
// next request of its size. So neither needs a lock or an atomic operation, whichever thread made the block.
//
// A thread makes its lists when it frees its 32nd block. The lists of a size hold up to 8 KB. What exceeds this, and
// all larger blocks, go back to operator delete at once; the rest does so when the thread ends, or when the thread that
// unloads the library or ends the process does it.
//
// Lists are used where a thread's own variable costs no call (on Linux). A build in which a tool watches the heap
// (AddressSanitizer, or TOV_PLAIN_MEMORY defined for another one) does not use them, and does not round sizes up.
namespace TOVMemoryList
{
// The sizes up to here have lists.
constexpr std::size_t LARGEST_SIZE = 1032;

// Returns the size of the block that serves a request: the next of 24, 40, 56, ..., which fill a block of the usual
// heap with its 8 bytes of administration, and above LARGEST_SIZE the next multiple of 16.
constexpr std::size_t GetBlockSize(std::size_t nSize)
{
    if (!TOV_ROUND_BLOCKS)
        return nSize;
    if (nSize <= 24)
        return 24;
    return nSize <= LARGEST_SIZE ? ((nSize + 7) & ~std::size_t(15)) + 8 : (nSize + 15) & ~std::size_t(15);
}

// Returns a block, aligned as operator new does. The size is one of GetBlockSize. If memory is exhausted, it throws
// what operator new throws.
inline void* Allocate(std::size_t nBlockSize);

// Does the same if the calling thread has freed such a block, and returns null otherwise.
inline void* TakeFreed(std::size_t nBlockSize);

// Frees a block of Allocate, of which the size is the one that was given there. Any thread may free it.
inline void Free(void* pBlock, std::size_t nBlockSize) noexcept;

// Does the same if the block fits into a list of the calling thread, and returns false otherwise.
inline bool PutFreed(void* pBlock, std::size_t nBlockSize) noexcept;

// Determines whether the calling thread uses lists, and returns whether it did so before. A thread that begins to use
// them anew makes them when it frees its next block. If it uses none, what its lists hold goes back to operator delete,
// and every block of this thread comes from operator new: for those who count blocks.
TOV_EXPORT bool UseLists(bool bUse) noexcept;

// A freed block holds the address of the next one in its list, and the number of blocks from here to the list's end.
// This is cheaper than a number for each list, which every request would have to change as well.
struct sFreeBlock
{
    sFreeBlock* pNext;
    std::size_t nBlocks;
};

// Rounds down, so that a block of a module that is compiled without rounding is never taken for a larger one.
constexpr std::size_t GetListIndex(std::size_t nBlockSize)
{
    return (nBlockSize - 8) / 16;
}

struct sLists
{
    static constexpr std::size_t NUM_LISTS = GetListIndex(LARGEST_SIZE) + 1;

    sFreeBlock* apFirst[NUM_LISTS];
    std::size_t anMost[NUM_LISTS]; // how many blocks the list may hold
};

// The calling thread's lists. It is never null: a thread that has none uses one that is always empty and has no room.
extern TOV_EXPORT TOV_THREAD_LISTS_STORAGE sLists* t_pLists;

// What Allocate does if there is no freed block, and Free if there is no room.
TOV_EXPORT void* AllocateAnew(std::size_t nBlockSize);
TOV_EXPORT void FreeWithoutRoom(void* pBlock, std::size_t nBlockSize) noexcept;

inline void* TakeFreed(std::size_t nBlockSize)
{
    if (!TOV_USE_MEMORY_LISTS || nBlockSize > LARGEST_SIZE)
        return nullptr;
    sFreeBlock*& pFirst = t_pLists->apFirst[GetListIndex(nBlockSize)];
    sFreeBlock* const pBlock = pFirst;
    if (pBlock != nullptr)
        pFirst = pBlock->pNext;
    return pBlock;
}

inline void* Allocate(std::size_t nBlockSize)
{
    void* const pBlock = TakeFreed(nBlockSize);
    return pBlock != nullptr ? pBlock : AllocateAnew(nBlockSize);
}

inline bool PutFreed(void* pBlock, std::size_t nBlockSize) noexcept
{
    if (!TOV_USE_MEMORY_LISTS || nBlockSize > LARGEST_SIZE)
        return false;
    sLists& oLists = *t_pLists;
    const std::size_t nIndex = GetListIndex(nBlockSize);
    sFreeBlock* const pNext = oLists.apFirst[nIndex];
    const std::size_t nBlocks = pNext != nullptr ? pNext->nBlocks : 0;
    if (nBlocks >= oLists.anMost[nIndex])
        return false;
    oLists.apFirst[nIndex] = ::new (pBlock) sFreeBlock{pNext, nBlocks + 1};
    return true;
}

inline void Free(void* pBlock, std::size_t nBlockSize) noexcept
{
    if (!PutFreed(pBlock, nBlockSize))
        FreeWithoutRoom(pBlock, nBlockSize);
}
} // namespace TOVMemoryList
} // namespace TOVPlatform
