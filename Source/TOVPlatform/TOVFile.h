// Declares the functions for files, directories, attributes and directory searches.
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVFormatCheck.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVProcess/TOVCriticalSection.h>

#include <cstdarg>
#include <cstdio>

// This handle means that there is no file, or no search. All its 64 bits are set.
#define FILE_INVALID_HANDLE 0xFFFFFFFFFFFFFFFFULL

namespace TOVPlatform
{
// A file is a buffered stream of the C runtime, which a handle identifies. Directories, attributes and searches are
// those of the system.
//
// A file handle is an index into one table of 1024 slots, each of which is empty or holds an open stream; 0 is
// therefore a valid handle. The functions report failures by their results only: they neither log nor throw, except for
// the checks of a handle in CTOVHandleManager. A null name fails like the name of a missing file.
//
// Any thread may use any function. Use one file from one thread at a time: the table is locked while a slot is taken,
// and not while its stream is used. On Posix, a stream that one thread alone has used is not locked by the runtime,
// until another thread uses it by these functions or gets it from the table. fflush(nullptr) and the end of the process
// find all that has been written, as in any stream.
//
// On Posix, a name that exists is used unchanged; otherwise its backslashes are read as slashes.
namespace TOVFile
{
// Success is positive and there is no zero value: a test for zero is always wrong.
enum eFileErrorCode
{
    eFileSuccess = 1,
    eFileFailure = -1
};

// Any other value has the effect of eSeekOriginStart.
enum eSeekOrigin : int
{
    eSeekOriginStart = 0,
    eSeekOriginCurrent = 1,
    eSeekOriginEnd = 2
};

// The attributes of a file or a directory, which can be combined. Windows has all of them. Posix has directory,
// read-only and, for a file without both, normal: it never returns the others and ignores them when they are set, and a
// full stop at the beginning of a name does not hide the file. On Posix, a device, a pipe or a socket has no
// attributes. A dead link has none in the record of a search; for GetAttributes it is missing.
enum eFileAttribute
{
    eFileAttributeArchive = 0x01,
    eFileAttributeCompressed = 0x02,
    eFileAttributeDirectory = 0x04,
    eFileAttributeHidden = 0x08,
    eFileAttributeNormal = 0x10,
    eFileAttributeReadOnly = 0x20,
    eFileAttributeSystem = 0x40,
    eFileAttributeTemporary = 0x80
};

// The result of a search step. No value is zero.
enum eFindResult
{
    eFindEntry = 1,    // an entry was found, and the record is filled
    eFindEnd = 2,      // no entry matches, or there is no further one
    eFindFailure = -1, // the system could not examine all entries: there may be more
};

// Describes one entry of a directory search. Times are in units of 100 nanoseconds since the start of 1601.
struct sTOVFindData
{
    unsigned long ulAttributes;           // eFileAttribute bits
    unsigned long long ullCreationTime;   // where the file system does not know it, the earliest time that is known
    unsigned long long ullLastAccessTime; // the last time that it was read
    unsigned long long ullLastWriteTime;  // the last time that its contents changed
    unsigned long long ullSize;           // bytes; 0 for a directory
    char szName[260]; // padded with zeros; a name of 260 bytes or more fills it without a terminator
    char cGuard;      // always 0, so that a name of full length is still terminated
};

// Opens a file. The mode is one of the C runtime: "r", "w", "a", "r+", "w+" or "a+", then "t" or "b" if wanted, then
// "c" (a flush writes to the disk) or "n" (it does not) if wanted; the "+" may also follow "t" or "b". On Posix, these
// four letters have no effect; on Windows, "c" and "n" have none for a file that is only read. Returns the lowest free
// handle, or FILE_INVALID_HANDLE if the table is full, if the mode is any other text, or if the system cannot open the
// file. A directory is refused, and so is a read-only file if the mode allows writing.
TOV_EXPORT tHandle Open(const char* szName, const char* szMode);

// Flushes and closes the file. If the flush fails, the file stays open, its handle valid, and what could not be written
// in its buffer: a later Close writes it, or fails again. (A terminal's lines are lost.) A program that gives the file
// up takes the stream from CTOVHandleManager and closes it itself. Fails if the slot is empty.
TOV_EXPORT eFileErrorCode Close(tHandle hFile);

// These return the number of whole elements that were transferred: 0 if the slot is empty or the buffer is null. Sizes
// and counts are cut to their low 32 bits. Between reading and writing a file, the caller must call Seek or Flush. On
// Posix, a write that falls short loses nothing that was returned as written: the stream keeps it as Close does.
TOV_EXPORT unsigned long Read(tHandle hFile, void* pBuffer, long lElementSize, long lElementCount);
TOV_EXPORT unsigned long Write(tHandle hFile, const void* pBuffer, long lElementSize, long lElementCount);

// Reads at most nSize - 1 characters, up to and including the next line feed, and appends a terminator. With nSize 1,
// it stores an empty text, reads nothing and succeeds, even at the end of the file. Fails, with the buffer unchanged,
// at the end of the file, if the slot is empty, if the buffer is null, and if nSize is 0 or less. If the system reports
// an error, it fails, and the contents of the buffer are undefined.
TOV_EXPORT eFileErrorCode Gets(tHandle hFile, char* szBuffer, int nSize);

// Writes a text. Settled: the result is reversed: eFileFailure if the text was written, and eFileSuccess if it was not,
// for example because it is null. If the slot is empty, the result is eFileFailure.
TOV_EXPORT eFileErrorCode Puts(tHandle hFile, const char* szText);

// These format as TOVPlatform::TOVStringA does, and write the text. They return its number of characters, counted
// before line ends are translated, or a negative number on failure, which is -1 if the slot is empty.
TOV_EXPORT long Printf(tHandle hFile, const char* szFormat, ...);
TOV_EXPORT long Vprintf(tHandle hFile, const char* szFormat, va_list pArguments);

// This overload is chosen only if an argument is an object, and refuses to compile.
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline long Printf(tHandle, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return 0;
}

// Returns the position in bytes, or -1 if it is beyond 0x7FFFFFFF, on failure, and if the slot is empty.
TOV_EXPORT long Tell(tHandle hFile);

// Sets the position to the origin plus a signed 32-bit offset. The new position may exceed 32 bits, and may be beyond
// the file's end. If it fails, the position is unchanged.
TOV_EXPORT eFileErrorCode Seek(tHandle hFile, long lOffset, eSeekOrigin eOrigin);

// Keeps what could not be written, as Close does.
TOV_EXPORT eFileErrorCode Flush(tHandle hFile);

// Removes a file. Fails for a directory and for a read-only file.
TOV_EXPORT eFileErrorCode Delete(const char* szName);

// Returns whether a file or a directory has this name.
TOV_EXPORT bool DoesExist(const char* szName);

// Splits a path into a drive with its colon, a directory with its last separator, a name, and an extension with its
// full stop. An output may be null. The buffers hold 3, 256, 256 and 256 characters, terminators included; if any part
// does not fit, all outputs are set to "".
TOV_EXPORT void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension);

// Returns the eFileAttribute bits of a file or a directory, or 0xFFFFFFFF if it does not exist.
TOV_EXPORT unsigned long GetAttributes(const char* szName);

// Sets the attributes and returns whether that succeeded. On Posix, only the read-only bit has an effect: if it is set,
// every write permission is removed; if it is not, and nobody has write permission, the owner receives it. Windows
// receives 0 and 0xFFFFFFFF untranslated; on Posix they are read like any other value, without and with the read-only
// bit.
TOV_EXPORT bool SetAttributes(const char* szName, unsigned long ulAttributes);

// Starts a search and fills the record with the first entry that matches the pattern, ignoring case. The last component
// may contain `*` and `?`; `*.*` matches everything. On a case-sensitive system an exact match is returned first.
// Returns FILE_INVALID_HANDLE, with the record unchanged, if no entry matches, and if a component before the last one
// contains a wildcard. The caller must pass the handle to FindClose.
TOV_EXPORT tHandle FindFirst(const char* szPattern, sTOVFindData* pFindData);

// Fills the record with the next entry. Returns false if there is no further entry, if the handle is not that of a
// search, and if the directory cannot be read any further. FindNextEntry distinguishes the first case from the other
// two.
TOV_EXPORT bool FindNext(tHandle hFind, sTOVFindData* pFindData);

// These do the same as FindFirst and FindNext, and distinguish an end from a failure. FindFirstEntry stores the handle,
// which is FILE_INVALID_HANDLE unless an entry is found. The result is eFindEnd for a missing directory, a null pattern
// and a wildcard before the last component, and eFindFailure for a handle that is not that of a search. An entry that
// the system cannot examine is skipped; the search continues, and its last result is then eFindFailure instead of
// eFindEnd. The record is unchanged unless the result is eFindEntry.
TOV_EXPORT eFindResult FindFirstEntry(const char* szPattern, sTOVFindData* pFindData, tHandle* phFind);
TOV_EXPORT eFindResult FindNextEntry(tHandle hFind, sTOVFindData* pFindData);

// Ends a search. A handle that is not that of a search is ignored.
TOV_EXPORT void FindClose(tHandle hFind);

// The table of open streams. A slot is empty, which is null, or holds a stream that Open has made, and its index is the
// stream's handle. The library's own table has 1024 slots; it is made by the first file operation or by the library's
// start-up, whichever comes first.
//
// Settled: a failed check of a handle enters the lock and does not release it. The thread whose check failed continues,
// and every other thread waits for ever at its next file operation.
class TOV_EXPORT CTOVHandleManager
{
public:
    // Virtual operation. Releases the slots; streams that are still open stay open.
    virtual ~CTOVHandleManager();

    // Makes a table of empty slots, and raises the process's limit of open streams so that all slots can be used, as
    // far as the system allows it.
    explicit CTOVHandleManager(unsigned long ulMaxHandles);
    CTOVHandleManager(const CTOVHandleManager&) = delete;
    CTOVHandleManager& operator=(const CTOVHandleManager&) = delete;

    // Instance returns the table that the file functions use, and creates it if it does not exist.
    // CTOVDynamicSingleton calls CreateInstance, which returns a new table of 1024 slots.
    static CTOVHandleManager& Instance();
    static CTOVHandleManager* CreateInstance();

    // Returns the lowest free slot, or FILE_INVALID_HANDLE if there is none. The slot is not reserved.
    tHandle FindFreeHandle();

    // Finds and takes the lowest free slot in one step, so that threads that open at the same moment get different
    // slots.
    tHandle AddFile(FILE* pFile);

    // These throw unless "hHandle != FILE_INVALID_HANDLE", then unless "(0 <= hHandle) && (hHandle < m_ulMaxHandles)".
    void SetFile(tHandle hHandle, FILE* pFile);
    FILE* GetFile(tHandle hHandle);
    void ClearHandle(tHandle hHandle);

private:
    friend class CStreamUse;

    tHandle FindFreeSlot() const;
    void WaitForTable() const;
    void CheckHandle(tHandle hHandle) const;

    FILE** m_pFiles;
    CTOVCriticalSection m_oLock;
    unsigned long m_ulMaxHandles;
};
} // namespace TOVFile

namespace TOVDirectory
{
// Success is positive and there is no zero value, as in eFileErrorCode.
enum eDirectoryErrorCode
{
    eDirectorySuccess = 1,
    eDirectoryFailure = -1
};

// Creates a directory, whose parent must exist.
TOV_EXPORT eDirectoryErrorCode Create(const char* szPath);

// Removes an empty directory.
TOV_EXPORT eDirectoryErrorCode Remove(const char* szPath);

// Changes the working directory of the process.
TOV_EXPORT eDirectoryErrorCode Change(const char* szPath);

// Stores the path of the working directory. Fails if the path with its terminator needs more than nSize characters.
TOV_EXPORT eDirectoryErrorCode GetWorkingDirectory(char* szBuffer, int nSize);
} // namespace TOVDirectory
} // namespace TOVPlatform

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<TOVPlatform::TOVFile::CTOVHandleManager>;
