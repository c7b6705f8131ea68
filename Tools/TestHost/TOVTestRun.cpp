#include <TestHost/TOVTestRun.h>

#include <TestHost/TOVTestEventListener.h>
#include <TestHost/TOVTestSystem.h>

#include <Debug/TOVDebugServer.h>
#include <Debug/TOVException.h>
#include <Test/TOVSimpleTestRunner.h>

#include <cstdio>
#include <set>
#include <stdexcept>

namespace TOVTestHost
{
namespace
{
// Keeps the last failed check, as its exception does not contain it.
class CCheckListener : public TOVDebug::ITOVLogListener
{
public:
    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override {}
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}
    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override
    {
        m_sCheck = std::string(szExpression) + " (" + szFile + ":" + std::to_string(ulLine) + ")";
    }

    CCheckListener() { TOVDebug::CTOVDebugServer::Instance().Register(this); }
    ~CCheckListener() { TOVDebug::CTOVDebugServer::Instance().Unregister(this); }
    CCheckListener(const CCheckListener&) = delete;
    CCheckListener& operator=(const CCheckListener&) = delete;

    const std::string& LastCheck() const { return m_sCheck; }

private:
    std::string m_sCheck;
};

// Describes the exception that is being handled: "threw ...".
std::string DescribeException(const CCheckListener& oChecks)
{
    try
    {
        throw;
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return "threw past its checks: failed check " + oChecks.LastCheck();
    }
    catch (CTOVException& oException)
    {
        char szText[80];
        std::snprintf(szText, sizeof(szText), "threw past its checks: exception of class %d, code 0x%lx",
                      static_cast<int>(oException.GetClass()), oException.GetCode());
        return szText;
    }
    catch (const std::exception& oException)
    {
        return std::string("threw past its checks: ") + oException.what();
    }
    catch (...)
    {
        return "threw past its checks";
    }
}

void LoadLibraries(const std::vector<std::string>& aLibraries, CTOVTestSelection& oSelection)
{
    std::set<const void*> aLoaded;
    for (const std::string& sLibrary : aLibraries)
    {
        std::string sReason;
        const void* pLibrary = LoadSharedLibrary(sLibrary, sReason);
        if (pLibrary == nullptr)
            throw std::runtime_error("cannot load " + sReason);
        if (aLoaded.insert(pLibrary).second && oSelection.AddGroup() == 0)
            throw std::runtime_error(sLibrary + " holds no test suite");
    }
}
} // namespace

void RunTests(const sTestRun& oRun, ITOVTestEvents& oEvents)
{
    CTOVTestSelection oSelection;
    LoadLibraries(oRun.aLibraries, oSelection);
    oEvents.OnPlan(oSelection.Choose(oRun.oChoice, oEvents));
    if (oRun.bListOnly)
        return;

    const CCheckListener oChecks;
    CTOVTestEventListener oListener(oEvents);
    TOVTest::CTOVSimpleTestRunner oRunner;
    oRunner.AddListener(oListener);
    try
    {
        oSelection.StartAt(oRun.oStart.nSuite, oRun.oStart.nCase);
        for (long lRun = oRun.oStart.lRun; lRun < oRun.oChoice.lRuns && !oSelection.IsStopped(); ++lRun)
        {
            oRunner.Run();
            oSelection.StartAt(0, 0);
        }
    }
    catch (...)
    {
        oEvents.OnEndEarly(DescribeException(oChecks));
    }
    TOVTest::CTOVTestListener::SetListener(nullptr);
}
} // namespace TOVTestHost
