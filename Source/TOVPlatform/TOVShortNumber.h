// Reads the most common form of a number. Internal to the text functions and classes.
#pragma once

namespace TOVPlatform
{
// Reads one to nine decimal digits, which may follow a minus sign. Returns the end of the number; null for any other
// form.
template<class tUnit> inline const tUnit* ReadShortDecimal(const tUnit* szStart, int& nValue)
{
    constexpr int MAX_DIGITS = 9;
    const bool bNegative = *szStart == '-';
    const tUnit* const szDigits = szStart + (bNegative ? 1 : 0);
    unsigned int nMagnitude = 0;
    int nDigits = 0;
    for (; nDigits <= MAX_DIGITS; ++nDigits) // a loop of known length is unrolled
    {
        const unsigned int nDigit = static_cast<unsigned int>(szDigits[nDigits]) - '0';
        if (nDigit > 9)
            break;
        nMagnitude = nMagnitude * 10 + nDigit;
    }
    if (nDigits == 0 || nDigits > MAX_DIGITS)
        return nullptr;

    nValue = static_cast<int>(bNegative ? 0 - nMagnitude : nMagnitude);
    return szDigits + nDigits;
}
} // namespace TOVPlatform
