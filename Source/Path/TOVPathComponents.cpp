#include <Path/TOVPath.h>

#include <Path/TOVPathText.h>
#include <TOVPlatform/Vector/TOVVectorSlash.h>
#include <TOVString/TOVStringId.h>

#include <cstring>

using namespace TOVPathText;

namespace
{
// Returns whether the block has room for lAppended characters and the terminator.
bool HasRoom(const CTOVStringA& oText, long lAppended)
{
    return lAppended == 0 || GetCapacity(oText) > oText.GetLength() + lAppended;
}

// Appends in a new block, which is taken once and not for the separator as well.
void AppendAside(CTOVStringA& oText, bool bSeparate, long lOtherLength, const char* szOther)
{
    // The place of the terminator becomes that of the separator.
    const long lLength = oText.GetLength();
    oText.ConcatCopy(static_cast<int>(bSeparate ? lLength + 1 : lLength), oText.GetString(),
                     static_cast<int>(lOtherLength), szOther);
    if (bSeparate)
        oText.GetString()[lLength] = '\\';
}

// Returns the index of the last separator before lEnd, or -1.
long FindLastSlash(const CTOVStringA& oText, long lEnd)
{
    return TOVPlatform::Vector::FindLastSlash(oText.GetString(), lEnd);
}

// Returns the index of the dot that begins the extension, or -1.
inline int FindDot(const CTOVStringA& oText)
{
    const char* const szText = oText.GetString();
    const char* const szDot = szText != nullptr ? std::strrchr(szText, '.') : nullptr;
    if (szDot == nullptr || szDot == szText)
        return -1;

    // The dot is in the last component, and not at its start, if no separator follows the character before it. One that
    // ends the text belongs to the last component, unless it is the whole text.
    const char* szEnd = szText + oText.GetLength();
    if (szEnd > szText && CTOVPath::IsSlash(szEnd[-1]))
        --szEnd;
    const bool bIsLast = TOVPlatform::Vector::FindLastSlash(szText, szEnd - szText) < szDot - szText - 1;
    return bIsLast ? static_cast<int>(szDot - szText) : -1;
}
} // namespace

CTOVPath::CTOVPath(const CTOVStringA& oText, int nCount) : m_oPath(oText.Mid(0, nCount))
{
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
    const sRange oRange = FindComponents(m_oPath, nFirst, nCount);
    return m_oPath.Mid(static_cast<int>(oRange.lStart), static_cast<int>(oRange.lEnd - oRange.lStart));
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
    sRange oRange;
    if (!FindNextComponent(m_oPath, lPosition, oRange))
        return false;
    AssignPart(oComponent, m_oPath, oRange);
    return true;
}

void CTOVPath::Append(const CTOVPath& oOther)
{
    const bool bSeparate = !IsSlash(LastCharacter(m_oPath)) && !IsSlash(FirstCharacter(oOther.m_oPath));
    // Settled: a path appended to itself is appended with the separator.
    if (&oOther != this && !HasRoom(m_oPath, bSeparate ? 1 : oOther.GetLength()))
    {
        AppendAside(m_oPath, bSeparate, oOther.GetLength(), ~oOther);
        return;
    }
    const long lLength = GetLength();
    if (bSeparate)
        m_oPath += '\\';
    try
    {
        m_oPath += oOther.m_oPath;
    }
    catch (...)
    {
        m_oPath.ReleaseBuffer(static_cast<int>(lLength));
        throw;
    }
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
    if (IsText(szOther) && *szOther != '\0')
    {
        const bool bSeparate = !IsSlash(LastCharacter(m_oPath)) && !IsSlash(*szOther);
        const long lOtherLength = static_cast<long>(std::strlen(szOther));
        if (!HasRoom(m_oPath, bSeparate ? 1 : lOtherLength))
        {
            AppendAside(m_oPath, bSeparate, lOtherLength, szOther);
            return m_oPath;
        }
    }
    Append(CTOVPath(szOther));
    return m_oPath;
}

CTOVPath CTOVPath::Parent() const
{
    const long lEnd = IsSlash(LastCharacter(m_oPath)) ? GetLength() - 1 : GetLength();
    const long lSlash = FindLastSlash(m_oPath, lEnd);
    return lSlash == -1 ? Null() : CTOVPath(m_oPath, static_cast<int>(lSlash));
}

CTOVPath CTOVPath::GetPath() const
{
    const long lSlash = FindLastSlash(m_oPath, GetLength());
    return lSlash == -1 ? *this : CTOVPath(m_oPath, static_cast<int>(lSlash));
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

int CTOVPath::FindExtension() const
{
    return FindDot(m_oPath);
}

bool CTOVPath::HasExtension() const
{
    return FindExtension() != -1;
}

CTOVStringA CTOVPath::GetExtension() const
{
    const int nDot = FindDot(m_oPath);
    return nDot == -1 ? CTOVStringA() : m_oPath.Mid(nDot, static_cast<int>(GetLength()) - nDot);
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
