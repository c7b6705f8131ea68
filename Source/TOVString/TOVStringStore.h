// Internal: the store of a string, written once for CTOVStringA and CTOVStringW.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVMemory.h>
#include <TOVPlatform/TOVString.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <climits>
#include <cstddef>
#include <functional>
#include <optional>

// The platform's text functions for both widths: the type of the text picks the function.
namespace TOVStringPlatform
{
using namespace TOVPlatform::TOVStringA;
using namespace TOVPlatform::TOVStringW;
} // namespace TOVStringPlatform

// What tells the two classes apart for the shared code: their unit, and the source that their checks report.
template<class TString> struct sTOVStringTraits;

template<> struct sTOVStringTraits<CTOVStringA>
{
    typedef char tUnit;
    static constexpr const char* SOURCE = "TOVString/TOVStringA";
};

template<> struct sTOVStringTraits<CTOVStringW>
{
    typedef wchar_t tUnit;
    static constexpr const char* SOURCE = "TOVString/TOVStringW";
};

// The bodies of the members of the same names. The contracts stand in the two classes.
template<class TString> class CTOVStringStore
{
public:
    typedef typename sTOVStringTraits<TString>::tUnit tUnit;
    typedef CTOVBuffer<tUnit> tBuffer;
    static constexpr const char* SOURCE = sTOVStringTraits<TString>::SOURCE;

    static int GetSafeStringLength(const tUnit* szString)
    {
        return szString != nullptr ? TOVStringPlatform::Length(szString) : 0;
    }

    static void Fill(TString& oString, tUnit cChar, int nCount)
    {
        if (nCount <= 0)
            return;
        oString.AllocBuffer(nCount);
        // Settled: the count is one of bytes for both widths.
        TOVPlatform::TOVMemory::Set(oString.GetString(), cChar, nCount);
    }

    // Fills an empty string from one of the other width, without any code page.
    template<class TOther> static void Convert(TString& oString, const TOther& oOther)
    {
        if (oOther.IsEmpty())
            return;
        const int nLength = static_cast<int>(oOther.GetLength());
        oString.AllocBuffer(nLength);
        for (int i = 0; i < nLength; ++i)
            oString.GetString()[i] = static_cast<tUnit>(oOther.GetAt(i));
    }

    // The store of a copy. Settled: a string without a block has a holder of its own.
    static tBuffer ShareBlock(const TString& oString)
    {
        return oString.m_oData.IsValid() ? tBuffer(oString.m_oData) : tBuffer();
    }

    static void Share(TString& oString, const TString& oOther)
    {
        // Settled: lengths that differ on one block survive an assignment.
        if (oString.m_oData.GetBuffer() == oOther.m_oData.GetBuffer())
            return;
        oString.m_oData = oOther.m_oData;
        oString.m_nStringLength = oOther.m_nStringLength;
    }

    static void AssignText(TString& oString, const tUnit* szString)
    {
        if (const int nLength = GetSafeStringLength(szString))
            oString.AssignCopy(nLength, szString);
        else
            oString.Empty();
    }

    static void AssignCharacter(TString& oString, tUnit cChar)
    {
        const tUnit szText[] = {cChar, 0};
        AssignText(oString, szText);
    }

    static void Empty(TString& oString)
    {
        if (oString.m_nStringLength == 0)
            return;
        oString.m_oData.Zero();
        oString.Init();
    }

    static void Copy(TString& oString, const tUnit* szSrcString, int nStringLength)
    {
        TOV_ASSERT_AT(SOURCE, szSrcString != NULL);
        TOV_ASSERT_AT(SOURCE, nStringLength > 0);
        oString.AssignCopy(nStringLength, szSrcString);
    }

    static void AllocBuffer(TString& oString, int nLength)
    {
        if (CheckedLength(nLength) > 0)
            ReplaceBlock(oString, nLength);
        oString.m_nStringLength = nLength;
    }

    static void AssignCopy(TString& oString, int nLength, const tUnit* szString)
    {
        if (CheckedLength(nLength) > 0)
        {
            const tKeptBlock oKept = KeepOwnText(oString, szString);
            oString.m_oData.Resize(nLength + 1, false);
            // An empty text, should the source be refused.
            oString.Init();
            Terminate(oString, 0);
            oString.m_oData.SetElements(0, szString, nLength);
        }
        oString.m_nStringLength = nLength;
        Terminate(oString, nLength);
    }

    static void ConcatCopy(TString& oString, int nLength1, const tUnit* sz1, int nLength2, const tUnit* sz2)
    {
        const long long llSum = static_cast<long long>(nLength1) + nLength2;
        if (llSum == 0)
            return;
        const tKeptBlock oKept1 = KeepOwnText(oString, sz1);
        const tKeptBlock oKept2 = KeepOwnText(oString, sz2);
        oString.AllocBuffer(CheckedLength(llSum));
        if (nLength1 > 0)
            oString.m_oData.SetElements(0, sz1, nLength1);
        if (CheckedLength(nLength2) > 0)
            oString.m_oData.SetElements(nLength1, sz2, nLength2);
    }

    static void ConcatInPlace(TString& oString, int nLength, const tUnit* szString)
    {
        if (CheckedLength(nLength) == 0)
            return;
        const int nOldLength = oString.m_nStringLength;
        const int nNewLength = CheckedLength(static_cast<long long>(nOldLength) + nLength);
        if (oString.m_oData.GetSize() < nNewLength + 1)
        {
            // A source inside the own text moves with it.
            const bool bOwnText = IsOwnText(oString, szString);
            const std::ptrdiff_t nOffset = bOwnText ? szString - oString.GetString() : 0;
            oString.m_oData.Resize(nNewLength + 1, true);
            if (bOwnText)
                szString = oString.GetString() + nOffset;
        }
        oString.m_oData.SetElements(nOldLength, szString, nLength);
        oString.m_nStringLength = nNewLength;
        TOV_ASSERT_TEXT_AT(SOURCE, oString.m_nStringLength <= oString.m_oData.GetSize(),
                           "m_nStringLength <= m_oData.GetSize()");
        Terminate(oString, nNewLength);
    }

    static tUnit* GetBuffer(TString& oString, int nLength)
    {
        // Settled: growing loses the text, and the length keeps its old value until ReleaseBuffer.
        if (oString.m_oData.GetSize() <= nLength)
            ReplaceBlock(oString, CheckedLength(nLength));
        return oString.GetString();
    }

    static void ReleaseBuffer(TString& oString, int nNewLength)
    {
        if (nNewLength == -1)
            nNewLength = TOVStringPlatform::Length(oString.GetString());
        // Settled: a length equal to the size passes; its terminator lands in the hidden element behind the block.
        TOV_ASSERT_TEXT_AT(SOURCE, nNewLength <= oString.m_oData.GetSize(), "nNewLength <= m_oData.GetSize()");
        oString.m_nStringLength = CheckedLength(nNewLength);
        Terminate(oString, nNewLength);
    }

    // Fresh room for nLength characters, ended there. What a sharer holds is not copied for it, as nothing is kept.
    static void ReplaceBlock(TString& oString, int nLength)
    {
        oString.m_oData.Resize(nLength + 1, false);
        Terminate(oString, nLength);
    }

    // The one range of lengths. Sums come in wider, so that none wraps round on its way here.
    static int CheckedLength(long long nLength)
    {
        TOV_ASSERT_AT(SOURCE, nLength >= 0);
        TOV_ASSERT_AT(SOURCE, nLength <= INT_MAX-1);
        return static_cast<int>(nLength);
    }

    // True for a text that lies inside the string's own block.
    static bool IsOwnText(const TString& oString, const tUnit* szText)
    {
        const tUnit* pBlock = oString.GetString();
        const std::less<const tUnit*> oBefore;
        return pBlock != nullptr && !oBefore(szText, pBlock) && !oBefore(pBlock + oString.m_oData.GetSize(), szText);
    }

private:
    typedef std::optional<tBuffer> tKeptBlock;

    // Keeps the string's block alive while a text inside it is the source of what takes its place.
    static tKeptBlock KeepOwnText(const TString& oString, const tUnit* szText)
    {
        return IsOwnText(oString, szText) ? tKeptBlock(oString.m_oData) : std::nullopt;
    }

    // A string without a block has no place for a terminator and needs none.
    static void Terminate(TString& oString, int nLength)
    {
        if (tUnit* pBlock = oString.GetString())
            pBlock[nLength] = 0;
    }
};
