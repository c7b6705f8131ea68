#include "HtmlListener.h"

#include <ctime>

namespace
{
const char* const PAGE_BEGIN = R"page(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Log</title>
<style>
body { font: 15px/1.5 system-ui, sans-serif; margin: 1em; color: #222; }
table { border-collapse: collapse; width: 100%; margin-top: 1em; }
td { padding: 0 1em 0 0; vertical-align: top; border-top: 1px solid #eee; overflow-wrap: anywhere; }
td:nth-child(1), td:nth-child(3) { color: #888; white-space: nowrap; }
.trace td { color: #999; }
.warning { background: #fff7d6; }
.error { background: #ffe3df; }
.fatal { background: #ffb3ab; }
@media (max-width: 600px) { td:nth-child(3) { display: none; } }
</style>
<input id="words" type="search" placeholder="Find" oninput="choose()">
<select id="least" onchange="choose()">
<option value="0">all lines<option value="200">info<option value="400">warning<option value="500">error
</select>
<script>
function choose() {
    const words = document.getElementById("words").value.toLowerCase();
    const least = Number(document.getElementById("least").value);
    for (const row of document.querySelectorAll("tr"))
        row.hidden = Number(row.dataset.severity) < least || !row.textContent.toLowerCase().includes(words);
}
</script>
<table>
)page";

const char* NameOf(int nSeverity)
{
    if (nSeverity >= eSeverityFatal)
        return "fatal";
    if (nSeverity >= eSeverityError)
        return "error";
    if (nSeverity >= eSeverityWarning)
        return "warning";
    return nSeverity >= eSeverityInfo ? "info" : "trace";
}

// Log lines may contain anything, also what a browser would take for tags.
std::string Escaped(const std::string& sText)
{
    std::string sResult;
    for (const char cCharacter : sText)
    {
        switch (cCharacter)
        {
        case '&':
            sResult += "&amp;";
            break;
        case '<':
            sResult += "&lt;";
            break;
        case '"':
            sResult += "&quot;";
            break;
        default:
            sResult += cCharacter;
        }
    }
    return sResult;
}

std::string TimeOf(const TOVDebug::sTOVLogLine& oLine)
{
    const std::time_t nTime = std::chrono::system_clock::to_time_t(oLine.oTime);
    char szTime[16] = "";
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the listener's lock is taken.
    std::strftime(szTime, sizeof szTime, "%H:%M:%S", std::localtime(&nTime));
    return szTime;
}
} // namespace

CHtmlListener::CHtmlListener(const std::string& sFile) : m_oPage(sFile)
{
    m_oPage << PAGE_BEGIN;
}

CHtmlListener::~CHtmlListener()
{
    Unregister(); // before the members go: the library logs to its very end
}

void CHtmlListener::OnLine(const TOVDebug::sTOVLogLine& oLine)
{
    // The server calls one listener at a time. The lock is for those who call this one directly.
    const std::lock_guard<std::mutex> oGuard(m_oMutex);
    m_oPage << "<tr class=" << NameOf(oLine.eSeverity) << " data-severity=" << static_cast<int>(oLine.eSeverity)
            << "><td>" << TimeOf(oLine) << "<td>" << (oLine.eKind == TOVDebug::eLogCheck ? "check failed: " : "")
            << Escaped(oLine.sText) << "<td>" << Escaped(oLine.sFile) << ':' << oLine.ulLine << std::endl;
    if (!m_oPage)
        NoteLoss();
}
