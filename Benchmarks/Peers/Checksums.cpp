// Rows of checksums in the libraries that are known for them.

#include <Bench.h>
#include <Inputs.h>

#include <isa-l/crc.h>
#include <libdeflate.h>
#include <zlib.h>

namespace
{
// Calls the function with the bytes and their number.
template<class TFunction> void Measure(benchmark::State& oState, std::size_t nSize, TFunction fnChecksum)
{
    std::vector<unsigned char> aBytes = Inputs::RandomBytes(nSize);
    unsigned char* const pBytes = Hide(aBytes.data());
    for (auto _ : oState)
        Use(fnChecksum(pBytes, nSize));
    oState.SetBytesProcessed(oState.iterations() * static_cast<std::int64_t>(nSize));
}

auto Zlib(unsigned char* pBytes, std::size_t nSize)
{
    return crc32(0, pBytes, static_cast<uInt>(nSize));
}

auto Deflate(unsigned char* pBytes, std::size_t nSize)
{
    return libdeflate_crc32(0, pBytes, nSize);
}

auto IsaL(unsigned char* pBytes, std::size_t nSize)
{
    return crc32_gzip_refl(0, pBytes, nSize);
}

auto IsaL16(unsigned char* pBytes, std::size_t nSize)
{
    return crc16_t10dif(0, pBytes, nSize);
}
} // namespace

BENCH("crc32/64B", "zlib")
{
    Measure(oState, 64, Zlib);
}

BENCH("crc32/4K", "zlib")
{
    Measure(oState, 4096, Zlib);
}

BENCH("crc32/1M", "zlib")
{
    Measure(oState, 1 << 20, Zlib);
}

BENCH("crc32/64M", "zlib")
{
    Measure(oState, 64 << 20, Zlib);
}

BENCH("crc32/64B", "libdeflate")
{
    Measure(oState, 64, Deflate);
}

BENCH("crc32/4K", "libdeflate")
{
    Measure(oState, 4096, Deflate);
}

BENCH("crc32/1M", "libdeflate")
{
    Measure(oState, 1 << 20, Deflate);
}

BENCH("crc32/64M", "libdeflate")
{
    Measure(oState, 64 << 20, Deflate);
}

BENCH("crc32/64B", "ISA-L crc32_gzip_refl")
{
    Measure(oState, 64, IsaL);
}

BENCH("crc32/4K", "ISA-L crc32_gzip_refl")
{
    Measure(oState, 4096, IsaL);
}

BENCH("crc32/1M", "ISA-L crc32_gzip_refl")
{
    Measure(oState, 1 << 20, IsaL);
}

BENCH("crc32/64M", "ISA-L crc32_gzip_refl")
{
    Measure(oState, 64 << 20, IsaL);
}

BENCH("crc16/64B", "ISA-L crc16_t10dif")
{
    Measure(oState, 64, IsaL16);
}

BENCH("crc16/4K", "ISA-L crc16_t10dif")
{
    Measure(oState, 4096, IsaL16);
}

BENCH("crc16/1M", "ISA-L crc16_t10dif")
{
    Measure(oState, 1 << 20, IsaL16);
}

BENCH("crc16/64M", "ISA-L crc16_t10dif")
{
    Measure(oState, 64 << 20, IsaL16);
}
