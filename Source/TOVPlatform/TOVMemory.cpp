#include <TOVPlatform/TOVMemory.h>

#include <Debug/TOVCheck.h>

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

namespace
{
// The number of leading bytes, in whole words, in which two blocks are equal.
unsigned long EqualWords(const tByte* pFirst, const tByte* pSecond, unsigned long dwSize)
{
    unsigned long dwOffset = 0;
    for (; dwSize - dwOffset >= sizeof(tDword); dwOffset += sizeof(tDword))
    {
        tDword dwFirst;
        tDword dwSecond;
        std::memcpy(&dwFirst, pFirst + dwOffset, sizeof(tDword)); // the blocks need not be aligned
        std::memcpy(&dwSecond, pSecond + dwOffset, sizeof(tDword));
        if (dwFirst != dwSecond)
            break;
    }
    return dwOffset;
}
} // namespace

bool FastCompare(const void* pDestination, const void* pSource, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(pSource != NULL);
    TOV_ASSERT((dwSize > 0) && ((dwSize % 4) == 0));
    return EqualWords(static_cast<const tByte*>(pDestination), static_cast<const tByte*>(pSource), dwSize) == dwSize;
}

int Compare(const void* pDestination, const void* pSource, unsigned long dwSize)
{
    TOV_ASSERT(pDestination != NULL);
    TOV_ASSERT(pSource != NULL);
    TOV_ASSERT(dwSize > 0);

    const tByte* pFirst = static_cast<const tByte*>(pDestination);
    const tByte* pSecond = static_cast<const tByte*>(pSource);
    for (unsigned long i = EqualWords(pFirst, pSecond, dwSize); i < dwSize; ++i)
    {
        if (pFirst[i] != pSecond[i])
            return pFirst[i] < pSecond[i] ? -1 : 1;
    }
    return 0;
}
} // namespace TOVMemory
} // namespace TOVPlatform
