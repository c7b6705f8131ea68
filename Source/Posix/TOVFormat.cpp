#include <Posix/TOVFormat.h>

#include <Posix/TOVDecimal.h>
#include <Posix/TOVFormatItem.h>
#include <Posix/TOVFormatSink.h>
#include <Posix/TOVMultiByte.h>
#include <TOVPlatform/TOVStringArguments.h>

#include <cmath>
#include <type_traits>

namespace TOVPlatform
{
namespace TOVFormat
{
namespace
{
constexpr int POINTER_DIGITS = 8;
constexpr char NULL_TEXT[] = "(null)";

// The sign or base in front of a number.
struct sPrefix
{
    char szText[2] = {};
    int nLength = 0;

    void Add(char cUnit) { szText[nLength++] = cUnit; }
    void AddSign(const sFormatItem& oItem, bool bNegative)
    {
        if (bNegative)
            Add('-');
        else if (oItem.bPlus)
            Add('+');
        else if (oItem.bSpace)
            Add(' ');
    }
};

template<class T> class CFormatter
{
public:
    CFormatter(T* pBuffer, int nCapacity, const T* szFormat, va_list pArguments)
        : m_szFormat(szFormat), m_oArguments(pArguments), m_oSink(pBuffer, nCapacity)
    {
    }

    const CTOVFormatSink<T>& Run();

private:
    typedef std::conditional_t<std::is_same_v<T, char>, wchar_t, char> tOtherUnit;

    static constexpr bool IS_WIDE_FORMAT = std::is_same_v<T, wchar_t>;

    std::int64_t ReadSigned(const sFormatItem& oItem);
    std::uint64_t ReadUnsigned(const sFormatItem& oItem);

    void PrintItem();
    void PrintSigned(const sFormatItem& oItem);
    void PrintUnsigned(const sFormatItem& oItem, unsigned int nBase, bool bCapitals);
    void PrintInteger(sFormatItem oItem, sPrefix oPrefix, std::uint64_t ullValue, unsigned int nBase, bool bCapitals);
    void PrintPointer(sFormatItem oItem);
    void PrintReal(const sFormatItem& oItem, char cType);
    void PrintCharacter(const sFormatItem& oItem, bool bWideType);
    void PrintText(const sFormatItem& oItem, bool bWideType);
    template<class U> void PrintUnits(const sFormatItem& oItem, const U* pUnits, int nCount);
    void PrintConverted(const sFormatItem& oItem, const tOtherUnit* szText, int nLimit);
    template<class tTake> void ForEachConverted(const tOtherUnit* szText, int nLimit, tTake Take);
    void StoreLength(const sFormatItem& oItem);

    void BeginField(const sFormatItem& oItem, const sPrefix& oPrefix, long long llLength);
    void EndField(const sFormatItem& oItem, const sPrefix& oPrefix, long long llLength);

    const T* m_szFormat;
    CTOVArgumentList m_oArguments;
    CTOVFormatSink<T> m_oSink;
};

template<class T> const CTOVFormatSink<T>& CFormatter<T>::Run()
{
    while (*m_szFormat != 0)
    {
        const T* const szLiteral = m_szFormat;
        while (*m_szFormat != 0 && *m_szFormat != '%')
            ++m_szFormat;
        m_oSink.Put(szLiteral, m_szFormat - szLiteral);

        if (*m_szFormat == '%')
        {
            ++m_szFormat;
            PrintItem();
        }
    }
    m_oSink.Terminate();
    return m_oSink;
}

template<class T> std::int64_t CFormatter<T>::ReadSigned(const sFormatItem& oItem)
{
    switch (oItem.eSize)
    {
    case eFormatModifier::Int64:
        return m_oArguments.NextInt64();
    case eFormatModifier::Wide:
        return m_oArguments.NextLong();
    case eFormatModifier::Narrow:
        return static_cast<std::int16_t>(m_oArguments.NextInt());
    default:
        return m_oArguments.NextInt();
    }
}

template<class T> std::uint64_t CFormatter<T>::ReadUnsigned(const sFormatItem& oItem)
{
    const std::uint64_t ullValue = static_cast<std::uint64_t>(ReadSigned(oItem));
    switch (oItem.eSize)
    {
    case eFormatModifier::Int64:
        return ullValue;
    case eFormatModifier::Narrow:
        return static_cast<std::uint16_t>(ullValue);
    default:
        return static_cast<std::uint32_t>(ullValue);
    }
}

template<class T> void CFormatter<T>::PrintItem()
{
    const sFormatItem oItem = ReadFormatItem(m_szFormat, m_oArguments);
    const T cType = *m_szFormat;
    if (cType == 0)
        return;

    ++m_szFormat;
    switch (cType)
    {
    case 'd':
    case 'i':
        PrintSigned(oItem);
        break;
    case 'u':
        PrintUnsigned(oItem, 10, false);
        break;
    case 'o':
        PrintUnsigned(oItem, 8, false);
        break;
    case 'x':
    case 'X':
        PrintUnsigned(oItem, 16, cType == 'X');
        break;
    case 'p':
        PrintPointer(oItem);
        break;
    case 'e':
    case 'E':
    case 'f':
    case 'g':
    case 'G':
        PrintReal(oItem, static_cast<char>(cType));
        break;
    case 'c':
    case 'C':
        PrintCharacter(oItem, (cType == 'c') == IS_WIDE_FORMAT);
        break;
    case 's':
    case 'S':
        PrintText(oItem, (cType == 's') == IS_WIDE_FORMAT);
        break;
    case 'n':
        StoreLength(oItem);
        break;
    default:
        m_oSink.Put(&cType, 1);
    }
}

// Opens a field for llLength units behind the prefix: whatever stands in front of them.
template<class T> void CFormatter<T>::BeginField(const sFormatItem& oItem, const sPrefix& oPrefix, long long llLength)
{
    const long long llPadding = oItem.bLeft ? 0 : oItem.nWidth - oPrefix.nLength - llLength;
    if (!oItem.bZero)
        m_oSink.Fill(' ', llPadding);
    m_oSink.Put(oPrefix.szText, oPrefix.nLength);
    if (oItem.bZero)
        m_oSink.Fill('0', llPadding);
}

template<class T> void CFormatter<T>::EndField(const sFormatItem& oItem, const sPrefix& oPrefix, long long llLength)
{
    if (oItem.bLeft)
        m_oSink.Fill(' ', oItem.nWidth - oPrefix.nLength - llLength);
}

template<class T> void CFormatter<T>::PrintSigned(const sFormatItem& oItem)
{
    const std::int64_t llValue = ReadSigned(oItem);
    const std::uint64_t ullValue = static_cast<std::uint64_t>(llValue);
    sPrefix oPrefix;
    oPrefix.AddSign(oItem, llValue < 0);
    PrintInteger(oItem, oPrefix, (llValue < 0) ? 0 - ullValue : ullValue, 10, false);
}

template<class T> void CFormatter<T>::PrintUnsigned(const sFormatItem& oItem, unsigned int nBase, bool bCapitals)
{
    const std::uint64_t ullValue = ReadUnsigned(oItem);
    sPrefix oPrefix;
    if (oItem.bAlternate && nBase == 16 && ullValue != 0)
    {
        oPrefix.Add('0');
        oPrefix.Add(bCapitals ? 'X' : 'x');
    }
    PrintInteger(oItem, oPrefix, ullValue, nBase, bCapitals);
}

template<class T> void CFormatter<T>::PrintPointer(sFormatItem oItem)
{
    oItem.nPrecision = POINTER_DIGITS;
    sPrefix oPrefix;
    if (oItem.bAlternate)
    {
        oPrefix.Add('0');
        oPrefix.Add('X');
    }
    const std::uintptr_t nAddress = reinterpret_cast<std::uintptr_t>(m_oArguments.NextPointer());
    PrintInteger(oItem, oPrefix, static_cast<std::uint32_t>(nAddress), 16, true);
}

template<class T>
void CFormatter<T>::PrintInteger(sFormatItem oItem, sPrefix oPrefix, std::uint64_t ullValue, unsigned int nBase,
                                 bool bCapitals)
{
    const char* const szDigitOf = bCapitals ? "0123456789ABCDEF" : "0123456789abcdef";
    char szDigits[24];
    char* const szEnd = szDigits + sizeof(szDigits);
    char* szFirst = szEnd;
    for (; ullValue != 0; ullValue /= nBase)
        *--szFirst = szDigitOf[ullValue % nBase];

    // Zero is nothing but the zeros that are asked for.
    const long long llDigits = szEnd - szFirst;
    long long llZeros = (oItem.nPrecision == NO_PRECISION ? 1 : oItem.nPrecision) - llDigits;
    llZeros = std::max(llZeros, 0LL);
    if (oItem.bAlternate && nBase == 8)
        llZeros = std::max(llZeros, 1LL);

    if (oItem.nPrecision != NO_PRECISION)
        oItem.bZero = false;
    BeginField(oItem, oPrefix, llZeros + llDigits);
    m_oSink.Fill('0', llZeros);
    m_oSink.Put(szFirst, llDigits);
    EndField(oItem, oPrefix, llZeros + llDigits);
}

template<class T> void CFormatter<T>::PrintReal(const sFormatItem& oItem, char cType)
{
    const double dValue = m_oArguments.NextDouble();
    sPrefix oPrefix;
    oPrefix.AddSign(oItem, std::signbit(dValue));

    CTOVDecimal oDecimal(dValue);
    const sRealText oText = oDecimal.ToText(cType, oItem.nPrecision, oItem.bAlternate);
    TOVMultiByte::sCharacter<T> oPoint = {};
    if (oText.bHasPoint)
        TOVMultiByte::GetDecimalPoint(oPoint);

    const long long llLength = static_cast<long long>(oText.nWholeDigits) + oText.nWholeZeros + oPoint.nUnits +
                               oText.llLeadingZeros + oText.nFractionDigits + oText.llTrailingZeros +
                               oText.nExponentLength;
    BeginField(oItem, oPrefix, llLength);
    m_oSink.Put(oText.pWhole, oText.nWholeDigits);
    m_oSink.Fill('0', oText.nWholeZeros);
    m_oSink.Put(oPoint.szUnits, oPoint.nUnits);
    m_oSink.Fill('0', oText.llLeadingZeros);
    m_oSink.Put(oText.pFraction, oText.nFractionDigits);
    m_oSink.Fill('0', oText.llTrailingZeros);
    m_oSink.Put(oText.szExponent, oText.nExponentLength);
    EndField(oItem, oPrefix, llLength);
}

// Whether a character or text is wide, when its type says bWideType.
bool IsWide(const sFormatItem& oItem, bool bWideType)
{
    if (oItem.eSize == eFormatModifier::Narrow)
        return false;
    return bWideType || oItem.eSize == eFormatModifier::Wide;
}

template<class T> void CFormatter<T>::PrintCharacter(const sFormatItem& oItem, bool bWideType)
{
    const int nCharacter = m_oArguments.NextInt();
    if (IsWide(oItem, bWideType) == IS_WIDE_FORMAT)
    {
        const T cUnit = static_cast<T>(nCharacter);
        PrintUnits(oItem, &cUnit, 1);
        return;
    }

    const tOtherUnit szText[] = {static_cast<tOtherUnit>(nCharacter), 0};
    TOVMultiByte::sCharacter<T> oCharacter = {};
    const bool bConverted = TOVMultiByte::Convert(szText, oCharacter) > 0;
    PrintUnits(oItem, oCharacter.szUnits, bConverted ? oCharacter.nUnits : 0);
}

template<class T> void CFormatter<T>::PrintText(const sFormatItem& oItem, bool bWideType)
{
    const void* pText = m_oArguments.NextPointer();
    const int nLimit = oItem.nPrecision == NO_PRECISION ? INT_MAX : oItem.nPrecision;
    if (pText == nullptr)
    {
        PrintUnits(oItem, NULL_TEXT, std::min(nLimit, static_cast<int>(sizeof(NULL_TEXT)) - 1));
    }
    else if (IsWide(oItem, bWideType) != IS_WIDE_FORMAT)
    {
        PrintConverted(oItem, static_cast<const tOtherUnit*>(pText), nLimit);
    }
    else
    {
        const T* szText = static_cast<const T*>(pText);
        int nLength = 0;
        while (nLength < nLimit && szText[nLength] != 0)
            ++nLength;
        PrintUnits(oItem, szText, nLength);
    }
}

template<class T>
template<class U>
void CFormatter<T>::PrintUnits(const sFormatItem& oItem, const U* pUnits, int nCount)
{
    BeginField(oItem, sPrefix(), nCount);
    m_oSink.Put(pUnits, nCount);
    EndField(oItem, sPrefix(), nCount);
}

// Hands on the converted characters of a text, as long as they fit in nLimit units as a whole.
template<class T>
template<class tTake>
void CFormatter<T>::ForEachConverted(const tOtherUnit* szText, int nLimit, tTake Take)
{
    while (nLimit > 0 && *szText != 0)
    {
        TOVMultiByte::sCharacter<T> oCharacter;
        const int nRead = TOVMultiByte::Convert(szText, oCharacter);
        if (nRead == 0)
        {
            m_oSink.Fail();
            return;
        }
        if (oCharacter.nUnits > nLimit)
            return;
        Take(oCharacter);
        szText += nRead;
        nLimit -= oCharacter.nUnits;
    }
}

template<class T> void CFormatter<T>::PrintConverted(const sFormatItem& oItem, const tOtherUnit* szText, int nLimit)
{
    typedef TOVMultiByte::sCharacter<T> tCharacter;
    long long llLength = 0;
    ForEachConverted(szText, nLimit, [&](const tCharacter& oCharacter) { llLength += oCharacter.nUnits; });

    BeginField(oItem, sPrefix(), llLength);
    ForEachConverted(szText, nLimit,
                     [&](const tCharacter& oCharacter) { m_oSink.Put(oCharacter.szUnits, oCharacter.nUnits); });
    EndField(oItem, sPrefix(), llLength);
}

// The units printed so far, unless the text has outgrown its buffer.
template<class T> void CFormatter<T>::StoreLength(const sFormatItem& oItem)
{
    void* const pResult = m_oArguments.NextPointer();
    if (pResult == nullptr || m_oSink.IsFull())
        return;

    const long long llLength = m_oSink.GetLength();
    switch (oItem.eSize)
    {
    case eFormatModifier::Narrow:
        *static_cast<short*>(pResult) = static_cast<short>(llLength);
        break;
    case eFormatModifier::Wide:
        *static_cast<long*>(pResult) = static_cast<long>(llLength);
        break;
    case eFormatModifier::Int64:
        *static_cast<long long*>(pResult) = llLength;
        break;
    default:
        *static_cast<int*>(pResult) = static_cast<int>(llLength);
    }
}
} // namespace

template<class T> int Print(T* szBuffer, int nCapacity, const T* szFormat, va_list pArguments)
{
    CFormatter<T> oFormatter(szBuffer, nCapacity, szFormat, pArguments);
    const CTOVFormatSink<T>& oResult = oFormatter.Run();
    return oResult.IsFull() ? -1 : oResult.GetResult();
}

template<class T> int PrintedLength(const T* szFormat, va_list pArguments)
{
    CFormatter<T> oFormatter(nullptr, 0, szFormat, pArguments);
    return oFormatter.Run().GetResult();
}

template int Print(char*, int, const char*, va_list);
template int Print(wchar_t*, int, const wchar_t*, va_list);
template int PrintedLength(const char*, va_list);
template int PrintedLength(const wchar_t*, va_list);
} // namespace TOVFormat
} // namespace TOVPlatform
