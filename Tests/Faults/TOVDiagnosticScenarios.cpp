// Runtime classes, the debug server, and the ready-made listeners.
#include "Faults/TOVAllocationScenarios.h"
#include "TOVRtti/TOVClassInstruments.h"

#include <Debug/TOVMSDevLogger.h>
#include <Listeners/TOVConsoleListener.h>
#include <Listeners/TOVMemoryListener.h>
#include <Listeners/TOVRotatingFileListener.h>
#include <Listeners/TOVSeverityFilter.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVRtti/TOVClassIndex.h>

#include <cstdio>
#include <cstring>

using namespace TOVDebug;

namespace
{
constexpr char LONG_CLASS[] = "a class with a name that no block of a short string could hold";

// Counts what it hears, and allocates nothing.
class CCounter : public ITOVLogListener
{
public:
    void OnStartup() override { ++m_nStartups; }
    void OnClosedown() override { ++m_nClosedowns; }
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override { ++m_nLines; }
    void OnAssert(const char*, unsigned long, const char*) override { ++m_nChecks; }
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

    int m_nStartups = 0;
    int m_nClosedowns = 0;
    int m_nLines = 0;
    int m_nChecks = 0;
};

void LogText(int nLength)
{
    _Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%0*d", nLength, 5);
}

// A listener of the library is registered, hears lines, and says whether it lost one.
template<class TListener> void HearLines(TListener& oListener)
{
    if (!Completes([&] { oListener.Register(); }))
        return;
    LogText(20);
    LogText(3000);
    try
    {
        TOVDebug::Assert("nNumber == 5", "File.cpp", 3);
    }
    catch (const CTOVAssertException&)
    {
    }
    oListener.Unregister();
}

long SizeOfFile(const char* szFile)
{
    const CFaultPause oPause;
    namespace File = TOVPlatform::TOVFile;
    File::sTOVFindData oRecord = {};
    File::FindClose(File::FindFirst(szFile, &oRecord));
    return static_cast<long>(oRecord.ullSize);
}

// What three lines of HearLines take in a file.
long SizeOfLines(const char* szFile, bool bLost)
{
    const long lSize = SizeOfFile(szFile);
    const CFaultPause oPause;
    std::remove(szFile);
    return bLost ? -1 : lSize;
}
} // namespace

tFaultScenarios RttiScenarios()
{
    return {
        {"ClassIsRegistered",
         [] {
             Completes([] {
                 const CTOVClass oClass(LONG_CLASS);
                 FAULT_EXPECT(std::strcmp(oClass.GetName(), LONG_CLASS) == 0);
                 FAULT_EXPECT(oClass.IsKindOf(oClass));
             });
             const CFaultPause oPause;
             FAULT_EXPECT(!IsHeld(LONG_CLASS));
         }},
        {"ClassWithSuperClasses",
         [] {
             Completes([] {
                 const CTOVClass oSuper("super");
                 const CTOVClass oOther("other super");
                 const CTOVClass oClass(LONG_CLASS, &oSuper, &oOther);
                 FAULT_EXPECT(oClass.GetNumSuperClasses() == 2 && oClass.IsKindOf(oOther));
             });
             const CFaultPause oPause;
             FAULT_EXPECT(!IsHeld(LONG_CLASS) && !IsHeld("super") && !IsHeld("other super"));
         }},
        {"ClassGetsSuperClass",
         [] {
             COpenClass oClass(LONG_CLASS);
             int nSupers = 0;
             for (int n = 0; n < 5; ++n)
                 nSupers += Completes([&] { oClass.AddSuperClass(CTOVClass::Invalid()); }) ? 1 : 0;
             FAULT_EXPECT(oClass.GetNumSuperClasses() == nSupers);
             const COpenClass oCopy(oClass);
             FAULT_EXPECT(oCopy == oClass);
         }},
        {"ClassOfTheSameName",
         [] {
             const CTOVClass oClass(LONG_CLASS);
             const long lHeld = GetNumHeld();
             Completes([&] { FAULT_EXPECT(CTOVClass(LONG_CLASS).GetClassId() == oClass.GetClassId()); });
             FAULT_EXPECT(GetNumHeld() == lHeld || GetNumHeld() == lHeld - 1); // the second takes the name with it
         }},
        {"ClassIsFoundByName",
         [] {
             const CTOVClass oClass("found");
             Completes([&] { FAULT_EXPECT(&TOVRuntimeClass("found") == &oClass); });
             Completes([&] { FAULT_EXPECT(&TOVRuntimeClass(CTOVStringA("found")) == &oClass); });
             Completes([&] { FAULT_EXPECT(TOVRuntimeClass("never") == CTOVClass::Invalid()); });
             const CFaultPause oPause;
             FAULT_EXPECT(&TOVRuntimeClass("found") == &oClass);
         }},
        {"ClassServerIsUsed",
         [] {
             CTOVClassServer oServer;
             const CTOVClass oClass("served");
             const CTOVStringA oName("served");
             const bool bAdded = Completes([&] { oServer.AddClass(oName, const_cast<CTOVClass*>(&oClass)); });
             FAULT_EXPECT(oServer.GetNumClasses() == (bAdded ? 1 : 0));
             Completes([&] { FAULT_EXPECT(oServer.HasClass(oName) == bAdded); });
             CTOVStringA oFirst;
             if (Completes([&] { FAULT_EXPECT(oServer.GetFirstClass(oFirst) == bAdded); }) && bAdded)
                 FAULT_EXPECT(oFirst == "served");
             if (Completes([&] { oServer.RemoveClass(oName); }))
                 FAULT_EXPECT(oServer.GetNumClasses() == 0);
         }},
        {"ClassServerIsCopied",
         [] {
             const CTOVClassServer& oServer = CTOVClassServer::Instance();
             CTOVClassServer oCopy(oServer);
             oCopy = oServer;
             FAULT_EXPECT(oCopy.GetNumClasses() == oServer.GetNumClasses());
         }},
        {"ManyClassesAreRegistered",
         [] {
             Completes([] {
                 COpenClass aClasses[20] = {"n0", "n1", "n2", "n3", "n4", "n5", "n6", "n7", "n8", "n9",
                                            "m0", "m1", "m2", "m3", "m4", "m5", "m6", "m7", "m8", "m9"};
                 FAULT_EXPECT(aClasses[19].GetClassId() != aClasses[0].GetClassId());
             });
             const CFaultPause oPause;
             FAULT_EXPECT(!IsHeld("n0") && !IsHeld("m9"));
         }},
    };
}

tFaultScenarios DebugScenarios()
{
    return
    {
        {"ServerRegistersListeners",
         [] {
             CTOVDebugServer& oServer = CTOVDebugServer::Instance();
             CCounter aCounters[5];
             bool abRegistered[5];
             for (int n = 0; n < 5; ++n)
                 abRegistered[n] = Completes([&] { oServer.Register(&aCounters[n]); });
             LogText(10);
             for (int n = 0; n < 5; ++n)
             {
                 FAULT_EXPECT(aCounters[n].m_nLines == (abRegistered[n] ? 1 : 0));
                 FAULT_EXPECT(aCounters[n].m_nStartups == (abRegistered[n] ? 1 : 0));
                 oServer.Unregister(&aCounters[n]);
             }
         }},
#if !TOV_SYSTEM_WINDOWS // there, a server whose lock has no memory ends the process, as it says
            {"ServerOfOnesOwn",
             [] {
                 CTOVDebugServer oServer;
                 CCounter oCounter;
                 const bool bRegistered = Completes([&] { oServer.Register(&oCounter); });
                 oServer.OnAssert("File.cpp", 1, "nNumber == 5");
                 FAULT_EXPECT(oCounter.m_nChecks == (bRegistered ? 1 : 0));
             }},
            {"ServerIsCopied",
             [] {
                 CTOVDebugServer oServer;
                 CCounter oCounter;
                 const bool bRegistered = Completes([&] { oServer.Register(&oCounter); });
                 Completes([&] {
                     CTOVDebugServer oCopy(oServer);
                     oCopy.OnStartup(); // a lock of its own
                     oCopy.OnAssert("File.cpp", 1, "nNumber == 5");
                 });
                 FAULT_EXPECT(bRegistered || oCounter.m_nChecks == 0);
             }},
#endif
            {"ServerPassesLongLines",
             [] {
                 CCounter oCounter;
                 const bool bRegistered = Completes([&] { CTOVDebugServer::Instance().Register(&oCounter); });
                 for (const int nLength : {10, 1023, 1024, 5000})
                     LogText(nLength);
                 FAULT_EXPECT(oCounter.m_nLines == (bRegistered ? 4 : 0));
                 CTOVDebugServer::Instance().Unregister(&oCounter);
             }},
            {"LoggerIsMadeAndHears",
             [] {
                 Completes([] {
                     CTOVMSDevLogger oLogger;
                     oLogger.SetApplicationName("a name with which nobody ever does anything at all, long or not");
                     LogText(5000);
                 });
             }},
            {"CheckIsHeard", [] {
                 CCounter oCounter;
                 if (!Completes([&] { CTOVDebugServer::Instance().Register(&oCounter); }))
                     return;
                 bool bCaught = false;
                 try
                 {
                     TOVDebug::Assert("nNumber == 5", "File.cpp", 3);
                 }
                 catch (const CTOVAssertException&)
                 {
                     bCaught = true;
                 }
                 CTOVDebugServer::Instance().Unregister(&oCounter);
                 FAULT_EXPECT(bCaught && oCounter.m_nChecks == 1);
             }},
    };
}

tFaultScenarios ListenerScenarios()
{
    return {
        {"MemoryListenerHears",
         [] {
             CTOVMemoryListener oListener(2);
             HearLines(oListener);
             Completes([&] {
                 const std::vector<sTOVLogLine> aLines = oListener.GetLines();
                 FAULT_EXPECT(aLines.size() <= 2 && (aLines.size() == 2 || oListener.HasLostLines() || aLines.empty()));
             });
             oListener.Clear();
         }},
        {"FileListenerHears",
         [] {
             const char* const szFile = FaultFile("listened");
             bool bLost = true;
             bool bOpen = false;
             Completes([&] {
                 CTOVFileListener oListener(szFile, false);
                 bOpen = oListener.IsOpen();
                 HearLines(oListener);
                 oListener.Flush();
                 bLost = oListener.HasLostLines();
             });
             const long lSize = SizeOfLines(szFile, bLost || !bOpen);
             FAULT_EXPECT(lSize == -1 || lSize == 0 || lSize > 3000);
         }},
        {"RotatingListenerHears",
         [] {
             const char* const szFile = FaultFile("rotated");
             bool bLost = true;
             Completes([&] {
                 CTOVRotatingFileListener oListener(szFile, 500, 2);
                 HearLines(oListener);
                 HearLines(oListener);
                 bLost = oListener.HasLostLines();
             });
             const CFaultPause oPause;
             std::remove(szFile);
             std::remove(FaultFile("rotated.1"));
             std::remove(FaultFile("rotated.2"));
             static_cast<void>(bLost);
         }},
        {"ConsoleListenerHears",
         [] {
             CTOVConsoleListener oListener(eConsoleOutput);
             HearLines(oListener);
         }},
        {"FilterPassesOn",
         [] {
             CCounter oCounter;
             CTOVSeverityFilter oFilter(oCounter, eSeverityInfo);
             if (!Completes([&] { oFilter.Register(); }))
                 return;
             LogText(10);
             oFilter.Unregister();
             FAULT_EXPECT(oCounter.m_nLines == 1 && oCounter.m_nStartups == 1 && oCounter.m_nClosedowns == 1);
         }},
        {"ListenerIsRegisteredTwice",
         [] {
             CTOVMemoryListener oListener(5);
             const bool bFirst = Completes([&] { oListener.Register(); });
             const bool bSecond = Completes([&] { oListener.Register(); });
             FAULT_EXPECT(!bFirst || bSecond);
             LogText(10);
             oListener.Unregister();
             Completes([&] { FAULT_EXPECT(oListener.GetLines().size() <= 1); });
         }},
        {"LogLineIsPrinted",
         [] {
             const sTOVLogLine oLine = {
                 eLogMessage, {}, "File.cpp", 12, eSeverityInfo, "a text of some length, or more"};
             const std::string sPrinted = oLine.Print();
             FAULT_EXPECT(sPrinted.find("a text of some length") != std::string::npos);
         }},
    };
}
