#include "Listeners/ListenerInstruments.h"

#include <Listeners/TOVFileListener.h>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace TOVDebug;

namespace
{
class CTOVFileListenerTest : public testing::Test
{
protected:
    CTOVFileListenerTest() : m_sPath(m_oFolder.File("a.log")) {}

    tLines Written() const { return LinesOfFile(m_sPath); }

    CTempFolder m_oFolder;
    const std::string m_sPath;
};
} // namespace

TEST_F(CTOVFileListenerTest, WritesEachEventAsOneLine)
{
    {
        CTOVFileListener oFile(m_sPath.c_str());
        oFile.Register();
        EXPECT_TRUE(oFile.IsOpen());
        Log(200, "first");
        Log(400, "100% of %s %n");
        FailCheck("nCount > 0");
        oFile.OnPanic("Folder/File.cpp", 9, eSeverityFatal, "%d cities", 0);
        EXPECT_FALSE(oFile.HasLostLines());
    }
    EXPECT_EQ((tLines{Printed("info", "first"), Printed("warning", "100% of %s %n"),
                      "Folder/File.cpp(12) : error: TIME check failed: nCount > 0",
                      "Folder/File.cpp(9) : fatal error: TIME panic: 0 cities"}),
              Written());
}

TEST_F(CTOVFileListenerTest, AddsToAFileThatExists)
{
    WriteWholeFile(m_sPath, "old\n");
    {
        CTOVFileListener oFile(m_sPath.c_str());
        oFile.Register();
        Log(200, "new");
    }
    EXPECT_EQ((tLines{"old", Printed("info", "new")}), Written());
}

TEST_F(CTOVFileListenerTest, BeginsAFileAnewIfThatIsWanted)
{
    WriteWholeFile(m_sPath, "old\n");
    {
        CTOVFileListener oFile(m_sPath.c_str(), false);
        oFile.Register();
        Log(200, "new");
    }
    EXPECT_EQ(tLines{Printed("info", "new")}, Written());
}

TEST_F(CTOVFileListenerTest, IsNotOpenWhereThereCanBeNoFile)
{
    for (const std::string& sPath : {m_oFolder.File("none/a.log"), m_oFolder.Path(), std::string()})
    {
        CTOVFileListener oFile(sPath.c_str());
        EXPECT_FALSE(oFile.IsOpen()) << sPath;
        EXPECT_FALSE(oFile.HasLostLines()) << sPath;
        oFile.Register();
        EXPECT_NO_CHECK(Log(600, "text"));
        EXPECT_NO_CHECK(oFile.Flush());
        EXPECT_TRUE(oFile.HasLostLines()) << sPath;
    }
    EXPECT_FALSE(CTOVFileListener(nullptr).IsOpen());
}

TEST_F(CTOVFileListenerTest, FlushesFrom500)
{
    CTOVFileListener oFile(m_sPath.c_str());
    oFile.Register();

    Log(499, "1");
    EXPECT_TRUE(Written().empty());
    Log(500, "2");
    EXPECT_EQ((tLines{Printed("severity 499", "1"), Printed("error", "2")}), Written());
    Log(600, "3");
    EXPECT_EQ(3u, Written().size());
}

TEST_F(CTOVFileListenerTest, FlushesAtAFailedCheckAndAtAPanic)
{
    CTOVFileListener oFile(m_sPath.c_str());
    oFile.Register();

    Log(100, "1");
    FailCheck("nCount > 0");
    EXPECT_EQ(2u, Written().size());

    Log(100, "3");
    oFile.OnPanic("Folder/File.cpp", 9, eSeverityTrace, "4");
    EXPECT_EQ(4u, Written().size());
}

TEST_F(CTOVFileListenerTest, FlushesWhenAskedAndWhenItIsUnregistered)
{
    CTOVFileListener oFile(m_sPath.c_str());
    oFile.Register();

    Log(100, "1");
    oFile.Flush();
    EXPECT_EQ(1u, Written().size());

    Log(100, "2");
    oFile.Unregister();
    EXPECT_EQ(2u, Written().size());
}

TEST_F(CTOVFileListenerTest, WritesLongLinesWhole)
{
    const std::string sLong(1000000, 'x');
    {
        CTOVFileListener oFile(m_sPath.c_str());
        oFile.Register();
        Log(200, sLong);
        Log(200, "next");
    }
    EXPECT_TRUE((PrintedInfos({sLong, "next"})) == Written());
}

// Files have the same size on all systems.
TEST_F(CTOVFileListenerTest, EndsLinesWithOneCharacter)
{
    {
        CTOVFileListener oFile(m_sPath.c_str());
        oFile.Register();
        Log(200, "1\r\n2\n");
    }
    EXPECT_EQ(Printed("info", "1\n") + Printed("info", "2\n"), WithoutTimes(ReadWholeFile(m_sPath)));
}

TEST_F(CTOVFileListenerTest, HasAllLinesOfAllThreadsWhole)
{
    for (const int nSeverity : {200, 500})
    {
        CTOVFileListener oFile(m_sPath.c_str(), false);
        oFile.Register();
        LogFromThreads(8, 100, nSeverity);
        oFile.Unregister();

        tLines aLines = Written();
        const std::string sBegin = Printed(nSeverity == 200 ? "info" : "error", "");
        for (std::string& sLine : aLines)
            sLine = sLine.compare(0, sBegin.size(), sBegin) == 0 ? sLine.substr(sBegin.size()) : "broken: " + sLine;
        std::sort(aLines.begin(), aLines.end());
        EXPECT_EQ(TextsOfThreads(8, 100), aLines);
    }
}

TEST_F(CTOVFileListenerTest, CanBeFlushedAndAskedWhileOthersLog)
{
    CTOVFileListener oFile(m_sPath.c_str());
    oFile.Register();
    oFile.Flush();
    std::atomic<bool> bDone(false);
    std::thread oOther([&] {
        while (!bDone)
        {
            oFile.Flush();
            EXPECT_TRUE(oFile.IsOpen());
        }
    });
    LogFromThreads(2, 200, 200);
    bDone = true;
    oOther.join();
    oFile.Unregister();
    EXPECT_EQ(400u, Written().size());
}
