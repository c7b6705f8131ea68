// What the tests of paths share.
#pragma once

#include "Support/TOVTestSupport.h"

#include <Path/TOVPath.h>

#include <functional>
#include <string>
#include <vector>

// Every character that counts, also a terminator that counts as the last one.
inline std::string TextOf(const CTOVStringA& oText)
{
    return oText.IsEmpty() ? std::string() : std::string(~oText, static_cast<std::size_t>(oText.GetLength()));
}

inline std::string TextOf(const CTOVPath& oPath)
{
    return TextOf(oPath.AsString());
}

// A text in a block with room after it, so that what is appended to a sharer is written in place.
inline CTOVStringA RoomyText(const char* szText)
{
    const std::string sText(szText);
    CTOVStringA oText;
    sText.copy(oText.GetBuffer(100), sText.size());
    oText.ReleaseBuffer(static_cast<int>(sText.size()));
    return oText;
}

struct sPathChange
{
    const char* szBefore;
    std::string sAfter;
};

// Each path is changed in place.
template<class TChange>
void ExpectChanges(const char* szName, const TChange& fnChange, const std::vector<sPathChange>& aChanges)
{
    for (const sPathChange& oChange : aChanges)
    {
        CTOVPath oPath(oChange.szBefore);

        std::invoke(fnChange, oPath);

        EXPECT_EQ(oChange.sAfter, TextOf(oPath)) << szName << " of " << oChange.szBefore;
    }
}

// The statement looks at a first or last character that is not there.
#define EXPECT_CHARACTER_CHECK(...)                                                                                    \
    EXPECT_CHECK_AT("TOVString/TOVStringA", "(0 <= lIndex) && (lIndex < GetLength())", __VA_ARGS__)
