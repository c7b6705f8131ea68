#include "Support/TOVAllocationCounter.h"

#include <TOVPlatform/TOVMemoryList.h>

#include <atomic>

static std::atomic<long> s_lBlocksOfProcess(0);

CAllocationCounter::CAllocationCounter()
    : m_bUsedLists(TOVPlatform::TOVMemoryList::UseLists(false)), m_oStart(AllocationCountsOfThisThread())
{
}

CAllocationCounter::~CAllocationCounter()
{
    TOVPlatform::TOVMemoryList::UseLists(m_bUsedLists);
}

unsigned long CAllocationCounter::Taken() const
{
    return AllocationCountsOfThisThread().ulTaken - m_oStart.ulTaken;
}

unsigned long CAllocationCounter::Released() const
{
    return AllocationCountsOfThisThread().ulReleased - m_oStart.ulReleased;
}

long CAllocationCounter::Kept() const
{
    return static_cast<long>(Taken()) - static_cast<long>(Released());
}

std::size_t CAllocationCounter::BytesTaken() const
{
    return AllocationCountsOfThisThread().nBytesTaken - m_oStart.nBytesTaken;
}

std::size_t CAllocationCounter::LastSize() const
{
    return AllocationCountsOfThisThread().nLastSize;
}

#if TOV_CAN_FAIL_ALLOCATIONS
CAllocationFailure::CAllocationFailure(unsigned long ulSuccesses)
    : m_bUsedLists(TOVPlatform::TOVMemoryList::UseLists(false))
{
    sAllocationCounts& oCounts = AllocationCountsOfThisThread();
    oCounts.ulSuccessesLeft = ulSuccesses;
    oCounts.bFailsOnce = false;
    oCounts.bFailing = true;
}

CAllocationFailure::~CAllocationFailure()
{
    AllocationCountsOfThisThread().bFailing = false;
    TOVPlatform::TOVMemoryList::UseLists(m_bUsedLists);
}
#endif

long CountBlocksOfProcess()
{
    return s_lBlocksOfProcess;
}

void NoteBlocksOfProcess(long lChange)
{
    s_lBlocksOfProcess.fetch_add(lChange, std::memory_order_relaxed);
}

bool MayAllocate(sAllocationCounts& oCounts)
{
    if (!oCounts.bFailing)
        return true;
    if (oCounts.ulSuccessesLeft != 0)
    {
        --oCounts.ulSuccessesLeft;
        return true;
    }
    ++oCounts.ulRefused;
    oCounts.bFailing = !oCounts.bFailsOnce;
    return false;
}

void NoteTaken(sAllocationCounts& oCounts, std::size_t nSize)
{
    NoteBlocksOfProcess(1);
    ++oCounts.ulTaken;
    oCounts.nBytesTaken += nSize;
    oCounts.nLastSize = nSize;
}

bool NoteAllocation(sAllocationCounts& oCounts, std::size_t nSize)
{
    if (!MayAllocate(oCounts))
        return false;
    NoteTaken(oCounts, nSize);
    return true;
}

void NoteRelease(sAllocationCounts& oCounts)
{
    NoteBlocksOfProcess(-1);
    ++oCounts.ulReleased;
}
