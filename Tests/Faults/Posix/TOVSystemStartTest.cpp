// The start of a program whose system fails while the library is loaded and does its first steps.
#include "Faults/Posix/TOVFaultySystem.h"
#include "Faults/TOVFaultScenario.h"
#include "Support/Posix/TOVPseudoTerminal.h"
#include "Support/TOVTestSupport.h"

#include <Debug/TOVDebug.h>
#include <TOVPlatform/TOVFile.h>
#include <TOVPlatform/TOVSynchronization.h>
#include <TOVPlatform/TOVThread.h>
#include <Timer/TOVTimer.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace File = TOVPlatform::TOVFile;
namespace Synchronization = TOVPlatform::TOVSynchronization;
namespace Mutex = Synchronization::Mutex;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr int STATUS_USED = 0;   // the library could be used as described
constexpr int STATUS_BROKEN = 1; // it could not
constexpr int STATUS_NEVER = 7;  // no call failed

unsigned long DoNothing(unsigned long long)
{
    return 0;
}

void OnTime(unsigned int, unsigned int, unsigned long, unsigned long, unsigned long)
{
}

// Small writes make what watches over staged bytes.
bool WritesStaged()
{
    const tHandle hFile = File::Open("/dev/null", "wb");
    if (hFile == FILE_INVALID_HANDLE)
        return CountFailedCalls() != 0;
    for (int nWrite = 0; nWrite < 4; ++nWrite)
        File::Write(hFile, "abcd", 1, 4);
    return File::Close(hFile) == File::eFileSuccess || CountFailedCalls() != 0;
}

bool InstallsTimeEvent()
{
    try
    {
        CTOVTimer::UninstallTimeEvent(CTOVTimer::InstallTimeEvent(60000, 0, OnTime, 0, 0), 60000);
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        return CountFailedCalls() != 0;
    }
    return true;
}

// Ends a process that has a named object, which remains.
void DieWithNamedObject()
{
    const bool bArmed = ArmSystemFault(false);
    const pid_t nChild = ::fork();
    if (nChild == 0)
    {
        Synchronization::Event::Create(true, false, FaultName("dead event"));
        ::_exit(0);
    }
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    ArmSystemFault(bArmed);
}

// The first named object of a process is the occasion to remove those of dead processes.
bool NamesObject()
{
    DieWithNamedObject();
    const tHandle hEvent = Synchronization::Event::Create(true, true, FaultName("first event"));
    if (hEvent == 0)
        return CountFailedCalls() != 0;
    const bool bSignalled = Synchronization::Event::TimedWait(hEvent, 0);
    return Synchronization::Event::Destroy(hEvent) && bSignalled;
}

// The first uses of what the library prepares. A thread may be refused: its end must be noticed.
bool IsUsable()
{
    TOVDebug::_Log(__FILE__, __LINE__, 0x1, eSeverityInfo, "%s", "start");
    const tHandle hMutex = Mutex::Create(true, nullptr);
    Mutex::Unlock(hMutex);
    Thread::WaitForExitInfinite(Thread::Create(&DoNothing, nullptr, nullptr));
    const bool bUsable = WritesStaged() && InstallsTimeEvent() && NamesObject() && Mutex::Destroy(hMutex);

    const bool bArmed = ArmSystemFault(false);
    const tHandle hFile = File::Open("/proc/self/status", "rb");
    char cRead = 0;
    const bool bRead = hFile != FILE_INVALID_HANDLE && File::Read(hFile, &cRead, 1, 1) == 1 && cRead == 'N';
    const bool bClosed = File::Close(hFile) == File::eFileSuccess;
    ArmSystemFault(bArmed);
    return bUsable && bRead && bClosed;
}

// The library raises a limit of open files that is too low for its table.
void LowerLimit()
{
    rlimit oLimit;
    if (::getrlimit(RLIMIT_NOFILE, &oLimit) != 0)
        return;
    oLimit.rlim_cur = std::min<rlim_t>(oLimit.rlim_max, 256);
    ::setrlimit(RLIMIT_NOFILE, &oLimit);
}
} // namespace

TOV_CHILD(StartWithAFault)
{
    const bool bUsable = IsUsable();
    std::exit(!bUsable ? STATUS_BROKEN : CountFailedCalls() == 0 ? STATUS_NEVER : STATUS_USED);
}

TOV_CHILD(PanicWithAFault)
{
    TOVPanic("File.cpp", 3, "%s", "a panic");
}

TOV_CHILD(QuestionWithAFault)
{
    const bool bBreaks = TOVDebug::Alternate_Assert("nNumber == 5", "File.cpp", 3);
    std::exit(bBreaks ? STATUS_BROKEN : STATUS_USED);
}

namespace
{
sProgram ProgramWithFault(const char* szScenario, int nFault, int nSuccesses)
{
    sProgram oProgram = ScenarioProgram(szScenario, {});
    oProgram.aVariables["TOV_SYSTEM_FAULT"] = std::to_string(nFault) + " " + std::to_string(nSuccesses);
    return oProgram;
}

// Starts the program with one fault after the other. Returns how many struck.
int CountStarts(const std::optional<std::string>& oLog)
{
    int nStruck = 0;
    for (int nFault = 0; nFault < CountSystemFaults(); ++nFault)
    {
        int nStatus = STATUS_USED;
        for (int nSuccesses = 0; nStatus == STATUS_USED && nSuccesses < 30; ++nSuccesses)
        {
            sProgram oProgram = ProgramWithFault("StartWithAFault", nFault, nSuccesses);
            oProgram.aVariables["TOVKERNEL_LOG"] = oLog;
            nStatus = RunProgramAfter(&LowerLimit, oProgram, eErrorsAmongOutput).nExitCode;
            nStruck += nStatus == STATUS_USED ? 1 : 0;
            EXPECT_TRUE(nStatus == STATUS_USED || nStatus == STATUS_NEVER)
                << "call " << nSuccesses + 1 << " of " << GetSystemFault(nFault).szName << ": status " << nStatus;
        }
    }
    return nStruck;
}

// Runs the program on a terminal of its own, where these keys have been pressed. Returns its exit code.
int RunOnTerminal(const sProgram& oProgram, const char* szKeys)
{
    CPseudoTerminal oTerminal;
    const CDescriptor oOther(::open(oTerminal.Name().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    EXPECT_TRUE(oTerminal.Press(szKeys));
    sStart oStart;
    oStart.bOwnSession = true;
    oStart.sTerminal = oTerminal.Name();
    return WaitForExitCode(StartProgram(oProgram, oStart));
}

// The faults of what talks to a terminal.
std::vector<int> TerminalFaults()
{
    std::vector<int> aFaults;
    for (int nFault = 0; nFault < CountSystemFaults(); ++nFault)
    {
        const std::string sName = GetSystemFault(nFault).szName;
        if (sName == "open" || sName == "close" || sName.compare(0, 4, "read") == 0 ||
            sName.compare(0, 5, "write") == 0)
            aFaults.push_back(nFault);
    }
    return aFaults;
}
} // namespace

TEST(TOVSystemStartTest, SucceedsWhateverFails)
{
    EXPECT_LT(20, CountStarts(std::nullopt));
}

TEST(TOVSystemStartTest, SucceedsWhateverFailsWhileLinesAreShown)
{
    EXPECT_LT(20, CountStarts("1"));
}

TEST(TOVSystemStartTest, EndsInAPanicWhateverFailsOnTheTerminal)
{
    for (const int nFault : TerminalFaults())
    {
        for (int nSuccesses = 0; nSuccesses < 4; ++nSuccesses)
        {
            EXPECT_EQ(255, RunOnTerminal(ProgramWithFault("PanicWithAFault", nFault, nSuccesses), "\n"))
                << GetSystemFault(nFault).szName;
        }
    }
}

TEST(TOVSystemStartTest, GetsAnAnswerOrNoneWhateverFailsOnTheTerminal)
{
    for (const int nFault : TerminalFaults())
    {
        for (int nSuccesses = 0; nSuccesses < 4; ++nSuccesses)
        {
            EXPECT_EQ(STATUS_USED, RunOnTerminal(ProgramWithFault("QuestionWithAFault", nFault, nSuccesses), "y\n"))
                << GetSystemFault(nFault).szName;
        }
    }
}
