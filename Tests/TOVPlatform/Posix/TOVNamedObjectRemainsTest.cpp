// What processes that were killed or stopped leave of their named objects, and whom it hinders.
#include "Support/Posix/TOVForkedChild.h"
#include "Support/TOVChildProcess.h"
#include "Support/TOVWaitInstruments.h"

#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace Event = TOVPlatform::TOVSynchronization::Event;

namespace
{
// The user of a child that must not hinder other programs.
constexpr uid_t NOBODY = 54321;

bool IsInSharedMemory(const std::string& sName)
{
    for (const auto& oEntry : std::filesystem::directory_iterator("/dev/shm"))
    {
        if (oEntry.path().filename().string().find(sName) != std::string::npos)
            return true;
    }
    return false;
}

// Keeps the lock of all segments of a user.
class CHeldLock
{
public:
    CHeldLock()
        : m_sPath("/dev/shm/TOVKernel-" + std::to_string(::geteuid()) + "~lock"),
          m_nFile(::open(m_sPath.c_str(), O_RDWR | O_CREAT, 0600))
    {
        if (m_nFile < 0 || ::flock(m_nFile, LOCK_EX) != 0)
            ::_exit(97);
    }

    ~CHeldLock() { ::close(m_nFile); }

    CHeldLock(const CHeldLock&) = delete;
    CHeldLock& operator=(const CHeldLock&) = delete;

private:
    const std::string m_sPath;
    const int m_nFile;
};
} // namespace

TOV_CHILD(DiesWithNamedObject)
{
    if (Event::Create(false, false, aArguments[0].c_str()) != 0)
        std::_Exit(7);
}

TOV_CHILD(MakesNamedObject)
{
    std::exit(Event::Create(false, false, aArguments[0].c_str()) != 0 ? 7 : 1);
}

TEST(TOVPlatformNamedObjectRemainsTest, AreRemovedByTheNextProcessThatMakesAnyNamedObject)
{
    const std::string sDead = "RemainsOf" + std::to_string(::getpid());
    ASSERT_EQ(7, RunChild("DiesWithNamedObject", {sDead}).nExitCode);

    ASSERT_EQ(7, RunChild("MakesNamedObject", {sDead + "Next"}).nExitCode);

    EXPECT_FALSE(IsInSharedMemory(sDead));
}

TEST(TOVPlatformNamedObjectRemainsTest, AreLeftWhileAProcessHasThem)
{
    const std::string sLive = "InUseBy" + std::to_string(::getpid());
    const COwnHandle hEvent(Event::Create(false, false, sLive.c_str()));

    ASSERT_EQ(7, RunChild("MakesNamedObject", {sLive + "Next"}).nExitCode);

    EXPECT_TRUE(IsInSharedMemory(sLive));
}

// The lock is that of a user of its own, as all programs of the user wait for it. Only root can become another user;
// the test of others is that the lock is taken as soon as it is free.
TEST(TOVPlatformNamedObjectRemainsTest, StopNobodyForEverWhoseProcessStandsStillInTheLock)
{
    EXPECT_TRUE(IsTrueInFork([] {
        const bool bAlone = ::geteuid() == 0 && ::seteuid(NOBODY) == 0;
        const std::string sName = "BehindALock" + std::to_string(::getpid());
        unsigned long long hBehind = 0;
        if (bAlone)
        {
            const CHeldLock oLock;
            hBehind = Event::Create(false, false, sName.c_str());
        }
        const unsigned long long hAfter = Event::Create(false, false, sName.c_str());
        return hBehind == 0 && hAfter != 0 && Event::Destroy(hAfter);
    }));
}
