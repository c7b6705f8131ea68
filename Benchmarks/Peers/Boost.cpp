// Rows of Boost.

#include <Bench.h>
#include <Inputs.h>

#include <boost/container/vector.hpp>
#include <boost/crc.hpp>
#include <boost/dynamic_bitset.hpp>
#include <boost/filesystem/path.hpp>
#include <boost/lockfree/spsc_queue.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#include <boost/smart_ptr/local_shared_ptr.hpp>
#include <boost/smart_ptr/make_local_shared.hpp>

#include <memory>

using namespace Inputs;

namespace
{
using tPath = boost::filesystem::path;
using tBits = boost::dynamic_bitset<>;
using tRing = boost::lockfree::spsc_queue<int, boost::lockfree::capacity<1024>>;

// Reads a table, byte by byte.
using tCrc16 = boost::crc_optimal<16, 0x1021, 0, 0, false, false>;

struct sCounted : boost::intrusive_ref_counter<sCounted, boost::thread_unsafe_counter>
{
    int nNumber = 1;
};

std::size_t CountComponents(const tPath& oPath)
{
    std::size_t nTotal = 0;
    for (const tPath& oComponent : oPath)
        nTotal += oComponent.native().size();
    return nTotal;
}

template<class TPointer> void CopyPointer(benchmark::State& oState, TPointer pSource)
{
    for (auto _ : oState)
    {
        Touch(pSource);
        TPointer pCopy(pSource);
        Touch(pCopy);
    }
}

void FillBits(tBits& oBits)
{
    const std::vector<unsigned char> aBytes = RandomBytes(BITS / 8);
    oBits.resize(BITS);
    for (std::size_t nBit = 0; nBit < BITS; ++nBit)
        oBits[nBit] = ((aBytes[nBit / 8] >> (nBit % 8)) & 1) != 0;
}

void MeasureCrc16(benchmark::State& oState, std::size_t nSize)
{
    const std::vector<unsigned char> aBytes = RandomBytes(nSize);
    const unsigned char* const pBytes = Hide(aBytes.data());
    for (auto _ : oState)
    {
        tCrc16 oCrc;
        oCrc.process_bytes(pBytes, nSize);
        Use(oCrc.checksum());
    }
    oState.SetBytesProcessed(oState.iterations() * static_cast<std::int64_t>(nSize));
}
} // namespace

BENCH("path/append", "boost::filesystem")
{
    const tPath oFolder(FOLDER);
    const char* const szName = Hide(FILE_NAME);
    for (auto _ : oState)
    {
        tPath oPath(oFolder);
        oPath /= szName;
        Touch(oPath);
    }
}

BENCH("path/parent", "boost::filesystem")
{
    tPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        tPath oParent = oPath.parent_path();
        Touch(oParent);
    }
}

BENCH("path/extension", "boost::filesystem")
{
    tPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        tPath oExtension = oPath.extension();
        Touch(oExtension);
    }
}

BENCH("path/iterate6", "boost::filesystem")
{
    tPath oPath(PATH6);
    for (auto _ : oState)
    {
        Touch(oPath);
        Use(CountComponents(oPath));
    }
}

BENCH("path/parse+iterate6", "boost::filesystem")
{
    const char* const szPath = Hide(PATH6);
    for (auto _ : oState)
    {
        const tPath oPath(szPath);
        Use(CountComponents(oPath));
    }
}

BENCH("path/parse", "boost::filesystem")
{
    std::string sText(PATH6);
    for (auto _ : oState)
    {
        Touch(sText);
        tPath oPath(sText);
        Touch(oPath);
    }
}

BENCH("path/compare", "boost::filesystem")
{
    tPath oFirst(PATH6);
    tPath oSecond(PATH6);
    for (auto _ : oState)
    {
        Touch(oFirst);
        Touch(oSecond);
        Use(oFirst == oSecond);
    }
}

BENCH("array/push1M", "boost::container::vector")
{
    for (auto _ : oState)
    {
        boost::container::vector<int> aNumbers;
        for (int nNumber = 0; nNumber < MILLION; ++nNumber)
            aNumbers.push_back(nNumber);
        Touch(aNumbers);
    }
    oState.SetItemsProcessed(oState.iterations() * MILLION);
}

BENCH("ring/write1+read1", "boost spsc_queue")
{
    const auto pRing = std::make_unique<tRing>();
    int nNumber = 0;
    for (auto _ : oState)
    {
        pRing->push(++nNumber);
        int nRead = 0;
        pRing->pop(nRead);
        Use(nRead);
    }
}

BENCH("ring/block256", "boost spsc_queue")
{
    const auto pRing = std::make_unique<tRing>();
    const std::vector<int> aBlock = RandomNumbers(256);
    std::vector<int> aRead(256);
    for (auto _ : oState)
    {
        pRing->push(aBlock.data(), aBlock.size());
        pRing->pop(aRead.data(), aRead.size());
        Use(aRead.data());
    }
    oState.SetItemsProcessed(oState.iterations() * 256);
}

BENCH("bits/and1M", "boost::dynamic_bitset")
{
    tBits oFirst;
    tBits oSecond;
    FillBits(oFirst);
    FillBits(oSecond);
    for (auto _ : oState)
    {
        oFirst &= oSecond;
        benchmark::ClobberMemory();
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/any1M", "boost::dynamic_bitset")
{
    tBits oBits(BITS);
    for (auto _ : oState)
    {
        Touch(oBits);
        Use(oBits.any());
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/complement1M", "boost::dynamic_bitset")
{
    tBits oBits;
    FillBits(oBits);
    for (auto _ : oState)
    {
        oBits.flip();
        benchmark::ClobberMemory();
    }
    oState.SetBytesProcessed(oState.iterations() * (BITS / 8));
}

BENCH("bits/set+test", "boost::dynamic_bitset")
{
    tBits oBits;
    FillBits(oBits);
    std::size_t nPosition = 0;
    for (auto _ : oState)
    {
        nPosition = (nPosition + 4099) & (BITS - 1);
        oBits.set(nPosition);
        Use(oBits.test(nPosition ^ 64));
    }
}

BENCH("crc16/64B", "boost::crc (table)")
{
    MeasureCrc16(oState, 64);
}

BENCH("crc16/4K", "boost::crc (table)")
{
    MeasureCrc16(oState, 4096);
}

BENCH("crc16/1M", "boost::crc (table)")
{
    MeasureCrc16(oState, 1 << 20);
}

BENCH("crc16/64M", "boost::crc (table)")
{
    MeasureCrc16(oState, 64 << 20);
}

BENCH("ptr/copy+destroy", "boost::local_shared_ptr")
{
    CopyPointer(oState, boost::make_local_shared<int>(1));
}

BENCH("ptr/copy+destroy", "boost::intrusive_ptr")
{
    CopyPointer(oState, boost::intrusive_ptr<sCounted>(new sCounted));
}

BENCH("ptr/create+destroy", "boost::make_local_shared")
{
    for (auto _ : oState)
    {
        auto pNumber = boost::make_local_shared<int>(1);
        Touch(pNumber);
    }
}
