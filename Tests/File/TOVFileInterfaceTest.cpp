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

template<class TException> class TOVFileExceptionTest : public testing::Test
{
};

typedef testing::Types<ITOVFile::Exception, CTOVFile::FileException> tExceptions;
TYPED_TEST_SUITE(TOVFileExceptionTest, tExceptions);
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

TYPED_TEST(TOVFileExceptionTest, HoldsTheClassOfFilesAndItsCode)
{
    const unsigned short ausCodes[] = {0, 7, 0xFFFF};
    for (const unsigned short usCode : ausCodes)
    {
        TypeParam oException(usCode);
        EXPECT_EQ(CTOVException::eClassFile, oException.GetClass());
        EXPECT_EQ(usCode, oException.GetCode());
    }
}

TYPED_TEST(TOVFileExceptionTest, CopiesTheCode)
{
    TypeParam oException(7);
    TypeParam oCopy(oException);
    TypeParam oOther(1);

    EXPECT_EQ(7u, oCopy.GetCode());
    EXPECT_EQ(&oOther, &(oOther = oException));
    EXPECT_EQ(7u, oOther.GetCode());
    EXPECT_EQ(CTOVException::eClassFile, oOther.GetClass());
}

TYPED_TEST(TOVFileExceptionTest, AddsNothingToItsBase)
{
    EXPECT_EQ(sizeof(CTOVException), sizeof(TypeParam));
    EXPECT_FALSE(std::has_virtual_destructor_v<TypeParam>);
    EXPECT_FALSE(std::is_default_constructible_v<TypeParam>);
}

TEST(TOVFileExceptionsTest, AreCaughtByHandlersOfTheirBases)
{
    EXPECT_THROW(throw CTOVFile::FileException(7), ITOVFile::Exception);
    EXPECT_THROW(throw CTOVFile::FileException(7), CTOVException);
    EXPECT_THROW(throw ITOVFile::Exception(7), CTOVException);
    EXPECT_FALSE((std::is_base_of_v<CTOVFile::FileException, ITOVFile::Exception>));
}
