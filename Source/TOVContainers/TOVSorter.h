// Declares ISorter, the sorting interface.
#pragma once

#include <Debug/TOVCompiler.h>

// An implementation sorts one container, by a comparison int pfCompare(const T& a, const T& b) of the caller, which
// returns a number below 0 if a orders before b, and above 0 if a orders after b. The interface has no virtual
// destructor: an implementation must not need one.
template<class TCompare> class TOV_TEMPLATE ISorter
{
public:
    // Virtual operation. Sorts the container in ascending order of the comparison.
    virtual void Sort(TCompare pfCompare) = 0;
};
