#include <TOVPlatform/TOVStringMeasure.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/Backend/TOVFormat.h>
#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVFormatItem.h>
#include <TOVPlatform/TOVTextRuntime.h>

#include <algorithm>
#include <climits>

// Both platforms share these functions; a failed check names the platform's source.
#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE TOV_PLATFORM_SOURCE("TOVString")

namespace TOVPlatform
{
namespace
{
using namespace TOVFormat;

// Sizes that a format is given without a look at the value.
constexpr long long CHARACTER_SIZE = 2;
constexpr long long NULL_TEXT_SIZE = 6;
constexpr long long INTEGER_SIZE = 32;
constexpr long long REAL_SIZE = 128;
constexpr long long ALTERNATE_FORM_SIZE = 2;
constexpr int FIXED_EXTRA_DIGITS = 6;

// What an exponent form has around its digits: sign, point, first digit and an exponent of up to five units.
constexpr long long REAL_FRAME_SIZE = 9;

// A double has at most this many decimal digits after the point; all digits after those are zeros.
constexpr long long MAX_REAL_DIGITS = 1100;

constexpr long long MAX_BOUND = INT_MAX - 1; // the terminator must be countable as well

using TOVAscii::IsAscii;

// The size of a character or text, of llLength units, in its field.
long long FieldSize(const sFormatItem& oItem, long long llLength)
{
    return std::max<long long>(std::min<long long>(llLength, oItem.MeasuredLimit()), oItem.nWidth);
}

// The measure is written once for both widths, and differs only in tUnit.
namespace Narrow
{
typedef char tUnit;
#include <TOVPlatform/TOVStringMeasure.inl>
} // namespace Narrow

namespace Wide
{
typedef wchar_t tUnit;
#include <TOVPlatform/TOVStringMeasure.inl>
} // namespace Wide
} // namespace

int MeasureFormat(const char* szFormat, va_list pArguments)
{
    return Narrow::MeasureText(szFormat, pArguments);
}

int MeasureFormat(const wchar_t* szFormat, va_list pArguments)
{
    return Wide::MeasureText(szFormat, pArguments);
}
} // namespace TOVPlatform
