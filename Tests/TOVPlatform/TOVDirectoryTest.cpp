#include "TOVPlatform/TOVFileInstruments.h"

namespace Directory = TOVPlatform::TOVDirectory;

namespace
{
class TOVPlatformDirectoryTest : public CFileFixture
{
protected:
    TOVPlatformDirectoryTest() : m_oBefore(std::filesystem::current_path()) {}

    ~TOVPlatformDirectoryTest() override { std::filesystem::current_path(m_oBefore); }

    const std::filesystem::path m_oBefore;
};
} // namespace

TEST(TOVPlatformDirectoryValuesTest, HaveNoZero)
{
    EXPECT_EQ(1, Directory::eDirectorySuccess);
    EXPECT_EQ(-1, Directory::eDirectoryFailure);
}

TEST_F(TOVPlatformDirectoryTest, CreatesOneLevel)
{
    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Create(Path("new").c_str()));
    EXPECT_TRUE(std::filesystem::is_directory(Path("new")));

    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Create(Path("missing/new").c_str()));
    EXPECT_FALSE(std::filesystem::exists(Path("missing")));
}

TEST_F(TOVPlatformDirectoryTest, CreatesBehindEitherSeparator)
{
    Directory::Create(Path("new").c_str());

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Create(Path("new\\one").c_str()));
    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Create(Path("new/two").c_str()));

    EXPECT_TRUE(std::filesystem::is_directory(Path("new/one")));
    EXPECT_TRUE(std::filesystem::is_directory(Path("new/two")));
}

TEST_F(TOVPlatformDirectoryTest, CreatesNothingOverWhatIsThere)
{
    std::filesystem::create_directory(Path("folder"));
    WriteWholeFile(Path("file"), "text");

    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Create(Path("folder").c_str()));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Create(Path("file").c_str()));

    EXPECT_EQ("text", ReadWholeFile(Path("file")));
}

TEST_F(TOVPlatformDirectoryTest, RemovesAnEmptyDirectory)
{
    std::filesystem::create_directory(Path("folder"));

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Remove(Path("folder").c_str()));

    EXPECT_FALSE(std::filesystem::exists(Path("folder")));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Remove(Path("folder").c_str()));
}

TEST_F(TOVPlatformDirectoryTest, RemovesNothingElse)
{
    std::filesystem::create_directories(Path("full/inner"));
    WriteWholeFile(Path("file"), "text");

    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Remove(Path("full").c_str()));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Remove(Path("file").c_str()));

    EXPECT_TRUE(std::filesystem::exists(Path("full/inner")));
    EXPECT_TRUE(std::filesystem::exists(Path("file")));
}

TEST_F(TOVPlatformDirectoryTest, ChangesTheWorkingDirectory)
{
    std::filesystem::create_directories(Path("folder/inner"));

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Change(Path("folder").c_str()));
    EXPECT_TRUE(std::filesystem::exists("inner"));

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Change("inner"));
    EXPECT_TRUE(std::filesystem::equivalent(Path("folder/inner"), "."));

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::Change(".."));
    EXPECT_TRUE(std::filesystem::equivalent(Path("folder"), "."));
}

TEST_F(TOVPlatformDirectoryTest, KeepsTheWorkingDirectoryWhenItCannotChange)
{
    WriteWholeFile(Path("file"), "text");
    const std::filesystem::path oHere = std::filesystem::current_path();

    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Change(Path("missing").c_str()));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Change(Path("file").c_str()));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Change(""));

    EXPECT_EQ(oHere, std::filesystem::current_path());
}

TEST_F(TOVPlatformDirectoryTest, FailsForANullName)
{
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Create(nullptr));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Remove(nullptr));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::Change(nullptr));
}

TEST_F(TOVPlatformDirectoryTest, TellsTheWorkingDirectory)
{
    std::filesystem::current_path(m_oFolder.Path());
    char szBuffer[1024] = "";

    EXPECT_EQ(Directory::eDirectorySuccess, Directory::GetWorkingDirectory(szBuffer, sizeof(szBuffer)));

    EXPECT_EQ(std::filesystem::current_path().string(), szBuffer);
}

TEST_F(TOVPlatformDirectoryTest, TellsTheWorkingDirectoryToABufferThatHoldsIt)
{
    const int nLength = static_cast<int>(std::filesystem::current_path().string().size());
    std::vector<char> aBuffer(static_cast<std::size_t>(nLength) + 2, '?');

    EXPECT_EQ(Directory::eDirectoryFailure, Directory::GetWorkingDirectory(aBuffer.data(), 1));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::GetWorkingDirectory(aBuffer.data(), nLength));
    EXPECT_EQ(Directory::eDirectorySuccess, Directory::GetWorkingDirectory(aBuffer.data(), nLength + 1));

    EXPECT_EQ(std::filesystem::current_path().string(), aBuffer.data());
    EXPECT_EQ('?', aBuffer.back());
}

TEST_F(TOVPlatformDirectoryTest, TellsNoWorkingDirectoryToNoBuffer)
{
    char szBuffer[] = "???";

    EXPECT_EQ(Directory::eDirectoryFailure, Directory::GetWorkingDirectory(nullptr, 1024));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::GetWorkingDirectory(nullptr, 0));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::GetWorkingDirectory(szBuffer, 0));
    EXPECT_EQ(Directory::eDirectoryFailure, Directory::GetWorkingDirectory(szBuffer, -1));

    EXPECT_STREQ("???", szBuffer);
}
