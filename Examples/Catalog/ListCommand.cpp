#include "Commands.h"

#include "CatalogFile.h"
#include "CatalogSystem.h"
#include "CheckList.h"
#include "Console.h"

#include <cstdio>

namespace
{
void PrintText(const CTOVStringA& oName, const sFileRecord& oRecord)
{
    CTOVStringA oLine;
    oLine.Format("%08x %14I64u  %s", oRecord.dwCrc, oRecord.ullSize, ~Printable(oName));
    if (oRecord.GetSha256() != nullptr)
        std::printf("%s  ", HexOf(*oRecord.GetSha256()).c_str());
    std::printf("%s\n", ~oLine);
}

void PrintJson(const CTOVStringA& oName, const sFileRecord& oRecord, bool bFirst)
{
    CTOVStringA oNumbers;
    oNumbers.Format("\"size\": %I64u, \"crc32\": \"%08x\"", oRecord.ullSize, oRecord.dwCrc);
    std::printf("%s\n    {%s, %s", bFirst ? "" : ",", JsonName("name", oName).c_str(), ~oNumbers);
    if (oRecord.GetSha256() != nullptr)
        std::printf(", \"sha256\": \"%s\"", HexOf(*oRecord.GetSha256()).c_str());
    std::printf("}");
}

void PrintNames(const char* szKey, const CNameList& aNames)
{
    std::printf("  \"%s\": ", szKey);
    PrintJsonNames(aNames);
    std::printf(",\n");
}

std::string LineFor(eListForm eForm, const CTOVStringA& oName, const sFileRecord& oRecord)
{
    return eForm == eListSfv ? SfvLine(oName, oRecord) : Sha256Line(oName, oRecord);
}

// Prints a catalogue, of which nothing is known before its first record.
class CListing
{
public:
    explicit CListing(eListForm eForm) : m_eForm(eForm) {}

    void Begin() const
    {
        if (m_eForm == eListJson)
            std::printf("{\n  \"files\": [");
        else if (m_eForm != eListText)
            KeepLineEnds(stdout);
    }

    void Add(const sCatalog& oCatalog, const sFileRecord& oRecord)
    {
        const CTOVStringA oName = FullName(oCatalog, oRecord);
        if (m_eForm == eListText)
            PrintText(oName, oRecord);
        else if (m_eForm == eListJson)
            PrintJson(oName, oRecord, m_lFiles == 0);
        else
            std::fputs(LineFor(m_eForm, oName, oRecord).c_str(), stdout);
        ++m_lFiles;
        m_ullBytes += oRecord.ullSize;
    }

    void End(const CTOVStringA& oName, const sCatalog& oCatalog) const
    {
        if (m_eForm == eListText)
            std::printf("%s\n", ~DescribeFiles(m_lFiles, m_ullBytes));
        if (m_eForm != eListJson)
            return;
        std::printf("%s],\n  %s,\n", m_lFiles > 0 ? "\n  " : "", JsonName("catalog", oName).c_str());
        PrintNames("directories", oCatalog.aDirectories);
        PrintNames("patterns", oCatalog.aPatterns);
        PrintNames("excludes", oCatalog.aExcludes);
        std::printf("  \"bytes\": %s\n}\n", std::to_string(m_ullBytes).c_str());
    }

private:
    const eListForm m_eForm;
    long m_lFiles = 0;
    unsigned long long m_ullBytes = 0;
};
} // namespace

int ListCatalog(const CTOVStringA& oName, eListForm eForm)
{
    // Half a list would look like a whole one to other programs, so that what it cannot hold is found first.
    if (eForm == eListSfv || eForm == eListSha256Sums)
        VisitCatalog(oName, [&](const sCatalog& oHead, const sFileRecord& oRecord) {
            LineFor(eForm, FullName(oHead, oRecord), oRecord);
        });

    CListing oListing(eForm);
    oListing.Begin();
    const sCatalog oCatalog =
        VisitCatalog(oName, [&](const sCatalog& oHead, const sFileRecord& oRecord) { oListing.Add(oHead, oRecord); });
    oListing.End(oName, oCatalog);
    return eExitSame;
}
