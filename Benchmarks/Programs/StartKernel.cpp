// The same as StartRuntime, with the library.

#include <TOVString/TOVStringA.h>

int main(int argc, char** argv)
{
    const CTOVStringA oName(argc > 0 ? argv[0] : "");
    return oName.IsEmpty() ? 1 : 0;
}
