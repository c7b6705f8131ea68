// What the tests of smart pointers share.
#pragma once

#include "TOVDesignPatterns/TOVMortal.h"

#include <TOVDesignPatterns/TOVSmartPointer.h>

#include <new>

struct sNumber
{
    int A;
};

typedef CTOVSmartPointer<sNumber> tNumberPointer;
typedef CTOVSmartPointer<sMortal> tMortalPointer;

inline sNumber* NewNumber(int nValue)
{
    return new sNumber{nValue};
}

// Two elements in memory that single delete releases rightly.
inline sNumber* NewNumbers(int nFirst, int nSecond)
{
    sNumber* pNumbers = static_cast<sNumber*>(::operator new(2 * sizeof(sNumber)));
    new (&pNumbers[0]) sNumber{nFirst};
    new (&pNumbers[1]) sNumber{nSecond};
    return pNumbers;
}
