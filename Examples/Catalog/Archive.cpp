#include "Archive.h"

#include "Catalog.h"

#include <TOVStream/TOVStream.h>
#include <TOVString/TOVCrc.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace
{
constexpr char TRUNCATED[] = "is truncated";
constexpr char DAMAGED[] = "is damaged";

constexpr std::size_t BUFFER_SIZE = std::size_t(64) * 1024;
} // namespace

CArchive::CArchive(ITOVStream& oStream) : CArchive(oStream, 0)
{
}

CArchive::CArchive(ITOVStream& oStream, unsigned long long ullSize)
    : m_oStream(oStream), m_bStoring(oStream.IsStoring()), m_ullInStream(ullSize), m_aBuffer(BUFFER_SIZE)
{
}

int CArchive::Begin(int nNewest, int nWritten)
{
    int nFound = nWritten;
    Number(nFound);
    if (nFound > nNewest)
        throw CCatalogError("was written by a newer version of this program");
    if (nFound < 1)
        throw CCatalogError(DAMAGED);
    return nFound;
}

void CArchive::Bytes(void* pBytes, int nSize, const char* szWhenShort)
{
    Require(static_cast<unsigned long long>(nSize), szWhenShort);
    char* pNext = static_cast<char*>(pBytes);
    for (std::size_t nLeft = static_cast<std::size_t>(nSize); nLeft > 0;)
    {
        if (m_nUsed == (m_bStoring ? m_aBuffer.size() : m_nFilled))
            m_bStoring ? Empty() : Fill();
        const std::size_t nPart = std::min(nLeft, (m_bStoring ? m_aBuffer.size() : m_nFilled) - m_nUsed);
        char* const pPlace = m_aBuffer.data() + m_nUsed;
        std::memcpy(m_bStoring ? pPlace : pNext, m_bStoring ? pNext : pPlace, nPart);
        m_nUsed += nPart;
        pNext += nPart;
        nLeft -= nPart;
    }
}

void CArchive::Number(int& nValue)
{
    Bytes(&nValue, sizeof(nValue), TRUNCATED);
}

void CArchive::Word(tDword& dwValue)
{
    int nValue;
    std::memcpy(&nValue, &dwValue, sizeof(nValue));
    Number(nValue);
    std::memcpy(&dwValue, &nValue, sizeof(nValue));
}

void CArchive::Count(int& nCount, int nSmallest)
{
    Number(nCount);
    if (m_bStoring)
        return;
    if (nCount < 0)
        throw CCatalogError(DAMAGED);
    Require(static_cast<unsigned long long>(nSmallest) * static_cast<unsigned long long>(nCount), TRUNCATED);
}

void CArchive::Text(CTOVStringA& oText)
{
    int nLength = static_cast<int>(oText.GetLength());
    Number(nLength);
    if (m_bStoring)
    {
        Bytes(oText.GetString(), nLength, TRUNCATED);
        return;
    }

    if (nLength <= 0 || nLength > LONGEST_NAME)
        throw CCatalogError("is damaged: it holds a name that cannot be");
    char szText[LONGEST_NAME];
    Bytes(szText, nLength, TRUNCATED);
    if (std::memchr(szText, '\0', static_cast<std::size_t>(nLength)) != nullptr)
        throw CCatalogError(DAMAGED);
    oText.Empty();
    oText.Copy(szText, nLength);
}

void CArchive::Finish()
{
    if (m_bStoring)
        Empty();
    else if (m_nUsed < m_nFilled || m_ullInStream > 0)
        throw CCatalogError("is damaged: it goes on behind its end");
}

tDword CArchive::GetCrc()
{
    Sum();
    return ~m_dwCrc;
}

tDword CArchive::GetCrcWithZero()
{
    Sum();
    const char cZero = 0;
    return ~static_cast<tDword>(CRC32Generate(&cZero, 1, m_dwCrc));
}

// Reads the next block, after all bytes of the buffer have been passed.
void CArchive::Fill()
{
    Sum();
    m_nUsed = m_nSummed = 0;
    m_nFilled = static_cast<std::size_t>(std::min<unsigned long long>(m_aBuffer.size(), m_ullInStream));
    errno = 0;
    m_oStream.Read(m_aBuffer.data(), m_nFilled);
    const int nError = errno;
    m_ullInStream -= m_nFilled;
    m_ullRead += m_nFilled;

    // A stream does not report a failure, but its position does not move past bytes that it could not read.
    if (m_oStream.Tell() != m_ullRead)
        throw CCatalogError("cannot be read" + (nError != 0 ? ": " + std::generic_category().message(nError) : ""));
}

// Writes the bytes in the buffer.
void CArchive::Empty()
{
    Sum();
    if (m_nUsed > 0)
        m_oStream.Write(m_aBuffer.data(), m_nUsed);
    m_nUsed = m_nSummed = 0;
}

// Adds the bytes that have been passed to the CRC-32.
void CArchive::Sum()
{
    m_dwCrc = static_cast<tDword>(CRC32Generate(m_aBuffer.data() + m_nSummed, m_nUsed - m_nSummed, m_dwCrc));
    m_nSummed = m_nUsed;
}

void CArchive::Require(unsigned long long ullSize, const char* szWhenShort) const
{
    if (!m_bStoring && ullSize > m_nFilled - m_nUsed + m_ullInStream)
        throw CCatalogError(szWhenShort);
}
