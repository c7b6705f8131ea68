// Whose lock a debug server destroys, and what leaves it free.
#include "Debug/TOVDebugServerFixture.h"
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVRefusal.h"

using TOVDebug::CTOVDebugServer;

namespace
{
// Blocks that a server keeps when it has come to its end after such a life: below 0 if it releases more than it took.
template<class TLive> long KeptAfter(TLive fnLive)
{
    COpenServer oOther;
    TableOf(oOther).reserve(4);
    CAllocationCounter oCounter;
    {
        COpenServer oServer;
        fnLive(oServer, oOther);
    }
    return oCounter.Kept();
}
} // namespace

TEST(CTOVDebugServerLockTest, AServerThatWasUnregisteredAsAListenerDestroysItsLockOnce)
{
    EXPECT_EQ(0, KeptAfter([](COpenServer& oServer, COpenServer& oOther) { oOther.Unregister(&oServer); }));
    EXPECT_EQ(0, KeptAfter([](COpenServer& oServer, COpenServer&) { oServer.Unregister(&oServer); }));
}

// Settled: a startup leaves the old lock alone, and a registration is one.
TEST(CTOVDebugServerLockTest, AServerThatIsAListenerKeepsTheLockThatItCameWith)
{
    const long lLock = KeptAfter([](COpenServer& oServer, COpenServer&) { oServer.OnStartup(); });
    const auto fnRegister = [](COpenServer& oServer, COpenServer& oOther) {
        oOther.Register(&oServer);
        oOther.Unregister(&oServer);
    };

    EXPECT_EQ(lLock, KeptAfter(fnRegister));
    EXPECT_EQ(lLock, KeptAfter([&](COpenServer& oServer, COpenServer& oOther) {
                  fnRegister(oServer, oOther);
                  oServer.OnClosedown();
                  oServer.OnLog("File", 1, eSeverityInfo, "text");
              }));
}

TEST(CTOVDebugServerLockTest, ACopyOfAServerThatClosedDownDestroysNothing)
{
    EXPECT_EQ(0, KeptAfter([](COpenServer& oServer, COpenServer&) {
                  oServer.OnClosedown();
                  const COpenServer oCopy(oServer);
              }));
}

TEST(CTOVDebugServerLockTest, AServerThatTakesTheTableOfOneThatClosedDownDestroysNothing)
{
    EXPECT_EQ(0, KeptAfter([](COpenServer& oServer, COpenServer&) {
                  COpenServer oTarget;
                  TOVPlatform::TOVSynchronization::CriticalSection::Destroy(LockOf(oTarget));
                  oServer.OnClosedown();
                  oTarget = oServer;
              }));
}

TEST(CTOVDebugServerLockTest, AServerThatStartsAgainDestroysItsNewLock)
{
    EXPECT_EQ(0, KeptAfter([](COpenServer& oServer, COpenServer&) {
                  for (int nRound = 0; nRound < 100; ++nRound)
                  {
                      oServer.OnClosedown();
                      oServer.OnClosedown();
                      oServer.OnStartup();
                  }
              }));
}

typedef CTOVDebugServerFixture CTOVDebugServerTableTest;

TEST_F(CTOVDebugServerTableTest, AServerInItsOwnTableIsPassedOver)
{
    m_oServer.Register(&m_oServer);
    RegisterAll();

    Log();
    EXPECT_EQ(Logged("ABC"), m_aRecord);
    EXPECT_FALSE(IsLocked());

    m_aRecord.clear();
    m_oServer.Unregister(&m_oServer);
    EXPECT_EQ((tRecord{"A closedown", "B closedown", "C closedown"}), m_aRecord);
    m_oServer.OnStartup();
    EXPECT_FALSE(IsLocked());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVDebugServerTableTest, ARegistrationWithoutMemoryLeavesTheLockFree)
{
    EXPECT_TRUE(RunsOutOfMemory([&] { m_oServer.Register(&m_oA); }));
    EXPECT_FALSE(IsLocked());
    EXPECT_TRUE(m_aRecord.empty());
    RegisterAll();
    Log();
    EXPECT_EQ(Logged("ABC"), m_aRecord);
}
#endif

// Settled: a listener must not throw, and one that does leaves the lock taken.
TEST_F(CTOVDebugServerTableTest, AListenerThatThrowsAtItsStartupLeavesTheLockTaken)
{
    m_oA.fnOnStartup = [] { throw 1; };

    EXPECT_THROW(m_oServer.Register(&m_oA), int);

    EXPECT_TRUE(IsLocked());
    m_oServer.UnlockLoggers();
}
