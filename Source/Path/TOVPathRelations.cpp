#include <Path/TOVPath.h>

#include <Path/TOVPathText.h>

using namespace TOVPathText;

namespace
{
// Copies a range in lower case to oCopy, which gets its own block: MakeLower works in place, and a text from Mid can
// share the block of the path.
void AssignLowered(CTOVStringA& oCopy, const CTOVStringA& oText, const sRange& oRange)
{
    if (oRange.lStart < oRange.lEnd)
        oCopy.AssignCopy(static_cast<int>(oRange.lEnd - oRange.lStart), oText.GetString() + oRange.lStart);
    else
        oCopy.Empty();
    oCopy.MakeLower();
}

// Returns whether the first nCount components and the separators between them are equal, ignoring case. If they are,
// every smaller number of components from the start is equal as well.
bool HaveSameStart(const CTOVStringA& oText1, const CTOVStringA& oText2, int nCount)
{
    if (nCount == 0)
        return true;
    CTOVStringA oLowered1;
    CTOVStringA oLowered2;
    AssignLowered(oLowered1, oText1, FindComponents(oText1, 0, nCount));
    AssignLowered(oLowered2, oText2, FindComponents(oText2, 0, nCount));
    return oLowered1.Compare(oLowered2) == 0;
}
} // namespace

CTOVPath CTOVPath::Strip(const CTOVPath& oBase) const
{
    CTOVStringA oComponent;
    CTOVStringA oBaseComponent;
    sRange oRange;
    long lPosition = 0;
    long lBasePosition = 0;
    int nMatches = 0;
    for (;; ++nMatches)
    {
        const bool bComponent = FindNextComponent(m_oPath, lPosition, oRange);
        if (bComponent)
            AssignLowered(oComponent, m_oPath, oRange);
        const bool bBaseComponent = FindNextComponent(oBase.m_oPath, lBasePosition, oRange);
        if (bBaseComponent)
            AssignLowered(oBaseComponent, oBase.m_oPath, oRange);

        // Settled: a path without further components is compared with its last component again.
        if ((!bComponent && !bBaseComponent) || oComponent.Compare(oBaseComponent) != 0)
            break;
    }
    return CTOVPath(GetComponent(nMatches, GetNumComponents() - nMatches));
}

int CTOVPath::Compare(const CTOVPath& oOther) const
{
    CTOVStringA oComponent;
    CTOVStringA oOtherComponent;
    long lPosition = 0;
    long lOtherPosition = 0;
    for (;;)
    {
        const bool bComponent = GetNextComponent(oComponent, lPosition);
        const bool bOtherComponent = oOther.GetNextComponent(oOtherComponent, lOtherPosition);
        if (!bComponent)
            return bOtherComponent ? -1 : 0;
        if (!bOtherComponent)
            return 1;
        const int nResult = oComponent.CompareNoCase(oOtherComponent);
        if (nResult != 0)
            return nResult;
    }
}

bool CTOVPath::IsSame(const CTOVPath& oOther, int /*nUnused*/, bool bIgnoreLeadingSlash,
                      bool bIgnoreTrailingSlash) const
{
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
