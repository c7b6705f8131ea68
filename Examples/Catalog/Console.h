// What the program shows.
#pragma once

#include "Checksummer.h"

#include <chrono>

// A name as it can be shown on one line: control characters as \xNN.
CTOVStringA Printable(const CTOVStringA& oName);

// The progress line of long work. Shows nothing unless standard error is a terminal, and nothing in the first half
// second. Erases its line at the end.
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

// "12 files, 3456 bytes"
CTOVStringA DescribeFiles(long lFiles, unsigned long long ullBytes);

// "12 files, 3456 bytes in 0.12 s (28.8 MB/s)"
CTOVStringA DescribeWork(long lFiles, unsigned long long ullBytes, std::chrono::steady_clock::duration oTime);
