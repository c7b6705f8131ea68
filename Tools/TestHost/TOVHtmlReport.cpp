#include <TestHost/TOVHtmlReport.h>

#include <TestHost/TOVTestText.h>

namespace TOVTestHost
{
namespace
{
constexpr char HEAD[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="UTF-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Test report</title>
<style>
:root { color-scheme: light dark; --good: #2e8540; --bad: #c0392b; --rest: #8a8f98; --line: #8884; }
body { font: 15px/1.5 system-ui, sans-serif; max-width: 60rem; margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.5rem; margin: 0; }
.bar { display: flex; height: .6rem; border-radius: .3rem; overflow: hidden; margin: 1rem 0; background: var(--line); }
.bar i { display: block; }
i.passed { background: var(--good); } i.failed { background: var(--bad); } i.notrun { background: var(--rest); }
details { border-top: 1px solid var(--line); padding: .4rem 0; }
summary { cursor: pointer; font-weight: 600; }
summary span, li > span { color: var(--rest); font-weight: 400; }
ul { list-style: none; margin: .3rem 0; padding-left: 1.2rem; }
li::before { content: "\2713"; color: var(--good); display: inline-block; width: 1.2rem; }
li.failed::before { content: "\2717"; color: var(--bad); } li.notrun::before { content: "\2013"; color: var(--rest); }
li.failed > b { color: var(--bad); } li > b { font-weight: 500; }
pre { font: 13px/1.45 ui-monospace, monospace; margin: .2rem 0 .6rem 1.2rem; padding: .5rem .8rem; overflow-x: auto;
      border-left: 3px solid var(--rest); background: #8881; }
li.failed pre { border-color: var(--bad); } pre.output { border-color: var(--line); }
li details { border: 0; padding: 0 0 0 1.2rem; } li summary { font-weight: 400; color: var(--rest); }
</style>
</head>
<body>
)";

const char* ClassOf(eTestOutcome eOutcome)
{
    switch (eOutcome)
    {
    case eOutcomePassed:
        return "passed";
    case eOutcomeNotRun:
        return "notrun";
    default:
        return "failed";
    }
}

std::string BarPart(const char* szClass, long lCount)
{
    return lCount > 0 ? std::string("<i class=\"") + szClass + "\" style=\"flex:" + std::to_string(lCount) + "\"></i>"
                      : "";
}

std::string Counts(const sTestCounts& oCounts)
{
    std::string sText = CountText(oCounts.lCases, "case");
    const long lBad = oCounts.lFailed + oCounts.lEnded;
    if (lBad > 0)
        sText += ", " + std::to_string(lBad) + " failed";
    if (oCounts.lNotRun > 0)
        sText += ", " + std::to_string(oCounts.lNotRun) + " not run";
    if (oCounts.lWarnings > 0)
        sText += ", " + CountText(oCounts.lWarnings, "warning");
    return sText;
}

std::string Output(const char* szStream, const std::string& sText)
{
    return sText.empty() ? ""
                         : std::string("<details class=\"output\"><summary>standard ") + szStream +
                               "</summary><pre class=\"output\">" + MarkupOfLines(sText) + "</pre></details>";
}

std::string ListItem(const sCaseRecord& oCase)
{
    std::string sItem = std::string("<li class=\"") + ClassOf(oCase.eOutcome) + "\"><b>" +
                        Markup(oCase.oPlace.sDescription) + "</b> <span>" +
                        (oCase.eOutcome == eOutcomeNotRun ? "not run" : SecondsText(oCase.dSeconds) + " s") + "</span>";
    std::string sNotes;
    for (const sTestNote& oNote : oCase.aNotes)
        for (const std::string& sLine : Describe(oNote))
            sNotes += Markup(sLine) + "\n";
    sItem += sNotes.empty() ? "" : "<pre>" + sNotes + "</pre>";
    return sItem + Output("output", oCase.sOutput) + Output("errors", oCase.sErrors) + "</li>\n";
}

// Returns the section of a suite. It is open if a case failed, warned or did not run.
std::string Suite(const sSuiteRecord& oSuite)
{
    const sTestCounts oCounts = CountCases(oSuite);
    const bool bOpen = oCounts.lPassed != oCounts.lCases || oCounts.lWarnings > 0;
    std::string sText = std::string("<details") + (bOpen ? " open" : "") + "><summary>" +
                        Markup(oSuite.oPlace.sDescription) + " <span>" + Counts(oCounts) + ", " +
                        SecondsText(oSuite.dSeconds) + " s</span></summary>\n<ul>\n";
    for (const sCaseRecord& oCase : oSuite.aCases)
        sText += ListItem(oCase);
    return sText + "</ul></details>\n";
}
} // namespace

std::string CTOVHtmlReport::Compose(const sTestRecord& oRecord) const
{
    const sTestCounts oCounts = CountCases(oRecord);
    const bool bGood = oCounts.lPassed == oCounts.lCases && oRecord.sEarlyEnd.empty();
    std::string sHtml = HEAD;
    sHtml +=
        std::string("<h1>") + (bGood ? "All tests passed" : "Tests failed") + "</h1>\n<p>" +
        CountText(static_cast<long>(oRecord.aSuites.size()), "suite") + ", " + Counts(oCounts) + ", " +
        SecondsText(oRecord.dSeconds) + " s" +
        (oRecord.lRuns > 1 ? " in " + CountText(oRecord.lRuns, "run") : std::string()) +
        (oRecord.oPlan.llSeed >= 0 ? ", shuffled with --seed " + std::to_string(oRecord.oPlan.llSeed) : std::string()) +
        "</p>\n<div class=\"bar\">" + BarPart("passed", oCounts.lPassed) +
        BarPart("failed", oCounts.lFailed + oCounts.lEnded) + BarPart("notrun", oCounts.lNotRun) + "</div>\n";
    if (!oRecord.sEarlyEnd.empty())
        sHtml += "<p><b>The run ended early:</b> " + Markup(OneLine(oRecord.sEarlyEnd)) + "</p>\n";
    for (const sSuiteRecord& oSuite : oRecord.aSuites)
        sHtml += Suite(oSuite);
    return sHtml + "</body>\n</html>\n";
}
} // namespace TOVTestHost
