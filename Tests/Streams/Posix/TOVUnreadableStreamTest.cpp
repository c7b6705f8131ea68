// A file that the system opens and fails to read.
#include "Streams/TOVCheckedStreamInstruments.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

TEST(CTOVUnreadableStreamTest, IsReportedWithTheReasonOfTheSystem)
{
    // The first page of this process's memory holds nothing.
    CTOVReadFileStream oMemory("/proc/self/mem");
    CTOVCheckedStream oStream(oMemory, 100);
    int nValue = 77;

    EXPECT_EQ(std::string("the stream cannot be read: ") + std::strerror(EIO),
              TextOfFailure([&] { oStream >> nValue; }));
    EXPECT_EQ(77, nValue);
}

TEST(CTOVUnreadableStreamTest, APipeHasNoSizeAndIsRefused)
{
    const CTempFolder oFolder;
    const std::string sPipe = oFolder.File("pipe");
    ASSERT_EQ(0, ::mkfifo(sPipe.c_str(), 0600));
    const int nWriter = ::open(sPipe.c_str(), O_RDWR); // otherwise the stream would wait for one

    EXPECT_EQ(sPipe + " cannot be read: its size is unknown, or 2 GB or more",
              TextOfFailure([&] { CTOVCheckedStream oStream(sPipe.c_str()); }));
    ::close(nWriter);
}

TEST(CTOVUnreadableStreamTest, AFileOfTwoGigabytesIsRefused)
{
    const CTempFolder oFolder;
    const std::string sLarge = oFolder.File("large");
    WriteWholeFile(sLarge, "");
    std::filesystem::resize_file(sLarge, 0x80000000u); // takes no place on the disk

    EXPECT_STREAM_EXCEPTION(CheckedStreamException, CTOVCheckedStream::eFailureUnreadable,
                            CTOVCheckedStream(sLarge.c_str()));
    std::filesystem::resize_file(sLarge, 0x7FFFFFFFu);
    EXPECT_EQ(0x7FFFFFFFu, CTOVCheckedStream(sLarge.c_str()).GetRest());
}
