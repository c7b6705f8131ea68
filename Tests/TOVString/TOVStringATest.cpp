// What narrow strings have for themselves: string ids, signed and multi-byte characters, narrowing.
#include "Support/TOVMultiByte.h"
#include "TOVString/TOVStringKinds.h"
#include "TOVString/TOVTestLoader.h"

#include <cstdint>
#include <cstdio>

namespace
{
constexpr char NO_LOADER[] = "m_pInstance != NULL";
constexpr char LOADER_SOURCE[] = "TOVString/TOVResourceLoader";
constexpr char SOURCE[] = "TOVString/TOVStringA";

typedef CTOVStringA TypeParam;

// A number in the place of a text.
const char* Id(std::uintptr_t nId)
{
    return reinterpret_cast<const char*>(nId);
}

// The lines that strings logged.
std::vector<sLogLine> LinesOf(const CLogRecorder& oRecorder)
{
    std::vector<sLogLine> aLines;
    for (const sLogLine& oLine : oRecorder.Lines())
        if (oLine.sFile.find(SOURCE) != std::string::npos)
            aLines.push_back(oLine);
    return aLines;
}
} // namespace

TEST(CTOVStringAIdTest, AnIdLoadsTheTextOfThatNumber)
{
    CTestLoader oLoader("loaded");
    CTOVStringA oText("before");

    EXPECT_EQ(&oText, &(oText = Id(0x1234)));

    EXPECT_EQ(Holds("loaded", 7), StateOf(oText));
    ASSERT_EQ(1u, oLoader.Requests().size());
    EXPECT_EQ(0x1234, oLoader.Requests()[0].lId);
    EXPECT_EQ(&oText, oLoader.Requests()[0].pTarget);
}

TEST(CTOVStringAIdTest, TheStringIsEmptiedBeforeTheLoaderIsAsked)
{
    CTestLoader oLoader("loaded");
    CTOVStringA oText("before");

    oText = Id(1);

    ASSERT_EQ(1u, oLoader.Requests().size());
    EXPECT_EQ("", oLoader.Requests()[0].sTextBefore);
    EXPECT_EQ(0, oLoader.Requests()[0].lLengthBefore);
    EXPECT_EQ(7, oLoader.Requests()[0].lCapacityBefore);
}

TEST(CTOVStringAIdTest, AStringIsMadeOfAnId)
{
    CTestLoader oLoader("loaded");

    const CTOVStringA oText(Id(0xFFFF));

    EXPECT_EQ(Holds("loaded", 7), StateOf(oText));
    ASSERT_EQ(1u, oLoader.Requests().size());
    EXPECT_EQ(0xFFFF, oLoader.Requests()[0].lId);
    EXPECT_EQ(0, oLoader.Requests()[0].lCapacityBefore);
}

TEST(CTOVStringAIdTest, ASuccessfulLoadIsLogged)
{
    const CTestLoader oLoader("loaded");
    const CLogRecorder oRecorder;
    CTOVStringA oText;

    oText = Id(0x1234);

    const std::vector<sLogLine> aLines = LinesOf(oRecorder);
    ASSERT_EQ(1u, aLines.size());
    EXPECT_EQ("Implicit load of string with id '4660'.", aLines[0].sText);
    EXPECT_EQ(eSeverityInfo, aLines[0].eSeverity);
    EXPECT_EQ(200, static_cast<int>(aLines[0].eSeverity));
    EXPECT_LT(0u, aLines[0].ulLine);
}

TEST(CTOVStringAIdTest, TheLargestIdIsLoggedAsANumber)
{
    const CTestLoader oLoader("loaded");
    const CLogRecorder oRecorder;

    const CTOVStringA oText(Id(0xFFFF));

    ASSERT_EQ(1u, LinesOf(oRecorder).size());
    EXPECT_EQ("Implicit load of string with id '65535'.", LinesOf(oRecorder)[0].sText);
}

TEST(CTOVStringAIdTest, AFailedLoadLeavesTheStringEmptyAndIsNotLogged)
{
    const CTestLoader oLoader(nullptr);
    const CLogRecorder oRecorder;
    CTOVStringA oText("before");

    oText = Id(0x1234);

    EXPECT_EQ(Holds("", 7), StateOf(oText));
    EXPECT_TRUE(LinesOf(oRecorder).empty());
    EXPECT_EQ(1u, oLoader.Requests().size());
}

TEST(CTOVStringAIdTest, AnIdWithoutALoaderIsRefusedByAnEmptiedString)
{
    CTOVStringA oText("before");

    EXPECT_CHECK_AT(LOADER_SOURCE, NO_LOADER, oText = Id(0x1234));
    EXPECT_CHECK_AT(LOADER_SOURCE, NO_LOADER, CTOVStringA(Id(1)));

    EXPECT_EQ(Holds("", 7), StateOf(oText));
}

TEST(CTOVStringAIdTest, ALoadLeavesASharedBlockAlone)
{
    const CTestLoader oLoader("loaded");
    CTOVStringA oText("before");
    const CTOVStringA oSharer(oText);

    oText = Id(7);

    EXPECT_EQ(Holds("loaded", 7), StateOf(oText));
    EXPECT_EQ(Holds("before", 7), StateOf(oSharer));
}

TEST(CTOVStringAIdTest, NullAndACharacterAreNoIds)
{
    const CTestLoader oLoader("loaded");
    CTOVStringA oText;

    oText = static_cast<const char*>(nullptr);
    oText = 'x';
    oText = '\0';

    EXPECT_TRUE(oLoader.Requests().empty());
    EXPECT_TRUE(oText.IsEmpty());
}

// The first value that is a pointer. What it points to may be no memory at all, so a process of its own looks.
TOV_CHILD(AssignsTheFirstPointer)
{
    const CTestLoader oLoader("loaded");
    CTOVStringA oText;
    std::puts("assigning");
    std::fflush(stdout);
    oText = Id(0x10000);
    std::puts(oLoader.Requests().empty() ? "read" : "asked");
}

TEST(CTOVStringAIdTest, From0x10000OnAValueIsAPointer)
{
    const sChildResult oResult = RunChild("AssignsTheFirstPointer");

    EXPECT_NE(std::string::npos, oResult.sOutput.find("assigning"));
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("asked"));
}

TEST(CTOVStringAIdTest, AnExplicitLoadHandsTheIdOnAsGiven)
{
    CTestLoader oLoader("loaded");
    CTOVStringA oText;

    EXPECT_TRUE(oText.LoadStringResource(0x12345678));
    EXPECT_TRUE(oText.LoadStringResource(-1));
    EXPECT_TRUE(oText.LoadStringResource(0));

    EXPECT_EQ(Holds("loaded", 7), StateOf(oText));
    ASSERT_EQ(3u, oLoader.Requests().size());
    EXPECT_EQ(0x12345678, oLoader.Requests()[0].lId);
    EXPECT_EQ(-1, oLoader.Requests()[1].lId);
    EXPECT_EQ(0, oLoader.Requests()[2].lId);
    EXPECT_EQ(&oText, oLoader.Requests()[0].pTarget);
}

TEST(CTOVStringAIdTest, AnExplicitLoadDoesNotEmptyTheStringAndLogsNothing)
{
    const CTestLoader oLoader(nullptr);
    const CLogRecorder oRecorder;
    CTOVStringA oText("before");

    EXPECT_FALSE(oText.LoadStringResource(7));

    EXPECT_EQ(Holds("before", 7), StateOf(oText));
    ASSERT_EQ(1u, oLoader.Requests().size());
    EXPECT_EQ("before", oLoader.Requests()[0].sTextBefore);
    EXPECT_TRUE(LinesOf(oRecorder).empty());
}

TEST(CTOVStringAIdTest, ASuccessfulExplicitLoadLogsNothingEither)
{
    const CTestLoader oLoader("loaded");
    const CLogRecorder oRecorder;
    CTOVStringA oText("before");

    EXPECT_TRUE(oText.LoadStringResource(7));

    EXPECT_TRUE(LinesOf(oRecorder).empty());
}

TEST(CTOVStringAIdTest, AnExplicitLoadWithoutALoaderIsRefused)
{
    CTOVStringA oText("before");

    EXPECT_CHECK_AT(LOADER_SOURCE, NO_LOADER, oText.LoadStringResource(7));

    EXPECT_EQ(Holds("before", 7), StateOf(oText));
}

TEST(CTOVStringATest, IsFilledWithACharacter)
{
    EXPECT_EQ(Holds("xxx", 4), StateOf(CTOVStringA('x', 3)));
    EXPECT_EQ(Holds("\xE4", 2), StateOf(CTOVStringA('\xE4', 1)));
    EXPECT_EQ(Holds("\0\0", 3), StateOf(CTOVStringA('\0', 2)));
}

TEST(CTOVStringATest, TakesTheLowBitsOfAWideString)
{
    const CTOVStringW oWide(L"a\x20AC\xE4\xFF");

    EXPECT_EQ(Holds("a\xAC\xE4\xFF", 5), StateOf(CTOVStringA(oWide)));
}

TEST(CTOVStringATest, TakesTheWholeLengthOfAWideString)
{
    CTOVStringW oWide(L"abcdef");
    oWide.Copy(L"a\0\x0100z", 4);
    EXPECT_EQ(Holds("a\0\0z", 5), StateOf(CTOVStringA(oWide)));

    oWide.ReleaseBuffer(1);
    EXPECT_EQ(Holds("a", 2), StateOf(CTOVStringA(oWide)));
}

TEST(CTOVStringATest, MadeOfAnEmptyWideStringHasNoBlock)
{
    CTOVStringW oEmptied(L"abc");
    oEmptied.Empty();

    EXPECT_EQ(HoldsNothing(), StateOf(CTOVStringA(oEmptied)));
    EXPECT_EQ(HoldsNothing(), StateOf(CTOVStringA(CTOVStringW())));
}

TEST(CTOVStringATest, StoresTheLowEightBits)
{
    CTOVStringA oText("abc");

    oText.SetAt(0, 0x141);
    oText.SetAt(1, -1);
    oText.SetAt(2, 0x100);

    EXPECT_EQ(Holds("A\xFF\0", 4), StateOf(oText));
}

TEST(CTOVStringATest, ANegativeCharacterBeginsTheText)
{
    CTOVStringA oText;

    oText = '\xE4';

    ASSERT_LT(0, oText.GetLength());
    EXPECT_EQ(0xE4, oText.GetAt(0));
}

TEST(CTOVStringATest, RefusesANewCharacterAbove127)
{
    CTOVStringA oText("abc");

    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace('a', '\x80'));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace('a', '\xFF'));
    EXPECT_SOURCE_CHECK("cNewChar > 0", oText.Replace('\xFF', '\xFF'));
    EXPECT_EQ(1, oText.Replace('a', '\x7F'));

    EXPECT_EQ(Holds("\x7F"
                    "bc",
                    4),
              StateOf(oText));
}

TEST(CTOVStringATest, ReplacesAnOldCharacterAbove127)
{
    CTOVStringA oText("\xE4-\xE4");

    EXPECT_EQ(2, oText.Replace('\xE4', 'a'));

    EXPECT_EQ(Holds("a-a", 4), StateOf(oText));
}

TEST(CTOVStringATest, AStartBehindTheTextStopsAtTheTerminator)
{
    CTOVStringA oText("abcdef");
    oText.ReleaseBuffer(2);

    EXPECT_EQ(-1, oText.FindOneOf("def", 3));
    EXPECT_EQ(-1, oText.FindNotOneOf("x", 3));
    EXPECT_EQ(-1, oText.FindOneOf("def", 6));
}

TEST(CTOVStringATest, AStartBehindAZeroStopsAtTheZero)
{
    CTOVStringA oText;
    oText.Copy("ab\0cd", 5);

    EXPECT_EQ(-1, oText.Find("cd", 3));
    EXPECT_EQ(-1, oText.FindOneOf("cd", 3));
    EXPECT_EQ(-1, oText.FindNotOneOf("x", 3));
}

TEST(CTOVStringATest, ComparesWithoutCaseToExactlyMinusOneZeroOrOne)
{
    const CTOVStringA oText("bcd");

    EXPECT_EQ(-1, oText.CompareNoCase("XYZ"));
    EXPECT_EQ(1, oText.CompareNoCase("ABC"));
    EXPECT_EQ(-1, oText.CollateNoCase("XYZ"));
    EXPECT_EQ(1, oText.CollateNoCase("ABC"));
}

TEST(CTOVStringATest, SplitsAtASeparatorAbove127)
{
    CTOVArray<CTOVStringA> aParts;

    EXPECT_EQ(2, CTOVStringA("a\xE4z").Split(aParts, '\xE4'));

    EXPECT_EQ(Holds("a", 2), StateOf(aParts[0]));
    EXPECT_EQ(Holds("z", 2), StateOf(aParts[1]));
}

TEST(CTOVStringATest, FormatsWideTextAnd64Bits)
{
    CTOVStringA oText;

    EXPECT_EQ(15, oText.Format("%S %ls %hs %s", L"abc", L"def", "ghi", "jkl"));
    EXPECT_EQ("abc def ghi jkl", VisibleOf(oText));

    EXPECT_EQ(11, oText.Format("%I64d", -5000000000LL));
    EXPECT_EQ("-5000000000", VisibleOf(oText));
}

TEST(CTOVStringATest, FormatsWithPrecisionsBeyondTheEstimateOfANumber)
{
    CTOVStringA oText;

    EXPECT_EQ(40, oText.Format("%.40d", 1));
    EXPECT_EQ((sHeld{std::string(39, '0') + "1", 41}), StateOf(oText));

    EXPECT_EQ(101, oText.Format("%.100d", -1));
    EXPECT_EQ("-" + std::string(99, '0') + "1", VisibleOf(oText));
}

// "a", a character of two bytes, "b".
class CTOVStringAMultiByteTest : public testing::Test
{
protected:
    CTOVStringAMultiByteTest() : m_sCharacter(m_oCodePage.Character()), m_oText(("a" + m_sCharacter + "b").c_str()) {}

    const CMultiByteCodePage m_oCodePage;
    const std::string m_sCharacter;
    CTOVStringA m_oText;
};

TEST_F(CTOVStringAMultiByteTest, TheLengthCountsBytes)
{
    EXPECT_EQ(4, m_oText.GetLength());
}

TEST_F(CTOVStringAMultiByteTest, TheStartOfASearchForTextCountsCharacters)
{
    EXPECT_EQ(3, m_oText.Find("b", 2));
    EXPECT_EQ(-1, m_oText.Find("b", 3));
    EXPECT_EQ(3, m_oText.FindOneOf("b", 2));
    EXPECT_EQ(-1, m_oText.FindOneOf("b", 3));
    EXPECT_EQ(3, m_oText.FindNotOneOf("a", 2));
}

TEST_F(CTOVStringAMultiByteTest, TheStartOfASearchForACharacterCountsBytes)
{
    EXPECT_EQ(3, m_oText.Find('b', 3));
    EXPECT_EQ(3, m_oText.Find('b', 2));
}

TEST_F(CTOVStringAMultiByteTest, AReplacedCharacterIsNoSecondByte)
{
    EXPECT_EQ(0, m_oText.Replace(m_sCharacter[1], 'x'));
    EXPECT_EQ(1, m_oText.Replace('b', 'x'));

    EXPECT_EQ("a" + m_sCharacter + "x", VisibleOf(m_oText));
}
