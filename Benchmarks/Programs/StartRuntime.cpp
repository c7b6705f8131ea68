// A program with the C++ runtime alone, whose start and end are the measure for those of a program with the library.

#include <string>

int main(int argc, char** argv)
{
    const std::string sName(argc > 0 ? argv[0] : "");
    return sName.empty() ? 1 : 0;
}
