// Failures where memory is short. In contrast to EXPECT_CHECK and EXPECT_THROW these allocate nothing.
#pragma once

#include "Support/TOVAllocationCounter.h"

#include <Debug/TOVDebug.h>

#include <new>

// Whether the action fails a check.
template<class TAction> bool FailsACheck(const TAction& fnAction)
{
    try
    {
        fnAction();
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return true;
    }
    return false;
}

#if TOV_CAN_FAIL_ALLOCATIONS
// Whether the action throws std::bad_alloc where so many allocations succeed and all others fail.
template<class TAction> bool RunsOutOfMemory(const TAction& fnAction, unsigned long ulSuccesses = 0)
{
    try
    {
        const CAllocationFailure oFailure(ulSuccesses);
        fnAction();
    }
    catch (const std::bad_alloc&)
    {
        return true;
    }
    return false;
}
#endif
