// Resizable array of bits: CTOVBitArray.
#pragma once

#include <Debug/TOVBase.h>

// Owns a block of bytes. Bit n lies in byte n / 8 under the mask 1 << (7 - n % 8), so that bytes read from left to
// right:
//
//   bit     0 1 2 3 4 5 6 7   8 9 ...
//         +-----------------+-----
//         |     byte 0      |           bit 0 is its highest
//         +-----------------+-----
//
// Bytes and bits are counted apart: bits behind the last one are spare, and still take part in comparisons, Complement
// and IsAnyBitSet. No lock: one thread at a time.
class TOV_EXPORT CTOVBitArray
{
public:
    // Virtual operation.
    virtual ~CTOVBitArray();

    // No bytes; or as SetNumBits.
    CTOVBitArray();
    CTOVBitArray(int nNumBits);
    CTOVBitArray(const CTOVBitArray& oSource);

    // Takes over bytes and sizes. The block never gets smaller: an empty source leaves it behind a size of 0.
    const CTOVBitArray& operator=(const CTOVBitArray& oSource);

    // By their bytes. Settled: spare bits count, and the numbers of bits do not.
    bool operator==(const CTOVBitArray& oOther) const;
    bool operator!=(const CTOVBitArray& oOther) const;

    // In bytes, and in bits.
    int GetSize() const;
    int GetNumBits() const;

    // Both keep the first bytes and fill up with zeros. SetSize gives nSize * 8 bits. Settled: SetNumBits gives
    // nNumBits / 8 + 1 bytes, one more than a multiple of 8 needs. They throw unless "nSize > 0", "nNumBits > 0", and
    // "pNewStream != NULL" when there is no memory.
    void SetSize(int nSize);
    void SetNumBits(int nNumBits);

    // Both throw unless "(0 <= nPos) && (nPos <= m_nNumBits)". Settled: the position behind the last bit is allowed. An
    // array without bytes, whose position 0 passes, throws unless "m_pStream != NULL".
    bool GetBit(int nPos) const;
    bool operator[](int nPos) const;

    // Throws unless "(0 <= nPos)", and then as GetBit. Settled: a bit changed behind the last one gets new bytes, and
    // the number of bits stays.
    void SetBit(int nPos, bool bValue = true);
    // Both ends included; nothing if nLast < nFirst.
    void SetBitRange(int nFirst, int nLast, bool bValue);

    // All bits to 0; the sizes stay.
    void Clear();

    // Inverts all bits, spare ones included. Settled: ~ changes the array itself.
    void Complement();
    const CTOVBitArray& operator~();
    // Inverts one bit; throws as SetBit and GetBit.
    void Complement(int nPos);

    // Byte by byte. Throw unless "GetSize() == oSrc.GetSize()".
    void And(const CTOVBitArray& oSrc);
    const CTOVBitArray& operator&=(const CTOVBitArray& oSrc);
    void Or(const CTOVBitArray& oSrc);
    const CTOVBitArray& operator|=(const CTOVBitArray& oSrc);

    bool IsAnyBitSet() const;

    // The bytes; NULL if there were never any.
    const tByte* GetBuffer() const;
    // The bytes for writing, at least nSize of them: as SetSize, if there are fewer. ReleaseBuffer ends that, and does
    // nothing.
    tByte* QueryBuffer(int nSize);
    void ReleaseBuffer();

private:
    tByte* m_pStream; // m_nSize bytes and one hidden behind them, since GetBit reaches there
    int m_nSize;
    int m_nNumBits;
};
