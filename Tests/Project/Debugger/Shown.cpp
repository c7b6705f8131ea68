// What the debugger's views are tried on. The values are looked at where Look is called.
#include <TOVKernel.h>

extern "C" void Look()
{
    static volatile int s_nLooks;
    s_nLooks = s_nLooks + 1;
}

namespace
{
class CNumber : public CTOVRefCount
{
};

// Knows one object, by any id.
class CNumbers : public ITOVHandleDatabase
{
public:
    CTOVHandle GetHandle(long lHandle) override { return NewHandle(lHandle, &m_oNumber); }
    CTOVHandle GetHandle(ITOVRefCount* pObject) override { return NewHandle(1, pObject); }
    void RemoveHandle(long) override {}

private:
    CNumber m_oNumber;
};
} // namespace

int main()
{
    CTOVStringA oText("narrow text");
    CTOVStringA oShorter(oText);
    oShorter.ReleaseBuffer(6);
    oText = "narrow text";
    const CTOVStringA oNone;
    CTOVStringW oWide(oText);
    CTOVPath oPath("C:/folder/file.txt");
    const int anValues[] = {5, 6, 7};
    CTOVBuffer<int> oBuffer(anValues, 3);
    CTOVArray<int> oArray;
    oArray.Add(8);
    oArray.Add(9);
    CTOVArray<CTOVStringA> oTexts;
    oTexts.Add("one");
    oTexts.Add("two");
    CTOVRingBuffer<int> oRing(3);
    for (int i = 1; i <= 3; ++i)
        oRing.Write(i);
    int nRead = 0;
    oRing.Read(nRead);
    oRing.Write(4);
    CTOVSmartPointer<int> oPointer(new int(10));
    const CTOVSmartPointer<int> oNoPointer;
    CTOVQueue<int> oQueue;
    CTOVSafeQueue<int> oSafeQueue;
    CTOVStack<int> oStack;
    for (int i = 11; i <= 13; ++i)
    {
        oQueue.Enqueue(i);
        oSafeQueue.Enqueue(i);
        oStack.Push(i);
    }
    oQueue.Dequeue();
    const CTOVQueue<CTOVStringA> oNoTexts;
    CTOVBitArray oBits;
    oBits.SetNumBits(10);
    oBits.SetBit(0, true);
    oBits.SetBit(9, true);
    const CTOVHandle oNoHandle;
    CNumbers oNumbers;
    const CTOVHandle oHandle(oNumbers, 7);
    const CTOVClass oBase("CBase");
    const CTOVClass oOther("COther");
    const CTOVClass oClass("CDerived", &oBase, &oOther);
    CTOVTimer oTimer;
    oTimer.DefineChannel(2, "frames");
    oTimer.Start(2);
    oTimer.DefineChannel(3, "load");
    Look();
    return 0;
}
