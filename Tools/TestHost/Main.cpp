// tovtest runs test suites from shared libraries, and those of the library itself.

#include <TestHost/TOVTestHostProgram.h>

#include <Test/TOVTestHost.h>

TOV_TEST_HOST

int main(int nArguments, char** aszArguments)
{
    return TOVTestHost::RunTestHost(nArguments, aszArguments);
}
