// Names and attributes that only Windows has.
#include "Catalog/CatalogInstruments.h"

#include <windows.h>

namespace
{
class CatalogWindowsNamesTest : public CatalogTest
{
protected:
    CatalogWindowsNamesTest()
    {
        Write("tree/a", "a");
        Write("tree/sub/z", "z");
    }
};
} // namespace

TEST_F(CatalogWindowsNamesTest, OfTheCatalogueMayBeSpelledDifferently)
{
    for (const char* szCatalog : {"tree\\c.cat", "TREE/C.CAT", ".\\Tree\\c.cat", "tree\\sub\\..\\c.cat"})
    {
        Write("tree/c.cat", "an existing catalogue");
        Create({szCatalog, "tree"});
        EXPECT_EQ((tNames{"e8b7be43 1 tree/a", "62d277af 1 tree/sub/z"}), Listed("tree/c.cat")) << szCatalog;
        EXPECT_EQ(0, Run({"verify", szCatalog}).nExitCode) << szCatalog;
        Remove("tree/c.cat");
    }
}

TEST_F(CatalogWindowsNamesTest, OfDirectoriesMayHoldBackslashes)
{
    Write("tree/sub/more/y", "y");

    for (const char* szDirectory : {"tree\\sub", "tree\\sub\\", ".\\tree/sub"})
    {
        Create({"c.cat", szDirectory});
        EXPECT_EQ(2u, Listed().size()) << szDirectory;
        EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode) << szDirectory;
    }
}

TEST_F(CatalogWindowsNamesTest, OfFilesOfAnyAttributesAreTaken)
{
    const DWORD aAttributes[] = {FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_READONLY,
                                 FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM};
    for (const DWORD dwAttributes : aAttributes)
    {
        ASSERT_TRUE(::SetFileAttributesA(Path("tree/a").c_str(), dwAttributes));
        Create({"c.cat", "tree", "--pattern", "a"});
        EXPECT_EQ((tNames{"e8b7be43 1 tree/a"}), Listed()) << dwAttributes;

        ASSERT_TRUE(::SetFileAttributesA(Path("c.cat").c_str(), dwAttributes));
        EXPECT_EQ(0, Run({"verify", "c.cat"}).nExitCode) << dwAttributes;
        ::SetFileAttributesA(Path("c.cat").c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    ::SetFileAttributesA(Path("tree/a").c_str(), FILE_ATTRIBUTE_NORMAL);
}
