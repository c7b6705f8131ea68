#include "SettingsSystem.h"

#include <windows.h>

namespace SettingsSystem
{
bool IsAbsent(const char* szFile)
{
    if (::GetFileAttributesA(szFile) != INVALID_FILE_ATTRIBUTES)
        return false;
    const DWORD dwError = ::GetLastError();
    return dwError == ERROR_FILE_NOT_FOUND || dwError == ERROR_PATH_NOT_FOUND;
}

std::string TargetOf(const std::string& sFile)
{
    return sFile;
}

eCreation Create(const char* szFile, const char* /*szOther*/)
{
    const HANDLE hFile = ::CreateFileA(szFile, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return ::GetLastError() == ERROR_FILE_EXISTS ? eTaken : eRefused;
    ::CloseHandle(hFile);
    return eCreated;
}

bool Replace(const char* szFile, const char* szOther)
{
    return ::MoveFileExA(szFile, szOther, MOVEFILE_REPLACE_EXISTING) != FALSE;
}
} // namespace SettingsSystem
