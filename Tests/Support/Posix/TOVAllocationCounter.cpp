#include "Support/TOVAllocationCounter.h"

#include <cerrno>
#include <cstdlib>

static thread_local sAllocationCounts s_oCounts;

#if TOV_CAN_FAIL_ALLOCATIONS

// In every module of the process the program's malloc goes before the C library's, whose own functions have second
// names.
extern "C"
{
void* __libc_malloc(std::size_t nSize);
void* __libc_calloc(std::size_t nCount, std::size_t nSize);
void* __libc_realloc(void* pBlock, std::size_t nSize);
void* __libc_memalign(std::size_t nAlignment, std::size_t nSize);
void __libc_free(void* pBlock);
}

#define TOV_HOOK extern "C" __attribute__((visibility("default")))

TOV_HOOK void* malloc(std::size_t nSize) noexcept
{
    void* pBlock = NoteAllocation(s_oCounts, nSize) ? __libc_malloc(nSize) : nullptr;
    if (pBlock == nullptr)
        errno = ENOMEM;
    return pBlock;
}

TOV_HOOK void* calloc(std::size_t nCount, std::size_t nSize) noexcept
{
    void* pBlock = NoteAllocation(s_oCounts, nCount * nSize) ? __libc_calloc(nCount, nSize) : nullptr;
    if (pBlock == nullptr)
        errno = ENOMEM;
    return pBlock;
}

TOV_HOOK void* realloc(void* pBlock, std::size_t nSize) noexcept
{
    if (!NoteAllocation(s_oCounts, nSize))
    {
        errno = ENOMEM;
        return nullptr;
    }
    if (pBlock != nullptr)
        NoteRelease(s_oCounts);
    return __libc_realloc(pBlock, nSize);
}

TOV_HOOK void* aligned_alloc(std::size_t nAlignment, std::size_t nSize) noexcept
{
    void* pBlock = NoteAllocation(s_oCounts, nSize) ? __libc_memalign(nAlignment, nSize) : nullptr;
    if (pBlock == nullptr)
        errno = ENOMEM;
    return pBlock;
}

TOV_HOOK void free(void* pBlock) noexcept
{
    if (pBlock != nullptr)
        NoteRelease(s_oCounts);
    __libc_free(pBlock);
}

sAllocationCounts& AllocationCountsOfThisThread()
{
    return s_oCounts;
}

#else

// This belongs to the sanitizers' interface, whose header some installations of the compiler lack.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*fnOnAllocation)(const volatile void*, std::size_t),
                                                         void (*fnOnRelease)(const volatile void*));

static void OnAllocation(const volatile void*, std::size_t nSize)
{
    NoteTaken(s_oCounts, nSize);
}

static void OnRelease(const volatile void* pBlock)
{
    if (pBlock != nullptr)
        NoteRelease(s_oCounts);
}

sAllocationCounts& AllocationCountsOfThisThread()
{
    static const int s_nInstalled = __sanitizer_install_malloc_and_free_hooks(OnAllocation, OnRelease);
    static_cast<void>(s_nInstalled);
    return s_oCounts;
}

#endif
