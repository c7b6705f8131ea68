// Opening and closing by mode, and what is done to files by their names.
#include "Support/TOVNativeFile.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <cstring>
#include <memory>

namespace File = TOVPlatform::TOVFile;

namespace
{
class TOVPlatformFileTest : public CFileFixture
{
};

// What each way of access does to a file. The letters behind it may be any of the suffixes.
struct sAccess
{
    const char* szAccess;
    bool bNeedsAFile;
    const char* szReads;  // of "12345", from its start on
    const char* szLeaves; // of "12345", when nothing is written
    const char* szWrites; // of "12345", when "xy" is written at its start
};

const sAccess ACCESSES[] = {
    {"r", true, "12345", "12345", "12345"},     {"w", false, "", "", "xy"},
    {"a", false, "", "12345", "12345xy"},       {"r+", true, "12345", "12345", "xy345"},
    {"a+", false, "12345", "12345", "12345xy"},
};

const char* const SUFFIXES[] = {"", "t", "b", "c", "n", "tc", "tn", "bc", "bn"};

class TOVPlatformFileAccessTest : public CFileFixture, public testing::WithParamInterface<sAccess>
{
protected:
    // Opens by the access and each suffix in turn a file that holds "12345".
    template<class TUse> void ForEachMode(TUse fnUse)
    {
        for (const char* szSuffix : SUFFIXES)
        {
            const std::string sMode = std::string(GetParam().szAccess) + szSuffix;
            SCOPED_TRACE(sMode);
            fnUse(OpenWith("12345", sMode.c_str()));
        }
    }
};

std::string AccessName(const testing::TestParamInfo<sAccess>& oInfo)
{
    std::string sName = oInfo.param.szAccess;
    if (sName.back() == '+')
        sName.back() = 'u';
    return sName;
}

struct sSplit
{
    const char* szPath;
    const char* szDrive;
    const char* szDirectory;
    const char* szFileName;
    const char* szExtension;
};

const sSplit SPLITS[] = {
    {"C:\\dir\\sub\\name.ext", "C:", "\\dir\\sub\\", "name", ".ext"},
    {"c:/dir/sub/name.ext", "c:", "/dir/sub/", "name", ".ext"},
    {"C:name.ext", "C:", "", "name", ".ext"},
    {"C:\\", "C:", "\\", "", ""},
    {"C:", "C:", "", "", ""},
    {"\\\\server\\share\\name", "", "\\\\server\\share\\", "name", ""},
    {"dir\\sub/name.ext", "", "dir\\sub/", "name", ".ext"},
    {"dir\\", "", "dir\\", "", ""},
    {"dir.d\\name", "", "dir.d\\", "name", ""},
    {"name", "", "", "name", ""},
    {"name.", "", "", "name", "."},
    {".ext", "", "", "", ".ext"},
    {"name.tar.gz", "", "", "name.tar", ".gz"},
    {"", "", "", "", ""},
};

struct sSplitBuffers
{
    sSplitBuffers() { std::memset(this, '?', sizeof(*this)); }

    char szDrive[3];
    char szDirectory[256];
    char szFileName[256];
    char szExtension[256];
};
} // namespace

TEST(TOVPlatformFileValuesTest, HasNoZeroAmongItsResults)
{
    EXPECT_EQ(1, File::eFileSuccess);
    EXPECT_EQ(-1, File::eFileFailure);
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFull, FILE_INVALID_HANDLE);
}

TEST_P(TOVPlatformFileAccessTest, MakesAMissingFileUnlessItNeedsOne)
{
    for (const char* szSuffix : SUFFIXES)
    {
        const std::string sName = std::string("new") + szSuffix;
        const unsigned long long hFile = Open(sName, (std::string(GetParam().szAccess) + szSuffix).c_str());

        EXPECT_EQ(GetParam().bNeedsAFile, hFile == FILE_INVALID_HANDLE) << szSuffix;
        EXPECT_EQ(!GetParam().bNeedsAFile, std::filesystem::exists(Path(sName))) << szSuffix;
    }
}

TEST_P(TOVPlatformFileAccessTest, KeepsOrCutsWhatAFileHolds)
{
    ForEachMode([this](unsigned long long hFile) { EXPECT_EQ(GetParam().szLeaves, CloseAndRead(hFile)); });
}

TEST_P(TOVPlatformFileAccessTest, ReadsIfItMay)
{
    ForEachMode([](unsigned long long hFile) {
        char szBuffer[8] = "";
        File::Seek(hFile, 0, File::eSeekOriginStart);

        EXPECT_EQ(std::strlen(GetParam().szReads), File::Read(hFile, szBuffer, 1, 7));
        EXPECT_STREQ(GetParam().szReads, szBuffer);

        File::Close(hFile);
    });
}

TEST_P(TOVPlatformFileAccessTest, WritesIfItMay)
{
    ForEachMode([this](unsigned long long hFile) {
        File::Seek(hFile, 0, File::eSeekOriginStart);

        EXPECT_EQ(std::string("r") == GetParam().szAccess ? 0u : 2u, File::Write(hFile, "xy", 1, 2));
        EXPECT_EQ(GetParam().szWrites, CloseAndRead(hFile));
    });
}

INSTANTIATE_TEST_SUITE_P(Modes, TOVPlatformFileAccessTest, testing::ValuesIn(ACCESSES), AccessName);

TEST_F(TOVPlatformFileTest, TranslatesLineEndsInTextAlone)
{
    for (const char* szMode : {"wt", "wb", "wtc", "wbn"})
    {
        const unsigned long long hFile = OpenWith("", szMode);
        EXPECT_EQ(4u, File::Write(hFile, "a\nb\n", 1, 4));

        const std::string sEnd = szMode[1] == 't' ? LINE_END : "\n";
        EXPECT_EQ("a" + sEnd + "b" + sEnd, CloseAndRead(hFile)) << szMode;
    }
}

TEST_F(TOVPlatformFileTest, WritesAndReadsBackWhereAModeSaysBoth)
{
    for (const char* szMode : {"w+", "w+b", "wb+", "wt+c", "r+b", "rb+", "rt+", "a+b", "ab+"})
    {
        const unsigned long long hFile = OpenWith("12", szMode);
        char szBuffer[8] = "";
        File::Seek(hFile, 0, File::eSeekOriginEnd);
        EXPECT_EQ(2u, File::Write(hFile, "xy", 1, 2)) << szMode;
        File::Seek(hFile, 0, File::eSeekOriginStart);
        File::Read(hFile, szBuffer, 1, 7);

        EXPECT_STREQ(*szMode == 'w' ? "xy" : "12xy", szBuffer) << szMode;
        File::Close(hFile);
    }
}

TEST_F(TOVPlatformFileTest, RefusesWhatIsNoMode)
{
    for (const char* szMode : {"", "q", "t", "b", "+", "+r"})
    {
        EXPECT_EQ(FILE_INVALID_HANDLE, Open("new", szMode)) << szMode;
        EXPECT_FALSE(std::filesystem::exists(Path("new"))) << szMode;
    }
}

TEST_F(TOVPlatformFileTest, LeavesNoSlotInUseWhenAFileIsMissing)
{
    const unsigned long long hNext = NextHandle();
    const int nOpen = CountOpenFiles();

    EXPECT_EQ(FILE_INVALID_HANDLE, Open("missing", "rb"));

    EXPECT_EQ(hNext, NextHandle());
    EXPECT_EQ(nOpen, CountOpenFiles());
    EXPECT_FALSE(std::filesystem::exists(Path("missing")));
}

TEST_F(TOVPlatformFileTest, OpensNoDirectory)
{
    std::filesystem::create_directory(Path("folder"));

    for (const char* szMode : {"r", "w", "a", "r+", "a+"})
        EXPECT_EQ(FILE_INVALID_HANDLE, Open("folder", szMode)) << szMode;
}

TEST_F(TOVPlatformFileTest, OpensNothingBelowAMissingDirectory)
{
    EXPECT_EQ(FILE_INVALID_HANDLE, Open("missing/new", "w"));
    EXPECT_FALSE(std::filesystem::exists(Path("missing")));
}

TEST_F(TOVPlatformFileTest, OpensNoNullAndNoEmptyName)
{
    EXPECT_EQ(FILE_INVALID_HANDLE, File::Open(nullptr, "rb"));
    EXPECT_EQ(FILE_INVALID_HANDLE, File::Open("", "rb"));
    EXPECT_EQ(FILE_INVALID_HANDLE, File::Open("", "wb"));
}

TEST_F(TOVPlatformFileTest, OpensAFileTwice)
{
    const unsigned long long hFirst = OpenWith("ab", "rb");
    const unsigned long long hSecond = Open("contents", "rb");
    char cRead = '?';

    EXPECT_NE(hFirst, hSecond);
    File::Seek(hFirst, 1, File::eSeekOriginStart);
    EXPECT_EQ(1u, File::Read(hSecond, &cRead, 1, 1));
    EXPECT_EQ('a', cRead);
}

TEST_F(TOVPlatformFileTest, TakesBackslashesAndSlashes)
{
    std::filesystem::create_directory(Path("folder"));

    EXPECT_NE(FILE_INVALID_HANDLE, Open("folder\\one", "w"));
    EXPECT_NE(FILE_INVALID_HANDLE, Open("folder/two", "w"));

    EXPECT_TRUE(std::filesystem::exists(Path("folder/one")));
    EXPECT_TRUE(std::filesystem::exists(Path("folder/two")));
    EXPECT_NE(FILE_INVALID_HANDLE, Open("folder\\two", "r"));
}

TEST_F(TOVPlatformFileTest, WritesOutWhatItClosesAndFreesTheSlot)
{
    const unsigned long long hFile = OpenWith("", "wb");
    File::Write(hFile, "text", 1, 4);

    EXPECT_EQ(File::eFileSuccess, File::Close(hFile));

    EXPECT_EQ("text", ReadWholeFile(Path("contents")));
    EXPECT_EQ(hFile, NextHandle());
}

TEST_F(TOVPlatformFileTest, FailsToCloseAnEmptySlot)
{
    const unsigned long long hFile = OpenWith("", "rb");
    EXPECT_EQ(File::eFileSuccess, File::Close(hFile));

    EXPECT_EQ(File::eFileFailure, File::Close(hFile));
    EXPECT_EQ(File::eFileFailure, File::Close(FILE_SLOTS - 1));
}

// Settled: a failed close keeps the file and its handle.
TEST_F(TOVPlatformFileTest, KeepsAFileThatItFailsToClose)
{
    const unsigned long long hFile = OpenWith("", "wb");
    FILE* const pFile = File::CTOVHandleManager::Instance().GetFile(hFile);
    File::Write(hFile, "text", 1, 4);
    {
        CUnusableStream oUnusable(pFile);
        EXPECT_EQ(File::eFileFailure, File::Close(hFile));
    }

    EXPECT_EQ(pFile, File::CTOVHandleManager::Instance().GetFile(hFile));
    EXPECT_NE(hFile, NextHandle());
    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, 0, File::eSeekOriginStart));
    EXPECT_EQ(2u, File::Write(hFile, "ok", 1, 2));
    EXPECT_EQ("ok", CloseAndRead(hFile).substr(0, 2));
}

TEST_F(TOVPlatformFileTest, LosesNothingWhenItFailsToClose)
{
    for (const char* szMode : {"wb", "ab", "w+b", "r+b", "wt"})
    {
        const unsigned long long hFile = OpenWith("", szMode);
        FILE* const pFile = File::CTOVHandleManager::Instance().GetFile(hFile);
        File::Write(hFile, "text", 1, 4);
        {
            CUnusableStream oUnusable(pFile);
            EXPECT_EQ(File::eFileFailure, File::Close(hFile)) << szMode;
            EXPECT_EQ(File::eFileFailure, File::Flush(hFile)) << szMode;
            EXPECT_EQ(File::eFileFailure, File::Close(hFile)) << szMode;
        }

        EXPECT_EQ("text", CloseAndRead(hFile)) << szMode;
    }
}

TEST_F(TOVPlatformFileTest, LosesNothingWhenItFailsToFlush)
{
    const unsigned long long hFile = OpenWith("", "w+b");
    FILE* const pFile = File::CTOVHandleManager::Instance().GetFile(hFile);
    File::Write(hFile, "one", 1, 3);
    {
        CUnusableStream oUnusable(pFile);
        EXPECT_EQ(File::eFileFailure, File::Flush(hFile));
        EXPECT_EQ(5u, File::Write(hFile, " more", 1, 5));
    }

    EXPECT_EQ(File::eFileSuccess, File::Flush(hFile));
    EXPECT_EQ("one more", ReadWholeFile(Path("contents")));
    EXPECT_EQ(8, File::Tell(hFile));
    EXPECT_EQ(File::eFileSuccess, File::Seek(hFile, 4, File::eSeekOriginStart));
    char szRead[8] = {};
    EXPECT_EQ(4u, File::Read(hFile, szRead, 1, 8));
    EXPECT_STREQ("more", szRead);
}

TEST_F(TOVPlatformFileTest, DeletesAFile)
{
    WriteWholeFile(Path("old"), "text");

    EXPECT_EQ(File::eFileSuccess, File::Delete(Path("old").c_str()));

    EXPECT_FALSE(std::filesystem::exists(Path("old")));
    EXPECT_EQ(File::eFileFailure, File::Delete(Path("old").c_str()));
}

TEST_F(TOVPlatformFileTest, DeletesNoDirectory)
{
    std::filesystem::create_directory(Path("folder"));

    EXPECT_EQ(File::eFileFailure, File::Delete(Path("folder").c_str()));

    EXPECT_TRUE(std::filesystem::exists(Path("folder")));
}

TEST_F(TOVPlatformFileTest, DeletesNoReadOnlyFile)
{
    WriteWholeFile(Path("kept"), "text");
    ASSERT_TRUE(File::SetAttributes(Path("kept").c_str(), File::eFileAttributeReadOnly));

    EXPECT_EQ(File::eFileFailure, File::Delete(Path("kept").c_str()));

    EXPECT_TRUE(std::filesystem::exists(Path("kept")));
}

TEST_F(TOVPlatformFileTest, DeletesNoNullAndNoEmptyName)
{
    EXPECT_EQ(File::eFileFailure, File::Delete(nullptr));
    EXPECT_EQ(File::eFileFailure, File::Delete(""));
}

TEST_F(TOVPlatformFileTest, KnowsWhetherAFileOrADirectoryExists)
{
    WriteWholeFile(Path("file"), "");
    std::filesystem::create_directory(Path("folder"));
    std::filesystem::create_directory(Path("folder/inner"));

    EXPECT_TRUE(File::DoesExist(Path("file").c_str()));
    EXPECT_TRUE(File::DoesExist(Path("folder").c_str()));
    EXPECT_TRUE(File::DoesExist(Path("folder\\inner").c_str()));
    EXPECT_FALSE(File::DoesExist(Path("missing").c_str()));
    EXPECT_FALSE(File::DoesExist(Path("file/below").c_str()));
    EXPECT_FALSE(File::DoesExist(""));
    EXPECT_FALSE(File::DoesExist(nullptr));
}

TEST(TOVPlatformFileSplitPathTest, TakesPathsApart)
{
    for (const sSplit& oSplit : SPLITS)
    {
        SCOPED_TRACE(oSplit.szPath);
        sSplitBuffers oParts;

        File::SplitPath(oSplit.szPath, oParts.szDrive, oParts.szDirectory, oParts.szFileName, oParts.szExtension);

        EXPECT_STREQ(oSplit.szDrive, oParts.szDrive);
        EXPECT_STREQ(oSplit.szDirectory, oParts.szDirectory);
        EXPECT_STREQ(oSplit.szFileName, oParts.szFileName);
        EXPECT_STREQ(oSplit.szExtension, oParts.szExtension);
    }
}

TEST(TOVPlatformFileSplitPathTest, LeavesOutWhatIsNotAskedFor)
{
    const char szPath[] = "C:\\dir\\name.ext";
    sSplitBuffers oParts;

    File::SplitPath(szPath, oParts.szDrive, nullptr, nullptr, nullptr);
    File::SplitPath(szPath, nullptr, oParts.szDirectory, nullptr, nullptr);
    File::SplitPath(szPath, nullptr, nullptr, oParts.szFileName, nullptr);
    File::SplitPath(szPath, nullptr, nullptr, nullptr, oParts.szExtension);
    File::SplitPath(szPath, nullptr, nullptr, nullptr, nullptr);

    EXPECT_STREQ("C:", oParts.szDrive);
    EXPECT_STREQ("\\dir\\", oParts.szDirectory);
    EXPECT_STREQ("name", oParts.szFileName);
    EXPECT_STREQ(".ext", oParts.szExtension);
}

TEST(TOVPlatformFileSplitPathTest, FillsBuffersOfTheRuntimesSizes)
{
    const std::string sDirectory = std::string(254, 'd') + "\\";
    const std::string sName(255, 'n');
    const std::string sExtension = "." + std::string(254, 'e');
    sSplitBuffers oParts;

    File::SplitPath(("C:" + sDirectory + sName + sExtension).c_str(), oParts.szDrive, oParts.szDirectory,
                    oParts.szFileName, oParts.szExtension);

    EXPECT_STREQ("C:", oParts.szDrive);
    EXPECT_EQ(sDirectory, oParts.szDirectory);
    EXPECT_EQ(sName, oParts.szFileName);
    EXPECT_EQ(sExtension, oParts.szExtension);
}

TEST(TOVPlatformFileSplitPathTest, GivesNothingOfWhatDoesNotFit)
{
    sSplitBuffers oParts;

    File::SplitPath(("C:\\dir\\" + std::string(256, 'n') + ".ext").c_str(), oParts.szDrive, oParts.szDirectory,
                    oParts.szFileName, oParts.szExtension);

    EXPECT_STREQ("", oParts.szDrive);
    EXPECT_STREQ("", oParts.szDirectory);
    EXPECT_STREQ("", oParts.szFileName);
    EXPECT_STREQ("", oParts.szExtension);
}

TEST_F(TOVPlatformFileTest, NeitherLogsNorRaisesWhenItFails)
{
    CLogRecorder oLog;
    const std::string sMissing = Path("missing");

    EXPECT_NO_THROW({
        File::Open(sMissing.c_str(), "rb");
        File::Delete(sMissing.c_str());
        File::GetAttributes(sMissing.c_str());
        File::SetAttributes(sMissing.c_str(), File::eFileAttributeNormal);
        File::Close(FILE_SLOTS - 1);
        TOVPlatform::TOVDirectory::Remove(sMissing.c_str());
        TOVPlatform::TOVDirectory::Change(sMissing.c_str());
    });

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

// Two tables share no slots, and a new table finds nothing in those of one that is gone.
TEST_F(TOVPlatformFileTest, EachTableHasSlotsOfItsOwn)
{
    for (int nRound = 0; nRound < 2; ++nRound)
    {
        const std::unique_ptr<File::CTOVHandleManager> pFirst(File::CTOVHandleManager::CreateInstance());
        const std::unique_ptr<File::CTOVHandleManager> pSecond(File::CTOVHandleManager::CreateInstance());
        const tHandle hFree = File::CTOVHandleManager::Instance().FindFreeHandle();

        EXPECT_EQ(0u, pFirst->AddFile(stdout));
        EXPECT_EQ(0u, pSecond->AddFile(stderr));

        EXPECT_EQ(stdout, pFirst->GetFile(0));
        EXPECT_EQ(stderr, pSecond->GetFile(0));
        EXPECT_EQ(hFree, File::CTOVHandleManager::Instance().FindFreeHandle());
    }
}
