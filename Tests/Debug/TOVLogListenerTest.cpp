#include "Debug/TOVDebugInstruments.h"

#include <type_traits>

using TOVDebug::ITOVLogListener;

TEST(ITOVLogListenerTest, IsAnInterfaceWithoutVirtualDestructor)
{
    EXPECT_TRUE(std::is_abstract_v<ITOVLogListener>);
    EXPECT_FALSE(std::has_virtual_destructor_v<ITOVLogListener>);
    EXPECT_EQ(sizeof(void*), sizeof(ITOVLogListener));
}

TEST(ITOVLogListenerTest, OnLogStartsTheListForOnLogV)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);

    oListener.OnLog("File", 0xFFFFFFFFul, eSeverityError, "%s %d %.1f %s", "one", 2, 3.5, "four");

    EXPECT_EQ(tRecord{"A log File(4294967295) 500: one 2 3.5 four"}, aRecord);
}

// Settled: the severity falls away.
TEST(ITOVLogListenerTest, OnPanicStartsTheListForOnPanicV)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);

    oListener.OnPanic("File", 7, eSeverityTrace, "%s %d %.1f", "one", 2, 3.5);

    EXPECT_EQ(tRecord{"A panic File(7): one 2 3.5"}, aRecord);
}

TEST(ITOVLogListenerTest, IsNotRegisteredByConstructionCopyOrAssignment)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    TOVDebug::CTOVDebugServer oServer;
    oServer.Register(&oListener);
    aRecord.clear();

    CRecordingListener oCopy(oListener);
    static_cast<ITOVLogListener&>(oCopy) = oListener;
    oServer.OnAssert("File", 1, "false");

    EXPECT_EQ(tRecord{"A assert File(1): false"}, aRecord);
}

TEST(ITOVLogListenerTest, AssignmentReturnsItsTarget)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    CRecordingListener oOther("B", aRecord);
    ITOVLogListener& oTarget = oOther;

    EXPECT_EQ(&oTarget, &(oTarget = oListener));
}
