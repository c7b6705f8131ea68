#include "Listeners/ListenerTerminal.h"

std::vector<sShownLine> ShownOnTerminal(const std::string& sScenario, const std::vector<std::string>& aArguments,
                                        const tVariables& aVariables)
{
    sProgram oProgram = ScenarioProgram(sScenario, aArguments);
    oProgram.aVariables["NO_COLOR"] = std::nullopt;
    oProgram.aVariables["TERM"] = "xterm";
    for (const auto& [sName, oValue] : aVariables)
        oProgram.aVariables[sName] = oValue;

    CTerminal oTerminal(oProgram);
    const int nExitCode = oTerminal.WaitForEnd();
    EXPECT_EQ(0, nExitCode) << sScenario;
    std::vector<sShownLine> aLines = oTerminal.ScreenInColours();
    if (!oTerminal.IsAtBeginOfLine())
        aLines.push_back({"<no end>", "none"});
    return aLines;
}
