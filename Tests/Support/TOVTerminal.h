// A terminal of its own on which a program runs: a pseudo-terminal of Posix, or a console of Windows. The test sits in
// front of it: it sees the screen and presses keys.
#pragma once

#include "Support/TOVChildProcess.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct sShownLine
{
    std::string sText;   // without spaces at its end
    std::string sColour; // "none", "grey", "yellow", "red" or "bright red"; "mixed" if it changes within the line, or
                         // goes on after the end of the line
};

class CTerminal
{
public:
    // Starts the program with the terminal as its standard input, output and error. The window has so many columns and
    // at least 24 lines, and what is written beyond them is still seen.
    explicit CTerminal(const sProgram& oProgram, int nColumns = 80);

    // Ends the program if it still runs.
    ~CTerminal();

    CTerminal(const CTerminal&) = delete;
    CTerminal& operator=(const CTerminal&) = delete;

    // The lines that stand on the screen now, without empty ones.
    std::vector<std::string> Screen() const;
    std::vector<sShownLine> ScreenInColours() const;

    // Whether the next character would stand at the begin of a line.
    bool IsAtBeginOfLine() const;

    // Waits, under the deadline, until the function gives true for the screen. Returns false if the program ends, or
    // the deadline passes, without that.
    bool WaitUntil(const std::function<bool(const std::vector<std::string>&)>& fnWanted);

    // Waits in the same way until the text stands on the screen.
    bool WaitUntilItShows(const std::string& sText);

    // Presses Ctrl and C, which asks the program to stop.
    void PressInterruptKeys();

    // Ends the program at once; it cannot prevent that.
    void Kill();

    // Waits for the end of the program, and ends it at the deadline. Returns its exit code, or -1 if it was ended from
    // outside.
    int WaitForEnd();

    // The system's number of the program's process.
    unsigned long ProcessId() const;

private:
    struct sState;
    const std::unique_ptr<sState> m_pState;
};
