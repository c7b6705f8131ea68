// When a debugger is noticed that was not there at the last line.
#include "Debug/TOVDebuggerLines.h"

#include <chrono>
#include <cstdio>
#include <poll.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
void LogLine()
{
    TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "text");
}

// A debugger stops whom it attaches to. To become a tracer's process does not; a sleep stands for the stop. One that is
// over before the thread has left its processor stops nothing.
void BecomeTraced()
{
    ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    rusage oUsage = {};
    while (::getrusage(RUSAGE_SELF, &oUsage) == 0 && oUsage.ru_nvcsw == 0)
        ::usleep(1000);
}

// Logs until something arrives at the other end of standard error.
bool IsNoticed(int nOtherEnd)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    pollfd oPoll = {nOtherEnd, POLLIN, 0};
    while (::poll(&oPoll, 1, 0) == 0 && std::chrono::steady_clock::now() < oDeadline)
        LogLine();
    return ::poll(&oPoll, 1, 0) == 1;
}
} // namespace

TOV_CHILD(IsAttachedWhileItLogs)
{
    int aEnds[2];
    if (::pipe(aEnds) != 0 || ::dup2(aEnds[1], STDERR_FILENO) < 0)
        return;
    LogLine();
    pollfd oPoll = {aEnds[0], POLLIN, 0};
    std::printf("%s", ::poll(&oPoll, 1, 0) == 0 ? "silent, " : "loud, ");
    BecomeTraced();
    std::printf("%s", IsNoticed(aEnds[0]) ? "noticed" : "not noticed");
}

TEST(TOVDebuggerNoticeTest, ADebuggerThatIsAttachedLaterIsNoticed)
{
    EXPECT_EQ("silent, noticed", RunObserved("IsAttachedWhileItLogs", sObservation()).sOutput);
}

TOV_CHILD(ForksAndTracesTheChild)
{
    LogLine();
    const pid_t nChild = ::fork();
    if (nChild == 0)
    {
        BecomeTraced();
        LogLine();
        ::_exit(0);
    }
    ::waitpid(nChild, nullptr, 0);
    LogLine();
}

TEST(TOVDebuggerNoticeTest, TheChildOfAForkAsksForItself)
{
    const sObservedChild oChild = RunObserved("ForksAndTracesTheChild", sObservation());

    EXPECT_EQ((tTexts{"File(1) : ", "text", "\n"}), oChild.aDebuggerTexts);
}
