#include "Support/TOVBlockableThread.h"
#include "Support/TOVExhaustedSystem.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVWaitInstruments.h"

#include <TOVProcess/TOVMutex.h>

#include <cstdio>
#include <new>
#include <type_traits>

namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;

namespace
{
TOV_PRIVATE_MEMBER(HandleOf, CTOVMutex, unsigned long long, m_hMutex)
TOV_PRIVATE_MEMBER(StateOf, CTOVMutex, bool, m_bMutexState)

static_assert(std::has_virtual_destructor<CTOVMutex>::value);
static_assert(std::is_same<decltype(&CTOVMutex::Lock), void (CTOVMutex::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVMutex::Unlock), void (CTOVMutex::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVMutex::IsLocked), bool (CTOVMutex::*)() const>::value);

// A mutex that has lost its handle, until the end.
class CMutexWithoutHandle : public CTOVMutex
{
public:
    CMutexWithoutHandle() : m_hKept(GetHandle()) { HandleOf(*this) = 0; }
    ~CMutexWithoutHandle() override { HandleOf(*this) = m_hKept; }

private:
    const unsigned long long m_hKept;
};

// Memory for a mutex whose destructor is called by the test.
struct sMutexStorage
{
    alignas(CTOVMutex) unsigned char aMemory[sizeof(CTOVMutex)];
};
} // namespace

TEST(CTOVMutexTest, IsFreeAtFirst)
{
    const CTOVMutex oMutex;

    EXPECT_NE(0ull, oMutex.GetHandle());
    EXPECT_FALSE(IsLockedForOthers(oMutex.GetHandle()));
}

TEST(CTOVMutexTest, KeepsAnotherThreadOutUntilItsOwnerHasUnlockedAsOftenAsItLocked)
{
    const CTOVMutex oMutex;
    oMutex.Lock();
    oMutex.Lock();
    CBlockableThread oOther([&] {
        oMutex.Lock();
        oMutex.Unlock();
    });
    oMutex.Unlock();
    EXPECT_TRUE(oOther.IsBlocked());

    oMutex.Unlock();

    EXPECT_TRUE(oOther.Finishes());
}

TEST(CTOVMutexTest, IsTakenByAskingWhetherAFreeOneIsLocked)
{
    const CTOVMutex oMutex;

    EXPECT_FALSE(oMutex.IsLocked());

    EXPECT_TRUE(IsLockedForOthers(oMutex.GetHandle()));
    oMutex.Unlock();
    EXPECT_FALSE(IsLockedForOthers(oMutex.GetHandle()));
}

TEST(CTOVMutexTest, GetsALevelMoreWhenItsOwnerAsks)
{
    const CTOVMutex oMutex;
    oMutex.Lock();

    EXPECT_FALSE(oMutex.IsLocked());

    oMutex.Unlock();
    EXPECT_TRUE(IsLockedForOthers(oMutex.GetHandle()));
    oMutex.Unlock();
    EXPECT_FALSE(IsLockedForOthers(oMutex.GetHandle()));
}

TEST(CTOVMutexTest, IsLockedForAnotherThread)
{
    const CTOVMutex oMutex;
    CWorker oOwner;
    oOwner.Do([&] { oMutex.Lock(); });

    EXPECT_TRUE(oMutex.IsLocked());
    oMutex.Unlock();
    EXPECT_TRUE(oMutex.IsLocked()) << "not unlocked from here";

    oOwner.Do([&] { oMutex.Unlock(); });
    EXPECT_FALSE(oMutex.IsLocked());
    oMutex.Unlock();
}

TEST(CTOVMutexTest, CountsAsLockedAndIsTakenWhenItsOwnerHasDied)
{
    const CTOVMutex oMutex;
    OnAnotherThread([&] { oMutex.Lock(); });

    EXPECT_TRUE(oMutex.IsLocked());

    EXPECT_TRUE(IsLockedForOthers(oMutex.GetHandle()));
    oMutex.Unlock();
    EXPECT_FALSE(IsLockedForOthers(oMutex.GetHandle()));
}

TEST(CTOVMutexTest, ProtectsAPlainNumber)
{
    const int nTurns = 2000;
    const CTOVMutex oMutex;
    int nCount = 0;
    CThreadGroup oThreads;
    oThreads.Start(4, [&](int) {
        for (int nTurn = 0; nTurn < nTurns; ++nTurn)
        {
            oMutex.Lock();
            ++nCount;
            oMutex.Unlock();
        }
    });
    oThreads.Join();

    EXPECT_EQ(4 * nTurns, nCount);
}

TEST(CTOVMutexTest, SharesItsMutexAndItsStateWithACopy)
{
    CTOVMutex oMutex;
    for (const bool bState : {false, true})
    {
        StateOf(oMutex) = bState;
        sMutexStorage oStorage;
        CTOVMutex& oCopy = *new (oStorage.aMemory) CTOVMutex(oMutex);
        EXPECT_EQ(oMutex.GetHandle(), oCopy.GetHandle());
        EXPECT_EQ(bState, StateOf(oCopy));

        oCopy.Lock();
        EXPECT_TRUE(IsLockedForOthers(oMutex.GetHandle()));
        oMutex.Unlock();
        EXPECT_FALSE(IsLockedForOthers(oMutex.GetHandle()));
    }
}

TEST(CTOVMutexTest, CanBeCopiedWithTheStateThatNobodyHasSet)
{
    const CTOVMutex oMutex;
    sMutexStorage oStorage;
    CTOVMutex& oCopy = *new (oStorage.aMemory) CTOVMutex(oMutex);
    CTOVMutex oTarget;
    const COwnHandle hOld(oTarget.GetHandle());

    oTarget = oCopy;

    EXPECT_EQ(oMutex.GetHandle(), oTarget.GetHandle());
}

TEST(CTOVMutexTest, IsClosedByTheFirstDestructorOfTwoCopies)
{
    CLogRecorder oLog;
    CTOVMutex oMutex;
    StateOf(oMutex) = false;
    {
        CTOVMutex oCopy(oMutex);
    }

    EXPECT_EQ(-1, WaitForAny({oMutex.GetHandle()}, 0));
    EXPECT_TRUE(oMutex.IsLocked()) << "a wait that failed";
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST(CTOVMutexTest, SharesWhatIsAssignedAndLeavesItsOldMutexOpen)
{
    CTOVMutex oTarget;
    const COwnHandle hOld(oTarget.GetHandle());
    CTOVMutex oSource;
    StateOf(oSource) = true;
    StateOf(oTarget) = false;

    EXPECT_EQ(&oTarget, &(oTarget = oSource));

    EXPECT_EQ(oSource.GetHandle(), oTarget.GetHandle());
    EXPECT_TRUE(StateOf(oTarget));
    EXPECT_FALSE(IsLockedForOthers(hOld)) << "still there";
}

TEST(CTOVMutexTest, ClosesItsHandleAtTheEnd)
{
    unsigned long long hMutex = 0;
    {
        const CTOVMutex oMutex;
        hMutex = oMutex.GetHandle();
    }

    EXPECT_EQ(-1, WaitForAny({hMutex}, 0));
}

TEST(CTOVMutexTest, RefusesToLockWithoutAHandle)
{
    const CMutexWithoutHandle oMutex;
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", "m_hMutex != NULL", oMutex.Lock());
}

TEST(CTOVMutexTest, RefusesToUnlockWithoutAHandle)
{
    const CMutexWithoutHandle oMutex;
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", "m_hMutex != NULL", oMutex.Unlock());
}

TEST(CTOVMutexTest, RefusesToTellWhetherItIsLockedWithoutAHandle)
{
    const CMutexWithoutHandle oMutex;
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", "m_hMutex != NULL", oMutex.IsLocked());
}

TEST(CTOVMutexTest, RefusesToGiveAHandleThatItHasNot)
{
    const CMutexWithoutHandle oMutex;
    EXPECT_CHECK_AT("TOVProcess/TOVMutex", "m_hMutex != NULL", oMutex.GetHandle());
}

TEST(CTOVMutexTest, TellsAtItsEndThatItHasNoHandle)
{
    sMutexStorage oStorage;
    CTOVMutex* pMutex = new (oStorage.aMemory) CTOVMutex;
    const COwnHandle hMutex(pMutex->GetHandle());
    HandleOf(*pMutex) = 0;

    EXPECT_TOLD_CHECK_AT("TOVProcess/TOVMutex", "m_hMutex != NULL", pMutex->~CTOVMutex());
}

namespace
{
class CThrowingListener : public TOVDebug::ITOVLogListener
{
public:
    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override {}
    void OnAssert(const char*, unsigned long, const char* szExpression) override
    {
        std::printf("told of %s\n", szExpression);
        throw 7;
    }
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}
};
} // namespace

// A listener must not throw, but the end of an object is no place for the end of the process.
TOV_CHILD(MutexEndsBeforeAThrowingListener)
{
    CThrowingListener oListener;
    TOVDebug::CTOVDebugServer::Instance().Register(&oListener);
    {
        CTOVMutex oMutex;
        Mutex::Destroy(oMutex.GetHandle());
        HandleOf(oMutex) = 0;
    }
    std::printf("went on\n");
    std::fflush(stdout);
    TOVDebug::CTOVDebugServer::Instance().Unregister(&oListener);
}

TEST(CTOVMutexTest, EndsInPeaceWhenAListenerThrowsAtItsCheck)
{
    const sChildResult oResult = RunChild("MutexEndsBeforeAThrowingListener");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_NE(std::string::npos, oResult.sOutput.find("told of m_hMutex != NULL")) << oResult.sOutput;
    EXPECT_NE(std::string::npos, oResult.sOutput.find("went on")) << oResult.sOutput;
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(CTOVMutexTest, LogsThatItCouldNotBeCreatedAndGoesOn)
{
    CQuietRecorder oLog;
    sMutexStorage oStorage;
    CTOVMutex* pMutex = nullptr;
    {
        CExhaustedSystem oNoMore;
        pMutex = new (oStorage.aMemory) CTOVMutex;
    }
    EXPECT_EQ(1, oLog.Count());
    EXPECT_STREQ("CTOVMutex::CTOVMutex(): TOVPlatform::TOVSynchronization::Mutex_Create() failed!", oLog.Text());
    EXPECT_STREQ("%s", oLog.Format());
    EXPECT_EQ(600, oLog.Severity());
    EXPECT_NE(std::string::npos, std::string(oLog.File()).find("TOVProcess/TOVMutex"));

    EXPECT_CHECK("m_hMutex != NULL", pMutex->Lock());
    EXPECT_TOLD_CHECK("m_hMutex != NULL", pMutex->~CTOVMutex());
}
#endif
