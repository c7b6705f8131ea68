// Plain formats, which SNPrintf and VSNPrintf print in one pass, beside SPrintf, which prints them as all others.
#include "TOVPlatform/TOVStringApis.h"

#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>

namespace
{
constexpr int ROUNDS = 2000;
constexpr std::size_t ROOM = 600;

template<class TApi> class TOVPlatformPlainFormatTest : public testing::Test
{
protected:
    int Random(int nBelow) { return static_cast<int>(m_oRandom() % static_cast<unsigned>(nBelow)); }

    // Values of few decimal or binary digits, which make ties and carries, and any.
    double RandomDouble()
    {
        switch (Random(5))
        {
        case 0:
            return (Random(2000001) - 1000000) / std::pow(10, Random(12));
        case 1:
            return std::ldexp(Random(2000001) - 1000000, -Random(40));
        case 2:
            return (std::round(std::pow(10, Random(17))) - std::pow(10, -Random(12))) * (Random(2) == 0 ? 1 : -1);
        case 3:
            return Random(2) == 0 ? 0.0 : -0.0;
        default:
            return AnyDouble();
        }
    }

    double AnyDouble()
    {
        const std::uint64_t ullBits = m_oRandom();
        double dValue = 0;
        std::memcpy(&dValue, &ullBits, sizeof(dValue));
        return std::fabs(dValue) < 1e200 ? dValue : 1.0;
    }

    int RandomInteger()
    {
        constexpr int EDGES[] = {
            0, 9, 10, 99, 100, -1, -10, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
        return Random(2) == 0 ? EDGES[Random(static_cast<int>(std::size(EDGES)))] : static_cast<int>(m_oRandom());
    }

    // Pieces of formats, most of them plain, around conversions of the one type.
    std::string RandomFormat(const std::vector<std::string>& aConversions)
    {
        std::string sFormat(static_cast<std::size_t>(Random(8) == 0 ? Random(300) : Random(10)), 'x');
        for (int nConversion = 0; nConversion < 2; ++nConversion)
        {
            sFormat += aConversions[static_cast<std::size_t>(Random(static_cast<int>(aConversions.size())))];
            sFormat += std::vector<std::string>{"", "", " - ", "%%", "\xE4"}[static_cast<std::size_t>(Random(5))];
        }
        return sFormat;
    }

    // Expects the same result from each function, in rooms in which the text fits and in those that are too small.
    template<class T> void ExpectSame(const std::string& sFormat, T oFirst, T oSecond)
    {
        auto oFormat = TApi::Text(sFormat);
        auto oExpected = TApi::Room(ROOM);
        const int nLength = TApi::SPrintf(oExpected.Get(), oFormat.Get(), oFirst, oSecond);
        ASSERT_LT(nLength, static_cast<int>(ROOM));
        for (const int nCount : {nLength + 1, nLength, nLength - 1, 1 + Random(nLength + 1), static_cast<int>(ROOM)})
        {
            if (nCount <= 0)
                continue;
            auto oRoom = TApi::Room(ROOM);
            auto oListRoom = TApi::Room(ROOM);
            const int nPrinted = TApi::SNPrintf(oRoom.Get(), nCount, oFormat.Get(), oFirst, oSecond);
            ASSERT_EQ(nLength <= nCount ? nLength : -1, nPrinted < 0 ? -1 : nPrinted) << sFormat;
            ASSERT_EQ(nPrinted, VSNPrintf<TApi>(oListRoom.Get(), nCount, oFormat.Get(), oFirst, oSecond)) << sFormat;

            // What fits of the text and its terminator is written, and nothing after it.
            const std::size_t nWritten = static_cast<std::size_t>(std::min(nCount, nLength + 1));
            const std::string sExpected = oExpected.Shown().substr(0, nWritten) + std::string(ROOM - nWritten, '#');
            ASSERT_EQ(sExpected, oRoom.Shown()) << sFormat;
            ASSERT_EQ(sExpected, oListRoom.Shown()) << sFormat;
        }
    }

    std::mt19937_64 m_oRandom{20261122};
};
TYPED_TEST_SUITE(TOVPlatformPlainFormatTest, tStringApis, );
} // namespace

TYPED_TEST(TOVPlatformPlainFormatTest, PrintsIntegers)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
        this->ExpectSame(this->RandomFormat({"%d", "%i", "%u", "%d", "%3d", "%.2u"}), this->RandomInteger(),
                         this->RandomInteger());
}

TYPED_TEST(TOVPlatformPlainFormatTest, PrintsTexts)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
    {
        auto oFirst = TypeParam::Text(std::string(static_cast<std::size_t>(this->Random(40)), 'a'));
        auto oSecond =
            TypeParam::Text(std::string(static_cast<std::size_t>(this->Random(nRound % 8 == 0 ? 270 : 9)), 'b'));
        this->ExpectSame(this->RandomFormat({"%s", "%s", "%s", "%.3s", "%5s"}), oFirst.Get(), oSecond.Get());
    }
}

TYPED_TEST(TOVPlatformPlainFormatTest, PrintsReals)
{
    for (int nRound = 0; nRound < ROUNDS; ++nRound)
        this->ExpectSame(
            this->RandomFormat({"%f", "%.0f", "%.1f", "%.2f", "%.3f", "%.5f", "%.6f", "%.9f", "%.10f", "%.f", "%8.2f"}),
            this->RandomDouble(), this->RandomDouble());
}
