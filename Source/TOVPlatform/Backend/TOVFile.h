#pragma once

#include <TOVPlatform/TOVFile.h>

#include <cstdarg>
#include <cstdio>

namespace TOVPlatform
{
// What a port owes to the files, directories and searches of TOVPlatform/TOVFile.h. Nothing here is exported.
//
// A bool is true for success. Names, texts, modes and records are never null, and handles have been checked: a stream
// is an open one, and no search has the handle 0 or FILE_INVALID_HANDLE. A name is the caller's; on a system with other
// names than Windows the port translates it. No function logs or checks.
//
// Threads: any, for all functions. One stream and one search are used by one thread at a time.
namespace Backend
{
namespace File
{
// Lets the process have ulStreams streams open at once, besides those that it needs elsewhere, as far as the system
// allows it. A limit is never lowered.
void RaiseStreamLimit(unsigned long ulStreams);

// Opens a stream by one of the modes that TOVFile::Open knows. Returns null on failure. A directory is refused, and so
// is a read-only file that is to be written, even where the user's rights would allow it.
FILE* OpenStream(const char* szName, const char* szMode);

// Writes the text that TOVStringA::VSNPrintf makes. Returns its length in characters, negative on error.
int PrintStream(FILE* pFile, const char* szFormat, va_list pArguments);

// The position in bytes with all its bits, -1 on error.
long long GetPosition(FILE* pFile);

// Moves by an offset in bytes from one of the runtime's origins. A failure leaves the position as it was.
bool Seek(FILE* pFile, int nOffset, int nOrigin);

// Removes a file; refuses a directory and a read-only file.
bool Delete(const char* szName);

// Whether a file or a directory has this name.
bool DoesExist(const char* szName);

// Outputs may be null. The buffers hold 3, 256, 256 and 256 characters; if any part does not fit, all are set to "".
void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension);

// Attributes are eFileAttribute bits. 0xFFFFFFFF is the answer for a missing file; neither this value nor 0 is
// translated.
unsigned long GetAttributes(const char* szName);
bool SetAttributes(const char* szName, unsigned long ulAttributes);

// Search as TOVFile.h describes it for FindFirstEntry and FindNextEntry. Only for an entry is the handle stored and the
// record filled, except for its guard; the name is cut to the record's size or padded with zeros.
TOVFile::eFindResult FindFirst(const char* szPattern, TOVFile::sTOVFindData* pFindData, tHandle& hFind);
TOVFile::eFindResult FindNext(tHandle hFind, TOVFile::sTOVFindData* pFindData);
void FindClose(tHandle hFind);
} // namespace File

namespace Directory
{
// Creates one level.
bool Create(const char* szPath);

// Removes an empty directory.
bool Remove(const char* szPath);

// Changes the working directory of the process.
bool Change(const char* szPath);

// Fails if the text with its terminator needs more than nSize characters, where nSize > 0.
bool GetWorkingDirectory(char* szBuffer, int nSize);
} // namespace Directory
} // namespace Backend
} // namespace TOVPlatform
