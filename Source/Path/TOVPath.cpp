#include <Path/TOVPath.h>

#include <Path/TOVPathText.h>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVPath>;

namespace TOVPathText
{
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
} // namespace TOVPathText

using namespace TOVPathText;

namespace
{
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
