#include "TOVPlatform/TOVStringApis.h"

#include <cctype>
#include <cstdint>
#include <type_traits>

namespace
{
constexpr char NO_BUFFER[] = "szBuffer != NULL";
constexpr char NO_FORMAT[] = "szFormat != NULL";
constexpr char NO_COUNT[] = "nCount > 0";

struct sIntegerPrint
{
    const char* szFormat;
    int nValue;
    const char* szText;
};

struct sFractionPrint
{
    const char* szFormat;
    double dValue;
    const char* szText;
};

struct sTextPrint
{
    const char* szFormat;
    const char* szValue;
    const char* szText;
};

struct sFit
{
    const char* szText;
    int nCount;
    int nResult; // -1 for "negative"
    const char* szShown;
};

// One runtime writes exponents of three digits, the other of two at least: a leading zero does not count.
std::string WithShortExponent(std::string sText)
{
    const std::size_t nExponent = sText.find_first_of("eE");
    if (nExponent != std::string::npos && sText.size() >= nExponent + 5 && sText[nExponent + 2] == '0' &&
        std::isdigit(static_cast<unsigned char>(sText[nExponent + 4])))
        sText.erase(nExponent + 2, 1);
    return sText;
}

template<class TApi> class TOVPlatformPrintTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVPlatformPrintTest, tStringApis, );
} // namespace

TYPED_TEST(TOVPlatformPrintTest, PrintsIntegers)
{
    const sIntegerPrint aPrints[] = {
        {"%d", 42, "42"},
        {"%i", -42, "-42"},
        {"%d", 0, "0"},
        {"%d", -2147483647 - 1, "-2147483648"},
        {"%5d|", 42, "   42|"},
        {"%-5d|", 42, "42   |"},
        {"%05d", 42, "00042"},
        {"%05d", -42, "-0042"},
        {"%+d", 42, "+42"},
        {"%+d", -42, "-42"},
        {"% d", 42, " 42"},
        {"%.4d", 42, "0042"},
        {"%8.4d|", -42, "   -0042|"},
        {"%-8.4d|", 42, "0042    |"},
        {"%2d", 12345, "12345"},
        {"%u", -1, "4294967295"},
        {"%x", 0xBEEF, "beef"},
        {"%X", 0xBEEF, "BEEF"},
        {"%#x", 0xBEEF, "0xbeef"},
        {"%#X", 0xBEEF, "0XBEEF"},
        {"%#x", 0, "0"},
        {"%o", 8, "10"},
        {"%#o", 8, "010"},
        {"%08x", 0xBEEF, "0000beef"},
        {"%x", -1, "ffffffff"},
        {"%hd", 0x12345, "9029"},
        {"%hd", 0xFFFF, "-1"},
        {"%hu", -1, "65535"},
        {"%hx", 0x1ABCD, "abcd"},
        {"a%db", 1, "a1b"},
        {"%%%d%%", 7, "%7%"},
    };
    for (const sIntegerPrint& oPrint : aPrints)
        EXPECT_EQ(oPrint.szText, Print<TypeParam>(oPrint.szFormat, oPrint.nValue)) << oPrint.szFormat;
}

TYPED_TEST(TOVPlatformPrintTest, PrintsLongsWith32Bits)
{
    EXPECT_EQ("-1", Print<TypeParam>("%ld", -1l));
    EXPECT_EQ("4294967295", Print<TypeParam>("%lu", 4294967295ul));
    EXPECT_EQ("ffffffff", Print<TypeParam>("%lx", -1l));
    EXPECT_EQ("-2147483648", Print<TypeParam>("%ld", -2147483647l - 1));
}

TYPED_TEST(TOVPlatformPrintTest, Prints64BitIntegers)
{
    EXPECT_EQ("-1234567890123", Print<TypeParam>("%I64d", -1234567890123ll));
    EXPECT_EQ("18446744073709551615", Print<TypeParam>("%I64u", ~0ull));
    EXPECT_EQ("fedcba9876543210", Print<TypeParam>("%I64x", 0xFEDCBA9876543210ull));
    EXPECT_EQ("FEDCBA9876543210", Print<TypeParam>("%I64X", 0xFEDCBA9876543210ull));
    EXPECT_EQ("[     5000000000]", Print<TypeParam>("[%15I64d]", 5000000000ll));
    EXPECT_EQ("5000000000 7", Print<TypeParam>("%I64d %d", 5000000000ll, 7));
}

TYPED_TEST(TOVPlatformPrintTest, PrintsFractions)
{
    const sFractionPrint aPrints[] = {
        {"%f", 1.5, "1.500000"},
        {"%f", -0.25, "-0.250000"},
        {"%.2f", 3.14159, "3.14"},
        {"%8.3f|", 3.14159, "   3.142|"},
        {"%-8.1f|", 2.26, "2.3     |"},
        {"%+.1f", 1.5, "+1.5"},
        {"%08.2f", -1.5, "-0001.50"},
        {"%.0f", 7.0, "7"},
        {"%#.0f", 7.0, "7."},
        {"%f", 0.0, "0.000000"},
        {"%e", 12345.678, "1.234568e+04"},
        {"%E", 0.00012, "1.200000E-04"},
        {"%.2e", 1.0, "1.00e+00"},
        {"%g", 0.0001, "0.0001"},
        {"%g", 100000.0, "100000"},
        {"%g", 1e10, "1e+10"},
        {"%G", 1e-10, "1E-10"},
        {"%g", 1.5, "1.5"},
        {"%#g", 1.5, "1.50000"},
        {"%.3g", 1234.0, "1.23e+03"},
        {"%e", 1e300, "1.000000e+300"},
    };
    for (const sFractionPrint& oPrint : aPrints)
        EXPECT_EQ(oPrint.szText, WithShortExponent(Print<TypeParam>(oPrint.szFormat, oPrint.dValue)))
            << oPrint.szFormat;
}

TYPED_TEST(TOVPlatformPrintTest, PrintsCharacters)
{
    EXPECT_EQ("A", Print<TypeParam>("%c", 'A'));
    EXPECT_EQ("    A", Print<TypeParam>("%5c", 'A'));
    EXPECT_EQ("A  |", Print<TypeParam>("%-3c|", 'A'));
    EXPECT_EQ("A", Print<TypeParam>("%C", 'A'));
    EXPECT_EQ("A", Print<TypeParam>("%hc", 'A'));
    EXPECT_EQ("A", Print<TypeParam>("%lc", L'A'));
}

TYPED_TEST(TOVPlatformPrintTest, PrintsTextOfItsOwnWidth)
{
    const sTextPrint aPrints[] = {
        {"%s", "hello", "hello"},       {"%s", "", ""},
        {"%8s|", "hello", "   hello|"}, {"%-8s|", "hello", "hello   |"},
        {"%.2s", "hello", "he"},        {"%.9s", "hello", "hello"},
        {"%4.1s|", "hello", "   h|"},   {"<%s>", "%d%s", "<%d%s>"},
        {"%2s", "hello", "hello"},      {"%.0s|", "hello", "|"},
    };
    for (const sTextPrint& oPrint : aPrints)
    {
        auto oValue = TypeParam::Text(oPrint.szValue);
        EXPECT_EQ(oPrint.szText, Print<TypeParam>(oPrint.szFormat, oValue.Get())) << oPrint.szFormat;
    }
}

TYPED_TEST(TOVPlatformPrintTest, PrintsTextOfTheOtherWidth)
{
    typedef std::conditional_t<TypeParam::IS_NARROW, wchar_t, char> tOther;
    const sTextPrint aPrints[] = {{"%S", "hello", "hello"},
                                  {"%S", "", ""},
                                  {"%8S|", "hello", "   hello|"},
                                  {"%.2S", "hello", "he"},
                                  {"%-7S|", "hi", "hi     |"}};
    for (const sTextPrint& oPrint : aPrints)
    {
        CText<tOther> oValue(oPrint.szValue);
        EXPECT_EQ(oPrint.szText, Print<TypeParam>(oPrint.szFormat, oValue.Get())) << oPrint.szFormat;
    }
}

TYPED_TEST(TOVPlatformPrintTest, PrintsTextOfTheWidthThatTheModifierNames)
{
    EXPECT_EQ("narrow", Print<TypeParam>("%hs", CText<char>("narrow").Get()));
    EXPECT_EQ("narrow", Print<TypeParam>("%hS", CText<char>("narrow").Get()));
    EXPECT_EQ("wide", Print<TypeParam>("%ls", CText<wchar_t>("wide").Get()));
    EXPECT_EQ("wide", Print<TypeParam>("%lS", CText<wchar_t>("wide").Get()));
    EXPECT_EQ("   narrow wi",
              Print<TypeParam>("%9hs %.2ls", CText<char>("narrow").Get(), CText<wchar_t>("wide").Get()));
}

TYPED_TEST(TOVPlatformPrintTest, PrintsANullText)
{
    const void* pNull = nullptr;
    EXPECT_EQ("(null)", Print<TypeParam>("%s", pNull));
    EXPECT_EQ("(null)", Print<TypeParam>("%S", pNull));
    EXPECT_EQ("(null)", Print<TypeParam>("%hs", pNull));
    EXPECT_EQ("(null)", Print<TypeParam>("%ls", pNull));
    EXPECT_EQ("  (null)", Print<TypeParam>("%8s", pNull));
}

TYPED_TEST(TOVPlatformPrintTest, PrintsAPointerInUpperCaseWithoutPrefix)
{
    const std::string sPointer = Print<TypeParam>("%p", reinterpret_cast<void*>(std::uintptr_t(0x00ABCDEF)));

    EXPECT_EQ(0u, sPointer.size() % 8) << sPointer;
    EXPECT_EQ("00ABCDEF", sPointer.substr(sPointer.size() - 8));
    EXPECT_EQ(std::string::npos, sPointer.substr(0, sPointer.size() - 8).find_first_not_of('0'));
}

TYPED_TEST(TOVPlatformPrintTest, TakesWidthAndPrecisionFromTheArguments)
{
    EXPECT_EQ("    42", Print<TypeParam>("%*d", 6, 42));
    EXPECT_EQ("42    |", Print<TypeParam>("%*d|", -6, 42));
    EXPECT_EQ("  0042", Print<TypeParam>("%*.*d", 6, 4, 42));
    EXPECT_EQ("he", Print<TypeParam>("%.*s", 2, TypeParam::Text("hello").Get()));
    EXPECT_EQ("   1.25", Print<TypeParam>("%*.*f", 7, 2, 1.25));
}

TYPED_TEST(TOVPlatformPrintTest, PrintsManyArgumentsOfAllKinds)
{
    const std::string sText =
        Print<TypeParam>("%d %f %s %I64d %c %f %d %d %d %d %s %f", 1, 2.5, TypeParam::Text("three").Get(),
                         4000000000000ll, '5', 6.5, 7, 8, 9, 10, TypeParam::Text("eleven").Get(), 12.5);
    EXPECT_EQ("1 2.500000 three 4000000000000 5 6.500000 7 8 9 10 eleven 12.500000", sText);
}

TYPED_TEST(TOVPlatformPrintTest, StoresTheCountSoFar)
{
    int nCount = -1;

    EXPECT_EQ("abc42", Print<TypeParam>("abc%n%d", &nCount, 42));

    EXPECT_EQ(3, nCount);
}

TYPED_TEST(TOVPlatformPrintTest, PrintsLongTextsWhole)
{
    const std::string sLong(3000, 'x');
    EXPECT_EQ(sLong + "!", Print<TypeParam>("%s!", TypeParam::Text(sLong).Get()));
    EXPECT_EQ(std::string(2999, ' ') + "7", Print<TypeParam>("%3000d", 7));
}

TYPED_TEST(TOVPlatformPrintTest, AnEmptyFormatWritesTheTerminatorAlone)
{
    auto oRoom = TypeParam::Room(2);

    EXPECT_EQ(0, TypeParam::SPrintf(oRoom.Get(), TypeParam::Text("").Get()));

    EXPECT_EQ("0#", oRoom.Shown());
}

TYPED_TEST(TOVPlatformPrintTest, PrintsFromAnArgumentList)
{
    auto oRoom = TypeParam::Room(12);
    auto oFormat = TypeParam::Text("%d-%s");
    auto oValue = TypeParam::Text("two");

    EXPECT_EQ(5, VSPrintf<TypeParam>(oRoom, oFormat, 1, oValue.Get()));

    EXPECT_EQ("1-two0######", oRoom.Shown());
}

// Settled: an exact fit has no terminator, and neither has a text that does not fit.
TYPED_TEST(TOVPlatformPrintTest, TerminatesACountedPrintOnlyIfThereIsRoom)
{
    const sFit aFits[] = {
        {"hello", 1, -1, "h#######"}, {"hello", 4, -1, "hell####"},        {"hello", 5, 5, "hello###"},
        {"hello", 6, 5, "hello0##"},  {"hello", 8, 5, "hello0##"},         {"", 1, 0, "0#######"},
        {"h", 1, 1, "h#######"},      {"hello, world", 7, -1, "hello, #"},
    };
    for (const sFit& oFit : aFits)
    {
        auto oFormat = TypeParam::Text("%s");
        auto oValue = TypeParam::Text(oFit.szText);
        auto oRoom = TypeParam::Room(8);
        auto oListRoom = TypeParam::Room(8);
        const int nResult = TypeParam::SNPrintf(oRoom.Get(), oFit.nCount, oFormat.Get(), oValue.Get());
        const int nListResult = VSNPrintf<TypeParam>(oListRoom, oFit.nCount, oFormat, oValue.Get());

        EXPECT_EQ(oFit.nResult, nResult < 0 ? -1 : nResult) << oFit.szText << " in " << oFit.nCount;
        EXPECT_EQ(oFit.szShown, oRoom.Shown()) << oFit.szText << " in " << oFit.nCount;
        EXPECT_EQ(nResult, nListResult);
        EXPECT_EQ(oRoom.Shown(), oListRoom.Shown());
    }
}

TYPED_TEST(TOVPlatformPrintTest, ACountedPrintOfNumbersStopsAnywhere)
{
    for (int nCount = 1; nCount <= 9; ++nCount)
    {
        auto oRoom = TypeParam::Room(12);
        const int nResult = TypeParam::SNPrintf(oRoom.Get(), nCount, TypeParam::Text("%5d%.2f").Get(), 42, 1.25);
        const std::string sWhole = "   421.25";
        EXPECT_EQ(nCount < 9, nResult < 0) << nCount;
        EXPECT_EQ(sWhole.substr(0, static_cast<std::size_t>(nCount)) +
                      std::string(12 - static_cast<std::size_t>(nCount), '#'),
                  oRoom.Shown());
    }
}

// A runtime may return a small length for a text that it has cut off inside a field.
TYPED_TEST(TOVPlatformPrintTest, ACountedPrintThatStopsInsideAFieldIsNegative)
{
    for (const char* szFormat : {"%-9c", "ab%-9c", "%9c", "%-9d", "%-9s", "ab%.7d", "cc%+9.7d"})
    {
        auto oFormat = TypeParam::Text(szFormat);
        auto oText = TypeParam::Text("x");
        const auto fnPrint = [&](int nCount, auto* pRoom) {
            return std::string(szFormat).back() == 's'
                       ? TypeParam::SNPrintf(pRoom, nCount, oFormat.Get(), oText.Get())
                       : TypeParam::SNPrintf(pRoom, nCount, oFormat.Get(), static_cast<int>('x'));
        };
        auto oWhole = TypeParam::Room(32);
        const int nLength = fnPrint(32, oWhole.Get());
        ASSERT_LE(9, nLength) << szFormat;
        for (int nCount = 1; nCount < nLength; ++nCount)
        {
            auto oRoom = TypeParam::Room(32);
            const std::size_t nUnits = static_cast<std::size_t>(nCount);
            EXPECT_EQ(-1, fnPrint(nCount, oRoom.Get())) << szFormat << " in " << nCount;
            EXPECT_EQ(oWhole.Text().substr(0, nUnits) + std::string(32 - nUnits, '#'), oRoom.Shown());
        }
    }
}

// The character's own zero stands where a terminator would.
TYPED_TEST(TOVPlatformPrintTest, ACountedPrintThatStopsAfterAZeroCharacterIsNegative)
{
    for (const int nCount : {1, 2})
    {
        auto oRoom = TypeParam::Room(4);
        EXPECT_EQ(-1, TypeParam::SNPrintf(oRoom.Get(), nCount, TypeParam::Text("%-3c").Get(), 0));
        EXPECT_EQ(std::string("0 ##").substr(0, static_cast<std::size_t>(nCount)) +
                      std::string(4 - static_cast<std::size_t>(nCount), '#'),
                  oRoom.Shown());
    }
}

// A runtime may write the digits past the end of a block on the heap.
TYPED_TEST(TOVPlatformPrintTest, PrintsIntegersOfManyDigits)
{
    for (int nDigits = 20; nDigits < 400; nDigits += 7)
    {
        const std::size_t nLength = static_cast<std::size_t>(nDigits);
        const std::string sZeros(nLength - 2, '0');
        auto oRoom = TypeParam::Room(500);
        EXPECT_EQ(nDigits, TypeParam::SPrintf(oRoom.Get(), TypeParam::Text("%.*d").Get(), nDigits, 42));
        EXPECT_EQ(sZeros + "42", oRoom.Text());
        EXPECT_EQ(nDigits + 1, TypeParam::SNPrintf(oRoom.Get(), 500, TypeParam::Text("%+.*d").Get(), nDigits, 42));
        EXPECT_EQ("+" + sZeros + "42", oRoom.Text());
        EXPECT_EQ(nDigits + 3, TypeParam::SPrintf(oRoom.Get(), TypeParam::Text("%-*.*xabc").Get(), nDigits, 2, 42));
        EXPECT_EQ("2a" + std::string(nLength - 2, ' ') + "abc", oRoom.Text());
        EXPECT_EQ(nDigits, TypeParam::SNPrintf(oRoom.Get(), 500, TypeParam::Text("%*I64d").Get(), nDigits,
                                               -1234567890123456789LL));
        EXPECT_EQ(std::string(nLength - 20, ' ') + "-1234567890123456789", oRoom.Text());
        EXPECT_EQ(-1, TypeParam::SNPrintf(oRoom.Get(), 3, TypeParam::Text("a%.*d").Get(), nDigits, 42));
    }
}

TYPED_TEST(TOVPlatformPrintTest, PrintsEverythingBesideAnIntegerOfManyDigits)
{
    auto oRoom = TypeParam::Room(200);
    auto oText = TypeParam::Text("text");
    int nStored = 0;
    const int nLength = TypeParam::SPrintf(
        oRoom.Get(), TypeParam::Text("%c|%5s|%-3.1f|%hd|%u|%X|%030o|%n%%|%*.*d|%hu|%.2s|%#x|%i%q").Get(), 'c',
        oText.Get(), 1.25, 0x1FFFF, -1, 0xABC, 8, &nStored, -25, -1, -7, -1, oText.Get(), 16, 1);
    EXPECT_EQ(
        "c| text|1.3|-1|4294967295|ABC|000000000000000000000000000010|%|-7                       |65535|te|0x10|1q",
        oRoom.Text());
    EXPECT_EQ(nLength, static_cast<int>(oRoom.Text().size()));
    EXPECT_EQ(61, nStored);
}

TYPED_TEST(TOVPlatformPrintTest, RefusesNull)
{
    auto oBuffer = TypeParam::Text("...");
    auto oFormat = TypeParam::Text("x");
    typename TypeParam::tUnit* pNull = nullptr;

    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, TypeParam::SPrintf(pNull, oFormat.Get()));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_FORMAT, TypeParam::SPrintf(oBuffer.Get(), pNull));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, TypeParam::SPrintf(pNull, pNull));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, VSPrintf<TypeParam>(pNull, oFormat));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_FORMAT, VSPrintf<TypeParam>(oBuffer, pNull));
    EXPECT_EQ(0, TypeParam::Compare(oBuffer.Get(), TypeParam::Text("...")));
    EXPECT_EQ(0, TypeParam::Compare(oFormat.Get(), TypeParam::Text("x")));
}

TYPED_TEST(TOVPlatformPrintTest, CountedPrintsRefuseNullAndNothing)
{
    auto oBuffer = TypeParam::Text("...");
    auto oFormat = TypeParam::Text("x");
    typename TypeParam::tUnit* pNull = nullptr;

    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, TypeParam::SNPrintf(pNull, 20, oFormat.Get()));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, TypeParam::SNPrintf(oBuffer.Get(), 0, oFormat.Get()));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, TypeParam::SNPrintf(oBuffer.Get(), -1, oFormat.Get()));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_FORMAT, TypeParam::SNPrintf(oBuffer.Get(), 20, pNull));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, TypeParam::SNPrintf(pNull, 0, pNull));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, TypeParam::SNPrintf(oBuffer.Get(), 0, pNull));

    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, VSNPrintf<TypeParam>(pNull, 20, oFormat));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, VSNPrintf<TypeParam>(oBuffer, 0, oFormat));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_FORMAT, VSNPrintf<TypeParam>(oBuffer, 20, pNull));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_BUFFER, VSNPrintf<TypeParam>(pNull, 0, pNull));
    EXPECT_CHECK_AT(STRING_SOURCE, NO_COUNT, VSNPrintf<TypeParam>(oBuffer, 0, pNull));
    EXPECT_EQ(0, TypeParam::Compare(oBuffer.Get(), TypeParam::Text("...")));
    EXPECT_EQ(0, TypeParam::Compare(oFormat.Get(), TypeParam::Text("x")));
}

TYPED_TEST(TOVPlatformPrintTest, DoesNothingBehindAFailedCheck)
{
    auto oRoom = TypeParam::Room(3);

    EXPECT_CHECK(NO_COUNT, TypeParam::SNPrintf(oRoom.Get(), 0, TypeParam::Text("x").Get()));

    EXPECT_EQ("###", oRoom.Shown());
}

// In the "C" locale a byte holds no unit above 255.
TEST(TOVPlatformNarrowPrintTest, FailsForAUnitThatHasNoNarrowForm)
{
    char szRoom[32] = "";

    EXPECT_EQ(-1, TOVPlatform::TOVStringA::SPrintf(szRoom, "%S", L"\x0416"));
    EXPECT_EQ(-1, TOVPlatform::TOVStringA::SPrintf(szRoom, "a%lsb", L"z\x0416z"));
    EXPECT_EQ(-1, TOVPlatform::TOVStringA::SNPrintf(szRoom, 32, "%S", L"\x0416"));
    EXPECT_EQ(1, TOVPlatform::TOVStringA::SNPrintf(szRoom, 32, "%.1S", L"z\x0416"));
    EXPECT_STREQ("z", szRoom);
}
