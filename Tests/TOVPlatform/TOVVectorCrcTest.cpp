// The forms of folding that this processor has, beside the tables and single bytes.
#include <TOVPlatform/Vector/TOVVectorCrc.h>
#include <TOVString/TOVCrc.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace Vector = TOVPlatform::Vector;

namespace
{
// Shorter data always goes through the tables.
constexpr std::size_t LARGEST_PIECE = 63;

// Each checksum under the same names.
struct sCrc16
{
    typedef std::uint16_t tValue;
    static tValue Continue(const void* pData, std::size_t ulSize, tValue nCrc)
    {
        return CRC16Generate(pData, ulSize, nCrc);
    }
    static constexpr auto FOLD = &Vector::FoldCrc16;
};

struct sCrc32
{
    typedef std::uint32_t tValue;
    static tValue Continue(const void* pData, std::size_t ulSize, tValue nCrc)
    {
        return CRC32Generate(pData, ulSize, nCrc);
    }
    static constexpr auto FOLD = &Vector::FoldCrc32;
};

template<class TCrc> class TOVVectorCrcTest : public testing::Test
{
protected:
    typedef typename TCrc::tValue tValue;

    std::vector<tByte> RandomBytes(std::size_t ulSize)
    {
        std::vector<tByte> aBytes(ulSize); // of exactly this size, so that a read beyond it is found
        for (tByte& ucByte : aBytes)
            ucByte = static_cast<tByte>(m_oRandom());
        return aBytes;
    }

    tValue RandomStart() { return static_cast<tValue>(m_oRandom()); }

    static tValue InPieces(const tByte* pData, std::size_t ulSize, std::size_t ulPiece, tValue nCrc)
    {
        for (; ulSize > 0; pData += ulPiece, ulSize -= ulPiece)
        {
            ulPiece = std::min(ulPiece, ulSize);
            nCrc = TCrc::Continue(pData, ulPiece, nCrc);
        }
        return nCrc;
    }

    // Expects that a form gives what the tables and single bytes give.
    static void ExpectSame(Vector::eFolding eForm, const tByte* pData, std::size_t ulSize, tValue nStart)
    {
        tValue nFolded = nStart;
        const std::size_t ulFolded = TCrc::FOLD(eForm, pData, ulSize, nFolded);
        ASSERT_LE(ulFolded, ulSize);
        EXPECT_EQ(InPieces(pData, ulFolded, LARGEST_PIECE, nStart), nFolded) << eForm << ", " << ulSize << " bytes";
        EXPECT_EQ(InPieces(pData, ulFolded, 1, nStart), nFolded) << eForm << ", " << ulSize << " bytes";
    }

    static std::vector<Vector::eFolding> Forms()
    {
        std::vector<Vector::eFolding> aForms;
        for (const Vector::eFolding eForm : {Vector::eFoldingNarrow, Vector::eFoldingWide})
        {
            if (eForm <= Vector::GetBestFolding())
                aForms.push_back(eForm);
        }
        return aForms;
    }

private:
    std::mt19937 m_oRandom{20261122};
};

typedef testing::Types<sCrc16, sCrc32> tChecksums;
} // namespace

TYPED_TEST_SUITE(TOVVectorCrcTest, tChecksums, );

TYPED_TEST(TOVVectorCrcTest, GivesForEachSizeWhatTheTablesGive)
{
    for (const Vector::eFolding eForm : this->Forms())
    {
        for (std::size_t ulSize = 0; ulSize <= 1100; ++ulSize)
        {
            const std::vector<tByte> aBytes = this->RandomBytes(ulSize);
            this->ExpectSame(eForm, aBytes.data(), ulSize, this->RandomStart());
        }
    }
}

TYPED_TEST(TOVVectorCrcTest, GivesAtEachAddressWhatTheTablesGive)
{
    constexpr std::size_t ADDRESSES = 64;
    for (const Vector::eFolding eForm : this->Forms())
    {
        for (const std::size_t ulSize : {64u, 80u, 511u, 512u, 513u, 3000u})
        {
            const std::vector<tByte> aBytes = this->RandomBytes(ulSize + ADDRESSES);
            for (std::size_t ulOffset = 0; ulOffset < ADDRESSES; ++ulOffset)
                this->ExpectSame(eForm, aBytes.data() + ulOffset, ulSize, this->RandomStart());
        }
    }
}

TYPED_TEST(TOVVectorCrcTest, FoldsAllButLessThan16Bytes)
{
    for (const Vector::eFolding eForm : this->Forms())
    {
        for (std::size_t ulSize = 64; ulSize <= 700; ++ulSize)
        {
            const std::vector<tByte> aBytes = this->RandomBytes(ulSize);
            typename TypeParam::tValue nCrc = 1;
            EXPECT_EQ(ulSize / 16 * 16, TypeParam::FOLD(eForm, aBytes.data(), ulSize, nCrc));
        }
    }
}

TYPED_TEST(TOVVectorCrcTest, FoldsNothingWithoutAForm)
{
    const std::vector<tByte> aBytes = this->RandomBytes(4096);
    typename TypeParam::tValue nCrc = 0xABC;

    EXPECT_EQ(0u, TypeParam::FOLD(Vector::eFoldingNone, aBytes.data(), aBytes.size(), nCrc));
    EXPECT_EQ(0xABCu, nCrc);
}

#if TOV_HAS_X86_VECTORS
TEST(TOVVectorCrcFormTest, IsTheBestThatTheCompilersOwnTestFinds)
{
    const bool bNarrow = __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
    const bool bWide = bNarrow && __builtin_cpu_supports("vpclmulqdq") && __builtin_cpu_supports("avx512bw");

    EXPECT_EQ(bWide     ? Vector::eFoldingWide
              : bNarrow ? Vector::eFoldingNarrow
                        : Vector::eFoldingNone,
              Vector::GetBestFolding());
}
#endif
