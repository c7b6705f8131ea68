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
// The two halves of 10^-9: the nearest number, and the nearest one to what that lacks.
constexpr double BILLIONTH = 1 / BILLION;
constexpr double REST_OF_BILLIONTH = __builtin_fma(-BILLIONTH, BILLION, 1.0) / BILLION;

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
[[gnu::always_inline]] inline double DivideByBillion(double dDividend)
{
    return TOV_LIKELY(UsesWideVectors()) ? MultiplyByBillionth(dDividend) : dDividend / BILLION;
}
#else
[[gnu::always_inline]] inline double DivideByBillion(double dDividend)
{
    return dDividend / BILLION;
}
#endif
} // namespace Vector
} // namespace TOVPlatform
