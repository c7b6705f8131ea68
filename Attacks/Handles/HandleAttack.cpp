// Fills and empties the table of files: HandleAttack ROUNDS ROUNDS-FOR-A-COUNT
//
// The exit status is 1 unless all was as described.
#include "HandleRounds.h"

#include <cstdio>
#include <cstdlib>

namespace
{
// A new folder for the files of this run.
std::filesystem::path MakeFolder()
{
    std::random_device oChance;
    const std::string sName = "tov-handles-" + std::to_string(oChance());
    const std::filesystem::path oFolder = std::filesystem::temp_directory_path() / sName;
    std::filesystem::create_directory(oFolder);
    return oFolder;
}
} // namespace

int main(int nArguments, char** aszArguments)
{
    if (nArguments != 3)
        return 2;

    const std::filesystem::path oFolder = MakeFolder();
    const sHandleFigures oFigures = CHandleRounds(oFolder).Run(std::atol(aszArguments[1]), std::atol(aszArguments[2]));
    std::filesystem::remove_all(oFolder);

    const bool bAllFull = oFigures.lHandlesWhenFull == oFigures.lHandlesAtStart + FILE_SLOTS;
    std::printf("%ld rounds, %ld opened, %ld refused, %ld deviations\n", oFigures.lRounds, oFigures.lOpened,
                oFigures.lRefused, oFigures.lDeviations);
    std::printf("system handles: %ld at the start, %ld when full, %ld at the end\n", oFigures.lHandlesAtStart,
                oFigures.lHandlesWhenFull, oFigures.lHandlesAtEnd);
    if (oFigures.lDeviations > 0)
        std::printf("%s\n", oFigures.sFirst.c_str());
    return oFigures.lDeviations == 0 && bAllFull && oFigures.lHandlesAtEnd == oFigures.lHandlesAtStart ? 0 : 1;
}
