// Sizes one format by the rules of VSCPrintf in TOVPlatform/TOVString.h; TOVStringMeasure.cpp includes this for each
// width.

// Length of a printed text; -1 for a text that has no form in the other width.
int PrintedLength(const tUnit* szFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, szFormat);
    const int nLength = Backend::PrintedLength(szFormat, pArguments);
    va_end(pArguments);
    return nLength;
}

// A short format for one value, put together for its print.
class CItemFormatText
{
public:
    CItemFormatText() { Add('%'); }
    void Add(char cUnit) { m_szText[m_nLength++] = static_cast<tUnit>(cUnit); }
    const tUnit* GetText() const { return m_szText; }

private:
    tUnit m_szText[8] = {};
    int m_nLength = 0;
};

// Reads one format and its arguments, once.
class CFormatMeasure
{
public:
    CFormatMeasure(const tUnit* szFormat, va_list pArguments) : m_szPosition(szFormat), m_oArguments(pArguments) {}

    int Measure();

    // Whether the print of the measured format takes the arguments in the same way.
    bool IsPrintedAlike() const { return m_bPrintedAlike; }

private:
    static constexpr bool IS_WIDE_FORMAT = sizeof(tUnit) > sizeof(char);

    void MeasureLiterals(const tUnit* szEnd);
    void MeasureItem();
    sFormatItem ReadItem();

    long long CharacterSize(const sFormatItem& oItem, bool bWide);
    long long TextSize(const sFormatItem& oItem, bool bWide);
    template<class U> long long TextLength(const sFormatItem& oItem, const U* szText);
    long long IntegerSize(const sFormatItem& oItem, bool bSigned);
    long long PointerSize(const sFormatItem& oItem);
    long long RealSize(const sFormatItem& oItem, char cConversion);
    long long FixedSize(const sFormatItem& oItem);
    long long FixedLength(const sFormatItem& oItem, bool bSign, long long llDigits, double dValue);
    long long RealLength(const sFormatItem& oItem, bool bSign, long long llDigits, char cConversion, double dValue);

    const tUnit* m_szPosition;
    CTOVArgumentList m_oArguments;
    bool m_bPrintedAlike = true;
    long long m_llItems = 0;            // the sizes of the conversions
    long long m_llGenerousLiterals = 0; // literal text counts the rest of the format at each position
    long long m_llPlainLiterals = 0;    // each literal unit counts once
};

int CFormatMeasure::Measure()
{
    const tUnit* const szEnd = m_szPosition + Backend::Length(m_szPosition);
    while (*m_szPosition != 0)
    {
        // The second sign of a double percent sign is a literal as well.
        if (*m_szPosition == '%' && *++m_szPosition != '%')
            MeasureItem();
        else
            MeasureLiterals(szEnd);
    }

    const long long llGenerous = m_llItems + m_llGenerousLiterals;
    const long long llBound = llGenerous <= MAX_BOUND ? llGenerous : m_llItems + m_llPlainLiterals;
    return llBound <= MAX_BOUND ? static_cast<int>(llBound) : -1;
}

// Each character counts the rest of the format from itself on.
void CFormatMeasure::MeasureLiterals(const tUnit* szEnd)
{
    const tUnit* szNext = m_szPosition;
    while (IsAscii(*szNext) && *szNext != 0 && (*szNext != '%' || szNext == m_szPosition))
        ++szNext;

    long long llCharacters = szNext - m_szPosition;
    if (llCharacters == 0)
    {
        szNext = Backend::Inc(m_szPosition);
        llCharacters = 1;
    }
    m_llGenerousLiterals += llCharacters * (szEnd - m_szPosition) - llCharacters * (llCharacters - 1) / 2;
    m_llPlainLiterals += szNext - m_szPosition;
    m_szPosition = szNext;
}

sFormatItem CFormatMeasure::ReadItem()
{
    const sFormatItem oItem = ReadMeasuredItem(m_szPosition, m_oArguments);
    const int nWidth = oItem.nWidth;
    const int nPrecision = oItem.nPrecision;
    TOV_ASSERT(nWidth >= 0);
    TOV_ASSERT(nPrecision >= 0);
    return oItem;
}

void CFormatMeasure::MeasureItem()
{
    const sFormatItem oItem = ReadItem();
    m_bPrintedAlike = m_bPrintedAlike && !oItem.bPrintedOtherwise;
    m_llItems += oItem.nAlternates * ALTERNATE_FORM_SIZE;

    // Small letters take text of the format's own width, capitals take text of the other width.
    switch (*m_szPosition)
    {
    case 'c':
        m_llItems += CharacterSize(oItem, IS_WIDE_FORMAT);
        break;
    case 'C':
        m_llItems += CharacterSize(oItem, !IS_WIDE_FORMAT);
        break;
    case 's':
        m_llItems += TextSize(oItem, IS_WIDE_FORMAT);
        break;
    case 'S':
        m_llItems += TextSize(oItem, !IS_WIDE_FORMAT);
        break;
    case 'd':
    case 'i':
        m_llItems += IntegerSize(oItem, true);
        break;
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        m_llItems += IntegerSize(oItem, false);
        break;
    case 'p':
        m_llItems += PointerSize(oItem);
        break;
    case 'e':
    case 'g':
    case 'G':
        m_llItems += RealSize(oItem, static_cast<char>(*m_szPosition));
        break;
    case 'f':
        m_llItems += FixedSize(oItem);
        break;
    case 'n':
        m_oArguments.NextPointer();
        break;
    default: // also the end of a format that stops after a percent sign
        TOV_ASSERT_TEXT(false, "FALSE");
    }
    ++m_szPosition;
}

long long CFormatMeasure::CharacterSize(const sFormatItem& oItem, bool bWide)
{
    const int nCharacter = m_oArguments.NextInt();
    long long llLength = 0;

    // A wide character can take several bytes of narrow text.
    if (oItem.IsWide(bWide) && static_cast<wchar_t>(nCharacter) > SCHAR_MAX && !IS_WIDE_FORMAT)
    {
        CItemFormatText oFormat;
        oFormat.Add('l');
        oFormat.Add('c');
        llLength = PrintedLength(oFormat.GetText(), nCharacter);
    }
    return std::max(FieldSize(oItem, CHARACTER_SIZE), llLength);
}

long long CFormatMeasure::TextSize(const sFormatItem& oItem, bool bWide)
{
    const void* pText = m_oArguments.NextPointer();
    if (pText == nullptr)
        return FieldSize(oItem, NULL_TEXT_SIZE);

    // Text is sized by the width that the print will read it with: "%hs" in a wide format is narrow text.
    return oItem.IsWide(bWide) ? TextLength(oItem, static_cast<const wchar_t*>(pText))
                               : TextLength(oItem, static_cast<const char*>(pText));
}

template<class U> long long CFormatMeasure::TextLength(const sFormatItem& oItem, const U* szText)
{
    // A precision also limits what is read, as it does in the print, so that the text may have no terminator.
    const int nLimit = oItem.MeasuredLimit();
    const int nLength = Backend::LengthAtMost(szText, nLimit);

    long long llConverted = 0;
    if (sizeof(U) != sizeof(tUnit) && !std::all_of(szText, szText + nLength, IsAscii<U>))
    {
        CItemFormatText oFormat;
        oFormat.Add('.');
        oFormat.Add('*');
        oFormat.Add(sizeof(U) > sizeof(char) ? 'l' : 'h');
        oFormat.Add('s');
        llConverted = PrintedLength(oFormat.GetText(), nLimit, szText);
    }
    return std::max(FieldSize(oItem, std::max(nLength, 1)), llConverted);
}

long long CFormatMeasure::IntegerSize(const sFormatItem& oItem, bool bSigned)
{
    const bool bNegative = NextInteger(m_oArguments, oItem.eModifier) < 0;
    const bool bHasSign = bSigned && (bNegative || oItem.bPlus || oItem.bSpace);
    const long long llPrecision = oItem.nPrecision;
    return std::max({INTEGER_SIZE, oItem.nWidth + llPrecision, llPrecision + (bHasSign ? 1 : 0)});
}

long long CFormatMeasure::PointerSize(const sFormatItem& oItem)
{
    m_oArguments.NextPointer();
    const long long llPrecision = oItem.nPrecision;
    return std::max(INTEGER_SIZE, oItem.nWidth + llPrecision);
}

long long CFormatMeasure::RealSize(const sFormatItem& oItem, char cConversion)
{
    const double dValue = m_oArguments.NextDouble();
    const long long llPrecision = oItem.nPrecision;
    const long long llSize = std::max(REAL_SIZE, oItem.nWidth + llPrecision);
    if (llPrecision + REAL_FRAME_SIZE <= llSize)
        return llSize;
    return std::max(llSize, RealLength(oItem, true, llPrecision, cConversion, dValue));
}

long long CFormatMeasure::FixedSize(const sFormatItem& oItem)
{
    // With a precision, six digits more are measured than will be printed, which leaves room for a sign. Without one,
    // exactly the printed digits are measured, so that a sign counts as well.
    const long long llDigits = static_cast<long long>(oItem.nPrecision) + FIXED_EXTRA_DIGITS;
    const double dValue = m_oArguments.NextDouble();
    const bool bSign = !oItem.bHasPrecision;
    long long llLength = FixedLength(oItem, bSign, llDigits, dValue);
    if (llLength == 0)
        llLength = RealLength(oItem, bSign, llDigits, 'f', dValue);
    return std::max<long long>(oItem.nWidth, llLength);
}

// The same length as RealLength gives for an f conversion with digits after the point, without a print. Returns 0 for a
// value that has to be printed: a large one, one that may round to a further digit, and any that may be a negative
// zero.
long long CFormatMeasure::FixedLength(const sFormatItem& oItem, bool bSign, long long llDigits, double dValue)
{
    constexpr double MAX_WHOLE = 1e15;
    const double dMagnitude = dValue < 0 ? -dValue : dValue;
    const bool bInRange = dMagnitude < MAX_WHOLE && (dMagnitude >= 1 || dValue > 0);
    if (!bInRange)
        return 0;

    const std::uint64_t ullWhole = static_cast<std::uint64_t>(dMagnitude);
    int nWholeDigits = 1;
    std::uint64_t ullNextLength = 10;
    for (; ullNextLength <= ullWhole; ullNextLength *= 10)
        ++nWholeDigits;
    if (ullWhole + 1 == ullNextLength)
        return 0;

    const bool bHasSign = dValue < 0 || (bSign && (oItem.bPlus || oItem.bSpace));
    return (bHasSign ? 1 : 0) + nWholeDigits + Backend::DecimalPointLength(m_szPosition) + llDigits;
}

// Length of a printed double, without a field. Digits after the last one that a double can have are counted, not
// printed.
long long CFormatMeasure::RealLength(const sFormatItem& oItem, bool bSign, long long llDigits, char cConversion,
                                     double dValue)
{
    CItemFormatText oFormat;
    if (bSign && oItem.bPlus)
        oFormat.Add('+');
    else if (bSign && oItem.bSpace)
        oFormat.Add(' ');
    if (oItem.nAlternates > 0)
        oFormat.Add('#');
    oFormat.Add('.');
    oFormat.Add('*');
    oFormat.Add(cConversion);

    const long long llPrinted = std::min(llDigits, MAX_REAL_DIGITS);
    return (llDigits - llPrinted) + PrintedLength(oFormat.GetText(), static_cast<int>(llPrinted), dValue);
}

int MeasureText(const tUnit* szFormat, va_list pArguments)
{
    CFormatMeasure oMeasure(szFormat, pArguments);
    const int nBound = oMeasure.Measure();
    if (nBound < 0 || oMeasure.IsPrintedAlike())
        return nBound;

    va_list pAgain;
    va_copy(pAgain, pArguments);
    const int nLength = Backend::PrintedLength(szFormat, pAgain);
    va_end(pAgain);
    return std::max(nBound, nLength);
}
