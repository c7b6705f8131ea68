// A library that holds no suite.
#include <Debug/TOVBase.h>

extern "C" TOV_PROGRAM_EXPORT int NothingToTest()
{
    return 0;
}
