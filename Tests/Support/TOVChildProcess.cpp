#include "Support/TOVChildProcess.h"

const tVariables NO_LEAK_CHECK = {{"ASAN_OPTIONS", "detect_leaks=0"}, {"LSAN_OPTIONS", "detect_leaks=0"}};

std::string PathBesideThisProgram(const std::string& sName)
{
    const std::string sProgram = PathOfThisProgram();
    return sProgram.substr(0, sProgram.find_last_of("/\\") + 1) + sName;
}

sChildResult RunChild(const std::string& sScenario, const std::vector<std::string>& aArguments)
{
    return RunProgram(ScenarioProgram(sScenario, aArguments));
}
