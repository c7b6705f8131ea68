// Catalogues with SHA-256.
#include "Catalog/CatalogInstruments.h"

#include <Catalog.h>

namespace
{
// The published values of the algorithm's definition.
constexpr char OF_NOTHING[] = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
constexpr char OF_ABC[] = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
constexpr char OF_A_MILLION[] = "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0";

std::string Bytes(const std::string& sHex)
{
    std::string sBytes;
    for (std::size_t n = 0; n < sHex.size(); n += 2)
        sBytes += static_cast<char>(std::stoi(sHex.substr(n, 2), nullptr, 16));
    return sBytes;
}

class CatalogSha256Test : public CatalogTest
{
protected:
    static std::string HexOfText(const std::string& sText)
    {
        CSha256 oSha256;
        oSha256.Add(sText.data(), sText.size());
        return HexOf(oSha256.Finish());
    }

    // The bytes of a catalogue of two files, as the document describes them.
    static std::string Expected()
    {
        std::string sBytes = "TOVCATLG" + CatalogNumber(3) + CatalogNumber(2);
        sBytes += CatalogNumber(1) + CatalogText("tree") + CatalogNumber(0) + CatalogNumber(0) + CatalogNumber(2);
        sBytes += CatalogNumber(2);
        sBytes += CatalogNumber(3) + CatalogNumber(0) + CatalogText("abc") + CatalogNumber(3) + CatalogNumber(0) +
                  CatalogNumber(Crc("abc")) + Bytes(OF_ABC);
        sBytes += CatalogNumber(3) + CatalogNumber(0) + CatalogText("empty") + CatalogNumber(0) + CatalogNumber(0) +
                  CatalogNumber(0) + Bytes(OF_NOTHING);
        return Sealed(sBytes);
    }
};
} // namespace

TEST_F(CatalogSha256Test, ComputesThePublishedValues)
{
    EXPECT_EQ(OF_NOTHING, HexOfText(""));
    EXPECT_EQ(OF_ABC, HexOfText("abc"));
    EXPECT_EQ(OF_A_MILLION, HexOfText(std::string(1000000, 'a')));
}

TEST_F(CatalogSha256Test, BeginsAnewAfterEachValue)
{
    CSha256 oSha256;
    oSha256.Add("x", 1);
    oSha256.Finish();
    oSha256.Add("ab", 2);
    oSha256.Add("c", 1);

    EXPECT_EQ(OF_ABC, HexOf(oSha256.Finish()));
}

TEST_F(CatalogSha256Test, IsKeptInTheDescribedFormat)
{
    Write("tree/abc", "abc");
    Write("tree/empty", "");
    Create({"c.cat", "tree", "--sha256"});

    EXPECT_EQ(Expected(), Read("c.cat"));
    EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode);
}

TEST_F(CatalogSha256Test, IsListedBeforeTheOtherColumns)
{
    Write("c.cat", Expected());

    const tNames aLines = Lines(Run({"list", "c.cat"}).sOutput);

    ASSERT_EQ(3u, aLines.size());
    EXPECT_EQ(std::string(OF_ABC) + "  352441c2              3  tree/abc", aLines[0]);
}

TEST_F(CatalogSha256Test, IsRefusedWhereverTheCatalogueIsCutOffOrChanged)
{
    const std::string sWhole = Expected();
    for (std::size_t nByte = 0; nByte < sWhole.size(); ++nByte)
    {
        Write("c.cat", sWhole.substr(0, nByte));
        EXPECT_TRUE(IsRefused(RunInSweep(nByte, "list"), "c.cat")) << nByte << " bytes";

        std::string sBytes = sWhole;
        sBytes[nByte] = static_cast<char>(~sBytes[nByte]);
        Write("c.cat", sBytes);
        EXPECT_TRUE(IsRefused(RunInSweep(nByte, "list"), "c.cat")) << "byte " << nByte;
    }
}

TEST_F(CatalogSha256Test, IsRefusedWithWhatANewerProgramKeeps)
{
    std::string sBytes = Expected();
    sBytes.resize(sBytes.size() - 4);
    const std::string sHead = "TOVCATLG" + CatalogNumber(3) + CatalogNumber(2) + CatalogNumber(1) +
                              CatalogText("tree") + CatalogNumber(0) + CatalogNumber(0);
    sBytes.replace(sHead.size(), 4, CatalogNumber(6));
    Write("c.cat", Sealed(sBytes));

    EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), "newer"));
}

TEST_F(CatalogSha256Test, IsClearlyRefusedByAProgramThatWasBuiltWithoutIt)
{
    Write("tree/abc", "abc");
    Write("tree/empty", "");
    Write("c.cat", Expected());
    Write("list", OF_ABC + std::string("  tree/abc\n"));
    const auto fnRunWithout = [&](const std::vector<std::string>& aArguments) {
        sProgram oProgram = Program(aArguments);
        oProgram.aCommand[0] = PathBesideThisProgram(TOV_CATALOG_WITHOUT_SHA256);
        return RunProgram(oProgram, eErrorsApart);
    };

    EXPECT_TRUE(IsRefused(fnRunWithout({"create", "new.cat", "tree", "--sha256"}), "built without SHA-256"));
    EXPECT_TRUE(IsRefused(fnRunWithout({"verify", "c.cat"}), "c.cat holds SHA-256"));
    EXPECT_TRUE(IsRefused(fnRunWithout({"check", "list"}), "built without SHA-256"));
    EXPECT_FALSE(Exists("new.cat"));
    EXPECT_EQ(0, fnRunWithout({"list", "c.cat"}).nExitCode);
    EXPECT_EQ(0, fnRunWithout({"create", "new.cat", "tree"}).nExitCode);
}

TEST_F(CatalogSha256Test, ShowsAChangeThatKeepsSizeAndCrc32)
{
    const std::string sBefore(5, '\0');
    const std::string sAfter = "\x41\x06\x71\xdb\x01"; // differs by the polynomial of CRC-32
    ASSERT_EQ(Crc(sBefore), Crc(sAfter));
    Write("tree/a", sBefore);
    Create({"plain.cat", "tree"});
    Create({"sha256.cat", "tree", "--sha256"});

    Write("tree/a", sAfter);

    EXPECT_EQ(0, Run({"verify", "plain.cat"}).nExitCode);
    EXPECT_EQ((tNames{"changed tree/a"}), Reports(Run({"verify", "sha256.cat"})));
}

TEST_F(CatalogSha256Test, DecidesWhichFileHasMoved)
{
    const std::string sAfter = "\x41\x06\x71\xdb\x01";
    Write("tree/a", std::string(5, '\0'));
    Create({"c.cat", "tree", "--sha256"});
    Remove("tree/a");
    Write("tree/b", sAfter);

    EXPECT_EQ((tNames{"missing tree/a", "new tree/b"}), Reports(Run({"verify", "c.cat"})));
}

TEST_F(CatalogSha256Test, IsTheSameWithAnyNumberOfThreads)
{
    for (int nFile = 100; nFile < 150; ++nFile)
        Write("tree/" + std::to_string(nFile), std::string(nFile * 997, 'x'));
    Create({"one.cat", "tree", "--sha256", "--threads", "1"});
    Create({"many.cat", "tree", "--sha256", "--threads", "8"});

    EXPECT_EQ(Read("one.cat"), Read("many.cat"));
}
