// The unfinished catalogue, with links and permissions, and with another run at any moment. The program's stat goes
// before that of the C library.
#include "Catalog/CatalogInstruments.h"
#include "Catalog/Posix/CatalogHindrance.h"
#include "Catalog/Posix/CatalogSteps.h"

#include <CatalogSystem.h>

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <sys/stat.h>

static thread_local const char* s_szUnknown = nullptr;
static thread_local int s_nError = 0;

extern "C" __attribute__((visibility("default"))) int stat(const char* szName, struct stat* pStatus) noexcept
{
    typedef int (*tStatus)(const char*, struct stat*);
    static const tStatus s_fnStatus = reinterpret_cast<tStatus>(::dlsym(RTLD_NEXT, "stat"));

    const char* szSlash = std::strrchr(szName, '/');
    if (s_szUnknown != nullptr && std::strcmp(szSlash != nullptr ? szSlash + 1 : szName, s_szUnknown) == 0)
    {
        errno = s_nError;
        return -1;
    }
    return s_fnStatus(szName, pStatus);
}

namespace
{
// While it lives, the constructing thread gets this error when it asks for the status of a file of this name.
class CUnknownStatus
{
public:
    CUnknownStatus(const char* szName, int nError)
    {
        s_szUnknown = szName;
        s_nError = nError;
    }
    ~CUnknownStatus() { s_szUnknown = nullptr; }
    CUnknownStatus(const CUnknownStatus&) = delete;
    CUnknownStatus& operator=(const CUnknownStatus&) = delete;
};

class CatalogPosixUnfinishedTest : public CatalogTest
{
protected:
    CatalogPosixUnfinishedTest()
    {
        Write("tree/a", "x");
        Write("c.cat", EXISTING);
    }

    static std::string Good() { return CatalogVersion3({"tree"}, {}, {{0, "a", 1, 0x8cdc1683}}); }

    mode_t ModeOf(const std::string& sName) const
    {
        struct stat oStatus = {};
        EXPECT_EQ(0, ::stat(Path(sName).c_str(), &oStatus));
        return oStatus.st_mode & 07777;
    }
};
} // namespace

TEST_F(CatalogPosixUnfinishedTest, IsWrittenThroughNoLink)
{
    Write("victim", Good().substr(0, 12));
    for (const char* szName : {"c.cat.new", "tovcatalog-1.new", "tovcatalog-2.new"})
        std::filesystem::create_symlink("victim", Path(szName));
    std::filesystem::create_symlink("nowhere", Path("tovcatalog-3.new"));

    Create({"c.cat", "tree"});

    EXPECT_EQ(Good(), Read("c.cat"));
    EXPECT_FALSE(std::filesystem::is_symlink(Path("c.cat")));
    EXPECT_EQ(Good().substr(0, 12), Read("victim"));
    EXPECT_FALSE(Exists("nowhere"));
    for (const char* szName : {"c.cat.new", "tovcatalog-1.new", "tovcatalog-2.new", "tovcatalog-3.new"})
        EXPECT_TRUE(std::filesystem::is_symlink(Path(szName))) << szName;
}

TEST_F(CatalogPosixUnfinishedTest, WaitsForNoPipeOfItsName)
{
    ASSERT_EQ(0, ::mkfifo(Path("tovcatalog-1.new").c_str(), 0666));

    Create({"c.cat", "tree"});

    EXPECT_EQ(Good(), Read("c.cat"));
}

TEST_F(CatalogPosixUnfinishedTest, HasThePermissionsOfTheCatalogueFromItsStart)
{
    for (const mode_t ulMode : {0600u, 0640u, 0644u, 0666u})
    {
        ASSERT_EQ(0, ::chmod(Path("c.cat").c_str(), ulMode));
        mode_t ulSeen = 0;
        const int nExitCode = RunStepByStep({"create", "c.cat", "tree"}, Folder(), [&](int) {
            struct stat oStatus = {};
            if (::stat(Path("tovcatalog-1.new").c_str(), &oStatus) == 0)
                ulSeen |= oStatus.st_mode & 07777;
        });

        EXPECT_EQ(0, nExitCode);
        EXPECT_EQ(ulMode, ModeOf("c.cat"));
        EXPECT_NE(0u, ulSeen);
        EXPECT_EQ(0u, ulSeen & ~(ulMode | S_IWUSR));
    }
}

TEST_F(CatalogPosixUnfinishedTest, ReplacesNoCatalogueWhosePermissionsCannotBeKnown)
{
    const CTOVStringA oName(Path("tovcatalog-1.new").c_str());
    const CTOVStringA oCatalog(Path("c.cat").c_str());
    ASSERT_EQ(0, ::chmod(Path("c.cat").c_str(), 0600));
    {
        const CUnknownStatus oFault("c.cat", EIO);
        EXPECT_FALSE(CNewFile(oName, oCatalog).IsOpen());
    }
    {
        CNewFile oFile(oName, oCatalog);
        const CUnknownStatus oFault("c.cat", EIO);
        EXPECT_TRUE(oFile.IsOpen());
        EXPECT_FALSE(oFile.PutInPlace());
    }
    EXPECT_EQ(EXISTING, Read("c.cat"));
    EXPECT_EQ(0600u, ModeOf("c.cat"));
    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());

    const CUnknownStatus oFault("new.cat", ENOENT);
    CNewFile oFile(oName, Path("new.cat").c_str());
    EXPECT_TRUE(oFile.PutInPlace());
    EXPECT_TRUE(Exists("new.cat"));
}

TEST_F(CatalogPosixUnfinishedTest, IsLostToNoOtherRunThatDiesAtAnyMoment)
{
    int nOthers = 0;
    const int nExitCode = RunStepByStep({"create", "c.cat", "tree"}, Folder(), [&](int) {
        const std::string sBefore = Read("c.cat");
        EXPECT_TRUE(sBefore == EXISTING || sBefore == Good());
        if (NamesInFolder().size() == 2 && sBefore == EXISTING)
            return; // not yet begun

        ++nOthers;
        EXPECT_EQ(-1, RunHindered({"create", "c.cat", "tree"}, Folder(), [] { DieBeyondFileSize(10); }).nExitCode);
        // Only one thread of the run stands still: another may just have put the finished catalogue in its place.
        const std::string sAfter = Read("c.cat");
        EXPECT_TRUE(sAfter == sBefore || sAfter == Good());
    });

    EXPECT_EQ(0, nExitCode);
    EXPECT_LT(10, nOthers);
    EXPECT_EQ(Good(), Read("c.cat"));
    Create({"c.cat", "tree"});
    EXPECT_EQ((tNames{"c.cat", "tree"}), NamesInFolder());
}
