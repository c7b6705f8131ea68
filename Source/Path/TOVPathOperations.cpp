#include <Path/TOVPath.h>

#include <Path/TOVPathText.h>
#include <TOVPlatform/TOVFile.h>

using namespace TOVPathText;

namespace
{
// Index of the last separator before lEnd, or -1.
long FindLastSlash(const CTOVStringA& oText, long lEnd)
{
    const char* const szText = oText.GetString();
    long lIndex = lEnd - 1;
    while (lIndex >= 0 && !CTOVPath::IsSlash(szText[lIndex]))
        --lIndex;
    return lIndex;
}

// A lowered copy with a block of its own: lowering works in place, and a text from Mid can share the path's block.
void AssignLowered(CTOVStringA& oCopy, const CTOVStringA& oText, const sStretch& oStretch)
{
    if (oStretch.lStart < oStretch.lEnd)
        oCopy.AssignCopy(static_cast<int>(oStretch.lEnd - oStretch.lStart), oText.GetString() + oStretch.lStart);
    else
        oCopy.Empty();
    oCopy.MakeLower();
}

// Whether the first nCount components and what separates them match without case. If they do, all shorter stretches
// from the start match as well.
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

void CTOVPath::Append(const CTOVPath& oOther)
{
    if (!HasTrailingSlash() && !oOther.HasLeadingSlash())
        AddTrailingBackslash();
    m_oPath += oOther.m_oPath;
}

CTOVPath CTOVPath::Concat(const CTOVPath& oOther) const
{
    CTOVPath oResult(*this);
    oResult.Append(oOther);
    return oResult;
}

const CTOVPath& CTOVPath::operator+=(const CTOVPath& oOther)
{
    Append(oOther);
    return *this;
}

const CTOVStringA& CTOVPath::operator+=(const CTOVStringA& oOther)
{
    Append(CTOVPath(oOther));
    return m_oPath;
}

const CTOVStringA& CTOVPath::operator+=(const char* szOther)
{
    Append(CTOVPath(szOther));
    return m_oPath;
}

CTOVPath CTOVPath::Parent() const
{
    const long lEnd = HasTrailingSlash() ? GetLength() - 1 : GetLength();
    const long lSlash = FindLastSlash(m_oPath, lEnd);
    if (lSlash == -1)
        return Null();
    return CTOVPath(m_oPath.Left(static_cast<int>(lSlash)));
}

CTOVPath CTOVPath::GetPath() const
{
    const long lSlash = FindLastSlash(m_oPath, GetLength());
    if (lSlash == -1)
        return *this;
    return CTOVPath(m_oPath.Left(static_cast<int>(lSlash)));
}

CTOVStringA CTOVPath::GetFileName(bool bWithExtension) const
{
    const int nComponents = GetNumComponents();
    CTOVStringA oName = GetComponent(nComponents - 1, nComponents);
    if (IsSlash(LastCharacter(oName)))
        oName = WithoutLastCharacter(oName);

    const int nDot = bWithExtension ? -1 : oName.ReverseFind('.');
    if (nDot == -1)
        return oName;
    return oName.Left(nDot);
}

void CTOVPath::StripPath()
{
    const long lSlash = FindLastSlash(m_oPath, GetLength());
    if (lSlash != -1)
        m_oPath = m_oPath.Mid(static_cast<int>(lSlash + 1), static_cast<int>(GetLength() - lSlash - 1));
}

CTOVPath CTOVPath::Strip(const CTOVPath& oBase) const
{
    CTOVStringA oComponent;
    CTOVStringA oBaseComponent;
    sStretch oStretch;
    long lPosition = 0;
    long lBasePosition = 0;
    int nMatches = 0;
    for (;; ++nMatches)
    {
        const bool bComponent = FindNextComponent(m_oPath, lPosition, oStretch);
        if (bComponent)
            AssignLowered(oComponent, m_oPath, oStretch);
        const bool bBaseComponent = FindNextComponent(oBase.m_oPath, lBasePosition, oStretch);
        if (bBaseComponent)
            AssignLowered(oBaseComponent, oBase.m_oPath, oStretch);

        // Settled: a side that has run out goes on with its last component.
        if ((!bComponent && !bBaseComponent) || oComponent.Compare(oBaseComponent) != 0)
            break;
    }
    return CTOVPath(GetComponent(nMatches, GetNumComponents() - nMatches));
}

int CTOVPath::FindExtension() const
{
    const int nStart = GetComponentPosition(GetNumComponents() - 1);
    const int nDot = m_oPath.ReverseFind('.');
    return nDot > nStart ? nDot : -1;
}

bool CTOVPath::HasExtension() const
{
    return FindExtension() != -1;
}

CTOVStringA CTOVPath::GetExtension() const
{
    const int nDot = FindExtension();
    if (nDot == -1)
        return CTOVStringA();
    return m_oPath.Mid(nDot, static_cast<int>(GetLength() - nDot));
}

void CTOVPath::AddExtension(const CTOVStringA& oExtension)
{
    if (!HasExtension() && FirstCharacter(oExtension) == '.')
        m_oPath += oExtension;
}

void CTOVPath::RemoveExtension()
{
    const int nDot = FindExtension();
    if (nDot != -1)
        m_oPath = m_oPath.Left(nDot);
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
    // Settled: both are asked, and neither answer counts.
    if (!IsAbove(oOther))
        IsSame(oOther, 0, true, true);
    return true;
}

void CTOVPath::MakeLower()
{
    m_oPath.MakeLower();
}

void CTOVPath::MakeUpper()
{
    m_oPath.MakeUpper();
}

void CTOVPath::MakePretty()
{
    MakeLower();
}

void CTOVPath::CompactPath(const CTOVPath& /*oPath*/, unsigned int /*nMaxLength*/)
{
}

bool CTOVPath::DoesExist() const
{
    return TOVPlatform::TOVFile::DoesExist(m_oPath.GetString());
}

bool CTOVPath::IsDirectory() const
{
    return (TOVPlatform::TOVFile::GetAttributes(m_oPath.GetString()) & TOVPlatform::TOVFile::eFileAttributeDirectory) !=
           0;
}

bool CTOVPath::IsFile() const
{
    return !IsDirectory();
}

CTOVPath CTOVPath::GetWorkingDirectory()
{
    static char s_szBuffer[260];
    if (TOVPlatform::TOVDirectory::GetWorkingDirectory(s_szBuffer, sizeof s_szBuffer) !=
        TOVPlatform::TOVDirectory::eDirectorySuccess)
        return Null();
    return CTOVPath(s_szBuffer);
}
