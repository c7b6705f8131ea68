#include "CatalogSystem.h"

#include <csignal>
#include <string>

#include <fcntl.h>
#include <io.h>

#include <windows.h>

namespace
{
constexpr std::intptr_t NO_FILE = -1; // INVALID_HANDLE_VALUE

HANDLE ToNative(std::intptr_t hFile)
{
    return reinterpret_cast<HANDLE>(hFile);
}

std::intptr_t FromNative(HANDLE hFile)
{
    return reinterpret_cast<std::intptr_t>(hFile);
}
} // namespace

CInputFile::CInputFile(const char* szName)
    : m_hFile(FromNative(::CreateFileA(szName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)))
{
    // The name may belong to a device.
    if (IsOpen() && ::GetFileType(ToNative(m_hFile)) != FILE_TYPE_DISK)
    {
        ::CloseHandle(ToNative(m_hFile));
        m_hFile = NO_FILE;
    }
}

CInputFile::~CInputFile()
{
    if (IsOpen())
        ::CloseHandle(ToNative(m_hFile));
}

bool CInputFile::IsOpen() const
{
    return m_hFile != NO_FILE;
}

unsigned long CInputFile::Read(void* pBuffer, unsigned long ulSize)
{
    unsigned long ulRead = 0;
    while (ulRead < ulSize)
    {
        DWORD dwPart = 0;
        const BOOL bRead =
            ::ReadFile(ToNative(m_hFile), static_cast<char*>(pBuffer) + ulRead, ulSize - ulRead, &dwPart, nullptr);
        m_bFailed = m_bFailed || !bRead;
        if (!bRead || dwPart == 0)
            break;
        ulRead += dwPart;
    }
    return ulRead;
}

// As the file is opened without sharing deletion, no other process can remove it.
CNewFile::CNewFile(const CTOVStringA& oName, const CTOVStringA& oTarget)
    : m_sName(~oName), m_sTarget(~oTarget),
      m_hFile(FromNative(::CreateFileA(~oName, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_NEW,
                                       FILE_ATTRIBUTE_NORMAL, nullptr)))
{
}

CNewFile::~CNewFile()
{
    if (!IsOpen())
        return;
    ::CloseHandle(ToNative(m_hFile)); // an open file cannot be removed
    if (!m_bInPlace)
        ::DeleteFileA(m_sName.c_str());
}

bool CNewFile::IsOpen() const
{
    return m_hFile != NO_FILE;
}

bool CNewFile::PutInPlace()
{
    if (!::FlushFileBuffers(ToNative(m_hFile)))
        return false;

    // An open file cannot be moved either. If another process removes the file now, the move only fails.
    ::CloseHandle(ToNative(m_hFile));
    m_hFile = NO_FILE;
    m_bInPlace =
        ::MoveFileExA(m_sName.c_str(), m_sTarget.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
    if (!m_bInPlace)
        ::DeleteFileA(m_sName.c_str());
    return m_bInPlace;
}

bool RemoveAbandonedFile(const CTOVStringA& oName)
{
    return ::DeleteFileA(~oName) != FALSE;
}

void CatchEndSignals(void (*pfHandler)(int))
{
    for (const int nSignal : {SIGINT, SIGTERM, SIGBREAK})
    {
        if (std::signal(nSignal, pfHandler) == SIG_IGN)
            std::signal(nSignal, SIG_IGN);
    }
}

void IgnoreClosedPipes()
{
}

void KeepLineEnds(std::FILE* pFile)
{
    ::_setmode(::_fileno(pFile), _O_BINARY);
}

bool IsTerminal(std::FILE* pFile)
{
    return ::_isatty(::_fileno(pFile)) != 0;
}

// The name is wide, since not all names exist in the code page of the system. If the system does not tell it, it stays
// empty.
tWayBack WayBackHere()
{
    std::wstring sHere(::GetCurrentDirectoryW(0, nullptr), L'\0');
    ::GetCurrentDirectoryW(static_cast<DWORD>(sHere.size()), sHere.data());
    return [sHere] { return ::SetCurrentDirectoryW(sHere.c_str()) != FALSE; };
}
