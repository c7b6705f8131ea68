#include <Path/TOVPathText.h>

namespace TOVPathText
{
void AssignNothingOrAll(CTOVStringA& oPart, const CTOVStringA& oText, long lLength)
{
    // Settled: a part that is the whole block shares it. The length of such a text includes the terminator's place.
    oPart = lLength > 0 ? oText : CTOVStringA();
}

sRange FindComponents(const CTOVStringA& oText, int nFirst, int nCount)
{
    const char* const szText = oText.GetString();
    const long lLength = oText.GetLength();
    const long long llEnd = static_cast<long long>(nFirst) + nCount;

    // Settled: the start stays 0 if the first component is beyond the end.
    sRange oRange = {0, lLength};
    if (nFirst == 0 && lLength > 0 && CTOVPath::IsSlash(szText[0]))
        oRange.lStart = 1;

    int nSeparators = 0;
    for (long lIndex = 1; lIndex < lLength; ++lIndex)
    {
        if (!CTOVPath::IsSlash(szText[lIndex]))
            continue;
        ++nSeparators;
        if (nSeparators == nFirst)
            oRange.lStart = lIndex + 1;
        if (nSeparators == llEnd)
        {
            oRange.lEnd = lIndex;
            break;
        }
    }
    return oRange;
}
} // namespace TOVPathText
