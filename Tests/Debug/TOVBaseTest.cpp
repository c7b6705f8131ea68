#include "Support/TOVTestSupport.h"

#include <Debug/TOVBase.h>

#include <climits>
#include <type_traits>
#include <utility>

// The text of an argument after its macros were expanded.
#define TEXT_OF_EXPANDED(expression) TEXT_OF(expression)
#define TEXT_OF(expression) #expression

#define FALSE_BY_MACRO (1 == 2)

namespace
{
// Counts the objects that were destroyed.
struct sCountsDeaths
{
    static int s_nDeaths;

    ~sCountsDeaths() { ++s_nDeaths; }
};
int sCountsDeaths::s_nDeaths = 0;

struct sSwap
{
    tDword dwValue;
    tDword dwReversed;
};

bool CountedFalse(int& nEvaluations)
{
    ++nEvaluations;
    return false;
}
} // namespace

TEST(TOVBaseTypesTest, HaveTheirWidthsAndSigns)
{
    EXPECT_TRUE((std::is_unsigned_v<tByte> && sizeof(tByte) == 1));
    EXPECT_TRUE((std::is_same_v<tChar, char>));
    EXPECT_TRUE((std::is_unsigned_v<tUchar> && sizeof(tUchar) == 1));
    EXPECT_TRUE((std::is_unsigned_v<tDword> && sizeof(tDword) == 4));
    EXPECT_EQ(8, CHAR_BIT);
}

TEST(TOVBaseTypesTest, WideCharactersAreUtf16Units)
{
    EXPECT_EQ(2u, sizeof(wchar_t));
    EXPECT_TRUE(std::is_unsigned_v<wchar_t>);
    EXPECT_EQ(3u * sizeof(wchar_t), sizeof(L"\U0001F600"));
}

TEST(TOVAssertMacroTest, LetsATrueExpressionPassAndEvaluatesItOnce)
{
    int nEvaluations = 0;

    EXPECT_NO_CHECK(TOV_ASSERT(++nEvaluations == 1));

    EXPECT_EQ(1, nEvaluations);
}

TEST(TOVAssertMacroTest, EvaluatesAFalseExpressionOnce)
{
    int nEvaluations = 0;

    EXPECT_CHECK("CountedFalse(nEvaluations)", TOV_ASSERT(CountedFalse(nEvaluations)));

    EXPECT_EQ(1, nEvaluations);
}

TEST(TOVAssertMacroTest, ReportsTheArgumentAsItIsWritten)
{
    const void* pMemory = nullptr;

    EXPECT_CHECK("pMemory != NULL", TOV_ASSERT(pMemory != NULL));
    EXPECT_CHECK("FALSE_BY_MACRO", TOV_ASSERT(FALSE_BY_MACRO));
}

TEST(TOVAssertMacroTest, ReportsFileAndLineOfTheCheck)
{
    CLogRecorder oLog;
    unsigned long ulLine = 0;

    EXPECT_THROW(ulLine = __LINE__; TOV_ASSERT(ulLine == 0), TOVDebug::CTOVAssertException);

    ASSERT_EQ(1u, oLog.Checks().size());
    EXPECT_EQ(__FILE__, oLog.Checks()[0].sFile);
    EXPECT_EQ(ulLine, oLog.Checks()[0].ulLine);
}

TEST(TOVAssertMacroTest, DoesNoWorkBehindAFailedCheck)
{
    int nWork = 0;

    EXPECT_CHECK("nWork == 1", TOV_ASSERT(nWork == 1); ++nWork);

    EXPECT_EQ(0, nWork);
}

TEST(TOVAssertMacroTest, TheFirstFailedCheckDecides)
{
    const int nFirst = 0;
    const int nSecond = 0;

    EXPECT_CHECK("nFirst > 0", TOV_ASSERT(nFirst > 0); TOV_ASSERT(nSecond > 0));
}

TEST(TOVAssertMacroTest, IsOneStatement)
{
    const bool bNever = false;
    bool bOther = false;

    if (bNever)
        TOV_ASSERT(bOther);
    else
        bOther = true;

    EXPECT_TRUE(bOther);
}

TEST(TOVByteSwapTest, ReversesFourBytes)
{
    const sSwap aSwaps[] = {
        {0xABCD, 0xCDAB0000},     {0x12345678, 0x78563412}, {0, 0},
        {0xFFFFFFFF, 0xFFFFFFFF}, {0xFF000000, 0x000000FF}, {0x000000FF, 0xFF000000},
        {0x80, 0x80000000},       {0x00FF0000, 0x0000FF00},
    };
    for (const sSwap& oSwap : aSwaps)
        EXPECT_EQ(oSwap.dwReversed, TOV_BYTESWAP32(oSwap.dwValue)) << oSwap.dwValue;
}

TEST(TOVByteSwapTest, GivesAWord)
{
    EXPECT_TRUE((std::is_same_v<tDword, decltype(TOV_BYTESWAP32(0xABCD))>));
}

TEST(TOVByteSwapTest, ExpandsToASumOfFourParts)
{
    EXPECT_STREQ("(tDword)(((tDword)0xABCD>>24)+(((tDword)0xABCD&0xff0000)>>8)+(((tDword)0xABCD&0xff00)<<8)+"
                 "(((tDword)0xABCD&0xff)<<24))",
                 TEXT_OF_EXPANDED(TOV_BYTESWAP32(0xABCD)));
}

TEST(TOVSafeDeleteTest, DeletesOneObjectAndClearsThePointer)
{
    sCountsDeaths::s_nDeaths = 0;
    sCountsDeaths* pObject = new sCountsDeaths;

    TOV_SAFE_DELETE(pObject);

    EXPECT_EQ(1, sCountsDeaths::s_nDeaths);
    EXPECT_EQ(nullptr, pObject);
}

TEST(TOVSafeDeleteTest, DeletesAnArrayAndClearsThePointer)
{
    sCountsDeaths::s_nDeaths = 0;
    sCountsDeaths* pObjects = new sCountsDeaths[3];

    TOV_SAFE_DELETE_ARRAY(pObjects);

    EXPECT_EQ(3, sCountsDeaths::s_nDeaths);
    EXPECT_EQ(nullptr, pObjects);
}

TEST(TOVSafeDeleteTest, LeavesANullPointerAlone)
{
    sCountsDeaths::s_nDeaths = 0;
    sCountsDeaths* pObject = nullptr;

    TOV_SAFE_DELETE(pObject);
    TOV_SAFE_DELETE_ARRAY(pObject);

    EXPECT_EQ(0, sCountsDeaths::s_nDeaths);
    EXPECT_EQ(nullptr, pObject);
}

TEST(TOVSafeDeleteTest, ClearsThePointerToABlockOf40Bytes)
{
    tByte* pArray = new tByte[40];
    struct sBlock
    {
        tByte aBytes[40];
    }* pBlock = new sBlock;

    TOV_SAFE_DELETE_ARRAY(pArray);
    TOV_SAFE_DELETE(pBlock);

    EXPECT_EQ(nullptr, pArray);
    EXPECT_EQ(nullptr, pBlock);
}
