// How a path's text falls into components.
#include "Path/TOVPathInstruments.h"

#include <climits>

namespace
{
constexpr long UNTOUCHED = -77;

std::vector<std::string> Iterate(const CTOVPath& oPath)
{
    std::vector<std::string> aComponents;
    CTOVStringA oComponent;
    long lPosition = UNTOUCHED;
    for (bool bFound = oPath.GetFirstComponent(oComponent, lPosition); bFound;
         bFound = oPath.GetNextComponent(oComponent, lPosition))
        aComponents.push_back(TextOf(oComponent));
    return aComponents;
}

// A separator ends a component, a leading one starts none, a trailing one adds none.
std::vector<std::string> Expected(const std::string& sPath)
{
    std::vector<std::string> aComponents;
    std::string sComponent;
    bool bOpen = false;
    for (std::size_t nIndex = 0; nIndex < sPath.size(); ++nIndex)
    {
        const bool bSeparator = sPath[nIndex] == '/' || sPath[nIndex] == '\\';
        if (bSeparator && nIndex > 0)
        {
            aComponents.push_back(sComponent);
            sComponent.clear();
        }
        else if (!bSeparator)
        {
            sComponent += sPath[nIndex];
        }
        bOpen = !bSeparator;
    }
    if (bOpen)
        aComponents.push_back(sComponent);
    return aComponents;
}

// All texts of up to this many characters out of "a", "/" and "\".
std::vector<std::string> AllPaths(std::size_t nLongest)
{
    std::vector<std::string> aPaths = {""};
    for (std::size_t nIndex = 0; nIndex < aPaths.size(); ++nIndex)
    {
        const std::string sPath = aPaths[nIndex];
        if (sPath.size() < nLongest)
        {
            for (const char cNext : {'a', '/', '\\'})
                aPaths.push_back(sPath + cNext);
        }
    }
    return aPaths;
}

struct sStretch
{
    const char* szPath;
    int nFirst;
    int nCount;
    const char* szExpected;
};

void ExpectStretches(const std::vector<sStretch>& aStretches)
{
    for (const sStretch& oStretch : aStretches)
    {
        const CTOVPath oPath(oStretch.szPath);

        EXPECT_EQ(oStretch.szExpected, TextOf(oPath.GetComponent(oStretch.nFirst, oStretch.nCount)))
            << oStretch.szPath << " (" << oStretch.nFirst << ", " << oStretch.nCount << ')';
    }
}
} // namespace

TEST(CTOVPathComponentsTest, CountsComponents)
{
    const struct
    {
        const char* szPath;
        int nComponents;
    } CASES[] = {{"", 0},
                 {"a", 1},
                 {"a/b", 2},
                 {"/a/b", 2},
                 {"a/b/", 2},
                 {"a//b", 3},
                 {"a\\b/c", 3},
                 {"/", 0},
                 {"\\", 0},
                 {"//", 1},
                 {"///", 2},
                 {"a/", 1},
                 {"C:\\dir\\file", 3},
                 {"C:\\", 1},
                 {"C:", 1},
                 {"./../a", 3},
                 {"\\\\server\\share", 3}};

    for (const auto& oCase : CASES)
        EXPECT_EQ(oCase.nComponents, CTOVPath(oCase.szPath).GetNumComponents()) << oCase.szPath;
}

TEST(CTOVPathComponentsTest, GivesAStretchOfComponentsWithTheSeparatorsBetweenThem)
{
    ExpectStretches({{"C:\\dir\\file", 0, 1, "C:"},
                     {"C:\\dir\\file", 1, 2, "dir\\file"},
                     {"C:\\dir\\file", 0, 3, "C:\\dir\\file"},
                     {"a/b\\c/d", 1, 2, "b\\c"},
                     {"a/b", 0, 1, "a"},
                     {"a/b", 1, 1, "b"},
                     {"/a/b", 0, 1, "a"},
                     {"/a/b", 0, 2, "a/b"},
                     {"/a/b", 1, 1, "b"},
                     {"./../a", 1, 1, ".."}});
}

TEST(CTOVPathComponentsTest, GivesEmptyComponents)
{
    ExpectStretches({{"a//b", 1, 1, ""},
                     {"a//b", 0, 2, "a/"},
                     {"a//b", 1, 2, "/b"},
                     {"\\\\server\\share", 0, 1, ""},
                     {"\\\\server\\share", 0, 2, "\\server"},
                     {"\\\\server\\share", 1, 1, "server"},
                     {"\\\\server\\share", 2, 1, "share"},
                     {"//", 0, 1, ""}});
}

TEST(CTOVPathComponentsTest, GivesNothingForACountOfZero)
{
    ExpectStretches({{"a/b", 0, 0, ""}, {"a/b", 1, 0, ""}, {"a/b", 5, 0, ""}, {"a/b", -1, 0, ""}, {"", 0, 0, ""}});
}

TEST(CTOVPathComponentsTest, BringsATrailingSeparatorAlongForARangePastTheEnd)
{
    ExpectStretches({{"a/b/", 1, 2, "b/"},
                     {"a/b/", 1, 1, "b"},
                     {"a/b/", 0, 2, "a/b"},
                     {"a/b/", 0, 3, "a/b/"},
                     {"a/b", 1, 9, "b"},
                     {"a/b", 1, INT_MAX, "b"},
                     {"/a/", 0, INT_MAX, "a/"}});
}

TEST(CTOVPathComponentsTest, GivesTheWholePathForAFirstComponentBeyondTheEnd)
{
    ExpectStretches({{"a/b", 5, 1, "a/b"},
                     {"a/b", 2, 1, "a/b"},
                     {"a/b/", 3, 1, "a/b/"},
                     {"/a", 1, 1, "/a"},
                     {"/", 1, 1, "/"},
                     {"a", INT_MAX, INT_MAX, "a"}});
}

TEST(CTOVPathComponentsTest, GivesNothingForTheComponentThatATrailingSeparatorWouldStart)
{
    ExpectStretches({{"a/b/", 2, 1, ""}, {"/", 0, 1, ""}});
}

TEST(CTOVPathComponentsTest, FollowsTheScanForNegativeArguments)
{
    ExpectStretches({{"a/b", -1, 1, "a/b"},
                     {"a/b", -1, 2, "a"},
                     {"/a/b", -1, 1, "/a/b"},
                     {"a/b", 1, -1, "b"},
                     {"a/b/c", 2, -1, "a"},
                     {"a/b", 0, -1, "a/b"},
                     {"a/b", INT_MIN, INT_MIN, "a/b"}});
}

TEST(CTOVPathComponentsTest, GivesNothingOfAnEmptyPath)
{
    EXPECT_NO_CHECK(ExpectStretches({{"", 0, 1, ""}, {"", 3, 2, ""}, {"", -1, -1, ""}}));
}

TEST(CTOVPathComponentsTest, GivesAStretchInABlockOfItsOwn)
{
    const CTOVPath oPath("a/b");

    EXPECT_NE(~oPath, ~oPath.GetComponent(5, 1));
    EXPECT_NE(~oPath, ~oPath.GetComponent(0, 2));
}

TEST(CTOVPathComponentsTest, GivesTheStretchFromABlockWithRoom)
{
    const CTOVPath oPath(RoomyText("a/b"));

    EXPECT_EQ("b", TextOf(oPath.GetComponent(1, 1)));
    EXPECT_EQ("a/b", TextOf(oPath.GetComponent(0, 2)));
    EXPECT_EQ("a/b", TextOf(oPath.GetComponent(7, 1)));
}

TEST(CTOVPathComponentsTest, FindsWhereAComponentBegins)
{
    const struct
    {
        const char* szPath;
        int nIndex;
        int nPosition;
    } CASES[] = {{"C:\\dir\\file", 2, 7},
                 {"C:\\dir\\file", 1, 3},
                 {"a/b", 1, 2},
                 {"/a/b", 0, 1},
                 {"\\a/b", 1, 3},
                 {"a//b", 1, 2},
                 {"a//b", 2, 3},
                 {"\\\\server\\share", 0, 1},
                 {"\\\\server\\share", 1, 2},
                 {"\\\\server\\share", 2, 9},
                 {"/", 0, 1},
                 {"a/", 1, 2}};

    for (const auto& oCase : CASES)
        EXPECT_EQ(oCase.nPosition, CTOVPath(oCase.szPath).GetComponentPosition(oCase.nIndex))
            << oCase.szPath << ' ' << oCase.nIndex;
}

TEST(CTOVPathComponentsTest, GivesPositionZeroForAComponentThatIsNotThere)
{
    const struct
    {
        const char* szPath;
        int nIndex;
    } CASES[] = {{"a/b", 0}, {"a/b", 2}, {"a/b", INT_MAX}, {"a/b", -1}, {"/a", -1},
                 {"/a", 1},  {"/", 1},   {"", 0},          {"", 1},     {"", -1}};

    for (const auto& oCase : CASES)
        EXPECT_EQ(0, CTOVPath(oCase.szPath).GetComponentPosition(oCase.nIndex)) << oCase.szPath << ' ' << oCase.nIndex;
}

TEST(CTOVPathComponentsTest, IteratesOverTheComponents)
{
    typedef std::vector<std::string> tComponents;

    EXPECT_EQ((tComponents{"a", "b"}), Iterate("/a/b/"));
    EXPECT_EQ((tComponents{"a", "", "b"}), Iterate("a//b"));
    EXPECT_EQ((tComponents{"C:", "dir", "file"}), Iterate("C:\\dir/file"));
    EXPECT_EQ((tComponents{"", "server", "share"}), Iterate("\\\\server\\share"));
    EXPECT_EQ((tComponents{""}), Iterate("//"));
    EXPECT_EQ(tComponents(), Iterate("/"));
    EXPECT_EQ(tComponents(), Iterate(""));
}

TEST(CTOVPathComponentsTest, CountsIteratesAndCutsAlikeForEveryShortPath)
{
    for (const std::string& sPath : AllPaths(6))
    {
        SCOPED_TRACE(sPath);
        const CTOVPath oPath(sPath.c_str());
        const std::vector<std::string> aExpected = Expected(sPath);

        EXPECT_EQ(static_cast<int>(aExpected.size()), oPath.GetNumComponents());
        EXPECT_EQ(aExpected, Iterate(oPath));
        for (std::size_t nIndex = 0; nIndex < aExpected.size(); ++nIndex)
            EXPECT_EQ(aExpected[nIndex], TextOf(oPath.GetComponent(static_cast<int>(nIndex), 1)));
    }
}

TEST(CTOVPathComponentsTest, StandsOnTheSeparatorBehindTheComponentJustDelivered)
{
    const CTOVPath oPath("/ab/c");
    CTOVStringA oComponent;
    long lPosition = UNTOUCHED;

    EXPECT_TRUE(oPath.GetFirstComponent(oComponent, lPosition));
    EXPECT_EQ(3, lPosition);
    EXPECT_TRUE(oPath.GetNextComponent(oComponent, lPosition));
    EXPECT_EQ(5, lPosition);
    EXPECT_FALSE(oPath.GetNextComponent(oComponent, lPosition));
    EXPECT_EQ(5, lPosition);
}

TEST(CTOVPathComponentsTest, LeavesTheComponentAsItWasWhenThereIsNoneLeft)
{
    for (const char* szPath : {"", "/"})
    {
        CTOVStringA oComponent("before");
        long lPosition = UNTOUCHED;

        EXPECT_FALSE(CTOVPath(szPath).GetFirstComponent(oComponent, lPosition));
        EXPECT_EQ("before", TextOf(oComponent));
    }
}

TEST(CTOVPathComponentsTest, RunsToTheEndBehindATrailingSeparator)
{
    const CTOVPath oPath("a/");
    CTOVStringA oComponent;
    long lPosition = UNTOUCHED;

    EXPECT_TRUE(oPath.GetFirstComponent(oComponent, lPosition));
    EXPECT_EQ(1, lPosition);
    EXPECT_FALSE(oPath.GetNextComponent(oComponent, lPosition));
    EXPECT_EQ(2, lPosition);
    EXPECT_EQ("a", TextOf(oComponent));
}

TEST(CTOVPathComponentsTest, BeginsAtThePositionGiven)
{
    const CTOVPath oPath("abc/de");
    CTOVStringA oComponent;
    long lPosition = 1;

    EXPECT_TRUE(oPath.GetNextComponent(oComponent, lPosition));
    EXPECT_EQ("bc", TextOf(oComponent));

    lPosition = 3;
    EXPECT_TRUE(oPath.GetNextComponent(oComponent, lPosition));
    EXPECT_EQ("de", TextOf(oComponent));
}

TEST(CTOVPathComponentsTest, FindsNoneAtOrPastTheEnd)
{
    for (const long lStart : {2L, 3L, 1000L})
    {
        CTOVStringA oComponent("before");
        long lPosition = lStart;

        EXPECT_FALSE(CTOVPath("ab").GetNextComponent(oComponent, lPosition));
        EXPECT_EQ("before", TextOf(oComponent));
        EXPECT_EQ(lStart, lPosition);
    }
}

TEST(CTOVPathComponentsTest, SetsThePositionBackForTheFirstComponent)
{
    const CTOVPath oPath("ab/c");
    CTOVStringA oComponent;
    long lPosition = 3;

    EXPECT_TRUE(oPath.GetFirstComponent(oComponent, lPosition));
    EXPECT_EQ("ab", TextOf(oComponent));
    EXPECT_EQ(2, lPosition);
}

TEST(CTOVPathComponentsTest, LeavesCopiesOfAnEarlierComponentAlone)
{
    const CTOVPath oPath("one/two");
    CTOVStringA oComponent;
    long lPosition = UNTOUCHED;
    oPath.GetFirstComponent(oComponent, lPosition);
    const CTOVStringA oFirst(oComponent);

    oPath.GetNextComponent(oComponent, lPosition);

    EXPECT_EQ("one", TextOf(oFirst));
    EXPECT_EQ("two", TextOf(oComponent));
}

TEST(CTOVPathComponentsTest, ReadsALengthThatCountsTheTerminatorLiterally)
{
    CTOVPath oPath("/a/b/");
    oPath.RemoveLeadingForwardslash();

    EXPECT_EQ(3, oPath.GetNumComponents()); // the terminator behind the last separator is a name
    EXPECT_EQ(std::string("\0", 1), TextOf(oPath.GetComponent(2, 1)));
    EXPECT_EQ(std::string("b/\0", 3), TextOf(oPath.GetComponent(1, 2)));
}

TEST(CTOVPathComponentsTest, AComponentMayFillItsBlockWithoutATerminator)
{
    for (int nPlaces = 0; nPlaces < 3; ++nPlaces)
    {
        const std::string sText(static_cast<std::size_t>(nPlaces + 1), 'a');
        CTOVStringA oText;
        sText.copy(oText.GetBuffer(nPlaces), sText.size());
        oText.ReleaseBuffer(nPlaces + 1);
        CTOVStringA oComponent;
        long lPosition = UNTOUCHED;

        EXPECT_TRUE(CTOVPath(oText).GetFirstComponent(oComponent, lPosition));
        EXPECT_EQ(sText, TextOf(oComponent));
    }
}
