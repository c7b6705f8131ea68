// The monotonic clock, with which every deadline of this backend is measured.
#pragma once

#include <Debug/TOVBase.h>

#include <ctime>

namespace TOVPlatform
{
namespace TOVPosix
{
constexpr long long NANOSECONDS_PER_SECOND = 1000000000;
constexpr long long NANOSECONDS_PER_MILLISECOND = 1000000;

// The time in nanoseconds, or -1 if the system has no such clock.
inline long long Now()
{
    timespec oTime;
    if (::clock_gettime(CLOCK_MONOTONIC, &oTime) != 0)
        return -1;
    return oTime.tv_sec * NANOSECONDS_PER_SECOND + oTime.tv_nsec;
}

// A point in time, or never.
class CDeadline
{
public:
    // Unsigned 32-bit milliseconds from now; 0xFFFFFFFF is never.
    explicit CDeadline(tDword dwMilliseconds) : m_bNever(dwMilliseconds == 0xFFFFFFFF), m_oTime()
    {
        if (m_bNever || dwMilliseconds == 0)
            return;
        ::clock_gettime(CLOCK_MONOTONIC, &m_oTime);
        m_oTime.tv_sec += static_cast<time_t>(dwMilliseconds / 1000);
        m_oTime.tv_nsec += static_cast<long>(dwMilliseconds % 1000 * NANOSECONDS_PER_MILLISECOND);
        if (m_oTime.tv_nsec >= NANOSECONDS_PER_SECOND)
        {
            m_oTime.tv_nsec -= NANOSECONDS_PER_SECOND;
            ++m_oTime.tv_sec;
        }
    }

    static CDeadline Never() { return CDeadline(0xFFFFFFFF); }

    // The deadline at this time of the clock, in nanoseconds.
    static CDeadline At(long long nNanoseconds)
    {
        CDeadline oDeadline(0);
        oDeadline.m_oTime.tv_sec = static_cast<time_t>(nNanoseconds / NANOSECONDS_PER_SECOND);
        oDeadline.m_oTime.tv_nsec = static_cast<long>(nNanoseconds % NANOSECONDS_PER_SECOND);
        return oDeadline;
    }

    // The form in which the kernel takes it: null for never.
    const timespec* Get() const { return m_bNever ? nullptr : &m_oTime; }

private:
    bool m_bNever;
    timespec m_oTime;
};
} // namespace TOVPosix
} // namespace TOVPlatform
