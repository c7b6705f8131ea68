// Forms of TOV_ASSERT for the library's own sources.
#pragma once

#include <Debug/TOVBase.h>

// A check whose literal text differs from the condition as this compiler wants it written.
#define TOV_ASSERT_TEXT_AT(szFile, condition, szText)                                                                  \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            TOVDebug::Assert(szText, szFile, __LINE__);                                                                \
    } while (false)

#define TOV_ASSERT_TEXT(condition, szText) TOV_ASSERT_TEXT_AT(__FILE__, condition, szText)

// A check in code that several classes, or both platforms, share: it reports the source of the one that it serves.
// It stringises its own argument, so that macros in it keep their names in the text.
#define TOV_ASSERT_AT(szFile, expression)                                                                              \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(expression))                                                                                             \
            TOVDebug::Assert(#expression, szFile, __LINE__);                                                           \
    } while (false)
