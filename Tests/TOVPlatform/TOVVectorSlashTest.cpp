// The search for the last separator with vectors, beside the plain one on the same texts. Each text fills a block of
// its own, so that AddressSanitizer finds a read beyond it.
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/Vector/TOVVectorSlash.h>

#include <memory>
#include <random>
#include <string>

namespace
{
constexpr long MAX_LENGTH = 70;

long PlainFindLast(const char* pText, long lEnd)
{
    return static_cast<long>(std::string(pText, static_cast<std::size_t>(lEnd)).find_last_of("/\\"));
}

// A text whose characters differ from a separator in one bit or two, or in the sign, with a few separators among them.
std::string RandomText(std::mt19937& oRandom, long lLength, unsigned int nOneIn)
{
    constexpr char OTHERS[] = {'.', '-', '[', ']', 'o', 'n', 0, static_cast<char>('/' + 128), static_cast<char>(0xDC)};
    std::string sText;
    for (long lIndex = 0; lIndex < lLength; ++lIndex)
        sText += oRandom() % nOneIn == 0 ? "/\\"[oRandom() % 2] : OTHERS[oRandom() % sizeof(OTHERS)];
    return sText;
}
} // namespace

TEST(TOVVectorSlashTest, FindsTheLastSeparatorAsThePlainSearchDoes)
{
    std::mt19937 oRandom(1);
    for (long lLength = 0; lLength <= MAX_LENGTH; ++lLength)
    {
        for (const unsigned int nOneIn : {3u, 20u, 1000u})
        {
            const std::string sText = RandomText(oRandom, lLength, nOneIn);
            const std::unique_ptr<char[]> pText(new char[sText.size()]);
            sText.copy(pText.get(), sText.size());
            for (long lEnd = 0; lEnd <= lLength; ++lEnd)
                ASSERT_EQ(PlainFindLast(pText.get(), lEnd), TOVPlatform::Vector::FindLastSlash(pText.get(), lEnd));
        }
    }
}

TEST(TOVVectorSlashTest, FindsASeparatorAtEachPlace)
{
    for (long lLength = 1; lLength <= MAX_LENGTH; ++lLength)
    {
        // The block begins at each address within a vector.
        for (long lStart = 0; lStart < 16; ++lStart)
        {
            for (long lPlace = 0; lPlace < lLength; ++lPlace)
            {
                std::string sText(static_cast<std::size_t>(lStart + lLength), 'a');
                sText[static_cast<std::size_t>(lStart + lPlace)] = lPlace % 2 != 0 ? '/' : '\\';
                const char* const pText = sText.data() + lStart;
                ASSERT_EQ(lPlace, TOVPlatform::Vector::FindLastSlash(pText, lLength)) << lLength;
            }
        }
    }
}
