#include <TOVPlatform/TOVString.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVStringBackend.h>
#include <TOVPlatform/TOVStringMeasure.h>

#include <climits>

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

template<class T> bool IsInSet(T cUnit, const T* szCharSet)
{
    return TOVStringBackend::FindCharacter(szCharSet, cUnit) != nullptr;
}

// Settled: the walk ends when it reaches the start, so the unit at index 0 is never examined. An empty text, where the
// walk would begin in front of the text, has no match.
template<class T> const T* ReverseFind(const T* szString, const T* szCharSet, bool bWantedInSet)
{
    const T* szPosition = szString + TOVStringBackend::Length(szString);
    while (szPosition > szString)
    {
        szPosition = TOVStringBackend::Dec(szString, szPosition);
        if (szPosition > szString && IsInSet(*szPosition, szCharSet) == bWantedInSet)
            return szPosition;
    }
    return nullptr;
}
} // namespace

// The functions have one text for both widths, which T tells apart.
namespace TOVStringA
{
typedef char T;
#include <TOVPlatform/TOVStringFunctions.inl>
} // namespace TOVStringA

namespace TOVStringW
{
typedef wchar_t T;
#include <TOVPlatform/TOVStringFunctions.inl>
} // namespace TOVStringW
} // namespace TOVPlatform
