// Checksums of memory blocks, fed in one piece or in several.
#pragma once

#include <Debug/TOVBase.h>

// Both run the checksum on from a running value and return the new one: the result for one piece is the start value for
// the next. Neither has a start value or a final step of its own:
//
//   wanted                start value   final step
//   CRC-32 (zlib, PNG)    0xFFFFFFFF    complement the result
//   CRC-16/XMODEM         0             none
//   CRC-16/CCITT-FALSE    0xFFFF        none
//
// A size of 0 returns the running value and reads nothing; pData is not checked. Sizes are bytes. Any thread.
extern "C"
{
// Polynomial 0x1021, most significant bit first, not reflected.
TOV_EXPORT unsigned short CRC16Generate(const void* pData, unsigned long long ullSize, unsigned short usCrc);

// Polynomial 0xEDB88320, reflected.
TOV_EXPORT unsigned int CRC32Generate(const void* pData, unsigned long long ullSize, unsigned int uCrc);
}
