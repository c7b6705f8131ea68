// Timers, diagnostics, and the ready-made listeners and reports.
#include "Faults/Posix/TOVSystemScenarios.h"

#include <Debug/TOVDebug.h>
#include <Listeners/TOVConsoleListener.h>
#include <Listeners/TOVRotatingFileListener.h>
#include <TestHost/TOVJUnitReport.h>
#include <TestHost/TOVTapReport.h>
#include <TestHost/TOVTestRecorder.h>
#include <Timer/TOVTimer.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <thread>

using namespace TOVDebug;

namespace
{
void LogText(int nLength)
{
    _Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%0*d", nLength, 5);
}

void OnTime(unsigned int, unsigned int, unsigned long, unsigned long, unsigned long)
{
}

// The number of lines that are in files, without a fault; removes the files.
int CountLines(std::initializer_list<const char*> aszNames)
{
    const CFaultPause oPause;
    int nLines = 0;
    for (const char* szName : aszNames)
    {
        const char* const szFile = FaultFile(szName);
        std::FILE* const pFile = std::fopen(szFile, "rb");
        for (int nRead = pFile != nullptr ? std::fgetc(pFile) : EOF; nRead != EOF; nRead = std::fgetc(pFile))
            nLines += nRead == '\n' ? 1 : 0;
        if (pFile != nullptr)
            std::fclose(pFile);
        std::remove(szFile);
    }
    return nLines;
}

template<class TListener> bool HearsAllOf(TListener& oListener, int nLines)
{
    oListener.Register();
    for (int nLine = 0; nLine < nLines; ++nLine)
        LogText(100);
    oListener.Unregister();
    return !oListener.HasLostLines();
}

template<class TReport> void Report(TReport& oReport, const CStrikes& oStrikes)
{
    TOVTestHost::CTOVTestRecorder oRecorder;
    oRecorder.AddReport(oReport);
    try
    {
        oRecorder.OnPlan({{{{"Suite", "File.cpp", 1}, {{"one", "File.cpp", 2}}}}, 1});
        oRecorder.OnEnterRun();
        oRecorder.OnEnterSuite({"Suite", "File.cpp", 1});
        oRecorder.OnEnterCase({"one", "File.cpp", 2});
        oRecorder.OnLeaveCase();
        oRecorder.OnLeaveSuite();
        oRecorder.Finish();
        FAULT_EXPECT(!oStrikes.Of({"fopen", "fwrite", "fclose"}));
    }
    catch (const std::runtime_error&)
    {
        FAULT_EXPECT(oStrikes.Any());
    }
}
} // namespace

tFaultScenarios SystemToolScenarios()
{
    return {
        {"TimerReadsTheClock",
         [] {
             CTOVTimer oTimer;
             oTimer.DefineChannel(0, "zero");
             oTimer.Start(0);
             const CStrikes oStrikes;
             const double dTime = oTimer.GetTimeDirect();
             FAULT_EXPECT(dTime > 0 || oStrikes.Of({"clock_gettime", "clock_getres"}));
             oTimer.Update(0);
             oTimer.Pause(0);
             oTimer.Continue(0);
             FAULT_EXPECT(oTimer.IsDefinedAndRunning(0));
         }},
        {"TimerChoosesItsBase",
         [] {
             const CTOVTimer oTimer;
             oTimer.GetTimeInMsDirect();
             const CFaultPause oPause;
             FAULT_EXPECT(oTimer.GetTimeDirect() > 0);
         }},
        {"TimeEventIsInstalled",
         [] {
             const CStrikes oStrikes;
             int nEvent = -1;
             try
             {
                 nEvent = CTOVTimer::InstallTimeEvent(50000, 0, OnTime, 0, 0);
                 FAULT_EXPECT(!oStrikes.Of({"pthread_create"}));
             }
             catch (const CTOVAssertException&)
             {
                 FAULT_EXPECT(oStrikes.Of({"pthread_create", "clock_gettime"}));
             }
             const CFaultPause oPause;
             if (nEvent != -1)
                 CTOVTimer::UninstallTimeEvent(nEvent, 50000);
         }},
        {"LogAsksForDebugger",
         [] {
             std::this_thread::sleep_for(std::chrono::milliseconds(20)); // an answer is kept for 10
             for (int nLine = 0; nLine < 3; ++nLine)
                 LogText(10);
         }},
        {"QuestionHasNoTerminal", [] { FAULT_EXPECT(!TOVDebug::Alternate_Assert("nNumber == 5", "File.cpp", 3)); }},
        {"FileListenerWrites",
         [] {
             bool bAll = false;
             const CStrikes oStrikes;
             {
                 CTOVFileListener oListener(FaultFile("listened"), false);
                 FAULT_EXPECT(oListener.IsOpen() == !oStrikes.Of({"fopen"}));
                 bAll = HearsAllOf(oListener, 5);
                 oListener.Flush();
             }
             const int nLines = CountLines({"listened"});
             FAULT_EXPECT(!bAll || nLines == 5);
             FAULT_EXPECT(bAll || oStrikes.Of({"fopen", "fwrite", "fflush"}));
         }},
        {"RotatingListenerKeepsFiles",
         [] {
             bool bAll = false;
             const CStrikes oStrikes;
             {
                 CTOVRotatingFileListener oListener(FaultFile("rotated"), 400, 20);
                 bAll = HearsAllOf(oListener, 13);
             }
             const int nLines = CountLines({"rotated", "rotated.1", "rotated.2", "rotated.3", "rotated.4", "rotated.5",
                                            "rotated.6", "rotated.7", "rotated.8"});
             FAULT_EXPECT(!bAll || nLines == 13);
             FAULT_EXPECT(bAll || oStrikes.Any());
         }},
        {"ConsoleListenerWrites",
         [] {
             CTOVConsoleListener oListener(eConsoleOutput);
             const CStrikes oStrikes;
             const bool bAll = HearsAllOf(oListener, 3);
             FAULT_EXPECT(bAll || oStrikes.Of({"fwrite", "fflush"}));
         }},
        {"HostReportsToFile",
         [] {
             const CStrikes oStrikes;
             {
                 TOVTestHost::CTOVJUnitReport oReport(FaultFile("report"));
                 Report(oReport, oStrikes);
             }
             const CFaultPause oPause;
             std::remove(FaultFile("report"));
         }},
    };
}
