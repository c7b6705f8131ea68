#include <TOVPlatform/Backend/TOVTextNumber.h>

// The system runtime's conversions. The headers that declare them are left out on purpose: MinGW's headers put
// functions of their own in place of strtod and wcstod, which also take hexadecimal numbers, "inf" and "nan", and no d
// as an exponent letter.
extern "C"
{
__declspec(dllimport) long __cdecl strtol(const char* szStart, char** pszEnd, int nBase);
__declspec(dllimport) unsigned long __cdecl strtoul(const char* szStart, char** pszEnd, int nBase);
__declspec(dllimport) double __cdecl strtod(const char* szStart, char** pszEnd);

__declspec(dllimport) long __cdecl wcstol(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
__declspec(dllimport) unsigned long __cdecl wcstoul(const wchar_t* szStart, wchar_t** pszEnd, int nBase);
__declspec(dllimport) double __cdecl wcstod(const wchar_t* szStart, wchar_t** pszEnd);
}

namespace TOVPlatform
{
namespace Backend
{
long ToLong(const char* szStart, char** pszEnd, int nBase)
{
    return strtol(szStart, pszEnd, nBase);
}

unsigned long ToUlong(const char* szStart, char** pszEnd, int nBase)
{
    return strtoul(szStart, pszEnd, nBase);
}

double ToDouble(const char* szStart, char** pszEnd)
{
    char* pEnd = nullptr;
    const double fValue = strtod(szStart, &pEnd);
    // The emulator's runtime takes a byte of 255 for the end of the text. It stops one byte late there, which may be in
    // an exponent without digits, or after a sign or a point without a number.
    while (pEnd != szStart && (pEnd[-1] == '\xFF' || (pEnd[-1] | 0x20) == 'd' || (pEnd[-1] | 0x20) == 'e'))
        --pEnd;
    const char* szDigit = szStart;
    while (szDigit != pEnd && (*szDigit < '0' || '9' < *szDigit))
        ++szDigit;
    *pszEnd = szDigit == pEnd ? const_cast<char*>(szStart) : pEnd;
    return fValue;
}

long ToLong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return wcstol(szStart, pszEnd, nBase);
}

unsigned long ToUlong(const wchar_t* szStart, wchar_t** pszEnd, int nBase)
{
    return wcstoul(szStart, pszEnd, nBase);
}

double ToDouble(const wchar_t* szStart, wchar_t** pszEnd)
{
    return wcstod(szStart, pszEnd);
}
} // namespace Backend
} // namespace TOVPlatform
