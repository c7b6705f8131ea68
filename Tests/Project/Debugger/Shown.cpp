// What the debugger's views are tried on. The values are looked at where Look is called.
#include <TOVKernel.h>

extern "C" void Look()
{
    static volatile int s_nLooks;
    s_nLooks = s_nLooks + 1;
}

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
    CTOVRingBuffer<int> oRing(3);
    for (int i = 1; i <= 3; ++i)
        oRing.Write(i);
    int nRead = 0;
    oRing.Read(nRead);
    oRing.Write(4);
    CTOVSmartPointer<int> oPointer(new int(10));
    Look();
    return 0;
}
