#include <Posix/TOVFormatItem.h>

#include <algorithm>
#include <climits>

namespace TOVPlatform
{
namespace TOVFormat
{
namespace
{
// Value of the digits at the position, which moves behind them. Saturates.
template<class T> int ReadNumber(const T*& szFormat)
{
    long long llValue = 0;
    for (; '0' <= *szFormat && *szFormat <= '9'; ++szFormat)
        llValue = std::min<long long>(llValue * 10 + (*szFormat - '0'), INT_MAX);
    return static_cast<int>(llValue);
}

template<class T> void ReadFlags(const T*& szFormat, sFormatItem& oItem)
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
            oItem.bAlternate = true;
            break;
        case '0':
            oItem.bZero = true;
            break;
        default:
            return;
        }
    }
}

template<class T> void ReadWidth(const T*& szFormat, CTOVArgumentList& oArguments, sFormatItem& oItem)
{
    if (*szFormat != '*')
    {
        oItem.nWidth = ReadNumber(szFormat);
        return;
    }

    ++szFormat;
    const long long llWidth = oArguments.NextInt();
    oItem.bLeft = oItem.bLeft || llWidth < 0;
    oItem.nWidth = static_cast<int>(std::min<long long>(llWidth < 0 ? -llWidth : llWidth, INT_MAX));
}

template<class T> void ReadPrecision(const T*& szFormat, CTOVArgumentList& oArguments, sFormatItem& oItem)
{
    if (*szFormat != '.')
        return;

    ++szFormat;
    if (*szFormat == '*')
    {
        ++szFormat;
        oItem.nPrecision = std::max<int>(oArguments.NextInt(), NO_PRECISION);
    }
    else
    {
        oItem.nPrecision = ReadNumber(szFormat);
    }
}

// Stops at the last unit of a modifier; false if there is none.
template<class T> bool ReadModifier(const T*& szFormat, sFormatItem& oItem)
{
    switch (*szFormat)
    {
    case 'h':
        oItem.eSize = eFormatModifier::Narrow;
        return true;
    case 'w':
        oItem.eSize = eFormatModifier::Wide;
        return true;
    case 'l':
        oItem.eSize = eFormatModifier::Wide;
        if (szFormat[1] == 'l')
        {
            oItem.eSize = eFormatModifier::Int64;
            ++szFormat;
        }
        return true;
    case 'I':
        if (szFormat[1] == '6' && szFormat[2] == '4')
        {
            oItem.eSize = eFormatModifier::Int64;
            szFormat += 2;
        }
        else if (szFormat[1] == '3' && szFormat[2] == '2')
        {
            szFormat += 2;
        }
        return true;
    case 'F':
    case 'L':
    case 'N':
    case 'j':
    case 't':
    case 'z':
        return true;
    default:
        return false;
    }
}
} // namespace

template<class T> sFormatItem ReadFormatItem(const T*& szFormat, CTOVArgumentList& oArguments)
{
    sFormatItem oItem;
    ReadFlags(szFormat, oItem);
    ReadWidth(szFormat, oArguments, oItem);
    ReadPrecision(szFormat, oArguments, oItem);
    while (ReadModifier(szFormat, oItem))
        ++szFormat;
    return oItem;
}

template sFormatItem ReadFormatItem(const char*&, CTOVArgumentList&);
template sFormatItem ReadFormatItem(const wchar_t*&, CTOVArgumentList&);
} // namespace TOVFormat
} // namespace TOVPlatform
