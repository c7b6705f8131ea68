// Declares the fast path of the checksums, which folds long data by vector instructions.
#pragma once

#include <Debug/TOVBase.h>

#include <cstddef>
#include <cstdint>

namespace TOVPlatform
{
namespace Vector
{
// The forms of folding. Each needs more of the processor than the one before.
enum eFolding
{
    eFoldingNone,
    eFoldingNarrow, // multiplies a block of 16 bytes without carries (PCLMULQDQ)
    eFoldingWide    // multiplies four of them at once (VPCLMULQDQ with AVX-512)
};

// Returns the best form that this processor has.
eFolding GetBestFolding();

// These continue a checksum with the beginning of the data, and return the size of that beginning, which is less than
// 16 bytes shorter than the data. They return 0, with the checksum unchanged, for short data, and without a form of
// folding.
std::size_t FoldCrc16(eFolding eForm, const tByte* pData, std::size_t ulSize, std::uint16_t& usCrc);
std::size_t FoldCrc32(eFolding eForm, const tByte* pData, std::size_t ulSize, std::uint32_t& uCrc);
} // namespace Vector
} // namespace TOVPlatform
