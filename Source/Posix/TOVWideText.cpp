// The C library's wide functions read 32-bit units here, so that text of 16-bit units needs functions of its own.
#include <TOVPlatform/Backend/TOVWideText.h>

#include <Posix/Text/TOVCollation.h>
#include <Posix/Text/TOVSurrogate.h>

#include <algorithm>
#include <string>
#include <wchar.h>
#include <wctype.h>

namespace TOVPlatform
{
namespace Backend
{
namespace
{
wchar_t Unchanged(wchar_t cUnit)
{
    return cUnit;
}

// A unit whose counterpart needs two units keeps its case.
wchar_t LowerCase(wchar_t cUnit)
{
    const wint_t cLower = towlower(cUnit);
    return cLower <= 0xFFFF ? static_cast<wchar_t>(cLower) : cUnit;
}

wchar_t UpperCase(wchar_t cUnit)
{
    const wint_t cUpper = towupper(cUnit);
    return cUpper <= 0xFFFF ? static_cast<wchar_t>(cUpper) : cUnit;
}

template<class tMapping> int CompareMapped(const wchar_t* szString1, const wchar_t* szString2, tMapping Map)
{
    for (;; ++szString1, ++szString2)
    {
        const int nOrder = Map(*szString1) - Map(*szString2);
        if (nOrder != 0 || *szString1 == 0)
            return nOrder;
    }
}

template<class tMapping> std::u32string ToCodePoints(const wchar_t* szString, tMapping Map)
{
    std::u32string sResult;
    for (; *szString != 0; ++szString)
    {
        const char32_t cUnit = Map(*szString);
        if (TOVSurrogate::IsLow(cUnit) && !sResult.empty() && TOVSurrogate::IsHigh(sResult.back()))
            sResult.back() = TOVSurrogate::Join(sResult.back(), cUnit);
        else
            sResult.push_back(cUnit);
    }
    return sResult;
}

// The C library's units are 32 bits wide, whatever this compiler calls wchar_t.
const wchar_t* ToLibraryText(const std::u32string& sText)
{
    return reinterpret_cast<const wchar_t*>(sText.c_str());
}

template<class tMapping> int CollateMapped(const wchar_t* szString1, const wchar_t* szString2, tMapping Map)
{
    if (TOVCollation::IsByUnits())
        return CompareMapped(szString1, szString2, Map);
    return wcscoll(ToLibraryText(ToCodePoints(szString1, Map)), ToLibraryText(ToCodePoints(szString2, Map)));
}
} // namespace

int Compare(const wchar_t* szString1, const wchar_t* szString2)
{
    return CompareMapped(szString1, szString2, Unchanged);
}

int CompareNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return CompareMapped(szString1, szString2, LowerCase);
}

int Collate(const wchar_t* szString1, const wchar_t* szString2)
{
    return CollateMapped(szString1, szString2, Unchanged);
}

int CollateNoCase(const wchar_t* szString1, const wchar_t* szString2)
{
    return CollateMapped(szString1, szString2, LowerCase);
}

int Length(const wchar_t* szString)
{
    return static_cast<int>(FindCharacter(szString, 0) - szString);
}

int LengthAtMost(const wchar_t* szString, int nCount)
{
    int nLength = 0;
    while (nLength < nCount && szString[nLength] != 0)
        ++nLength;
    return nLength;
}

void ToLower(wchar_t* szString)
{
    std::transform(szString, szString + Length(szString), szString, LowerCase);
}

void ToUpper(wchar_t* szString)
{
    std::transform(szString, szString + Length(szString), szString, UpperCase);
}

const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter)
{
    const wchar_t cUnit = static_cast<wchar_t>(nCharacter);
    for (; *szString != cUnit; ++szString)
    {
        if (*szString == 0)
            return nullptr;
    }
    return szString;
}

const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter)
{
    const wchar_t cUnit = static_cast<wchar_t>(nCharacter);
    const wchar_t* szLast = nullptr;
    for (;; ++szString)
    {
        if (*szString == cUnit)
            szLast = szString;
        if (*szString == 0)
            return szLast;
    }
}

wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString)
{
    // The text is not measured first: it may be long, with an occurrence close by.
    for (;; ++szString)
    {
        int nEqual = 0;
        while (szSubString[nEqual] != 0 && szString[nEqual] == szSubString[nEqual])
            ++nEqual;
        if (szSubString[nEqual] == 0)
            return szString;
        if (szString[nEqual] == 0)
            return nullptr;
    }
}

const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet)
{
    for (; *szString != 0; ++szString)
    {
        if (FindCharacter(szCharSet, *szString) != nullptr)
            return szString;
    }
    return nullptr;
}

void Copy(wchar_t* szDestination, const wchar_t* szSource)
{
    std::copy_n(szSource, Length(szSource) + 1, szDestination);
}

void CopyPadded(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    const int nLength = LengthAtMost(szSource, nCount);
    std::copy_n(szSource, nLength, szDestination);
    std::fill_n(szDestination + nLength, nCount - nLength, L'\0');
}

void Append(wchar_t* szDestination, const wchar_t* szSource)
{
    Copy(szDestination + Length(szDestination), szSource);
}

void AppendAtMost(wchar_t* szDestination, const wchar_t* szSource, int nCount)
{
    const int nLength = LengthAtMost(szSource, nCount);
    wchar_t* const szEnd = szDestination + Length(szDestination);
    std::copy_n(szSource, nLength, szEnd);
    szEnd[nLength] = 0;
}
} // namespace Backend
} // namespace TOVPlatform
