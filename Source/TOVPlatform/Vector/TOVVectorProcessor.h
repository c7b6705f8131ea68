// Asks the processor for its vector instructions. Internal to this folder.
#pragma once

#include <Debug/TOVBase.h>

#if TOV_HAS_X86_VECTORS
#include <cpuid.h>
#include <immintrin.h>

namespace TOVPlatform
{
namespace Vector
{
// Returns whether the system keeps the registers of AVX-512 for each thread. The processor must have XGETBV.
__attribute__((target("xsave"))) inline bool KeepsWideRegisters()
{
    constexpr unsigned long long WIDE_REGISTERS = 0xE6; // of SSE and AVX, masks, upper halves, and registers 16 to 31
    return (_xgetbv(0) & WIDE_REGISTERS) == WIDE_REGISTERS;
}

// Returns whether there are vectors of 64 bytes with operations on bytes (AVX-512BW). This takes thousands of cycles in
// a virtual machine: the caller keeps the answer.
inline bool HasWideVectors()
{
    unsigned int uEax;
    unsigned int uEbx;
    unsigned int uEcx;
    unsigned int uEdx;
    if (__get_cpuid(1, &uEax, &uEbx, &uEcx, &uEdx) == 0 || (uEcx & bit_OSXSAVE) == 0 || !KeepsWideRegisters())
        return false;
    return __get_cpuid_count(7, 0, &uEax, &uEbx, &uEcx, &uEdx) != 0 && (uEbx & bit_AVX512BW) != 0;
}
} // namespace Vector
} // namespace TOVPlatform
#endif
