// A run of tovcatalog that is stopped at each of its steps.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Runs the program with no output. Every system call, of any of its threads, is a moment to look around: what stands on
// the disk then is what would stay there if the run ended just there. Returns its exit code, -1 if it was ended.
int RunStepByStep(const std::vector<std::string>& aArguments, const std::string& sFolder,
                  const std::function<void()>& fnLook);
