// Names, permissions, times and search handles as Posix has them.
#include "TOVPlatform/TOVFileInstruments.h"

#include <algorithm>
#include <iterator>

#include <fcntl.h>
#include <sys/stat.h>

namespace File = TOVPlatform::TOVFile;
namespace Directory = TOVPlatform::TOVDirectory;

namespace
{
class TOVPlatformPosixFileTest : public CFileFixture
{
protected:
    void SetMode(const std::string& sName, int nMode) const
    {
        std::filesystem::permissions(Path(sName), static_cast<std::filesystem::perms>(nMode));
    }

    int ModeOf(const std::string& sName) const
    {
        return static_cast<int>(std::filesystem::status(Path(sName)).permissions());
    }

    unsigned long AttributesOf(const std::string& sName) const { return File::GetAttributes(Path(sName).c_str()); }

    bool SetAttributesOf(const std::string& sName, unsigned long ulAttributes) const
    {
        return File::SetAttributes(Path(sName).c_str(), ulAttributes);
    }
};

struct sPermission
{
    int nBefore;
    int nReadOnly;
    int nAfter;
};

const sPermission PERMISSIONS[] = {
    {0644, 0444, 0644}, {0600, 0400, 0600}, {0755, 0555, 0755}, {0444, 0444, 0644}, {0400, 0400, 0600},
};

long CountDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}
} // namespace

TEST_F(TOVPlatformPosixFileTest, HasThreeAttributes)
{
    WriteWholeFile(Path("plain"), "");
    WriteWholeFile(Path(".hidden"), "");
    WriteWholeFile(Path("guarded"), "");
    std::filesystem::create_directory(Path("folder"));
    std::filesystem::create_directory(Path("guarded folder"));
    SetMode("guarded", 0444);
    SetMode("guarded folder", 0555);

    EXPECT_EQ(File::eFileAttributeNormal, AttributesOf("plain"));
    EXPECT_EQ(File::eFileAttributeNormal, AttributesOf(".hidden"));
    EXPECT_EQ(File::eFileAttributeReadOnly, AttributesOf("guarded"));
    EXPECT_EQ(File::eFileAttributeDirectory, AttributesOf("folder"));
    EXPECT_EQ(0x24u, AttributesOf("guarded folder"));
}

TEST_F(TOVPlatformPosixFileTest, CallsAFileReadOnlyThatNobodyMayWrite)
{
    WriteWholeFile(Path("file"), "");
    for (const int nMode : {0200, 0020, 0002, 0644, 0777})
    {
        SetMode("file", nMode);
        EXPECT_EQ(File::eFileAttributeNormal, AttributesOf("file")) << nMode;
    }
    for (const int nMode : {0000, 0111, 0400, 0555})
    {
        SetMode("file", nMode);
        EXPECT_EQ(File::eFileAttributeReadOnly, AttributesOf("file")) << nMode;
    }
}

TEST_F(TOVPlatformPosixFileTest, TakesThePermissionToWriteAwayAndGivesTheOwnersBack)
{
    WriteWholeFile(Path("file"), "");
    for (const sPermission& oPermission : PERMISSIONS)
    {
        SetMode("file", oPermission.nBefore);
        EXPECT_TRUE(SetAttributesOf("file", File::eFileAttributeReadOnly));
        EXPECT_EQ(oPermission.nReadOnly, ModeOf("file"));

        EXPECT_TRUE(SetAttributesOf("file", File::eFileAttributeNormal));
        EXPECT_EQ(oPermission.nAfter, ModeOf("file"));
    }
}

TEST_F(TOVPlatformPosixFileTest, LeavesAPermissionToWriteAsItIs)
{
    WriteWholeFile(Path("file"), "");
    for (const int nMode : {0644, 0664, 0460, 0777})
    {
        SetMode("file", nMode);
        EXPECT_TRUE(SetAttributesOf("file", File::eFileAttributeArchive | File::eFileAttributeHidden));
        EXPECT_EQ(nMode, ModeOf("file"));
    }
}

TEST_F(TOVPlatformPosixFileTest, OpensNoReadOnlyFileToWriteItWhoeverTheUserIs)
{
    WriteWholeFile(Path("file"), "text");
    SetMode("file", 0444);

    for (const char* szMode : {"w", "a", "r+", "a+", "wb", "r+b"})
        EXPECT_EQ(FILE_INVALID_HANDLE, Open("file", szMode)) << szMode;

    EXPECT_NE(FILE_INVALID_HANDLE, Open("file", "rb"));
    EXPECT_EQ("text", ReadWholeFile(Path("file")));
}

TEST_F(TOVPlatformPosixFileTest, UsesANameWithABackslashAsItStandsIfItExists)
{
    std::filesystem::create_directory(Path("folder"));
    WriteWholeFile(Path("folder/name"), "below");
    WriteWholeFile(Path("folder\\name"), "beside");
    char szBuffer[8] = "";
    File::sTOVFindData oRecord;

    File::Gets(Open("folder\\name", "rb"), szBuffer, 8);
    EXPECT_STREQ("beside", szBuffer);
    File::FindClose(File::FindFirst(Path("folder\\name").c_str(), &oRecord));
    EXPECT_STREQ("folder\\name", oRecord.szName);
    EXPECT_TRUE(SetAttributesOf("folder\\name", File::eFileAttributeReadOnly));
    EXPECT_EQ(File::eFileAttributeReadOnly, AttributesOf("folder\\name"));
    EXPECT_EQ(File::eFileAttributeNormal, AttributesOf("folder/name"));
}

TEST_F(TOVPlatformPosixFileTest, DeletesTheNameWithABackslashFirst)
{
    std::filesystem::create_directory(Path("folder"));
    WriteWholeFile(Path("folder/name"), "below");
    WriteWholeFile(Path("folder\\name"), "beside");

    EXPECT_EQ(File::eFileSuccess, File::Delete(Path("folder\\name").c_str()));
    EXPECT_FALSE(std::filesystem::exists(Path("folder\\name")));
    EXPECT_TRUE(File::DoesExist(Path("folder\\name").c_str()));

    EXPECT_EQ(File::eFileSuccess, File::Delete(Path("folder\\name").c_str()));
    EXPECT_FALSE(std::filesystem::exists(Path("folder/name")));
    EXPECT_FALSE(File::DoesExist(Path("folder\\name").c_str()));
}

TEST_F(TOVPlatformPosixFileTest, ReadsTheBackslashesOfANewNameAsSlashes)
{
    EXPECT_EQ(FILE_INVALID_HANDLE, Open("folder\\name", "w"));
    EXPECT_FALSE(std::filesystem::exists(Path("folder\\name")));

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Create(Path("folder").c_str()));
    EXPECT_NE(FILE_INVALID_HANDLE, Open("folder\\name", "w"));
    EXPECT_TRUE(std::filesystem::exists(Path("folder/name")));
}

TEST_F(TOVPlatformPosixFileTest, UsesADirectoryWithABackslashAsItStandsIfItExists)
{
    std::filesystem::create_directories(Path("one/two"));
    std::filesystem::create_directory(Path("one\\two"));

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Remove(Path("one\\two").c_str()));
    EXPECT_FALSE(std::filesystem::exists(Path("one\\two")));
    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Remove(Path("one\\two").c_str()));
    EXPECT_FALSE(std::filesystem::exists(Path("one/two")));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Remove(Path("one\\two").c_str()));
}

TEST_F(TOVPlatformPosixFileTest, CountsTimesInTicksOf100Nanoseconds)
{
    WriteWholeFile(Path("file"), "");
    const timespec aTimes[] = {{0, 1}, {-1, 123456789}};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, Path("file").c_str(), aTimes, 0));
    File::sTOVFindData oRecord;

    File::FindClose(File::FindFirst(Path("file").c_str(), &oRecord));

    EXPECT_EQ(116444736000000000u, oRecord.ullLastAccessTime);
    EXPECT_EQ(116444735990000000u + 1234567, oRecord.ullLastWriteTime);
}

TEST_F(TOVPlatformPosixFileTest, FindsNamesThatDifferInCaseAlone)
{
    for (const char* szName : {"name", "NAME", "Name"})
        WriteWholeFile(Path(szName), "");
    File::sTOVFindData oRecord;
    std::vector<std::string> aNames;

    const unsigned long long hFind = File::FindFirst(Path("nAME*").c_str(), &oRecord);
    do
        aNames.push_back(oRecord.szName);
    while (File::FindNext(hFind, &oRecord));
    File::FindClose(hFind);

    std::sort(aNames.begin(), aNames.end());
    EXPECT_EQ(std::vector<std::string>({"NAME", "Name", "name"}), aNames);
    File::FindClose(File::FindFirst(Path("Name").c_str(), &oRecord));
    EXPECT_STREQ("Name", oRecord.szName);
}

TEST_F(TOVPlatformPosixFileTest, RefusesAWildcardBeforeTheLastComponentThoughADirectoryHasThatName)
{
    std::filesystem::create_directory(Path("*.*"));
    WriteWholeFile(Path("*.*/name"), "");
    File::sTOVFindData oRecord;

    EXPECT_EQ(FILE_INVALID_HANDLE, File::FindFirst(Path("*.*/name").c_str(), &oRecord));
    EXPECT_EQ(FILE_INVALID_HANDLE, File::FindFirst(Path("*.*\\*").c_str(), &oRecord));
}

TEST_F(TOVPlatformPosixFileTest, RecognisesHandlesThatAreNoSearch)
{
    File::sTOVFindData oRecord;
    const unsigned long long hStale = File::FindFirst(Path("*").c_str(), &oRecord);
    File::FindClose(hStale);

    for (const unsigned long long hFind : {hStale, 0ull, 1ull, 12345ull, 0x123456789ABCDEFull})
    {
        EXPECT_FALSE(File::FindNext(hFind, &oRecord)) << hFind;
        EXPECT_NO_CHECK(File::FindClose(hFind));
    }
}

TEST_F(TOVPlatformPosixFileTest, GivesBackWhatASearchHeldOpen)
{
    WriteWholeFile(Path("file"), "");
    File::sTOVFindData oRecord;
    const long lBefore = CountDescriptors();

    for (const char* szPattern : {"*", "file", "missing*", "*/name"})
        File::FindClose(File::FindFirst(Path(szPattern).c_str(), &oRecord));

    EXPECT_EQ(lBefore, CountDescriptors());
}
