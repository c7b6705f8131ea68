#include <TOVKernel.h>

#include <cstdio>

int main()
{
    CTOVStringA oText;
    oText.Format("%s, %d", "kernel", 32);
    std::puts(oText.GetString());
    return 0;
}
