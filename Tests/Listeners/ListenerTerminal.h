// A scenario of this test program on a terminal of its own.
#pragma once

#include "Support/TOVTerminal.h"

// What stands on the terminal after the end of the scenario. NO_COLOR does not exist and TERM is "xterm" unless the
// variables say otherwise. "<no end>" follows as a line of its own where the last line has no end.
std::vector<sShownLine> ShownOnTerminal(const std::string& sScenario, const std::vector<std::string>& aArguments,
                                        const tVariables& aVariables = {});
