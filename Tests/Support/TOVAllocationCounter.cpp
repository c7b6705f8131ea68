#include "Support/TOVAllocationCounter.h"

#include <TOVPlatform/TOVMemoryList.h>

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
    oCounts.bFailing = true;
}

CAllocationFailure::~CAllocationFailure()
{
    AllocationCountsOfThisThread().bFailing = false;
    TOVPlatform::TOVMemoryList::UseLists(m_bUsedLists);
}
#endif

bool NoteAllocation(sAllocationCounts& oCounts, std::size_t nSize)
{
    if (oCounts.bFailing)
    {
        if (oCounts.ulSuccessesLeft == 0)
            return false;
        --oCounts.ulSuccessesLeft;
    }
    ++oCounts.ulTaken;
    oCounts.nBytesTaken += nSize;
    oCounts.nLastSize = nSize;
    return true;
}

void NoteRelease(sAllocationCounts& oCounts)
{
    ++oCounts.ulReleased;
}
