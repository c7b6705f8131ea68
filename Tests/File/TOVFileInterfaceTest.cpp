#include "Support/TOVTestSupport.h"

#include <File/TOVFile.h>

#include <type_traits>

namespace
{
// Implements the interface by doing nothing.
class CNoFile : public ITOVFile
{
public:
    void Open(const char*, int) override {}
    void Close() override {}
    unsigned long long Read(void*, unsigned long long) override { return 0; }
    unsigned long long Write(const void*, unsigned long long) override { return 0; }
    void Seek(long long, TOVPlatform::TOVFile::eSeekOrigin) override {}
    void Flush() override {}
    unsigned long long Tell() const override { return 0; }
    bool IsOpen() const override { return false; }
    bool IsEof() const override { return false; }
    unsigned long long GetSize() const override { return 0; }
};
} // namespace

TEST(ITOVFileTest, HasTenPureOperationsAndNothingElse)
{
    EXPECT_TRUE(std::is_abstract_v<ITOVFile>);
    EXPECT_FALSE(std::has_virtual_destructor_v<ITOVFile>);
    EXPECT_EQ(sizeof(void*), sizeof(ITOVFile));
    EXPECT_TRUE((std::is_base_of_v<ITOVFile, CTOVFile>));
}

TEST(ITOVFileTest, CanBeCopied)
{
    CNoFile oFile;
    CNoFile oCopy(oFile);
    ITOVFile& oInterface = oFile;

    EXPECT_EQ(&oInterface, &(oInterface = oCopy));
}

TEST(ITOVFileTest, NamesTheFlagsOfOpen)
{
    EXPECT_EQ(0x01, ITOVFile::eFileOpenRead);
    EXPECT_EQ(0x02, ITOVFile::eFileOpenWrite);
    EXPECT_EQ(0x04, ITOVFile::eFileOpenAppend);
    EXPECT_EQ(0x08, ITOVFile::eFileOpenText);
    EXPECT_EQ(0x10, ITOVFile::eFileOpenBinary);
    EXPECT_EQ(0x20, ITOVFile::eFileOpenCommit);
    EXPECT_EQ(0x40, ITOVFile::eFileOpenNoCommit);
}

TEST(ITOVFileTest, NamesTheOriginsOfSeek)
{
    EXPECT_EQ(0, TOVPlatform::TOVFile::eSeekOriginStart);
    EXPECT_EQ(1, TOVPlatform::TOVFile::eSeekOriginCurrent);
    EXPECT_EQ(2, TOVPlatform::TOVFile::eSeekOriginEnd);
}
