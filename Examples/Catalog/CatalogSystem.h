// Declares what the program needs from the system and the library does not have. Each system has its own source, with
// the same functions in the same order; they only call the system and decide nothing.
#pragma once

#include <TOVString/TOVStringA.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

// A file that is read from its beginning to its end.
class CInputFile
{
public:
    // Opens a file. Anything else that has replaced it, such as a pipe, is not opened and not waited for.
    explicit CInputFile(const char* szName);
    ~CInputFile();
    CInputFile(const CInputFile&) = delete;
    CInputFile& operator=(const CInputFile&) = delete;

    bool IsOpen() const;

    // Returns the number of bytes read, which is smaller than ulSize at the end of the file and if reading fails.
    unsigned long Read(void* pBuffer, unsigned long ulSize);

    bool HasFailed() const { return m_bFailed; }

private:
    std::intptr_t m_hFile;
    unsigned long long m_ullSize = 0; // when it was opened
    unsigned long long m_ullRead = 0;
    bool m_bFailed = false;
};

// A new file that shall replace another one. The destructor removes it if it has not done so. As long as this object
// exists, RemoveAbandonedFile does not remove the file in any process. Its bytes are written by another object, which
// opens it by its name.
class CNewFile
{
public:
    // Creates the file. IsOpen returns false if anything already has this name; no link is followed. Where the system
    // has file permissions, the file gets those of the file that it shall replace; IsOpen and PutInPlace return false
    // if these cannot be known.
    CNewFile(const CTOVStringA& oName, const CTOVStringA& oTarget);

    ~CNewFile();
    CNewFile(const CNewFile&) = delete;
    CNewFile& operator=(const CNewFile&) = delete;

    bool IsOpen() const;

    // Writes the file to the disk, then replaces the other file by it in one step. Returns false on failure; the other
    // file is then unchanged.
    bool PutInPlace();

private:
    // The names that the system takes. The destructor makes none, as it also runs when there is no memory.
    const std::string m_sName;
    const std::string m_sTarget;
    std::intptr_t m_hFile;
    bool m_bInPlace = false;
};

// Removes a file unless a CNewFile of any process holds it, or the name does not belong to a file.
bool RemoveAbandonedFile(const CTOVStringA& oName);

// Calls the function for each signal by which the user or the system asks the program to end, unless the program was
// started with the signal ignored. It may be called once for each.
void CatchEndSignals(void (*pfHandler)(int));

// Lets a write to a closed pipe fail. Otherwise such a write ends the program where the system does that.
void IgnoreClosedPipes();

// Lets a file have the line ends that are written, also where the system has others.
void KeepLineEnds(std::FILE* pFile);

bool IsTerminal(std::FILE* pFile);

// Makes a directory the working directory again. Returns false, and changes nothing, if the system does not allow it,
// or did not tell which directory it was.
typedef std::function<bool()> tWayBack;

// Returns the way back to the present working directory.
tWayBack WayBackHere();
