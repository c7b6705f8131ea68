// The narrow and the wide functions and strings as types, so that one source calls both.
#pragma once

#include <TOVPlatform/TOVString.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

struct sNarrow
{
    typedef char tUnit;
    typedef CTOVStringA tString;
    typedef CTOVStringW tOther;
    static constexpr const char* PREFIX = "A.";
};

struct sWide
{
    typedef wchar_t tUnit;
    typedef CTOVStringW tString;
    typedef CTOVStringA tOther;
    static constexpr const char* PREFIX = "W.";
};

// Defines Name<TWidth>: the function of that name and width.
#define TOV_BOTH_WIDTHS(Name)                                                                                          \
    template<class TWidth, class... TArguments> auto Name(TArguments... oArguments)                                    \
    {                                                                                                                  \
        if constexpr (sizeof(typename TWidth::tUnit) == 1)                                                             \
            return TOVPlatform::TOVStringA::Name(oArguments...);                                                       \
        else                                                                                                           \
            return TOVPlatform::TOVStringW::Name(oArguments...);                                                       \
    }
