// The built program tovcatalog as a child process.
#pragma once

#include "Support/TOVChildProcess.h"

// How a run ended and what it said, standard error apart.
typedef sChildResult sRun;

// Full name of the program, which stands in the folder of the test program.
std::string PathOfCatalogProgram();

// The program with these arguments and the folder as its current one. What a sanitizer finds in it, memory that is
// never released included, makes exit code 99.
sProgram CatalogProgram(const std::vector<std::string>& aArguments, const std::string& sFolder);

// Runs it to its end.
sRun RunCatalog(const std::vector<std::string>& aArguments, const std::string& sFolder);
