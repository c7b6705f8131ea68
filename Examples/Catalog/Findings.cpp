#include "Findings.h"

#include "Console.h"

#include <cstdio>

namespace
{
constexpr const char* KIND_NAMES[FINDING_KINDS] = {"changed", "moved", "missing", "new", "unreadable"};
} // namespace

void CFindings::Add(eFinding eKind, const CTOVStringA& oName, const CTOVStringA& oFrom)
{
    m_aFindings.push_back({eKind, oName, oFrom});
    ++m_alCounts[eKind];
}

void CFindings::Report(const sVerifyOptions& oOptions, const char* szDone, long lFiles, unsigned long long ullBytes,
                       std::chrono::steady_clock::duration oTime) const
{
    if (oOptions.bJson)
    {
        PrintJson(oOptions.oName, lFiles, ullBytes, oTime);
        return;
    }
    PrintLines();
    if (!oOptions.bQuiet)
    {
        std::printf("%s %s: ", ~DescribeWork(lFiles, ullBytes, oTime), szDone);
        PrintSum();
    }
}

void CFindings::PrintLines() const
{
    for (const sFinding& oFinding : m_aFindings)
    {
        if (oFinding.eKind == eFindingMoved)
            std::printf("%-10s %s -> ", KIND_NAMES[oFinding.eKind], ~Printable(oFinding.oFrom));
        else
            std::printf("%-10s ", KIND_NAMES[oFinding.eKind]);
        std::printf("%s\n", ~Printable(oFinding.oName));
    }
}

// Prints a line such as "2 changed, 0 missing, 1 new, 0 unreadable".
void CFindings::PrintSum() const
{
    if (!Any())
    {
        std::printf("all unchanged\n");
        return;
    }
    // Moved files are rare.
    bool bFirst = true;
    for (const eFinding eKind : {eFindingChanged, eFindingMoved, eFindingMissing, eFindingNew, eFindingUnreadable})
    {
        if (eKind == eFindingMoved && m_alCounts[eKind] == 0)
            continue;
        std::printf("%s%ld %s", bFirst ? "" : ", ", m_alCounts[eKind], KIND_NAMES[eKind]);
        bFirst = false;
    }
    std::printf("\n");
}

void CFindings::PrintJson(const CTOVStringA& oCatalog, long lFiles, unsigned long long ullBytes,
                          std::chrono::steady_clock::duration oTime) const
{
    std::printf("{\n  %s,\n  \"findings\": [", JsonName("catalog", oCatalog).c_str());
    const char* szBefore = "\n";
    for (const sFinding& oFinding : m_aFindings)
    {
        std::printf("%s    {\"kind\": \"%s\", %s", szBefore, KIND_NAMES[oFinding.eKind],
                    JsonName("name", oFinding.oName).c_str());
        if (oFinding.eKind == eFindingMoved)
            std::printf(", %s", JsonName("from", oFinding.oFrom).c_str());
        std::printf("}");
        szBefore = ",\n";
    }
    std::printf("%s],\n", Any() ? "\n  " : "");
    for (int nKind = 0; nKind < FINDING_KINDS; ++nKind)
        std::printf("  \"%s\": %ld,\n", KIND_NAMES[nKind], m_alCounts[nKind]);
    std::printf("  \"files\": %ld,\n  \"bytes\": %s,\n  \"seconds\": %.3f\n}\n", lFiles,
                std::to_string(ullBytes).c_str(), std::chrono::duration<double>(oTime).count());
}
