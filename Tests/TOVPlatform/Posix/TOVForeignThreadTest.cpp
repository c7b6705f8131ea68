// Threads that the library did not start, in the ways of this system.
#include "Support/TOVWaitInstruments.h"

#include <TOVPlatform/TOVThread.h>

#include <atomic>
#include <pthread.h>

namespace Event = TOVPlatform::TOVSynchronization::Event;
namespace Mutex = TOVPlatform::TOVSynchronization::Mutex;
namespace Thread = TOVPlatform::TOVThread;

namespace
{
constexpr int ABANDONED = 0x80;

std::atomic<int> s_nDestroyed;

// Counts in the frames of a thread, or in its storage.
struct sCountsItsEnd
{
    ~sCountsItsEnd() { ++s_nDestroyed; }
    void Touch() const {}
};

// Runs the function with the mutex as its argument, on a thread of the system's own.
void OnNativeThread(void* (*fnRun)(void*), unsigned long long hMutex)
{
    pthread_t oThread;
    ASSERT_EQ(0, ::pthread_create(&oThread, nullptr, fnRun, &hMutex));
    ASSERT_EQ(0, ::pthread_join(oThread, nullptr));
}

unsigned long long FromArgument(const void* pArgument)
{
    return *static_cast<const unsigned long long*>(pArgument);
}

void* LockAndExitNatively(void* pMutex)
{
    Mutex::Lock(FromArgument(pMutex));
    ::pthread_exit(nullptr);
}

void* LockAndExit(void* pMutex)
{
    const sCountsItsEnd oLocal;
    oLocal.Touch();
    Mutex::Lock(FromArgument(pMutex));
    Thread::Exit(3);
}

void* ExitWithStorage(void*)
{
    static thread_local const sCountsItsEnd s_oStored;
    s_oStored.Touch();
    Thread::Exit(3);
}

pthread_key_t s_oKey;

void LockInKeyDestructor(void* pMutex)
{
    Mutex::Lock(FromArgument(pMutex));
}

void* SetKey(void* pMutex)
{
    static unsigned long long s_hMutex;
    s_hMutex = FromArgument(pMutex);
    ::pthread_setspecific(s_oKey, &s_hMutex);
    return nullptr;
}

void* UseLibraryAndSetKey(void* pMutex)
{
    Mutex::Lock(FromArgument(pMutex));
    Mutex::Unlock(FromArgument(pMutex));
    return SetKey(pMutex);
}

class TOVPlatformForeignThreadTest : public testing::Test
{
protected:
    TOVPlatformForeignThreadTest() { s_nDestroyed = 0; }

    void ExpectAbandoned()
    {
        EXPECT_EQ(ABANDONED, WaitForAny({m_hMutex}, 0));
        Mutex::Unlock(m_hMutex);
    }

    const COwnHandle m_hMutex{Mutex::Create(false, nullptr)};
};
} // namespace

TEST_F(TOVPlatformForeignThreadTest, AbandonsItsMutexWhenTheSystemEndsIt)
{
    OnNativeThread(&LockAndExitNatively, m_hMutex);

    ExpectAbandoned();
}

TEST_F(TOVPlatformForeignThreadTest, CanExitWithoutUnwindingItsStack)
{
    OnNativeThread(&LockAndExit, m_hMutex);

    EXPECT_EQ(0, s_nDestroyed);
    ExpectAbandoned();
}

TEST_F(TOVPlatformForeignThreadTest, ReleasesItsThreadLocalStorageWhenItExits)
{
    OnNativeThread(&ExitWithStorage, m_hMutex);

    EXPECT_EQ(1, s_nDestroyed);
}

TEST_F(TOVPlatformForeignThreadTest, AbandonsWhatItLocksInTheDestructorOfAKey)
{
    ASSERT_EQ(0, ::pthread_key_create(&s_oKey, &LockInKeyDestructor));

    OnNativeThread(&SetKey, m_hMutex);
    ExpectAbandoned();
    OnNativeThread(&UseLibraryAndSetKey, m_hMutex);
    ExpectAbandoned();

    ::pthread_key_delete(s_oKey);
}
