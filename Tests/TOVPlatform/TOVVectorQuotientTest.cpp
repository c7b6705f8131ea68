// The division by a billion without the divider, beside the division.
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/Vector/TOVVectorQuotient.h>

#include <climits>
#include <random>

using namespace TOVPlatform;

namespace
{
constexpr long long BILLION = 1000000000;
constexpr long long ODD_PART = 1953125; // of a billion: 5^9

class TOVVectorQuotientTest : public testing::TestWithParam<bool>
{
protected:
    TOVVectorQuotientTest() { Vector::UseWideVectors(GetParam()); }
    ~TOVVectorQuotientTest() override { Vector::UseWideVectors(true); }

    static void Compare(long long nDividend)
    {
        for (const long long nEach : {nDividend, -nDividend})
        {
            const volatile double dDividend = static_cast<double>(nEach);
            const volatile double dDivisor = 1e9;
            const volatile double dQuotient = dDividend / dDivisor;
            const volatile double dFast = Vector::DivideByBillion(dDividend);
            ASSERT_EQ(dQuotient, dFast) << nEach;
        }
    }
};
} // namespace

TEST_P(TOVVectorQuotientTest, IsTheQuotientOfEachSize)
{
    std::mt19937_64 oRandom(1);
    for (int nRun = 0; nRun < 200000; ++nRun)
        Compare(static_cast<long long>(oRandom() >> (1 + nRun % 63)));
}

TEST_P(TOVVectorQuotientTest, IsTheQuotientAtTheEdges)
{
    for (long long nNear = -3; nNear <= 3; ++nNear)
    {
        for (int nBit = 0; nBit < 62; ++nBit)
            Compare((1LL << nBit) + nNear);
        for (long long nSeconds = 1; nSeconds < LLONG_MAX / BILLION / 3; nSeconds *= 3)
            Compare(nSeconds * BILLION + nNear);
        Compare(LLONG_MAX - 3 + nNear);
    }
}

// These quotients have the smallest distance from the middle between two numbers: the remainder of the dividend, times
// a power of 2, is 1 or -1 in a division by the odd part.
TEST_P(TOVVectorQuotientTest, IsRoundedAsTheQuotientNearTheMiddle)
{
    std::mt19937_64 oRandom(2);
    long long nRemainder = 1;
    for (int nPower = 1; nPower <= 60; ++nPower)
    {
        nRemainder = (nRemainder % 2 != 0 ? nRemainder + ODD_PART : nRemainder) / 2;
        for (int nRun = 0; nRun < 1000; ++nRun)
        {
            const long long nMultiple = static_cast<long long>(oRandom() >> (11 + nRun % 40)) / ODD_PART * ODD_PART;
            Compare(nMultiple + nRemainder);
            Compare(nMultiple + ODD_PART - nRemainder);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, TOVVectorQuotientTest, testing::Bool());
