// How the system's errors are read where a search gives no entry.
#include "Support/Windows/TOVImportHook.h"

#include <TOVPlatform/TOVFile.h>

#include <gtest/gtest.h>
#include <windows.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
DWORD s_dwError;

HANDLE WINAPI FailFirst(LPCSTR, LPWIN32_FIND_DATAA)
{
    ::SetLastError(s_dwError);
    return INVALID_HANDLE_VALUE;
}

BOOL WINAPI FailNext(HANDLE, LPWIN32_FIND_DATAA)
{
    ::SetLastError(s_dwError);
    return FALSE;
}
} // namespace

TEST(TOVPlatformWindowsFileSearchFaultTest, TellsANameThatNothingHasFromADirectoryThatCannotBeRead)
{
    const CImportHook oHook("FindFirstFileA", &FailFirst);
    const struct
    {
        DWORD dwError;
        File::eFindResult eResult;
    } aCases[] = {
        {ERROR_FILE_NOT_FOUND, File::eFindEnd},
        {ERROR_PATH_NOT_FOUND, File::eFindEnd},
        {ERROR_NO_MORE_FILES, File::eFindEnd},
        {ERROR_INVALID_NAME, File::eFindEnd},
        {ERROR_BAD_PATHNAME, File::eFindEnd},
        {ERROR_DIRECTORY, File::eFindEnd},
        {ERROR_ACCESS_DENIED, File::eFindFailure},
        {ERROR_NOT_READY, File::eFindFailure},
        {ERROR_CRC, File::eFindFailure},
        {ERROR_NOT_ENOUGH_MEMORY, File::eFindFailure},
        {ERROR_NETNAME_DELETED, File::eFindFailure},
    };

    for (const auto& oCase : aCases)
    {
        File::sTOVFindData oRecord;
        unsigned long long hFind = 0;
        s_dwError = oCase.dwError;
        EXPECT_EQ(oCase.eResult, File::FindFirstEntry("*", &oRecord, &hFind)) << oCase.dwError;
        EXPECT_EQ(FILE_INVALID_HANDLE, hFind) << oCase.dwError;
    }
}

TEST(TOVPlatformWindowsFileSearchFaultTest, EndsForOneErrorAlone)
{
    const CImportHook oHook("FindNextFileA", &FailNext);
    File::sTOVFindData oRecord;

    s_dwError = ERROR_NO_MORE_FILES;
    EXPECT_EQ(File::eFindEnd, File::FindNextEntry(1, &oRecord));
    for (const DWORD dwError : {ERROR_FILE_NOT_FOUND, ERROR_INVALID_HANDLE, ERROR_READ_FAULT, ERROR_NETNAME_DELETED})
    {
        s_dwError = dwError;
        EXPECT_EQ(File::eFindFailure, File::FindNextEntry(1, &oRecord)) << dwError;
        EXPECT_FALSE(File::FindNext(1, &oRecord)) << dwError;
    }
}
