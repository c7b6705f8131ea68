// Declares how one conversion of a format is read: %[flags][width][.precision][modifier]type. The measuring functions
// use this, and so does every backend with its own printing functions. Internal to the text functions.
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

// Holds the parts of a conversion between its percent sign and its type.
struct sFormatItem
{
    bool bLeft = false;
    bool bPlus = false;
    bool bSpace = false;
    bool bZero = false;
    bool bHasPrecision = false;
    bool bPrintedOtherwise = false; // the print reads the item as another one, and takes other arguments
    int nAlternates = 0;            // how many times the flag # is given
    int nWidth = 0;
    int nPrecision = 0;
    eFormatModifier eModifier = eFormatModifier::None;

    // Whether a character or text is wide; bWideType is the answer for the type without a modifier.
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

// Each of the next functions reads one part at the position, and moves the position past it.

// The value of a run of digits; 0 without digits. Saturates.
template<class tUnit> int ReadNumber(const tUnit*& szFormat)
{
    long long llValue = 0;
    for (; '0' <= *szFormat && *szFormat <= '9'; ++szFormat)
        llValue = std::min<long long>(llValue * 10 + (*szFormat - '0'), INT_MAX);
    return static_cast<int>(llValue);
}

template<class tUnit> void ReadFlags(const tUnit*& szFormat, sFormatItem& oItem)
{
    for (;; ++szFormat)
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
            return;
        }
    }
}

// Returns false if the width is not taken from the list.
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

// What a format is read for.
enum class eFormatUse
{
    Measure,
    Print
};

// Reads one of I64 h l F L N, and for the print also of ll w I32 I j t z. Returns false if there is none.
template<eFormatUse USE, class tUnit> bool ReadModifier(const tUnit*& szFormat, sFormatItem& oItem)
{
    switch (*szFormat)
    {
    case 'h':
        oItem.eModifier = eFormatModifier::Narrow;
        break;
    case 'l':
        oItem.eModifier = eFormatModifier::Wide;
        if (USE == eFormatUse::Print && szFormat[1] == 'l')
        {
            oItem.eModifier = eFormatModifier::Int64;
            ++szFormat;
        }
        break;
    case 'I':
        if (szFormat[1] == '6' && szFormat[2] == '4')
        {
            oItem.eModifier = eFormatModifier::Int64;
            szFormat += 2;
        }
        else if (USE == eFormatUse::Measure)
        {
            return false;
        }
        else if (szFormat[1] == '3' && szFormat[2] == '2')
        {
            szFormat += 2;
        }
        break;
    case 'w':
        if (USE == eFormatUse::Measure)
            return false;
        oItem.eModifier = eFormatModifier::Wide;
        break;
    case 'j':
    case 't':
    case 'z':
        if (USE == eFormatUse::Measure)
            return false;
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

// The two readings of a conversion, which begin after its percent sign and stop at its type. They differ for odd
// formats.

// Settled: the measure reads any number of * among the flags, of which the last gives the width. Only where that is 0,
// a number after them gives the width. It reads one modifier. Width and precision can be negative: the caller refuses
// that.
template<class tUnit> sFormatItem ReadMeasuredItem(const tUnit*& szFormat, CTOVArgumentList& oArguments)
{
    sFormatItem oItem;
    ReadFlags(szFormat, oItem);
    const tUnit* szWidthEnd = nullptr;
    while (ReadListedWidth(szFormat, oArguments, oItem))
    {
        if (szWidthEnd == nullptr)
            szWidthEnd = szFormat;
        ReadFlags(szFormat, oItem);
    }
    if (oItem.nWidth == 0)
        oItem.nWidth = ReadNumber(szFormat);
    oItem.bPrintedOtherwise = szWidthEnd != nullptr && szFormat != szWidthEnd;
    ReadPrecision(szFormat, oArguments, oItem);
    ReadModifier<eFormatUse::Measure>(szFormat, oItem);
    return oItem;
}

// Settled: the print reads one * or one number after the flags, and any number of modifiers, of which the last one that
// gives a size counts. A negative width from the list is a width with the flag -, and a negative precision is none.
template<class tUnit> sFormatItem ReadPrintedItem(const tUnit*& szFormat, CTOVArgumentList& oArguments)
{
    sFormatItem oItem;
    ReadFlags(szFormat, oItem);
    if (!ReadListedWidth(szFormat, oArguments, oItem))
    {
        oItem.nWidth = ReadNumber(szFormat);
    }
    else if (oItem.nWidth < 0)
    {
        oItem.bLeft = true;
        oItem.nWidth = -std::max(oItem.nWidth, -INT_MAX);
    }
    ReadPrecision(szFormat, oArguments, oItem);
    if (oItem.nPrecision < 0)
        oItem.bHasPrecision = false;
    while (ReadModifier<eFormatUse::Print>(szFormat, oItem))
    {
    }
    return oItem;
}
} // namespace TOVFormat
} // namespace TOVPlatform
