// Objects and files belong to the thread that uses them first, until another one comes, at whichever step of the first
// that happens. A process shares new objects from the beginning once that has happened ten thousand times.
#include "LoadFiles.h"
#include "ThreadScenarios.h"

#include <TOVPlatform/TOVSynchronization.h>

#include <filesystem>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace File = TOVPlatform::TOVFile;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
// A file that its first thread writes while another one comes.
struct sMovingFile
{
    tHandle hFile = FILE_INVALID_HANDLE;
    std::string sName;
    int nOwner = 0;
    int nOther = -1;
    std::atomic<int> nUsers{2};
};

constexpr int RECORDS_OF_OWNER = 20;
constexpr int RECORDS_OF_OTHER = 10;

void UseMovingFile(sMovingFile& oFile, int nThread, int nFirst, int nRecords, CThreadReport& oReport)
{
    for (int nRecord = nFirst; nRecord < nFirst + nRecords; ++nRecord)
        oReport.Expect(WriteRecord(oFile.hFile, nThread, nRecord), "a file is written");
}

void LeaveMovingFile(sMovingFile* pFile, int nThreads, CThreadReport& oReport)
{
    if (--pFile->nUsers > 0)
        return;
    oReport.Expect(File::Close(pFile->hFile) == File::eFileSuccess, "a file is closed");
    // The last thread number stands for the other one, so that a thread may also meet its own file.
    std::vector<int> aWanted(static_cast<std::size_t>(nThreads) + 1, 0);
    aWanted[static_cast<std::size_t>(pFile->nOwner)] = RECORDS_OF_OWNER;
    aWanted.back() = RECORDS_OF_OTHER;
    ExpectRecords(pFile->sName, aWanted, oReport);
    std::filesystem::remove(pFile->sName);
    delete pFile;
}
} // namespace

// Each thread opens files, of which it is the owner, and goes on writing while another thread writes as well.
void RunMovingFiles(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    constexpr int PLACES = 4;
    const CLoadFolder oFolder;
    std::atomic<sMovingFile*> apOffered[PLACES] = {};
    std::atomic<int> nFiles(0);
    const auto UseAsOther = [&](sMovingFile* pFile) {
        if (pFile == nullptr)
            return;
        UseMovingFile(*pFile, oLoad.nThreads, 0, RECORDS_OF_OTHER, oReport);
        LeaveMovingFile(pFile, oLoad.nThreads, oReport);
    };
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            sMovingFile* const pFile = new sMovingFile;
            pFile->sName = oFolder.GetFile(++nFiles);
            pFile->nOwner = nThread;
            pFile->hFile = File::Open(pFile->sName.c_str(), "wb");
            UseMovingFile(*pFile, nThread, 0, RECORDS_OF_OWNER / 4, oReport);
            sMovingFile* const pOther = apOffered[(nTurn + nThread) % PLACES].exchange(pFile);
            UseMovingFile(*pFile, nThread, RECORDS_OF_OWNER / 4, RECORDS_OF_OWNER - RECORDS_OF_OWNER / 4, oReport);
            LeaveMovingFile(pFile, oLoad.nThreads, oReport);
            oWaits.Measure([&] { UseAsOther(pOther); });
        }
    });
    for (std::atomic<sMovingFile*>& pOffered : apOffered)
        UseAsOther(pOffered);
}

namespace
{
// A lock that its first thread uses while another one comes. The number is raised under it.
struct sMovingLock
{
    tHandle hLock = 0;
    int nKind = 0;
    int nUses = 0;
    std::atomic<int> nUsers{2};
};

constexpr int USES_OF_OWNER = 12;
constexpr int USES_OF_OTHER = 6;

tHandle MakeLock(int nKind)
{
    switch (nKind)
    {
    case 0:
        return CriticalSection::Create(0);
    case 1:
        return Mutex::Create(false, nullptr);
    case 2:
        return Semaphore::Create(1, 1, nullptr);
    default:
        return Event::Create(false, true, nullptr);
    }
}

void UseMovingLock(sMovingLock& oLock, int nUses, CWaits* pWaits)
{
    const auto Lock = [&oLock] {
        switch (oLock.nKind)
        {
        case 0:
            return CriticalSection::Enter(oLock.hLock);
        case 1:
            return Mutex::Lock(oLock.hLock);
        case 2:
            return Semaphore::Lock(oLock.hLock);
        default:
            return Event::Wait(oLock.hLock);
        }
    };
    for (int nUse = 0; nUse < nUses; ++nUse)
    {
        if (pWaits != nullptr)
            pWaits->Measure(Lock);
        else
            Lock();
        ++oLock.nUses;
        switch (oLock.nKind)
        {
        case 0:
            CriticalSection::Leave(oLock.hLock);
            break;
        case 1:
            Mutex::Unlock(oLock.hLock);
            break;
        case 2:
            Semaphore::Unlock(oLock.hLock, 1);
            break;
        default:
            Event::Signal(oLock.hLock);
            break;
        }
    }
}

void LeaveMovingLock(sMovingLock* pLock, CThreadReport& oReport)
{
    if (--pLock->nUsers > 0)
        return;
    oReport.ExpectEqual(USES_OF_OWNER + USES_OF_OTHER, pLock->nUses, "uses of a lock by both threads");
    if (pLock->nKind == 0)
        CriticalSection::Destroy(pLock->hLock);
    else
        oReport.Expect(Event::Destroy(pLock->hLock), "a lock is destroyed");
    delete pLock;
}
} // namespace

// Each thread makes locks, of which it is the owner, and goes on using them while another thread comes.
void RunMovingObjects(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    constexpr int PLACES = 4;
    std::atomic<sMovingLock*> apOffered[PLACES] = {};
    const auto UseAsOther = [&](sMovingLock* pLock, CWaits* pWaits) {
        if (pLock == nullptr)
            return;
        UseMovingLock(*pLock, USES_OF_OTHER, pWaits);
        LeaveMovingLock(pLock, oReport);
    };
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            sMovingLock* const pLock = new sMovingLock;
            pLock->nKind = nTurn % 4;
            pLock->hLock = MakeLock(pLock->nKind);
            UseMovingLock(*pLock, 1, nullptr);
            sMovingLock* const pOther = apOffered[(nTurn + nThread) % PLACES].exchange(pLock);
            UseMovingLock(*pLock, USES_OF_OWNER - 1, nullptr);
            LeaveMovingLock(pLock, oReport);
            UseAsOther(pOther, &oWaits);
        }
    });
    for (std::atomic<sMovingLock*>& pOffered : apOffered)
        UseAsOther(pOffered, nullptr);
}
