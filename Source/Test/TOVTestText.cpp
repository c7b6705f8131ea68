#include <Test/TOVTestText.h>

#include <cmath>
#include <cstring>

namespace TOVTest
{
namespace
{
constexpr int WORDS = 32; // words of 32 bits, for the 1024 bits of the largest double

// Computes the exact decimal digits of a whole number.
class CWholeDigits
{
public:
    explicit CWholeDigits(double dWhole);

    // Returns the digits, which have no leading zeros; there is at least one.
    const char* First() const { return m_szDigits + m_nFirst; }

private:
    char m_szDigits[312];
    int m_nFirst;
};

CWholeDigits::CWholeDigits(double dWhole) : m_szDigits(), m_nFirst(static_cast<int>(sizeof(m_szDigits)) - 1)
{
    // The highest word comes first. Scaling by powers of two and subtracting whole words is exact.
    tDword aWords[WORDS];
    for (int nWord = 0; nWord < WORDS; ++nWord)
    {
        const int nShift = 32 * (WORDS - 1 - nWord);
        aWords[nWord] = static_cast<tDword>(std::ldexp(dWhole, -nShift));
        dWhole -= std::ldexp(static_cast<double>(aWords[nWord]), nShift);
    }

    int nHighest = 0;
    do
    {
        unsigned long long nRest = 0;
        for (int nWord = nHighest; nWord < WORDS; ++nWord)
        {
            nRest = nRest << 32 | aWords[nWord];
            aWords[nWord] = static_cast<tDword>(nRest / 10);
            nRest %= 10;
        }
        m_szDigits[--m_nFirst] = static_cast<char>('0' + nRest);
        while (nHighest < WORDS && aWords[nHighest] == 0)
            ++nHighest;
    } while (nHighest < WORDS);
}

// Returns the first four decimals of a fraction in [0, 1) as a number. They are exact and not rounded.
unsigned int FourDecimals(double dFraction)
{
    // Lower bits than these cannot change the four decimals.
    tDword aWords[3];
    for (tDword& nWord : aWords)
    {
        dFraction = std::ldexp(dFraction, 32);
        nWord = static_cast<tDword>(dFraction);
        dFraction -= nWord;
    }

    unsigned long long nCarry = 0;
    for (int nWord = 2; nWord >= 0; --nWord)
        nCarry = (aWords[nWord] * 10000ULL + nCarry) >> 32;
    return static_cast<unsigned int>(nCarry);
}

// Settled: returns one more than the number of divisions by 10 after which the value is at most 1.
int CountDigits(double dMagnitude)
{
    int nDigits = 1;
    // Each quotient is stored, since a register may hold more digits than a double.
    volatile double dRest = dMagnitude;
    while (dRest > 1)
    {
        dRest = dRest / 10;
        ++nDigits;
    }
    return nDigits;
}
} // namespace

CTOVTestText::CTOVTestText(bool bValue) : m_nLength(0), m_szText()
{
    Append(bValue ? "true" : "false");
}

CTOVTestText::CTOVTestText(char cValue) : m_nLength(0), m_szText()
{
    AppendCharacter(static_cast<unsigned char>(cValue));
}

CTOVTestText::CTOVTestText(signed char cValue) : m_nLength(0), m_szText()
{
    AppendCharacter(static_cast<unsigned char>(cValue));
}

CTOVTestText::CTOVTestText(unsigned char cValue) : m_nLength(0), m_szText()
{
    AppendCharacter(cValue);
}

CTOVTestText::CTOVTestText(wchar_t cValue) : m_nLength(0), m_szText()
{
    AppendCharacter(cValue);
}

CTOVTestText::CTOVTestText(char16_t cValue) : m_nLength(0), m_szText()
{
    AppendCharacter(cValue);
}

CTOVTestText::CTOVTestText(char32_t cValue) : m_nLength(0), m_szText()
{
    AppendCharacter(cValue);
}

CTOVTestText::CTOVTestText(int nValue) : m_nLength(0), m_szText()
{
    AppendInteger(nValue);
}

CTOVTestText::CTOVTestText(long lValue) : m_nLength(0), m_szText()
{
    AppendInteger(lValue);
}

CTOVTestText::CTOVTestText(unsigned short nValue) : m_nLength(0), m_szText()
{
    AppendDigits(nValue, 10);
}

CTOVTestText::CTOVTestText(unsigned int nValue) : m_nLength(0), m_szText()
{
    AppendDigits(nValue, 10);
}

CTOVTestText::CTOVTestText(unsigned long ulValue) : m_nLength(0), m_szText()
{
    AppendDigits(ulValue, 10);
}

CTOVTestText::CTOVTestText(unsigned long long nValue) : m_nLength(0), m_szText()
{
    AppendDigits(nValue, 10);
}

CTOVTestText::CTOVTestText(double dValue) : m_nLength(0), m_szText()
{
    AppendDouble(dValue);
}

CTOVTestText::CTOVTestText(const CTOVTestText& oOther) = default;
CTOVTestText& CTOVTestText::operator=(const CTOVTestText& oOther) = default;

void CTOVTestText::SetUnprintable()
{
    Append("(unprintable value)");
}

void CTOVTestText::Append(char cCharacter)
{
    m_szText[m_nLength++] = cCharacter;
}

void CTOVTestText::Append(const char* szText)
{
    while (*szText != '\0')
        Append(*szText++);
}

void CTOVTestText::AppendDigits(unsigned long long nValue, unsigned int nBase)
{
    if (nValue >= nBase)
        AppendDigits(nValue / nBase, nBase);
    const unsigned int nDigit = static_cast<unsigned int>(nValue % nBase);
    // Settled: a digit above 9 appears as a question mark.
    Append(nDigit < 10 ? static_cast<char>('0' + nDigit) : '?');
}

void CTOVTestText::AppendInteger(long long nValue)
{
    if (nValue < 0)
        Append('-');
    const unsigned long long nBits = static_cast<unsigned long long>(nValue);
    AppendDigits(nValue < 0 ? 0 - nBits : nBits, 10);
}

void CTOVTestText::AppendCharacter(unsigned long nCode)
{
    constexpr char CODES[] = "\0\a\b\t\n\r\"\'\\";
    constexpr char LETTERS[] = "0abtnr\"\'\\";

    Append('\'');
    const void* const pSpecial = nCode < 128 ? std::memchr(CODES, static_cast<int>(nCode), sizeof(CODES) - 1) : nullptr;
    if (pSpecial != nullptr)
    {
        Append('\\');
        Append(LETTERS[static_cast<const char*>(pSpecial) - CODES]);
    }
    else if (nCode >= 32 && nCode < 128)
    {
        Append(static_cast<char>(nCode));
    }
    else
    {
        Append("\\x");
        if (nCode < 10)
            Append('0');
        AppendDigits(nCode, 16);
    }
    Append('\'');
}

void CTOVTestText::AppendDouble(double dValue)
{
    if (std::isnan(dValue))
    {
        Append("nan");
        return;
    }

    if (dValue < 0)
        Append('-');
    const double dMagnitude = std::fabs(dValue);
    if (std::isinf(dMagnitude))
    {
        Append("inf");
        return;
    }

    const double dWhole = std::floor(dMagnitude);
    const CWholeDigits oWhole(dWhole);
    const char* szDigit = oWhole.First();
    const int nDigits = CountDigits(dMagnitude);
    if (nDigits < 25)
    {
        const unsigned int nDecimals = FourDecimals(dMagnitude - dWhole);
        Append(szDigit);
        Append('.');
        for (unsigned int nUnit = 1000; nUnit > 0; nUnit /= 10)
            Append(static_cast<char>('0' + nDecimals / nUnit % 10));
    }
    else
    {
        Append(*szDigit++);
        Append('.');
        for (int nDecimal = 0; nDecimal < 4; ++nDecimal)
            Append(*szDigit++);
        Append('E');
        AppendDigits(static_cast<unsigned int>(nDigits - 1), 10);
    }
}
} // namespace TOVTest
