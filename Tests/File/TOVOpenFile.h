// What the tests of file objects share.
#pragma once

#include "TOVPlatform/TOVFileInstruments.h"

#include <File/TOVFile.h>

#include <string>
#include <typeinfo>

constexpr int READ = 0x11;
constexpr int WRITE = 0x12;
constexpr int UPDATE = 0x13;
constexpr unsigned long long ALL_BITS = 0xFFFFFFFFFFFFFFFF;
constexpr unsigned long long GIBIBYTE = 1ull << 30;
constexpr char OPEN_FAILED[] =
    "CTOVFile::Open() : Enhance the exception throwing. Should be more detailed, what exactly failed.";

class COpenFileFixture : public CFileFixture
{
protected:
    // The file that holds these bytes, opened by the flags.
    void OpenWith(CTOVFile& oFile, const std::string& sContents, int nFlags) const
    {
        WriteWholeFile(Path("contents"), sContents);
        oFile.Open(Path("contents").c_str(), nFlags);
    }

    void Open(CTOVFile& oFile, const std::string& sName, int nFlags) const { oFile.Open(Path(sName).c_str(), nFlags); }

    std::string CloseAndRead(CTOVFile& oFile) const
    {
        oFile.Close();
        return ReadWholeFile(Path("contents"));
    }

    // Opening fails as it is told to: one log line, the exception, a closed object.
    void ExpectNotOpened(CTOVFile& oFile, const char* szName, int nFlags) const
    {
        CLogRecorder oLog;
        try
        {
            oFile.Open(szName, nFlags);
            ADD_FAILURE() << "opened " << szName << " by " << nFlags;
        }
        catch (ITOVFile::Exception& oException)
        {
            EXPECT_TRUE(typeid(oException) == typeid(CTOVFile::FileException));
            EXPECT_EQ(CTOVException::eClassFile, oException.GetClass());
            EXPECT_EQ(0u, oException.GetCode());
        }
        EXPECT_FALSE(oFile.IsOpen());
        ASSERT_EQ(1u, oLog.Lines().size());
        EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVFile"));
        EXPECT_EQ(eSeverityTrace, oLog.Lines()[0].eSeverity);
        EXPECT_EQ(OPEN_FAILED, oLog.Lines()[0].sText);
        EXPECT_TRUE(oLog.Checks().empty());
    }
};
