// Searches for a text in another one in linear time. Internal to the text functions.
#pragma once

#include <algorithm>
#include <cstddef>

namespace TOVPlatform
{
// A search by the two-way algorithm (Crochemore and Perrin, "Two-way string-matching", 1991). It needs no memory, and
// its time is linear in what it reads of the text, whatever the two texts are. It reads the text up to the end of the
// first occurrence or to the terminator, and nothing after it.
template<class tUnit> class CTOVTwoWaySearch
{
public:
    // The part has at least one unit. Both texts must outlive this object.
    explicit CTOVTwoWaySearch(const tUnit* szPart) : m_szPart(szPart)
    {
        while (szPart[m_nLength] != 0)
            ++m_nLength;
        Factorize();
    }

    // Returns the first occurrence in the text, or null.
    const tUnit* FindIn(const tUnit* szText) const
    {
        const std::ptrdiff_t nStep = m_bPeriodic ? m_nPeriod : std::max(m_nSplit, m_nLength - m_nSplit) + 1;
        const tUnit* szRead = szText; // there is no terminator before it
        std::ptrdiff_t nKnown = 0;    // how many units at the start of the part are known to be equal
        for (;;)
        {
            for (; szRead < szText + m_nLength; ++szRead)
            {
                if (*szRead == 0)
                    return nullptr;
            }

            std::ptrdiff_t nIndex = std::max(m_nSplit, nKnown);
            while (nIndex < m_nLength && m_szPart[nIndex] == szText[nIndex])
                ++nIndex;
            if (nIndex < m_nLength)
            {
                szText += nIndex - m_nSplit + 1;
                nKnown = 0;
                continue;
            }

            nIndex = m_nSplit;
            while (nIndex > nKnown && m_szPart[nIndex - 1] == szText[nIndex - 1])
                --nIndex;
            if (nIndex <= nKnown)
                return szText;
            szText += nStep;
            nKnown = m_bPeriodic ? m_nLength - m_nPeriod : 0;
        }
    }

private:
    // Returns where the suffix of the part begins that is the largest one, in the units' order or in the reverse one.
    std::ptrdiff_t FindMaximalSuffix(bool bReverse, std::ptrdiff_t& nPeriod) const
    {
        std::ptrdiff_t nSuffix = 0;
        std::ptrdiff_t nCandidate = 1;
        std::ptrdiff_t nOffset = 0;
        nPeriod = 1;
        while (nCandidate + nOffset < m_nLength)
        {
            const tUnit cNew = m_szPart[nCandidate + nOffset];
            const tUnit cOld = m_szPart[nSuffix + nOffset];
            if (cNew == cOld)
            {
                ++nOffset;
                if (nOffset == nPeriod)
                {
                    nCandidate += nPeriod;
                    nOffset = 0;
                }
            }
            else if ((cNew < cOld) != bReverse)
            {
                nCandidate += nOffset + 1;
                nOffset = 0;
                nPeriod = nCandidate - nSuffix;
            }
            else
            {
                nSuffix = nCandidate;
                nCandidate = nSuffix + 1;
                nOffset = 0;
                nPeriod = 1;
            }
        }
        return nSuffix;
    }

    // Splits the part where its local period is that of the whole.
    void Factorize()
    {
        std::ptrdiff_t nReversePeriod = 0;
        m_nSplit = FindMaximalSuffix(false, m_nPeriod);
        const std::ptrdiff_t nReverseSplit = FindMaximalSuffix(true, nReversePeriod);
        if (nReverseSplit > m_nSplit)
        {
            m_nSplit = nReverseSplit;
            m_nPeriod = nReversePeriod;
        }
        m_bPeriodic = std::equal(m_szPart, m_szPart + m_nSplit, m_szPart + m_nPeriod);
    }

    const tUnit* m_szPart;
    std::ptrdiff_t m_nLength = 0;
    std::ptrdiff_t m_nSplit = 0;
    std::ptrdiff_t m_nPeriod = 0;
    bool m_bPeriodic = false;
};

// Compares a part at one place of a text after the other, which is fast for most texts: it costs no more than a few
// comparisons for each unit. Where it is slow, the two-way search takes over.
template<class tUnit> class CTOVPartMatcher
{
public:
    CTOVPartMatcher(const tUnit* szText, const tUnit* szPart) : m_szText(szText), m_szPart(szPart) {}

    // Whether the part stands at the place.
    bool IsAt(const tUnit* szPlace)
    {
        std::size_t nEqual = 0;
        while (m_szPart[nEqual] != 0 && szPlace[nEqual] == m_szPart[nEqual])
            ++nEqual;
        m_nComparisons += nEqual;
        return m_szPart[nEqual] == 0;
    }

    // Whether the comparisons at the places before this one have become too many.
    bool IsSlow(const tUnit* szPlace) const
    {
        constexpr std::size_t FREE_COMPARISONS = 256;
        return m_nComparisons > FREE_COMPARISONS + 4 * static_cast<std::size_t>(szPlace - m_szText);
    }

    // Returns the first occurrence from the place on, or null.
    const tUnit* FindInLinearTime(const tUnit* szPlace) const
    {
        return CTOVTwoWaySearch<tUnit>(m_szPart).FindIn(szPlace);
    }

private:
    const tUnit* m_szText;
    const tUnit* m_szPart;
    std::size_t m_nComparisons = 0;
};

// Returns the first occurrence of a part that is not empty, or null. Cost: linear in what is read of the text, which is
// the units up to the end of the occurrence.
template<class tUnit> const tUnit* FindPart(const tUnit* szText, const tUnit* szPart)
{
    CTOVPartMatcher<tUnit> oMatcher(szText, szPart);
    for (; *szText != 0; ++szText)
    {
        if (*szText != *szPart)
            continue;
        if (oMatcher.IsAt(szText))
            return szText;
        if (oMatcher.IsSlow(szText))
            return oMatcher.FindInLinearTime(szText);
    }
    return nullptr;
}
} // namespace TOVPlatform
