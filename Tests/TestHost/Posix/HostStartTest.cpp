// How tovtest is started: under another name, with signals that are ignored, and as a worker by mistake.
#include "Support/TOVAllocationCounter.h"
#include "TestHost/HostInstruments.h"

#include <TestHost/TOVTestSystem.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

namespace
{
// Lets a shell run tovtest, whose command line is $0 and $@.
sHostRun RunByShell(const std::string& sScript, const std::vector<std::string>& aArguments)
{
    sProgram oProgram = HostProgram(aArguments);
    oProgram.aCommand.insert(oProgram.aCommand.begin(), {"/bin/sh", "-c", sScript});
    const sChildResult oResult = RunProgram(oProgram);
    return {oResult.nExitCode, WithoutTimes(oResult.sOutput)};
}
} // namespace

TEST(HostStartTest, TellsTheNameByWhichItWasStarted)
{
    const CTempFolder oFolder;
    const struct
    {
        const char* szFile;
        const char* szName;
    } aNames[] = {{"own", "own: "}, {"own.exe", "own: "}, {".exe", ".exe: "}, {"longer.name", "longer.name: "}};
    for (const auto& oName : aNames)
    {
        sProgram oProgram = HostProgram({"--nonsense"});
        std::filesystem::create_symlink(oProgram.aCommand[0], oFolder.File(oName.szFile));
        oProgram.aCommand[0] = oFolder.File(oName.szFile);
        EXPECT_EQ(0u, RunProgram(oProgram).sOutput.find(oName.szName)) << oName.szFile;
    }
}

TEST(HostStartTest, LeavesSignalsIgnoredThatWereIgnored)
{
    const sHostRun oRun = RunByShell("trap '' INT TERM; exec \"$0\" \"$@\"",
                                     {PathOfSuites("SuitesEnding"), "--filter", "Raise terminate"});

    EXPECT_EQ(1, oRun.nExitCode) << "the case goes on after the signal, and fails then: " << oRun.sOutput;
}

TEST(HostStartTest, IsNoWorkerWithoutAParent)
{
    // The number of what is not open, and of what is no connection.
    EXPECT_EQ(0, RunByShell("TOV_TEST_WORKER=77 exec \"$0\" \"$@\"", {PathOfSuites("SuitesPassing")}).nExitCode);
    EXPECT_EQ(
        2, RunByShell("TOV_TEST_WORKER=7 exec \"$0\" \"$@\" 7< /dev/null", {PathOfSuites("SuitesPassing")}).nExitCode);
}

#if TOV_CAN_FAIL_ALLOCATIONS
TOV_CHILD(WaitsToBeEnded)
{
    for (;;)
        ::pause();
}

// In a process of its own, since the link changes what signals do.
TOV_CHILD(EndsAWorkerWithoutMemory)
{
    std::vector<char*> aszArguments;
    sProgram oWorker = ScenarioProgram("WaitsToBeEnded");
    for (std::string& sArgument : oWorker.aCommand)
        aszArguments.push_back(sArgument.data());
    aszArguments.push_back(nullptr);
    std::unique_ptr<TOVTestHost::ITOVWorkerLink> pLink = TOVTestHost::StartWorker(aszArguments.data());
    {
        const CAllocationFailure oFailure;
        pLink.reset();
    }
    std::puts(::waitpid(-1, nullptr, 0) < 0 && errno == ECHILD ? "no child is left" : "a child is left");
}

TEST(HostStartTest, EndsAWorkerWithoutMemory)
{
    const sChildResult oResult = RunChild("EndsAWorkerWithoutMemory");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("no child is left\n", oResult.sOutput);
}
#endif
