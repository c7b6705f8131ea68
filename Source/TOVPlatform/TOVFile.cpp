#include <TOVPlatform/TOVFile.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/Backend/TOVFile.h>
#include <TOVPlatform/TOVFileDiscard.h>

#include <algorithm>
#include <atomic>

// Both platforms share these functions; a failed check names the platform's source.
#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE TOV_PLATFORM_SOURCE("TOVFile")

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<TOVPlatform::TOVFile::CTOVHandleManager>;

using TOVAtomic::Load;
using TOVAtomic::Store;

namespace TOVPlatform
{
namespace TOVFile
{
// One use of the stream in a slot by the calling thread, which may use it without its lock until the use ends.
class CStreamUse
{
public:
    explicit CStreamUse(tHandle hFile)
        : m_pFile(FindStream(hFile)), m_hFile(hFile),
          m_bEntered(m_pFile != nullptr && Backend::File::EnterStream(hFile))
    {
    }

    ~CStreamUse()
    {
        if (m_bEntered)
            Backend::File::LeaveStream(m_hFile);
    }

    CStreamUse(const CStreamUse&) = delete;
    CStreamUse& operator=(const CStreamUse&) = delete;

    operator FILE*() const { return m_pFile; }

    // The stream in a slot of the library's table, or null.
    static FILE* FindStream(tHandle hFile)
    {
        const CTOVHandleManager& oManager = CTOVHandleManager::Instance();
        oManager.CheckHandle(hFile);
        return Load(oManager.m_pFiles[hFile]);
    }

    // Closes a stream, which was shared and which nobody uses any more, and empties its slot.
    static bool CloseStream(tHandle hFile, FILE* pFile)
    {
        const bool bClosed = Backend::File::CloseStream(pFile);
        Store(CTOVHandleManager::Instance().m_pFiles[hFile], static_cast<FILE*>(nullptr));
        return bClosed;
    }

private:
    FILE* const m_pFile;
    const tHandle m_hFile;
    const bool m_bEntered;
};

namespace
{
constexpr long MAX_POSITION = 0x7FFFFFFF;

// Counts are 32-bit numbers on both platforms.
std::size_t ToCount(long lCount)
{
    return static_cast<tDword>(lCount);
}

eFileErrorCode ToErrorCode(bool bSuccess)
{
    return bSuccess ? eFileSuccess : eFileFailure;
}

int ToOrigin(eSeekOrigin eOrigin)
{
    switch (eOrigin)
    {
    case eSeekOriginCurrent:
        return SEEK_CUR;
    case eSeekOriginEnd:
        return SEEK_END;
    default:
        return SEEK_SET;
    }
}

// Called before the program gets the stream of a slot, or puts its own there.
void ShareStream(const CTOVHandleManager& oManager, tHandle hFile)
{
    if (&oManager == &CTOVHandleManager::Instance())
        Backend::File::ShareStream(hFile);
}

// Moves to the next letter if the text begins with one of these.
bool PassLetter(const char*& szText, const char* szLetters)
{
    for (; *szLetters != 0; ++szLetters)
    {
        if (*szText == *szLetters)
        {
            ++szText;
            return true;
        }
    }
    return false;
}

// Whether the text is one of the modes that TOVFile.h describes. Runtimes differ in what they make of any other: some
// end the process.
bool IsMode(const char* szMode)
{
    if (szMode == nullptr || !PassLetter(szMode, "rwa"))
        return false;

    const bool bUpdate = PassLetter(szMode, "+");
    const bool bKind = PassLetter(szMode, "tb");
    if (bKind && !bUpdate)
        PassLetter(szMode, "+");
    PassLetter(szMode, "cn");
    return *szMode == 0;
}

// A stored name of full length is still terminated: its record's guard follows it.
eFindResult GuardName(eFindResult eResult, sTOVFindData* pFindData)
{
    if (eResult == eFindEntry)
        pFindData->cGuard = 0;
    return eResult;
}

bool IsSearch(tHandle hFind)
{
    return hFind != 0 && hFind != FILE_INVALID_HANDLE;
}
} // namespace

tHandle Open(const char* szName, const char* szMode)
{
    CTOVHandleManager& oManager = CTOVHandleManager::Instance();

    if (oManager.FindFreeHandle() == FILE_INVALID_HANDLE) // checked before the file system is touched
        return FILE_INVALID_HANDLE;

    FILE* pFile = szName != nullptr && IsMode(szMode) ? Backend::File::OpenStream(szName, szMode) : nullptr;
    if (pFile == nullptr)
        return FILE_INVALID_HANDLE;

    const tHandle hFile = oManager.AddFile(pFile);
    if (hFile != FILE_INVALID_HANDLE)
        Backend::File::AdmitStream(hFile);
    else // other threads have taken the last slots in the meantime
        std::fclose(pFile);
    return hFile;
}

eFileErrorCode Close(tHandle hFile)
{
    FILE* pFile = CStreamUse::FindStream(hFile);
    if (pFile == nullptr)
        return eFileFailure;

    // Settled: a failed close keeps the file open, so the flush is done by itself, before anything is freed.
    Backend::File::ShareStream(hFile);
    return ToErrorCode(Backend::File::WriteOut(pFile) && CStreamUse::CloseStream(hFile, pFile));
}

void Discard(tHandle hFile)
{
    FILE* pFile = CStreamUse::FindStream(hFile);
    if (pFile == nullptr)
        return;

    Backend::File::ShareStream(hFile);
    CStreamUse::CloseStream(hFile, pFile);
}

long GetSizeOfUnused(tHandle hFile)
{
    FILE* pFile = CStreamUse::FindStream(hFile);
    if (pFile == nullptr)
        return -1;

    const long long llSize = Backend::File::GetSizeOfUnused(pFile);
    return llSize <= MAX_POSITION ? static_cast<long>(llSize) : -1;
}

unsigned long Read(tHandle hFile, void* pBuffer, long lElementSize, long lElementCount)
{
    FILE* pFile = CStreamUse::FindStream(hFile);
    if (pFile == nullptr || pBuffer == nullptr)
        return 0;

    const std::size_t ulSize = ToCount(lElementSize);
    return static_cast<unsigned long>(Backend::File::ReadStream(hFile, pFile, pBuffer, ulSize, ToCount(lElementCount)));
}

unsigned long Write(tHandle hFile, const void* pBuffer, long lElementSize, long lElementCount)
{
    FILE* pFile = CStreamUse::FindStream(hFile);
    if (pFile == nullptr || pBuffer == nullptr)
        return 0;

    const std::size_t ulSize = ToCount(lElementSize);
    return static_cast<unsigned long>(
        Backend::File::WriteStream(hFile, pFile, pBuffer, ulSize, ToCount(lElementCount)));
}

eFileErrorCode Gets(tHandle hFile, char* szBuffer, int nSize)
{
    const CStreamUse oStream(hFile);
    if (oStream == nullptr || szBuffer == nullptr || nSize <= 0)
        return eFileFailure;

    // Runtimes differ in whether a line fits where there is room only for its terminator.
    if (nSize == 1)
    {
        *szBuffer = 0;
        return eFileSuccess;
    }

    return ToErrorCode(std::fgets(szBuffer, nSize, oStream) != nullptr);
}

eFileErrorCode Puts(tHandle hFile, const char* szText)
{
    const CStreamUse oStream(hFile);
    if (oStream == nullptr)
        return eFileFailure;

    // Settled: the result is turned around.
    return ToErrorCode(szText == nullptr || !Backend::File::PutText(oStream, szText));
}

long Printf(tHandle hFile, const char* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const long lCount = Vprintf(hFile, szFormat, pArguments);
    va_end(pArguments);
    return lCount;
}

long Vprintf(tHandle hFile, const char* szFormat, va_list pArguments)
{
    const CStreamUse oStream(hFile);
    if (oStream == nullptr || szFormat == nullptr)
        return -1;

    return Backend::File::PrintStream(oStream, szFormat, pArguments);
}

long Tell(tHandle hFile)
{
    const CStreamUse oStream(hFile);
    if (oStream == nullptr)
        return -1;

    const long long llPosition = Backend::File::GetPosition(oStream);
    return llPosition <= MAX_POSITION ? static_cast<long>(llPosition) : -1;
}

eFileErrorCode Seek(tHandle hFile, long lOffset, eSeekOrigin eOrigin)
{
    const CStreamUse oStream(hFile);
    if (oStream == nullptr)
        return eFileFailure;

    return ToErrorCode(Backend::File::Seek(oStream, static_cast<int>(lOffset), ToOrigin(eOrigin)));
}

eFileErrorCode Flush(tHandle hFile)
{
    const CStreamUse oStream(hFile);
    return ToErrorCode(oStream != nullptr && Backend::File::WriteOut(oStream) && std::fflush(oStream) == 0);
}

eFileErrorCode Delete(const char* szName)
{
    return ToErrorCode(szName != nullptr && Backend::File::Delete(szName));
}

bool DoesExist(const char* szName)
{
    return szName != nullptr && Backend::File::DoesExist(szName);
}

void SplitPath(const char* szPath, char* szDrive, char* szDirectory, char* szFileName, char* szExtension)
{
    Backend::File::SplitPath(szPath != nullptr ? szPath : "", szDrive, szDirectory, szFileName, szExtension);
}

unsigned long GetAttributes(const char* szName)
{
    return szName != nullptr ? Backend::File::GetAttributes(szName) : 0xFFFFFFFF;
}

bool SetAttributes(const char* szName, unsigned long ulAttributes)
{
    return szName != nullptr && Backend::File::SetAttributes(szName, ulAttributes);
}

tHandle FindFirst(const char* szPattern, sTOVFindData* pFindData)
{
    tHandle hFind;
    FindFirstEntry(szPattern, pFindData, &hFind);
    return hFind;
}

bool FindNext(tHandle hFind, sTOVFindData* pFindData)
{
    return FindNextEntry(hFind, pFindData) == eFindEntry;
}

eFindResult FindFirstEntry(const char* szPattern, sTOVFindData* pFindData, tHandle* phFind)
{
    *phFind = FILE_INVALID_HANDLE;
    if (szPattern == nullptr)
        return eFindEnd;

    return GuardName(Backend::File::FindFirst(szPattern, pFindData, *phFind), pFindData);
}

eFindResult FindNextEntry(tHandle hFind, sTOVFindData* pFindData)
{
    if (!IsSearch(hFind))
        return eFindFailure;

    return GuardName(Backend::File::FindNext(hFind, pFindData), pFindData);
}

void FindClose(tHandle hFind)
{
    if (IsSearch(hFind))
        Backend::File::FindClose(hFind);
}

namespace
{
// The slots of the first table of the usual size, which is that of the process, and never another one's. A program that
// opens no file does not touch their pages.
FILE* s_apSlots[Backend::File::MAX_HANDLES + 1];
std::atomic<bool> s_bSlotsTaken(false);

FILE** TakeSlots(unsigned long ulMaxHandles)
{
    if (ulMaxHandles == Backend::File::MAX_HANDLES && !s_bSlotsTaken.exchange(true))
        return s_apSlots;
    return new FILE*[ulMaxHandles + std::size_t(1)]();
}
} // namespace

// The slot after the last one is a mark, which is not null while a failed check keeps the lock entered. All slots are
// read and written as atomics, so that a look at the table needs no lock.
CTOVHandleManager::CTOVHandleManager(unsigned long ulMaxHandles) : m_pFiles(nullptr), m_oLock(2000), m_ulMaxHandles(0)
{
    m_pFiles = TakeSlots(ulMaxHandles);
    m_ulMaxHandles = ulMaxHandles;
    Backend::File::PrepareStreams(ulMaxHandles);
}

CTOVHandleManager::~CTOVHandleManager()
{
    if (m_pFiles != s_apSlots)
        delete[] m_pFiles;
}

CTOVHandleManager& CTOVHandleManager::Instance()
{
    return CTOVDynamicSingleton<CTOVHandleManager>::GetInstance();
}

CTOVHandleManager* CTOVHandleManager::CreateInstance()
{
    return new CTOVHandleManager(Backend::File::MAX_HANDLES);
}

tHandle CTOVHandleManager::FindFreeHandle()
{
    WaitForTable();
    return FindFreeSlot();
}

tHandle CTOVHandleManager::AddFile(FILE* pFile)
{
    m_oLock.Enter();
    const tHandle hFree = FindFreeSlot();
    if (hFree != FILE_INVALID_HANDLE)
    {
        ShareStream(*this, hFree);
        Store(m_pFiles[hFree], pFile);
    }
    m_oLock.Leave();
    return hFree;
}

tHandle CTOVHandleManager::FindFreeSlot() const
{
    FILE** pEnd = m_pFiles + m_ulMaxHandles;
    FILE** pFree = std::find_if(m_pFiles, pEnd, [](FILE*& pSlot) { return Load(pSlot) == nullptr; });
    return pFree != pEnd ? static_cast<tHandle>(pFree - m_pFiles) : FILE_INVALID_HANDLE;
}

// A thread that finds the mark enters the lock, and so waits for the thread whose check failed.
void CTOVHandleManager::WaitForTable() const
{
    if (Load(m_pFiles[m_ulMaxHandles]) == nullptr)
        return;
    m_oLock.Enter();
    m_oLock.Leave();
}

void CTOVHandleManager::CheckHandle(tHandle hHandle) const
{
    WaitForTable();
    if (hHandle < m_ulMaxHandles)
        return;

    m_oLock.Enter();                         // Settled: a failed check leaves the lock entered.
    Store(m_pFiles[m_ulMaxHandles], stderr); // any stream will do
    TOV_ASSERT(hHandle != FILE_INVALID_HANDLE);
    TOV_ASSERT_TEXT(hHandle < m_ulMaxHandles, "(0 <= hHandle) && (hHandle < m_ulMaxHandles)");
}

void CTOVHandleManager::SetFile(tHandle hHandle, FILE* pFile)
{
    CheckHandle(hHandle);
    ShareStream(*this, hHandle);
    Store(m_pFiles[hHandle], pFile);
}

FILE* CTOVHandleManager::GetFile(tHandle hHandle)
{
    CheckHandle(hHandle);
    ShareStream(*this, hHandle);
    return Load(m_pFiles[hHandle]);
}

void CTOVHandleManager::ClearHandle(tHandle hHandle)
{
    SetFile(hHandle, nullptr);
}
} // namespace TOVFile

namespace TOVDirectory
{
namespace
{
eDirectoryErrorCode ToErrorCode(bool bSuccess)
{
    return bSuccess ? eDirectorySuccess : eDirectoryFailure;
}
} // namespace

eDirectoryErrorCode Create(const char* szPath)
{
    return ToErrorCode(szPath != nullptr && Backend::Directory::Create(szPath));
}

eDirectoryErrorCode Remove(const char* szPath)
{
    return ToErrorCode(szPath != nullptr && Backend::Directory::Remove(szPath));
}

eDirectoryErrorCode Change(const char* szPath)
{
    return ToErrorCode(szPath != nullptr && Backend::Directory::Change(szPath));
}

eDirectoryErrorCode GetWorkingDirectory(char* szBuffer, int nSize)
{
    return ToErrorCode(szBuffer != nullptr && nSize > 0 && Backend::Directory::GetWorkingDirectory(szBuffer, nSize));
}
} // namespace TOVDirectory
} // namespace TOVPlatform
