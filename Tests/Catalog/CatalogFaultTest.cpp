// Directories that fail while they are read. The commands run in the test program, where such a thing can be arranged.
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVDirectoryFault.h"

#include <CatalogFile.h>
#include <Commands.h>
#include <TreeWalker.h>

namespace
{
class CatalogFaultTest : public CatalogTest
{
protected:
    CatalogFaultTest()
    {
        for (int nFile = 10; nFile < 26; ++nFile)
            Write("tree/" + std::to_string(nFile), "x");
        m_oOptions.oCatalog = Path("c.cat").c_str();
        m_oOptions.aDirectories.Add(Path("tree"));
    }

    // Runs create with a directory of which so many entries can be read.
    int CreateWith(unsigned long ulGoodEntries)
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        int nStatus = eExitFailure;
        try
        {
            const CDirectoryFault oFault(ulGoodEntries);
            nStatus = CreateCatalog(m_oOptions, m_bStop);
        }
        catch (const CCatalogError&)
        {
        }
        testing::internal::GetCapturedStdout();
        m_sErrors = testing::internal::GetCapturedStderr();
        return nStatus;
    }

    // Expects that create reports success only with all files. Returns how many entries that takes.
    unsigned long ExpectNoPartInSilence(long lFiles)
    {
        for (unsigned long ulGood = 0; ulGood < 200; ++ulGood)
        {
            const int nStatus = CreateWith(ulGood);
            if (nStatus == eExitSame)
            {
                EXPECT_EQ(lFiles, LoadCatalog(m_oOptions.oCatalog).aFiles.GetSize()) << ulGood;
                return ulGood;
            }
            EXPECT_NE(std::string::npos, m_sErrors.find("unreadable " + Path("tree"))) << ulGood << m_sErrors;
        }
        return 200;
    }

    sCreateOptions m_oOptions;
    std::atomic<bool> m_bStop{false};
    std::string m_sErrors;
};
} // namespace

TEST_F(CatalogFaultTest, IsToldWhereverReadingADirectoryFails)
{
    EXPECT_LT(17u, ExpectNoPartInSilence(16));
}

TEST_F(CatalogFaultTest, IsToldWhereverASearchForAPatternFails)
{
    m_oOptions.aPatterns.Add("1*");
    m_oOptions.aPatterns.Add("25");

    EXPECT_LT(28u, ExpectNoPartInSilence(11));
}

TEST_F(CatalogFaultTest, HasTheStatusOfUnreadableFilesAndKeepsWhatWasRead)
{
    EXPECT_EQ(eExitDifferences, CreateWith(9));

    const long lFiles = LoadCatalog(m_oOptions.oCatalog).aFiles.GetSize();
    EXPECT_LT(0, lFiles);
    EXPECT_GT(16, lFiles);
    EXPECT_EQ((tNames{"unreadable " + Path("tree")}), Lines(m_sErrors));
}

TEST_F(CatalogFaultTest, IsToldByVerifyToo)
{
    ASSERT_EQ(eExitSame, CreateWith(1000));

    testing::internal::CaptureStdout();
    int nStatus = eExitSame;
    {
        const CDirectoryFault oFault(9);
        sVerifyOptions oVerify;
        oVerify.oName = m_oOptions.oCatalog;
        nStatus = VerifyCatalog(oVerify, m_bStop);
    }

    EXPECT_EQ(eExitDifferences, nStatus);
    EXPECT_NE(std::string::npos, testing::internal::GetCapturedStdout().find("unreadable " + Path("tree") + "\n"));
}

TEST_F(CatalogFaultTest, DoesNotKeepAWalkFromBeingInterrupted)
{
    CTOVArray<sFileRecord> aFiles;
    CTextStore oPaths;
    tUnreadable aUnreadable;
    m_bStop = true;
    CTreeWalker oWalker(m_oOptions.aPatterns, aFiles, oPaths, aUnreadable, m_bStop);

    oWalker.Walk(0, m_oOptions.aDirectories[0]);

    EXPECT_EQ(0, aFiles.GetSize());
    EXPECT_THROW(CreateCatalog(m_oOptions, m_bStop), CCatalogError);
    EXPECT_FALSE(Exists("c.cat"));
}
