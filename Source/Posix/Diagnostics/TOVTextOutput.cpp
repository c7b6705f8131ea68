#include <Posix/Diagnostics/TOVTextOutput.h>

#include <Posix/Base/TOVClock.h>
#include <TOVPlatform/Backend/TOVSystem.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <sys/resource.h>
#include <unistd.h>

namespace TOVPlatform
{
namespace TOVPosix
{
namespace
{
bool IsAskedFor()
{
    const char* szLog = std::getenv("TOVKERNEL_LOG");
    return szLog != nullptr && *szLog != '\0';
}

constexpr long long ANSWER_LIFETIME = 10 * NANOSECONDS_PER_MILLISECOND;

// Up to this time of the coarse clock there is no debugger.
std::atomic<long long> s_nNoDebuggerUntil(0);

// So often a program that cannot have a debugger yet asks without looking at the clock: the first look takes longer
// than all questions of a program that starts and ends.
constexpr int FIRST_QUESTIONS = 16;
std::atomic<int> s_nQuestions(0);

// The time in nanoseconds, as it was at the system's last tick. It is read several times as fast as the exact time.
long long CoarseNow()
{
    timespec oTime;
    if (::clock_gettime(CLOCK_MONOTONIC_COARSE, &oTime) != 0)
        return Now();
    return oTime.tv_sec * NANOSECONDS_PER_SECOND + oTime.tv_nsec;
}

bool HasDebugger()
{
    if (s_nQuestions.load(std::memory_order_relaxed) < FIRST_QUESTIONS)
    {
        const bool bCan = CanHaveDebugger();
        s_nQuestions.fetch_add(bCan ? FIRST_QUESTIONS : 1, std::memory_order_relaxed);
        if (!bCan)
            return false;
    }
    const long long nNow = CoarseNow();
    if (nNow < s_nNoDebuggerUntil.load(std::memory_order_relaxed))
        return false;
    if (Backend::IsDebuggerAttached())
        return true;
    s_nNoDebuggerUntil.store(nNow + ANSWER_LIFETIME, std::memory_order_relaxed);
    return false;
}
} // namespace

void WriteText(int nDescriptor, const char* szText)
{
    std::size_t nLeft = std::strlen(szText);
    while (nLeft > 0)
    {
        const ssize_t nWritten = ::write(nDescriptor, szText, nLeft);
        if (nWritten < 0 && errno == EINTR)
            continue;
        if (nWritten <= 0)
            return;
        szText += nWritten;
        nLeft -= static_cast<std::size_t>(nWritten);
    }
}

bool CanHaveDebugger()
{
    rusage oUsage;
    return ::getrusage(RUSAGE_SELF, &oUsage) != 0 || oUsage.ru_nvcsw != 0;
}

bool ShowsDebugText()
{
    // Read once, by the thread that loads the library, which logs then: the environment may change under other threads.
    static const bool s_bAskedFor = IsAskedFor();
    return s_bAskedFor || HasDebugger();
}

void AskForDebuggerAgain()
{
    s_nNoDebuggerUntil.store(0, std::memory_order_relaxed);
}
} // namespace TOVPosix
} // namespace TOVPlatform
