// The parts that use objects of the process: classes, listeners, the timer, conditions, suites.
#include "LoadParts.h"
#include "MixedLoad.h"

#include <Debug/TOVDebugServer.h>
#include <TOVContainers/TOVArray.h>
#include <TOVDesignPatterns/TOVHandle.h>
#include <TOVDesignPatterns/TOVMemento.h>
#include <TOVDesignPatterns/TOVSmartPointer.h>
#include <TOVProcess/TOVCriticalSection.h>
#include <TOVProcess/TOVEvent.h>
#include <TOVProcess/TOVEventCondition.h>
#include <TOVProcess/TOVMutex.h>
#include <TOVProcess/TOVSemaphore.h>
#include <TOVRtti/TOVClass.h>
#include <TOVRtti/TOVClassServer.h>
#include <Test/TOVTestListener.h>
#include <Test/TOVTestRunner.h>
#include <Timer/TOVTimer.h>

#include <cstdarg>
#include <map>
#include <string>

const sLoadPart LOAD_PARTS[] = {
    {"texts", &RunTexts},           {"paths", &RunPaths},         {"containers", &RunContainers},
    {"files", &RunNamedFiles},      {"streams", &RunStreams},     {"shared objects", &RunSharedObjects},
    {"classes", &RunClasses},       {"listeners", &RunListeners}, {"timer", &RunTimer},
    {"conditions", &RunConditions}, {nullptr, nullptr},
};

namespace
{
class CCountedThing : public CTOVRefCount
{
public:
    explicit CCountedThing(int& nAlive) : m_nAlive(nAlive) { ++m_nAlive; }
    ~CCountedThing() override { --m_nAlive; }
    CCountedThing(const CCountedThing&) = delete;
    CCountedThing& operator=(const CCountedThing&) = delete;

private:
    int& m_nAlive;
};

// Knows things by their numbers.
class CThings : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override
    {
        const auto pFound = m_apThings.find(lHandle);
        return pFound != m_apThings.end() ? NewHandle(lHandle, pFound->second) : CTOVHandle();
    }
    CTOVHandle GetHandle(ITOVRefCount* pObject) override
    {
        for (const auto& oThing : m_apThings)
        {
            if (oThing.second == pObject)
                return NewHandle(oThing.first, pObject);
        }
        return CTOVHandle();
    }
    void RemoveHandle(long lHandle) override { m_apThings.erase(lHandle); }

    std::map<long, ITOVRefCount*> m_apThings;
};

class CNumber : public ITOVMementoCreator
{
public:
    struct sState : ITOVMemento
    {
        explicit sState(int nState) : nNumber(nState) {}
        const int nNumber;
    };

    ITOVMemento* CreateMemento() override { return new sState(m_nNumber); }
    void RestoreMemento(const ITOVMemento& oMemento) override
    {
        m_nNumber = static_cast<const sState&>(oMemento).nNumber;
    }
    void DisposeMemento(ITOVMemento* pMemento) override { delete pMemento; }

    int m_nNumber = 0;
};

class CQuietListener : public TOVDebug::ITOVLogListener
{
public:
    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list pArguments) override
    {
        CTOVStringA oText;
        oText.FormatV(szFormat, pArguments);
        m_lCharacters += oText.GetLength();
    }
    void OnAssert(const char*, unsigned long, const char*) override { ++m_lChecks; }
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

    long m_lCharacters = 0;
    long m_lChecks = 0;
};

class CResults : public TOVTest::CTOVTestListener
{
public:
    void EnterTestCase(const TOVTest::CTOVTestCase&) override { ++m_nCases; }

    int m_nCases = 0;
};
} // namespace

void RunSharedObjects(CThreadReport& oReport)
{
    int nAlive = 0;
    for (int nTurn = 0; nTurn < 20; ++nTurn)
    {
        CTOVSmartPointer<std::string> pText(new std::string(static_cast<std::size_t>(nTurn) * 10, 'x'));
        CTOVArray<CTOVSmartPointer<std::string>> apTexts;
        for (int nCopy = 0; nCopy < 10; ++nCopy)
            apTexts.Add(pText);
        oReport.ExpectEqual(11, pText.GetRefCount(), "smart pointers of a text");
        pText = new std::string("other");

        CThings oThings;
        CCountedThing* const pThing = new CCountedThing(nAlive);
        oThings.m_apThings[nTurn] = pThing;
        {
            const CTOVHandle oHandle(oThings, nTurn);
            CTOVHandle oCopy(oHandle);
            oReport.ExpectEqual(3, pThing->GetRefCount(), "references of a thing");
            pThing->Release();
        }
        oReport.ExpectEqual(0, nAlive + static_cast<int>(oThings.m_apThings.size()), "things that are left");

        CNumber oNumber;
        ITOVMemento* const pState = oNumber.CreateMemento();
        oNumber.m_nNumber = nTurn;
        oNumber.RestoreMemento(*pState);
        oNumber.DisposeMemento(pState);
        oReport.ExpectEqual(0, oNumber.m_nNumber, "a restored number");
    }
}

void RunClasses(CThreadReport& oReport)
{
    const long lBefore = CTOVClassServer::Instance().GetNumClasses();
    for (int nTurn = 0; nTurn < 20; ++nTurn)
    {
        const std::string sName = "load class " + std::to_string(nTurn);
        const CTOVClass oBase((sName + " base").c_str());
        const CTOVClass oDerived(sName.c_str(), &oBase);
        oReport.Expect(oDerived.IsKindOf(oBase) && TOVRuntimeClass(sName.c_str()) == oDerived, "a class is found");
        CTOVStringA oName;
        oReport.Expect(CTOVClassServer::Instance().GetFirstClass(oName) && !oName.IsEmpty(), "a class has a name");
    }
    oReport.ExpectEqual(lBefore, CTOVClassServer::Instance().GetNumClasses(), "classes in the end");
}

void RunListeners(CThreadReport& oReport)
{
    TOVDebug::CTOVDebugServer& oServer = TOVDebug::CTOVDebugServer::Instance();
    CQuietListener oListener;
    oServer.Register(&oListener);
    for (int nTurn = 0; nTurn < 20; ++nTurn)
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%s %d", "a line", nTurn);
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityTrace, "%*d", 2000, nTurn);
        try
        {
            TOV_ASSERT(nTurn < 0);
        }
        catch (const TOVDebug::CTOVAssertException& oException)
        {
            oReport.ExpectEqual(0xffff, static_cast<long long>(oException.GetCode()), "code of a check");
        }
    }
    oServer.Unregister(&oListener);
    oReport.Expect(oListener.m_lCharacters >= 40000 && oListener.m_lChecks >= 20, "lines and checks are heard");
}

void RunTimer(CThreadReport& oReport)
{
    CTOVTimer oTimer;
    for (int nChannel = 0; nChannel < oTimer.GetNumChannels(); ++nChannel)
    {
        oReport.Expect(oTimer.DefineChannel(nChannel, "load"), "a channel is defined");
        oTimer.Start(nChannel);
        oTimer.EnableFrameTime(nChannel);
    }
    const CTOVTimer oCopy(oTimer);
    oTimer.UpdateAll();
    for (int nChannel = 0; nChannel < oTimer.GetNumChannels(); ++nChannel)
        oReport.Expect(oTimer.GetTime(nChannel) >= 0 && oTimer.UndefineChannel(nChannel), "a channel has a time");
    oReport.Expect(oCopy.IsRunning(0) && CTOVTimer::Instance().GetTimeDirect() > 0, "the copy runs");
}

void RunConditions(CThreadReport& oReport)
{
    for (int nTurn = 0; nTurn < 20; ++nTurn)
    {
        CTOVEvent aoEvents[3];
        CTOVEventCondition oAny(CTOVEventCondition::eConditionTypeAny, aoEvents, 3);
        const CTOVMutex oMutex;
        const CTOVSemaphore oSemaphore(1, 2);
        const CTOVCriticalSection oSection;
        oMutex.Lock();
        oSection.Enter();
        oReport.Expect(oSemaphore.TryLock(0) && !oSemaphore.TryLock(0), "a semaphore has one unit");
        oReport.ExpectEqual(-2, oAny.TimedWait(0), "a wait for nothing");
        aoEvents[nTurn % 3].Signal();
        oReport.ExpectEqual(nTurn % 3, oAny.Wait(), "the event that ends a wait");
        oSection.Leave();
        oMutex.Unlock();
    }
}

void RunSuites(CThreadReport& oReport)
{
    // It must exist until the next run begins.
    static CResults s_oResults;
    s_oResults.m_nCases = 0;
    TOVTest::CTOVTestRunner::RunAllTests(&s_oResults);
    oReport.Expect(s_oResults.m_nCases > 0, "the library's suites have cases");
}
