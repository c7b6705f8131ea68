// Joining paths and taking them apart.
#include "Path/TOVPathInstruments.h"
#include "Support/TOVRefusal.h"

#include <string>
#include <type_traits>
#include <utility>

namespace
{
struct sCase
{
    const char* szPath;
    const char* szExpected;
};

template<class TFunction> void ExpectResults(const std::vector<sCase>& aCases, const TFunction& fnResult)
{
    for (const sCase& oCase : aCases)
    {
        CTOVPath oPath(oCase.szPath);
        const std::string sResult = TextOf(fnResult(oPath));

        EXPECT_EQ(oCase.szExpected, sResult) << "of " << oCase.szPath;
    }
}

struct sJoin
{
    const char* szLeft;
    const char* szRight;
    const char* szExpected;
};

const sJoin JOINS[] = {{"C:\\dir", "file", "C:\\dir\\file"},
                       {"a/b", "c", "a/b\\c"},
                       {"a/", "b", "a/b"},
                       {"a\\", "b", "a\\b"},
                       {"a", "/b", "a/b"},
                       {"a", "\\b", "a\\b"},
                       {"a/", "/b", "a//b"},
                       {"a\\", "/b", "a\\/b"},
                       {"/", "b", "/b"},
                       {"a", "b/c/", "a\\b/c/"},
                       {"a", "..", "a\\.."},
                       {"a/", "", "a/"},
                       {"\\", "", "\\"}};
} // namespace

TEST(CTOVPathOperationsTest, JoinsTwoPaths)
{
    for (const sJoin& oJoin : JOINS)
    {
        CTOVPath oPath(oJoin.szLeft);

        EXPECT_NO_CHECK(oPath.Append(CTOVPath(oJoin.szRight)));

        EXPECT_EQ(oJoin.szExpected, TextOf(oPath)) << oJoin.szLeft << " and " << oJoin.szRight;
    }
}

TEST(CTOVPathOperationsTest, JoinsWithEachFormOfPlusEquals)
{
    for (const sJoin& oJoin : JOINS)
    {
        CTOVPath oPath(oJoin.szLeft);
        CTOVPath oPathOfString(oJoin.szLeft);
        CTOVPath oPathOfText(oJoin.szLeft);

        oPath += CTOVPath(oJoin.szRight);
        oPathOfString += CTOVStringA(oJoin.szRight);
        oPathOfText += oJoin.szRight;

        EXPECT_EQ(oJoin.szExpected, TextOf(oPath));
        EXPECT_EQ(oJoin.szExpected, TextOf(oPathOfString));
        EXPECT_EQ(oJoin.szExpected, TextOf(oPathOfText));
    }
}

TEST(CTOVPathOperationsTest, GivesItselfForAddingAPathAndItsTextForAddingAText)
{
    CTOVPath oPath("a");

    EXPECT_EQ(&oPath, &(oPath += CTOVPath("b")));
    EXPECT_EQ(&oPath.AsString(), &(oPath += CTOVStringA("c")));
    EXPECT_EQ(&oPath.AsString(), &(oPath += "d"));
    EXPECT_EQ("a\\b\\c\\d", TextOf(oPath));
    EXPECT_TRUE((std::is_same<const CTOVPath&, decltype(oPath += std::declval<const CTOVPath&>())>::value));
    EXPECT_TRUE((std::is_same<const CTOVStringA&, decltype(oPath += std::declval<const CTOVStringA&>())>::value));
    EXPECT_TRUE((std::is_same<const CTOVStringA&, decltype(oPath += std::declval<const char*>())>::value));
}

TEST(CTOVPathOperationsTest, JoinsIntoACopy)
{
    for (const sJoin& oJoin : JOINS)
    {
        const CTOVPath oLeft(oJoin.szLeft);
        const CTOVPath oRight(oJoin.szRight);

        EXPECT_EQ(oJoin.szExpected, TextOf(oLeft.Concat(oRight)));
        EXPECT_EQ(oJoin.szLeft, TextOf(oLeft));
        EXPECT_EQ(oJoin.szRight, TextOf(oRight));
    }
}

TEST(CTOVPathOperationsTest, RefusesToAppendToAnEmptyPath)
{
    CTOVPath oPath;

    EXPECT_CHARACTER_CHECK(oPath.Append("a"));
    EXPECT_CHARACTER_CHECK(oPath.Append("/a"));
    EXPECT_CHARACTER_CHECK(oPath.Append(CTOVPath()));
    EXPECT_CHARACTER_CHECK(oPath += CTOVPath("a"));
    EXPECT_CHARACTER_CHECK(oPath += CTOVStringA("a"));
    EXPECT_CHARACTER_CHECK(oPath += "a");
    EXPECT_CHARACTER_CHECK(oPath.Concat("a"));
    EXPECT_TRUE(oPath.IsEmpty());
}

TEST(CTOVPathOperationsTest, RefusesAnEmptyRightSideWhereTheLeftHasNoSeparator)
{
    const char* const szNull = nullptr;
    CTOVPath oPath("a");

    EXPECT_CHARACTER_CHECK(oPath.Append(CTOVPath()));
    EXPECT_CHARACTER_CHECK(oPath += CTOVPath());
    EXPECT_CHARACTER_CHECK(oPath += CTOVStringA());
    EXPECT_CHARACTER_CHECK(oPath += "");
    EXPECT_CHARACTER_CHECK(oPath += szNull);
    EXPECT_CHARACTER_CHECK(oPath.Concat(CTOVPath()));
    EXPECT_EQ("a", TextOf(oPath));
}

TEST(CTOVPathOperationsTest, AppendsThePathToItself)
{
    CTOVPath oPath("a/");

    oPath.Append(oPath);

    EXPECT_EQ("a/a/", TextOf(oPath));
}

#if TOV_CAN_FAIL_ALLOCATIONS
// Whatever room the path's block has, and with whomever it shares that.
TEST(CTOVPathOperationsTest, IsUnchangedWhereItCannotBeAppendedTo)
{
    const CTOVPath oOther(std::string(200, 'o').c_str());
    int nFailures = 0;
    for (const std::size_t nCut : {0u, 1u, 2u, 50u})
    {
        for (const bool bShared : {false, true})
        {
            for (const bool bSelf : {false, true})
            {
                for (unsigned long ulSuccesses = 0; ulSuccesses < 4; ++ulSuccesses)
                {
                    CTOVStringA oText(std::string(60, 'p').c_str());
                    oText.GetString()[60 - nCut] = '\0';
                    CTOVPath oPath(oText);
                    if (!bShared)
                        oText = CTOVStringA();
                    const std::string sBefore = TextOf(oPath);

                    if (RunsOutOfMemory([&] { oPath.Append(bSelf ? oPath : oOther); }, ulSuccesses))
                    {
                        ++nFailures;
                        EXPECT_EQ(sBefore, TextOf(oPath)) << nCut << bShared << bSelf << ulSuccesses;
                    }
                }
            }
        }
    }
    EXPECT_LT(16, nFailures);
}
#endif

TEST(CTOVPathOperationsTest, AppendsTheFullLengthOfTheOtherPath)
{
    CTOVPath oPath("a");
    CTOVPath oOther("\\bc");
    oOther.RemoveLeadingBackslash();

    oPath.Append(oOther);

    EXPECT_EQ(std::string("a\\bc\0", 5), TextOf(oPath));
}

TEST(CTOVPathOperationsTest, AppendsBehindATerminatorThatCounts)
{
    CTOVPath oPath("\\bc");
    oPath.RemoveLeadingBackslash();

    oPath.Append("d");

    EXPECT_EQ(std::string("bc\0\\d", 5), TextOf(oPath));
    EXPECT_STREQ("bc", ~oPath);
}

TEST(CTOVPathOperationsTest, JoinsInPlaceWhereTheSharedBlockHasRoom)
{
    const CTOVStringA oText = RoomyText("a/");
    const CTOVPath oPath(oText);

    const CTOVPath oJoined = oPath.Concat("b");

    EXPECT_EQ("a/b", TextOf(oJoined));
    EXPECT_EQ("a/", TextOf(oPath));
    EXPECT_STREQ("a/b", ~oPath); // its length is its own, the characters are shared
}

TEST(CTOVPathOperationsTest, FindsTheParent)
{
    ExpectResults({{"a/b/c", "a/b"},
                   {"a/b/", "a"},
                   {"a", ""},
                   {"/a", ""},
                   {"C:\\x", "C:"},
                   {"C:\\", ""},
                   {"a\\b/c", "a\\b"},
                   {"a//b", "a/"},
                   {"a//", "a"},
                   {"/a/b", "/a"},
                   {"/", ""},
                   {"//", ""},
                   {"a/.", "a"},
                   {"\\\\server\\share", "\\\\server"}},
                  [](const CTOVPath& oPath) { return oPath.Parent(); });
}

TEST(CTOVPathOperationsTest, RefusesTheParentOfAnEmptyPath)
{
    EXPECT_CHARACTER_CHECK(CTOVPath().Parent());
}

TEST(CTOVPathOperationsTest, GivesThePathBeforeTheLastSeparator)
{
    ExpectResults({{"dir/name.txt", "dir"},
                   {"a/b/", "a/b"},
                   {"a/b/c", "a/b"},
                   {"a", "a"},
                   {"name.txt", "name.txt"},
                   {"a//b", "a/"},
                   {"/a", ""},
                   {"/", ""},
                   {"C:\\x", "C:"},
                   {"a/b\\c", "a/b"},
                   {"", ""}},
                  [](const CTOVPath& oPath) { return oPath.GetPath(); });
}

TEST(CTOVPathOperationsTest, TellsParentAndPathApart)
{
    EXPECT_EQ("a", TextOf(CTOVPath("a/b/").Parent()));
    EXPECT_EQ("a/b", TextOf(CTOVPath("a/b/").GetPath()));
    EXPECT_EQ("", TextOf(CTOVPath("a").Parent()));
    EXPECT_EQ("a", TextOf(CTOVPath("a").GetPath()));
}

TEST(CTOVPathOperationsTest, GivesACopyForThePathOfABareName)
{
    const CTOVPath oPath("name");

    EXPECT_EQ(~oPath, ~oPath.GetPath());
}

TEST(CTOVPathOperationsTest, GivesTheFileNameWithItsExtension)
{
    ExpectResults({{"dir/name.txt", "name.txt"},
                   {"name.txt", "name.txt"},
                   {"a/b/", "b"},
                   {"a/b\\", "b"},
                   {"a/", "a"},
                   {"a", "a"},
                   {"/a", "a"},
                   {"dir.d/name", "name"},
                   {".txt", ".txt"},
                   {"a//", ""},
                   {"C:\\", "C:"}},
                  [](const CTOVPath& oPath) { return oPath.GetFileName(true); });
}

TEST(CTOVPathOperationsTest, GivesTheFileNameWithoutItsExtension)
{
    ExpectResults({{"dir/name.txt", "name"},
                   {"name.tar.gz", "name.tar"},
                   {"dir.d/name", "name"},
                   {"a.b/", "a"},
                   {"name.", "name"},
                   {"name", "name"},
                   {".txt", ""},
                   {"dir/.txt", ""},
                   {"..", "."},
                   {".a.b", ".a"}},
                  [](const CTOVPath& oPath) { return oPath.GetFileName(false); });
}

TEST(CTOVPathOperationsTest, RefusesTheFileNameWhereTheLastComponentIsEmpty)
{
    for (const char* szPath : {"", "/", "\\", "//"})
    {
        SCOPED_TRACE(szPath);
        EXPECT_CHARACTER_CHECK(CTOVPath(szPath).GetFileName(true));
        EXPECT_CHARACTER_CHECK(CTOVPath(szPath).GetFileName(false));
    }
}

TEST(CTOVPathOperationsTest, StripsThePathInFrontOfTheName)
{
    ExpectChanges("StripPath", &CTOVPath::StripPath,
                  {{"a/b/c", "c"},
                   {"dir\\name.txt", "name.txt"},
                   {"C:\\x", "x"},
                   {"/a", "a"},
                   {"name", "name"},
                   {"a/b/", ""},
                   {"/", ""},
                   {"", ""}});
}

TEST(CTOVPathOperationsTest, LeavesASharerItsPathWhenStripped)
{
    const CTOVPath oPath("a/b");
    CTOVPath oStripped(oPath);

    oStripped.StripPath();

    EXPECT_EQ("a/b", TextOf(oPath));
}

TEST(CTOVPathOperationsTest, FindsTheExtensionOfTheLastComponent)
{
    const struct
    {
        const char* szPath;
        int nPosition;
    } CASES[] = {{"dir/name.txt", 8}, {"dir.d/name", -1}, {"name.tar.gz", 8}, {".hidden", -1}, {"dir/.hidden", -1},
                 {".hidden.txt", 7},  {"a.b/", 1},        {"a.b//", -1},      {"name.", 4},    {"a.b/c.d", 5},
                 {"a.b\\c", -1},      {"/.x", -1},        {"/a.x", 2},        {".", -1},       {"..", 1},
                 {"a/..", 3},         {"name", -1},       {"", -1},           {"/", -1}};

    for (const auto& oCase : CASES)
    {
        const CTOVPath oPath(oCase.szPath);

        EXPECT_EQ(oCase.nPosition, oPath.FindExtension()) << oCase.szPath;
        EXPECT_EQ(oCase.nPosition != -1, oPath.HasExtension()) << oCase.szPath;
    }
}

TEST(CTOVPathOperationsTest, GivesTheExtensionWithItsDot)
{
    ExpectResults({{"dir/name.txt", ".txt"},
                   {"name.tar.gz", ".gz"},
                   {"a.b/", ".b/"},
                   {"name.", "."},
                   {"dir.d/name", ""},
                   {".hidden", ""},
                   {"name", ""},
                   {"", ""}},
                  [](const CTOVPath& oPath) { return oPath.GetExtension(); });
}

TEST(CTOVPathOperationsTest, AddsAnExtensionWithItsDotToAPathWithoutOne)
{
    ExpectChanges("AddExtension", [](CTOVPath& oPath) { oPath.AddExtension(".txt"); },
                  {{"name", "name.txt"},
                   {"dir.d/name", "dir.d/name.txt"},
                   {".hidden", ".hidden.txt"},
                   {"a/", "a/.txt"},
                   {"", ".txt"},
                   {"name.gz", "name.gz"},
                   {"name.", "name."},
                   {"a.b/", "a.b/"}});
}

TEST(CTOVPathOperationsTest, IgnoresAnExtensionWithoutItsDot)
{
    EXPECT_NO_CHECK(ExpectChanges("AddExtension", [](CTOVPath& oPath) { oPath.AddExtension("txt"); },
                                  {{"name", "name"}, {"dir/name", "dir/name"}, {"", ""}}));
}

TEST(CTOVPathOperationsTest, RefusesAnEmptyExtensionWhereThereIsNone)
{
    CTOVPath oPath("name");

    EXPECT_CHARACTER_CHECK(oPath.AddExtension(""));
    EXPECT_CHARACTER_CHECK(oPath.AddExtension(CTOVStringA()));
    EXPECT_EQ("name", TextOf(oPath));
}

TEST(CTOVPathOperationsTest, DoesNotLookAtAnEmptyExtensionWhereThereIsOne)
{
    CTOVPath oPath("name.txt");

    EXPECT_NO_CHECK(oPath.AddExtension(""));
    EXPECT_EQ("name.txt", TextOf(oPath));
}

TEST(CTOVPathOperationsTest, RemovesTheExtension)
{
    ExpectChanges("RemoveExtension", &CTOVPath::RemoveExtension,
                  {{"name.tar.gz", "name.tar"},
                   {"dir/name.txt", "dir/name"},
                   {"a.b/", "a"},
                   {"name.", "name"},
                   {"dir.d/name", "dir.d/name"},
                   {".hidden", ".hidden"},
                   {"name", "name"},
                   {"", ""}});
}

TEST(CTOVPathOperationsTest, ChangesItsCase)
{
    ExpectChanges("MakeLower", &CTOVPath::MakeLower, {{"C:\\Dir/File.TXT", "c:\\dir/file.txt"}, {"", ""}});
    ExpectChanges("MakePretty", &CTOVPath::MakePretty, {{"C:\\Dir/File.TXT", "c:\\dir/file.txt"}, {"", ""}});
    ExpectChanges("MakeUpper", &CTOVPath::MakeUpper, {{"c:\\Dir/File.txt", "C:\\DIR/FILE.TXT"}, {"", ""}});
}

TEST(CTOVPathOperationsTest, ChangesTheCaseOfAllSharers)
{
    const CTOVStringA oText("Name");
    const CTOVPath oFirst(oText);
    CTOVPath oSecond(oFirst);

    oSecond.MakeLower();
    EXPECT_EQ("name", TextOf(oFirst));
    EXPECT_EQ("name", TextOf(oText));

    oSecond.MakeUpper();
    EXPECT_EQ("NAME", TextOf(oFirst));

    oSecond.MakePretty();
    EXPECT_EQ("name", TextOf(oText));
}

TEST(CTOVPathOperationsTest, LeavesEveryPathUnchangedWhenCompacted)
{
    for (const char* szPath : {"", "a", "C:\\a\\very\\long\\path\\with\\many\\components\\file.txt"})
    {
        for (const unsigned int nMaxLength : {0u, 1u, 5u, 0xFFFFFFFFu})
        {
            CTOVPath oPath(szPath);
            CTOVPath oOther("Other\\path");

            EXPECT_NO_CHECK(oPath.CompactPath(oOther, nMaxLength));
            EXPECT_NO_CHECK(oPath.CompactPath(CTOVPath(), nMaxLength));

            EXPECT_EQ(szPath, TextOf(oPath));
            EXPECT_EQ("Other\\path", TextOf(oOther));
        }
    }
}
