// Files that cannot be read on Windows.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Windows/CatalogHeldFile.h"

#include <memory>

namespace
{
class CatalogWindowsUnreadableTest : public CatalogTest
{
protected:
    CatalogWindowsUnreadableTest()
    {
        Write("tree/a", "a");
        Write("tree/sub/z", "z");
    }

    // A name of characters that the code page of the system's narrow functions lacks.
    std::wstring ForeignName(const std::string& sFolder) const
    {
        const std::string sNarrow = Path(sFolder);
        return std::wstring(sNarrow.begin(), sNarrow.end()) + L"\\\x65E5\x672C";
    }
};
} // namespace

TEST_F(CatalogWindowsUnreadableTest, IsNamedAndCountedAndTheRestGoesOn)
{
    Write("tree/bad", "bad");
    Write("tree/sub/bad too", "bad");
    const CHeldFile oOne(Path("tree/bad"), 0);
    const CHeldFile oTwo(Path("tree/sub/bad too"), 0);

    const sRun oRun = Run({"create", "c.cat", "tree"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"tree/bad", "tree/sub/bad too"}), Unreadable(oRun));
    EXPECT_EQ("2 files, 2 bytes: catalogued, 2 unreadable", Summary(oRun));
    EXPECT_EQ((tNames{"e8b7be43 1 tree/a", "62d277af 1 tree/sub/z"}), Listed());
}

TEST_F(CatalogWindowsUnreadableTest, IsNamedOnceWithAnyNumberOfThreads)
{
    std::vector<std::unique_ptr<CHeldFile>> aHeld;
    tNames aExpected;
    for (int nFile = 10; nFile < 50; ++nFile)
    {
        aExpected.push_back("tree/bad" + std::to_string(nFile));
        Write(aExpected.back(), "bad");
        aHeld.emplace_back(new CHeldFile(Path(aExpected.back()), 0));
    }

    for (const char* szThreads : {"1", "8"})
    {
        const sRun oRun = Run({"create", "c.cat", "tree", "--threads", szThreads});
        EXPECT_EQ(1, oRun.nExitCode);
        EXPECT_EQ(aExpected, Unreadable(oRun));
        EXPECT_EQ("2 files, 2 bytes: catalogued, 40 unreadable", Summary(oRun));
    }
}

TEST_F(CatalogWindowsUnreadableTest, IsNeitherChangedNorMissing)
{
    Write("tree/bad", "good");
    Create({"c.cat", "tree"});
    const CHeldFile oHeld(Path("tree/bad"), 0);
    Write("tree/sub/z", "Z");

    const sRun oRun = Run({"verify", "c.cat"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"changed tree/sub/z", "unreadable tree/bad"}), Reports(oRun));
    EXPECT_NE(std::string::npos, Summary(oRun).find("1 changed, 0 missing, 0 new, 1 unreadable")) << Summary(oRun);
}

TEST_F(CatalogWindowsUnreadableTest, IsNoFileThatOthersMayRead)
{
    const CHeldFile oHeld(Path("tree/a"), FILE_SHARE_READ);

    EXPECT_EQ(0, Run({"create", "c.cat", "tree"}).nExitCode);
}

// The library's file names are narrow text, so that such a file can be found, but not opened.
TEST_F(CatalogWindowsUnreadableTest, MayBeAFileOfAForeignName)
{
    const HANDLE hFile = ::CreateFileW(ForeignName("tree").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, hFile);
    ::CloseHandle(hFile);

    const sRun oRun = Run({"create", "c.cat", "tree"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"tree/??"}), Unreadable(oRun));
    EXPECT_EQ("2 files, 2 bytes: catalogued, 1 unreadable", Summary(oRun));
}

TEST_F(CatalogWindowsUnreadableTest, MayBeADirectoryOfAForeignName)
{
    ASSERT_TRUE(::CreateDirectoryW(ForeignName("tree").c_str(), nullptr));

    const sRun oRun = Run({"create", "c.cat", "tree"});

    EXPECT_EQ(1, oRun.nExitCode);
    EXPECT_EQ((tNames{"tree/??"}), Unreadable(oRun));
    EXPECT_EQ("2 files, 2 bytes: catalogued, 1 unreadable", Summary(oRun));
}

TEST_F(CatalogWindowsUnreadableTest, MayBeTheCatalogue)
{
    Create({"c.cat", "tree"});
    const CHeldFile oHeld(Path("c.cat"), 0);

    EXPECT_TRUE(IsRefused(Run({"verify", "c.cat"}), "c.cat"));
    EXPECT_TRUE(IsRefused(Run({"list", "c.cat"}), "c.cat"));
}
