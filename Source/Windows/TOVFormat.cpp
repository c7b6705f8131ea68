// Calls the runtime's own print, by the names that no compiler replaces with a print of its own.
#include <TOVPlatform/Backend/TOVFormat.h>

#include <Windows/Text/TOVWidePieces.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cwchar>
#include <iterator>

namespace TOVPlatform
{
namespace Backend
{
namespace
{
// Whether a format prints characters.
template<class tUnit> bool HasCharacters(const tUnit* szFormat)
{
    static constexpr char BEFORE_TYPE[] = "-+ #0123456789.*hlwIFLNjtz";
    const auto fnIsBeforeType = [](tUnit cUnit) {
        return std::find(BEFORE_TYPE, std::end(BEFORE_TYPE) - 1, cUnit) != std::end(BEFORE_TYPE) - 1;
    };
    while (*szFormat != 0)
    {
        if (*szFormat++ != '%')
            continue;
        while (fnIsBeforeType(*szFormat))
            ++szFormat;
        if (*szFormat == 'c' || *szFormat == 'C')
            return true;
        if (*szFormat != 0)
            ++szFormat;
    }
    return false;
}

// The emulator's runtime returns a small length for some texts that do not fit: those of which a character or number
// does not fit into the room that is left. The buffer is full then, with no terminator where the length says. A
// character of value 0 looks like one, so that a format that can print it is measured.
template<class tUnit>
int StoredLength(const tUnit* szBuffer, int nCapacity, int nLength, const tUnit* szFormat, va_list pArguments)
{
    if (nLength < 0 || nCapacity < nLength)
        return -1;
    if (nLength < nCapacity && szBuffer[nLength] != 0)
        return -1;
    if (nCapacity == INT_MAX || !HasCharacters(szFormat))
        return nLength;
    return PrintedLength(szFormat, pArguments) == nLength ? nLength : -1;
}
} // namespace

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
    va_list pAgain;
    va_copy(pAgain, pArguments);
    const int nLength = _vsnprintf(szBuffer, nCapacity, szFormat, pArguments);
    const int nStored = StoredLength(szBuffer, nCapacity, nLength, szFormat, pAgain);
    va_end(pAgain);
    return nStored;
}

int PrintedLength(const char* szFormat, va_list pArguments)
{
    return _vscprintf(szFormat, pArguments);
}

int Print(wchar_t* szBuffer, int nCapacity, const wchar_t* szFormat, va_list pArguments)
{
    if (TOVWidePieces::AreNeeded(szFormat, pArguments))
        return TOVWidePieces::Print(szBuffer, nCapacity, szFormat, pArguments);

    // Some runtimes count the bytes in an int.
    constexpr int MAX_UNITS = INT_MAX / static_cast<int>(sizeof(wchar_t));
    va_list pAgain;
    va_copy(pAgain, pArguments);
    const int nLength = _vsnwprintf(szBuffer, std::min(nCapacity, MAX_UNITS), szFormat, pArguments);
    const int nStored = StoredLength(szBuffer, nCapacity, nLength, szFormat, pAgain);
    va_end(pAgain);
    return nStored;
}

int PrintedLength(const wchar_t* szFormat, va_list pArguments)
{
    if (TOVWidePieces::AreNeeded(szFormat, pArguments))
        return TOVWidePieces::Print(nullptr, 0, szFormat, pArguments);
    return _vscwprintf(szFormat, pArguments);
}
} // namespace Backend
} // namespace TOVPlatform
