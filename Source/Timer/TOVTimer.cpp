#include <Timer/TOVTimer.h>

#include <Debug/TOVDebug.h>
#include <TOVPlatform/Backend/TOVSystem.h>
#include <TOVPlatform/Backend/TOVTimeEvent.h>
#include <TOVPlatform/TOVString.h>
#include <Timer/TOVTimerTicks.h>

#include <climits>

template class TOV_TEMPLATE_DEFINE CTOVDynamicSingleton<CTOVTimer>;

using namespace TOVTimerTicks;
using TOVAtomic::Load;
using TOVAtomic::Store;

namespace
{
// Truncates toward zero. A value that does not fit into 64 bits gives the smallest number, whose low 32 bits are 0, as
// the processor's conversion does.
long long Truncated(double dValue)
{
    const double dLimit = 9223372036854775808.0;
    if (dValue >= -dLimit && dValue < dLimit)
        return static_cast<long long>(dValue);
    return LLONG_MIN;
}

// Computes with ticks, which wrap around, as Difference does.
long long Sum(long long nFirst, long long nSecond)
{
    return static_cast<long long>(static_cast<unsigned long long>(nFirst) + static_cast<unsigned long long>(nSecond));
}

unsigned long ToMilliseconds(double dSeconds)
{
    return static_cast<tDword>(Truncated(Rounded(dSeconds * 1000.0)));
}

const char* TextOf(const CTOVStringA& oName)
{
    return oName.IsEmpty() ? "" : oName.GetString();
}

constexpr int PERIODIC_EVENT = 1;
constexpr unsigned int TIMERR_NOERROR = 0; // the texts of checks contain this name

template<class TCallback>
int InstallEvent(unsigned int (*fnSet)(unsigned int, unsigned int, TCallback, unsigned long, bool), unsigned int nDelay,
                 unsigned int nResolution, TCallback pCallback, unsigned long ulUser, int nKind)
{
    if (TOVPlatform::Backend::BeginTimerPeriod(nDelay) != TIMERR_NOERROR)
        return -1;

    const unsigned int nEvent = fnSet(nDelay, nResolution, pCallback, ulUser, nKind == PERIODIC_EVENT);
    const int nResult = static_cast<int>(nEvent);
    TOV_ASSERT(nResult != 0); // Settled: if this fails, the timer period stays in force.
    return nResult;
}
} // namespace

// This stands here, as the line in the log names the timer's source.
long long TOVTimerTicks::WarnOfCounter(const char* szWarning)
{
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning, "%s", szWarning);
    return 0;
}

CTOVTimer::CTOVTimer() : m_bHighResolutionTimer(IsHighResolutionTimerAvailable())
{
}

CTOVTimer::CTOVTimer(const CTOVTimer& oOther) = default;

CTOVTimer& CTOVTimer::operator=(const CTOVTimer& oOther) = default;

CTOVTimer::~CTOVTimer() = default;

CTOVTimer& CTOVTimer::Instance()
{
    return CTOVDynamicSingleton<CTOVTimer>::GetInstance();
}

bool CTOVTimer::DefineChannel(int nChannel, const char* szName)
{
    if (!IsChannel(nChannel) || IsDefined(nChannel))
        return false;

    // Settled: the channel is defined first, and stays defined if setting its name throws.
    sTimeChannel& oChannel = m_aChannels[nChannel];
    Store(oChannel.bDefined, true);
    oChannel.sName = szName;
    Store(oChannel.bRunning, false);
    Store(oChannel.bPaused, false);
    Store(oChannel.nPauseTime, 0LL);
    Store(oChannel.bFrameTimeEnabled, false);
    Store(oChannel.dFrameTime, 0.0);
    Store(oChannel.dLastFrameTime, 0.0);
    Store(oChannel.nStartTime, 0LL);
    // Settled: the frame rate keeps its value.
    return true;
}

bool CTOVTimer::UndefineChannel(int nChannel)
{
    if (!IsChannel(nChannel))
        return false;

    if (IsDefined(nChannel))
    {
        Store(m_aChannels[nChannel].bDefined, false);
        m_aChannels[nChannel].sName.Empty();
    }
    return true;
}

int CTOVTimer::GetNumChannels() const
{
    return TOV_TIMER_MAX_TIME_CHANNELS;
}

int CTOVTimer::GetChannelByName(const char* szName) const
{
    const char* const szWanted = szName != nullptr ? szName : "";
    for (int i = 0; i < TOV_TIMER_MAX_TIME_CHANNELS; ++i)
    {
        if (IsDefined(i) && TOVPlatform::TOVStringA::CompareNoCase(GetChannelName(i), szWanted) == 0)
            return i;
    }
    return -1;
}

const char* CTOVTimer::GetChannelName(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    return TextOf(m_aChannels[nChannel].sName);
}

bool CTOVTimer::IsDefined(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    return Load(m_aChannels[nChannel].bDefined);
}

bool CTOVTimer::IsRunning(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    return Load(m_aChannels[nChannel].bRunning);
}

bool CTOVTimer::IsPaused(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    return Load(m_aChannels[nChannel].bPaused);
}

bool CTOVTimer::IsDefinedAndRunning(int nChannel) const
{
    return IsDefined(nChannel) && IsRunning(nChannel);
}

void CTOVTimer::Start(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefined(nChannel));
    sTimeChannel& oChannel = m_aChannels[nChannel];
    Store(oChannel.bRunning, true);
    Store(oChannel.nStartTime, GetHardwareTime());
    // Settled: a channel that was paused is still paused.
}

void CTOVTimer::Stop(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefined(nChannel));
    Store(m_aChannels[nChannel].bRunning, false);
}

void CTOVTimer::Reset(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel));
    Store(m_aChannels[nChannel].nStartTime, GetHardwareTime());
}

void CTOVTimer::SetTime(int nChannel, double dTime)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel));
    sTimeChannel& oChannel = m_aChannels[nChannel];
    if (Load(oChannel.bFrameTimeEnabled))
        Store(oChannel.dFrameTime, dTime);

    const double dFrequency = static_cast<double>(GetHardwareTimerFrequency());
    const long long nTicks = Truncated(Rounded(dFrequency * dTime));
    Store(oChannel.nStartTime, Difference(GetHardwareTime(), nTicks));
    // Settled: the time of a paused channel becomes 0, whatever dTime is.
    Store(oChannel.nPauseTime, Load(oChannel.nStartTime));
}

void CTOVTimer::Pause(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel));
    sTimeChannel& oChannel = m_aChannels[nChannel];
    if (Load(oChannel.bPaused))
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning, "Time channel %d (%s) is already paused!", nChannel,
                       TextOf(oChannel.sName));
        return;
    }

    Store(oChannel.bPaused, true);
    Store(oChannel.nPauseTime, GetHardwareTime());
}

void CTOVTimer::Continue(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel));
    sTimeChannel& oChannel = m_aChannels[nChannel];
    if (!Load(oChannel.bPaused))
    {
        TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityWarning, "Time channel %d (%s) is not paused!", nChannel,
                       TextOf(oChannel.sName));
        return;
    }

    Store(oChannel.bPaused, false);
    Store(oChannel.nStartTime,
          Sum(Load(oChannel.nStartTime), Difference(GetHardwareTime(), Load(oChannel.nPauseTime))));
}

unsigned long CTOVTimer::GetTimeInMs(int nChannel) const
{
    return ToMilliseconds(GetTime(nChannel));
}

unsigned long CTOVTimer::GetTimeInMsDirect() const
{
    return ToMilliseconds(GetTimeDirect());
}

void CTOVTimer::EnableFrameTime(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel));
    Store(m_aChannels[nChannel].bFrameTimeEnabled, true);
    Store(m_aChannels[nChannel].dFrameTime, GetTime(nChannel));
}

void CTOVTimer::DisableFrameTime(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS) && IsDefinedAndRunning(nChannel));
    Store(m_aChannels[nChannel].bFrameTimeEnabled, false);
}

bool CTOVTimer::IsFrameTimeEnabled(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    return Load(m_aChannels[nChannel].bFrameTimeEnabled);
}

double CTOVTimer::GetFrameTime(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    if (!IsDefinedAndRunning(nChannel))
        return 0.0;

    return Load(m_aChannels[nChannel].bFrameTimeEnabled) ? Load(m_aChannels[nChannel].dFrameTime) : GetTime(nChannel);
}

double CTOVTimer::GetFPS(int nChannel) const
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    return Load(m_aChannels[nChannel].dFPS);
}

void CTOVTimer::Update(int nChannel)
{
    TOV_ASSERT((0 <= nChannel) && (nChannel < TOV_TIMER_MAX_TIME_CHANNELS));
    if (!IsDefinedAndRunning(nChannel))
        return;

    sTimeChannel& oChannel = m_aChannels[nChannel];
    Store(oChannel.dFrameTime, GetTime(nChannel));
    const double dElapsed = Rounded(Load(oChannel.dFrameTime) - Load(oChannel.dLastFrameTime));
    Store(oChannel.dFPS, dElapsed > 0.0 ? 1.0 / dElapsed : 0.0); // also 0 if dElapsed is not a number
    Store(oChannel.dLastFrameTime, Load(oChannel.dFrameTime));
}

void CTOVTimer::UpdateAll()
{
    for (int i = 0; i < TOV_TIMER_MAX_TIME_CHANNELS; ++i)
    {
        if (IsDefinedAndRunning(i))
            Update(i);
    }
}

int CTOVTimer::InstallTimeEvent(unsigned int nDelay, unsigned int nResolution, tTimeEvent pCallback,
                                unsigned long ulUser, int nKind)
{
    return InstallEvent(TOVPlatform::Backend::SetTimeEvent, nDelay, nResolution, pCallback, ulUser, nKind);
}

int CTOVTimer::InstallSystemTimeEvent(unsigned int nDelay, unsigned int nResolution, tSystemTimeEvent pCallback,
                                      unsigned long ulUser, int nKind)
{
    return InstallEvent(TOVPlatform::Backend::SetSystemTimeEvent, nDelay, nResolution, pCallback, ulUser, nKind);
}

void CTOVTimer::UninstallTimeEvent(int nEvent, int nPeriod)
{
    unsigned int mmres = TOVPlatform::Backend::KillTimeEvent(static_cast<unsigned int>(nEvent));
    TOV_ASSERT(mmres == TIMERR_NOERROR);
    mmres = TOVPlatform::Backend::EndTimerPeriod(static_cast<unsigned int>(nPeriod));
    TOV_ASSERT(mmres == TIMERR_NOERROR);
}

bool CTOVTimer::IsHighResolutionTimerAvailable() const
{
    return TOVPlatform::Backend::ReadPerformanceCounter().bRead;
}

bool CTOVTimer::IsHighResolutionTimerActive() const
{
    return Load(m_bHighResolutionTimer);
}

void CTOVTimer::UseHighResolutionTimer(bool bUse)
{
    Store(m_bHighResolutionTimer, bUse);
}
