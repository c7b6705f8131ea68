// The sorting interface.
#pragma once

#include <Debug/TOVCompiler.h>

// Sorts what it was made for by a caller's comparison: int pfCompare(const T& a, const T& b), below 0 when a orders
// before b, above 0 when after. It has no virtual destructor: an implementation must not need one.
template<class TCompare> class TOV_TEMPLATE ISorter
{
public:
    // Virtual operation.
    virtual void Sort(TCompare pfCompare) = 0;
};
