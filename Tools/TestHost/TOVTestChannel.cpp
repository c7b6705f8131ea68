#include <TestHost/TOVTestChannel.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

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

    std::fflush(nullptr);
    char cAcknowledged = 0;
    if (!m_oLink.Write(sMessage.data(), sMessage.size()) || !m_oLink.Read(&cAcknowledged, 1))
        EndWorker();
}

void CTOVTestSender::OnPlan(const sTestPlan& oPlan)
{
    tFields aFields = {std::to_string(oPlan.lRuns)};
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

bool ReceiveTestEvents(ITOVProcessLink& oLink, ITOVTestEvents& oEvents)
{
    char cEvent = 0;
    tFields aFields;
    while (ReadMessage(oLink, cEvent, aFields))
    {
        HandOn(cEvent, aFields, oEvents);
        oLink.Write("", 1);
        if (cEvent != eDone)
            continue;
        if (!aFields.at(0).empty())
            throw std::runtime_error(aFields[0]);
        return true;
    }
    return false;
}
} // namespace TOVTestHost
