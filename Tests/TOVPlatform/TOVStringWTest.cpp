// What wide text has for itself: UTF-16 units and plain pointer steps.
#include "TOVPlatform/TOVStringApis.h"

namespace TOVStringW = TOVPlatform::TOVStringW;

TEST(TOVPlatformStringWTest, ComparesUnitsOf16BitsAsUnsigned)
{
    EXPECT_EQ(-1, TOVStringW::Compare(L"\x0001", L"\xFFFF"));
    EXPECT_EQ(1, TOVStringW::Compare(L"\x8000", L"\x7FFF"));
    EXPECT_EQ(1, TOVStringW::Compare(L"\x0100", L"\x00FF"));
    EXPECT_EQ(0, TOVStringW::Compare(L"\x4E2D\x6587", L"\x4E2D\x6587"));
    EXPECT_EQ(-1, TOVStringW::Compare(L"\x4E2D", L"\x4E2D\x6587"));
}

TEST(TOVPlatformStringWTest, LengthCountsUnits)
{
    EXPECT_EQ(2, TOVStringW::Length(L"\U0001F600"));
    EXPECT_EQ(3, TOVStringW::Length(L"\x4E2D\x0100x"));
}

TEST(TOVPlatformStringWTest, CopiesUnitsWhole)
{
    wchar_t szRoom[5] = {'#', '#', '#', '#', '#'};

    TOVStringW::Copy(szRoom, L"\xABCD");
    TOVStringW::Concat(szRoom, L"\x1200\xFFFF");

    EXPECT_EQ(0xABCD, szRoom[0]);
    EXPECT_EQ(0x1200, szRoom[1]);
    EXPECT_EQ(0xFFFF, szRoom[2]);
    EXPECT_EQ(0, szRoom[3]);
    EXPECT_EQ('#', szRoom[4]);
}

TEST(TOVPlatformStringWTest, AUnitWithAZeroByteIsNoTerminator)
{
    const wchar_t szText[] = {0x0100, 0x0061, 0};

    EXPECT_EQ(2, TOVStringW::Length(szText));
    EXPECT_EQ(szText + 1, TOVStringW::FindCharacter(szText, 'a'));
    EXPECT_EQ(szText, TOVStringW::FindOneOf(szText, L"\x0100"));
    EXPECT_EQ(szText + 1, TOVStringW::FindNotOneOf(szText, L"\x0100"));
}

TEST(TOVPlatformStringWTest, FindsUnitsAbove255)
{
    const wchar_t szText[] = {'a', 0x4E2D, 'b', 0x4E2D, 0};

    EXPECT_EQ(szText + 1, TOVStringW::FindCharacter(szText, 0x4E2D));
    EXPECT_EQ(szText + 3, TOVStringW::FindLastCharacter(szText, 0x4E2D));
    EXPECT_EQ(nullptr, TOVStringW::FindCharacter(szText, 0x2D));
    EXPECT_EQ(szText + 3, TOVStringW::ReverseFindOneOf(szText, L"\x4E2D"));
    EXPECT_EQ(szText + 2, TOVStringW::ReverseFindNotOneOf(szText, L"\x4E2D"));
}

TEST(TOVPlatformStringWTest, StepsByUnitsAlsoInsideAPair)
{
    const wchar_t szText[] = L"\U0001F600x";

    EXPECT_EQ(szText + 1, TOVStringW::Inc(szText));
    EXPECT_EQ(szText + 2, TOVStringW::NInc(szText, 2));
    EXPECT_EQ(szText + 1, TOVStringW::Dec(szText, szText + 2));
}

TEST(TOVPlatformStringWTest, NIncTakesNoLookAtTheText)
{
    const wchar_t szText[] = {'a', 'b', 0, 'c', 'd', 0};

    EXPECT_EQ(szText + 4, TOVStringW::NInc(szText, 4));
    EXPECT_EQ(szText + 3, TOVStringW::Inc(szText + 2));
}

TEST(TOVPlatformStringWTest, ReversesUnits)
{
    wchar_t szText[] = {0x0102, 0x0304, 0x0506, 0};

    TOVStringW::Reverse(szText);

    EXPECT_EQ(0x0506, szText[0]);
    EXPECT_EQ(0x0304, szText[1]);
    EXPECT_EQ(0x0102, szText[2]);
}

TEST(TOVPlatformStringWTest, PrintsWideUnitsUnchanged)
{
    wchar_t szRoom[8] = {};

    EXPECT_EQ(3, TOVStringW::SPrintf(szRoom, L"%s%c", L"\x4E2D\x6587", 0xABCD));

    EXPECT_EQ(0x4E2D, szRoom[0]);
    EXPECT_EQ(0x6587, szRoom[1]);
    EXPECT_EQ(0xABCD, szRoom[2]);
    EXPECT_EQ(0, szRoom[3]);
}

TEST(TOVPlatformStringWTest, CountsUnitsWhereAPrintMustFit)
{
    wchar_t szRoom[4] = {'#', '#', '#', '#'};

    EXPECT_EQ(3, TOVStringW::SNPrintf(szRoom, 3, L"%s", L"abc"));

    EXPECT_EQ('c', szRoom[2]);
    EXPECT_EQ('#', szRoom[3]);
}

TEST(TOVPlatformStringWTest, BoundsStepByUnits)
{
    EXPECT_EQ(2 + 1, VSCPrintf<sWideApi>(L"\U0001F600"));
}

TEST(TOVPlatformStringWTest, ReadsDigitsOnly)
{
    // A unit whose low byte is a digit is none.
    wchar_t szText[] = {'1', 0x0132, '3', 0};
    wchar_t* pStop = nullptr;

    EXPECT_EQ(1, TOVStringW::ToLong(szText, &pStop, 10));

    EXPECT_EQ(szText + 1, pStop);
}
