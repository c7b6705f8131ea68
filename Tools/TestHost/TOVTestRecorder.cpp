#include <TestHost/TOVTestRecorder.h>

#include <exception>

namespace TOVTestHost
{
namespace
{
double SecondsSince(std::chrono::steady_clock::time_point oStart)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - oStart).count();
}

sCaseRecord NewCase(const sSuiteRecord& oSuite, const sTestPlace& oCase, eTestOutcome eOutcome)
{
    return {oSuite.oPlace.sDescription + "." + oCase.sDescription, oCase, eOutcome, 0, {}, "", ""};
}

// Keeps the beginning of what a case writes; a report is no place for all that an endless loop writes.
void AppendOutput(std::string& sKept, const std::string& sText)
{
    constexpr std::size_t MAX_OUTPUT = 1000000;
    static const char s_szCut[] = "\n[the rest is left out]\n";
    if (sKept.size() > MAX_OUTPUT)
        return;
    sKept += sText;
    if (sKept.size() > MAX_OUTPUT)
        sKept.replace(MAX_OUTPUT, sKept.npos, s_szCut);
}
} // namespace

sTestCounts CountCases(const sSuiteRecord& oSuite)
{
    sTestCounts oCounts = {};
    for (const sCaseRecord& oCase : oSuite.aCases)
    {
        ++oCounts.lCases;
        oCounts.lPassed += oCase.eOutcome == eOutcomePassed;
        oCounts.lFailed += oCase.eOutcome == eOutcomeFailed;
        oCounts.lEnded += oCase.eOutcome == eOutcomeEnded;
        oCounts.lNotRun += oCase.eOutcome == eOutcomeNotRun;
        for (const sTestNote& oNote : oCase.aNotes)
            oCounts.lWarnings += oNote.eKind == eNoteWarning;
    }
    return oCounts;
}

sTestCounts CountCases(const sTestRecord& oRecord)
{
    sTestCounts oSum = {};
    for (const sSuiteRecord& oSuite : oRecord.aSuites)
    {
        const sTestCounts oCounts = CountCases(oSuite);
        oSum.lCases += oCounts.lCases;
        oSum.lPassed += oCounts.lPassed;
        oSum.lFailed += oCounts.lFailed;
        oSum.lEnded += oCounts.lEnded;
        oSum.lNotRun += oCounts.lNotRun;
        oSum.lWarnings += oCounts.lWarnings;
    }
    return oSum;
}

long CountPlannedCases(const sTestPlan& oPlan)
{
    long lCases = 0;
    for (const sPlannedSuite& oSuite : oPlan.aSuites)
        lCases += static_cast<long>(oSuite.aCases.size());
    return lCases * oPlan.lRuns;
}

CTOVTestRecorder::CTOVTestRecorder()
    : m_oRecord(), m_bBegun(false), m_bInSuite(false), m_bCaseOpen(false), m_bCaseLeft(false), m_bInStep(false),
      m_bKeepGoing(false), m_bContinuing(false), m_oStart(tClock::now())
{
}

template<class... TParameters, class... TArguments>
void CTOVTestRecorder::Tell(void (ITOVTestReport::*pfEvent)(TParameters...), const TArguments&... aArguments)
{
    for (ITOVTestReport* pReport : m_aReports)
        (pReport->*pfEvent)(aArguments...);
}

void CTOVTestRecorder::AddReport(ITOVTestReport& oReport)
{
    m_aReports.push_back(&oReport);
}

const sTestRecord& CTOVTestRecorder::GetRecord() const
{
    return m_oRecord;
}

void CTOVTestRecorder::Begin()
{
    if (m_bBegun)
        return;
    m_bBegun = true;
    m_oStart = tClock::now();
    Tell(&ITOVTestReport::OnBegin, m_oRecord);
}

void CTOVTestRecorder::KeepGoing()
{
    m_oRecord.bKeepGoing = true;
    m_bKeepGoing = true;
}

void CTOVTestRecorder::StopKeepingGoing(const std::string& sReason)
{
    m_bKeepGoing = false;
    if (m_bContinuing)
        EndRun(sReason);
}

// The last case of the open suite is the one that ended the run.
void CTOVTestRecorder::EndRun(const std::string& sReason)
{
    m_bContinuing = false;
    m_oRecord.sEarlyEnd = m_oRecord.aSuites.back().aCases.back().sName + " " + sReason;
    OnLeaveSuite();
    m_bInStep = false;
}

bool CTOVTestRecorder::CanContinue() const
{
    return m_bContinuing;
}

sTestPosition CTOVTestRecorder::GetNextPosition() const
{
    const std::size_t nVisit = m_oRecord.aSuites.size() - 1;
    return {m_oRecord.lRuns - 1, nVisit % m_oRecord.oPlan.aSuites.size(), m_oRecord.aSuites.back().aCases.size()};
}

void CTOVTestRecorder::StopAfterFailure()
{
    const sTestCounts oCounts = CountCases(m_oRecord);
    if (oCounts.lFailed == 0 || !m_oRecord.sEarlyEnd.empty() || oCounts.lCases == CountPlannedCases(m_oRecord.oPlan))
        return;
    for (const sSuiteRecord& oSuite : m_oRecord.aSuites)
        for (const sCaseRecord& oCase : oSuite.aCases)
            if (oCase.eOutcome == eOutcomeFailed)
                m_oRecord.sEarlyEnd = oCase.sName + " failed";
}

void CTOVTestRecorder::OnOutput(eTestStream eStream, const std::string& sText)
{
    if (m_bCaseOpen)
    {
        sCaseRecord& oCase = m_oRecord.aSuites.back().aCases.back();
        AppendOutput(eStream == eStreamOutput ? oCase.sOutput : oCase.sErrors, sText);
    }
    else if (m_bInSuite)
    {
        AppendOutput(eStream == eStreamOutput ? m_sOutputOfStartup : m_sErrorsOfStartup, sText);
    }
    Tell(&ITOVTestReport::OnOutput, eStream, sText);
}

double CTOVTestRecorder::GetSecondsInStep() const
{
    return m_bInStep ? SecondsSince(m_oStepStart) : 0;
}

void CTOVTestRecorder::BeginStep()
{
    m_bInStep = true;
    m_oStepStart = tClock::now();
}

void CTOVTestRecorder::OnPlan(const sTestPlan& oPlan)
{
    BeginStep();
    if (m_bContinuing)
        return;
    m_oRecord.oPlan = oPlan;
    Begin();
}

void CTOVTestRecorder::OnEnterRun()
{
    if (m_bContinuing)
        return;
    Begin();
    ++m_oRecord.lRuns;
    Tell(&ITOVTestReport::OnEnterRun, m_oRecord);
}

void CTOVTestRecorder::OnLeaveRun()
{
}

void CTOVTestRecorder::OnEnterSuite(const sTestPlace& oSuite)
{
    BeginStep();
    if (m_bContinuing)
    {
        m_bContinuing = false;
        return;
    }
    m_oRecord.aSuites.push_back({oSuite, 0, std::time(nullptr), {}});
    m_bInSuite = true;
    m_oSuiteStart = m_oStepStart;
}

void CTOVTestRecorder::OnLeaveSuite()
{
    OnCloseCase();
    sSuiteRecord& oSuite = m_oRecord.aSuites.back();
    oSuite.dSeconds = SecondsSince(m_oSuiteStart);
    m_bInSuite = false;
    m_sOutputOfStartup.clear();
    m_sErrorsOfStartup.clear();
    BeginStep();
    Tell(&ITOVTestReport::OnLeaveSuite, oSuite);
}

void CTOVTestRecorder::OnEnterCase(const sTestPlace& oCase)
{
    OnCloseCase();
    sSuiteRecord& oSuite = m_oRecord.aSuites.back();
    oSuite.aCases.push_back(NewCase(oSuite, oCase, eOutcomePassed));
    m_bCaseOpen = true;
    m_bCaseLeft = false;
    oSuite.aCases.back().sOutput.swap(m_sOutputOfStartup);
    oSuite.aCases.back().sErrors.swap(m_sErrorsOfStartup);
    Tell(&ITOVTestReport::OnEnterCase, oSuite.aCases.back());

    std::vector<sTestNote> aNotes;
    aNotes.swap(m_aNotesOfStartup);
    for (const sTestNote& oNote : aNotes)
        OnNote(oNote);
    m_oCaseStart = tClock::now();
}

void CTOVTestRecorder::OnLeaveCase()
{
    m_oRecord.aSuites.back().aCases.back().dSeconds = SecondsSince(m_oCaseStart);
    m_bCaseLeft = true;
}

void CTOVTestRecorder::OnCloseCase()
{
    if (!m_bCaseOpen)
        return;
    m_bCaseOpen = false;
    BeginStep();
    Tell(&ITOVTestReport::OnLeaveCase, m_oRecord.aSuites.back().aCases.back());
}

void CTOVTestRecorder::OnNote(const sTestNote& oNote)
{
    if (!m_bCaseOpen)
    {
        m_aNotesOfStartup.push_back(oNote);
        return;
    }
    sCaseRecord& oCase = m_oRecord.aSuites.back().aCases.back();
    oCase.aNotes.push_back(oNote);
    if (oNote.eKind == eNoteFailure && oCase.eOutcome == eOutcomePassed)
        oCase.eOutcome = eOutcomeFailed;
}

// Enters the case in whose Startup the run has ended: it is the next one of the plan.
void CTOVTestRecorder::EnterCaseThatDidNotStart()
{
    const sSuiteRecord& oSuite = m_oRecord.aSuites.back();
    sTestPlace oCase = {"<outside of the cases>", oSuite.oPlace.sFile, oSuite.oPlace.ulLine};
    const std::vector<sPlannedSuite>& aPlanned = m_oRecord.oPlan.aSuites;
    const std::size_t nVisit = m_oRecord.aSuites.size() - 1;
    if (nVisit < aPlanned.size() * static_cast<std::size_t>(m_oRecord.oPlan.lRuns))
    {
        const std::vector<sTestPlace>& aCases = aPlanned[nVisit % aPlanned.size()].aCases;
        if (oSuite.aCases.size() < aCases.size())
            oCase = aCases[oSuite.aCases.size()];
    }
    OnEnterCase(oCase);
    m_oCaseStart = m_oStepStart;
}

void CTOVTestRecorder::OnEndEarly(const std::string& sReason)
{
    const bool bOutside = !m_bInSuite;
    if (bOutside)
    {
        // The cases that did not run are added first, since their places in the list identify them.
        AddCasesNotRun();
        OnEnterSuite({"<outside of the suites>", "", 0});
    }
    if (!m_bCaseOpen)
        EnterCaseThatDidNotStart();
    sCaseRecord& oCase = m_oRecord.aSuites.back().aCases.back();
    oCase.eOutcome = eOutcomeEnded;
    if (!m_bCaseLeft)
        oCase.dSeconds = SecondsSince(m_oCaseStart);
    oCase.aNotes.push_back(
        {eNoteEnd, "Ended", oCase.oPlace.sFile, static_cast<long>(oCase.oPlace.ulLine), sReason, {}});
    if (!m_bKeepGoing || bOutside)
        return EndRun(sReason);
    OnCloseCase();
    m_bInStep = false;
    m_bContinuing = true;
}

void CTOVTestRecorder::AddCasesNotRun()
{
    const std::vector<sPlannedSuite>& aPlanned = m_oRecord.oPlan.aSuites;
    const std::size_t nVisits = aPlanned.size() * static_cast<std::size_t>(m_oRecord.oPlan.lRuns);
    for (std::size_t nVisit = 0; nVisit < nVisits; ++nVisit)
    {
        const sPlannedSuite& oPlanned = aPlanned[nVisit % aPlanned.size()];
        if (nVisit == m_oRecord.aSuites.size())
            m_oRecord.aSuites.push_back({oPlanned.oPlace, 0, std::time(nullptr), {}});
        sSuiteRecord& oSuite = m_oRecord.aSuites[nVisit];
        for (std::size_t nCase = oSuite.aCases.size(); nCase < oPlanned.aCases.size(); ++nCase)
            oSuite.aCases.push_back(NewCase(oSuite, oPlanned.aCases[nCase], eOutcomeNotRun));
    }
}

void CTOVTestRecorder::Finish()
{
    Begin();
    m_oRecord.dSeconds = SecondsSince(m_oStart);
    if (!m_oRecord.sEarlyEnd.empty())
        AddCasesNotRun();

    // A report that cannot be written must not prevent the others.
    std::exception_ptr pFirst;
    for (ITOVTestReport* pReport : m_aReports)
    {
        try
        {
            pReport->OnEnd(m_oRecord);
        }
        catch (...)
        {
            if (pFirst == nullptr)
                pFirst = std::current_exception();
        }
    }
    if (pFirst != nullptr)
        std::rethrow_exception(pFirst);
}
} // namespace TOVTestHost
