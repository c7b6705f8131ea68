// Ring buffers of many capacities beside a plain queue, on the same random operations.
#include "TOVContainers/TOVRingBufferInstruments.h"

#include <cstddef>
#include <deque>
#include <random>

namespace
{
// Keeps all that the class has, and can be overridden further.
class CDerivedBuffer : public tBuffer
{
public:
    using tBuffer::tBuffer;
};

// A buffer and its model.
template<class TBuffer> class CModelled
{
public:
    explicit CModelled(long lCapacity) : m_oBuffer(lCapacity), m_nCapacity(static_cast<std::size_t>(lCapacity)) {}

    void Write(int nValue)
    {
        ASSERT_EQ(m_aModel.size() < m_nCapacity, m_oBuffer.Write(nValue));
        if (m_aModel.size() < m_nCapacity)
            m_aModel.push_back(nValue);
    }

    void Read()
    {
        int nValue = -1;
        ASSERT_EQ(!m_aModel.empty(), m_oBuffer.Read(nValue));
        ASSERT_EQ(m_aModel.empty() ? -1 : m_aModel.front(), nValue);
        if (!m_aModel.empty())
            m_aModel.pop_front();
    }

    void ExpectEqual()
    {
        const long lCapacity = static_cast<long>(m_nCapacity);
        const long lCount = static_cast<long>(m_aModel.size());
        ASSERT_EQ((sRingState{lCount, lCapacity, lCount == 0, lCount == lCapacity}), StateOf(m_oBuffer));
        ASSERT_LE(0, ReadPosOf(m_oBuffer));
        ASSERT_LT(ReadPosOf(m_oBuffer), lCapacity);
        ASSERT_EQ((ReadPosOf(m_oBuffer) + lCount) % lCapacity, WritePosOf(m_oBuffer));
    }

private:
    TBuffer m_oBuffer;
    const std::size_t m_nCapacity;
    std::deque<int> m_aModel;
};

// Writes and reads at random, now and then mostly the one or the other, so that the buffer becomes full and empty.
template<class TBuffer> void ExpectWorksAsTheModel(long lCapacity, unsigned int nSeed)
{
    std::mt19937 oRandom(nSeed);
    CModelled<TBuffer> oModelled(lCapacity);
    for (int nTime = 0; nTime < 3000; ++nTime)
    {
        const bool bMostlyWrites = nTime / 100 % 2 == 0;
        if (oRandom() % 4 == 0 ? !bMostlyWrites : bMostlyWrites)
            oModelled.Write(nTime);
        else
            oModelled.Read();
        oModelled.ExpectEqual();
    }
}
} // namespace

TEST(CTOVRingBufferModelTest, WorksAsAQueueThatCannotGrow)
{
    for (const long lCapacity : {1l, 2l, 3l, 4l, 5l, 7l, 8l, 9l, 16l, 31l, 64l, 100l})
        ExpectWorksAsTheModel<tBuffer>(lCapacity, static_cast<unsigned int>(lCapacity));
}

TEST(CTOVRingBufferModelTest, ADerivedBufferDoesTheSame)
{
    for (const long lCapacity : {1l, 2l, 3l, 16l, 31l})
        ExpectWorksAsTheModel<CDerivedBuffer>(lCapacity, static_cast<unsigned int>(lCapacity));
}

TEST(CTOVRingBufferModelTest, KeepsTheOrderOverManyRounds)
{
    tBuffer oBuffer(3);
    oBuffer.Write(0);
    for (int nValue = 1; nValue < 1000000; ++nValue)
    {
        int nRead = -1;
        ASSERT_TRUE(oBuffer.Write(nValue));
        ASSERT_TRUE(oBuffer.Read(nRead));
        ASSERT_EQ(nValue - 1, nRead);
    }
}
