// Calls of the members of both string classes.
#include "RandomCalls.h"
#include "Width.h"

#include <climits>

namespace
{
// The text, its capacity, and whether it ends where its length says.
template<class tString> std::string ShowString(const tString& oString)
{
    const int nLength = static_cast<int>(oString.GetLength());
    if (oString.GetString() == nullptr)
        return "no block " + Show(nLength);
    return ShowUnits(oString.GetString(), nLength) + ' ' + Show(oString.GetData()->GetSize()) +
           (nLength >= oString.GetData()->GetSize() || oString.GetString()[nLength] == 0 ? "" : " unended");
}

template<class TWidth> struct sStringCalls
{
    typedef typename TWidth::tUnit tUnit;
    typedef typename TWidth::tString tString;
    typedef CSampleText<tUnit> tText;

    CRandomSource& m_oRandom;
    tText m_oText;
    tString m_oString;
    tText m_oPart;
    tUnit m_cUnit1;
    tUnit m_cUnit2;
    int m_nNumber1;
    int m_nNumber2;

    explicit sStringCalls(CRandomSource& oRandom)
        : m_oRandom(oRandom), m_oText(MakeText<tUnit>(oRandom)), m_oString(m_oText.Get()),
          m_oPart(MakePart(oRandom, m_oText))
    {
        // Apart from the others, as these are made in a fixed order.
        m_cUnit1 = AnyUnit();
        m_cUnit2 = AnyUnit();
        m_nNumber1 = AnyPlace();
        m_nNumber2 = AnyPlace();
    }

    tUnit AnyUnit()
    {
        const int nPlace = m_oRandom.Below(m_oText.GetLength() + 2);
        return nPlace < m_oText.GetLength() ? m_oText.Get()[nPlace]
                                            : static_cast<tUnit>(m_oRandom.Below(sizeof(tUnit) == 1 ? 0x100 : 0x10000));
    }

    int AnyPlace()
    {
        static constexpr int FAR[] = {INT_MAX, INT_MIN, 1000};
        return m_oRandom.Once(40) ? m_oRandom.OneOf(FAR) : m_oRandom.Between(-2, m_oText.GetLength() + 3);
    }

    template<class TCall, class... TArguments>
    std::string Line(const char* szName, TCall fnCall, const TArguments&... oArguments)
    {
        return CallLine(std::string(TWidth::PREFIX) + "String." + szName, ShowAll(m_oText, oArguments...), fnCall);
    }

    // A member that changes the string.
    template<class TCall, class... TArguments>
    std::string Changed(const char* szName, TCall fnCall, const TArguments&... oArguments)
    {
        const auto fnShow = [&]() -> std::string {
            fnCall();
            return ShowString(m_oString);
        };
        return Line(szName, fnShow, oArguments...);
    }

    std::string Make()
    {
        switch (m_oRandom.Below(5))
        {
        case 0:
            return Line("String", [&] { return ShowString(tString(m_oText.Get())); });
        case 1:
            // Of a wide string, the first half holds each byte twice, and nothing is said about the rest.
            return Line(
                "String",
                [&] {
                    const tString oString(m_cUnit1, m_nNumber1 % 2000);
                    const int nLength = static_cast<int>(oString.GetLength());
                    return Show(nLength) + ' ' +
                           ShowUnits(oString.GetString(), nLength / static_cast<int>(sizeof(tUnit)));
                },
                m_cUnit1, m_nNumber1);
        case 2:
            return Line("ToOther", [&] { return ShowString(typename TWidth::tOther(m_oString)); });
        case 3:
            return Changed(
                "operator=", [&] { m_oString = m_cUnit1; }, m_cUnit1);
        default:
            return Changed(
                "operator=", [&] { m_oString = m_oPart.Get(); }, m_oPart);
        }
    }

    std::string Append()
    {
        const int nCount = m_oPart.GetLength() - m_oRandom.Below(2);
        switch (m_oRandom.Below(6))
        {
        case 0:
            return Changed(
                "operator+=", [&] { m_oString += m_oPart.Get(); }, m_oPart);
        case 1:
            return Changed(
                "operator+=", [&] { m_oString += tString(m_oPart.Get()); }, m_oPart);
        case 2:
            return Changed(
                "operator+=", [&] { m_oString += m_cUnit1; }, m_cUnit1);
        case 3:
            return Changed(
                "ConcatInPlace", [&] { m_oString.ConcatInPlace(nCount, m_oPart.Get()); }, m_oPart, nCount);
        case 4:
            return Changed(
                "Copy", [&] { m_oString.Copy(m_oPart.Get(), nCount); }, m_oPart, nCount);
        default:
            return Changed(
                "AssignCopy", [&] { m_oString.AssignCopy(nCount, m_oPart.Get()); }, m_oPart, nCount);
        }
    }

    std::string ChangeBlock()
    {
        switch (m_oRandom.Below(4))
        {
        case 0:
            return Changed("Empty", [&] { m_oString.Empty(); });
        case 1:
            return Changed(
                "ReleaseBuffer", [&] { m_oString.ReleaseBuffer(m_nNumber1); }, m_nNumber1);
        case 2:
            return Changed(
                "SetAt", [&] { m_oString.SetAt(m_nNumber1, m_nNumber2); }, m_nNumber1, m_nNumber2);
        default:
            return Changed(
                "ConcatCopy",
                [&] { m_oString.ConcatCopy(m_oText.GetLength(), m_oText.Get(), m_oPart.GetLength(), m_oPart.Get()); },
                m_oPart);
        }
    }

    std::string Find()
    {
        const tUnit* const szPart = m_oPart.Get();
        // A search for a unit of a set that begins after the text would see what the block holds there.
        const int nStart = m_nNumber1 > m_oText.GetLength() ? m_oText.GetLength() : m_nNumber1;
        switch (m_oRandom.Below(8))
        {
        case 0:
            return Line(
                "Find", [&] { return Show(m_oString.Find(m_cUnit1, nStart)); }, m_cUnit1, nStart);
        case 1:
        case 2:
            return Line(
                "Find", [&] { return Show(m_oString.Find(szPart, nStart)); }, m_oPart, nStart);
        case 3:
            return Line(
                "ReverseFind", [&] { return Show(m_oString.ReverseFind(m_cUnit1)); }, m_cUnit1);
        case 4:
            return Line(
                "FindOneOf", [&] { return Show(m_oString.FindOneOf(szPart, nStart)); }, m_oPart, nStart);
        case 5:
            return Line(
                "FindNotOneOf", [&] { return Show(m_oString.FindNotOneOf(szPart, nStart)); }, m_oPart, nStart);
        case 6:
            return Line(
                "ReverseFindOneOf", [&] { return Show(m_oString.ReverseFindOneOf(szPart)); }, m_oPart);
        default:
            return Line(
                "ReverseFindNotOneOf", [&] { return Show(m_oString.ReverseFindNotOneOf(szPart, nStart)); }, m_oPart,
                nStart);
        }
    }

    std::string Replace()
    {
        const tText oNew = MakeText<tUnit>(m_oRandom, 5);
        if (m_oRandom.Once(3))
        {
            const auto fnReplace = [&] {
                const int nReplaced = m_oString.Replace(m_cUnit1, m_cUnit2);
                return Show(nReplaced) + ' ' + ShowString(m_oString);
            };
            return Line("Replace", fnReplace, m_cUnit1, m_cUnit2);
        }
        const auto fnReplace = [&] {
            const int nReplaced = m_oString.Replace(m_oPart.Get(), oNew.Get());
            return Show(nReplaced) + ' ' + ShowString(m_oString);
        };
        return Line("Replace", fnReplace, m_oPart, oNew);
    }

    std::string Cut()
    {
        switch (m_oRandom.Below(4))
        {
        case 0:
            return Line(
                "Left", [&] { return ShowString(m_oString.Left(m_nNumber1)); }, m_nNumber1);
        case 1:
            return Line(
                "Right", [&] { return ShowString(m_oString.Right(m_nNumber1)); }, m_nNumber1);
        case 2:
            return Line(
                "Mid", [&] { return ShowString(m_oString.Mid(m_nNumber1)); }, m_nNumber1);
        default:
            return Line(
                "Mid", [&] { return ShowString(m_oString.Mid(m_nNumber1, m_nNumber2)); }, m_nNumber1, m_nNumber2);
        }
    }

    std::string Compare()
    {
        const tString oPart(m_oPart.Get());
        switch (m_oRandom.Below(8))
        {
        case 0:
            return Line(
                "BeginsWith", [&] { return Show(m_oString.BeginsWith(oPart)); }, m_oPart);
        case 1:
            return Line(
                "BeginsWithNoCase", [&] { return Show(m_oString.BeginsWithNoCase(oPart)); }, m_oPart);
        case 2:
            return Line(
                "EndsWith", [&] { return Show(m_oString.EndsWith(oPart)); }, m_oPart);
        case 3:
            return Line(
                "EndsWithNoCase", [&] { return Show(m_oString.EndsWithNoCase(oPart)); }, m_oPart);
        case 4:
            return Line(
                "Compare", [&] { return Show(m_oString.Compare(m_oPart.Get())); }, m_oPart);
        case 5:
            return Line(
                "CompareNoCase", [&] { return Show(SignOf(m_oString.CompareNoCase(m_oPart.Get()))); }, m_oPart);
        case 6:
            return Line(
                "Collate", [&] { return Show(m_oString.Collate(m_oPart.Get())); }, m_oPart);
        default:
            return Line(
                "CollateNoCase", [&] { return Show(SignOf(m_oString.CollateNoCase(m_oPart.Get()))); }, m_oPart);
        }
    }

    static int SignOf(int nOrder) { return (nOrder > 0) - (nOrder < 0); }

    std::string Change()
    {
        const int nKind = m_oRandom.Below(3);
        static constexpr const char* NAMES[] = {"MakeLower", "MakeUpper", "Reverse"};
        const auto fnChange = [&] {
            if (nKind == 0)
                m_oString.MakeLower();
            else if (nKind == 1)
                m_oString.MakeUpper();
            else
                m_oString.Reverse();
        };
        return Changed(NAMES[nKind], fnChange);
    }

    std::string Split()
    {
        const char cSeparator = static_cast<char>(m_cUnit1);
        const auto fnSplit = [&] {
            CTOVArray<tString> aParts;
            std::string sShown = Show(m_oString.Split(aParts, cSeparator));
            for (long lIndex = 0; lIndex < static_cast<long>(aParts.GetCount()); ++lIndex)
                sShown += ' ' + ShowString(aParts[lIndex]);
            return sShown;
        };
        return Line("Split", fnSplit, cSeparator);
    }

    std::string Read()
    {
        m_oText = MakeNumberText<tUnit>(m_oRandom);
        m_oString = m_oText.Get();
        static constexpr int BASES[] = {10, 10, 10, 16, 0, 8};
        const int nBase = m_oRandom.OneOf(BASES);
        switch (m_oRandom.Below(7))
        {
        case 0:
            return Line(
                "AsInt", [&] { return Show(m_oString.AsInt(nBase)); }, nBase);
        case 1:
            return Line(
                "AsLong", [&] { return Show(m_oString.AsLong(nBase)); }, nBase);
        case 2:
            return Line(
                "AsUint", [&] { return Show(m_oString.AsUint(nBase)); }, nBase);
        case 3:
            return Line(
                "AsUlong", [&] { return Show(m_oString.AsUlong(nBase)); }, nBase);
        case 4:
            return Line("AsFloat", [&] { return Show(m_oString.AsFloat()); });
        case 5:
            return Line("AsDouble", [&] { return Show(m_oString.AsDouble()); });
        default:
            return Line("AsBool", [&] { return Show(m_oString.AsBool()); });
        }
    }

    std::string Call()
    {
        switch (m_oRandom.Below(13))
        {
        case 0:
            return Make();
        case 1:
            return Append();
        case 2:
            return ChangeBlock();
        case 3:
        case 4:
            return Find();
        case 5:
        case 6:
            return Replace();
        case 7:
            return Cut();
        case 8:
        case 9:
            return Compare();
        case 10:
            return Change();
        case 11:
            return Split();
        default:
            return Read();
        }
    }
};
} // namespace

std::string CallString(CRandomSource& oRandom)
{
    if (oRandom.Once(2))
        return sStringCalls<sNarrow>(oRandom).Call();
    return sStringCalls<sWide>(oRandom).Call();
}
