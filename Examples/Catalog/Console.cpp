#include "Console.h"

#include "CatalogSystem.h"

#include <Text/TOVShownText.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace
{
constexpr double BYTES_PER_MEGABYTE = 1000000.0;
constexpr char32_t REPLACEMENT = 0xfffd;

// The format has one number.
void AppendFormatted(std::string& sText, const char* szFormat, unsigned nNumber)
{
    char szNumber[16];
    std::snprintf(szNumber, sizeof(szNumber), szFormat, nNumber);
    sText += szNumber;
}

void AppendUtf8(std::string& sText, unsigned nCharacter)
{
    if (nCharacter < 0x80)
    {
        sText += static_cast<char>(nCharacter);
        return;
    }
    const int nFollowing = nCharacter < 0x800 ? 1 : nCharacter < 0x10000 ? 2 : 3;
    sText += static_cast<char>((0xff00u >> (nFollowing + 1) & 0xffu) | nCharacter >> (6 * nFollowing));
    for (int i = nFollowing - 1; i >= 0; --i)
        sText += static_cast<char>(0x80u | (nCharacter >> (6 * i) & 0x3fu));
}

void AppendJsonCharacter(std::string& sText, char32_t cCharacter)
{
    const unsigned nCharacter = static_cast<unsigned>(cCharacter);
    if (nCharacter == '"' || nCharacter == '\\')
        sText += '\\';
    if (TOVShownText::IsShown(cCharacter))
        AppendUtf8(sText, nCharacter);
    else if (nCharacter < 0x10000)
        AppendFormatted(sText, "\\u%04x", nCharacter);
    else
    {
        AppendFormatted(sText, "\\u%04x", 0xd800u + ((nCharacter - 0x10000) >> 10));
        AppendFormatted(sText, "\\u%04x", 0xdc00u + (nCharacter & 0x3ff));
    }
}

double Seconds(std::chrono::steady_clock::duration oTime)
{
    return std::chrono::duration<double>(oTime).count();
}
} // namespace

CTOVStringA Printable(const CTOVStringA& oName)
{
    return CTOVStringA(TOVShownText::Printable(oName.IsEmpty() ? "" : ~oName).c_str());
}

std::string JsonText(const CTOVStringA& oName, bool& bExact)
{
    bExact = true;
    std::string sText = "\"";
    for (std::string_view sLeft = oName.IsEmpty() ? "" : ~oName; !sLeft.empty();)
    {
        char32_t cCharacter = 0;
        const std::size_t nBytes = TOVShownText::ReadCharacter(sLeft, cCharacter);
        sLeft.remove_prefix(std::max<std::size_t>(nBytes, 1));
        if (nBytes == 0)
        {
            bExact = false;
            cCharacter = REPLACEMENT;
        }
        AppendJsonCharacter(sText, cCharacter);
    }
    return sText + '"';
}

std::string JsonName(const char* szKey, const CTOVStringA& oName)
{
    bool bExact = true;
    std::string sMembers = std::string("\"") + szKey + "\": " + JsonText(oName, bExact);
    if (!bExact)
    {
        sMembers += std::string(", \"") + szKey + "Bytes\": \"";
        for (const char* p = ~oName; *p != '\0'; ++p)
            AppendFormatted(sMembers, "%02x", static_cast<unsigned char>(*p));
        sMembers += '"';
    }
    return sMembers;
}

void PrintJsonNames(const CNameList& aNames)
{
    bool bExact = true;
    std::printf("[");
    for (long i = 0; i < aNames.GetSize(); ++i)
        std::printf("%s%s", i > 0 ? ", " : "", JsonText(aNames[i], bExact).c_str());
    std::printf("]");
}

CProgressLine::CProgressLine(bool bQuiet)
    : m_bEnabled(!bQuiet && IsTerminal(stderr)), m_oStart(std::chrono::steady_clock::now())
{
}

CProgressLine::~CProgressLine()
{
    if (m_nWidth > 0)
    {
        Print("");
        std::fprintf(stderr, "\r");
    }
}

void CProgressLine::Show(const sWalkProgress& oProgress)
{
    if (!IsDue())
        return;
    CTOVStringA oText;
    oText.Format("%d files in %d directories found", static_cast<int>(oProgress.lFiles),
                 static_cast<int>(oProgress.lDirectories));
    Print(~oText);
}

void CProgressLine::Show(const sChecksumProgress& oProgress, long lFiles, unsigned long long ullBytes)
{
    if (!IsDue())
        return;
    const double dSeconds = Seconds(std::chrono::steady_clock::now() - m_oStart);
    const double dPercent =
        ullBytes > 0 ? 100.0 * static_cast<double>(oProgress.ullBytesDone) / static_cast<double>(ullBytes) : 100.0;
    CTOVStringA oText;
    oText.Format("%d of %d files, %.0f of %.0f MB, %.0f%%, %.1f MB/s", static_cast<int>(oProgress.lFilesDone),
                 static_cast<int>(lFiles), static_cast<double>(oProgress.ullBytesDone) / BYTES_PER_MEGABYTE,
                 static_cast<double>(ullBytes) / BYTES_PER_MEGABYTE, dPercent,
                 static_cast<double>(oProgress.ullBytesDone) / BYTES_PER_MEGABYTE / dSeconds);
    Print(~oText);
}

bool CProgressLine::IsDue() const
{
    return m_bEnabled && Seconds(std::chrono::steady_clock::now() - m_oStart) >= 0.5;
}

void CProgressLine::Print(const char* szText)
{
    m_nWidth = std::fprintf(stderr, "\r%-*s", m_nWidth, szText) - 1;
    std::fflush(stderr);
}

CTOVStringA DescribeFiles(long lFiles, unsigned long long ullBytes)
{
    CTOVStringA oText;
    oText.Format("%d file%s, %I64u bytes", static_cast<int>(lFiles), lFiles == 1 ? "" : "s", ullBytes);
    return oText;
}

CTOVStringA DescribeWork(long lFiles, unsigned long long ullBytes, std::chrono::steady_clock::duration oTime)
{
    const double dSeconds = Seconds(oTime);
    const double dRate = dSeconds > 0 ? static_cast<double>(ullBytes) / BYTES_PER_MEGABYTE / dSeconds : 0;
    CTOVStringA oText;
    oText.Format("%s in %.2f s (%.1f MB/s)", ~DescribeFiles(lFiles, ullBytes), dSeconds, dRate);
    return oText;
}
