#include <TOVContainers/TOVBitArray.h>

#include <TOVPlatform/Vector/TOVVectorBits.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace
{
constexpr int BITS_PER_BYTE = 8;

// Whole arrays are worked through in words. The pointers and the size are arguments, so that a byte that is written
// cannot be one of the array's own members, and compilers use vectors for these loops.
typedef std::size_t tWord;

tWord ReadWord(const tByte* pBytes)
{
    tWord nWord;
    std::memcpy(&nWord, pBytes, sizeof(nWord));
    return nWord;
}

void WriteWord(tByte* pBytes, tWord nWord)
{
    std::memcpy(pBytes, &nWord, sizeof(nWord));
}

// Replaces each byte of pTarget by fnJoin of it and the byte of pSource at the same place.
template<class TJoin> void JoinBytes(tByte* pTarget, const tByte* pSource, std::size_t nSize, TJoin fnJoin)
{
    const std::size_t nWords = nSize / sizeof(tWord);
    for (std::size_t nWord = 0; nWord < nWords; ++nWord)
    {
        const std::size_t nByte = nWord * sizeof(tWord);
        WriteWord(pTarget + nByte, fnJoin(ReadWord(pTarget + nByte), ReadWord(pSource + nByte)));
    }
    for (std::size_t nByte = nWords * sizeof(tWord); nByte < nSize; ++nByte)
        pTarget[nByte] = static_cast<tByte>(fnJoin(pTarget[nByte], pSource[nByte]));
}

void InvertBytes(tByte* pBytes, std::size_t nSize)
{
    // The rest is worked through by the compiler's vectors.
    std::size_t nByte = TOVPlatform::Vector::InvertBlocks(pBytes, nSize);
    for (; nByte < nSize; ++nByte)
        pBytes[nByte] = static_cast<tByte>(~pBytes[nByte]);
}

bool IsAnyByteSet(const tByte* pBytes, std::size_t nSize)
{
    // A block is joined without a branch, and is small enough that a bit in an early block is found soon.
    constexpr std::size_t BLOCK_SIZE = 512;
    for (; nSize >= BLOCK_SIZE; pBytes += BLOCK_SIZE, nSize -= BLOCK_SIZE)
    {
        tWord nJoined = 0;
        for (std::size_t nByte = 0; nByte < BLOCK_SIZE; nByte += sizeof(tWord))
            nJoined |= ReadWord(pBytes + nByte);
        if (nJoined != 0)
            return true;
    }
    return std::any_of(pBytes, pBytes + nSize, [](tByte nByte) { return nByte != 0; });
}
} // namespace

CTOVBitArray::~CTOVBitArray()
{
    delete[] m_pStream;
}

CTOVBitArray::CTOVBitArray() : m_pStream(nullptr), m_nSize(0), m_nNumBits(0)
{
}

CTOVBitArray::CTOVBitArray(int nNumBits) : CTOVBitArray()
{
    SetNumBits(nNumBits);
}

CTOVBitArray::CTOVBitArray(const CTOVBitArray& oSource) : CTOVBitArray()
{
    *this = oSource;
}

const CTOVBitArray& CTOVBitArray::operator=(const CTOVBitArray& oSource)
{
    if (this == &oSource)
        return *this;

    if (m_nSize < oSource.m_nSize)
        SetSize(oSource.m_nSize);
    std::copy_n(oSource.m_pStream, oSource.m_nSize, m_pStream);
    m_nSize = oSource.m_nSize;
    m_nNumBits = oSource.m_nNumBits;
    return *this;
}

bool CTOVBitArray::operator==(const CTOVBitArray& oOther) const
{
    return m_nSize == oOther.m_nSize && std::equal(m_pStream, m_pStream + m_nSize, oOther.m_pStream);
}

bool CTOVBitArray::operator!=(const CTOVBitArray& oOther) const
{
    return !(*this == oOther);
}

int CTOVBitArray::GetSize() const
{
    return m_nSize;
}

int CTOVBitArray::GetNumBits() const
{
    return m_nNumBits;
}

void CTOVBitArray::SetSize(int nSize)
{
    TOV_ASSERT(nSize > 0);
    tByte* const pNewStream = new (std::nothrow) tByte[static_cast<std::size_t>(nSize) + 1]();
    TOV_ASSERT(pNewStream != NULL);

    std::copy_n(m_pStream, std::min(m_nSize, nSize), pNewStream);
    delete[] m_pStream;
    m_pStream = pNewStream;
    m_nSize = nSize;
    // The number of bits wraps around if it is too large for an int.
    m_nNumBits = static_cast<int>(static_cast<unsigned int>(nSize) * BITS_PER_BYTE);
}

void CTOVBitArray::SetNumBits(int nNumBits)
{
    TOV_ASSERT(nNumBits > 0);
    SetSize(nNumBits / BITS_PER_BYTE + 1);
    m_nNumBits = nNumBits;
}

void CTOVBitArray::SetBitRange(int nFirst, int nLast, bool bValue)
{
    if (nLast < nFirst)
        return;

    // The last position may be the largest int, so that the loop must not count past it.
    for (int nPos = nFirst; nPos < nLast; ++nPos)
        SetBit(nPos, bValue);
    SetBit(nLast, bValue);
}

void CTOVBitArray::Clear()
{
    std::fill_n(m_pStream, m_nSize, static_cast<tByte>(0));
}

void CTOVBitArray::Complement()
{
    InvertBytes(m_pStream, static_cast<std::size_t>(m_nSize));
}

const CTOVBitArray& CTOVBitArray::operator~()
{
    Complement();
    return *this;
}

void CTOVBitArray::Complement(int nPos)
{
    SetBit(nPos, !GetBit(nPos));
}

void CTOVBitArray::And(const CTOVBitArray& oSrc)
{
    TOV_ASSERT(GetSize() == oSrc.GetSize());
    JoinBytes(m_pStream, oSrc.m_pStream, static_cast<std::size_t>(m_nSize),
              [](tWord nFirst, tWord nSecond) { return nFirst & nSecond; });
}

const CTOVBitArray& CTOVBitArray::operator&=(const CTOVBitArray& oSrc)
{
    And(oSrc);
    return *this;
}

void CTOVBitArray::Or(const CTOVBitArray& oSrc)
{
    TOV_ASSERT(GetSize() == oSrc.GetSize());
    JoinBytes(m_pStream, oSrc.m_pStream, static_cast<std::size_t>(m_nSize),
              [](tWord nFirst, tWord nSecond) { return nFirst | nSecond; });
}

const CTOVBitArray& CTOVBitArray::operator|=(const CTOVBitArray& oSrc)
{
    Or(oSrc);
    return *this;
}

bool CTOVBitArray::IsAnyBitSet() const
{
    return IsAnyByteSet(m_pStream, static_cast<std::size_t>(m_nSize));
}

const tByte* CTOVBitArray::GetBuffer() const
{
    return m_pStream;
}

tByte* CTOVBitArray::QueryBuffer(int nSize)
{
    if (m_nSize < nSize)
        SetSize(nSize);
    return m_pStream;
}

void CTOVBitArray::ReleaseBuffer()
{
}
