#include "Listeners/ListenerInstruments.h"

#include <Listeners/TOVCallbackListener.h>

#include <thread>

using namespace TOVDebug;

namespace
{
// Lines of this process alone: the library has some of its own.
bool IsFromTest(const sTOVLogLine& oLine)
{
    return oLine.sFile == "Folder/File.cpp";
}
} // namespace

TEST(CTOVCallbackListenerTest, PassesLinesChecksAndPanicsToItsFunction)
{
    std::vector<sTOVLogLine> aLines;
    CTOVCallbackListener oListener([&aLines](const sTOVLogLine& oLine) {
        if (IsFromTest(oLine))
            aLines.push_back(oLine);
    });
    oListener.Register();
    Log(400, "2 cities");
    FailCheck("nCount > 0");
    oListener.OnPanic("Folder/File.cpp", 9, eSeverityTrace, "%d cities", 0);
    oListener.Unregister();
    Log(400, "unheard");

    EXPECT_EQ((tLines{"2 cities", "nCount > 0", "0 cities"}), TextsOf(aLines));
    EXPECT_FALSE(oListener.HasLostLines());
}

TEST(CTOVCallbackListenerTest, TellsLinesOfOneThreadFromThoseOfAnother)
{
    std::vector<unsigned long> aThreads;
    CTOVCallbackListener oListener([&aThreads](const sTOVLogLine& oLine) {
        if (IsFromTest(oLine))
            aThreads.push_back(oLine.ulThread);
    });
    oListener.Register();
    Log(200, "first");
    std::thread([] { Log(200, "other"); }).join();
    Log(200, "last");

    ASSERT_EQ(3u, aThreads.size());
    EXPECT_NE(0u, aThreads[0]);
    EXPECT_NE(0u, aThreads[1]);
    EXPECT_NE(aThreads[0], aThreads[1]);
    EXPECT_EQ(aThreads[0], aThreads[2]);
}

TEST(CTOVCallbackListenerTest, CountsALineAsLostIfItsFunctionThrows)
{
    CTOVCallbackListener oListener([](const sTOVLogLine&) { throw 7; });
    oListener.Register();
    EXPECT_NO_THROW(Log(200, "text"));
    EXPECT_TRUE(oListener.HasLostLines());

    CTOVCallbackListener oEmpty{CTOVCallbackListener::tCallback()};
    oEmpty.Register();
    EXPECT_NO_THROW(Log(200, "text"));
    EXPECT_TRUE(oEmpty.HasLostLines());
}

TEST(CTOVCallbackListenerTest, IsNotCalledAfterItsEnd)
{
    int nCalls = 0;
    {
        CTOVCallbackListener oListener([&nCalls](const sTOVLogLine& oLine) { nCalls += IsFromTest(oLine) ? 1 : 0; });
        oListener.Register();
        Log(200, "heard");
    }
    Log(200, "unheard");

    EXPECT_EQ(1, nCalls);
}
