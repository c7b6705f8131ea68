// What reads a time: it takes so few nanoseconds more than the system's clock that it is not compiled for its size, as
// the rest of the timer is.
#include <TOVPlatform/Backend/TOVSystem.h>
#include <TOVPlatform/Vector/TOVVectorQuotient.h>
#include <Timer/TOVTimerTicks.h>

using namespace TOVTimerTicks;
using TOVAtomic::Load;

namespace
{
constexpr long long MILLISECONDS_PER_SECOND = 1000;
constexpr long long NANOSECONDS_PER_SECOND = 1000000000;

double ToSeconds(long long nTicks, long long nFrequency)
{
    const double dTicks = static_cast<double>(nTicks);
    if (TOV_LIKELY(nFrequency == NANOSECONDS_PER_SECOND))
        return Rounded(TOVPlatform::Vector::DivideByBillion(dTicks));
    return Rounded(dTicks / static_cast<double>(nFrequency));
}

long long ReadTicks(bool bHighResolution)
{
    if (!bHighResolution)
        return TOVPlatform::Backend::ReadMilliseconds();

    // Settled: there is no fallback to the other counter, whose ticks have another length.
    const TOVPlatform::Backend::sReading oTicks = TOVPlatform::Backend::ReadPerformanceCounter();
    return TOV_LIKELY(oTicks.bRead) ? oTicks.nValue : WarnOfCounter("Can't retrieve time from highresolution timer");
}

long long ReadFrequency(bool bHighResolution)
{
    if (!bHighResolution)
        return MILLISECONDS_PER_SECOND;

    const TOVPlatform::Backend::sReading oFrequency = TOVPlatform::Backend::ReadPerformanceFrequency();
    return TOV_LIKELY(oFrequency.bRead) ? oFrequency.nValue
                                        : WarnOfCounter("Can't retrieve frequency from highresolution timer");
}
} // namespace

double CTOVTimer::GetTime(int nChannel) const
{
    if (!IsChannel(nChannel))
        IsDefined(nChannel); // which throws
    const sTimeChannel& oChannel = m_aChannels[nChannel];
    if (!Load(oChannel.bDefined) || !Load(oChannel.bRunning))
        return 0.0;

    const bool bHighResolution = Load(m_bHighResolutionTimer);
    const long long nTime = ReadTicks(bHighResolution);
    const long long nFrequency = ReadFrequency(bHighResolution);
    return ToSeconds(Difference(Load(oChannel.bPaused) ? Load(oChannel.nPauseTime) : nTime, Load(oChannel.nStartTime)),
                     nFrequency);
}

double CTOVTimer::GetTimeDirect() const
{
    const bool bHighResolution = Load(m_bHighResolutionTimer);
    const long long nTime = ReadTicks(bHighResolution);
    return ToSeconds(nTime, ReadFrequency(bHighResolution));
}

long long CTOVTimer::GetHardwareTime() const
{
    return ReadTicks(Load(m_bHighResolutionTimer));
}

long long CTOVTimer::GetHardwareTimerFrequency() const
{
    return ReadFrequency(Load(m_bHighResolutionTimer));
}
