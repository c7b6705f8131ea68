#include <Path/TOVPath.h>

#include <TOVPlatform/TOVFile.h>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVPath>;

namespace
{
// Character tests go through GetAt, whose check is what refuses an empty path.
char FirstCharacter(const CTOVStringA& oText)
{
    return static_cast<char>(oText.GetAt(0));
}

char LastCharacter(const CTOVStringA& oText)
{
    return static_cast<char>(oText.GetAt(oText.GetLength() - 1));
}

CTOVStringA WithoutLastCharacter(const CTOVStringA& oText)
{
    return oText.Left(static_cast<int>(oText.GetLength() - 1));
}

CTOVStringA WithoutFirstCharacter(const CTOVStringA& oText)
{
    // Settled: Mid takes the terminator along, so the count of characters stays as it was.
    return oText.Mid(1, static_cast<int>(oText.GetLength()));
}

CTOVStringA WithLeading(char cSlash, const CTOVStringA& oText)
{
    CTOVStringA oResult;
    oResult.ConcatCopy(1, &cSlash, static_cast<int>(oText.GetLength()), oText.GetString());
    return oResult;
}

// Index of the last separator before lEnd, or -1.
long FindLastSlash(const CTOVStringA& oText, long lEnd)
{
    const char* const szText = oText.GetString();
    long lIndex = lEnd - 1;
    while (lIndex >= 0 && !CTOVPath::IsSlash(szText[lIndex]))
        --lIndex;
    return lIndex;
}

// A stretch of a path's text: from lStart to before lEnd.
struct sStretch
{
    long lStart;
    long lEnd;
};

sStretch FindComponents(const CTOVStringA& oText, int nFirst, int nCount)
{
    const char* const szText = oText.GetString();
    const long lLength = oText.GetLength();
    const long long llBehind = static_cast<long long>(nFirst) + nCount;

    // Settled: a first component beyond the end leaves the start at 0.
    sStretch oStretch = {0, lLength};
    if (nFirst == 0 && lLength > 0 && CTOVPath::IsSlash(szText[0]))
        oStretch.lStart = 1;

    int nSeparators = 0;
    for (long lIndex = 1; lIndex < lLength; ++lIndex)
    {
        if (!CTOVPath::IsSlash(szText[lIndex]))
            continue;
        ++nSeparators;
        if (nSeparators == nFirst)
            oStretch.lStart = lIndex + 1;
        if (nSeparators == llBehind)
        {
            oStretch.lEnd = lIndex;
            break;
        }
    }
    return oStretch;
}

// The step of the iteration: finds the component behind lPosition and moves lPosition to the separator behind that.
bool FindNextComponent(const CTOVStringA& oText, long& lPosition, sStretch& oStretch)
{
    const long lLength = oText.GetLength();
    if (lLength == 0 || lPosition >= lLength)
        return false;

    const char* const szText = oText.GetString();
    const bool bOnSlash = CTOVPath::IsSlash(static_cast<char>(oText.GetAt(lPosition)));
    const long lStart = bOnSlash ? lPosition + 1 : lPosition;
    do
        ++lPosition;
    while (lPosition < lLength && !CTOVPath::IsSlash(szText[lPosition]));

    if (lStart == lLength)
        return false;
    oStretch.lStart = lStart;
    oStretch.lEnd = lPosition;
    return true;
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

CTOVPath::CTOVPath() = default;
CTOVPath::CTOVPath(const CTOVPath& oOther) = default;
CTOVPath::~CTOVPath() = default;

CTOVPath::CTOVPath(const char* szPath)
{
    m_oPath = szPath;
}

CTOVPath::CTOVPath(const CTOVStringA& oPath) : m_oPath(oPath)
{
}

const CTOVPath& CTOVPath::operator=(const char* szPath)
{
    m_oPath = szPath;
    return *this;
}

const CTOVPath& CTOVPath::operator=(const CTOVStringA& oPath)
{
    m_oPath = oPath;
    return *this;
}

const CTOVPath& CTOVPath::operator=(const CTOVPath& oOther)
{
    m_oPath = oOther.m_oPath;
    return *this;
}

CTOVPath& CTOVPath::Null()
{
    return CTOVDynamicSingleton<CTOVPath>::GetInstance();
}

void CTOVPath::Empty()
{
    m_oPath.Empty();
}

bool CTOVPath::IsSlash(char cChar)
{
    return cChar == '\\' || cChar == '/';
}

bool CTOVPath::IsDriveLetter(char cChar)
{
    return (cChar >= 'A' && cChar <= 'Z') || (cChar >= 'a' && cChar <= 'z');
}

int CTOVPath::GetDriveNumber() const
{
    if (m_oPath.GetAt(1) != ':')
        return -1;
    const char cLetter = FirstCharacter(m_oPath);
    if (!IsDriveLetter(cLetter))
        return -1;
    return cLetter >= 'a' ? cLetter - 'a' : cLetter - 'A';
}

CTOVPath CTOVPath::BuildRoot(int nDrive)
{
    if (nDrive < 0 || nDrive > 25)
        return Null();
    const char szRoot[] = {static_cast<char>('A' + nDrive), ':', '\\', '\0'};
    return CTOVPath(szRoot);
}

bool CTOVPath::IsUNC() const
{
    return HasLeadingBackslash() && m_oPath.GetAt(1) == '\\';
}

bool CTOVPath::HasLeadingBackslash() const
{
    return FirstCharacter(m_oPath) == '\\';
}

bool CTOVPath::HasLeadingForwardslash() const
{
    return FirstCharacter(m_oPath) == '/';
}

bool CTOVPath::HasLeadingSlash() const
{
    return IsSlash(FirstCharacter(m_oPath));
}

bool CTOVPath::HasTrailingBackslash() const
{
    return LastCharacter(m_oPath) == '\\';
}

bool CTOVPath::HasTrailingForwardslash() const
{
    return LastCharacter(m_oPath) == '/';
}

bool CTOVPath::HasTrailingSlash() const
{
    return IsSlash(LastCharacter(m_oPath));
}

void CTOVPath::AddTrailingBackslash()
{
    if (!HasTrailingBackslash())
        m_oPath += '\\';
}

void CTOVPath::AddTrailingForwardslash()
{
    if (!HasTrailingForwardslash())
        m_oPath += '/';
}

void CTOVPath::AddLeadingBackslash()
{
    if (!HasLeadingBackslash())
        m_oPath = WithLeading('\\', m_oPath);
}

void CTOVPath::AddLeadingForwardslash()
{
    if (!HasLeadingForwardslash())
        m_oPath = WithLeading('/', m_oPath);
}

void CTOVPath::RemoveTrailingBackslash()
{
    if (HasTrailingBackslash())
        m_oPath = WithoutLastCharacter(m_oPath);
}

void CTOVPath::RemoveTrailingForwardslash()
{
    if (HasTrailingForwardslash())
        m_oPath = WithoutLastCharacter(m_oPath);
}

void CTOVPath::RemoveTrailingSlash()
{
    if (HasTrailingSlash())
        m_oPath = WithoutLastCharacter(m_oPath);
}

void CTOVPath::RemoveLeadingBackslash()
{
    if (HasLeadingBackslash())
        m_oPath = WithoutFirstCharacter(m_oPath);
}

void CTOVPath::RemoveLeadingForwardslash()
{
    if (HasLeadingForwardslash())
        m_oPath = WithoutFirstCharacter(m_oPath);
}

int CTOVPath::MakeForwardslashes()
{
    return m_oPath.Replace('\\', '/');
}

int CTOVPath::MakeBackwardslashes()
{
    return m_oPath.Replace('/', '\\');
}

int CTOVPath::GetNumComponents() const
{
    const char* const szText = m_oPath.GetString();
    const long lLength = GetLength();
    if (lLength == 0)
        return 0;

    int nComponents = IsSlash(szText[lLength - 1]) ? 0 : 1;
    for (long lIndex = 1; lIndex < lLength; ++lIndex)
    {
        if (IsSlash(szText[lIndex]))
            ++nComponents;
    }
    return nComponents;
}

CTOVStringA CTOVPath::GetComponent(int nFirst, int nCount) const
{
    if (nCount == 0)
        return CTOVStringA();
    const sStretch oStretch = FindComponents(m_oPath, nFirst, nCount);
    return m_oPath.Mid(static_cast<int>(oStretch.lStart), static_cast<int>(oStretch.lEnd - oStretch.lStart));
}

int CTOVPath::GetComponentPosition(int nIndex) const
{
    const char* const szText = m_oPath.GetString();
    const long lLength = GetLength();
    if (nIndex == 0)
        return lLength > 0 && IsSlash(szText[0]) ? 1 : 0;

    int nSeparators = 0;
    for (long lIndex = 1; lIndex < lLength; ++lIndex)
    {
        if (IsSlash(szText[lIndex]) && ++nSeparators == nIndex)
            return static_cast<int>(lIndex + 1);
    }
    return 0;
}

bool CTOVPath::GetFirstComponent(CTOVStringA& oComponent, long& lPosition) const
{
    lPosition = 0;
    return GetNextComponent(oComponent, lPosition);
}

bool CTOVPath::GetNextComponent(CTOVStringA& oComponent, long& lPosition) const
{
    sStretch oStretch;
    if (!FindNextComponent(m_oPath, lPosition, oStretch))
        return false;
    oComponent = m_oPath.Mid(static_cast<int>(oStretch.lStart), static_cast<int>(oStretch.lEnd - oStretch.lStart));
    return true;
}

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
