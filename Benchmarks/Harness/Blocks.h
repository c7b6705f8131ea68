// What the rows of raw memory share.
#pragma once

#include <Bench.h>
#include <Inputs.h>

#include <algorithm>
#include <memory>

// Calls the function with two blocks of the same bytes and their size, of which the compiler knows nothing. The blocks
// lie at the same places of their pages in every program: a processor confuses addresses whose low 12 bits are equal,
// which makes a copy between unlucky blocks slower by a quarter.
template<class TFunction> void MeasureBlocks(benchmark::State& oState, std::size_t nSize, TFunction fnFunction)
{
    constexpr std::size_t PAGE = 4096;

    const std::vector<unsigned char> aBytes = Inputs::RandomBytes(nSize);
    const std::size_t nSecond = (nSize + PAGE - 1) / PAGE * PAGE + PAGE / 2;
    std::vector<unsigned char> aMemory(PAGE + nSecond + nSize);
    void* pMemory = aMemory.data();
    std::size_t nLeft = aMemory.size();
    unsigned char* const pFirst = static_cast<unsigned char*>(std::align(PAGE, nSecond + nSize, pMemory, nLeft));
    unsigned char* const pSecond = pFirst + nSecond;
    std::copy(aBytes.begin(), aBytes.end(), pFirst);
    std::copy(aBytes.begin(), aBytes.end(), pSecond);

    unsigned char* const pHiddenFirst = Hide(pFirst);
    unsigned char* const pHiddenSecond = Hide(pSecond);
    nSize = Hide(nSize);
    for (auto _ : oState)
    {
        fnFunction(pHiddenFirst, pHiddenSecond, nSize);
        benchmark::ClobberMemory();
    }
}
