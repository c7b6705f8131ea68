// The compiler brings printing functions of its own; this line chooses those of the system runtime. It has to stand
// before the first header that includes <stdio.h>.
#define __USE_MINGW_ANSI_STDIO 0
#include <stdio.h>

#include <TOVPlatform/Backend/TOVFile.h>
#include <TOVPlatform/TOVString.h>

#include <algorithm>
#include <cstring>

#include <direct.h>
#include <io.h>
#include <stdlib.h>

#include <Windows/TOVNativeHandle.h>

namespace TOVPlatform
{
using namespace TOVFile;

namespace Backend
{
namespace File
{
namespace
{
struct sAttribute
{
    unsigned long ulOwn;
    DWORD dwNative;
};

constexpr sAttribute ATTRIBUTES[] = {
    {eFileAttributeArchive, FILE_ATTRIBUTE_ARCHIVE},     {eFileAttributeCompressed, FILE_ATTRIBUTE_COMPRESSED},
    {eFileAttributeDirectory, FILE_ATTRIBUTE_DIRECTORY}, {eFileAttributeHidden, FILE_ATTRIBUTE_HIDDEN},
    {eFileAttributeNormal, FILE_ATTRIBUTE_NORMAL},       {eFileAttributeReadOnly, FILE_ATTRIBUTE_READONLY},
    {eFileAttributeSystem, FILE_ATTRIBUTE_SYSTEM},       {eFileAttributeTemporary, FILE_ATTRIBUTE_TEMPORARY},
};

unsigned long FromNativeAttributes(DWORD dwNative)
{
    if (dwNative == INVALID_FILE_ATTRIBUTES)
        return dwNative;

    unsigned long ulOwn = 0;
    for (const sAttribute& oAttribute : ATTRIBUTES)
    {
        if ((dwNative & oAttribute.dwNative) != 0)
            ulOwn |= oAttribute.ulOwn;
    }
    return ulOwn;
}

DWORD ToNativeAttributes(unsigned long ulOwn)
{
    if (ulOwn == INVALID_FILE_ATTRIBUTES)
        return ulOwn;

    DWORD dwNative = 0;
    for (const sAttribute& oAttribute : ATTRIBUTES)
    {
        if ((ulOwn & oAttribute.ulOwn) != 0)
            dwNative |= oAttribute.dwNative;
    }
    return dwNative;
}

unsigned long long Join(DWORD dwHigh, DWORD dwLow)
{
    return static_cast<unsigned long long>(dwHigh) << 32 | dwLow;
}

// The result of a search that could not begin. The listed errors mean that nothing has such a name, or can have it.
eFindResult ResultOfFailedBegin(DWORD dwError)
{
    switch (dwError)
    {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_NO_MORE_FILES:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
        return eFindEnd;
    default:
        return eFindFailure;
    }
}

void Fill(sTOVFindData& oFindData, const WIN32_FIND_DATAA& oNative)
{
    oFindData.ulAttributes = FromNativeAttributes(oNative.dwFileAttributes);
    oFindData.ullCreationTime = Join(oNative.ftCreationTime.dwHighDateTime, oNative.ftCreationTime.dwLowDateTime);
    oFindData.ullLastAccessTime = Join(oNative.ftLastAccessTime.dwHighDateTime, oNative.ftLastAccessTime.dwLowDateTime);
    oFindData.ullLastWriteTime = Join(oNative.ftLastWriteTime.dwHighDateTime, oNative.ftLastWriteTime.dwLowDateTime);
    oFindData.ullSize = Join(oNative.nFileSizeHigh, oNative.nFileSizeLow);
    TOVStringA::NCopy(oFindData.szName, oNative.cFileName, static_cast<int>(sizeof oFindData.szName));
}

// Writes the bytes that a stream holds, and keeps those that the system refuses.
bool WriteHeld(FILE& oFile)
{
    constexpr int USER_BUFFER = 0x100; // the runtime's flag for a buffer of setvbuf
    const bool bHolds = (oFile._flag & (_IOREAD | _IOWRT)) == _IOWRT && (oFile._flag & (_IOMYBUF | USER_BUFFER)) != 0;
    if (!bHolds || oFile._ptr <= oFile._base)
        return true;

    const int nHeld = static_cast<int>(oFile._ptr - oFile._base);
    const int nWritten = std::max(_write(oFile._file, oFile._base, static_cast<unsigned int>(nHeld)), 0);
    std::memmove(oFile._base, oFile._base + nWritten, static_cast<std::size_t>(nHeld - nWritten));
    oFile._ptr -= nWritten;
    if (nWritten < nHeld)
    {
        oFile._cnt += nWritten;
        oFile._flag |= _IOERR;
        return false;
    }

    // The stream is as after a flush: it can be read next if it was opened for both.
    oFile._cnt = 0;
    if ((oFile._flag & _IORW) != 0)
        oFile._flag &= ~_IOWRT;
    return true;
}
} // namespace

void PrepareStreams(unsigned long ulStreams)
{
    // The rest of the process is left as many streams again, up to the largest limit that every version of the runtime
    // accepts.
    constexpr unsigned long MAX_STREAMS = 2048;
    const int nNeeded = static_cast<int>(ulStreams < MAX_STREAMS / 2 ? ulStreams * 2 : MAX_STREAMS);

    if (_getmaxstdio() < nNeeded)
        _setmaxstdio(nNeeded);
}

FILE* OpenStream(const char* szName, const char* szMode)
{
    // The system refuses the commit of a stream that only reads, so that each of its flushes would fail.
    const bool bReadsOnly = *szMode == 'r' && std::strchr(szMode, '+') == nullptr;
    if (!bReadsOnly)
        return fopen(szName, szMode);
    if (std::strchr(szMode, 't') != nullptr)
        return fopen(szName, "rt");
    if (std::strchr(szMode, 'b') != nullptr)
        return fopen(szName, "rb");
    return fopen(szName, "r");
}

// The runtime's locks are left in force.
void AdmitStream(tHandle /*hFile*/)
{
}

bool EnterStream(tHandle /*hFile*/)
{
    return false;
}

void LeaveStream(tHandle /*hFile*/)
{
}

void ShareStream(tHandle /*hFile*/)
{
}

std::size_t ReadStream(tHandle /*hFile*/, FILE* pFile, void* pBuffer, std::size_t ulSize, std::size_t ulCount)
{
    return fread(pBuffer, ulSize, ulCount, pFile);
}

std::size_t WriteStream(tHandle /*hFile*/, FILE* pFile, const void* pBuffer, std::size_t ulSize, std::size_t ulCount)
{
    return fwrite(pBuffer, ulSize, ulCount, pFile);
}

bool PutText(FILE* pFile, const char* szText)
{
    return fputs(szText, pFile) >= 0;
}

int PrintStream(FILE* pFile, const char* szFormat, va_list pArguments)
{
    // After an error some versions of the runtime return the count of characters that were written, and no failure.
    if (ferror(pFile))
        clearerr(pFile);
    const int nCount = vfprintf(pFile, szFormat, pArguments);
    return ferror(pFile) ? -1 : nCount;
}

// A flush can write the file to the disk even if the stream has nothing to write.
bool WriteOut(FILE* pFile)
{
    return WriteHeld(*pFile) && fflush(pFile) == 0;
}

bool CloseStream(FILE* pFile)
{
    clearerr(pFile); // some versions of the runtime report an earlier error as a failure to close
    return fclose(pFile) == 0;
}

long long GetPosition(FILE* pFile)
{
    // ftell would not do: some versions of the runtime cut the position to its 32 bits.
    fpos_t llPosition;
    return fgetpos(pFile, &llPosition) == 0 ? llPosition : -1;
}

// The runtime does not tell whether a stream has been used.
long long GetSizeOfUnused(FILE* /*pFile*/)
{
    return -1;
}

bool Seek(FILE* pFile, int nOffset, int nOrigin)
{
    fpos_t llPosition;
    const bool bKnown = fgetpos(pFile, &llPosition) == 0;
    if (fseek(pFile, nOffset, nOrigin) == 0)
        return true;

    // The runtime drops what it has read ahead before it finds out that it cannot move.
    if (bKnown)
        fsetpos(pFile, &llPosition);
    return false;
}

bool Delete(const char* szName)
{
    return _unlink(szName) == 0;
}

bool DoesExist(const char* szName)
{
    return _access(szName, 0) == 0;
}

void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension)
{
    _splitpath(szPath, szDrive, szDirectory, szFileName, szExtension);
}

unsigned long GetAttributes(const char* szName)
{
    return FromNativeAttributes(::GetFileAttributesA(szName));
}

bool SetAttributes(const char* szName, unsigned long ulAttributes)
{
    return ::SetFileAttributesA(szName, ToNativeAttributes(ulAttributes)) != FALSE;
}

eFindResult FindFirst(const char* szPattern, sTOVFindData* pFindData, tHandle& hFind)
{
    WIN32_FIND_DATAA oNative;
    const HANDLE hNative = ::FindFirstFileA(szPattern, &oNative);
    if (hNative == INVALID_HANDLE_VALUE)
        return ResultOfFailedBegin(::GetLastError());

    Fill(*pFindData, oNative);
    hFind = FromNative(hNative);
    return eFindEntry;
}

eFindResult FindNext(tHandle hFind, sTOVFindData* pFindData)
{
    WIN32_FIND_DATAA oNative;
    if (::FindNextFileA(ToNative(hFind), &oNative) == FALSE)
        return ::GetLastError() == ERROR_NO_MORE_FILES ? eFindEnd : eFindFailure;

    Fill(*pFindData, oNative);
    return eFindEntry;
}

void FindClose(tHandle hFind)
{
    ::FindClose(ToNative(hFind));
}
} // namespace File

namespace Directory
{
bool Create(const char* szPath)
{
    return _mkdir(szPath) == 0;
}

bool Remove(const char* szPath)
{
    return _rmdir(szPath) == 0;
}

bool Change(const char* szPath)
{
    return _chdir(szPath) == 0;
}

bool GetWorkingDirectory(char* szBuffer, int nSize)
{
    return _getcwd(szBuffer, nSize) != nullptr;
}
} // namespace Directory
} // namespace Backend
} // namespace TOVPlatform
