#include "Path/TOVPathInstruments.h"
#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRuntimeClassFacts.h"
#include "Support/TOVTestSupport.h"

#include <File/TOVFileInterface.h>
#include <File/TOVVirtualFileSystem.h>

#include <cstdio>
#include <map>
#include <type_traits>

namespace
{
typedef std::map<CTOVStringA, CTOVPath> tAssigns;
TOV_PRIVATE_MEMBER(AssignsOf, CTOVVirtualFileSystem, tAssigns, m_oAssigns)

constexpr char LENGTH_CHECK[] = "(0 <= lIndex) && (lIndex < GetLength())";

class CTOVVirtualFileSystemTest : public testing::Test
{
protected:
    std::string Resolve(const char* szPath) { return TextOf(m_oFiles.ResolvePath(CTOVPath(szPath))); }

    CTOVVirtualFileSystem m_oFiles;
};

// Replaces the look-up.
class CAnsweringFileSystem : public CTOVVirtualFileSystem
{
public:
    const CTOVStringA& GetAssign(const CTOVStringA& oName) const override
    {
        aAsked.push_back(TextOf(oName));
        return oAnswer;
    }

    CTOVStringA oAnswer;
    mutable std::vector<std::string> aAsked;
};

// Has what the interface gives, and no class of its own.
class CBareFileSystem : public ITOVVirtualFileSystem
{
public:
    void SetAssign(const CTOVStringA&, const CTOVPath&) override {}
    const CTOVStringA& GetAssign(const CTOVStringA&) const override { return CTOVStringA::Null(); }
    CTOVPath ResolvePath(const CTOVPath& oPath) override { return oPath; }
};

struct sJoin
{
    const char* szAssigned;
    const char* szRemainder;
    const char* szResult;
};

const sJoin JOINS[] = {
    {"C:\\data", "file", "C:\\data\\file"}, // one backslash where neither has a separator
    {"/data", "file", "/data\\file"},
    {"C:\\data\\", "file", "C:\\data\\file"},
    {"/data/", "file", "/data/file"},
    {"C:\\data", "\\file", "C:\\data\\file"},
    {"/data", "/file", "/data/file"},
    {"/data/", "/file", "/data//file"}, // two stay
    {"/data\\", "/file", "/data\\/file"},
    {"d", "x", "d\\x"},
    {"/data", "sub/file.ext", "/data\\sub/file.ext"},
    {"/data", "C:\\file", "/data\\C:\\file"}, // later colons are text
    {"/data", ":", "/data\\:"},
    {"/data/", "", "/data/"},
    {"C:\\", "", "C:\\"},
};
} // namespace

TOV_CHILD(LooksAtTheAssigns)
{
    std::printf("%d", static_cast<int>(AssignsOf(CTOVVirtualFileSystem::Instance()).size()));
}

TEST_F(CTOVVirtualFileSystemTest, IsATableOfPathsByName)
{
    EXPECT_EQ(SizeWithMembers<tAssigns>(), sizeof(CTOVVirtualFileSystem));
    EXPECT_TRUE(AssignsOf(m_oFiles).empty());
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVVirtualFileSystem>);
    EXPECT_FALSE(std::has_virtual_destructor_v<ITOVVirtualFileSystem>);
    EXPECT_TRUE(std::is_abstract_v<ITOVVirtualFileSystem>);
}

TEST_F(CTOVVirtualFileSystemTest, HasOneInstanceForTheProcess)
{
    EXPECT_EQ(&CTOVVirtualFileSystem::Instance(), &CTOVVirtualFileSystem::Instance());
    EXPECT_EQ("0", RunChild("LooksAtTheAssigns").sOutput);
}

TEST_F(CTOVVirtualFileSystemTest, GivesTheNullStringForAnUnknownName)
{
    EXPECT_EQ(&CTOVStringA::Null(), &m_oFiles.GetAssign("data"));
    EXPECT_EQ(&CTOVStringA::Null(), &m_oFiles.GetAssign(""));
    EXPECT_EQ(&CTOVStringA::Null(), &m_oFiles.GetAssign(CTOVStringA()));

    m_oFiles.SetAssign("data", "/data");

    EXPECT_EQ(&CTOVStringA::Null(), &m_oFiles.GetAssign("dat"));
    EXPECT_EQ(&CTOVStringA::Null(), &m_oFiles.GetAssign("data2"));
    EXPECT_EQ(&CTOVStringA::Null(), &m_oFiles.GetAssign("data:"));
}

TEST_F(CTOVVirtualFileSystemTest, GivesTheTextOfAnAssign)
{
    m_oFiles.SetAssign("data", "/data");
    m_oFiles.SetAssign("ab", "C:\\ab\\");

    EXPECT_EQ("/data", TextOf(m_oFiles.GetAssign("data")));
    EXPECT_EQ("C:\\ab\\", TextOf(m_oFiles.GetAssign("ab")));
}

TEST_F(CTOVVirtualFileSystemTest, GivesAReferenceThatOutlivesOtherAssigns)
{
    m_oFiles.SetAssign("data", "/data");
    const CTOVStringA& oText = m_oFiles.GetAssign("data");

    for (const char* szName : {"aa", "bb", "cc", "zz", "data2"})
        m_oFiles.SetAssign(szName, "/other");

    EXPECT_EQ(&oText, &m_oFiles.GetAssign("data"));
    EXPECT_EQ("/data", TextOf(oText));
}

TEST_F(CTOVVirtualFileSystemTest, SharesTheTextOfThePathThatItIsGiven)
{
    const CTOVPath oPath("/data");

    m_oFiles.SetAssign("data", oPath);

    EXPECT_EQ(~oPath, m_oFiles.GetAssign("data").GetString());
}

TEST_F(CTOVVirtualFileSystemTest, IgnoresNamesOfLessThanTwoCharacters)
{
    m_oFiles.SetAssign("C", "/data");
    m_oFiles.SetAssign("", "/data");
    m_oFiles.SetAssign(CTOVStringA(), "/data");

    EXPECT_TRUE(AssignsOf(m_oFiles).empty());
    EXPECT_EQ("C:\\dir\\file", Resolve("C:\\dir\\file"));
}

TEST_F(CTOVVirtualFileSystemTest, IgnoresAnEmptyPath)
{
    m_oFiles.SetAssign("data", "/data");

    m_oFiles.SetAssign("data", "");
    m_oFiles.SetAssign("data", CTOVPath());
    m_oFiles.SetAssign("other", CTOVPath());

    EXPECT_EQ("/data", TextOf(m_oFiles.GetAssign("data")));
    EXPECT_EQ(1u, AssignsOf(m_oFiles).size());
}

TEST_F(CTOVVirtualFileSystemTest, ReportsNothingOfWhatItIgnores)
{
    CLogRecorder oLog;

    m_oFiles.SetAssign("C", "/data");
    m_oFiles.SetAssign("data", "");
    Resolve("unknown:file");

    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_TRUE(oLog.Checks().empty());
}

TEST_F(CTOVVirtualFileSystemTest, ReplacesAnAssign)
{
    m_oFiles.SetAssign("data", "/first");
    m_oFiles.SetAssign("data", "/second");

    EXPECT_EQ("/second", TextOf(m_oFiles.GetAssign("data")));
    EXPECT_EQ("/second\\file", Resolve("data:file"));
    EXPECT_EQ(1u, AssignsOf(m_oFiles).size());
}

TEST_F(CTOVVirtualFileSystemTest, OrdersNamesByUnsignedBytes)
{
    for (const char* szName : {"zz", "\xE4x", "aa", "ZZ", "aaa", "\x7Fx"})
        m_oFiles.SetAssign(szName, "/data");

    std::vector<std::string> aNames;
    for (const auto& oAssign : AssignsOf(m_oFiles))
        aNames.push_back(TextOf(oAssign.first));

    EXPECT_EQ(std::vector<std::string>({"ZZ", "aa", "aaa", "zz", "\x7Fx", "\xE4x"}), aNames);
}

TEST_F(CTOVVirtualFileSystemTest, TellsNamesApartByCase)
{
    m_oFiles.SetAssign("data", "/lower");
    m_oFiles.SetAssign("DATA", "/upper");

    EXPECT_EQ("/lower\\file", Resolve("data:file"));
    EXPECT_EQ("/upper\\file", Resolve("DATA:file"));
    EXPECT_EQ("Data:file", Resolve("Data:file"));
}

TEST_F(CTOVVirtualFileSystemTest, PutsTheRemainderBehindTheAssignedPath)
{
    for (const sJoin& oJoin : JOINS)
    {
        m_oFiles.SetAssign("data", oJoin.szAssigned);

        EXPECT_EQ(oJoin.szResult, Resolve((std::string("data:") + oJoin.szRemainder).c_str())) << oJoin.szAssigned;
    }
}

TEST_F(CTOVVirtualFileSystemTest, RaisesForABareColonUnlessTheAssignedPathEndsInASeparator)
{
    m_oFiles.SetAssign("data", "/data");
    m_oFiles.SetAssign("root", "/data/");

    EXPECT_CHECK_AT("TOVString/TOVStringA", LENGTH_CHECK, Resolve("data:"));
    EXPECT_NO_CHECK(EXPECT_EQ("/data/", Resolve("root:")));
}

TEST_F(CTOVVirtualFileSystemTest, LeavesPathsWithoutAnAssignAsTheyAre)
{
    m_oFiles.SetAssign("data", "/data");

    for (const char* szPath : {"file", "/dir/file", "C:\\dir\\file", "unknown:file", "unknown:", "data", "data/file",
                               ":", ":file", ":data:file", "dat:file", "data2:file", "x/data:file", " data:file"})
        EXPECT_EQ(szPath, Resolve(szPath));
}

TEST_F(CTOVVirtualFileSystemTest, LeavesAnEmptyPathEmpty)
{
    EXPECT_EQ("", Resolve(""));
    EXPECT_TRUE(m_oFiles.ResolvePath(CTOVPath()).IsEmpty());
}

TEST_F(CTOVVirtualFileSystemTest, ResolvesOnce)
{
    m_oFiles.SetAssign("data", "root:data");
    m_oFiles.SetAssign("root", "/root");

    EXPECT_EQ("root:data\\file", Resolve("data:file"));
    EXPECT_EQ("root:data\\root:file", Resolve("data:root:file"));
}

TEST_F(CTOVVirtualFileSystemTest, LeavesTheAssignAndTheGivenPathAlone)
{
    CTOVStringA oRoomy;
    oRoomy.GetBuffer(100);
    oRoomy.ReleaseBuffer(0);
    oRoomy += "/data";
    m_oFiles.SetAssign("data", CTOVPath(oRoomy));
    const CTOVPath oPath("data:file");

    EXPECT_EQ("/data\\file", TextOf(m_oFiles.ResolvePath(oPath)));
    EXPECT_EQ("/data\\file", TextOf(m_oFiles.ResolvePath(oPath)));

    EXPECT_STREQ("data:file", ~oPath);
    EXPECT_STREQ("/data", m_oFiles.GetAssign("data").GetString());
    EXPECT_EQ("/data", TextOf(m_oFiles.GetAssign("data")));
}

TEST_F(CTOVVirtualFileSystemTest, CopiesItsTable)
{
    m_oFiles.SetAssign("data", "/data");
    CTOVVirtualFileSystem oCopy(m_oFiles);

    oCopy.SetAssign("data", "/copy");
    m_oFiles.SetAssign("new", "/new");

    EXPECT_EQ("/data", TextOf(m_oFiles.GetAssign("data")));
    EXPECT_EQ("/copy", TextOf(oCopy.GetAssign("data")));
    EXPECT_TRUE(oCopy.GetAssign("new").IsEmpty());
}

TEST_F(CTOVVirtualFileSystemTest, ReplacesItsTableByAnothers)
{
    CTOVVirtualFileSystem oOther;
    oOther.SetAssign("old", "/old");
    m_oFiles.SetAssign("data", "/data");

    EXPECT_EQ(&oOther, &(oOther = m_oFiles));
    m_oFiles.SetAssign("data", "/changed");

    EXPECT_EQ("/data", TextOf(oOther.GetAssign("data")));
    EXPECT_TRUE(oOther.GetAssign("old").IsEmpty());
}

TEST_F(CTOVVirtualFileSystemTest, KeepsItsTableWhenItIsAssignedToItself)
{
    m_oFiles.SetAssign("data", "/data");
    const CTOVVirtualFileSystem& oSame = m_oFiles;

    m_oFiles = oSame;

    EXPECT_EQ("/data", TextOf(m_oFiles.GetAssign("data")));
}

TEST(CTOVVirtualFileSystemLookupTest, GoesThroughTheSlot)
{
    CAnsweringFileSystem oFiles;
    oFiles.oAnswer = "/answer";

    EXPECT_EQ("/answer\\file", TextOf(oFiles.ResolvePath("anything:file")));
    EXPECT_EQ("/answer\\file", TextOf(oFiles.ResolvePath("C:file")));
    EXPECT_EQ("/answer\\file", TextOf(oFiles.ResolvePath(":file")));

    EXPECT_EQ(std::vector<std::string>({"anything", "C", ""}), oFiles.aAsked);
}

TEST(CTOVVirtualFileSystemLookupTest, IsNotMadeForAPathWithoutAColon)
{
    CAnsweringFileSystem oFiles;
    oFiles.oAnswer = "/answer";

    EXPECT_EQ("file", TextOf(oFiles.ResolvePath("file")));
    EXPECT_EQ("", TextOf(oFiles.ResolvePath(CTOVPath())));

    EXPECT_TRUE(oFiles.aAsked.empty());
}

TEST(CTOVVirtualFileSystemLookupTest, LeavesThePathForAnEmptyAnswer)
{
    CAnsweringFileSystem oFiles;

    EXPECT_EQ("anything:file", TextOf(oFiles.ResolvePath("anything:file")));

    EXPECT_EQ(std::vector<std::string>({"anything"}), oFiles.aAsked);
}

TEST(CTOVVirtualFileSystemClassTest, IsBelowTheClassOfTheInterface)
{
    CTOVVirtualFileSystem oFiles;

    ExpectClassBelowItsInterface<ITOVVirtualFileSystem>(oFiles, "CTOVVirtualFileSystem", "ITOVVirtualFileSystem");
}

TEST(ITOVVirtualFileSystemTest, AnswersForItsOwnClass)
{
    CBareFileSystem oFiles;

    ExpectInterfaceAlone<CTOVVirtualFileSystem>(static_cast<ITOVVirtualFileSystem&>(oFiles));
}
