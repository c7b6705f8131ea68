// What finds its object free stays in user space: the child process below is ended by its first system call.
#include "Support/TOVWaitInstruments.h"

#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <map>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace CriticalSection = TOVPlatform::TOVSynchronization::CriticalSection;
namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Semaphore = TOVPlatform::TOVSynchronization::Semaphore;
namespace Variable = TOVPlatform::TOVSynchronization::Variable;

namespace
{
constexpr int TURNS = 1000;
constexpr int DONE = 42;

// From now on the calling thread can do nothing but end its process; any other system call ends it as a crash does.
void ForbidSystemCalls()
{
    sock_filter aRules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    const sock_fprog oProgram = {sizeof(aRules) / sizeof(aRules[0]), aRules};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &oProgram) != 0)
        ::_exit(1);
}

struct sObjects
{
    unsigned long long hSection = CriticalSection::Create(2000);
    unsigned long long hMutex;
    unsigned long long hSemaphore;
    unsigned long long hAuto;
    unsigned long long hManual;
    long lVariable = 0;

    explicit sObjects(const std::string& sName)
        : hMutex(Mutex::Create(false, Name(sName, "m").c_str())),
          hSemaphore(Semaphore::Create(3, 5, Name(sName, "s").c_str())),
          hAuto(Event::Create(false, false, Name(sName, "a").c_str())),
          hManual(Event::Create(true, true, Name(sName, "e").c_str()))
    {
    }

    ~sObjects()
    {
        CriticalSection::Destroy(hSection);
        for (const unsigned long long hObject : {hMutex, hSemaphore, hAuto, hManual})
            Event::Destroy(hObject);
    }

    sObjects(const sObjects&) = delete;
    sObjects& operator=(const sObjects&) = delete;

    static std::string Name(const std::string& sName, const char* szKind)
    {
        return sName.empty() ? sName : sName + szKind;
    }
};

// False if anything went otherwise than it should.
typedef bool (*tOperation)(sObjects& oObjects);

const std::map<std::string, tOperation> OPERATIONS = {
    {"CriticalSection",
     [](sObjects& o) {
         CriticalSection::Enter(o.hSection);
         CriticalSection::Enter(o.hSection);
         CriticalSection::Leave(o.hSection);
         CriticalSection::Leave(o.hSection);
         return true;
     }},
    {"Mutex",
     [](sObjects& o) {
         Mutex::Lock(o.hMutex);
         Mutex::Lock(o.hMutex);
         const bool bLocked = Mutex::IsLocked(o.hMutex);
         const bool bInTime = Event::TimedWait(o.hMutex, DEADLINE);
         for (int nLevel = 0; nLevel < 4; ++nLevel)
             Mutex::Unlock(o.hMutex);
         return !bLocked && bInTime;
     }},
    {"Semaphore",
     [](sObjects& o) {
         Semaphore::Lock(o.hSemaphore);
         const bool bSecond = Semaphore::TryLock(o.hSemaphore, DEADLINE);
         const bool bThird = Semaphore::TryLock(o.hSemaphore, 0);
         const bool bFourth = Semaphore::TryLock(o.hSemaphore, 0);
         return bSecond && bThird && !bFourth && Semaphore::Unlock(o.hSemaphore, 3) == 0 &&
                Semaphore::Unlock(o.hSemaphore, 3) == 0;
     }},
    {"Event",
     [](sObjects& o) {
         Event::Signal(o.hAuto);
         Event::Wait(o.hAuto);
         Event::Signal(o.hAuto);
         Event::Reset(o.hAuto);
         Event::SignalIfClear(o.hAuto);
         Event::SignalIfClear(o.hAuto);
         Event::Reset(o.hAuto);
         Event::Reset(o.hAuto);
         Event::Reset(o.hManual);
         Event::Signal(o.hManual);
         Event::Wait(o.hManual);
         return Event::TimedWait(o.hManual, -1) && !Event::TimedWait(o.hAuto, 0);
     }},
    {"MultipleWait",
     [](sObjects& o) {
         unsigned long long aHandles[] = {o.hAuto, o.hManual, o.hMutex, o.hSemaphore};
         const bool bAny = Event::MultipleWait(aHandles, 4, false) == 1;
         const bool bAll = Event::MultipleTimedWait(aHandles + 1, 3, true, DEADLINE) >= 0;
         const bool bNone = Event::MultipleTimedWait(aHandles, 1, false, 0) == -2;
         Mutex::Unlock(o.hMutex);
         return bAny && bAll && bNone && Semaphore::Unlock(o.hSemaphore, 1) == 2;
     }},
    {"Variable", [](sObjects& o) { return Variable::InterlockedIncrement(o.lVariable) > 0; }},
    {"GetPid", [](sObjects&) { return ::syscall(SYS_getpid) > 0; }},
    {"EmptyWait", [](sObjects& o) { return !Event::TimedWait(o.hAuto, 1); }},
};
} // namespace

TOV_CHILD(RepeatsWithoutSystemCalls)
{
    const tOperation fnOperation = OPERATIONS.at(aArguments[0]);
    sObjects oObjects(aArguments[1]);
    // The first time a thread may ready itself.
    bool bRight = fnOperation(oObjects);

    ForbidSystemCalls();
    for (int nTurn = 0; nTurn < TURNS; ++nTurn)
        bRight = fnOperation(oObjects) && bRight;
    ::syscall(SYS_exit_group, bRight ? DONE : 1);
}

class TOVPlatformUncontendedTest : public testing::TestWithParam<const char*>
{
};

INSTANTIATE_TEST_SUITE_P(Operation, TOVPlatformUncontendedTest,
                         testing::Values("CriticalSection", "Mutex", "Semaphore", "Event", "MultipleWait", "Variable"),
                         [](const testing::TestParamInfo<const char*>& oInfo) { return oInfo.param; });

TEST_P(TOVPlatformUncontendedTest, MakesNoSystemCall)
{
    const sChildResult oResult = RunChild("RepeatsWithoutSystemCalls", {GetParam(), ""});

    EXPECT_EQ(DONE, oResult.nExitCode) << oResult.sOutput;
}

TEST_P(TOVPlatformUncontendedTest, MakesNoSystemCallWithAName)
{
    const std::string sName = UniqueName();

    const sChildResult oResult = RunChild("RepeatsWithoutSystemCalls", {GetParam(), sName});

    EXPECT_EQ(DONE, oResult.nExitCode) << oResult.sOutput;
    const sObjects oLeftByTheChild(sName);
}

TEST(TOVPlatformUncontendedInstrumentTest, EndsAProcessThatMakesASystemCall)
{
    EXPECT_EQ(-1, RunChild("RepeatsWithoutSystemCalls", {"GetPid", ""}).nExitCode);
    EXPECT_EQ(-1, RunChild("RepeatsWithoutSystemCalls", {"EmptyWait", ""}).nExitCode);
}
