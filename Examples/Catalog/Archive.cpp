#include "Archive.h"

#include "Catalog.h"

#include <TOVStream/TOVStream.h>
#include <TOVString/TOVCrc.h>

#include <cstring>

namespace
{
constexpr char TRUNCATED[] = "is truncated";
constexpr char DAMAGED[] = "is damaged";
} // namespace

CArchive::CArchive(ITOVStream& oStream) : CArchive(oStream, 0)
{
}

CArchive::CArchive(ITOVStream& oStream, unsigned long long ullSize)
    : m_oStream(oStream), m_ullLeft(ullSize), m_dwCrc(0xFFFFFFFF)
{
}

int CArchive::Begin(int nVersion)
{
    if (m_oStream.IsStoring())
    {
        m_oStream.SerializeBegin(nVersion);
        Pass(&nVersion, sizeof(nVersion));
        return nVersion;
    }

    Require(sizeof(nVersion), TRUNCATED);
    m_oStream.SerializeBegin(-1);
    const int nFound = m_oStream.GetVersion();
    Pass(&nFound, sizeof(nFound));
    if (nFound > nVersion)
        throw CCatalogError("was written by a newer version of this program");
    if (nFound < 1)
        throw CCatalogError(DAMAGED);
    return nFound;
}

void CArchive::End()
{
    m_oStream.SerializeEnd();
}

void CArchive::Bytes(void* pBytes, int nSize, const char* szWhenShort)
{
    if (m_oStream.IsStoring())
    {
        m_oStream.Write(pBytes, static_cast<unsigned long long>(nSize));
    }
    else
    {
        Require(static_cast<unsigned long long>(nSize), szWhenShort);
        m_oStream.Read(pBytes, static_cast<unsigned long long>(nSize));
    }
    Pass(pBytes, nSize);
}

void CArchive::Number(int& nValue)
{
    if (m_oStream.IsStoring())
    {
        m_oStream << nValue;
    }
    else
    {
        Require(sizeof(nValue), TRUNCATED);
        m_oStream >> nValue;
    }
    Pass(&nValue, sizeof(nValue));
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
    if (m_oStream.IsStoring())
        return;
    if (nCount < 0)
        throw CCatalogError(DAMAGED);
    Require(static_cast<unsigned long long>(nSmallest) * static_cast<unsigned long long>(nCount), TRUNCATED);
}

void CArchive::Text(CTOVStringA& oText)
{
    int nLength = static_cast<int>(oText.GetLength());
    Number(nLength);
    if (m_oStream.IsStoring())
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

void CArchive::ExpectEnd() const
{
    if (!m_oStream.IsStoring() && m_ullLeft > 0)
        throw CCatalogError("is damaged: it goes on behind its end");
}

tDword CArchive::GetCrc() const
{
    return ~m_dwCrc;
}

tDword CArchive::GetCrcWithZero() const
{
    const char cZero = 0;
    return ~static_cast<tDword>(CRC32Generate(&cZero, 1, m_dwCrc));
}

void CArchive::Pass(const void* pBytes, int nSize)
{
    m_dwCrc = static_cast<tDword>(CRC32Generate(pBytes, static_cast<unsigned long long>(nSize), m_dwCrc));
    if (!m_oStream.IsStoring())
        m_ullLeft -= static_cast<unsigned long long>(nSize);
}

void CArchive::Require(unsigned long long ullSize, const char* szWhenShort) const
{
    if (ullSize > m_ullLeft)
        throw CCatalogError(szWhenShort);
}
