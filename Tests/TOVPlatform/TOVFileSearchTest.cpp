// Searches of directories.
#include "Support/TOVNativeFile.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstring>

namespace File = TOVPlatform::TOVFile;

namespace
{
typedef std::vector<std::string> tNames;

// Ticks of 100 nanoseconds between the starts of 1601 and of 1970, and in a second.
constexpr unsigned long long EPOCH = 116444736000000000ull;
constexpr unsigned long long SECOND = 10000000;

File::sTOVFindData UntouchedRecord()
{
    File::sTOVFindData oRecord;
    std::memset(&oRecord, 0x55, sizeof(oRecord));
    return oRecord;
}

class TOVPlatformFileSearchTest : public CFileFixture
{
protected:
    // The names that a search finds, in the order of their bytes.
    tNames Find(const std::string& sPattern) const
    {
        tNames aNames;
        File::sTOVFindData oRecord;
        const unsigned long long hFind = File::FindFirst(Path(sPattern).c_str(), &oRecord);
        if (hFind == FILE_INVALID_HANDLE)
            return aNames;
        do
            aNames.push_back(oRecord.szName);
        while (File::FindNext(hFind, &oRecord));
        File::FindClose(hFind);
        std::sort(aNames.begin(), aNames.end());
        return aNames;
    }

    // The record of the one entry of this name.
    File::sTOVFindData FindOne(const std::string& sName) const
    {
        File::sTOVFindData oRecord = UntouchedRecord();
        const unsigned long long hFind = File::FindFirst(Path(sName).c_str(), &oRecord);
        EXPECT_NE(FILE_INVALID_HANDLE, hFind) << sName;
        File::FindClose(hFind);
        return oRecord;
    }

    // The search fails, and leaves the record alone.
    void ExpectNothing(const char* szPattern) const
    {
        const File::sTOVFindData oBefore = UntouchedRecord();
        File::sTOVFindData oRecord = oBefore;

        EXPECT_EQ(FILE_INVALID_HANDLE, File::FindFirst(szPattern, &oRecord)) << szPattern;
        EXPECT_EQ(0, std::memcmp(&oBefore, &oRecord, sizeof(oRecord))) << szPattern;
    }

    void MakeFiles(const tNames& aNames) const
    {
        for (const std::string& sName : aNames)
            WriteWholeFile(Path(sName), "");
    }
};

struct sPattern
{
    const char* szPattern;
    tNames aFound; // of the files below
};

const tNames FILES = {"Beta.TXT", "alpha.txt", "delta.tar.gz", "gamma", "zeta.t"};

const sPattern PATTERNS[] = {
    {"*.txt", {"Beta.TXT", "alpha.txt"}},
    {"*.TXT", {"Beta.TXT", "alpha.txt"}},
    {"b*", {"Beta.TXT"}},
    {"*eta.t*", {"Beta.TXT", "zeta.t"}},
    {"?eta.txt", {"Beta.TXT"}},
    {"G?MMA", {"gamma"}},
    {"delta.*", {"delta.tar.gz"}},
    {"*.gz", {"delta.tar.gz"}},
    {"*.tar.gz", {"delta.tar.gz"}},
    {"*.*.*", {".", "..", "Beta.TXT", "alpha.txt", "delta.tar.gz", "gamma", "zeta.t"}},
    {"gamma.*", {"gamma"}},
    {"gamma.", {"gamma"}},
    {"gamm*.", {"gamma"}},
    {"z*.*", {"zeta.t"}},
    {"*ta.*", {"Beta.TXT", "delta.tar.gz", "zeta.t"}},
    {"?????", {"gamma"}},
    {"*a", {"gamma"}},
    {"*m*", {"gamma"}},
    {"a*.t?t", {"alpha.txt"}},
    {"alpha.txt", {"alpha.txt"}},
    {"ALPHA.txt", {"alpha.txt"}},
    {"gamma*", {"gamma"}},
    {"gamma?x", {}},
    {"alpha", {}},
    {"*.doc", {}},
    {"*.ma", {}},
    {"*.pha.txt", {}},
    {"x*", {}},
};
} // namespace

TEST_F(TOVPlatformFileSearchTest, FindsEverythingAndTheNavigationEntries)
{
    MakeFiles({"name", "name.ext", ".hidden", "name.tar.gz"});
    std::filesystem::create_directory(Path("folder"));
    const tNames aAll = {".", "..", ".hidden", "folder", "name", "name.ext", "name.tar.gz"};

    EXPECT_EQ(aAll, Find("*"));
    EXPECT_EQ(aAll, Find("*.*"));
}

TEST_F(TOVPlatformFileSearchTest, FindsWhatMatchesWithoutRegardToCase)
{
    MakeFiles(FILES);

    for (const sPattern& oPattern : PATTERNS)
        EXPECT_EQ(oPattern.aFound, Find(oPattern.szPattern)) << oPattern.szPattern;
}

TEST_F(TOVPlatformFileSearchTest, FindsInADirectoryBehindEitherSeparator)
{
    std::filesystem::create_directory(Path("folder"));
    MakeFiles({"folder/inner.txt"});

    EXPECT_EQ(tNames({"inner.txt"}), Find("folder\\*.txt"));
    EXPECT_EQ(tNames({"inner.txt"}), Find("folder/*.txt"));
    EXPECT_EQ(tNames({"inner.txt"}), Find("folder\\inner.txt"));
}

TEST_F(TOVPlatformFileSearchTest, FindsInTheWorkingDirectory)
{
    const std::filesystem::path oBefore = std::filesystem::current_path();
    MakeFiles({"here.txt"});
    std::filesystem::current_path(m_oFolder.Path());
    File::sTOVFindData oRecord;

    const unsigned long long hFind = File::FindFirst("*.txt", &oRecord);
    std::filesystem::current_path(oBefore);

    EXPECT_STREQ("here.txt", oRecord.szName);
    EXPECT_FALSE(File::FindNext(hFind, &oRecord));
    File::FindClose(hFind);
}

TEST_F(TOVPlatformFileSearchTest, FindsADirectoryByItsName)
{
    std::filesystem::create_directory(Path("folder"));

    const File::sTOVFindData oRecord = FindOne("folder");

    EXPECT_STREQ("folder", oRecord.szName);
    EXPECT_TRUE(oRecord.ulAttributes & File::eFileAttributeDirectory);
}

TEST_F(TOVPlatformFileSearchTest, LeavesTheRecordWhenNothingMatches)
{
    MakeFiles({"name"});
    std::filesystem::create_directory(Path("folder"));

    ExpectNothing(Path("missing").c_str());
    ExpectNothing(Path("*.missing").c_str());
    ExpectNothing(Path("missing/*").c_str());
    ExpectNothing(Path("name/*").c_str());
    ExpectNothing(Path("folder/").c_str());
    ExpectNothing(Path("folder\\").c_str());
    ExpectNothing("");
    ExpectNothing(nullptr);
}

TEST_F(TOVPlatformFileSearchTest, RefusesAWildcardBeforeTheLastComponent)
{
    std::filesystem::create_directory(Path("folder"));
    MakeFiles({"folder/name"});

    for (const char* szPattern : {"*/name", "*.*\\name", "f*r/*", "f?lder/name", "*/*", "*.*/folder/name"})
        ExpectNothing(Path(szPattern).c_str());
}

TEST_F(TOVPlatformFileSearchTest, TellsTheSize)
{
    WriteWholeFile(Path("empty"), "");
    WriteWholeFile(Path("small"), "0123456789");
    MakeBigFile(Path("big"), 0x123456789);
    std::filesystem::create_directory(Path("folder"));

    EXPECT_EQ(0u, FindOne("empty").ullSize);
    EXPECT_EQ(10u, FindOne("small").ullSize);
    EXPECT_EQ(0x123456789u, FindOne("big").ullSize);
    EXPECT_EQ(0u, FindOne("folder").ullSize);
}

TEST_F(TOVPlatformFileSearchTest, TellsTheAttributes)
{
    MakeFiles({"plain", "guarded"});
    std::filesystem::create_directory(Path("folder"));
    File::SetAttributes(Path("guarded").c_str(), File::eFileAttributeReadOnly);

    for (const char* szName : {"plain", "guarded", "folder"})
        EXPECT_EQ(File::GetAttributes(Path(szName).c_str()), FindOne(szName).ulAttributes) << szName;
    EXPECT_TRUE(FindOne("guarded").ulAttributes & File::eFileAttributeReadOnly);
}

TEST_F(TOVPlatformFileSearchTest, TellsTheTimes)
{
    WriteWholeFile(Path("old"), "");
    SetFileTimes(Path("old"), 1000000000, 1234567890);

    const File::sTOVFindData oRecord = FindOne("old");

    EXPECT_EQ(EPOCH + 1000000000 * SECOND, oRecord.ullLastAccessTime);
    EXPECT_EQ(EPOCH + 1234567890 * SECOND, oRecord.ullLastWriteTime);
}

TEST_F(TOVPlatformFileSearchTest, TellsWhenAFileWasCreated)
{
    const auto fnNow = [] {
        const auto oSinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return EPOCH + std::chrono::duration_cast<std::chrono::seconds>(oSinceEpoch).count() * SECOND;
    };
    const unsigned long long ullBefore = fnNow() - 2 * SECOND;
    WriteWholeFile(Path("new"), "");

    const unsigned long long ullCreated = FindOne("new").ullCreationTime;

    EXPECT_LE(ullBefore, ullCreated);
    EXPECT_GE(fnNow() + 2 * SECOND, ullCreated);
}

TEST_F(TOVPlatformFileSearchTest, PadsTheNameWithZeros)
{
    MakeFiles({"name"});

    const File::sTOVFindData oRecord = FindOne("name");

    EXPECT_EQ("name" + std::string(256, '\0'), std::string(oRecord.szName, 260));
    EXPECT_EQ(260u, sizeof(oRecord.szName));
}

TEST_F(TOVPlatformFileSearchTest, HasARecordOf304BytesWithTheFieldsInTheirOrder)
{
    EXPECT_EQ(304u, sizeof(File::sTOVFindData));
    EXPECT_EQ(0u, offsetof(File::sTOVFindData, ulAttributes));
    EXPECT_EQ(8u, offsetof(File::sTOVFindData, ullCreationTime));
    EXPECT_EQ(16u, offsetof(File::sTOVFindData, ullLastAccessTime));
    EXPECT_EQ(24u, offsetof(File::sTOVFindData, ullLastWriteTime));
    EXPECT_EQ(32u, offsetof(File::sTOVFindData, ullSize));
    EXPECT_EQ(40u, offsetof(File::sTOVFindData, szName));
}

TEST_F(TOVPlatformFileSearchTest, FillsTheRecordAnewForEachEntry)
{
    WriteWholeFile(Path("f-long-name"), "0123");
    WriteWholeFile(Path("f"), "");
    File::sTOVFindData oRecord = UntouchedRecord();
    const unsigned long long hFind = File::FindFirst(Path("f*").c_str(), &oRecord);
    ASSERT_NE(FILE_INVALID_HANDLE, hFind);

    for (int nEntry = 0; nEntry < 2; ++nEntry)
    {
        const std::string sName = oRecord.szName;
        EXPECT_EQ(sName == "f" ? 0u : 4u, oRecord.ullSize);
        EXPECT_EQ(std::string(260 - sName.size(), '\0'),
                  std::string(oRecord.szName + sName.size(), 260 - sName.size()));
        oRecord = UntouchedRecord();
        EXPECT_EQ(nEntry == 0, File::FindNext(hFind, &oRecord));
    }
    EXPECT_FALSE(File::FindNext(hFind, &oRecord));
    File::FindClose(hFind);
}

TEST_F(TOVPlatformFileSearchTest, FindsLongNames)
{
    // As long as both a name and a path of 259 characters allow.
    const std::string sName(std::min<std::size_t>(255, 259 - m_oFolder.Path().size() - 1), 'n');
    MakeFiles({sName});

    EXPECT_EQ(tNames({sName}), Find("*n"));
    EXPECT_EQ(tNames({sName}), Find(sName));
}

TEST_F(TOVPlatformFileSearchTest, GoesThroughManyEntries)
{
    tNames aNames;
    for (int nFile = 100; nFile < 500; ++nFile)
        aNames.push_back("file" + std::to_string(nFile));
    MakeFiles(aNames);

    EXPECT_EQ(aNames, Find("file*"));
}

TEST_F(TOVPlatformFileSearchTest, KeepsSearchesApart)
{
    MakeFiles({"a1", "a2", "b1"});
    File::sTOVFindData oFirst;
    File::sTOVFindData oSecond;
    const unsigned long long hFirst = File::FindFirst(Path("a*").c_str(), &oFirst);
    const unsigned long long hSecond = File::FindFirst(Path("b*").c_str(), &oSecond);

    EXPECT_NE(hFirst, hSecond);
    EXPECT_FALSE(File::FindNext(hSecond, &oSecond));
    File::FindClose(hSecond);
    EXPECT_TRUE(File::FindNext(hFirst, &oFirst));
    EXPECT_EQ('a', oFirst.szName[0]);
    EXPECT_FALSE(File::FindNext(hFirst, &oFirst));
    File::FindClose(hFirst);
}

TEST_F(TOVPlatformFileSearchTest, GoesNowhereWithTheInvalidHandle)
{
    File::sTOVFindData oRecord = UntouchedRecord();

    EXPECT_NO_CHECK(EXPECT_FALSE(File::FindNext(FILE_INVALID_HANDLE, &oRecord)));
    EXPECT_NO_CHECK(File::FindClose(FILE_INVALID_HANDLE));
}

TEST_F(TOVPlatformFileSearchTest, TakesNoSlotOfTheFiles)
{
    MakeFiles({"name"});
    const int nOpen = CountOpenFiles();
    File::sTOVFindData oRecord;

    const unsigned long long hFind = File::FindFirst(Path("*").c_str(), &oRecord);

    EXPECT_EQ(nOpen, CountOpenFiles());
    File::FindClose(hFind);
}
