#include <TestHost/TOVTestWorkers.h>

#include <TestHost/TOVTestChannel.h>
#include <TestHost/TOVTestText.h>

#include <stdexcept>

namespace TOVTestHost
{
namespace
{
// One worker, from its start to its end.
class CWorker
{
public:
    CWorker(char** aszArguments, const sWorkerRules& oRules, CTOVTestRecorder& oRecorder)
        : m_oRules(oRules), m_oRecorder(oRecorder), m_pLink(StartWorker(aszArguments)), m_bTookTooLong(false)
    {
    }

    // Returns false if the user has ended the run.
    bool Run(const sTestPosition& oStart)
    {
        SendTask(*m_pLink, {oStart, m_oRules.ulSeed});
        bool bDone = false;
        try
        {
            bDone = ReceiveTestEvents(*m_pLink, m_oRecorder, [this] { Watch(); });
        }
        catch (...)
        {
            m_pLink->WaitForEnd();
            PassOutputOn();
            throw;
        }
        sWorkerEnd oEnd = m_pLink->WaitForEnd();
        PassOutputOn();
        if (m_bTookTooLong && !oEnd.bByUser)
            oEnd.sHow = "took longer than " + SecondsOf(m_oRules.dSecondsForACase);
        else if (oEnd.sHow.empty() && !bDone)
            oEnd.sHow = "ended the process with status 0";
        Record(oEnd);
        return !oEnd.bByUser;
    }

private:
    void Record(const sWorkerEnd& oEnd)
    {
        if (oEnd.bByUser)
            m_oRecorder.StopKeepingGoing(oEnd.sHow);
        const sTestRecord& oRecord = m_oRecorder.GetRecord();
        if (oEnd.sHow.empty() || m_oRecorder.CanContinue() || !oRecord.sEarlyEnd.empty())
            return;
        if (oRecord.oPlan.lRuns == 0)
            throw std::runtime_error("while the libraries were loaded, one of them " + oEnd.sHow);
        m_oRecorder.OnEndEarly(oEnd.sHow);
    }

    static std::string SecondsOf(double dSeconds)
    {
        std::string sText = SecondsText(dSeconds);
        sText.erase(sText.find_last_not_of('0') + 1);
        return (sText.back() == '.' ? sText.substr(0, sText.size() - 1) : sText) + " s";
    }

    void PassOutputOn()
    {
        for (const eTestStream eStream : {eStreamOutput, eStreamErrors})
        {
            const std::string sText = m_pLink->TakeOutput(eStream);
            if (!sText.empty())
                m_oRecorder.OnOutput(eStream, sText);
        }
    }

    void Watch()
    {
        PassOutputOn();
        if (m_oRules.dSecondsForACase > 0 && !m_bTookTooLong &&
            m_oRecorder.GetSecondsInStep() > m_oRules.dSecondsForACase)
        {
            m_bTookTooLong = true;
            m_pLink->End();
        }
    }

    const sWorkerRules m_oRules;
    CTOVTestRecorder& m_oRecorder;
    const std::unique_ptr<ITOVWorkerLink> m_pLink;
    bool m_bTookTooLong;
};
} // namespace

void RunInWorkers(char** aszArguments, const sWorkerRules& oRules, CTOVTestRecorder& oRecorder)
{
    if (oRules.bKeepGoing)
        oRecorder.KeepGoing();
    bool bGoOn = CWorker(aszArguments, oRules, oRecorder).Run({0, 0, 0});
    while (bGoOn && oRecorder.CanContinue())
    {
        const sTestPosition oStart = oRecorder.GetNextPosition();
        try
        {
            bGoOn = CWorker(aszArguments, oRules, oRecorder).Run(oStart);
            if (oRecorder.CanContinue() && oRecorder.GetNextPosition() == oStart)
                oRecorder.StopKeepingGoing("ended, and another process cannot continue after it");
        }
        catch (const std::runtime_error& oError)
        {
            oRecorder.StopKeepingGoing(std::string("ended, and nothing can continue after it: ") + oError.what());
        }
    }
}
} // namespace TOVTestHost
