#include "EdgeKinds.h"

#include <TOVKernel.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>

namespace
{
constexpr int ELEMENTS = 100;

// The text of a number, whose characters the library takes from the heap.
CTOVStringA MakeText(int nNumber)
{
    CTOVStringA oText;
    oText.Format("a text that needs memory, of the number %d", nNumber);
    return oText;
}

bool IsText(const char* szText, int nNumber)
{
    return MakeText(nNumber).Compare(szText) == 0;
}

// Deletes an object of new, and returns whether it was right.
template<class T, class TIsRight> bool Release(void* pObject, TIsRight fnIsRight)
{
    T* const pMade = static_cast<T*>(pObject);
    const bool bRight = fnIsRight(*pMade);
    delete pMade;
    return bRight;
}

template<class T, class TPut> void* MakeFilled(int nNumber, TPut fnPut)
{
    T* const pContainer = new T;
    for (int nElement = 0; nElement < ELEMENTS; ++nElement)
        fnPut(*pContainer, nNumber + nElement);
    return pContainer;
}

} // namespace

// Both modules have these classes, and each uses objects of the other one: to the compiler they must be the same.
namespace TOVEdge
{
class CEdgeThing : public CTOVRefCount
{
public:
    explicit CEdgeThing(int nNumber) : m_oText(MakeText(nNumber)) {}
    CEdgeThing(const CEdgeThing&) = delete;
    CEdgeThing& operator=(const CEdgeThing&) = delete;

    const CTOVStringA m_oText;
};

class CEdgeThings : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override
    {
        return NewHandle(lHandle, new CEdgeThing(static_cast<int>(lHandle)));
    }
    CTOVHandle GetHandle(ITOVRefCount* pObject) override { return NewHandle(1, pObject); }
    void RemoveHandle(long) override {}
};

struct sEdgeState : ITOVMemento
{
    explicit sEdgeState(int nNumber) : oText(MakeText(nNumber)) {}
    const CTOVStringA oText;
};

// A queue has no virtual destructor, and is deleted as a member.
struct sEdgeQueue
{
    CTOVSafeQueue<int> oNumbers;
};

struct sEdgeLocks
{
    CTOVMutex oMutex;
    CTOVSemaphore oSemaphore;
    CTOVCriticalSection oSection;
    CTOVEvent oEvent;
    CTOVEventCondition oCondition{CTOVEventCondition::eConditionTypeAny, &oEvent, 1};
};
} // namespace TOVEdge

using namespace TOVEdge;

namespace
{
// A handle keeps its database, which stays for good.
CEdgeThings& GetThings()
{
    static CEdgeThings s_oThings;
    return s_oThings;
}

bool IsThing(const ITOVRefCount* pThing, int nNumber)
{
    return IsText(~static_cast<const CEdgeThing*>(pThing)->m_oText, nNumber);
}
} // namespace

const sEdgeKind EDGE_KINDS[] = {
    {"narrow text", [](int nNumber) -> void* { return new CTOVStringA(MakeText(nNumber)); },
     [](void* pObject, int nNumber) {
         return Release<CTOVStringA>(pObject, [=](const CTOVStringA& oText) { return IsText(~oText, nNumber); });
     }},
    {"wide text", [](int nNumber) -> void* { return new CTOVStringW(CTOVStringW(MakeText(nNumber)).Mid(2)); },
     [](void* pObject, int nNumber) {
         return Release<CTOVStringW>(pObject, [=](const CTOVStringW& oText) {
             return oText.Compare(CTOVStringW(MakeText(nNumber)).Mid(2)) == 0;
         });
     }},
    {"path", [](int nNumber) -> void* { return new CTOVPath(CTOVPath("directory").Concat(MakeText(nNumber))); },
     [](void* pObject, int nNumber) {
         return Release<CTOVPath>(pObject,
                                  [=](const CTOVPath& oPath) { return IsText(~oPath.GetFileName(true), nNumber); });
     }},
    {"buffer of the library",
     [](int nNumber) -> void* {
         const CTOVStringA oText = MakeText(nNumber);
         return new CTOVBuffer<char>(oText.GetString(), oText.GetLength() + 1);
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVBuffer<char>>(pObject, [=](CTOVBuffer<char>& oBuffer) {
             const bool bRight = IsText(oBuffer.GetBuffer(), nNumber);
             oBuffer.Resize(10000); // another block, of this module
             return bRight;
         });
     }},
    {"buffer of the modules",
     [](int nNumber) -> void* {
         return MakeFilled<CTOVBuffer<double>>(nNumber, [](CTOVBuffer<double>& oBuffer, int nElement) {
             const double dElement = nElement;
             oBuffer.Append(&dElement, 1);
         });
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVBuffer<double>>(pObject, [=](CTOVBuffer<double>& oBuffer) {
             return oBuffer.GetSize() == ELEMENTS && static_cast<int>(oBuffer.GetBuffer()[99]) == nNumber + 99;
         });
     }},
    {"array of texts",
     [](int nNumber) -> void* {
         return MakeFilled<CTOVArray<CTOVStringA>>(
             nNumber, [](CTOVArray<CTOVStringA>& aoTexts, int nElement) { aoTexts.Add(MakeText(nElement)); });
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVArray<CTOVStringA>>(pObject, [=](CTOVArray<CTOVStringA>& aoTexts) {
             const bool bRight = aoTexts.GetSize() == ELEMENTS && IsText(~aoTexts[99], nNumber + 99);
             aoTexts.Add(MakeText(nNumber));
             aoTexts.RemoveAt(0);
             return bRight;
         });
     }},
    {"array of smart pointers",
     [](int nNumber) -> void* {
         return MakeFilled<CTOVArray<CTOVSmartPointer<CTOVStringA>>>(
             nNumber, [](CTOVArray<CTOVSmartPointer<CTOVStringA>>& apTexts, int nElement) {
                 apTexts.Add(CTOVSmartPointer<CTOVStringA>(new CTOVStringA(MakeText(nElement))));
             });
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVArray<CTOVSmartPointer<CTOVStringA>>>(
             pObject, [=](CTOVArray<CTOVSmartPointer<CTOVStringA>>& apTexts) {
                 return apTexts.GetSize() == ELEMENTS && IsText(~*apTexts[99], nNumber + 99);
             });
     }},
    {"stack and queue",
     [](int nNumber) -> void* {
         typedef std::pair<CTOVStack<CTOVStringA>, CTOVQueue<int>> tBoth;
         return MakeFilled<tBoth>(nNumber, [](tBoth& oBoth, int nElement) {
             oBoth.first.Push(MakeText(nElement));
             oBoth.second.Enqueue(nElement);
         });
     },
     [](void* pObject, int nNumber) {
         return Release<std::pair<CTOVStack<CTOVStringA>, CTOVQueue<int>>>(
             pObject, [=](std::pair<CTOVStack<CTOVStringA>, CTOVQueue<int>>& oBoth) {
                 const bool bRight = IsText(~oBoth.first.GetTop(), nNumber + 99);
                 oBoth.first.Pop();
                 return bRight && oBoth.second.Dequeue() == nNumber;
             });
     }},
    {"ring buffer and bits",
     [](int nNumber) -> void* {
         auto* const pBoth = new std::pair<CTOVRingBuffer<CTOVStringA>, CTOVBitArray>;
         pBoth->first.SetCapacity(ELEMENTS);
         pBoth->first.Write(MakeText(nNumber));
         pBoth->second.SetNumBits(1000);
         return pBoth;
     },
     [](void* pObject, int nNumber) {
         return Release<std::pair<CTOVRingBuffer<CTOVStringA>, CTOVBitArray>>(
             pObject, [=](std::pair<CTOVRingBuffer<CTOVStringA>, CTOVBitArray>& oBoth) {
                 CTOVStringA oText;
                 oBoth.second.SetNumBits(100000);
                 return oBoth.first.Read(oText) && IsText(~oText, nNumber) && !oBoth.second.IsAnyBitSet();
             });
     }},
    {"safe queue",
     [](int nNumber) -> void* {
         return MakeFilled<sEdgeQueue>(nNumber,
                                       [](sEdgeQueue& oQueue, int nElement) { oQueue.oNumbers.Enqueue(nElement); });
     },
     [](void* pObject, int nNumber) {
         return Release<sEdgeQueue>(pObject, [=](sEdgeQueue& oQueue) { return oQueue.oNumbers.Dequeue() == nNumber; });
     }},
    {"smart pointer",
     [](int nNumber) -> void* { return new CTOVSmartPointer<CTOVStringA>(new CTOVStringA(MakeText(nNumber))); },
     [](void* pObject, int nNumber) {
         return Release<CTOVSmartPointer<CTOVStringA>>(pObject, [=](CTOVSmartPointer<CTOVStringA>& pText) {
             const bool bRight = IsText(~*pText, nNumber);
             pText = new CTOVStringA("another text of this module, which it owns from now on");
             return bRight;
         });
     }},
    {"counted object", [](int nNumber) -> void* { return static_cast<ITOVRefCount*>(new CEdgeThing(nNumber)); },
     [](void* pObject, int nNumber) {
         ITOVRefCount* const pThing = static_cast<ITOVRefCount*>(pObject);
         const bool bRight = IsThing(pThing, nNumber);
         return pThing->Release() == 0 && bRight;
     }},
    {"handle",
     [](int nNumber) -> void* {
         CTOVHandle* const pHandle = new CTOVHandle(GetThings(), nNumber);
         pHandle->Get()->Release(); // the handle's reference is the only one
         return pHandle;
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVHandle>(pObject,
                                    [=](const CTOVHandle& oHandle) { return IsThing(oHandle.Get(), nNumber); });
     }},
    {"memento", [](int nNumber) -> void* { return static_cast<ITOVMemento*>(new sEdgeState(nNumber)); },
     [](void* pObject, int nNumber) {
         return Release<ITOVMemento>(pObject, [=](const ITOVMemento& oState) {
             return IsText(~static_cast<const sEdgeState&>(oState).oText, nNumber);
         });
     }},
    {"plain memory",
     [](int nNumber) -> void* {
         void* const pMemory = TOVPlatform::TOVMemory::Alloc(100);
         std::snprintf(static_cast<char*>(pMemory), 100, "%s", ~MakeText(nNumber));
         return pMemory;
     },
     [](void* pObject, int nNumber) {
         void* const pLarger = TOVPlatform::TOVMemory::Realloc(pObject, 100000);
         const bool bRight = IsText(static_cast<char*>(pLarger), nNumber);
         TOVPlatform::TOVMemory::Free(pLarger);
         return bRight;
     }},
    {"class", [](int nNumber) -> void* { return new CTOVClass(~MakeText(nNumber)); },
     [](void* pObject, int nNumber) {
         return Release<CTOVClass>(pObject, [=](const CTOVClass& oClass) {
             return IsText(oClass.GetName(), nNumber) && TOVRuntimeClass(MakeText(nNumber)) == oClass;
         });
     }},
    {"timer",
     [](int nNumber) -> void* {
         CTOVTimer* const pTimer = new CTOVTimer;
         pTimer->DefineChannel(0, ~MakeText(nNumber));
         return pTimer;
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVTimer>(pObject,
                                   [=](const CTOVTimer& oTimer) { return IsText(oTimer.GetChannelName(0), nNumber); });
     }},
    {"suite of the library",
     [](int) -> void* {
         const char* szName = nullptr;
         return TOVTest::CTOVTestSuiteFactory::GetFirst(szName) ? TOVTest::CTOVTestSuiteFactory::New(szName) : nullptr;
     },
     [](void* pObject, int) {
         return pObject != nullptr && Release<TOVTest::CTOVTestSuite>(pObject, [](TOVTest::CTOVTestSuite& oSuite) {
                    return oSuite.GetNumTestCases() > 0;
                });
     }},
    {"stream",
     [](int nNumber) -> void* {
         const std::string sName =
             std::filesystem::temp_directory_path().string() + "/tov-edge-" + std::to_string(nNumber);
         return new CTOVWriteFileStream(sName.c_str());
     },
     [](void* pObject, int nNumber) {
         const bool bRight = Release<CTOVWriteFileStream>(pObject, [](CTOVWriteFileStream& oStream) {
             oStream << 7;
             return oStream.Tell() == 4;
         });
         return std::remove((std::filesystem::temp_directory_path().string() + "/tov-edge-" + std::to_string(nNumber))
                                .c_str()) == 0 &&
                bRight;
     }},
    {"scanner",
     [](int nNumber) -> void* {
         CTOVFileScanner* const pScanner = new CTOVFileScanner;
         pScanner->AddScanDirectory(CTOVPath("no such directory"), MakeText(nNumber));
         return pScanner;
     },
     [](void* pObject, int nNumber) {
         return Release<CTOVFileScanner>(pObject, [=](CTOVFileScanner& oScanner) {
             oScanner.AddScanDirectory(CTOVPath("another directory"), MakeText(nNumber));
             oScanner.Run(nullptr, 0);
             return true;
         });
     }},
    {"locks and condition", [](int) -> void* { return new sEdgeLocks; },
     [](void* pObject, int) {
         return Release<sEdgeLocks>(pObject, [](sEdgeLocks& oLocks) {
             oLocks.oMutex.Lock();
             oLocks.oSection.Enter();
             oLocks.oSemaphore.Lock();
             oLocks.oEvent.Signal();
             oLocks.oSection.Leave();
             oLocks.oMutex.Unlock();
             return oLocks.oCondition.Wait() == 0;
         });
     }},
    {nullptr, nullptr, nullptr},
};
