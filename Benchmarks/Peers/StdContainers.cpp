// Rows of containers, pointers and look-ups in the standard library.

#include <Bench.h>
#include <Inputs.h>

#include <algorithm>
#include <bitset>
#include <deque>
#include <map>
#include <memory>
#include <numeric>
#include <stack>
#include <stdexcept>
#include <unordered_map>

using namespace Inputs;

namespace
{
using tBits = std::bitset<BITS>;

int CompareNumbers(const int& nFirst, const int& nSecond)
{
    return nFirst < nSecond ? -1 : (nFirst > nSecond ? 1 : 0);
}

// Sorts copies of the same numbers.
template<class TSort> void Sort(benchmark::State& oState, int nCount, TSort fnSort)
{
    const std::vector<int> aSource = RandomNumbers(nCount);
    std::vector<int> aNumbers;
    for (auto _ : oState)
    {
        aNumbers = aSource;
        fnSort(aNumbers);
        Touch(aNumbers);
    }
    oState.SetItemsProcessed(oState.iterations() * nCount);
}

template<class TBefore> void HeapSort(std::vector<int>& aNumbers, TBefore fnBefore)
{
    std::make_heap(aNumbers.begin(), aNumbers.end(), fnBefore);
    std::sort_heap(aNumbers.begin(), aNumbers.end(), fnBefore);
}

void HeapSortByFunction(std::vector<int>& aNumbers)
{
    int (*pfCompare)(const int&, const int&) = Hide(&CompareNumbers);
    HeapSort(aNumbers, [pfCompare](const int& nFirst, const int& nSecond) { return pfCompare(nFirst, nSecond) < 0; });
}

void HeapSortInline(std::vector<int>& aNumbers)
{
    HeapSort(aNumbers, [](const int& nFirst, const int& nSecond) { return CompareNumbers(nFirst, nSecond) < 0; });
}

void QuickSort(std::vector<int>& aNumbers)
{
    std::sort(aNumbers.begin(), aNumbers.end());
}

void FillBits(tBits& oBits)
{
    const std::vector<unsigned char> aBytes = RandomBytes(BITS / 8);
    for (std::size_t nBit = 0; nBit < BITS; ++nBit)
        oBits[nBit] = ((aBytes[nBit / 8] >> (nBit % 8)) & 1) != 0;
}

template<class TBits> void SetAndTest(benchmark::State& oState, TBits& oBits)
{
    std::size_t nPosition = 0;
    for (auto _ : oState)
    {
        nPosition = (nPosition + 4099) & (BITS - 1);
        oBits[nPosition] = true;
        Use(static_cast<bool>(oBits[nPosition ^ 64]));
    }
}

// Finds each of the names in turn, as characters, since the registry is given characters too.
template<class TMap> void LookUp(benchmark::State& oState)
{
    const std::vector<std::string> aNames = ClassNames(NUM_CLASSES);
    TMap oMap;
    for (const std::string& sName : aNames)
        oMap.emplace(sName, &sName);
    std::size_t nName = 0;
    for (auto _ : oState)
    {
        Use(oMap.find(aNames[nName].c_str())->second);
        nName = (nName + 1) % NUM_CLASSES;
    }
}

// Three levels, seen from an interface.
struct sInterface
{
    virtual ~sInterface() = default;
};
struct sBase : sInterface
{
};
struct sMiddle : sBase
{
};
struct sMost : sMiddle
{
};
} // namespace

BENCH("array/push1M", "std::vector")
{
    for (auto _ : oState)
    {
        std::vector<int> aNumbers;
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            aNumbers.push_back(nNumber);
        Touch(aNumbers);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/randsum1M", "std::vector")
{
    std::vector<int> aNumbers = RandomNumbers(MILLION);
    const std::vector<int> aIndexes = RandomIndexes(MILLION);
    for (auto _ : oState)
    {
        Touch(aNumbers);
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(aNumbers[static_cast<std::size_t>(nIndex)]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/randsum1M", "std::vector at()")
{
    std::vector<int> aNumbers = RandomNumbers(MILLION);
    const std::vector<int> aIndexes = RandomIndexes(MILLION);
    for (auto _ : oState)
    {
        Touch(aNumbers);
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(aNumbers.at(static_cast<std::size_t>(nIndex)));
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/seqsum1M", "std::vector[]")
{
    std::vector<int> aNumbers = RandomNumbers(MILLION);
    for (auto _ : oState)
    {
        Touch(aNumbers);
        unsigned int uSum = 0;
        for (std::size_t nIndex = 0; nIndex < MILLION; ++nIndex)
            uSum += static_cast<unsigned int>(aNumbers[nIndex]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/seqsum1M", "std::vector at()")
{
    std::vector<int> aNumbers = RandomNumbers(MILLION);
    for (auto _ : oState)
    {
        Touch(aNumbers);
        unsigned int uSum = 0;
        for (std::size_t nIndex = 0; nIndex < MILLION; ++nIndex)
            uSum += static_cast<unsigned int>(aNumbers.at(nIndex));
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("array/sort100K", "std::sort inline <")
{
    Sort(oState, HUNDRED_THOUSAND, QuickSort);
}

BENCH("array/sort100K", "std heap")
{
    Sort(oState, HUNDRED_THOUSAND, HeapSortByFunction);
}

BENCH("array/sort100K", "std heap inline")
{
    Sort(oState, HUNDRED_THOUSAND, HeapSortInline);
}

BENCH("array/sort1M", "std::sort inline <")
{
    Sort(oState, MILLION, QuickSort);
}

BENCH("array/sort1M", "std heap")
{
    Sort(oState, MILLION, HeapSortByFunction);
}

BENCH("array/sort1M", "std heap inline")
{
    Sort(oState, MILLION, HeapSortInline);
}

BENCH("array/stack push+pop", "std::stack")
{
    std::stack<int> oStack;
    oStack.push(0);
    int nNumber = 0;
    for (auto _ : oState)
    {
        oStack.push(++nNumber);
        Touch(oStack.top());
        oStack.pop();
    }
}

BENCH("ring/write1+read1", "std::deque")
{
    std::deque<int> oQueue;
    oQueue.push_back(0);
    int nNumber = 0;
    for (auto _ : oState)
    {
        oQueue.push_back(++nNumber);
        Use(oQueue.front());
        oQueue.pop_front();
    }
}

BENCH("bits/and1M", "std::bitset")
{
    const auto pFirst = std::make_unique<tBits>();
    const auto pSecond = std::make_unique<tBits>();
    FillBits(*pFirst);
    FillBits(*pSecond);
    for (auto _ : oState)
    {
        *pFirst &= *pSecond;
        benchmark::ClobberMemory();
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/any1M", "std::bitset")
{
    const auto pBits = std::make_unique<tBits>();
    for (auto _ : oState)
    {
        Touch(*pBits);
        Use(pBits->any());
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/complement1M", "std::bitset")
{
    const auto pBits = std::make_unique<tBits>();
    FillBits(*pBits);
    for (auto _ : oState)
    {
        pBits->flip();
        Touch(*pBits);
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/set+test", "std::bitset")
{
    const auto pBits = std::make_unique<tBits>();
    FillBits(*pBits);
    SetAndTest(oState, *pBits);
}

BENCH("bits/set+test", "std::vector<bool>")
{
    std::vector<bool> aBits(BITS);
    SetAndTest(oState, aBits);
}

BENCH("ptr/copy+destroy", "std::shared_ptr")
{
    auto pSource = std::make_shared<int>(1);
    for (auto _ : oState)
    {
        Touch(pSource);
        std::shared_ptr<int> pCopy(pSource);
        Touch(pCopy);
    }
}

BENCH("ptr/create+destroy", "std::unique_ptr")
{
    for (auto _ : oState)
    {
        auto pNumber = std::make_unique<int>(1);
        Touch(pNumber);
    }
}

BENCH("ptr/create+destroy", "std::make_shared")
{
    for (auto _ : oState)
    {
        auto pNumber = std::make_shared<int>(1);
        Touch(pNumber);
    }
}

BENCH("registry/lookup200", "std::unordered_map")
{
    LookUp<std::unordered_map<std::string, const std::string*>>(oState);
}

BENCH("registry/lookup200", "std::map")
{
    LookUp<std::map<std::string, const std::string*, std::less<>>>(oState);
}

BENCH("registry/handle to object", "plain pointer")
{
    int nObject = 1;
    int* pObject = &nObject;
    for (auto _ : oState)
    {
        Touch(pObject);
        Use(pObject);
    }
}

BENCH("registry/is kind of, 3 levels", "dynamic_cast")
{
    const auto pObject = std::make_unique<sMost>();
    sInterface* pInterface = pObject.get();
    for (auto _ : oState)
    {
        Touch(pInterface);
        Use(dynamic_cast<sBase*>(pInterface));
    }
}

BENCH("assert/1000 checks that hold", "unchecked")
{
    const std::vector<int> aNumbers = RandomNumbers(1000);
    const std::vector<int> aIndexes = RandomIndexes(1000);
    for (auto _ : oState)
    {
        unsigned int uSum = 0;
        for (const int nIndex : aIndexes)
            uSum += static_cast<unsigned int>(aNumbers[static_cast<std::size_t>(nIndex)]);
        Use(uSum);
    }
    oState.SetItemsProcessed(oState.iterations() * 1000);
}

BENCH("assert/failed check, thrown and caught", "std throw+catch")
{
    const std::vector<int> aNumbers(1000);
    for (auto _ : oState)
    {
        try
        {
            Use(aNumbers.at(static_cast<std::size_t>(Hide(1000))));
        }
        catch (const std::out_of_range&)
        {
        }
    }
}
