// How each system starts tovtest, and what is seen of it on a terminal.
#pragma once

#include <functional>
#include <string>
#include <vector>

// The words that start the built program. Faults end it as they would without a sanitizer, and what a sanitizer finds
// in it, memory that is never released included, makes an exit status of its own.
std::vector<std::string> HostCommand();

// Full name of a library of test suites that stands beside the program.
std::string PathOfSuites(const std::string& sName);

struct sTerminalRun
{
    int nExitCode;                    // -1 if it did not end by itself
    std::vector<std::string> aDuring; // what stood on the screen when the text was seen first
    std::vector<std::string> aAfter;  // what stands there at the end; both without empty lines
};

// Runs tovtest on a terminal of its own, a pseudo-terminal or a console of Windows, under a deadline. When the text
// is seen, the function is called once.
sTerminalRun RunOnTerminal(const std::vector<std::string>& aArguments, const std::string& sText,
                           const std::function<void()>& fnWhenSeen);

// Ctrl and C on that terminal, while the function runs.
void PressInterruptKeys();

// Where the variable has this value, what is started from here on sees it.
void SetVariable(const char* szName, const std::string& sValue);
