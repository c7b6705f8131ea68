// The C library's wide functions read 32-bit units here, so that text of 16-bit units needs functions of its own.
#include <TOVPlatform/Backend/TOVWideText.h>

#include <Posix/Text/TOVCollation.h>
#include <Posix/Text/TOVSurrogate.h>
#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/Vector/TOVVectorText.h>

#include <algorithm>
#include <climits>
#include <string>
#include <wchar.h>
#include <wctype.h>

namespace TOVPlatform
{
namespace Backend
{
namespace
{
// So many units are compared one by one after one that the vectors do not compare.
constexpr int SINGLE_UNITS = 8;

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

// Some locales have other counterparts of ASCII letters. All of them have them of the letter I.
bool LowersAsciiAsUsual()
{
    return towlower(L'I') == L'i';
}

bool RaisesAsciiAsUsual()
{
    return towupper(L'i') == L'I';
}

// Equal units need no counterparts, which take a call each.
int CompareLowerCase(wchar_t cUnit1, wchar_t cUnit2)
{
    return cUnit1 == cUnit2 ? 0 : LowerCase(cUnit1) - LowerCase(cUnit2);
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
    if (!LowersAsciiAsUsual())
        return CompareMapped(szString1, szString2, LowerCase);
    for (;;)
    {
        const std::size_t nEqual = Vector::CountEqualNoCase(szString1, szString2);
        szString1 += nEqual;
        szString2 += nEqual;

        // Compares as far as the next step could not.
        for (int nUnits = 0; nUnits < SINGLE_UNITS; ++nUnits, ++szString1, ++szString2)
        {
            const int nOrder = CompareLowerCase(*szString1, *szString2);
            if (nOrder != 0 || *szString1 == 0)
                return nOrder;
        }
    }
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
    return static_cast<int>(Vector::FindUnitOrEnd(szString, 0) - szString);
}

int LengthAtMost(const wchar_t* szString, int nCount)
{
    if (nCount == INT_MAX)
        return Length(szString);
    int nLength = 0;
    while (nLength < nCount && szString[nLength] != 0)
        ++nLength;
    return nLength;
}

void ToLower(wchar_t* szString)
{
    if (LowersAsciiAsUsual())
        TOVAscii::MapCase(szString, Length(szString), 'A', LowerCase);
    else
        std::transform(szString, szString + Length(szString), szString, LowerCase);
}

void ToUpper(wchar_t* szString)
{
    if (RaisesAsciiAsUsual())
        TOVAscii::MapCase(szString, Length(szString), 'a', UpperCase);
    else
        std::transform(szString, szString + Length(szString), szString, UpperCase);
}

const wchar_t* FindCharacter(const wchar_t* szString, int nCharacter)
{
    const wchar_t cUnit = static_cast<wchar_t>(nCharacter);
    const wchar_t* const szHit = Vector::FindUnitOrEnd(szString, cUnit);
    return *szHit == cUnit ? szHit : nullptr;
}

const wchar_t* FindLastCharacter(const wchar_t* szString, int nCharacter)
{
    const wchar_t cUnit = static_cast<wchar_t>(nCharacter);
    for (const wchar_t* szUnit = szString + Length(szString);; --szUnit)
    {
        if (*szUnit == cUnit)
            return szUnit;
        if (szUnit == szString)
            return nullptr;
    }
}

wchar_t* FindString(wchar_t* szString, const wchar_t* szSubString)
{
    return const_cast<wchar_t*>(Vector::FindText(szString, szSubString));
}

const wchar_t* FindOneOf(const wchar_t* szString, const wchar_t* szCharSet)
{
    for (; *szString != 0; ++szString)
    {
        const wchar_t* szUnit = szCharSet;
        while (*szUnit != 0 && *szUnit != *szString)
            ++szUnit;
        if (*szUnit != 0)
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
