// The path as a text: construction, sharing, separators at its ends, drives and roots.
#include "Path/TOVPathInstruments.h"
#include "Support/TOVLayout.h"
#include "TOVString/TOVTestLoader.h"

#include <climits>
#include <iomanip>
#include <sstream>
#include <type_traits>

namespace
{
const char* StringId(std::size_t nId)
{
    return reinterpret_cast<const char*>(nId);
}

struct sQuestion
{
    const char* szName;
    bool (CTOVPath::*fnAsk)() const;
    const char* szSeparators; // those it answers true for
    bool bLeading;
};

const sQuestion QUESTIONS[] = {
    {"HasLeadingBackslash", &CTOVPath::HasLeadingBackslash, "\\", true},
    {"HasLeadingForwardslash", &CTOVPath::HasLeadingForwardslash, "/", true},
    {"HasLeadingSlash", &CTOVPath::HasLeadingSlash, "\\/", true},
    {"HasTrailingBackslash", &CTOVPath::HasTrailingBackslash, "\\", false},
    {"HasTrailingForwardslash", &CTOVPath::HasTrailingForwardslash, "/", false},
    {"HasTrailingSlash", &CTOVPath::HasTrailingSlash, "\\/", false},
};

typedef void (CTOVPath::*tChange)();
} // namespace

TEST(CTOVPathTest, IsEmptyAtFirstAndHasNoCharacters)
{
    const CTOVPath oPath;

    EXPECT_TRUE(oPath.IsEmpty());
    EXPECT_EQ(0, oPath.GetLength());
    EXPECT_EQ(nullptr, ~oPath);
}

TEST(CTOVPathTest, HoldsOneStringBehindOneVirtualOperation)
{
    EXPECT_EQ(SizeWithMembers<CTOVStringA>(), sizeof(CTOVPath));
    EXPECT_TRUE(std::has_virtual_destructor<CTOVPath>::value);
}

TEST(CTOVPathTest, HoldsTheTextExactlyAsGiven)
{
    for (const char* szText : {"a", "a//b\\\\c", "./x/../y", "C:\\Dir/file.TXT", "/", "\\\\server\\share\\", " a "})
    {
        const CTOVPath oPath(szText);

        EXPECT_EQ(szText, TextOf(oPath));
        EXPECT_STREQ(szText, ~oPath);
        EXPECT_EQ(static_cast<long>(std::string(szText).size()), oPath.GetLength());
        EXPECT_FALSE(oPath.IsEmpty());
    }
}

TEST(CTOVPathTest, TakesNullAndTheEmptyTextAsEmpty)
{
    const char* const szNull = nullptr;

    for (const char* szText : {szNull, ""})
    {
        const CTOVPath oPath(szText);

        EXPECT_TRUE(oPath.IsEmpty());
        EXPECT_EQ(nullptr, ~oPath);
    }
}

TEST(CTOVPathTest, IsEmptiedByAssigningNullOrTheEmptyText)
{
    const char* const szNull = nullptr;

    for (const char* szText : {szNull, ""})
    {
        CTOVPath oPath("a/b");
        oPath = szText;

        EXPECT_TRUE(oPath.IsEmpty());
        EXPECT_STREQ("", ~oPath); // the block stays
    }
}

TEST(CTOVPathTest, TakesACopyOfPlainText)
{
    char szText[] = "a/b";
    const CTOVPath oConstructed(szText);
    CTOVPath oAssigned("other");
    oAssigned = szText;

    szText[0] = 'X';

    EXPECT_EQ("a/b", TextOf(oConstructed));
    EXPECT_EQ("a/b", TextOf(oAssigned));
}

TEST(CTOVPathTest, LoadsAStringIdAndTellsTheLog)
{
    const CTestLoader oLoader("loaded/path");
    CLogRecorder oLog;
    const CTOVPath oConstructed(StringId(0x1234));
    CTOVPath oAssigned("old");
    oAssigned = StringId(0x1234);

    EXPECT_EQ("loaded/path", TextOf(oConstructed));
    EXPECT_EQ("loaded/path", TextOf(oAssigned));
    EXPECT_EQ(2, oLog.CountLines("Implicit load of string with id '4660'."));
    ASSERT_EQ(2u, oLoader.Requests().size());
    EXPECT_EQ(0x1234, oLoader.Requests()[0].lId);
    EXPECT_EQ(0x1234, oLoader.Requests()[1].lId);
}

TEST(CTOVPathTest, StaysEmptyForAnIdThatTheLoaderDoesNotKnow)
{
    const CTestLoader oLoader(nullptr);
    CLogRecorder oLog;
    CTOVPath oPath("old");
    oPath = StringId(2);

    EXPECT_TRUE(oPath.IsEmpty());
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST(CTOVPathTest, RefusesAStringIdWithoutALoader)
{
    CTOVPath oPath("old");

    EXPECT_CHECK_AT("TOVString/TOVResourceLoader", "m_pInstance != NULL", oPath = StringId(7));
    EXPECT_TRUE(oPath.IsEmpty());
    EXPECT_CHECK_AT("TOVString/TOVResourceLoader", "m_pInstance != NULL", CTOVPath(StringId(7)));
}

TEST(CTOVPathTest, SharesTheTextOfAString)
{
    const CTOVStringA oText("a/b");
    const CTOVPath oConstructed(oText);
    CTOVPath oAssigned("old");
    oAssigned = oText;

    EXPECT_EQ(~oText, ~oConstructed);
    EXPECT_EQ(~oText, ~oAssigned);
}

TEST(CTOVPathTest, SharesTheTextOfAPath)
{
    const CTOVPath oPath("a/b");
    const CTOVPath oConstructed(oPath);
    CTOVPath oAssigned("old");
    oAssigned = oPath;

    EXPECT_EQ(~oPath, ~oConstructed);
    EXPECT_EQ(~oPath, ~oAssigned);
}

TEST(CTOVPathTest, KeepsItsTextWhenASharerTakesAnother)
{
    const CTOVPath oPath("a/b");
    CTOVPath oCopy(oPath);
    CTOVPath oEmptied(oPath);

    oCopy = "x";
    oEmptied.Empty();

    EXPECT_EQ("a/b", TextOf(oPath));
    EXPECT_EQ("x", TextOf(oCopy));
    EXPECT_TRUE(oEmptied.IsEmpty());
}

TEST(CTOVPathTest, KeepsItsRoomWhenEmptied)
{
    CTOVPath oPath("a/b");

    oPath.Empty();

    EXPECT_TRUE(oPath.IsEmpty());
    EXPECT_EQ(0, oPath.GetLength());
    EXPECT_EQ(4, oPath.AsString().GetData()->GetSize());
}

TEST(CTOVPathTest, GivesItsStringByReference)
{
    const CTOVPath oPath("a/b");
    const CTOVStringA& oConverted = oPath;

    EXPECT_EQ(&oPath.AsString(), &oConverted);
    EXPECT_EQ(oPath.AsString().GetString(), ~oPath);
}

TEST(CTOVPathTest, HasNoConversionToPlainText)
{
    EXPECT_FALSE((std::is_convertible<CTOVPath, const char*>::value));
    EXPECT_TRUE((std::is_convertible<CTOVPath, const CTOVStringA&>::value));
}

TEST(CTOVPathTest, HasOneSharedEmptyPath)
{
    CTOVPath& oNull = CTOVPath::Null();

    EXPECT_TRUE(oNull.IsEmpty());
    EXPECT_EQ(&oNull, &CTOVPath::Null());
}

TEST(CTOVPathTest, KeepsTheSharedEmptyPathBeyondTheLifeOfAFurtherHolder)
{
    const CTOVPath* const pNull = &CTOVPath::Null();
    {
        const CTOVDynamicSingleton<CTOVPath> oHolder;
        EXPECT_EQ(pNull, &CTOVPath::Null());
    }

    EXPECT_EQ(pNull, &CTOVPath::Null());
    EXPECT_TRUE(CTOVPath::Null().IsEmpty());
}

TEST(CTOVPathTest, HandsTheSharedEmptyPathOutAsTheEmptyResult)
{
    CTOVPath::Null() = "changed";
    const std::string sParent = TextOf(CTOVPath("a").Parent());
    const std::string sRoot = TextOf(CTOVPath::BuildRoot(26));
    CTOVPath::Null() = CTOVPath();

    EXPECT_EQ("changed", sParent);
    EXPECT_EQ("changed", sRoot);
    EXPECT_TRUE(CTOVPath::Null().IsEmpty());
}

TEST(CTOVPathTest, KnowsTwoSeparators)
{
    for (int nChar = 0; nChar < 256; ++nChar)
        EXPECT_EQ(nChar == '\\' || nChar == '/', CTOVPath::IsSlash(static_cast<char>(nChar))) << nChar;
}

TEST(CTOVPathTest, KnowsTheDriveLetters)
{
    for (int nChar = 0; nChar < 256; ++nChar)
    {
        const bool bLetter = (nChar >= 'A' && nChar <= 'Z') || (nChar >= 'a' && nChar <= 'z');
        EXPECT_EQ(bLetter, CTOVPath::IsDriveLetter(static_cast<char>(nChar))) << nChar;
    }
}

TEST(CTOVPathTest, NumbersTheDrivesFromEitherCase)
{
    const struct
    {
        const char* szPath;
        int nDrive;
    } CASES[] = {{"a:", 0},  {"A:", 0},   {"z:\\x", 25}, {"Z:/x", 25}, {"C:\\dir\\file", 2}, {"1:", -1},
                 {"@:", -1}, {"[:", -1},  {"`:", -1},    {"{:", -1},   {"\xE4:", -1},        {"ab", -1},
                 {":a", -1}, {"a/:", -1}, {"::", -1},    {"a;b", -1},  {"\\:", -1}};

    for (const auto& oCase : CASES)
        EXPECT_EQ(oCase.nDrive, CTOVPath(oCase.szPath).GetDriveNumber()) << oCase.szPath;
}

TEST(CTOVPathTest, RefusesTheDriveOfAPathShorterThanTwo)
{
    EXPECT_CHARACTER_CHECK(CTOVPath().GetDriveNumber());
    EXPECT_CHARACTER_CHECK(CTOVPath("a").GetDriveNumber());
    EXPECT_CHARACTER_CHECK(CTOVPath("1").GetDriveNumber());
}

TEST(CTOVPathTest, BuildsTheRootOfADrive)
{
    EXPECT_EQ("A:\\", TextOf(CTOVPath::BuildRoot(0)));
    EXPECT_EQ("C:\\", TextOf(CTOVPath::BuildRoot(2)));
    EXPECT_EQ("Z:\\", TextOf(CTOVPath::BuildRoot(25)));

    for (int nDrive = 0; nDrive < 26; ++nDrive)
        EXPECT_EQ(nDrive, CTOVPath::BuildRoot(nDrive).GetDriveNumber());
}

TEST(CTOVPathTest, BuildsNoRootForANumberThatIsNoDrive)
{
    for (const int nDrive : {26, -1, 255, INT_MIN, INT_MAX})
        EXPECT_TRUE(CTOVPath::BuildRoot(nDrive).IsEmpty()) << nDrive;
}

TEST(CTOVPathTest, TakesTwoBackslashesAndNothingElseForAUncName)
{
    const struct
    {
        const char* szPath;
        bool bUnc;
    } CASES[] = {{"\\\\x", true}, {"\\\\", true}, {"\\\\/", true},  {"//x", false}, {"\\/x", false},
                 {"/\\x", false}, {"\\x", false}, {"a\\\\", false}, {"a", false},   {"/", false}};

    for (const auto& oCase : CASES)
        EXPECT_NO_CHECK(EXPECT_EQ(oCase.bUnc, CTOVPath(oCase.szPath).IsUNC()) << oCase.szPath);
}

TEST(CTOVPathTest, RefusesAnEmptyPathAndALoneBackslashAsAUncName)
{
    EXPECT_CHARACTER_CHECK(CTOVPath().IsUNC());
    EXPECT_CHARACTER_CHECK(CTOVPath("\\").IsUNC());
}

TEST(CTOVPathTest, TestsTheSeparatorAtEachEnd)
{
    for (const sQuestion& oQuestion : QUESTIONS)
    {
        for (const char cEnd : {'\\', '/', 'a'})
        {
            const std::string sLeading = std::string(1, cEnd) + "x\\/x";
            const std::string sTrailing = "x\\/x" + std::string(1, cEnd);
            const CTOVPath oPath((oQuestion.bLeading ? sLeading : sTrailing).c_str());
            const bool bExpected = std::string(oQuestion.szSeparators).find(cEnd) != std::string::npos;

            EXPECT_EQ(bExpected, (oPath.*oQuestion.fnAsk)()) << oQuestion.szName << ' ' << ~oPath;
        }
    }
}

TEST(CTOVPathTest, ReadsALoneSeparatorFromBothEnds)
{
    for (const sQuestion& oQuestion : QUESTIONS)
    {
        for (const char* szPath : {"\\", "/"})
        {
            const bool bExpected = std::string(oQuestion.szSeparators).find(szPath) != std::string::npos;
            EXPECT_EQ(bExpected, (CTOVPath(szPath).*oQuestion.fnAsk)()) << oQuestion.szName << ' ' << szPath;
        }
    }
}

TEST(CTOVPathTest, RefusesToTestTheEndsOfAnEmptyPath)
{
    for (const sQuestion& oQuestion : QUESTIONS)
    {
        SCOPED_TRACE(oQuestion.szName);
        CTOVPath oEmptied("a/");
        oEmptied.Empty();

        EXPECT_CHARACTER_CHECK((CTOVPath().*oQuestion.fnAsk)());
        EXPECT_CHARACTER_CHECK((oEmptied.*oQuestion.fnAsk)());
    }
}

TEST(CTOVPathTest, RefusesToChangeTheEndsOfAnEmptyPath)
{
    for (const tChange fnChange :
         {&CTOVPath::AddTrailingBackslash, &CTOVPath::AddTrailingForwardslash, &CTOVPath::AddLeadingBackslash,
          &CTOVPath::AddLeadingForwardslash, &CTOVPath::RemoveTrailingBackslash, &CTOVPath::RemoveTrailingForwardslash,
          &CTOVPath::RemoveTrailingSlash, &CTOVPath::RemoveLeadingBackslash, &CTOVPath::RemoveLeadingForwardslash})
    {
        CTOVPath oPath;

        EXPECT_CHARACTER_CHECK((oPath.*fnChange)());
        EXPECT_TRUE(oPath.IsEmpty());
    }
}

TEST(CTOVPathTest, ReportsAFailedCheckUnderTheNameOfTheStringsHeader)
{
    CLogRecorder oLog;

    EXPECT_THROW(CTOVPath().HasTrailingSlash(), TOVDebug::CTOVAssertException);

    ASSERT_EQ(1u, oLog.Checks().size());
    EXPECT_EQ("TOVString/TOVStringA.h", oLog.Checks()[0].sFile);
}

TEST(CTOVPathTest, AppendsTheNamedSeparatorUnlessThatVeryOneIsThere)
{
    ExpectChanges("AddTrailingBackslash", &CTOVPath::AddTrailingBackslash,
                  {{"a", "a\\"}, {"a\\", "a\\"}, {"a/", "a/\\"}, {"\\", "\\"}});
    ExpectChanges("AddTrailingForwardslash", &CTOVPath::AddTrailingForwardslash,
                  {{"a", "a/"}, {"a/", "a/"}, {"a\\", "a\\/"}, {"/", "/"}});
}

TEST(CTOVPathTest, PrependsTheNamedSeparatorUnlessThatVeryOneIsThere)
{
    ExpectChanges("AddLeadingBackslash", &CTOVPath::AddLeadingBackslash,
                  {{"a", "\\a"}, {"\\a", "\\a"}, {"/a/", "\\/a/"}});
    ExpectChanges("AddLeadingForwardslash", &CTOVPath::AddLeadingForwardslash,
                  {{"a", "/a"}, {"/a", "/a"}, {"\\a", "/\\a"}});
}

TEST(CTOVPathTest, PrependsIntoANewText)
{
    const CTOVStringA oText = RoomyText("ab");
    CTOVPath oPath(oText);

    oPath.AddLeadingForwardslash();

    EXPECT_EQ("/ab", TextOf(oPath));
    EXPECT_STREQ("ab", ~oText);
}

TEST(CTOVPathTest, AppendsInPlaceWhereTheSharedBlockHasRoom)
{
    const CTOVStringA oText = RoomyText("ab");
    CTOVPath oPath(oText);

    oPath.AddTrailingForwardslash();

    EXPECT_EQ("ab/", TextOf(oPath));
    EXPECT_EQ("ab", TextOf(oText));
    EXPECT_STREQ("ab/", ~oText); // its length is its own, the characters are shared
}

TEST(CTOVPathTest, TakesOneTrailingSeparatorOfTheNamedKindAway)
{
    ExpectChanges("RemoveTrailingBackslash", &CTOVPath::RemoveTrailingBackslash,
                  {{"a\\", "a"}, {"a\\\\", "a\\"}, {"a/", "a/"}, {"a", "a"}, {"\\", ""}});
    ExpectChanges("RemoveTrailingForwardslash", &CTOVPath::RemoveTrailingForwardslash,
                  {{"a/", "a"}, {"a//", "a/"}, {"a\\", "a\\"}, {"/", ""}});
    ExpectChanges("RemoveTrailingSlash", &CTOVPath::RemoveTrailingSlash,
                  {{"a/", "a"}, {"a\\", "a"}, {"a/\\", "a/"}, {"ab", "ab"}, {"/", ""}});
}

TEST(CTOVPathTest, LeavesASharerItsTrailingSeparator)
{
    const CTOVPath oPath("a/");
    CTOVPath oCopy(oPath);

    oCopy.RemoveTrailingSlash();

    EXPECT_EQ("a", TextOf(oCopy));
    EXPECT_EQ("a/", TextOf(oPath));
}

TEST(CTOVPathTest, CountsTheTerminatorWhereALeadingSeparatorWasTakenAway)
{
    ExpectChanges(
        "RemoveLeadingBackslash", &CTOVPath::RemoveLeadingBackslash,
        {{"\\abc", std::string("abc\0", 4)}, {"\\\\a", std::string("\\a\0", 3)}, {"\\", std::string("\0", 1)}});
    ExpectChanges("RemoveLeadingForwardslash", &CTOVPath::RemoveLeadingForwardslash,
                  {{"/abc", std::string("abc\0", 4)}, {"/a/", std::string("a/\0", 3)}});
}

TEST(CTOVPathTest, TakesNoLeadingSeparatorOfTheOtherKindAway)
{
    ExpectChanges("RemoveLeadingBackslash", &CTOVPath::RemoveLeadingBackslash, {{"/a", "/a"}, {"a", "a"}});
    ExpectChanges("RemoveLeadingForwardslash", &CTOVPath::RemoveLeadingForwardslash, {{"\\a", "\\a"}, {"a", "a"}});
}

TEST(CTOVPathTest, ComparesEqualToTheShorterTextAndKeepsItsLengthWithoutTheLeadingSeparator)
{
    CTOVPath oPath("\\abc");

    oPath.RemoveLeadingBackslash();

    EXPECT_EQ(0, oPath.AsString().Compare("abc"));
    EXPECT_EQ(4, oPath.GetLength());
    EXPECT_EQ(0, oPath.AsString().GetAt(3));
}

TEST(CTOVPathTest, HasNoTrailingSeparatorOnceALeadingOneWasTakenAway)
{
    CTOVPath oPath("/abc/");

    oPath.RemoveLeadingForwardslash();

    EXPECT_STREQ("abc/", ~oPath);
    EXPECT_FALSE(oPath.HasTrailingSlash());
    EXPECT_FALSE(oPath.HasTrailingForwardslash());
}

TEST(CTOVPathTest, TakesALeadingSeparatorAwayFromABlockWithRoomInTheSameWay)
{
    CTOVPath oPath(RoomyText("/abc"));

    oPath.RemoveLeadingForwardslash();

    EXPECT_EQ(std::string("abc\0", 4), TextOf(oPath));
}

TEST(CTOVPathTest, ReplacesSeparatorsAndTellsHowMany)
{
    const struct
    {
        const char* szBefore;
        const char* szForward;
        int nForward;
        const char* szBackward;
        int nBackward;
    } CASES[] = {{"a\\b", "a/b", 1, "a\\b", 0},
                 {"a/b", "a/b", 0, "a\\b", 1},
                 {"\\\\a/b\\", "//a/b/", 3, "\\\\a\\b\\", 1},
                 {"name", "name", 0, "name", 0}};

    for (const auto& oCase : CASES)
    {
        CTOVPath oForward(oCase.szBefore);
        CTOVPath oBackward(oCase.szBefore);

        EXPECT_EQ(oCase.nForward, oForward.MakeForwardslashes());
        EXPECT_EQ(oCase.szForward, TextOf(oForward));
        EXPECT_EQ(oCase.nBackward, oBackward.MakeBackwardslashes());
        EXPECT_EQ(oCase.szBackward, TextOf(oBackward));
    }
}

TEST(CTOVPathTest, FindsNoSeparatorToReplaceInAnEmptyPath)
{
    CTOVPath oPath;

    EXPECT_NO_CHECK(EXPECT_EQ(0, oPath.MakeForwardslashes()));
    EXPECT_NO_CHECK(EXPECT_EQ(0, oPath.MakeBackwardslashes()));
}

TEST(CTOVPathTest, ReplacesSeparatorsForAllSharers)
{
    const CTOVStringA oText("a\\b");
    const CTOVPath oFirst(oText);
    CTOVPath oSecond(oFirst);

    oSecond.MakeForwardslashes();

    EXPECT_EQ("a/b", TextOf(oFirst));
    EXPECT_EQ("a/b", TextOf(oText));

    oSecond.MakeBackwardslashes();

    EXPECT_EQ("a\\b", TextOf(oFirst));
}

TEST(CTOVPathTest, IsWrittenToAStream)
{
    std::ostringstream oStream;

    oStream << CTOVPath("a/b") << '|' << CTOVPath() << '|' << std::setw(4) << CTOVPath("c");

    EXPECT_EQ("a/b||   c", oStream.str());
}
