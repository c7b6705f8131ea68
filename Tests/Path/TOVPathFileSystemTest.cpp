// What a path asks the file system.
#include "Path/TOVPathInstruments.h"

#include <TOVPlatform/TOVFile.h>

#include <filesystem>
#include <stdexcept>

namespace
{
// The longest working directory that is tried: Windows itself has none of more characters than the first.
constexpr std::size_t LONGEST = std::filesystem::path::preferred_separator == '\\' ? 258 : 300;

// Brings the process back to where it was.
class CWorkingDirectoryGuard
{
public:
    CWorkingDirectoryGuard() : m_oBefore(std::filesystem::current_path()) {}

    ~CWorkingDirectoryGuard() { std::filesystem::current_path(m_oBefore); }

private:
    const std::filesystem::path m_oBefore;
};

bool ChangeInto(const std::string& sFolder)
{
    return TOVPlatform::TOVDirectory::Change(sFolder.c_str()) == TOVPlatform::TOVDirectory::eDirectorySuccess;
}

std::string WorkingDirectory()
{
    return std::filesystem::current_path().string();
}

// A way down through new folders, which it leaves and removes step by step at its end: whole names get too long for
// that.
class CDescent
{
public:
    ~CDescent()
    {
        while (!m_aNames.empty())
            GoUp();
    }

    // Goes on until the working directory has this many characters.
    void GoDownTo(std::size_t nLength)
    {
        while (WorkingDirectory().size() < nLength)
        {
            // A step is a separator and at least one character: never leave a single one to go.
            const std::size_t nMissing = nLength - WorkingDirectory().size();
            const std::string sName((nMissing <= 41 ? nMissing : 40) - 1, 'x');
            if (TOVPlatform::TOVDirectory::Create(sName.c_str()) != TOVPlatform::TOVDirectory::eDirectorySuccess)
                throw std::runtime_error("cannot create " + sName);
            m_aNames.push_back(sName);
            if (!ChangeInto(sName))
                throw std::runtime_error("cannot change into " + sName);
        }
    }

    void GoUp()
    {
        ChangeInto("..");
        TOVPlatform::TOVDirectory::Remove(m_aNames.back().c_str());
        m_aNames.pop_back();
    }

private:
    std::vector<std::string> m_aNames;
};
} // namespace

TEST(CTOVPathFileSystemTest, KnowsAFile)
{
    CTempFolder oFolder;
    WriteWholeFile(oFolder.File("file.txt"), "text");
    const CTOVPath oPath(oFolder.File("file.txt").c_str());

    EXPECT_TRUE(oPath.DoesExist());
    EXPECT_TRUE(oPath.IsFile());
    EXPECT_FALSE(oPath.IsDirectory());
}

TEST(CTOVPathFileSystemTest, KnowsADirectory)
{
    CTempFolder oFolder;
    const CTOVPath oPath(oFolder.Path().c_str());

    EXPECT_TRUE(oPath.DoesExist());
    EXPECT_FALSE(oPath.IsFile());
    EXPECT_TRUE(oPath.IsDirectory());
}

TEST(CTOVPathFileSystemTest, TakesAMissingFileForADirectory)
{
    CTempFolder oFolder;
    const CTOVPath oPath(oFolder.File("missing").c_str());

    EXPECT_FALSE(oPath.DoesExist());
    EXPECT_TRUE(oPath.IsDirectory());
    EXPECT_FALSE(oPath.IsFile());
}

TEST(CTOVPathFileSystemTest, TakesAnEmptyPathForAMissingFile)
{
    EXPECT_FALSE(CTOVPath().DoesExist());
    EXPECT_TRUE(CTOVPath().IsDirectory());
    EXPECT_FALSE(CTOVPath().IsFile());
}

TEST(CTOVPathFileSystemTest, FindsAFileByAJoinedPath)
{
    CTempFolder oFolder;
    WriteWholeFile(oFolder.File("file.txt"), "text");

    const CTOVPath oPath = CTOVPath(oFolder.Path().c_str()).Concat("file.txt");

    EXPECT_EQ(oFolder.Path() + "\\file.txt", TextOf(oPath));
    EXPECT_TRUE(oPath.DoesExist());
    EXPECT_TRUE(oPath.IsFile());
}

TEST(CTOVPathFileSystemTest, AsksAgainEachTime)
{
    CTempFolder oFolder;
    const CTOVPath oPath(oFolder.File("file.txt").c_str());
    const bool bBefore = oPath.DoesExist();
    WriteWholeFile(oFolder.File("file.txt"), "text");

    EXPECT_FALSE(bBefore);
    EXPECT_TRUE(oPath.DoesExist());
}

TEST(CTOVPathFileSystemTest, GivesTheWorkingDirectory)
{
    CTempFolder oFolder;
    CWorkingDirectoryGuard oGuard;
    EXPECT_EQ(WorkingDirectory(), TextOf(CTOVPath::GetWorkingDirectory()));

    ASSERT_TRUE(ChangeInto(oFolder.Path()));

    EXPECT_EQ(WorkingDirectory(), TextOf(CTOVPath::GetWorkingDirectory()));
    EXPECT_TRUE(CTOVPath::GetWorkingDirectory().IsDirectory());
}

TEST(CTOVPathFileSystemTest, GivesAWorkingDirectoryThatStaysWhenTheProcessMovesOn)
{
    CTempFolder oFolder;
    CWorkingDirectoryGuard oGuard;
    const std::string sBefore = WorkingDirectory();
    const CTOVPath oBefore = CTOVPath::GetWorkingDirectory();

    ASSERT_TRUE(ChangeInto(oFolder.Path()));
    const CTOVPath oAfter = CTOVPath::GetWorkingDirectory();

    EXPECT_EQ(sBefore, TextOf(oBefore));
    EXPECT_NE(sBefore, TextOf(oAfter));
}

TEST(CTOVPathFileSystemTest, GivesAWorkingDirectoryOf259CharactersAtMost)
{
    CTempFolder oFolder;
    CWorkingDirectoryGuard oGuard;
    ASSERT_TRUE(ChangeInto(oFolder.Path()));
    CDescent oDescent;

    for (const std::size_t nLength : {200u, 257u, 258u, 259u, 260u, 261u, 300u})
    {
        if (nLength > LONGEST)
            break;
        oDescent.GoDownTo(nLength);
        EXPECT_EQ(nLength < 260 ? WorkingDirectory() : "", TextOf(CTOVPath::GetWorkingDirectory())) << nLength;
        oDescent.GoUp();
    }
}

TEST(CTOVPathFileSystemTest, GivesACopyOfTheSharedEmptyPathForAWorkingDirectoryTooLong)
{
    CTempFolder oFolder;
    CWorkingDirectoryGuard oGuard;
    ASSERT_TRUE(ChangeInto(oFolder.Path()));
    CDescent oDescent;
    oDescent.GoDownTo(LONGEST);
    const std::string sExpected = LONGEST < 260 ? WorkingDirectory() : "changed";

    CTOVPath::Null() = "changed";
    const std::string sResult = TextOf(CTOVPath::GetWorkingDirectory());
    CTOVPath::Null() = CTOVPath();

    EXPECT_EQ(sExpected, sResult);
}
