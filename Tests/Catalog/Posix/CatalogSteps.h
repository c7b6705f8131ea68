// A run of tovcatalog that is stopped at each of its steps.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Runs the program without output, and calls the function, with the id of the process, at every system call of every
// thread. What stands on the disk at that moment is what would stay there if the run ended just then. The program's
// other threads go on meanwhile, each up to its next system call. Returns the exit code, or -1 if a signal ended the
// program.
int RunStepByStep(const std::vector<std::string>& aArguments, const std::string& sFolder,
                  const std::function<void(int nProcess)>& fnLook);
