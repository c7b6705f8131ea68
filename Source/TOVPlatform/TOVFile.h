// Files, directories, attributes and searches of the system.
#pragma once

#include <Debug/TOVBase.h>
#include <Debug/TOVFormatCheck.h>
#include <TOVDesignPatterns/TOVDynamicSingleton.h>
#include <TOVProcess/TOVCriticalSection.h>

#include <cstdarg>
#include <cstdio>

// No file, no search: all 64 bits set.
#define FILE_INVALID_HANDLE 0xFFFFFFFFFFFFFFFFULL

namespace TOVPlatform
{
// Files are the runtime's buffered streams, named by handles; directories, attributes and searches are the system's.
//
// A file handle is an index into one table of 1024 open streams, so 0 is a valid handle. All functions report by their
// result alone: nothing is logged or raised, apart from the checks on a handle in CTOVHandleManager. A null name fails
// like the name of a missing file.
//
// Any thread may use any function. One file belongs to one thread at a time: the table's lock covers the look-up of a
// handle, not the work on its stream.
//
// On Posix, a name that exists as it stands is used as it stands; otherwise its backslashes are read as slashes.
namespace TOVFile
{
// Success is positive and there is no zero value: a test for zero is always wrong.
enum eFileErrorCode
{
    eFileSuccess = 1,
    eFileFailure = -1
};

// Any other value counts as the start.
enum eSeekOrigin : int
{
    eSeekOriginStart = 0,
    eSeekOriginCurrent = 1,
    eSeekOriginEnd = 2
};

// Attributes of a file, a bit set. Windows has all of them. Posix has directory, read-only and, for a file that has
// neither, normal; the others are dropped on reading and ignored on writing, and a leading full stop hides nothing.
// A name there that is neither file nor directory (a device, a pipe, a link to nothing) has no attributes.
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

// The result of a step of a search. There is no zero value here either.
enum eFindResult
{
    eFindEntry = 1,    // an entry was found, and the record is filled
    eFindEnd = 2,      // there is no such entry, or no further one
    eFindFailure = -1, // the system could not look at all entries: there may be more
};

// One entry of a directory search. Times are ticks of 100 nanoseconds since the start of 1601.
struct sTOVFindData
{
    unsigned long ulAttributes; // eFileAttribute bits
    unsigned long long ullCreationTime;
    unsigned long long ullLastAccessTime;
    unsigned long long ullLastWriteTime;
    unsigned long long ullSize; // bytes; 0 for a directory
    char szName[260];           // padded with zeros; a name of 260 bytes or more fills it without a terminator
    char cGuard;                // always 0, so that a name of full length is still terminated
};

// Opens a file by the runtime's mode text: "r", "w", "a", "r+", "w+" or "a+", then "t" or "b", then "c" (commit on
// flush) or "n" (no commit); the "+" may also follow "t" or "b". Posix has one kind of file and no commit: there these
// four letters change nothing, and on Windows "c" and "n" change nothing for a file that is only read. Returns the
// lowest free handle, or FILE_INVALID_HANDLE when the table is full, the mode is any other text, or the system refuses.
// A directory is refused, and so is a read-only file that is to be written.
TOV_EXPORT tHandle Open(const char* szName, const char* szMode);

// Flushes and closes. A failed flush leaves the file open and its handle valid. The data that it could not write may be
// lost: the runtime of Linux drops it, so that a second close succeeds without it. Fails for an empty slot.
TOV_EXPORT eFileErrorCode Close(tHandle hFile);

// Return the number of whole elements moved, 0 for an empty slot and for a null buffer. Sizes and counts are 32-bit
// numbers. Between reading and writing one file the caller has to call Seek or Flush.
TOV_EXPORT unsigned long Read(tHandle hFile, void* pBuffer, long lElementSize, long lElementCount);
TOV_EXPORT unsigned long Write(tHandle hFile, const void* pBuffer, long lElementSize, long lElementCount);

// Reads a line with its line feed, at most nSize - 1 characters, and terminates it. A size of 1 has room for the
// terminator only: it gives an empty text and success, and reads nothing, even at the end of the file. Fails, with the
// buffer unchanged, at the end of the file, for an empty slot, for a null buffer and for a size of 0 or less; fails,
// with undefined contents of the buffer, for an error of the system.
TOV_EXPORT eFileErrorCode Gets(tHandle hFile, char* szBuffer, int nSize);

// Writes a text. Settled: the result is the opposite of what happened, eFileFailure for a text that was written and
// eFileSuccess for one that could not be, such as a null text. An empty slot gives eFileFailure.
TOV_EXPORT eFileErrorCode Puts(tHandle hFile, const char* szText);

// Format as TOVPlatform::TOVStringA does, and write. Return the count of characters before any translation of line
// ends; a negative value on error, -1 for an empty slot.
TOV_EXPORT long Printf(tHandle hFile, const char* szFormat, ...);
TOV_EXPORT long Vprintf(tHandle hFile, const char* szFormat, va_list pArguments);

// This overload does not compile: it catches an object among the arguments.
template<class... TArguments, TOVDebug::tRefusal<TArguments...> = 0>
inline long Printf(tHandle, const char*, const TArguments&...)
{
    TOV_REFUSE_OBJECTS(TArguments);
    return 0;
}

// The position in bytes, in 32 bits only: -1 beyond 0x7FFFFFFF, on error and for an empty slot.
TOV_EXPORT long Tell(tHandle hFile);

// Moves by an offset of 32 bits from the origin. The new position may exceed 32 bits, and may lie beyond the file's
// end. A failure leaves the position as it was.
TOV_EXPORT eFileErrorCode Seek(tHandle hFile, long lOffset, eSeekOrigin eOrigin);

TOV_EXPORT eFileErrorCode Flush(tHandle hFile);

// Removes a file; refuses a directory and a read-only file.
TOV_EXPORT eFileErrorCode Delete(const char* szName);

// Whether a file or a directory has this name.
TOV_EXPORT bool DoesExist(const char* szName);

// Splits into a drive with its colon, a directory with its last separator, a name, and an extension with its full
// stop. Outputs may be null. The buffers hold 3, 256, 256 and 256 characters; if any part does not fit, all are set to
// "".
TOV_EXPORT void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension);

// The eFileAttribute bits of a name, or 0xFFFFFFFF if there is no such file.
TOV_EXPORT unsigned long GetAttributes(const char* szName);

// Posix has only read-only: it takes every write permission away, and its absence gives the owner's back if nobody has
// one. 0 and 0xFFFFFFFF reach Windows unchanged; on Posix 0 is without read-only, and 0xFFFFFFFF with it.
TOV_EXPORT bool SetAttributes(const char* szName, unsigned long ulAttributes);

// Starts a search and fills the record with the first entry that matches. Case does not count; the last component may
// have `*` and `?`, and `*.*` is everything. On a case-sensitive system an exact match is returned first. Returns
// FILE_INVALID_HANDLE, and leaves the record unchanged, if there is no such entry or a wildcard stands before the last
// component. The caller has to pass the handle to FindClose.
TOV_EXPORT tHandle FindFirst(const char* szPattern, sTOVFindData* pFindData);

// Fills the record with the next entry. Returns false at the end, for a handle of no search, and if the directory
// cannot be read any further. FindNextEntry tells these cases apart.
TOV_EXPORT bool FindNext(tHandle hFind, sTOVFindData* pFindData);

// Do the same as FindFirst and FindNext, and tell an end from a failure. FindFirstEntry stores the handle, which is
// FILE_INVALID_HANDLE unless it finds an entry. A missing directory, a null pattern and a wildcard before the last
// component are an end. An entry that the system cannot look at is skipped; the search goes on, and ends with a failure
// instead of an end. A handle of no search is a failure. The record changes only for an entry.
TOV_EXPORT eFindResult FindFirstEntry(const char* szPattern, sTOVFindData* pFindData, tHandle* phFind);
TOV_EXPORT eFindResult FindNextEntry(tHandle hFind, sTOVFindData* pFindData);

TOV_EXPORT void FindClose(tHandle hFind);

// The table of open streams. A slot is null or holds a stream that Open made, and its index is the stream's handle.
// The library's own table has 1024 slots; the first file operation makes it, or at the latest its holder at start-up.
//
// Settled: the checks run with the lock taken. A handle that fails them leaves it taken for good; the thread whose
// check failed goes on, and every other thread waits for ever at its next file operation.
class TOV_EXPORT CTOVHandleManager
{
public:
    // Virtual operation. Releases the slots; streams that are still open stay open.
    virtual ~CTOVHandleManager();

    // Makes a table of empty slots, and lets the process open so many streams as far as the system allows it.
    explicit CTOVHandleManager(unsigned long ulMaxHandles);
    CTOVHandleManager(const CTOVHandleManager&) = delete;
    CTOVHandleManager& operator=(const CTOVHandleManager&) = delete;

    // The table that the file functions use. It is made with 1024 slots if there is none.
    static CTOVHandleManager& Instance();
    static CTOVHandleManager* CreateInstance();

    // Returns the lowest free slot, or FILE_INVALID_HANDLE if there is none. The slot is not reserved.
    tHandle FindFreeHandle();

    // Finds and takes the lowest free slot in one step, so that threads that open at the same moment get different
    // slots.
    tHandle AddFile(FILE* pFile);

    // Each of these throws unless hHandle != FILE_INVALID_HANDLE and (0 <= hHandle) && (hHandle < m_ulMaxHandles).
    void SetFile(tHandle hHandle, FILE* pFile);
    FILE* GetFile(tHandle hHandle);
    void ClearHandle(tHandle hHandle);

private:
    tHandle FindFreeSlot() const;
    void CheckHandle(tHandle hHandle) const;

    FILE** m_pFiles;
    CTOVCriticalSection m_oLock;
    unsigned long m_ulMaxHandles;
};
} // namespace TOVFile

namespace TOVDirectory
{
// Success is positive and there is no zero value, like in eFileErrorCode.
enum eDirectoryErrorCode
{
    eDirectorySuccess = 1,
    eDirectoryFailure = -1
};

// Creates one level.
TOV_EXPORT eDirectoryErrorCode Create(const char* szPath);

// Removes an empty directory.
TOV_EXPORT eDirectoryErrorCode Remove(const char* szPath);

// Changes the working directory of the process.
TOV_EXPORT eDirectoryErrorCode Change(const char* szPath);

// Fails if the text with its terminator needs more than nSize characters.
TOV_EXPORT eDirectoryErrorCode GetWorkingDirectory(char* szBuffer, int nSize);
} // namespace TOVDirectory
} // namespace TOVPlatform

extern template class TOV_TEMPLATE_DECLARE CTOVDynamicSingleton<TOVPlatform::TOVFile::CTOVHandleManager>;
