// A scenario of this test program on a terminal of its own: a pseudo-terminal, or a console of Windows.
#pragma once

#include <map>
#include <string>
#include <vector>

struct sShownLine
{
    std::string sText;
    std::string sColour; // "none", "grey", "yellow", "red" or "bright red", "mixed" where it changes within the line
};

// What stands on the terminal after the end of the scenario, which has it as its standard output and standard error.
// NO_COLOR is not set and TERM is "xterm" unless the variables say otherwise.
std::vector<sShownLine> ShownOnTerminal(const std::string& sScenario, const std::vector<std::string>& aArguments,
                                        const std::map<std::string, std::string>& aVariables = {});
