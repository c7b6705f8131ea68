// Declares CTOVBitArray, a resizable array of bits.
#pragma once

#include <Debug/TOVBase.h>

// Owns a block of bytes. Bit n is in byte n / 8, under the mask 1 << (7 - n % 8), so that the bits of a byte read from
// left to right:
//
//   bit     0 1 2 3 4 5 6 7   8 9 ...
//         +-----------------+-----
//         |     byte 0      |           bit 0 is its highest
//         +-----------------+-----
//
// The numbers of bytes and of bits are kept separately: bits after the last one are spare, and still take part in
// comparisons, Complement and IsAnyBitSet. The array has no lock: use it from one thread at a time.
class TOV_EXPORT CTOVBitArray
{
public:
    // Virtual operation.
    virtual ~CTOVBitArray();

    // The default constructor makes an array without bytes; the other one calls SetNumBits.
    CTOVBitArray();
    CTOVBitArray(int nNumBits);
    CTOVBitArray(const CTOVBitArray& oSource);

    // Copies the bytes and both sizes. The block never becomes smaller: after assigning an empty array the size is 0
    // and the block is kept.
    const CTOVBitArray& operator=(const CTOVBitArray& oSource);

    // These compare the bytes. Settled: spare bits are compared, and the numbers of bits are not.
    bool operator==(const CTOVBitArray& oOther) const;
    bool operator!=(const CTOVBitArray& oOther) const;

    // These return the number of bytes, and of bits.
    int GetSize() const;
    int GetNumBits() const;

    // Both keep the first bytes and set new ones to 0. SetSize gives nSize * 8 bits. Settled: SetNumBits gives
    // nNumBits / 8 + 1 bytes, one more than a multiple of 8 needs. They throw unless "nSize > 0", "nNumBits > 0", and
    // "pNewStream != NULL" when there is no memory.
    void SetSize(int nSize);
    void SetNumBits(int nNumBits);

    // Both throw unless "(0 <= nPos) && (nPos <= m_nNumBits)". Settled: the position after the last bit is allowed. In
    // an array without bytes, position 0 passes that check; they then throw unless "m_pStream != NULL".
    bool GetBit(int nPos) const;
    bool operator[](int nPos) const;

    // Throws unless "(0 <= nPos)", and then as GetBit does. Settled: changing the bit after the last one allocates new
    // bytes and leaves the number of bits unchanged.
    void SetBit(int nPos, bool bValue = true);
    // Sets the bits nFirst to nLast, both included. Does nothing if nLast < nFirst.
    void SetBitRange(int nFirst, int nLast, bool bValue);

    // Sets all bits to 0; the sizes stay.
    void Clear();

    // Inverts all bits, spare ones included. Settled: ~ changes the array itself.
    void Complement();
    const CTOVBitArray& operator~();
    // Inverts one bit. Throws as SetBit and GetBit do.
    void Complement(int nPos);

    // These combine the bytes of both arrays. They throw unless "GetSize() == oSrc.GetSize()".
    void And(const CTOVBitArray& oSrc);
    const CTOVBitArray& operator&=(const CTOVBitArray& oSrc);
    void Or(const CTOVBitArray& oSrc);
    const CTOVBitArray& operator|=(const CTOVBitArray& oSrc);

    // Returns whether any bit of the bytes is set.
    bool IsAnyBitSet() const;

    // Returns the bytes, or null if the array has never had any.
    const tByte* GetBuffer() const;
    // Returns the bytes for writing. Calls SetSize first if there are fewer than nSize. Call ReleaseBuffer after
    // writing; it does nothing.
    tByte* QueryBuffer(int nSize);
    void ReleaseBuffer();

private:
    tByte* m_pStream; // m_nSize bytes and a hidden one after them, which GetBit can reach
    int m_nSize;
    int m_nNumBits;
};

TOV_EXPORT_INLINE bool CTOVBitArray::GetBit(int nPos) const
{
    // An array that has bits has bytes, so that most positions need no more than this.
    if ((nPos < 0) || (nPos >= m_nNumBits))
    {
        TOV_ASSERT((0 <= nPos) && (nPos <= m_nNumBits));
        TOV_ASSERT(m_pStream != NULL);
    }
    const unsigned int nBit = static_cast<unsigned int>(nPos);
    return (m_pStream[nBit / 8] & (0x80u >> nBit % 8)) != 0;
}

TOV_EXPORT_INLINE bool CTOVBitArray::operator[](int nPos) const
{
    return GetBit(nPos);
}

TOV_EXPORT_INLINE void CTOVBitArray::SetBit(int nPos, bool bValue)
{
    TOV_ASSERT((0 <= nPos));
    if (nPos >= m_nNumBits)
    {
        if (GetBit(nPos) == bValue)
            return;
        SetNumBits(nPos);
    }

    // Whether the bit changes is not asked here, since that is hard to predict.
    const unsigned int nBit = static_cast<unsigned int>(nPos);
    const unsigned int nMask = 0x80u >> nBit % 8;
    const unsigned int nByte = m_pStream[nBit / 8];
    m_pStream[nBit / 8] = static_cast<tByte>(bValue ? nByte | nMask : nByte & ~nMask);
}
