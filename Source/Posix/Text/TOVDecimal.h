// The exact decimal digits of a double, and its printed forms. Internal to the Posix text functions.
#pragma once

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
    // this object. The call rounds the object's own digits, so that each object allows one call only.
    sRealText ToText(char cConversion, int nPrecision, bool bAlternate);

private:
    static constexpr int MAX_DIGITS = 309 + 1074; // before the point and after it

    void SetDigits(const char* szDigits);
    void ReadDigits(double dValue);
    void Round(long long llKeptDigits);
    void DropTrailingZeros();
    int GetExponent() const { return m_nDigits > 0 ? m_nPoint - 1 : 0; }

    sRealText ToFixed(long long llPrecision, bool bPoint);
    sRealText ToScientific(long long llPrecision, bool bPoint, char cLetter);
    sRealText ToGeneral(int nPrecision, bool bAlternate, char cLetter);

    char m_szDigits[MAX_DIGITS];
    int m_nDigits = 0;
    int m_nPoint = 0;
    bool m_bFinite = true;
};
} // namespace TOVPlatform
