#include <TOVPlatform/TOVString.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/Backend/TOVFormat.h>
#include <TOVPlatform/Backend/TOVTextNumber.h>
#include <TOVPlatform/TOVAscii.h>
#include <TOVPlatform/TOVPlainFormat.h>
#include <TOVPlatform/TOVShortNumber.h>
#include <TOVPlatform/TOVStringMeasure.h>
#include <TOVPlatform/TOVTextRuntime.h>

#include <algorithm>
#include <climits>
#include <cstddef>

// Both platforms share these functions; a failed check names the platform's source.
#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE TOV_PLATFORM_SOURCE("TOVString")

namespace TOVPlatform
{
namespace
{
// Exactly -1, 0 or 1.
int Sign(int nOrder)
{
    return (nOrder > 0) - (nOrder < 0);
}

bool IsNumberBase(int nBase)
{
    return nBase == 0 || (2 <= nBase && nBase <= 36);
}

// Prints a plain format whose text fits, and returns the length; -1 for any other, and nothing is printed. Reads the
// list itself, not a copy.
template<class tUnit> int PrintPlainly(tUnit* szBuffer, int nCount, const tUnit* szFormat, va_list& pArguments)
{
    CTOVPlainFormat<tUnit> oFormat;
    if (!oFormat.Print(szFormat, pArguments) || oFormat.GetLength() > nCount)
        return -1;

    // The terminator is written where there is room.
    const int nLength = oFormat.GetLength();
    std::copy_n(oFormat.GetText(), nLength, szBuffer);
    if (nLength < nCount)
        szBuffer[nLength] = 0;
    return nLength;
}

template<class tUnit> bool IsInSet(tUnit cUnit, const tUnit* szCharSet)
{
    return Backend::FindCharacter(szCharSet, cUnit) != nullptr;
}

// The step to the next character, which is short after an ASCII character.
template<class tUnit> const tUnit* NextCharacter(const tUnit* szString)
{
    return TOVAscii::IsAscii(*szString) ? szString + 1 : Backend::Inc(szString);
}

// Walks back over all characters but the first. In linear time, this is only possible where Dec takes constant time.
template<class tUnit> const tUnit* WalkBack(const tUnit* szString, const tUnit* szCharSet, bool bWantedInSet)
{
    const tUnit* szPosition = szString + Backend::Length(szString);
    while (szPosition > szString)
    {
        szPosition = Backend::Dec(szString, szPosition);
        if (szPosition > szString && IsInSet(*szPosition, szCharSet) == bWantedInSet)
            return szPosition;
    }
    return nullptr;
}

// Finds the same by a walk forward.
const char* WalkForward(const char* szString, const char* szCharSet, bool bWantedInSet)
{
    const char* szLast = nullptr;
    if (*szString == '\0')
        return nullptr;
    for (const char* szPosition = NextCharacter(szString); *szPosition != '\0'; szPosition = NextCharacter(szPosition))
    {
        if (IsInSet(*szPosition, szCharSet) == bWantedInSet)
            szLast = szPosition;
    }
    return szLast;
}

// Settled: the walk ends when it reaches the start, so the unit at index 0 is never examined. An empty text, where the
// walk would begin in front of the text, has no match.
const char* ReverseFind(const char* szString, const char* szCharSet, bool bWantedInSet)
{
    return Backend::IsDecLocal() ? WalkBack(szString, szCharSet, bWantedInSet)
                                 : WalkForward(szString, szCharSet, bWantedInSet);
}

const wchar_t* ReverseFind(const wchar_t* szString, const wchar_t* szCharSet, bool bWantedInSet)
{
    return WalkBack(szString, szCharSet, bWantedInSet);
}
} // namespace

// The functions are written once for both widths, and differ only in tUnit.
namespace TOVStringA
{
typedef char tUnit;
#include <TOVPlatform/TOVStringFunctions.inl>
} // namespace TOVStringA

namespace TOVStringW
{
typedef wchar_t tUnit;
#include <TOVPlatform/TOVStringFunctions.inl>
} // namespace TOVStringW
} // namespace TOVPlatform
