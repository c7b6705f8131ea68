// Calls the runtime's own print, by the names that no compiler replaces with a print of its own.
#include <TOVPlatform/Backend/TOVFormat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cwchar>

namespace TOVPlatform
{
namespace Backend
{
// This runtime prints the first unit of the locale's decimal point.
int DecimalPointLength(const char*)
{
    return 1;
}

int DecimalPointLength(const wchar_t*)
{
    return 1;
}

// How many digits this runtime knows depends on its version.
bool ArePlainReals()
{
    return false;
}

int Print(char* szBuffer, int nCapacity, const char* szFormat, va_list pArguments)
{
    return _vsnprintf(szBuffer, nCapacity, szFormat, pArguments);
}

int PrintedLength(const char* szFormat, va_list pArguments)
{
    return _vscprintf(szFormat, pArguments);
}

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
{
    // Some runtimes count the bytes in an int.
    constexpr int MAX_UNITS = INT_MAX / static_cast<int>(sizeof(wchar_t));
    return _vsnwprintf(szBuffer, std::min(nCapacity, MAX_UNITS), szFormat, pArguments);
}

int PrintedLength(const wchar_t* szFormat, va_list pArguments)
{
    return _vscwprintf(szFormat, pArguments);
}
} // namespace Backend
} // namespace TOVPlatform
