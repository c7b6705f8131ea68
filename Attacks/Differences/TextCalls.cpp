// Calls of the functions for zero-terminated text, and of check values and character codes.
#include "RandomCalls.h"
#include "Width.h"

#include <TOVString/TOVCrc.h>
#include <TOVString/TOVFourCC.h>

#include <algorithm>

namespace
{
namespace Text
{
TOV_BOTH_WIDTHS(Compare)
TOV_BOTH_WIDTHS(CompareNoCase)
TOV_BOTH_WIDTHS(Collate)
TOV_BOTH_WIDTHS(CollateNoCase)
TOV_BOTH_WIDTHS(Length)
TOV_BOTH_WIDTHS(ToLower)
TOV_BOTH_WIDTHS(ToUpper)
TOV_BOTH_WIDTHS(Reverse)
TOV_BOTH_WIDTHS(FindCharacter)
TOV_BOTH_WIDTHS(FindLastCharacter)
TOV_BOTH_WIDTHS(FindString)
TOV_BOTH_WIDTHS(FindOneOf)
TOV_BOTH_WIDTHS(FindNotOneOf)
TOV_BOTH_WIDTHS(ReverseFindOneOf)
TOV_BOTH_WIDTHS(ReverseFindNotOneOf)
TOV_BOTH_WIDTHS(Copy)
TOV_BOTH_WIDTHS(Concat)
TOV_BOTH_WIDTHS(NCopy)
TOV_BOTH_WIDTHS(NConcat)
TOV_BOTH_WIDTHS(Inc)
TOV_BOTH_WIDTHS(NInc)
TOV_BOTH_WIDTHS(Dec)
TOV_BOTH_WIDTHS(ToLong)
TOV_BOTH_WIDTHS(ToUlong)
TOV_BOTH_WIDTHS(ToDouble)
} // namespace Text

int SignOf(int nOrder)
{
    return (nOrder > 0) - (nOrder < 0);
}

template<class tUnit> std::string Place(const tUnit* pFound, const tUnit* pStart)
{
    return pFound == nullptr ? "null" : Show(static_cast<long long>(pFound - pStart));
}

// All of the room, with what was never written.
template<class tUnit> std::string ShowRoom(const std::vector<tUnit>& aRoom)
{
    return ShowUnits(aRoom.data(), static_cast<int>(aRoom.size()));
}

template<class TWidth> std::string CompareTexts(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText1 = MakeText<tUnit>(oRandom);
    CSampleText<tUnit> oText2 = MakeText<tUnit>(oRandom);
    if (oText1.Get() != nullptr && oRandom.Once(2))
    {
        // Mostly equal
        std::vector<tUnit> aUnits(oText1.Get(), oText1.Get() + oText1.GetLength());
        if (!aUnits.empty())
            aUnits[static_cast<std::size_t>(oRandom.Below(oText1.GetLength()))] ^= 0x20;
        if (std::find(aUnits.begin(), aUnits.end(), tUnit()) == aUnits.end())
            oText2 = CSampleText<tUnit>(aUnits);
    }
    const int nKind = oRandom.Below(4);
    static constexpr const char* NAMES[] = {"Compare", "CompareNoCase", "Collate", "CollateNoCase"};
    return CallLine(std::string(TWidth::PREFIX) + NAMES[nKind], ShowAll(oText1, oText2), [&] {
        const tUnit* const sz1 = oText1.Get();
        const tUnit* const sz2 = oText2.Get();
        return Show(SignOf(nKind == 0   ? Text::Compare<TWidth>(sz1, sz2)
                           : nKind == 1 ? Text::CompareNoCase<TWidth>(sz1, sz2)
                           : nKind == 2 ? Text::Collate<TWidth>(sz1, sz2)
                                        : Text::CollateNoCase<TWidth>(sz1, sz2)));
    });
}

template<class TWidth> std::string ChangeText(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText = MakeText<tUnit>(oRandom);
    const int nKind = oRandom.Below(4);
    static constexpr const char* NAMES[] = {"Length", "ToLower", "ToUpper", "Reverse"};
    return CallLine(std::string(TWidth::PREFIX) + NAMES[nKind], Show(oText), [&] {
        if (nKind == 0)
            return Show(Text::Length<TWidth>(oText.Get()));
        std::vector<tUnit> aRoom = oText.Room();
        tUnit* const szText = oText.Get() != nullptr ? aRoom.data() : nullptr;
        const tUnit* const szResult = nKind == 1   ? Text::ToLower<TWidth>(szText)
                                      : nKind == 2 ? Text::ToUpper<TWidth>(szText)
                                                   : Text::Reverse<TWidth>(szText);
        return ShowRoom(aRoom) + ' ' + Place<tUnit>(szResult, szText);
    });
}

template<class TWidth> std::string FindUnit(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText = MakeText<tUnit>(oRandom);
    const CSampleText<tUnit> oPart = MakePart(oRandom, oText);
    const int nUnit = oPart.GetLength() > 0 ? oPart.Get()[0] : oRandom.Number();
    const bool bLast = oRandom.Once(2);
    return CallLine(std::string(TWidth::PREFIX) + (bLast ? "FindLastCharacter" : "FindCharacter"),
                    ShowAll(oText, nUnit), [&] {
                        const tUnit* const szText = oText.Get();
                        return Place<tUnit>(bLast ? Text::FindLastCharacter<TWidth>(szText, nUnit)
                                                  : Text::FindCharacter<TWidth>(szText, nUnit),
                                            szText);
                    });
}

template<class TWidth> std::string FindPart(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText = MakeText<tUnit>(oRandom);
    const CSampleText<tUnit> oPart = MakePart(oRandom, oText);
    const int nKind = oRandom.Below(5);
    static constexpr const char* NAMES[] = {"FindString", "FindOneOf", "FindNotOneOf", "ReverseFindOneOf",
                                            "ReverseFindNotOneOf"};
    return CallLine(std::string(TWidth::PREFIX) + NAMES[nKind], ShowAll(oText, oPart), [&] {
        const tUnit* const szText = oText.Get();
        const tUnit* const szPart = oPart.Get();
        const tUnit* const pFound = nKind == 0   ? Text::FindString<TWidth>(const_cast<tUnit*>(szText), szPart)
                                    : nKind == 1 ? Text::FindOneOf<TWidth>(szText, szPart)
                                    : nKind == 2 ? Text::FindNotOneOf<TWidth>(szText, szPart)
                                    : nKind == 3 ? Text::ReverseFindOneOf<TWidth>(szText, szPart)
                                                 : Text::ReverseFindNotOneOf<TWidth>(szText, szPart);
        return Place<tUnit>(pFound, szText);
    });
}

template<class TWidth> std::string CopyText(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText1 = MakeText<tUnit>(oRandom, 12);
    const CSampleText<tUnit> oText2 = MakeText<tUnit>(oRandom, 12);
    const int nCount = oRandom.Between(-1, 20);
    const int nKind = oRandom.Below(4);
    static constexpr const char* NAMES[] = {"Copy", "Concat", "NCopy", "NConcat"};
    return CallLine(std::string(TWidth::PREFIX) + NAMES[nKind], ShowAll(oText1, oText2, nCount), [&] {
        std::vector<tUnit> aRoom = oText1.Room(oText2.GetLength() + 30);
        tUnit* const szText = oText1.Get() != nullptr ? aRoom.data() : nullptr;
        const tUnit* const szResult = nKind == 0   ? Text::Copy<TWidth>(szText, oText2.Get())
                                      : nKind == 1 ? Text::Concat<TWidth>(szText, oText2.Get())
                                      : nKind == 2 ? Text::NCopy<TWidth>(szText, oText2.Get(), nCount)
                                                   : Text::NConcat<TWidth>(szText, oText2.Get(), nCount);
        return ShowRoom(aRoom) + ' ' + Place<tUnit>(szResult, szText);
    });
}

template<class TWidth> std::string MoveInText(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText = MakeText<tUnit>(oRandom);
    const int nPlace = oRandom.Below(oText.GetLength() + 1);
    const int nKind = oRandom.Below(3);
    const int nCount = oRandom.Between(-1, oText.GetLength() - nPlace);
    static constexpr const char* NAMES[] = {"Inc", "NInc", "Dec"};
    return CallLine(std::string(TWidth::PREFIX) + NAMES[nKind], ShowAll(oText, nPlace, nCount), [&] {
        const tUnit* const szText = oText.Get();
        const tUnit* const pPlace = szText != nullptr ? szText + nPlace : nullptr;
        return Place<tUnit>(nKind == 0   ? Text::Inc<TWidth>(pPlace)
                            : nKind == 1 ? Text::NInc<TWidth>(pPlace, nCount)
                                         : Text::Dec<TWidth>(szText, pPlace),
                            szText);
    });
}

template<class TWidth> std::string ReadNumber(CRandomSource& oRandom)
{
    typedef typename TWidth::tUnit tUnit;
    const CSampleText<tUnit> oText = MakeNumberText<tUnit>(oRandom);
    static constexpr int BASES[] = {10, 10, 0, 16, 8, 2, 36, 1, 37, -1};
    const int nBase = oRandom.OneOf(BASES);
    const int nKind = oRandom.Below(3);
    static constexpr const char* NAMES[] = {"ToLong", "ToUlong", "ToDouble"};
    return CallLine(std::string(TWidth::PREFIX) + NAMES[nKind], ShowAll(oText, nBase), [&] {
        tUnit* pEnd = nullptr;
        std::string sValue = nKind == 0   ? Show(Text::ToLong<TWidth>(oText.Get(), &pEnd, nBase))
                             : nKind == 1 ? Show(Text::ToUlong<TWidth>(oText.Get(), &pEnd, nBase))
                                          : Show(Text::ToDouble<TWidth>(oText.Get(), &pEnd));
        return sValue + " to " + Place<tUnit>(pEnd, oText.Get());
    });
}

std::string CallPlainFunction(CRandomSource& oRandom)
{
    const CSampleText<char> oText = MakeText<char>(oRandom);
    const int nNumber = oRandom.Once(3) ? oRandom.Number() : oRandom.Between(-200, 300);
    const int nLength = oText.GetLength();
    switch (oRandom.Below(5))
    {
    case 0:
        return CallLine("IsAlphanumeric", Show(nNumber), [&] { return Show(IsAlphanumeric(nNumber)); });
    case 1:
        return CallLine("IsSpace", Show(nNumber), [&] { return Show(IsSpace(nNumber)); });
    case 2:
        return CallLine("CRC16Generate", ShowAll(oText, nNumber), [&] {
            return Show(
                CRC16Generate(oText.Get(), static_cast<unsigned>(nLength), static_cast<unsigned short>(nNumber)));
        });
    case 3:
        return CallLine("CRC32Generate", ShowAll(oText, nNumber), [&] {
            return Show(CRC32Generate(oText.Get(), static_cast<unsigned>(nLength), static_cast<unsigned int>(nNumber)));
        });
    default:
        const tUchar ucCount = static_cast<tUchar>(nNumber);
        return CallLine("TOVString_CopyN", ShowAll(oText, static_cast<int>(ucCount)), [&] {
            std::vector<char> aRoom(ucCount + std::size_t(8), '#');
            const char* const szResult = TOVString_CopyN(aRoom.data(), oText.Get(), ucCount);
            return ShowRoom(aRoom) + ' ' + Place<char>(szResult, aRoom.data());
        });
    }
}

std::string ShowCode(const CTOVFourCC& oCode)
{
    std::string sShown = Show(oCode.ToDword()) + ' ' + Show(oCode.IsEmpty()) + ' ';
    for (int nIndex = 0; nIndex < 4; ++nIndex)
        sShown += Show(oCode.GetAt(nIndex));
    return sShown;
}

std::string CallFourCC(CRandomSource& oRandom)
{
    const unsigned long ulNumber = oRandom.Bits();
    const CSampleText<char> oText = MakeText<char>(oRandom, 6);
    const int nIndex = oRandom.Between(-1, 4);
    CTOVFourCC oCode(ulNumber);
    switch (oRandom.Below(5))
    {
    case 0:
        return CallLine("FourCC.FromString", Show(oText), [&] {
            oCode.FromString(oText.Get());
            return ShowCode(oCode);
        });
    case 1:
        return CallLine("FourCC.FromFourCC", Show(ulNumber), [&] {
            oCode.FromFourCC(ulNumber);
            return ShowCode(oCode);
        });
    case 2:
        return CallLine("FourCC.Reverse", Show(ulNumber), [&] {
            oCode.Reverse();
            return ShowCode(oCode);
        });
    case 3:
        return CallLine("FourCC.SetAt", ShowAll(ulNumber, nIndex), [&] {
            oCode.SetAt(nIndex, 'x');
            return ShowCode(oCode);
        });
    default:
        return CallLine("FourCC.FromDword", ShowAll(ulNumber, nIndex), [&] {
            return ShowCode(oCode) + ' ' + Show(oCode.GetAt(nIndex)) + ' ' + Show(oCode.Compare(CTOVFourCC("abcd")));
        });
    }
}

template<class TWidth> std::string CallWidth(CRandomSource& oRandom)
{
    switch (oRandom.Below(8))
    {
    case 0:
        return CompareTexts<TWidth>(oRandom);
    case 1:
        return ChangeText<TWidth>(oRandom);
    case 2:
        return FindUnit<TWidth>(oRandom);
    case 3:
        return FindPart<TWidth>(oRandom);
    case 4:
        return CopyText<TWidth>(oRandom);
    case 5:
        return MoveInText<TWidth>(oRandom);
    default:
        return ReadNumber<TWidth>(oRandom);
    }
}
} // namespace

std::string CallTextFunction(CRandomSource& oRandom)
{
    switch (oRandom.Below(10))
    {
    case 0:
        return CallPlainFunction(oRandom);
    case 1:
        return CallFourCC(oRandom);
    default:
        return oRandom.Once(2) ? CallWidth<sNarrow>(oRandom) : CallWidth<sWide>(oRandom);
    }
}
