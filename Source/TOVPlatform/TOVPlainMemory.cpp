// The plain memory functions, which are byte loops. This source is compiled without the optimisation that would replace
// them by the runtime's block functions.
#include <TOVPlatform/TOVMemory.h>

#include <Debug/TOVCheck.h>

// Both platforms share these functions; a failed check names the platform's source.
#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE TOV_PLATFORM_SOURCE("TOVMemory")

bool TOVMemory_Cmp(const void* pFirst, const void* pSecond, unsigned short usSize)
{
    const tByte* pBytes1 = static_cast<const tByte*>(pFirst);
    const tByte* pBytes2 = static_cast<const tByte*>(pSecond);
    for (unsigned i = 0; i < usSize; ++i)
    {
        if (pBytes1[i] != pBytes2[i])
            return false;
    }
    return true;
}

void TOVMemory_Copy(void* pDestination, const void* pSource, unsigned short usSize)
{
    tByte* pTo = static_cast<tByte*>(pDestination);
    const tByte* pFrom = static_cast<const tByte*>(pSource);
    for (unsigned i = 0; i < usSize; ++i)
        pTo[i] = pFrom[i];
}

void TOVMemory_Set(void* pDestination, int nValue, unsigned short usSize)
{
    TOV_ASSERT(pDestination != NULL);
    tByte* pBytes = static_cast<tByte*>(pDestination);
    for (unsigned i = 0; i < usSize; ++i)
        pBytes[i] = static_cast<tByte>(nValue);
}

void TOVMemory_Zero(void* pMemory, unsigned short usSize)
{
    TOV_ASSERT(pMemory != NULL);
    TOVMemory_Set(pMemory, 0, usSize);
}
