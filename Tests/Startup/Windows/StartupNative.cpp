#include "Startup/StartupHost.h"

#include <cstring>
#include <windows.h>

static constexpr char TELLING[] = "TOV_TELLING";
static constexpr char USING[] = "using";

CTellingChildren::CTellingChildren(bool bUsing)
{
    ::SetEnvironmentVariableA(TELLING, bUsing ? USING : "1");
}

CTellingChildren::~CTellingChildren()
{
    ::SetEnvironmentVariableA(TELLING, nullptr);
}

bool IsTelling()
{
    return ::GetEnvironmentVariableA(TELLING, nullptr, 0) != 0;
}

bool IsUsing()
{
    char szValue[16] = "";
    ::GetEnvironmentVariableA(TELLING, szValue, sizeof(szValue));
    return std::strcmp(szValue, USING) == 0;
}

void TellDebugger(const char* szLine)
{
    ::OutputDebugStringA(szLine);
}
