#include <TOVPlatform/TOVStringBackend.h>

// The system runtime's conversions. The headers that declare them are left out on purpose: MinGW's put functions of
// their own in place of these, which also take hexadecimal numbers, "inf" and "nan", and no d as exponent letter.
extern "C"
{
__declspec(dllimport) double __cdecl strtod(const char* szStart, char** pszEnd);
__declspec(dllimport) double __cdecl wcstod(const wchar_t* szStart, wchar_t** pszEnd);
}

namespace TOVPlatform
{
namespace TOVStringBackend
{
double ToDouble(const char* szStart, char** pszEnd)
{
    return strtod(szStart, pszEnd);
}

double ToDouble(const wchar_t* szStart, wchar_t** pszEnd)
{
    return wcstod(szStart, pszEnd);
}
} // namespace TOVStringBackend
} // namespace TOVPlatform
