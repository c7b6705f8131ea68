#include "Startup/StartupHost.h"

#include <windows.h>

static const char TELLING[] = "TOV_TELLING";

CTellingChildren::CTellingChildren()
{
    ::SetEnvironmentVariableA(TELLING, "1");
}

CTellingChildren::~CTellingChildren()
{
    ::SetEnvironmentVariableA(TELLING, nullptr);
}

bool IsTelling()
{
    return ::GetEnvironmentVariableA(TELLING, nullptr, 0) != 0;
}

void TellDebugger(const char* szLine)
{
    ::OutputDebugStringA(szLine);
}
