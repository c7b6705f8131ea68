// Rows of arrays, stacks, queues, ring buffers and bits.

#include <Bench.h>
#include <Inputs.h>

#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBitArray.h>
#include <TOVContainers/TOVQueue.h>
#include <TOVContainers/TOVRingBuffer.h>
#include <TOVContainers/TOVStack.h>

#include <cstring>

using namespace Inputs;

namespace
{
// The rows called "virtual" use an array whose class the compiler does not know, as a function does that is given one.
// In the others it knows the class exactly, so that it need not call through the table of virtual operations.
using tArray = CTOVArray<int>;

void PushMillion(benchmark::State& oState, bool bVirtual)
{
    for (auto _ : oState)
    {
        tArray oArray;
        if (bVirtual)
        {
            tArray& oUnknown = *Hide(&oArray);
            for (int nNumber = 0; nNumber < MILLION; ++nNumber)
                oUnknown.Add(nNumber);
        }
        else
        {
            for (int nNumber = 0; nNumber < MILLION; ++nNumber)
                oArray.Add(nNumber);
        }
        Touch(oArray);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

void Fill(tArray& oArray, int nCount)
{
    for (const int nNumber : RandomNumbers(nCount))
        oArray.Add(nNumber);
}

int CompareNumbers(const int& nFirst, const int& nSecond)
{
    return nFirst < nSecond ? -1 : (nFirst > nSecond ? 1 : 0);
}

template<class TCompare> void Sort(benchmark::State& oState, int nCount, TCompare pfCompare)
{
    tArray oSource;
    Fill(oSource, nCount);
    tArray oArray;
    for (auto _ : oState)
    {
        oArray = oSource;
        oArray.Sort(pfCompare);
        Touch(oArray);
    }
    oState.SetItemsProcessed(oState.iterations() * nCount);
}

void SortByFunction(benchmark::State& oState, int nCount)
{
    int (*pfCompare)(const int&, const int&) = Hide(&CompareNumbers);
    Sort(oState, nCount, pfCompare);
}

void SortInline(benchmark::State& oState, int nCount)
{
    Sort(oState, nCount, [](const int& nFirst, const int& nSecond) { return CompareNumbers(nFirst, nSecond); });
}

void FillBits(CTOVBitArray& oBits)
{
    const std::vector<unsigned char> aBytes = RandomBytes(BITS / 8);
    oBits.SetSize(BITS / 8);
    std::memcpy(oBits.QueryBuffer(BITS / 8), aBytes.data(), aBytes.size());
}
} // namespace

BENCH("array/push1M", KERNEL)
{
    PushMillion(oState, false);
}

BENCH("array/push1M (virtual)", KERNEL)
{
    PushMillion(oState, true);
}

BENCH("array/randsum1M", KERNEL)
{
    tArray oArray;
    Fill(oArray, MILLION);
    const std::vector<int> aIndexes = RandomIndexes(MILLION);
    for (auto _ : oState)
    {
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(oArray[nIndex]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/randsum1M (virtual)", KERNEL)
{
    tArray oArray;
    Fill(oArray, MILLION);
    const tArray& oUnknown = *Hide(&oArray);
    const std::vector<int> aIndexes = RandomIndexes(MILLION);
    for (auto _ : oState)
    {
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(oUnknown[nIndex]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/seqsum1M", KERNEL)
{
    tArray oArray;
    Fill(oArray, MILLION);
    for (auto _ : oState)
    {
        unsigned int uSum = 0;
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
            uSum += static_cast<unsigned int>(oArray[nIndex]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/seqsum1M (virtual)", KERNEL)
{
    tArray oArray;
    Fill(oArray, MILLION);
    const tArray& oUnknown = *Hide(&oArray);
    for (auto _ : oState)
    {
        unsigned int uSum = 0;
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
            uSum += static_cast<unsigned int>(oUnknown[nIndex]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/sort100K", KERNEL)
{
    SortByFunction(oState, HUNDRED_THOUSAND);
}

BENCH("array/sort100K (inline comparison)", KERNEL)
{
    SortInline(oState, HUNDRED_THOUSAND);
}

BENCH("array/sort1M", KERNEL)
{
    SortByFunction(oState, MILLION);
}

BENCH("array/sort1M (inline comparison)", KERNEL)
{
    SortInline(oState, MILLION);
}

BENCH("array/stack push+pop", KERNEL)
{
    CTOVStack<int> oStack;
    oStack.Push(0);
    int nNumber = 0;
    for (auto _ : oState)
    {
        oStack.Push(++nNumber);
        Use(oStack.GetTop());
        oStack.Pop();
    }
}

BENCH("ring/write1+read1", KERNEL)
{
    CTOVRingBuffer<int> oRing(1024);
    int nNumber = 0;
    for (auto _ : oState)
    {
        oRing.Write(++nNumber);
        int nRead = 0;
        oRing.Read(nRead);
        Use(nRead);
    }
}

BENCH("ring/write1+read1 (CTOVQueue)", KERNEL)
{
    CTOVQueue<int> oQueue;
    oQueue.Enqueue(0);
    int nNumber = 0;
    for (auto _ : oState)
    {
        oQueue.Enqueue(++nNumber);
        Use(oQueue.Dequeue());
    }
}

BENCH("ring/block256", KERNEL)
{
    CTOVRingBuffer<int> oRing(1024);
    const std::vector<int> aBlock = RandomNumbers(256);
    std::vector<int> aRead(256);
    for (auto _ : oState)
    {
        for (const int nNumber : aBlock)
            oRing.Write(nNumber);
        for (int& nNumber : aRead)
            oRing.Read(nNumber);
        Use(aRead.data());
    }
    oState.SetItemsProcessed(oState.iterations() * 256);
}

BENCH("bits/and1M", KERNEL)
{
    CTOVBitArray oFirst;
    CTOVBitArray oSecond;
    FillBits(oFirst);
    FillBits(oSecond);
    for (auto _ : oState)
    {
        oFirst.And(oSecond);
        benchmark::ClobberMemory();
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/any1M", KERNEL)
{
    CTOVBitArray oBits;
    oBits.SetSize(BITS / 8);
    for (auto _ : oState)
    {
        Touch(oBits);
        Use(oBits.IsAnyBitSet());
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/complement1M", KERNEL)
{
    CTOVBitArray oBits;
    FillBits(oBits);
    for (auto _ : oState)
    {
        oBits.Complement();
        benchmark::ClobberMemory();
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/set+test", KERNEL)
{
    CTOVBitArray oBits;
    FillBits(oBits);
    int nPosition = 0;
    for (auto _ : oState)
    {
        nPosition = (nPosition + 4099) & (BITS - 1);
        oBits.SetBit(nPosition, true);
        Use(oBits.GetBit(nPosition ^ 64));
    }
}
