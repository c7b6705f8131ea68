#include "Listeners/ListenerInstruments.h"

#include <Listeners/TOVMemoryListener.h>
#include <Listeners/TOVRotatingFileListener.h>

#include <algorithm>
#include <filesystem>
#include <memory>

using namespace TOVDebug;

namespace
{
// The texts have one character each, so that all lines have one size.
class CTOVRotatingFileListenerTest : public testing::Test
{
protected:
    CTOVRotatingFileListenerTest() : m_sPath(m_oFolder.File("a.log")) {}

    // The size of each line that this thread logs.
    static unsigned long long SizeOfLine()
    {
        CTOVMemoryListener oMemory;
        oMemory.Register();
        Log(200, "x");
        return oMemory.GetLines().back().Print().size() + 1;
    }

    void Start(unsigned long long ullMaxSize, int nKeptFiles)
    {
        m_pFile = std::make_unique<CTOVRotatingFileListener>(m_sPath.c_str(), ullMaxSize, nKeptFiles);
        m_pFile->Register();
    }

    // Logs each character, and destroys the listener, which closes its file.
    void LogEach(const std::string& sTexts)
    {
        for (const char cText : sTexts)
            Log(200, std::string(1, cText));
        EXPECT_FALSE(m_pFile->HasLostLines());
        m_pFile.reset();
    }

    // The texts of a file's lines, "-" if there is no such file. Number 0 is the current one.
    std::string Texts(int nNumber) const
    {
        const std::string sPath = nNumber == 0 ? m_sPath : m_sPath + '.' + std::to_string(nNumber);
        if (!std::filesystem::exists(sPath))
            return "-";
        const std::string sBegin = Printed("info", "");
        std::string sTexts;
        for (const std::string& sLine : LinesOfFile(sPath))
            sTexts += sLine.compare(0, sBegin.size(), sBegin) == 0 ? sLine.substr(sBegin.size()) : '<' + sLine + '>';
        return sTexts;
    }

    // Those of the current file and of the older ones.
    tLines AllTexts(int nFiles) const
    {
        tLines aTexts;
        for (int nNumber = 0; nNumber < nFiles; ++nNumber)
            aTexts.push_back(Texts(nNumber));
        return aTexts;
    }

    CTempFolder m_oFolder;
    const std::string m_sPath;
    std::unique_ptr<CTOVRotatingFileListener> m_pFile;
};
} // namespace

TEST_F(CTOVRotatingFileListenerTest, FillsAFileToExactlyItsSize)
{
    Start(3 * SizeOfLine(), 2);
    LogEach("abc");
    EXPECT_EQ((tLines{"abc", "-", "-"}), AllTexts(3));
    EXPECT_EQ(3 * SizeOfLine(), std::filesystem::file_size(m_sPath));

    Start(3 * SizeOfLine(), 2);
    LogEach("d");
    EXPECT_EQ((tLines{"d", "abc", "-"}), AllTexts(3));
}

TEST_F(CTOVRotatingFileListenerTest, BeginsAFileAnewBeforeItWouldBeOneByteTooLarge)
{
    Start(3 * SizeOfLine() - 1, 2);
    LogEach("abc");

    EXPECT_EQ((tLines{"c", "ab", "-"}), AllTexts(3));
}

TEST_F(CTOVRotatingFileListenerTest, KeepsTheNumberOfFiles)
{
    Start(2 * SizeOfLine(), 2);
    LogEach("abcdefghi");

    EXPECT_EQ((tLines{"i", "gh", "ef", "-"}), AllTexts(4));
}

TEST_F(CTOVRotatingFileListenerTest, CanKeepOneFile)
{
    Start(2 * SizeOfLine(), 1);
    LogEach("abcdefg");

    EXPECT_EQ((tLines{"g", "ef", "-"}), AllTexts(3));
}

TEST_F(CTOVRotatingFileListenerTest, CanKeepNoFile)
{
    for (const int nKeptFiles : {0, -1})
    {
        std::filesystem::remove(m_sPath);
        Start(2 * SizeOfLine(), nKeptFiles);
        LogEach("abcde");

        EXPECT_EQ((tLines{"e", "-"}), AllTexts(2)) << nKeptFiles;
    }
}

TEST_F(CTOVRotatingFileListenerTest, CanKeepAnyNumberOfFiles)
{
    Start(SizeOfLine(), 0x7fffffff);
    LogEach("abcdefghijkl");

    EXPECT_EQ((tLines{"l", "k", "j", "i", "h", "g", "f", "e", "d", "c", "b", "a", "-"}), AllTexts(13));
}

TEST_F(CTOVRotatingFileListenerTest, GivesALineThatIsLongerThanTheSizeAFileOfItsOwn)
{
    for (const unsigned long long ullSize : {0ull, 1ull, SizeOfLine() - 1})
    {
        for (const char* szName : {"a.log", "a.log.1", "a.log.2"})
            std::filesystem::remove(m_oFolder.File(szName));
        Start(ullSize, 3);
        LogEach("abc");
        EXPECT_EQ((tLines{"c", "b", "a", "-"}), AllTexts(4)) << ullSize;
    }
}

TEST_F(CTOVRotatingFileListenerTest, WritesALongLineWholeBetweenOthers)
{
    const std::string sLong(100000, 'x');
    Start(3 * SizeOfLine(), 3);
    Log(200, "a");
    Log(200, sLong);
    LogEach("b");

    EXPECT_EQ("b", Texts(0));
    EXPECT_TRUE(sLong == Texts(1));
    EXPECT_EQ("a", Texts(2));
}

TEST_F(CTOVRotatingFileListenerTest, CountsWhatStoodInTheFile)
{
    WriteWholeFile(m_sPath, std::string(10, 'o') + '\n');
    Start(11 + 2 * SizeOfLine(), 1);
    LogEach("abc");
    EXPECT_EQ((tLines{"c", "<oooooooooo>ab", "-"}), AllTexts(3));
}

TEST_F(CTOVRotatingFileListenerTest, MovesAFileThatIsTooLargeAtTheFirstLine)
{
    WriteWholeFile(m_sPath, std::string(100000, 'o') + '\n');
    Start(2 * SizeOfLine(), 1);
    EXPECT_EQ("-", Texts(1));
    LogEach("ab");

    EXPECT_EQ("ab", Texts(0));
    EXPECT_EQ(100001u, std::filesystem::file_size(m_sPath + ".1"));
}

TEST_F(CTOVRotatingFileListenerTest, LeavesOtherNumbersAsTheyAre)
{
    WriteWholeFile(m_sPath + ".2", "second\n");
    WriteWholeFile(m_sPath + ".3", "third\n");
    Start(SizeOfLine(), 2);
    LogEach("ab");
    EXPECT_EQ((tLines{"b", "a", "<second>", "<third>"}), AllTexts(4));

    Start(SizeOfLine(), 2);
    LogEach("c");
    EXPECT_EQ((tLines{"c", "b", "a", "<third>"}), AllTexts(4));
}

TEST_F(CTOVRotatingFileListenerTest, GoesOnInTheSameFileWhileItCannotBeMoved)
{
    std::filesystem::create_directories(m_sPath + ".1/in it");
    Start(2 * SizeOfLine(), 2);
    std::filesystem::create_directories(m_sPath + ".2/in it");
    for (const char* szText : {"a", "b", "c", "d", "e"})
        Log(200, szText);
    EXPECT_FALSE(m_pFile->HasLostLines());
    m_pFile->Flush();
    EXPECT_EQ("abcde", Texts(0));

    // With the next line, the same number of bytes has been written again.
    std::filesystem::remove_all(m_sPath + ".1");
    std::filesystem::remove_all(m_sPath + ".2");
    LogEach("fg");
    EXPECT_EQ((tLines{"g", "abcdef", "-"}), AllTexts(3));
}

TEST_F(CTOVRotatingFileListenerTest, FlushesFrom500AlsoBehindAChangeOfFiles)
{
    Start(2 * SizeOfLine() + 100, 9);
    for (const char* szText : {"a", "b", "c", "d", "e"})
        Log(200, szText);
    Log(500, "grave");

    tLines aLines;
    for (int nNumber = 9; nNumber > 0; --nNumber)
        if (std::filesystem::exists(m_sPath + '.' + std::to_string(nNumber)))
            for (const std::string& sLine : LinesOfFile(m_sPath + '.' + std::to_string(nNumber)))
                aLines.push_back(sLine);
    for (const std::string& sLine : LinesOfFile(m_sPath))
        aLines.push_back(sLine);
    tLines aExpected = PrintedInfos({"a", "b", "c", "d", "e"});
    aExpected.push_back(Printed("error", "grave"));
    EXPECT_EQ(aExpected, aLines);
}

TEST_F(CTOVRotatingFileListenerTest, IsNotOpenWhereThereCanBeNoFile)
{
    CTOVRotatingFileListener oFile(m_oFolder.File("none/a.log").c_str(), 100, 2);
    EXPECT_FALSE(oFile.IsOpen());
    oFile.Register();

    EXPECT_NO_CHECK(Log(600, "text"));

    EXPECT_TRUE(oFile.HasLostLines());
    EXPECT_FALSE(std::filesystem::exists(m_oFolder.File("none")));
}

TEST_F(CTOVRotatingFileListenerTest, HasAllLinesOfAllThreadsWhole)
{
    Start(5000, 1000);
    LogFromThreads(8, 50, 200);
    EXPECT_FALSE(m_pFile->HasLostLines());
    m_pFile.reset();

    tLines aTexts;
    int nFiles = 0;
    for (; Texts(nFiles) != "-"; ++nFiles)
    {
        const std::string sPath = nFiles == 0 ? m_sPath : m_sPath + '.' + std::to_string(nFiles);
        EXPECT_GE(5000u, std::filesystem::file_size(sPath));
        for (const std::string& sLine : LinesOfFile(sPath))
            aTexts.push_back(sLine.substr(Printed("info", "").size()));
    }
    std::sort(aTexts.begin(), aTexts.end());
    EXPECT_EQ(TextsOfThreads(8, 50), aTexts);
    EXPECT_LT(5, nFiles);
}
