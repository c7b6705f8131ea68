// Directories that fail while they are read, for the searches that the library makes.
#pragma once

#include <memory>
#include <string>

// While it lives, the constructing thread can read so many entries of directories, `.` and `..` included, and the
// system reports a read error for every further one.
class CDirectoryFault
{
public:
    explicit CDirectoryFault(unsigned long ulGoodEntries);
    ~CDirectoryFault();
    CDirectoryFault(const CDirectoryFault&) = delete;
    CDirectoryFault& operator=(const CDirectoryFault&) = delete;

private:
    struct sHook;

    const std::unique_ptr<sHook> m_pHook;
};

// Posix only. While it lives, the constructing thread gets this error when it asks for the status of an entry of this
// name, or, of a link, only when it asks for that of the target.
class CStatusFault
{
public:
    enum eOf
    {
        eEntry,
        eTarget
    };

    CStatusFault(const std::string& sName, int nError, eOf eStatusOf = eEntry);
    ~CStatusFault();
    CStatusFault(const CStatusFault&) = delete;
    CStatusFault& operator=(const CStatusFault&) = delete;
};
