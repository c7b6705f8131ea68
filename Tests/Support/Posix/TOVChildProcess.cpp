#include "Support/TOVChildProcess.h"
#include "Support/Posix/TOVStartedProgram.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>

namespace
{
// Reads both pipes to their ends and closes them. Returns false at the deadline.
bool ReadBoth(sPipe& oOutput, sPipe& oErrors, sChildResult& oResult)
{
    const auto oDeadline = std::chrono::steady_clock::now() + CHILD_DEADLINE;
    const std::array<CDescriptor*, 2> aEnds = {&oOutput.oRead, &oErrors.oRead};
    const std::array<std::string*, 2> aTexts = {&oResult.sOutput, &oResult.sErrors};
    while (aEnds[0]->Get() >= 0 || aEnds[1]->Get() >= 0)
    {
        if (std::chrono::steady_clock::now() > oDeadline)
            return false;
        std::array<pollfd, 2> aPolls = {pollfd{aEnds[0]->Get(), POLLIN, 0}, pollfd{aEnds[1]->Get(), POLLIN, 0}};
        if (::poll(aPolls.data(), aPolls.size(), 1000) <= 0)
            continue;
        for (std::size_t n = 0; n < aPolls.size(); ++n)
            if (aPolls[n].revents != 0 && !ReadSome(aPolls[n].fd, *aTexts[n]))
                aEnds[n]->Set(-1);
    }
    return true;
}
} // namespace

std::string PathOfThisProgram()
{
    char szPath[4096];
    const ssize_t nLength = ::readlink("/proc/self/exe", szPath, sizeof(szPath));
    if (nLength <= 0)
        throw std::runtime_error("cannot find the running program");
    return std::string(szPath, static_cast<std::size_t>(nLength));
}

sChildResult RunProgram(const sProgram& oProgram, eErrors eWhere)
{
    return RunProgramAfter({}, oProgram, eWhere);
}

void PrepareChild()
{
    const rlimit oNoCore = {0, 0};
    ::setrlimit(RLIMIT_CORE, &oNoCore);
}

sChildResult RunProgramAfter(const std::function<void()>& fnInChild, const sProgram& oProgram, eErrors eWhere)
{
    sPipe oOutput;
    sPipe oErrors;
    sStart oStart;
    oStart.nOutput = oOutput.oWrite.Get();
    oStart.nErrors = eWhere == eErrorsApart ? oErrors.oWrite.Get() : oOutput.oWrite.Get();
    oStart.fnInChild = fnInChild;
    const pid_t nProcess = StartProgram(oProgram, oStart);
    oOutput.oWrite.Set(-1);
    oErrors.oWrite.Set(-1);

    sChildResult oResult = {-1, "", ""};
    if (!ReadBoth(oOutput, oErrors, oResult))
    {
        oResult.sOutput += "\n<deadline passed>";
        ::kill(nProcess, SIGKILL);
    }
    oResult.nExitCode = WaitForExitCode(nProcess);
    return oResult;
}
