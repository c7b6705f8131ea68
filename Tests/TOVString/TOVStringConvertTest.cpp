// Numbers and truth values of both strings. A long counts 32 bits on every target.
#include "TOVString/TOVStringKinds.h"

#include <cmath>

namespace
{
template<class TString> class CTOVStringConvertTest : public testing::Test
{
};
TYPED_TEST_SUITE(CTOVStringConvertTest, tStrings, sStringName);

// A text in its narrow form, for both strings.
struct sSigned
{
    const char* szText;
    int nBase;
    int nNumber;
};

struct sUnsigned
{
    const char* szText;
    int nBase;
    unsigned int uNumber;
};

struct sReal
{
    const char* szText;
    double dNumber;
};

constexpr int LARGEST = 2147483647;
constexpr int SMALLEST = -LARGEST - 1;

const sSigned SIGNED_NUMBERS[] = {
    {"12345", 10, 12345},
    {"-12345", 10, -12345},
    {"+7", 10, 7},
    {" \t\n\v\f\r42", 10, 42},
    {"12abc", 10, 12},
    {"12 34", 10, 12},
    {"1.9", 10, 1},
    {"0", 10, 0},
    {"abc", 10, 0},
    {"-", 10, 0},
    {"- 1", 10, 0},
    {" ", 10, 0},
    {"0x1F", 10, 0},
    {"ff", 16, 255},
    {"0xFf", 16, 255},
    {"-0x10", 16, -16},
    {"777", 8, 511},
    {"789", 8, 7},
    {"1012", 2, 5},
    {"Zz", 36, 1295},
    {"0x1F", 0, 31},
    {"017", 0, 15},
    {"-17", 0, -17},
    {"08", 0, 0},
    {"2147483647", 10, LARGEST},
    {"2147483648", 10, LARGEST},
    {"-2147483648", 10, SMALLEST},
    {"-2147483649", 10, SMALLEST},
    {"4294967295", 10, LARGEST},
    {"4294967296", 10, LARGEST},
    {"9223372036854775808", 10, LARGEST},
    {"-9223372036854775809", 10, SMALLEST},
    {"123456789012345678901234567890", 10, LARGEST},
    {"ffffffff", 16, LARGEST},
    {"80000000", 16, LARGEST},
};

const sUnsigned UNSIGNED_NUMBERS[] = {
    {"12345", 10, 12345},
    {"  +12x", 10, 12},
    {"abc", 10, 0},
    {"ff", 16, 255},
    {"0xFFFFFFFF", 0, 0xFFFFFFFF},
    {"037777777777", 0, 0xFFFFFFFF},
    {"2147483648", 10, 2147483648u},
    {"4294967295", 10, 4294967295u},
    {"4294967296", 10, 4294967295u},
    {"18446744073709551616", 10, 4294967295u},
    {"123456789012345678901234567890", 10, 4294967295u},
    {"-1", 10, 4294967295u},
    {"-4294967295", 10, 1},
    {"-2147483649", 10, 2147483647u},
};

const sReal REAL_NUMBERS[] = {
    {"34.56", 34.56},
    {"-34.56", -34.56},
    {"  0.1x", 0.1},
    {".5", 0.5},
    {"5.", 5.0},
    {"1e3", 1000.0},
    {"-2.5E-3", -0.0025},
    {"12", 12.0},
    {"abc", 0.0},
    {"e5", 0.0},
    {".", 0.0},
    {"1e", 1.0},
    {"1,5", 1.0},
    {"16777217", 16777217.0},
    {"0", 0.0},
    {"4294967296", 4294967296.0},
    {"1.7976931348623157e308", 1.7976931348623157e308},
};
} // namespace

TYPED_TEST(CTOVStringConvertTest, ReadsSignedNumbers)
{
    for (const sSigned& oCase : SIGNED_NUMBERS)
    {
        const TypeParam oText = StringOf<TypeParam>(oCase.szText);
        EXPECT_EQ(oCase.nNumber, oText.AsInt(oCase.nBase)) << oCase.szText;
        EXPECT_EQ(oCase.nNumber, oText.AsLong(oCase.nBase)) << oCase.szText;
    }
}

TYPED_TEST(CTOVStringConvertTest, ReadsAsUintWithASignAndHandsTheBitsOn)
{
    for (const sSigned& oCase : SIGNED_NUMBERS)
        EXPECT_EQ(static_cast<unsigned int>(oCase.nNumber), StringOf<TypeParam>(oCase.szText).AsUint(oCase.nBase))
            << oCase.szText;
    EXPECT_EQ(0xFFFFFFFF, TypeParam(TXT("-1")).AsUint());
    EXPECT_EQ(0x7FFFFFFFu, TypeParam(TXT("4294967295")).AsUint());
}

TYPED_TEST(CTOVStringConvertTest, ReadsUnsignedNumbers)
{
    for (const sUnsigned& oCase : UNSIGNED_NUMBERS)
        EXPECT_EQ(oCase.uNumber, StringOf<TypeParam>(oCase.szText).AsUlong(oCase.nBase)) << oCase.szText;
}

TYPED_TEST(CTOVStringConvertTest, ReadsDecimalNumbersUnlessToldOtherwise)
{
    const TypeParam oText(TXT("12345"));

    EXPECT_EQ(12345, oText.AsInt());
    EXPECT_EQ(12345, oText.AsLong());
    EXPECT_EQ(12345u, oText.AsUint());
    EXPECT_EQ(12345u, oText.AsUlong());
    EXPECT_EQ(10, TypeParam(TXT("010")).AsLong());
}

TYPED_TEST(CTOVStringConvertTest, ReadsRealNumbers)
{
    for (const sReal& oCase : REAL_NUMBERS)
        EXPECT_EQ(oCase.dNumber, StringOf<TypeParam>(oCase.szText).AsDouble()) << oCase.szText;
}

TYPED_TEST(CTOVStringConvertTest, RoundsRealNumbersToFloat)
{
    EXPECT_EQ(static_cast<float>(34.56), TypeParam(TXT("34.56")).AsFloat());
    EXPECT_EQ(0.1f, TypeParam(TXT("0.1")).AsFloat());
    EXPECT_EQ(16777216.0f, TypeParam(TXT("16777217")).AsFloat());
    EXPECT_EQ(-2.5f, TypeParam(TXT("-2.5")).AsFloat());
    EXPECT_EQ(0.0f, TypeParam(TXT("abc")).AsFloat());
}

TYPED_TEST(CTOVStringConvertTest, NumbersBeyondADoubleAreInfinite)
{
    EXPECT_EQ(HUGE_VAL, TypeParam(TXT("1e400")).AsDouble());
    EXPECT_EQ(-HUGE_VAL, TypeParam(TXT("-1e400")).AsDouble());
}

TYPED_TEST(CTOVStringConvertTest, NothingIsZeroAndFalse)
{
    TypeParam oEmptied(TXT("1"));
    oEmptied.Empty();

    for (const TypeParam& oNothing : {TypeParam(), oEmptied})
    {
        EXPECT_EQ(0, oNothing.AsInt());
        EXPECT_EQ(0, oNothing.AsLong(16));
        EXPECT_EQ(0u, oNothing.AsUint());
        EXPECT_EQ(0u, oNothing.AsUlong());
        EXPECT_EQ(0.0, oNothing.AsDouble());
        EXPECT_EQ(0.0f, oNothing.AsFloat());
        EXPECT_FALSE(oNothing.AsBool());
    }
}

TYPED_TEST(CTOVStringConvertTest, ALengthOfZeroDecidesWhateverTheBlockHolds)
{
    TypeParam oText(TXT("11"));
    TypeParam oSharer(oText);
    oText.AllocBuffer(0);

    EXPECT_EQ(0, oText.AsInt());
    EXPECT_EQ(0u, oText.AsUlong());
    EXPECT_EQ(0.0, oText.AsDouble());
    EXPECT_EQ(11, oSharer.AsInt());
}

TYPED_TEST(CTOVStringConvertTest, TrueIsOneOrTheWordInAnyCase)
{
    for (const char* const szTrue : {"1", "true", "TRUE", "True", "tRuE"})
        EXPECT_TRUE(StringOf<TypeParam>(szTrue).AsBool()) << szTrue;
}

TYPED_TEST(CTOVStringConvertTest, AllElseIsFalse)
{
    for (const char* const szFalse : {"0",  "2",  "T",  "t",  "Y",     "y",     "FALSE", "false", "yes",  "YES",  "on",
                                      "11", "01", "1 ", " 1", "TRUE ", " TRUE", "TRU",   "TRUES", "abcd", "1111", "-1"})
        EXPECT_FALSE(StringOf<TypeParam>(szFalse).AsBool()) << szFalse;
}

TYPED_TEST(CTOVStringConvertTest, TheTruthIsDecidedByTheLengthFirst)
{
    TypeParam oOne;
    oOne.Copy(TXT("1"), 2);
    TypeParam oTrue;
    oTrue.Copy(TXT("TRUE"), 5);
    TypeParam oFour;
    oFour.Copy(TXT("1\0\0"), 4);

    EXPECT_FALSE(oOne.AsBool());
    EXPECT_FALSE(oTrue.AsBool());
    EXPECT_FALSE(oFour.AsBool());
    EXPECT_TRUE(oTrue.Left(4).AsBool());
}
