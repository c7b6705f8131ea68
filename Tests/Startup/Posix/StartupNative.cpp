#include "Startup/StartupHost.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

static constexpr char TELLING[] = "TOV_TELLING";
static constexpr char USING[] = "using";

CTellingChildren::CTellingChildren(bool bUsing)
{
    ::setenv(TELLING, bUsing ? USING : "1", 1);
}

CTellingChildren::~CTellingChildren()
{
    ::unsetenv(TELLING);
}

bool IsTelling()
{
    return std::getenv(TELLING) != nullptr;
}

bool IsUsing()
{
    return IsTelling() && std::strcmp(std::getenv(TELLING), USING) == 0;
}

// The library writes its texts for a debugger there, too.
void TellDebugger(const char* szLine)
{
    const ssize_t nWritten = ::write(STDERR_FILENO, szLine, std::strlen(szLine));
    static_cast<void>(nWritten);
}
