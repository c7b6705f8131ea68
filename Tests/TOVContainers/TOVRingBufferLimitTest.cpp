// Ring buffers whose derived classes limit what SetCapacity makes, or tell another capacity than they have.
#include "TOVContainers/TOVRingBufferInstruments.h"

#include <algorithm>
#include <stdexcept>

namespace
{
// Has never more than some places.
class CLimitedBuffer : public tBuffer
{
public:
    explicit CLimitedBuffer(long lMost) : m_lMost(lMost) {}
    using tBuffer::operator=;

    void SetCapacity(long lNumElements, bool bKeepData = false) override
    {
        tBuffer::SetCapacity(std::min(lNumElements, m_lMost), bKeepData);
    }

private:
    const long m_lMost;
};

// Tells another capacity than it has.
class CMisleadingBuffer : public tBuffer
{
public:
    CMisleadingBuffer(long lPlaces, long lTold) : tBuffer(lPlaces), m_lTold(lTold) {}

    long GetCapacity() const override { return m_lTold; }

private:
    const long m_lTold;
};

// Looks neither full nor empty.
class CWillingBuffer : public tBuffer
{
public:
    using tBuffer::tBuffer;

    bool IsFull() const override { return false; }
    bool IsEmpty() const override { return false; }
};

// Keeps what it has at every change of the capacity.
class CFixedBuffer : public tBuffer
{
public:
    using tBuffer::operator=;
    using tBuffer::tBuffer;

    void SetCapacity(long, bool) override {}
};

// 1 to 4 in four places, the oldest in the place lFirst.
template<class TBuffer> void FillFrom(TBuffer& oBuffer, long lFirst)
{
    int nValue = 0;
    for (long lPlace = 0; lPlace < lFirst; ++lPlace)
    {
        oBuffer.tBuffer::Write(0);
        oBuffer.tBuffer::Read(nValue);
    }
    for (const int nElement : {1, 2, 3, 4})
        oBuffer.tBuffer::Write(nElement);
}

void ExpectInside(tBuffer& oBuffer)
{
    EXPECT_LE(0, CountOf(oBuffer));
    EXPECT_LE(CountOf(oBuffer), CapacityOf(oBuffer));
    for (const long lPosition : {ReadPosOf(oBuffer), WritePosOf(oBuffer)})
    {
        EXPECT_LE(0, lPosition);
        EXPECT_LT(lPosition, std::max(CapacityOf(oBuffer), 1l));
    }
}
} // namespace

TEST(CTOVRingBufferLimitTest, ATargetThatLimitsItsCapacityTakesTheOldestElementsThatFit)
{
    for (const long lFirst : {0, 1, 2, 3})
    {
        tBuffer oSource(4);
        FillFrom(oSource, lFirst);
        CLimitedBuffer oTarget(3);

        oTarget = oSource;

        ExpectInside(oTarget);
        EXPECT_EQ((sRingState{3, 3, !EMPTY, FULL}), StateOf(oTarget)) << lFirst;
        EXPECT_EQ((tValues{1, 2, 3}), ReadAll(oTarget)) << lFirst;
        EXPECT_EQ((tValues{1, 2, 3, 4}), ReadAll(oSource)) << lFirst;
    }
}

TEST(CTOVRingBufferLimitTest, ATargetThatAllowsNoPlaceStaysEmpty)
{
    tBuffer oSource(4);
    FillFrom(oSource, 2);
    CLimitedBuffer oTarget(0);

    oTarget = oSource;

    ExpectInside(oTarget);
    EXPECT_EQ((sRingState{0, 0, EMPTY, FULL}), StateOf(oTarget));
}

TEST(CTOVRingBufferLimitTest, ATargetThatKeepsItsPlacesTakesTheElementsInOrder)
{
    tBuffer oSource(4);
    FillFrom(oSource, 3);
    CFixedBuffer oTarget(6);
    FillFrom(oTarget, 5);

    oTarget = oSource;
    oTarget.Write(5);

    ExpectInside(oTarget);
    EXPECT_EQ((tValues{1, 2, 3, 4, 5}), ReadAll(oTarget));
}

TEST(CTOVRingBufferLimitTest, ASourceThatTellsLessGivesItsOldestElements)
{
    CMisleadingBuffer oSource(4, 2);
    FillFrom(oSource, 0);
    EXPECT_EQ(2, oSource.GetCapacity());
    tBuffer oTarget;

    oTarget = oSource;
    tBuffer oCopy(oSource);

    ExpectInside(oTarget);
    EXPECT_EQ((tValues{1, 2}), ReadAll(oTarget));
    EXPECT_EQ((tValues{1, 2}), ReadAll(oCopy));
}

TEST(CTOVRingBufferLimitTest, ASourceThatTellsMoreGivesAllOfThemInOrder)
{
    CMisleadingBuffer oSource(4, 9);
    FillFrom(oSource, 3);
    tBuffer oTarget;

    oTarget = oSource;
    oTarget.Write(5);

    ExpectInside(oTarget);
    EXPECT_EQ((tValues{1, 2, 3, 4, 5}), ReadAll(oTarget));
}

TEST(CTOVRingBufferLimitTest, WritesAndReadsStayInsideThePlacesWhateverIsTold)
{
    for (const long lPlaces : {0l, 2l})
    {
        CMisleadingBuffer oMisleading(lPlaces, 9);
        CWillingBuffer oWilling(lPlaces);
        for (tBuffer* const pBuffer : {static_cast<tBuffer*>(&oMisleading), static_cast<tBuffer*>(&oWilling)})
        {
            int nValue = 7;
            for (int nElement = 0; nElement < 4; ++nElement)
                EXPECT_EQ(nElement < lPlaces, pBuffer->Write(nElement));
            ExpectInside(*pBuffer);
            for (int nElement = 0; nElement < 4; ++nElement)
                EXPECT_EQ(nElement < lPlaces, pBuffer->Read(nValue));
            ExpectInside(*pBuffer);
            EXPECT_EQ(lPlaces == 0 ? 7 : 1, nValue);
        }
    }
}
