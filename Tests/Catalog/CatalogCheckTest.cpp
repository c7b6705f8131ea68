// The lists of other programs: what check reads, and what list writes.
#include "Catalog/CatalogInstruments.h"

#include <cctype>

namespace
{
constexpr char SHA256_OF_HELLO[] = "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824";

class CatalogCheckTest : public CatalogTest
{
protected:
    CatalogCheckTest()
    {
        Write("tree/a.txt", "hello");
        Write("tree/with space", "world");
    }

    // Checks a list of these bytes, in this process.
    sRun CheckHere(const std::string& sList)
    {
        Write("c.cat", sList);
        return RunHere("check");
    }

    // Lets the program check a list of these bytes.
    sRun Check(const std::string& sList)
    {
        Write("list", sList);
        return Run({"check", "list"});
    }
};
} // namespace

TEST_F(CatalogCheckTest, ReadsSfvFiles)
{
    const sRun oRun = Check("; a comment\n\ntree/a.txt 3610A686\r\ntree/with space \t3a771143  \n");

    EXPECT_EQ(0, oRun.nExitCode) << oRun.sErrors;
    EXPECT_EQ("2 files, 10 bytes: checked: all unchanged", Summary(oRun));
}

TEST_F(CatalogCheckTest, ReadsSha256Sums)
{
    const std::string sHash = SHA256_OF_HELLO;
    std::string sUpper = sHash;
    for (char& c : sUpper)
        c = static_cast<char>(std::toupper(c));

    for (const std::string& sList : {sHash + "  tree/a.txt\n", sHash + " *tree/a.txt\r\n", sUpper + "  tree/a.txt",
                                     "# comment\n" + sHash + "  tree/a.txt\n", "SHA256 (tree/a.txt) = " + sHash + "\n",
                                     "\\" + sHash + "  tree/a.txt\n"})
    {
        const sRun oRun = CheckHere(sList);
        EXPECT_EQ(0, oRun.nExitCode) << sList << oRun.sErrors;
        EXPECT_EQ("1 file, 5 bytes: checked: all unchanged", Summary(oRun));
    }
}

TEST_F(CatalogCheckTest, ReportsEachDifference)
{
    Write("tree/a.txt", "HELLO");

    const sRun oRun = Check("tree/a.txt 3610A686\ntree/gone 00000000\ntree 00000000\ntree/with space 3A771143\n");

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"changed tree/a.txt", "missing tree/gone", "unreadable tree"}), Reports(oRun));
    EXPECT_EQ("4 files, 10 bytes: checked: 1 changed, 1 missing, 0 new, 1 unreadable", Summary(oRun));
}

TEST_F(CatalogCheckTest, SeesAChangedFileBySha256)
{
    EXPECT_EQ((tNames{"changed tree/with space"}),
              Reports(Check(SHA256_OF_HELLO + std::string("  tree/with space\n"))));
}

TEST_F(CatalogCheckTest, RefusesWhatIsNoList)
{
    const std::string sSum = SHA256_OF_HELLO + std::string("  tree/a.txt\n");
    EXPECT_TRUE(IsRefused(CheckHere(""), "c.cat names no file"));
    EXPECT_TRUE(IsRefused(CheckHere("; only\n\n# comments\n"), "c.cat names no file"));
    for (const std::string& sList : {std::string("tree/a.txt\n"),
                                     std::string("3610A686\n"),
                                     std::string(" 3610A686\n"),
                                     std::string(" \t 3610A686\n"),
                                     std::string("tree/a.txt3610A686\n"),
                                     std::string("tree/a.txt 3610A68\n"),
                                     std::string("tree/a.txt 3610A68G\n"),
                                     sSum.substr(1),
                                     sSum.substr(0, 66) + "\n",
                                     "\\" + sSum.substr(0, 66) + "a\\b\n",
                                     "\\" + sSum.substr(0, 66) + "a\\",
                                     sSum.substr(0, 64) + "\ttree/a.txt\n",
                                     sSum.substr(0, 65) + "_tree/a.txt\n",
                                     sSum.substr(0, 63) + "g  tree/a.txt\n",
                                     sSum.substr(0, 63) + "/  tree/a.txt\n",
                                     std::string("SHA256 (tree/a.txt) = 2cf2\n"),
                                     std::string("SHA256 (tree/a.txt\n"),
                                     "SHA256 () = " + sSum.substr(0, 64),
                                     "SHA256 (a) = " + std::string(64, 'x'),
                                     "SHA256 (" + std::string(") = ") + sSum.substr(0, 63),
                                     std::string("TOVCATLG\0\1 \3", 12),
                                     std::string("a\0b 3610A686\n", 13),
                                     std::string(5000, 'n') + " 3610A686\n"})
        EXPECT_TRUE(IsRefused(CheckHere(sList), "line 1 ")) << sList;
    EXPECT_TRUE(IsRefused(CheckHere("tree/a.txt 3610A686\n" + sSum), "line 2 "));
    EXPECT_TRUE(IsRefused(CheckHere(sSum + "tree/a.txt 3610A686\n"), "line 2 "));
    EXPECT_TRUE(IsRefused(Run({"check", "nowhere"}), "nowhere cannot be read"));
    EXPECT_TRUE(IsRefused(Run({"check", "tree"}), "tree cannot be read"));
}

TEST_F(CatalogCheckTest, ReadsNamesWithEscapes)
{
    const std::string sSum = std::string("\\") + SHA256_OF_HELLO;

    EXPECT_EQ(
        (tNames{"missing tree/a\\b", "missing tree/line\\x0aend", "missing tree/return\\x0d"}),
        Reports(CheckHere(sSum + "  tree/line\\nend\n" + sSum + "  tree/return\\r\n" + sSum + "  tree/a\\\\b\n")));
}

TEST_F(CatalogCheckTest, ReadsListsOfAnyLength)
{
    const std::string sLine = "tree/a.txt 3610A686\n";
    for (const std::size_t nLength : {262143, 262144, 262145, 524288})
        EXPECT_EQ(0, CheckHere("#" + std::string(nLength - sLine.size() - 2, '-') + "\n" + sLine).nExitCode) << nLength;
}

TEST_F(CatalogCheckTest, ReadsWhatListWrites)
{
    Create({"c.cat", "tree", "--sha256"});
    const std::string sSfv = Run({"list", "c.cat", "--sfv"}).sOutput;
    const std::string sSums = Run({"list", "c.cat", "--sha256sums"}).sOutput;

    EXPECT_EQ("tree/a.txt 3610A686\ntree/with space 3A771143\n", sSfv);
    EXPECT_EQ(SHA256_OF_HELLO + std::string("  tree/a.txt"), Lines(sSums).at(0));
    EXPECT_EQ(0, Check(sSfv).nExitCode);
    EXPECT_EQ(0, Check(sSums).nExitCode);
}

TEST_F(CatalogCheckTest, PutsAFolderBeforeNamesThatOtherProgramsWouldPassOver)
{
    Write("c.cat", CatalogVersion3({" a", "#b", ";c"}, {}, {{0, "x", 1, 1}, {1, "x", 1, 2}, {2, "x", 1, 3}}));

    EXPECT_EQ("./ a/x 00000001\n./#b/x 00000002\n./;c/x 00000003\n", Run({"list", "c.cat", "--sfv"}).sOutput);
}

TEST_F(CatalogCheckTest, IsNotGivenHalfAList)
{
    for (const std::string sName : {"line\nend", "return\r", "space ", "tab\t"})
    {
        Write("c.cat", CatalogVersion3({"tree"}, {}, {{0, "a.txt", 5, 0x3610a686}, {0, sName, 1, 1}}));
        EXPECT_TRUE(IsRefused(Run({"list", "c.cat", "--sfv"}), "which an .sfv file cannot")) << sName;
    }
    EXPECT_TRUE(IsRefused(Run({"list", "c.cat", "--sha256sums"}), "c.cat holds no SHA-256"));
}

TEST_F(CatalogCheckTest, HasEscapedNamesInSha256Sums)
{
    // A catalogue with such names as only some systems have.
    std::string sBytes = "TOVCATLG" + CatalogNumber(3) + CatalogNumber(2) + CatalogNumber(1) + CatalogText("tree") +
                         CatalogNumber(0) + CatalogNumber(0) + CatalogNumber(2) + CatalogNumber(1) + CatalogNumber(3) +
                         CatalogNumber(0) + CatalogText("a\nb\\c\rd") + CatalogNumber(0) + CatalogNumber(0) +
                         CatalogNumber(0) + std::string(32, '\0');
    Write("c.cat", Sealed(sBytes));

    EXPECT_EQ("\\" + std::string(64, '0') + "  tree/a\\nb\\\\c\\rd\n", Run({"list", "c.cat", "--sha256sums"}).sOutput);
}
