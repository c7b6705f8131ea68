// No handle is given to two threads, none finds the object of another, and a name is one object for all.
#include "LoadFiles.h"
#include "ThreadScenarios.h"

#include <TOVPlatform/TOVSynchronization.h>

#include <cstdio>
#include <vector>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace File = TOVPlatform::TOVFile;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;

namespace
{
constexpr int HANDLES_OF_A_THREAD = 4;
} // namespace

// Threads take slots of one table of streams, and give them back.
void RunFileTable(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const std::size_t nSlots = static_cast<std::size_t>(oLoad.nThreads * HANDLES_OF_A_THREAD);
    File::CTOVHandleManager oTable(static_cast<unsigned long>(nSlots));
    std::vector<std::atomic<int>> aOwners(nSlots); // the number of the thread that has the slot, from 1 on
    std::vector<char> aStreams(static_cast<std::size_t>(oLoad.nThreads));
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        // The table keeps addresses, and does not look at what is there.
        FILE* const pStream = reinterpret_cast<FILE*>(&aStreams[static_cast<std::size_t>(nThread)]);
        std::vector<tHandle> aHandles;
        const auto GiveBack = [&] {
            for (const tHandle hSlot : aHandles)
            {
                oReport.Expect(oTable.GetFile(hSlot) == pStream, "a slot keeps its stream");
                oReport.ExpectEqual(nThread + 1, aOwners[static_cast<std::size_t>(hSlot)].exchange(0),
                                    "owner of a slot");
                oTable.ClearHandle(hSlot);
            }
            aHandles.clear();
        };
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const tHandle hSlot = oWaits.Measure([&] { return oTable.AddFile(pStream); });
            if (hSlot >= nSlots)
                return oReport.Expect(false, "there is a slot for everybody");
            oReport.ExpectEqual(0, aOwners[static_cast<std::size_t>(hSlot)].exchange(nThread + 1),
                                "owner of a free slot");
            aHandles.push_back(hSlot);
            if (aHandles.size() == HANDLES_OF_A_THREAD)
                GiveBack();
        }
        GiveBack();
    });
    oReport.ExpectEqual(0, static_cast<long long>(oTable.FindFreeHandle()), "lowest free slot");
}

// Threads open files of their own, and write into one that they share.
void RunFiles(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    const CLoadFolder oFolder;
    const tHandle hShared = File::Open(oFolder.GetFile(-1).c_str(), "wb");
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        const std::string sOwn = oFolder.GetFile(nThread);
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const tHandle hOwn = oWaits.Measure([&] { return File::Open(sOwn.c_str(), "w+b"); });
            oReport.Expect(hOwn != FILE_INVALID_HANDLE && WriteRecord(hOwn, nThread, nTurn), "a file is written");
            oReport.Expect(WriteRecord(hShared, nThread, nTurn), "the shared file is written");
            sLoadRecord oRead = {};
            oReport.Expect(File::Seek(hOwn, 0, File::eSeekOriginStart) == File::eFileSuccess &&
                               File::Read(hOwn, &oRead, sizeof oRead, 1) == 1,
                           "a file is read");
            oReport.ExpectEqual(nThread, oRead.nThread, "writer of a file");
            oReport.ExpectEqual(nTurn, oRead.nNumber, "what a file holds");
            oReport.Expect(File::Close(hOwn) == File::eFileSuccess, "a file is closed");
        }
    });
    oReport.Expect(File::Close(hShared) == File::eFileSuccess, "the shared file is closed");
    ExpectRecords(oFolder.GetFile(-1), std::vector<int>(static_cast<std::size_t>(oLoad.nThreads), oLoad.nOperations),
                  oReport);
}

// Threads make objects and destroy them. A handle that has been closed is refused, whoever has its place by now.
void RunObjectHandles(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    RunThreads(oLoad, oReport, [&](int, CWaits& oWaits) {
        tHandle hOld = 0;
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const long lCount = nTurn % 100 + 1;
            const tHandle hNew = oWaits.Measure([&] { return Semaphore::Create(lCount, lCount + 1, nullptr); });
            oReport.Expect(hNew != 0, "an object is created");
            oReport.ExpectEqual(lCount, Semaphore::Unlock(hNew, 1), "units of one's own semaphore");
#if !TOV_SYSTEM_WINDOWS
            // Windows gives the value of a closed handle to the next object.
            oReport.ExpectEqual(0, Semaphore::Unlock(hOld, 1), "units of a closed handle");
            oReport.Expect(!Semaphore::Destroy(hOld), "a closed handle is not closed again");
#else
            static_cast<void>(hOld);
#endif
            oReport.Expect(Semaphore::TryLock(hNew, 0), "one's own semaphore has units");
            oReport.Expect(Semaphore::Destroy(hNew), "an object is destroyed");
            hOld = hNew;
        }
    });
}

// Threads open the objects of a few names, use them and close them. An object lasts as long as anybody has it open, so
// that one thread, which keeps all of them open, makes them last.
void RunNamedObjects(const sThreadLoad& oLoad, CThreadReport& oReport)
{
    constexpr int NAMES = 3;
    const std::string sName = MakeUniqueName();
    std::vector<std::string> aNames;
    std::vector<tHandle> aKept;
    for (int nName = 0; nName < NAMES; ++nName)
    {
        aNames.push_back(sName + '-' + std::to_string(nName));
        aKept.push_back(Mutex::Create(false, aNames.back().c_str()));
    }
    long long allUses[NAMES] = {}; // each under the mutex of its name
    RunThreads(oLoad, oReport, [&](int nThread, CWaits& oWaits) {
        const std::string sOwn = sName + "-own-" + std::to_string(nThread);
        for (int nTurn = 0; nTurn < oLoad.nOperations; ++nTurn)
        {
            const int nName = (nTurn + nThread) % NAMES;
            const tHandle hMutex = Mutex::Create(false, aNames[static_cast<std::size_t>(nName)].c_str());
            oReport.Expect(hMutex != 0, "a named mutex is opened");
            oWaits.Measure([&] { Mutex::Lock(hMutex); });
            ++allUses[nName];
            Mutex::Unlock(hMutex);
            oReport.Expect(Mutex::Destroy(hMutex), "a named mutex is closed");

            // Nobody else has this one, so that it is a new one each time.
            if (nTurn % 4 != 0)
                continue;
            const tHandle hOwn = Event::Create(false, true, sOwn.c_str());
            const tHandle hSame = Event::Create(false, true, sOwn.c_str());
            oReport.Expect(Event::TimedWait(hSame, 0) && !Event::TimedWait(hOwn, 0), "one name is one event");
            Event::Destroy(hOwn);
            Event::Destroy(hSame);
        }
    });
    long long llSum = 0;
    for (int nName = 0; nName < NAMES; ++nName)
    {
        llSum += allUses[nName];
        Mutex::Destroy(aKept[static_cast<std::size_t>(nName)]);
    }
    oReport.ExpectEqual(1LL * oLoad.nThreads * oLoad.nOperations, llSum, "uses of all names");
}
