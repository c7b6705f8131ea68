// The scanner and names that another system refuses.
#include "File/TOVScanInstruments.h"
#include "Support/TOVMultiByte.h"

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

TEST(CTOVFileScannerNamesTest, FindsLettersBeyondAsciiInEitherCase)
{
    const CMultiByteCodePage oCodePage;
    const CTempFolder oFolder;
    const std::string sName = "\xC3\x89t\xC3\xA9.txt"; // the first letter is a capital one
    WriteWholeFile(oFolder.File(sName), "");

    for (const char* szPattern : {"\xC3\xA9T\xC3\x89.TXT", "?t?.txt", "\xC3\xA9*"})
    {
        CTOVFileScanner oScanner;
        CScanRecord oRecord;
        oScanner.AddScanDirectory(oFolder.Path().c_str(), szPattern);
        oRecord.Run(oScanner);

        EXPECT_EQ(tNames({sName}), oRecord.aFiles) << szPattern;
    }
}
