// What a backend owes to TOVPlatform/TOVFile.cpp. Not exported; names and texts are never null here.
#pragma once

#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVString.h>

#include <cstdarg>
#include <cstdio>

namespace TOVPlatform
{
namespace TOVFile
{
namespace Backend
{
// Lets the process have ulStreams streams open at once beside those that it needs elsewhere, as far as the system goes.
// Never lowers a limit.
void RaiseStreamLimit(unsigned long ulStreams);

// fopen. The mode is one that TOVFile::Open knows. Null on failure, which includes a directory and writing to a
// read-only file, also where the user's rights would allow it.
FILE* OpenStream(const char* szName, const char* szMode);

// vfprintf, giving the text that TOVStringA::VSNPrintf gives. Negative on error.
int PrintStream(FILE* pFile, const char* szFormat, va_list pArguments);

// The position with all its bits, -1 on error.
long long GetPosition(FILE* pFile);

// fseek, with the runtime's origins. On failure the position is what it was.
bool Seek(FILE* pFile, int nOffset, int nOrigin);

// Removes a file, but no directory and no read-only file.
bool Delete(const char* szName);

bool DoesExist(const char* szName);

// Any output may be null; the others hold 3, 256, 256 and 256 characters. What does not fit makes all empty.
void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension);

// Attributes as eFileAttribute bits. Of the values 0 and 0xFFFFFFFF neither is translated; the second one is the answer
// for a missing file.
unsigned long GetAttributes(const char* szName);
bool SetAttributes(const char* szName, unsigned long ulAttributes);

// A search as TOVFile.h tells it for FindFirstEntry and FindNextEntry. The handle is stored for an entry alone.
// FindNext and FindClose see neither 0 nor FILE_INVALID_HANDLE.
eFindResult FindFirst(const char* szPattern, sTOVFindData* pFindData, tHandle& hFind);
eFindResult FindNext(tHandle hFind, sTOVFindData* pFindData);
void FindClose(tHandle hFind);

// Puts an entry's name into a record.
inline void SetName(sTOVFindData& oFindData, const char* szName)
{
    TOVStringA::NCopy(oFindData.szName, szName, static_cast<int>(sizeof oFindData.szName));
    oFindData.cGuard = 0;
}
} // namespace Backend
} // namespace TOVFile

namespace TOVDirectory
{
namespace Backend
{
bool Create(const char* szPath);
bool Remove(const char* szPath);
bool Change(const char* szPath);

// False if the text with its terminator needs more than nSize characters, where nSize > 0.
bool GetWorkingDirectory(char* szBuffer, int nSize);
} // namespace Backend
} // namespace TOVDirectory
} // namespace TOVPlatform
