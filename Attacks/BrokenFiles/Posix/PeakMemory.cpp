#include "PeakMemory.h"

#include "Debug/TOVCompiler.h"

#include <cerrno>
#include <malloc.h>

static long s_lUsed;
static long s_lStart;
static long s_lPeak;

static void NoteTaken(std::size_t nSize)
{
    s_lUsed += static_cast<long>(nSize);
    if (s_lPeak < s_lUsed)
        s_lPeak = s_lUsed;
}

static void NoteReleased(std::size_t nSize)
{
    s_lUsed -= static_cast<long>(nSize);
}

#if TOV_ADDRESS_SANITIZER
// These belong to the sanitizers' interface, whose header some installations of the compiler lack.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*fnOnAllocation)(const volatile void*, std::size_t),
                                                         void (*fnOnRelease)(const volatile void*));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* pBlock);

static void OnAllocation(const volatile void*, std::size_t nSize)
{
    NoteTaken(nSize);
}

static void OnRelease(const volatile void* pBlock)
{
    if (pBlock != nullptr)
        NoteReleased(__sanitizer_get_allocated_size(pBlock));
}

static void Install()
{
    static const int s_nInstalled = __sanitizer_install_malloc_and_free_hooks(OnAllocation, OnRelease);
    static_cast<void>(s_nInstalled);
}
#else
// In every module of the process the program's malloc goes before the C library's, whose own functions have second
// names.
extern "C"
{
void* __libc_malloc(std::size_t nSize);
void* __libc_calloc(std::size_t nCount, std::size_t nSize);
void* __libc_realloc(void* pBlock, std::size_t nSize);
void __libc_free(void* pBlock);
}

#define TOV_HOOK extern "C" __attribute__((visibility("default")))

static void* Taken(void* pBlock)
{
    NoteTaken(::malloc_usable_size(pBlock));
    return pBlock;
}

TOV_HOOK void* malloc(std::size_t nSize) noexcept
{
    return Taken(__libc_malloc(nSize));
}

TOV_HOOK void* calloc(std::size_t nCount, std::size_t nSize) noexcept
{
    return Taken(__libc_calloc(nCount, nSize));
}

// Both blocks are in use while one is copied to the other.
TOV_HOOK void* realloc(void* pBlock, std::size_t nSize) noexcept
{
    const std::size_t nBefore = ::malloc_usable_size(pBlock);
    void* const pNew = Taken(__libc_realloc(pBlock, nSize));
    if (pNew != nullptr || nSize == 0)
        NoteReleased(nBefore);
    return pNew;
}

TOV_HOOK void free(void* pBlock) noexcept
{
    NoteReleased(::malloc_usable_size(pBlock));
    __libc_free(pBlock);
}

static void Install()
{
}
#endif

CPeakMemory::CPeakMemory()
{
    Install();
    s_lStart = s_lPeak = s_lUsed;
}

std::size_t CPeakMemory::Peak() const
{
    return static_cast<std::size_t>(s_lPeak - s_lStart);
}
