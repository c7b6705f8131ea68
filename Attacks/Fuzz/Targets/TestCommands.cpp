// The command lines of tovtest: a refusal, or options that are within their limits.
#include "Fuzz.h"

// What the program defines for itself is looked at here; the function that runs it gets another name.
#define RunTestHost RunTestHostOfFuzzing
#include <TestHost/TOVTestHostProgram.cpp>
#undef RunTestHost

#include <sstream>

FUZZ_TARGET(TestCommands)
{
    using namespace TOVTestHost;
    CLI::App oProgram("", "tovtest");
    sOptions oOptions;
    Define(oProgram, oOptions);
    std::vector<std::string> aArguments;
    std::istringstream oArguments(oInput.Rest());
    for (std::string sArgument; std::getline(oArguments, sArgument, '\0');)
        aArguments.insert(aArguments.begin(), sArgument);
    try
    {
        oProgram.parse(aArguments);
    }
    catch (const CLI::ParseError& oError)
    {
        std::ostringstream oOutput;
        oProgram.exit(oError, oOutput, oOutput);
        FUZZ_EXPECT(!oOutput.str().empty());
        return;
    }
    const sTestChoice& oChoice = oOptions.oRun.oChoice;
    FUZZ_EXPECT(1 <= oChoice.lRuns && oChoice.lRuns <= 1000000);
    for (const auto& aTexts : {oOptions.oRun.aLibraries, oChoice.aFilters, oChoice.aExcludes})
        for (const std::string& sText : aTexts)
            FUZZ_EXPECT(!sText.empty());
    // A pattern that was given matches its own text, once more by the program's rules.
    for (const std::string& sPattern : oChoice.aFilters)
        FUZZ_EXPECT(MatchesPattern(sPattern, sPattern));
}
