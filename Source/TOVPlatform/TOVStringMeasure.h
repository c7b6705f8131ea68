// Sizing of formatted text. Internal: the contract is that of VSCPrintf in TOVPlatform/TOVString.h.
#pragma once

#include <cstdarg>

namespace TOVPlatform
{
int MeasureFormat(const char* szFormat, va_list pArguments);
int MeasureFormat(const wchar_t* szFormat, va_list pArguments);
} // namespace TOVPlatform
