#include <Path/TOVPath.h>

#include <Path/TOVPathText.h>
#include <TOVPlatform/TOVFile.h>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVPath>;

using namespace TOVPathText;

namespace
{
CTOVStringA WithoutFirstCharacter(const CTOVStringA& oText)
{
    // Settled: Mid includes the terminator here, so that the length is unchanged.
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

CTOVPath::CTOVPath(const char* szPath) : m_oPath(szPath)
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
