// The operations of a string against a simple model of it, on a few strings that share blocks.
#include "Fuzz.h"
#include "StringModel.h"

#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <array>

namespace
{
constexpr int NUM_STRINGS = 4;
constexpr int MAX_TEXT = 40;
constexpr int MAX_LENGTH = 400;

template<class tString, class tUnit> class CStringGame
{
public:
    typedef CStringModel<tUnit> tModel;
    typedef std::vector<tUnit> tText;

    explicit CStringGame(Fuzz::CInput& oInput) : m_oInput(oInput) {}

    void Play()
    {
        while (!m_oInput.IsAtEnd())
        {
            Step();
            CompareAll();
        }
    }

private:
    // A byte becomes a unit of either width.
    static tUnit Unit(int nByte)
    {
        return static_cast<tUnit>(sizeof(tUnit) > 1 && nByte >= 0x80 ? nByte << 8 | nByte : nByte);
    }

    tText TextOf(const std::string& sBytes)
    {
        tText aText;
        for (const char cByte : sBytes)
            aText.push_back(Unit(static_cast<unsigned char>(cByte)));
        return aText;
    }

    tText Bytes(int nMost = MAX_TEXT) { return TextOf(m_oInput.Bytes(nMost)); }
    tText Text(int nMost = MAX_TEXT) { return TextOf(m_oInput.Text(nMost)); }

    // A text as an argument: with a terminator, in memory of its own.
    static tText Ended(tText aText)
    {
        aText.push_back(0);
        return aText;
    }

    void Step()
    {
        const int nString = m_oInput.Below(NUM_STRINGS);
        tString& oString = m_aStrings[nString];
        tModel& oModel = m_aModels[nString];
        const int nOther = m_oInput.Below(NUM_STRINGS);
        const int nKind = m_oInput.Below(4);
        if (nKind == 0)
            Assign(oString, oModel, nOther);
        else if (nKind == 1)
            Change(oString, oModel, nOther);
        else if (nKind == 2)
            Search(oString, oModel, nOther);
        else
            Cut(oString, oModel, nOther);
    }

    void Assign(tString& oString, tModel& oModel, int nOther)
    {
        const tString& oOther = m_aStrings[nOther];
        const tModel& oOtherModel = m_aModels[nOther];
        switch (m_oInput.Below(10))
        {
        case 0:
        {
            const tText aText = Text();
            oString = Ended(aText).data();
            oModel.Assign(aText);
            break;
        }
        case 1:
            oModel.Share(oOtherModel);
            oString = oOther;
            break;
        case 2:
        {
            const tUnit cUnit = Unit(m_oInput.Byte());
            oString = cUnit;
            oModel.Assign(cUnit != 0 ? tText{cUnit} : tText());
            break;
        }
        case 3:
        {
            const tText aText = Bytes();
            const int nLength = static_cast<int>(aText.size()) - (m_oInput.Below(8) == 0 ? 100 : 0);
            FUZZ_EXPECT_EQ(nLength <= 0, Fuzz::FailsCheck([&] { oString.Copy(Ended(aText).data(), nLength); }));
            if (nLength > 0)
                oModel.MakeNew(aText);
            break;
        }
        case 4:
            oString.Empty();
            oModel.Empty();
            break;
        case 5:
            AssignCopy(oString, oModel);
            break;
        case 6:
        {
            const tText aFirst = Bytes();
            const tText aSecond = Bytes();
            oString.ConcatCopy(static_cast<int>(aFirst.size()), Ended(aFirst).data(), static_cast<int>(aSecond.size()),
                               Ended(aSecond).data());
            tText aBoth = aFirst;
            aBoth.insert(aBoth.end(), aSecond.begin(), aSecond.end());
            if (!aBoth.empty())
                oModel.MakeNew(aBoth);
            break;
        }
        case 7:
            UseBuffer(oString, oModel);
            break;
        case 8:
        {
            // The text is a part of the string's own, or of one that shares the block.
            if (oOtherModel.pBlock == nullptr)
                break;
            const int nStart = m_oInput.Below(static_cast<int>(oOtherModel.GetText().size()) + 1);
            const tText aText = oOtherModel.GetText(nStart);
            oString = oOther.GetString() + nStart;
            oModel.Assign(aText);
            break;
        }
        default:
        {
            // A new string shares the block, unless there is none.
            const tString oCopy(oOther);
            const tModel oCopyModel(oOtherModel);
            oString = tString();
            oString = oCopy;
            oModel = oCopyModel;
        }
        }
    }

    void AssignCopy(tString& oString, tModel& oModel)
    {
        const tText aText = Bytes();
        const int nLength = m_oInput.Below(8) == 0 ? -1 : static_cast<int>(aText.size());
        FUZZ_EXPECT_EQ(nLength < 0, Fuzz::FailsCheck([&] { oString.AssignCopy(nLength, Ended(aText).data()); }));
        if (nLength > 0)
            oModel.MakeNew(aText);
        if (nLength != 0)
            return;
        oModel.nLength = 0;
        oModel.Terminate();
    }

    void UseBuffer(tString& oString, tModel& oModel)
    {
        const tText aText = Bytes();
        const int nRoom = static_cast<int>(aText.size());
        tUnit* const pBuffer = oString.GetBuffer(nRoom);
        if (oModel.GetCapacity() <= nRoom)
        {
            const int nLength = oModel.nLength;
            oModel.MakeNew(aText);
            // The length stays until ReleaseBuffer, even where the new block is shorter; it is never that here.
            oModel.nLength = nLength;
        }
        std::copy(aText.begin(), aText.end(), pBuffer);
        std::copy(aText.begin(), aText.end(), oModel.pBlock->begin());

        const int nLast = oModel.GetCapacity() + 1;
        const int nNewLength = m_oInput.Below(nLast + 3) - 2;
        FUZZ_EXPECT_EQ(nNewLength == -2 || nNewLength == nLast,
                       Fuzz::FailsCheck([&] { oString.ReleaseBuffer(nNewLength); }));
        if (nNewLength == -2 || nNewLength == nLast)
        {
            oString.ReleaseBuffer(0);
            oModel.nLength = 0;
        }
        else
        {
            oModel.nLength = nNewLength == -1 ? static_cast<int>(oModel.GetText().size()) : nNewLength;
        }
        oModel.Terminate();
    }

    void Change(tString& oString, tModel& oModel, int nOther)
    {
        const tModel oOtherModel = m_aModels[nOther];
        switch (m_oInput.Below(10))
        {
        case 0:
        {
            const tUnit cUnit = Unit(m_oInput.Byte());
            oString += cUnit;
            oModel.Append({cUnit});
            break;
        }
        case 1:
        {
            const tText aText = Text();
            oString += Ended(aText).data();
            oModel.Append(aText);
            break;
        }
        case 2:
            if (oModel.nLength + oOtherModel.nLength > MAX_LENGTH)
                break;
            oString += m_aStrings[nOther];
            if (oOtherModel.pBlock != nullptr)
                oModel.Append(tText(oOtherModel.pBlock->begin(), oOtherModel.pBlock->begin() + oOtherModel.nLength));
            break;
        case 3:
        {
            const tText aText = Bytes();
            const int nLength = m_oInput.Below(8) == 0 ? -1 : static_cast<int>(aText.size());
            FUZZ_EXPECT_EQ(nLength < 0, Fuzz::FailsCheck([&] { oString.ConcatInPlace(nLength, Ended(aText).data()); }));
            if (nLength > 0)
                oModel.Append(aText);
            break;
        }
        case 4:
        {
            const int nIndex = m_oInput.Number();
            const int nUnit = m_oInput.Byte() * 0x101;
            const bool bFails = nIndex < 0 || nIndex >= oModel.nLength;
            FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { oString.SetAt(nIndex, nUnit); }));
            if (!bFails)
                (*oModel.pBlock)[nIndex] = static_cast<tUnit>(nUnit);
            break;
        }
        case 5:
            oString.MakeLower();
            ChangeText(oModel, [](tText& aText) { aText = tModel::Lower(aText); });
            break;
        case 6:
            oString.MakeUpper();
            ChangeText(oModel, [](tText& aText) {
                for (tUnit& cUnit : aText)
                    cUnit = tModel::Upper(cUnit);
            });
            break;
        case 7:
            oString.Reverse();
            ChangeText(oModel, [](tText& aText) { std::reverse(aText.begin(), aText.end()); });
            break;
        case 8:
            ReplaceUnits(oString, oModel);
            break;
        default:
            ReplaceText(oString, oModel);
        }
        // Otherwise a few bytes of input would make texts of any length.
        if (oModel.nLength > MAX_LENGTH)
        {
            oString = tString();
            oModel = tModel();
        }
    }

    template<class TChange> static void ChangeText(tModel& oModel, TChange fnChange)
    {
        tText aText = oModel.GetText();
        fnChange(aText);
        if (oModel.pBlock != nullptr)
            std::copy(aText.begin(), aText.end(), oModel.pBlock->begin());
    }

    void ReplaceUnits(tString& oString, tModel& oModel)
    {
        const tUnit cOld = Unit(m_oInput.Byte());
        const tUnit cNew = Unit(m_oInput.Byte());
        int nCount = 0;
        const bool bFails = !(cNew > 0);
        FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { nCount = oString.Replace(cOld, cNew); }));
        if (bFails || cOld == cNew || oModel.pBlock == nullptr)
        {
            FUZZ_EXPECT_EQ(0, nCount);
            return;
        }
        const auto pEnd = oModel.pBlock->begin() + oModel.nLength;
        FUZZ_EXPECT_EQ(std::count(oModel.pBlock->begin(), pEnd, cOld), nCount);
        std::replace(oModel.pBlock->begin(), pEnd, cOld, cNew);
    }

    void ReplaceText(tString& oString, tModel& oModel)
    {
        const tText aOld = Text(4);
        const tText aNew = Text(8);
        const bool bRegular = oModel.IsRegular() && oModel.nLength < oModel.GetCapacity();
        const tUnit* const pBefore = oString.GetString();
        int nHits = 0;
        const bool bFails = Fuzz::FailsCheck([&] { nHits = oString.Replace(Ended(aOld).data(), Ended(aNew).data()); });
        if (bRegular)
        {
            FUZZ_EXPECT(!bFails);
            FUZZ_EXPECT_EQ(oModel.Replace(aOld, aNew), nHits);
            FUZZ_EXPECT_EQ(oModel.nLength, oString.GetLength());
            FUZZ_EXPECT_EQ(oModel.GetCapacity(), oString.GetData()->GetSize());
            FUZZ_EXPECT_EQ(oModel.GetText(), TextOf(oString, oModel.nLength));
        }
        TakeOver(oString, oModel, pBefore);
    }

    static tText TextOf(const tString& oString, int nLength)
    {
        const tUnit* const pText = oString.GetString();
        return pText != nullptr ? tText(pText, pText + nLength) : tText();
    }

    // Makes the model what the string is, where the header leaves that open.
    static void TakeOver(const tString& oString, tModel& oModel, const tUnit* pBefore)
    {
        const tText aBlock = TextOf(oString, static_cast<int>(oString.GetData()->GetSize()) + 1);
        oModel.nLength = static_cast<int>(oString.GetLength());
        if (oString.GetString() != pBefore)
            oModel.pBlock = std::make_shared<tText>(aBlock);
        else if (oModel.pBlock != nullptr)
            *oModel.pBlock = aBlock;
    }

    void Search(const tString& oString, const tModel& oModel, int nOther)
    {
        switch (m_oInput.Below(8))
        {
        case 0:
        {
            const tUnit cUnit = Unit(m_oInput.Byte());
            const int nStart = m_oInput.Number();
            Expect(
                nStart < 0 || cUnit == 0, [&] { return oString.Find(cUnit, nStart); },
                [&] { return oModel.Find(cUnit, nStart); });
            break;
        }
        case 1:
        {
            const tText aText = Text(6);
            const int nStart = m_oInput.Number();
            Expect(
                nStart < 0, [&] { return oString.Find(Ended(aText).data(), nStart); },
                [&] { return oModel.Find(aText, nStart); });
            break;
        }
        case 2:
        {
            const tUnit cUnit = Unit(m_oInput.Byte());
            FUZZ_EXPECT_EQ(oModel.FindLast(cUnit), oString.ReverseFind(cUnit));
            break;
        }
        case 3:
            FindInSet(oString, oModel);
            break;
        case 4:
        {
            const tText aSet = Text(6);
            const int nStart = m_oInput.Below(8) / 7;
            Expect(
                nStart != 0, [&] { return oString.ReverseFindOneOf(Ended(aSet).data(), nStart); },
                [&] { return oModel.FindLastInSet(aSet, true); });
            Expect(
                nStart != 0, [&] { return oString.ReverseFindNotOneOf(Ended(aSet).data(), nStart); },
                [&] { return oModel.FindLastInSet(aSet, false); });
            break;
        }
        case 5:
        {
            const int nIndex = m_oInput.Number();
            Expect(
                nIndex < 0 || nIndex >= oModel.nLength, [&] { return oString.GetAt(nIndex); },
                [&] { return static_cast<int>(static_cast<std::make_unsigned_t<tUnit>>((*oModel.pBlock)[nIndex])); });
            break;
        }
        case 6:
            CompareTexts(oString, oModel, nOther);
            break;
        default:
            CompareEnds(oString, oModel, nOther);
        }
    }

    // Expects the value of the model, or a failed check.
    template<class TActual, class TExpected> static void Expect(bool bFails, TActual fnActual, TExpected fnExpected)
    {
        auto oActual = decltype(fnActual())();
        FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { oActual = fnActual(); }));
        if (!bFails)
            FUZZ_EXPECT_EQ(fnExpected(), oActual);
    }

    void FindInSet(const tString& oString, const tModel& oModel)
    {
        const tText aSet = Text(6);
        const int nStart = m_oInput.Number();
        const bool bFails = oModel.pBlock == nullptr || nStart < 0;
        Expect(
            bFails, [&] { return oString.FindOneOf(Ended(aSet).data(), nStart); },
            [&] { return oModel.FindInSet(aSet, nStart, true); });
        Expect(
            bFails, [&] { return oString.FindNotOneOf(Ended(aSet).data(), nStart); },
            [&] { return oModel.FindInSet(aSet, nStart, false); });
    }

    static int SignOf(int nValue) { return static_cast<int>(nValue > 0) - static_cast<int>(nValue < 0); }

    void CompareTexts(const tString& oString, const tModel& oModel, int nOther)
    {
        const tUnit* const szOther = m_aStrings[nOther].GetString();
        const tText aText = oModel.GetText();
        const tText aOther = m_aModels[nOther].GetText();
        const int nOrder = tModel::Compare(aText, aOther);
        const int nOrderNoCase = tModel::Compare(tModel::Lower(aText), tModel::Lower(aOther));
        FUZZ_EXPECT_EQ(nOrder, oString.Compare(szOther));
        FUZZ_EXPECT_EQ(nOrder == 0, oString == m_aStrings[nOther]);
        FUZZ_EXPECT_EQ(nOrder < 0, oString < m_aStrings[nOther]);
        FUZZ_EXPECT_EQ(nOrderNoCase, SignOf(oString.CompareNoCase(szOther)));

        const bool bFails = oModel.pBlock == nullptr || szOther == nullptr;
        int nCollated = 0;
        int nCollatedNoCase = 0;
        FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { nCollated = oString.Collate(szOther); }));
        FUZZ_EXPECT_EQ(bFails, Fuzz::FailsCheck([&] { nCollatedNoCase = oString.CollateNoCase(szOther); }));
        if (bFails)
            return;
        FUZZ_EXPECT_EQ(nOrder, SignOf(nCollated));
        FUZZ_EXPECT_EQ(nOrderNoCase, SignOf(nCollatedNoCase));
    }

    void CompareEnds(const tString& oString, const tModel& oModel, int nOther)
    {
        const tString& oOther = m_aStrings[nOther];
        const tModel& oOtherModel = m_aModels[nOther];
        const bool bNoBlock = oOtherModel.pBlock == nullptr;
        const bool bNoText = oOtherModel.GetText().empty();
        bool bBegins = false;
        bool bBeginsNoCase = false;
        bool bEnds = false;
        bool bEndsNoCase = false;
        FUZZ_EXPECT_EQ(bNoBlock, Fuzz::FailsCheck([&] { bBegins = oString.BeginsWith(oOther); }));
        FUZZ_EXPECT_EQ(bNoBlock, Fuzz::FailsCheck([&] { bEnds = oString.EndsWith(oOther); }));
        FUZZ_EXPECT_EQ(bNoText, Fuzz::FailsCheck([&] { bBeginsNoCase = oString.BeginsWithNoCase(oOther); }));
        FUZZ_EXPECT_EQ(bNoText, Fuzz::FailsCheck([&] { bEndsNoCase = oString.EndsWithNoCase(oOther); }));
        // Where zeros divide a text, the header does not tell which of its ends counts.
        if (bNoText || !oModel.IsRegular() || !oOtherModel.IsRegular())
            return;
        const tText aText = oModel.GetText();
        const tText aOther = oOtherModel.GetText();
        FUZZ_EXPECT_EQ(IsPrefix(aText, aOther), bBegins);
        FUZZ_EXPECT_EQ(IsPrefix(tModel::Lower(aText), tModel::Lower(aOther)), bBeginsNoCase);
        FUZZ_EXPECT_EQ(IsSuffix(aText, aOther), bEnds);
        FUZZ_EXPECT_EQ(IsSuffix(tModel::Lower(aText), tModel::Lower(aOther)), bEndsNoCase);
    }

    static bool IsPrefix(const tText& aText, const tText& aPrefix)
    {
        return aText.size() >= aPrefix.size() && std::equal(aPrefix.begin(), aPrefix.end(), aText.begin());
    }

    static bool IsSuffix(const tText& aText, const tText& aSuffix)
    {
        if (aSuffix.size() == aText.size() + 1)
            return true;
        return aText.size() >= aSuffix.size() && std::equal(aSuffix.rbegin(), aSuffix.rend(), aText.rbegin());
    }

    void Cut(tString& oString, tModel& oModel, int nOther)
    {
        const tString& oOther = m_aStrings[nOther];
        const tModel oOtherModel = m_aModels[nOther];
        const long long llCapacity = oOtherModel.GetCapacity();
        const int nKind = m_oInput.Below(5);
        const int nFirst = m_oInput.Number();
        const int nCount = m_oInput.Number();
        tString oPart;
        tModel oPartModel;
        bool bFails = false;
        if (nKind == 0)
            bFails = Fuzz::FailsCheck([&] { oPart = oOther.Left(nCount); }) == oOtherModel.Mid(0, nCount, oPartModel);
        else if (nKind == 1)
            bFails = Fuzz::FailsCheck([&] { oPart = oOther.Right(nCount); }) ==
                     oOtherModel.Mid(llCapacity - nCount, nCount, oPartModel);
        else if (nKind == 2)
            bFails = Fuzz::FailsCheck([&] { oPart = oOther.Mid(nFirst, nCount); }) ==
                     oOtherModel.Mid(nFirst, nCount, oPartModel);
        else if (nKind == 3)
            bFails = Fuzz::FailsCheck([&] { oPart = oOther.Mid(nFirst); }) ==
                     oOtherModel.Mid(nFirst, llCapacity - nFirst, oPartModel);
        else
            return Split(oOther, oOtherModel);
        FUZZ_EXPECT(!bFails);
        // Assigning a part without a block to a string with one shares nothing.
        oModel.Share(oPartModel);
        oString = oPart;
    }

    void Split(const tString& oString, const tModel& oModel)
    {
        const char cSeparator = static_cast<char>(m_oInput.Byte());
        CTOVArray<tString> aParts;
        int nParts = 0;
        const bool bFails = Fuzz::FailsCheck([&] { nParts = oString.Split(aParts, cSeparator); });
        FUZZ_EXPECT_EQ(cSeparator == 0 && oModel.nLength > 0, bFails);
        FUZZ_EXPECT_EQ(static_cast<long>(nParts), aParts.GetSize());
        if (bFails || !oModel.IsRegular())
            return;
        const tText aText = oModel.GetText();
        std::vector<tText> aExpected(aText.empty() ? 0 : 1);
        for (const tUnit cUnit : aText)
        {
            if (cUnit == static_cast<tUnit>(cSeparator))
                aExpected.emplace_back();
            else
                aExpected.back().push_back(cUnit);
        }
        FUZZ_EXPECT_EQ(static_cast<long>(aExpected.size()), aParts.GetSize());
        for (long lPart = 0; lPart < aParts.GetSize(); ++lPart)
            FUZZ_EXPECT_EQ(aExpected[lPart], TextOf(aParts[lPart], static_cast<int>(aParts[lPart].GetLength())));
    }

    void CompareAll()
    {
        for (int nString = 0; nString < NUM_STRINGS; ++nString)
        {
            const tString& oString = m_aStrings[nString];
            const tModel& oModel = m_aModels[nString];
            FUZZ_EXPECT_EQ(oModel.nLength, oString.GetLength());
            FUZZ_EXPECT_EQ(oModel.GetCapacity(), oString.GetData()->GetSize());
            FUZZ_EXPECT_EQ(oModel.pBlock == nullptr, oString.GetString() == nullptr);
            if (oModel.pBlock != nullptr)
                FUZZ_EXPECT_EQ(*oModel.pBlock, TextOf(oString, oModel.GetCapacity() + 1));
            for (int nOther = 0; nOther < nString && oModel.pBlock != nullptr; ++nOther)
                FUZZ_EXPECT_EQ(oModel.pBlock == m_aModels[nOther].pBlock,
                               oString.GetString() == m_aStrings[nOther].GetString());
        }
    }

    Fuzz::CInput& m_oInput;
    std::array<tString, NUM_STRINGS> m_aStrings;
    std::array<tModel, NUM_STRINGS> m_aModels;
};
} // namespace

FUZZ_TARGET(NarrowStrings)
{
    CStringGame<CTOVStringA, char>(oInput).Play();
}

FUZZ_TARGET(WideStrings)
{
    CStringGame<CTOVStringW, wchar_t>(oInput).Play();
}
