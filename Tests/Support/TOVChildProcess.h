// What starting a program takes from the system. Used by the test support itself.
#pragma once

#include "Support/TOVTestSupport.h"

// Full path of the running program.
std::string PathOfThisProgram();

// Readies a process that may be meant to crash: no dialog, no core file, no debugger that waits.
void PrepareChild();
