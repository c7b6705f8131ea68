// Listeners that call the server back while it calls them.
#include "Debug/TOVDebugServerFixture.h"

namespace
{
class CTOVDebugServerReentryTest : public CTOVDebugServerFixture
{
};
} // namespace

TEST_F(CTOVDebugServerReentryTest, ALineFromInsideAListenerReachesAllListenersAgain)
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

TEST_F(CTOVDebugServerReentryTest, AFailedCheckInsideAListenerReachesAllListeners)
{
    RegisterAll();
    m_oA.fnOnLog = [&] { m_oServer.OnAssert("Inner", 2, "false"); };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "A assert Inner(2): false", "B assert Inner(2): false",
                       "C assert Inner(2): false", "B log File(1) 200: text", "C log File(1) 200: text"}),
              m_aRecord);
}

TEST_F(CTOVDebugServerReentryTest, AListenerRegisteredFromInsideHearsTheSameLine)
{
    m_oServer.Register(&m_oA);
    m_oA.fnOnLog = [&] { m_oServer.Register(&m_oB); };
    m_aRecord.clear();

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "B startup", "B log File(1) 200: text"}), m_aRecord);
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerReentryTest, ManyListenersRegisteredFromInsideDoNotBreakTheWalk)
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
TEST_F(CTOVDebugServerReentryTest, AListenerThatUnregistersItselfHidesThisLineFromTheNext)
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

TEST_F(CTOVDebugServerReentryTest, AListenerUnregisteredFromInsideHearsNothingMore)
{
    RegisterAll();
    m_oA.fnOnLog = [&] { m_oServer.Unregister(&m_oC); };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "C closedown", "B log File(1) 200: text"}), m_aRecord);
}

TEST_F(CTOVDebugServerReentryTest, TheLastListenerCanUnregisterItself)
{
    RegisterAll();
    m_oC.fnOnLog = [&] { m_oServer.Unregister(&m_oC); };

    Log();

    EXPECT_EQ((tRecord{"A log File(1) 200: text", "B log File(1) 200: text", "C log File(1) 200: text", "C closedown"}),
              m_aRecord);
    EXPECT_FALSE(IsLocked());
}

TEST_F(CTOVDebugServerReentryTest, AListenerCanEmptyTheTable)
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
