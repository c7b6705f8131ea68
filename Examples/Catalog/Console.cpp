#include "Console.h"

#include "CatalogSystem.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

namespace
{
constexpr double BYTES_PER_MEGABYTE = 1000000.0;

// Returns whether a terminal shows a character as such. The others control it, change the direction of the text, or are
// not visible at all. Two invisible ones that words need are shown: the joiner and the non-joiner.
bool IsShown(char32_t cCharacter)
{
    constexpr struct
    {
        char32_t cFirst;
        char32_t cLast;
    } HIDDEN[] = {
        {0x0000, 0x001f}, {0x007f, 0x009f}, {0x00ad, 0x00ad},   {0x061c, 0x061c}, {0x180e, 0x180e},
        {0x200b, 0x200b}, {0x200e, 0x200f}, {0x2028, 0x202e},   {0x2060, 0x206f}, {0xfeff, 0xfeff},
        {0xfff0, 0xfffb}, {0xfffe, 0xffff}, {0xe0000, 0xe0fff},
    };
    return std::none_of(std::begin(HIDDEN), std::end(HIDDEN),
                        [&](const auto& oRange) { return oRange.cFirst <= cCharacter && cCharacter <= oRange.cLast; });
}

double Seconds(std::chrono::steady_clock::duration oTime)
{
    return std::chrono::duration<double>(oTime).count();
}
} // namespace

CTOVStringA Printable(const CTOVStringA& oName)
{
    // A std::string is used, as each append to a string of the library makes a new block.
    std::string sShown;
    for (const char* p = oName.IsEmpty() ? "" : ~oName; *p != '\0';)
    {
        char32_t cCharacter = 0;
        const int nBytes = ReadCharacter(p, cCharacter);
        const char* const pEnd = p + std::max(nBytes, 1);
        if (nBytes > 0 && IsShown(cCharacter))
        {
            sShown.append(p, pEnd);
            p = pEnd;
        }
        for (; p != pEnd; ++p)
        {
            char szEscape[5];
            std::snprintf(szEscape, sizeof(szEscape), "\\x%02x", static_cast<unsigned char>(*p));
            sShown += szEscape;
        }
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
