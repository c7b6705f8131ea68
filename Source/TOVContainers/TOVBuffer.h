// Sized block of plain elements that copies share: CTOVBuffer.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>
#include <TOVPlatform/TOVMemory.h>

#include <cstring>
#include <functional>
#include <optional>

// A block of elements without spare capacity. Copying and assigning share the block, which is counted; whoever lets go
// of it last frees it. T must be copyable by memory copy.
//
//   oA  m_lSize 3, m_pArray --+     control block          block
//                             +--> +---------------+     +---+---+---+ - - +
//   oB  m_lSize 3, m_pArray --+    | count 2       | --> | a | b | c |  0  |
//                                  +---------------+     +---+---+---+ - - +
//
// Behind the last element stands a hidden one, zero at first, that no size counts: a terminator written one past the
// end lands in owned memory. A buffer without storage has a control block with a NULL pointer.
//
//   operation                           cost                                    when an allocation throws
//   default construction                1 allocation                            -
//   copy, =                             1 count, no allocation                  cannot
//   SetElements, GetElements            the copied elements                     cannot
//   Resize, SetSize, Assign, Append     1 allocation (2 on a shared block) and  unchanged
//                                       the kept elements, even to equal size
//   Zero                                the block; 2 allocations if shared      unchanged
//   Free                                1 allocation if shared, else none       unchanged
//   GetSize, GetBuffer, Swap, IsValid   constant                                cannot
//
// Settled: only Resize and Zero, and what goes through them, take a private block first. GetBuffer, SetElements and
// Swap write into a shared block, and all sharers see it. Sizes are 32-bit counts; a block of 2 GB or more is
// std::bad_alloc. No lock: one thread at a time, for all buffers that share a block together.
template<class T> class TOV_TEMPLATE CTOVBuffer
{
public:
    // Virtual operations; their order is part of the exported design.

    // Cannot throw, as the elements need no destructors.
    virtual ~CTOVBuffer() noexcept;

    // Copies lSize elements into the block at lIndex, or out of it. pElements may lie in the block itself; lSize <= 0
    // copies nothing. Throw unless "m_pArray.IsValid()", then "(0 <= lIndex) && (lIndex+lSize <= GetSize())".
    virtual void SetElements(long lIndex, const T* pElements, long lSize);
    virtual void GetElements(long lIndex, T* pElements, long lSize) const;

    // Lets go of the own block and shares the other's. Nothing happens to a buffer that is assigned to itself.
    virtual const CTOVBuffer& operator=(const CTOVBuffer& oBuffer);

    // Becomes a copy of lSize elements: SetSize, then SetElements. pElements may lie in the own block.
    virtual void Assign(const T* pElements, long lSize);

    // Adds elements behind the last one: SetSize, then SetElements. They may lie in the own block; none change nothing.
    virtual void Append(const CTOVBuffer& oBuffer);
    virtual void Append(const T* pElements, long lSize);

    // Clears all bytes of all elements, in a private block. Nothing happens at size 0.
    virtual void Zero();

    // Takes a private block of lNumElements elements. The old ones that fit are kept if bKeepData; others are not
    // initialised. Size 0 is a valid block too. Throws unless lNumElements >= 0.
    virtual void Resize(long lNumElements, bool bKeepData = true);

    // Lets go of the block: size 0, no storage.
    virtual void Free();

    // As Resize, which it calls.
    virtual void SetSize(long lNumElements, bool bKeepData);

    // Whether there is storage, which there is from the first Resize on, also for size 0.
    virtual bool IsValid() const;

    // The number of elements.
    virtual long GetSize() const;

    // The first element, NULL without storage. Writing here is seen by all sharers.
    virtual T* GetBuffer();
    virtual const T* GetBuffer() const;

    // Swaps two elements. Throws unless "(0 <= lIndex1) && (lIndex1 < GetSize())", then the same for lIndex2.
    virtual void Swap(long lIndex1, long lIndex2);

    // No storage.
    CTOVBuffer();
    // Shares the block.
    CTOVBuffer(const CTOVBuffer& oBuffer);
    // A copy of lSize elements; no storage for none. Throws unless lNumElements >= 0, as Resize.
    CTOVBuffer(const T* pElements, long lSize);

    // As GetBuffer.
    T* AddressOfBuffer();

    // Same size and bytewise equal elements. Without storage equals only without storage.
    bool operator==(const CTOVBuffer& oBuffer) const;

private:
    // A new block that begins with the first lNumKept elements of the present one.
    T* NewBlock(long lNumElements, long lNumKept) const;

    // Makes this buffer the only owner of such a block. Its size is left to the caller.
    void MakeUnique(long lNumElements, long lNumKept);

    // Whether pElements points into the block, its hidden element included, and so would not outlive it.
    bool IsInside(const T* pElements) const;

    static unsigned long GetByteCount(long lNumElements);

    CTOVSmartPointer<T> m_pArray;
    long m_lSize;
};

template<class T> CTOVBuffer<T>::CTOVBuffer() : m_lSize(0)
{
}

template<class T>
CTOVBuffer<T>::CTOVBuffer(const CTOVBuffer& oBuffer) : m_pArray(oBuffer.m_pArray), m_lSize(oBuffer.m_lSize)
{
}

template<class T> CTOVBuffer<T>::CTOVBuffer(const T* pElements, long lSize) : CTOVBuffer()
{
    if (lSize == 0)
        return;

    SetSize(lSize, false);
    SetElements(0, pElements, lSize);
}

template<class T> CTOVBuffer<T>::~CTOVBuffer() noexcept
{
}

template<class T> void CTOVBuffer<T>::SetElements(long lIndex, const T* pElements, long lSize)
{
    TOV_ASSERT(m_pArray.IsValid());
    // The sum of the text, written so that it cannot overflow.
    TOV_ASSERT_TEXT((0 <= lIndex) && (lSize <= GetSize() - lIndex), "(0 <= lIndex) && (lIndex+lSize <= GetSize())");

    if (lSize > 0)
        TOVPlatform::TOVMemory::Move(m_pArray.Get() + lIndex, pElements, GetByteCount(lSize));
}

template<class T> void CTOVBuffer<T>::GetElements(long lIndex, T* pElements, long lSize) const
{
    TOV_ASSERT(m_pArray.IsValid());
    TOV_ASSERT_TEXT((0 <= lIndex) && (lSize <= GetSize() - lIndex), "(0 <= lIndex) && (lIndex+lSize <= GetSize())");

    if (lSize > 0)
        TOVPlatform::TOVMemory::Move(pElements, m_pArray.Get() + lIndex, GetByteCount(lSize));
}

template<class T> const CTOVBuffer<T>& CTOVBuffer<T>::operator=(const CTOVBuffer& oBuffer)
{
    if (this != &oBuffer)
    {
        m_pArray = oBuffer.m_pArray;
        m_lSize = oBuffer.m_lSize;
    }
    return *this;
}

template<class T> void CTOVBuffer<T>::Assign(const T* pElements, long lSize)
{
    std::optional<CTOVSmartPointer<T>> oSource;
    if (IsInside(pElements))
        oSource.emplace(m_pArray);

    SetSize(lSize, false);
    SetElements(0, pElements, lSize);
}

template<class T> void CTOVBuffer<T>::Append(const CTOVBuffer& oBuffer)
{
    Append(oBuffer.GetBuffer(), oBuffer.GetSize());
}

template<class T> void CTOVBuffer<T>::Append(const T* pElements, long lSize)
{
    if (lSize == 0)
        return;

    std::optional<CTOVSmartPointer<T>> oSource;
    if (IsInside(pElements))
        oSource.emplace(m_pArray);

    // The sum wraps at 32 bits on every target: a size past the largest is negative, and fails the check of Resize.
    const long lOldSize = GetSize();
    const std::uint32_t ulNewSize = static_cast<std::uint32_t>(lOldSize) + static_cast<std::uint32_t>(lSize);
    SetSize(static_cast<std::int32_t>(ulNewSize), true);
    SetElements(lOldSize, pElements, lSize);
}

template<class T> void CTOVBuffer<T>::Zero()
{
    if (GetSize() > 0)
    {
        if (m_pArray.GetRefCount() > 1)
            MakeUnique(m_lSize, 0);
        TOVPlatform::TOVMemory::Zero(m_pArray.Get(), GetByteCount(m_lSize));
    }
}

template<class T> void CTOVBuffer<T>::Resize(long lNumElements, bool bKeepData)
{
    TOV_ASSERT(lNumElements >= 0);

    const long lNumFitting = lNumElements < m_lSize ? lNumElements : m_lSize;
    MakeUnique(lNumElements, bKeepData ? lNumFitting : 0);
    m_lSize = lNumElements;
}

template<class T> void CTOVBuffer<T>::Free()
{
    m_pArray = nullptr;
    m_lSize = 0;
}

template<class T> void CTOVBuffer<T>::SetSize(long lNumElements, bool bKeepData)
{
    Resize(lNumElements, bKeepData);
}

template<class T> bool CTOVBuffer<T>::IsValid() const
{
    return m_pArray.IsValid();
}

template<class T> long CTOVBuffer<T>::GetSize() const
{
    return m_lSize;
}

template<class T> T* CTOVBuffer<T>::GetBuffer()
{
    return m_pArray.Get();
}

template<class T> const T* CTOVBuffer<T>::GetBuffer() const
{
    return m_pArray.Get();
}

template<class T> void CTOVBuffer<T>::Swap(long lIndex1, long lIndex2)
{
    TOV_ASSERT((0 <= lIndex1) && (lIndex1 < GetSize()));
    TOV_ASSERT((0 <= lIndex2) && (lIndex2 < GetSize()));

    const CTOVBuffer& oThis = *this;
    const T oElement = oThis.GetBuffer()[lIndex2];
    GetBuffer()[lIndex2] = oThis.GetBuffer()[lIndex1];
    GetBuffer()[lIndex1] = oElement;
}

template<class T> T* CTOVBuffer<T>::AddressOfBuffer()
{
    return m_pArray.Get();
}

template<class T> bool CTOVBuffer<T>::operator==(const CTOVBuffer& oBuffer) const
{
    if (m_lSize != oBuffer.m_lSize)
        return false;

    const T* const pFirst = m_pArray.Get();
    const T* const pSecond = oBuffer.m_pArray.Get();
    if (pFirst == nullptr || pSecond == nullptr)
        return pFirst == pSecond;

    return m_lSize == 0 || TOVPlatform::TOVMemory::Compare(pFirst, pSecond, GetByteCount(m_lSize)) == 0;
}

template<class T> T* CTOVBuffer<T>::NewBlock(long lNumElements, long lNumKept) const
{
    static_assert(std::is_trivially_copyable_v<T> && CTOVOwnedObject<T>::IsPlainStorage(),
                  "the elements of a buffer are copied and freed as plain memory");

    // What no 32-bit target can hold fails on all of them.
    constexpr long MAX_ELEMENTS = static_cast<long>(0x7FFFFFFF / sizeof(T)) - 1;
    if (lNumElements > MAX_ELEMENTS)
        throw std::bad_alloc();

    T* const pBlock = static_cast<T*>(CTOVOwnedObject<T>::Allocate(GetByteCount(lNumElements + 1)));
    std::memset(static_cast<void*>(pBlock + lNumElements), 0, sizeof(T));
    if (lNumKept > 0)
        TOVPlatform::TOVMemory::Copy(pBlock, m_pArray.Get(), GetByteCount(lNumKept));
    return pBlock;
}

template<class T> void CTOVBuffer<T>::MakeUnique(long lNumElements, long lNumKept)
{
    if (m_pArray.GetRefCount() > 1)
    {
        CTOVSmartPointer<T> pArray;
        pArray = NewBlock(lNumElements, lNumKept);
        m_pArray = pArray;
    }
    else
    {
        m_pArray = NewBlock(lNumElements, lNumKept);
    }
}

template<class T> bool CTOVBuffer<T>::IsInside(const T* pElements) const
{
    const std::less<const T*> oBefore;
    const T* const pBlock = m_pArray.Get();
    return pBlock != nullptr && !oBefore(pElements, pBlock) && !oBefore(pBlock + m_lSize, pElements);
}

template<class T> unsigned long CTOVBuffer<T>::GetByteCount(long lNumElements)
{
    return static_cast<unsigned long>(lNumElements) * static_cast<unsigned long>(sizeof(T));
}
