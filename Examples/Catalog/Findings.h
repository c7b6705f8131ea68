// Declares CFindings, the differences that a command has found, and how it reports them.
#pragma once

#include "Commands.h"

#include <chrono>
#include <vector>

enum eFinding
{
    eFindingChanged,
    eFindingMoved,
    eFindingMissing,
    eFindingNew,
    eFindingUnreadable,
    FINDING_KINDS
};

class CFindings
{
public:
    // oFrom is the former name of a moved file.
    void Add(eFinding eKind, const CTOVStringA& oName, const CTOVStringA& oFrom = CTOVStringA());

    bool Any() const { return !m_aFindings.empty(); }

    // Prints them in the order in which they were added, in the form that the options ask for, with the files that were
    // compared and the time that it took. szDone says what was done with them.
    void Report(const sVerifyOptions& oOptions, const char* szDone, long lFiles, unsigned long long ullBytes,
                std::chrono::steady_clock::duration oTime) const;

private:
    void PrintLines() const;
    void PrintSum() const;
    void PrintJson(const CTOVStringA& oCatalog, long lFiles, unsigned long long ullBytes,
                   std::chrono::steady_clock::duration oTime) const;

    struct sFinding
    {
        eFinding eKind;
        CTOVStringA oName;
        CTOVStringA oFrom;
    };

    std::vector<sFinding> m_aFindings;
    long m_alCounts[FINDING_KINDS] = {};
};
