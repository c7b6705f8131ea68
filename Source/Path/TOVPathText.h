// Internal: how a path's text falls into components.
#pragma once

#include <TOVString/TOVStringA.h>

namespace TOVPathText
{
// Character tests go through GetAt, whose check is what refuses an empty path.
inline char FirstCharacter(const CTOVStringA& oText)
{
    return static_cast<char>(oText.GetAt(0));
}

inline char LastCharacter(const CTOVStringA& oText)
{
    return static_cast<char>(oText.GetAt(oText.GetLength() - 1));
}

inline CTOVStringA WithoutLastCharacter(const CTOVStringA& oText)
{
    return oText.Left(static_cast<int>(oText.GetLength() - 1));
}

// A stretch of a path's text: from lStart to before lEnd.
struct sStretch
{
    long lStart;
    long lEnd;
};

// The stretch over nCount components from the nFirst on, as CTOVPath::GetComponent tells it.
sStretch FindComponents(const CTOVStringA& oText, int nFirst, int nCount);

// The step of the iteration: finds the component behind lPosition and moves lPosition to the separator behind that.
bool FindNextComponent(const CTOVStringA& oText, long& lPosition, sStretch& oStretch);
} // namespace TOVPathText
