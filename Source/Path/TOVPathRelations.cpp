#include <Path/TOVPath.h>

#include <Path/TOVPathText.h>
#include <TOVPlatform/TOVString.h>

#include <cstring>
#include <memory>

using namespace TOVPathText;

namespace
{
// A range of a path's text as a text of its own, which the platform's functions read up to its first zero. A short one
// takes no memory.
class CTerminatedPart
{
public:
    CTerminatedPart(const CTOVStringA& oText, const sRange& oRange)
    {
        const std::size_t nLength = static_cast<std::size_t>(oRange.GetLength());
        if (nLength >= sizeof m_szShort)
            m_szLong.reset(new char[nLength + 1]);
        if (nLength > 0)
            std::memcpy(Get(), oText.GetString() + oRange.lStart, nLength);
        Get()[nLength] = '\0';
    }

    char* Get() { return m_szLong != nullptr ? m_szLong.get() : m_szShort; }

private:
    char m_szShort[256];
    std::unique_ptr<char[]> m_szLong;
};

// Equal characters need neither a copy nor the rules of the locale.
bool HaveSameCharacters(const CTOVStringA& oText1, const sRange& oRange1, const CTOVStringA& oText2,
                        const sRange& oRange2)
{
    const long lLength = oRange1.GetLength();
    return lLength == oRange2.GetLength() &&
           (lLength == 0 || std::memcmp(oText1.GetString() + oRange1.lStart, oText2.GetString() + oRange2.lStart,
                                        static_cast<std::size_t>(lLength)) == 0);
}

bool HaveSameCharacters(const CTOVStringA& oText1, const CTOVStringA& oText2)
{
    return HaveSameCharacters(oText1, {0, oText1.GetLength()}, oText2, {0, oText2.GetLength()});
}

bool AreSameLowered(const CTOVStringA& oText1, const sRange& oRange1, const CTOVStringA& oText2, const sRange& oRange2)
{
    if (HaveSameCharacters(oText1, oRange1, oText2, oRange2))
        return true;
    CTerminatedPart oPart1(oText1, oRange1);
    CTerminatedPart oPart2(oText2, oRange2);
    return std::strcmp(TOVPlatform::TOVStringA::ToLower(oPart1.Get()),
                       TOVPlatform::TOVStringA::ToLower(oPart2.Get())) == 0;
}

int CompareNoCase(const CTOVStringA& oText1, const sRange& oRange1, const CTOVStringA& oText2, const sRange& oRange2)
{
    if (HaveSameCharacters(oText1, oRange1, oText2, oRange2))
        return 0;
    return TOVPlatform::TOVStringA::CompareNoCase(CTerminatedPart(oText1, oRange1).Get(),
                                                  CTerminatedPart(oText2, oRange2).Get());
}

// Returns whether the first nCount components and the separators between them are equal, ignoring case. If they are,
// every smaller number of components from the start is equal as well.
bool HaveSameStart(const CTOVStringA& oText1, const CTOVStringA& oText2, int nCount)
{
    return nCount == 0 ||
           AreSameLowered(oText1, FindComponents(oText1, 0, nCount), oText2, FindComponents(oText2, 0, nCount));
}
} // namespace

CTOVPath CTOVPath::Strip(const CTOVPath& oBase) const
{
    sRange oComponent;
    sRange oBaseComponent;
    long lPosition = 0;
    long lBasePosition = 0;
    int nMatches = 0;
    for (;; ++nMatches)
    {
        const bool bComponent = FindNextComponent(m_oPath, lPosition, oComponent);
        const bool bBaseComponent = FindNextComponent(oBase.m_oPath, lBasePosition, oBaseComponent);

        // Settled: a path without further components is compared with its last component again.
        if ((!bComponent && !bBaseComponent) || !AreSameLowered(m_oPath, oComponent, oBase.m_oPath, oBaseComponent))
            break;
    }
    return CTOVPath(GetComponent(nMatches, GetNumComponents() - nMatches));
}

int CTOVPath::Compare(const CTOVPath& oOther) const
{
    if (HaveSameCharacters(m_oPath, oOther.m_oPath))
        return 0;

    sRange oComponent;
    sRange oOtherComponent;
    long lPosition = 0;
    long lOtherPosition = 0;
    for (;;)
    {
        const bool bComponent = FindNextComponent(m_oPath, lPosition, oComponent);
        const bool bOtherComponent = FindNextComponent(oOther.m_oPath, lOtherPosition, oOtherComponent);
        if (!bComponent)
            return bOtherComponent ? -1 : 0;
        if (!bOtherComponent)
            return 1;
        const int nResult = CompareNoCase(m_oPath, oComponent, oOther.m_oPath, oOtherComponent);
        if (nResult != 0)
            return nResult;
    }
}

bool CTOVPath::IsSame(const CTOVPath& oOther, int /*nUnused*/, bool bIgnoreLeadingSlash,
                      bool bIgnoreTrailingSlash) const
{
    // An empty path fails a check below, unless both flags are set.
    if (!IsEmpty() && HaveSameCharacters(m_oPath, oOther.m_oPath))
        return true;

    const int nComponents = GetNumComponents();
    if (nComponents != oOther.GetNumComponents())
        return false;
    if (!bIgnoreTrailingSlash && HasTrailingSlash() != oOther.HasTrailingSlash())
        return false;
    if (!bIgnoreLeadingSlash && HasLeadingSlash() != oOther.HasLeadingSlash())
        return false;
    return HaveSameStart(m_oPath, oOther.m_oPath, nComponents);
}

bool CTOVPath::IsBelow(const CTOVPath& oOther) const
{
    const int nComponents = GetNumComponents();
    return nComponents < oOther.GetNumComponents() && HaveSameStart(m_oPath, oOther.m_oPath, nComponents);
}

bool CTOVPath::IsAbove(const CTOVPath& oOther) const
{
    return oOther.IsBelow(*this);
}

bool CTOVPath::IsBelowOrSame(const CTOVPath& oOther) const
{
    return IsBelow(oOther) || IsSame(oOther, 0, true, true);
}

bool CTOVPath::IsAboveOrSame(const CTOVPath& oOther) const
{
    // Settled: both functions are called, and their results are ignored.
    if (!IsAbove(oOther))
        IsSame(oOther, 0, true, true);
    return true;
}
