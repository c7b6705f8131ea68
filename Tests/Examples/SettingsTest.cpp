#include "Examples/ExampleProgram.h"

namespace
{
// A number as a stream writes it.
std::string Number(unsigned int nValue)
{
    std::string sBytes;
    for (int nShift = 0; nShift < 32; nShift += 8)
        sBytes += static_cast<char>(nValue >> nShift & 0xFF);
    return sBytes;
}

// A file of the newest release: 800 by 600 pixels, 2 columns a tab, and the font "Serif".
std::string NewestFile()
{
    return "SET1" + Number(2) + Number(800) + Number(600) + Number(2) + Number(2) + Number(5) + "SerifEND!";
}

const char* const NEWEST_SHOWN = "width  800\nheight 600\ntabs   2\nfont   Serif\n";

class SettingsTest : public testing::Test
{
protected:
    sChildResult Run(const std::vector<std::string>& aArguments = {})
    {
        std::vector<std::string> aAll = {m_sFile};
        aAll.insert(aAll.end(), aArguments.begin(), aArguments.end());
        return RunExample("tovsettings", aAll);
    }

    void ExpectRefused(const std::string& sCause, const std::string& sContents)
    {
        WriteWholeFile(m_sFile, sContents);
        ExpectComplaint("tovsettings: " + m_sFile + ": " + sCause, 1, Run());
    }

    const CTempFolder m_oFolder;
    const std::string m_sFile = m_oFolder.File("settings.dat");
};
} // namespace

TEST_F(SettingsTest, ShowsTheDefaultsWithoutAFile)
{
    const sChildResult oResult = Run();

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ("width  640\nheight 400\ntabs   4\nfont   Mono\n", oResult.sOutput);
    EXPECT_FALSE(std::filesystem::exists(m_sFile));
}

TEST_F(SettingsTest, WritesTheNewestForm)
{
    Run({"width", "800"});
    Run({"height", "600"});
    Run({"tabs", "2"});

    EXPECT_EQ(NEWEST_SHOWN, Run({"font", "Serif"}).sOutput);

    EXPECT_EQ(NewestFile(), ReadWholeFile(m_sFile));
    EXPECT_FALSE(std::filesystem::exists(m_sFile + ".new"));
}

TEST_F(SettingsTest, ReadsWhatItHasWritten)
{
    WriteWholeFile(m_sFile, NewestFile());

    EXPECT_EQ(NEWEST_SHOWN, Run().sOutput);
}

TEST_F(SettingsTest, ReadsTheFirstReleaseWhoseWidthIsInCharacters)
{
    WriteWholeFile(m_sFile, "SET1" + Number(1) + Number(100) + Number(1) + Number(8) + "END!");

    EXPECT_EQ("width  800\nheight 400\ntabs   8\nfont   Mono\n", Run().sOutput);
}

TEST_F(SettingsTest, ReadsSectionsOfDifferentReleases)
{
    WriteWholeFile(m_sFile, "SET1" + Number(2) + Number(800) + Number(600) + Number(1) + Number(8) + "END!");

    EXPECT_EQ("width  800\nheight 600\ntabs   8\nfont   Mono\n", Run().sOutput);
}

TEST_F(SettingsTest, WritesAnOldFileInTheNewestForm)
{
    WriteWholeFile(m_sFile, "SET1" + Number(1) + Number(100) + Number(1) + Number(8) + "END!");

    Run({"tabs", "4"});

    EXPECT_EQ("SET1" + Number(2) + Number(800) + Number(400) + Number(2) + Number(4) + Number(4) + "MonoEND!",
              ReadWholeFile(m_sFile));
}

TEST_F(SettingsTest, KeepsAnEmptyText)
{
    Run({"font", ""});

    EXPECT_EQ("width  640\nheight 400\ntabs   4\nfont   \n", Run().sOutput);
}

TEST_F(SettingsTest, ShowsTheControlCharactersOfATextAsNumbers)
{
    const std::string sFont = "\x1b[2J";

    EXPECT_EQ("width  640\nheight 400\ntabs   4\nfont   \\x1b[2J\n", Run({"font", sFont}).sOutput);
    EXPECT_NE(std::string::npos, ReadWholeFile(m_sFile).find(sFont));
    ExpectComplaint("tovsettings: \\x1b[2J cannot be \\x07", 2, Run({sFont, "\a"}));
}

TEST_F(SettingsTest, NoticesEachPlaceWhereAFileCanBeCutOff)
{
    const std::string sWhole = NewestFile();

    for (std::size_t nSize = 4; nSize < sWhole.size(); nSize += 4)
    {
        SCOPED_TRACE(nSize);
        ExpectRefused("the file is cut off", sWhole.substr(0, nSize));
    }
}

TEST_F(SettingsTest, RefusesANewerReleaseAndKeepsItsFile)
{
    const std::string sNewer = "SET1" + Number(3) + Number(800);

    ExpectRefused("a newer release has written the file", sNewer);

    EXPECT_EQ(1, Run({"width", "100"}).nExitCode);
    EXPECT_EQ(sNewer, ReadWholeFile(m_sFile));
}

TEST_F(SettingsTest, RefusesOtherFiles)
{
    ExpectRefused("this is no file of settings", "");
    ExpectRefused("this is no file of settings", "a letter");
    ExpectRefused("the file is damaged, or a text is too long",
                  "SET1" + Number(1) + Number(100) + Number(2) + Number(8) + Number(0x7FFFFFFF));
    ExpectRefused("the file is damaged, or a text is too long",
                  "SET1" + Number(1) + Number(100) + Number(2) + Number(8) + Number(0xFFFFFFFF));
}

TEST_F(SettingsTest, RefusesNamesAndValuesThatItDoesNotKnow)
{
    ExpectComplaint("tovsettings: depth cannot be 5", 2, Run({"depth", "5"}));
    ExpectComplaint("tovsettings: width cannot be wide", 2, Run({"width", "wide"}));
    ExpectComplaint("tovsettings: width cannot be -1", 2, Run({"width", "-1"}));
    ExpectComplaint("tovsettings: width cannot be ", 2, Run({"width", ""}));
    ExpectComplaint("usage: tovsettings FILE [NAME VALUE]", 2, Run({"width"}));
    EXPECT_FALSE(std::filesystem::exists(m_sFile));
}

TEST_F(SettingsTest, TellsThatAFolderIsMissing)
{
    const std::string sFile = m_oFolder.File("missing/settings.dat");

    ExpectComplaint("tovsettings: " + sFile + ": no new file can be made beside it", 1,
                    RunExample("tovsettings", {sFile, "width", "800"}));
}

TEST_F(SettingsTest, TellsThatAFileCannotBeOpened)
{
    ExpectComplaint("tovsettings: " + m_oFolder.Path() + " cannot be opened", 1,
                    RunExample("tovsettings", {m_oFolder.Path()}));
}
