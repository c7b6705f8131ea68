// Declares the forms of TOV_ASSERT for the library's own sources, and the rule for destructors: RunInDestructor.
#pragma once

#include <Debug/TOVBase.h>

// This checks a condition, and reports a failure with a text that differs from the condition.
#define TOV_ASSERT_TEXT(condition, szText)                                                                             \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            TOVDebug::Assert(szText, TOV_CHECK_FILE, __LINE__);                                                        \
    } while (false)

namespace TOVDebug
{
// Runs a part of a destructor and lets no exception escape: no destructor of the library throws, so that its classes
// can be bases and members of any others. If a check fails in this part, all listeners are notified with its literal
// text, and the rest of the part is skipped; the destructor continues. An exception that a listener throws is caught
// here as well.
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

// Checks a condition in a destructor. If it is false, all listeners are notified, and the destructor continues.
#define TOV_TELL_TEXT(condition, szText) TOVDebug::RunInDestructor([&] { TOV_ASSERT_TEXT(condition, szText); })
