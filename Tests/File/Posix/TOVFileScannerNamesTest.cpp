// The scanner and names that another system refuses.
#include "File/TOVScanInstruments.h"

#include <filesystem>

TEST(CTOVFileScannerNamesTest, ReportsNothingBelowTheFirstLevelThoughADirectoryIsNamedSo)
{
    const CTempFolder oFolder;
    std::filesystem::create_directories(oFolder.File("sub"));
    std::filesystem::create_directories(oFolder.File("*.*/sub"));
    WriteWholeFile(oFolder.File("a.txt"), "");
    WriteWholeFile(oFolder.File("*.*/b.txt"), "");
    WriteWholeFile(oFolder.File("*.*/sub/c.txt"), "");
    CTOVFileScanner oScanner;
    CScanRecord oRecord;
    oScanner.AddScanDirectory(oFolder.Path().c_str(), "*.txt");

    oRecord.Run(oScanner);

    EXPECT_EQ(tNames({"a.txt"}), oRecord.aFiles);
}
