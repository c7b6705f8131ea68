// Declares how a check shows values of the application's own types, and how it compares and shows texts. All of it is
// inline.
#pragma once

#include <Test/TOVTestListener.h>
#include <Test/TOVTestText.h>

#include <string>
#include <type_traits>
#include <utility>

namespace TOVTest
{
// Holds a text of any length.
struct sTestShown
{
    // As the events of the test listener take it.
    operator const char*() const { return sText.c_str(); }

    std::string sText; // what is shown
};

// Whether there is a function TestTextOf for the type, in the namespace of the type.
template<class T, class = void> struct sHasTestText : std::false_type
{
};
template<class T> struct sHasTestText<T, std::void_t<decltype(TestTextOf(std::declval<const T&>()))>> : std::true_type
{
};

// Returns the text of a value as CTOVTestText has it. A value of another type is shown by its function TestTextOf:
//
//     std::string TestTextOf(const CPoint& oPoint); // beside CPoint
//
// Numbers come by value, so that a static constant needs no definition.
template<class T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0> CTOVTestText ShowValue(T nValue)
{
    return CTOVTestText(nValue);
}
template<class T, std::enable_if_t<!std::is_arithmetic_v<T>, int> = 0> auto ShowValue(const T& oValue)
{
    if constexpr (sHasTestText<T>::value)
        return sTestShown{TestTextOf(oValue)};
    else
        return CTOVTestText(oValue);
}

// The units of a text that is compared.
template<class tUnit> struct sTextUnits
{
    const tUnit* pUnits; // null: there is no text
    std::size_t nLength; // in units
};

// Returns the units before the first zero.
template<class tUnit> sTextUnits<tUnit> UnitsUpToZero(const tUnit* szText)
{
    std::size_t nLength = 0;
    while (szText != nullptr && szText[nLength] != 0)
        ++nLength;
    return {szText, nLength};
}

// Returns the units of a text, which ends before its first zero.
inline sTextUnits<char> UnitsOf(const char* szText)
{
    return UnitsUpToZero(szText);
}

// As above, for wide text.
inline sTextUnits<wchar_t> UnitsOf(const wchar_t* szText)
{
    return UnitsUpToZero(szText);
}

// An empty string of this library may have no block, and is the same as "".
template<class tUnit> sTextUnits<tUnit> UnitsOfBlock(const tUnit* pBlock)
{
    static const tUnit s_cEmpty = 0;
    return UnitsUpToZero(pBlock != nullptr ? pBlock : &s_cEmpty);
}
template<class TString> auto UnitsOf(const TString& oText) -> decltype(UnitsOfBlock(oText.GetString()))
{
    return UnitsOfBlock(oText.GetString());
}

// A string of the standard library may have zeros in it.
template<class TString> auto UnitsOf(const TString& sText) -> sTextUnits<std::decay_t<decltype(*sText.c_str())>>
{
    return {sText.c_str(), sText.size()};
}

// Appends a character as UTF-8.
inline void AppendUtf8(std::string& sShown, unsigned long nCode)
{
    static const unsigned long s_aFirst[] = {0, 0xc0, 0xe0, 0xf0}; // by the number of bytes that follow
    int nRest = nCode < 0x80 ? 0 : nCode < 0x800 ? 1 : nCode < 0x10000 ? 2 : 3;
    sShown += static_cast<char>(s_aFirst[nRest] | nCode >> 6 * nRest);
    while (nRest-- > 0)
        sShown += static_cast<char>(0x80 | (nCode >> 6 * nRest & 0x3f));
}

// Appends an escape such as \x1f.
inline void AppendEscape(std::string& sShown, char cLetter, unsigned long nCode, int nDigits)
{
    sShown += '\\';
    sShown += cLetter;
    while (nDigits-- > 0)
        sShown += "0123456789abcdef"[nCode >> 4 * nDigits & 15];
}

// Appends a character of a text, or an escape if it does not print. A byte of narrow text remains what it is.
inline void AppendShown(std::string& sShown, unsigned long nCode, bool bByte)
{
    if (nCode == '\n')
        sShown += "\\n";
    else if (nCode == '\r')
        sShown += "\\r";
    else if (nCode == '\t')
        sShown += "\\t";
    else if (nCode == '"' || nCode == '\\')
        AppendEscape(sShown, static_cast<char>(nCode), 0, 0);
    else if (nCode < 0x20 || nCode == 0x7f)
        AppendEscape(sShown, 'x', nCode, 2);
    else if (bByte)
        sShown += static_cast<char>(nCode);
    else if (nCode >= 0xd800 && nCode < 0xe000) // half of a pair
        AppendEscape(sShown, 'u', nCode, 4);
    else
        AppendUtf8(sShown, nCode);
}

// Returns the text between double quotes, in one line.
template<class tUnit> sTestShown ShowText(const sTextUnits<tUnit>& oText)
{
    if (oText.pUnits == nullptr)
        return sTestShown{"(no text)"};
    std::string sShown = "\"";
    for (std::size_t n = 0; n < oText.nLength; ++n)
    {
        unsigned long nCode = static_cast<std::make_unsigned_t<tUnit>>(oText.pUnits[n]);
        if (sizeof(tUnit) == 2 && nCode >= 0xd800 && nCode < 0xdc00 && n + 1 < oText.nLength)
        {
            const unsigned long nNext = static_cast<std::make_unsigned_t<tUnit>>(oText.pUnits[n + 1]);
            if (nNext >= 0xdc00 && nNext < 0xe000)
            {
                nCode = 0x10000 + ((nCode - 0xd800) << 10) + (nNext - 0xdc00);
                ++n;
            }
        }
        AppendShown(sShown, nCode, sizeof(tUnit) == 1);
    }
    return sTestShown{sShown + '"'};
}

// Returns whether both have the same units, or both are no text.
template<class tUnit> bool IsSameText(const sTextUnits<tUnit>& oOne, const sTextUnits<tUnit>& oOther)
{
    if (oOne.pUnits == nullptr || oOther.pUnits == nullptr)
        return oOne.pUnits == oOther.pUnits;
    bool bSame = oOne.nLength == oOther.nLength;
    for (std::size_t n = 0; bSame && n < oOne.nLength; ++n)
        bSame = oOne.pUnits[n] == oOther.pUnits[n];
    return bSame;
}

// Notifies the listener, with both texts, unless they are the same.
template<class TActual, class TExpected>
void CheckTextEquals(const TActual& oActual, const TExpected& oExpected, const char* szFile, long lLine,
                     const char* szActual, const char* szExpected)
{
    const auto oActualUnits = UnitsOf(oActual);
    const auto oExpectedUnits = UnitsOf(oExpected);
    static_assert(std::is_same_v<decltype(oActualUnits), decltype(oExpectedUnits)>,
                  "a narrow and a wide text cannot be compared");
    if (!IsSameText(oActualUnits, oExpectedUnits))
        CTOVTestListener::Instance().FailedAssertEquals(szFile, lLine, szActual, szExpected, ShowText(oActualUnits),
                                                        ShowText(oExpectedUnits));
}
} // namespace TOVTest
