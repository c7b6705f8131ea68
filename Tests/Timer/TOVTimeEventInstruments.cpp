#include "Timer/TOVTimeEventInstruments.h"

#include <map>
#include <utility>

struct CTimeEvent::sState
{
    explicit sState(CTimeEvent& oEvent) : pEvent(&oEvent) {}

    std::mutex oCalling; // held through a call, so that the event outlives it
    CTimeEvent* pEvent;  // NULL once the event is gone

    mutable std::mutex oMutex;
    std::vector<sTimeEventCall> aCalls;
    CTally oTally;
};

namespace
{
typedef std::map<unsigned long, std::shared_ptr<void>> tStates;

// Never destroyed: an event that nobody uninstalls comes until the very end of the process.
std::mutex& s_oStatesMutex = *new std::mutex;
tStates& s_aStates = *new tStates;
unsigned long s_ulNextUser = 0x80000000; // all 32 bits count

unsigned long Remember(const std::shared_ptr<void>& pState)
{
    const std::lock_guard<std::mutex> oGuard(s_oStatesMutex);
    s_aStates[++s_ulNextUser] = pState;
    return s_ulNextUser;
}

std::shared_ptr<void> Find(unsigned long ulUser)
{
    const std::lock_guard<std::mutex> oGuard(s_oStatesMutex);
    const auto pFound = s_aStates.find(ulUser);
    return pFound != s_aStates.end() ? pFound->second : nullptr;
}
} // namespace

CTimeEvent::CTimeEvent() : m_pState(new sState(*this)), m_ulUser(Remember(m_pState))
{
}

CTimeEvent::~CTimeEvent()
{
    if (m_nEvent > 0 && m_nKind == PERIODIC)
    {
        EXPECT_NO_THROW(Uninstall());
    }
    {
        const std::lock_guard<std::mutex> oGuard(m_pState->oCalling);
        m_pState->pEvent = nullptr;
    }
    const std::lock_guard<std::mutex> oGuard(s_oStatesMutex);
    s_aStates.erase(m_ulUser);
}

int CTimeEvent::Install(int nPeriod, int nKind)
{
    m_nPeriod = nPeriod;
    m_nKind = nKind;
    m_nEvent = CTOVTimer::InstallTimeEvent(static_cast<unsigned int>(nPeriod), 0, &OnTimeEvent, m_ulUser, nKind);
    return m_nEvent;
}

void CTimeEvent::Uninstall()
{
    CTOVTimer::UninstallTimeEvent(std::exchange(m_nEvent, -1), m_nPeriod);
}

int CTimeEvent::Count() const
{
    return m_pState->oTally.Count();
}

bool CTimeEvent::Reaches(int nCount)
{
    return m_pState->oTally.Reaches(nCount);
}

bool CTimeEvent::Stays(int nCount)
{
    return m_pState->oTally.Stays(nCount);
}

std::vector<sTimeEventCall> CTimeEvent::Calls() const
{
    const std::lock_guard<std::mutex> oGuard(m_pState->oMutex);
    return m_pState->aCalls;
}

void CTimeEvent::OnTimeEvent(unsigned int nEvent, unsigned int, unsigned long ulUser, unsigned long, unsigned long)
{
    const auto pState = std::static_pointer_cast<sState>(Find(ulUser));
    if (pState == nullptr)
        return;

    const std::lock_guard<std::mutex> oCalling(pState->oCalling);
    if (pState->pEvent == nullptr)
        return;

    const sTimeEventCall oCall = {static_cast<int>(nEvent), ulUser, std::this_thread::get_id()};
    int nCall = 0;
    {
        const std::lock_guard<std::mutex> oGuard(pState->oMutex);
        pState->aCalls.push_back(oCall);
        nCall = static_cast<int>(pState->aCalls.size());
    }
    pState->oTally.Add();
    if (pState->pEvent->m_fnAction)
        pState->pEvent->m_fnAction(nCall, oCall);
}

void LetEventsPass()
{
    CTimeEvent oOther;
    oOther.Install(1, PERIODIC);
    EXPECT_TRUE(oOther.Reaches(20));
}
