// Runs commands in turns and tells how long each took:
//
//     Stopwatch ROUNDS COMMAND [ARGUMENT...] [--- COMMAND [ARGUMENT...]]...
//
// Prints a line of JSON for each command: the seconds of each run, the seconds of processor time, and the largest
// memory in KB. A program that is this small makes children whose memory is their own from the beginning. What the
// commands print is dropped. A command that fails ends the program with status 1.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
struct sCommand
{
    std::vector<char*> aArguments; // with a null at the end
    std::vector<double> aSeconds;
    std::vector<double> aProcessorSeconds;
    long lPeakKilobytes = 0;
};

double Seconds(const timeval& oTime)
{
    return static_cast<double>(oTime.tv_sec) + static_cast<double>(oTime.tv_usec) * 1e-6;
}

bool Run(sCommand& oCommand, const posix_spawn_file_actions_t& oActions)
{
    using tClock = std::chrono::steady_clock;

    const tClock::time_point oStart = tClock::now();
    pid_t nProcess = 0;
    if (posix_spawnp(&nProcess, oCommand.aArguments[0], &oActions, nullptr, oCommand.aArguments.data(), environ) != 0)
        return false;

    int nStatus = 0;
    rusage oUsage = {};
    if (wait4(nProcess, &nStatus, 0, &oUsage) != nProcess || nStatus != 0)
        return false;

    oCommand.aSeconds.push_back(std::chrono::duration<double>(tClock::now() - oStart).count());
    oCommand.aProcessorSeconds.push_back(Seconds(oUsage.ru_utime) + Seconds(oUsage.ru_stime));
    if (oUsage.ru_maxrss > oCommand.lPeakKilobytes)
        oCommand.lPeakKilobytes = oUsage.ru_maxrss;
    return true;
}

void PrintNumbers(const char* szName, const std::vector<double>& aNumbers)
{
    std::printf("\"%s\": [", szName);
    for (std::size_t nNumber = 0; nNumber < aNumbers.size(); ++nNumber)
        std::printf("%s%.6f", nNumber > 0 ? ", " : "", aNumbers[nNumber]);
    std::printf("], ");
}
} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
    {
        std::fprintf(stderr, "usage: Stopwatch ROUNDS COMMAND [ARGUMENT...] [--- COMMAND [ARGUMENT...]]...\n");
        return 2;
    }

    std::vector<sCommand> aCommands(1);
    for (int nArgument = 2; nArgument < argc; ++nArgument)
    {
        if (std::strcmp(argv[nArgument], "---") == 0)
            aCommands.emplace_back();
        else
            aCommands.back().aArguments.push_back(argv[nArgument]);
    }

    posix_spawn_file_actions_t oActions;
    posix_spawn_file_actions_init(&oActions);
    posix_spawn_file_actions_addopen(&oActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&oActions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&oActions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    for (sCommand& oCommand : aCommands)
        oCommand.aArguments.push_back(nullptr);
    for (int nRound = std::atoi(argv[1]); nRound > 0; --nRound)
    {
        for (sCommand& oCommand : aCommands)
        {
            if (!Run(oCommand, oActions))
            {
                std::fprintf(stderr, "Stopwatch: %s failed\n", oCommand.aArguments[0]);
                return 1;
            }
        }
    }

    for (const sCommand& oCommand : aCommands)
    {
        std::printf("{");
        PrintNumbers("seconds", oCommand.aSeconds);
        PrintNumbers("processor", oCommand.aProcessorSeconds);
        std::printf("\"peak\": %ld}\n", oCommand.lPeakKilobytes);
    }
    return 0;
}
