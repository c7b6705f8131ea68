// Declares CTOVSharedBlock, a control block that has its elements in the same memory.
#pragma once

#include <TOVDesignPatterns/TOVRefCount.h>

#include <cstdint>
#include <cstring>

// The control block of a CTOVBuffer. It is one block of memory, which may be larger than the elements need:
//
//   | m_lRefCount | m_pObject | m_ulBytes 56 | a b c ... 0 | unused |
//                      |                       ^
//                      +-----------------------+
//
// T must be plain storage (see CTOVOwnedObject), as nothing destroys the elements.
template<class T> class CTOVSharedBlock final : public CTOVRefCountObject<T>
{
    static_assert(std::is_trivially_copyable_v<T> && CTOVOwnedObject<T>::IsPlainStorage(),
                  "the elements of a buffer are copied and freed as plain memory");

public:
    // Virtual operations. Release frees the elements with the block. The destructor frees nothing.
    long Release() override;
    ~CTOVSharedBlock() override;

    // Returns a new block with count 1 and room for nElements or more, which are not initialised. With bGrows, the
    // size is rounded up so that a loop of appends copies a number of elements that is linear in their sum.
    static CTOVSharedBlock* Make(std::size_t nElements, bool bGrows);

    // Does the same as Make, without bGrows, if the calling thread has freed a block of this size, and returns null
    // otherwise: no call can follow, so that the caller has nothing to keep for its time after one.
    static CTOVSharedBlock* TakeFreed(std::size_t nElements);

    // Returns whether the block has room for nElements.
    bool HasRoom(std::size_t nElements) const { return GetBytes(nElements) <= m_ulBytes; }

    // This needs no load from a block that has just been made.
    T* GetElements() { return reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(this) + FIRST_ELEMENT); }

    // Copies a text to lStart, and makes the terminator and the hidden element after it zero. The block has room for
    // both, and does not overlap the text.
    void SetText(long lStart, const T* pText, long lLength);

    // Frees a block of which the caller holds the last reference.
    void Free();

private:
    // The largest of all blocks has little more than 2 GB.
    explicit CTOVSharedBlock(std::uint32_t ulBytes);

    static constexpr std::size_t GetBytes(std::size_t nElements);
    static constexpr std::size_t RoundUpToGrow(std::size_t nBytes);
    TOV_NOINLINE static CTOVSharedBlock* MakeLarge(std::size_t nBytes);

    // The first element follows the last member, without the gap that would end an object of this class.
    static constexpr std::size_t FIRST_ELEMENT =
        (sizeof(CTOVRefCountObject<T>) + sizeof(std::uint32_t) + alignof(T) - 1) / alignof(T) * alignof(T);
    static constexpr bool IS_OVERALIGNED = alignof(T) > __STDCPP_DEFAULT_NEW_ALIGNMENT__;

    std::uint32_t m_ulBytes;
};

template<class T>
CTOVSharedBlock<T>::CTOVSharedBlock(std::uint32_t ulBytes)
    : CTOVRefCountObject<T>(reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(this) + FIRST_ELEMENT)),
      m_ulBytes(ulBytes)
{
}

template<class T> CTOVSharedBlock<T>::~CTOVSharedBlock()
{
    this->m_pObject = nullptr;
}

template<class T> constexpr std::size_t CTOVSharedBlock<T>::GetBytes(std::size_t nElements)
{
    const std::size_t nBytes = FIRST_ELEMENT + nElements * sizeof(T);
    // Rounded up, it is never smaller than the object anyway.
    return TOV_ROUND_BLOCKS || nBytes > sizeof(CTOVSharedBlock) ? nBytes : sizeof(CTOVSharedBlock);
}

// Between a power of 2 and the next one, there are 4 sizes. They fill a block of the usual heap with its
// administration.
template<class T> constexpr std::size_t CTOVSharedBlock<T>::RoundUpToGrow(std::size_t nBytes)
{
    constexpr std::size_t HEAP_BYTES = 16;
    std::size_t nStep = 16;
    while (nStep <= nBytes / 8)
        nStep *= 2;
    const std::size_t nRounded = (nBytes + HEAP_BYTES + nStep - 1) / nStep * nStep - HEAP_BYTES;
    // The largest block of the lists is used, too.
    constexpr std::size_t LARGEST_SIZE = TOVPlatform::TOVMemoryList::LARGEST_SIZE;
    return nBytes <= LARGEST_SIZE && nRounded > LARGEST_SIZE ? LARGEST_SIZE : nRounded;
}

template<class T> inline CTOVSharedBlock<T>* CTOVSharedBlock<T>::Make(std::size_t nElements, bool bGrows)
{
    std::size_t nBytes = GetBytes(nElements);
    if (TOV_ROUND_BLOCKS && bGrows && nBytes < 0x40000000) // so that no block has room for 2 GB
        nBytes = RoundUpToGrow(nBytes);
    if (IS_OVERALIGNED || nBytes > TOVPlatform::TOVMemoryList::LARGEST_SIZE)
        return MakeLarge(nBytes);

    nBytes = TOVPlatform::TOVMemoryList::GetBlockSize(nBytes);
    return ::new (TOVPlatform::TOVMemoryList::Allocate(nBytes)) CTOVSharedBlock(static_cast<std::uint32_t>(nBytes));
}

template<class T> inline CTOVSharedBlock<T>* CTOVSharedBlock<T>::TakeFreed(std::size_t nElements)
{
    const std::size_t nBytes = TOVPlatform::TOVMemoryList::GetBlockSize(GetBytes(nElements));
    void* const pMemory = IS_OVERALIGNED ? nullptr : TOVPlatform::TOVMemoryList::TakeFreed(nBytes);
    return pMemory != nullptr ? ::new (pMemory) CTOVSharedBlock(static_cast<std::uint32_t>(nBytes)) : nullptr;
}

template<class T> CTOVSharedBlock<T>* CTOVSharedBlock<T>::MakeLarge(std::size_t nBytes)
{
    nBytes = TOVPlatform::TOVMemoryList::GetBlockSize(nBytes);
    void* pMemory;
    if constexpr (IS_OVERALIGNED)
        pMemory = ::operator new(nBytes, std::align_val_t(alignof(T)));
    else
        pMemory = TOVPlatform::TOVMemoryList::Allocate(nBytes);
    return ::new (pMemory) CTOVSharedBlock(static_cast<std::uint32_t>(nBytes));
}

template<class T> inline void CTOVSharedBlock<T>::SetText(long lStart, const T* pText, long lLength)
{
    T* const pElements = GetElements() + lStart;
    CTOVBuffer<T>::CopyText(pElements, pText, lLength);
    std::memset(static_cast<void*>(pElements + lLength), 0, 2 * sizeof(T));
}

template<class T> inline void CTOVSharedBlock<T>::Free()
{
    const std::size_t nBytes = m_ulBytes;
    void* const pMemory = this;
    this->~CTOVSharedBlock();
    if constexpr (IS_OVERALIGNED)
        ::operator delete(pMemory, std::align_val_t(alignof(T)));
    else
        TOVPlatform::TOVMemoryList::Free(pMemory, nBytes);
}

template<class T> long CTOVSharedBlock<T>::Release()
{
    const long lRefCount = --this->m_lRefCount;
    TOV_ASSERT(lRefCount >= 0);

    if (lRefCount == 0)
        Free();

    return lRefCount;
}
