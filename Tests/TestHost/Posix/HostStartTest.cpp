// How tovtest is started: under another name, with signals that are ignored, and as a worker by mistake.
#include "TestHost/HostInstruments.h"

#include <filesystem>

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
