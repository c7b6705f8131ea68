// Prints a line for each of a number of random calls: RandomCalls COUNT SEED
#include "RandomCalls.h"

#include <cstdio>
#include <cstdlib>

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 3)
    {
        std::fputs("usage: RandomCalls COUNT SEED\n", stderr);
        return 2;
    }
    CRandomSource oRandom(static_cast<std::uint32_t>(std::strtoul(aszArguments[2], nullptr, 10)));
    for (long lLeft = std::atol(aszArguments[1]); lLeft > 0; --lLeft)
        std::printf("%s\n", CallAny(oRandom).c_str());
    return std::ferror(stdout) == 0 && std::fflush(stdout) == 0 ? 0 : 1;
}
