// Forms of TOV_ASSERT for the library's own sources, and the rule for destructors: RunInDestructor.
#pragma once

#include <Debug/TOVBase.h>

// A check whose literal text differs from the condition as this compiler wants it written.
#define TOV_ASSERT_TEXT_AT(szFile, condition, szText)                                                                  \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            TOVDebug::Assert(szText, szFile, __LINE__);                                                                \
    } while (false)

#define TOV_ASSERT_TEXT(condition, szText) TOV_ASSERT_TEXT_AT(TOV_CHECK_FILE, condition, szText)

// A check in code that several classes, or both platforms, share: it reports the source of the one that it serves.
// It stringises its own argument, so that macros in it keep their names in the text.
#define TOV_ASSERT_AT(szFile, expression)                                                                              \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(expression))                                                                                             \
            TOVDebug::Assert(#expression, szFile, __LINE__);                                                           \
    } while (false)

namespace TOVDebug
{
// Runs a part of a destructor, and lets nothing out: no destructor of the library throws, so that its classes can be
// bases and members of any others. A check that fails in the part is told to all listeners under its literal text and
// ends the part; the destructor goes on. What a listener throws when it is told ends here as well.
template<class TPart> void RunInDestructor(const TPart& fnPart) noexcept
{
    try
    {
        fnPart();
    }
    catch (...) // Settled: whoever wants to know of a failed check listens.
    {
    }
}
} // namespace TOVDebug

// A check in a destructor: a false condition is told, and the destructor goes on after it.
#define TOV_TELL_TEXT(condition, szText) TOVDebug::RunInDestructor([&] { TOV_ASSERT_TEXT(condition, szText); })
