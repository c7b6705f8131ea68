// What create takes into a catalogue, and how it writes the catalogue.
#include "Catalog/CatalogInstruments.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

namespace
{
class CatalogCreateTest : public CatalogTest
{
protected:
    // The names alone, sorted.
    tNames ListedNames() const
    {
        tNames aNames = Listed();
        for (std::string& sLine : aNames)
            sLine.erase(0, sLine.find(' ', 9) + 1);
        std::sort(aNames.begin(), aNames.end());
        return aNames;
    }

    // The names in a catalogue of the tree that is made with these further arguments.
    tNames NamesWith(const std::vector<std::string>& aFurther)
    {
        std::vector<std::string> aArguments = {"c.cat", "tree"};
        aArguments.insert(aArguments.end(), aFurther.begin(), aFurther.end());
        Create(aArguments);
        return ListedNames();
    }
};
} // namespace

TEST_F(CatalogCreateTest, TakesTheChecksumThatZipShows)
{
    std::string sAllBytes;
    for (int nByte = 0; nByte < 256; ++nByte)
        sAllBytes += static_cast<char>(nByte);
    Write("tree/1", "123456789");
    Write("tree/2", "");
    Write("tree/3", "The quick brown fox jumps over the lazy dog");
    Write("tree/4", sAllBytes);
    Write("tree/5", std::string(1, '\0'));

    Create({"c.cat", "tree"});

    EXPECT_EQ((tNames{"cbf43926 9 tree/1", "00000000 0 tree/2", "414fa339 43 tree/3", "29058c73 256 tree/4",
                      "d202ef8d 1 tree/5"}),
              Listed());
}

TEST_F(CatalogCreateTest, ReadsFilesToTheirEndsWhateverTheirSize)
{
    tNames aExpected;
    for (const unsigned nSize : {4095u, 4096u, 4097u, 65535u, 65536u, 65537u, 1048575u, 1048576u, 1048577u, 3000000u})
    {
        std::string sContents(nSize, 'x');
        for (unsigned n = 0; n < nSize; ++n)
            sContents[n] = static_cast<char>(n * n >> 3);
        const std::string sName = "tree/" + std::to_string(10000000 + nSize);
        Write(sName, sContents);
        char szLine[100];
        std::snprintf(szLine, sizeof(szLine), "%08x %u ", Crc(sContents), nSize);
        aExpected.push_back(szLine + sName);
    }

    Create({"c.cat", "tree"});

    EXPECT_EQ(aExpected, Listed());
}

TEST_F(CatalogCreateTest, TakesAllSubdirectories)
{
    std::string sDeep = "tree";
    tNames aExpected;
    for (int nLevel = 0; nLevel < 80; ++nLevel)
    {
        aExpected.push_back(sDeep + "/f");
        Write(aExpected.back(), "x");
        sDeep += "/d";
    }
    Write("tree/beside/g", "y");
    aExpected.push_back("tree/beside/g");
    std::sort(aExpected.begin(), aExpected.end());

    EXPECT_EQ(aExpected, NamesWith({}));
}

TEST_F(CatalogCreateTest, TakesSeveralDirectoriesInTheirOrder)
{
    Write("second/a", "1");
    Write("first/z", "2");
    Write("third/sub/m", "3");
    Write("not this/x", "4");

    Create({"c.cat", "second", "first", "third"});

    EXPECT_EQ((tNames{"83dcefb7 1 second/a", "1ad5be0d 1 first/z", "6dd28e9b 1 third/sub/m"}), Listed());
}

TEST_F(CatalogCreateTest, TakesEmptyDirectoriesAsNothing)
{
    MakeDirectory("tree/empty/more");
    Write("tree/a", "x");

    const sRun oRun = Run({"create", "c.cat", "tree"});

    EXPECT_EQ(0, oRun.nExitCode);
    EXPECT_EQ("", oRun.sErrors);
    EXPECT_EQ((tNames{"8cdc1683 1 tree/a"}), Listed());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogCreateTest, KeepsOnlyFilesWhoseNamesMatchThePattern)
{
    for (const char* szName : {"a.text", "a.txt", "B.TXT", "d.txt.bak", "sub.txt/c.Txt", "sub.txt/e.doc", "txt"})
        Write("tree/" + std::string(szName), "x");
    const struct
    {
        const char* szPattern;
        tNames aNames;
    } aCases[] = {
        {"*",
         {"tree/B.TXT", "tree/a.text", "tree/a.txt", "tree/d.txt.bak", "tree/sub.txt/c.Txt", "tree/sub.txt/e.doc",
          "tree/txt"}},
        {"*.txt", {"tree/B.TXT", "tree/a.txt", "tree/sub.txt/c.Txt"}},
        {"?.tXT", {"tree/B.TXT", "tree/a.txt", "tree/sub.txt/c.Txt"}},
        {"*.t?xt", {"tree/a.text"}},
        {"A*", {"tree/a.text", "tree/a.txt"}},
        {"*b*", {"tree/B.TXT", "tree/d.txt.bak"}},
        {"TXT", {"tree/txt"}},
    };

    for (const auto& oCase : aCases)
        EXPECT_EQ(oCase.aNames, NamesWith({"--pattern", oCase.szPattern})) << oCase.szPattern;
}

TEST_F(CatalogCreateTest, KeepsFilesThatMatchAnyOfSeveralPatternsOnce)
{
    for (const char* szName : {"a.cpp", "a.h", "both.h.cpp", "c.txt"})
        Write("tree/" + std::string(szName), "x");

    EXPECT_EQ((tNames{"tree/a.cpp", "tree/a.h", "tree/both.h.cpp"}),
              NamesWith({"--pattern", "*.cpp", "--pattern", "both*", "--pattern", "*.h"}));
}

TEST_F(CatalogCreateTest, TakesPatternsBeforeTheOtherArgumentsToo)
{
    Write("tree/a.txt", "x");
    Write("tree/b.doc", "x");

    Create({"--pattern", "*.txt", "c.cat", "tree"});

    EXPECT_EQ((tNames{"tree/a.txt"}), ListedNames());
}

TEST_F(CatalogCreateTest, GivesTheSameCatalogueWithAnyNumberOfThreads)
{
    for (int nFile = 0; nFile < 60; ++nFile)
        Write("tree/" + std::to_string(nFile % 7) + "/" + std::to_string(nFile), std::string(nFile * 3001, 'x'));
    Create({"1.cat", "tree", "--threads", "1"});

    for (const char* szThreads : {"2", "8", "256"})
    {
        Create({"n.cat", "tree", "--threads", szThreads});
        EXPECT_EQ(Read("1.cat"), Read("n.cat")) << szThreads;
    }
    Create({"n.cat", "tree"});
    EXPECT_EQ(Read("1.cat"), Read("n.cat"));
}

// A '/' comes after '!' and '-', and before '0' and letters.
TEST_F(CatalogCreateTest, SortsFilesByTheBytesOfTheirPaths)
{
    const tNames aSorted = {"a!",    "a!b/1", "a-/1", "a-b", "a/-",  "a/b!/1", "a/b-",
                            "a/b/1", "a/b/2", "a/b0", "a/c", "a0/1", "ab",     "b"};
    for (const std::string& sName : aSorted)
        Write("tree/" + sName, "");

    for (const char* szThreads : {"1", "2", "8"})
    {
        Create({"c.cat", "tree", "--threads", szThreads});
        tNames aExpected;
        for (const std::string& sName : aSorted)
            aExpected.push_back("00000000 0 tree/" + sName);
        EXPECT_EQ(aExpected, Listed()) << szThreads;
    }
}

TEST_F(CatalogCreateTest, WritesTheDescribedFormat)
{
    Write("one/sub/a.txt", "hello\n");
    Write("one/sub/b.doc", "no");
    Write("two/c.txt", "");

    Create({"c.cat", "one", "two", "--pattern", "*.txt", "--pattern", "*.md"});

    EXPECT_EQ(CatalogVersion3({"one", "two"}, {"*.txt", "*.md"}, {{0, "sub/a.txt", 6, 0x363a3020}, {1, "c.txt", 0, 0}}),
              Read("c.cat"));
}

TEST_F(CatalogCreateTest, KeepsDirectoriesAsTheyWereGiven)
{
    Write("tree/a", "x");

    Create({"c.cat", "tree", "./tree", "tree/../tree", "."});

    EXPECT_EQ(0u, Read("c.cat").find("TOVCATLG" + CatalogNumber(3) + CatalogNumber(1) + CatalogNumber(4) +
                                     CatalogText("tree") + CatalogText("./tree") + CatalogText("tree/../tree") +
                                     CatalogText(".") + CatalogNumber(0)));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogCreateTest, TakesADirectoryWithASeparatorAtItsEnd)
{
    Write("tree/sub/a", "x");

    Create({"c.cat", "tree/"});

    EXPECT_EQ((tNames{"tree/sub/a"}), ListedNames());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogCreateTest, TakesAbsoluteNames)
{
    Write("tree/a", "x");

    Create({Path("c.cat"), Path("tree")});

    EXPECT_EQ((tNames{Path("tree") + "/a"}), ListedNames());
    EXPECT_EQ(0, RunCatalog({"verify", Path("c.cat")}, Path("tree")).nExitCode);
}

TEST_F(CatalogCreateTest, LeavesTheCatalogueItselfOut)
{
    Write("tree/a", "x");
    Write("tree/sub/b", "y");
    const struct
    {
        std::string sCatalog;
        std::string sDirectory;
        const char* szPlace;
    } aCases[] = {
        {"tree/c.cat", "tree", "tree/c.cat"},
        {"./tree/c.cat", "tree", "tree/c.cat"},
        {"tree/sub/c.cat", "./tree", "tree/sub/c.cat"},
        {"tree/../tree/c.cat", "tree", "tree/c.cat"},
        {Path("tree/c.cat"), "tree", "tree/c.cat"},
        {"tree/c.cat", Path("tree"), "tree/c.cat"},
        {"c.cat", ".", "c.cat"},
        {"tree/caf\xE9.cat", "tree", "tree/caf\xE9.cat"},
    };

    for (const auto& oCase : aCases)
    {
        SCOPED_TRACE(oCase.sCatalog + " " + oCase.sDirectory);
        Create({oCase.sCatalog, oCase.sDirectory});
        EXPECT_EQ(2u, Listed(oCase.sCatalog).size());
        // The catalogue stands there from the start this time.
        Create({oCase.sCatalog, oCase.sDirectory});
        EXPECT_EQ(2u, Listed(oCase.sCatalog).size());

        const sRun oVerified = Run({"verify", oCase.sCatalog});
        EXPECT_EQ(0, oVerified.nExitCode) << oVerified.sOutput;
        EXPECT_EQ(0, std::remove(Path(oCase.szPlace).c_str()));
    }
}

TEST_F(CatalogCreateTest, TakesOtherFilesOfTheCataloguesName)
{
    Write("tree/sub/c.cat", "x");

    Create({"tree/c.cat", "tree"});

    EXPECT_EQ((tNames{"8cdc1683 1 tree/sub/c.cat"}), Listed("tree/c.cat"));
}

TEST_F(CatalogCreateTest, ReplacesAnExistingCatalogue)
{
    Write("tree/a", "x");
    Write("c.cat", std::string(100000, 'x'));
    std::filesystem::permissions(Path("c.cat"), std::filesystem::perms::owner_all);

    Create({"c.cat", "tree"});

    EXPECT_EQ(CatalogVersion3({"tree"}, {}, {{0, "a", 1, 0x8cdc1683}}), Read("c.cat"));
}

TEST_F(CatalogCreateTest, LeavesNothingElseBehind)
{
    Write("tree/a", "x");
    Create({"c.cat", "tree"});
    Create({"c.cat", "tree"});

    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
}

TEST_F(CatalogCreateTest, SumsUpFilesBytesSecondsAndSpeed)
{
    Write("tree/a", std::string(1000000, 'x'));
    const sRun oOne = Run({"create", "c.cat", "tree"});
    Write("tree/b", std::string(234567, 'x'));
    const sRun oTwo = Run({"create", "c.cat", "tree"});

    EXPECT_EQ("1 file, 1000000 bytes: catalogued", Summary(oOne));
    EXPECT_EQ("2 files, 1234567 bytes: catalogued", Summary(oTwo));
    EXPECT_EQ(1u, Lines(oTwo.sOutput).size());
    EXPECT_EQ("", oTwo.sErrors);
}

TEST_F(CatalogCreateTest, TakesNamesOfManyKinds)
{
    tNames aNames = {"tree/ leading space", "tree/#",          "tree/%TEMP%",   "tree/-",       "tree/--pattern",
                     "tree/a b  c",         "tree/a&b;c",      "tree/caf\xE9",  "tree/q'uote",  "tree/x.y.z",
                     "tree/\xFC \xDF/\xC4", "tree/[1] (2){3}", "tree/$HOME^!~", "tree/.hidden", "tree/,=+@"};
    aNames.push_back("tree/" + std::string(120, 'n'));
    for (const std::string& sName : aNames)
        Write(sName, sName);
    std::sort(aNames.begin(), aNames.end());

    tNames aShown = aNames;
    for (std::string& sName : aShown)
    {
        // On Linux these bytes are no characters, and are shown as numbers.
        for (const auto& oByte : {std::pair("\xE9", "\\xe9"), std::pair("\xFC \xDF/\xC4", "\\xfc \\xdf/\\xc4")})
        {
            const std::size_t nPlace = TOV_SYSTEM_WINDOWS ? sName.npos : sName.find(oByte.first);
            if (nPlace != sName.npos)
                sName.replace(nPlace, std::strlen(oByte.first), oByte.second);
        }
    }
    tNames aFound = NamesWith({});
    std::sort(aFound.begin(), aFound.end());
    std::sort(aShown.begin(), aShown.end());
    EXPECT_EQ(aShown, aFound);
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);

    for (const std::string& sName : aNames)
        WriteWholeFile(Path(sName), "changed");
    EXPECT_EQ(aNames.size(), Reports(Run({"verify", "c.cat"})).size());
}

TEST_F(CatalogCreateTest, TakesDirectoriesAndCataloguesOfOddNames)
{
    Write("a tree/-sub/f", "x");
    Write("-tree/f", "y");

    Create({"--", "-my catalogue", "a tree", "-tree"});

    EXPECT_EQ(0, Run({"list", "--", "-my catalogue"}).nExitCode);
    EXPECT_EQ(0, Run({"verify", "--", "-my catalogue"}).nExitCode);
    std::filesystem::rename(Path("-my catalogue"), Path("c.cat"));
    EXPECT_EQ((tNames{"8cdc1683 1 a tree/-sub/f", "fbdb2615 1 -tree/f"}), Listed());
}
