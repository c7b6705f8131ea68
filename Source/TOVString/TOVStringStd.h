// Declares how strings come from and go to the standard library: views, strings of 16-bit units, and hashes. All of it
// is inline; include it where it is needed. TOVStringA.h and TOVStringW.h themselves have the operators for streams.
#pragma once

#include <Debug/TOVCheck.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <climits>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace TOVStandard
{
// Returns the whole text, with zeros inside it. The view is of use as long as the string keeps its block and length. No
// copy.
inline std::string_view ViewOf(const CTOVStringA& oText)
{
    return std::string_view(oText.IsEmpty() ? "" : oText.GetString(), static_cast<std::size_t>(oText.GetLength()));
}

// Returns a copy of the whole text. On Linux the standard library's functions for wchar_t take 32-bit units, so that
// std::wstring is of no use there.
inline std::u16string Utf16Of(const CTOVStringW& oText)
{
    const wchar_t* const pText = oText.GetString();
    return std::u16string(pText, pText + oText.GetLength());
}

// Returns a string of exactly these bytes, with zeros among them, in a block of its own; an empty text has no block.
// Throws unless "nLength <= INT_MAX-1".
inline CTOVStringA TextOf(std::string_view sText)
{
    TOV_ASSERT_TEXT(sText.size() <= INT_MAX - 1, "nLength <= INT_MAX-1");

    CTOVStringA oText;
    if (!sText.empty())
        oText.AssignCopy(static_cast<int>(sText.size()), sText.data());
    return oText;
}

// Does the same for units of UTF-16.
inline CTOVStringW WideTextOf(std::u16string_view sText)
{
    TOV_ASSERT_TEXT(sText.size() <= INT_MAX - 1, "nLength <= INT_MAX-1");

    CTOVStringW oText;
    if (!sText.empty())
    {
        oText.AllocBuffer(static_cast<int>(sText.size()));
        wchar_t* pUnit = oText.GetString();
        for (const char16_t cUnit : sText)
            *pUnit++ = static_cast<wchar_t>(cUnit);
    }
    return oText;
}

// Returns the hash of what the operator == compares: the units up to the first zero.
inline std::size_t HashOf(const CTOVStringA& oText)
{
    return std::hash<std::string_view>()(oText.GetString() != nullptr ? oText.GetString() : "");
}

// Does the same for a wide text.
inline std::size_t HashOf(const CTOVStringW& oText)
{
    const wchar_t* const pText = oText.GetString();
    const int nLength = pText != nullptr ? TOVPlatform::TOVStringW::Length(pText) : 0;
    return std::hash<std::string_view>()(
        std::string_view(reinterpret_cast<const char*>(pText), static_cast<std::size_t>(nLength) * sizeof(wchar_t)));
}
} // namespace TOVStandard

template<> struct std::hash<CTOVStringA>
{
    std::size_t operator()(const CTOVStringA& oText) const { return TOVStandard::HashOf(oText); }
};

template<> struct std::hash<CTOVStringW>
{
    std::size_t operator()(const CTOVStringW& oText) const { return TOVStandard::HashOf(oText); }
};
