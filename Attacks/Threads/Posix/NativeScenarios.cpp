// Forks amid threads that use their own objects and each other's: in the child, what they held is free.
#include "../LoadFiles.h"
#include "../ThreadScenarios.h"

#include <TOVPlatform/TOVSynchronization.h>

#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace File = TOVPlatform::TOVFile;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;

namespace
{
constexpr unsigned int DEADLINE_SECONDS = 60;
constexpr long long USES_OF_A_RECORD = 64;

// What one thread uses nearly always alone.
struct sOwnObjects
{
    explicit sOwnObjects(const std::string& sFile) : hFile(File::Open(sFile.c_str(), "wb")) {}
    ~sOwnObjects()
    {
        CriticalSection::Destroy(hSection);
        Mutex::Destroy(hMutex);
        File::Close(hFile);
    }
    sOwnObjects(const sOwnObjects&) = delete;
    sOwnObjects& operator=(const sOwnObjects&) = delete;

    void Use(int nThread)
    {
        CriticalSection::Enter(hSection);
        ++nSectionUses;
        CriticalSection::Leave(hSection);
        Mutex::Lock(hMutex);
        ++nMutexUses;
        Mutex::Unlock(hMutex);
        if (nMutexUses % USES_OF_A_RECORD == 0)
            WriteRecord(hFile, nThread, nRecords++);
    }

    const tHandle hSection = CriticalSection::Create(0);
    const tHandle hMutex = Mutex::Create(false, nullptr);
    const tHandle hFile;
    long long nSectionUses = 0;
    long long nMutexUses = 0;
    int nRecords = 0;
};

// Returns whether the child, which has the calling thread alone, can use all that there is.
bool CanUseAll(std::vector<std::unique_ptr<sOwnObjects>>& apObjects)
{
    for (const auto& pObjects : apObjects)
    {
        CriticalSection::Enter(pObjects->hSection);
        CriticalSection::Leave(pObjects->hSection);
        tHandle hMutex = pObjects->hMutex;
        if (Event::MultipleTimedWait(&hMutex, 1, false, 0) < 0 || File::Tell(pObjects->hFile) < 0)
            return false;
        Mutex::Unlock(hMutex);
    }
    const tHandle hNew = Event::Create(false, true, nullptr);
    return hNew != 0 && Event::TimedWait(hNew, 0) && Event::Destroy(hNew);
}

bool IsRightInChild(std::vector<std::unique_ptr<sOwnObjects>>& apObjects)
{
    const pid_t nChild = ::fork();
    if (nChild == 0)
    {
        ::alarm(DEADLINE_SECONDS);
        ::_exit(CanUseAll(apObjects) ? 0 : 1);
    }
    int nStatus = -1;
    return nChild > 0 && ::waitpid(nChild, &nStatus, 0) == nChild && nStatus == 0;
}
// The first thread forks, while each of the others uses objects of its own.
void RunForks(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const CLoadFolder oFolder;
    std::vector<std::unique_ptr<sOwnObjects>> apObjects;
    for (int nThread = 1; nThread < oLoad.nThreads; ++nThread)
        apObjects.emplace_back(new sOwnObjects(oFolder.GetFile(nThread)));
    std::vector<long long> aUses(apObjects.size(), 0);
    std::atomic<bool> bOver(false);
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        const std::size_t nOwn = static_cast<std::size_t>(nThread) - 1;
        while (nThread != 0 && !bOver)
        {
            apObjects[nOwn]->Use(nThread);
            ++aUses[nOwn];
        }
        for (int nFork = 0; nThread == 0 && nFork < oLoad.nOperations; ++nFork)
        {
            const bool bRight = oWaits.Measure([&] { return IsRightInChild(apObjects); });
            oReport.Expect(bRight, "a child can use what the threads of its parent held");
        }
        bOver = bOver || nThread == 0;
    });
    for (std::size_t nOwn = 0; nOwn < apObjects.size(); ++nOwn)
    {
        oReport.ExpectEqual(aUses[nOwn], apObjects[nOwn]->nSectionUses, "uses of a critical section");
        oReport.ExpectEqual(aUses[nOwn], apObjects[nOwn]->nMutexUses, "uses of a mutex");
        const std::string sFile = oFolder.GetFile(static_cast<int>(nOwn) + 1);
        std::vector<int> aWanted(nOwn + 2, 0);
        aWanted.back() = apObjects[nOwn]->nRecords;
        apObjects[nOwn].reset();
        ExpectRecords(sFile, aWanted, oReport);
    }
}
} // namespace

const sThreadScenario NATIVE_SCENARIOS[] = {{"forks", 500, &RunForks}, {nullptr, 1, nullptr}};
