// Internal. Declares TOV_LITERAL, the literal of a check that is written once for narrow and for wide text.
#pragma once

#include <type_traits>

// Is "text" or L"text": the one whose characters are of type T.
#define TOV_LITERAL(T, szText) TOVSelectLiteral<T>(szText, L##szText)

template<class T> constexpr const T* TOVSelectLiteral(const char* szNarrow, const wchar_t* szWide)
{
    if constexpr (std::is_same_v<T, wchar_t>)
        return szWide;
    else
        return szNarrow;
}
