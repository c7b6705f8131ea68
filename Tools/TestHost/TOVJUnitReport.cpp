#include <TestHost/TOVJUnitReport.h>

#include <TestHost/TOVTestText.h>

namespace TOVTestHost
{
namespace
{
std::string Attribute(const char* szName, const std::string& sValue)
{
    return std::string(" ") + szName + "=\"" + Markup(sValue) + "\"";
}

std::string Attribute(const char* szName, long lValue)
{
    return Attribute(szName, std::to_string(lValue));
}

std::string Counts(const sTestCounts& oCounts, double dSeconds)
{
    return Attribute("tests", oCounts.lCases) + Attribute("failures", oCounts.lFailed) +
           Attribute("errors", oCounts.lEnded) + Attribute("time", SecondsText(dSeconds));
}

// Returns the time in UTC, as the format requires it for a time without a zone.
std::string Timestamp(std::time_t nTime)
{
    char szText[32] = "";
    // NOLINTNEXTLINE(concurrency-mt-unsafe): one thread writes the reports.
    if (const std::tm* pTime = std::gmtime(&nTime))
        std::strftime(szText, sizeof(szText), "%Y-%m-%dT%H:%M:%S", pTime);
    return szText;
}

// Returns all notes of a kind: a line for each, followed by its values.
std::string LinesOf(const sCaseRecord& oCase, eTestNote eKind)
{
    std::string sLines;
    for (const sTestNote& oNote : oCase.aNotes)
        if (oNote.eKind == eKind)
            for (const std::string& sLine : Describe(oNote))
                sLines += Markup(sLine) + "\n";
    return sLines;
}

const sTestNote& FirstOf(const sCaseRecord& oCase, eTestNote eKind)
{
    for (const sTestNote& oNote : oCase.aNotes)
        if (oNote.eKind == eKind)
            return oNote;
    static const sTestNote s_oNone = {};
    return s_oNone;
}

// Returns one element, however many checks failed and even if the case also ended, since programs that read the format
// use only the first one, and strict ones refuse another.
std::string Verdict(const sCaseRecord& oCase)
{
    const bool bEnded = oCase.eOutcome == eOutcomeEnded;
    if (!bEnded && oCase.eOutcome != eOutcomeFailed)
        return "";
    const char* szElement = bEnded ? "error" : "failure";
    const sTestNote& oFirst = FirstOf(oCase, bEnded ? eNoteEnd : eNoteFailure);
    return std::string("      <") + szElement + Attribute("message", oFirst.sMessage) +
           Attribute("type", oFirst.sType) + ">" + LinesOf(oCase, eNoteFailure) + LinesOf(oCase, eNoteEnd) + "</" +
           szElement + ">\n";
}

std::string Element(const char* szElement, const std::string& sMarkup)
{
    return sMarkup.empty() ? "" : std::string("      <") + szElement + ">" + sMarkup + "</" + szElement + ">\n";
}

std::string Content(const sCaseRecord& oCase)
{
    if (oCase.eOutcome == eOutcomeNotRun)
        return "      <skipped message=\"the run ended early\"/>\n";
    return Verdict(oCase) + Element("system-out", LinesOf(oCase, eNoteWarning) + MarkupOfLines(oCase.sOutput)) +
           Element("system-err", MarkupOfLines(oCase.sErrors));
}

std::string Properties(const sTestPlan& oPlan)
{
    return oPlan.llSeed < 0 ? ""
                            : "    <properties>\n      <property name=\"seed\" value=\"" +
                                  std::to_string(oPlan.llSeed) + "\"/>\n    </properties>\n";
}

std::string TestCase(const sSuiteRecord& oSuite, const sCaseRecord& oCase)
{
    const std::string sBegin = "    <testcase" + Attribute("name", oCase.oPlace.sDescription) +
                               Attribute("classname", oSuite.oPlace.sDescription) +
                               Attribute("time", SecondsText(oCase.dSeconds));
    const std::string sContent = Content(oCase);
    return sBegin + (sContent.empty() ? "/>\n" : ">\n" + sContent + "    </testcase>\n");
}
} // namespace

std::string CTOVJUnitReport::Compose(const sTestRecord& oRecord) const
{
    std::string sXml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" +
                       Counts(CountCases(oRecord), oRecord.dSeconds) + ">\n";
    long lId = 0;
    for (const sSuiteRecord& oSuite : oRecord.aSuites)
    {
        sXml += "  <testsuite" + Attribute("name", oSuite.oPlace.sDescription) + Attribute("id", lId++) +
                Attribute("file", oSuite.oPlace.sFile) + Attribute("timestamp", Timestamp(oSuite.nStart)) +
                Counts(CountCases(oSuite), oSuite.dSeconds) + Attribute("skipped", CountCases(oSuite).lNotRun) + ">\n" +
                Properties(oRecord.oPlan);
        for (const sCaseRecord& oCase : oSuite.aCases)
            sXml += TestCase(oSuite, oCase);
        sXml += "  </testsuite>\n";
    }
    return sXml + "</testsuites>\n";
}
} // namespace TOVTestHost
