// What a stream holds while the system takes no more bytes: a write says that it fell short, and nothing that was taken
// before is lost.
#include "Support/Posix/TOVForkedChild.h"
#include "Support/TOVChildProcess.h"
#include "Support/TOVWaitInstruments.h"
#include "TOVPlatform/TOVFileInstruments.h"

#include <signal.h>
#include <sys/resource.h>

namespace File = TOVPlatform::TOVFile;

namespace
{
class TOVPlatformFullStreamTest : public CFileFixture
{
};

// Numbers, of which no part is like another one.
std::string MakeText(std::size_t ulLength)
{
    std::string sText;
    for (int nNumber = 0; sText.size() < ulLength; ++nNumber)
        sText += std::to_string(nNumber) + ' ';
    return sText;
}

// Lets no file grow beyond so many bytes, until its end.
class CSizeLimit
{
public:
    explicit CSizeLimit(rlim_t ulSize)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_oBefore);
        const rlimit oLimit = {ulSize, m_oBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &oLimit);
    }
    ~CSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &m_oBefore); }
    CSizeLimit(const CSizeLimit&) = delete;
    CSizeLimit& operator=(const CSizeLimit&) = delete;

private:
    rlimit m_oBefore = {};
};

constexpr rlim_t SMALL_FILE = 10000;

// Writes elements until one is refused, and some more. Returns what was taken.
std::string WriteTooMuch(unsigned long long hFile, std::size_t ulSize)
{
    const std::string sBytes = MakeText(3 * SMALL_FILE);
    const std::size_t ulCount = 1 + 1000 / ulSize;
    std::string sTaken;
    for (std::size_t i = 0; i + ulCount * ulSize <= sBytes.size(); i += ulCount * ulSize)
    {
        const unsigned long ulTaken =
            File::Write(hFile, &sBytes[i], static_cast<long>(ulSize), static_cast<long>(ulCount));
        sTaken += sBytes.substr(i, ulTaken * ulSize);
    }
    return sTaken;
}
} // namespace

TEST_F(TOVPlatformFullStreamTest, KeepsWhatItHeldWhenAWriteFallsShort)
{
    EXPECT_TRUE(IsTrueInFork([&] {
        for (const char* szMode : {"wb", "ab", "w+b"})
        {
            for (const std::size_t ulSize : {1u, 7u, 100u})
            {
                const unsigned long long hFile = OpenWith("", szMode);
                std::string sTaken;
                {
                    const CSizeLimit oLimit(SMALL_FILE);
                    sTaken = WriteTooMuch(hFile, ulSize);
                    if (File::Close(hFile) != File::eFileFailure)
                        return false;
                }
                if (CloseAndRead(hFile) != sTaken)
                    return false;
            }
        }
        return true;
    }));
}

TEST_F(TOVPlatformFullStreamTest, KeepsWhatItHeldWhenAWriteOfAnotherThreadFallsShort)
{
    EXPECT_TRUE(IsTrueInFork([&] {
        const unsigned long long hFile = OpenWith("", "wb");
        std::string sTaken = "first";
        File::Write(hFile, sTaken.data(), 1, 5);
        {
            const CSizeLimit oLimit(SMALL_FILE);
            OnAnotherThread([&] { sTaken += WriteTooMuch(hFile, 1); });
        }
        return CloseAndRead(hFile) == sTaken;
    }));
}

TEST_F(TOVPlatformFullStreamTest, KeepsWhatItHeldWhenATextIsNotTakenOrTheStreamCannotMove)
{
    EXPECT_TRUE(IsTrueInFork([&] {
        const unsigned long long hFile = OpenWith("", "wb");
        const std::string sText(3000, 'x');
        {
            const CSizeLimit oLimit(0);
            File::Write(hFile, sText.data(), 1, static_cast<long>(sText.size()));
            if (File::Puts(hFile, sText.c_str()) != File::eFileSuccess || // turned around
                File::Printf(hFile, "%s", sText.c_str()) >= 0 ||
                File::Seek(hFile, 0, File::eSeekOriginStart) != File::eFileFailure)
                return false;
        }
        return CloseAndRead(hFile) == sText;
    }));
}
