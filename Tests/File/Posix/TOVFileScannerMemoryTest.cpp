// The scanner when memory runs out.
#include "File/TOVScanInstruments.h"
#include "Support/TOVRefusal.h"

#include <filesystem>
#include <new>

#if TOV_CAN_FAIL_ALLOCATIONS
static CTOVFileScanner::eScannerControl TakeNothing(CTOVFileScanner::eScannerMode, CTOVFileScanner::sTOVFileDescriptor*,
                                                    unsigned long long)
{
    return CTOVFileScanner::eScannerContinue;
}

static long CountDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(CTOVFileScannerMemoryTest, ClosesItsSearchesWhereverMemoryRunsOut)
{
    const CTempFolder oFolder;
    std::filesystem::create_directories(oFolder.File("sub"));
    WriteWholeFile(oFolder.File("a-name-that-is-longer-than-any-buffer.txt"), "");
    CTOVFileScanner oScanner;
    oScanner.AddScanDirectory(oFolder.Path().c_str(), "*.txt");
    const long lBefore = CountDescriptors();
    int nFailed = 0;

    for (unsigned long ulSuccesses = 0; ulSuccesses < 200; ++ulSuccesses)
    {
        try
        {
            const CAllocationFailure oFailure(ulSuccesses);
            oScanner.Run(&TakeNothing, 0);
        }
        catch (const std::bad_alloc&)
        {
            ++nFailed;
        }
    }

    EXPECT_LT(10, nFailed);
    EXPECT_EQ(lBefore, CountDescriptors());
}

TEST(CTOVFileScannerMemoryTest, KeepsEachDirectoryWithItsPatternWhereverMemoryRanOut)
{
    const CTempFolder oFolder;
    WriteWholeFile(oFolder.File("a.txt"), "");
    WriteWholeFile(oFolder.File("b.doc"), "");
    const CTOVPath oMissing(oFolder.File("missing").c_str());
    const CTOVPath oDirectory(oFolder.Path().c_str());
    const CTOVStringA sPattern("*.txt");
    for (unsigned long ulSuccesses = 0; ulSuccesses < 10; ++ulSuccesses)
    {
        CTOVFileScanner oScanner;
        CScanRecord oRecord;
        RunsOutOfMemory([&] { oScanner.AddScanDirectory(oMissing, "*.doc"); }, ulSuccesses);
        oScanner.AddScanDirectory(oDirectory, sPattern);

        EXPECT_NO_CHECK(oRecord.Run(oScanner));
        EXPECT_EQ(tNames({"a.txt"}), oRecord.aFiles) << ulSuccesses;
    }
}
#endif
