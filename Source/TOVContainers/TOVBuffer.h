// Declares CTOVBuffer, a sized block of plain elements that its copies share.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVDesignPatterns/TOVSharedBlock.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>
#include <TOVPlatform/TOVMemory.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <new>
#include <optional>

class CTOVStringA;
class CTOVStringW;

// A block of elements without spare capacity. Copies and assignments share the block, whose references are counted; the
// last buffer that releases it frees it. T must be trivially copyable.
//
//   oA  m_lSize 3, m_pArray --+    control block and elements, in one allocation
//                             +--> +---------------+---+---+---+ - - +
//   oB  m_lSize 3, m_pArray --+    | count 2       | a | b | c |  0  |
//                                  +---------------+---+---+---+ - - +
//
// A hidden element, zero at first, follows the last one, and no size includes it: a terminator written one past the end
// stays in owned memory. A buffer without storage has a control block with a null pointer.
//
//   operation                           cost                                    when an allocation throws
//   construction                        1 allocation and the copied elements    -
//   copy, =                             1 count, no allocation                  cannot
//   SetElements, GetElements            the copied elements                     cannot
//   Resize, SetSize, Assign, Append     1 allocation and the kept elements,     unchanged
//                                       even to equal size
//   Zero                                the block; 1 allocation if shared       unchanged
//   Free                                1 allocation                            unchanged
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
    friend class CTOVSharedBlock<T>;
    friend class CTOVStringA;
    friend class CTOVStringW;

    // Shares the block of oBuffer if bShares is true, and makes no storage otherwise.
    CTOVBuffer(const CTOVBuffer& oBuffer, bool bShares);

    // Makes lSize elements that are not initialised, and no storage for lSize 0.
    explicit CTOVBuffer(long lSize);

    // Takes over a block of this size, or one without storage and size 0.
    struct sNewBlock
    {
        CTOVRefCountObject<T>* pBlock;
        long lSize;
    };
    explicit CTOVBuffer(const sNewBlock& oNew);

    // Returns a new block, which is not initialised but for its hidden element. bGrows as in CTOVSharedBlock::Make.
    static CTOVSharedBlock<T>* NewBlock(long lNumElements, bool bGrows);

    [[noreturn]] TOV_NOINLINE static void RefuseSize(long lNumElements);

    // Replaces the block by a new one that begins with the first lNumKept elements.
    void MakeUnique(long lNumElements, long lNumKept, bool bGrows = false);

    // Replaces the block by a new one.
    void Take(const sNewBlock& oNew);

    // Releases a block. Whether it is a CTOVSharedBlock is known, so that no virtual call is needed: it is one if there
    // is storage. So a block of this class is not left to the smart pointer.
    TOV_NOINLINE static void ReleaseBlock(CTOVRefCountObject<T>* pBlock);

    // Does the same, and lets no exception of a failed check escape.
    TOV_NOINLINE static void ReleaseAtEnd(CTOVRefCountObject<T>* pBlock) noexcept;

    // For strings: adds elements that are not initialised. They may take the unused rest of a sole owner's block, or a
    // new block that has room for more, so that a loop of appends is linear. No size shows either. GrowInPlace only
    // does the former, and returns the first element, or null where it cannot.
    void Grow(long lNumElements);
    T* GrowInPlace(long lNumElements);

    // For strings: returns a new block for a text of this length, which must be above 0, and its terminator.
    TOV_NOINLINE static CTOVSharedBlock<T>* NewText(const T* pText, long lLength);

    // Copies between blocks that do not overlap. Short texts are copied without a call.
    static void CopyText(T* pDestination, const T* pText, long lLength);

    // For strings: returns whether both texts have the same units, which are short: 8 to 16 bytes. Others are never
    // called equal here.
    static bool AreShortAndEqual(const T* pFirst, const T* pSecond, long lLength);

    // Copies between blocks that may overlap. Leaves the check of the pointers to TOVMemory::Move.
    static void MoveElements(T* pDestination, const T* pSource, long lNumElements);

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
CTOVBuffer<T>::CTOVBuffer(const CTOVBuffer& oBuffer, bool bShares)
    : m_pArray(typename CTOVSmartPointer<T>::sAdopt{bShares ? CTOVSmartPointer<T>::Share(oBuffer.m_pArray.m_pObject)
                                                            : new CTOVRefCountObject<T>()}),
      m_lSize(oBuffer.m_lSize)
{
}

template<class T>
CTOVBuffer<T>::CTOVBuffer(long lSize)
    : m_pArray(typename CTOVSmartPointer<T>::sAdopt{lSize == 0 ? new CTOVRefCountObject<T>() : NewBlock(lSize, false)}),
      m_lSize(lSize)
{
}

template<class T>
CTOVBuffer<T>::CTOVBuffer(const CTOVBuffer& oBuffer) : m_pArray(oBuffer.m_pArray), m_lSize(oBuffer.m_lSize)
{
}

template<class T>
CTOVBuffer<T>::CTOVBuffer(const sNewBlock& oNew)
    : m_pArray(typename CTOVSmartPointer<T>::sAdopt{oNew.pBlock}), m_lSize(oNew.lSize)
{
}

template<class T> CTOVBuffer<T>::CTOVBuffer(const T* pElements, long lSize) : CTOVBuffer(lSize)
{
    if (lSize != 0)
        MoveElements(m_pArray.Get(), pElements, lSize);
}

template<class T> TOV_OUTSIDE_INLINE CTOVBuffer<T>::~CTOVBuffer() noexcept
{
    // The two usual cases make no call that returns here.
    CTOVRefCountObject<T>* const pBlock = m_pArray.m_pObject;
    if (pBlock->m_lRefCount > 1)
        --pBlock->m_lRefCount;
    else if (pBlock->m_lRefCount == 1 && pBlock->m_pObject != nullptr)
        static_cast<CTOVSharedBlock<T>*>(pBlock)->Free();
    else
        ReleaseAtEnd(pBlock);
    m_pArray.m_pObject = nullptr;
}

template<class T> void CTOVBuffer<T>::SetElements(long lIndex, const T* pElements, long lSize)
{
    TOV_ASSERT(m_pArray.IsValid());
    // The condition is the one of the text, written so that it cannot overflow.
    TOV_ASSERT_TEXT((0 <= lIndex) && (lSize <= GetSize() - lIndex), "(0 <= lIndex) && (lIndex+lSize <= GetSize())");

    if (lSize > 0)
        MoveElements(m_pArray.Get() + lIndex, pElements, lSize);
}

template<class T> void CTOVBuffer<T>::GetElements(long lIndex, T* pElements, long lSize) const
{
    TOV_ASSERT(m_pArray.IsValid());
    TOV_ASSERT_TEXT((0 <= lIndex) && (lSize <= GetSize() - lIndex), "(0 <= lIndex) && (lIndex+lSize <= GetSize())");

    if (lSize > 0)
        MoveElements(pElements, m_pArray.Get() + lIndex, lSize);
}

template<class T> const CTOVBuffer<T>& CTOVBuffer<T>::operator=(const CTOVBuffer& oBuffer)
{
    if (this != &oBuffer)
    {
        CTOVRefCountObject<T>* const pOld = m_pArray.m_pObject;
        m_pArray.m_pObject = CTOVSmartPointer<T>::Share(oBuffer.m_pArray.m_pObject);
        m_lSize = oBuffer.m_lSize;
        ReleaseBlock(pOld);
    }
    return *this;
}

template<class T> void CTOVBuffer<T>::Assign(const T* pElements, long lSize)
{
    std::optional<CTOVBuffer> oSource;
    if (IsInside(pElements))
        oSource.emplace(*this);

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

    std::optional<CTOVBuffer> oSource;
    if (IsInside(pElements))
        oSource.emplace(*this);

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
}

template<class T> void CTOVBuffer<T>::Free()
{
    if (m_pArray.IsValid())
    {
        CTOVRefCountObject<T>* const pOld = m_pArray.m_pObject;
        m_pArray.m_pObject = new CTOVRefCountObject<T>();
        ReleaseBlock(pOld);
    }
    else
    {
        m_pArray = nullptr;
    }
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

template<class T> TOV_TEMPLATE_INLINE CTOVSharedBlock<T>* CTOVBuffer<T>::NewBlock(long lNumElements, bool bGrows)
{
    // A block that is too large for a 32-bit target fails on every target.
    constexpr unsigned long MAX_ELEMENTS = static_cast<unsigned long>(0x7FFFFFFF / sizeof(T)) - 1;
    if (static_cast<unsigned long>(lNumElements) > MAX_ELEMENTS)
        RefuseSize(lNumElements);

    CTOVSharedBlock<T>* const pBlock = CTOVSharedBlock<T>::Make(static_cast<std::size_t>(lNumElements) + 1, bGrows);
    std::memset(static_cast<void*>(pBlock->GetElements() + lNumElements), 0, sizeof(T));
    return pBlock;
}

template<class T> void CTOVBuffer<T>::RefuseSize(long lNumElements)
{
    TOV_ASSERT(lNumElements >= 0);
    throw std::bad_alloc();
}

template<class T> void CTOVBuffer<T>::MakeUnique(long lNumElements, long lNumKept, bool bGrows)
{
    CTOVSharedBlock<T>* const pNew = NewBlock(lNumElements, bGrows);
    if (lNumKept > 0)
        std::memcpy(static_cast<void*>(pNew->GetElements()), m_pArray.Get(), GetByteCount(lNumKept));
    Take({pNew, lNumElements});
}

template<class T> void CTOVBuffer<T>::Take(const sNewBlock& oNew)
{
    CTOVRefCountObject<T>* const pOld = m_pArray.m_pObject;
    m_pArray.m_pObject = oNew.pBlock;
    m_lSize = oNew.lSize;
    if (pOld->m_lRefCount != 1)
        ReleaseBlock(pOld);
    else if (pOld->m_pObject != nullptr)
        static_cast<CTOVSharedBlock<T>*>(pOld)->Free();
    else
        CTOVRefCountObject<T>::operator delete(pOld, sizeof(*pOld));
}

template<class T> void CTOVBuffer<T>::ReleaseBlock(CTOVRefCountObject<T>* pBlock)
{
    if (pBlock->m_lRefCount > 1)
        --pBlock->m_lRefCount;
    else if (pBlock->m_lRefCount < 1)
        pBlock->Release(); // which fails the check
    else if (pBlock->m_pObject != nullptr)
        static_cast<CTOVSharedBlock<T>*>(pBlock)->Free();
    else // the destructor of a block that owns nothing does nothing
        CTOVRefCountObject<T>::operator delete(pBlock, sizeof(*pBlock));
}

template<class T> void CTOVBuffer<T>::ReleaseAtEnd(CTOVRefCountObject<T>* pBlock) noexcept
{
    TOVDebug::RunInDestructor([pBlock] { ReleaseBlock(pBlock); });
}

template<class T> void CTOVBuffer<T>::Grow(long lNumElements)
{
    if (GrowInPlace(lNumElements) == nullptr)
        MakeUnique(lNumElements, m_lSize, m_lSize > 0);
}

template<class T> TOV_TEMPLATE_INLINE T* CTOVBuffer<T>::GrowInPlace(long lNumElements)
{
    CTOVRefCountObject<T>* const pBlock = m_pArray.m_pObject;
    if (pBlock->m_lRefCount != 1 || pBlock->m_pObject == nullptr ||
        !static_cast<CTOVSharedBlock<T>*>(pBlock)->HasRoom(static_cast<std::size_t>(lNumElements) + 1))
        return nullptr;

    m_lSize = lNumElements;
    T* const pElements = static_cast<CTOVSharedBlock<T>*>(pBlock)->GetElements();
    pElements[lNumElements] = T();
    return pElements;
}

template<class T> CTOVSharedBlock<T>* CTOVBuffer<T>::NewText(const T* pText, long lLength)
{
    CTOVSharedBlock<T>* const pNew = NewBlock(lLength + 1, false);
    pNew->SetText(0, pText, lLength);
    return pNew;
}

template<class T> TOV_TEMPLATE_INLINE void CTOVBuffer<T>::CopyText(T* pDestination, const T* pText, long lLength)
{
    const std::size_t nBytes = GetByteCount(lLength);
    unsigned char* const pTo = reinterpret_cast<unsigned char*>(pDestination);
    const unsigned char* const pFrom = reinterpret_cast<const unsigned char*>(pText);

    // Two moves of a fixed size, which may overlap each other.
    const auto fnMoveEnds = [=](auto nSize) {
        std::memcpy(pTo, pFrom, nSize);
        std::memcpy(pTo + nBytes - nSize, pFrom + nBytes - nSize, nSize);
    };
    if (nBytes > 64)
        std::memcpy(pTo, pFrom, nBytes);
    else if (nBytes > 32)
        fnMoveEnds(std::integral_constant<std::size_t, 32>());
    else if (nBytes >= 16)
        fnMoveEnds(std::integral_constant<std::size_t, 16>());
    else if (nBytes >= 8)
        fnMoveEnds(std::integral_constant<std::size_t, 8>());
    else if (nBytes >= 4)
        fnMoveEnds(std::integral_constant<std::size_t, 4>());
    else if (nBytes >= 2)
        fnMoveEnds(std::integral_constant<std::size_t, 2>());
    else if (nBytes == 1)
        *pTo = *pFrom;
}

template<class T>
TOV_TEMPLATE_INLINE bool CTOVBuffer<T>::AreShortAndEqual(const T* pFirst, const T* pSecond, long lLength)
{
    const std::size_t nLength = static_cast<std::size_t>(lLength);
    std::uint64_t aWords1[2];
    std::uint64_t aWords2[2];
    constexpr std::size_t WORD_UNITS = sizeof(aWords1[0]) / sizeof(T);
    if (nLength < WORD_UNITS || nLength > 2 * WORD_UNITS)
        return false;

    // Two words, which may overlap.
    std::memcpy(&aWords1[0], pFirst, sizeof(aWords1[0]));
    std::memcpy(&aWords1[1], pFirst + nLength - WORD_UNITS, sizeof(aWords1[1]));
    std::memcpy(&aWords2[0], pSecond, sizeof(aWords2[0]));
    std::memcpy(&aWords2[1], pSecond + nLength - WORD_UNITS, sizeof(aWords2[1]));
    return ((aWords1[0] ^ aWords2[0]) | (aWords1[1] ^ aWords2[1])) == 0;
}

template<class T> void CTOVBuffer<T>::MoveElements(T* pDestination, const T* pSource, long lNumElements)
{
    if (pDestination != nullptr && pSource != nullptr)
        std::memmove(static_cast<void*>(pDestination), pSource, GetByteCount(lNumElements));
    else
        TOVPlatform::TOVMemory::Move(pDestination, pSource, GetByteCount(lNumElements));
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
