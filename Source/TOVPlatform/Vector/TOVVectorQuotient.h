// Divides by a billion without the processor's divider, which takes twice as long.
#pragma once

#include <TOVPlatform/Vector/TOVVectorWide.h>

#include <cfloat>

namespace TOVPlatform
{
namespace Vector
{
constexpr double BILLION = 1e9;

#if TOV_HAS_X86_VECTORS && FLT_EVAL_METHOD == 0
// The two halves of 10^-9: the nearest number, which is a whole number of 2^-82, and the nearest one to what that
// lacks. Times a billion, the first one misses 2^82 of these by so few that they fit into the difference of low words.
constexpr double BILLIONTH = 1 / BILLION;
constexpr auto BILLIONTH_DIGITS = static_cast<unsigned long long>(BILLIONTH * 0x1p82);
constexpr auto MISSING_DIGITS = static_cast<long long>(0 - BILLIONTH_DIGITS * static_cast<unsigned long long>(BILLION));
constexpr double REST_OF_BILLIONTH = static_cast<double>(MISSING_DIGITS) * 0x1p-82 / BILLION;

// Multiplies by both halves, and rounds once (N. Brisebarre, J.-M. Muller, "Correctly Rounded Multiplication by
// Arbitrary Precision Constants", 2008). Before that, the product differs from the quotient by less than 2^-52 units in
// its last place. The quotient of a whole number is 2^-22 such units or more away from the middle between two
// numbers, as 5^9 is odd and less than 2^21: so both are rounded to the same number. A processor with vectors of 64
// bytes multiplies and adds in one instruction.
TOV_WIDE_TEXT inline double MultiplyByBillionth(double dDividend)
{
    return __builtin_fma(dDividend, BILLIONTH, dDividend * REST_OF_BILLIONTH);
}

// Divides a number without a fraction.
TOV_ALWAYS_INLINE double DivideByBillion(double dDividend)
{
    return TOV_LIKELY(UsesWideVectors()) ? MultiplyByBillionth(dDividend) : dDividend / BILLION;
}
#else
TOV_ALWAYS_INLINE double DivideByBillion(double dDividend)
{
    return dDividend / BILLION;
}
#endif
} // namespace Vector
} // namespace TOVPlatform
