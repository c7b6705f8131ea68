// What the program needs of the system and the library does not offer. One source for each system, with the same
// functions in the same order; what stands above them is decided elsewhere.
#pragma once

#include <TOVString/TOVStringA.h>

#include <cstdint>
#include <cstdio>

// A file that is read from its begin to its end.
class CInputFile
{
public:
    // Opens a file and nothing else. What has taken its place, such as a pipe, is not waited for.
    explicit CInputFile(const CTOVStringA& oName);
    ~CInputFile();
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;

    bool IsOpen() const;

    // Number of bytes read: less than wanted at the end of the file, and where reading fails.
    unsigned long Read(void* pBuffer, unsigned long ulSize);

    bool HasFailed() const { return m_bFailed; }

private:
    std::intptr_t m_hFile;
    bool m_bFailed = false;
};

// A new file that is to take the place of another one, and is removed at the end if it has not done so. As long as this
// lives, no RemoveAbandonedFile removes it. Its bytes are written through its name.
class CNewFile
{
public:
    // Makes the file. Does not open it if anything has this name, and follows no link. Where the system has permissions
    // of files, it gets those of the file whose place it is to take.
    CNewFile(const CTOVStringA& oName, const CTOVStringA& oTarget);

    ~CNewFile();
    CNewFile(const CNewFile&) = delete;
    CNewFile& operator=(const CNewFile&) = delete;

    bool IsOpen() const;

    // Brings the file to the disk, and then in one step into the place of the other one. On failure the other one is
    // what it was.
    bool PutInPlace();

private:
    const CTOVStringA m_oName;
    const CTOVStringA m_oTarget;
    std::intptr_t m_hFile;
    bool m_bInPlace = false;
};

// Removes a file unless a CNewFile of any process holds it, or it is no file.
bool RemoveAbandonedFile(const CTOVStringA& oName);

bool IsTerminal(std::FILE* pFile);
