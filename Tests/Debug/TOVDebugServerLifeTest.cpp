// The lock, the name, copies and the end of the debug server.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVLayout.h"

#include <Debug/TOVMSDevLogger.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <type_traits>

using TOVDebug::CTOVDebugServer;
namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;

namespace
{
constexpr int FAILED_EXIT = 255; // exit(-1)

// Whether a thread other than this one gets the server's lock.
bool OthersGetTheLock(CTOVDebugServer& oServer)
{
    CBlockableThread oOther([&oServer] {
        CriticalSection::Enter(LockOf(oServer));
        CriticalSection::Leave(LockOf(oServer));
    });
    return oOther.Finishes();
}
} // namespace

TEST(CTOVDebugServerLifeTest, HoldsTableLockAndNameInThisOrder)
{
    COpenServer oServer;

    ExpectMembersInOrder(static_cast<const CTOVDebugServer&>(oServer), TableOf(oServer), LockOf(oServer),
                         NameMemberOf(oServer));
}

TEST(CTOVDebugServerLifeTest, BeginsWithAnEmptyTableALockAndAnUnknownName)
{
    COpenServer oServer;

    EXPECT_TRUE(TableOf(oServer).empty());
    EXPECT_NE(0ull, LockOf(oServer));
    EXPECT_EQ("<unknown>", std::string(NameOf(oServer).c_str()));
    EXPECT_TRUE(OthersGetTheLock(oServer));
}

TEST(CTOVDebugServerLifeTest, HasOneInstance)
{
    EXPECT_EQ(&CTOVDebugServer::Instance(), &CTOVDebugServer::Instance());
    EXPECT_NE(0ull, LockOf(CTOVDebugServer::Instance()));
}

TEST(CTOVDebugServerLifeTest, EntersItsLockRepeatedly)
{
    COpenServer oServer;
    oServer.LockLoggers();
    oServer.LockLoggers();
    CBlockableThread oOther([&] {
        oServer.LockLoggers();
        oServer.UnlockLoggers();
    });

    oServer.UnlockLoggers();
    EXPECT_TRUE(oOther.IsBlocked());

    oServer.UnlockLoggers();
    EXPECT_TRUE(oOther.Finishes());
}

TEST(CTOVDebugServerLifeTest, StartsAndClosesDownOneListenerUnlessItIsNull)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    COpenServer oServer;

    oServer.StartupLogger(&oListener);
    oServer.ClosedownLogger(&oListener);
    oServer.StartupLogger(nullptr);
    oServer.ClosedownLogger(nullptr);

    EXPECT_EQ((tRecord{"A startup", "A closedown"}), aRecord);
    EXPECT_TRUE(TableOf(oServer).empty());
}

// Settled: listeners stay in the table of a server that closed down, and its handle keeps the old value.
TEST(CTOVDebugServerLifeTest, ClosesDownItsListenersAndLeavesThemInTheTable)
{
    tRecord aRecord;
    CRecordingListener oA("A", aRecord);
    CRecordingListener oB("B", aRecord);
    COpenServer oServer;
    oServer.Register(&oA);
    oServer.Register(&oB);
    TableOf(oServer).insert(TableOf(oServer).begin(), nullptr);
    const unsigned long long hLock = LockOf(oServer);
    aRecord.clear();

    oServer.OnClosedown();

    EXPECT_EQ((tRecord{"A closedown", "B closedown"}), aRecord);
    EXPECT_EQ(3u, TableOf(oServer).size());
    EXPECT_EQ(hLock, LockOf(oServer));
    TableOf(oServer).clear();
    oServer.OnStartup();
}

TEST(CTOVDebugServerLifeTest, HoldsItsLockWhileItClosesDownAListener)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    COpenServer oServer;
    oServer.Register(&oListener);
    bool bLocked = false;
    oListener.fnOnClosedown = [&] {
        CBlockableThread oOther([&] {
            oServer.LockLoggers();
            oServer.UnlockLoggers();
        });
        bLocked = oOther.IsBlocked();
        // The other thread must be through before the lock is destroyed.
        oServer.UnlockLoggers();
        oOther.Finishes();
        oServer.LockLoggers();
    };

    oServer.OnClosedown();

    EXPECT_TRUE(bLocked);
    TableOf(oServer).clear();
    oServer.OnStartup();
}

TEST(CTOVDebugServerLifeTest, AClosedownReleasesTheLockAndAStartupMakesANewOne)
{
    COpenServer oServer;
    CAllocationCounter oCounter;

    for (int nRound = 0; nRound < 1000; ++nRound)
    {
        oServer.OnClosedown();
        oServer.OnStartup();
    }
    const long lKept = oCounter.Kept();

    EXPECT_EQ(0, lKept);
    EXPECT_NE(0ull, LockOf(oServer));
    EXPECT_TRUE(OthersGetTheLock(oServer));
}

TEST(CTOVDebugServerLifeTest, AStartupOverwritesTheLockWithoutDestroyingTheOldOne)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    COpenServer oServer;
    oServer.Register(&oListener);
    const unsigned long long hOld = LockOf(oServer);
    CriticalSection::Enter(hOld);
    aRecord.clear();

    oServer.OnStartup();

    EXPECT_NE(hOld, LockOf(oServer));
    EXPECT_NE(0ull, LockOf(oServer));
    EXPECT_TRUE(OthersGetTheLock(oServer));
    EXPECT_TRUE(aRecord.empty());
    CriticalSection::Leave(hOld);
    CriticalSection::Destroy(hOld);
}

TEST(CTOVDebugServerLifeTest, ItsDestructorClosesDownTheListenersAndReleasesEverything)
{
    tRecord aRecord;
    aRecord.reserve(16);
    CRecordingListener oA("A", aRecord);
    CRecordingListener oB("B", aRecord);
    long lKept = 1;
    {
        CAllocationCounter oCounter;
        {
            COpenServer oServer;
            oServer.Register(&oA);
            oServer.Register(&oB);
        }
        lKept = oCounter.Kept();
    }
    EXPECT_EQ((tRecord{"A startup", "B startup", "A closedown", "B closedown"}), aRecord);
    EXPECT_EQ(0, lKept);
}

TEST(CTOVDebugServerLifeTest, ACopyHasTheTableByValueTheSameLockAndTheWholeName)
{
    tRecord aRecord;
    CRecordingListener oA("A", aRecord);
    CRecordingListener oB("B", aRecord);
    COpenServer oServer;
    oServer.Register(&oA);
    oServer.SetApplicationName(std::string(256, 'n').c_str());
    aRecord.clear();

    COpenServer oCopy(oServer);
    EXPECT_EQ(TableOf(oServer), TableOf(oCopy));
    EXPECT_EQ(LockOf(oServer), LockOf(oCopy));
    EXPECT_EQ(std::string(256, 'n'), NameOf(oCopy));
    EXPECT_TRUE(aRecord.empty());

    oCopy.OnStartup(); // a lock of its own, since each of the two destroys one
    oCopy.Register(&oB);
    EXPECT_EQ(1u, TableOf(oServer).size());
}

TEST(CTOVDebugServerLifeTest, AnAssignmentTakesTableLockAndName)
{
    tRecord aRecord;
    CRecordingListener oA("A", aRecord);
    COpenServer oServer;
    oServer.Register(&oA);
    oServer.SetApplicationName("Application");
    COpenServer oTarget;
    const unsigned long long hOldLock = LockOf(oTarget);
    aRecord.clear();

    EXPECT_EQ(&oTarget, &(oTarget = oServer));

    EXPECT_EQ(TableOf(oServer), TableOf(oTarget));
    EXPECT_EQ(LockOf(oServer), LockOf(oTarget));
    EXPECT_EQ(Padded("Application"), NameOf(oTarget));
    EXPECT_TRUE(aRecord.empty());
    LockOf(oTarget) = hOldLock;
}

TEST(CTOVDebugServerLifeTest, PadsItsNameWithZeros)
{
    COpenServer oServer;
    oServer.SetApplicationName(std::string(300, 'x').c_str());

    oServer.SetApplicationName("Application");

    EXPECT_EQ(Padded("Application"), NameOf(oServer));
}

TEST(CTOVDebugServerLifeTest, KeepsExactly256CharactersOfItsName)
{
    COpenServer oServer;
    for (const std::size_t nLength : {std::size_t(254), std::size_t(255), std::size_t(256)})
    {
        oServer.SetApplicationName(std::string(nLength, 'x').c_str());
        EXPECT_EQ(Padded(std::string(nLength, 'x')), NameOf(oServer)) << nLength;
    }
    oServer.SetApplicationName((std::string(256, 'y') + "beyond").c_str());
    EXPECT_EQ(std::string(256, 'y'), NameOf(oServer));
}

TEST(CTOVDebugServerLifeTest, TakesAnEmptyNameAndIgnoresANullOne)
{
    COpenServer oServer;

    oServer.SetApplicationName("");
    EXPECT_EQ(std::string(256, '\0'), NameOf(oServer));

    oServer.SetApplicationName("Application");
    EXPECT_NO_CHECK(oServer.SetApplicationName(nullptr));
    EXPECT_EQ(Padded("Application"), NameOf(oServer));
}

TEST(CTOVDebugServerLifeTest, TellsNoListenerItsName)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    COpenServer oServer;
    oServer.Register(&oListener);
    aRecord.clear();

    oServer.SetApplicationName("Application");

    EXPECT_TRUE(aRecord.empty());
}

namespace
{
// The operations that need the lock; the listener is registered.
struct sLockUser
{
    const char* szName;
    void (*fnUse)(COpenServer* pServer, CRecordingListener& oListener);
};

const sLockUser LOCK_USERS[] = {
    {"LockLoggers", [](COpenServer* pServer, CRecordingListener&) { pServer->LockLoggers(); }},
    {"UnlockLoggers", [](COpenServer* pServer, CRecordingListener&) { pServer->UnlockLoggers(); }},
    {"Register", [](COpenServer* pServer, CRecordingListener& oListener) { pServer->Register(&oListener); }},
    {"Unregister", [](COpenServer* pServer, CRecordingListener& oListener) { pServer->Unregister(&oListener); }},
    {"OnLogV", [](COpenServer* pServer, CRecordingListener&) { pServer->OnLog("File", 1, eSeverityInfo, "text"); }},
    {"OnAssert", [](COpenServer* pServer, CRecordingListener&) { pServer->OnAssert("File", 1, "false"); }},
    {"OnPanicV",
     [](COpenServer* pServer, CRecordingListener&) { pServer->OnPanic("File", 1, eSeverityFatal, "text"); }},
    {"OnClosedown", [](COpenServer* pServer, CRecordingListener&) { pServer->OnClosedown(); }},
    {"destructor", [](COpenServer* pServer, CRecordingListener&) { delete pServer; }},
};
} // namespace

// Runs one operation of a server that has lost its lock.
TOV_CHILD(UsesAServerWithoutItsLock)
{
    tRecord& aRecord = MakeImmortal<tRecord>();
    CRecordingListener& oListener = MakeImmortal<CRecordingListener>("A", aRecord);
    std::atexit([] { std::printf("clean-up\n"); });

    COpenServer* pServer = new COpenServer;
    pServer->Register(&oListener);
    LockOf(*pServer) = 0;
    for (const sLockUser& oUser : LOCK_USERS)
    {
        if (aArguments[0] == oUser.szName)
            oUser.fnUse(pServer, oListener);
    }
    std::printf("survived\n");
}

TEST(CTOVDebugServerLifeTest, EndsTheProcessWhenItsLockIsMissing)
{
    for (const sLockUser& oUser : LOCK_USERS)
    {
        const sChildResult oResult = RunChild("UsesAServerWithoutItsLock", {oUser.szName});
        EXPECT_EQ(FAILED_EXIT, oResult.nExitCode) << oUser.szName << ": " << oResult.sOutput;
        EXPECT_EQ(std::string::npos, oResult.sOutput.find("survived")) << oUser.szName;
        EXPECT_NE(std::string::npos, oResult.sOutput.find("clean-up")) << oUser.szName;
    }
}

TEST(CTOVDebugServerLifeTest, IgnoresNullListenersAlsoWithoutItsLock)
{
    COpenServer oServer;
    const unsigned long long hLock = LockOf(oServer);
    LockOf(oServer) = 0;

    oServer.Register(nullptr);
    oServer.Unregister(nullptr);

    LockOf(oServer) = hLock;
    EXPECT_TRUE(TableOf(oServer).empty());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TOV_CHILD(MakesAServerWithoutMemoryForItsLock)
{
    alignas(COpenServer) static char s_aRoom[sizeof(COpenServer)];
    COpenServer* pServer = nullptr;
    if (aArguments[0] == "OnStartup")
        pServer = new COpenServer;

    // The clean-up of a process that ends has its memory back.
    std::atexit([] { AllocationCountsOfThisThread().bFailing = false; });
    CAllocationFailure oFailure;
    while (CriticalSection::Create(2000) != 0)
    {
        // A platform may keep some records in store.
    }
    if (pServer != nullptr)
        pServer->OnStartup();
    else
        new (s_aRoom) COpenServer;
    std::puts("survived");
}

TEST(CTOVDebugServerLifeTest, EndsTheProcessWhenThereCanBeNoLock)
{
    for (const char* szOperation : {"constructor", "OnStartup"})
    {
        const sChildResult oResult = RunChild("MakesAServerWithoutMemoryForItsLock", {szOperation});
        EXPECT_EQ(FAILED_EXIT, oResult.nExitCode) << szOperation << ": " << oResult.sOutput;
        EXPECT_EQ(std::string::npos, oResult.sOutput.find("survived")) << szOperation;
    }
}
#endif
