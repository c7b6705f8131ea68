// Declares the forms of TOV_ASSERT for the library's own sources, and the rule for destructors: RunInDestructor.
#pragma once

#include <Debug/TOVBase.h>

// This is a check whose literal text differs from its condition.
#define TOV_ASSERT_TEXT(condition, szText)                                                                             \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            TOVDebug::Assert(szText, TOV_CHECK_FILE, __LINE__);                                                        \
    } while (false)

namespace TOVDebug
{
// Runs a part of a destructor and lets no exception escape: no destructor of the library throws, so that its classes
// can be bases and members of any others. A check that fails in the part is reported to all listeners under its literal
// text and ends the part; the destructor continues. An exception that a listener throws is caught here as well.
template<class TPart> void RunInDestructor(const TPart& fnPart) noexcept
{
    try
    {
        fnPart();
    }
    catch (...) // Settled: only listeners learn of a failed check in a destructor.
    {
    }
}
} // namespace TOVDebug

// Checks a condition in a destructor: a false one is reported to all listeners, and the destructor continues.
#define TOV_TELL_TEXT(condition, szText) TOVDebug::RunInDestructor([&] { TOV_ASSERT_TEXT(condition, szText); })
