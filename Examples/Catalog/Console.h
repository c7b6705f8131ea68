// Declares the texts that the program shows.
#pragma once

#include "Checksummer.h"

#include <chrono>

// Returns a name in a form for one line: bytes become \xNN if they are no character of the system's names, and those of
// control characters, direction marks and other characters that cannot be seen.
CTOVStringA Printable(const CTOVStringA& oName);

// Shows a line with the progress of long work, if standard error is a terminal, after the first half second. The
// destructor erases the line.
class CProgressLine
{
public:
    CProgressLine(long lFiles, unsigned long long ullBytes);
    ~CProgressLine();
    CProgressLine(const CProgressLine&) = delete;
    CProgressLine& operator=(const CProgressLine&) = delete;

    void Show(const sChecksumProgress& oProgress);

private:
    void Print(const char* szText);

    bool m_bTerminal;
    long m_lFiles;
    unsigned long long m_ullBytes;
    std::chrono::steady_clock::time_point m_oStart;
    int m_nWidth = 0;
};

// Returns a text such as "12 files, 3456 bytes".
CTOVStringA DescribeFiles(long lFiles, unsigned long long ullBytes);

// Returns a text such as "12 files, 3456 bytes in 0.12 s (28.8 MB/s)".
CTOVStringA DescribeWork(long lFiles, unsigned long long ullBytes, std::chrono::steady_clock::duration oTime);
