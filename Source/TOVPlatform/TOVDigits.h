// Makes decimal digits of whole numbers and of binary fractions. Internal to the text functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace TOVPlatform
{
namespace TOVDigits
{
// The format of a double: so many bits of the mantissa follow the leading one. The value is the mantissa, as a whole
// number, times 2 to the power of the stored exponent minus the bias.
constexpr int MANTISSA_BITS = 52;
constexpr int EXPONENT_BIAS = 1075;

// So many digits fit into 32 bits, whatever they are.
constexpr int GROUP_DIGITS = 9;
constexpr std::uint32_t POWERS_OF_TEN[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};

constexpr char DIGIT_PAIRS[] = "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                               "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                               "8081828384858687888990919293949596979899";

// Writes the last nDigits digits of the value in front of pEnd, and returns where they begin.
inline char* WriteDigits(char* pEnd, int nDigits, std::uint32_t uValue)
{
    for (; nDigits >= 2; nDigits -= 2, uValue /= 100)
    {
        pEnd -= 2;
        std::memcpy(pEnd, &DIGIT_PAIRS[std::size_t(uValue % 100) * 2], 2);
    }
    if (nDigits > 0)
        *--pEnd = static_cast<char>('0' + uValue % 10);
    return pEnd;
}

// Multiplies a fraction in units of 2^-64 by a factor below 2^32: returns the whole part and leaves the fraction.
inline std::uint32_t TakeWhole(std::uint64_t& ullFraction, std::uint32_t uFactor)
{
    const std::uint64_t ullLow = (ullFraction & UINT32_MAX) * uFactor;
    const std::uint64_t ullHigh = (ullFraction >> 32) * uFactor + (ullLow >> 32);
    ullFraction = (ullHigh << 32) | (ullLow & UINT32_MAX);
    return static_cast<std::uint32_t>(ullHigh >> 32);
}
} // namespace TOVDigits
} // namespace TOVPlatform
