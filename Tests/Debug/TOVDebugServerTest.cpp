// The table of listeners, and what is handed to them.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVBlockableThread.h"

#include <algorithm>
#include <memory>
#include <thread>
#include <type_traits>

using TOVDebug::CTOVDebugServer;

namespace
{
// A server of its own with three listeners that write into one record.
class CTOVDebugServerTest : public testing::Test
{
protected:
    CTOVDebugServerTest()
        : m_oA("A", m_aRecord), m_oB("B", m_aRecord), m_oC("C", m_aRecord), m_pServer(std::make_unique<COpenServer>()),
          m_oServer(*m_pServer)
    {
    }

    void RegisterAll()
    {
        m_oServer.Register(&m_oA);
        m_oServer.Register(&m_oB);
        m_oServer.Register(&m_oC);
        m_aRecord.clear();
    }

    void Log() { m_oServer.OnLog("File", 1, eSeverityInfo, "%s", "text"); }

    // What Log makes the named listeners write.
    static tRecord Logged(const std::string& sNames)
    {
        tRecord aLogged;
        for (const char cName : sNames)
            aLogged.push_back(std::string(1, cName) + " log File(1) 200: text");
        return aLogged;
    }

    // Whether another thread has to wait for the server's lock.
    bool IsLocked()
    {
        if (m_pOther == nullptr)
            m_pOther = std::make_unique<CBlockableThread>([this] {
                m_oServer.LockLoggers();
                m_oServer.UnlockLoggers();
            });
        return m_pOther->IsBlocked();
    }

    tRecord m_aRecord;
    CRecordingListener m_oA;
    CRecordingListener m_oB;
    CRecordingListener m_oC;
    const std::unique_ptr<COpenServer> m_pServer; // goes before the listeners, since it closes them down
    COpenServer& m_oServer;
    std::unique_ptr<CBlockableThread> m_pOther; // first to go, since it uses the server
};

// Remembers the very pointers that it is given.
class CPointerListener : public CRecordingListener
{
public:
    using CRecordingListener::CRecordingListener;

    void OnLogV(const char* szFile, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list) override
    {
        pFile = szFile;
        pText = szFormat;
    }

    void OnAssert(const char* szFile, unsigned long, const char* szExpression) override
    {
        pFile = szFile;
        pText = szExpression;
    }

    void OnPanicV(const char* szFile, unsigned long, const char* szFormat, va_list) override
    {
        pFile = szFile;
        pText = szFormat;
    }

    const char* pFile = nullptr;
    const char* pText = nullptr;
};
} // namespace

TEST_F(CTOVDebugServerTest, IsAListenerWithAVirtualDestructor)
{
    EXPECT_TRUE((std::is_base_of_v<TOVDebug::ITOVLogListener, CTOVDebugServer>));
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVDebugServer>);
    EXPECT_FALSE(std::has_virtual_destructor_v<TOVDebug::ITOVLogListener>);
}

TEST_F(CTOVDebugServerTest, StartsListenersInOrderWhenTheyAreRegistered)
{
    m_oServer.Register(&m_oA);
    m_oServer.Register(&m_oB);

    EXPECT_EQ((tRecord{"A startup", "B startup"}), m_aRecord);
    EXPECT_EQ((std::vector<TOVDebug::ITOVLogListener*>{&m_oA, &m_oB}), TableOf(m_oServer));
}

TEST_F(CTOVDebugServerTest, AListenerIsInTheTableWhenItIsStarted)
{
    m_oA.fnOnStartup = [this] { Log(); };

    m_oServer.Register(&m_oA);

    EXPECT_EQ((tRecord{"A startup", "A log File(1) 200: text"}), m_aRecord);
}

TEST_F(CTOVDebugServerTest, HoldsItsLockWhileAListenerIsStarted)
{
    bool bLocked = false;
    m_oA.fnOnStartup = [&] { bLocked = IsLocked(); };

    m_oServer.Register(&m_oA);

    EXPECT_TRUE(bLocked);
    EXPECT_TRUE(m_pOther->Finishes());
}

TEST_F(CTOVDebugServerTest, IgnoresNullWithoutTakingTheLock)
{
    m_oServer.LockLoggers();
    CBlockableThread oOther([this] {
        m_oServer.Register(NULL);
        m_oServer.Unregister(NULL);
    });

    EXPECT_TRUE(oOther.Finishes());

    m_oServer.UnlockLoggers();
    EXPECT_TRUE(TableOf(m_oServer).empty());
}

TEST_F(CTOVDebugServerTest, RegistersAListenerOnce)
{
    m_oServer.Register(&m_oA);
    m_oServer.Register(&m_oA);
    Log();

    EXPECT_EQ((tRecord{"A startup", "A log File(1) 200: text"}), m_aRecord);
    EXPECT_EQ(1u, TableOf(m_oServer).size());
    m_oServer.UnlockLoggers();
}

// Settled: the early return of a second registration leaves the lock entered.
TEST_F(CTOVDebugServerTest, ASecondRegistrationLeavesTheLockEnteredOnceMore)
{
    m_oServer.Register(&m_oA);
    m_oServer.Register(&m_oA);
    EXPECT_TRUE(IsLocked());

    m_oServer.UnlockLoggers();
    EXPECT_TRUE(m_pOther->Finishes());
}

TEST_F(CTOVDebugServerTest, EveryRepeatedRegistrationEntersTheLockOnceMore)
{
    m_oServer.Register(&m_oA);
    m_oServer.Register(&m_oA);
    m_oServer.Register(&m_oA);
    m_oServer.UnlockLoggers();
    EXPECT_TRUE(IsLocked());

    m_oServer.UnlockLoggers();
    EXPECT_TRUE(m_pOther->Finishes());
}

TEST_F(CTOVDebugServerTest, AFirstRegistrationLeavesTheLockFree)
{
    RegisterAll();
    m_oServer.Unregister(&m_oB);

    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerTest, ClosesAListenerDownAndKeepsTheOrderOfTheOthers)
{
    RegisterAll();

    m_oServer.Unregister(&m_oB);
    Log();

    EXPECT_EQ((tRecord{"B closedown", "A log File(1) 200: text", "C log File(1) 200: text"}), m_aRecord);
    EXPECT_EQ((std::vector<TOVDebug::ITOVLogListener*>{&m_oA, &m_oC}), TableOf(m_oServer));
}

TEST_F(CTOVDebugServerTest, UnregistersTheFirstAndTheLast)
{
    RegisterAll();

    m_oServer.Unregister(&m_oA);
    m_oServer.Unregister(&m_oC);

    EXPECT_EQ((std::vector<TOVDebug::ITOVLogListener*>{&m_oB}), TableOf(m_oServer));
}

TEST_F(CTOVDebugServerTest, RemovesOnlyTheFirstOfTwoEntriesOfOneListener)
{
    RegisterAll();
    TableOf(m_oServer).push_back(&m_oA);

    m_oServer.Unregister(&m_oA);

    EXPECT_EQ((std::vector<TOVDebug::ITOVLogListener*>{&m_oB, &m_oC, &m_oA}), TableOf(m_oServer));
}

TEST_F(CTOVDebugServerTest, AListenerIsStillInTheTableWhenItIsClosedDown)
{
    RegisterAll();
    m_oB.fnOnClosedown = [this] { Log(); };

    m_oServer.Unregister(&m_oB);

    EXPECT_EQ((tRecord{"B closedown", "A log File(1) 200: text", "B log File(1) 200: text", "C log File(1) 200: text"}),
              m_aRecord);
}

TEST_F(CTOVDebugServerTest, HoldsItsLockWhileAListenerIsClosedDown)
{
    RegisterAll();
    bool bLocked = false;
    m_oA.fnOnClosedown = [&] { bLocked = IsLocked(); };

    m_oServer.Unregister(&m_oA);

    EXPECT_TRUE(bLocked);
    EXPECT_TRUE(m_pOther->Finishes());
}

// Settled: the call comes before the search.
TEST_F(CTOVDebugServerTest, ClosesDownAListenerThatWasNeverRegistered)
{
    m_oServer.Register(&m_oA);
    m_aRecord.clear();

    m_oServer.Unregister(&m_oB);

    EXPECT_EQ(tRecord{"B closedown"}, m_aRecord);
    EXPECT_EQ((std::vector<TOVDebug::ITOVLogListener*>{&m_oA}), TableOf(m_oServer));
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerTest, AnUnregisteredListenerCanBeRegisteredAgainAndComesLast)
{
    RegisterAll();

    m_oServer.Unregister(&m_oA);
    m_oServer.Register(&m_oA);
    m_aRecord.clear();
    Log();

    EXPECT_EQ(Logged("BCA"), m_aRecord);
}

TEST_F(CTOVDebugServerTest, HandsALineToAllListenersInOrder)
{
    RegisterAll();

    m_oServer.OnLog("Folder/File.cpp", 0xFFFFFFFFul, eSeverityWarning, "%d of %s", 7, "nine");

    EXPECT_EQ(
        (tRecord{"A log Folder/File.cpp(4294967295) 400: 7 of nine", "B log Folder/File.cpp(4294967295) 400: 7 of nine",
                 "C log Folder/File.cpp(4294967295) 400: 7 of nine"}),
        m_aRecord);
}

TEST_F(CTOVDebugServerTest, HandsAFailedCheckToAllListenersInOrder)
{
    RegisterAll();

    m_oServer.OnAssert("File", 12, "nCount > 0");

    EXPECT_EQ(
        (tRecord{"A assert File(12): nCount > 0", "B assert File(12): nCount > 0", "C assert File(12): nCount > 0"}),
        m_aRecord);
}

TEST_F(CTOVDebugServerTest, HandsAPanicToAllListenersInOrderAndGoesOn)
{
    RegisterAll();

    m_oServer.OnPanic("File", 12, eSeverityFatal, "%s %d", "out of", 5);

    EXPECT_EQ((tRecord{"A panic File(12): out of 5", "B panic File(12): out of 5", "C panic File(12): out of 5"}),
              m_aRecord);
}

TEST_F(CTOVDebugServerTest, HandsOverTheVeryPointersThatItIsGiven)
{
    CPointerListener oListener("P", m_aRecord);
    m_oServer.Register(&oListener);
    const char szFile[] = "File";
    const char szText[] = "text";

    m_oServer.OnLog(szFile, 1, eSeverityInfo, szText);
    EXPECT_EQ(szFile, oListener.pFile);
    EXPECT_EQ(szText, oListener.pText);

    m_oServer.OnAssert(NULL, 1, NULL);
    EXPECT_EQ(nullptr, oListener.pFile);
    EXPECT_EQ(nullptr, oListener.pText);

    m_oServer.OnPanic(szFile, 1, eSeverityFatal, szText);
    EXPECT_EQ(szFile, oListener.pFile);
    EXPECT_EQ(szText, oListener.pText);
    m_oServer.Unregister(&oListener);
}

TEST_F(CTOVDebugServerTest, GivesEveryListenerTheArgumentsFromTheFirstOn)
{
    RegisterAll();

    m_oServer.OnLog("File", 1, eSeverityInfo, "%d %s %.1f %d %d %d %d %.2f %s", 1, "two", 3.5, 4, 5, 6, 7, 8.25,
                    "nine");

    const std::string sText = " log File(1) 200: 1 two 3.5 4 5 6 7 8.25 nine";
    EXPECT_EQ((tRecord{"A" + sText, "B" + sText, "C" + sText}), m_aRecord);
}

TEST_F(CTOVDebugServerTest, GivesEveryListenerThePanicsArgumentsFromTheFirstOn)
{
    RegisterAll();

    m_oServer.OnPanic("File", 1, eSeverityFatal, "%d %.1f %s", 1, 2.5, "three");

    const std::string sText = " panic File(1): 1 2.5 three";
    EXPECT_EQ((tRecord{"A" + sText, "B" + sText, "C" + sText}), m_aRecord);
}

TEST_F(CTOVDebugServerTest, DoesNothingWithAnEmptyTable)
{
    m_oServer.OnLog("File", 1, eSeverityInfo, "text");
    m_oServer.OnAssert("File", 1, "false");
    m_oServer.OnPanic("File", 1, eSeverityFatal, "text");

    EXPECT_TRUE(m_aRecord.empty());
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerTest, PassesOverNullEntries)
{
    RegisterAll();
    TableOf(m_oServer)[1] = NULL;

    Log();
    m_oServer.OnAssert("File", 1, "x");
    m_oServer.OnPanic("File", 1, eSeverityFatal, "y");

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "C log File(1) 200: text", "A assert File(1): x",
                       "C assert File(1): x", "A panic File(1): y", "C panic File(1): y"}),
              m_aRecord);
}

TEST_F(CTOVDebugServerTest, HoldsItsLockOverEveryCallOfAListener)
{
    RegisterAll();
    bool bLocked = false;
    m_oC.fnOnLog = [&] { bLocked = IsLocked(); };

    Log();

    EXPECT_TRUE(bLocked);
    EXPECT_TRUE(m_pOther->Finishes());
}

TEST_F(CTOVDebugServerTest, HoldsItsLockOverAFailedCheck)
{
    RegisterAll();
    bool bLocked = false;
    m_oA.fnOnAssert = [&] { bLocked = IsLocked(); };

    m_oServer.OnAssert("File", 1, "false");

    EXPECT_TRUE(bLocked);
    EXPECT_TRUE(m_pOther->Finishes());
}

TEST_F(CTOVDebugServerTest, CallsListenersOneAtATimeOverAllThreads)
{
    m_oServer.Register(&m_oA);
    int nInside = 0;
    int nMost = 0;
    m_oA.fnOnLog = [&] {
        nMost = std::max(nMost, ++nInside);
        std::this_thread::yield();
        --nInside;
    };
    const auto fnLogOften = [this] {
        for (int nLine = 0; nLine < 300; ++nLine)
            Log();
    };

    {
        CBlockableThread oFirst(fnLogOften);
        CBlockableThread oSecond(fnLogOften);
    }

    EXPECT_EQ(1, nMost);
    EXPECT_EQ(601u, m_aRecord.size());
}

TEST_F(CTOVDebugServerTest, ALineFromInsideAListenerReachesAllListenersAgain)
{
    RegisterAll();
    int nDepth = 0;
    m_oB.fnOnLog = [&] {
        if (++nDepth == 1)
            m_oServer.OnLog("Inner", 2, eSeverityTrace, "inner");
    };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "B log File(1) 200: text", "A log Inner(2) 100: inner",
                       "B log Inner(2) 100: inner", "C log Inner(2) 100: inner", "C log File(1) 200: text"}),
              m_aRecord);
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerTest, AFailedCheckInsideAListenerReachesAllListeners)
{
    RegisterAll();
    m_oA.fnOnLog = [&] { m_oServer.OnAssert("Inner", 2, "false"); };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "A assert Inner(2): false", "B assert Inner(2): false",
                       "C assert Inner(2): false", "B log File(1) 200: text", "C log File(1) 200: text"}),
              m_aRecord);
}

TEST_F(CTOVDebugServerTest, AListenerRegisteredFromInsideHearsTheSameLine)
{
    m_oServer.Register(&m_oA);
    m_oA.fnOnLog = [&] { m_oServer.Register(&m_oB); };
    m_aRecord.clear();

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "B startup", "B log File(1) 200: text"}), m_aRecord);
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerTest, ManyListenersRegisteredFromInsideDoNotBreakTheWalk)
{
    m_oServer.Register(&m_oA);
    m_aRecord.clear();
    std::vector<std::unique_ptr<CRecordingListener>> aMore;
    m_oA.fnOnLog = [&] {
        for (int nMore = 0; nMore < 100; ++nMore)
        {
            aMore.push_back(std::make_unique<CRecordingListener>("more", m_aRecord));
            m_oServer.Register(aMore.back().get());
        }
    };

    Log();

    EXPECT_EQ(1u + 100u + 100u, m_aRecord.size());
    EXPECT_EQ("more log File(1) 200: text", m_aRecord.back());
    TableOf(m_oServer).clear();
}

// Settled: the walk goes by index, so that the one behind a removed entry takes its place and is passed over.
TEST_F(CTOVDebugServerTest, AListenerThatUnregistersItselfHidesThisLineFromTheNext)
{
    RegisterAll();
    CRecordingListener oD("D", m_aRecord);
    m_oServer.Register(&oD);
    m_oB.fnOnLog = [&] { m_oServer.Unregister(&m_oB); };
    m_aRecord.clear();

    Log();
    EXPECT_EQ((tRecord{"A log File(1) 200: text", "B log File(1) 200: text", "B closedown", "D log File(1) 200: text"}),
              m_aRecord);

    m_aRecord.clear();
    Log();
    EXPECT_EQ(Logged("ACD"), m_aRecord);
    m_oServer.Unregister(&oD);
}

TEST_F(CTOVDebugServerTest, AListenerUnregisteredFromInsideHearsNothingMore)
{
    RegisterAll();
    m_oA.fnOnLog = [&] { m_oServer.Unregister(&m_oC); };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "C closedown", "B log File(1) 200: text"}), m_aRecord);
}

TEST_F(CTOVDebugServerTest, TheLastListenerCanUnregisterItself)
{
    RegisterAll();
    m_oC.fnOnLog = [&] { m_oServer.Unregister(&m_oC); };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "B log File(1) 200: text", "C log File(1) 200: text", "C closedown"}),
              m_aRecord);
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerTest, AListenerCanEmptyTheTable)
{
    RegisterAll();
    m_oA.fnOnLog = [&] {
        m_oServer.Unregister(&m_oC);
        m_oServer.Unregister(&m_oB);
        m_oServer.Unregister(&m_oA);
    };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "C closedown", "B closedown", "A closedown"}), m_aRecord);
    EXPECT_TRUE(TableOf(m_oServer).empty());
}

// Settled: listeners must not throw; one that does leaves the lock taken.
TEST_F(CTOVDebugServerTest, AListenersExceptionGoesThroughAndLeavesTheLockTaken)
{
    RegisterAll();
    m_oB.fnOnLog = [] { throw 7; };

    EXPECT_THROW(Log(), int);
    EXPECT_EQ(Logged("AB"), m_aRecord);
    EXPECT_TRUE(IsLocked());

    m_oServer.UnlockLoggers();
    EXPECT_TRUE(m_pOther->Finishes());
}

TEST_F(CTOVDebugServerTest, CanListenToAnotherServer)
{
    COpenServer oOuter;
    const unsigned long long hOldLock = LockOf(m_oServer); // registration gives it a new one
    oOuter.Register(&m_oServer);
    TOVPlatform::TOVSynchronization::CriticalSection::Destroy(hOldLock);
    m_oServer.Register(&m_oA);
    m_aRecord.clear();

    oOuter.OnLog("File", 1, eSeverityInfo, "%s", "text");
    oOuter.OnAssert("File", 2, "false");

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "A assert File(2): false"}), m_aRecord);
    TableOf(oOuter).clear();
}
