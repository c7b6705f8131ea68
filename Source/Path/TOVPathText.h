// Internal to the folder. Declares the functions that find the components in a path's text.
#pragma once

#include <TOVString/TOVStringA.h>

namespace TOVPathText
{
// These read a character by GetAt, whose check refuses an empty path.
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

// A range of a path's text begins at lStart and ends before lEnd.
struct sRange
{
    long lStart;
    long lEnd;
};

// Returns the range of nCount components from nFirst on, as described for CTOVPath::GetComponent.
sRange FindComponents(const CTOVStringA& oText, int nFirst, int nCount);

// Finds the component that follows lPosition, and sets lPosition to the index after that component. Returns false if
// there is none.
bool FindNextComponent(const CTOVStringA& oText, long& lPosition, sRange& oRange);
} // namespace TOVPathText
