#include "Support/TOVBlockableThread.h"
#include "Support/TOVUnended.h"
#include "TOVProcess/TOVLockInstruments.h"

#include <TOVProcess/TOVCriticalSection.h>

#include <cstdio>
#include <type_traits>

namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;

namespace
{
TOV_PRIVATE_MEMBER(StateOf, CTOVMutex, bool, m_bMutexState)

static_assert(std::has_virtual_destructor<CTOVMutex>::value);
static_assert(std::is_same<decltype(&CTOVMutex::Lock), void (CTOVMutex::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVMutex::Unlock), void (CTOVMutex::*)() const>::value);
static_assert(std::is_same<decltype(&CTOVMutex::IsLocked), bool (CTOVMutex::*)() const>::value);
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

TEST(CTOVMutexTest, NoticesTheEndOfAnOwnerThatUsedACriticalSectionFirst)
{
    const CTOVCriticalSection oSection(0);
    const CTOVMutex oMutex;
    OnAnotherThread([&] {
        oSection.Enter();
        oSection.Leave();
        oMutex.Lock();
    });

    EXPECT_TRUE(oMutex.IsLocked());

    EXPECT_TRUE(IsLockedForOthers(oMutex.GetHandle()));
    oMutex.Unlock();
    EXPECT_FALSE(IsLockedForOthers(oMutex.GetHandle()));
}

TEST(CTOVMutexTest, CopiesItsState)
{
    CTOVMutex oMutex;
    CTOVMutex oTarget;
    const COwnHandle hOld(oTarget.GetHandle());
    for (const bool bState : {false, true})
    {
        StateOf(oMutex) = bState;
        CUnended<CTOVMutex> oCopy(oMutex);
        EXPECT_EQ(bState, StateOf(*oCopy));

        StateOf(oTarget) = !bState;
        oTarget = *oCopy;
        EXPECT_EQ(bState, StateOf(oTarget));
    }
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
