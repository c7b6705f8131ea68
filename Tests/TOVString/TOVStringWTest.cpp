// What wide strings have for themselves: no string ids, 16-bit characters, widening.
#include "Support/TOVMultiByte.h"
#include "TOVString/TOVStringKinds.h"
#include "TOVString/TOVTestLoader.h"

#include <climits>
#include <cstdint>
#include <cstdio>
#include <type_traits>

namespace
{
typedef CTOVStringW TypeParam;

// What is not a plain exchange of char for wchar_t.
static_assert(std::is_same_v<int (CTOVStringW::*)(CTOVArray<CTOVStringW>&, char) const, decltype(&CTOVStringW::Split)>);
static_assert(std::is_same_v<int (CTOVStringW::*)(long) const, decltype(&CTOVStringW::GetAt)>);
static_assert(std::is_same_v<void (CTOVStringW::*)(long, int), decltype(&CTOVStringW::SetAt)>);
static_assert(std::is_same_v<int (CTOVStringW::*)(const wchar_t*, va_list), decltype(&CTOVStringW::FormatV)>);

// All characters that count as the text.
std::vector<int> UnitsOf(const CTOVStringW& oText)
{
    std::vector<int> aUnits;
    for (int nIndex = 0; nIndex < oText.GetLength(); ++nIndex)
        aUnits.push_back(oText.GetAt(nIndex));
    return aUnits;
}

typedef std::vector<int> tUnits;
} // namespace

TEST(CTOVStringWTest, KnowsNoExplicitLoads)
{
    const CTestLoader oLoader("loaded");
    CTOVStringW oText(L"before");

    EXPECT_FALSE(oText.LoadStringResource(7));

    EXPECT_EQ(Holds("before", 7), StateOf(oText));
    EXPECT_TRUE(oLoader.Requests().empty());
}

TEST(CTOVStringWTest, NeedsNoLoaderForAnExplicitLoad)
{
    CTOVStringW oText(L"before");

    EXPECT_FALSE(oText.LoadStringResource(7));

    EXPECT_EQ(Holds("before", 7), StateOf(oText));
}

// No memory stands at such an address: the process that reads there ends, or comes to its last line without a load.
TOV_CHILD(ReadsAWidePointer)
{
    const CTestLoader oLoader("loaded");
    const CLogRecorder oRecorder;
    const auto* const szSmall = reinterpret_cast<const wchar_t*>(static_cast<std::uintptr_t>(0x1234));
    CTOVStringW oText;
    std::puts("reading");
    std::fflush(stdout);
    if (aArguments[0] == "assignment")
        oText = szSmall;
    else
        oText = CTOVStringW(szSmall);
    std::puts(oLoader.Requests().empty() && oRecorder.Lines().empty() ? "read" : "asked");
    std::puts("survived");
}

TEST(CTOVStringWTest, ASmallValueIsAPointer)
{
    for (const char* const szWay : {"assignment", "construction"})
    {
        const sChildResult oResult = RunChild("ReadsAWidePointer", {szWay});

        EXPECT_NE(std::string::npos, oResult.sOutput.find("reading")) << szWay;
        EXPECT_EQ(std::string::npos, oResult.sOutput.find("survived")) << szWay;
        EXPECT_NE(0, oResult.nExitCode) << szWay;
    }
}

// The same operations that load a narrow string by its id.
TEST(CTOVStringWTest, NoAssignmentAsksTheLoader)
{
    const CTestLoader oLoader("loaded");
    const CLogRecorder oRecorder;
    CTOVStringW oText(static_cast<const wchar_t*>(nullptr));

    oText = static_cast<const wchar_t*>(nullptr);
    oText = L'\x1234';
    oText = L"text";

    EXPECT_EQ(Holds("text", 5), StateOf(oText));
    EXPECT_TRUE(oLoader.Requests().empty());
    EXPECT_TRUE(oRecorder.Lines().empty());
}

TEST(CTOVStringWTest, ZeroExtendsTheBytesOfANarrowString)
{
    const CTOVStringW oText(CTOVStringA("a\x7F\x80\xE4\xFF"));

    EXPECT_EQ((tUnits{'a', 0x7F, 0x80, 0xE4, 0xFF}), UnitsOf(oText));
    EXPECT_EQ(6, CapacityOf(oText));
    EXPECT_EQ(0, oText.GetString()[5]);
}

TEST(CTOVStringWTest, WidensEveryByteAndNarrowsItBack)
{
    CTOVStringA oNarrow;
    oNarrow.AllocBuffer(256);
    for (int nByte = 0; nByte < 256; ++nByte)
        oNarrow.SetAt(nByte, nByte);

    const CTOVStringW oWide(oNarrow);
    const CTOVStringA oBack(oWide);

    EXPECT_EQ(256, oWide.GetLength());
    for (int nByte = 0; nByte < 256; ++nByte)
        EXPECT_EQ(nByte, oWide.GetAt(nByte));
    EXPECT_EQ(StateOf(oNarrow), StateOf(oBack));
    EXPECT_NE(oNarrow.GetString(), oBack.GetString());
}

TEST(CTOVStringWTest, NarrowsEveryUnitToItsLowByte)
{
    CTOVStringW oWide;
    oWide.AllocBuffer(0x10000);
    for (int nUnit = 0; nUnit < 0x10000; ++nUnit)
        oWide.SetAt(nUnit, nUnit);

    const CTOVStringA oNarrow(oWide);

    ASSERT_EQ(0x10000, oNarrow.GetLength());
    for (int nUnit = 0; nUnit < 0x10000; ++nUnit)
        ASSERT_EQ(nUnit & 0xFF, oNarrow.GetAt(nUnit)) << nUnit;
    EXPECT_EQ(0x10001, CapacityOf(oNarrow));
}

TEST(CTOVStringWTest, ConversionsShareNothing)
{
    CTOVStringW oWide(L"abc");
    CTOVStringA oNarrow(oWide);
    const CTOVStringW oBack(oNarrow);

    oWide.SetAt(0, 'x');
    oNarrow.SetAt(1, 'y');

    EXPECT_EQ(Holds("ayc", 4), StateOf(oNarrow));
    EXPECT_EQ(Holds("abc", 4), StateOf(oBack));
}

TEST(CTOVStringWTest, TakesTheWholeLengthOfANarrowString)
{
    CTOVStringA oNarrow;
    oNarrow.Copy("a\0bc", 4);
    EXPECT_EQ(Holds("a\0bc", 5), StateOf(CTOVStringW(oNarrow)));

    oNarrow.ReleaseBuffer(1);
    EXPECT_EQ(Holds("a", 2), StateOf(CTOVStringW(oNarrow)));
}

TEST(CTOVStringWTest, MadeOfAnEmptyNarrowStringHasNoBlock)
{
    CTOVStringA oEmptied("abc");
    oEmptied.Empty();

    EXPECT_EQ(HoldsNothing(), StateOf(CTOVStringW(oEmptied)));
    EXPECT_EQ(HoldsNothing(), StateOf(CTOVStringW(CTOVStringA())));
}

TEST(CTOVStringWTest, IsFilledByBytes)
{
    const CTOVStringW oText(L'x', 4);

    EXPECT_EQ(4, oText.GetLength());
    EXPECT_EQ(5, CapacityOf(oText));
    EXPECT_EQ(0x7878, oText.GetAt(0));
    EXPECT_EQ(0x7878, oText.GetAt(1));
    EXPECT_EQ(0, oText.GetString()[4]);
}

TEST(CTOVStringWTest, IsFilledWithTheLowByteOfTheCharacter)
{
    const CTOVStringW oText(L'\x20AC', 3);

    EXPECT_EQ(3, oText.GetLength());
    EXPECT_EQ(4, CapacityOf(oText));
    EXPECT_EQ(0xACAC, oText.GetAt(0));
    EXPECT_EQ(0xAC, oText.GetAt(1) & 0xFF);
    EXPECT_EQ(0, oText.GetString()[3]);
}

// The first half of the characters, and for an odd count the first byte of the one in the middle.
TEST(CTOVStringWTest, IsFilledWithAsManyBytesAsTheCountSays)
{
    for (const wchar_t cFill : {L'x', L'\xE4', L'\x20AC', L'\x0100'})
        for (int nCount = 1; nCount <= 9; ++nCount)
        {
            const CTOVStringW oText(cFill, nCount);
            const std::string sBytes(reinterpret_cast<const char*>(oText.GetString()),
                                     static_cast<std::size_t>(nCount));

            EXPECT_EQ(std::string(static_cast<std::size_t>(nCount), static_cast<char>(cFill)), sBytes);
            EXPECT_EQ(nCount, oText.GetLength());
            EXPECT_EQ(nCount + 1, CapacityOf(oText));
            EXPECT_EQ(0, oText.GetString()[nCount]);
        }
}

TEST(CTOVStringWTest, HoldsCharactersOf16Bits)
{
    CTOVStringW oText(L"\x20AC\xFFFF\x8000");

    EXPECT_EQ((tUnits{0x20AC, 0xFFFF, 0x8000}), UnitsOf(oText));
    EXPECT_EQ(0xFFFF, oText[1]);

    oText.SetAt(0, 0x12041);
    oText.SetAt(1, -1);
    oText.SetAt(2, 0x10000);
    EXPECT_EQ((tUnits{0x2041, 0xFFFF, 0}), UnitsOf(oText));
}

TEST(CTOVStringWTest, AnyCharacterBecomesAText)
{
    for (const wchar_t cCharacter : {L'\x80', L'\xE4', L'\x100', L'\x20AC', L'\xD800', L'\xFFFF'})
    {
        CTOVStringW oText;
        oText = cCharacter;
        EXPECT_EQ((tUnits{cCharacter}), UnitsOf(oText));
        EXPECT_EQ(2, CapacityOf(oText));
    }
}

TEST(CTOVStringWTest, RefusesANewCharacterOfZeroOnly)
{
    CTOVStringW oText(L"abc");

    EXPECT_EQ(1, oText.Replace(L'a', L'\x80'));
    EXPECT_EQ(1, oText.Replace(L'b', L'\xFFFF'));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace(L'c', L'\0'));

    EXPECT_EQ((tUnits{0x80, 0xFFFF, 'c'}), UnitsOf(oText));
}

TEST(CTOVStringWTest, ReplacesACharacterByAllOthers)
{
    CTOVStringW oText(L"\xFFFF");
    for (int nCharacter = 1; nCharacter < 0x10000; ++nCharacter)
    {
        const auto cNew = static_cast<wchar_t>(nCharacter);
        const auto cOld = static_cast<wchar_t>(oText.GetAt(0));
        ASSERT_EQ(1, oText.Replace(cOld, cNew)) << nCharacter;
        ASSERT_EQ(nCharacter, oText.GetAt(0));
    }
}

// The places of the wide twin of a text in which narrow strings see one character of two bytes.
TEST(CTOVStringWTest, StepsOneUnitACharacterInEveryCodePage)
{
    const CMultiByteCodePage oCodePage;
    const std::string sCharacter = oCodePage.Character();
    CTOVStringW oText(CTOVStringA(("a" + sCharacter + "b").c_str()));
    const auto cSecond = static_cast<wchar_t>(static_cast<unsigned char>(sCharacter[1]));

    EXPECT_EQ(4, oText.GetLength());
    EXPECT_EQ(3, oText.Find(L"b", 3));
    EXPECT_EQ(3, oText.FindOneOf(L"b", 3));
    EXPECT_EQ(2, oText.FindNotOneOf(L"a", 2));
    EXPECT_EQ(2, oText.Find(cSecond));
    EXPECT_EQ(1, oText.Replace(cSecond, L'x'));
    EXPECT_EQ('x', oText.GetAt(2));
}

TEST(CTOVStringWTest, AStartInsideTheCapacityIsPlainArithmetic)
{
    CTOVStringW oText(L"abcdef");
    oText.ReleaseBuffer(2);

    EXPECT_EQ(4, oText.FindOneOf(L"ef", 3));
    EXPECT_EQ(3, oText.FindNotOneOf(L"x", 3));
    EXPECT_EQ(-1, oText.FindOneOf(L"ab", 3));
    EXPECT_EQ(-1, oText.FindNotOneOf(L"x", 6));
}

TEST(CTOVStringWTest, AStartBeyondTheCapacityFindsNothing)
{
    CTOVStringW oText(L"abcdef");
    oText.ReleaseBuffer(2);

    for (const int nStart : {7, 8, 100, INT_MAX})
    {
        EXPECT_EQ(-1, oText.FindOneOf(L"abcdef", nStart)) << nStart;
        EXPECT_EQ(-1, oText.FindNotOneOf(L"x", nStart)) << nStart;
    }
}

TEST(CTOVStringWTest, AStartBehindAZeroFindsWhatLiesThere)
{
    CTOVStringW oText;
    oText.Copy(L"ab\0cd", 5);

    EXPECT_EQ(3, oText.Find(L"cd", 3));
    EXPECT_EQ(4, oText.FindOneOf(L"d", 3));
    EXPECT_EQ(3, oText.FindNotOneOf(L"x", 3));
    EXPECT_EQ(-1, oText.Find(L"cd"));
}

TEST(CTOVStringWTest, ComparesByUnsigned16Bits)
{
    const CTOVStringW oText(L"\x8000");

    EXPECT_EQ(1, oText.Compare(L"\x7FFF"));
    EXPECT_EQ(-1, oText.Compare(L"\xFFFF"));
    EXPECT_EQ(1, oText.Compare(L"\xFF"));
    EXPECT_EQ(0, oText.Compare(L"\x8000"));
}

TEST(CTOVStringWTest, TheSeparatorIsExtendedWithItsSign)
{
    CTOVArray<CTOVStringW> aParts;

    EXPECT_EQ(2, CTOVStringW(L"a\xFFE4z").Split(aParts, '\xE4'));
    EXPECT_EQ(Holds("a", 2), StateOf(aParts[0]));
    EXPECT_EQ(Holds("z", 2), StateOf(aParts[1]));

    EXPECT_EQ(1, CTOVStringW(L"a\xE4z").Split(aParts, '\xE4'));
    EXPECT_EQ(2, CTOVStringW(L"a\xFF80z").Split(aParts, '\x80'));
}

TEST(CTOVStringWTest, EverySeparatorFrom128OnIsExtendedWithItsSign)
{
    for (int nByte = 0x80; nByte < 0x100; ++nByte)
    {
        CTOVArray<CTOVStringW> aParts;
        CTOVStringW oText(L"a-z");

        oText.SetAt(1, 0xFF00 | nByte);
        EXPECT_EQ(2, oText.Split(aParts, static_cast<char>(nByte))) << nByte;
        oText.SetAt(1, nByte);
        EXPECT_EQ(1, oText.Split(aParts, static_cast<char>(nByte))) << nByte;
    }
}

TEST(CTOVStringWTest, ASeparatorBelow128IsUsedAsItIs)
{
    CTOVArray<CTOVStringW> aParts;

    EXPECT_EQ(2, CTOVStringW(L"a,z").Split(aParts, ','));
    EXPECT_EQ(1, CTOVStringW(L"a\x012C"
                             L"z")
                     .Split(aParts, ','));
}

// U+0131 and U+0154 have the low bytes of '1' and 'T'.
TEST(CTOVStringWTest, NumbersAndTruthAreReadByAll16Bits)
{
    EXPECT_EQ(0, CTOVStringW(L"\x0131").AsInt());
    EXPECT_EQ(1, CTOVStringW(L"1\x0131").AsLong());
    EXPECT_EQ(1u, CTOVStringW(L"1\x0131").AsUlong());
    EXPECT_EQ(1.0, CTOVStringW(L"1\x0131").AsDouble());
    EXPECT_FALSE(CTOVStringW(L"\x0131").AsBool());
    EXPECT_FALSE(CTOVStringW(L"\x0154RUE").AsBool());
}

TEST(CTOVStringWTest, ComparesBeginningsAndEndsByAll16Bits)
{
    const CTOVStringW oText(L"\x0141"
                            L"b\x0142");

    EXPECT_TRUE(oText.BeginsWith(L"\x0141"));
    EXPECT_FALSE(oText.BeginsWith(L"A"));
    EXPECT_FALSE(oText.BeginsWithNoCase(L"a"));
    EXPECT_TRUE(oText.EndsWith(L"\x0142"));
    EXPECT_FALSE(oText.EndsWith(L"B"));
    EXPECT_FALSE(oText.EndsWithNoCase(L"B"));
    EXPECT_EQ(1, oText.Compare(L"Ab"));
    EXPECT_LT(0, oText.CompareNoCase(L"Ab"));
}

TEST(CTOVStringWTest, FindsCharactersByAll16Bits)
{
    const CTOVStringW oText(L"a\x0141"
                            L"b\x20AC");

    EXPECT_EQ(-1, oText.Find(L'A'));
    EXPECT_EQ(1, oText.Find(L'\x0141'));
    EXPECT_EQ(3, oText.ReverseFind(L'\x20AC'));
    EXPECT_EQ(3, oText.Find(L"\x20AC"));
    EXPECT_EQ(-1, oText.FindOneOf(L"A\xAC"));
    EXPECT_EQ(1, oText.FindNotOneOf(L"aA"));
    EXPECT_EQ(3, oText.ReverseFindOneOf(L"\x20AC\x0141"));
}

TEST(CTOVStringWTest, KeepsAllBitsInEveryCopy)
{
    const CTOVStringW oText(L"a\x0141\x20AC");
    CTOVStringW oOther(L"\xFFFE");

    oOther += oText;
    EXPECT_EQ((tUnits{0xFFFE, 'a', 0x0141, 0x20AC}), UnitsOf(oOther));

    oOther.Replace(L"\x0141", L"\x1234\x5678");
    EXPECT_EQ((tUnits{0xFFFE, 'a', 0x1234, 0x5678, 0x20AC}), UnitsOf(oOther));
    EXPECT_EQ((tUnits{'a', 0x1234}), UnitsOf(oOther.Mid(1, 2)));

    oOther.Reverse();
    EXPECT_EQ((tUnits{0x20AC, 0x5678, 0x1234, 'a', 0xFFFE}), UnitsOf(oOther));

    EXPECT_EQ(4, oOther.Format(L"<%ls%c", L"\x20AC\x0141", 0x20AC));
    EXPECT_EQ((tUnits{'<', 0x20AC, 0x0141, 0x20AC}), UnitsOf(oOther));
}

TEST(CTOVStringWTest, FormatsNarrowText)
{
    CTOVStringW oText;

    EXPECT_EQ(41, oText.Format(L"<%hs|%ls>", "a narrow text of some length", L"a wide one"));

    EXPECT_EQ("<a narrow text of some length|a wide one>", VisibleOf(oText));
}

TEST(CTOVStringWTest, FormatsA64BitNumber)
{
    CTOVStringW oText;

    EXPECT_EQ(11, oText.Format(L"%I64d", -5000000000LL));

    EXPECT_EQ(Holds("-5000000000", 33), StateOf(oText));
}

TEST(CTOVStringWTest, FormattingThatGrowsLeavesSharersTheirBlock)
{
    CTOVStringW oText(L"\x20AC\x0141");
    const CTOVStringW oSharer(oText);
    const wchar_t* const pBlock = oSharer.GetString();

    EXPECT_EQ(2, oText.Format(L"%ls", L"\x1234\x5678"));
    EXPECT_EQ(pBlock, oText.GetString()) << "there is room";
    EXPECT_EQ((tUnits{0x1234, 0x5678}), UnitsOf(oSharer));

    EXPECT_EQ(3, oText.Format(L"%ls", L"\x1\x2\x3"));
    EXPECT_EQ((tUnits{1, 2, 3}), UnitsOf(oText));
    EXPECT_EQ(pBlock, oSharer.GetString());
    EXPECT_EQ((tUnits{0x1234, 0x5678}), UnitsOf(oSharer));
}

TEST(CTOVStringWTest, GetBufferThatGrowsLeavesSharersTheirBlock)
{
    CTOVStringW oText(L"\x20AC\x0141");
    const CTOVStringW oSharer(oText);

    oText.GetBuffer(3)[0] = L'\x1234';
    oText.ReleaseBuffer(1);

    EXPECT_EQ((tUnits{0x1234}), UnitsOf(oText));
    EXPECT_EQ(4, CapacityOf(oText));
    EXPECT_EQ((tUnits{0x20AC, 0x0141}), UnitsOf(oSharer));
    EXPECT_EQ(3, CapacityOf(oSharer));
}
