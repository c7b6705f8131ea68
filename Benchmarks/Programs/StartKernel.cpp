// StartRuntime, which uses the library as well.

#include <TOVString/TOVStringA.h>

#include <string>

int main(int argc, char** argv)
{
    const std::string sName(argc > 0 ? argv[0] : "");
    const CTOVStringA oName(sName.c_str());
    return sName.empty() || oName.IsEmpty() ? 1 : 0;
}
