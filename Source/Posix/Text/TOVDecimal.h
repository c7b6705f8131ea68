// The decimal digits of a double, and its printed forms. Internal to the Posix text functions.
#pragma once

#include <cstdint>

namespace TOVPlatform
{
// A printed double without sign and field. A run of zeros is kept as a count, so that no precision needs a block.
//
//   <digits><zeros> . <zeros><digits><zeros> e+00
struct sRealText
{
    const char* pWhole = "0";
    int nWholeDigits = 1;
    int nWholeZeros = 0;
    bool bHasPoint = false;
    long long llLeadingZeros = 0;
    const char* pFraction = "";
    int nFractionDigits = 0;
    long long llTrailingZeros = 0;
    char szExponent[8] = {};
    int nExponentLength = 0;
};

// The digits of |value|: 0.ddd * 10^point. Rounds half away from zero, as the Windows runtime does and the C library
// does not. Infinity and NaN have the digits "1#INF", "1#QNAN" and "1#IND", which are cut and rounded like any others:
// infinity with two digits after the point is "1.#J".
class CTOVDecimal
{
public:
    explicit CTOVDecimal(double dValue);

    // cConversion is one of e E f g G; bAlternate keeps the point, and for g the trailing zeros. The texts point into
    // this object. Each object allows one call only.
    sRealText ToText(char cConversion, int nPrecision, bool bAlternate);

private:
    // The value is m_ullMantissa * 2^m_nExponent.
    bool HasLowestBitAt(int nExponent) const;
    int CountFractionDigits() const;

    // These read the digits that a conversion can show, rounded already or exact.
    void ReadFixed(int nPrecision);
    void ReadScientific(int nPrecision);
    void ReadExactly();

    bool ReadFromWords(int nPrecision);
    void ReadFixedText(int nPrecision);
    void SetDigits(const char* szDigits);
    void TakeDigits(int nDigits, int nPoint);

    void Round(long long llKeptDigits);
    void RoundUp();
    void DropTrailingZeros();
    int GetExponent() const { return m_nDigits > 0 ? m_nPoint - 1 : 0; }

    sRealText ToFixed(long long llPrecision, bool bPoint);
    sRealText ToScientific(long long llPrecision, bool bPoint, char cLetter);
    sRealText ToGeneral(int nPrecision, bool bAlternate, char cLetter);

    static constexpr int MAX_WHOLE_DIGITS = 309;
    static constexpr int MAX_FRACTION_DIGITS = 1074;

    double m_dMagnitude;
    std::uint64_t m_ullMantissa = 0;
    int m_nExponent = 0;
    bool m_bFinite;
    int m_nDigits = 0;
    int m_nPoint = 0;
    char m_szDigits[MAX_WHOLE_DIGITS + 1 + MAX_FRACTION_DIGITS]; // a point stands among them for a while
};
} // namespace TOVPlatform
