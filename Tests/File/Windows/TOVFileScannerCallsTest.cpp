// The searches that the scanner makes, in a file system of the test's own: also those whose results no real one has.
#include "File/TOVScanInstruments.h"
#include "Support/Windows/TOVImportHook.h"

#include <cstring>
#include <map>
#include <stdexcept>
#include <windows.h>

namespace
{
// What a search finds. A directory's name ends in a slash.
std::map<std::string, tNames> s_aSearches;

// The calls, and the files reported.
tNames s_aCalls;

struct sSearch
{
    tNames aNames;
    std::size_t nNext;
};

std::vector<sSearch> s_aOpen;

void FillEntry(WIN32_FIND_DATAA* pEntry, sSearch& oSearch)
{
    std::string sName = oSearch.aNames[oSearch.nNext++];
    *pEntry = WIN32_FIND_DATAA();
    pEntry->dwFileAttributes = sName.back() == '/' ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    sName.resize(sName.find('/') == std::string::npos ? sName.size() : sName.size() - 1);
    std::strcpy(pEntry->cFileName, sName.c_str());
}

HANDLE WINAPI First(LPCSTR szPattern, LPWIN32_FIND_DATAA pEntry)
{
    s_aCalls.push_back(std::string("search ") + szPattern);
    const auto pFound = s_aSearches.find(szPattern);
    if (pFound == s_aSearches.end())
        return INVALID_HANDLE_VALUE;
    s_aOpen.push_back({pFound->second, 0});
    FillEntry(pEntry, s_aOpen.back());
    return reinterpret_cast<HANDLE>(s_aOpen.size());
}

BOOL WINAPI Next(HANDLE hFind, LPWIN32_FIND_DATAA pEntry)
{
    if (hFind == INVALID_HANDLE_VALUE)
        return FALSE;
    sSearch& oSearch = s_aOpen[reinterpret_cast<std::size_t>(hFind) - 1];
    if (oSearch.nNext == oSearch.aNames.size())
        return FALSE;
    FillEntry(pEntry, oSearch);
    return TRUE;
}

BOOL WINAPI Close(HANDLE hFind)
{
    if (hFind != INVALID_HANDLE_VALUE)
        s_aCalls.push_back("close " + std::to_string(reinterpret_cast<std::size_t>(hFind)));
    return TRUE;
}

class CTOVFileScannerCallsTest : public testing::Test
{
protected:
    CTOVFileScannerCallsTest()
        : m_oFirst("FindFirstFileA", &First), m_oNext("FindNextFileA", &Next), m_oClose("FindClose", &Close)
    {
        s_aSearches.clear();
        s_aCalls.clear();
        s_aOpen.clear();
        m_oRecord.fnOnFile = [this](CTOVFileScanner::sTOVFileDescriptor& oDescriptor) {
            const std::string sFile = TextOf(oDescriptor.oFileName);
            s_aCalls.push_back("file " + sFile);
            if (sFile == m_sThrowAt)
                throw std::runtime_error(sFile);
            return sFile == m_sStopAt ? 1 : 0;
        };
        m_oScanner.AddScanDirectory("D", "*.t");
    }

    // The searches alone.
    tNames Searches() const
    {
        tNames aSearches;
        for (const std::string& sCall : s_aCalls)
        {
            if (sCall.compare(0, 7, "search ") == 0)
                aSearches.push_back(sCall.substr(7));
        }
        return aSearches;
    }

    CImportHook m_oFirst;
    CImportHook m_oNext;
    CImportHook m_oClose;
    CTOVFileScanner m_oScanner;
    CScanRecord m_oRecord;
    std::string m_sStopAt;
    std::string m_sThrowAt;
};
} // namespace

TEST_F(CTOVFileScannerCallsTest, ListsSubDirectoriesFirstThenReportsFilesThenDescends)
{
    s_aSearches["D\\*.*"] = {"./", "../", "one/", "a.t", "two/"};
    s_aSearches["D\\*.t"] = {"a.t", "dir.t/", "b.t"};

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"search D\\*.*", "close 1", "search D\\*.t", "file a.t", "file b.t", "close 2",
                      "search D\\*.*\\one\\*.*", "search D\\*.*\\one\\*.t", "search D\\*.*\\two\\*.*",
                      "search D\\*.*\\two\\*.t"}),
              s_aCalls);
}

TEST_F(CTOVFileScannerCallsTest, ListsSubDirectoriesThoughItDoesNotDescend)
{
    s_aSearches["D\\*.*"] = {"./", "../", "one/"};
    s_aSearches["D\\*.t"] = {"a.t"};
    m_oScanner.SetIncludeSubDirs(false);

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"D\\*.*", "D\\*.t"}), Searches());
}

// Settled: whatever the listing finds first is dropped, and every name with a full stop in front.
TEST_F(CTOVFileScannerCallsTest, LeavesOutTheFirstEntryOfTheListingAndHiddenNames)
{
    s_aSearches["D\\*.*"] = {"first/", ".hidden/", "..also/", "file", "kept/"};

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"D\\*.*", "D\\*.t", "D\\*.*\\kept\\*.*", "D\\*.*\\kept\\*.t"}), Searches());
}

TEST_F(CTOVFileScannerCallsTest, ListsNoSubDirectoryOfAListingOfOneEntry)
{
    s_aSearches["D\\*.*"] = {"only/"};

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"D\\*.*", "D\\*.t"}), Searches());
}

TEST_F(CTOVFileScannerCallsTest, DescribesEachLevelByThePathThatItSearched)
{
    s_aSearches["D\\*.*"] = {"./", "one/"};
    s_aSearches["D\\*.*\\one\\*.*"] = {"./", "two/"};
    s_aSearches["D\\*.*\\one\\*.t"] = {"b.t"};
    s_aSearches["D\\*.*\\one\\*.*\\two\\*.t"] = {"c.t"};
    s_aSearches["D\\*.t"] = {"a.t"};

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"a.t", "b.t", "c.t"}), m_oRecord.aFiles);
    EXPECT_EQ(tNames({"D", "D\\*.*\\one", "D\\*.*\\one\\*.*\\two"}), m_oRecord.aDirectories);
    EXPECT_EQ(tNames({"D\\*.t", "D\\*.*\\one\\*.t", "D\\*.*\\one\\*.*\\two\\*.t"}), m_oRecord.aSearchPaths);
    EXPECT_EQ(std::vector<int>({1, 1, 1}), m_oRecord.aModes);
}

TEST_F(CTOVFileScannerCallsTest, GoesDepthFirstInTheOrderOfTheListing)
{
    s_aSearches["D\\*.*"] = {"./", "z/", "a/"};
    s_aSearches["D\\*.*\\z\\*.*"] = {"./", "in/"};
    s_aSearches["D\\*.*\\z\\*.t"] = {"z.t"};
    s_aSearches["D\\*.*\\z\\*.*\\in\\*.t"] = {"in.t"};
    s_aSearches["D\\*.*\\a\\*.t"] = {"a.t"};

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"z.t", "in.t", "a.t"}), m_oRecord.aFiles);
}

// Settled: a stop reaches the rest of its directory and what lies below, and nothing else.
TEST_F(CTOVFileScannerCallsTest, GoesOnWithTheNextSiblingAfterAStop)
{
    s_aSearches["D\\*.*"] = {"./", "one/", "two/"};
    s_aSearches["D\\*.*\\one\\*.*"] = {"./", "in/"};
    s_aSearches["D\\*.*\\one\\*.t"] = {"stop.t", "rest.t"};
    s_aSearches["D\\*.*\\one\\*.*\\in\\*.t"] = {"in.t"};
    s_aSearches["D\\*.*\\two\\*.t"] = {"two.t"};
    m_sStopAt = "stop.t";

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"stop.t", "two.t"}), m_oRecord.aFiles);
    EXPECT_EQ(
        tNames({"D\\*.*", "D\\*.t", "D\\*.*\\one\\*.*", "D\\*.*\\one\\*.t", "D\\*.*\\two\\*.*", "D\\*.*\\two\\*.t"}),
        Searches());
}

TEST_F(CTOVFileScannerCallsTest, DoesNotDescendWhereItWasStopped)
{
    s_aSearches["D\\*.*"] = {"./", "one/"};
    s_aSearches["D\\*.t"] = {"stop.t", "rest.t"};
    m_sStopAt = "stop.t";
    m_oScanner.AddScanDirectory("E", "*.t");

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"search D\\*.*", "close 1", "search D\\*.t", "file stop.t", "close 2", "search E\\*.*",
                      "search E\\*.t"}),
              s_aCalls);
}

// Settled: the search of the level whose callback throws stays open.
TEST_F(CTOVFileScannerCallsTest, LeavesTheSearchOpenWhenTheCallbackThrows)
{
    s_aSearches["D\\*.*"] = {"./", "one/"};
    s_aSearches["D\\*.t"] = {"throw.t", "rest.t"};
    m_sThrowAt = "throw.t";

    EXPECT_THROW(m_oRecord.Run(m_oScanner), std::runtime_error);

    EXPECT_EQ(tNames({"search D\\*.*", "close 1", "search D\\*.t", "file throw.t"}), s_aCalls);
}

// The flag counts for a directory of the list as it is when the directory's turn comes.
TEST_F(CTOVFileScannerCallsTest, FinishesADirectoryByTheFlagThatItBeganWith)
{
    s_aSearches["D\\*.*"] = {"./", "one/"};
    s_aSearches["D\\*.t"] = {"a.t"};
    s_aSearches["E\\*.*"] = {"./", "two/"};
    m_oScanner.AddScanDirectory("E", "*.t");
    m_oRecord.fnOnFile = [this](CTOVFileScanner::sTOVFileDescriptor&) {
        m_oScanner.SetIncludeSubDirs(false);
        return 0;
    };

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames({"D\\*.*", "D\\*.t", "D\\*.*\\one\\*.*", "D\\*.*\\one\\*.t", "E\\*.*", "E\\*.t"}), Searches());
}

TEST_F(CTOVFileScannerCallsTest, KnowsADirectoryWhateverElseItIs)
{
    s_aSearches["D\\*.t"] = {"a.t/"};
    s_aSearches["D\\*.*"] = {"./", "a.t/"};

    m_oRecord.Run(m_oScanner);

    EXPECT_EQ(tNames(), m_oRecord.aFiles);
    EXPECT_EQ(tNames({"D\\*.*", "D\\*.t", "D\\*.*\\a.t\\*.*", "D\\*.*\\a.t\\*.t"}), Searches());
}
