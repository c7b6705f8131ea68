// Failed checks where memory is short.
#pragma once

#include <Debug/TOVDebug.h>

// Whether the action fails a check. In contrast to EXPECT_CHECK this allocates nothing.
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
