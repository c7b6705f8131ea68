// Declares CTOVBuffer, a sized block of plain elements that its copies share.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>
#include <TOVPlatform/TOVMemory.h>

#include <cstring>
#include <functional>
#include <optional>

// A block of elements without spare capacity. Copies and assignments share the block, whose references are counted; the
// last buffer that releases it frees it. T must be trivially copyable.
//
//   oA  m_lSize 3, m_pArray --+     control block          block
//                             +--> +---------------+     +---+---+---+ - - +
//   oB  m_lSize 3, m_pArray --+    | count 2       | --> | a | b | c |  0  |
//                                  +---------------+     +---+---+---+ - - +
//
// A hidden element, zero at first, follows the last one, and no size includes it: a terminator written one past the end
// stays in owned memory. A buffer without storage has a control block with a null pointer.
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
// Settled: only Resize and Zero, and the operations that call them, make a private block first. Writing through
// GetBuffer, SetElements and Swap changes a shared block, and every buffer that shares it sees the change. Sizes are
// 32-bit counts; a block of 2 GB or more throws std::bad_alloc. Nothing is locked: use all buffers that share a block
// from one thread at a time.
template<class T> class TOV_TEMPLATE CTOVBuffer
{
public:
    // Virtual operations; their order is part of the exported design.

    // The destructor cannot throw, as the elements need no destructors.
    virtual ~CTOVBuffer() noexcept;

    // These copy lSize elements into the block at lIndex, or out of it. pElements may lie in the block itself; with
    // lSize <= 0 they copy nothing. They throw unless "m_pArray.IsValid()", then
    // "(0 <= lIndex) && (lIndex+lSize <= GetSize())".
    virtual void SetElements(long lIndex, const T* pElements, long lSize);
    virtual void GetElements(long lIndex, T* pElements, long lSize) const;

    // Releases the present block and shares the other's. A buffer assigned to itself is unchanged.
    virtual const CTOVBuffer& operator=(const CTOVBuffer& oBuffer);

    // Replaces the contents by lSize elements: calls SetSize, then SetElements. pElements may lie in this buffer's own
    // block.
    virtual void Assign(const T* pElements, long lSize);

    // These add elements after the last one: they call SetSize, then SetElements. The elements may lie in this buffer's
    // own block. Appending no elements changes nothing.
    virtual void Append(const CTOVBuffer& oBuffer);
    virtual void Append(const T* pElements, long lSize);

    // Sets all bytes of all elements to 0, in a private block. Does nothing if the size is 0.
    virtual void Zero();

    // Makes a private block of lNumElements elements. If bKeepData is true, the old elements that fit are kept; all
    // others are not initialised. Size 0 also gives a valid block. Throws unless "lNumElements >= 0".
    virtual void Resize(long lNumElements, bool bKeepData = true);

    // Releases the block: the size becomes 0, and there is no storage.
    virtual void Free();

    // Calls Resize.
    virtual void SetSize(long lNumElements, bool bKeepData);

    // Returns whether there is storage, which Resize makes even for size 0.
    virtual bool IsValid() const;

    // Returns the number of elements.
    virtual long GetSize() const;

    // Returns the first element, or null without storage. All buffers that share the block see what is written here.
    virtual T* GetBuffer();
    virtual const T* GetBuffer() const;

    // Swaps two elements. Throws unless "(0 <= lIndex1) && (lIndex1 < GetSize())", then unless the same is true for
    // lIndex2.
    virtual void Swap(long lIndex1, long lIndex2);

    // Makes a buffer without storage.
    CTOVBuffer();
    // Shares the block of oBuffer.
    CTOVBuffer(const CTOVBuffer& oBuffer);
    // Copies lSize elements. With lSize 0 there is no storage. Throws unless "lNumElements >= 0", as Resize does.
    CTOVBuffer(const T* pElements, long lSize);

    // Does the same as GetBuffer.
    T* AddressOfBuffer();

    // Returns whether the sizes and all bytes of the elements are equal. A buffer without storage equals only another
    // one without storage.
    bool operator==(const CTOVBuffer& oBuffer) const;

private:
    // Returns a new block that begins with the first lNumKept elements of the present one.
    T* NewBlock(long lNumElements, long lNumKept) const;

    // Makes this buffer the only owner of a block that NewBlock returns. The caller sets the size.
    void MakeUnique(long lNumElements, long lNumKept);

    // Returns whether pElements points into the block, its hidden element included, and would dangle if the block were
    // freed.
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
    // The condition is the one of the text, written so that it cannot overflow.
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

    // The sum wraps at 32 bits on every target: a size that is too large becomes negative and fails the check of
    // Resize.
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

    // A block that is too large for a 32-bit target fails on every target.
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
