// Loads the library given by its file name, uses it and unloads it. Prints how often everything was as it should be.
//
//   StartupLoader LIBRARY TIMES     a number of times
//   StartupLoader LIBRARY thread    once, with a thread that used it and ends when it is gone
//   StartupLoader LIBRARY waited N  N times, with threads of the library that are waited for
//   StartupLoader LIBRARY held      once, with a thread of the library that ends after the unloading (Posix)
//   StartupLoader LIBRARY check     once, with a check that fails, and the process ends by another exception afterwards
//   StartupLoader LIBRARY keys      once, with every key for threads' storage taken before (Posix)
//   StartupLoader LIBRARY file      once, with a file that stays open and holds bytes (Posix)
#include <Debug/TOVCompiler.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <future>
#include <map>
#include <thread>
#include <vector>

#if TOV_SYSTEM_WINDOWS
#include <windows.h>

// What the library needs of the system stays loaded, as it does in other programs: only the library comes and goes.
static void KeepSystemLibraries()
{
    ::LoadLibraryA("winmm.dll");
}

static void* Load(const char* szLibrary)
{
    return ::LoadLibraryA(szLibrary);
}

static void* Find(void* pLibrary, const char* szFunction)
{
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(pLibrary), szFunction));
}

static void Unload(void* pLibrary)
{
    ::FreeLibrary(static_cast<HMODULE>(pLibrary));
}

// On one processor, a thread that wakes a more urgent one is interrupted by it at once.
static void UseOneProcessor()
{
    ::SetProcessAffinityMask(::GetCurrentProcess(), 1);
}

static bool IsLoaded(const char* szLibrary)
{
    return ::GetModuleHandleA(szLibrary) != nullptr;
}
#else
#include <dlfcn.h>
#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#if TOV_THREAD_SANITIZER
// The C library releases a thread's storage for a loaded library when another thread takes over its stack. The
// sanitizer does not see that the first thread has ended by then.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();

const char* __tsan_default_suppressions()
{
    return "race:_dl_deallocate_tls";
}
#endif

static void KeepSystemLibraries()
{
}

static void* Load(const char* szLibrary)
{
    return ::dlopen(szLibrary, RTLD_NOW);
}

static void* Find(void* pLibrary, const char* szFunction)
{
    return ::dlsym(pLibrary, szFunction);
}

static void Unload(void* pLibrary)
{
    ::dlclose(pLibrary);
}

static void UseOneProcessor()
{
    cpu_set_t oProcessors;
    CPU_ZERO(&oProcessors);
    CPU_SET(static_cast<unsigned>(::sched_getcpu()), &oProcessors);
    ::sched_setaffinity(0, sizeof(oProcessors), &oProcessors);
}

static bool IsLoaded(const char* szLibrary)
{
    void* const pLibrary = ::dlopen(szLibrary, RTLD_NOW | RTLD_NOLOAD);
    if (pLibrary != nullptr)
        ::dlclose(pLibrary);
    return pLibrary != nullptr;
}

#endif

// What the library offers for threads, found by the compiler's names.
typedef unsigned long (*tEntry)(unsigned long long ullParam);

struct sThreadCalls
{
    explicit sThreadCalls(void* pLibrary)
        : pfCreate(reinterpret_cast<unsigned long long (*)(tEntry, void*, unsigned long*)>(
              Find(pLibrary, "_ZN11TOVPlatform9TOVThread6CreateEPFmyEPvPm"))),
          pfWait(reinterpret_cast<void (*)(unsigned long long)>(
              Find(pLibrary, "_ZN11TOVPlatform9TOVThread19WaitForExitInfiniteEy"))),
          pfSetPriority(reinterpret_cast<void (*)(unsigned long long, int)>(
              Find(pLibrary, "_ZN11TOVPlatform9TOVThread11SetPriorityEyNS0_15eThreadPriorityE")))
    {
    }

    bool AreThere() const { return pfCreate != nullptr && pfWait != nullptr && pfSetPriority != nullptr; }

    unsigned long long (*const pfCreate)(tEntry pEntry, void* pParam, unsigned long* pulThreadId);
    void (*const pfWait)(unsigned long long hThread);
    void (*const pfSetPriority)(unsigned long long hThread, int nPriority);
};

// Whether the library is unloaded in the end. A thread whose end was waited for may still be in its last steps.
static bool GoesAway(const char* szLibrary)
{
    const auto oDeadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (IsLoaded(szLibrary))
    {
        if (std::chrono::steady_clock::now() > oDeadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

// Whether the library can be unloaded as soon as the end of its threads was waited for.
static bool IsUnloadedAfterItsThreads(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const sThreadCalls oCalls(pLibrary);
    bool bGood = oCalls.AreThere();
    std::vector<unsigned long long> aThreads;
    for (int nThread = 0; bGood && nThread < 4; ++nThread)
    {
        unsigned long ulThreadId = 0;
        aThreads.push_back(
            oCalls.pfCreate([](unsigned long long) -> unsigned long { return 0; }, nullptr, &ulThreadId));
        oCalls.pfSetPriority(aThreads.back(), 0); // low, so that its end wakes this thread before it goes on itself
        bGood = aThreads.back() != 0;
    }
    for (const unsigned long long hThread : aThreads)
        oCalls.pfWait(hThread);
    Unload(pLibrary);
    return GoesAway(szLibrary) && bGood;
}

#if !TOV_SYSTEM_WINDOWS
static std::promise<void> s_oMayEnd;

// Whether a thread that no other thread waits for keeps the library loaded until its own end, and no longer.
static bool IsHeldByItsThread(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const sThreadCalls oCalls(pLibrary);
    const auto fnWait = [](unsigned long long) -> unsigned long {
        s_oMayEnd.get_future().wait();
        return 0;
    };
    unsigned long ulThreadId = 0;
    const bool bStarted = oCalls.AreThere() && oCalls.pfCreate(fnWait, nullptr, &ulThreadId) != 0;
    Unload(pLibrary);
    const bool bHeld = IsLoaded(szLibrary);
    s_oMayEnd.set_value();
    return bStarted && bHeld && GoesAway(szLibrary);
}

// Whether the library, which can get no key, starts no thread.
static bool StartsNoThreadWithoutKeys(const char* szLibrary)
{
    pthread_key_t oKey;
    while (::pthread_key_create(&oKey, nullptr) == 0)
    {
    }
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const sThreadCalls oCalls(pLibrary);
    const auto fnFail = [](unsigned long long) -> unsigned long { std::abort(); };
    unsigned long ulThreadId = 0;
    const bool bGood = oCalls.AreThere() && oCalls.pfCreate(fnFail, nullptr, &ulThreadId) == 0;
    Unload(pLibrary);
    return bGood;
}

// Whether the library goes although it has written a file, and the runtime still has what was written.
static bool LeavesItsFile(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    typedef unsigned long long tHandle;
    const auto pfOpen =
        reinterpret_cast<tHandle (*)(const char*, const char*)>(Find(pLibrary, "_ZN11TOVPlatform7TOVFile4OpenEPKcS2_"));
    const auto pfWrite = reinterpret_cast<long (*)(tHandle, const void*, long, long)>(
        Find(pLibrary, "_ZN11TOVPlatform7TOVFile5WriteEyPKvll"));
    if (pfOpen == nullptr || pfWrite == nullptr)
        return false;

    char szFile[] = P_tmpdir "/startup-loader-XXXXXX";
    const int nFile = ::mkstemp(szFile);
    const tHandle hFile = pfOpen(szFile, "wb");
    bool bGood = nFile >= 0;
    for (int nWrite = 0; nWrite < 3; ++nWrite)
        bGood = pfWrite(hFile, "text", 1, 4) == 4 && bGood;
    Unload(pLibrary);
    bGood = bGood && !IsLoaded(szLibrary) && std::fflush(nullptr) == 0;
    char szRead[16] = "";
    bGood = bGood && ::read(nFile, szRead, sizeof szRead) == 12 && std::strcmp(szRead, "texttexttext") == 0;
    ::unlink(szFile);
    ::close(nFile);
    return bGood;
}
#endif

// The part of the library's map that this program reads.
typedef std::map<const char*, void*> tCreators;

static bool UseOnce(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const auto pfCreators = reinterpret_cast<tCreators& (*)()>(Find(pLibrary, "GetCreatorMapDirect"));
    const auto pfEqual =
        reinterpret_cast<bool (*)(const void*, const void*, unsigned short)>(Find(pLibrary, "TOVMemory_Cmp"));
    const bool bGood = pfCreators != nullptr && pfCreators().size() == 12 && pfEqual != nullptr &&
                       pfEqual("text", "text", 4) && !pfEqual("text", "tent", 4);
    Unload(pLibrary);
    return bGood && !IsLoaded(szLibrary);
}

// Whether a thread that has made the library take its lock can end without a fault after the library is unloaded.
static bool EndsAThreadLater(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const auto pfSet = reinterpret_cast<void (*)(void*, int, unsigned short)>(Find(pLibrary, "TOVMemory_Set"));
    std::promise<bool> oUsed;
    std::promise<void> oGone;
    std::thread oThread([&] {
        bool bRaised = false;
        try
        {
            pfSet(nullptr, 0, 0);
        }
        catch (...)
        {
            bRaised = true;
        }
        oUsed.set_value(bRaised);
        oGone.get_future().wait();
    });
    const bool bRaised = oUsed.get_future().get();
    Unload(pLibrary);
    const bool bGone = !IsLoaded(szLibrary);
    oGone.set_value();
    oThread.join();
    return bRaised && bGone;
}

// Whether a check that failed left nothing behind that the end of this process would still call. Asks in the middle of
// it, too, where a program might set a handler of its own and keep the old one.
static bool LeavesNoHandler(const char* szLibrary)
{
    void* const pLibrary = Load(szLibrary);
    if (pLibrary == nullptr)
        return false;

    const auto pfSet = reinterpret_cast<void (*)(void*, int, unsigned short)>(Find(pLibrary, "TOVMemory_Set"));
    const std::terminate_handler pfBefore = std::get_terminate();
    std::terminate_handler pfInside = nullptr;
    bool bRaised = false;
    try
    {
        pfSet(nullptr, 0, 0);
    }
    catch (...)
    {
        bRaised = true;
        pfInside = std::get_terminate();
    }
    Unload(pLibrary);
    return bRaised && !IsLoaded(szLibrary) && std::get_terminate() == pfBefore && pfInside == pfBefore;
}

// Runs the check so many times, and prints how often it passed.
static void Count(int nTimes, bool (*fnCheck)(const char* szLibrary), const char* szLibrary)
{
    int nGood = 0;
    for (int nTime = 0; nTime < nTimes; ++nTime)
        nGood += fnCheck(szLibrary) ? 1 : 0;
    std::printf("%d\n", nGood);
}

int main(int nArguments, char** aszArguments)
{
    if (nArguments < 3)
        return 2;

    KeepSystemLibraries();
    const char* const szLibrary = aszArguments[1];
    const char* const szHow = aszArguments[2];
    if (std::strcmp(szHow, "thread") == 0)
        Count(1, &EndsAThreadLater, szLibrary);
    else if (std::strcmp(szHow, "waited") == 0 && nArguments == 4)
    {
        UseOneProcessor();
        Count(std::atoi(aszArguments[3]), &IsUnloadedAfterItsThreads, szLibrary);
    }
    else if (std::strcmp(szHow, "check") == 0)
    {
        Count(1, &LeavesNoHandler, szLibrary);
        std::fflush(stdout);
        std::set_terminate([] { std::_Exit(0); });
        throw 1;
    }
#if !TOV_SYSTEM_WINDOWS
    else if (std::strcmp(szHow, "held") == 0)
        Count(1, &IsHeldByItsThread, szLibrary);
    else if (std::strcmp(szHow, "keys") == 0)
        Count(1, &StartsNoThreadWithoutKeys, szLibrary);
    else if (std::strcmp(szHow, "file") == 0)
        Count(1, &LeavesItsFile, szLibrary);
#endif
    else
        Count(std::atoi(szHow), &UseOnce, szLibrary);
    return 0;
}
