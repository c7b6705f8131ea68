// Catalogues whose numbers promise more than the file holds, with very many records, and with names that no file can
// have.
#include "Catalog/CatalogInstruments.h"
#include "Support/TOVAllocationCounter.h"

#include <CatalogFile.h>
#include <Console.h>

#include <filesystem>
#include <functional>

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

    // Reads such a catalogue, which is right and has so many files and directories. Returns the same.
    std::size_t MemoryToRead(const std::string& sBytes, std::size_t nFiles, std::size_t nDirectories)
    {
        Write("c.cat", sBytes);
        const std::string sPath = Path("c.cat");
        const CAllocationCounter oCounter;
        const sCatalog oCatalog = LoadCatalog(sPath.c_str());
        const std::size_t nTaken = oCounter.BytesTaken();
        EXPECT_EQ(nFiles, static_cast<std::size_t>(oCatalog.aFiles.GetSize()));
        EXPECT_EQ(nDirectories, static_cast<std::size_t>(oCatalog.aDirectories.GetSize()));
        return nTaken;
    }

    static std::string Repeated(const std::string& sBytes, std::size_t nCount)
    {
        std::string sAll;
        for (; nCount > 0; --nCount)
            sAll += sBytes;
        return sAll;
    }

    // A file of the first directory, with so many bytes of details.
    static std::string Record(std::uint32_t nVersion, const std::string& sPath, std::size_t nDetails)
    {
        const std::string sNumber = CatalogNumber(0);
        return CatalogNumber(nVersion) + (nVersion == 1 ? "" : sNumber) + CatalogText(sPath) + sNumber +
               (nVersion == 1 ? "" : sNumber) + sNumber + std::string(nDetails, '\x01');
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

TEST_F(CatalogHostileFileTest, IsReadInTwiceItsSizeWhateverFilesItHas)
{
    const std::string sOneDirectory = CatalogNumber(1) + CatalogText("tree") + CatalogNumber(0);
    const std::string sFull = "TOVCATLG" + CatalogNumber(3) + CatalogNumber(2) + sOneDirectory + CatalogNumber(0);
    const auto fnUnsealed = [](const std::string& sBytes) { return sBytes; };
    const struct
    {
        std::string sHead;
        std::function<std::string(const std::string&)> fnSeal;
        std::uint32_t nRecordVersion;
        std::size_t nDetails; // the size of times and SHA-256
    } aKinds[] = {{"TOVCATLG" + CatalogNumber(1) + CatalogText("tree"), fnUnsealed, 1, 0},
                  {"TOVCATLG" + CatalogNumber(2) + CatalogNumber(1) + sOneDirectory, &SealedOfVersion2, 2, 0},
                  {Head() + sOneDirectory, &Sealed, 2, 0},
                  {sFull + CatalogNumber(1), &Sealed, 3, 8},
                  {sFull + CatalogNumber(2), &Sealed, 3, 32},
                  {sFull + CatalogNumber(3), &Sealed, 3, 40}};
    for (const auto& oKind : aKinds)
    {
        for (const std::size_t nLength : {1u, 4096u})
        {
            const std::string sRecord = Record(oKind.nRecordVersion, std::string(nLength, 'x'), oKind.nDetails);
            const std::size_t nFiles = 4 * MEBIBYTE / sRecord.size();
            const std::string sBytes = oKind.fnSeal(oKind.sHead + Promise(nFiles) + Repeated(sRecord, nFiles));
            EXPECT_GE(2 * sBytes.size() + MEBIBYTE, MemoryToRead(sBytes, nFiles, 1))
                << oKind.nDetails << " in a record of version " << oKind.nRecordVersion << ", " << nLength;
        }
    }
}

TEST_F(CatalogHostileFileTest, IsReadInTwiceItsSizeWhateverDirectoriesAndPatternsItHas)
{
    for (const std::size_t nLength : {1u, 4096u})
    {
        const std::string sName = CatalogText(std::string(nLength, 'x'));
        const std::size_t nCount = 4 * MEBIBYTE / sName.size();
        const std::string sNames = Promise(nCount) + Repeated(sName, nCount);
        const std::string sDirectories = Sealed(Head() + sNames + CatalogNumber(0) + CatalogNumber(0));
        const std::string sPatterns =
            Sealed(Head() + CatalogNumber(1) + CatalogText("tree") + sNames + CatalogNumber(0));
        EXPECT_GE(2 * sDirectories.size() + MEBIBYTE, MemoryToRead(sDirectories, 0, nCount)) << nLength;
        EXPECT_GE(2 * sPatterns.size() + MEBIBYTE, MemoryToRead(sPatterns, 0, 1)) << nLength;
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
