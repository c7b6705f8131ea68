#include <TestHost/TOVTestChannel.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace TOVTestHost
{
namespace
{
typedef std::vector<std::string> tFields;

enum eEvent : char
{
    ePlan = 'P',
    eEnterRun = 'R',
    eLeaveRun = 'r',
    eEnterSuite = 'S',
    eLeaveSuite = 's',
    eEnterCase = 'C',
    eLeaveCase = 'c',
    eCloseCase = 'x',
    eNote = 'N',
    eEndEarly = 'E',
    eDone = 'D'
};

void Append(tFields& aFields, const sTestPlace& oPlace)
{
    aFields.insert(aFields.end(), {oPlace.sDescription, oPlace.sFile, std::to_string(oPlace.ulLine)});
}

// Reads the fields of a message in the order in which they were written.
class CFieldReader
{
public:
    explicit CFieldReader(const tFields& aFields) : m_aFields(aFields), m_nNext(0) {}

    bool HasMore() const { return m_nNext < m_aFields.size(); }
    const std::string& Text() { return m_aFields.at(m_nNext++); }
    long Number() { return std::atol(Text().c_str()); }
    sTestPlace Place()
    {
        const std::string& sDescription = Text();
        const std::string& sFile = Text();
        return {sDescription, sFile, std::strtoul(Text().c_str(), nullptr, 10)};
    }

private:
    const tFields& m_aFields;
    std::size_t m_nNext;
};

bool ReadField(ITOVProcessLink& oLink, std::string& sField)
{
    std::uint32_t nLength = 0;
    if (!oLink.Read(&nLength, sizeof(nLength)))
        return false;
    sField.resize(nLength);
    return nLength == 0 || oLink.Read(&sField[0], nLength);
}

bool ReadMessage(ITOVProcessLink& oLink, char& cEvent, tFields& aFields)
{
    std::uint32_t nFields = 0;
    if (!oLink.Read(&cEvent, 1) || !oLink.Read(&nFields, sizeof(nFields)))
        return false;
    aFields.assign(nFields, "");
    for (std::string& sField : aFields)
        if (!ReadField(oLink, sField))
            return false;
    return true;
}

sTestPlan ToPlan(CFieldReader oReader)
{
    sTestPlan oPlan = {{}, oReader.Number()};
    oPlan.llSeed = std::strtoll(oReader.Text().c_str(), nullptr, 10);
    while (oReader.HasMore())
    {
        sPlannedSuite oSuite = {oReader.Place(), {}};
        for (long lCases = oReader.Number(); lCases > 0; --lCases)
            oSuite.aCases.push_back(oReader.Place());
        oPlan.aSuites.push_back(oSuite);
    }
    return oPlan;
}

sTestNote ToNote(CFieldReader oReader)
{
    sTestNote oNote = {static_cast<eTestNote>(oReader.Number()), "", "", 0, "", {}};
    oNote.sType = oReader.Text();
    oNote.sFile = oReader.Text();
    oNote.lLine = oReader.Number();
    oNote.sMessage = oReader.Text();
    while (oReader.HasMore())
    {
        const std::string& sName = oReader.Text();
        oNote.aValues.emplace_back(sName, oReader.Text());
    }
    return oNote;
}

void HandOn(char cEvent, const tFields& aFields, ITOVTestEvents& oEvents)
{
    CFieldReader oReader(aFields);
    switch (cEvent)
    {
    case ePlan:
        return oEvents.OnPlan(ToPlan(oReader));
    case eEnterRun:
        return oEvents.OnEnterRun();
    case eLeaveRun:
        return oEvents.OnLeaveRun();
    case eEnterSuite:
        return oEvents.OnEnterSuite(oReader.Place());
    case eLeaveSuite:
        return oEvents.OnLeaveSuite();
    case eEnterCase:
        return oEvents.OnEnterCase(oReader.Place());
    case eLeaveCase:
        return oEvents.OnLeaveCase();
    case eCloseCase:
        return oEvents.OnCloseCase();
    case eNote:
        return oEvents.OnNote(ToNote(oReader));
    case eEndEarly:
        return oEvents.OnEndEarly(oReader.Text());
    default:
        return;
    }
}
// Reads the messages on a thread of its own, so that the parent can watch the worker meanwhile.
class CMessageReader
{
public:
    explicit CMessageReader(ITOVWorkerLink& oLink)
        : m_oLink(oLink), m_bMessage(false), m_bEnd(false), m_cEvent(0), m_oThread([this] { ReadAll(); })
    {
    }

    ~CMessageReader()
    {
        m_oLink.End();
        {
            const std::lock_guard<std::mutex> oGuard(m_oMutex);
            m_bMessage = false;
            m_bEnd = true;
        }
        m_oChange.notify_all();
        m_oThread.join();
    }

    CMessageReader(const CMessageReader&) = delete;
    CMessageReader& operator=(const CMessageReader&) = delete;

    // Waits for a message. Returns false if the worker has ended. Throws what has ended the thread.
    bool Wait(const std::function<void()>& fnWatch)
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        while (!m_oChange.wait_for(oLock, std::chrono::milliseconds(20), [this] { return m_bMessage || m_bEnd; }))
        {
            oLock.unlock();
            fnWatch();
            // A process that the worker has started may keep the link open.
            if (m_oLink.HasEnded())
                m_oLink.End();
            oLock.lock();
        }
        if (m_pError != nullptr)
            std::rethrow_exception(m_pError);
        return m_bMessage;
    }

    // These may be called after Wait has returned true, until Acknowledge, which lets the worker continue.
    char Event() const { return m_cEvent; }
    const tFields& Fields() const { return m_aFields; }
    void Acknowledge()
    {
        {
            const std::lock_guard<std::mutex> oGuard(m_oMutex);
            m_bMessage = false;
        }
        m_oChange.notify_all();
        m_oLink.Write("", 1);
    }

private:
    bool TryRead()
    {
        try
        {
            return ReadMessage(m_oLink, m_cEvent, m_aFields);
        }
        catch (...)
        {
            m_pError = std::current_exception();
            return false;
        }
    }

    void ReadAll()
    {
        std::unique_lock<std::mutex> oLock(m_oMutex);
        while (!m_bEnd)
        {
            oLock.unlock();
            const bool bRead = TryRead();
            oLock.lock();
            m_bMessage = bRead && !m_bEnd;
            m_bEnd = m_bEnd || !bRead;
            m_oChange.notify_all();
            m_oChange.wait(oLock, [this] { return !m_bMessage; });
        }
    }

    ITOVWorkerLink& m_oLink;
    std::mutex m_oMutex;
    std::condition_variable m_oChange;
    bool m_bMessage;
    bool m_bEnd;
    char m_cEvent;
    tFields m_aFields;
    std::exception_ptr m_pError;
    std::thread m_oThread;
};
} // namespace

CTOVTestSender::CTOVTestSender(ITOVProcessLink& oLink) : m_oLink(oLink)
{
}

void CTOVTestSender::Send(char cEvent, const tFields& aFields)
{
    std::string sMessage(1, cEvent);
    const auto AppendNumber = [&](std::size_t nNumber) {
        const std::uint32_t nBytes = static_cast<std::uint32_t>(nNumber);
        sMessage.append(reinterpret_cast<const char*>(&nBytes), sizeof(nBytes));
    };
    AppendNumber(aFields.size());
    for (const std::string& sField : aFields)
    {
        AppendNumber(sField.size());
        sMessage += sField;
    }

    std::cout.flush();
    std::clog.flush();
    std::fflush(nullptr);
    char cAcknowledged = 0;
    if (!m_oLink.Write(sMessage.data(), sMessage.size()) || !m_oLink.Read(&cAcknowledged, 1))
        EndWorker();
}

void CTOVTestSender::OnPlan(const sTestPlan& oPlan)
{
    tFields aFields = {std::to_string(oPlan.lRuns), std::to_string(oPlan.llSeed)};
    for (const sPlannedSuite& oSuite : oPlan.aSuites)
    {
        Append(aFields, oSuite.oPlace);
        aFields.push_back(std::to_string(oSuite.aCases.size()));
        for (const sTestPlace& oCase : oSuite.aCases)
            Append(aFields, oCase);
    }
    Send(ePlan, aFields);
}

void CTOVTestSender::OnEnterRun()
{
    Send(eEnterRun, {});
}

void CTOVTestSender::OnLeaveRun()
{
    Send(eLeaveRun, {});
}

void CTOVTestSender::OnEnterSuite(const sTestPlace& oSuite)
{
    tFields aFields;
    Append(aFields, oSuite);
    Send(eEnterSuite, aFields);
}

void CTOVTestSender::OnLeaveSuite()
{
    Send(eLeaveSuite, {});
}

void CTOVTestSender::OnEnterCase(const sTestPlace& oCase)
{
    tFields aFields;
    Append(aFields, oCase);
    Send(eEnterCase, aFields);
}

void CTOVTestSender::OnLeaveCase()
{
    Send(eLeaveCase, {});
}

void CTOVTestSender::OnCloseCase()
{
    Send(eCloseCase, {});
}

void CTOVTestSender::OnNote(const sTestNote& oNote)
{
    tFields aFields = {std::to_string(oNote.eKind), oNote.sType, oNote.sFile, std::to_string(oNote.lLine),
                       oNote.sMessage};
    for (const auto& oValue : oNote.aValues)
        aFields.insert(aFields.end(), {oValue.first, oValue.second});
    Send(eNote, aFields);
}

void CTOVTestSender::OnEndEarly(const std::string& sReason)
{
    Send(eEndEarly, {sReason});
}

void CTOVTestSender::SendDone(const std::string& sError)
{
    Send(eDone, {sError});
}

bool ReceiveTestEvents(ITOVWorkerLink& oLink, ITOVTestEvents& oEvents, const std::function<void()>& fnWatch)
{
    CMessageReader oReader(oLink);
    bool bDone = false;
    while (oReader.Wait(fnWatch))
    {
        fnWatch();
        HandOn(oReader.Event(), oReader.Fields(), oEvents);
        if (oReader.Event() == eDone)
        {
            bDone = true;
            if (!oReader.Fields().at(0).empty())
                throw std::runtime_error(oReader.Fields()[0]);
        }
        oReader.Acknowledge();
    }
    return bDone;
}

bool SendTask(ITOVProcessLink& oLink, const sWorkerTask& oTask)
{
    const std::uint32_t aNumbers[] = {
        static_cast<std::uint32_t>(oTask.oStart.lRun), static_cast<std::uint32_t>(oTask.oStart.nSuite),
        static_cast<std::uint32_t>(oTask.oStart.nCase), static_cast<std::uint32_t>(oTask.ulSeed)};
    return oLink.Write(aNumbers, sizeof(aNumbers));
}

bool ReceiveTask(ITOVProcessLink& oLink, sWorkerTask& oTask)
{
    std::uint32_t aNumbers[4] = {};
    if (!oLink.Read(aNumbers, sizeof(aNumbers)))
        return false;
    oTask = {{static_cast<long>(aNumbers[0]), aNumbers[1], aNumbers[2]}, aNumbers[3]};
    return true;
}
} // namespace TOVTestHost
