// Arrays and buffers against vectors, and the smaller containers against those of the standard library.
#include "Fuzz.h"

#include <TOVContainers/TOVArray.h>
#include <TOVContainers/TOVBitArray.h>
#include <TOVContainers/TOVBuffer.h>
#include <TOVContainers/TOVQueue.h>
#include <TOVContainers/TOVRingBuffer.h>
#include <TOVContainers/TOVSafeQueue.h>
#include <TOVContainers/TOVStack.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <stdexcept>

namespace
{
constexpr std::size_t MAX_ELEMENTS = 200;

// An element with memory of its own, so that the sanitizer sees one that is used after its end or never freed.
class CElement
{
public:
    explicit CElement(int nValue = 0) : m_pValue(new int(nValue)) {}
    CElement(const CElement& oOther) : m_pValue(new int(*oOther.m_pValue)) {}
    CElement& operator=(const CElement& oOther)
    {
        *m_pValue = *oOther.m_pValue;
        return *this;
    }
    bool operator==(const CElement& oOther) const { return *m_pValue == *oOther.m_pValue; }
    int Get() const { return *m_pValue; }

private:
    std::unique_ptr<int> m_pValue;
};

int Compare(const CElement& oFirst, const CElement& oSecond)
{
    return oFirst.Get() - oSecond.Get();
}

// Returns whether the function throws an exception of this class.
template<class TException, class TFunction> bool Throws(TFunction fnFunction)
{
    try
    {
        fnFunction();
        return false;
    }
    catch (const TException&)
    {
        return true;
    }
}

typedef std::vector<CElement> tElements;

void ExpectSame(const tElements& aExpected, const CTOVArray<CElement>& aActual)
{
    FUZZ_EXPECT_EQ(static_cast<long>(aExpected.size()), aActual.GetSize());
    FUZZ_EXPECT_EQ(aExpected.empty(), aActual.IsEmpty());
    for (std::size_t n = 0; n < aExpected.size(); ++n)
        FUZZ_EXPECT(aExpected[n] == aActual[static_cast<long>(n)]);
}

void Append(Fuzz::CInput& oInput, CTOVArray<CElement>& aArray, tElements& aModel, const CTOVArray<CElement>& aOther,
            const tElements& aOtherModel)
{
    const long lStart = oInput.Number();
    const long lCount = oInput.Number();
    const long lSize = static_cast<long>(aOtherModel.size());
    const bool bBad = lStart < 0 || lStart > lSize || lCount < -1 || (lCount >= 0 && lCount > lSize - lStart);
    FUZZ_EXPECT_EQ(bBad, Throws<std::out_of_range>([&] { aArray.Append(aOther, lStart, lCount); }));
    if (bBad)
        return;
    const long lEnd = lCount == -1 ? lSize : lStart + lCount;
    const tElements aAdded(aOtherModel.begin() + lStart, aOtherModel.begin() + lEnd);
    aModel.insert(aModel.end(), aAdded.begin(), aAdded.end());
}

void ChangeArray(Fuzz::CInput& oInput, CTOVArray<CElement>& aArray, tElements& aModel,
                 const CTOVArray<CElement>& aOther, const tElements& aOtherModel)
{
    const long lSize = static_cast<long>(aModel.size());
    const int nOperation = oInput.Below(14);
    const long lIndex = oInput.Number();
    const bool bIndex = 0 <= lIndex && lIndex < lSize;
    // Half of the elements are those of the array itself.
    const bool bOwn = lSize > 0 && oInput.Below(2) == 0;
    const CElement oNew(oInput.Byte());
    const CElement oExpected = bOwn ? aModel[static_cast<std::size_t>(oNew.Get()) % aModel.size()] : oNew;
    const CElement& oElement = bOwn ? aArray[oNew.Get() % lSize] : oNew;
    switch (nOperation)
    {
    case 0:
    case 1:
    case 2:
        FUZZ_EXPECT_EQ(lSize, aArray.Add(oElement));
        aModel.push_back(oExpected);
        break;
    case 3:
    case 4:
        FUZZ_EXPECT_EQ(lIndex < 0 || lIndex > lSize,
                       Throws<std::out_of_range>([&] { aArray.InsertAt(lIndex, oElement); }));
        if (0 <= lIndex && lIndex <= lSize)
            aModel.insert(aModel.begin() + lIndex, oExpected);
        break;
    case 5:
        FUZZ_EXPECT_EQ(!bIndex, Fuzz::FailsCheck([&] { aArray.SetAt(lIndex, oElement); }));
        if (bIndex)
            aModel[static_cast<std::size_t>(lIndex)] = oExpected;
        break;
    case 6:
        FUZZ_EXPECT_EQ(!bIndex, Fuzz::FailsCheck([&] { aArray.RemoveAt(lIndex); }));
        if (bIndex)
            aModel.erase(aModel.begin() + lIndex);
        break;
    case 7:
    {
        const bool bTooLong = lIndex < 0;
        if (lIndex > 1000)
            break;
        FUZZ_EXPECT_EQ(bTooLong, Throws<std::length_error>([&] { aArray.Resize(lIndex); }));
        if (!bTooLong)
            aModel.resize(static_cast<std::size_t>(lIndex));
        break;
    }
    case 8:
        Append(oInput, aArray, aModel, aOther, aOtherModel);
        break;
    case 9:
    {
        const long lOther = oInput.Number();
        const bool bBoth = bIndex && 0 <= lOther && lOther < lSize;
        FUZZ_EXPECT_EQ(!bBoth, Fuzz::FailsCheck([&] { aArray.Swap(lIndex, lOther); }));
        if (bBoth)
            std::swap(aModel[static_cast<std::size_t>(lIndex)], aModel[static_cast<std::size_t>(lOther)]);
        break;
    }
    case 10:
        aArray.Sort(&Compare);
        std::sort(aModel.begin(), aModel.end(),
                  [](const CElement& oFirst, const CElement& oSecond) { return oFirst.Get() < oSecond.Get(); });
        break;
    case 11:
        aArray = aOther;
        aModel = tElements(aOtherModel);
        break;
    case 12:
    {
        // Settled: the array is resized, and the elements come after that.
        const std::size_t nCount = static_cast<std::size_t>(oInput.Below(8));
        const tElements aAdded(nCount + 1, oNew);
        aArray.Append(aAdded.data(), static_cast<long>(nCount));
        aModel.resize(nCount);
        aModel.insert(aModel.end(), nCount, oNew);
        break;
    }
    default:
        aArray.RemoveAll();
        aModel.clear();
    }
    if (aModel.size() > MAX_ELEMENTS)
    {
        aArray.Resize(3);
        aModel.resize(3);
    }
}

typedef std::vector<int> tNumbers;

// What several buffers share, and the size of each.
struct sBufferModel
{
    std::shared_ptr<tNumbers> pBlock = std::make_shared<tNumbers>();

    void MakeNew(const tNumbers& aNumbers) { pBlock = std::make_shared<tNumbers>(aNumbers); }
};

void ExpectSame(const sBufferModel& oModel, const CTOVBuffer<int>& oBuffer)
{
    FUZZ_EXPECT_EQ(static_cast<long>(oModel.pBlock->size()), oBuffer.GetSize());
    for (std::size_t n = 0; n < oModel.pBlock->size(); ++n)
        FUZZ_EXPECT_EQ((*oModel.pBlock)[n], oBuffer.GetBuffer()[n]);
}

void ChangeBuffer(Fuzz::CInput& oInput, CTOVBuffer<int>& oBuffer, sBufferModel& oModel, CTOVBuffer<int>& oOther,
                  sBufferModel& oOtherModel)
{
    const long lSize = static_cast<long>(oModel.pBlock->size());
    const int nOperation = oInput.Below(9);
    const long lNumber = oInput.Number();
    const tNumbers aNew(static_cast<std::size_t>(oInput.Below(20)), oInput.Byte());
    const long lNew = static_cast<long>(aNew.size());
    switch (nOperation)
    {
    case 0:
    {
        const bool bFails = !oBuffer.IsValid() || lNumber < 0 || lNew > lSize - lNumber;
        FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { oBuffer.SetElements(lNumber, aNew.data(), lNew); }));
        if (!bFails)
            std::copy(aNew.begin(), aNew.end(), oModel.pBlock->begin() + lNumber);
        break;
    }
    case 1:
    {
        tNumbers aRead(aNew.size());
        const bool bFails = !oBuffer.IsValid() || lNumber < 0 || lNew > lSize - lNumber;
        FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { oBuffer.GetElements(lNumber, aRead.data(), lNew); }));
        if (!bFails)
            FUZZ_EXPECT(std::equal(aRead.begin(), aRead.end(), oModel.pBlock->begin() + lNumber));
        break;
    }
    case 2:
        oBuffer = oOther;
        oModel = oOtherModel;
        break;
    case 3:
        oBuffer.Assign(aNew.data(), lNew);
        oModel.MakeNew(aNew);
        break;
    case 4:
    {
        if (aNew.empty())
            break;
        tNumbers aBoth = *oModel.pBlock;
        aBoth.insert(aBoth.end(), aNew.begin(), aNew.end());
        oBuffer.Append(aNew.data(), lNew);
        oModel.MakeNew(aBoth);
        break;
    }
    case 5:
    {
        if (oOtherModel.pBlock->empty())
            break;
        tNumbers aBoth = *oModel.pBlock;
        const tNumbers aAdded = *oOtherModel.pBlock;
        aBoth.insert(aBoth.end(), aAdded.begin(), aAdded.end());
        oBuffer.Append(oOther);
        oModel.MakeNew(aBoth);
        break;
    }
    case 6:
        oBuffer.Zero();
        if (lSize > 0)
            oModel.MakeNew(tNumbers(oModel.pBlock->size()));
        break;
    case 7:
    {
        if (lNumber > 1000)
            break;
        FUZZ_EXPECT_EQ(lNumber < 0, Fuzz::FailsCheck([&] { oBuffer.Resize(lNumber); }));
        if (lNumber < 0)
            break;
        // The new elements are not initialised.
        for (long lIndex = lSize; lIndex < lNumber; ++lIndex)
            oBuffer.GetBuffer()[lIndex] = 7;
        tNumbers aResized = *oModel.pBlock;
        aResized.resize(static_cast<std::size_t>(lNumber), 7);
        oModel.MakeNew(aResized);
        break;
    }
    default:
        oBuffer.Free();
        oModel.MakeNew({});
    }
    if (oModel.pBlock->size() > MAX_ELEMENTS)
    {
        oBuffer.Free();
        oModel.MakeNew({});
    }
}

// Tells whether all of these hold the same elements, by taking them out of a copy.
void ChangeQueue(Fuzz::CInput& oInput, CTOVQueue<CElement>& oQueue, CTOVSafeQueue<CElement>& oSafeQueue,
                 std::deque<int>& aModel)
{
    if (oInput.Below(3) > 0)
    {
        const int nValue = oInput.Byte();
        oQueue.Enqueue(CElement(nValue));
        oSafeQueue.Enqueue(CElement(nValue));
        aModel.push_back(nValue);
    }
    else if (aModel.empty())
    {
        FUZZ_EXPECT(Fuzz::FailsCheck([&] { oQueue.Dequeue(); }));
    }
    else
    {
        FUZZ_EXPECT_EQ(aModel.front(), oQueue.Dequeue().Get());
        FUZZ_EXPECT_EQ(aModel.front(), oSafeQueue.Dequeue().Get());
        aModel.pop_front();
    }
    FUZZ_EXPECT_EQ(static_cast<long>(aModel.size()), oQueue.GetCount());
    FUZZ_EXPECT_EQ(static_cast<long>(aModel.size()), oSafeQueue.GetCount());
}

void ChangeStack(Fuzz::CInput& oInput, CTOVStack<CElement>& oStack, std::vector<int>& aModel)
{
    const int nOperation = oInput.Below(8);
    if (nOperation == 0)
    {
        oStack.Clear();
        aModel.clear();
    }
    else if (nOperation < 5)
    {
        const int nValue = oInput.Byte();
        oStack.Push(CElement(nValue));
        aModel.push_back(nValue);
    }
    else
    {
        FUZZ_EXPECT_EQ(aModel.empty(), Fuzz::FailsCheck([&] { oStack.Pop(); }));
        if (!aModel.empty())
            aModel.pop_back();
    }
    FUZZ_EXPECT_EQ(static_cast<long>(aModel.size()), oStack.GetSize());
    if (!aModel.empty())
        FUZZ_EXPECT_EQ(aModel.back(), oStack.GetTop().Get());
}

void ChangeRing(Fuzz::CInput& oInput, CTOVRingBuffer<CElement>& oRing, std::deque<int>& aModel)
{
    const int nOperation = oInput.Below(16);
    const int nNumber = oInput.Number();
    if (nOperation == 0 && nNumber < 100)
    {
        FUZZ_EXPECT_EQ(nNumber < 0, Fuzz::FailsCheck([&] { oRing.SetCapacity(nNumber); }));
        if (nNumber >= 0)
            aModel.clear();
    }
    else if (nOperation == 1)
    {
        const CTOVRingBuffer<CElement> oCopy(oRing);
        oRing = oCopy;
    }
    else if (nOperation < 9)
    {
        const bool bFull = static_cast<long>(aModel.size()) == oRing.GetCapacity();
        FUZZ_EXPECT_EQ(bFull, oRing.IsFull());
        FUZZ_EXPECT_EQ(!bFull, oRing.Write(CElement(nNumber)));
        if (!bFull)
            aModel.push_back(nNumber);
    }
    else
    {
        CElement oRead(-5);
        FUZZ_EXPECT_EQ(!aModel.empty(), oRing.Read(oRead));
        FUZZ_EXPECT_EQ(aModel.empty() ? -5 : aModel.front(), oRead.Get());
        if (!aModel.empty())
            aModel.pop_front();
    }
    FUZZ_EXPECT_EQ(static_cast<long>(aModel.size()), oRing.GetCount());
}
} // namespace

FUZZ_TARGET(Arrays)
{
    CTOVArray<CElement> aArrays[2];
    tElements aModels[2];
    CTOVBuffer<int> aBuffers[3];
    sBufferModel aBufferModels[3];
    while (!oInput.IsAtEnd())
    {
        const int nWhich = oInput.Byte();
        const int nArray = nWhich & 1;
        const int nOther = (nWhich >> 1) & 1;
        if (nWhich < 128)
        {
            ChangeArray(oInput, aArrays[nArray], aModels[nArray], aArrays[nOther], aModels[nOther]);
            ExpectSame(aModels[nArray], aArrays[nArray]);
            continue;
        }
        const int nBuffer = nWhich % 3;
        const int nOtherBuffer = nWhich / 3 % 3;
        ChangeBuffer(oInput, aBuffers[nBuffer], aBufferModels[nBuffer], aBuffers[nOtherBuffer],
                     aBufferModels[nOtherBuffer]);
        for (int n = 0; n < 3; ++n)
            ExpectSame(aBufferModels[n], aBuffers[n]);
    }
}

FUZZ_TARGET(Queues)
{
    CTOVQueue<CElement> oQueue;
    CTOVSafeQueue<CElement> oSafeQueue;
    std::deque<int> aQueueModel;
    CTOVStack<CElement> oStack;
    std::vector<int> aStackModel;
    CTOVRingBuffer<CElement> oRing(4);
    std::deque<int> aRingModel;
    while (!oInput.IsAtEnd())
    {
        const int nWhich = oInput.Below(3);
        if (nWhich == 0)
            ChangeQueue(oInput, oQueue, oSafeQueue, aQueueModel);
        else if (nWhich == 1)
            ChangeStack(oInput, oStack, aStackModel);
        else
            ChangeRing(oInput, oRing, aRingModel);
    }
}
