// Declares CTOVArray, a growable indexed container.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVContainers/TOVSortAccess.h>
#include <TOVContainers/TOVSorter.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>

#include <climits>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <vector>

class CTOVStringA;
class CTOVStringW;

// What reading and writing by an index does inline. The functions are internal, and stand outside the classes so that
// the library does not export them.
namespace TOVIndexing
{
// Returns whether there is such an element, and none of the operations that lead to it is overridden. If not, they are
// called.
template<class TArray> bool IsOwn(const TArray& oArray, long lIndex, std::size_t nSize)
{
    // A negative index becomes a number that is larger than any size.
    return TOVHasOwnTable(oArray) && static_cast<std::size_t>(lIndex) < nSize;
}

// Returns an index of an unsigned type as a long: -1, which no check of an index lets pass, if it is too large.
template<class TIndex> constexpr long ToLong(TIndex nIndex)
{
    return nIndex <= static_cast<unsigned long>(LONG_MAX) ? static_cast<long>(nIndex) : -1;
}
} // namespace TOVIndexing

// A vector with virtual operations. It owns its elements, which it copies by T's copy constructor and assignment. The
// capacity grows by one half, or to the needed number if that is larger, and never shrinks: repeated Add gives 1, 2, 3,
// 4, 6, 9, 13, 19, 28, 42. It has no lock: use it from one thread at a time.
//
//   operation                            cost                             when a copy or an allocation throws
//   GetAt, ElementAt, [], GetSize        constant                         -
//   Add                                  constant on average              unchanged
//   InsertAt                             linear                           unchanged if it has to grow, else valid
//   RemoveAt                             linear                           valid
//   Append of an array                   linear in what is appended, on   unchanged
//                                        average
//   Append of plain elements, Resize     linear                           valid
//   copy                                 linear                           nothing is made
//   =                                    linear                           valid
//   Sort                                 n log n, one element of storage  valid; an element may be there twice
//   RemoveAll, destruction               linear                           -
//
// "Valid" means that the array has intact elements, though not those that it had before. An argument may be an element
// of the array itself. A size that is negative or too large throws std::length_error "vector<T> too long". Element
// types must have a default constructor.
template<class T> class TOV_TEMPLATE CTOVArray
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVArray();

    // Adds a copy at the end. Returns its index.
    virtual long Add(const T& oElement);

    // Inserts a copy before lIndex, or at the end if lIndex is the size. Returns true. Throws std::out_of_range unless
    // 0 <= lIndex <= GetSize().
    virtual bool InsertAt(long lIndex, const T& oElement);

    // Settled: resizes the array to lNumElements and then adds the elements one by one. The array then has twice as
    // many elements, and the first half are those that Resize has kept or added. Returns true.
    // Throws unless "pElements != NULL", then "lNumElements >= 0".
    virtual bool Append(const T* pElements, long lNumElements);

    // Assigns to an element. Returns true. This and the other operations on one index throw unless
    // "(0 <= lIndex) && (lIndex < GetSize())".
    virtual bool SetAt(long lIndex, const T& oElement);

    // Removes an element; later ones move down by one.
    virtual void RemoveAt(long lIndex);

    // Removes all elements and keeps the capacity.
    virtual void RemoveAll();

    // Sets the size: removes elements at the end, or adds value-initialised ones.
    virtual void Resize(long lNumElements);

    // These return an element.
    virtual const T& GetAt(long lIndex) const;
    virtual T& ElementAt(long lIndex);

    // Returns the number of elements. GetCount calls GetSize.
    virtual long GetSize() const;
    virtual long GetCount() const;
    virtual bool IsEmpty() const;

    // Adds copies of lCount elements of oArray, beginning at lStart; -1 means all from there to the end. Throws
    // std::out_of_range unless oArray has all these elements.
    virtual void Append(const CTOVArray& oArray, long lStart = 0, long lCount = -1);

    // These call GetAt and ElementAt.
    virtual const T& operator[](long lIndex) const;
    virtual T& operator[](long lIndex);

    // Swaps two elements by SetAt, first at lIndex2, then at lIndex1. Throws unless
    // "(0 <= lIndex1) && (lIndex1 < GetSize())", then unless the same is true for lIndex2.
    virtual void Swap(long lIndex1, long lIndex2);

    CTOVArray();
    // These copy all elements. Settled: an array that is assigned to itself is unchanged.
    CTOVArray(const CTOVArray& oArray);
    CTOVArray& operator=(const CTOVArray& oArray);

    // These call the operators above. An index that is too large for a long fails the same check.
    template<class TIndex, std::enable_if_t<std::is_unsigned_v<TIndex>, int> = 0>
    const T& operator[](TIndex nIndex) const
    {
        return (*this)[TOVIndexing::ToLong(nIndex)];
    }
    template<class TIndex, std::enable_if_t<std::is_unsigned_v<TIndex>, int> = 0> T& operator[](TIndex nIndex)
    {
        return (*this)[TOVIndexing::ToLong(nIndex)];
    }

    // The elements as a range, for loops and for algorithms of the standard library. No virtual operation is called.
    // What changes the size of the array ends the range.
    friend const T* begin(const CTOVArray& oArray) { return oArray.m_aArray.data(); }
    friend const T* end(const CTOVArray& oArray) { return oArray.m_aArray.data() + oArray.m_aArray.size(); }
    friend T* begin(CTOVArray& oArray) { return oArray.m_aArray.data(); }
    friend T* end(CTOVArray& oArray) { return oArray.m_aArray.data() + oArray.m_aArray.size(); }

    // Sorts in ascending order of pfCompare (see ISorter) by heap sort, which is not stable. Elements of a derived
    // array are read and written by its virtual operations, in the same steps. A comparison that returns a bool or an
    // unsigned number does not compile.
    template<class TCompare> void Sort(TCompare pfCompare);

    // Sorts one array, which it does not own, by heap sort (Floyd's bottom-up construction, Williams' sift-down).
    template<class TCompare> class CHeapSort : public ISorter<TCompare>
    {
        static_assert(!std::is_unsigned_v<std::decay_t<std::invoke_result_t<TCompare&, const T&, const T&>>>,
                      "a comparison returns an int: below 0 when the first element orders before the second, above 0 "
                      "when after, else 0; a bool is never below 0");

    public:
        void Sort(TCompare pfCompare) override;

        // Will sort this array.
        explicit CHeapSort(CTOVArray* pArray);

    private:
        template<class TAccess> static void SortBy(TAccess oArray, TCompare& pfCompare);

        // Moves the element at lPosition, in a heap of lHeapSize elements, down to its place. Positions begin at 1:
        // position k holds element k - 1, and its children are at 2k and 2k + 1.
        template<class TAccess>
        static void SiftDown(TAccess& oArray, long lPosition, long lHeapSize, TCompare& pfCompare);

        CTOVArray* m_pArray;
    };

private:
    friend class CTOVStringA;
    friend class CTOVStringW;

    // Inserts elements before nIndex. Builds a new vector for that, so that they may be elements of this array.
    void InsertAside(std::size_t nIndex, const T* pElements, std::size_t nCount);

    // Adds an element to a full array. A number is passed by value, so that a caller need not keep its own in memory.
    void AddAside(std::conditional_t<std::is_scalar_v<T>, const T, const T&> oElement);

    // Returns the capacity for nNeeded elements, by the rule of growth.
    std::size_t GetCapacityFor(std::size_t nNeeded) const;

    std::vector<T> m_aArray;
};

template<class T> CTOVArray<T>::CTOVArray()
{
}

template<class T> CTOVArray<T>::CTOVArray(const CTOVArray& oArray) : m_aArray(oArray.m_aArray)
{
}

template<class T> CTOVArray<T>::~CTOVArray()
{
}

template<class T> CTOVArray<T>& CTOVArray<T>::operator=(const CTOVArray& oArray)
{
    if (this != &oArray)
    {
        m_aArray.clear();
        m_aArray.reserve(GetCapacityFor(oArray.m_aArray.size()));
        m_aArray.insert(m_aArray.end(), oArray.m_aArray.begin(), oArray.m_aArray.end());
    }
    return *this;
}

template<class T> TOV_TEMPLATE_INLINE long CTOVArray<T>::Add(const T& oElement)
{
    // The vector asks in this form, too, so that the compiler asks only once.
    const std::size_t nOldSize = m_aArray.size();
    if (nOldSize != m_aArray.capacity())
        m_aArray.push_back(oElement);
    else
        AddAside(oElement);

    return static_cast<long>(nOldSize);
}

template<class T> bool CTOVArray<T>::InsertAt(long lIndex, const T& oElement)
{
    const std::size_t nIndex = static_cast<std::size_t>(lIndex);
    if (nIndex > m_aArray.size())
        throw std::out_of_range("CTOVArray<T>::InsertAt: index beyond the size");

    if (m_aArray.size() < m_aArray.capacity())
        m_aArray.insert(m_aArray.begin() + lIndex, oElement);
    else
        InsertAside(nIndex, std::addressof(oElement), 1);

    return true;
}

template<class T> bool CTOVArray<T>::Append(const T* pElements, long lNumElements)
{
    TOV_ASSERT(pElements != NULL);
    TOV_ASSERT(lNumElements >= 0);

    // Elements of this array are copied before Resize moves them.
    std::vector<T> aOwn;
    const std::less<const T*> oBefore;
    if (!oBefore(pElements, m_aArray.data()) && oBefore(pElements, m_aArray.data() + m_aArray.size()))
    {
        aOwn.assign(pElements, pElements + lNumElements);
        pElements = aOwn.data();
    }

    // Settled: this is not a plain append.
    Resize(lNumElements);
    for (long lIndex = 0; lIndex < lNumElements; ++lIndex)
        Add(pElements[lIndex]);

    return true;
}

template<class T> bool CTOVArray<T>::SetAt(long lIndex, const T& oElement)
{
    if (!TOV_LIKELY(TOVIndexing::IsOwn(*this, lIndex, m_aArray.size())))
        TOV_ASSERT((0 <= lIndex) && (lIndex < GetSize()));
    m_aArray[static_cast<std::size_t>(lIndex)] = oElement;
    return true;
}

template<class T> void CTOVArray<T>::RemoveAt(long lIndex)
{
    TOV_ASSERT((0 <= lIndex) && (lIndex < GetSize()));
    m_aArray.erase(m_aArray.begin() + lIndex);
}

template<class T> void CTOVArray<T>::RemoveAll()
{
    m_aArray.clear();
}

template<class T> void CTOVArray<T>::Resize(long lNumElements)
{
    // A negative number becomes one that is larger than the largest size.
    const std::size_t nNumElements = static_cast<std::size_t>(lNumElements);
    if (nNumElements > m_aArray.size())
        m_aArray.reserve(GetCapacityFor(nNumElements));
    m_aArray.resize(nNumElements);
}

template<class T> const T& CTOVArray<T>::GetAt(long lIndex) const
{
    if (!TOV_LIKELY(TOVIndexing::IsOwn(*this, lIndex, m_aArray.size())))
        TOV_ASSERT((0 <= lIndex) && (lIndex < GetSize()));
    return m_aArray[static_cast<std::size_t>(lIndex)];
}

template<class T> T& CTOVArray<T>::ElementAt(long lIndex)
{
    if (!TOV_LIKELY(TOVIndexing::IsOwn(*this, lIndex, m_aArray.size())))
        TOV_ASSERT((0 <= lIndex) && (lIndex < GetSize()));
    return m_aArray[static_cast<std::size_t>(lIndex)];
}

template<class T> long CTOVArray<T>::GetSize() const
{
    return static_cast<long>(m_aArray.size());
}

template<class T> long CTOVArray<T>::GetCount() const
{
    return GetSize();
}

template<class T> bool CTOVArray<T>::IsEmpty() const
{
    return GetCount() == 0;
}

template<class T> void CTOVArray<T>::Append(const CTOVArray& oArray, long lStart, long lCount)
{
    const std::size_t nAvailable = oArray.m_aArray.size();
    const std::size_t nStart = static_cast<std::size_t>(lStart);
    if (nStart > nAvailable)
        throw std::out_of_range("CTOVArray<T>::Append: start beyond the size");

    const std::size_t nCount = lCount == -1 ? nAvailable - nStart : static_cast<std::size_t>(lCount);
    if (nCount > nAvailable - nStart)
        throw std::out_of_range("CTOVArray<T>::Append: count beyond the size");

    const T* const pElements = oArray.m_aArray.data() + nStart;
    if (this == &oArray || nCount > m_aArray.capacity() - m_aArray.size())
        InsertAside(m_aArray.size(), pElements, nCount);
    else
        m_aArray.insert(m_aArray.end(), pElements, pElements + nCount);
}

template<class T> const T& CTOVArray<T>::operator[](long lIndex) const
{
    return TOV_LIKELY(TOVIndexing::IsOwn(*this, lIndex, m_aArray.size())) ? m_aArray[static_cast<std::size_t>(lIndex)]
                                                                          : GetAt(lIndex);
}

template<class T> T& CTOVArray<T>::operator[](long lIndex)
{
    return TOV_LIKELY(TOVIndexing::IsOwn(*this, lIndex, m_aArray.size())) ? m_aArray[static_cast<std::size_t>(lIndex)]
                                                                          : ElementAt(lIndex);
}

template<class T> void CTOVArray<T>::Swap(long lIndex1, long lIndex2)
{
    TOV_ASSERT((0 <= lIndex1) && (lIndex1 < GetSize()));
    TOV_ASSERT((0 <= lIndex2) && (lIndex2 < GetSize()));

    const T oElement(GetAt(lIndex2));
    SetAt(lIndex2, GetAt(lIndex1));
    SetAt(lIndex1, oElement);
}

template<class T> template<class TCompare> void CTOVArray<T>::Sort(TCompare pfCompare)
{
    static_assert(std::is_trivially_destructible_v<CHeapSort<TCompare>>,
                  "the sorter is freed through its interface, which has no virtual destructor");

    CTOVSmartPointer<ISorter<TCompare>> pSorter;
    pSorter = new CHeapSort<TCompare>(this);
    pSorter->Sort(pfCompare);
}

template<class T> void CTOVArray<T>::InsertAside(std::size_t nIndex, const T* pElements, std::size_t nCount)
{
    const T* const pOld = m_aArray.data();
    const std::size_t nOldSize = m_aArray.size();

    std::vector<T> aNew;
    aNew.reserve(GetCapacityFor(nOldSize + nCount));
    aNew.insert(aNew.end(), pOld, pOld + nIndex);
    aNew.insert(aNew.end(), pElements, pElements + nCount);
    aNew.insert(aNew.end(), pOld + nIndex, pOld + nOldSize);
    m_aArray.swap(aNew);
}

template<class T>
TOV_NOINLINE void CTOVArray<T>::AddAside(std::conditional_t<std::is_scalar_v<T>, const T, const T&> oElement)
{
    InsertAside(m_aArray.size(), std::addressof(oElement), 1);
}

template<class T> std::size_t CTOVArray<T>::GetCapacityFor(std::size_t nNeeded) const
{
    // The largest size is that of a 32-bit target, on every target.
    constexpr std::size_t MAX_ELEMENTS = 0x7FFFFFFF / sizeof(T);
    if (nNeeded > MAX_ELEMENTS)
        throw std::length_error("vector<T> too long");

    const std::size_t nCapacity = m_aArray.capacity();
    if (nNeeded <= nCapacity)
        return nCapacity;

    const std::size_t nGrown = nCapacity + nCapacity / 2;
    return nGrown < nNeeded || nGrown > MAX_ELEMENTS ? nNeeded : nGrown;
}

template<class T>
template<class TCompare>
CTOVArray<T>::CHeapSort<TCompare>::CHeapSort(CTOVArray* pArray) : m_pArray(pArray)
{
}

template<class T> template<class TCompare> void CTOVArray<T>::CHeapSort<TCompare>::Sort(TCompare pfCompare)
{
    if (TOVIsExactly(*m_pArray))
        SortBy(TOVSorting::CDirectAccess<T>(m_pArray->m_aArray), pfCompare);
    else
        SortBy(TOVSorting::CVirtualAccess<T, CTOVArray>(*m_pArray), pfCompare);
}

template<class T>
template<class TCompare>
template<class TAccess>
void CTOVArray<T>::CHeapSort<TCompare>::SortBy(TAccess oArray, TCompare& pfCompare)
{
    long lHeapSize = oArray.GetSize();
    if (lHeapSize <= 0)
        return;

    for (long lPosition = lHeapSize / 2; lPosition >= 1; --lPosition)
        SiftDown(oArray, lPosition, lHeapSize, pfCompare);

    do
    {
        --lHeapSize;
        oArray.Swap(0, lHeapSize);
        SiftDown(oArray, 1, lHeapSize, pfCompare);
    } while (lHeapSize > 1);
}

template<class T>
template<class TCompare>
template<class TAccess>
void CTOVArray<T>::CHeapSort<TCompare>::SiftDown(TAccess& oArray, long lPosition, long lHeapSize, TCompare& pfCompare)
{
    const T oElement(oArray.GetAt(lPosition - 1));
    while (lPosition <= lHeapSize / 2)
    {
        oArray.Prefetch(lPosition);
        long lSon = 2 * lPosition;
        // The comparison's result is added: which son is the larger one is hard to predict.
        if (lSon < lHeapSize)
            lSon += TOVSorting::OneIfNegative(oArray.CompareWithNext(lSon - 1, pfCompare));
        // Settled: an element moves down past equal ones as well.
        if (pfCompare(oElement, oArray.GetAt(lSon - 1)) > 0)
            break;

        oArray.CopyDown(lPosition - 1, lSon - 1);
        lPosition = lSon;
    }
    oArray.SetAt(lPosition - 1, oElement);
}
