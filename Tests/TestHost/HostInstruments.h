// What the tests of tovtest share.
#pragma once

#include "Support/TOVTerminal.h"

typedef std::vector<std::string> tLines;

// The built program tovtest with these arguments. Faults end it as they would without a sanitizer, and what a sanitizer
// finds in it, memory that is never released included, makes an exit status of its own.
sProgram HostProgram(const std::vector<std::string>& aArguments);

// The full name of a library of test suites, which stands in the folder of the program.
std::string PathOfSuites(const std::string& sName);

struct sHostRun
{
    int nExitCode;
    std::string sOutput; // standard output and standard error; lines end with \n alone; times are TIME
};

// Runs tovtest to its end.
sHostRun RunHost(const std::vector<std::string>& aArguments);

// Runs tovtest with a library of suites.
sHostRun RunSuites(const std::string& sSuites, const std::vector<std::string>& aArguments = {});

struct sTerminalRun
{
    int nExitCode;  // -1 if it did not end by itself
    tLines aDuring; // what stood on the screen when the text was seen first
    tLines aAfter;  // what stands there at the end
};

// Runs tovtest on a terminal of its own. When the text is seen, the function is called once.
sTerminalRun RunOnTerminal(const sProgram& oProgram, const std::string& sText,
                           const std::function<void(CTerminal& oTerminal)>& fnWhenSeen);

// The text with TIME in the place of times and timestamps.
std::string WithoutTimes(const std::string& sText);

tLines LinesOf(const std::string& sText);
std::string LastLineOf(const std::string& sText);
bool Contains(const std::string& sText, const std::string& sPart);
bool EndsWith(const std::string& sText, const std::string& sEnd);

// Whether the run has exit status 2 and prints one line, which holds the part.
testing::AssertionResult IsRefused(const sHostRun& oRun, const std::string& sPart);
