#include "Catalog/CatalogProcess.h"

#include <cstdlib>

std::string PathOfCatalogProgram()
{
    return PathBesideThisProgram(TOV_CATALOG);
}

sProgram CatalogProgram(const std::vector<std::string>& aArguments, const std::string& sFolder)
{
    sProgram oProgram;
    oProgram.aCommand = {PathOfCatalogProgram()};
    oProgram.aCommand.insert(oProgram.aCommand.end(), aArguments.begin(), aArguments.end());
    oProgram.sFolder = sFolder;
    // What the environment asks of the sanitizers stays.
    for (const char* szVariable : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"})
    {
        const char* szGiven = std::getenv(szVariable);
        oProgram.aVariables[szVariable] = (szGiven != nullptr ? std::string(szGiven) + ":" : "") + "exitcode=99";
    }
    return oProgram;
}

sRun RunCatalog(const std::vector<std::string>& aArguments, const std::string& sFolder)
{
    return RunProgram(CatalogProgram(aArguments, sFolder), eErrorsApart);
}
