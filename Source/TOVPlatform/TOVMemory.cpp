#include <TOVPlatform/TOVMemory.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/Vector/TOVVectorMemory.h>

#include <cstdlib>
#include <cstring>

// Both platforms share these functions; a failed check names the platform's source.
#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE TOV_PLATFORM_SOURCE("TOVMemory")

namespace TOVPlatform
{
namespace TOVMemory
{
void* Alloc(unsigned long dwSize)
{
    TOV_ASSERT(dwSize > 0);
    return std::malloc(dwSize);
}

void* Realloc(void* pMemoryBlock, unsigned long dwSize)
{
    TOV_ASSERT(pMemoryBlock != NULL);
    TOV_ASSERT(dwSize > 0);
    return std::realloc(pMemoryBlock, dwSize);
}

void Free(void* pMemory)
{
    TOV_ASSERT(pMemory != NULL);
    std::free(pMemory);
}

void Zero(void* pMemory, unsigned long dwSize)
{
    TOV_ASSERT(pMemory != NULL);
    TOV_ASSERT(dwSize > 0);
    std::memset(pMemory, 0, dwSize);
}

void Copy(void* pDestination, const void* pSource, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(pSource != NULL);
    TOV_ASSERT(dwSize > 0);
    std::memcpy(pDestination, pSource, dwSize);
}

void Move(void* pDestination, const void* pSource, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(pSource != NULL);
    TOV_ASSERT(dwSize > 0);
    std::memmove(pDestination, pSource, dwSize);
}

void Set(void* pDestination, int nValue, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(dwSize > 0);
    std::memset(pDestination, nValue, dwSize);
}

bool FastCompare(const void* pDestination, const void* pSource, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(pSource != NULL);
    TOV_ASSERT((dwSize > 0) && ((dwSize % 4) == 0));
    return Vector::AreShortAndEqual(pDestination, pSource, dwSize) || std::memcmp(pDestination, pSource, dwSize) == 0;
}

int Compare(const void* pDestination, const void* pSource, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(pSource != NULL);
    TOV_ASSERT(dwSize > 0);

    if (Vector::AreShortAndEqual(pDestination, pSource, dwSize))
        return 0;
    const int nOrder = std::memcmp(pDestination, pSource, dwSize);
    return (nOrder > 0) - (nOrder < 0); // the runtime may return any number
}
} // namespace TOVMemory
} // namespace TOVPlatform
