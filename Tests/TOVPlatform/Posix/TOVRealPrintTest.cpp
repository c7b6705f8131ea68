// Printed doubles beside a plain model, which rounds the exact digits by hand.
#include "TOVPlatform/TOVStringApis.h"

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>

namespace
{
constexpr int ROUNDS = 20000;
constexpr int EXACT_FRACTION_DIGITS = 1074;

// Rounds the decimal digits of a text to the first nDigits of them, half away from zero. Points are skipped, and a
// further digit may appear in front.
std::string Rounded(std::string sDigits, std::size_t nDigits)
{
    const bool bUp = nDigits < sDigits.size() && sDigits[nDigits] >= '5';
    sDigits.resize(nDigits, '0');
    std::size_t nIndex = nDigits;
    while (bUp && nIndex > 0 && sDigits[nIndex - 1] == '9')
        sDigits[--nIndex] = '0';
    if (bUp && nIndex > 0)
        ++sDigits[nIndex - 1];
    else if (bUp)
        sDigits.insert(0, "1");
    return sDigits;
}

// The exact digits; the last EXACT_FRACTION_DIGITS of them follow the point.
std::string ExactDigits(double dValue)
{
    char szText[DBL_MAX_10_EXP + EXACT_FRACTION_DIGITS + 10];
    std::snprintf(szText, sizeof(szText), "%.*f", EXACT_FRACTION_DIGITS, std::fabs(dValue));
    std::string sDigits(szText);
    sDigits.erase(sDigits.find('.'), 1);
    return sDigits;
}

std::string SignOf(double dValue)
{
    return std::signbit(dValue) ? "-" : "";
}

std::string WithPoint(const std::string& sDigits, std::size_t nFraction)
{
    const std::size_t nWhole = sDigits.size() - nFraction;
    return nFraction == 0 ? sDigits : sDigits.substr(0, nWhole) + "." + sDigits.substr(nWhole);
}

std::string FixedByItsDigits(double dValue, std::size_t nPrecision)
{
    const std::string sDigits = ExactDigits(dValue);
    const std::size_t nWhole = sDigits.size() - EXACT_FRACTION_DIGITS;
    return SignOf(dValue) + WithPoint(Rounded(sDigits, nWhole + nPrecision), nPrecision);
}

std::string ScientificByItsDigits(double dValue, std::size_t nPrecision)
{
    std::string sDigits = ExactDigits(dValue);
    int nExponent = static_cast<int>(sDigits.size()) - EXACT_FRACTION_DIGITS - 1;
    const std::size_t nZeros = std::min(sDigits.find_first_not_of('0'), sDigits.size());
    const bool bZero = nZeros == sDigits.size();
    sDigits = Rounded(sDigits.substr(bZero ? 0 : nZeros), nPrecision + 1);
    nExponent = bZero ? 0 : nExponent - static_cast<int>(nZeros);
    if (sDigits.size() > nPrecision + 1)
    {
        sDigits.pop_back();
        ++nExponent;
    }
    const std::string sMagnitude = std::to_string(std::abs(nExponent));
    const std::string sExponent = (nExponent < 0 ? "e-" : "e+") + std::string(sMagnitude.size() < 2, '0') + sMagnitude;
    return SignOf(dValue) + WithPoint(sDigits, nPrecision) + sExponent;
}

class TOVPlatformRealPrintTest : public testing::Test
{
protected:
    int Random(int nBelow) { return static_cast<int>(m_oRandom() % static_cast<unsigned>(nBelow)); }

    double AnyDouble()
    {
        const std::uint64_t ullBits = m_oRandom();
        double dValue = 0;
        std::memcpy(&dValue, &ullBits, sizeof(dValue));
        return std::isfinite(dValue) ? dValue : 0.0;
    }

    // Values of few decimal or binary digits, which make ties, those of everyday size, and any.
    double RandomDouble()
    {
        switch (Random(6))
        {
        case 0:
            return AnyDouble();
        case 1:
            return std::ldexp(Random(2000001) - 1000000, -Random(30));
        case 2:
            return (Random(2000001) - 1000000) / std::pow(10, Random(10));
        case 3:
            return std::ldexp(static_cast<double>(m_oRandom() >> 11), Random(150) - 110);
        case 4:
            return std::round(std::pow(10, Random(25))) - std::pow(10, -Random(18));
        default:
            return (5 + 10 * Random(100)) * std::pow(10, Random(20));
        }
    }

    std::mt19937_64 m_oRandom{4711};
};
} // namespace

TEST_F(TOVPlatformRealPrintTest, PrintsFixedDigitsAsRoundedByHand)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        const double dValue = RandomDouble();
        const int nPrecision = Random(8) == 0 ? Random(400) : Random(20);
        ASSERT_EQ(FixedByItsDigits(dValue, static_cast<std::size_t>(nPrecision)),
                  Print<sNarrowApi>("%.*f", nPrecision, dValue))
            << nPrecision;
    }
}

TEST_F(TOVPlatformRealPrintTest, PrintsScientificDigitsAsRoundedByHand)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        const double dValue = RandomDouble();
        const int nPrecision = Random(8) == 0 ? Random(900) : Random(20);
        ASSERT_EQ(ScientificByItsDigits(dValue, static_cast<std::size_t>(nPrecision)),
                  Print<sNarrowApi>("%.*e", nPrecision, dValue))
            << nPrecision;
    }
}

TEST_F(TOVPlatformRealPrintTest, PrintsTheShorterOfTheTwoFormsWithAllItsDigits)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        const double dValue = RandomDouble();
        const int nSignificant = 1 + Random(20);
        const std::string sScientific = ScientificByItsDigits(dValue, static_cast<std::size_t>(nSignificant - 1));
        const int nExponent = std::atoi(sScientific.c_str() + sScientific.find('e') + 1);
        std::string sExpected = sScientific;
        if (-4 <= nExponent && nExponent < nSignificant)
            sExpected = FixedByItsDigits(dValue, static_cast<std::size_t>(nSignificant - 1 - nExponent));
        if (sExpected.find('.') == std::string::npos)
            sExpected.insert(std::min(sExpected.find('e'), sExpected.size()), ".");
        ASSERT_EQ(sExpected, Print<sNarrowApi>("%#.*g", nSignificant, dValue)) << nSignificant;
    }
}

// With a precision, six more digits are measured than will be printed.
TEST_F(TOVPlatformRealPrintTest, MeasuresTheLengthOfThePrint)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        const double dValue = RandomDouble();
        const int nPrecision = Random(20);
        ASSERT_EQ(Print<sNarrowApi>("%.*f", nPrecision + 6, dValue).size(),
                  static_cast<std::size_t>(BoundOf<sNarrowApi>("%.*f", nPrecision, dValue)))
            << dValue;
        ASSERT_EQ(Print<sWideApi>("%+f", dValue).size(), static_cast<std::size_t>(BoundOf<sWideApi>("%+f", dValue)))
            << dValue;
        ASSERT_EQ(Print<sWideApi>("%f", dValue).size(), static_cast<std::size_t>(BoundOf<sWideApi>("%f", dValue)))
            << dValue;
    }
}
