// Bit arrays of all small sizes and a large one beside plain rows of bits, on the same random operations.
#include "TOVContainers/TOVBitArrayInstruments.h"

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace
{
typedef std::vector<bool> tModel;

// Around a word, one block and two of the inversion, a block of the search for set bits, and beyond.
std::vector<int> Sizes()
{
    std::vector<int> aSizes = {4095, 4096, 4103, 8191, 8200, 100003};
    for (int nNumBits = 1; nNumBits <= 1200; ++nNumBits)
        aSizes.push_back(nNumBits);
    return aSizes;
}

// Makes an array and its model, which has the spare bits too, with the same random bits.
class CModelled
{
public:
    CModelled(int nNumBits, std::mt19937& oRandom)
        : m_oBits(nNumBits), m_aModel(static_cast<std::size_t>(m_oBits.GetSize()) * 8)
    {
        for (int nPos = 0; nPos < nNumBits; ++nPos)
            Set(nPos, oRandom() % 2 != 0);
    }

    void Set(int nPos, bool bValue)
    {
        m_oBits.SetBit(nPos, bValue);
        m_aModel[static_cast<std::size_t>(nPos)] = bValue;
    }

    void Complement()
    {
        m_oBits.Complement();
        m_aModel.flip();
    }

    template<class TJoin> void Join(const CModelled& oOther, TJoin fnJoin)
    {
        std::transform(m_aModel.begin(), m_aModel.end(), oOther.m_aModel.begin(), m_aModel.begin(), fnJoin);
    }

    void ExpectEqual() const
    {
        std::string sExpected(m_aModel.size() / 8, '\0');
        for (std::size_t nPos = 0; nPos < m_aModel.size(); ++nPos)
        {
            if (m_aModel[nPos])
                sExpected[nPos / 8] = static_cast<char>(sExpected[nPos / 8] | 1 << (7 - nPos % 8));
        }
        ASSERT_EQ(sExpected, BytesOf(m_oBits)) << m_oBits.GetNumBits();
        for (int nPos = 0; nPos < m_oBits.GetNumBits(); ++nPos)
            ASSERT_EQ(m_aModel[static_cast<std::size_t>(nPos)], m_oBits.GetBit(nPos)) << nPos;
        ASSERT_EQ(std::count(m_aModel.begin(), m_aModel.end(), true) > 0, m_oBits.IsAnyBitSet());
    }

    CTOVBitArray m_oBits;
    tModel m_aModel;
};
} // namespace

TEST(CTOVBitArrayModelTest, SetsBitsAsTheModelDoes)
{
    std::mt19937 oRandom(1);
    for (const int nNumBits : Sizes())
    {
        CModelled oModelled(nNumBits, oRandom);
        for (int nTime = 0; nTime < 20; ++nTime)
            oModelled.Set(static_cast<int>(oRandom() % static_cast<unsigned>(nNumBits)), oRandom() % 2 != 0);
        oModelled.ExpectEqual();
    }
}

TEST(CTOVBitArrayModelTest, InvertsBitsAsTheModelDoes)
{
    std::mt19937 oRandom(2);
    for (const int nNumBits : Sizes())
    {
        CModelled oModelled(nNumBits, oRandom);
        oModelled.Complement();
        oModelled.ExpectEqual();
    }
}

TEST(CTOVBitArrayModelTest, JoinsBitsAsTheModelDoes)
{
    std::mt19937 oRandom(3);
    for (const int nNumBits : Sizes())
    {
        CModelled oFirst(nNumBits, oRandom);
        const CModelled oSecond(nNumBits, oRandom);
        const CModelled oThird(nNumBits, oRandom);
        oFirst.m_oBits.And(oSecond.m_oBits);
        oFirst.Join(oSecond, std::logical_and<bool>());
        oFirst.ExpectEqual();
        oFirst.m_oBits.Or(oThird.m_oBits);
        oFirst.Join(oThird, std::logical_or<bool>());
        oFirst.ExpectEqual();
    }
}

TEST(CTOVBitArrayModelTest, JoinsAnArrayWithItself)
{
    std::mt19937 oRandom(4);
    for (const int nNumBits : Sizes())
    {
        CModelled oModelled(nNumBits, oRandom);
        oModelled.m_oBits.And(oModelled.m_oBits);
        oModelled.m_oBits.Or(oModelled.m_oBits);
        oModelled.ExpectEqual();
    }
}

TEST(CTOVBitArrayModelTest, FindsASingleBitWhereverItIs)
{
    for (const int nNumBits : {1, 7, 8, 9, 64, 511, 512, 4095, 4096, 8192, 8300})
    {
        CTOVBitArray oBits(nNumBits);
        EXPECT_FALSE(oBits.IsAnyBitSet()) << nNumBits;
        for (int nPos = 0; nPos < nNumBits; ++nPos)
        {
            oBits.SetBit(nPos);
            ASSERT_TRUE(oBits.IsAnyBitSet()) << nPos << " of " << nNumBits;
            oBits.SetBit(nPos, false);
        }
        EXPECT_FALSE(oBits.IsAnyBitSet()) << nNumBits;
    }
}

TEST(CTOVBitArrayModelTest, AnArrayWithoutBytesJoinsAndInvertsNothing)
{
    CTOVBitArray oBits;

    oBits.And(CTOVBitArray());
    oBits.Or(CTOVBitArray());
    oBits.Complement();

    EXPECT_FALSE(oBits.IsAnyBitSet());
    EXPECT_EQ(0, oBits.GetSize());
}
