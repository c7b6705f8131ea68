// The porting manual for the source TOVFile.cpp of a backend.
#pragma once

#include <TOVPlatform/TOVFile.h>

#include <cstdarg>
#include <cstdio>

namespace TOVPlatform
{
// This header declares what a port owes to the files, directories and searches of TOVPlatform/TOVFile.h: the functions
// that each backend must define. Nothing here is exported.
//
// A result of type bool is true for success. Names, texts, modes and records are never null. Handles have been checked:
// a stream is open, and the handle of a search is neither 0 nor FILE_INVALID_HANDLE. A name is passed as the caller
// wrote it; on a system whose names differ from those of Windows, the port translates it. No function logs or checks.
//
// Any thread may call any function. Several threads may use one stream; one search is used by one thread at a time.
namespace Backend
{
namespace File
{
// The slots of the library's own table.
constexpr unsigned long MAX_HANDLES = 1024;

// Called when a table is made. Raises the limit of open streams so that the process can have ulStreams of them in
// addition to those that it needs for other purposes, as far as the system allows it. A limit is never lowered.
void PrepareStreams(unsigned long ulStreams);

// Opens a stream by one of the modes that TOVFile::Open knows. Returns null on failure. A directory is refused, and so
// is a read-only file that is to be written, even where the user's rights would allow it.
FILE* OpenStream(const char* szName, const char* szMode);

// The runtime locks a stream in each of its functions. A backend may do without that as long as one thread uses the
// stream and only the library knows it. These functions say so of the stream in a slot of the library's own table:
//
//   AdmitStream   Open has put a new stream into the slot.
//   EnterStream   The calling thread begins a use, during which it calls the functions below. If the result is true, it
//                 may use the stream without its lock, and must call LeaveStream after the use. If other threads have
//                 used the stream so, this function waits until they have left it.
//   ShareStream   The program gets the stream, it is closed, or its slot is emptied. Waits in the same way. From now
//                 on, each use locks. Most slots have been shared before.
//
// A backend that leaves it to the runtime does nothing and returns false.
void AdmitStream(tHandle hFile);
bool EnterStream(tHandle hFile);
void LeaveStream(tHandle hFile);
void ShareStream(tHandle hFile);

// These are fread and fwrite for the stream in a slot. They enter and leave it themselves.
std::size_t ReadStream(tHandle hFile, FILE* pFile, void* pBuffer, std::size_t ulSize, std::size_t ulCount);
std::size_t WriteStream(tHandle hFile, FILE* pFile, const void* pBuffer, std::size_t ulSize, std::size_t ulCount);

// Writes a text, and returns whether that succeeded.
bool PutText(FILE* pFile, const char* szText);

// Writes the text that TOVStringA::VSNPrintf makes. Returns its length in characters, negative on error.
int PrintStream(FILE* pFile, const char* szFormat, va_list pArguments);

// Passes what the stream holds on to the system. Keeps in the stream what the system refuses, so that a later call can
// write it: fflush of the runtimes drops it. A stream without unwritten data may be left as it is.
bool WriteOut(FILE* pFile);

// Closes a flushed stream. Returns whether the system has closed it without a failure; one that the stream
// had earlier does not count. The runtime frees the stream in any case.
bool CloseStream(FILE* pFile);

// Returns the position in bytes, not cut to 32 bits, or -1 on error.
long long GetPosition(FILE* pFile);

// Returns the size in bytes of an ordinary file whose stream has not been read, written or moved since it was opened.
// Returns -1 for any other one, and where the system does not tell whether a stream has been used.
long long GetSizeOfUnused(FILE* pFile);

// Sets the position to an offset in bytes from SEEK_SET, SEEK_CUR or SEEK_END. If it fails, the position is unchanged.
bool Seek(FILE* pFile, int nOffset, int nOrigin);

// Removes a file. Fails for a directory and for a read-only file.
bool Delete(const char* szName);

// Returns whether a file or a directory has this name.
bool DoesExist(const char* szName);

// Splits a path as TOVFile.h describes it. An output may be null. The buffers hold 3, 256, 256 and 256 characters,
// terminators included; if any part does not fit, all outputs are set to "".
void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension);

// Attributes are eFileAttribute bits. GetAttributes returns 0xFFFFFFFF for a missing file. SetAttributes passes this
// value and 0 to the system untranslated where the system has such attributes.
unsigned long GetAttributes(const char* szName);
bool SetAttributes(const char* szName, unsigned long ulAttributes);

// These search as TOVFile.h describes it for FindFirstEntry and FindNextEntry. Only if an entry is found do they store
// the handle and fill the record, except for its guard; the name is cut to the record's size or padded with zeros.
TOVFile::eFindResult FindFirst(const char* szPattern, TOVFile::sTOVFindData* pFindData, tHandle& hFind);
TOVFile::eFindResult FindNext(tHandle hFind, TOVFile::sTOVFindData* pFindData);
void FindClose(tHandle hFind);
} // namespace File

namespace Directory
{
// Creates a directory, whose parent must exist.
bool Create(const char* szPath);

// Removes an empty directory.
bool Remove(const char* szPath);

// Changes the working directory of the process.
bool Change(const char* szPath);

// Stores the path of the working directory. Fails if the path with its terminator needs more than nSize characters.
// nSize is above 0.
bool GetWorkingDirectory(char* szBuffer, int nSize);
} // namespace Directory
} // namespace Backend
} // namespace TOVPlatform
