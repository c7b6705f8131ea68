#include "Support/TOVMultiByte.h"

#include <mbctype.h>
#include <stdexcept>

CMultiByteCodePage::CMultiByteCodePage()
{
    // Shift-JIS.
    if (_setmbcp(932) != 0)
        throw std::runtime_error("no code page 932");
}

CMultiByteCodePage::~CMultiByteCodePage()
{
    _setmbcp(_MB_CP_SBCS);
}

// Its second byte is a backslash by itself.
const char* CMultiByteCodePage::Character() const
{
    return "\x83\x5C";
}
