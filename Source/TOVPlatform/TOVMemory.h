// Declares functions for raw memory: allocation and block operations.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
// These call the runtime, and check their arguments first: a null pointer or a size of 0 is a programming error and
// throws. The checks come in the order of the arguments. Sizes are in bytes. Any thread may call any function, as for
// the runtime's heap.
namespace TOVMemory
{
// Alloc and Realloc return null when memory is exhausted; after a failed Realloc the old block is still valid.
TOV_EXPORT void* Alloc(unsigned long dwSize);
TOV_EXPORT void* Realloc(void* pMemoryBlock, unsigned long dwSize);
TOV_EXPORT void Free(void* pMemory);

// Fills with zeros.
TOV_EXPORT void Zero(void* pMemory, unsigned long dwSize);

// Copies between blocks that do not overlap.
TOV_EXPORT void Copy(void* pDestination, const void* pSource, unsigned long dwSize);

// Copies between blocks that may overlap.
TOV_EXPORT void Move(void* pDestination, const void* pSource, unsigned long dwSize);

// Fills with the low byte of the value.
TOV_EXPORT void Set(void* pDestination, int nValue, unsigned long dwSize);

// Returns whether the blocks are equal. It compares 32-bit words, and throws unless the size is a multiple of 4. The
// blocks need not be aligned.
TOV_EXPORT bool FastCompare(const void* pDestination, const void* pSource, unsigned long dwSize);

// Returns the order of the first bytes that differ, read as unsigned: exactly -1, 0 or 1.
TOV_EXPORT int Compare(const void* pDestination, const void* pSource, unsigned long dwSize);
} // namespace TOVMemory
} // namespace TOVPlatform

// These functions are exported under plain names, without decoration. Sizes have 16 bits, so that 65536 becomes 0, for
// which they do nothing. TOVMemory_Cmp and TOVMemory_Copy check nothing, so that code that reports failed checks can
// use them. All are loops over bytes.
extern "C"
{
// Returns whether all bytes are equal.
TOV_EXPORT bool TOVMemory_Cmp(const void* pFirst, const void* pSecond, unsigned short usSize);

// Copies from the first byte to the last: if the blocks overlap and the destination has the higher address, the first
// bytes are repeated.
TOV_EXPORT void TOVMemory_Copy(void* pDestination, const void* pSource, unsigned short usSize);

// These throw for a null pointer, even if the size is 0.
TOV_EXPORT void TOVMemory_Set(void* pDestination, int nValue, unsigned short usSize);
TOV_EXPORT void TOVMemory_Zero(void* pMemory, unsigned short usSize);
}
