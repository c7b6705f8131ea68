#include <Posix/Files/TOVFilePattern.h>

#include <cstring>
#include <cuchar>
#include <cwctype>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
// The wildcards of a mask, outside the range of characters. The last two are how Windows reads masks that were made for
// names with one full stop, even if that is not shown.
constexpr char32_t ONE = 0x110000;        // one character
constexpr char32_t ANY = 0x110001;        // any number of characters
constexpr char32_t ANY_TO_DOT = 0x110002; // any number of characters, but never the last full stop
constexpr char32_t DOT_OR_END = 0x110003; // a full stop, or nothing at the end
constexpr char32_t RAW_BYTE = 0x80000000; // marks a byte that is no character

char32_t ToUpper(char32_t cChar)
{
    if (cChar < 0x80) // these are the same in every locale
        return 'a' <= cChar && cChar <= 'z' ? cChar - ('a' - 'A') : cChar;

    return static_cast<char32_t>(std::towupper(static_cast<std::wint_t>(cChar)));
}

bool CanBeNothingAtEnd(char32_t cMask)
{
    return ANY <= cMask && cMask <= DOT_OR_END;
}

// Reads the character at the start of a text that is not empty, and moves past it.
char32_t ReadCharacter(const char*& szText, const char* szEnd, std::mbstate_t& oState)
{
    const tUchar ucFirst = static_cast<tUchar>(*szText);
    if (ucFirst < 0x80)
    {
        ++szText;
        return ToUpper(ucFirst);
    }

    const std::size_t ulLeft = static_cast<std::size_t>(szEnd - szText);
    char32_t cChar;
    const std::size_t ulBytes = std::mbrtoc32(&cChar, szText, ulLeft, &oState);
    if (ulBytes == 0 || ulBytes > ulLeft)
    {
        ++szText;
        oState = std::mbstate_t();
        return RAW_BYTE | ucFirst;
    }
    szText += ulBytes;
    return ToUpper(cChar);
}
} // namespace

void CFilePattern::Decode(const char* szText, std::u32string& oText)
{
    const char* szEnd = szText + std::strlen(szText);
    std::mbstate_t oState = {};

    oText.clear();
    while (szText < szEnd)
        oText += ReadCharacter(szText, szEnd, oState);
}

CFilePattern::CFilePattern(const char* szMask)
{
    Decode(std::strcmp(szMask, "*.*") == 0 ? "*" : szMask, m_oMask);

    const bool bEndsInDot = !m_oMask.empty() && m_oMask.back() == '.';
    for (std::size_t i = 0; i < m_oMask.size(); ++i)
    {
        const char32_t cBefore = i > 0 ? m_oMask[i - 1] : 0;
        if (m_oMask[i] == '.' && cBefore == ANY)
            m_oMask[i - 1] = ANY_TO_DOT;
        else if (m_oMask[i] == '*')
        {
            m_oMask[i] = ANY;
            if (cBefore == '.')
                m_oMask[i - 1] = DOT_OR_END;
        }
        else if (m_oMask[i] == '?')
            m_oMask[i] = ONE;
    }

    // A full stop at the very end only means that the name has none there.
    if (bEndsInDot)
        m_oMask.pop_back();
}

bool CFilePattern::HasWildcard(const char* szMask, std::size_t ulLength)
{
    return std::memchr(szMask, '*', ulLength) != nullptr || std::memchr(szMask, '?', ulLength) != nullptr;
}

// Follows all ways through the mask at once: m_aReached holds the places of the mask that the name has led to so far.
bool CFilePattern::Matches(const char* szName)
{
    if (m_oMask.size() == 1 && m_oMask[0] == ANY)
        return true;

    Decode(szName, m_oName);
    const std::size_t ulLastDot = m_oName.rfind(U'.');

    m_aReached.assign(m_oMask.size() + 1, 0);
    m_aReached[0] = 1;
    for (std::size_t i = 0; i < m_oName.size(); ++i)
    {
        m_aNext.assign(m_oMask.size() + 1, 0);
        for (std::size_t j = 0; j < m_oMask.size(); ++j)
        {
            if (!m_aReached[j])
                continue;

            const char32_t cMask = m_oMask[j];
            const bool bDot = m_oName[i] == '.';
            if (cMask == ANY || (cMask == ANY_TO_DOT && i != ulLastDot))
                m_aNext[j] = 1;
            if (cMask == ANY || cMask == ANY_TO_DOT)
                m_aReached[j + 1] = 1;
            else if (cMask == ONE || cMask == m_oName[i] || (cMask == DOT_OR_END && bDot))
                m_aNext[j + 1] = 1;
        }
        m_aReached.swap(m_aNext);
    }

    for (std::size_t j = 0; j < m_oMask.size(); ++j)
    {
        if (m_aReached[j] && CanBeNothingAtEnd(m_oMask[j]))
            m_aReached[j + 1] = 1;
    }
    return m_aReached[m_oMask.size()] != 0;
}
} // namespace TOVPosix
} // namespace TOVPlatform
