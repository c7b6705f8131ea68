// What a thread's lists of freed blocks hold goes back at its end. The program's operator delete counts it.
#include "Startup/Posix/TOVHeapCount.h"
#include "Support/TOVTestSupport.h"

#include <TOVPlatform/TOVMemoryList.h>
#include <TOVString/TOVStringA.h>

#include <pthread.h>
#include <thread>
#include <vector>

namespace
{
// Makes and destroys strings of all small lengths, which leaves blocks in the lists.
void UseStrings()
{
    std::vector<CTOVStringA> aStrings;
    for (int nLength = 1; nLength < 1000; nLength += 7)
        aStrings.emplace_back('x', nLength);
}

pthread_key_t& KeyOfRounds()
{
    static pthread_key_t s_oKey;
    return s_oKey;
}

// How often the system calls the destructors of a thread's keys. ThreadSanitizer ends its own part of the thread in the
// last round, and no code that it watches may run after that.
#if TOV_THREAD_SANITIZER
constexpr int KEY_ROUNDS = 3;
#else
constexpr int KEY_ROUNDS = 4;
#endif

// How many blocks more are in use after the action than before it.
template<class TAction> long KeptBy(const TAction& fnAction)
{
    const long lBefore = GetHeapBlocks();
    fnAction();
    return GetHeapBlocks() - lBefore;
}
} // namespace

TEST(TOVMemoryListEndTest, AThreadsListsHoldWhatItHasFreed)
{
    long lKept = 0;
    std::thread([&lKept] { lKept = KeptBy([] { UseStrings(); }); }).join();

    if (TOV_USE_MEMORY_LISTS)
    {
        EXPECT_LE(60, lKept);
    }
    else
    {
        EXPECT_EQ(0, lKept);
    }
}

TEST(TOVMemoryListEndTest, NothingIsLeftOfAThread)
{
    std::thread([] { UseStrings(); }).join(); // what the library keeps for all threads is there from here on

    EXPECT_EQ(0, KeptBy([] { std::thread([] { UseStrings(); }).join(); }));
}

TEST(TOVMemoryListEndTest, NothingIsLeftOfAThreadThatFreesWhatAnotherHasMade)
{
    std::thread([] { UseStrings(); }).join();

    EXPECT_EQ(0, KeptBy([] {
                  std::vector<CTOVStringA> aStrings;
                  std::thread([&aStrings] {
                      for (int nLength = 1; nLength < 1000; nLength += 7)
                          aStrings.emplace_back('x', nLength);
                      UseStrings();
                  }).join();
                  std::thread([&aStrings] { std::vector<CTOVStringA>().swap(aStrings); }).join();
              }));
}

// The destructors of the thread's own objects, and of the keys of its storage, may use strings as well.
TEST(TOVMemoryListEndTest, NothingIsLeftOfAThreadThatUsesStringsToItsLastStep)
{
    struct sUsesStrings
    {
        ~sUsesStrings() { UseStrings(); }
    };
    ASSERT_EQ(0, ::pthread_key_create(&KeyOfRounds(), [](void* pRounds) {
                  UseStrings();
                  int& nRounds = *static_cast<int*>(pRounds);
                  if (--nRounds > 0)
                      ::pthread_setspecific(KeyOfRounds(), pRounds);
              }));
    const auto fnRun = [] {
        int nRounds = KEY_ROUNDS;
        std::thread([&nRounds] {
            static thread_local const sUsesStrings s_oLast;
            static_cast<void>(s_oLast);
            ::pthread_setspecific(KeyOfRounds(), &nRounds);
            UseStrings();
        }).join();
        EXPECT_EQ(0, nRounds);
    };
    fnRun();

    EXPECT_EQ(0, KeptBy(fnRun));
    ::pthread_key_delete(KeyOfRounds());
}
