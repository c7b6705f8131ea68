// A file that somebody else has open.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

// Keeps the file open while it lives, and lets others open it only in the ways of dwShared.
class CHeldFile
{
public:
    CHeldFile(const std::string& sPath, DWORD dwShared)
        : m_hFile(::CreateFileA(sPath.c_str(), GENERIC_READ, dwShared, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(INVALID_HANDLE_VALUE, m_hFile) << sPath;
    }

    ~CHeldFile() { ::CloseHandle(m_hFile); }

    CHeldFile(const CHeldFile&) = delete;
    CHeldFile& operator=(const CHeldFile&) = delete;

private:
    const HANDLE m_hFile;
};
