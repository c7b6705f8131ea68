// Calls of the functions that print a formatted text, with every conversion, flag, width and precision that is
// described.
#include "RandomCalls.h"
#include "Width.h"

#include <algorithm>
#include <cstdarg>

namespace
{
// A text takes fewer units than this: no width, precision or number is larger.
constexpr int ROOM = 1500;

constexpr int WIDTHS = 40;

std::string Line(const char* szPrefix, const char* szFunction, const std::string& sArguments,
                 const std::function<std::string()>& fnCall)
{
    return CallLine(std::string(szPrefix) + szFunction, sArguments, fnCall);
}

template<class TWidth> int Bound(const typename TWidth::tUnit* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    int nBound = 0;
    try
    {
        if constexpr (sizeof(typename TWidth::tUnit) == 1)
            nBound = TOVPlatform::TOVStringA::VSCPrintf(szFormat, pArguments);
        else
            nBound = TOVPlatform::TOVStringW::VSCPrintf(szFormat, pArguments);
    }
    catch (...)
    {
        va_end(pArguments);
        throw;
    }
    va_end(pArguments);
    return nBound;
}

// Prints by one of the functions.
template<class TWidth> struct sPrint
{
    typedef typename TWidth::tUnit tUnit;

    int m_nFunction;
    int m_nCount;
    bool m_bConverts = false; // it prints text of the other width
    std::vector<tUnit> m_aFormat;
    std::string m_sArguments;

    template<class... TArguments> std::string Call(const TArguments&... oArguments) const
    {
        static constexpr const char* NAMES[] = {"SPrintf", "SNPrintf", "VSCPrintf", "String.Format"};
        const std::string sCalled = ShowUnits(m_aFormat.data(), static_cast<int>(m_aFormat.size()) - 1) + ", " +
                                    m_sArguments + (m_nFunction == 1 ? ", count " + Show(m_nCount) : "");
        return Line(TWidth::PREFIX, NAMES[m_nFunction], sCalled, [&] { return Print(oArguments...); });
    }

    template<class... TArguments> std::string Print(const TArguments&... oArguments) const
    {
        const tUnit* const szFormat = m_aFormat.data();
        if (m_nFunction == 2)
            return Show(Bound<TWidth>(szFormat, oArguments...));
        if (m_nFunction == 3)
        {
            typename TWidth::tString oString;
            const int nPrinted = oString.Format(szFormat, oArguments...);
            return Show(nPrinted) + ' ' + ShowUnits(oString.GetString(), static_cast<int>(oString.GetLength())) + ' ' +
                   Show(oString.GetData()->GetSize());
        }
        std::vector<tUnit> aRoom(ROOM, static_cast<tUnit>('#'));
        int nPrinted;
        if constexpr (sizeof(tUnit) == 1)
            nPrinted = m_nFunction == 0
                           ? TOVPlatform::TOVStringA::SPrintf(aRoom.data(), szFormat, oArguments...)
                           : TOVPlatform::TOVStringA::SNPrintf(aRoom.data(), m_nCount, szFormat, oArguments...);
        else
            nPrinted = m_nFunction == 0
                           ? TOVPlatform::TOVStringW::SPrintf(aRoom.data(), szFormat, oArguments...)
                           : TOVPlatform::TOVStringW::SNPrintf(aRoom.data(), m_nCount, szFormat, oArguments...);
        // What was written, up to the terminator or the count. Nothing is said about the buffer when a text cannot be
        // converted.
        const int nShown = nPrinted >= 0 ? nPrinted + 1 : m_nFunction == 1 && !m_bConverts ? m_nCount : 0;
        return Show(nPrinted) + ' ' + ShowUnits(aRoom.data(), std::min(nShown, ROOM));
    }
};

// One conversion, with text before and after it, and the numbers that its stars ask for.
template<class TWidth> struct sConversion
{
    typedef typename TWidth::tUnit tUnit;

    CRandomSource& m_oRandom;
    sPrint<TWidth> m_oPrint;
    int m_nStars = 0;
    int m_aStars[2] = {};

    explicit sConversion(CRandomSource& oRandom) : m_oRandom(oRandom)
    {
        m_oPrint.m_nFunction = oRandom.Below(4);
        m_oPrint.m_nCount = oRandom.Once(3) ? oRandom.Between(-1, 20) : ROOM - 1;
    }

    void Add(const char* szText)
    {
        for (; *szText != 0; ++szText)
            m_oPrint.m_aFormat.push_back(static_cast<tUnit>(*szText));
    }

    void AddNumber(int nMost, bool bAfterPoint)
    {
        // A negative width or precision is refused by some functions only.
        if (m_oRandom.Once(4))
        {
            Add("*");
            m_aStars[m_nStars++] = m_oRandom.Once(10) ? -m_oRandom.Below(10) : m_oRandom.Below(nMost);
        }
        else if (!bAfterPoint || !m_oRandom.Once(6))
            Add(std::to_string(m_oRandom.Below(nMost)).c_str());
    }

    // nPrecisions is the number of precisions that may follow, from 0. The precision of a character or a pointer is not
    // defined.
    void AddHead(int nPrecisions)
    {
        static constexpr const char* LITERALS[] = {"", "", "a", "x=", "100%% "};
        Add(m_oRandom.OneOf(LITERALS));
        Add("%");
        static constexpr const char* FLAGS[] = {"-", "+", "0", " ", "#"};
        for (int nLeft = m_oRandom.Once(2) ? 0 : m_oRandom.Below(3); nLeft > 0; --nLeft)
            Add(m_oRandom.OneOf(FLAGS));
        if (m_oRandom.Once(2))
            AddNumber(WIDTHS, false);
        if (nPrecisions > 0 && m_oRandom.Once(2))
        {
            Add(".");
            AddNumber(nPrecisions, true);
        }
    }

    // Ends the format with a second, plain conversion, and prints. oShown is the value as the line shows it.
    template<class TValue> std::string Finish(const char* szEnd, const TValue& oValue, const std::string& sShown)
    {
        Add(szEnd);
        const int nLast = m_oRandom.Number();
        const bool bLast = m_oRandom.Once(3);
        if (bLast)
            Add(" %d");
        m_oPrint.m_aFormat.push_back(0);
        for (int nStar = 0; nStar < m_nStars; ++nStar)
            m_oPrint.m_sArguments += Show(m_aStars[nStar]) + ", ";
        m_oPrint.m_sArguments += sShown + (bLast ? ", " + Show(nLast) : "");
        return m_nStars == 0   ? m_oPrint.Call(oValue, nLast)
               : m_nStars == 1 ? m_oPrint.Call(m_aStars[0], oValue, nLast)
                               : m_oPrint.Call(m_aStars[0], m_aStars[1], oValue, nLast);
    }

    std::string PrintInteger()
    {
        static constexpr const char* ENDS[] = {"d", "i", "u", "o", "x", "X", "hd", "hu", "hx"};
        static constexpr const char* LONG_ENDS[] = {"ld", "lu", "lx", "li", "lo", "lX"};
        static constexpr const char* WIDE_ENDS[] = {"I64d", "I64u", "I64x", "I64i", "I64o", "I64X"};
        const std::int32_t nValue = m_oRandom.Number();
        const int nKind = m_oRandom.Below(5);
        AddHead(nKind < 4 ? WIDTHS : 0);
        switch (nKind)
        {
        case 0:
        {
            const long long llValue = static_cast<long long>(nValue) * m_oRandom.Number();
            return Finish(m_oRandom.OneOf(WIDE_ENDS), llValue, Show(llValue));
        }
        case 1:
            return Finish(m_oRandom.OneOf(LONG_ENDS), static_cast<long>(nValue), Show(nValue));
        case 2:
        case 3:
            return Finish(m_oRandom.OneOf(ENDS), nValue, Show(nValue));
        default:
            if (m_oRandom.Once(2))
                return Finish("c", nValue, Show(nValue));
            return Finish("p", reinterpret_cast<const void*>(static_cast<std::uintptr_t>(static_cast<tDword>(nValue))),
                          Show(nValue));
        }
    }

    std::string PrintReal()
    {
        static constexpr const char* ENDS[] = {"f", "f", "e", "E", "g", "G"};
        const double fValue = m_oRandom.Real();
        AddHead(20);
        return Finish(m_oRandom.OneOf(ENDS), fValue, Show(fValue));
    }

    std::string PrintText()
    {
        const CSampleText<char> oNarrow = MakeText<char>(m_oRandom, 10);
        const CSampleText<wchar_t> oWide = MakeText<wchar_t>(m_oRandom, 10);
        const bool bOther = m_oRandom.Once(3);
        const bool bNarrow = bOther == (sizeof(tUnit) != 1);
        const char* const szEnd = m_oRandom.Once(4) ? (bNarrow ? "hs" : "ls") : bOther ? "S" : "s";
        AddHead(20);
        m_oPrint.m_bConverts = bOther;
        return bNarrow ? Finish(szEnd, oNarrow.Get(), Show(oNarrow)) : Finish(szEnd, oWide.Get(), Show(oWide));
    }

    std::string PrintOtherUnit()
    {
        // Wine's runtime steps back in the buffer at a character that has no narrow form.
        const int nUnit = m_oRandom.Below(0x100);
        AddHead(0);
        return Finish("C", nUnit, Show(nUnit));
    }

    std::string Print()
    {
        switch (m_oRandom.Below(10))
        {
        case 0:
            return PrintOtherUnit();
        case 1:
        case 2:
        case 3:
            return PrintText();
        case 4:
        case 5:
        case 6:
            return PrintReal();
        default:
            return PrintInteger();
        }
    }
};
} // namespace

std::string CallFormat(CRandomSource& oRandom)
{
    return oRandom.Once(2) ? sConversion<sNarrow>(oRandom).Print() : sConversion<sWide>(oRandom).Print();
}
