#include "File/TOVScanInstruments.h"
#include "Support/TOVPrivateMember.h"

#include <TOVPlatform/TOVFile.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <type_traits>

namespace
{
TOV_PRIVATE_MEMBER(IncludesSubDirs, CTOVFileScanner, bool, m_bIncludeSubDirs)

constexpr char LENGTH_CHECK[] = "(0 <= lIndex) && (lIndex < GetLength())";

class CTOVFileScannerTest : public testing::Test
{
protected:
    std::string Path(const std::string& sName) const { return m_oFolder.File(sName); }

    void MakeFiles(const tNames& aNames) const
    {
        for (const std::string& sName : aNames)
        {
            std::filesystem::create_directories(std::filesystem::path(Path(sName)).parent_path());
            WriteWholeFile(Path(sName), "");
        }
    }

    // Adds the folder itself, or one in it.
    void Add(const std::string& sPattern) { Add(m_oFolder.Path(), sPattern); }
    void Add(const std::string& sDirectory, const std::string& sPattern)
    {
        m_oScanner.AddScanDirectory(sDirectory.c_str(), sPattern.c_str());
    }

    // The names that a run reports, in the order of their bytes.
    tNames Scan()
    {
        CScanRecord oRecord;
        oRecord.Run(m_oScanner);
        std::sort(oRecord.aFiles.begin(), oRecord.aFiles.end());
        return oRecord.aFiles;
    }

    // The folder's files in the order of the platform's search.
    tNames SearchedFiles(const std::string& sPattern) const
    {
        tNames aNames;
        TOVPlatform::TOVFile::sTOVFindData oEntry;
        const unsigned long long hFind = TOVPlatform::TOVFile::FindFirst(Path(sPattern).c_str(), &oEntry);
        do
        {
            if ((oEntry.ulAttributes & TOVPlatform::TOVFile::eFileAttributeDirectory) == 0)
                aNames.push_back(oEntry.szName);
        } while (TOVPlatform::TOVFile::FindNext(hFind, &oEntry));
        TOVPlatform::TOVFile::FindClose(hFind);
        return aNames;
    }

    const CTempFolder m_oFolder;
    CTOVFileScanner m_oScanner;
};

unsigned long long s_ullUserValue;

CTOVFileScanner::eScannerControl RememberUserValue(CTOVFileScanner::eScannerMode, CTOVFileScanner::sTOVFileDescriptor*,
                                                   unsigned long long ullUserValue)
{
    s_ullUserValue = ullUserValue;
    return CTOVFileScanner::eScannerContinue;
}
} // namespace

TOV_CHILD(ThrowsInsideTheCallback)
{
    CTOVFileScanner oScanner;
    oScanner.AddScanDirectory(aArguments[0].c_str(), "*.txt");
    oScanner.AddScanDirectory(aArguments[0].c_str(), "*.txt");
    CScanRecord oRecord;
    oRecord.fnOnFile = [](CTOVFileScanner::sTOVFileDescriptor&) -> int { throw std::runtime_error("enough"); };
    try
    {
        oRecord.Run(oScanner);
    }
    catch (const std::runtime_error& oError)
    {
        std::printf("%s after %d, ", oError.what(), static_cast<int>(oRecord.aFiles.size()));
    }

    CScanRecord oAgain;
    oAgain.Run(oScanner);
    std::printf("then %d", static_cast<int>(oAgain.aFiles.size()));
}

TEST_F(CTOVFileScannerTest, NamesWhatItsCallbackGetsAndGives)
{
    EXPECT_EQ(0, CTOVFileScanner::eScannerContinue);
    EXPECT_EQ(1, CTOVFileScanner::eScannerStop);
    EXPECT_EQ(1, CTOVFileScanner::eScannerModeFile);
    EXPECT_EQ(3 * sizeof(CTOVPath), sizeof(CTOVFileScanner::sTOVFileDescriptor));
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVFileScanner>);
}

TEST_F(CTOVFileScannerTest, CallsNobodyForAnEmptyList)
{
    EXPECT_EQ(tNames(), Scan());
    EXPECT_NO_CHECK(m_oScanner.Run(nullptr, 0));
}

TEST_F(CTOVFileScannerTest, ReportsTheFilesThatMatch)
{
    MakeFiles({"a.txt", "b.txt", "c.doc", "d"});

    Add("*.txt");

    EXPECT_EQ(tNames({"a.txt", "b.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, ReportsInTheOrderOfTheSearch)
{
    MakeFiles({"z", "b.txt", "sub/file", "a", "c.doc", "m", "y.y.y", ".dot"});
    CScanRecord oRecord;
    Add("*");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(SearchedFiles("*"), oRecord.aFiles);
    EXPECT_EQ(7u, oRecord.aFiles.size());
}

TEST_F(CTOVFileScannerTest, ReportsTheFirstEntryOfASearch)
{
    MakeFiles({"only.txt"});

    Add("only.txt");
    EXPECT_EQ(tNames({"only.txt"}), Scan());

    Add("o*.txt");
    EXPECT_EQ(tNames({"only.txt", "only.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, DescribesAFile)
{
    MakeFiles({"a.txt"});
    CScanRecord oRecord;
    Add("*.txt");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"a.txt"}), oRecord.aFiles);
    EXPECT_EQ(tNames({m_oFolder.Path()}), oRecord.aDirectories);
    EXPECT_EQ(tNames({m_oFolder.Path() + "\\*.txt"}), oRecord.aSearchPaths);
    EXPECT_EQ(std::vector<int>({1}), oRecord.aModes);
}

TEST_F(CTOVFileScannerTest, AddsNoSecondSeparator)
{
    MakeFiles({"a.txt"});
    CScanRecord oRecord;
    Add(m_oFolder.Path() + "/", "*.txt");
    Add(m_oFolder.Path() + "\\", "*.txt");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({m_oFolder.Path() + "/", m_oFolder.Path() + "\\"}), oRecord.aDirectories);
    EXPECT_EQ(tNames({m_oFolder.Path() + "/*.txt", m_oFolder.Path() + "\\*.txt"}), oRecord.aSearchPaths);
}

TEST_F(CTOVFileScannerTest, UsesOneDescriptorForADirectory)
{
    MakeFiles({"a.txt", "b.txt", "c.txt"});
    CScanRecord oRecord;
    Add("*.txt");

    oRecord.Run(m_oScanner);

    ASSERT_EQ(3u, oRecord.aDescriptors.size());
    EXPECT_EQ(oRecord.aDescriptors[0], oRecord.aDescriptors[1]);
    EXPECT_EQ(oRecord.aDescriptors[0], oRecord.aDescriptors[2]);
}

TEST_F(CTOVFileScannerTest, HandsTheCallersValueThrough)
{
    MakeFiles({"a.txt"});
    Add("*.txt");

    m_oScanner.Run(&RememberUserValue, 0xFEDCBA9876543210);

    EXPECT_EQ(0xFEDCBA9876543210u, s_ullUserValue);
}

TEST_F(CTOVFileScannerTest, ReportsNothingOfADirectoryThatHoldsDirectoriesAlone)
{
    std::filesystem::create_directories(Path("one"));
    std::filesystem::create_directories(Path("two"));

    Add("*");
    Add("*.*");

    EXPECT_EQ(tNames(), Scan());
}

TEST_F(CTOVFileScannerTest, PassesOverADirectoryThatMatches)
{
    MakeFiles({"b.txt"});
    std::filesystem::create_directory(Path("a.txt"));

    Add("*.txt");
    Add("a.txt");

    EXPECT_EQ(tNames({"b.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, ScansItsDirectoriesInTheirOrder)
{
    MakeFiles({"one/a.txt", "two/b.txt", "two/c.doc"});
    CScanRecord oRecord;
    Add(Path("two"), "*.txt");
    Add(Path("one"), "*.txt");
    Add(Path("two"), "*.doc");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"b.txt", "a.txt", "c.doc"}), oRecord.aFiles);
    EXPECT_EQ(tNames({Path("two"), Path("one"), Path("two")}), oRecord.aDirectories);
}

TEST_F(CTOVFileScannerTest, GivesEachPatternOfADirectoryItsFiles)
{
    MakeFiles({"a.txt", "b.doc"});

    Add("*.txt");
    Add("*.doc");
    Add("*");

    EXPECT_EQ(tNames({"a.txt", "a.txt", "b.doc", "b.doc"}), Scan());
}

// Settled: the search below a scanned directory is made through "*.*", and finds nothing.
TEST_F(CTOVFileScannerTest, ReportsNothingBelowTheFirstLevel)
{
    MakeFiles({"a.txt", "one/b.txt", "two/c.txt", "two/inner/d.txt"});
    Add("*.txt");

    EXPECT_EQ(tNames({"a.txt"}), Scan());

    m_oScanner.SetIncludeSubDirs(false);
    EXPECT_EQ(tNames({"a.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, IncludesSubDirectoriesUntilItIsToldNotTo)
{
    EXPECT_TRUE(IncludesSubDirs(m_oScanner));

    m_oScanner.SetIncludeSubDirs(false);
    EXPECT_FALSE(IncludesSubDirs(m_oScanner));
    m_oScanner.SetIncludeSubDirs(true);
    EXPECT_TRUE(IncludesSubDirs(m_oScanner));
}

// Settled: a stop ends one directory and not the run.
TEST_F(CTOVFileScannerTest, GoesOnWithTheNextDirectoryAfterAStop)
{
    MakeFiles({"one/a.txt", "one/b.txt", "two/c.txt", "two/d.txt"});
    CScanRecord oRecord;
    oRecord.fnOnFile = [](CTOVFileScanner::sTOVFileDescriptor&) { return 1; };
    Add(Path("one"), "*.txt");
    Add(Path("two"), "*.txt");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({Path("one"), Path("two")}), oRecord.aDirectories);
}

TEST_F(CTOVFileScannerTest, StopsAtTheFileThatSaysSo)
{
    MakeFiles({"a", "b", "c", "d"});
    CScanRecord oRecord;
    oRecord.fnOnFile = [&oRecord](CTOVFileScanner::sTOVFileDescriptor&) { return oRecord.aFiles.size() == 3 ? 1 : 0; };
    Add("*");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(3u, oRecord.aFiles.size());
}

TEST_F(CTOVFileScannerTest, GoesOnForEveryValueButOne)
{
    MakeFiles({"a", "b", "c"});
    Add("*");
    for (const int nResult : {0, 2, -1, 3, 0x100, 0x101})
    {
        CScanRecord oRecord;
        oRecord.fnOnFile = [nResult](CTOVFileScanner::sTOVFileDescriptor&) { return nResult; };

        oRecord.Run(m_oScanner);

        EXPECT_EQ(3u, oRecord.aFiles.size()) << nResult;
    }
}

TEST_F(CTOVFileScannerTest, ReportsAnewInEachRun)
{
    MakeFiles({"a.txt"});
    Add("*.txt");

    EXPECT_EQ(tNames({"a.txt"}), Scan());
    MakeFiles({"b.txt"});
    EXPECT_EQ(tNames({"a.txt", "b.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, KeepsADirectoryAddedInsideTheCallbackForTheNextRun)
{
    MakeFiles({"one/a.txt", "two/b.txt"});
    CScanRecord oRecord;
    bool bAdded = false;
    oRecord.fnOnFile = [&](CTOVFileScanner::sTOVFileDescriptor&) {
        if (!bAdded)
            Add(Path("two"), "*.txt");
        bAdded = true;
        return 0;
    };
    Add(Path("one"), "*.txt");

    oRecord.Run(m_oScanner);
    EXPECT_EQ(tNames({"a.txt"}), oRecord.aFiles);

    EXPECT_EQ(tNames({"a.txt", "b.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, SurvivesManyDirectoriesAddedInsideTheCallback)
{
    MakeFiles({"a", "b", "c"});
    CScanRecord oRecord;
    oRecord.fnOnFile = [this](CTOVFileScanner::sTOVFileDescriptor&) {
        for (int nAdded = 0; nAdded < 50; ++nAdded)
            Add(Path("missing"), "*");
        return 0;
    };
    Add("*");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(3u, oRecord.aFiles.size());
    EXPECT_EQ(tNames(3, m_oFolder.Path() + "\\*"), oRecord.aSearchPaths);
}

TEST_F(CTOVFileScannerTest, PassesQuietlyOverAMissingDirectory)
{
    MakeFiles({"a.txt"});
    CLogRecorder oLog;
    Add(Path("missing"), "*");
    Add(Path("a.txt"), "*");
    Add("*.txt");

    EXPECT_EQ(tNames({"a.txt"}), Scan());

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST_F(CTOVFileScannerTest, RaisesForAnEmptyDirectory)
{
    MakeFiles({"a.txt"});
    CScanRecord oRecord;
    Add("*.txt");
    m_oScanner.AddScanDirectory(CTOVPath(), "*");
    Add("*.txt");

    EXPECT_CHECK_AT("TOVString/TOVStringA", LENGTH_CHECK, oRecord.Run(m_oScanner));

    EXPECT_EQ(tNames({"a.txt"}), oRecord.aFiles);
}

TEST_F(CTOVFileScannerTest, RaisesForAnEmptyPatternBehindADirectoryWithoutASeparator)
{
    MakeFiles({"a.txt"});
    m_oScanner.AddScanDirectory((m_oFolder.Path() + "/").c_str(), CTOVStringA());
    EXPECT_EQ(tNames(), Scan());

    m_oScanner.AddScanDirectory(m_oFolder.Path().c_str(), CTOVStringA());
    EXPECT_CHECK_AT("TOVString/TOVStringA", LENGTH_CHECK, Scan());
}

// In a process of its own: the search stays open, and with it on some systems the folder.
TEST_F(CTOVFileScannerTest, LetsThroughWhatTheCallbackThrows)
{
    MakeFiles({"a.txt", "b.txt"});

    EXPECT_EQ("enough after 1, then 4", RunChild("ThrowsInsideTheCallback", {m_oFolder.Path()}).sOutput);
}

TEST_F(CTOVFileScannerTest, LeavesItsListsAloneWhateverTheCallbackDoesToTheDescriptor)
{
    MakeFiles({"a.txt", "b.txt"});
    CScanRecord oRecord;
    oRecord.fnOnFile = [](CTOVFileScanner::sTOVFileDescriptor& oDescriptor) {
        oDescriptor.oFileName += "changed";
        oDescriptor.oDirectory = "changed";
        oDescriptor.oSearchPath = "changed";
        return 0;
    };
    Add("*.txt");

    oRecord.Run(m_oScanner);

    EXPECT_EQ(2u, oRecord.aFiles.size());
    EXPECT_EQ(tNames({"a.txt", "b.txt"}), Scan());
}

TEST_F(CTOVFileScannerTest, CopiesItsListsAndItsFlag)
{
    MakeFiles({"a.txt", "b.doc"});
    Add("*.txt");
    m_oScanner.SetIncludeSubDirs(false);
    CTOVFileScanner oCopy(m_oScanner);
    CScanRecord oRecord;

    Add("*.doc");
    m_oScanner.SetIncludeSubDirs(true);
    oRecord.Run(oCopy);

    EXPECT_EQ(tNames({"a.txt"}), oRecord.aFiles);
    EXPECT_FALSE(IncludesSubDirs(oCopy));
}

TEST_F(CTOVFileScannerTest, ReplacesItsListsAndItsFlag)
{
    MakeFiles({"a.txt", "b.doc"});
    CTOVFileScanner oOther;
    oOther.AddScanDirectory(m_oFolder.Path().c_str(), "*.doc");
    oOther.SetIncludeSubDirs(false);
    Add("*.txt");
    Add("*.txt");

    EXPECT_EQ(&m_oScanner, &(m_oScanner = oOther));

    EXPECT_EQ(tNames({"b.doc"}), Scan());
    EXPECT_FALSE(IncludesSubDirs(m_oScanner));
}
