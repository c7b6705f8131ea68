#include "Support/TOVMultiByte.h"

#include <mbctype.h>
#include <stdexcept>

CMultiByteCodePage::CMultiByteCodePage()
{
    // The code page 932, Shift-JIS.
    if (_setmbcp(932) != 0)
        throw std::runtime_error("no code page 932");
}

CMultiByteCodePage::~CMultiByteCodePage()
{
    _setmbcp(_MB_CP_SBCS);
}

// The second byte, taken alone, is a backslash.
const char* CMultiByteCodePage::Character() const
{
    return "\x83\x5C";
}
