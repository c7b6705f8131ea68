#include "FileFormat.h"

#include <TOVString/TOVCrc.h>

#include <cstring>

std::vector<std::unique_ptr<IFileFormat>> MakeFormats()
{
    std::vector<std::unique_ptr<IFileFormat>> aFormats;
    for (const int nVersion : {3, 2, 1})
        aFormats.push_back(MakeCatalogFormat(nVersion, eCatalogPlain));
    aFormats.push_back(MakeCatalogFormat(3, eCatalogMixed));
    aFormats.push_back(MakeCatalogFormat(3, eCatalogFull));
    aFormats.push_back(MakeSectionFormat());
    aFormats.push_back(MakeBlindFormat());
    return aFormats;
}

std::string NumberBytes(std::uint32_t nNumber)
{
    return std::string(reinterpret_cast<const char*>(&nNumber), sizeof(nNumber));
}

std::uint32_t CheckValue(const std::string& sBytes)
{
    return ~CRC32Generate(sBytes.data(), sBytes.size(), 0xFFFFFFFF);
}

std::string CModelBytes::Take(std::size_t nSize)
{
    if (nSize > Rest())
        throw sEnd();
    m_nPosition += nSize;
    return m_sBytes.substr(m_nPosition - nSize, nSize);
}

std::int32_t CModelBytes::Number()
{
    std::int32_t nNumber;
    std::memcpy(&nNumber, Take(sizeof(nNumber)).data(), sizeof(nNumber));
    return nNumber;
}
