// The plain functions of TOVPlatform/TOVString.h.
#include <TOVPlatform/TOVString.h>

#include <cctype>
#include <climits>
#include <cstring>

namespace
{
// The runtime's classification is defined for these values only.
bool IsUnsignedCharacter(int nCharacter)
{
    return 0 <= nCharacter && nCharacter <= UCHAR_MAX;
}
} // namespace

extern "C"
{
char* TOVString_CopyN(char* szDestination, const char* szSource, tUchar ucCount)
{
    if (szDestination == nullptr || szSource == nullptr)
        return nullptr;

    unsigned int nLength = 0;
    while (nLength < ucCount && szSource[nLength] != '\0')
    {
        szDestination[nLength] = szSource[nLength];
        ++nLength;
    }

    // Settled: the terminator is not counted, so after a shorter source the byte at index ucCount is cleared as well.
    if (nLength < ucCount)
        std::memset(szDestination + nLength, 0, ucCount - nLength + 1);
    return szDestination;
}

bool IsAlphanumeric(int nCharacter)
{
    return IsUnsignedCharacter(nCharacter) && std::isalnum(nCharacter) != 0;
}

bool IsSpace(int nCharacter)
{
    return IsUnsignedCharacter(nCharacter) && std::isspace(nCharacter) != 0;
}
}
