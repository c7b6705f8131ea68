// The measure of formatted text. Internal to the text functions.
#pragma once

#include <cstdarg>

namespace TOVPlatform
{
// VSCPrintf of TOVPlatform/TOVString.h, for checked arguments.
int MeasureFormat(const char* szFormat, va_list pArguments);
int MeasureFormat(const wchar_t* szFormat, va_list pArguments);
} // namespace TOVPlatform
