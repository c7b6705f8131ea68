// While it lives, the process has a multi-byte code page.
#pragma once

class CMultiByteCodePage
{
public:
    CMultiByteCodePage();

    // Restores a code page of single bytes.
    ~CMultiByteCodePage();

    CMultiByteCodePage(const CMultiByteCodePage&) = delete;
    CMultiByteCodePage& operator=(const CMultiByteCodePage&) = delete;

    // One character of two bytes in that code page. Neither byte is a character of its own in the texts of the tests.
    const char* Character() const;
};
