#include "Catalog/CatalogFiles.h"

#include <stdexcept>
#include <windows.h>
#include <winioctl.h>

void WriteSparseFile(const std::string& sPath, unsigned long long ullZeros, const std::string& sTail)
{
    const HANDLE hFile = ::CreateFileA(sPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    // A file system without sparse files refuses this; the file then takes more room.
    DWORD dwCount = 0;
    ::DeviceIoControl(hFile, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &dwCount, nullptr);

    LARGE_INTEGER oEnd;
    oEnd.QuadPart = static_cast<LONGLONG>(ullZeros);
    const bool bWritten = ::SetFilePointerEx(hFile, oEnd, nullptr, FILE_BEGIN) && ::SetEndOfFile(hFile) &&
                          ::WriteFile(hFile, sTail.data(), static_cast<DWORD>(sTail.size()), &dwCount, nullptr);
    ::CloseHandle(hFile);
    if (!bWritten || dwCount != sTail.size())
        throw std::runtime_error("cannot write " + sPath);
}

void CutFile(const std::string& sPath, long lSize)
{
    const HANDLE hFile = ::CreateFileA(sPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    const bool bCut =
        ::SetFilePointer(hFile, lSize, nullptr, FILE_BEGIN) == static_cast<DWORD>(lSize) && ::SetEndOfFile(hFile);
    ::CloseHandle(hFile);
    if (!bCut)
        throw std::runtime_error("cannot cut " + sPath);
}

void MakeDirectoryOfBytes(const std::string& sPath)
{
    if (!::CreateDirectoryA(sPath.c_str(), nullptr) && ::GetLastError() != ERROR_ALREADY_EXISTS)
        throw std::runtime_error("cannot make " + sPath);
}
