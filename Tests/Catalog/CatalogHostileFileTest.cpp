// Catalogues whose numbers promise more than the file holds, and names that no file can have.
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <CatalogFile.h>
#include <Console.h>

#include <filesystem>

namespace
{
constexpr std::size_t MEBIBYTE = 1024 * 1024;

class CatalogHostileFileTest : public CatalogTest
{
protected:
    // The head of a catalogue of one directory, up to the number of its files.
    static std::string Head() { return "TOVCATLG" + CatalogNumber(3) + CatalogNumber(1); }

    // Reads such a catalogue, which must be refused. Returns how many bytes of memory that takes in all.
    std::size_t MemoryToRefuse(const std::string& sBytes)
    {
        Write("c.cat", sBytes);
        const std::string sPath = Path("c.cat");
        const CAllocationCounter oCounter;
        try
        {
            LoadCatalog(sPath.c_str());
            return SIZE_MAX;
        }
        catch (const CCatalogError&)
        {
            return oCounter.BytesTaken();
        }
    }

    static std::string Promise(std::size_t nCount) { return CatalogNumber(static_cast<std::uint32_t>(nCount)); }
};
} // namespace

TEST_F(CatalogHostileFileTest, TakesNoMemoryForWhatACountPromises)
{
    const std::string sRest(4 * MEBIBYTE, '\0');
    const std::string sOneDirectory = CatalogNumber(1) + CatalogText("tree") + CatalogNumber(0);
    for (const std::size_t nEach : {4u, 5u, 17u, 25u})
    {
        const std::string sCount = Promise(sRest.size() / nEach);
        EXPECT_GT(MEBIBYTE, MemoryToRefuse(Head() + sCount + sRest)) << nEach;
        EXPECT_GT(MEBIBYTE, MemoryToRefuse(Sealed(Head() + sCount + sRest))) << nEach;
        EXPECT_GT(MEBIBYTE, MemoryToRefuse(Head() + CatalogNumber(0) + sCount + sRest)) << nEach;
        EXPECT_GT(MEBIBYTE, MemoryToRefuse(Sealed(Head() + sOneDirectory + sCount + sRest))) << nEach;
        EXPECT_GT(MEBIBYTE, MemoryToRefuse("TOVCATLG" + CatalogNumber(1) + CatalogText("tree") + sCount + sRest));
    }
}

TEST_F(CatalogHostileFileTest, IsRefusedForNamesThatCannotBe)
{
    std::size_t nStep = 0;
    for (const std::string& sName : {std::string(), std::string(4097, 'x'), std::string(1000000, 'x'),
                                     std::string(1000000, '\n'), std::string(5000000, '\x1b')})
    {
        for (const std::string& sBytes :
             {CatalogVersion3({sName}, {}, {{0, "a", 1, 0}}), CatalogVersion3({"tree"}, {sName}, {{0, "a", 1, 0}}),
              CatalogVersion3({"tree"}, {}, {{0, sName, 1, 0}}), CatalogVersion2({sName}, {}, {{0, "a", 1, 0}}),
              CatalogVersion1(sName, {{0, "a", 1, 0}}), CatalogVersion1("tree", {{0, sName, 1, 0}})})
        {
            Write("c.cat", sBytes);
            EXPECT_TRUE(IsRefused(RunInSweep(nStep, "list"), "c.cat is ")) << sName.size();
            EXPECT_TRUE(IsRefused(RunInSweep(nStep, "verify"), "c.cat is ")) << sName.size();
            ++nStep;
        }
    }
}

TEST_F(CatalogHostileFileTest, IsRefusedForARecordOfAnotherVersion)
{
    const std::string sOneDirectory = CatalogNumber(1) + CatalogText("tree") + CatalogNumber(0);
    const std::string sOldRecord =
        CatalogNumber(1) + CatalogText("a-name-that-is-long") + CatalogNumber(1) + CatalogNumber(0);
    const std::string sNewRecord =
        CatalogNumber(2) + CatalogNumber(0) + CatalogText("a") + CatalogNumber(1) + CatalogNumber(0) + CatalogNumber(0);
    for (const std::string& sBytes :
         {Sealed(Head() + sOneDirectory + CatalogNumber(1) + sOldRecord),
          "TOVCATLG" + CatalogNumber(1) + CatalogText("tree") + CatalogNumber(1) + sNewRecord})
    {
        Write("c.cat", sBytes);
        EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), "c.cat is damaged: it describes a file as another version does"));
        EXPECT_TRUE(IsRefused(Run({"verify", "c.cat"}), "c.cat is damaged"));
    }
}

TEST_F(CatalogHostileFileTest, IsListedWithTheLongestNamesThatCanBe)
{
    const std::string sName(4096, '\x01');
    Write("c.cat", CatalogVersion3({sName}, {sName}, {{0, sName, 1, 0}}));

    const sRun oRun = Run({"list", "c.cat"});

    EXPECT_EQ(0, oRun.nExitCode) << oRun.sErrors;
    EXPECT_EQ(2u, Lines(oRun.sOutput).size());
    EXPECT_LT(4 * 2 * sName.size(), oRun.sOutput.size());
}

TEST_F(CatalogHostileFileTest, HasItsNamesShownAtACostOfTheirLength)
{
    for (const char cCharacter : {'x', '\x01'})
    {
        const CTOVStringA oName(std::string(500000, cCharacter).c_str());

        const CAllocationCounter oCounter;
        const CTOVStringA oShown = Printable(oName);
        const std::size_t nTaken = oCounter.BytesTaken();

        EXPECT_EQ(cCharacter == 'x' ? 500000 : 2000000, oShown.GetLength());
        EXPECT_GT(16 * MEBIBYTE, nTaken);
    }
}

// The ends of the names are numbers of 32 bits. A limit stands for that of 4 GiB here.
TEST(CatalogNameListTest, RefusesMoreBytesThanItsEndsCanTell)
{
    CNameList aNames(10);
    aNames.Add("12345");
    EXPECT_THROW(aNames.Add("123456"), CCatalogError);
    aNames.Add("67890");
    EXPECT_THROW(aNames.Add("1"), CCatalogError);

    EXPECT_EQ(2, aNames.GetSize());
    EXPECT_EQ("67890", std::string(~aNames[1]));
}
