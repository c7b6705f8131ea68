// One conversion of a format text, %[flags][width][.precision][modifier]type. This is the one grammar of formats: the
// measure reads by it, and so does every backend that prints by itself. Internal to the text functions.
#pragma once

#include <TOVPlatform/TOVStringArguments.h>

#include <algorithm>
#include <climits>
#include <cstdint>

namespace TOVPlatform
{
namespace TOVFormat
{
enum class eFormatModifier
{
    None,
    Narrow, // h
    Wide,   // l, w
    Int64   // I64, ll
};

// What stands between the percent sign and the type.
struct sFormatItem
{
    bool bLeft = false;
    bool bPlus = false;
    bool bSpace = false;
    bool bZero = false;
    int nAlternates = 0; // how many times the flag # is given
    int nWidth = 0;
    bool bHasPrecision = false;
    int nPrecision = 0;
    eFormatModifier eModifier = eFormatModifier::None;

    // Whether a character or text is wide; bWideType tells it for the type without a modifier.
    bool IsWide(bool bWideType) const
    {
        if (eModifier == eFormatModifier::Narrow)
            return false;
        return bWideType || eModifier == eFormatModifier::Wide;
    }

    // How many units of a text are printed at most.
    int PrintedLimit() const { return bHasPrecision ? nPrecision : INT_MAX; }

    // Settled: for the measure, a precision of 0 is no limit, so that it counts a text that is not printed.
    int MeasuredLimit() const { return nPrecision != 0 ? nPrecision : INT_MAX; }
};

// The next integer of the list, which has the size that the modifier gives it.
inline std::int64_t NextInteger(CTOVArgumentList& oArguments, eFormatModifier eModifier)
{
    switch (eModifier)
    {
    case eFormatModifier::Int64: // in both widths: what follows in the list must be found after all eight bytes
        return oArguments.NextInt64();
    case eFormatModifier::Wide:
        return oArguments.NextLong();
    case eFormatModifier::Narrow:
        return static_cast<std::int16_t>(oArguments.NextInt());
    default:
        return oArguments.NextInt();
    }
}

// Each of these reads one part at the position, and moves the position past it.

// Saturates.
template<class tUnit> int ReadNumber(const tUnit*& szFormat)
{
    long long llValue = 0;
    for (; '0' <= *szFormat && *szFormat <= '9'; ++szFormat)
        llValue = std::min<long long>(llValue * 10 + (*szFormat - '0'), INT_MAX);
    return static_cast<int>(llValue);
}

// false: no flag stands there
template<class tUnit> bool ReadFlag(const tUnit*& szFormat, sFormatItem& oItem)
{
    switch (*szFormat)
    {
    case '-':
        oItem.bLeft = true;
        break;
    case '+':
        oItem.bPlus = true;
        break;
    case ' ':
        oItem.bSpace = true;
        break;
    case '#':
        ++oItem.nAlternates;
        break;
    case '0':
        oItem.bZero = true;
        break;
    default:
        return false;
    }
    ++szFormat;
    return true;
}

// false: the width is not taken from the list
template<class tUnit> bool ReadListedWidth(const tUnit*& szFormat, CTOVArgumentList& oArguments, sFormatItem& oItem)
{
    if (*szFormat != '*')
        return false;
    ++szFormat;
    oItem.nWidth = oArguments.NextInt();
    return true;
}

template<class tUnit> void ReadPrecision(const tUnit*& szFormat, CTOVArgumentList& oArguments, sFormatItem& oItem)
{
    if (*szFormat != '.')
        return;

    ++szFormat;
    oItem.bHasPrecision = true;
    if (*szFormat == '*')
    {
        ++szFormat;
        oItem.nPrecision = oArguments.NextInt();
    }
    else
    {
        oItem.nPrecision = ReadNumber(szFormat);
    }
}

template<class tUnit> bool IsInt64Modifier(const tUnit* szFormat)
{
    return szFormat[0] == 'I' && szFormat[1] == '6' && szFormat[2] == '4';
}

// I64 h l F L N; false: no such modifier stands there
template<class tUnit> bool ReadModifier(const tUnit*& szFormat, sFormatItem& oItem)
{
    switch (*szFormat)
    {
    case 'h':
        oItem.eModifier = eFormatModifier::Narrow;
        break;
    case 'l':
        oItem.eModifier = eFormatModifier::Wide;
        break;
    case 'I':
        if (!IsInt64Modifier(szFormat))
            return false;
        oItem.eModifier = eFormatModifier::Int64;
        szFormat += 2;
        break;
    case 'F':
    case 'L':
    case 'N':
        break;
    default:
        return false;
    }
    ++szFormat;
    return true;
}

// ll w I32 I j t z; false: no such modifier stands there
template<class tUnit> bool ReadPrintModifier(const tUnit*& szFormat, sFormatItem& oItem)
{
    switch (*szFormat)
    {
    case 'l':
        if (szFormat[1] != 'l')
            return false;
        oItem.eModifier = eFormatModifier::Int64;
        ++szFormat;
        break;
    case 'w':
        oItem.eModifier = eFormatModifier::Wide;
        break;
    case 'I':
        if (IsInt64Modifier(szFormat))
            return false;
        if (szFormat[1] == '3' && szFormat[2] == '2')
            szFormat += 2;
        break;
    case 'j':
    case 't':
    case 'z':
        break;
    default:
        return false;
    }
    ++szFormat;
    return true;
}

// The two readings of a conversion, from after its percent sign to its type. They differ where formats are odd.

// Settled: the measure takes * for a flag, the last of several counts, and a number gives the width only if that is 0.
// It knows one modifier, of I64 h l F L N. A negative width or precision from the list is the caller's to refuse.
template<class tUnit> sFormatItem ReadMeasuredItem(const tUnit*& szFormat, CTOVArgumentList& oArguments)
{
    sFormatItem oItem;
    while (ReadFlag(szFormat, oItem) || ReadListedWidth(szFormat, oArguments, oItem))
    {
    }
    if (oItem.nWidth == 0)
        oItem.nWidth = ReadNumber(szFormat);
    ReadPrecision(szFormat, oArguments, oItem);
    ReadModifier(szFormat, oItem);
    return oItem;
}

// Settled: the print takes one * or number after the flags, a negative width from the list as a width with the flag -,
// and a negative precision from the list as none. It knows all modifiers, any number of them.
template<class tUnit> sFormatItem ReadPrintedItem(const tUnit*& szFormat, CTOVArgumentList& oArguments)
{
    sFormatItem oItem;
    while (ReadFlag(szFormat, oItem))
    {
    }
    if (!ReadListedWidth(szFormat, oArguments, oItem))
        oItem.nWidth = ReadNumber(szFormat);
    if (oItem.nWidth < 0)
    {
        oItem.bLeft = true;
        oItem.nWidth = -std::max(oItem.nWidth, -INT_MAX);
    }
    ReadPrecision(szFormat, oArguments, oItem);
    oItem.bHasPrecision = oItem.bHasPrecision && oItem.nPrecision >= 0;
    while (ReadPrintModifier(szFormat, oItem) || ReadModifier(szFormat, oItem))
    {
    }
    return oItem;
}
} // namespace TOVFormat
} // namespace TOVPlatform
