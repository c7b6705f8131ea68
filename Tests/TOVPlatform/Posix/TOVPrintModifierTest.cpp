// What a print takes and the common tests leave out: modifiers of other runtimes, counts of every size, and values that
// are no numbers.
#include "TOVPlatform/TOVStringApis.h"

#include <limits>

namespace
{
template<class TApi> class TOVPlatformPrintModifierTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVPlatformPrintModifierTest, tStringApis, );

// A conversion of a value that is no number, and its text.
struct sNoNumber
{
    const char* szFormat;
    double dValue;
    const char* szText;
};
} // namespace

TYPED_TEST(TOVPlatformPrintModifierTest, TakesTwoLettersForSixtyFourBits)
{
    EXPECT_EQ("-1234567890123", Print<TypeParam>("%lld", -1234567890123ll));
    EXPECT_EQ("fedcba9876543210", Print<TypeParam>("%llx", 0xFEDCBA9876543210ull));
}

TYPED_TEST(TOVPlatformPrintModifierTest, TakesTheOthersForThirtyTwoBits)
{
    for (const char* szFormat : {"%I32d|", "%Id|", "%jd|", "%td|", "%zd|", "%Fd|", "%Ld|", "%Nd|"})
        EXPECT_EQ("-42|", Print<TypeParam>(szFormat, -42)) << szFormat;
}

TYPED_TEST(TOVPlatformPrintModifierTest, TakesWForWideText)
{
    const std::vector<wchar_t> aText = Wide("wide");

    EXPECT_EQ("wide", Print<TypeParam>("%ws", aText.data()));
    EXPECT_EQ("wide", Print<TypeParam>("%wS", aText.data()));
}

TYPED_TEST(TOVPlatformPrintModifierTest, StoresCountsOfEverySize)
{
    short nShort = -1;
    long lLong = -1;
    long long llLong = -1;

    EXPECT_EQ("abcde", Print<TypeParam>("a%hnbc%lnde%I64n", &nShort, &lLong, &llLong));

    EXPECT_EQ(1, nShort);
    EXPECT_EQ(3, lLong);
    EXPECT_EQ(5, llLong);
}

TYPED_TEST(TOVPlatformPrintModifierTest, StoresNoCountAtNoAddress)
{
    int* const pNone = nullptr;

    EXPECT_EQ("abc", Print<TypeParam>("a%nbc", pNone));
}

TYPED_TEST(TOVPlatformPrintModifierTest, CutsAndRoundsTheNamesOfWhatIsNoNumber)
{
    const double dInfinity = std::numeric_limits<double>::infinity();
    const double dNaN = std::numeric_limits<double>::quiet_NaN();
    const sNoNumber aCases[] = {
        {"%f", dInfinity, "1.#INF00"}, {"%f", -dInfinity, "-1.#INF00"}, {"%.2f", dInfinity, "1.#J"},
        {"%.0f", dInfinity, "1"},      {"%f", dNaN, "1.#QNAN0"},        {"%.3f", dNaN, "1.#QO"},
        {"%f", -dNaN, "-1.#IND00"},    {"%g", dInfinity, "1.#INF"},     {"%e", dInfinity, "1.#INF00e+00"},
    };
    for (const sNoNumber& oCase : aCases)
        EXPECT_EQ(oCase.szText, Print<TypeParam>(oCase.szFormat, oCase.dValue)) << oCase.szFormat;
}
