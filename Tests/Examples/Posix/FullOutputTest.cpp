// A result for which there is no room: this system has a file that is always full.
#include "Examples/ExampleProgram.h"

namespace
{
sChildResult RunWithFullOutput(const std::string& sName, const std::vector<std::string>& aArguments,
                               const std::string& sFolder)
{
    sProgram oProgram = ExampleProgram(sName, aArguments, sFolder);
    oProgram.aCommand.insert(oProgram.aCommand.begin(), {"/bin/sh", "-c", "exec \"$0\" \"$@\" > /dev/full"});
    return RunProgram(oProgram, eErrorsApart);
}
} // namespace

TEST(FullOutputTest, LosesNoResultOfAnExampleInSilence)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("text"), "a line\n");
    const struct
    {
        const char* szProgram;
        std::vector<std::string> aArguments;
    } aCases[] = {{"tovlines", {"text"}},
                  {"tovsettings", {"settings.dat"}},
                  {"tovsettings", {"settings.dat", "width", "800"}},
                  {"tovwords", {"three short words"}},
                  {"tovwords", {"--self-test"}},
                  {"tovfilter", {"abc", PathBesideThisProgram(std::string("tovupper") + TOV_MODULE_SUFFIX)}},
                  {"tovframes", {"1"}}};
    for (const auto& oCase : aCases)
        ExpectComplaint(oCase.szProgram + std::string(": standard output cannot be written"), 1,
                        RunWithFullOutput(oCase.szProgram, oCase.aArguments, oFolder.Path()));
}
