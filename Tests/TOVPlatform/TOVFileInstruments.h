// What the tests of files share.
#pragma once

#include "Support/TOVSay.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVFile.h>

#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

// The source that checks on handles are reported from.
constexpr char FILE_SOURCE[] = TOV_PLATFORM_SOURCE("TOVFile");

constexpr char INVALID_HANDLE_CHECK[] = "hHandle != FILE_INVALID_HANDLE";
constexpr char HANDLE_RANGE_CHECK[] = "(0 <= hHandle) && (hHandle < m_ulMaxHandles)";

// What a line feed becomes in a file that is open for text.
const char* const LINE_END = TOV_SYSTEM_WINDOWS ? "\r\n" : "\n";

constexpr unsigned long FILE_SLOTS = 1024;

// How many slots of the library's table hold a file.
inline int CountOpenFiles()
{
    int nCount = 0;
    for (unsigned long long hFile = 0; hFile < FILE_SLOTS; ++hFile)
        nCount += TOVPlatform::TOVFile::CTOVHandleManager::Instance().GetFile(hFile) != nullptr ? 1 : 0;
    return nCount;
}

// The handle that the next file opened will get.
inline unsigned long long NextHandle()
{
    return TOVPlatform::TOVFile::CTOVHandleManager::Instance().FindFreeHandle();
}

// Says the text of the check on a handle that the call fails.
inline void SayCheck(const std::function<void()>& fnCall)
{
    CLogRecorder oLog;
    try
    {
        fnCall();
        Say("no exception");
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        const std::vector<sCheck> aChecks = oLog.Checks();
        const bool bFromHere = aChecks.size() == 1 && aChecks[0].sFile.find(FILE_SOURCE) != std::string::npos;
        Say(bFromHere ? aChecks[0].sExpression : oLog.DescribeChecks());
    }
}

// Vprintf, called as Printf is.
inline long CallVprintf(unsigned long long hFile, const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const long lCount = TOVPlatform::TOVFile::Vprintf(hFile, szFormat, pArguments);
    va_end(pArguments);
    return lCount;
}

// Ends a file that Close keeps, as the system does not take what it holds.
inline void GiveUp(unsigned long long hFile)
{
    TOVPlatform::TOVFile::CTOVHandleManager& oManager = TOVPlatform::TOVFile::CTOVHandleManager::Instance();
    std::fclose(oManager.GetFile(hFile));
    oManager.ClearHandle(hFile);
}

// A file of this size that takes no room where the system can.
inline void MakeBigFile(const std::string& sPath, unsigned long long ullSize)
{
    WriteWholeFile(sPath, "");
    std::filesystem::resize_file(sPath, ullSize);
}

// A folder of its own for each test, and handles that are closed after it. No test leaves a slot taken.
class CFileFixture : public testing::Test
{
protected:
    CFileFixture() : m_nOpenBefore(CountOpenFiles()) {}

    ~CFileFixture() override
    {
        for (const unsigned long long hFile : m_aHandles)
            TOVPlatform::TOVFile::Close(hFile);
        EXPECT_EQ(m_nOpenBefore, CountOpenFiles());
    }

    std::string Path(const std::string& sName) const { return m_oFolder.File(sName); }

    unsigned long long Open(const std::string& sName, const char* szMode)
    {
        const unsigned long long hFile = TOVPlatform::TOVFile::Open(Path(sName).c_str(), szMode);
        if (hFile != FILE_INVALID_HANDLE)
            m_aHandles.push_back(hFile);
        return hFile;
    }

    // A file that holds these bytes, open by the mode.
    unsigned long long OpenWith(const std::string& sContents, const char* szMode)
    {
        WriteWholeFile(Path("contents"), sContents);
        const unsigned long long hFile = Open("contents", szMode);
        EXPECT_NE(FILE_INVALID_HANDLE, hFile);
        return hFile;
    }

    // Closes the file of OpenWith and gives what it holds.
    std::string CloseAndRead(unsigned long long hFile)
    {
        EXPECT_EQ(TOVPlatform::TOVFile::eFileSuccess, TOVPlatform::TOVFile::Close(hFile));
        return ReadWholeFile(Path("contents"));
    }

    const CTempFolder m_oFolder;

private:
    const int m_nOpenBefore;
    std::vector<unsigned long long> m_aHandles;
};
