// Rows of raw memory. The functions called "flat" are loops over bytes, which is what they are documented to be.

#include <Bench.h>
#include <Blocks.h>

#include <TOVPlatform/TOVMemory.h>

using namespace TOVPlatform;

namespace
{
void Compare(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    Use(TOVMemory::Compare(pFirst, pSecond, static_cast<unsigned int>(nSize)));
}

void FastCompare(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    Use(TOVMemory::FastCompare(pFirst, pSecond, static_cast<unsigned int>(nSize)));
}

void Copy(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    TOVMemory::Copy(pFirst, pSecond, static_cast<unsigned int>(nSize));
}

void Move(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    TOVMemory::Move(pFirst, pSecond, static_cast<unsigned int>(nSize));
}

void Set(unsigned char* pFirst, unsigned char*, std::size_t nSize)
{
    TOVMemory::Set(pFirst, 1, static_cast<unsigned int>(nSize));
}

void CompareFlat(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    Use(TOVMemory_Cmp(pFirst, pSecond, static_cast<unsigned short>(nSize)));
}

void CopyFlat(unsigned char* pFirst, unsigned char* pSecond, std::size_t nSize)
{
    TOVMemory_Copy(pFirst, pSecond, static_cast<unsigned short>(nSize));
}

void SetFlat(unsigned char* pFirst, unsigned char*, std::size_t nSize)
{
    TOVMemory_Set(pFirst, 1, static_cast<unsigned short>(nSize));
}
} // namespace

BENCH("memory/compare64B", KERNEL)
{
    MeasureBlocks(oState, 64, Compare);
}

BENCH("memory/compare4K", KERNEL)
{
    MeasureBlocks(oState, 4096, Compare);
}

BENCH("memory/compare64B (FastCompare)", KERNEL)
{
    MeasureBlocks(oState, 64, FastCompare);
}

BENCH("memory/compare4K (FastCompare)", KERNEL)
{
    MeasureBlocks(oState, 4096, FastCompare);
}

BENCH("memory/copy64B", KERNEL)
{
    MeasureBlocks(oState, 64, Copy);
}

BENCH("memory/copy4K", KERNEL)
{
    MeasureBlocks(oState, 4096, Copy);
}

BENCH("memory/move4K", KERNEL)
{
    MeasureBlocks(oState, 4096, Move);
}

BENCH("memory/set4K", KERNEL)
{
    MeasureBlocks(oState, 4096, Set);
}

BENCH("memory/compare64B (flat, byte loop)", KERNEL)
{
    MeasureBlocks(oState, 64, CompareFlat);
}

BENCH("memory/copy64B (flat, byte loop)", KERNEL)
{
    MeasureBlocks(oState, 64, CopyFlat);
}

BENCH("memory/set64B (flat, byte loop)", KERNEL)
{
    MeasureBlocks(oState, 64, SetFlat);
}

BENCH("memory/compare4K (flat, byte loop)", KERNEL)
{
    MeasureBlocks(oState, 4096, CompareFlat);
}

BENCH("memory/copy4K (flat, byte loop)", KERNEL)
{
    MeasureBlocks(oState, 4096, CopyFlat);
}

BENCH("memory/set4K (flat, byte loop)", KERNEL)
{
    MeasureBlocks(oState, 4096, SetFlat);
}

BENCH("memory/malloc+free 32B", KERNEL)
{
    for (auto _ : oState)
    {
        void* pMemory = TOVMemory::Alloc(32);
        Use(pMemory);
        TOVMemory::Free(pMemory);
    }
}
