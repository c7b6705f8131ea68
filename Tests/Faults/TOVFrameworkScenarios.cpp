// The test framework and the parts of which test programs are made.
#include "Faults/TOVAllocationScenarios.h"

#include <Test/TOVSimpleTestRunner.h>
#include <Test/TOVTestChecks.h>
#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestHooks.h>
#include <Test/TOVTestHost.h>
#include <Test/TOVTestRunner.h>
#include <Test/TOVTestSuiteDefinition.h>
#include <TestHost/TOVConsoleReport.h>
#include <TestHost/TOVHtmlReport.h>
#include <TestHost/TOVJUnitReport.h>
#include <TestHost/TOVTapReport.h>
#include <TestHost/TOVTestChannel.h>
#include <TestHost/TOVTestEventListener.h>
#include <TestHost/TOVTestRecorder.h>
#include <TestHost/TOVTestSelection.h>
#include <TestHost/TOVTestText.h>

#include <cstdio>
#include <cstring>
#include <stdexcept>

TOV_TEST_HOST

class CFaultSuite : public TOVTest::CTOVTestSuite
{
    TOV_TEST_SUITE(CFaultSuite)
    void Passes() { TOV_TEST_CHECK(GetNumTestCases() == 2); }
    void Fails() { TOV_TEST_EQUALS(GetNumTestCases(), 3L); }
};

TOV_TEST_CASES_BEGIN(CFaultSuite, "Faults")
TOV_TEST_CASE("passes", Passes)
TOV_TEST_CASE("fails", Fails)
TOV_TEST_CASES_END

TOV_TEST_CREATOR(CFaultSuite, "Faults")

using namespace TOVTest;
using namespace TOVTestHost;

namespace
{
constexpr char SUITE_NAME[] = "a suite";

// While it lives, the program has no suite but the one here.
class CLoneSuite
{
public:
    CLoneSuite()
    {
        const CFaultPause oPause;
        m_aFormer[SUITE_NAME] = &m_oCreator;
        m_aFormer.swap(GetCreatorMapDirect());
    }
    ~CLoneSuite()
    {
        const CFaultPause oPause;
        m_aFormer.swap(GetCreatorMapDirect());
    }
    CLoneSuite(const CLoneSuite&) = delete;
    CLoneSuite& operator=(const CLoneSuite&) = delete;

private:
    CTOVCreator_CFaultSuite m_oCreator;
    tCreatorMap m_aFormer;
};

class CCaseCounter : public CTOVTestListener
{
public:
    void LeaveTestCase(const CTOVTestCase&) override { ++m_nCases; }
    void FailedAssertEquals(const char*, long, const char*, const char*, const char*, const char*) override
    {
        ++m_nFailures;
    }

    int m_nCases = 0;
    int m_nFailures = 0;
};

// The parent's side of a link, which keeps what is sent and gives it back.
class CMemoryLink : public ITOVWorkerLink
{
public:
    bool Write(const void* pBytes, std::size_t nBytes) override
    {
        if (m_nEnd + nBytes > sizeof m_acBytes)
            return false;
        std::memcpy(m_acBytes + m_nEnd, pBytes, nBytes);
        m_nEnd += nBytes;
        return true;
    }
    bool Read(void* pBytes, std::size_t nBytes) override
    {
        if (m_bAcknowledges) // to the worker
        {
            std::memset(pBytes, '.', nBytes);
            return true;
        }
        if (m_nRead + nBytes > m_nEnd)
            return false;
        std::memcpy(pBytes, m_acBytes + m_nRead, nBytes);
        m_nRead += nBytes;
        return true;
    }
    std::string TakeOutput(eTestStream /*eStream*/) override { return ""; }
    bool HasEnded() override { return false; }
    void End() override {}
    sWorkerEnd WaitForEnd() override { return {"", false}; }

    bool m_bAcknowledges = true;

private:
    char m_acBytes[4096] = "";
    std::size_t m_nEnd = 0;
    std::size_t m_nRead = 0;
};

// The events of a run with one passed case, one that failed, and one that did not run.
void SendRun(ITOVTestEvents& oEvents)
{
    oEvents.OnPlan(
        {{{{"Suite", "File.cpp", 1}, {{"one", "File.cpp", 2}, {"two", "File.cpp", 3}, {"three", "", 4}}}}, 1});
    oEvents.OnEnterRun();
    oEvents.OnEnterSuite({"Suite", "File.cpp", 1});
    oEvents.OnEnterCase({"one", "File.cpp", 2});
    oEvents.OnLeaveCase();
    oEvents.OnCloseCase();
    oEvents.OnEnterCase({"two", "File.cpp", 3});
    oEvents.OnNote({eNoteFailure, "FailedAssertEquals", "File.cpp", 9, "a == b", {{"actual", "1"}, {"expected", "2"}}});
    oEvents.OnEndEarly("threw an exception that nobody expected");
}

// A report of a run, from the first event to the last.
template<class TReport> void ReportRun(TReport& oReport)
{
    CTOVTestRecorder oRecorder;
    oRecorder.AddReport(oReport);
    const bool bSent = Completes([&] { SendRun(oRecorder); });
    const bool bFinished = Completes([&] { oRecorder.Finish(); });
    if (bSent && bFinished)
        FAULT_EXPECT(CountCases(oRecorder.GetRecord()).lCases == 3);
}

template<class TReport> void ReportRunToFile()
{
    const char* const szFile = FaultFile("report");
    try
    {
        TReport oReport{std::string(szFile)};
        ReportRun(oReport);
    }
    catch (const std::runtime_error&) // the stream could not be opened
    {
    }
    const CFaultPause oPause;
    std::remove(szFile);
}

template<class TReport, class... TArguments> void ReportRunToStream(TArguments... oArguments)
{
    std::FILE* const pFile = std::fopen(FaultFile("report"), "wb");
    if (pFile == nullptr)
        return;
    try
    {
        TReport oReport(pFile, oArguments...);
        ReportRun(oReport);
    }
    catch (const std::bad_alloc&)
    {
    }
    catch (const std::runtime_error&)
    {
    }
    std::fclose(pFile);
}
} // namespace

tFaultScenarios FrameworkScenarios()
{
    return {
        {"FactoryRegistersSuites",
         [] {
             CLoneSuite oLone;
             CTOVCreator_CFaultSuite oCreator;
             const bool bDone = Completes([&] { CTOVTestSuiteFactory::Register("second", &oCreator); });
             FAULT_EXPECT(CTOVTestSuiteFactory::GetNumSuites() == (bDone ? 2 : 1));
             FAULT_EXPECT(CTOVTestSuiteFactory::HasClass(SUITE_NAME));
         }},
        {"FactoryMakesSuite",
         [] {
             CLoneSuite oLone;
             CTOVTestSuite* pSuite = nullptr;
             if (Completes([&] { pSuite = CTOVTestSuiteFactory::New(SUITE_NAME); }))
                 FAULT_EXPECT(pSuite->GetNumTestCases() == 2);
             delete pSuite;
         }},
        {"RunnerRunsAll",
         [] {
             CLoneSuite oLone;
             CCaseCounter oCounter;
             const bool bDone = Completes([&] { CTOVTestRunner::RunAllTests(&oCounter); });
             FAULT_EXPECT(!bDone || (oCounter.m_nCases == 2 && oCounter.m_nFailures == 1));
             CTOVTestListener::SetListener(nullptr);
             CFaultPause oPause; // a run goes on as if the former one had never been
             CCaseCounter oAgain;
             CTOVTestRunner::RunAllTests(&oAgain);
             FAULT_EXPECT(oAgain.m_nCases == 2 && oAgain.m_nFailures == 1);
             CTOVTestRunner::RunAllTests(nullptr);
         }},
        {"SimpleRunnerRoutes",
         [] {
             CLoneSuite oLone;
             CCaseCounter aCounters[3];
             CTOVSimpleTestRunner oRunner;
             long lAdded = 0;
             for (CCaseCounter& oCounter : aCounters)
                 lAdded += Completes([&] { oRunner.AddListener(oCounter); }) ? 1 : 0;
             FAULT_EXPECT(oRunner.GetNumListeners() == lAdded);
             Completes([&] { FAULT_EXPECT(oRunner.Run() == 1); });
             Completes([&] {
                 const CTOVSimpleTestRunner oCopy(oRunner);
                 FAULT_EXPECT(oCopy.GetNumListeners() == lAdded);
             });
         }},
        {"FrameworkSingletonIsMade",
         [] {
             const CTOVTestDynamicSingleton<int> oHolder;
             FAULT_EXPECT(CTOVTestDynamicSingleton<int>::GetInstance() == 0);
         }},
    };
}

tFaultScenarios HostScenarios()
{
    return {
        {"HostRecordsARun",
         [] {
             CLoneSuite oLone;
             CTOVTestRecorder oRecorder;
             CTOVTestEventListener oListener(oRecorder);
             CTOVSimpleTestRunner oRunner;
             oRunner.AddListener(oListener);
             const bool bRun = Completes([&] { oRunner.Run(); });
             const bool bFinished = Completes([&] { oRecorder.Finish(); });
             FAULT_EXPECT(!bRun || !bFinished || CountCases(oRecorder.GetRecord()).lFailed == 1);
         }},
        {"HostSelectsCases",
         [] {
             CLoneSuite oLone;
             try
             {
                 CTOVTestRecorder oRecorder;
                 CTOVTestSelection oSelection;
                 oSelection.Choose({{"*.passes"}, {"*.other*", "*.fail*"}, true, 1}, oRecorder);
             }
             catch (const std::runtime_error&) // a pattern matches none
             {
             }
             catch (const std::bad_alloc&)
             {
             }
             FAULT_EXPECT(CTOVTestSuiteFactory::GetNumSuites() == 1 && CTOVTestSuiteFactory::HasClass(SUITE_NAME));
         }},
        {"HostRunsChosenCases",
         [] {
             CLoneSuite oLone;
             Completes([] {
                 CTOVTestRecorder oRecorder;
                 CTOVTestSelection oSelection;
                 oSelection.Choose({{"*.passes"}, {}, true, 1}, oRecorder);
                 CTOVTestEventListener oListener(oRecorder);
                 CTOVSimpleTestRunner oRunner;
                 oRunner.AddListener(oListener);
                 FAULT_EXPECT(oRunner.Run() == 0);
                 FAULT_EXPECT(CountCases(oRecorder.GetRecord()).lPassed == 1);
             });
             FAULT_EXPECT(CTOVTestSuiteFactory::GetNumSuites() == 1 && CTOVTestSuiteFactory::HasClass(SUITE_NAME));
         }},
        {"HostSendsEvents",
         [] {
             CMemoryLink oLink;
             CTOVTestSender oSender(oLink);
             if (!Completes([&] {
                     SendRun(oSender);
                     oSender.SendDone("");
                 }))
                 return;
             oLink.m_bAcknowledges = false;
             CTOVTestRecorder oRecorder;
             try
             {
                 if (Completes([&] { FAULT_EXPECT(ReceiveTestEvents(oLink, oRecorder, [] {})); }))
                     FAULT_EXPECT(CountCases(oRecorder.GetRecord()).lCases == 2);
             }
             catch (const std::runtime_error&)
             {
                 FAULT_EXPECT(false);
             }
         }},
        {"HostReportsForPeople", [] { ReportRunToStream<CTOVConsoleReport>(true, true); }},
        {"HostReportsInTap", [] { ReportRunToStream<CTOVTapReport>(); }},
        {"HostReportsInJUnit", [] { ReportRunToFile<CTOVJUnitReport>(); }},
        {"HostReportsInHtml", [] { ReportRunToFile<CTOVHtmlReport>(); }},
        {"HostEscapesText",
         [] {
             FAULT_EXPECT(OneLine("a\n\x07 text, longer than that of short strings").size() > 30);
             FAULT_EXPECT(Markup("<a> & \x01 text, longer than that of short strings").size() > 30);
             FAULT_EXPECT(Shortened("a text, longer than that of short strings", 20).size() == 20);
             FAULT_EXPECT(Describe({eNoteWarning, "Warning", "File.cpp", 2, "text", {{"actual", "1"}}}).size() == 2);
         }},
    };
}
