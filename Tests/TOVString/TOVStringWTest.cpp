// What wide strings have for themselves: no string ids, 16-bit characters, widening.
#include "TOVString/TOVStringKinds.h"
#include "TOVString/TOVTestLoader.h"

#include <climits>
#include <cstdint>
#include <cstdio>

namespace
{
typedef CTOVStringW TypeParam;

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
TOV_CHILD(AssignsAWidePointer)
{
    const CTestLoader oLoader("loaded");
    const CLogRecorder oRecorder;
    CTOVStringW oText;
    std::puts("assigning");
    std::fflush(stdout);
    oText = reinterpret_cast<const wchar_t*>(static_cast<std::uintptr_t>(0x1234));
    std::puts(oLoader.Requests().empty() && oRecorder.Lines().empty() ? "read" : "asked");
    std::puts("survived");
}

TEST(CTOVStringWTest, ASmallValueIsAPointer)
{
    const sChildResult oResult = RunChild("AssignsAWidePointer");

    EXPECT_NE(std::string::npos, oResult.sOutput.find("assigning"));
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("survived"));
    EXPECT_NE(0, oResult.nExitCode);
}

TEST(CTOVStringWTest, ZeroExtendsTheBytesOfANarrowString)
{
    const CTOVStringW oText(CTOVStringA("a\x7F\x80\xE4\xFF"));

    EXPECT_EQ((tUnits{'a', 0x7F, 0x80, 0xE4, 0xFF}), UnitsOf(oText));
    EXPECT_EQ(6, CapacityOf(oText));
    EXPECT_EQ(0, oText.GetString()[5]);
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
