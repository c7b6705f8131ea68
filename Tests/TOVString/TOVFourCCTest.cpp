#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVTestSupport.h"

#include <TOVString/TOVFourCC.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(TerminatorOf, CTOVFourCC, char, m_cTerminator)

constexpr char TOO_SHORT[] = "TOVPlatform::TOVString::Length(szFourCC) >= 4";
constexpr char SOURCE[] = "TOVString/TOVFourCC.cpp";
constexpr char HEADER[] = "TOVString/TOVFourCC.h";

static_assert(std::has_virtual_destructor<CTOVFourCC>::value);
static_assert(std::is_same<decltype(&CTOVFourCC::ToDword), unsigned long (CTOVFourCC::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVFourCC::ToString), const char* (CTOVFourCC::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVFourCC::Compare), bool (CTOVFourCC::*)(const CTOVFourCC&) const>::value);

// All four characters, zeros included, as the object shows them.
std::string CharactersOf(const CTOVFourCC& oCode)
{
    std::string sCharacters;
    for (int nIndex = 0; nIndex < 4; ++nIndex)
        sCharacters += oCode.GetAt(nIndex);
    return sCharacters;
}

CTOVFourCC OfFourCC(unsigned long ulFourCC)
{
    CTOVFourCC oCode;
    oCode.FromFourCC(ulFourCC);
    return oCode;
}
} // namespace

TEST(CTOVFourCCTest, IsEmptyAtFirst)
{
    const CTOVFourCC oCode;

    EXPECT_TRUE(oCode.IsEmpty());
    EXPECT_EQ(0u, oCode.ToDword());
    EXPECT_STREQ("", oCode.ToString());
    EXPECT_EQ(std::string(4, '\0'), CharactersOf(oCode));
}

TEST(CTOVFourCCTest, HoldsValueAndTerminatorWithoutAGap)
{
    const CTOVFourCC oCode("abcd");

    EXPECT_EQ((SizeWithMembers<std::uint32_t, char>()), sizeof(CTOVFourCC));
    EXPECT_EQ(static_cast<const void*>(oCode.ToString()), reinterpret_cast<const char*>(&oCode) + sizeof(void*));
    EXPECT_EQ(0, std::memcmp("abcd", oCode.ToString(), 5));
}

TEST(CTOVFourCCTest, TakesANumberWithItsMostSignificantByteFirst)
{
    CTOVFourCC oCode;

    oCode.FromDword(0x61626364);

    EXPECT_EQ('a', oCode.GetAt(0));
    EXPECT_STREQ("abcd", oCode.ToString());
    EXPECT_EQ(0x64636261u, oCode.ToDword());
}

TEST(CTOVFourCCTest, TakesACodeWithItsLeastSignificantByteFirst)
{
    CTOVFourCC oCode;

    oCode.FromFourCC(0x61626364);

    EXPECT_EQ('d', oCode.GetAt(0));
    EXPECT_STREQ("dcba", oCode.ToString());
    EXPECT_EQ(0x61626364u, oCode.ToDword());
}

TEST(CTOVFourCCTest, IsRestoredAsACodeAndNotAsANumber)
{
    const CTOVFourCC oCode("abcd");
    CTOVFourCC oRestored;

    oRestored.FromFourCC(oCode.ToDword());
    EXPECT_STREQ("abcd", oRestored.ToString());

    oRestored.FromDword(oCode.ToDword());
    EXPECT_STREQ("dcba", oRestored.ToString());
}

TEST(CTOVFourCCTest, IsMadeOfANumberOfATextAndOfAnotherCode)
{
    const CTOVFourCC oOfNumber(0x61626364ul);
    const CTOVFourCC oOfText("abcd");
    const CTOVFourCC oCopy(oOfText);

    EXPECT_STREQ("abcd", oOfNumber.ToString());
    EXPECT_STREQ("abcd", oOfText.ToString());
    EXPECT_STREQ("abcd", oCopy.ToString());
}

TEST(CTOVFourCCTest, TakesTheFirstFourCharactersOfAText)
{
    CTOVFourCC oCode;

    oCode.FromString("abcd");
    EXPECT_STREQ("abcd", oCode.ToString());

    oCode.FromString("efghi");
    EXPECT_STREQ("efgh", oCode.ToString());

    EXPECT_STREQ("RIFF", CTOVFourCC("RIFF and much more").ToString());
}

TEST(CTOVFourCCTest, AddsTheCharactersOfATextWithTheirSigns)
{
    CTOVFourCC oCode;

    oCode.FromString("\xFF"
                     "aaa");
    EXPECT_EQ("\xFF\x60"
              "aa",
              CharactersOf(oCode));

    oCode.FromString("\x80\xFF\xE4\xE4");
    EXPECT_EQ("\x80\xFE\xE3\xE3", CharactersOf(oCode));

    oCode.FromString("\xFF\x01\x01\x01");
    EXPECT_EQ(std::string("\xFF\0\x01\x01", 4), CharactersOf(oCode));

    oCode.FromString("aaa\xFF");
    EXPECT_EQ("aaa\xFF", CharactersOf(oCode));
}

TEST(CTOVFourCCTest, AddsEveryCharacterAtEveryPlace)
{
    for (int nCharacter = 1; nCharacter < 256; ++nCharacter)
        for (std::size_t nPlace = 0; nPlace < 4; ++nPlace)
        {
            std::string sText(4, 'k');
            sText[nPlace] = static_cast<char>(nCharacter);
            std::int64_t nSum = 0;
            for (std::size_t nDigit = 4; nDigit-- > 0;)
                nSum = nSum * 256 + static_cast<signed char>(sText[nDigit]);

            EXPECT_EQ(static_cast<std::uint32_t>(nSum), CTOVFourCC(sText.c_str()).ToDword()) << nCharacter << nPlace;
        }
}

TEST(CTOVFourCCTest, RefusesATextOfLessThanFourCharacters)
{
    CTOVFourCC oCode("abcd");

    for (const char* const szShort : {"", "a", "ab", "abc"})
    {
        EXPECT_CHECK_AT(SOURCE, TOO_SHORT, oCode.FromString(szShort));
        EXPECT_CHECK_AT(SOURCE, TOO_SHORT, CTOVFourCC(szShort).ToDword());
    }
    EXPECT_CHECK_AT(SOURCE, TOO_SHORT, oCode.FromString("abc\0d"));

    EXPECT_STREQ("abcd", oCode.ToString());
}

TEST(CTOVFourCCTest, RefusesNullWhereItsLengthIsMeasured)
{
    CTOVFourCC oCode("abcd");

    EXPECT_CHECK_AT(TOV_PLATFORM_SOURCE("TOVString"), "szString != NULL", oCode.FromString(nullptr));

    EXPECT_STREQ("abcd", oCode.ToString());
}

TEST(CTOVFourCCTest, TakesItsOwnText)
{
    CTOVFourCC oCode("abcd");

    oCode.FromString(oCode.ToString());
    EXPECT_STREQ("abcd", oCode.ToString());

    oCode.SetAt(3, '\0');
    EXPECT_CHECK_AT(SOURCE, TOO_SHORT, oCode.FromString(oCode.ToString()));
    EXPECT_STREQ("abc", oCode.ToString());
}

TEST(CTOVFourCCTest, ConvertsToItsNumberAndToItsText)
{
    const CTOVFourCC oCode("abcd");
    const unsigned long ulCode = oCode;
    const char* const szCode = oCode;

    EXPECT_EQ(oCode.ToDword(), ulCode);
    EXPECT_EQ(oCode.ToString(), szCode);
}

TEST(CTOVFourCCTest, NumbersHave32Bits)
{
    const auto ulBeyond = static_cast<unsigned long>(0x1261626364ull);
    CTOVFourCC oCode;

    oCode.FromFourCC(ulBeyond);
    EXPECT_EQ(0x61626364u, oCode.ToDword());

    oCode.FromDword(ulBeyond);
    EXPECT_EQ(0x64636261u, oCode.ToDword());
    EXPECT_EQ(0x64636261u, CTOVFourCC(ulBeyond).ToDword());

    oCode.FromFourCC(~0ul);
    EXPECT_EQ(0xFFFFFFFFu, oCode.ToDword());
    oCode.FromDword(0x000000FF);
    EXPECT_EQ(0xFF000000u, oCode.ToDword());
    EXPECT_EQ(0xFF000000u, static_cast<unsigned long>(oCode));
}

TEST(CTOVFourCCTest, GivesEachCharacter)
{
    const CTOVFourCC oCode("ab\xE4z");

    EXPECT_EQ('a', oCode.GetAt(0));
    EXPECT_EQ('b', oCode.GetAt(1));
    EXPECT_EQ('\xE4', oCode.GetAt(2));
    EXPECT_EQ(static_cast<char>('z' - 1), oCode.GetAt(3)) << "the character behind a negative one";
}

TEST(CTOVFourCCTest, StoresEachCharacter)
{
    CTOVFourCC oCode;

    for (int nIndex = 0; nIndex < 4; ++nIndex)
        oCode.SetAt(nIndex, static_cast<char>('w' + nIndex));
    EXPECT_STREQ("wxyz", oCode.ToString());
    EXPECT_EQ(0x7A797877u, oCode.ToDword());

    oCode.SetAt(2, '\xFF');
    EXPECT_EQ(0x7AFF7877u, oCode.ToDword());
    EXPECT_EQ('\xFF', oCode.GetAt(2));
}

TEST(CTOVFourCCTest, AStoredZeroShortensTheText)
{
    CTOVFourCC oCode("abcd");

    oCode.SetAt(1, '\0');

    EXPECT_FALSE(oCode.IsEmpty());
    EXPECT_STREQ("a", oCode.ToString());
    EXPECT_EQ(std::string("a\0cd", 4), CharactersOf(oCode));
}

TEST(CTOVFourCCTest, RefusesToReadOutsideTheCode)
{
    const CTOVFourCC oCode("abcd");

    for (const int nIndex : {-1, -2147483647 - 1})
        EXPECT_CHECK_AT(HEADER, "nIndex >= 0", oCode.GetAt(nIndex));
    for (const int nIndex : {4, 5, 2147483647})
        EXPECT_CHECK_AT(HEADER, "nIndex < 4", oCode.GetAt(nIndex));
}

TEST(CTOVFourCCTest, RefusesToWriteOutsideTheCode)
{
    CTOVFourCC oCode("abcd");

    for (const int nIndex : {-1, -2147483647 - 1})
        EXPECT_CHECK_AT(HEADER, "nIndex >= 0", oCode.SetAt(nIndex, 'x'));
    for (const int nIndex : {4, 5, 2147483647})
        EXPECT_CHECK_AT(HEADER, "nIndex < 4", oCode.SetAt(nIndex, 'x'));

    EXPECT_STREQ("abcd", oCode.ToString());
    EXPECT_EQ(0, TerminatorOf(oCode));
}

TEST(CTOVFourCCTest, ComparesForEqualityOnly)
{
    const CTOVFourCC oCode("abcd");

    EXPECT_TRUE(oCode.Compare(oCode));
    EXPECT_TRUE(oCode.Compare(CTOVFourCC("abcd and more")));
    EXPECT_TRUE(CTOVFourCC().Compare(CTOVFourCC()));
    EXPECT_FALSE(oCode.Compare(CTOVFourCC()));
    for (const char* const szOther : {"Abcd", "aBcd", "abCd", "abcD", "dcba", "abce", "abcc"})
        EXPECT_FALSE(oCode.Compare(szOther)) << szOther;
}

TEST(CTOVFourCCTest, IsEmptyOnlyWithoutAnyCharacter)
{
    for (const unsigned long ulCode : {1ul, 0x100ul, 0x10000ul, 0x80000000ul})
        EXPECT_FALSE(OfFourCC(ulCode).IsEmpty()) << ulCode;
    EXPECT_TRUE(OfFourCC(0).IsEmpty());
}

TEST(CTOVFourCCTest, ReversesItsCharacters)
{
    CTOVFourCC oCode("abcd");

    oCode.Reverse();
    EXPECT_STREQ("dcba", oCode.ToString());
    EXPECT_EQ(0x61626364u, oCode.ToDword());

    oCode.Reverse();
    EXPECT_STREQ("abcd", oCode.ToString());
}

TEST(CTOVFourCCTest, ReversingLeavesTheTerminatorAlone)
{
    CTOVFourCC oCode = OfFourCC(0xFF00E461);
    TerminatorOf(oCode) = 'x';

    oCode.Reverse();

    EXPECT_EQ(0x61E400FFu, oCode.ToDword());
    EXPECT_EQ('x', TerminatorOf(oCode));
}

TEST(CTOVFourCCTest, WhateverSetsTheCodeTerminatesIt)
{
    const CTOVFourCC oOther("wxyz");
    CTOVFourCC oCode;

    TerminatorOf(oCode) = 'x';
    oCode.FromDword(0x61626364);
    EXPECT_EQ(0, TerminatorOf(oCode));

    TerminatorOf(oCode) = 'x';
    oCode.FromFourCC(0x61626364);
    EXPECT_EQ(0, TerminatorOf(oCode));

    TerminatorOf(oCode) = 'x';
    oCode.FromString("abcd");
    EXPECT_EQ(0, TerminatorOf(oCode));

    TerminatorOf(oCode) = 'x';
    oCode = oOther;
    EXPECT_EQ(0, TerminatorOf(oCode));
}

TEST(CTOVFourCCTest, ACopyHasATerminatorOfItsOwn)
{
    CTOVFourCC oBroken("abcd");
    TerminatorOf(oBroken) = 'x';

    CTOVFourCC oCopy(oBroken);

    EXPECT_EQ(0, TerminatorOf(oCopy));
    EXPECT_STREQ("abcd", oCopy.ToString());
    TerminatorOf(oBroken) = '\0';
}

TEST(CTOVFourCCTest, IsAssigned)
{
    const CTOVFourCC oSource("abcd");
    CTOVFourCC oCode("wxyz");
    static_assert(std::is_same<const CTOVFourCC&, decltype(oCode = oSource)>::value);

    EXPECT_EQ(&oCode, &(oCode = oSource));
    EXPECT_STREQ("abcd", oCode.ToString());

    oCode.SetAt(0, 'x');
    EXPECT_STREQ("abcd", oSource.ToString());

    const CTOVFourCC& oSame = oCode;
    oCode = oSame;
    EXPECT_STREQ("xbcd", oCode.ToString());
}
