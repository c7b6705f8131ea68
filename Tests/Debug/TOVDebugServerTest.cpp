// The table of listeners, and what is handed to them.
#include "Debug/TOVDebugServerFixture.h"
#include "Support/TOVRowName.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <thread>
#include <type_traits>

using TOVDebug::CTOVDebugServer;

namespace
{
class CTOVDebugServerTest : public CTOVDebugServerFixture
{
protected:
    // Makes the call while a listener looks at the lock.
    template<class TCall> void ExpectLockHeld(std::function<void()>& fnTold, TCall fnCall)
    {
        bool bLocked = false;
        fnTold = [&] { bLocked = IsLocked(); };

        fnCall();

        EXPECT_TRUE(bLocked);
        EXPECT_TRUE(m_pOther->Finishes());
        m_pOther.reset();
    }
};

// Remembers the very pointers that it is given.
class CPointerListener : public CRecordingListener
{
public:
    using CRecordingListener::CRecordingListener;

    void OnLogV(const char* szFile, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list pArguments) override
    {
        Remember(pArguments);
        pFile = szFile;
        pText = szFormat;
    }

    void OnAssert(const char* szFile, unsigned long, const char* szExpression) override
    {
        pFile = szFile;
        pText = szExpression;
    }

    void OnPanicV(const char* szFile, unsigned long, const char* szFormat, va_list pArguments) override
    {
        Remember(pArguments);
        pFile = szFile;
        pText = szFormat;
    }

    const char* pFile = nullptr;
    const char* pText = nullptr;
    const void* pList = nullptr; // only where a list is a pointer

private:
    template<class TList> void Remember(TList pArguments)
    {
        if constexpr (std::is_same_v<TList, char*>)
            pList = pArguments;
    }
};

// A call of the server, what each listener writes of it, and where a listener is told.
struct sServerCall
{
    const char* szName;
    void (*fnCall)(CTOVDebugServer& oServer);
    const char* szWritten;
    std::function<void()> CRecordingListener::*fnTold;
};

const sServerCall CALLS[] = {
    {"Log",
     [](CTOVDebugServer& oServer) {
         oServer.OnLog("Folder/File.cpp", 0xFFFFFFFFul, eSeverityWarning, "%d of %s", 7, "nine");
     },
     "log Folder/File.cpp(4294967295) 400: 7 of nine", &CRecordingListener::fnOnLog},
    {"LogOfManyArguments",
     [](CTOVDebugServer& oServer) {
         oServer.OnLog("File", 1, eSeverityInfo, "%d %s %.1f %d %d %d %d %.2f %s", 1, "two", 3.5, 4, 5, 6, 7, 8.25,
                       "nine");
     },
     "log File(1) 200: 1 two 3.5 4 5 6 7 8.25 nine", &CRecordingListener::fnOnLog},
    {"FailedCheck", [](CTOVDebugServer& oServer) { oServer.OnAssert("File", 12, "nCount > 0"); },
     "assert File(12): nCount > 0", &CRecordingListener::fnOnAssert},
    {"Panic", [](CTOVDebugServer& oServer) { oServer.OnPanic("File", 12, eSeverityFatal, "%s %d", "out of", 5); },
     "panic File(12): out of 5", &CRecordingListener::fnOnPanic},
    {"PanicOfManyArguments",
     [](CTOVDebugServer& oServer) { oServer.OnPanic("File", 1, eSeverityFatal, "%d %.1f %s", 1, 2.5, "three"); },
     "panic File(1): 1 2.5 three", &CRecordingListener::fnOnPanic},
};

class CTOVDebugServerCallTest : public CTOVDebugServerTest, public testing::WithParamInterface<sServerCall>
{
};
INSTANTIATE_TEST_SUITE_P(Call, CTOVDebugServerCallTest, testing::ValuesIn(CALLS), sRowName());
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

TEST_F(CTOVDebugServerTest, IgnoresNullWithoutTakingTheLock)
{
    m_oServer.LockLoggers();
    CBlockableThread oOther([this] {
        m_oServer.Register(nullptr);
        m_oServer.Unregister(nullptr);
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

TEST_P(CTOVDebugServerCallTest, IsHandedToAllListenersInOrder)
{
    RegisterAll();

    GetParam().fnCall(m_oServer);

    const std::string sWritten = GetParam().szWritten;
    EXPECT_EQ((tRecord{"A " + sWritten, "B " + sWritten, "C " + sWritten}), m_aRecord);
}

TEST_P(CTOVDebugServerCallTest, HoldsTheLockWhileAListenerIsTold)
{
    RegisterAll();

    ExpectLockHeld(m_oB.*GetParam().fnTold, [this] { GetParam().fnCall(m_oServer); });
}

TEST_F(CTOVDebugServerTest, HoldsItsLockWhileAListenerIsStartedAndClosedDown)
{
    ExpectLockHeld(m_oA.fnOnStartup, [this] { m_oServer.Register(&m_oA); });
    ExpectLockHeld(m_oA.fnOnClosedown, [this] { m_oServer.Unregister(&m_oA); });
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

    m_oServer.OnAssert(nullptr, 1, nullptr);
    EXPECT_EQ(nullptr, oListener.pFile);
    EXPECT_EQ(nullptr, oListener.pText);

    m_oServer.OnPanic(szFile, 1, eSeverityFatal, szText);
    EXPECT_EQ(szFile, oListener.pFile);
    EXPECT_EQ(szText, oListener.pText);
    m_oServer.Unregister(&oListener);
}

#if TOV_SYSTEM_WINDOWS
// A list is a plain pointer there.
TEST_F(CTOVDebugServerTest, HandsTheSameArgumentListToAllListeners)
{
    CPointerListener oFirst("P", m_aRecord);
    CPointerListener oSecond("Q", m_aRecord);
    m_oServer.Register(&oFirst);
    m_oServer.Register(&oSecond);

    m_oServer.OnLog("File", 1, eSeverityInfo, "%d", 7);
    EXPECT_NE(nullptr, oFirst.pList);
    EXPECT_EQ(oFirst.pList, oSecond.pList);

    oFirst.pList = nullptr;
    m_oServer.OnPanic("File", 1, eSeverityFatal, "%d", 7);
    EXPECT_NE(nullptr, oFirst.pList);
    EXPECT_EQ(oFirst.pList, oSecond.pList);
    m_oServer.Unregister(&oFirst);
    m_oServer.Unregister(&oSecond);
}
#endif

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
    TableOf(m_oServer)[1] = nullptr;

    Log();
    m_oServer.OnAssert("File", 1, "x");
    m_oServer.OnPanic("File", 1, eSeverityFatal, "y");

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "C log File(1) 200: text", "A assert File(1): x",
                       "C assert File(1): x", "A panic File(1): y", "C panic File(1): y"}),
              m_aRecord);
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
