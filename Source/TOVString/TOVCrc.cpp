#include <TOVString/TOVCrc.h>

#include <TOVPlatform/Vector/TOVVectorCrc.h>

#include <array>

// Long data is folded by vector instructions, where the processor has them. Other data is computed by
// tables ("slicing-by-16"): table k gives what a byte adds to the checksum when k more bytes follow it, so that the 16
// additions of a stretch do not wait for each other. What is left of the data, and short data, goes through table 0
// byte by byte.
namespace Vector = TOVPlatform::Vector;

namespace
{
constexpr int STRETCH = 16;

template<class TValue> using tCrcTables = std::array<std::array<TValue, 256>, STRETCH>;

constexpr tCrcTables<std::uint16_t> MakeTables16()
{
    tCrcTables<std::uint16_t> aTables = {};
    for (unsigned int uByte = 0; uByte < 256; ++uByte)
    {
        unsigned int uValue = uByte << 8;
        for (int nBit = 0; nBit < 8; ++nBit)
            uValue = (uValue & 0x8000) != 0 ? (uValue << 1) ^ 0x1021 : uValue << 1;
        aTables[0][uByte] = static_cast<std::uint16_t>(uValue);
    }
    for (std::size_t nTable = 1; nTable < STRETCH; ++nTable)
    {
        for (std::size_t nByte = 0; nByte < 256; ++nByte)
        {
            const unsigned int uValue = aTables[nTable - 1][nByte];
            aTables[nTable][nByte] = static_cast<std::uint16_t>((uValue << 8) ^ aTables[0][uValue >> 8]);
        }
    }
    return aTables;
}

constexpr tCrcTables<std::uint32_t> MakeTables32()
{
    tCrcTables<std::uint32_t> aTables = {};
    for (std::uint32_t uByte = 0; uByte < 256; ++uByte)
    {
        std::uint32_t uValue = uByte;
        for (int nBit = 0; nBit < 8; ++nBit)
            uValue = (uValue & 1) != 0 ? (uValue >> 1) ^ 0xEDB88320 : uValue >> 1;
        aTables[0][uByte] = uValue;
    }
    for (std::size_t nTable = 1; nTable < STRETCH; ++nTable)
    {
        for (std::size_t nByte = 0; nByte < 256; ++nByte)
        {
            const std::uint32_t uValue = aTables[nTable - 1][nByte];
            aTables[nTable][nByte] = (uValue >> 8) ^ aTables[0][uValue & 0xFF];
        }
    }
    return aTables;
}

constexpr tCrcTables<std::uint16_t> CRC16_TABLES = MakeTables16();
constexpr tCrcTables<std::uint32_t> CRC32_TABLES = MakeTables32();

static_assert(CRC16_TABLES[0][1] == 0x1021 && CRC16_TABLES[0][3] == 0x3063, "not the table of CRC-16/XMODEM");
static_assert(CRC32_TABLES[0][1] == 0x77073096 && CRC32_TABLES[0][3] == 0x990951BA, "not the table of CRC-32");

// What the bytes from nFirst on add to the checksum of a stretch.
template<class TValue> TValue SumOfRest(const tCrcTables<TValue>& aTables, const tByte* pStretch, std::size_t nFirst)
{
    TValue nSum = 0;
    for (std::size_t n = nFirst; n < STRETCH; ++n)
        nSum ^= aTables[STRETCH - 1 - n][pStretch[n]];
    return nSum;
}

std::uint16_t Continue16(const tByte* pByte, unsigned long long ullSize, std::uint16_t usCrc)
{
    for (; ullSize >= STRETCH; ullSize -= STRETCH, pByte += STRETCH)
    {
        const std::uint16_t usSum = SumOfRest(CRC16_TABLES, pByte, 2);
        usCrc = static_cast<std::uint16_t>(usSum ^ CRC16_TABLES[15][(usCrc >> 8) ^ pByte[0]] ^
                                           CRC16_TABLES[14][(usCrc & 0xFF) ^ pByte[1]]);
    }
    for (; ullSize > 0; --ullSize, ++pByte)
        usCrc = static_cast<std::uint16_t>((usCrc << 8) ^ CRC16_TABLES[0][(usCrc >> 8) ^ *pByte]);
    return usCrc;
}

std::uint32_t Continue32(const tByte* pByte, unsigned long long ullSize, std::uint32_t uCrc)
{
    for (; ullSize >= STRETCH; ullSize -= STRETCH, pByte += STRETCH)
    {
        const std::uint32_t uSum = SumOfRest(CRC32_TABLES, pByte, 4);
        uCrc = uSum ^ CRC32_TABLES[15][(uCrc & 0xFF) ^ pByte[0]] ^ CRC32_TABLES[14][(uCrc >> 8 & 0xFF) ^ pByte[1]] ^
               CRC32_TABLES[13][(uCrc >> 16 & 0xFF) ^ pByte[2]] ^ CRC32_TABLES[12][(uCrc >> 24) ^ pByte[3]];
    }
    for (; ullSize > 0; --ullSize, ++pByte)
        uCrc = (uCrc >> 8) ^ CRC32_TABLES[0][(uCrc ^ *pByte) & 0xFF];
    return uCrc;
}

template<class TValue, class TFold, class TContinue>
TValue Generate(const void* pData, unsigned long long ullSize, TValue nCrc, const TFold& fnFold,
                const TContinue& fnContinue)
{
    const tByte* pByte = static_cast<const tByte*>(pData);
    const std::size_t ulFolded = fnFold(Vector::GetBestFolding(), pByte, static_cast<std::size_t>(ullSize), nCrc);
    return fnContinue(pByte + ulFolded, ullSize - ulFolded, nCrc);
}
} // namespace

unsigned short CRC16Generate(const void* pData, unsigned long long ullSize, unsigned short usCrc)
{
    return Generate(pData, ullSize, usCrc, Vector::FoldCrc16, Continue16);
}

unsigned int CRC32Generate(const void* pData, unsigned long long ullSize, unsigned int uCrc)
{
    return Generate(pData, ullSize, uCrc, Vector::FoldCrc32, Continue32);
}
