// Attributes of files by their names.
#include "Support/TOVNativeFile.h"
#include "TOVPlatform/TOVFileInstruments.h"

namespace File = TOVPlatform::TOVFile;

namespace
{
constexpr unsigned long MISSING = 0xFFFFFFFF;

class TOVPlatformFileAttributesTest : public CFileFixture
{
protected:
    TOVPlatformFileAttributesTest() : m_sFile(Path("file")), m_sFolder(Path("folder"))
    {
        WriteWholeFile(m_sFile, "text");
        std::filesystem::create_directory(m_sFolder);
    }

    bool IsSet(const std::string& sPath, unsigned long ulBit) const
    {
        return (File::GetAttributes(sPath.c_str()) & ulBit) != 0;
    }

    const std::string m_sFile;
    const std::string m_sFolder;
};
} // namespace

TEST(TOVPlatformFileAttributeValuesTest, AreInAlphabeticalOrder)
{
    EXPECT_EQ(0x01, File::eFileAttributeArchive);
    EXPECT_EQ(0x02, File::eFileAttributeCompressed);
    EXPECT_EQ(0x04, File::eFileAttributeDirectory);
    EXPECT_EQ(0x08, File::eFileAttributeHidden);
    EXPECT_EQ(0x10, File::eFileAttributeNormal);
    EXPECT_EQ(0x20, File::eFileAttributeReadOnly);
    EXPECT_EQ(0x40, File::eFileAttributeSystem);
    EXPECT_EQ(0x80, File::eFileAttributeTemporary);
}

TEST_F(TOVPlatformFileAttributesTest, HaveEveryBitForAMissingFile)
{
    EXPECT_EQ(MISSING, File::GetAttributes(Path("missing").c_str()));
    EXPECT_EQ(MISSING, File::GetAttributes(Path("missing/below").c_str()));
    EXPECT_EQ(MISSING, File::GetAttributes(""));
    EXPECT_EQ(MISSING, File::GetAttributes(nullptr));
}

TEST_F(TOVPlatformFileAttributesTest, TellADirectoryFromAFile)
{
    EXPECT_TRUE(IsSet(m_sFolder, File::eFileAttributeDirectory));
    EXPECT_FALSE(IsSet(m_sFile, File::eFileAttributeDirectory));
    EXPECT_NE(0u, File::GetAttributes(m_sFile.c_str()));
}

TEST_F(TOVPlatformFileAttributesTest, HaveNoBitsButTheLibrarysOwn)
{
    EXPECT_EQ(0u, File::GetAttributes(m_sFile.c_str()) & ~0xFFul);
    EXPECT_EQ(0u, File::GetAttributes(m_sFolder.c_str()) & ~0xFFul);
}

TEST_F(TOVPlatformFileAttributesTest, SetReadOnlyForTheSystem)
{
    EXPECT_FALSE(IsSet(m_sFile, File::eFileAttributeReadOnly));

    EXPECT_TRUE(File::SetAttributes(m_sFile.c_str(), 0x20));

    EXPECT_TRUE(IsReadOnly(m_sFile));
    EXPECT_TRUE(IsSet(m_sFile, 0x20));
    EXPECT_FALSE(IsSet(m_sFile, File::eFileAttributeNormal | File::eFileAttributeDirectory));
}

TEST_F(TOVPlatformFileAttributesTest, TakeReadOnlyBack)
{
    const unsigned long ulBefore = File::GetAttributes(m_sFile.c_str());
    File::SetAttributes(m_sFile.c_str(), ulBefore | File::eFileAttributeReadOnly);
    ASSERT_TRUE(IsReadOnly(m_sFile));

    EXPECT_TRUE(File::SetAttributes(m_sFile.c_str(), ulBefore));

    EXPECT_FALSE(IsReadOnly(m_sFile));
    EXPECT_EQ(ulBefore, File::GetAttributes(m_sFile.c_str()));
    EXPECT_NE(FILE_INVALID_HANDLE, Open("file", "r+b"));
}

TEST_F(TOVPlatformFileAttributesTest, TakeReadOnlyBackByEachAttributeThatIsNot)
{
    for (const unsigned long ulAttributes : {0x00ul, 0x01ul, 0x08ul, 0x10ul, 0x40ul, 0x80ul})
    {
        File::SetAttributes(m_sFile.c_str(), File::eFileAttributeReadOnly);

        EXPECT_TRUE(File::SetAttributes(m_sFile.c_str(), ulAttributes)) << ulAttributes;
        EXPECT_FALSE(IsReadOnly(m_sFile)) << ulAttributes;
    }
}

TEST_F(TOVPlatformFileAttributesTest, KeepReadOnlyBesideOthers)
{
    EXPECT_TRUE(File::SetAttributes(m_sFile.c_str(), File::eFileAttributeArchive | File::eFileAttributeReadOnly));

    EXPECT_TRUE(IsReadOnly(m_sFile));
    EXPECT_TRUE(IsSet(m_sFile, File::eFileAttributeReadOnly));
}

// It is handed on as it is, and read-only is among the system's bits.
TEST_F(TOVPlatformFileAttributesTest, WithEveryBitMakeAFileReadOnly)
{
    EXPECT_TRUE(File::SetAttributes(m_sFile.c_str(), MISSING));

    EXPECT_TRUE(IsReadOnly(m_sFile));
    EXPECT_TRUE(IsSet(m_sFile, File::eFileAttributeReadOnly));
    EXPECT_EQ("text", ReadWholeFile(m_sFile));
}

TEST_F(TOVPlatformFileAttributesTest, LetAReadOnlyFileBeRead)
{
    File::SetAttributes(m_sFile.c_str(), File::eFileAttributeReadOnly);

    EXPECT_NE(FILE_INVALID_HANDLE, Open("file", "rb"));
}

TEST_F(TOVPlatformFileAttributesTest, AreNotSetForAMissingFile)
{
    EXPECT_FALSE(File::SetAttributes(Path("missing").c_str(), File::eFileAttributeReadOnly));
    EXPECT_FALSE(File::SetAttributes("", File::eFileAttributeReadOnly));
    EXPECT_FALSE(File::SetAttributes(nullptr, File::eFileAttributeReadOnly));

    EXPECT_FALSE(std::filesystem::exists(Path("missing")));
}

TEST_F(TOVPlatformFileAttributesTest, AreFoundByEitherSeparator)
{
    WriteWholeFile(Path("folder/inner"), "");

    EXPECT_TRUE(File::SetAttributes(Path("folder\\inner").c_str(), File::eFileAttributeReadOnly));

    EXPECT_TRUE(IsReadOnly(Path("folder/inner")));
    EXPECT_TRUE(IsSet(Path("folder\\inner"), File::eFileAttributeReadOnly));
    EXPECT_TRUE(IsSet(Path("folder/inner"), File::eFileAttributeReadOnly));
}
