// How the file of settings is replaced, among links and permissions.
#include "Examples/ExampleProgram.h"

#include <algorithm>

#include <sys/stat.h>

namespace
{
class SettingsReplacementTest : public testing::Test
{
protected:
    sChildResult Run(const std::vector<std::string>& aArguments) const
    {
        std::vector<std::string> aAll = {m_sFile};
        aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
        return RunExample("tovsettings", aAll);
    }

    // Changes a setting, which succeeds.
    void Change() const
    {
        const sChildResult oResult = Run({"width", "800"});
        ASSERT_EQ(0, oResult.nExitCode) << oResult.sErrors;
        EXPECT_EQ(0u, Run({}).sOutput.find("width  800\n"));
    }

    std::vector<std::string> NamesInFolder() const
    {
        std::vector<std::string> aNames;
        for (const auto& oEntry : std::filesystem::directory_iterator(m_oFolder.Path()))
            aNames.push_back(oEntry.path().filename().string());
        std::sort(aNames.begin(), aNames.end());
        return aNames;
    }

    const CTempFolder m_oFolder;
    const std::string m_sFile = m_oFolder.File("settings.dat");
    const std::string m_sNew = m_sFile + ".new";
};

typedef std::vector<std::string> tNames;
} // namespace

TEST_F(SettingsReplacementTest, FollowsNoLinkInTheNewFilesPlace)
{
    WriteWholeFile(m_oFolder.File("other"), "a letter");
    std::filesystem::create_symlink("other", m_sNew);

    Change();

    EXPECT_EQ("a letter", ReadWholeFile(m_oFolder.File("other")));
    EXPECT_TRUE(std::filesystem::is_symlink(m_sNew));
    EXPECT_FALSE(std::filesystem::is_symlink(m_sFile));
}

TEST_F(SettingsReplacementTest, LosesNoFileInTheNewFilesPlace)
{
    WriteWholeFile(m_sNew, "a letter");

    Change();
    Change();

    EXPECT_EQ("a letter", ReadWholeFile(m_sNew));
    EXPECT_EQ((tNames{"settings.dat", "settings.dat.new"}), NamesInFolder());
}

TEST_F(SettingsReplacementTest, EndsWhenAllNamesAreTaken)
{
    WriteWholeFile(m_sNew, "");
    for (int i = 1; i < 100; ++i)
        WriteWholeFile(m_sFile + "." + std::to_string(i) + ".new", "");

    ExpectComplaint("tovsettings: " + m_sFile + ": no new file can be made beside it", 1, Run({"width", "800"}));
    EXPECT_EQ(100u, NamesInFolder().size());
}

TEST_F(SettingsReplacementTest, KeepsThePermissions)
{
    Change();
    for (const mode_t ulMode : {0600u, 0666u})
    {
        ASSERT_EQ(0, ::chmod(m_sFile.c_str(), ulMode));

        Change();

        struct stat oStatus = {};
        ASSERT_EQ(0, ::stat(m_sFile.c_str(), &oStatus));
        EXPECT_EQ(ulMode, oStatus.st_mode & 0777u);
    }
}

TEST_F(SettingsReplacementTest, KeepsALinkToTheFile)
{
    std::filesystem::create_directory(m_oFolder.File("folder"));
    ASSERT_EQ(0, RunExample("tovsettings", {m_oFolder.File("folder/new.dat"), "height", "600"}).nExitCode);
    std::filesystem::create_symlink("folder/new.dat", m_sFile);

    Change();

    EXPECT_TRUE(std::filesystem::is_symlink(m_sFile));
    EXPECT_EQ("width  800\nheight 600\ntabs   4\nfont   Mono\n",
              RunExample("tovsettings", {m_oFolder.File("folder/new.dat")}).sOutput);
}

TEST_F(SettingsReplacementTest, LeavesNothingBehindOnAFullDisk)
{
    Change();
    const std::string sBefore = ReadWholeFile(m_sFile);
    sProgram oProgram = ExampleProgram("tovsettings", {m_sFile, "height", "600"});
    oProgram.aCommand.insert(oProgram.aCommand.begin(),
                             {"/bin/sh", "-c", "trap '' XFSZ; ulimit -f 0; exec \"$0\" \"$@\""});

    ExpectComplaint("tovsettings: " + m_sFile + ": the new file cannot be written", 1,
                    RunProgram(oProgram, eErrorsApart));
    EXPECT_EQ(sBefore, ReadWholeFile(m_sFile));
    EXPECT_EQ((tNames{"settings.dat"}), NamesInFolder());
}

TEST_F(SettingsReplacementTest, FindsSettingsBelowABackslash)
{
    std::filesystem::create_directory(m_oFolder.File("folder"));

    EXPECT_EQ(0, RunExample("tovsettings", {"folder\\new.dat", "width", "800"}, m_oFolder.Path()).nExitCode);

    EXPECT_TRUE(std::filesystem::exists(m_oFolder.File("folder/new.dat")));
}

// Its status cannot be read; a file in a folder that this user may not search is the same.
TEST_F(SettingsReplacementTest, TakesNoFileForAbsentOfWhichTheSystemTellsNothing)
{
    std::filesystem::create_symlink("settings.dat", m_sFile);

    ExpectComplaint("tovsettings: " + m_sFile + " cannot be opened", 1, Run({}));
    ExpectComplaint("tovsettings: " + m_sFile + " cannot be opened", 1, Run({"width", "800"}));
    EXPECT_TRUE(std::filesystem::is_symlink(m_sFile));
}
