// What one thread takes from the heap and gives back, in the test program and in the library alike.
//
//     CAllocationCounter oCounter;
//     TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "%s", "text");
//     EXPECT_EQ(0u, oCounter.Taken());
//
// It sees new, malloc, calloc and realloc however they are called. While it lives, the library keeps no lists of freed
// blocks for this thread, so that each block that it uses comes from the heap. What the system's own libraries take for
// themselves may count as well on Linux, and does not on Windows. No call of googletest may stand between construction
// and query.
#pragma once

#include "Debug/TOVCompiler.h"

#include <cstddef>

// The sanitizers have a heap of their own, which never fails.
#if TOV_ADDRESS_SANITIZER || TOV_THREAD_SANITIZER
#define TOV_CAN_FAIL_ALLOCATIONS 0
#else
#define TOV_CAN_FAIL_ALLOCATIONS 1
#endif

struct sAllocationCounts
{
    unsigned long ulTaken;
    unsigned long ulReleased;
    std::size_t nBytesTaken;
    std::size_t nLastSize;
    bool bFailing;
    bool bFailsOnce; // only the next failure is left
    unsigned long ulSuccessesLeft;
    unsigned long ulRefused;
};

// Counts what the constructing thread does from then on. Use it on that thread alone; counters may overlap.
class CAllocationCounter
{
public:
    CAllocationCounter();
    ~CAllocationCounter();
    CAllocationCounter(const CAllocationCounter&) = delete;
    CAllocationCounter& operator=(const CAllocationCounter&) = delete;

    // The numbers of blocks. A realloc takes one block and, if it is given a block, releases one.
    unsigned long Taken() const;
    unsigned long Released() const;

    // The number of blocks taken and not released. It is negative when older blocks were released.
    long Kept() const;

    // The bytes asked for in all, and by the latest allocation of the thread.
    std::size_t BytesTaken() const;
    std::size_t LastSize() const;

private:
    const bool m_bUsedLists; // set, with its effect, before the counts are read
    const sAllocationCounts m_oStart;
};

#if TOV_CAN_FAIL_ALLOCATIONS
// While it lives, the heap is exhausted for the constructing thread after a number of further allocations: malloc gives
// null, new throws std::bad_alloc, and the library keeps no lists of freed blocks.
class CAllocationFailure
{
public:
    explicit CAllocationFailure(unsigned long ulSuccesses = 0);
    ~CAllocationFailure();

    CAllocationFailure(const CAllocationFailure&) = delete;
    CAllocationFailure& operator=(const CAllocationFailure&) = delete;

private:
    const bool m_bUsedLists;
};
#endif

// The part that differs between the systems: the counts of the calling thread. Counting begins with the first call.
sAllocationCounts& AllocationCountsOfThisThread();

// Returns the number of blocks that all threads together have taken and not released since the first call above.
long CountBlocksOfProcess();

// For the hooks. Returns whether the next allocation may succeed; notes that a block was taken; does both; notes that a
// block was released; changes the number of the process alone, for a thread without counts.
bool MayAllocate(sAllocationCounts& oCounts);
void NoteTaken(sAllocationCounts& oCounts, std::size_t nSize);
bool NoteAllocation(sAllocationCounts& oCounts, std::size_t nSize);
void NoteRelease(sAllocationCounts& oCounts);
void NoteBlocksOfProcess(long lChange);
