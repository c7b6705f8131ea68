// Declares CTOVSharedBlock, a control block that has its elements in the same memory.
#pragma once

#include <TOVDesignPatterns/TOVRefCount.h>

#include <cstdint>

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
    // block gets an eighth more room, so that a loop of appends copies a number of elements that is linear in their
    // sum.
    static CTOVSharedBlock* Make(std::size_t nElements, bool bGrows);

    // Returns whether the block has room for nElements.
    bool HasRoom(std::size_t nElements) const { return GetBytes(nElements) <= m_ulBytes; }

    T* GetElements() { return this->m_pObject; }

    // Frees a block of which the caller holds the last reference.
    void Free();

private:
    // The largest of all blocks has 2 GB and an eighth.
    explicit CTOVSharedBlock(std::uint32_t ulBytes);

    static constexpr std::size_t GetBytes(std::size_t nElements);
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

template<class T> inline CTOVSharedBlock<T>* CTOVSharedBlock<T>::Make(std::size_t nElements, bool bGrows)
{
    std::size_t nBytes = GetBytes(nElements);
    if (TOV_ROUND_BLOCKS && bGrows && nBytes < 0x40000000) // so that no block has room for 2 GB
        nBytes += nBytes / 8;
    if (IS_OVERALIGNED || nBytes > TOVPlatform::TOVMemoryList::LARGEST_SIZE)
        return MakeLarge(nBytes);

    nBytes = TOVPlatform::TOVMemoryList::GetBlockSize(nBytes);
    return ::new (TOVPlatform::TOVMemoryList::Allocate(nBytes)) CTOVSharedBlock(static_cast<std::uint32_t>(nBytes));
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
