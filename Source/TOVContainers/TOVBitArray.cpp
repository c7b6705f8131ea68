#include <TOVContainers/TOVBitArray.h>

#include <algorithm>
#include <new>

namespace
{
constexpr int BITS_PER_BYTE = 8;

tByte MaskOf(int nPos)
{
    return static_cast<tByte>(1 << (BITS_PER_BYTE - 1 - nPos % BITS_PER_BYTE));
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

bool CTOVBitArray::GetBit(int nPos) const
{
    TOV_ASSERT((0 <= nPos) && (nPos <= m_nNumBits));
    TOV_ASSERT(m_pStream != NULL);
    return (m_pStream[nPos / BITS_PER_BYTE] & MaskOf(nPos)) != 0;
}

bool CTOVBitArray::operator[](int nPos) const
{
    return GetBit(nPos);
}

void CTOVBitArray::SetBit(int nPos, bool bValue)
{
    TOV_ASSERT((0 <= nPos));
    if (GetBit(nPos) == bValue)
        return;

    if (nPos >= m_nNumBits)
        SetNumBits(nPos);
    tByte& nByte = m_pStream[nPos / BITS_PER_BYTE];
    nByte = static_cast<tByte>(bValue ? nByte | MaskOf(nPos) : nByte & ~MaskOf(nPos));
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
    for (int nByte = 0; nByte < m_nSize; ++nByte)
        m_pStream[nByte] = static_cast<tByte>(~m_pStream[nByte]);
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
    for (int nByte = 0; nByte < m_nSize; ++nByte)
        m_pStream[nByte] &= oSrc.m_pStream[nByte];
}

const CTOVBitArray& CTOVBitArray::operator&=(const CTOVBitArray& oSrc)
{
    And(oSrc);
    return *this;
}

void CTOVBitArray::Or(const CTOVBitArray& oSrc)
{
    TOV_ASSERT(GetSize() == oSrc.GetSize());
    for (int nByte = 0; nByte < m_nSize; ++nByte)
        m_pStream[nByte] |= oSrc.m_pStream[nByte];
}

const CTOVBitArray& CTOVBitArray::operator|=(const CTOVBitArray& oSrc)
{
    Or(oSrc);
    return *this;
}

bool CTOVBitArray::IsAnyBitSet() const
{
    return std::any_of(m_pStream, m_pStream + m_nSize, [](tByte nByte) { return nByte != 0; });
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
