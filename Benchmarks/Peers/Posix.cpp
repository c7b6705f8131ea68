// Rows of the system's own interface on Linux.

#include <Bench.h>
#include <Inputs.h>
#include <NumbersFile.h>

#include <pthread.h>
#include <semaphore.h>
#include <strings.h>
#include <time.h>

using namespace Inputs;

namespace
{
void CompareNoCase(benchmark::State& oState, const std::string& sText)
{
    std::string sUpper = sText;
    for (char& cCharacter : sUpper)
    {
        if ('a' <= cCharacter && cCharacter <= 'z')
            cCharacter = static_cast<char>(cCharacter - 'a' + 'A');
    }
    const char* szFirst = sText.c_str();
    const char* const szSecond = sUpper.c_str();
    for (auto _ : oState)
    {
        Touch(szFirst);
        Use(strcasecmp(szFirst, szSecond));
    }
}

void* DoNothing(void*)
{
    return nullptr;
}
} // namespace

BENCH("string/icompare24", "strcasecmp")
{
    CompareNoCase(oState, TEXT24);
}

BENCH("string/icompare200", "strcasecmp")
{
    CompareNoCase(oState, Text200());
}

BENCH("sync/lock+unlock", "recursive pthread_mutex")
{
    pthread_mutexattr_t oAttributes;
    pthread_mutexattr_init(&oAttributes);
    pthread_mutexattr_settype(&oAttributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_t oMutex;
    pthread_mutex_init(&oMutex, &oAttributes);
    for (auto _ : oState)
    {
        pthread_mutex_lock(&oMutex);
        pthread_mutex_unlock(&oMutex);
    }
    pthread_mutex_destroy(&oMutex);
    pthread_mutexattr_destroy(&oAttributes);
}

BENCH("sync/sem post+wait", "sem_t")
{
    sem_t oSemaphore;
    sem_init(&oSemaphore, 0, 0);
    for (auto _ : oState)
    {
        sem_post(&oSemaphore);
        sem_wait(&oSemaphore);
    }
    sem_destroy(&oSemaphore);
}

BENCH_WALL("sync/thread create+join", "pthread")
{
    for (auto _ : oState)
    {
        pthread_t oThread;
        pthread_create(&oThread, nullptr, &DoNothing, nullptr);
        pthread_join(oThread, nullptr);
    }
}

BENCH("timer/read", "clock_gettime MONOTONIC")
{
    for (auto _ : oState)
    {
        timespec oTime;
        clock_gettime(CLOCK_MONOTONIC, &oTime);
        Use(static_cast<double>(oTime.tv_sec) + static_cast<double>(oTime.tv_nsec) * 1e-9);
    }
}

BENCH("file/write1M int", "fwrite, caller locks, 64 KB")
{
    const CNumbersFile oNumbers("posix", 1);
    std::vector<char> aBuffer(65536);
    for (auto _ : oState)
    {
        FILE* const pFile = fopen(oNumbers.GetName(), "wb");
        setvbuf(pFile, aBuffer.data(), _IOFBF, aBuffer.size());
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            Use(fwrite_unlocked(&nNumber, sizeof(nNumber), 1, pFile));
        fclose(pFile);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("file/read1M int", "fread, caller locks, 64 KB")
{
    const CNumbersFile oNumbers("posix", MILLION);
    std::vector<char> aBuffer(65536);
    for (auto _ : oState)
    {
        FILE* const pFile = fopen(oNumbers.GetName(), "rb");
        setvbuf(pFile, aBuffer.data(), _IOFBF, aBuffer.size());
        for (int nIndex = 0; nIndex < MILLION; ++nIndex)
        {
            int nNumber = 0;
            Use(fread_unlocked(&nNumber, sizeof(nNumber), 1, pFile));
            Use(nNumber);
        }
        fclose(pFile);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}
