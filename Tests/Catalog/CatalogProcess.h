// The built program tovcatalog as a child process. It stands in the folder of the test program.
#pragma once

#include <string>
#include <vector>

// How it ended and what it said. Lines end with \n alone on every system.
struct sRun
{
    int nExitCode; // -1 if it was ended from outside, by a fault or by the deadline
    std::string sOutput;
    std::string sErrors;
};

// Full name of the program.
std::string PathOfCatalogProgram();

// Runs it to its end, with the folder as its current one and pipes as its standard output and error. What a sanitizer
// finds in it, memory that is never released included, makes exit code 99.
sRun RunCatalog(const std::vector<std::string>& aArguments, const std::string& sFolder);
