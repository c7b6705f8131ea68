// What the tests of tovtest share.
#pragma once

#include "Support/TOVTestSupport.h"
#include "TestHost/HostSystem.h"

typedef std::vector<std::string> tLines;

struct sHostRun
{
    int nExitCode;
    std::string sOutput; // standard output and standard error; lines end with \n alone; times are TIME
};

// Runs tovtest to its end.
sHostRun RunHost(const std::vector<std::string>& aArguments);

// Runs it with a library of suites.
sHostRun RunSuites(const std::string& sSuites, const std::vector<std::string>& aArguments = {});

// Times, and timestamps, as TIME.
std::string WithoutTimes(const std::string& sText);

tLines LinesOf(const std::string& sText);
std::string LastLineOf(const std::string& sText);
bool Contains(const std::string& sText, const std::string& sPart);
bool EndsWith(const std::string& sText, const std::string& sEnd);

// Has exit status 2, prints one line, and that holds the part.
testing::AssertionResult IsRefused(const sHostRun& oRun, const std::string& sPart);
