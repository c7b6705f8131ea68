// Kept log files that cannot be opened.
#include "Listeners/ListenerInstruments.h"

#include <Listeners/TOVRotatingFileListener.h>

#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TOVDebug;

namespace
{
// While it lives, this process can open no file, because the limit lies below the first free descriptor. Open files
// stay usable.
class CNoFreeDescriptor
{
public:
    explicit CNoFreeDescriptor(int nFirstFree)
    {
        ::getrlimit(RLIMIT_NOFILE, &m_oBefore);
        rlimit oLimit = m_oBefore;
        oLimit.rlim_cur = static_cast<rlim_t>(nFirstFree);
        ::setrlimit(RLIMIT_NOFILE, &oLimit);
    }

    ~CNoFreeDescriptor() { ::setrlimit(RLIMIT_NOFILE, &m_oBefore); }

    CNoFreeDescriptor(const CNoFreeDescriptor&) = delete;
    CNoFreeDescriptor& operator=(const CNoFreeDescriptor&) = delete;

private:
    rlimit m_oBefore;
};

int FirstFreeDescriptor()
{
    const int nFree = ::dup(STDIN_FILENO);
    ::close(nFree);
    return nFree;
}

// The files of the test belong to a user who may not read all of them, unlike root.
class CCommonUser
{
public:
    explicit CCommonUser(const std::string& sFolder)
    {
        ::chmod(sFolder.c_str(), 0777);
        if (::geteuid() == 0)
            m_bChanged = ::seteuid(65534) == 0;
    }

    ~CCommonUser()
    {
        if (m_bChanged)
            static_cast<void>(::seteuid(0));
    }

    CCommonUser(const CCommonUser&) = delete;
    CCommonUser& operator=(const CCommonUser&) = delete;

private:
    bool m_bChanged = false;
};

constexpr unsigned long long ONE_LINE_A_FILE = 1;
} // namespace

TEST(TOVUnreadableFileTest, AKeptFileThatCannotBeOpenedForLackOfDescriptorsIsNotOverwritten)
{
    CTempFolder oFolder;
    const std::string sPath = oFolder.File("a.log");
    WriteWholeFile(sPath + ".1", "kept\n");
    const int nFirstFree = FirstFreeDescriptor();
    CTOVRotatingFileListener oFile(sPath.c_str(), ONE_LINE_A_FILE, 9);
    oFile.Register();
    Log(200, "a");
    {
        const CNoFreeDescriptor oNoFree(nFirstFree);
        for (int nLine = 0; nLine < 20; ++nLine)
            Log(200, "lost");
    }
    EXPECT_TRUE(oFile.HasLostLines());
    Log(200, "b");
    oFile.Flush();

    EXPECT_EQ(PrintedInfos({"b"}), LinesOfFile(sPath));
    EXPECT_EQ(PrintedInfos({"a"}), LinesOfFile(sPath + ".1"));
    EXPECT_EQ("kept\n", ReadWholeFile(sPath + ".2"));
}

TEST(TOVUnreadableFileTest, AKeptFileWithoutReadPermissionIsKept)
{
    CTempFolder oFolder;
    const std::string sPath = oFolder.File("a.log");
    {
        const CCommonUser oUser(oFolder.Path());
        WriteWholeFile(sPath + ".1", "kept\n");
        ::chmod((sPath + ".1").c_str(), 0);
        CTOVRotatingFileListener oFile(sPath.c_str(), ONE_LINE_A_FILE, 2);
        oFile.Register();
        Log(200, "a");
        Log(200, "b");
        EXPECT_FALSE(oFile.HasLostLines());
    }

    ::chmod((sPath + ".2").c_str(), 0600);
    EXPECT_EQ("kept\n", ReadWholeFile(sPath + ".2"));
    EXPECT_EQ(PrintedInfos({"a"}), LinesOfFile(sPath + ".1"));
}

TEST(TOVUnreadableFileTest, ALinkToNothingIsKept)
{
    CTempFolder oFolder;
    const std::string sPath = oFolder.File("a.log");
    std::filesystem::create_symlink("nothing", sPath + ".1");
    CTOVRotatingFileListener oFile(sPath.c_str(), ONE_LINE_A_FILE, 2);
    oFile.Register();
    Log(200, "a");
    Log(200, "b");

    EXPECT_TRUE(std::filesystem::is_symlink(sPath + ".2"));
    EXPECT_FALSE(oFile.HasLostLines());
}
