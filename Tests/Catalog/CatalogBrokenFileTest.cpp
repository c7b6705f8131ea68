// Files that are no catalogues, damaged catalogues, and those of a later program.
#include "Catalog/CatalogInstruments.h"

namespace
{
constexpr char MAGIC[] = "TOVCATLG";

class CatalogBrokenFileTest : public CatalogTest
{
protected:
    CatalogBrokenFileTest() { Write("tree/a", "hello\n"); }

    // A catalogue that agrees with the tree and holds one of everything.
    static std::string Good() { return CatalogVersion3({"tree"}, {"*"}, {{0, "a", 6, 0x363a3020}}); }

    testing::AssertionResult Refuses(const char* szCommand, const std::string& sBytes,
                                     const std::string& sPart = "c.cat")
    {
        Write("c.cat", sBytes);
        return IsRefused(Run({szCommand, "c.cat"}), sPart);
    }

    testing::AssertionResult RefusesInSweep(std::size_t nStep, const char* szCommand, const std::string& sBytes)
    {
        Write("c.cat", sBytes);
        return IsRefused(RunInSweep(nStep, szCommand), "c.cat");
    }

    testing::AssertionResult BothRefuse(const std::string& sBytes, const std::string& sPart = "c.cat")
    {
        const testing::AssertionResult oListed = Refuses("list", sBytes, sPart);
        return oListed ? Refuses("verify", sBytes, sPart) : oListed;
    }

    // Good() with these bytes in the place of its own, and with a checksum that covers them.
    static std::string Patched(std::size_t nAt, const std::string& sBytes)
    {
        std::string sAll = Good();
        sAll.resize(sAll.size() - 4);
        return Sealed(sAll.replace(nAt, sBytes.size(), sBytes));
    }

    // The position of a text in Good().
    enum ePlace
    {
        ePlaceVersion = 8,
        ePlaceHeadVersion = 12,
        ePlaceDirectoryCount = 16,
        ePlaceDirectoryLength = 20,
        ePlacePatternCount = 28,
        ePlacePatternLength = 32,
        ePlaceFileCount = 37,
        ePlaceFileVersion = 41,
        ePlaceFileDirectory = 45,
        ePlacePathLength = 49
    };
};
} // namespace

TEST_F(CatalogBrokenFileTest, IsReadWhenWhole)
{
    Write("c.cat", Good());

    EXPECT_EQ((tNames{"363a3020 6 tree/a"}), Listed());
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
    EXPECT_EQ(Good(), Patched(0, MAGIC));
}

TEST_F(CatalogBrokenFileTest, IsRefusedWhereverItIsCutOff)
{
    for (std::size_t nLength = 0; nLength < Good().size(); ++nLength)
    {
        EXPECT_TRUE(RefusesInSweep(nLength, "list", Good().substr(0, nLength))) << nLength << " bytes";
        EXPECT_TRUE(RefusesInSweep(nLength, "verify", Good().substr(0, nLength))) << nLength << " bytes";
    }
}

TEST_F(CatalogBrokenFileTest, IsRefusedWhicheverByteIsInverted)
{
    for (std::size_t nByte = 0; nByte < Good().size(); ++nByte)
    {
        std::string sBytes = Good();
        sBytes[nByte] = static_cast<char>(~sBytes[nByte]);
        EXPECT_TRUE(RefusesInSweep(nByte, "list", sBytes)) << "byte " << nByte;
    }
}

TEST_F(CatalogBrokenFileTest, IsRefusedWhicheverByteDiffersInOneBit)
{
    for (std::size_t nByte = 0; nByte < Good().size(); ++nByte)
    {
        std::string sBytes = Good();
        sBytes[nByte] = static_cast<char>(sBytes[nByte] ^ (1 << nByte % 8));
        EXPECT_TRUE(RefusesInSweep(nByte, "verify", sBytes)) << "byte " << nByte;
    }
}

TEST_F(CatalogBrokenFileTest, IsRefusedWhenMoreFollows)
{
    for (const std::string& sMore : {std::string(1, '\0'), std::string(4, '\0'), std::string("x"), Good()})
        EXPECT_TRUE(BothRefuse(Good() + sMore)) << sMore.size() << " bytes";

    // The same with a checksum after it.
    EXPECT_TRUE(BothRefuse(Sealed(Good())));
    EXPECT_TRUE(BothRefuse(SealedOfVersion2(Good())));
    EXPECT_TRUE(BothRefuse(Sealed(Good().substr(0, Good().size() - 4) + "more")));
}

TEST_F(CatalogBrokenFileTest, IsRefusedWhenForeign)
{
    std::string sNoise;
    for (unsigned long ulState = 1; sNoise.size() < 300000; ulState = (ulState * 1103515245 + 12345) & 0x7FFFFFFF)
        sNoise += static_cast<char>(ulState >> 16);

    for (const std::string& sForeign :
         {std::string("hello\n"), std::string(1000000, '\0'), std::string(MAGIC), "tovcatlg" + Good().substr(8), sNoise,
          MAGIC + sNoise, MAGIC + CatalogNumber(3) + sNoise, ReadWholeFile(PathOfCatalogProgram()), " " + Good()})
        EXPECT_TRUE(BothRefuse(sForeign)) << sForeign.substr(0, 20);
}

TEST_F(CatalogBrokenFileTest, IsCalledNewerWhenItIs)
{
    for (const std::uint32_t nVersion : {4u, 5u, 255u, 256u, 0x7FFFFFFFu})
    {
        EXPECT_TRUE(BothRefuse(Patched(ePlaceVersion, CatalogNumber(nVersion)), "newer")) << nVersion;
        EXPECT_TRUE(BothRefuse(MAGIC + CatalogNumber(nVersion) + "another format", "newer")) << nVersion;
    }
}

TEST_F(CatalogBrokenFileTest, IsRefusedForANewerOrUnknownSection)
{
    for (const ePlace nPlace : {ePlaceHeadVersion, ePlaceFileVersion})
        for (const std::uint32_t nVersion : {0u, 3u, 256u, 0xFFFFFFFFu})
            EXPECT_TRUE(BothRefuse(Patched(nPlace, CatalogNumber(nVersion)))) << nPlace << ": " << nVersion;
    for (const std::uint32_t nVersion : {0u, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_TRUE(BothRefuse(Patched(ePlaceVersion, CatalogNumber(nVersion)))) << nVersion;
}

// The checksum is right here: each number must be checked for what it is.
TEST_F(CatalogBrokenFileTest, IsRefusedForCountsAndLengthsThatCannotBe)
{
    std::size_t nStep = 0;
    for (const ePlace nPlace : {ePlaceDirectoryCount, ePlaceDirectoryLength, ePlacePatternCount, ePlacePatternLength,
                                ePlaceFileCount, ePlacePathLength})
    {
        for (const std::uint32_t nNumber : {1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFF0u, 0xFFFFFFFFu})
        {
            const std::string sBytes = Patched(nPlace, CatalogNumber(nNumber));
            EXPECT_TRUE(RefusesInSweep(nStep, "list", sBytes)) << nPlace << ": " << nNumber;
            EXPECT_TRUE(RefusesInSweep(nStep, "verify", sBytes)) << nPlace << ": " << nNumber;
            ++nStep;
        }
    }
}

TEST_F(CatalogBrokenFileTest, IsRefusedForAFileOfADirectoryThatIsNotThere)
{
    for (const std::uint32_t nDirectory : {1u, 2u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_TRUE(BothRefuse(Patched(ePlaceFileDirectory, CatalogNumber(nDirectory)))) << nDirectory;
    EXPECT_TRUE(BothRefuse(CatalogVersion3({}, {}, {{0, "a", 6, 0x363a3020}})));
}

TEST_F(CatalogBrokenFileTest, IsReplacedByANewOne)
{
    Write("c.cat", Good().substr(0, 40));

    Create({"c.cat", "tree", "--pattern", "*"});

    EXPECT_EQ(Good(), Read("c.cat"));
}
