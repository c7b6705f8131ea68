// Arrays, buffers and the other containers, by the tables in their headers.
#include "Faults/TOVAllocationScenarios.h"

#include <TOVContainers/TOVBitArray.h>
#include <TOVContainers/TOVQueue.h>
#include <TOVContainers/TOVRingBuffer.h>
#include <TOVContainers/TOVSafeQueue.h>
#include <TOVContainers/TOVStack.h>
#include <TOVString/TOVStringA.h>

#include <algorithm>

namespace
{
// An element that holds a block of its own.
struct sThing
{
    explicit sThing(int n = 0) : pNumber(new int(n)) {}
    sThing(const sThing& oOther) : pNumber(new int(*oOther.pNumber)) {}
    ~sThing() { delete pNumber; }
    sThing& operator=(const sThing& oOther)
    {
        int* const pNew = new int(*oOther.pNumber);
        delete pNumber;
        pNumber = pNew;
        return *this;
    }

    int* pNumber;
};

// The array holds just the numbers first, first + 1, and so on.
bool Counts(const CTOVArray<sThing>& aThings, int nFirst, long lSize)
{
    bool bCounts = aThings.GetSize() == lSize;
    for (long lIndex = 0; bCounts && lIndex < lSize; ++lIndex)
        bCounts = *aThings[lIndex].pNumber == nFirst + lIndex;
    return bCounts;
}

// All elements are intact, whichever they are.
bool IsValid(const CTOVArray<sThing>& aThings)
{
    bool bValid = true;
    for (long lIndex = 0; lIndex < aThings.GetSize(); ++lIndex)
        bValid = bValid && *aThings[lIndex].pNumber >= 0 && *aThings[lIndex].pNumber < 100;
    return bValid;
}

void Fill(CTOVArray<sThing>& aThings, int nFirst, int nCount)
{
    for (int n = nFirst; n < nFirst + nCount; ++n)
        aThings.Add(sThing(n));
}

int CompareThings(const sThing& oFirst, const sThing& oSecond)
{
    return *oFirst.pNumber - *oSecond.pNumber;
}

class CDerivedArray : public CTOVArray<sThing>
{
public:
    const sThing& GetAt(long lIndex) const override { return CTOVArray<sThing>::GetAt(lIndex); }
};

template<class TArray> void SortBackwards()
{
    TArray aThings;
    for (int n = 9; n >= 0; --n)
        aThings.Add(sThing(n));
    const bool bDone = Completes([&] { aThings.Sort(CompareThings); });
    FAULT_EXPECT(aThings.GetSize() == 10 && IsValid(aThings));
    FAULT_EXPECT(!bDone || Counts(aThings, 0, 10));
}

bool Holds(const CTOVBuffer<int>& oBuffer, int nFirst, long lSize)
{
    bool bHolds = oBuffer.GetSize() == lSize && oBuffer.IsValid();
    for (long lIndex = 0; bHolds && lIndex < lSize; ++lIndex)
        bHolds = oBuffer.GetBuffer()[lIndex] == nFirst + lIndex;
    return bHolds;
}

const int s_anNumbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};

// The queue or the stack takes things until memory is exhausted, and then holds those that it took.
template<class TStore> long TakeThings(TStore& oStore, void (TStore::*pfnTake)(const sThing&), int nCount)
{
    long lTaken = 0;
    for (int n = 0; n < nCount; ++n)
        lTaken += Completes([&] { (oStore.*pfnTake)(sThing(static_cast<int>(lTaken))); }) ? 1 : 0;
    FAULT_EXPECT(oStore.GetSize() == lTaken && oStore.IsEmpty() == (lTaken == 0));
    return lTaken;
}
} // namespace

tFaultScenarios ArrayScenarios()
{
    return {
        {"ArrayAdds",
         [] {
             CTOVArray<sThing> aThings;
             long lAdded = 0;
             for (int n = 0; n < 12; ++n)
                 lAdded += Completes([&] { aThings.Add(sThing(static_cast<int>(lAdded))); }) ? 1 : 0;
             FAULT_EXPECT(Counts(aThings, 0, lAdded));
         }},
        {"ArrayAddsItsOwn",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 5, 1);
             const bool bDone = Completes([&] { aThings.Add(aThings[0]); });
             FAULT_EXPECT(aThings.GetSize() == (bDone ? 2 : 1) && *aThings[0].pNumber == 5);
         }},
        {"ArrayInsertsAndGrows",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 1, 6); // just the capacity
             const bool bDone = Completes([&] { aThings.InsertAt(0, sThing(0)); });
             FAULT_EXPECT(Counts(aThings, bDone ? 0 : 1, bDone ? 7 : 6));
         }},
        {"ArrayInsertsInPlace",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 1, 7); // the capacity is 9
             const bool bDone = Completes([&] { aThings.InsertAt(0, sThing(0)); });
             FAULT_EXPECT(IsValid(aThings) && (!bDone || Counts(aThings, 0, 8)));
         }},
        {"ArraySetsAndSwaps",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 0, 3);
             const bool bSet = Completes([&] { aThings.SetAt(1, sThing(7)); });
             FAULT_EXPECT(*aThings[1].pNumber == (bSet ? 7 : 1));
             Completes([&] { aThings.Swap(0, 2); });
             FAULT_EXPECT(aThings.GetSize() == 3 && IsValid(aThings));
         }},
        {"ArrayRemoves",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 0, 5);
             const bool bDone = Completes([&] { aThings.RemoveAt(0); });
             FAULT_EXPECT(IsValid(aThings) && (!bDone || Counts(aThings, 1, 4)));
             aThings.RemoveAll();
             FAULT_EXPECT(aThings.IsEmpty());
         }},
        {"ArrayAppendsArray",
         [] {
             CTOVArray<sThing> aThings;
             CTOVArray<sThing> aMore;
             Fill(aThings, 0, 3);
             Fill(aMore, 3, 5);
             const bool bDone = Completes([&] { aThings.Append(aMore); });
             FAULT_EXPECT(Counts(aThings, 0, bDone ? 8 : 3) && Counts(aMore, 3, 5));
         }},
        {"ArrayAppendsItself",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 0, 3);
             const bool bDone = Completes([&] { aThings.Append(aThings); });
             FAULT_EXPECT(aThings.GetSize() == (bDone ? 6 : 3) && IsValid(aThings));
         }},
        {"ArrayAppendsPlainElements",
         [] {
             const sThing aMore[3] = {sThing(1), sThing(2), sThing(3)};
             CTOVArray<sThing> aThings;
             Fill(aThings, 0, 2);
             const bool bDone = Completes([&] { aThings.Append(aMore, 3); });
             FAULT_EXPECT(IsValid(aThings) && (!bDone || aThings.GetSize() == 6));
         }},
        {"ArrayResizes",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 0, 2);
             const bool bDone = Completes([&] { aThings.Resize(20); });
             FAULT_EXPECT(IsValid(aThings) && (!bDone || aThings.GetSize() == 20));
         }},
        {"ArrayIsCopied",
         [] {
             CTOVArray<sThing> aThings;
             Fill(aThings, 0, 5);
             Completes([&] {
                 const CTOVArray<sThing> aCopy(aThings);
                 FAULT_EXPECT(Counts(aCopy, 0, 5));
             });
             FAULT_EXPECT(Counts(aThings, 0, 5));
         }},
        {"ArrayIsAssigned",
         [] {
             CTOVArray<sThing> aThings;
             CTOVArray<sThing> aTarget;
             Fill(aThings, 0, 5);
             Fill(aTarget, 50, 2);
             const bool bDone = Completes([&] { aTarget = aThings; });
             FAULT_EXPECT(IsValid(aTarget) && (!bDone || Counts(aTarget, 0, 5)) && Counts(aThings, 0, 5));
         }},
        {"ArraySorts", SortBackwards<CTOVArray<sThing>>},
        {"ArrayOfDerivedClassSorts", SortBackwards<CDerivedArray>},
        {"ArrayOfStrings",
         [] {
             CTOVArray<CTOVStringA> aTexts;
             long lAdded = 0;
             for (const char* szText : {"one", "two", "three and more than a short one", "four"})
                 lAdded += Completes([&] { aTexts.Add(szText); }) ? 1 : 0;
             FAULT_EXPECT(aTexts.GetSize() == lAdded);
             Completes([&] { aTexts.Sort([](const CTOVStringA& a, const CTOVStringA& b) { return a.Compare(b); }); });
             FAULT_EXPECT(aTexts.GetSize() == lAdded);
             for (long lIndex = 0; lIndex < lAdded; ++lIndex)
                 FAULT_EXPECT(!aTexts[lIndex].IsEmpty());
         }},
    };
}

namespace
{
tFaultScenarios BufferScenarios()
{
    return {
        {"BufferOfElements",
         [] {
             const CTOVBuffer<int> oBuffer(s_anNumbers, 12);
             const CTOVBuffer<int> oCopy(oBuffer);
             FAULT_EXPECT(Holds(oCopy, 1, 12));
         }},
        {"BufferResizes",
         [] {
             CTOVBuffer<int> oBuffer(s_anNumbers, 3);
             const CTOVBuffer<int> oSharing(oBuffer);
             const bool bDone = Completes([&] { oBuffer.Resize(400); });
             FAULT_EXPECT(bDone ? oBuffer.GetSize() == 400 && oBuffer.GetBuffer()[2] == 3 : Holds(oBuffer, 1, 3));
             FAULT_EXPECT(Holds(oSharing, 1, 3));
         }},
        {"BufferAssigns",
         [] {
             CTOVBuffer<int> oBuffer(s_anNumbers, 3);
             const bool bDone = Completes([&] { oBuffer.Assign(s_anNumbers + 1, 9); });
             FAULT_EXPECT(Holds(oBuffer, bDone ? 2 : 1, bDone ? 9 : 3));
         }},
        {"BufferAppends",
         [] {
             CTOVBuffer<int> oBuffer(s_anNumbers, 3);
             const CTOVBuffer<int> oMore(s_anNumbers + 3, 4);
             const bool bBuffer = Completes([&] { oBuffer.Append(oMore); });
             FAULT_EXPECT(Holds(oBuffer, 1, bBuffer ? 7 : 3) && Holds(oMore, 4, 4));
             const bool bElements = bBuffer && Completes([&] { oBuffer.Append(s_anNumbers + 7, 2); });
             FAULT_EXPECT(Holds(oBuffer, 1, bElements ? 9 : bBuffer ? 7 : 3));
         }},
        {"BufferAppendsItself",
         [] {
             CTOVBuffer<int> oBuffer(s_anNumbers, 3);
             const bool bDone = Completes([&] { oBuffer.Append(oBuffer); });
             FAULT_EXPECT(oBuffer.GetSize() == (bDone ? 6 : 3) && oBuffer.GetBuffer()[2] == 3);
         }},
        {"BufferZeroesShared",
         [] {
             CTOVBuffer<int> oBuffer(s_anNumbers, 3);
             const CTOVBuffer<int> oSharing(oBuffer);
             const bool bDone = Completes([&] { oBuffer.Zero(); });
             FAULT_EXPECT(bDone ? oBuffer.GetBuffer()[0] == 0 && oBuffer.GetSize() == 3 : Holds(oBuffer, 1, 3));
             FAULT_EXPECT(Holds(oSharing, 1, 3));
         }},
        {"BufferIsFreed",
         [] {
             CTOVBuffer<int> oBuffer(s_anNumbers, 3);
             const CTOVBuffer<int> oSharing(oBuffer);
             const bool bDone = Completes([&] { oBuffer.Free(); });
             FAULT_EXPECT(bDone ? oBuffer.GetSize() == 0 && !oBuffer.IsValid() : Holds(oBuffer, 1, 3));
             FAULT_EXPECT(Holds(oSharing, 1, 3));
         }},
    };
}

tFaultScenarios BitScenarios()
{
    return {
        {"BitArrayOfBits",
         [] {
             CompletesOrFailsACheck([] {
                 const CTOVBitArray oBits(100);
                 FAULT_EXPECT(oBits.GetNumBits() == 100 && !oBits.IsAnyBitSet());
             });
         }},
        {"BitArrayResizes",
         [] {
             CTOVBitArray oBits;
             if (!CompletesOrFailsACheck([&] { oBits.SetNumBits(20); }))
             {
                 FAULT_EXPECT(oBits.GetNumBits() == 0 && oBits.GetSize() == 0);
                 return;
             }
             oBits.SetBit(19);
             const bool bDone = CompletesOrFailsACheck([&] { oBits.SetSize(500); });
             FAULT_EXPECT(oBits.GetNumBits() == (bDone ? 4000 : 20) && oBits.GetBit(19) && !oBits.GetBit(18));
             CompletesOrFailsACheck([&] { FAULT_EXPECT(oBits.QueryBuffer(600) != nullptr); });
             FAULT_EXPECT(oBits.GetBit(19));
         }},
        {"BitArraySetsBitAfterTheLast",
         [] {
             CTOVBitArray oBits;
             if (!CompletesOrFailsACheck([&] { oBits.SetSize(2); }))
                 return;
             oBits.SetBit(3);
             const bool bDone = CompletesOrFailsACheck([&] { oBits.SetBit(16); });
             FAULT_EXPECT(oBits.GetNumBits() == 16 && oBits.GetBit(3) && oBits.GetBit(16) == bDone);
         }},
        {"BitArrayIsCopied",
         [] {
             CTOVBitArray oBits;
             CTOVBitArray oTarget;
             if (!CompletesOrFailsACheck([&] {
                     oBits.SetSize(40);
                     oTarget.SetSize(1);
                 }))
                 return;
             oBits.SetBit(300);
             oTarget.SetBit(7);
             const bool bDone = CompletesOrFailsACheck([&] { oTarget = oBits; });
             FAULT_EXPECT(bDone ? oTarget == oBits : oTarget.GetNumBits() == 8 && oTarget.GetBit(7));
             CompletesOrFailsACheck([&] { FAULT_EXPECT(CTOVBitArray(oBits) == oBits); });
         }},
    };
}
} // namespace

tFaultScenarios ContainerScenarios()
{
    tFaultScenarios aAll = {
        {"StackPushes",
         [] {
             CTOVStack<sThing> oStack;
             const long lTaken = TakeThings(oStack, &CTOVStack<sThing>::Push, 150);
             FAULT_EXPECT(lTaken == 0 || *oStack.GetTop().pNumber == lTaken - 1);
             Completes([&] { FAULT_EXPECT(CTOVStack<sThing>(oStack).GetSize() == lTaken); });
             if (lTaken > 0)
                 oStack.Pop();
             FAULT_EXPECT(oStack.GetSize() == std::max(lTaken - 1, 0L));
         }},
        {"StackIsAssigned",
         [] {
             CTOVStack<int> oStack;
             CTOVStack<int> oTarget;
             oStack.Push(1);
             const bool bDone = Completes([&] { oTarget = oStack; });
             FAULT_EXPECT(oTarget.GetSize() == (bDone ? 1 : 0) && oStack.GetTop() == 1);
         }},
        {"QueuePasses",
         [] {
             CTOVQueue<sThing> oQueue;
             long lLeft = TakeThings(oQueue, &CTOVQueue<sThing>::Enqueue, 150);
             int nNext = 0;
             while (lLeft > 0 && Completes([&] { FAULT_EXPECT(*oQueue.Dequeue().pNumber == nNext); }))
             {
                 ++nNext;
                 --lLeft;
             }
             FAULT_EXPECT(oQueue.GetSize() == lLeft);
             if (lLeft > 0)
                 Completes([&] { FAULT_EXPECT(*oQueue.Dequeue().pNumber == nNext); }); // nothing is lost
         }},
        {"QueueIsAssigned",
         [] {
             CTOVQueue<int> oQueue;
             CTOVQueue<int> oTarget;
             oQueue.Enqueue(1);
             const bool bDone = Completes([&] { oTarget = oQueue; });
             FAULT_EXPECT(oTarget.GetSize() == (bDone ? 1 : 0) && oQueue.GetSize() == 1);
         }},
        {"RingBufferSetsCapacity",
         [] {
             CTOVRingBuffer<sThing> oRing(3);
             oRing.Write(sThing(5));
             const bool bDone = Completes([&] { oRing.SetCapacity(10); });
             FAULT_EXPECT(oRing.GetCapacity() == (bDone ? 10 : 3) && oRing.GetCount() == (bDone ? 0 : 1));
         }},
        {"RingBufferPasses",
         [] {
             CTOVRingBuffer<sThing> oRing(3);
             sThing oRead(9);
             long lCount = 0;
             for (int n = 0; n < 3; ++n)
                 lCount += Completes([&] { oRing.Write(sThing(static_cast<int>(lCount))); }) ? 1 : 0;
             FAULT_EXPECT(oRing.GetCount() == lCount);
             const bool bRead = Completes([&] { FAULT_EXPECT(oRing.Read(oRead) == (lCount > 0)); });
             FAULT_EXPECT(oRing.GetCount() == (bRead && lCount > 0 ? lCount - 1 : lCount));
             FAULT_EXPECT(*oRead.pNumber == (bRead && lCount > 0 ? 0 : 9));
         }},
        {"RingBufferIsCopied",
         [] {
             CTOVRingBuffer<sThing> oRing(3);
             CTOVRingBuffer<sThing> oTarget(2);
             oRing.Write(sThing(5));
             oTarget.Write(sThing(6));
             const bool bDone = Completes([&] { oTarget = oRing; });
             FAULT_EXPECT(bDone ? oTarget.GetCount() == 1 && oTarget.GetCapacity() == 3
                                : oTarget.GetCount() == (oTarget.GetCapacity() == 2 ? 1 : 0));
             FAULT_EXPECT(oRing.GetCount() == 1);
         }},
        {"SafeQueuePasses",
         [] {
             CTOVSafeQueue<sThing> oQueue;
             long lLeft = TakeThings(oQueue, &CTOVSafeQueue<sThing>::Enqueue, 5);
             int nNext = 0;
             while (lLeft > 0 && Completes([&] { FAULT_EXPECT(*oQueue.Dequeue().pNumber == nNext); }))
             {
                 ++nNext;
                 --lLeft;
             }
             FAULT_EXPECT(oQueue.GetCount() == lLeft);
         }},
    };
    for (const tFaultScenarios& aMore : {BufferScenarios(), BitScenarios()})
        aAll.insert(aAll.end(), aMore.begin(), aMore.end());
    return aAll;
}
