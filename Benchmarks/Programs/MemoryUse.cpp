// Tells how much memory texts need: one line "what|who|bytes" for each case.
//
// The pages that the process has in memory are counted, before and after a large number of texts: that holds for any
// way of allocating them, and includes what the heap needs itself. The object is part of the sum.

#include <Inputs.h>

#include <TOVString/TOVStringA.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace
{
long ResidentBytes()
{
    long lTotal = 0;
    long lResident = 0;
    std::ifstream("/proc/self/statm") >> lTotal >> lResident;
    return lResident * sysconf(_SC_PAGESIZE);
}

// Each object is made by the function in the place that it is given.
template<class TString, class TMake> void Measure(const char* szWhat, const char* szWho, int nCount, TMake fnMake)
{
    const long lBefore = ResidentBytes();
    {
        std::vector<TString> aStrings(static_cast<std::size_t>(nCount));
        for (TString& oString : aStrings)
            fnMake(oString);
        std::printf("%s|%s|%.0f\n", szWhat, szWho, static_cast<double>(ResidentBytes() - lBefore) / nCount);
    }
}

// What the two kinds of text have in common.
template<class TString> void MeasureAll(const char* szWho, int nCase)
{
    constexpr int MANY = 400000;
    constexpr int SOME = 40000;

    if (nCase == 0)
        Measure<TString>("empty string", szWho, MANY, [](TString&) {});
    if (nCase == 1)
        Measure<TString>("string of 24 characters", szWho, MANY, [](TString& oString) { oString = Inputs::TEXT24; });
    if (nCase == 2)
    {
        Measure<TString>("1,000 appended characters", szWho, SOME, [](TString& oString) {
            for (int nCharacter = 0; nCharacter < 1000; ++nCharacter)
                oString += 'x';
        });
    }
}
} // namespace

// Each case is measured in a process of its own, so that none has the memory that another one gave back: MemoryUse
// NUMBER.
int main(int argc, char** argv)
{
    const int nCase = argc > 1 ? std::atoi(argv[1]) : 0;
    if (nCase < 3)
        MeasureAll<CTOVStringA>("TOVKernel", nCase);
    else
        MeasureAll<std::string>("std::string", nCase - 3);
    return 0;
}
