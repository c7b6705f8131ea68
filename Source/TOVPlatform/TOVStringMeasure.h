// Declares the functions that measure formatted text. Internal to the text functions.
#pragma once

#include <cstdarg>

namespace TOVPlatform
{
// These do the work of VSCPrintf (TOVPlatform/TOVString.h) after its arguments have been checked.
int MeasureFormat(const char* szFormat, va_list pArguments);
int MeasureFormat(const wchar_t* szFormat, va_list pArguments);
} // namespace TOVPlatform
