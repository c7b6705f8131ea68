// Makes arguments, and the lines that show a call.
#include "RandomCalls.h"

#include <Debug/TOVDebugServer.h>
#include <Debug/TOVException.h>
#include <Debug/TOVLogListener.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>

namespace
{
// Keeps the text of the latest failed check.
class CCheckKeeper : public TOVDebug::ITOVLogListener
{
public:
    CCheckKeeper() { TOVDebug::CTOVDebugServer::Instance().Register(this); }
    virtual ~CCheckKeeper() { TOVDebug::CTOVDebugServer::Instance().Unregister(this); }

    void OnStartup() override {}
    void OnClosedown() override {}
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char*, va_list) override {}
    void OnAssert(const char*, unsigned long, const char* szExpression) override { m_sText = szExpression; }
    void OnPanicV(const char*, unsigned long, const char*, va_list) override {}
    void SetApplicationName(const char*) override {}

    const std::string& GetText() const { return m_sText; }

private:
    std::string m_sText;
};

template<class tUnit> tUnit AnyUnit(CRandomSource& oRandom)
{
    return static_cast<tUnit>(oRandom.Between(1, sizeof(tUnit) == 1 ? 0xFF : 0xFFFF));
}

template<class tUnit> void AppendText(std::vector<tUnit>& aUnits, const char* szText)
{
    for (; *szText != 0; ++szText)
        aUnits.push_back(static_cast<tUnit>(*szText));
}

template<class tUnit> void AppendDigits(CRandomSource& oRandom, std::vector<tUnit>& aUnits, int nMost)
{
    static constexpr char DIGITS[] = "0123456789abcdefzXF";
    const int nKinds = oRandom.Once(4) ? 19 : 10;
    for (int nLeft = oRandom.Below(nMost + 1); nLeft > 0; --nLeft)
        aUnits.push_back(static_cast<tUnit>(DIGITS[oRandom.Below(nKinds)]));
}
} // namespace

std::int32_t CRandomSource::Number()
{
    static constexpr std::int32_t MARKS[] = {0, 1, -1, 9, 10, 255, 256, 0x7FFF, 0x8000, 0xFFFF, INT_MAX, INT_MIN};
    const int nKind = Below(4);
    if (nKind == 0)
        return OneOf(MARKS);
    const std::int32_t nValue = static_cast<std::int32_t>(Bits());
    return nKind == 1 ? nValue : nValue >> Below(31);
}

double CRandomSource::Real()
{
    static constexpr double MARKS[] = {
        0.0, -0.0, 0.5,      1.5,   2.5,    0.125,    0.375, 1e15, 1e16, 1e-5,   1e-4,
        9.5, 99.5, 999999.5, 1e100, 1e-100, 123456.5, 0.1,   1e22, 1e23, 5e-324, 1.7976931348623157e308};
    switch (Below(6))
    {
    case 0:
        return OneOf(MARKS);
    case 1:
    {
        // Any bits: infinities and values that are no number are rare, and shown below.
        const std::uint64_t ullHigh = Bits();
        const std::uint64_t ullBits = ullHigh << 32 | Bits();
        double fValue;
        std::memcpy(&fValue, &ullBits, sizeof fValue);
        return std::isnan(fValue) ? std::numeric_limits<double>::quiet_NaN() : fValue;
    }
    case 2:
        return std::ldexp(static_cast<double>(Number()), -Below(12)); // often exactly between two decimals
    case 3:
        return static_cast<double>(Number());
    case 4:
    {
        static constexpr double POWERS[] = {1, 10, 100, 1000, 1e4, 1e5, 1e6, 1e9, 1e12};
        // Rounded twice on every target, as some can do no other.
        const long double fPower = OneOf(POWERS);
        return static_cast<double>(static_cast<long double>(Number()) / fPower);
    }
    default:
        return Once(8) ? (Once(2) ? 1 : -1) * std::numeric_limits<double>::infinity() : Number() * 1e3;
    }
}

template<class tUnit> CSampleText<tUnit> MakeText(CRandomSource& oRandom, int nMostUnits)
{
    static constexpr char LETTERS[] = "abAB zZ.,/\\9_-\t";
    if (oRandom.Once(60))
        return CSampleText<tUnit>();
    const int nLength = oRandom.Once(20) ? oRandom.Below(5 * nMostUnits) : oRandom.Below(nMostUnits + 1);
    const int nKind = oRandom.Below(6);
    std::vector<tUnit> aUnits;
    for (int nIndex = 0; nIndex < nLength; ++nIndex)
    {
        if (nKind == 0)
            aUnits.push_back(AnyUnit<tUnit>(oRandom));
        else if (nKind == 1)
            aUnits.push_back(static_cast<tUnit>(oRandom.Between(0x20, 0x7E)));
        else
            aUnits.push_back(static_cast<tUnit>(LETTERS[oRandom.Below(nKind == 2 ? 15 : 4)]));
    }
    return CSampleText<tUnit>(aUnits);
}

template<class tUnit> CSampleText<tUnit> MakeNumberText(CRandomSource& oRandom)
{
    static constexpr const char* BEFORE[] = {"", "", "", " ", "\t\n", "x"};
    static constexpr const char* SIGNS[] = {"", "", "", "-", "+", "--"};
    static constexpr const char* PREFIXES[] = {"", "", "", "", "0x", "0", "0X"};
    static constexpr const char* EXPONENTS[] = {"e", "E", "e-", "E+", "d", "D-"};
    std::vector<tUnit> aUnits;
    AppendText(aUnits, oRandom.OneOf(BEFORE));
    AppendText(aUnits, oRandom.OneOf(SIGNS));
    AppendText(aUnits, oRandom.OneOf(PREFIXES));
    AppendDigits(oRandom, aUnits, 12);
    if (oRandom.Once(3))
    {
        AppendText(aUnits, ".");
        AppendDigits(oRandom, aUnits, 20);
    }
    if (oRandom.Once(3))
    {
        AppendText(aUnits, oRandom.OneOf(EXPONENTS));
        AppendDigits(oRandom, aUnits, 3);
    }
    if (oRandom.Once(8))
        aUnits.push_back(AnyUnit<tUnit>(oRandom));
    if (oRandom.Once(100))
    {
        // Digits of other scripts for wide text.
        static constexpr int MARKS[] = {0xFF, 0x0661, 0x0967, 0xFF11, 0x00B2};
        aUnits.push_back(static_cast<tUnit>(oRandom.OneOf(MARKS)));
        AppendDigits(oRandom, aUnits, 2);
    }
    return CSampleText<tUnit>(aUnits);
}

template<class tUnit> CSampleText<tUnit> MakePart(CRandomSource& oRandom, const CSampleText<tUnit>& oText)
{
    if (oText.GetLength() == 0 || oRandom.Once(3))
        return MakeText<tUnit>(oRandom, 3);
    const int nStart = oRandom.Below(oText.GetLength());
    const int nLength = std::min(oRandom.Between(1, 4), oText.GetLength() - nStart);
    return CSampleText<tUnit>(std::vector<tUnit>(oText.Get() + nStart, oText.Get() + nStart + nLength));
}

template CSampleText<char> MakeText(CRandomSource&, int);
template CSampleText<wchar_t> MakeText(CRandomSource&, int);
template CSampleText<char> MakeNumberText(CRandomSource&);
template CSampleText<wchar_t> MakeNumberText(CRandomSource&);
template CSampleText<char> MakePart(CRandomSource&, const CSampleText<char>&);
template CSampleText<wchar_t> MakePart(CRandomSource&, const CSampleText<wchar_t>&);

std::string ShowInteger(long long llValue)
{
    return std::to_string(llValue);
}

// All bits, as the targets print real numbers each in its own way.
std::string ShowReal(double fValue)
{
    std::uint64_t ullBits;
    std::memcpy(&ullBits, &fValue, sizeof ullBits);
    std::string sShown = "real ";
    for (int nShift = 60; nShift >= 0; nShift -= 4)
        sShown += "0123456789abcdef"[ullBits >> nShift & 15];
    return sShown;
}

namespace
{
template<class tUnit> std::string ShowEscaped(const tUnit* pUnits, int nCount)
{
    std::string sShown = sizeof(tUnit) == 1 ? "\"" : "L\"";
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
    {
        const unsigned int uUnit = static_cast<std::make_unsigned_t<tUnit>>(pUnits[nIndex]);
        if (uUnit >= 0x20 && uUnit <= 0x7E && uUnit != '"' && uUnit != '\\')
        {
            sShown += static_cast<char>(uUnit);
            continue;
        }
        sShown += '\\';
        for (int nShift = sizeof(tUnit) * 8 - 4; nShift >= 0; nShift -= 4)
            sShown += "0123456789abcdef"[uUnit >> nShift & 15];
    }
    return sShown + '"';
}
} // namespace

std::string ShowUnits(const char* pUnits, int nCount)
{
    return ShowEscaped<char>(pUnits, nCount);
}

std::string ShowUnits(const wchar_t* pUnits, int nCount)
{
    return ShowEscaped(reinterpret_cast<const char16_t*>(pUnits), nCount);
}

std::string CallLine(const std::string& sName, const std::string& sArguments,
                     const std::function<std::string()>& fnCall)
{
    CCheckKeeper oKeeper;
    std::string sResult;
    try
    {
        sResult = fnCall();
    }
    catch (const TOVDebug::CTOVAssertException&)
    {
        sResult = "check " + oKeeper.GetText();
    }
    catch (const CTOVException& oException)
    {
        sResult = "exception " + std::to_string(oException.GetCode());
    }
    catch (const std::bad_alloc&)
    {
        sResult = "bad_alloc";
    }
    return sName + '(' + sArguments + ") = " + sResult;
}

std::string CallAny(CRandomSource& oRandom)
{
    switch (oRandom.Below(8))
    {
    case 0:
    case 1:
        return CallTextFunction(oRandom);
    case 2:
        return CallPath(oRandom);
    case 3:
    case 4:
        return CallFormat(oRandom);
    default:
        return CallString(oRandom);
    }
}
