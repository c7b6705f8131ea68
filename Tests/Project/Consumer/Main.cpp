#include <Streams/TOVCheckedStream.h>
#include <TOVKernel.h>

#include <cstdio>

// Whether a file that is not there is reported.
static bool IsReported()
{
    try
    {
        CTOVCheckedStream oStream("no such file");
    }
    catch (const CTOVException&)
    {
        return true;
    }
    return false;
}

int main()
{
    if (!IsReported())
        return 1;
    CTOVStringA oText;
    oText.Format("%s, %d", "kernel", 32);
    std::puts(oText.GetString());
    return 0;
}
