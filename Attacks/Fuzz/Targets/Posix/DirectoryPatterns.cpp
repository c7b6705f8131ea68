// The masks of a directory search against a simple model. On Windows the system itself matches them.
#include "Fuzz.h"

#include <Posix/Files/TOVFilePattern.h>

namespace
{
constexpr int MAX_MASK = 20;
constexpr int MAX_NAME = 40;

char Upper(char cChar)
{
    return static_cast<char>(cChar >= 'a' && cChar <= 'z' ? cChar - 32 : cChar);
}

// Tries all ways, and remembers those that led nowhere.
class CPatternModel
{
public:
    CPatternModel(const std::string& sMask, const std::string& sName)
        : m_sMask(sMask == "*.*" ? "*" : sMask), m_sName(sName), m_nLastDot(sName.rfind('.')),
          m_aFailed((m_sMask.size() + 1) * (m_sName.size() + 1))
    {
        // A full stop at the end of a mask stands for nothing.
        m_nMaskEnd = m_sMask.size() - (!m_sMask.empty() && m_sMask.back() == '.' ? 1 : 0);
    }

    bool Matches(std::size_t nMask = 0, std::size_t nName = 0)
    {
        if (nMask == m_nMaskEnd)
            return nName == m_sName.size();
        const std::size_t nWay = nMask * (m_sName.size() + 1) + nName;
        if (m_aFailed[nWay] == 0 && TryFrom(nMask, nName))
            return true;
        m_aFailed[nWay] = 1;
        return false;
    }

private:
    bool TryFrom(std::size_t nMask, std::size_t nName)
    {
        const char cMask = m_sMask[nMask];
        const bool bEnd = nName == m_sName.size();
        if (cMask == '*')
        {
            const bool bKeepsDot = nMask + 1 < m_sMask.size() && m_sMask[nMask + 1] == '.' && nName == m_nLastDot;
            return Matches(nMask + 1, nName) || (!bEnd && !bKeepsDot && Matches(nMask, nName + 1));
        }
        if (bEnd)
            return cMask == '.' && nMask + 1 < m_sMask.size() && m_sMask[nMask + 1] == '*' && Matches(nMask + 1, nName);
        const bool bSame = cMask == '?' || Upper(cMask) == Upper(m_sName[nName]);
        return bSame && Matches(nMask + 1, nName + 1);
    }

    const std::string m_sMask;
    const std::string m_sName;
    const std::size_t m_nLastDot;
    std::size_t m_nMaskEnd;
    std::vector<char> m_aFailed;
};
} // namespace

FUZZ_TARGET(DirectoryPatterns)
{
    const std::string sMask = oInput.Text(MAX_MASK);
    TOVPlatform::TOVPosix::CFilePattern oPattern(sMask.c_str());
    FUZZ_EXPECT_EQ(sMask.find_first_of("*?") != std::string::npos,
                   TOVPlatform::TOVPosix::CFilePattern::HasWildcard(sMask.c_str(), sMask.size()));
    // One pattern is used for several names.
    for (int n = 0; n < 4; ++n)
    {
        const std::string sName = oInput.Text(MAX_NAME);
        FUZZ_EXPECT_EQ(CPatternModel(sMask, sName).Matches(), oPattern.Matches(sName.c_str()));
    }
}
