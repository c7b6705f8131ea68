// Internal to the folder. Declares the functions that find the components in a path's text.
#pragma once

#include <Path/TOVPath.h>

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
    long lStart = 0;
    long lEnd = 0;

    long GetLength() const { return lEnd - lStart; }
};

// Returns the number of characters for which the text has places, with that of the terminator. The text's block is no
// other class's, so that this needs no virtual call.
inline long GetCapacity(const CTOVStringA& oText)
{
    return oText.GetData()->CTOVBuffer<char>::GetSize();
}

// The two cases of AssignPart that copy no characters.
TOV_NOINLINE void AssignNothingOrAll(CTOVStringA& oPart, const CTOVStringA& oText, long lLength);

// Makes oPart a copy of a range that begins in the text, in a block of its own; an empty part has no block. A copy by
// Mid would take a block for a string that is then assigned.
inline void AssignPart(CTOVStringA& oPart, const CTOVStringA& oText, const sRange& oRange)
{
    const long lLength = oRange.GetLength();
    if (lLength > 0 && lLength != GetCapacity(oText))
        oPart.Copy(oText.GetString() + oRange.lStart, static_cast<int>(lLength));
    else
        AssignNothingOrAll(oPart, oText, lLength);
}

// Returns the range of nCount components from nFirst on, as described for CTOVPath::GetComponent.
sRange FindComponents(const CTOVStringA& oText, int nFirst, int nCount);

// Returns the index of the first separator from lStart on, or lEnd if there is none before it. Components are short, so
// that a search by vectors is slower: what follows would wait for the result, and does not wait for a predicted branch.
inline long FindSlash(const char* szText, long lStart, long lEnd)
{
    for (; lEnd - lStart >= 4; lStart += 4)
    {
        if (CTOVPath::IsSlash(szText[lStart]))
            return lStart;
        if (CTOVPath::IsSlash(szText[lStart + 1]))
            return lStart + 1;
        if (CTOVPath::IsSlash(szText[lStart + 2]))
            return lStart + 2;
        if (CTOVPath::IsSlash(szText[lStart + 3]))
            return lStart + 3;
    }
    while (lStart < lEnd && !CTOVPath::IsSlash(szText[lStart]))
        ++lStart;
    return lStart;
}

// Finds the component that follows lPosition, and sets lPosition to the index after that component. Returns false if
// there is none.
inline bool FindNextComponent(const CTOVStringA& oText, long& lPosition, sRange& oRange)
{
    const long lLength = oText.GetLength();
    if (lLength == 0 || lPosition >= lLength)
        return false;

    const char* const szText = oText.GetString();
    const bool bOnSlash = CTOVPath::IsSlash(static_cast<char>(oText.GetAt(lPosition)));
    const long lStart = bOnSlash ? lPosition + 1 : lPosition;
    const long lEnd = FindSlash(szText, lPosition + 1, lLength);
    lPosition = lEnd;
    if (lStart == lLength)
        return false;
    oRange = {lStart, lEnd};
    return true;
}
} // namespace TOVPathText
