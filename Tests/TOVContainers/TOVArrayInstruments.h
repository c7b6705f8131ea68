// What the tests of arrays share.
#pragma once

#include "Support/TOVAllocationCounter.h"
#include "Support/TOVTestSupport.h"

#include <TOVContainers/TOVArray.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

constexpr char INDEX_CHECK[] = "(0 <= lIndex) && (lIndex < GetSize())";
constexpr char FIRST_INDEX_CHECK[] = "(0 <= lIndex1) && (lIndex1 < GetSize())";
constexpr char SECOND_INDEX_CHECK[] = "(0 <= lIndex2) && (lIndex2 < GetSize())";

typedef CTOVArray<int> tIntArray;
typedef std::vector<int> tInts;

inline tIntArray MakeArray(const tInts& aElements)
{
    tIntArray oArray;
    for (const int nElement : aElements)
        oArray.Add(nElement);
    return oArray;
}

inline tInts Elements(const tIntArray& oArray)
{
    tInts aElements;
    for (long lIndex = 0; lIndex < oArray.GetSize(); ++lIndex)
        aElements.push_back(oArray.GetAt(lIndex));
    return aElements;
}

// The capacities that the array gets by the action, one after the other.
template<class TAction> std::vector<std::size_t> Capacities(tIntArray& oArray, int nTimes, TAction fnAction)
{
    std::vector<std::size_t> aCapacities;
    aCapacities.reserve(100);
    for (int nTime = 0; nTime < nTimes; ++nTime)
    {
        const CAllocationCounter oCounter;
        fnAction(oArray);
        if (oCounter.Taken() != 0)
            aCapacities.push_back(oCounter.Taken() == 1 ? oCounter.LastSize() / sizeof(int) : 0);
    }
    return aCapacities;
}

template<class TAction> std::size_t NewCapacity(tIntArray& oArray, TAction fnAction)
{
    const std::vector<std::size_t> aCapacities = Capacities(oArray, 1, fnAction);
    return aCapacities.empty() ? 0 : aCapacities[0];
}

// Notes the virtual operations as they are called.
class CNotingArray : public tIntArray
{
public:
    bool SetAt(long lIndex, const int& nElement) override
    {
        m_oCalls << "SetAt " << lIndex << '=' << nElement << '\n';
        return tIntArray::SetAt(lIndex, nElement);
    }
    void Resize(long lNumElements) override
    {
        m_oCalls << "Resize " << lNumElements << '\n';
        tIntArray::Resize(lNumElements);
    }
    const int& GetAt(long lIndex) const override
    {
        m_oCalls << "GetAt " << lIndex << '\n';
        return tIntArray::GetAt(lIndex);
    }
    int& ElementAt(long lIndex) override
    {
        m_oCalls << "ElementAt " << lIndex << '\n';
        return tIntArray::ElementAt(lIndex);
    }

    std::string Calls() const { return m_oCalls.str(); }

private:
    mutable std::ostringstream m_oCalls;
};

// Tells another size than it has.
class CSizedArray : public tIntArray
{
public:
    explicit CSizedArray(long lShown) : m_lShown(lShown) {}

    long GetSize() const override { return m_lShown; }

private:
    const long m_lShown;
};
