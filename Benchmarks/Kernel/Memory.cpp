// Rows of raw memory. The functions called "flat" are loops over bytes, which is what they are documented to be.

#include <Bench.h>
#include <Inputs.h>

#include <TOVPlatform/TOVMemory.h>

using namespace TOVPlatform;

namespace
{
// Two blocks with the same bytes.
struct sBlocks
{
    explicit sBlocks(std::size_t nSize) : aFirst(Inputs::RandomBytes(nSize)), aSecond(aFirst) {}

    std::vector<unsigned char> aFirst;
    std::vector<unsigned char> aSecond;
};

// Calls the function with both blocks and their size, of which the compiler knows nothing.
template<class TFunction> void Measure(benchmark::State& oState, unsigned int uSize, TFunction fnFunction)
{
    sBlocks oBlocks(uSize);
    unsigned char* const pFirst = Hide(oBlocks.aFirst.data());
    unsigned char* const pSecond = Hide(oBlocks.aSecond.data());
    uSize = Hide(uSize);
    for (auto _ : oState)
    {
        fnFunction(pFirst, pSecond, uSize);
        benchmark::ClobberMemory();
    }
}

void Compare(unsigned char* pFirst, unsigned char* pSecond, unsigned int uSize)
{
    Use(TOVMemory::Compare(pFirst, pSecond, uSize));
}

void FastCompare(unsigned char* pFirst, unsigned char* pSecond, unsigned int uSize)
{
    Use(TOVMemory::FastCompare(pFirst, pSecond, uSize));
}

void Copy(unsigned char* pFirst, unsigned char* pSecond, unsigned int uSize)
{
    TOVMemory::Copy(pFirst, pSecond, uSize);
}

void Move(unsigned char* pFirst, unsigned char* pSecond, unsigned int uSize)
{
    TOVMemory::Move(pFirst, pSecond, uSize);
}

void Set(unsigned char* pFirst, unsigned char*, unsigned int uSize)
{
    TOVMemory::Set(pFirst, 1, uSize);
}

void CompareFlat(unsigned char* pFirst, unsigned char* pSecond, unsigned int uSize)
{
    Use(TOVMemory_Cmp(pFirst, pSecond, static_cast<unsigned short>(uSize)));
}

void CopyFlat(unsigned char* pFirst, unsigned char* pSecond, unsigned int uSize)
{
    TOVMemory_Copy(pFirst, pSecond, static_cast<unsigned short>(uSize));
}

void SetFlat(unsigned char* pFirst, unsigned char*, unsigned int uSize)
{
    TOVMemory_Set(pFirst, 1, static_cast<unsigned short>(uSize));
}
} // namespace

BENCH("memory/compare64B", KERNEL)
{
    Measure(oState, 64, Compare);
}

BENCH("memory/compare4K", KERNEL)
{
    Measure(oState, 4096, Compare);
}

BENCH("memory/compare64B (FastCompare)", KERNEL)
{
    Measure(oState, 64, FastCompare);
}

BENCH("memory/compare4K (FastCompare)", KERNEL)
{
    Measure(oState, 4096, FastCompare);
}

BENCH("memory/copy64B", KERNEL)
{
    Measure(oState, 64, Copy);
}

BENCH("memory/copy4K", KERNEL)
{
    Measure(oState, 4096, Copy);
}

BENCH("memory/move4K", KERNEL)
{
    Measure(oState, 4096, Move);
}

BENCH("memory/set4K", KERNEL)
{
    Measure(oState, 4096, Set);
}

BENCH("memory/compare64B (flat, byte loop)", KERNEL)
{
    Measure(oState, 64, CompareFlat);
}

BENCH("memory/copy64B (flat, byte loop)", KERNEL)
{
    Measure(oState, 64, CopyFlat);
}

BENCH("memory/set64B (flat, byte loop)", KERNEL)
{
    Measure(oState, 64, SetFlat);
}

BENCH("memory/compare4K (flat, byte loop)", KERNEL)
{
    Measure(oState, 4096, CompareFlat);
}

BENCH("memory/copy4K (flat, byte loop)", KERNEL)
{
    Measure(oState, 4096, CopyFlat);
}

BENCH("memory/set4K (flat, byte loop)", KERNEL)
{
    Measure(oState, 4096, SetFlat);
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
