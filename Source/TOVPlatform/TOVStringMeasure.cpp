#include <TOVPlatform/TOVStringMeasure.h>

#include <Debug/TOVCheck.h>
#include <TOVPlatform/TOVStringArguments.h>
#include <TOVPlatform/TOVStringBackend.h>

#include <algorithm>
#include <climits>

// Both platforms share these functions; a failed check names the platform's source.
#undef TOV_CHECK_FILE
#define TOV_CHECK_FILE TOV_PLATFORM_SOURCE("TOVString")

namespace TOVPlatform
{
namespace
{
// Sizes that a format is given without a look at the value.
constexpr long long CHARACTER_SIZE = 2;
constexpr long long NULL_TEXT_SIZE = 6;
constexpr long long INTEGER_SIZE = 32;
constexpr long long REAL_SIZE = 128;
constexpr long long ALTERNATE_FORM_SIZE = 2;
constexpr int FIXED_EXTRA_DIGITS = 6;

// What an exponent form has around its digits: sign, point, first digit and an exponent of up to five units.
constexpr long long REAL_FRAME_SIZE = 9;

// A double has at most this many decimal digits behind the point; all digits behind them are zeros.
constexpr long long MAX_REAL_DIGITS = 1100;

constexpr long long MAX_BOUND = INT_MAX - 1; // the terminator must be countable as well

enum class eModifier
{
    None,
    Narrow,
    Wide,
    Int64
};

// What stands between the percent sign and the conversion character.
struct sItemFormat
{
    bool bPlus = false;
    bool bSpace = false;
    bool bAlternate = false;
    int nWidth = 0;
    bool bHasPrecision = false;
    int nPrecision = 0;
    eModifier eSize = eModifier::None;
};

// Value of the digit run at the position, which moves behind it. Saturates.
template<class T> int ReadNumber(const T*& szPosition)
{
    long long llValue = 0;
    for (; TOVStringBackend::IsDigit(*szPosition); ++szPosition)
        llValue = std::min<long long>(llValue * 10 + (*szPosition - '0'), INT_MAX);
    return static_cast<int>(llValue);
}

// A short format for one value, made up as sizing goes along.
template<class T> class CItemFormatText
{
public:
    CItemFormatText() { Add('%'); }
    void Add(char cUnit) { m_szText[m_nLength++] = static_cast<T>(cUnit); }
    const T* GetText() const { return m_szText; }

private:
    T m_szText[8] = {};
    int m_nLength = 0;
};

// Sizes one format of one width, told apart by IS_WIDE_FORMAT.
template<class T> class CFormatMeasure
{
public:
    CFormatMeasure(const T* szFormat, va_list pArguments) : m_szPosition(szFormat), m_oArguments(pArguments) {}

    int Measure();

private:
    static constexpr bool IS_WIDE_FORMAT = sizeof(T) > sizeof(char);

    void AddItem(long long llSize);
    void MeasureItem();
    sItemFormat ReadFlagsAndWidth();
    void ReadPrecision(sItemFormat& oFormat);
    void ReadModifier(sItemFormat& oFormat);

    long long CharacterSize(const sItemFormat& oFormat, bool bWide);
    long long TextSize(const sItemFormat& oFormat, bool bWide);
    template<class U> long long TextLength(const sItemFormat& oFormat, const U* szText);
    long long IntegerSize(const sItemFormat& oFormat, bool bSigned);
    long long PointerSize(const sItemFormat& oFormat);
    long long RealSize(const sItemFormat& oFormat, char cConversion);
    long long FixedSize(const sItemFormat& oFormat);
    long long RealLength(const sItemFormat& oFormat, bool bSign, long long llDigits, char cConversion, double dValue);
    std::int64_t ReadInteger(const sItemFormat& oFormat);

    const T* m_szPosition;
    CTOVArgumentList m_oArguments;
    long long m_llGenerous = 0; // literal text counts the rest of the format at each position
    long long m_llPlain = 0;    // each literal unit counts once
};

template<class T> int CFormatMeasure<T>::Measure()
{
    const T* const szEnd = m_szPosition + TOVStringBackend::Length(m_szPosition);
    while (*m_szPosition != 0)
    {
        // The second sign of a double percent sign is a literal as well.
        if (*m_szPosition == '%' && *++m_szPosition != '%')
        {
            MeasureItem();
            continue;
        }

        const T* const szNext = TOVStringBackend::Inc(m_szPosition);
        m_llGenerous += szEnd - m_szPosition;
        m_llPlain += szNext - m_szPosition;
        m_szPosition = szNext;
    }

    const long long llBound = m_llGenerous <= MAX_BOUND ? m_llGenerous : m_llPlain;
    return llBound <= MAX_BOUND ? static_cast<int>(llBound) : -1;
}

template<class T> void CFormatMeasure<T>::AddItem(long long llSize)
{
    m_llGenerous += llSize;
    m_llPlain += llSize;
}

template<class T> void CFormatMeasure<T>::MeasureItem()
{
    sItemFormat oFormat = ReadFlagsAndWidth();
    ReadPrecision(oFormat);
    ReadModifier(oFormat);

    // Small letters take text of the format's own width, capitals text of the other one.
    switch (*m_szPosition)
    {
    case 'c':
        AddItem(CharacterSize(oFormat, IS_WIDE_FORMAT));
        break;
    case 'C':
        AddItem(CharacterSize(oFormat, !IS_WIDE_FORMAT));
        break;
    case 's':
        AddItem(TextSize(oFormat, IS_WIDE_FORMAT));
        break;
    case 'S':
        AddItem(TextSize(oFormat, !IS_WIDE_FORMAT));
        break;
    case 'd':
    case 'i':
        AddItem(IntegerSize(oFormat, true));
        break;
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        AddItem(IntegerSize(oFormat, false));
        break;
    case 'p':
        AddItem(PointerSize(oFormat));
        break;
    case 'e':
    case 'g':
    case 'G':
        AddItem(RealSize(oFormat, static_cast<char>(*m_szPosition)));
        break;
    case 'f':
        AddItem(FixedSize(oFormat));
        break;
    case 'n':
        m_oArguments.NextPointer();
        break;
    default: // also the end of a format that stops behind a percent sign
        TOV_ASSERT_TEXT(false, "FALSE");
    }
    ++m_szPosition;
}

template<class T> sItemFormat CFormatMeasure<T>::ReadFlagsAndWidth()
{
    sItemFormat oFormat;
    for (bool bFlag = true; bFlag;)
    {
        switch (*m_szPosition)
        {
        case '#':
            AddItem(ALTERNATE_FORM_SIZE);
            oFormat.bAlternate = true;
            break;
        case '*':
            oFormat.nWidth = m_oArguments.NextInt();
            break;
        case '+':
            oFormat.bPlus = true;
            break;
        case ' ':
            oFormat.bSpace = true;
            break;
        case '-':
        case '0':
            break;
        default:
            bFlag = false;
            continue;
        }
        ++m_szPosition;
    }

    if (oFormat.nWidth == 0)
        oFormat.nWidth = ReadNumber(m_szPosition);

    const int nWidth = oFormat.nWidth;
    TOV_ASSERT(nWidth >= 0);
    return oFormat;
}

template<class T> void CFormatMeasure<T>::ReadPrecision(sItemFormat& oFormat)
{
    int nPrecision = 0;
    if (*m_szPosition == '.')
    {
        ++m_szPosition;
        oFormat.bHasPrecision = true;
        if (*m_szPosition == '*')
        {
            ++m_szPosition;
            nPrecision = m_oArguments.NextInt();
        }
        else
        {
            nPrecision = ReadNumber(m_szPosition);
        }
    }
    TOV_ASSERT(nPrecision >= 0);
    oFormat.nPrecision = nPrecision;
}

template<class T> void CFormatMeasure<T>::ReadModifier(sItemFormat& oFormat)
{
    static constexpr T INT64_MODIFIER[] = {'I', '6', '4', 0};
    if (TOVStringBackend::BeginsWith(m_szPosition, INT64_MODIFIER, 3))
    {
        m_szPosition += 3;
        oFormat.eSize = eModifier::Int64;
        return;
    }

    switch (*m_szPosition)
    {
    case 'h':
        oFormat.eSize = eModifier::Narrow;
        break;
    case 'l':
        oFormat.eSize = eModifier::Wide;
        break;
    case 'F':
    case 'L':
    case 'N':
        break;
    default:
        return;
    }
    ++m_szPosition;
}

// Whether a character or text is wide, when bDefault tells it for a conversion without modifier.
bool IsWide(const sItemFormat& oFormat, bool bDefault)
{
    if (oFormat.eSize == eModifier::Narrow)
        return false;
    return bDefault || oFormat.eSize == eModifier::Wide;
}

// The size of a character or text, of llLength units, in its field.
long long FieldSize(const sItemFormat& oFormat, long long llLength)
{
    if (oFormat.nPrecision != 0 && oFormat.nPrecision <= llLength)
        llLength = oFormat.nPrecision;
    return std::max<long long>(llLength, oFormat.nWidth);
}

template<class T> long long CFormatMeasure<T>::CharacterSize(const sItemFormat& oFormat, bool bWide)
{
    const int nCharacter = m_oArguments.NextInt();
    long long llLength = 0;

    // A wide character can take several bytes of narrow text.
    if (!IS_WIDE_FORMAT && IsWide(oFormat, bWide) && static_cast<wchar_t>(nCharacter) > SCHAR_MAX)
    {
        CItemFormatText<T> oItem;
        oItem.Add('l');
        oItem.Add('c');
        llLength = TOVStringBackend::PrintedLength(oItem.GetText(), nCharacter);
    }
    return std::max(FieldSize(oFormat, CHARACTER_SIZE), llLength);
}

template<class T> long long CFormatMeasure<T>::TextSize(const sItemFormat& oFormat, bool bWide)
{
    const void* pText = m_oArguments.NextPointer();
    if (pText == nullptr)
        return FieldSize(oFormat, NULL_TEXT_SIZE);

    // Text is sized by the width that the print will read it with: "%hs" in a wide format is narrow text.
    return IsWide(oFormat, bWide) ? TextLength(oFormat, static_cast<const wchar_t*>(pText))
                                  : TextLength(oFormat, static_cast<const char*>(pText));
}

template<class T> template<class U> long long CFormatMeasure<T>::TextLength(const sItemFormat& oFormat, const U* szText)
{
    // As in the print, a precision also bounds what is read, so that text without terminator can be given.
    const int nLimit = oFormat.nPrecision != 0 ? oFormat.nPrecision : INT_MAX;
    int nLength = 0;
    bool bSameInBothWidths = true;
    for (; nLength < nLimit && szText[nLength] != 0; ++nLength)
        bSameInBothWidths = bSameInBothWidths && 0 < szText[nLength] && szText[nLength] <= SCHAR_MAX;

    long long llConverted = 0;
    if (sizeof(U) != sizeof(T) && !bSameInBothWidths)
    {
        CItemFormatText<T> oItem;
        oItem.Add('.');
        oItem.Add('*');
        oItem.Add(sizeof(U) > sizeof(char) ? 'l' : 'h');
        oItem.Add('s');
        llConverted = TOVStringBackend::PrintedLength(oItem.GetText(), nLimit, szText);
    }
    return std::max(FieldSize(oFormat, std::max(nLength, 1)), llConverted);
}

template<class T> std::int64_t CFormatMeasure<T>::ReadInteger(const sItemFormat& oFormat)
{
    switch (oFormat.eSize)
    {
    case eModifier::Int64: // in both widths: what follows in the list must be found behind all eight bytes
        return m_oArguments.NextInt64();
    case eModifier::Wide:
        return m_oArguments.NextLong();
    case eModifier::Narrow:
        return static_cast<std::int16_t>(m_oArguments.NextInt());
    default:
        return m_oArguments.NextInt();
    }
}

template<class T> long long CFormatMeasure<T>::IntegerSize(const sItemFormat& oFormat, bool bSigned)
{
    const bool bNegative = ReadInteger(oFormat) < 0;
    const bool bHasSign = bSigned && (bNegative || oFormat.bPlus || oFormat.bSpace);
    const long long llPrecision = oFormat.nPrecision;
    return std::max({INTEGER_SIZE, oFormat.nWidth + llPrecision, llPrecision + (bHasSign ? 1 : 0)});
}

template<class T> long long CFormatMeasure<T>::PointerSize(const sItemFormat& oFormat)
{
    m_oArguments.NextPointer();
    const long long llPrecision = oFormat.nPrecision;
    return std::max(INTEGER_SIZE, oFormat.nWidth + llPrecision);
}

template<class T> long long CFormatMeasure<T>::RealSize(const sItemFormat& oFormat, char cConversion)
{
    const double dValue = m_oArguments.NextDouble();
    const long long llPrecision = oFormat.nPrecision;
    const long long llSize = std::max(REAL_SIZE, oFormat.nWidth + llPrecision);
    if (llPrecision + REAL_FRAME_SIZE <= llSize)
        return llSize;
    return std::max(llSize, RealLength(oFormat, true, llPrecision, cConversion, dValue));
}

template<class T> long long CFormatMeasure<T>::FixedSize(const sItemFormat& oFormat)
{
    // Six digits more than asked for, or as many as there are without a precision: only then can a sign be missing.
    const long long llDigits = static_cast<long long>(oFormat.nPrecision) + FIXED_EXTRA_DIGITS;
    const long long llLength = RealLength(oFormat, !oFormat.bHasPrecision, llDigits, 'f', m_oArguments.NextDouble());
    return std::max<long long>(oFormat.nWidth, llLength);
}

// Length of a printed double, without a field. A digit behind the last one that it can have counts without print.
template<class T>
long long CFormatMeasure<T>::RealLength(const sItemFormat& oFormat, bool bSign, long long llDigits, char cConversion,
                                        double dValue)
{
    CItemFormatText<T> oItem;
    if (bSign && oFormat.bPlus)
        oItem.Add('+');
    else if (bSign && oFormat.bSpace)
        oItem.Add(' ');
    if (oFormat.bAlternate)
        oItem.Add('#');
    oItem.Add('.');
    oItem.Add('*');
    oItem.Add(cConversion);

    const long long llPrinted = std::min(llDigits, MAX_REAL_DIGITS);
    return (llDigits - llPrinted) +
           TOVStringBackend::PrintedLength(oItem.GetText(), static_cast<int>(llPrinted), dValue);
}
} // namespace

int MeasureFormat(const char* szFormat, va_list pArguments)
{
    return CFormatMeasure<char>(szFormat, pArguments).Measure();
}

int MeasureFormat(const wchar_t* szFormat, va_list pArguments)
{
    return CFormatMeasure<wchar_t>(szFormat, pArguments).Measure();
}
} // namespace TOVPlatform
