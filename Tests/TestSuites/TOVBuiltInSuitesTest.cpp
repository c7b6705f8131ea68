// What a run of the library's own suites tells: all of it is in the checked-in text, the same on every system.
#include "Support/TOVTestSupport.h"
#include "TestSuites/TOVRecordedRun.h"

#include <TOVRtti/TOVClassServer.h>

#include <algorithm>
#include <clocale>
#include <fstream>

namespace
{
// One run serves all cases that do not need one of their own.
const sRecordedRun& FirstRun()
{
    static const sRecordedRun s_oRun = RecordRun();
    return s_oRun;
}

long CountEvents(const char* szBegin)
{
    const tTexts& aEvents = FirstRun().aEvents;
    return std::count_if(aEvents.begin(), aEvents.end(),
                         [szBegin](const std::string& sEvent) { return sEvent.rfind(szBegin, 0) == 0; });
}

std::string Joined(const tTexts& aLines)
{
    std::string sJoined;
    for (const std::string& sLine : aLines)
        sJoined += sLine + '\n';
    return sJoined;
}

// The process's locale while it lives.
class CLocale
{
public:
    explicit CLocale(const char* szName) : m_sOld(std::setlocale(LC_ALL, nullptr)), m_bSet(false)
    {
        m_bSet = std::setlocale(LC_ALL, szName) != nullptr;
    }
    ~CLocale() { std::setlocale(LC_ALL, m_sOld.c_str()); }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

    bool IsSet() const { return m_bSet; }

private:
    const std::string m_sOld;
    bool m_bSet;
};
} // namespace

TEST(TOVBuiltInSuitesTest, ARunTellsWhatTheReferenceHolds)
{
    std::ifstream oFile(TOV_EXPECTED_RUN);
    ASSERT_TRUE(oFile.is_open()) << TOV_EXPECTED_RUN;
    tTexts aExpected;
    for (std::string sLine; std::getline(oFile, sLine);)
        aExpected.push_back(sLine);

    EXPECT_EQ(Joined(aExpected), Joined(FirstRun().aEvents));
}

TEST(TOVBuiltInSuitesTest, AListenerEntersAndLeavesTwelveSuites)
{
    EXPECT_EQ(12, CountEvents("enter suite "));
    EXPECT_EQ(12, CountEvents("leave suite "));
    EXPECT_EQ(80, CountEvents("  enter case "));
    EXPECT_EQ(80, CountEvents("  leave case "));
}

TEST(TOVBuiltInSuitesTest, ExactlyOneCaseFails)
{
    EXPECT_EQ(1, FirstRun().nResult);
    EXPECT_EQ(1u, FirstRun().aFailures.size()) << Joined(FirstRun().aFailures);
}

TEST(TOVBuiltInSuitesTest, TheFailedComparisonIsThatOfTheReversedBytes)
{
    ASSERT_FALSE(FirstRun().aFailures.empty());
    const std::string& sFailure = FirstRun().aFailures[0];

    EXPECT_EQ(0u, sFailure.find("TOVSystem Test/Macros Test: not equal TestSuites/Test_TOVSystem.cpp(")) << sFailure;
    EXPECT_NE(std::string::npos,
              sFailure.find(") \"(tDword)(((tDword)0xABCD>>24)+(((tDword)0xABCD&0xff0000)>>8)+(((tDword)0xABCD&0xff00)"
                            "<<8)+(((tDword)0xABCD&0xff)<<24))\" \"'DCBA'\" \"3450535936\" \"1145258561\""))
        << sFailure;
}

TEST(TOVBuiltInSuitesTest, TwoWarningsAreRaised)
{
    const tTexts aExpected = {"TODO: SetCapacity() is not properly implemented!",
                              "TODO: Implement character api tests!"};

    EXPECT_EQ(aExpected, FirstRun().aWarnings);
}

TEST(TOVBuiltInSuitesTest, SevenSuitesCallWhatThePreconditionsRefuse)
{
    const tTexts aExpected = {"TOVContainers",
                              "TOVDesignPatterns",
                              "TOVPlatform Memory API (Windows)",
                              "TOVPlatform Ascii String API Test (Windows)",
                              "TOVPlatform Unicode String API Test (Windows)",
                              "TOVRtti",
                              "TOVString Test"};

    EXPECT_EQ(aExpected, FirstRun().aAsserted);
}

TEST(TOVBuiltInSuitesTest, EveryRunIsTheSame)
{
    const sRecordedRun oAgain = RecordRun();

    EXPECT_EQ(Joined(FirstRun().aEvents), Joined(oAgain.aEvents));
    EXPECT_EQ(FirstRun().aFailures, oAgain.aFailures);
    EXPECT_EQ(1, oAgain.nResult);
}

TEST(TOVBuiltInSuitesTest, TheUsersLocaleChangesNothing)
{
    const std::string sExpected = Joined(FirstRun().aEvents);
    for (const char* szLocale : {"", "C.UTF-8", "de_DE.UTF-8", "German_Germany.1252", "tr_TR.UTF-8", "Turkish"})
    {
        const CLocale oLocale(szLocale);
        if (oLocale.IsSet())
        {
            EXPECT_EQ(sExpected, Joined(RecordRun().aEvents)) << '"' << szLocale << '"';
        }
    }
}

TEST(TOVBuiltInSuitesTest, ARunLeavesTheClassesAsTheyWere)
{
    const long lNumClasses = CTOVClassServer::Instance().GetNumClasses();
    RecordRun();

    EXPECT_EQ(lNumClasses, CTOVClassServer::Instance().GetNumClasses());
    for (const char* szName : {"CBase", "CClass", "IInterface"})
        EXPECT_TRUE(CTOVClassServer::Instance().HasClass(szName)) << szName;
    EXPECT_FALSE(CTOVClassServer::Instance().HasClass("Test"));
}
