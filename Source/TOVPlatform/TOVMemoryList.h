// Declares the memory of the library's small blocks: lists of freed blocks that each thread keeps for itself.
#pragma once

#include <Debug/TOVBase.h>

#include <cstddef>

namespace TOVPlatform
{
// The control blocks of smart pointers, buffers and strings come from here. Each block is one of operator new. A small
// block that is freed goes into a list of the thread that frees it, one list for each size, and serves that thread's
// next request of its size. So neither needs a lock or an atomic operation, whichever thread made the block.
//
// The lists of a size hold up to 8 KB. What exceeds this, and all larger blocks, go back to operator delete at once;
// the rest does so when the thread ends, or when the thread that unloads the library or ends the process does it.
//
// Lists are used where a thread's own variable costs no call (on Linux). A build in which a tool watches the heap
// (AddressSanitizer, or TOV_PLAIN_MEMORY defined for another one) does not use them, and does not round sizes up.
namespace TOVMemoryList
{
// The sizes up to here have lists.
constexpr std::size_t LARGEST_SIZE = 1032;

// Returns the size of the block that serves a request: the next of 8, 24, 40, ..., which fill a block of the usual heap
// with its 8 bytes of administration, and above LARGEST_SIZE the next multiple of 16.
constexpr std::size_t GetBlockSize(std::size_t nSize)
{
    if (!TOV_ROUND_BLOCKS)
        return nSize;
    return nSize <= LARGEST_SIZE ? ((nSize + 7) & ~std::size_t(15)) + 8 : (nSize + 15) & ~std::size_t(15);
}

// Returns a block of GetBlockSize(nSize) bytes, aligned as operator new does. If memory is exhausted, it throws what
// operator new throws.
TOV_EXPORT void* Allocate(std::size_t nSize);

// Frees a block of Allocate. nSize is the size that was asked for, or that of the block. Any thread may free it.
TOV_EXPORT void Free(void* pBlock, std::size_t nSize) noexcept;

// Determines whether the calling thread uses lists, and returns whether it did so before. If not, what its lists hold
// goes back to operator delete, and every block of this thread comes from operator new: for those who count blocks.
TOV_EXPORT bool UseLists(bool bUse) noexcept;
} // namespace TOVMemoryList
} // namespace TOVPlatform
