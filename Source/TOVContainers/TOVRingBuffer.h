// Declares CTOVRingBuffer, a fixed-capacity first-in first-out store.
#pragma once

#include <Debug/TOVBase.h>

#include <algorithm>

// Owns its elements. It refuses a write when full and a read when empty; it never blocks and overwrites nothing. It has
// no lock: use it from one thread at a time, even with one reader and one writer.
//
//    0     1     2     3     4
//  +-----+-----+-----+-----+-----+
//  |     |  a  |  b  |  c  |     |      m_lReadPos 1, m_lWritePos 4, m_lCount 3
//  +-----+-----+-----+-----+-----+
//
//   operation                          cost                           when a copy or an allocation throws
//   Write, Read                        constant, 1 copy               unchanged
//   Clear, GetCount, IsFull ...        constant                       -
//   SetCapacity                        1 allocation, all elements     unchanged
//   copying                            1 allocation, all elements     the target is empty, or unchanged if the
//                                                                     allocation throws
template<class T> class TOV_TEMPLATE CTOVRingBuffer
{
public:
    // Virtual operations; their order is part of the exported design.
    virtual ~CTOVRingBuffer();

    // Stores a copy after the newest element. Returns false, with nothing changed, when full.
    virtual bool Write(const T& oElement);

    // Removes the oldest element and assigns it to oElement. Returns false, with oElement unchanged, when empty.
    virtual bool Read(T& oElement);

    // Sets the count to 0; the capacity stays.
    virtual void Clear();

    // Sets the capacity in elements and empties the buffer, even for an unchanged capacity. Throws unless
    // "lNumElements >= 0" and "bKeepData == false".
    virtual void SetCapacity(long lNumElements, bool bKeepData = false);

    // These return the largest and the present number of elements.
    virtual long GetCapacity() const;
    virtual long GetCount() const;
    // Calls GetCount.
    virtual long GetSize() const;
    // With capacity 0, both return true.
    virtual bool IsEmpty() const;
    virtual bool IsFull() const;

    // The capacity is 0, or is set by SetCapacity.
    CTOVRingBuffer();
    CTOVRingBuffer(long lNumElements);
    // These copy the elements and the positions of the source: they call SetCapacity with the source's GetCapacity,
    // then copy all places. If a derived class overrides SetCapacity or GetCapacity, the numbers of places may differ;
    // the target then receives the oldest elements that fit. A buffer assigned to itself is unchanged.
    CTOVRingBuffer(const CTOVRingBuffer& oSource);
    CTOVRingBuffer& operator=(const CTOVRingBuffer& oSource);

private:
    T* m_pBuffer;
    long m_lCount;
    long m_lCapacity;
    long m_lReadPos;  // of the oldest element
    long m_lWritePos; // of the next free place
};

template<class T>
CTOVRingBuffer<T>::CTOVRingBuffer() : m_pBuffer(nullptr), m_lCount(0), m_lCapacity(0), m_lReadPos(0), m_lWritePos(0)
{
}

template<class T> CTOVRingBuffer<T>::CTOVRingBuffer(long lNumElements) : CTOVRingBuffer()
{
    SetCapacity(lNumElements);
}

template<class T> CTOVRingBuffer<T>::CTOVRingBuffer(const CTOVRingBuffer& oSource) : CTOVRingBuffer()
{
    *this = oSource;
}

template<class T> CTOVRingBuffer<T>::~CTOVRingBuffer()
{
    TOV_SAFE_DELETE_ARRAY(m_pBuffer);
}

template<class T> CTOVRingBuffer<T>& CTOVRingBuffer<T>::operator=(const CTOVRingBuffer& oSource)
{
    if (this == &oSource)
        return *this;

    SetCapacity(oSource.GetCapacity());
    CTOVRingBuffer::Clear(); // an overridden SetCapacity may have kept elements
    if (m_lCapacity == oSource.m_lCapacity)
    {
        std::copy(oSource.m_pBuffer, oSource.m_pBuffer + oSource.m_lCapacity, m_pBuffer);
        m_lReadPos = oSource.m_lReadPos;
        m_lWritePos = oSource.m_lWritePos;
        m_lCount = oSource.m_lCount;
    }
    else
    {
        const long lCount = std::min(oSource.m_lCount, m_lCapacity);
        for (long lIndex = 0; lIndex < lCount; ++lIndex)
            m_pBuffer[lIndex] = oSource.m_pBuffer[(oSource.m_lReadPos + lIndex) % oSource.m_lCapacity];
        m_lWritePos = lCount < m_lCapacity ? lCount : 0;
        m_lCount = lCount;
    }
    return *this;
}

template<class T> bool CTOVRingBuffer<T>::Write(const T& oElement)
{
    // The number of places is checked as well: a derived class may report a larger capacity.
    if (IsFull() || m_lCount == m_lCapacity)
        return false;

    m_pBuffer[m_lWritePos] = oElement;
    ++m_lCount;
    m_lWritePos = m_lWritePos + 1 < m_lCapacity ? m_lWritePos + 1 : 0;
    return true;
}

template<class T> bool CTOVRingBuffer<T>::Read(T& oElement)
{
    if (IsEmpty() || m_lCount == 0)
        return false;

    oElement = m_pBuffer[m_lReadPos];
    --m_lCount;
    m_lReadPos = m_lReadPos + 1 < m_lCapacity ? m_lReadPos + 1 : 0;
    return true;
}

template<class T> void CTOVRingBuffer<T>::Clear()
{
    m_lReadPos = 0;
    m_lWritePos = 0;
    m_lCount = 0;
}

template<class T> void CTOVRingBuffer<T>::SetCapacity(long lNumElements, bool bKeepData)
{
    TOV_ASSERT(lNumElements >= 0);
    TOV_ASSERT(bKeepData == false);

    // All places are initialised, since a copy reads all of them, used or not.
    T* const pNewBuffer = new T[static_cast<std::size_t>(lNumElements)]();
    TOV_SAFE_DELETE_ARRAY(m_pBuffer);
    m_lCapacity = lNumElements;
    m_pBuffer = pNewBuffer;
    m_lCount = 0;
    m_lWritePos = 0;
    m_lReadPos = 0;
}

template<class T> long CTOVRingBuffer<T>::GetCapacity() const
{
    return m_lCapacity;
}

template<class T> long CTOVRingBuffer<T>::GetCount() const
{
    return m_lCount;
}

template<class T> long CTOVRingBuffer<T>::GetSize() const
{
    return GetCount();
}

template<class T> bool CTOVRingBuffer<T>::IsEmpty() const
{
    return GetSize() == 0;
}

template<class T> bool CTOVRingBuffer<T>::IsFull() const
{
    return GetSize() == GetCapacity();
}
