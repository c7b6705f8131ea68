// The table of files is free while the system is busy with one of them.
#include "Support/TOVBlockableThread.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
class TOVPlatformFileTableLockTest : public CFileFixture
{
protected:
    TOVPlatformFileTableLockTest() : m_sPipe(Path("pipe"))
    {
        EXPECT_EQ(0, ::mkfifo(m_sPipe.c_str(), 0600));
        WriteWholeFile(Path("file"), "text");
    }

    // Opens, reads and closes a file.
    void UseAFile() const
    {
        char cFirst = 0;
        const unsigned long long hFile = File::Open(Path("file").c_str(), "rb");
        EXPECT_EQ(1u, File::Read(hFile, &cFirst, 1, 1));
        EXPECT_EQ(File::eFileSuccess, File::Close(hFile));
    }

    const std::string m_sPipe;
};
} // namespace

// Nobody opens a pipe to read before somebody opens it to write.
TEST_F(TOVPlatformFileTableLockTest, IsFreeWhileAFileIsBeingOpened)
{
    unsigned long long hPipe = FILE_INVALID_HANDLE;
    CBlockableThread oOpening([&] { hPipe = File::Open(m_sPipe.c_str(), "rb"); });
    ASSERT_TRUE(oOpening.IsBlocked());

    CBlockableThread oOther([this] { UseAFile(); });
    EXPECT_TRUE(oOther.Finishes());

    const int nWriter = ::open(m_sPipe.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_TRUE(oOpening.Finishes());
    ::close(nWriter);
    EXPECT_EQ(File::eFileSuccess, File::Close(hPipe));
}

TEST_F(TOVPlatformFileTableLockTest, IsFreeWhileAFileIsBeingRead)
{
    const int nWriter = ::open(m_sPipe.c_str(), O_RDWR | O_CLOEXEC);
    const unsigned long long hPipe = File::Open(m_sPipe.c_str(), "rb");
    char cRead = 0;
    CBlockableThread oReading([&] { File::Read(hPipe, &cRead, 1, 1); });
    EXPECT_TRUE(oReading.IsBlocked());

    CBlockableThread oOther([this] { UseAFile(); });
    EXPECT_TRUE(oOther.Finishes());

    EXPECT_EQ(1, ::write(nWriter, "x", 1));
    ::close(nWriter);
    ASSERT_TRUE(oReading.Finishes());
    EXPECT_EQ('x', cRead);
    EXPECT_EQ(File::eFileSuccess, File::Close(hPipe));
}
