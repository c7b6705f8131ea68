// Literals for checks that are written once for narrow and for wide text. Internal.
#pragma once

#include <type_traits>

// "text" or L"text", whichever is text of T.
#define TOV_LITERAL(T, szText) TOVSelectLiteral<T>(szText, L##szText)

template<class T> constexpr const T* TOVSelectLiteral(const char* szNarrow, const wchar_t* szWide)
{
    if constexpr (std::is_same_v<T, wchar_t>)
        return szWide;
    else
        return szNarrow;
}
