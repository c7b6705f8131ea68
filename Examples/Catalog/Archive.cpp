#include "Archive.h"

#include "Catalog.h"

#include <TOVString/TOVCrc.h>

#include <cstring>

namespace
{
constexpr char TRUNCATED[] = "is truncated";
constexpr char DAMAGED[] = "is damaged";

typedef CTOVCheckedStream::CheckedStreamException tFailure;

// Says in the catalogue's words what is wrong with its file.
[[noreturn]] void Throw(const tFailure& oFailure, const char* szWhenShort)
{
    switch (oFailure.GetCode())
    {
    case CTOVCheckedStream::eFailureTooShort:
        throw CCatalogError(szWhenShort);
    case CTOVCheckedStream::eFailureTooLong:
        throw CCatalogError("is damaged: it goes on behind its end");
    case CTOVCheckedStream::eFailureUnreadable:
        throw CCatalogError(oFailure.GetProblem());
    default:
        throw CCatalogError(DAMAGED);
    }
}

template<class TCall> void InOwnWords(const char* szWhenShort, const TCall& fnCall)
{
    try
    {
        fnCall();
    }
    catch (const tFailure& oFailure)
    {
        Throw(oFailure, szWhenShort);
    }
}
} // namespace

CArchive::CArchive(ITOVStream& oStream) : m_oStream(oStream), m_bStoring(true)
{
}

CArchive::CArchive(ITOVStream& oStream, unsigned long long ullSize) : m_oStream(oStream, ullSize), m_bStoring(false)
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
    const unsigned long long ullSize = static_cast<unsigned long long>(nSize);
    if (m_bStoring)
        m_oStream.Write(pBytes, ullSize);
    else
        InOwnWords(szWhenShort, [&] { m_oStream.Read(pBytes, ullSize); });
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
    if (m_bStoring)
        Number(nCount);
    else
        InOwnWords(TRUNCATED, [&] { nCount = m_oStream.ReadCount(static_cast<unsigned long long>(nSmallest)); });
}

const char* CArchive::Text(const char* szText)
{
    int nLength = m_bStoring ? static_cast<int>(std::strlen(szText)) : 0;
    Number(nLength);
    if (m_bStoring)
    {
        m_oStream.Write(szText, static_cast<unsigned long long>(nLength));
        return szText;
    }

    if (nLength <= 0 || nLength > LONGEST_NAME)
        throw CCatalogError("is damaged: it holds a name that cannot be");
    m_sText.resize(static_cast<std::size_t>(nLength));
    Bytes(m_sText.data(), nLength, TRUNCATED);
    if (m_sText.find('\0') != m_sText.npos)
        throw CCatalogError(DAMAGED);
    return m_sText.c_str();
}

void CArchive::Finish()
{
    InOwnWords(TRUNCATED, [&] { m_oStream.Finish(); });
}

tDword CArchive::GetCrc()
{
    return m_oStream.GetCrc();
}

tDword CArchive::GetCrcWithZero()
{
    const char cZero = 0;
    return ~static_cast<tDword>(CRC32Generate(&cZero, 1, ~m_oStream.GetCrc()));
}
