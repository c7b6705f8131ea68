#include <TOVPlatform/TOVString.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/Backend/TOVFormat.h>
#include <TOVPlatform/Backend/TOVTextNumber.h>
#include <TOVPlatform/TOVStringMeasure.h>
#include <TOVPlatform/TOVTextRuntime.h>

#include <algorithm>
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

template<class tUnit> bool IsInSet(tUnit cUnit, const tUnit* szCharSet)
{
    return Backend::FindCharacter(szCharSet, cUnit) != nullptr;
}

// Settled: the walk ends when it reaches the start, so the unit at index 0 is never examined. An empty text, where the
// walk would begin in front of the text, has no match.
template<class tUnit> const tUnit* ReverseFind(const tUnit* szString, const tUnit* szCharSet, bool bWantedInSet)
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
