// Names and things that only Posix has.
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVShownTexts.h"

#include <Console.h>

#include <filesystem>
#include <set>
#include <sys/stat.h>

namespace
{
class CatalogPosixNamesTest : public CatalogTest
{
protected:
    void Link(const std::string& sName, const std::string& sTarget)
    {
        std::filesystem::create_symlink(sTarget, Path(sName));
    }

    // A catalogue of the tree agrees with it and holds so many files.
    void ExpectFiles(std::size_t nFiles)
    {
        Create({"c.cat", "tree"});
        EXPECT_EQ(nFiles, Listed().size());
        const sRun oRun = Run({"verify", "c.cat"});
        EXPECT_EQ(0, oRun.nExitCode) << oRun.sOutput << oRun.sErrors;
    }
};
} // namespace

TEST_F(CatalogPosixNamesTest, MayHoldAnyByte)
{
    std::vector<sCatalogFile> aFiles;
    for (int nByte = 1; nByte < 256; ++nByte)
        if (nByte != '/')
        {
            const std::string sName = std::string("x") + static_cast<char>(nByte) + "y";
            Write("tree/" + sName, sName);
            aFiles.push_back({0, sName, 3, Crc(sName)});
        }

    ExpectFiles(254);
    EXPECT_EQ(CatalogVersion3({"tree"}, {}, aFiles), Read("c.cat"));

    for (const sCatalogFile& oFile : aFiles)
        Write("tree/" + oFile.sPath, "changed");
    const tNames aReports = Reports(Run({"verify", "c.cat"}));
    EXPECT_EQ(254u, aReports.size());
    EXPECT_EQ(254u, std::set<std::string>(aReports.begin(), aReports.end()).size());
}

TEST_F(CatalogPosixNamesTest, AreTwoUnitsInJsonBeyondTheFirst65536Characters)
{
    bool bExact = false;

    EXPECT_EQ("\"\\udb40\\udc01 \xF0\x9F\x98\x80\"", JsonText("\xF3\xA0\x80\x81 \xF0\x9F\x98\x80", bExact));
    EXPECT_TRUE(bExact);
}

TEST_F(CatalogPosixNamesTest, MayBeOfOddBytesAlone)
{
    for (const std::string sName : {"\n",   "\\",  ":",   "*",    "?",  " ", "-", "--", "\xFF", "...",  "C:",
                                    "a\\b", "*.*", "\t ", "\r\n", "\"", "'", "|", "<>", "~",    "%s%n", "\x1b[2J"})
        Write("tree/" + sName + "/" + sName, sName);

    ExpectFiles(22);
}

TEST_F(CatalogPosixNamesTest, OfDirectoriesAreNoPatterns)
{
    Write("tr*e/a", "1");
    Write("tree/b", "2");
    Write("tr?e/c", "3");
    Write("tr\\e/d", "4");
    Write("t\nr/e", "5");

    for (const std::string sDirectory : {"tr*e", "tr?e", "tr\\e", "t\nr"})
    {
        Create({"c.cat", sDirectory});
        EXPECT_EQ(1u, Listed().size()) << sDirectory;
        EXPECT_EQ(std::string::npos, Read("c.cat").find(CatalogText("b"))) << sDirectory;
        EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode) << sDirectory;
    }
}

TEST_F(CatalogPosixNamesTest, OfDirectoriesAreNoPatternsForTheirOwnCatalogue)
{
    for (const std::string sDirectory : {"tr*e", "tree?"})
    {
        Write(sDirectory + "/a", "1");
        Write(sDirectory + "/tovcatalog-1.new", "TOVCATLG and more");
        for (int nRun = 0; nRun < 2; ++nRun)
        {
            Create({sDirectory + "/c.cat", sDirectory});
            EXPECT_EQ((tNames{"83dcefb7 1 " + sDirectory + "/a"}), Listed(sDirectory + "/c.cat"));
            EXPECT_EQ(0, Run({"verify", sDirectory + "/c.cat"}).nExitCode) << sDirectory;
        }
    }
}

// The system tells the name of the working directory only to those with a buffer of that size.
TEST_F(CatalogPosixNamesTest, OfDirectoriesAreNoPatternsInAWorkingDirectoryOfALongName)
{
    const std::string sHere = std::string(200, 'w') + "/" + std::string(200, 'w');
    Write(sHere + "/q?r/a", "1");
    Write(sHere + "/tree/b", "2");
    Write("elsewhere/q?r/c", "3");

    const std::string sElsewhere = Path("elsewhere");
    const sRun oRun = RunCatalog({"create", "c.cat", "q?r", "tree", sElsewhere}, Path(sHere));

    EXPECT_EQ(0, oRun.nExitCode) << oRun.sErrors;
    EXPECT_EQ((tNames{"83dcefb7 1 q?r/a", "1ad5be0d 1 tree/b", "6dd28e9b 1 " + sElsewhere + "/q?r/c"}),
              Listed(sHere + "/c.cat"));
    EXPECT_FALSE(Exists("elsewhere/q?r/c.cat"));
}

TEST_F(CatalogPosixNamesTest, OfOneCatalogueMayBeSeveral)
{
    Write("tree/a", "1");
    Link("other way", "tree");

    Create({"other way/c.cat", "tree"});
    EXPECT_EQ(0, Run({"verify", "other way/c.cat"}).nExitCode);
    EXPECT_EQ(0, Run({"verify", "tree/c.cat"}).nExitCode);
}

TEST_F(CatalogPosixNamesTest, OfCataloguesMayHoldAnyByte)
{
    Write("tree/a", "1");
    for (const std::string sCatalog : {"c*.cat", "c?", "c\nd", "c\xFF", "c:d", " "})
    {
        Create({sCatalog, "tree"});
        EXPECT_TRUE(Exists(sCatalog)) << sCatalog;
        EXPECT_EQ(0, Run({"verify", sCatalog}).nExitCode) << sCatalog;
    }
}

TEST_F(CatalogPosixNamesTest, OfCataloguesMayHaveTheGreatestLength)
{
    Write("tree/a", "1");
    const std::string sName(255, 'c');

    Create({sName, "tree"});
    Create({sName, "tree"});

    EXPECT_EQ(0, Run({"verify", sName}).nExitCode);
    EXPECT_EQ((tNames{sName, "tree"}), NamesInFolder());
}

TEST_F(CatalogPosixNamesTest, AreShownWithoutBytesThatControlATerminalOrHideText)
{
    for (const sShownText& oCase : SHOWN_TEXTS)
        EXPECT_STREQ(oCase.szShown, ~Printable(oCase.szText));

    Write("c\x9b.cat", "no catalogue");
    EXPECT_TRUE(IsRefused(Run({"list", "c\x9b.cat"}), "c\\x9b.cat is no catalogue"));
    Write("c.cat", CatalogVersion3({"tree\x9b"}, {}, {{0, "a\x9b", 1, 0}}));
    EXPECT_EQ((tNames{"00000000 1 tree\\x9b/a\\x9b"}), Listed());
    EXPECT_EQ((tNames{"missing tree\\x9b/a\\x9b", "unreadable tree\\x9b"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogPosixNamesTest, ThatDifferInCaseAreDifferent)
{
    Write("tree/a", "1");
    Write("tree/A", "2");
    Write("tree/C.cat", "3");

    Create({"tree/c.cat", "tree"});
    EXPECT_EQ((tNames{"1ad5be0d 1 tree/A", "6dd28e9b 1 tree/C.cat", "83dcefb7 1 tree/a"}), Listed("tree/c.cat"));

    Write("tree/A", "1");
    EXPECT_EQ((tNames{"changed tree/A"}), Reports(Run({"verify", "tree/c.cat"})));
}

TEST_F(CatalogPosixNamesTest, MayBeLong)
{
    std::string sName = "tree";
    for (int nLevel = 0; nLevel < 15; ++nLevel)
        sName += "/" + std::string(255, static_cast<char>('a' + nLevel));
    Write(sName, "x");

    ExpectFiles(1);
}

// Longer than the system takes in one call.
TEST_F(CatalogPosixNamesTest, ThatAreTooLongCountAsUnreadable)
{
    Write("tree/a", "x");
    const std::filesystem::path oBefore = std::filesystem::current_path();
    std::filesystem::current_path(Path("tree"));
    for (int nLevel = 0; nLevel < 20; ++nLevel)
    {
        const std::string sLevel(250, 'd');
        std::filesystem::create_directory(sLevel);
        std::filesystem::current_path(sLevel);
    }
    WriteWholeFile("f", "x");
    std::filesystem::current_path(oBefore);

    const sRun oRun = Run({"create", "c.cat", "tree"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ(1u, Unreadable(oRun).size());
    EXPECT_EQ("1 file, 1 bytes: catalogued, 1 unreadable", Summary(oRun));
    EXPECT_EQ((tNames{"8cdc1683 1 tree/a"}), Listed());
}

TEST_F(CatalogPosixNamesTest, OfLinksToFilesStandForTheFiles)
{
    Write("elsewhere/a", "x");
    MakeDirectory("tree");
    Link("tree/link", "../elsewhere/a");
    ExpectFiles(1);
    EXPECT_EQ((tNames{"8cdc1683 1 tree/link"}), Listed());

    Write("elsewhere/a", "y");
    EXPECT_EQ((tNames{"changed tree/link"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogPosixNamesTest, OfOtherThingsArePassedOver)
{
    Write("tree/sub/a", "x");
    Link("tree/itself", ".");
    Link("tree/sub/above", "..");
    Link("tree/loop", "loop");
    Link("tree/dead", "nowhere");
    Link("tree/folder", "sub");
    Link("tree/null", "/dev/null");
    Link("tree/zero", "/dev/zero");
    Link("tree/pipe link", "pipe");
    ASSERT_EQ(0, ::mkfifo(Path("tree/pipe").c_str(), 0666));

    ExpectFiles(1);
    EXPECT_EQ((tNames{"8cdc1683 1 tree/sub/a"}), Listed());
}

TEST_F(CatalogPosixNamesTest, OfADirectoryMayBeALink)
{
    Write("real/a", "x");
    Link("tree", "real");

    ExpectFiles(1);
}

TEST_F(CatalogPosixNamesTest, OfFilesWhosePlaceAnotherThingHasTakenAreMissing)
{
    Write("tree/a", "x");
    Write("tree/b", "x");
    Create({"c.cat", "tree"});
    Remove("tree/a");
    ASSERT_EQ(0, ::mkfifo(Path("tree/a").c_str(), 0666));
    Remove("tree/b");
    Link("tree/b", "nowhere");

    EXPECT_EQ((tNames{"missing tree/a", "missing tree/b"}), Reports(Run({"verify", "c.cat"})));
}
