// A catalogue that the system fails to read, at any block.
#include "Catalog/CatalogInstruments.h"

#include <Archive.h>
#include <Catalog.h>
#include <TOVStream/TOVReadFileStream.h>

#include <cerrno>

namespace
{
// A stream of which so many blocks can be read.
class CFailingStream : public CTOVReadFileStream
{
public:
    CFailingStream(const std::string& sName, int nGoodBlocks)
        : CTOVReadFileStream(sName.c_str(), 0), m_nGoodBlocks(nGoodBlocks)
    {
    }

    void Read(void* pBuffer, unsigned long long ullSize) override
    {
        if (m_nGoodBlocks-- > 0)
            CTOVReadFileStream::Read(pBuffer, ullSize);
        else
            errno = EIO;
    }

private:
    int m_nGoodBlocks;
};

class CatalogReadFailureTest : public CatalogTest
{
protected:
    // What reading numbers to the end of the file throws.
    std::string FailureAfter(int nGoodBlocks)
    {
        CFailingStream oStream(Path("numbers"), nGoodBlocks);
        CArchive oArchive(oStream, BYTES);
        try
        {
            int nNumber = 0;
            for (int i = 0; i < BYTES / 4; ++i)
                oArchive.Number(nNumber);
            oArchive.Finish();
        }
        catch (const CCatalogError& oError)
        {
            return oError.what();
        }
        return "";
    }

    static constexpr int BYTES = 200000;
};
} // namespace

TEST_F(CatalogReadFailureTest, IsNotTakenForADamagedOrNewerFile)
{
    Write("numbers", std::string(BYTES, '\x01'));

    EXPECT_EQ(std::string("cannot be read: ") + std::strerror(EIO), FailureAfter(0));
    EXPECT_EQ(std::string("cannot be read: ") + std::strerror(EIO), FailureAfter(1));
    EXPECT_EQ(std::string("cannot be read: ") + std::strerror(EIO), FailureAfter(3));
    EXPECT_EQ("", FailureAfter(4));
}
