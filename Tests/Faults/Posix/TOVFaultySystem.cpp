#include "Faults/Posix/TOVFaultySystem.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <linux/futex.h>
#include <pthread.h>
#include <sys/syscall.h>

namespace
{
// What a failed call does.
enum eEffect
{
    eEffectMinusOne, // returns -1 and sets errno
    eEffectNull,     // returns a null pointer, or 0, and sets errno
    eEffectError,    // returns the error
    eEffectClose,    // does its work, returns -1 and sets errno
    eEffectShort,    // transfers half, and sets errno
    eEffectOwnerDied // does its work, and says that the former owner of the robust mutex has died
};

// Whose calls fail: standard libraries lock mutexes and read clocks as well.
enum eCallers
{
    eCallersAll, // those of the library, of the program, and of what a sanitizer puts between
    eCallersLibrary
};

struct sFault
{
    sSystemFault oPublic;
    const char* szFunction;
    eEffect eWhat;
    int nError;
    eCallers eWhose;
};

const sFault s_aFaults[] = {
#define TOV_FAULT(function, effect, error, callers) {{#function, false}, #function, effect, error, callers},
#define TOV_FAULT_ONCE(function, effect, error, callers)                                                               \
    {{#function " (" #error ")", true}, #function, effect, error, callers},
#include "Faults/Posix/TOVSystemFaults.inl"
#undef TOV_FAULT
#undef TOV_FAULT_ONCE
};
constexpr int NUM_FAULTS = sizeof s_aFaults / sizeof *s_aFaults;

struct sChoice
{
    std::atomic<int> nFault{-1};
    std::atomic<long> lSuccesses{0};
    std::atomic<bool> bOnce{false};
    std::atomic<bool> bArmed{false};
    std::atomic<unsigned long> ulFailed{0};
    std::atomic<unsigned long> aulCalls[NUM_FAULTS]{};
};

struct sRange
{
    std::uintptr_t nBegin = 0;
    std::uintptr_t nEnd = 0;
    bool Holds(std::uintptr_t nAddress) const { return nAddress - nBegin < nEnd - nBegin; }
};

struct sModules
{
    sRange oProgram;
    sRange oLibrary;
    sRange oSanitizer;
};

sModules FindModules()
{
    sModules oModules;
    ::dl_iterate_phdr(
        [](dl_phdr_info* pInfo, std::size_t, void* pModules) {
            sModules& oFound = *static_cast<sModules*>(pModules);
            sRange oRange;
            oRange.nBegin = pInfo->dlpi_addr;
            for (int n = 0; n < pInfo->dlpi_phnum; ++n)
            {
                if (pInfo->dlpi_phdr[n].p_type == PT_LOAD)
                    oRange.nEnd = pInfo->dlpi_addr + pInfo->dlpi_phdr[n].p_vaddr + pInfo->dlpi_phdr[n].p_memsz;
            }
            if (*pInfo->dlpi_name == '\0' && oFound.oProgram.nEnd == 0)
                oFound.oProgram = oRange;
            else if (std::strstr(pInfo->dlpi_name, "libTOVKernel.so") != nullptr)
                oFound.oLibrary = oRange;
            else if (std::strstr(pInfo->dlpi_name, "libasan.so") != nullptr)
                oFound.oSanitizer = oRange;
            return 0;
        },
        &oModules);
    return oModules;
}

const sModules& Modules()
{
    static const sModules s_oModules = FindModules();
    return s_oModules;
}

// A start of the whole program can be told a fault by its environment: "2 5" lets fault 2 strike after 5 successes.
sChoice& Choice()
{
    static sChoice s_oChoice;
    static const bool s_bAsked = [] {
        const char* const szFault = std::getenv("TOV_SYSTEM_FAULT");
        char* szRest = nullptr;
        if (szFault != nullptr && *szFault != '\0')
        {
            s_oChoice.nFault = static_cast<int>(std::strtol(szFault, &szRest, 10));
            s_oChoice.lSuccesses = std::strtol(szRest, nullptr, 10);
            s_oChoice.bOnce = true;
            s_oChoice.bArmed = true;
        }
        return true;
    }();
    static_cast<void>(s_bAsked);
    return s_oChoice;
}

std::atomic<std::uintptr_t> s_anSites[2000];

typedef long (*tFunction)(long, long, long, long, long, long, long);

tFunction FindReal(const char* szFunction)
{
    return reinterpret_cast<tFunction>(::dlsym(RTLD_NEXT, szFunction));
}

// The file gets its line at once: the process may end in the middle of a call.
void TellSite(const char* szFunction, std::uintptr_t nOffset)
{
    static const char* const s_szFile = std::getenv("TOV_FAULT_FIGURES");
    if (s_szFile == nullptr)
        return;
    static const tFunction s_pfnOpen = FindReal("open");
    static const tFunction s_pfnWrite = FindReal("write");
    static const tFunction s_pfnClose = FindReal("close");
    char szLine[128];
    const int nLength =
        std::snprintf(szLine, sizeof szLine, "site|%s|%lx\n", szFunction, static_cast<unsigned long>(nOffset));
    const long lFile = s_pfnOpen(reinterpret_cast<long>(s_szFile), O_WRONLY | O_APPEND | O_CREAT, 0644, 0, 0, 0, 0);
    s_pfnWrite(lFile, reinterpret_cast<long>(szLine), nLength, 0, 0, 0, 0);
    s_pfnClose(lFile, 0, 0, 0, 0, 0, 0);
}

void NoteSite(const char* szFunction, std::uintptr_t nCaller)
{
    const sRange& oLibrary = Modules().oLibrary;
    if (!oLibrary.Holds(nCaller))
        return;
    const std::uintptr_t nOffset = nCaller - oLibrary.nBegin;
    for (std::atomic<std::uintptr_t>& nSite : s_anSites)
    {
        std::uintptr_t nFree = 0;
        if (nSite.load() == nOffset)
            return;
        if (nSite.compare_exchange_strong(nFree, nOffset))
            return TellSite(szFunction, nOffset);
    }
}

bool IsConcerned(const sFault& oFault, const char* szFunction, std::uintptr_t nCaller)
{
    if (oFault.szFunction != szFunction && std::strcmp(oFault.szFunction, szFunction) != 0)
        return false;
    const sModules& oModules = Modules();
    return oModules.oLibrary.Holds(nCaller) ||
           (oFault.eWhose == eCallersAll && (oModules.oProgram.Holds(nCaller) || oModules.oSanitizer.Holds(nCaller)));
}

// Returns the fault that this call has to suffer, or null.
const sFault* Strike(const char* szFunction, const void* pCaller, bool bConcerned = true)
{
    sChoice& oChoice = Choice();
    if (!bConcerned || !oChoice.bArmed.load(std::memory_order_relaxed))
        return nullptr;

    const std::uintptr_t nCaller = reinterpret_cast<std::uintptr_t>(pCaller);
    const sFault* pStruck = nullptr;
    const int nFormerError = errno;
    for (int n = 0; n < NUM_FAULTS; ++n)
    {
        if (!IsConcerned(s_aFaults[n], szFunction, nCaller))
            continue;
        ++oChoice.aulCalls[n];
        if (oChoice.nFault != n)
            continue;
        const long lLeft = oChoice.lSuccesses.fetch_sub(1);
        if (lLeft == 0 || (lLeft < 0 && !oChoice.bOnce))
            pStruck = &s_aFaults[n];
    }
    errno = nFormerError;
    if (pStruck == nullptr)
        return nullptr;
    ++oChoice.ulFailed;
    NoteSite(pStruck->szFunction, nCaller);
    if (pStruck->eWhat != eEffectError)
        errno = pStruck->nError;
    return pStruck;
}

bool IsConcerned(const char* szFunction, long lMutex);

// Integers and pointers are passed in the same registers, whatever their types: all functions here have one form.
long Call(tFunction pfnReal, const char* szFunction, const void* pCaller, long l1, long l2, long l3, long l4, long l5,
          long l6, long l7)
{
    const sFault* const pFault = Strike(szFunction, pCaller, IsConcerned(szFunction, l1));
    if (pFault == nullptr)
        return pfnReal(l1, l2, l3, l4, l5, l6, l7);
    switch (pFault->eWhat)
    {
    case eEffectNull:
        return 0;
    case eEffectError:
        return pFault->nError;
    case eEffectClose:
        pfnReal(l1, l2, l3, l4, l5, l6, l7);
        errno = pFault->nError;
        return -1;
    case eEffectOwnerDied:
    {
        const long lResult = pfnReal(l1, l2, l3, l4, l5, l6, l7);
        return lResult == 0 ? pFault->nError : lResult;
    }
    case eEffectShort: // write(file, bytes, count), and fwrite(bytes, size, count, stream)
    {
        const long lDone = std::strcmp(szFunction, "write") == 0 ? pfnReal(l1, l2, l3 / 2, 0, 0, 0, 0)
                                                                 : pfnReal(l1, l2, l3 / 2, l4, 0, 0, 0);
        errno = pFault->nError;
        return std::strcmp(szFunction, "write") == 0 && l3 < 2 ? -1 : lDone;
    }
    default:
        return -1;
    }
}

// A mutex that tells the death of its owner is one of the library; standard libraries have none.
bool IsConcerned(const char* szFunction, long lMutex)
{
    if (std::strcmp(szFunction, "pthread_mutex_lock") != 0 && std::strcmp(szFunction, "pthread_mutex_trylock") != 0)
        return true;
    constexpr int ROBUST = 16;
    return (reinterpret_cast<pthread_mutex_t*>(lMutex)->__data.__kind & ROBUST) != 0;
}

} // namespace

// Each function of the system that the table names. The name of the function here is another one, so that the headers'
// declarations do not matter. Those behind hooks of the tests' own look at the caller of these.
#define TOV_HOOK(function)                                                                                             \
    extern "C" TOV_FAULTY_SYSTEM long Hook_##function(long, long, long, long, long, long) __asm__(#function);          \
    long Hook_##function(long l1, long l2, long l3, long l4, long l5, long l6)                                         \
    {                                                                                                                  \
        static const tFunction s_pfnReal = FindReal(#function);                                                        \
        return Call(s_pfnReal, #function, __builtin_return_address(0), l1, l2, l3, l4, l5, l6, 0);                     \
    }
#define TOV_HOOK_BEHIND(function)                                                                                      \
    extern "C" TOV_FAULTY_SYSTEM long Hook_##function(long, long, long, long, long, long) __asm__(#function);          \
    long Hook_##function(long l1, long l2, long l3, long l4, long l5, long l6)                                         \
    {                                                                                                                  \
        static const tFunction s_pfnReal = FindReal(#function);                                                        \
        return Call(s_pfnReal, #function, __builtin_return_address(1), l1, l2, l3, l4, l5, l6, 0);                     \
    }
#define TOV_HOOKS
#pragma GCC diagnostic ignored "-Wframe-address"
#include "Faults/Posix/TOVSystemFaults.inl"

// The system's own calls: only some of them can fail.
extern "C" TOV_FAULTY_SYSTEM long Hook_syscall(long, long, long, long, long, long, long) __asm__("syscall");
long Hook_syscall(long lNumber, long l1, long l2, long l3, long l4, long l5, long l6)
{
    static const tFunction s_pfnReal = FindReal("syscall");
    constexpr long FUTEX_WAITV = 449;

    const char* szFunction = "";
    if (lNumber == SYS_futex && (l2 & FUTEX_CMD_MASK) == FUTEX_WAIT_BITSET)
        szFunction = "futex_wait";
    else if (lNumber == FUTEX_WAITV)
        szFunction = "futex_waitv";
    else if (lNumber == SYS_membarrier)
        szFunction = "membarrier";
    return Call(s_pfnReal, szFunction, __builtin_return_address(0), lNumber, l1, l2, l3, l4, l5, l6);
}

// Its last argument is a structure.
extern "C" TOV_FAULTY_SYSTEM FILE* Hook_fopencookie(void*, const char*, cookie_io_functions_t) __asm__("fopencookie");
FILE* Hook_fopencookie(void* pCookie, const char* szMode, cookie_io_functions_t oFunctions)
{
    typedef FILE* (*tOpen)(void*, const char*, cookie_io_functions_t);
    static const tOpen s_pfnReal = reinterpret_cast<tOpen>(::dlsym(RTLD_NEXT, "fopencookie"));
    return Strike("fopencookie", __builtin_return_address(0)) != nullptr ? nullptr
                                                                         : s_pfnReal(pCookie, szMode, oFunctions);
}

int CountSystemFaults()
{
    return NUM_FAULTS;
}

const sSystemFault& GetSystemFault(int nFault)
{
    return s_aFaults[nFault].oPublic;
}

void ChooseSystemFault(int nFault, unsigned long ulSuccesses, bool bOnce)
{
    sChoice& oChoice = Choice();
    oChoice.nFault = nFault;
    oChoice.lSuccesses = static_cast<long>(ulSuccesses);
    oChoice.bOnce = bOnce;
    oChoice.ulFailed = 0;
    for (std::atomic<unsigned long>& ulCalls : oChoice.aulCalls)
        ulCalls = 0;
}

bool ArmSystemFault(bool bArm)
{
    return Choice().bArmed.exchange(bArm);
}

unsigned long CountSystemCalls(int nFault)
{
    return Choice().aulCalls[nFault];
}

unsigned long CountFailedCalls()
{
    return Choice().ulFailed;
}
