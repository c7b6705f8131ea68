// Comparing and relating two paths.
#include "Path/TOVPathInstruments.h"

#include <climits>

namespace
{
struct sPair
{
    const char* szFirst;
    const char* szSecond;
    bool bExpected;
};

typedef bool (CTOVPath::*tRelation)(const CTOVPath&) const;

void ExpectRelation(tRelation fnRelation, const std::vector<sPair>& aPairs)
{
    for (const sPair& oPair : aPairs)
    {
        const CTOVPath oFirst(oPair.szFirst);
        const CTOVPath oSecond(oPair.szSecond);

        EXPECT_NO_CHECK(EXPECT_EQ(oPair.bExpected, (oFirst.*fnRelation)(oSecond))
                        << '"' << oPair.szFirst << "\" and \"" << oPair.szSecond << '"');
    }
}

bool IsSame(const char* szFirst, const char* szSecond, bool bIgnoreLeadingSlash, bool bIgnoreTrailingSlash)
{
    return CTOVPath(szFirst).IsSame(CTOVPath(szSecond), 0, bIgnoreLeadingSlash, bIgnoreTrailingSlash);
}

int Compare(const char* szFirst, const char* szSecond)
{
    return CTOVPath(szFirst).Compare(CTOVPath(szSecond));
}

// Paths of all kinds, to be paired with each other.
const char* const PATHS[] = {"",     "/",     "\\",   "//",       "a",           "A",        "a/",  "/a",
                             "a/b",  "a\\b",  "A/B/", "a//b",     "a/b/c",       "b",        "x",   "./a",
                             "a/..", "C:\\a", "C:",   "\\\\a\\b", "\\\\server/", "name.txt", "a_b", "AB"};
} // namespace

TEST(CTOVPathRelationsTest, ComparesEqualWithoutRegardToCaseAndSeparators)
{
    for (const char* szFirst : {"a\\b", "A/B/", "/a/b", "\\A\\b\\", "a/b"})
    {
        for (const char* szSecond : {"a\\b", "A/B/", "/a/b", "\\A\\b\\", "a/b"})
            EXPECT_EQ(0, Compare(szFirst, szSecond)) << szFirst << ' ' << szSecond;
    }
}

TEST(CTOVPathRelationsTest, OrdersBytesFrom0x80UpAfterAllOthers)
{
    EXPECT_GT(0, Compare("dir/z", "dir/\xE4"));
    EXPECT_LT(0, Compare("dir/\xE4", "dir/z"));
    EXPECT_GT(0, Compare("\x80", "\xFF"));
    EXPECT_GT(0, Compare("dir\\Z\\b", "DIR/\x80/a"));
}

TEST(CTOVPathRelationsTest, OrdersByComponents)
{
    const char* const ASCENDING[] = {"", "a", "a//b", "a/b", "a/b/c", "A/C", "a-b", "b", "B/a"};
    const int nCount = static_cast<int>(sizeof ASCENDING / sizeof ASCENDING[0]);

    for (int nFirst = 0; nFirst < nCount; ++nFirst)
    {
        for (int nSecond = 0; nSecond < nCount; ++nSecond)
        {
            const int nExpected = nFirst < nSecond ? -1 : nFirst > nSecond ? 1 : 0;
            EXPECT_EQ(nExpected, Compare(ASCENDING[nFirst], ASCENDING[nSecond]))
                << ASCENDING[nFirst] << ' ' << ASCENDING[nSecond];
        }
    }
}

TEST(CTOVPathRelationsTest, ComparesEmptyComponentsAsEmptyText)
{
    EXPECT_NO_CHECK(EXPECT_EQ(0, Compare("\\\\server", "//SERVER")));
    EXPECT_NO_CHECK(EXPECT_EQ(-1, Compare("\\\\server", "server")));
    EXPECT_NO_CHECK(EXPECT_EQ(0, Compare("a//b", "A\\\\B")));
    EXPECT_NO_CHECK(EXPECT_EQ(0, Compare("", "")));
    EXPECT_NO_CHECK(EXPECT_EQ(0, Compare("", "/")));
    EXPECT_NO_CHECK(EXPECT_EQ(-1, Compare("/", "//")));
}

TEST(CTOVPathRelationsTest, ComparesEveryPairOppositelyTheOtherWayRound)
{
    for (const char* szFirst : PATHS)
    {
        for (const char* szSecond : PATHS)
            EXPECT_EQ(Compare(szFirst, szSecond), -Compare(szSecond, szFirst)) << szFirst << ' ' << szSecond;
    }
}

TEST(CTOVPathRelationsTest, IsTheSameWithoutRegardToCase)
{
    EXPECT_TRUE(IsSame("a/b", "A/B", false, false));
    EXPECT_TRUE(IsSame("C:\\Dir", "c:\\dIR", false, false));
    EXPECT_FALSE(IsSame("a/b", "a/c", true, true));
    EXPECT_FALSE(IsSame("a/b", "c/b", true, true));
}

TEST(CTOVPathRelationsTest, IsNotTheSameForAnotherNumberOfComponents)
{
    EXPECT_FALSE(IsSame("a/b", "a/b/c", true, true));
    EXPECT_FALSE(IsSame("a//b", "a/b", true, true));
    EXPECT_NO_CHECK(EXPECT_FALSE(IsSame("", "a", false, false)));
    EXPECT_NO_CHECK(EXPECT_FALSE(IsSame("a", "", false, false)));
}

TEST(CTOVPathRelationsTest, IgnoresATrailingSeparatorIfAsked)
{
    EXPECT_FALSE(IsSame("a/b", "a/b/", false, false));
    EXPECT_FALSE(IsSame("a/b/", "a/b", true, false));
    EXPECT_TRUE(IsSame("a/b", "a/b/", false, true));
    EXPECT_TRUE(IsSame("a/b/", "a/b\\", false, false));
}

TEST(CTOVPathRelationsTest, IgnoresALeadingSeparatorIfAsked)
{
    EXPECT_FALSE(IsSame("/a/b", "a/b", false, false));
    EXPECT_FALSE(IsSame("a/b", "\\a/b", false, true));
    EXPECT_TRUE(IsSame("/a/b", "a/b", true, false));
    EXPECT_TRUE(IsSame("/a/b", "\\a/b", false, false));
}

TEST(CTOVPathRelationsTest, CountsTheSeparatorsBetweenComponentsForIsSame)
{
    EXPECT_FALSE(IsSame("a/b", "a\\b", true, true));
    EXPECT_EQ(0, Compare("a/b", "a\\b"));
    EXPECT_FALSE(IsSame("a/b/c", "a/b\\c", true, true));
}

TEST(CTOVPathRelationsTest, DoesNotReadTheNumberGivenToIsSame)
{
    for (const int nUnused : {0, 1, -1, INT_MIN, INT_MAX})
    {
        EXPECT_TRUE(CTOVPath("a/b").IsSame("A/B", nUnused, false, false));
        EXPECT_FALSE(CTOVPath("a/b").IsSame("a/c", nUnused, true, true));
    }
}

TEST(CTOVPathRelationsTest, RefusesAnEmptyPathForIsSameUnlessBothSeparatorsAreIgnored)
{
    EXPECT_CHARACTER_CHECK(IsSame("", "", false, false));
    EXPECT_CHARACTER_CHECK(IsSame("", "", true, false));
    EXPECT_CHARACTER_CHECK(IsSame("", "", false, true));
    EXPECT_CHARACTER_CHECK(IsSame("/", "", false, true));
    EXPECT_CHARACTER_CHECK(IsSame("", "/", true, false));
    EXPECT_NO_CHECK(EXPECT_TRUE(IsSame("", "", true, true)));
    EXPECT_NO_CHECK(EXPECT_TRUE(IsSame("", "/", true, true)));
}

TEST(CTOVPathRelationsTest, TakesEmptyComponentsAsTheSame)
{
    EXPECT_NO_CHECK(EXPECT_TRUE(IsSame("\\\\server", "\\\\SERVER", false, false)));
    EXPECT_NO_CHECK(EXPECT_TRUE(IsSame("//", "//", false, false)));
    EXPECT_NO_CHECK(EXPECT_TRUE(IsSame("a//b", "A//B", false, false)));
}

TEST(CTOVPathRelationsTest, TellsWhetherTheArgumentLiesBelow)
{
    ExpectRelation(&CTOVPath::IsBelow, {{"a", "a/b", true},
                                        {"a/b", "a", false},
                                        {"a", "a", false},
                                        {"A", "a/b/c", true},
                                        {"a/b", "a/b/c", true},
                                        {"a/b", "a\\b/c", false},
                                        {"a", "a\\b", true},
                                        {"a", "ab/c", false},
                                        {"/a/", "a/b", true},
                                        {"a", "b/a", false},
                                        {"", "a", true},
                                        {"/", "a", true},
                                        {"", "", false},
                                        {"a", "", false},
                                        {"\\\\server", "\\\\SERVER\\share", true}});
}

TEST(CTOVPathRelationsTest, TellsWhetherTheArgumentLiesAbove)
{
    ExpectRelation(&CTOVPath::IsAbove, {{"a/b", "a", true},
                                        {"a", "a/b", false},
                                        {"a", "a", false},
                                        {"a/b/c", "A", true},
                                        {"a\\b/c", "a/b", false},
                                        {"ab/c", "a", false},
                                        {"a/b", "\\a\\", true},
                                        {"a", "", true},
                                        {"a", "/", true},
                                        {"", "", false},
                                        {"", "a", false},
                                        {"\\\\server\\share", "\\\\Server", true}});
}

TEST(CTOVPathRelationsTest, TellsWhetherTheArgumentLiesBelowOrIsTheSame)
{
    ExpectRelation(&CTOVPath::IsBelowOrSame, {{"a", "a", true},
                                              {"a", "a/b", true},
                                              {"a/b", "a", false},
                                              {"a/", "/A", true},
                                              {"a/b", "a\\b", false},
                                              {"a", "b", false},
                                              {"", "", true},
                                              {"", "/", true},
                                              {"a", "", false}});
}

TEST(CTOVPathRelationsTest, FindsEveryPathAboveOrTheSame)
{
    ExpectRelation(&CTOVPath::IsAboveOrSame,
                   {{"x", "y", true}, {"a", "a/b", true}, {"a/b", "a", true}, {"a", "a", true}});

    for (const char* szFirst : PATHS)
    {
        for (const char* szSecond : PATHS)
            ExpectRelation(&CTOVPath::IsAboveOrSame, {{szFirst, szSecond, true}});
    }
}

TEST(CTOVPathRelationsTest, SeesAboveAndBelowFromTheTwoSidesAlike)
{
    for (const char* szFirst : PATHS)
    {
        for (const char* szSecond : PATHS)
            EXPECT_EQ(CTOVPath(szFirst).IsBelow(szSecond), CTOVPath(szSecond).IsAbove(szFirst))
                << szFirst << ' ' << szSecond;
    }
}

TEST(CTOVPathRelationsTest, StripsTheLeadingComponentsInCommon)
{
    const struct
    {
        const char* szPath;
        const char* szBase;
        const char* szExpected;
    } CASES[] = {{"a/b/c", "A/B", "c"},
                 {"a/b/c", "x", "a/b/c"},
                 {"a/b/c", "a", "b/c"},
                 {"a/b/c", "a\\b", "c"},
                 {"a\\b/c\\d", "a", "b/c\\d"},
                 {"/a/b", "a", "b"},
                 {"a/b/", "a", "b"},
                 {"a/b/c", "a/x/c", "b/c"},
                 {"a", "a/b", ""},
                 {"a/b", "", "a/b"},
                 {"", "", ""},
                 {"", "a", ""},
                 {"\\\\server\\share", "\\\\SERVER", "share"},
                 {"a//b", "a", "/b"}};

    for (const auto& oCase : CASES)
        EXPECT_NO_CHECK(EXPECT_EQ(oCase.szExpected, TextOf(CTOVPath(oCase.szPath).Strip(oCase.szBase)))
                        << oCase.szPath << " stripped of " << oCase.szBase);
}

TEST(CTOVPathRelationsTest, GivesAnEmptyPathStrippedOfItself)
{
    for (const char* szPath : PATHS)
        EXPECT_NO_CHECK(EXPECT_EQ("", TextOf(CTOVPath(szPath).Strip(szPath))) << szPath);
}

TEST(CTOVPathRelationsTest, ComparesWithTheLastComponentOfASideThatHasRunOut)
{
    EXPECT_EQ("", TextOf(CTOVPath("a/a").Strip("a")));
    EXPECT_EQ("", TextOf(CTOVPath("a/A/a").Strip("a")));
    EXPECT_EQ("b", TextOf(CTOVPath("a/a/b").Strip("a")));
    EXPECT_EQ("a", TextOf(CTOVPath("a/b/b/a").Strip("a/b")));
}

TEST(CTOVPathRelationsTest, FallsBackToTheWholePathWhereMoreMatchedThanItHasComponents)
{
    EXPECT_EQ("a", TextOf(CTOVPath("a").Strip("a/a")));
    EXPECT_EQ("/a", TextOf(CTOVPath("/a").Strip("a/a")));
    EXPECT_EQ("a/b", TextOf(CTOVPath("a/b").Strip("a/b/b/b")));
    EXPECT_EQ("a", TextOf(CTOVPath("a/").Strip("a/a")));
}

TEST(CTOVPathRelationsTest, LeavesBothPathsAsTheyAre)
{
    const CTOVPath oFirst("A\\B");
    const CTOVPath oSecond("A\\b\\C");

    oFirst.Compare(oSecond);
    oFirst.IsSame(oFirst, 0, true, true);
    oFirst.IsBelowOrSame(oSecond);
    oSecond.IsAboveOrSame(oFirst);
    oSecond.Strip(oFirst);
    oFirst.Strip(oSecond);

    EXPECT_EQ("A\\B", TextOf(oFirst));
    EXPECT_EQ("A\\b\\C", TextOf(oSecond));
}
