// Prints one format by the rules of TOVPlatform/Backend/TOVFormat.h. Written once for both widths: TOVFormat.cpp
// includes this with tUnit, the unit of the format, and tOtherUnit, the unit of the other width.

class CFormatter
{
public:
    CFormatter(tUnit* pBuffer, int nCapacity, const tUnit* szFormat, va_list pArguments)
        : m_szFormat(szFormat), m_oArguments(pArguments), m_oSink(pBuffer, nCapacity)
    {
    }

    const CTOVFormatSink<tUnit>& Run();

private:
    static constexpr bool IS_WIDE_FORMAT = sizeof(tUnit) > sizeof(tOtherUnit);

    std::uint64_t ReadUnsigned(const sFormatItem& oItem);

    void PrintItem();
    void PrintSigned(const sFormatItem& oItem);
    void PrintUnsigned(const sFormatItem& oItem, int nBase, bool bCapitals);
    void PrintInteger(sFormatItem oItem, sPrefix oPrefix, std::uint64_t ullValue, int nBase, bool bCapitals);
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

    const tUnit* m_szFormat;
    CTOVArgumentList m_oArguments;
    CTOVFormatSink<tUnit> m_oSink;
};

const CTOVFormatSink<tUnit>& CFormatter::Run()
{
    for (;;)
    {
        const tUnit* szLiteralEnd = m_szFormat;
        while (*szLiteralEnd != 0 && *szLiteralEnd != '%')
            ++szLiteralEnd;
        m_oSink.Put(m_szFormat, szLiteralEnd - m_szFormat);
        m_szFormat = szLiteralEnd;
        if (*m_szFormat == 0)
            break;

        ++m_szFormat;
        PrintItem();
    }
    m_oSink.Terminate();
    return m_oSink;
}

std::uint64_t CFormatter::ReadUnsigned(const sFormatItem& oItem)
{
    const std::uint64_t ullValue = static_cast<std::uint64_t>(NextInteger(m_oArguments, oItem.eModifier));
    switch (oItem.eModifier)
    {
    case eFormatModifier::Int64:
        return ullValue;
    case eFormatModifier::Narrow:
        return static_cast<std::uint16_t>(ullValue);
    default:
        return static_cast<std::uint32_t>(ullValue);
    }
}

void CFormatter::PrintItem()
{
    const sFormatItem oItem = ReadPrintedItem(m_szFormat, m_oArguments);
    const tUnit cType = *m_szFormat;
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

// Begins a field of the prefix and llLength units: prints what stands in front of the units.
void CFormatter::BeginField(const sFormatItem& oItem, const sPrefix& oPrefix, long long llLength)
{
    const long long llPadding = oItem.bLeft ? 0 : oItem.nWidth - oPrefix.nLength - llLength;
    if (!oItem.bZero)
        m_oSink.Fill(' ', llPadding);
    m_oSink.Put(oPrefix.szText, oPrefix.nLength);
    if (oItem.bZero)
        m_oSink.Fill('0', llPadding);
}

void CFormatter::EndField(const sFormatItem& oItem, const sPrefix& oPrefix, long long llLength)
{
    if (oItem.bLeft)
        m_oSink.Fill(' ', oItem.nWidth - oPrefix.nLength - llLength);
}

void CFormatter::PrintSigned(const sFormatItem& oItem)
{
    const std::int64_t llValue = NextInteger(m_oArguments, oItem.eModifier);
    const std::uint64_t ullValue = static_cast<std::uint64_t>(llValue);
    sPrefix oPrefix;
    oPrefix.AddSign(oItem, llValue < 0);
    PrintInteger(oItem, oPrefix, (llValue < 0) ? 0 - ullValue : ullValue, 10, false);
}

void CFormatter::PrintUnsigned(const sFormatItem& oItem, int nBase, bool bCapitals)
{
    const std::uint64_t ullValue = ReadUnsigned(oItem);
    sPrefix oPrefix;
    if (oItem.nAlternates > 0 && nBase == 16 && ullValue != 0)
    {
        oPrefix.Add('0');
        oPrefix.Add(bCapitals ? 'X' : 'x');
    }
    PrintInteger(oItem, oPrefix, ullValue, nBase, bCapitals);
}

void CFormatter::PrintPointer(sFormatItem oItem)
{
    oItem.bHasPrecision = true;
    oItem.nPrecision = POINTER_DIGITS;
    sPrefix oPrefix;
    if (oItem.nAlternates > 0)
    {
        oPrefix.Add('0');
        oPrefix.Add('X');
    }
    const std::uintptr_t nAddress = reinterpret_cast<std::uintptr_t>(m_oArguments.NextPointer());
    PrintInteger(oItem, oPrefix, static_cast<std::uint32_t>(nAddress), 16, true);
}

void CFormatter::PrintInteger(sFormatItem oItem, sPrefix oPrefix, std::uint64_t ullValue, int nBase, bool bCapitals)
{
    // Zero has no digits of its own, only the zeros that are asked for.
    char szDigits[24];
    char* szEnd = szDigits;
    if (ullValue != 0)
        szEnd = std::to_chars(szDigits, std::end(szDigits), ullValue, nBase).ptr;
    if (bCapitals)
        std::transform(szDigits, szEnd, szDigits,
                       [](char cUnit) { return 'a' <= cUnit ? char(cUnit - 'a' + 'A') : cUnit; });

    const long long llDigits = szEnd - szDigits;
    long long llZeros = (oItem.bHasPrecision ? oItem.nPrecision : 1) - llDigits;
    llZeros = std::max(llZeros, 0LL);
    if (oItem.nAlternates > 0 && nBase == 8)
        llZeros = std::max(llZeros, 1LL);

    if (oItem.bHasPrecision)
        oItem.bZero = false;
    BeginField(oItem, oPrefix, llZeros + llDigits);
    m_oSink.Fill('0', llZeros);
    m_oSink.Put(szDigits, llDigits);
    EndField(oItem, oPrefix, llZeros + llDigits);
}

void CFormatter::PrintReal(const sFormatItem& oItem, char cType)
{
    const double dValue = m_oArguments.NextDouble();
    sPrefix oPrefix;
    oPrefix.AddSign(oItem, std::signbit(dValue));

    CTOVDecimal oDecimal(dValue);
    const int nPrecision = oItem.bHasPrecision ? oItem.nPrecision : DEFAULT_REAL_PRECISION;
    const sRealText oText = oDecimal.ToText(cType, nPrecision, oItem.nAlternates > 0);
    TOVMultiByte::sCharacter<tUnit> oPoint;
    oPoint.nUnits = 0;
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

void CFormatter::PrintCharacter(const sFormatItem& oItem, bool bWideType)
{
    const int nCharacter = m_oArguments.NextInt();
    if (oItem.IsWide(bWideType) == IS_WIDE_FORMAT)
    {
        const tUnit cUnit = static_cast<tUnit>(nCharacter);
        PrintUnits(oItem, &cUnit, 1);
        return;
    }

    const tOtherUnit szText[] = {static_cast<tOtherUnit>(nCharacter), 0};
    TOVMultiByte::sCharacter<tUnit> oCharacter = {};
    const bool bConverted = TOVMultiByte::Convert(szText, oCharacter) > 0;
    PrintUnits(oItem, oCharacter.szUnits, bConverted ? oCharacter.nUnits : 0);
}

void CFormatter::PrintText(const sFormatItem& oItem, bool bWideType)
{
    const void* pText = m_oArguments.NextPointer();
    const int nLimit = oItem.PrintedLimit();
    if (pText == nullptr)
    {
        PrintUnits(oItem, NULL_TEXT, std::min(nLimit, static_cast<int>(sizeof(NULL_TEXT)) - 1));
    }
    else if (oItem.IsWide(bWideType) != IS_WIDE_FORMAT)
    {
        PrintConverted(oItem, static_cast<const tOtherUnit*>(pText), nLimit);
    }
    else
    {
        const tUnit* szText = static_cast<const tUnit*>(pText);
        PrintUnits(oItem, szText, LengthAtMost(szText, nLimit));
    }
}

template<class U> void CFormatter::PrintUnits(const sFormatItem& oItem, const U* pUnits, int nCount)
{
    BeginField(oItem, sPrefix(), nCount);
    m_oSink.Put(pUnits, nCount);
    EndField(oItem, sPrefix(), nCount);
}

// Hands the converted characters of a text on, while each fits as a whole into what is left of nLimit units.
template<class tTake> void CFormatter::ForEachConverted(const tOtherUnit* szText, int nLimit, tTake Take)
{
    while (nLimit > 0 && *szText != 0)
    {
        TOVMultiByte::sCharacter<tUnit> oCharacter;
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

void CFormatter::PrintConverted(const sFormatItem& oItem, const tOtherUnit* szText, int nLimit)
{
    typedef TOVMultiByte::sCharacter<tUnit> tCharacter;
    long long llLength = 0;
    ForEachConverted(szText, nLimit, [&](const tCharacter& oCharacter) { llLength += oCharacter.nUnits; });

    BeginField(oItem, sPrefix(), llLength);
    ForEachConverted(szText, nLimit,
                     [&](const tCharacter& oCharacter) { m_oSink.Put(oCharacter.szUnits, oCharacter.nUnits); });
    EndField(oItem, sPrefix(), llLength);
}

// Stores the count of the units printed so far, unless the text has outgrown its buffer.
void CFormatter::StoreLength(const sFormatItem& oItem)
{
    void* const pResult = m_oArguments.NextPointer();
    if (pResult == nullptr || m_oSink.IsFull())
        return;

    const long long llLength = m_oSink.GetLength();
    switch (oItem.eModifier)
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
