#include "Support/TOVMultiByte.h"

#include <clocale>
#include <stdexcept>

CMultiByteCodePage::CMultiByteCodePage()
{
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr)
        throw std::runtime_error("no locale C.UTF-8");
}

CMultiByteCodePage::~CMultiByteCodePage()
{
    std::setlocale(LC_CTYPE, "C");
}

const char* CMultiByteCodePage::Character() const
{
    return "\xC3\xA9";
}
