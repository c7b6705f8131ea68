// VSCPrintf, the upper bound that sizes a later print.
#include "Support/TOVAllocationCounter.h"
#include "TOVPlatform/TOVStringApis.h"

#include <cfloat>
#include <cstdint>
#include <type_traits>

namespace
{
struct sBound
{
    const char* szFormat;
    int nBound;
};

struct sFractionBound
{
    const char* szFormat;
    double dValue;
    int nBound;
};

struct sTextBound
{
    const char* szFormat;
    const char* szValue;
    int nBound;
};

template<class TApi> class TOVPlatformBoundTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVPlatformBoundTest, tStringApis, );

// The bound of a format must cover what is printed with the same arguments.
template<class TApi, class TPrinter = TApi, class... TArguments>
void ExpectCovers(const std::string& sFormat, TArguments... oArguments)
{
    CRoom<typename TPrinter::tUnit> oRoom(4096);
    const int nPrinted = TPrinter::SPrintf(oRoom.Get(), CText<typename TPrinter::tUnit>(sFormat).Get(), oArguments...);
    EXPECT_GE(nPrinted, 0) << sFormat;
    EXPECT_LE(nPrinted, BoundOf<TApi>(sFormat, oArguments...)) << sFormat << ": " << oRoom.Text();
}

// All flags, widths and precisions before a conversion.
template<class TApi, class TPrinter = TApi, class TValue>
void ExpectCoversAllForms(const std::string& sConversion, TValue oValue)
{
    for (const char* szFlags : {"", "-", "+", "0", " ", "#", "+#", "-+ #0"})
        for (const char* szWidth : {"", "1", "33", "400"})
            for (const char* szPrecision : {"", ".", ".0", ".3", ".33", ".140", ".350"})
                ExpectCovers<TApi, TPrinter>(std::string("%") + szFlags + szWidth + szPrecision + sConversion, oValue);
}

// The same for an integer, which takes as many units in wide text as in narrow text. It is printed narrow: Wine 8
// writes past its own buffer when it prints a wide integer with a precision above 20.
template<class TApi, class TValue> void ExpectCoversIntegerForms(const std::string& sConversion, TValue oValue)
{
    ExpectCoversAllForms<TApi, sNarrowApi>(sConversion, oValue);
}
} // namespace

TYPED_TEST(TOVPlatformBoundTest, CountsTheWholeRemainderForEveryLiteralUnit)
{
    const sBound aBounds[] = {{"", 0},     {"a", 1},   {"ab", 3},  {"Test", 10}, {"%%", 1},
                              {"%%%%", 4}, {"a%%", 4}, {"%%a", 3}, {"a%%b", 7},  {"1234567890", 55}};
    for (const sBound& oBound : aBounds)
        EXPECT_EQ(oBound.nBound, BoundOf<TypeParam>(oBound.szFormat)) << oBound.szFormat;
}

TYPED_TEST(TOVPlatformBoundTest, CountsLiteralUnitsAroundConversions)
{
    const sBound aBounds[] = {{"%d", 32}, {"a%d", 35}, {"%da", 33}, {"ab%dcd", 6 + 5 + 32 + 2 + 1}, {"%%%d", 3 + 32}};
    for (const sBound& oBound : aBounds)
        EXPECT_EQ(oBound.nBound, BoundOf<TypeParam>(oBound.szFormat, 7)) << oBound.szFormat;
}

TYPED_TEST(TOVPlatformBoundTest, CountsAtLeast32ForIntegers)
{
    for (const char* szFormat :
         {"%d",   "%i",   "%u",      "%o",      "%x",  "%X",  "%5d", "%32d", "%-5d", "%+d", "% d",    "%0d",
          "%05d", "%.5d", "%10.20d", "%16.16u", "%hd", "%ld", "%Fd", "%Ld",  "%Nd",  "%.d", "%-+ 05d"})
        EXPECT_EQ(32, BoundOf<TypeParam>(szFormat, 7)) << szFormat;
}

TYPED_TEST(TOVPlatformBoundTest, AddsWidthAndPrecisionOfIntegers)
{
    const sBound aBounds[] = {{"%33d", 33},    {"%50d", 50},    {"%.40d", 40},   {"%20.20d", 40},
                              {"%50.20x", 70}, {"%-100d", 100}, {"%0100d", 100}, {"%1.32u", 33}};
    for (const sBound& oBound : aBounds)
        EXPECT_EQ(oBound.nBound, BoundOf<TypeParam>(oBound.szFormat, 7)) << oBound.szFormat;
}

TYPED_TEST(TOVPlatformBoundTest, AddsTwoForEveryNumberSign)
{
    EXPECT_EQ(34, BoundOf<TypeParam>("%#x", 7));
    EXPECT_EQ(36, BoundOf<TypeParam>("%##x", 7));
    EXPECT_EQ(36, BoundOf<TypeParam>("%#-#x", 7));
    EXPECT_EQ(52, BoundOf<TypeParam>("%#50x", 7));
}

TYPED_TEST(TOVPlatformBoundTest, Counts64BitIntegersLikeOthers)
{
    EXPECT_EQ(32, BoundOf<TypeParam>("%I64d", 7ll));
    EXPECT_EQ(40, BoundOf<TypeParam>("%40I64u", 7ll));
    EXPECT_EQ(64, BoundOf<TypeParam>("%I64d%d", 7ll, 7));
}

TYPED_TEST(TOVPlatformBoundTest, CountsPointersLikeIntegers)
{
    EXPECT_EQ(32, BoundOf<TypeParam>("%p", static_cast<void*>(nullptr)));
    EXPECT_EQ(40, BoundOf<TypeParam>("%40p", static_cast<void*>(nullptr)));
}

TYPED_TEST(TOVPlatformBoundTest, CountsAtLeast128ForExponents)
{
    for (const char* szFormat : {"%e", "%g", "%G", "%127e", "%.100g", "%64.64G", "%+e"})
        EXPECT_EQ(128, BoundOf<TypeParam>(szFormat, 1.5)) << szFormat;
    EXPECT_EQ(140, BoundOf<TypeParam>("%140e", 1.5));
    EXPECT_EQ(150, BoundOf<TypeParam>("%100.50g", 1.5));
    EXPECT_EQ(130, BoundOf<TypeParam>("%#g", 1.5));
}

// Settled: the text is measured with six more digits than it will be printed with.
TYPED_TEST(TOVPlatformBoundTest, MeasuresFractionsWithSixMoreDigits)
{
    const sFractionBound aBounds[] = {
        {"%f", 1.5, 8},       {"%f", -1.5, 9},          {"%.2f", 1.5, 10},   {"%f", 123456.0, 13},
        {"%20f", 1.5, 20},    {"%.0f", 1.5, 8},         {"%10.0f", 1.5, 10}, {"%5.1f", 1.5, 9},
        {"%f", DBL_MAX, 316}, {"%f", -DBL_MAX, 317},    {"%.10f", 0.0, 18},  {"%lf", 1.5, 8},
        {"%Lf", 1.5, 8},      {"a%fb", 1.5, 4 + 8 + 1}, {"%400f", 1.5, 400}, {"%f", 1e-300, 8},
    };
    for (const sFractionBound& oBound : aBounds)
        EXPECT_EQ(oBound.nBound, BoundOf<TypeParam>(oBound.szFormat, oBound.dValue)) << oBound.szFormat;
}

TYPED_TEST(TOVPlatformBoundTest, CountsTwoForACharacter)
{
    const sBound aBounds[] = {{"%c", 2},   {"%C", 2},   {"%1c", 2},   {"%5c", 5}, {"%.1c", 1},
                              {"%.2c", 2}, {"%.3c", 2}, {"%3.1c", 3}, {"%hc", 2}, {"%lc", 2}};
    for (const sBound& oBound : aBounds)
        EXPECT_EQ(oBound.nBound, BoundOf<TypeParam>(oBound.szFormat, 'A')) << oBound.szFormat;
}

TYPED_TEST(TOVPlatformBoundTest, CountsTheLengthOfATextOfItsOwnWidth)
{
    const sTextBound aBounds[] = {
        {"%s", "hello", 5},    {"%s", "h", 1},        {"%s", "", 1},        {"%3s", "hello", 5},  {"%9s", "hello", 9},
        {"%.3s", "hello", 3},  {"%.5s", "hello", 5},  {"%.9s", "hello", 5}, {"%.0s", "hello", 5}, {"%9.3s", "hello", 9},
        {"%2.3s", "hello", 3}, {"a%sb", "hello", 10}, {"%-9s", "hello", 9}, {"%Fs", "hello", 5},  {"%5s", "", 5},
    };
    for (const sTextBound& oBound : aBounds)
    {
        auto oValue = TypeParam::Text(oBound.szValue);
        EXPECT_EQ(oBound.nBound, BoundOf<TypeParam>(oBound.szFormat, oValue.Get())) << oBound.szFormat;
    }
}

TYPED_TEST(TOVPlatformBoundTest, CountsSixForANullText)
{
    const void* pNull = nullptr;
    EXPECT_EQ(6, BoundOf<TypeParam>("%s", pNull));
    EXPECT_EQ(6, BoundOf<TypeParam>("%S", pNull));
    EXPECT_EQ(4, BoundOf<TypeParam>("%.4s", pNull));
    EXPECT_EQ(8, BoundOf<TypeParam>("%8s", pNull));
}

TEST(TOVPlatformNarrowBoundTest, KnowsNarrowAndWideTexts)
{
    CText<char> oNarrow("narrow");
    CText<wchar_t> oWide("wide text");

    EXPECT_EQ(6, BoundOf<sNarrowApi>("%s", oNarrow.Get()));
    EXPECT_EQ(6, BoundOf<sNarrowApi>("%hs", oNarrow.Get()));
    EXPECT_EQ(6, BoundOf<sNarrowApi>("%hS", oNarrow.Get()));
    EXPECT_EQ(9, BoundOf<sNarrowApi>("%S", oWide.Get()));
    EXPECT_EQ(9, BoundOf<sNarrowApi>("%ls", oWide.Get()));
    EXPECT_EQ(9, BoundOf<sNarrowApi>("%lS", oWide.Get()));
    EXPECT_EQ(4, BoundOf<sNarrowApi>("%.4S", oWide.Get()));
    EXPECT_EQ(1, BoundOf<sNarrowApi>("%ls", CText<wchar_t>("").Get()));
}

TEST(TOVPlatformWideBoundTest, CountsWideTextsWhateverTheModifier)
{
    CText<wchar_t> oWide("wide text");

    EXPECT_EQ(9, BoundOf<sWideApi>("%s", oWide.Get()));
    EXPECT_EQ(9, BoundOf<sWideApi>("%ls", oWide.Get()));
    EXPECT_EQ(9, BoundOf<sWideApi>("%lS", oWide.Get()));
}

TYPED_TEST(TOVPlatformBoundTest, ReadsEveryArgumentInItsPlace)
{
    auto oText = TypeParam::Text("hello");
    EXPECT_EQ(32 + 5, BoundOf<TypeParam>("%d%s", 7, oText.Get()));
    EXPECT_EQ(128 + 5, BoundOf<TypeParam>("%e%s", 1.5, oText.Get()));
    EXPECT_EQ(8 + 5, BoundOf<TypeParam>("%f%s", 1.5, oText.Get()));
    EXPECT_EQ(2 + 5, BoundOf<TypeParam>("%c%s", 'A', oText.Get()));
    EXPECT_EQ(32 + 5, BoundOf<TypeParam>("%p%s", static_cast<void*>(nullptr), oText.Get()));
    EXPECT_EQ(32 + 32 + 32 + 8 + 5, BoundOf<TypeParam>("%d%i%u%f%s", 1, 2, 3, 4.5, oText.Get()));
    EXPECT_EQ(5 + 5 + 5 + 32 + 5 + 5 + 128 + 5,
              BoundOf<TypeParam>("%s%s%s%d%s%s%g%s", oText.Get(), oText.Get(), oText.Get(), 1, oText.Get(), oText.Get(),
                                 1.5, oText.Get()));
}

TEST(TOVPlatformNarrowBoundTest, ReadsTheArgumentBehindA64BitInteger)
{
    EXPECT_EQ(32 + 5, BoundOf<sNarrowApi>("%I64d%s", 7000000000ll, CText<char>("hello").Get()));
}

TYPED_TEST(TOVPlatformBoundTest, AStoredCountTakesNoRoomButItsArgument)
{
    int nCount = 0;
    EXPECT_EQ(0, BoundOf<TypeParam>("%n", &nCount));
    EXPECT_EQ(5, BoundOf<TypeParam>("%n%s", &nCount, TypeParam::Text("hello").Get()));
    EXPECT_EQ(0, nCount);
}

TYPED_TEST(TOVPlatformBoundTest, TakesWidthAndPrecisionFromTheArguments)
{
    EXPECT_EQ(60, BoundOf<TypeParam>("%*d", 60, 7));
    EXPECT_EQ(32, BoundOf<TypeParam>("%*d", 3, 7));
    EXPECT_EQ(70, BoundOf<TypeParam>("%*.*d", 50, 20, 7));
    EXPECT_EQ(3, BoundOf<TypeParam>("%.*s", 3, TypeParam::Text("hello").Get()));
    EXPECT_EQ(9, BoundOf<TypeParam>("%-*s", 9, TypeParam::Text("hello").Get()));
    EXPECT_EQ(12, BoundOf<TypeParam>("%*.*f", 12, 1, 1.5));
}

TYPED_TEST(TOVPlatformBoundTest, ReadsAWidthBehindAWidthOfZero)
{
    EXPECT_EQ(40, BoundOf<TypeParam>("%*40d", 0, 7));
}

// The print reads one star, and so takes other arguments for the next conversions than the measure does.
TYPED_TEST(TOVPlatformBoundTest, CoversTheConversionsAfterOneThatIsReadInTwoWays)
{
    ExpectCovers<TypeParam>("%***d|%*d", 1, 2000, 1, 1, 1, 1);
    ExpectCovers<TypeParam>("%**d|%*d", 1, 2000, 1, 1, 1);
    ExpectCovers<TypeParam>("%*-d|%*d", 1, 2000, 1, 1, 1);
    ExpectCovers<TypeParam>("%*#*d%d%*d|", 1, 2, 2000, 1, 1, 1, 1);
    ExpectCovers<TypeParam>("%*5d|%*d", 0, 2000, 1, 1, 1);
    ExpectCovers<TypeParam>("%*5d%s", 0, TypeParam::Text(std::string(2000, 'x')).Get(), TypeParam::Text("y").Get());
}

TYPED_TEST(TOVPlatformBoundTest, RefusesANegativeWidth)
{
    EXPECT_CHECK_AT(STRING_SOURCE, "nWidth >= 0", BoundOf<TypeParam>("%*d", -1, 7));
}

TYPED_TEST(TOVPlatformBoundTest, RefusesANegativePrecision)
{
    EXPECT_CHECK_AT(STRING_SOURCE, "nPrecision >= 0", BoundOf<TypeParam>("%.*d", -1, 7));
}

TYPED_TEST(TOVPlatformBoundTest, RefusesUnknownConversions)
{
    for (const char* szFormat :
         {"%", "100%", "%5", "%.3", "%-", "%l", "%I64", "%E", "%y", "%a", "%A", "%q", "%Z", "ab%!", "%5.2k", "% %"})
        EXPECT_CHECK_AT(STRING_SOURCE, "FALSE", BoundOf<TypeParam>(szFormat, 1.5));
}

TYPED_TEST(TOVPlatformBoundTest, RefusesANullFormat)
{
    const typename TypeParam::tUnit* pNull = nullptr;
    EXPECT_CHECK_AT(STRING_SOURCE, "szFormat != NULL", VSCPrintf<TypeParam>(pNull));
}

TYPED_TEST(TOVPlatformBoundTest, CoversIntegersInAllForms)
{
    for (const char* szConversion : {"d", "i", "u", "o", "x", "X", "hd", "ld"})
    {
        ExpectCoversIntegerForms<TypeParam>(szConversion, 0);
        ExpectCoversIntegerForms<TypeParam>(szConversion, -1);
        ExpectCoversIntegerForms<TypeParam>(szConversion, -2147483647 - 1);
    }
    for (const char* szConversion : {"I64d", "I64u", "I64o", "I64x"})
    {
        ExpectCoversIntegerForms<TypeParam>(szConversion, -1ll);
        ExpectCoversIntegerForms<TypeParam>(szConversion, -9223372036854775807ll);
    }
}

TYPED_TEST(TOVPlatformBoundTest, CoversFractionsInAllForms)
{
    for (const char* szConversion : {"f", "e", "g", "G"})
        for (const double dValue : {0.0, 1.5, -1.5, 1e-300, DBL_MAX, -DBL_MAX})
            ExpectCoversAllForms<TypeParam>(szConversion, dValue);
}

TYPED_TEST(TOVPlatformBoundTest, CoversTextsInAllForms)
{
    typedef std::conditional_t<TypeParam::IS_NARROW, wchar_t, char> tOther;
    for (const char* szValue : {"", "a", "hello, world"})
    {
        ExpectCoversAllForms<TypeParam>("s", TypeParam::Text(szValue).Get());
        ExpectCoversAllForms<TypeParam>("S", CText<tOther>(szValue).Get());
        ExpectCoversAllForms<TypeParam>("hs", CText<char>(szValue).Get());
        ExpectCoversAllForms<TypeParam>("hS", CText<char>(szValue).Get());
        ExpectCoversAllForms<TypeParam>("ls", CText<wchar_t>(szValue).Get());
        ExpectCoversAllForms<TypeParam>("lS", CText<wchar_t>(szValue).Get());
    }
    ExpectCoversAllForms<TypeParam>("s", static_cast<void*>(nullptr));
    ExpectCoversAllForms<TypeParam>("S", static_cast<void*>(nullptr));
}

TYPED_TEST(TOVPlatformBoundTest, CoversCharactersAndPointersInAllForms)
{
    for (const char* szConversion : {"c", "C", "hc", "lc"})
        ExpectCoversAllForms<TypeParam>(szConversion, static_cast<int>('A'));
    ExpectCoversAllForms<TypeParam>("p", reinterpret_cast<void*>(~std::uintptr_t(0)));
}

TYPED_TEST(TOVPlatformBoundTest, CoversATextBehindA64BitInteger)
{
    auto oText = TypeParam::Text("a text that is longer than forty units in all, so that no luck helps");
    ExpectCovers<TypeParam>("%I64d%s", 7ll, oText.Get());
    ExpectCovers<TypeParam>("%I64d%s%I64d%s", -1ll, oText.Get(), 5000000000ll, oText.Get());
}

TYPED_TEST(TOVPlatformBoundTest, GivesUpBeyondTheLargestNumber)
{
    EXPECT_EQ(2147483646, BoundOf<TypeParam>("%2147483646d", 1)); // a terminator still counts
    EXPECT_EQ(-1, BoundOf<TypeParam>("%2147483647d", 1));
    EXPECT_EQ(-1, BoundOf<TypeParam>("%2147483647d%2147483647d", 1, 2));
    EXPECT_EQ(-1, BoundOf<TypeParam>("x%2147483646d", 1));
}

TYPED_TEST(TOVPlatformBoundTest, CoversLongLiterals)
{
    const std::string sLong(100000, 'x');
    EXPECT_LE(100000, BoundOf<TypeParam>(sLong));
    EXPECT_EQ(20000 * 20001 / 2, BoundOf<TypeParam>(std::string(20000, 'x')));
}

TYPED_TEST(TOVPlatformBoundTest, AllocatesNothingWithoutFractions)
{
    auto oFormat = TypeParam::Text("a%d%s%e%I64d%p");
    auto oText = TypeParam::Text("hello");
    CAllocationCounter oCounter;

    VSCPrintf<TypeParam>(oFormat, 7, oText.Get(), 1.5, 7ll, oText.Get());
    const unsigned long ulTaken = oCounter.Taken();

    EXPECT_EQ(0ul, ulTaken);
}
