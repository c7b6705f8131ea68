// A simple model of the strings of either width, written after the descriptions in their headers.
#pragma once

#include <algorithm>
#include <climits>
#include <memory>
#include <type_traits>
#include <vector>

// A block of units, which several strings may share, and a length of the string's own. The hidden unit after the
// capacity is part of the block here.
template<class tUnit> class CStringModel
{
public:
    typedef std::vector<tUnit> tText;

    std::shared_ptr<tText> pBlock;
    int nLength = 0;

    int GetCapacity() const { return pBlock != nullptr ? static_cast<int>(pBlock->size()) - 1 : 0; }

    // The text from an index up to the first 0.
    tText GetText(int nStart = 0) const
    {
        if (pBlock == nullptr)
            return {};
        return tText(pBlock->begin() + nStart, std::find(pBlock->begin() + nStart, pBlock->end(), tUnit()));
    }

    // Whether the text ends where its length says, and nowhere before.
    bool IsRegular() const { return static_cast<int>(GetText().size()) == nLength; }

    void MakeNew(const tText& aText)
    {
        pBlock = std::make_shared<tText>(aText);
        pBlock->resize(aText.size() + 2);
        nLength = static_cast<int>(aText.size());
    }

    void Terminate()
    {
        if (pBlock != nullptr)
            (*pBlock)[nLength] = 0;
    }

    void Empty()
    {
        if (nLength == 0)
            return;
        if (pBlock.use_count() > 1)
            pBlock = std::make_shared<tText>(pBlock->size());
        std::fill(pBlock->begin(), pBlock->end() - 1, tUnit());
        nLength = 0;
    }

    void Assign(const tText& aText)
    {
        if (aText.empty())
            Empty();
        else
            MakeNew(aText);
    }

    void Share(const CStringModel& oOther)
    {
        if (pBlock != oOther.pBlock)
            *this = oOther;
    }

    void Append(const tText& aText)
    {
        if (aText.empty())
            return;
        const int nNewLength = nLength + static_cast<int>(aText.size());
        if (GetCapacity() < nNewLength + 1)
        {
            tText aNew;
            if (pBlock != nullptr)
                aNew.assign(pBlock->begin(), pBlock->begin() + nLength);
            aNew.insert(aNew.end(), aText.begin(), aText.end());
            MakeNew(aNew);
            return;
        }
        std::copy(aText.begin(), aText.end(), pBlock->begin() + nLength);
        nLength = nNewLength;
        Terminate();
    }

    // Returns false where the operation fails a check.
    bool Mid(long long llFirst, long long llCount, CStringModel& oPart) const
    {
        oPart = CStringModel();
        if (llCount < 1)
            return true;
        llFirst = std::max(llFirst, 0LL);
        llCount = std::max(std::min(llCount, GetCapacity() - llFirst), 0LL);
        if (llFirst == 0 && llCount == GetCapacity())
            oPart = *this;
        else if (llCount > 0)
            oPart.MakeNew(tText(pBlock->data() + llFirst, pBlock->data() + llFirst + llCount));
        else
            return false;
        return true;
    }

    // Searches. A start position after the terminator counts as the terminator in narrow text.
    int GetSearchStart(int nStart) const
    {
        const int nTerminator = static_cast<int>(GetText().size());
        return std::is_same_v<tUnit, char> ? std::min(nStart, nTerminator) : nStart;
    }

    int Find(tUnit cUnit, int nStart) const
    {
        return nStart >= nLength ? -1 : FindFirst(nStart, [=](tUnit cThis) { return cThis == cUnit; });
    }

    int Find(const tText& aText, int nStart) const
    {
        if (nLength == 0 || aText.empty() || nStart > nLength)
            return -1;
        const int nFrom = GetSearchStart(nStart);
        const tText aSearched = GetText(nFrom);
        const auto pHit = std::search(aSearched.begin(), aSearched.end(), aText.begin(), aText.end());
        return pHit == aSearched.end() ? -1 : nFrom + static_cast<int>(pHit - aSearched.begin());
    }

    int FindInSet(const tText& aSet, int nStart, bool bInSet) const
    {
        if (nStart >= GetCapacity())
            return -1;
        return FindFirst(GetSearchStart(nStart), [&](tUnit cThis) { return IsIn(aSet, cThis) == bInSet; });
    }

    int FindLast(tUnit cUnit) const
    {
        if (pBlock == nullptr)
            return -1;
        tText aText = GetText();
        aText.push_back(0);
        const auto pHit = std::find(aText.rbegin(), aText.rend(), cUnit);
        return static_cast<int>(aText.rend() - pHit) - 1;
    }

    int FindLastInSet(const tText& aSet, bool bInSet) const
    {
        const tText aText = GetText();
        for (int nIndex = static_cast<int>(aText.size()) - 1; nIndex > 0; --nIndex)
            if (IsIn(aSet, aText[nIndex]) == bInSet)
                return nIndex;
        return -1;
    }

    // Replaces every match in a regular text, and returns their number. What stands after the new text is not modelled.
    int Replace(const tText& aOld, const tText& aNew)
    {
        const tText aText = GetText();
        tText aResult;
        int nHits = 0;
        for (auto pNext = aText.begin();; ++nHits)
        {
            const auto pHit = aOld.empty() ? aText.end() : std::search(pNext, aText.end(), aOld.begin(), aOld.end());
            aResult.insert(aResult.end(), pNext, pHit);
            if (pHit == aText.end())
                break;
            aResult.insert(aResult.end(), aNew.begin(), aNew.end());
            pNext = pHit + static_cast<std::ptrdiff_t>(aOld.size());
        }
        if (nHits == 0)
            return 0;
        if (GetCapacity() < static_cast<int>(aResult.size()) + 1)
            MakeNew(aResult);
        std::copy(aResult.begin(), aResult.end(), pBlock->begin());
        nLength = static_cast<int>(aResult.size());
        Terminate();
        return nHits;
    }

    static tUnit Lower(tUnit cUnit) { return static_cast<tUnit>(cUnit >= 'A' && cUnit <= 'Z' ? cUnit + 32 : cUnit); }
    static tUnit Upper(tUnit cUnit) { return static_cast<tUnit>(cUnit >= 'a' && cUnit <= 'z' ? cUnit - 32 : cUnit); }

    static tText Lower(tText aText)
    {
        std::transform(aText.begin(), aText.end(), aText.begin(), [](tUnit cUnit) { return Lower(cUnit); });
        return aText;
    }

    static int Compare(const tText& aFirst, const tText& aSecond)
    {
        const auto fnBefore = [](tUnit cFirst, tUnit cSecond) {
            return static_cast<std::make_unsigned_t<tUnit>>(cFirst) < static_cast<std::make_unsigned_t<tUnit>>(cSecond);
        };
        const auto fnIsLess = [&](const tText& aOne, const tText& aOther) {
            return std::lexicographical_compare(aOne.begin(), aOne.end(), aOther.begin(), aOther.end(), fnBefore);
        };
        return static_cast<int>(fnIsLess(aSecond, aFirst)) - static_cast<int>(fnIsLess(aFirst, aSecond));
    }

private:
    static bool IsIn(const tText& aSet, tUnit cUnit)
    {
        return std::find(aSet.begin(), aSet.end(), cUnit) != aSet.end();
    }

    template<class TMatches> int FindFirst(int nStart, TMatches fnMatches) const
    {
        const tText aText = GetText(nStart);
        const auto pHit = std::find_if(aText.begin(), aText.end(), fnMatches);
        return pHit == aText.end() ? -1 : nStart + static_cast<int>(pHit - aText.begin());
    }
};
