// The failed check of which nobody has heard, and which is shown if it ends the process.
#pragma once

#include <Debug/TOVBase.h>

namespace TOVPlatform
{
namespace TOVPosix
{
// Throws the check's exception. If nobody catches it, its text goes to standard error before the process ends, unless
// it is shown there already as text for the debugger. Allocates nothing but the exception.
[[noreturn]] void ThrowUnheard(const char* szExpression, const char* szFile, tDword dwLine);
} // namespace TOVPosix
} // namespace TOVPlatform
