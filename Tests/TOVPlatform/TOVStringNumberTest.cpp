// Numbers that texts begin with.
#include "TOVPlatform/TOVStringApis.h"

#include <cmath>

namespace
{
template<class TNumber> struct sNumber
{
    const char* szText;
    int nBase;
    TNumber nValue;
    long lStop;
};

template<class TApi> class TOVPlatformNumberTest : public testing::Test
{
};
TYPED_TEST_SUITE(TOVPlatformNumberTest, tStringApis, );

// Runs a table of numbers through a conversion, with and without a place for where it stopped.
template<class TApi, class TFunction, class TNumber, std::size_t nNumbers>
void ExpectNumbers(TFunction fnRead, const sNumber<TNumber> (&aNumbers)[nNumbers])
{
    for (const sNumber<TNumber>& oNumber : aNumbers)
    {
        auto oText = TApi::Text(oNumber.szText);
        typename TApi::tUnit* pStop = nullptr;
        EXPECT_EQ(oNumber.nValue, fnRead(oText.Get(), &pStop, oNumber.nBase)) << oNumber.szText;
        EXPECT_EQ(oNumber.lStop, pStop - oText.Get()) << oNumber.szText;
        EXPECT_EQ(oNumber.nValue, fnRead(oText.Get(), nullptr, oNumber.nBase)) << oNumber.szText;
    }
}
} // namespace

TYPED_TEST(TOVPlatformNumberTest, ReadsSignedNumbers)
{
    const long lMost = 2147483647;
    const sNumber<long> aNumbers[] = {
        {"123456This stopped it", 10, 123456, 6},
        {"-123456This stopped it", 10, -123456, 7},
        {"+7", 10, 7, 2},
        {" \t\n42 ", 10, 42, 5},
        {"", 10, 0, 0},
        {"This", 10, 0, 0},
        {"   x", 10, 0, 0},
        {"-", 10, 0, 0},
        {"- 1", 10, 0, 0},
        {"12-", 10, 12, 2},
        {"102", 2, 2, 2},
        {"0x1Fg", 16, 31, 4},
        {"1fG", 16, 31, 2},
        {"0x1F", 0, 31, 4},
        {"-0X1F", 0, -31, 5},
        {"0178", 0, 15, 3},
        {"19", 0, 19, 2},
        {"zZ", 36, 1295, 2},
        {"10", 1, 0, 0},
        {"10", 37, 0, 0},
        {"10", -10, 0, 0},
        {"2147483647", 10, lMost, 10},
        {"2147483648", 10, lMost, 10},
        {"-2147483648", 10, -lMost - 1, 11},
        {"-2147483649", 10, -lMost - 1, 11},
        {"99999999999999999999x", 10, lMost, 20},
        {"-99999999999999999999x", 10, -lMost - 1, 21},
        {"80000000", 16, lMost, 8},
        {"0x", 16, 0, 0},
        {"0x", 0, 0, 0},
        {"0xg", 16, 0, 0},
        {"0xg", 0, 0, 0},
    };
    ExpectNumbers<TypeParam>(TypeParam::ToLong, aNumbers);
}

TYPED_TEST(TOVPlatformNumberTest, ReadsUnsignedNumbers)
{
    const unsigned long ulMost = 4294967295ul;
    const sNumber<unsigned long> aNumbers[] = {
        {"123456This stopped it", 10, 123456, 6},
        {" +8", 10, 8, 3},
        {"", 10, 0, 0},
        {"x", 10, 0, 0},
        {"ffFFffFFg", 16, ulMost, 8},
        {"0xFF", 0, 255, 4},
        {"4294967295", 10, ulMost, 10},
        {"4294967296", 10, ulMost, 10},
        {"99999999999999999999x", 10, ulMost, 20},
        {"-1", 10, ulMost, 2},
        {"-5", 10, ulMost - 4, 2},
        {"-4294967295", 10, 1, 11},
        {"0x", 16, 0, 0},
        {"0x", 0, 0, 0},
        {"0xg", 16, 0, 0},
        {"-0xg", 0, 0, 0},
    };
    ExpectNumbers<TypeParam>(TypeParam::ToUlong, aNumbers);
}

TYPED_TEST(TOVPlatformNumberTest, ReadsFractions)
{
    const sNumber<double> aNumbers[] = {
        {"3.1415926This stopped it", 0, 3.1415926, 9},
        {"-3.1415926This stopped it", 0, -3.1415926, 10},
        {"  2.5", 0, 2.5, 5},
        {"+.5", 0, 0.5, 3},
        {"5.", 0, 5.0, 2},
        {"1e3x", 0, 1000.0, 3},
        {"1.5E-2", 0, 0.015, 6},
        {"1ex", 0, 1.0, 1},
        {"1e+", 0, 1.0, 1},
        {"42", 0, 42.0, 2},
        {"", 0, 0.0, 0},
        {"This", 0, 0.0, 0},
        {".", 0, 0.0, 0},
        {"-", 0, 0.0, 0},
        {"1d3", 0, 1000.0, 3},
        {"5D-1x", 0, 0.5, 4},
        {"0x1F", 0, 0.0, 1},
        {"inf", 0, 0.0, 0},
        {"nan", 0, 0.0, 0},
        {"1e400", 0, HUGE_VAL, 5},
        {"-1e400", 0, -HUGE_VAL, 6},
        {"0.1", 0, 0.1, 3},
        {"1.7976931348623157e308", 0, 1.7976931348623157e308, 22},
        {"123456789012345678901234567890", 0, 123456789012345678901234567890.0, 30},
    };
    typedef typename TypeParam::tUnit tUnit;
    ExpectNumbers<TypeParam>(
        [](const tUnit* szText, tUnit** ppStop, int) { return TypeParam::ToDouble(szText, ppStop); }, aNumbers);
}

TEST(TOVPlatformNarrowNumberTest, AFractionEndsBeforeAByteOf255)
{
    static constexpr struct
    {
        const char* szText;
        double fValue;
        int nEnd;
    } FRACTIONS[] = {{"5\xFF", 5, 1},
                     {"5.\xFF", 5, 2},
                     {"-.5e2\xFF\xFF", -50, 5},
                     {"5e+\xFF", 5, 1},
                     {"\xFF", 0, 0},
                     {" -\xFF", 0, 0},
                     {"-.\xFF", 0, 0},
                     {"\xFF"
                      "5",
                      0, 0}};
    for (const auto& oFraction : FRACTIONS)
    {
        SCOPED_TRACE(oFraction.szText);
        char* pEnd = nullptr;
        EXPECT_EQ(oFraction.fValue, TOVPlatform::TOVStringA::ToDouble(oFraction.szText, &pEnd));
        EXPECT_EQ(oFraction.szText + oFraction.nEnd, pEnd);
    }
}

TYPED_TEST(TOVPlatformNumberTest, ConversionsRefuseNull)
{
    typename TypeParam::tUnit* pStop = nullptr;
    EXPECT_CHECK_AT(STRING_SOURCE, "szStart != NULL", TypeParam::ToLong(nullptr, &pStop, 10));
    EXPECT_CHECK_AT(STRING_SOURCE, "szStart != NULL", TypeParam::ToUlong(nullptr, &pStop, 10));
    EXPECT_CHECK_AT(STRING_SOURCE, "szStart != NULL", TypeParam::ToDouble(nullptr, &pStop));
    EXPECT_EQ(nullptr, pStop);
}
