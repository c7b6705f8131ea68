// Rows of checksums.

#include <Bench.h>
#include <Inputs.h>

#include <TOVString/TOVCrc.h>

namespace
{
void MeasureCrc32(benchmark::State& oState, std::size_t nSize)
{
    const std::vector<unsigned char> aBytes = Inputs::RandomBytes(nSize);
    const unsigned char* const pBytes = Hide(aBytes.data());
    for (auto _ : oState)
        Use(CRC32Generate(pBytes, nSize, 0xFFFFFFFF));
    oState.SetBytesProcessed(oState.iterations() * static_cast<std::int64_t>(nSize));
}

void MeasureCrc16(benchmark::State& oState, std::size_t nSize)
{
    const std::vector<unsigned char> aBytes = Inputs::RandomBytes(nSize);
    const unsigned char* const pBytes = Hide(aBytes.data());
    for (auto _ : oState)
        Use(CRC16Generate(pBytes, nSize, 0));
    oState.SetBytesProcessed(oState.iterations() * static_cast<std::int64_t>(nSize));
}
} // namespace

BENCH("crc32/64B", KERNEL)
{
    MeasureCrc32(oState, 64);
}

BENCH("crc32/4K", KERNEL)
{
    MeasureCrc32(oState, 4096);
}

BENCH("crc32/1M", KERNEL)
{
    MeasureCrc32(oState, 1 << 20);
}

BENCH("crc32/64M", KERNEL)
{
    MeasureCrc32(oState, 64 << 20);
}

BENCH("crc16/64B", KERNEL)
{
    MeasureCrc16(oState, 64);
}

BENCH("crc16/4K", KERNEL)
{
    MeasureCrc16(oState, 4096);
}

BENCH("crc16/1M", KERNEL)
{
    MeasureCrc16(oState, 1 << 20);
}

BENCH("crc16/64M", KERNEL)
{
    MeasureCrc16(oState, 64 << 20);
}
