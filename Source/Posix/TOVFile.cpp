#include <TOVPlatform/Backend/TOVFile.h>

#include <Posix/Base/TOVStreamBuffer.h>
#include <Posix/Base/TOVStreamOwner.h>
#include <Posix/Base/TOVStreamStage.h>
#include <Posix/Files/TOVFileName.h>
#include <Posix/Files/TOVFileSearch.h>
#include <Posix/Files/TOVFileStatus.h>
#include <TOVPlatform/Backend/TOVFormat.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include <stdio.h>
#include <stdio_ext.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TOVPlatform
{
using namespace TOVFile;
using namespace TOVPosix;

namespace Backend
{
namespace File
{
namespace
{
// Sizes of the outputs of SplitPath, terminators included.
constexpr std::size_t MAX_DRIVE = 3;
constexpr std::size_t MAX_PART = 256;

// Printed texts up to here need no block from the heap.
constexpr int SHORT_TEXT = 512;

bool CopyPart(char* szOutput, const char* pBegin, const char* pEnd, std::size_t ulSize)
{
    if (szOutput == nullptr)
        return true;
    if (static_cast<std::size_t>(pEnd - pBegin) >= ulSize)
        return false;

    *std::copy(pBegin, pEnd, szOutput) = 0;
    return true;
}

// Whether it is certain that this is no directory.
bool IsNoDirectory(int nFile)
{
    // A file says how much of it is left to read, which takes half the time of its whole status. A directory does not.
    int nLeft;
    if (::ioctl(nFile, FIONREAD, &nLeft) == 0)
        return true;

    struct stat oStat;
    return ::fstat(nFile, &oStat) == 0 && !S_ISDIR(oStat.st_mode);
}

#if defined(__GLIBC__)
// Whether the buffer's rest holds so many bytes, and at least one. In a stream that is not ready to be read, the rest
// is empty or its end comes first.
bool Fits(std::size_t ulBytes, const char* pBegin, const char* pEnd)
{
    return pBegin < pEnd && ulBytes - 1 < static_cast<std::size_t>(pEnd - pBegin);
}
#endif

bool WriteHeldLocked(FILE* pFile)
{
    const CStreamLock oLock(pFile);
    return WriteHeld(*pFile);
}

// Nothing of a text is kept that the system refuses.
bool WriteText(FILE* pFile, const char* szText, std::size_t ulLength)
{
    const CStreamLock oLock(pFile);
    return ulLength == 0 || WriteAndKeep(*pFile, szText, ulLength, 1) == 1;
}
} // namespace

void PrepareStreams(unsigned long ulStreams)
{
    // The rest of the process is left as many descriptors again.
    const rlim_t ulNeeded = static_cast<rlim_t>(ulStreams) * 2;

    struct rlimit oLimit;
    if (::getrlimit(RLIMIT_NOFILE, &oLimit) == 0 && oLimit.rlim_cur < ulNeeded && oLimit.rlim_cur < oLimit.rlim_max)
    {
        oLimit.rlim_cur = oLimit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &oLimit);
    }
    CStreamOwner::Prepare();
}

FILE* OpenStream(const char* szName, const char* szMode)
{
    const CFileName oName(szName);
    const bool bUpdate = std::strchr(szMode, '+') != nullptr;
    const char szPlainMode[] = {*szMode, bUpdate ? '+' : '\0', '\0'};

    struct stat oStat;
    const bool bWrites = bUpdate || *szMode != 'r';
    if (bWrites && ::stat(oName, &oStat) == 0 && IsReadOnlyFile(oStat.st_mode))
        return nullptr;

    // The system itself refuses to open a directory for writing.
    FILE* pFile = ::fopen(oName, szPlainMode);
    if (pFile != nullptr && !bWrites && !IsNoDirectory(::fileno(pFile)))
    {
        ::fclose(pFile);
        return nullptr;
    }
    return pFile;
}

void AdmitStream(tHandle hFile)
{
    s_aStreamOwners[hFile].Admit();
}

// A stream whose bytes are staged is used with its lock, like that of several threads.
bool EnterStream(tHandle hFile)
{
    CStreamOwner& oOwner = s_aStreamOwners[hFile];
    CStreamStage& oStage = s_aStreamStages[hFile];

    const bool bEntered = oOwner.Enter();
    if (!oStage.IsInUse())
        return bEntered;

    if (bEntered)
        oOwner.Leave();
    oStage.Reveal();
    return false;
}

void LeaveStream(tHandle hFile)
{
    s_aStreamOwners[hFile].Leave();
}

void ShareStream(tHandle hFile)
{
    s_aStreamStages[hFile].Share(s_aStreamOwners[hFile]);
}

std::size_t ReadStream(tHandle hFile, FILE* pFile, void* pBuffer, std::size_t ulSize, std::size_t ulCount)
{
    CStreamStage& oStage = s_aStreamStages[hFile];
    {
        const COwnerScope oOwner(s_aStreamOwners[hFile]);
        if (oOwner.HasEntered())
        {
#if defined(__GLIBC__) // the members that the macros of its public header read
            const std::size_t ulBytes = ulSize * ulCount;
            if (Fits(ulBytes, pFile->_IO_read_ptr, pFile->_IO_read_end))
            {
                CopyFew(pBuffer, pFile->_IO_read_ptr, ulBytes);
                pFile->_IO_read_ptr += ulBytes;
                return ulCount;
            }
#endif
            if (!oStage.IsInUse())
                return ::fread_unlocked(pBuffer, ulSize, ulCount, pFile);
        }
    }
    oStage.Reveal();
    return ::fread(pBuffer, ulSize, ulCount, pFile);
}

std::size_t WriteStream(tHandle hFile, FILE* pFile, const void* pBuffer, std::size_t ulSize, std::size_t ulCount)
{
    CStreamOwner& oOwner = s_aStreamOwners[hFile];
    CStreamStage& oStage = s_aStreamStages[hFile];

    const bool bEntered = oOwner.Enter();
    if (bEntered)
    {
        const bool bTaken = oStage.Take(pBuffer, ulSize * ulCount);
        oOwner.Leave();
        if (bTaken)
            return ulCount;
    }
    return oStage.Write(oOwner, bEntered, pFile, pBuffer, ulSize, ulCount);
}

bool PutText(FILE* pFile, const char* szText)
{
    return WriteText(pFile, szText, std::strlen(szText));
}

int PrintStream(FILE* pFile, const char* szFormat, va_list pArguments)
{
    char szShort[SHORT_TEXT];
    va_list pAgain;
    va_copy(pAgain, pArguments);
    int nLength = TOVPlatform::Backend::Print(szShort, SHORT_TEXT, szFormat, pAgain);
    va_end(pAgain);

    std::unique_ptr<char[]> pLong;
    if (nLength < 0) // it does not fit, or has no form
    {
        va_copy(pAgain, pArguments);
        nLength = TOVPlatform::Backend::PrintedLength(szFormat, pAgain);
        va_end(pAgain);
        if (nLength >= 0)
            pLong.reset(new (std::nothrow) char[static_cast<std::size_t>(nLength)]);
        if (pLong == nullptr)
            return -1;

        TOVPlatform::Backend::Print(pLong.get(), nLength, szFormat, pArguments);
    }

    const char* const szText = pLong != nullptr ? pLong.get() : szShort;
    const std::size_t ulLength = static_cast<std::size_t>(nLength);
    return WriteText(pFile, szText, ulLength) ? nLength : -1;
}

// Flushing a stream that has been read would move the system's position back to that of the stream, for nobody.
bool WriteOut(FILE* pFile)
{
    return WriteHeldLocked(pFile) && (::__fpending(pFile) == 0 || ::fflush(pFile) == 0);
}

bool CloseStream(FILE* pFile)
{
    ::clearerr_unlocked(pFile); // the runtime reports an earlier error as a failure to close
    return ::fclose(pFile) == 0;
}

long long GetPosition(FILE* pFile)
{
    return ::ftello(pFile);
}

long long GetSizeOfUnused(FILE* pFile)
{
    // The first use of a stream allocates its buffer. A runtime that has a buffer from the beginning gives -1.
    struct stat oStat;
    if (::__fbufsize(pFile) != 0 || ::fstat(::fileno(pFile), &oStat) != 0 || !S_ISREG(oStat.st_mode))
        return -1;
    return oStat.st_size;
}

bool Seek(FILE* pFile, int nOffset, int nOrigin)
{
    return WriteHeldLocked(pFile) && ::fseeko(pFile, nOffset, nOrigin) == 0;
}

bool Delete(const char* szName)
{
    const CFileName oName(szName);

    struct stat oStat;
    return ::lstat(oName, &oStat) == 0 && !IsReadOnlyFile(oStat.st_mode) && ::unlink(oName) == 0;
}

bool DoesExist(const char* szName)
{
    return ::access(CFileName(szName), F_OK) == 0;
}

void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension)
{
    const char* pEnd = szPath + std::strlen(szPath);
    const char* pDirectory = szPath[0] != 0 && szPath[1] == ':' ? szPath + 2 : szPath;

    const char* pFileName = pDirectory;
    const char* pExtension = pEnd;
    for (const char* p = pDirectory; p != pEnd; ++p)
    {
        if (*p == '\\' || *p == '/')
        {
            pFileName = p + 1;
            pExtension = pEnd;
        }
        else if (*p == '.')
            pExtension = p;
    }

    if (CopyPart(szDrive, szPath, pDirectory, MAX_DRIVE) && CopyPart(szDirectory, pDirectory, pFileName, MAX_PART) &&
        CopyPart(szFileName, pFileName, pExtension, MAX_PART) && CopyPart(szExtension, pExtension, pEnd, MAX_PART))
        return;

    for (char* szOutput : {szDrive, szDirectory, szFileName, szExtension})
    {
        if (szOutput != nullptr)
            *szOutput = 0;
    }
}

unsigned long GetAttributes(const char* szName)
{
    struct stat oStat;
    return ::stat(CFileName(szName), &oStat) == 0 ? ToAttributes(oStat.st_mode) : 0xFFFFFFFF;
}

bool SetAttributes(const char* szName, unsigned long ulAttributes)
{
    const CFileName oName(szName);

    struct stat oStat;
    if (::stat(oName, &oStat) != 0)
        return false;

    const mode_t ulMode = ApplyAttributes(oStat.st_mode, ulAttributes);
    return ulMode == oStat.st_mode || ::chmod(oName, ulMode & ALL_PERMISSIONS) == 0;
}

eFindResult FindFirst(const char* szPattern, sTOVFindData* pFindData, tHandle& hFind)
{
    const sTOVFindData oBefore = *pFindData;
    try
    {
        return CFileSearch::Begin(szPattern, *pFindData, hFind);
    }
    catch (const std::bad_alloc&)
    {
        *pFindData = oBefore;
        return eFindFailure;
    }
}

eFindResult FindNext(tHandle hFind, sTOVFindData* pFindData)
{
    const std::shared_ptr<CFileSearch> pSearch = CFileSearch::Find(hFind);
    return pSearch != nullptr ? pSearch->Next(*pFindData) : eFindFailure;
}

void FindClose(tHandle hFind)
{
    CFileSearch::End(hFind);
}
} // namespace File

namespace Directory
{
bool Create(const char* szPath)
{
    return ::mkdir(CFileName(szPath), S_IRWXU | S_IRWXG | S_IRWXO) == 0;
}

bool Remove(const char* szPath)
{
    return ::rmdir(CFileName(szPath)) == 0;
}

bool Change(const char* szPath)
{
    return ::chdir(CFileName(szPath)) == 0;
}

bool GetWorkingDirectory(char* szBuffer, int nSize)
{
    return ::getcwd(szBuffer, static_cast<std::size_t>(nSize)) != nullptr;
}
} // namespace Directory
} // namespace Backend
} // namespace TOVPlatform
