// Keeps objects out of the arguments of a format.
#pragma once

#include <type_traits>

namespace TOVDebug
{
// Whether a format can take arguments of these types: numbers, enumerations and pointers. Arrays and functions are
// handed on as pointers.
template<class... TArguments>
inline constexpr bool ARE_FORMAT_ARGUMENTS = (std::is_scalar_v<std::decay_t<TArguments>> && ...);

// Beside each exported function with a format and "..." stands an inline overload of that name which takes part only
// where an argument is an object; it does not compile, and says why. All other calls go to the exported function as
// they stand. Whoever takes such a function's address must name its type, as of any overloaded function.
template<class... TArguments> using tRefusal = std::enable_if_t<!ARE_FORMAT_ARGUMENTS<TArguments...>, int>;
} // namespace TOVDebug

// The body of these overloads begins with it. In the body of each, so that each is told of.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define TOV_REFUSE_OBJECTS(TArguments)                                                                                 \
    static_assert(TOVDebug::ARE_FORMAT_ARGUMENTS<TArguments...>,                                                       \
                  "a format takes numbers and pointers, but no objects: write ~oText for a string object oText, and "  \
                  "c_str() for one of the standard library")
// NOLINTEND(bugprone-macro-parentheses)
