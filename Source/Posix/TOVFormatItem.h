// One conversion of a format, as it stands in the text. Internal to the Posix text functions.
#pragma once

#include <TOVPlatform/TOVStringArguments.h>

namespace TOVPlatform
{
namespace TOVFormat
{
constexpr int NO_PRECISION = -1;

enum class eFormatModifier
{
    None,
    Narrow,
    Wide,
    Int64
};

// What stands between the percent sign and the type.
struct sFormatItem
{
    bool bLeft = false;
    bool bPlus = false;
    bool bSpace = false;
    bool bAlternate = false;
    bool bZero = false;
    int nWidth = 0;
    int nPrecision = NO_PRECISION;
    eFormatModifier eSize = eFormatModifier::None;
};

// Reads an item from behind its percent sign, and moves the format to the type. Numbers saturate; a negative width from
// the list means left, a negative precision none. Instantiated for both widths.
template<class T> sFormatItem ReadFormatItem(const T*& szFormat, CTOVArgumentList& oArguments);
} // namespace TOVFormat
} // namespace TOVPlatform
