// Makes the compiler refuse objects among the arguments of a format.
#pragma once

#include <type_traits>

namespace TOVDebug
{
// True if a format can take arguments of these types: numbers, enumerations and pointers. Arrays and functions are
// passed as pointers.
template<class... TArguments>
inline constexpr bool ARE_FORMAT_ARGUMENTS = (std::is_scalar_v<std::decay_t<TArguments>> && ...);

// Each exported function with a format and "..." has an inline overload, which is chosen only if an argument is an
// object; it refuses to compile and says why. All other calls reach the exported function unchanged. Code that takes
// the address of such a function must name the function's type, as for any overloaded function.
template<class... TArguments> using tRefusal = std::enable_if_t<!ARE_FORMAT_ARGUMENTS<TArguments...>, int>;
} // namespace TOVDebug

// The body of each such overload contains this check, so that the compiler reports each wrong call.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define TOV_REFUSE_OBJECTS(TArguments)                                                                                 \
    static_assert(TOVDebug::ARE_FORMAT_ARGUMENTS<TArguments...>,                                                       \
                  "a format takes numbers and pointers, but no objects: write ~oText for a string object oText, and "  \
                  "c_str() for one of the standard library")
// NOLINTEND(bugprone-macro-parentheses)
