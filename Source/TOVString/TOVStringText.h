// Internal: the operations on a string's text, written once for CTOVStringA and CTOVStringW.
#pragma once

#include <TOVContainers/TOVArray.h>
#include <TOVString/TOVStringStore.h>

#include <algorithm>

// The bodies of the members of the same names. The contracts stand in the two classes.
template<class TString> class CTOVStringText
{
public:
    typedef CTOVStringStore<TString> tStore;
    typedef typename tStore::tUnit tUnit;
    typedef typename tStore::tBuffer tBuffer;
    static constexpr const char* SOURCE = tStore::SOURCE;

    // Searching

    static int Find(const TString& oString, tUnit cCharToSearch, int nStartPos)
    {
        TOV_ASSERT_AT(SOURCE, (0 <= nStartPos) && (cCharToSearch != '\0'));
        if (nStartPos >= oString.m_nStringLength)
            return -1;
        return IndexOf(oString, TOVStringPlatform::FindCharacter(oString.GetString() + nStartPos, cCharToSearch));
    }

    static int Find(const TString& oString, const tUnit* szSubStringToSearch, int nStartPos)
    {
        TOV_ASSERT_AT(SOURCE, (0 <= nStartPos) && (szSubStringToSearch != NULL));
        if (oString.m_nStringLength == 0 || *szSubStringToSearch == 0 || nStartPos > oString.m_nStringLength)
            return -1;
        tUnit* szStart = TOVStringPlatform::NInc(oString.GetString(), nStartPos);
        return IndexOf(oString, TOVStringPlatform::FindString(szStart, szSubStringToSearch));
    }

    static int ReverseFind(const TString& oString, tUnit cCharToSearch)
    {
        if (oString.GetString() == nullptr)
            return -1;
        return IndexOf(oString, TOVStringPlatform::FindLastCharacter(oString.GetString(), cCharToSearch));
    }

    static int FindOneOf(const TString& oString, const tUnit* szCharSet, int nStartPos)
    {
        TOV_ASSERT_AT(SOURCE, szCharSet != NULL);
        if (IsBehindBlock(oString, nStartPos))
            return -1;
        const tUnit* szStart = TOVStringPlatform::NInc(oString.GetString(), nStartPos);
        return IndexOf(oString, TOVStringPlatform::FindOneOf(szStart, szCharSet));
    }

    static int FindNotOneOf(const TString& oString, const tUnit* szCharSet, int nStartPos)
    {
        TOV_ASSERT_AT(SOURCE, szCharSet != NULL);
        if (IsBehindBlock(oString, nStartPos))
            return -1;
        const tUnit* szStart = TOVStringPlatform::NInc(oString.GetString(), nStartPos);
        return IndexOf(oString, TOVStringPlatform::FindNotOneOf(szStart, szCharSet));
    }

    static int ReverseFindOneOf(const TString& oString, const tUnit* szCharSet, int nStartPos)
    {
        TOV_ASSERT_AT(SOURCE, szCharSet != NULL);
        TOV_ASSERT_AT(SOURCE, nStartPos == 0);
        if (oString.GetString() == nullptr)
            return -1;
        return IndexOf(oString, TOVStringPlatform::ReverseFindOneOf(oString.GetString(), szCharSet));
    }

    static int ReverseFindNotOneOf(const TString& oString, const tUnit* szCharSet, int nStartPos)
    {
        TOV_ASSERT_AT(SOURCE, szCharSet != NULL);
        TOV_ASSERT_AT(SOURCE, nStartPos == 0);
        if (oString.GetString() == nullptr)
            return -1;
        return IndexOf(oString, TOVStringPlatform::ReverseFindNotOneOf(oString.GetString(), szCharSet));
    }

    // Cutting. Settled: all three measure against the capacity, not against the length.

    static TString Left(const TString& oString, int nCount)
    {
        if (nCount < 1)
            return TString();
        if (nCount >= oString.m_oData.GetSize())
            return oString;
        return CopyOf(oString.GetString(), nCount);
    }

    static TString Right(const TString& oString, int nCount)
    {
        if (nCount < 1)
            return TString();
        if (nCount >= oString.m_oData.GetSize())
            return oString;
        return CopyOf(oString.GetString() + (oString.m_oData.GetSize() - nCount), nCount);
    }

    static TString Mid(const TString& oString, int nFirst, int nCount)
    {
        if (nCount < 1)
            return TString();

        const int nSize = static_cast<int>(oString.m_oData.GetSize());
        nFirst = std::max(nFirst, 0);
        if (nFirst >= nSize)
            nCount = 0;
        else if (nCount >= nSize - nFirst)
            nCount = nSize - nFirst;
        if (nFirst == 0 && nCount == nSize)
            return oString;
        // Settled: a start at or behind the capacity is a fault. A copy of nothing raises it.
        return CopyOf(nCount > 0 ? oString.GetString() + nFirst : nullptr, nCount);
    }

    static TString Mid(const TString& oString, int nFirst)
    {
        const long long llCount = static_cast<long long>(oString.m_oData.GetSize()) - nFirst;
        return Mid(oString, nFirst, static_cast<int>(std::min<long long>(llCount, INT_MAX)));
    }

    // Prefix and suffix

    // Settled: a search, not a comparison of the first characters.
    static bool BeginsWith(const TString& oString, const TString& oOther)
    {
        return oString.Find(oOther.GetString()) == 0;
    }

    static bool BeginsWithNoCase(const TString& oString, const TString& oOther)
    {
        return BeginsWith(LoweredCopy(oString), LoweredCopy(oOther));
    }

    static bool EndsWith(const TString& oString, const TString& oOther)
    {
        return IsLastPosition(oString, oOther, oString.m_nStringLength - oOther.m_nStringLength);
    }

    static bool EndsWithNoCase(const TString& oString, const TString& oOther)
    {
        return IsLastPosition(LoweredCopy(oString), LoweredCopy(oOther),
                              oString.m_nStringLength - oOther.m_nStringLength);
    }

    // Comparing

    static int Compare(const TString& oString, const tUnit* szString)
    {
        return TOVStringPlatform::Compare(OrEmpty(oString.GetString()), OrEmpty(szString));
    }

    static int CompareNoCase(const TString& oString, const tUnit* szString)
    {
        return TOVStringPlatform::CompareNoCase(OrEmpty(oString.GetString()), OrEmpty(szString));
    }

    static int Collate(const TString& oString, const tUnit* szString)
    {
        return TOVStringPlatform::Collate(oString.GetString(), szString);
    }

    static int CollateNoCase(const TString& oString, const tUnit* szString)
    {
        return TOVStringPlatform::CollateNoCase(oString.GetString(), szString);
    }

    // Changing in place

    static void MakeLower(TString& oString)
    {
        if (tUnit* szString = oString.GetString())
            TOVStringPlatform::ToLower(szString);
    }

    static void MakeUpper(TString& oString)
    {
        if (tUnit* szString = oString.GetString())
            TOVStringPlatform::ToUpper(szString);
    }

    static void Reverse(TString& oString)
    {
        if (tUnit* szString = oString.GetString())
            TOVStringPlatform::Reverse(szString);
    }

    static int Replace(TString& oString, tUnit cOldChar, tUnit cNewChar)
    {
        // A char from 0x80 up is negative and refused like 0; of the unsigned wchar_t only 0 is.
        TOV_ASSERT_AT(SOURCE, cNewChar > 0);
        if (cOldChar == cNewChar)
            return 0;

        int nCount = 0;
        const tUnit* const pEnd = oString.GetString() + oString.m_nStringLength;
        for (tUnit* pUnit = oString.GetString(); pUnit < pEnd; pUnit = TOVStringPlatform::Inc(pUnit))
        {
            if (*pUnit == cOldChar)
            {
                *pUnit = cNewChar;
                ++nCount;
            }
        }
        return nCount;
    }

    static int Replace(TString& oString, const tUnit* szOld, const tUnit* szNew)
    {
        if (szOld == nullptr || *szOld == 0)
            return 0;
        if (tStore::IsOwnText(oString, szOld) || tStore::IsOwnText(oString, szNew))
        {
            // What is replaced, or put in its place, must not change under the replacement's own writes.
            TString oOld;
            TString oNew;
            oOld = szOld;
            oNew = szNew;
            return Replace(oString, oOld.GetString(), oNew.GetString());
        }

        const int nHits = CountHits(oString, szOld);
        if (nHits > 0)
            ReplaceHits(oString, szOld, OrEmpty(szNew), nHits);
        return nHits;
    }

    // Parts and numbers

    static int Split(const TString& oString, CTOVArray<TString>& oResult, char cSeparator)
    {
        if (IsElement(oResult, oString))
            return Split(TString(oString), oResult, cSeparator);

        oResult.RemoveAll();
        if (oString.m_nStringLength == 0)
            return 0;

        int nPosition = 0;
        for (int nHit; (nHit = oString.Find(static_cast<tUnit>(cSeparator), nPosition)) != -1; nPosition = nHit + 1)
            oResult.Add(oString.Mid(nPosition, nHit - nPosition));
        oResult.Add(oString.Mid(nPosition, oString.m_nStringLength - nPosition));
        return static_cast<int>(oResult.GetCount());
    }

    static long AsLong(const TString& oString, int nBase)
    {
        return oString.IsEmpty() ? 0 : TOVStringPlatform::ToLong(oString.GetString(), nullptr, nBase);
    }

    static unsigned long AsUlong(const TString& oString, int nBase)
    {
        return oString.IsEmpty() ? 0 : TOVStringPlatform::ToUlong(oString.GetString(), nullptr, nBase);
    }

    static double AsDouble(const TString& oString)
    {
        return oString.IsEmpty() ? 0.0 : TOVStringPlatform::ToDouble(oString.GetString(), nullptr);
    }

    static bool AsBool(const TString& oString)
    {
        static constexpr tUnit TRUE_TEXT[] = {'T', 'R', 'U', 'E', 0};
        switch (oString.m_nStringLength)
        {
        case 1:
            return *oString.GetString() == '1';
        case 4:
            return TOVStringPlatform::CompareNoCase(oString.GetString(), TRUE_TEXT) == 0;
        default:
            return false;
        }
    }

    // Formatting

    static int FormatV(TString& oString, const tUnit* szFormat, va_list pArguments)
    {
        const int nNumExpectedCharacters = TOVStringPlatform::VSCPrintf(szFormat, pArguments);
        TOV_ASSERT_AT(SOURCE, nNumExpectedCharacters != -1);

        std::optional<tBuffer> oOldText; // arguments may point into it until the print is done
        if (oString.m_oData.GetSize() <= nNumExpectedCharacters)
        {
            if (oString.m_oData.IsValid())
                oOldText.emplace(oString.m_oData);
            tStore::ReplaceBlock(oString, tStore::CheckedLength(nNumExpectedCharacters));
        }

        // The limit leaves out the terminator, which ReleaseBuffer writes.
        const int nNumCharacters =
            TOVStringPlatform::VSNPrintf(oString.GetString(), nNumExpectedCharacters, szFormat, pArguments);
        TOV_ASSERT_AT(SOURCE, nNumExpectedCharacters != -1);
        TOV_ASSERT_AT(SOURCE, nNumCharacters != -1);
        TOV_ASSERT_AT(SOURCE, nNumCharacters <= nNumExpectedCharacters);
        oString.ReleaseBuffer(nNumCharacters);
        return nNumCharacters;
    }

private:
    static const tUnit* OrEmpty(const tUnit* szString)
    {
        static constexpr tUnit EMPTY_TEXT[] = {0};
        return szString != nullptr ? szString : EMPTY_TEXT;
    }

    static int IndexOf(const TString& oString, const tUnit* szHit)
    {
        return szHit != nullptr ? static_cast<int>(szHit - oString.GetString()) : -1;
    }

    // A new string of nCount characters. Of none it throws "m_pArray.IsValid()", as there is no block to write into.
    static TString CopyOf(const tUnit* szFirst, int nCount)
    {
        TString oCopy;
        oCopy.AllocBuffer(nCount);
        oCopy.m_oData.SetElements(0, szFirst, nCount);
        return oCopy;
    }

    // Nothing lies behind the block that a search could look at. A string without a block is for NInc to refuse.
    static bool IsBehindBlock(const TString& oString, int nStartPos)
    {
        return oString.m_oData.IsValid() && nStartPos >= oString.m_oData.GetSize();
    }

    static bool IsElement(const CTOVArray<TString>& oArray, const TString& oString)
    {
        if (oArray.IsEmpty())
            return false;
        const std::less<const TString*> oBefore;
        return !oBefore(&oString, &oArray[0]) && !oBefore(&oArray[oArray.GetCount() - 1], &oString);
    }

    // A copy made through the text, so that lowering it does not reach the sharers of the original.
    static TString LoweredCopy(const TString& oString)
    {
        TString oCopy;
        oCopy = oString.GetString();
        oCopy.MakeLower();
        return oCopy;
    }

    // Whether the last position of oOther's text, hits overlapping and -1 for none, is the given one.
    static bool IsLastPosition(const TString& oString, const TString& oOther, int nPosition)
    {
        const tUnit* const szOther = oOther.GetString();
        const int nFirst = oString.Find(szOther);
        // Settled: a suffix one character longer than the string makes -1 on both sides, which counts as found.
        if (nFirst == -1 || nPosition < nFirst)
            return nFirst == nPosition;

        // Where units are characters, every hit is reached, and the walk can begin at the position itself.
        const tUnit* const szText = oString.GetString();
        const int nLast = TOVStringPlatform::Length(szText) - TOVStringPlatform::Length(szOther);
        const bool bUnits = nPosition <= nLast && TOVStringPlatform::NInc(szText, nPosition) == szText + nPosition;
        return LastPosition(oString, szOther, bUnits ? nPosition : 0, nLast) == nPosition;
    }

    // The last position that a walk from hit to hit reaches, none of which can be after nLast; -1 for none. Units in
    // front of nStart are characters. Settled: each search starts as many characters from the start of the text as the
    // hit before it has units in front of it, plus 1. Behind characters of more than one unit that leaves hits out.
    static int LastPosition(const TString& oString, const tUnit* szOther, int nStart, int nLast)
    {
        tUnit* const szText = const_cast<tUnit*>(oString.GetString());
        tUnit* szStart = szText + nStart;
        int nPosition = -1;
        while (nStart <= oString.m_nStringLength && szStart - szText <= nLast)
        {
            const int nHit = IndexOf(oString, TOVStringPlatform::FindString(szStart, szOther));
            if (nHit <= nPosition) // also where a step stays in front of a character that the terminator cuts off
                break;
            nPosition = nHit;
            szStart = TOVStringPlatform::NInc(szStart, nHit + 1 - nStart);
            nStart = nHit + 1;
        }
        return nPosition;
    }

    // The next hit that ends inside the text, NULL for none in this segment: behind it there is nothing to move.
    static tUnit* NextHit(tUnit* szSegment, const tUnit* pEnd, const tUnit* szOld, int nOldLength)
    {
        tUnit* szHit = TOVStringPlatform::FindString(szSegment, szOld);
        return szHit != nullptr && pEnd - szHit >= nOldLength ? szHit : nullptr;
    }

    // Zeros inside the text split it into segments; each is searched.
    static tUnit* NextSegment(tUnit* szSegment) { return szSegment + TOVStringPlatform::Length(szSegment) + 1; }

    // Settled: where a sharer of the block has written a longer text into it, hits that this string's length does not
    // cover are counted too. The check of the new length raises for them.
    static int CountHits(TString& oString, const tUnit* szOld)
    {
        const int nOldLength = TOVStringPlatform::Length(szOld);
        const tUnit* const pEnd = oString.GetString() + oString.m_nStringLength;
        int nHits = 0;
        for (tUnit* szSegment = oString.GetString(); szSegment < pEnd; szSegment = NextSegment(szSegment))
        {
            while (tUnit* szHit = TOVStringPlatform::FindString(szSegment, szOld))
            {
                szSegment = szHit + nOldLength;
                ++nHits;
            }
        }
        return nHits;
    }

    // Calls fnReplace for each hit that is replaced, front to back, and returns their number. Settled: segments whose
    // place in the new text is at nLimit or after it are not looked at.
    template<class TFunction>
    static int VisitHits(tUnit* szText, int nLength, const tUnit* szOld, int nDifference, int nLimit,
                         TFunction fnReplace)
    {
        const int nOldLength = TOVStringPlatform::Length(szOld);
        const tUnit* const pEnd = szText + nLength;
        int nHits = 0;
        for (tUnit* szSegment = szText; szSegment < pEnd && szSegment - szText + nHits * nDifference < nLimit;
             szSegment = NextSegment(szSegment))
        {
            while (tUnit* szHit = NextHit(szSegment, pEnd, szOld, nOldLength))
            {
                szSegment = szHit + nOldLength;
                fnReplace(szHit);
                ++nHits;
            }
        }
        return nHits;
    }

    static void ReplaceHits(TString& oString, const tUnit* szOld, const tUnit* szNew, int nHits)
    {
        const int nOldLength = TOVStringPlatform::Length(szOld);
        const int nReplacementLength = TOVStringPlatform::Length(szNew);
        const int nDifference = nReplacementLength - nOldLength;
        const int nTextLength = oString.m_nStringLength;
        const int nNewLength = tStore::CheckedLength(static_cast<long long>(nDifference) * nHits + nTextLength);
        if (oString.m_oData.GetSize() < nNewLength + 1)
        {
            oString.m_oData.Resize(nNewLength + 1, true);
            oString.GetString()[nNewLength] = 0;
            oString.m_nStringLength = nNewLength;
        }

        // A text that grows is first moved to where it will end, so that what is written never overtakes what is read.
        // Settled: in a block that did not grow, segments are looked for up to the old length only.
        tUnit* const szText = oString.GetString();
        const int nLimit = oString.m_nStringLength;
        tUnit* szSource = szText;
        if (nDifference > 0)
        {
            szSource += nDifference * VisitHits(szText, nTextLength, szOld, nDifference, nLimit, [](const tUnit*) {});
            Move(szSource, szText, nTextLength);
        }

        tUnit* pWritten = szText;
        const tUnit* pRead = szSource;
        const int nReplaced = VisitHits(szSource, nTextLength, szOld, nDifference, nLimit, [&](const tUnit* szHit) {
            pWritten = Append(pWritten, pRead, szHit);
            pWritten = Append(pWritten, szNew, szNew + nReplacementLength);
            pRead = szHit + nOldLength;
        });
        pWritten = Append(pWritten, pRead, szSource + nTextLength);
        if (nReplaced > 0)
            *pWritten = 0;
        if (nDifference < 0)
            EndShrunkText(szText + nTextLength, -nDifference, nReplaced);

        TOV_ASSERT_TEXT_AT(SOURCE, szText[nNewLength] == 0, "GetData()->GetBuffer()[nNewLength] == '\\0'");
        oString.m_nStringLength = nNewLength;
    }

    // Copies the units and returns the place after the copies.
    static tUnit* Append(tUnit* pDestination, const tUnit* pBegin, const tUnit* pEnd)
    {
        const int nCount = static_cast<int>(pEnd - pBegin);
        Move(pDestination, pBegin, nCount);
        return pDestination + nCount;
    }

    // Settled: each replacement moves the rest of the text and ends it anew, and what it leaves after the text can be
    // seen through sharers of the block and by Left: a terminator for each, and between two of them the text's last
    // units again.
    static void EndShrunkText(tUnit* pOldEnd, int nShrinkage, int nReplaced)
    {
        for (int nMove = 1; nMove <= nReplaced; ++nMove)
        {
            tUnit* const pEnd = pOldEnd - nMove * nShrinkage;
            *pEnd = 0;
            Move(pEnd + 1, pOldEnd - nShrinkage + 1, nShrinkage - 1);
        }
    }

    static void Move(tUnit* pDestination, const tUnit* pSource, int nCount)
    {
        if (nCount > 0)
            TOVPlatform::TOVMemory::Move(pDestination, pSource, nCount * sizeof(tUnit));
    }
};
