// Declares checksums of memory blocks, which can be computed in one piece or in several.
#pragma once

#include <Debug/TOVBase.h>

// Both functions continue a checksum from a running value and return the new value: the result for one piece is the
// start value for the next. The caller supplies the start value and the final step of the wanted checksum:
//
//   wanted                start value   final step
//   CRC-32 (zlib, PNG)    0xFFFFFFFF    complement the result
//   CRC-16/XMODEM         0             none
//   CRC-16/CCITT-FALSE    0xFFFF        none
//
// A size of 0 returns the running value and reads nothing. pData is not checked. Sizes are in bytes. Any thread may
// call these functions.
extern "C"
{
// Uses the polynomial 0x1021, most significant bit first, not reflected.
TOV_EXPORT unsigned short CRC16Generate(const void* pData, unsigned long long ullSize, unsigned short usCrc);

// Uses the polynomial 0xEDB88320, reflected.
TOV_EXPORT unsigned int CRC32Generate(const void* pData, unsigned long long ullSize, unsigned int uCrc);
}
