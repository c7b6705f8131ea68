#include "Debug/TOVDebugInstruments.h"
#include "Listeners/ListenerInstruments.h"
#include "Support/TOVBlockableThread.h"

#include <Listeners/TOVMemoryListener.h>
#include <Listeners/TOVSeverityFilter.h>

#include <memory>

using namespace TOVDebug;

TEST(CTOVSeverityFilterTest, PassesLinesOfALeastSeverity)
{
    const struct
    {
        int nLeast;
        tLines aPassed;
    } aCases[] = {{0, {"100", "200", "300", "400", "499", "500", "600"}},
                  {100, {"100", "200", "300", "400", "499", "500", "600"}},
                  {101, {"200", "300", "400", "499", "500", "600"}},
                  {400, {"400", "499", "500", "600"}},
                  {500, {"500", "600"}},
                  {600, {"600"}},
                  {601, {}}};
    for (const auto& oCase : aCases)
    {
        CTOVMemoryListener oMemory;
        CTOVSeverityFilter oFilter(oMemory, static_cast<eTOVDebugSeverity>(oCase.nLeast));
        oFilter.Register();
        for (const int nSeverity : {100, 200, 300, 400, 499, 500, 600})
            Log(nSeverity, std::to_string(nSeverity));
        EXPECT_EQ(oCase.aPassed, TextsOf(oMemory.GetLines())) << oCase.nLeast;
    }
}

TEST(CTOVSeverityFilterTest, PassesFailedChecksAndPanicsAlways)
{
    CTOVMemoryListener oMemory;
    CTOVSeverityFilter oFilter(oMemory, static_cast<eTOVDebugSeverity>(1023));
    oFilter.Register();

    FailCheck("nCount > 0");
    oFilter.OnPanic("Folder/File.cpp", 7, eSeverityTrace, "%s %d %.1f", "one", 2, 3.5);

    EXPECT_EQ((tLines{"nCount > 0", "one 2 3.5"}), TextsOf(oMemory.GetLines()));
    EXPECT_EQ(eLogCheck, oMemory.GetLines()[0].eKind);
    EXPECT_EQ(eLogPanic, oMemory.GetLines()[1].eKind);
}

TEST(CTOVSeverityFilterTest, PassesEverythingUnchanged)
{
    tRecord aRecord;
    CRecordingListener oForeign("A", aRecord);
    CTOVSeverityFilter oFilter(oForeign, eSeverityTrace);

    oFilter.OnLog("File", 0xFFFFFFFFul, eSeverityWarning, "%s %d %.1f %s", "one", 2, 3.5, "four");
    oFilter.OnAssert("File", 2, "a % b");
    oFilter.SetApplicationName("Application");

    EXPECT_EQ((tRecord{"A log File(4294967295) 400: one 2 3.5 four", "A assert File(2): a % b", "A name Application"}),
              aRecord);
}

TEST(CTOVSeverityFilterTest, LeavesTheArgumentListToItsCaller)
{
    CTOVMemoryListener oMemory;
    CTOVSeverityFilter oFilter(oMemory, eSeverityTrace);

    LogTwiceFromOneList(oFilter, "%s %d %.1f %s", "one", 2, 3.5, "four");

    EXPECT_EQ((tLines{"one 2 3.5 four", "one 2 3.5 four"}), TextsOf(oMemory.GetLines()));
}

TEST(CTOVSeverityFilterTest, StartsAndClosesDownTheOtherOnce)
{
    tRecord aRecord;
    CRecordingListener oForeign("A", aRecord);
    {
        CTOVSeverityFilter oFilter(oForeign, eSeverityTrace);
        oFilter.Register();
        oFilter.Register();
        EXPECT_EQ(tRecord{"A startup"}, aRecord);
        oFilter.Unregister();
        oFilter.Unregister();
    }
    EXPECT_EQ((tRecord{"A startup", "A closedown"}), aRecord);
}

TEST(CTOVSeverityFilterTest, MayOutliveTheOtherWhenItIsUnregistered)
{
    std::unique_ptr<CTOVMemoryListener> pMemory = std::make_unique<CTOVMemoryListener>();
    CTOVSeverityFilter oFilter(*pMemory, eSeverityTrace);
    oFilter.Register();
    oFilter.Unregister();

    pMemory.reset();

    Log(600, "after");
}

TEST(CTOVSeverityFilterTest, ChangesItsLeastSeverityAlsoInsideACall)
{
    tRecord aRecord;
    CRecordingListener oForeign("A", aRecord);
    CTOVSeverityFilter oFilter(oForeign, eSeverityTrace);
    EXPECT_EQ(eSeverityTrace, oFilter.GetLeastSeverity());
    oForeign.fnOnLog = [&] { oFilter.SetLeastSeverity(eSeverityError); };

    oFilter.OnLog("File", 1, eSeverityInfo, "1");
    oFilter.OnLog("File", 1, eSeverityInfo, "2");
    oFilter.OnLog("File", 1, eSeverityError, "3");

    EXPECT_EQ(eSeverityError, oFilter.GetLeastSeverity());
    EXPECT_EQ((tRecord{"A log File(1) 200: 1", "A log File(1) 500: 3"}), aRecord);
}

TEST(CTOVSeverityFilterTest, MayStandBehindAnother)
{
    CTOVMemoryListener oMemory;
    CTOVSeverityFilter oInner(oMemory, eSeverityWarning);
    CTOVSeverityFilter oOuter(oInner, eSeverityTrace);
    oOuter.Register();

    Log(200, "info");
    Log(400, "warning");

    EXPECT_EQ(tLines{"warning"}, TextsOf(oMemory.GetLines()));
}

TEST(CTOVSeverityFilterTest, MayBeDestroyedInTheCallThatItPassesOn)
{
    tRecord aRecord;
    CRecordingListener oForeign("A", aRecord);
    std::unique_ptr<CTOVSeverityFilter> pFilter = std::make_unique<CTOVSeverityFilter>(oForeign, eSeverityTrace);
    pFilter->Register();
    oForeign.fnOnLog = [&] { pFilter.reset(); };

    Log(200, "1");
    Log(200, "2");

    EXPECT_EQ((tRecord{"A startup", "A log Folder/File.cpp(148) 200: 1", "A closedown"}), aRecord);
}

// If the exception came through, the server's lock would stay taken.
TEST(CTOVSeverityFilterTest, LetsNoExceptionThrough)
{
    tRecord aRecord;
    CRecordingListener oForeign("A", aRecord);
    for (std::function<void()>* pCall :
         {&oForeign.fnOnStartup, &oForeign.fnOnClosedown, &oForeign.fnOnLog, &oForeign.fnOnAssert})
        *pCall = [] { throw 7; };
    {
        CTOVSeverityFilter oFilter(oForeign, eSeverityTrace);
        EXPECT_NO_THROW(oFilter.Register());
        EXPECT_NO_THROW(Log(200, "text"));
        EXPECT_NO_THROW(FailCheck("nCount > 0"));
        EXPECT_NO_THROW(oFilter.Unregister());
    }
    EXPECT_EQ(4u, aRecord.size());
    CBlockableThread oOther([] { Log(200, "of another thread"); });
    EXPECT_TRUE(oOther.Finishes());
}
