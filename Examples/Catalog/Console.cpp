#include "Console.h"

#include "CatalogSystem.h"

#include <cstdio>
#include <string>

namespace
{
constexpr double BYTES_PER_MEGABYTE = 1000000.0;

double Seconds(std::chrono::steady_clock::duration oTime)
{
    return std::chrono::duration<double>(oTime).count();
}
} // namespace

CTOVStringA Printable(const CTOVStringA& oName)
{
    // A std::string is used, as each append to a string of the library makes a new block.
    std::string sShown;
    for (const char* p = oName.IsEmpty() ? "" : ~oName; *p != '\0'; ++p)
    {
        const unsigned char nCharacter = static_cast<unsigned char>(*p);
        char szEscape[5] = {*p, '\0'};
        if (nCharacter < 0x20 || nCharacter == 0x7f)
            std::snprintf(szEscape, sizeof(szEscape), "\\x%02x", nCharacter);
        sShown += szEscape;
    }
    return CTOVStringA(sShown.c_str());
}

CProgressLine::CProgressLine(long lFiles, unsigned long long ullBytes)
    : m_bTerminal(IsTerminal(stderr)), m_lFiles(lFiles), m_ullBytes(ullBytes),
      m_oStart(std::chrono::steady_clock::now())
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

void CProgressLine::Show(const sChecksumProgress& oProgress)
{
    const double dSeconds = Seconds(std::chrono::steady_clock::now() - m_oStart);
    if (!m_bTerminal || dSeconds < 0.5)
        return;

    const double dPercent =
        m_ullBytes > 0 ? 100.0 * static_cast<double>(oProgress.ullBytesDone) / static_cast<double>(m_ullBytes) : 100.0;
    CTOVStringA oText;
    oText.Format("%d of %d files, %.0f of %.0f MB, %.0f%%, %.1f MB/s", static_cast<int>(oProgress.lFilesDone),
                 static_cast<int>(m_lFiles), static_cast<double>(oProgress.ullBytesDone) / BYTES_PER_MEGABYTE,
                 static_cast<double>(m_ullBytes) / BYTES_PER_MEGABYTE, dPercent,
                 static_cast<double>(oProgress.ullBytesDone) / BYTES_PER_MEGABYTE / dSeconds);
    Print(~oText);
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
