// The platform's text functions for both widths under one name each. Internal companion of TOVPlatform/TOVString.h.
#pragma once

#include <TOVPlatform/TOVString.h>

// The type of the text picks the function: TOVText::Length(szText) is the narrow function for a char pointer and the
// wide one for a wchar_t pointer. Sources that are written once for both widths call the functions by these names.
namespace TOVText
{
using namespace TOVPlatform::TOVStringA;
using namespace TOVPlatform::TOVStringW;
} // namespace TOVText
