#include "Support/TOVChildProcess.h"

#include <cstdio>
#include <cstdlib>
#include <map>

namespace
{
constexpr char CHILD_OPTION[] = "--tov-child";

std::map<std::string, tChildScenario>& Scenarios()
{
    static std::map<std::string, tChildScenario> s_aScenarios;
    return s_aScenarios;
}

[[noreturn]] void RunScenario(const std::string& sName, const std::vector<std::string>& aArguments)
{
    PrepareChild();
    const auto pFound = Scenarios().find(sName);
    if (pFound == Scenarios().end())
    {
        std::fprintf(stderr, "no scenario %s\n", sName.c_str());
        std::exit(99);
    }
    pFound->second(aArguments);
    std::exit(0);
}
} // namespace

CChildRegistrar::CChildRegistrar(const char* szName, tChildScenario fnScenario)
{
    Scenarios()[szName] = fnScenario;
}

sProgram ScenarioProgram(const std::string& sScenario, const std::vector<std::string>& aArguments)
{
    std::vector<std::string> aCommand = {PathOfThisProgram(), CHILD_OPTION, sScenario};
    aCommand.insert(aCommand.end(), aArguments.begin(), aArguments.end());
    return {aCommand, "", NO_LEAK_CHECK};
}

int main(int nArguments, char** aszArguments)
{
    if (nArguments >= 3 && std::string(aszArguments[1]) == CHILD_OPTION)
        RunScenario(aszArguments[2], std::vector<std::string>(aszArguments + 3, aszArguments + nArguments));

    testing::InitGoogleTest(&nArguments, aszArguments);
    return RUN_ALL_TESTS();
}
