// Declares the texts that the program shows.
#pragma once

#include "Checksummer.h"
#include "TreeWalker.h"

#include <chrono>
#include <string>

// Returns a name in a form for one line: bytes become \xNN if they are no character of the system's names, and those of
// control characters, direction marks and other characters that cannot be seen.
CTOVStringA Printable(const CTOVStringA& oName);

// Returns a name as a JSON string in quotes. Bytes that are no character become U+FFFD, and what a terminal does not
// show as it is becomes \u and its number. bExact is false if there are such bytes.
std::string JsonText(const CTOVStringA& oName, bool& bExact);

// Returns members of a JSON object: the name under the key, and if the name has bytes that are no character, its
// hexadecimal bytes under the key with "Bytes" after it.
std::string JsonName(const char* szKey, const CTOVStringA& oName);

// Prints a JSON array of names, in which bytes that are no characters are U+FFFD. It is printed name by name, as a name
// can take six times its memory in JSON, and a catalogue can have thousands of them.
void PrintJsonNames(const CNameList& aNames);

// Shows a line with the progress of long work, if standard error is a terminal, after the first half second. The
// destructor erases the line.
class CProgressLine
{
public:
    explicit CProgressLine(bool bQuiet);
    ~CProgressLine();
    CProgressLine(const CProgressLine&) = delete;
    CProgressLine& operator=(const CProgressLine&) = delete;

    // Returns whether this object may show anything.
    bool IsEnabled() const { return m_bEnabled; }

    void Show(const sWalkProgress& oProgress);
    void Show(const sChecksumProgress& oProgress, long lFiles, unsigned long long ullBytes);

private:
    bool IsDue() const;
    void Print(const char* szText);

    bool m_bEnabled;
    std::chrono::steady_clock::time_point m_oStart;
    int m_nWidth = 0;
};

// Returns a text such as "12 files, 3456 bytes".
CTOVStringA DescribeFiles(long lFiles, unsigned long long ullBytes);

// Returns a text such as "12 files, 3456 bytes in 0.12 s (28.8 MB/s)".
CTOVStringA DescribeWork(long lFiles, unsigned long long ullBytes, std::chrono::steady_clock::duration oTime);
