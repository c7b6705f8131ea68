#include <TOVString/TOVCrc.h>

#include <array>

namespace
{
template<class TValue> using tCrcTable = std::array<TValue, 256>;

constexpr tCrcTable<std::uint16_t> MakeTable16()
{
    tCrcTable<std::uint16_t> aTable = {};
    for (unsigned int uByte = 0; uByte < aTable.size(); ++uByte)
    {
        unsigned int uValue = uByte << 8;
        for (int nBit = 0; nBit < 8; ++nBit)
            uValue = (uValue & 0x8000) != 0 ? (uValue << 1) ^ 0x1021 : uValue << 1;
        aTable[uByte] = static_cast<std::uint16_t>(uValue);
    }
    return aTable;
}

constexpr tCrcTable<std::uint32_t> MakeTable32()
{
    tCrcTable<std::uint32_t> aTable = {};
    for (std::uint32_t uByte = 0; uByte < aTable.size(); ++uByte)
    {
        std::uint32_t uValue = uByte;
        for (int nBit = 0; nBit < 8; ++nBit)
            uValue = (uValue & 1) != 0 ? (uValue >> 1) ^ 0xEDB88320 : uValue >> 1;
        aTable[uByte] = uValue;
    }
    return aTable;
}

constexpr tCrcTable<std::uint16_t> CRC16_TABLE = MakeTable16();
constexpr tCrcTable<std::uint32_t> CRC32_TABLE = MakeTable32();

static_assert(CRC16_TABLE[1] == 0x1021 && CRC16_TABLE[3] == 0x3063, "not the table of CRC-16/XMODEM");
static_assert(CRC32_TABLE[1] == 0x77073096 && CRC32_TABLE[3] == 0x990951BA, "not the table of CRC-32");
} // namespace

unsigned short CRC16Generate(const void* pData, unsigned long long ullSize, unsigned short usCrc)
{
    const std::uint16_t* const pTable = CRC16_TABLE.data();
    const tByte* pByte = static_cast<const tByte*>(pData);
    for (; ullSize > 0; --ullSize, ++pByte)
        usCrc = static_cast<unsigned short>((usCrc << 8) ^ pTable[(usCrc >> 8) ^ *pByte]);
    return usCrc;
}

unsigned int CRC32Generate(const void* pData, unsigned long long ullSize, unsigned int uCrc)
{
    const std::uint32_t* const pTable = CRC32_TABLE.data();
    const tByte* pByte = static_cast<const tByte*>(pData);
    for (; ullSize > 0; --ullSize, ++pByte)
        uCrc = (uCrc >> 8) ^ pTable[(uCrc ^ *pByte) & 0xFF];
    return uCrc;
}
