// A multi-byte code page for the process, for as long as it lives.
#pragma once

class CMultiByteCodePage
{
public:
    CMultiByteCodePage();

    // Back to single bytes.
    ~CMultiByteCodePage();

    CMultiByteCodePage(const CMultiByteCodePage&) = delete;
    CMultiByteCodePage& operator=(const CMultiByteCodePage&) = delete;

    // One character of two bytes in that code page. None of the two stands for a character of its own in the tests'
    // texts.
    const char* Character() const;
};
