// Raw memory: allocation and block operations.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// Thin guards around the runtime, stricter than it: a null pointer or a size of 0 is a programming error and throws;
// the checks come in argument order. Sizes are bytes. Threads: any, as for the runtime's heap.
namespace TOVMemory
{
// Return null when memory is exhausted; after a failed Realloc the old block stays valid.
TOV_EXPORT void* Alloc(unsigned long dwSize);
TOV_EXPORT void* Realloc(void* pMemoryBlock, unsigned long dwSize);
TOV_EXPORT void Free(void* pMemory);

TOV_EXPORT void Zero(void* pMemory, unsigned long dwSize);

// Copies between blocks that do not overlap.
TOV_EXPORT void Copy(void* pDestination, const void* pSource, unsigned long dwSize);

// Copies between blocks that may overlap.
TOV_EXPORT void Move(void* pDestination, const void* pSource, unsigned long dwSize);

// Fills with the low byte of the value.
TOV_EXPORT void Set(void* pDestination, int nValue, unsigned long dwSize);

// Compares for equality only, by 32-bit words: throws unless the size is a multiple of 4. Alignment is not required.
TOV_EXPORT bool FastCompare(const void* pDestination, const void* pSource, unsigned long dwSize);

// The order of the first differing bytes, read as unsigned: exactly -1, 0 or 1.
TOV_EXPORT int Compare(const void* pDestination, const void* pSource, unsigned long dwSize);
} // namespace TOVMemory
} // namespace TOVPlatform

// The plain functions, exported under these names without decoration. Sizes are 16-bit, so 65536 wraps to 0 and does
// nothing. Cmp and Copy check nothing, so that they can serve below the checks. All are byte loops.
extern "C"
{
// True if all bytes are equal.
TOV_EXPORT bool TOVMemory_Cmp(const void* pFirst, const void* pSecond, unsigned short usSize);

// Copies upward from the start: an overlapping destination above the source smears the first bytes.
TOV_EXPORT void TOVMemory_Copy(void* pDestination, const void* pSource, unsigned short usSize);

// These throw for a null pointer, even if the size is 0.
TOV_EXPORT void TOVMemory_Set(void* pDestination, int nValue, unsigned short usSize);
TOV_EXPORT void TOVMemory_Zero(void* pMemory, unsigned short usSize);
}
