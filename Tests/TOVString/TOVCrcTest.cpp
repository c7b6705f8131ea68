// The checksums.
#include <TOVString/TOVCrc.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace
{
constexpr char DIGITS[] = "123456789";
const unsigned short START_VALUES[] = {0x0000, 0x0001, 0x00FF, 0x8000, 0xABCD, 0xFFFF};

static_assert(
    std::is_same_v<decltype(&CRC16Generate), unsigned short (*)(const void*, unsigned long long, unsigned short)>);
static_assert(
    std::is_same_v<decltype(&CRC32Generate), unsigned int (*)(const void*, unsigned long long, unsigned int)>);

unsigned int Crc16Of(const std::string& sData, unsigned short usStart)
{
    return CRC16Generate(sData.data(), sData.size(), usStart);
}

unsigned int Crc32Of(const std::string& sData, unsigned int uStart)
{
    return CRC32Generate(sData.data(), sData.size(), uStart);
}

// Entries of the tables by their rule, bit by bit.
unsigned int Crc16Entry(unsigned int uIndex)
{
    unsigned int uValue = uIndex << 8;
    for (int nBit = 0; nBit < 8; ++nBit)
        uValue = (uValue << 1) ^ ((uValue & 0x8000) != 0 ? 0x1021 : 0);
    return uValue & 0xFFFF;
}

unsigned int Crc32Entry(unsigned int uIndex)
{
    unsigned int uValue = uIndex;
    for (int nBit = 0; nBit < 8; ++nBit)
        uValue = (uValue >> 1) ^ ((uValue & 1) != 0 ? 0xEDB88320 : 0);
    return uValue;
}

// Blocks of random bytes, the same in each run.
class CRandomBlocks
{
public:
    CRandomBlocks()
    {
        for (char& cByte : m_aBytes)
            cByte = static_cast<char>(m_oRandom());
    }

    std::string Next(unsigned int uMaxSize)
    {
        const std::size_t nBegin = m_oRandom() % 64;
        return std::string(m_aBytes.data() + nBegin, m_oRandom() % (uMaxSize + 1));
    }

    unsigned int NextValue() { return static_cast<unsigned int>(m_oRandom()); }

private:
    std::mt19937 m_oRandom{20261122};
    std::vector<char> m_aBytes = std::vector<char>(8192);
};

std::string AllBytes()
{
    std::string sBytes;
    for (int nByte = 0; nByte < 256; ++nByte)
        sBytes += static_cast<char>(nByte);
    return sBytes;
}
} // namespace

TEST(CRC16GenerateTest, GivesTheKnownSums)
{
    EXPECT_EQ(0x31C3u, Crc16Of(DIGITS, 0));
    EXPECT_EQ(0x29B1u, Crc16Of(DIGITS, 0xFFFF));
    EXPECT_EQ(0x58E5u, Crc16Of("A", 0));
    EXPECT_EQ(0xB915u, Crc16Of("A", 0xFFFF));
}

TEST(CRC16GenerateTest, StepsByATableOf256Entries)
{
    for (unsigned int uByte = 0; uByte < 256; ++uByte)
        EXPECT_EQ(Crc16Entry(uByte), Crc16Of(std::string(1, static_cast<char>(uByte)), 0)) << uByte;

    EXPECT_EQ(0x1021u, Crc16Of("\x01", 0));
    EXPECT_EQ(0x2042u, Crc16Of("\x02", 0));
    EXPECT_EQ(0x3063u, Crc16Of("\x03", 0));
}

TEST(CRC16GenerateTest, TheRunningValueTakesPart)
{
    for (const unsigned short usStart : START_VALUES)
        for (unsigned int uByte = 0; uByte < 256; ++uByte)
            EXPECT_EQ(((usStart << 8) & 0xFFFF) ^ Crc16Entry((usStart >> 8) ^ uByte),
                      Crc16Of(std::string(1, static_cast<char>(uByte)), usStart));
}

TEST(CRC16GenerateTest, NoBytesGiveTheRunningValueAndAreNotRead)
{
    for (const unsigned short usStart : START_VALUES)
    {
        EXPECT_EQ(usStart, CRC16Generate(nullptr, 0, usStart));
        EXPECT_EQ(usStart, CRC16Generate(DIGITS, 0, usStart));
    }
}

TEST(CRC16GenerateTest, PiecesGiveTheSumOfTheWhole)
{
    const std::string sAll = AllBytes();
    for (std::size_t nSplit = 0; nSplit <= sAll.size(); ++nSplit)
    {
        const unsigned int uFirst = Crc16Of(sAll.substr(0, nSplit), 0xFFFF);
        EXPECT_EQ(Crc16Of(sAll, 0xFFFF), Crc16Of(sAll.substr(nSplit), static_cast<unsigned short>(uFirst)));
    }
}

// Byte by byte, each call has one byte: no other path can be taken.
TEST(CRC16GenerateTest, GivesForAnyBlockWhatItsSingleBytesGive)
{
    CRandomBlocks oBlocks;
    for (int nBlock = 0; nBlock < 2000; ++nBlock)
    {
        const std::string sBlock = oBlocks.Next(nBlock < 1900 ? 100 : 5000);
        const unsigned short nStart = static_cast<unsigned short>(oBlocks.NextValue());
        unsigned short nExpected = nStart;
        for (const char cByte : sBlock)
            nExpected = CRC16Generate(&cByte, 1, nExpected);

        ASSERT_EQ(nExpected, CRC16Generate(sBlock.data(), sBlock.size(), nStart)) << sBlock.size() << " bytes";
    }
}

TEST(CRC16GenerateTest, ReadsNoByteButThoseOfTheBlock)
{
    for (std::size_t nSize = 0; nSize < 70; ++nSize)
    {
        const std::vector<char> aExact(nSize, 'x');
        const std::string sLonger(nSize + 16, 'x');
        for (std::size_t nOffset = 0; nOffset < 16; ++nOffset)
            EXPECT_EQ(CRC16Generate(aExact.data(), nSize, 1), CRC16Generate(sLonger.data() + nOffset, nSize, 1));
    }
}

TEST(CRC32GenerateTest, GivesTheKnownSums)
{
    EXPECT_EQ(0xCBF43926u, ~Crc32Of(DIGITS, 0xFFFFFFFF));
    EXPECT_EQ(0xD3D99E8Bu, ~Crc32Of("A", 0xFFFFFFFF));
    EXPECT_EQ(0x414FA339u, ~Crc32Of("The quick brown fox jumps over the lazy dog", 0xFFFFFFFF));
    EXPECT_EQ(0x29058C73u, ~Crc32Of(AllBytes(), 0xFFFFFFFF));
}

TEST(CRC32GenerateTest, StepsByATableOf256Entries)
{
    for (unsigned int uByte = 0; uByte < 256; ++uByte)
        EXPECT_EQ(Crc32Entry(uByte), Crc32Of(std::string(1, static_cast<char>(uByte)), 0)) << uByte;

    EXPECT_EQ(0x77073096u, Crc32Of("\x01", 0));
    EXPECT_EQ(0xEE0E612Cu, Crc32Of("\x02", 0));
    EXPECT_EQ(0x990951BAu, Crc32Of("\x03", 0));
}

TEST(CRC32GenerateTest, TheRunningValueTakesPart)
{
    for (const unsigned int uStart : {0x00000000u, 0x00000001u, 0x80000000u, 0x89ABCDEFu, 0xFFFFFFFFu})
        for (unsigned int uByte = 0; uByte < 256; ++uByte)
            EXPECT_EQ((uStart >> 8) ^ Crc32Entry((uStart ^ uByte) & 0xFF),
                      Crc32Of(std::string(1, static_cast<char>(uByte)), uStart));
}

TEST(CRC32GenerateTest, NoBytesGiveTheRunningValueAndAreNotRead)
{
    for (const unsigned int uStart : {0u, 0x12345678u, 0xFFFFFFFFu})
    {
        EXPECT_EQ(uStart, CRC32Generate(nullptr, 0, uStart));
        EXPECT_EQ(uStart, CRC32Generate(DIGITS, 0, uStart));
    }
}

TEST(CRC32GenerateTest, PiecesGiveTheSumOfTheWhole)
{
    const std::string sAll = AllBytes();
    for (std::size_t nSplit = 0; nSplit <= sAll.size(); ++nSplit)
        EXPECT_EQ(Crc32Of(sAll, 0xFFFFFFFF), Crc32Of(sAll.substr(nSplit), Crc32Of(sAll.substr(0, nSplit), 0xFFFFFFFF)));
}

TEST(CRC32GenerateTest, SumsBeyond65535BytesCount)
{
    const std::string sZeros(65536 + 5, '\0');

    EXPECT_EQ(Crc32Of(sZeros.substr(5), Crc32Of(sZeros.substr(0, 5), 1)), Crc32Of(sZeros, 1));
    EXPECT_NE(Crc32Of(sZeros.substr(0, 5), 1), Crc32Of(sZeros, 1));
}

// Byte by byte, each call has one byte: no other path can be taken.
TEST(CRC32GenerateTest, GivesForAnyBlockWhatItsSingleBytesGive)
{
    CRandomBlocks oBlocks;
    for (int nBlock = 0; nBlock < 2000; ++nBlock)
    {
        const std::string sBlock = oBlocks.Next(nBlock < 1900 ? 100 : 5000);
        const unsigned int nStart = static_cast<unsigned int>(oBlocks.NextValue());
        unsigned int nExpected = nStart;
        for (const char cByte : sBlock)
            nExpected = CRC32Generate(&cByte, 1, nExpected);

        ASSERT_EQ(nExpected, CRC32Generate(sBlock.data(), sBlock.size(), nStart)) << sBlock.size() << " bytes";
    }
}

TEST(CRC32GenerateTest, ReadsNoByteButThoseOfTheBlock)
{
    for (std::size_t nSize = 0; nSize < 70; ++nSize)
    {
        const std::vector<char> aExact(nSize, 'x');
        const std::string sLonger(nSize + 16, 'x');
        for (std::size_t nOffset = 0; nOffset < 16; ++nOffset)
            EXPECT_EQ(CRC32Generate(aExact.data(), nSize, 1), CRC32Generate(sLonger.data() + nOffset, nSize, 1));
    }
}
