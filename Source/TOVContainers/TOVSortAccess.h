// What the sort of an array does with it. All of it is internal, and stands outside the array's own class so that the
// library does not export it.
#pragma once

#include <Debug/TOVCheck.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

namespace TOVSorting
{
// Works by the virtual operations of the array.
template<class T, class TArray> class CVirtualAccess
{
public:
    explicit CVirtualAccess(TArray& oArray) : m_oArray(oArray) {}

    long GetSize() const { return m_oArray.GetSize(); }
    const T& GetAt(long lIndex) const { return m_oArray.GetAt(lIndex); }
    void SetAt(long lIndex, const T& oElement) { m_oArray.SetAt(lIndex, oElement); }
    void Swap(long lIndex1, long lIndex2) { m_oArray.Swap(lIndex1, lIndex2); }

    void Prefetch(long) const {}

    // Copies an element to a lower index.
    void CopyDown(long lTarget, long lSource) { SetAt(lTarget, GetAt(lSource)); }

    // Compares an element with the next one.
    template<class TCompare> auto CompareWithNext(long lIndex, TCompare& pfCompare) const
    {
        return pfCompare(GetAt(lIndex), GetAt(lIndex + 1));
    }

private:
    TArray& m_oArray;
};

// Returns 1 for a negative result of a comparison, and 0 for others.
template<class TResult> inline long OneIfNegative(TResult oResult)
{
    // The sign bit itself takes a step less than the question.
    if constexpr (std::is_integral_v<TResult>)
        return static_cast<long>(static_cast<std::make_unsigned_t<TResult>>(oResult) >>
                                 std::numeric_limits<TResult>::digits);
    else
        return oResult < 0 ? 1 : 0;
}

// Works without virtual calls, for an array whose class is not derived. The indexes are checked all the same,
// since a comparison may change the array.
template<class T> class CDirectAccess
{
public:
    explicit CDirectAccess(std::vector<T>& aArray) : m_aArray(aArray) {}

    long GetSize() const { return static_cast<long>(m_aArray.size()); }
    const T& GetAt(long lIndex) const { return GetElements(lIndex)[lIndex]; }
    void SetAt(long lIndex, const T& oElement) { GetElements(lIndex)[lIndex] = oElement; }

    void Swap(long lIndex1, long lIndex2)
    {
        const T oElement(GetAt(lIndex2));
        SetAt(lIndex2, GetAt(lIndex1));
        SetAt(lIndex1, oElement);
    }

    void CopyDown(long lTarget, long lSource)
    {
        T* const pElements = GetElements(lSource);
        pElements[lTarget] = pElements[lSource];
    }

    template<class TCompare> auto CompareWithNext(long lIndex, TCompare& pfCompare) const
    {
        const T* const pElements = GetElements(lIndex + 1);
        return pfCompare(pElements[lIndex], pElements[lIndex + 1]);
    }

    // Asks for the elements that stand a few levels below a position of the heap: those of one line of the cache.
    void Prefetch(long lPosition) const
    {
        // These elements need not be in the array.
        constexpr std::size_t LINE_SIZE = 64;
        const std::size_t nOffset = LINE_SIZE / sizeof(T) * sizeof(T) * static_cast<std::size_t>(lPosition);
        if (sizeof(T) <= LINE_SIZE / 4)
            TOV_PREFETCH(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(m_aArray.data()) + nOffset));
    }

private:
    // Returns all elements, of which the one at lMaxIndex is there.
    T* GetElements(long lMaxIndex) const
    {
        TOV_ASSERT_TEXT(static_cast<std::size_t>(lMaxIndex) < m_aArray.size(), "(0 <= lIndex) && (lIndex < GetSize())");
        return m_aArray.data();
    }

    std::vector<T>& m_aArray;
};
} // namespace TOVSorting
