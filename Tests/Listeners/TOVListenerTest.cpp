// How listeners come into the server's table and out of it, also in the middle of its calls.
#include "Debug/TOVDebugInstruments.h"
#include "Listeners/ListenerInstruments.h"
#include "Support/TOVAllocationCounter.h"
#include "Support/TOVBlockableThread.h"

#include <Listeners/TOVMemoryListener.h>
#include <Listeners/TOVSeverityFilter.h>

#include <algorithm>
#include <memory>
#include <new>
#include <thread>

using namespace TOVDebug;

namespace
{
// How often the current server has a listener in its table.
long CountInTable(ITOVLogListener& oListener)
{
    const auto& aTable = TableOf(CTOVDebugServer::Instance());
    return std::count(aTable.begin(), aTable.end(), &oListener);
}

// The server would keep its lock if the listener were registered twice.
void ExpectAFreeLock()
{
    CBlockableThread oOther([] { Log(200, "of another thread"); });
    const bool bFree = oOther.Finishes();
    EXPECT_TRUE(bFree);
    if (!bFree)
        LeaveLockOf(CTOVDebugServer::Instance());
}

// A listener from outside the family, whose calls do what a test wants.
class CTOVListenerTest : public testing::Test
{
protected:
    CTOVListenerTest() : m_oOther("other", m_aRecord) { CTOVDebugServer::Instance().Register(&m_oOther); }

    ~CTOVListenerTest() override { CTOVDebugServer::Instance().Unregister(&m_oOther); }

    tRecord m_aRecord;
    CRecordingListener m_oOther;
    CTOVMemoryListener m_oMemory;
};
} // namespace

TEST_F(CTOVListenerTest, HearsNothingUntilItIsRegistered)
{
    Log(600, "before");
    m_oMemory.Register();
    Log(200, "while");
    m_oMemory.Unregister();
    Log(600, "after");

    EXPECT_EQ(tLines{"while"}, TextsOf(m_oMemory.GetLines()));
}

TEST_F(CTOVListenerTest, IsNeverInTheTableTwice)
{
    m_oMemory.Register();
    m_oMemory.Register();

    EXPECT_EQ(1, CountInTable(m_oMemory));
    ExpectAFreeLock();
}

TEST_F(CTOVListenerTest, IsNotInTheTableTwiceAfterTheServersOwnRegister)
{
    CTOVDebugServer::Instance().Register(&m_oMemory);
    m_oMemory.Register();
    m_oMemory.Register();

    EXPECT_EQ(1, CountInTable(m_oMemory));
    ExpectAFreeLock();
}

TEST_F(CTOVListenerTest, ComesBackAfterTheServersOwnUnregister)
{
    m_oMemory.Register();
    CTOVDebugServer::Instance().Unregister(&m_oMemory);
    EXPECT_EQ(0, CountInTable(m_oMemory));

    m_oMemory.Register();

    EXPECT_EQ(1, CountInTable(m_oMemory));
}

TEST_F(CTOVListenerTest, CanBeUnregisteredAtAnyTime)
{
    m_oMemory.Unregister();
    m_oMemory.Register();
    m_oMemory.Unregister();
    m_oMemory.Unregister();

    EXPECT_EQ(0, CountInTable(m_oMemory));
    EXPECT_EQ(1, CountInTable(m_oOther));
    ExpectAFreeLock();
}

TEST_F(CTOVListenerTest, UnregistersItselfAtItsEnd)
{
    for (const bool bByServer : {false, true})
    {
        CTOVMemoryListener* pMemory = new CTOVMemoryListener;
        if (bByServer)
            CTOVDebugServer::Instance().Register(pMemory);
        else
            pMemory->Register();
        const std::size_t nBefore = TableOf(CTOVDebugServer::Instance()).size();

        delete pMemory;

        EXPECT_EQ(nBefore - 1, TableOf(CTOVDebugServer::Instance()).size());
        Log(200, "after");
    }
}

TEST_F(CTOVListenerTest, CanBeRegisteredInsideACallAndHearsOfTheSameEvent)
{
    m_oOther.fnOnLog = [this] { m_oMemory.Register(); };

    Log(200, "1");
    Log(200, "2");

    EXPECT_EQ((tLines{"1", "2"}), TextsOf(m_oMemory.GetLines()));
    EXPECT_EQ(1, CountInTable(m_oMemory));
    ExpectAFreeLock();
}

TEST_F(CTOVListenerTest, RegisteringItAgainInsideACallKeepsNoEventFromOthers)
{
    CTOVMemoryListener oFirst;
    CTOVDebugServer::Instance().Unregister(&m_oOther);
    oFirst.Register();
    CTOVDebugServer::Instance().Register(&m_oOther);
    m_oMemory.Register();
    m_oOther.fnOnLog = [&] { oFirst.Register(); };

    Log(200, "1");

    EXPECT_EQ(tLines{"1"}, TextsOf(oFirst.GetLines()));
    EXPECT_EQ(tLines{"1"}, TextsOf(m_oMemory.GetLines()));
}

TEST_F(CTOVListenerTest, CanBeUnregisteredInsideACall)
{
    m_oMemory.Register();
    m_oOther.fnOnLog = [this] { m_oMemory.Unregister(); };

    Log(200, "1");
    Log(200, "2");

    EXPECT_TRUE(m_oMemory.GetLines().empty());
    EXPECT_EQ(0, CountInTable(m_oMemory));
    ExpectAFreeLock();
}

TEST_F(CTOVListenerTest, CanBeMadeAndDestroyedInsideACall)
{
    std::unique_ptr<CTOVMemoryListener> pMemory = std::make_unique<CTOVMemoryListener>();
    pMemory->Register();
    const std::size_t nBefore = TableOf(CTOVDebugServer::Instance()).size();
    m_oOther.fnOnLog = [&] { pMemory.reset(); };
    Log(200, "1");
    EXPECT_EQ(nBefore - 1, TableOf(CTOVDebugServer::Instance()).size());

    m_oOther.fnOnLog = [&] {
        pMemory = std::make_unique<CTOVMemoryListener>();
        pMemory->Register();
        m_oOther.fnOnLog = nullptr;
    };
    FailCheck("in between");
    Log(200, "2");
    EXPECT_EQ(tLines{"2"}, TextsOf(pMemory->GetLines()));
}

TEST_F(CTOVListenerTest, CanBeRegisteredAndUnregisteredInsideACallForACheckAndAPanic)
{
    m_oOther.fnOnAssert = [this] {
        m_oMemory.Register();
        m_oMemory.Unregister();
        m_oMemory.Register();
    };

    FailCheck("nCount > 0");

    EXPECT_EQ(tLines{"nCount > 0"}, TextsOf(m_oMemory.GetLines()));
    ExpectAFreeLock();
}

TEST_F(CTOVListenerTest, HearsWhatIsLoggedInsideACall)
{
    m_oMemory.Register();
    m_oOther.fnOnLog = [this] {
        m_oOther.fnOnLog = nullptr;
        Log(200, "inner");
        FailCheck("inner check");
    };

    Log(200, "outer");

    EXPECT_EQ((tLines{"inner", "inner check", "outer"}), TextsOf(m_oMemory.GetLines()));
}

TEST_F(CTOVListenerTest, CanBeRegisteredByManyThreadsAtOnce)
{
    for (int nRound = 0; nRound < 50; ++nRound)
    {
        CTOVMemoryListener oMemory;
        std::vector<std::thread> aThreads;
        for (int nThread = 0; nThread < 4; ++nThread)
            aThreads.emplace_back([&] {
                oMemory.Register();
                Log(200, "text");
            });
        for (std::thread& oThread : aThreads)
            oThread.join();
        EXPECT_EQ(1, CountInTable(oMemory));
        EXPECT_EQ(4u, oMemory.GetLines().size());
    }
    ExpectAFreeLock();
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVListenerTest, ARegistrationWithoutMemoryLeavesTheLockFree)
{
    CTOVMemoryListener oMemory;
    TableOf(CTOVDebugServer::Instance()).shrink_to_fit();
    bool bThrown = false;
    try
    {
        const CAllocationFailure oFailure;
        oMemory.Register();
    }
    catch (const std::bad_alloc&)
    {
        bThrown = true;
    }

    EXPECT_TRUE(bThrown);
    ExpectAFreeLock();
    EXPECT_EQ(0, CountInTable(oMemory));
    oMemory.Register();
    EXPECT_EQ(1, CountInTable(oMemory));
}
#endif

TEST_F(CTOVListenerTest, CanComeAndGoWhileOthersLog)
{
    std::thread oOther([] { LogFromThreads(2, 300, 200); });
    for (int nRound = 0; nRound < 300; ++nRound)
    {
        CTOVMemoryListener oMemory;
        CTOVSeverityFilter oFilter(oMemory, eSeverityTrace);
        oFilter.Register();
        oMemory.Register();
        Log(200, "mine");
        const tLines aTexts = TextsOf(oMemory.GetLines());
        EXPECT_EQ(2, std::count(aTexts.begin(), aTexts.end(), "mine"));
    }
    oOther.join();
}

// The old server closes all listeners down, and they stay in the table of the new one.
TOV_CHILD(ReplacesTheServer)
{
    CTOVMemoryListener* pMemory = new CTOVMemoryListener;
    pMemory->Register();
    COpenServer* pServer = new COpenServer;
    COpenServer::SetDebugServer(pServer);
    pServer->OnStartup();

    Log(200, "1");
    pMemory->Register();
    Log(200, "2");
    std::printf("%s, %ld in the table; ", testing::PrintToString(TextsOf(pMemory->GetLines())).c_str(),
                CountInTable(*pMemory));

    const std::size_t nBefore = TableOf(*pServer).size();
    delete pMemory;
    std::printf("%d left; ", static_cast<int>(nBefore - TableOf(*pServer).size()));
    CBlockableThread oOther([] { Log(200, "of another thread"); });
    std::printf("%s", oOther.Finishes() ? "free" : "locked");
}

TEST_F(CTOVListenerTest, SurvivesAReplacementOfTheServer)
{
    const sChildResult oResult = RunChild("ReplacesTheServer");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("{ \"1\", \"2\" }, 1 in the table; 1 left; free", oResult.sOutput);
}

TEST_F(CTOVListenerTest, KeepsNothingOfTheApplicationsName)
{
    m_oMemory.Register();
    static_cast<ITOVLogListener&>(m_oMemory).SetApplicationName("name");
    Log(200, "line");
    m_oMemory.Unregister();

    EXPECT_EQ(tLines{"line"}, TextsOf(m_oMemory.GetLines()));
}
