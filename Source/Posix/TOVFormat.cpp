#include <TOVPlatform/Backend/TOVFormat.h>

#include <Posix/Text/TOVDecimal.h>
#include <Posix/Text/TOVFormatSink.h>
#include <Posix/Text/TOVMultiByte.h>
#include <TOVPlatform/TOVFormatItem.h>
#include <TOVPlatform/TOVTextRuntime.h>

#include <charconv>
#include <cmath>
#include <iterator>

namespace TOVPlatform
{
namespace Backend
{
namespace
{
using namespace TOVFormat;

constexpr int POINTER_DIGITS = 8;
constexpr int DEFAULT_REAL_PRECISION = 6;
constexpr char NULL_TEXT[] = "(null)";

// The sign or base in front of a number.
struct sPrefix
{
    char szText[2] = {};
    int nLength = 0;

    void Add(char cUnit) { szText[nLength++] = cUnit; }
    void AddSign(const sFormatItem& oItem, bool bNegative)
    {
        if (bNegative)
            Add('-');
        else if (oItem.bPlus)
            Add('+');
        else if (oItem.bSpace)
            Add(' ');
    }
};

namespace Narrow
{
typedef char tUnit;
typedef wchar_t tOtherUnit;
#include <Posix/Text/TOVFormatter.inl>
} // namespace Narrow

namespace Wide
{
typedef wchar_t tUnit;
typedef char tOtherUnit;
#include <Posix/Text/TOVFormatter.inl>
} // namespace Wide
} // namespace

int DecimalPointLength(const char*)
{
    TOVMultiByte::sCharacter<char> oPoint;
    TOVMultiByte::GetDecimalPoint(oPoint);
    return oPoint.nUnits;
}

int DecimalPointLength(const wchar_t*)
{
    TOVMultiByte::sCharacter<wchar_t> oPoint;
    TOVMultiByte::GetDecimalPoint(oPoint);
    return oPoint.nUnits;
}

bool ArePlainReals()
{
    return TOVMultiByte::HasPlainDecimalPoint();
}

int Print(char* szBuffer, int nCapacity, const char* szFormat, va_list pArguments)
{
    return Narrow::CFormatter(szBuffer, nCapacity, szFormat, pArguments).Run().GetStoredLength();
}

int PrintedLength(const char* szFormat, va_list pArguments)
{
    return Narrow::CFormatter(nullptr, 0, szFormat, pArguments).Run().GetTextLength();
}

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
{
    return Wide::CFormatter(szBuffer, nCapacity, szFormat, pArguments).Run().GetStoredLength();
}

int PrintedLength(const wchar_t* szFormat, va_list pArguments)
{
    return Wide::CFormatter(nullptr, 0, szFormat, pArguments).Run().GetTextLength();
}
} // namespace Backend
} // namespace TOVPlatform
