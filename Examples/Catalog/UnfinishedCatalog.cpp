#include "UnfinishedCatalog.h"

#include "Catalog.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace
{
constexpr char NAME_BEGIN[] = "tovcatalog-";
constexpr char NAME_END[] = ".new";

// This is more than the number of runs at a time.
constexpr int MAX_TRIES = 1000;

const char* FindFileName(const char* szName)
{
    const char* szFileName = szName;
    for (const char* p = szName; *p != '\0'; ++p)
    {
        if (*p == '/' || *p == '\\')
            szFileName = p + 1;
    }
    return szFileName;
}

CTOVStringA NameBeside(const CTOVStringA& oCatalog, int nTry)
{
    const std::string sFolder(~oCatalog, FindFileName(~oCatalog));
    return CTOVStringA((sFolder + NAME_BEGIN + std::to_string(nTry) + NAME_END).c_str());
}
} // namespace

CUnfinishedCatalog::CUnfinishedCatalog(const CTOVStringA& oCatalog)
{
    for (int nTry = 1; nTry <= MAX_TRIES; ++nTry)
    {
        m_oName = NameBeside(oCatalog, nTry);
        if (IsUnfinishedCatalog(m_oName))
            RemoveAbandonedFile(m_oName);
        m_pFile.reset(new CNewFile(m_oName, oCatalog));
        if (m_pFile->IsOpen())
            return;
    }
    throw CCatalogError("cannot be written");
}

void CUnfinishedCatalog::PutInPlace()
{
    if (!m_pFile->PutInPlace())
        throw CCatalogError("cannot be written");
}

bool HasNameOfUnfinishedCatalog(const char* szName)
{
    const std::size_t nBegin = std::strlen(NAME_BEGIN);
    const char* szFileName = FindFileName(szName);
    if (std::strncmp(szFileName, NAME_BEGIN, nBegin) != 0)
        return false;

    const std::string sName = szFileName;
    const std::size_t nEnd = sName.size() - std::min(sName.size(), std::strlen(NAME_END));
    return nEnd > nBegin && sName.compare(nEnd, sName.npos, NAME_END) == 0 &&
           sName.find_first_not_of("0123456789", nBegin) == nEnd;
}

bool IsUnfinishedCatalog(const CTOVStringA& oName)
{
    if (!HasNameOfUnfinishedCatalog(~oName))
        return false;
    CInputFile oFile(~oName);
    char szBegin[sizeof(CATALOG_MAGIC)];
    const unsigned long ulRead = oFile.IsOpen() ? oFile.Read(szBegin, sizeof(szBegin)) : 0;
    return oFile.IsOpen() && !oFile.HasFailed() && std::memcmp(szBegin, CATALOG_MAGIC, ulRead) == 0;
}
