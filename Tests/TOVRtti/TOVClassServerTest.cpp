#include "Support/TOVLayout.h"
#include "Support/TOVPrivateMember.h"
#include "Support/TOVRefusal.h"
#include "TOVRtti/TOVClassInstruments.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <type_traits>
#include <vector>

namespace
{
TOV_PRIVATE_MEMBER(NextClassId, CTOVClassServer, unsigned long, m_dwNextClassId)

// Where a member stands in its class, also in one that has no name here.
template<class TOwner, class TMember> std::ptrdiff_t OffsetOf(TMember TOwner::*pMember)
{
    alignas(TOwner) static char s_acRoom[sizeof(TOwner)];
    TOwner* const pOwner = reinterpret_cast<TOwner*>(s_acRoom);
    return reinterpret_cast<char*>(&(pOwner->*pMember)) - s_acRoom;
}

template<class TName, auto... pMembers> struct sOffsets
{
    friend std::vector<std::ptrdiff_t> OffsetsIn(TName) { return {OffsetOf(pMembers)...}; }
};
struct sServerMembers
{
    friend std::vector<std::ptrdiff_t> OffsetsIn(sServerMembers);
};
struct sEntryMembers
{
    friend std::vector<std::ptrdiff_t> OffsetsIn(sEntryMembers);
};
template struct sOffsets<sServerMembers, &CTOVClassServer::m_oClasses, &CTOVClassServer::m_dwNextClassId>;
template struct sOffsets<sEntryMembers, &CTOVClassServer::sClassEntry::pClass,
                         &CTOVClassServer::sClassEntry::dwClassId>;

// The map stands first in the server; log lines show the low 32 bits of its address.
std::string MapOf(const CTOVClassServer& oServer)
{
    char szAddress[20];
    const unsigned long long ullMap = reinterpret_cast<std::size_t>(&oServer) + sizeof(void*);
    std::snprintf(szAddress, sizeof szAddress, "%x", static_cast<unsigned int>(ullMap));
    return szAddress;
}

// All names, by the walk.
std::vector<std::string> NamesOf(const CTOVClassServer& oServer)
{
    std::vector<std::string> aNames;
    CTOVStringA oName;
    for (bool bMore = oServer.GetFirstClass(oName); bMore; bMore = oServer.GetNextClass(oName, oName))
        aNames.push_back(oName.GetString() != nullptr ? oName.GetString() : "");
    return aNames;
}

// A server of its own with one descriptor, which the process's server holds as well. All of them stand apart, since
// their destructors let through what a listener throws, which those of a fixture's members cannot.
class CTOVClassServerTest : public testing::Test
{
private:
    const std::unique_ptr<CTOVClass> m_pClass = std::make_unique<CTOVClass>("CSomething");
    const std::unique_ptr<CTOVClass> m_pOther = std::make_unique<CTOVClass>("CSomethingElse");
    const std::unique_ptr<CTOVClassServer> m_pServer = std::make_unique<CTOVClassServer>();

protected:
    CTOVClassServer& m_oServer = *m_pServer;
    CTOVClass& m_oClass = *m_pClass;
    CTOVClass& m_oOther = *m_pOther;
};
} // namespace

TEST_F(CTOVClassServerTest, InstanceIsOneServer)
{
    EXPECT_EQ(&CTOVClassServer::Instance(), &CTOVClassServer::Instance());
    EXPECT_TRUE(CTOVClassServer::Instance().HasClass("CSomething"));
}

TEST_F(CTOVClassServerTest, BeginsEmpty)
{
    CTOVStringA oName("untouched");

    EXPECT_EQ(0, m_oServer.GetNumClasses());
    EXPECT_FALSE(m_oServer.HasClass("CSomething"));
    EXPECT_FALSE(m_oServer.GetFirstClass(oName));
    EXPECT_STREQ("untouched", oName.GetString());
}

TEST_F(CTOVClassServerTest, AllotsIdsFromZeroInTheOrderOfTheCalls)
{
    EXPECT_EQ(0u, m_oServer.AddClass("Z", &m_oClass));
    EXPECT_EQ(1u, m_oServer.AddClass("A", &m_oClass));
    EXPECT_EQ(2u, m_oServer.AddClass("M", &m_oOther));
    EXPECT_EQ(3, m_oServer.GetNumClasses());
}

TEST_F(CTOVClassServerTest, RefusesAMissingClass)
{
    m_oServer.AddClass("Held", &m_oClass);
    const CLogRecorder oLog;

    EXPECT_CHECK_AT("TOVRtti/TOVClassServer", "pClass != NULL", m_oServer.AddClass("New", nullptr));
    EXPECT_CHECK_AT("TOVRtti/TOVClassServer", "pClass != NULL", m_oServer.AddClass("Held", nullptr));
    EXPECT_TRUE(oLog.Lines().empty());
    EXPECT_EQ(1, m_oServer.GetNumClasses());
    EXPECT_EQ(1u, m_oServer.AddClass("Next", &m_oOther));
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST_F(CTOVClassServerTest, WithoutMemoryTheMapIsUnchangedAndAnIdIsUsedUp)
{
    const CTOVStringA oName("CClassWithANameThatNeedsABlock");
    unsigned long ulFailures = 0;
    while (RunsOutOfMemory([&] { m_oServer.AddClass(oName, &m_oClass); }, ulFailures))
    {
        ++ulFailures;
        EXPECT_EQ(0, m_oServer.GetNumClasses());
        EXPECT_EQ(ulFailures, NextClassId(m_oServer));
    }
    EXPECT_LT(0u, ulFailures);
    EXPECT_TRUE(m_oServer.HasClass(oName));
}
#endif

TEST_F(CTOVClassServerTest, LogsWhatItAdds)
{
    NextClassId(m_oServer) = 41;
    const CLogRecorder oLog;

    m_oServer.AddClass("CShape", &m_oClass);

    ASSERT_EQ(1u, oLog.Lines().size());
    const sLogLine oLine = oLog.Lines()[0];
    EXPECT_EQ("CTOVClassServer::AddClass() : Adding class CShape(41) using map " + MapOf(m_oServer) + ".", oLine.sText);
    EXPECT_EQ(eSeverityInfo, oLine.eSeverity);
    EXPECT_NE(std::string::npos, oLine.sFile.find("TOVRtti/TOVClassServer"));
    EXPECT_NE(0u, oLine.ulLine);
}

TEST_F(CTOVClassServerTest, TakesTheIdThenLogsThenInserts)
{
    bool bHeldWhenLogged = true;
    unsigned long ulNextWhenLogged = 0;
    NextClassId(m_oServer) = 5;
    const CActingRecorder oLog([this, &bHeldWhenLogged, &ulNextWhenLogged] {
        bHeldWhenLogged = m_oServer.HasClass("CShape");
        ulNextWhenLogged = NextClassId(m_oServer);
    });

    m_oServer.AddClass("CShape", &m_oClass);

    EXPECT_FALSE(bHeldWhenLogged);
    EXPECT_EQ(6u, ulNextWhenLogged);
    EXPECT_TRUE(m_oServer.HasClass("CShape"));
}

TEST_F(CTOVClassServerTest, DuplicateGivesTheIdThatTheHeldDescriptorHas)
{
    m_oServer.AddClass("Held", &m_oClass);

    EXPECT_NE(0u, m_oClass.GetClassId());
    EXPECT_EQ(m_oClass.GetClassId(), m_oServer.AddClass("Held", &m_oOther));
}

TEST_F(CTOVClassServerTest, DuplicateChangesNothingAndTakesNoId)
{
    m_oServer.AddClass("Held", &m_oClass);
    m_oServer.AddClass("Held", &m_oOther);

    EXPECT_EQ(1, m_oServer.GetNumClasses());
    EXPECT_EQ(1u, NextClassId(m_oServer));

    // The first one still answers.
    EXPECT_EQ(m_oClass.GetClassId(), m_oServer.AddClass("Held", &m_oOther));
}

TEST_F(CTOVClassServerTest, DuplicateIsLoggedAsAWarning)
{
    m_oServer.AddClass("Held", &m_oClass);
    const CLogRecorder oLog;

    m_oServer.AddClass("Held", &m_oOther);

    ASSERT_EQ(1u, oLog.Lines().size());
    EXPECT_EQ("CTOVClassServer::AddClass() : Class Held already registered!", oLog.Lines()[0].sText);
    EXPECT_EQ(eSeverityWarning, oLog.Lines()[0].eSeverity);
    EXPECT_NE(std::string::npos, oLog.Lines()[0].sFile.find("TOVRtti/TOVClassServer"));
}

TEST_F(CTOVClassServerTest, RefusesAnotherClassWhenTheIdsAreUsedUp)
{
    NextClassId(m_oServer) = 0xFFFFFFFEul;
    EXPECT_EQ(0xFFFFFFFEul, m_oServer.AddClass("Last", &m_oClass));
    const CLogRecorder oLog;

    EXPECT_CHECK_AT("TOVRtti/TOVClassServer", "m_dwNextClassId != -1", m_oServer.AddClass("More", &m_oOther));
    EXPECT_CHECK_AT("TOVRtti/TOVClassServer", "m_dwNextClassId != -1", m_oServer.AddClass("More", &m_oOther));
    EXPECT_FALSE(m_oServer.HasClass("More"));
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVClassServerTest, KnowsDuplicatesWhenTheIdsAreUsedUp)
{
    m_oServer.AddClass("Held", &m_oClass);
    NextClassId(m_oServer) = 0xFFFFFFFFul;

    EXPECT_EQ(m_oClass.GetClassId(), m_oServer.AddClass("Held", &m_oOther));
}

TEST_F(CTOVClassServerTest, LogsWhatItRemoves)
{
    m_oServer.AddClass("CShape", &m_oClass);
    const CLogRecorder oLog;

    m_oServer.RemoveClass("CShape");

    ASSERT_EQ(1u, oLog.Lines().size());
    const sLogLine oLine = oLog.Lines()[0];
    EXPECT_EQ("CTOVClassServer::RemoveClass() : Removing class CShape using map " + MapOf(m_oServer) + ".",
              oLine.sText);
    EXPECT_EQ(eSeverityInfo, oLine.eSeverity);
    EXPECT_NE(std::string::npos, oLine.sFile.find("TOVRtti/TOVClassServer"));
}

TEST_F(CTOVClassServerTest, LogsARemovalBeforeItHappens)
{
    m_oServer.AddClass("CShape", &m_oClass);
    bool bHeldWhenLogged = false;
    const CActingRecorder oLog([this, &bHeldWhenLogged] { bHeldWhenLogged = m_oServer.HasClass("CShape"); });

    m_oServer.RemoveClass("CShape");

    EXPECT_TRUE(bHeldWhenLogged);
    EXPECT_FALSE(m_oServer.HasClass("CShape"));
}

TEST_F(CTOVClassServerTest, RemovesTheNamedClassOnly)
{
    m_oServer.AddClass("A", &m_oClass);
    m_oServer.AddClass("B", &m_oOther);

    m_oServer.RemoveClass("A");

    EXPECT_EQ(1, m_oServer.GetNumClasses());
    EXPECT_FALSE(m_oServer.HasClass("A"));
    EXPECT_TRUE(m_oServer.HasClass("B"));
}

TEST_F(CTOVClassServerTest, IgnoresTheRemovalOfAnUnknownName)
{
    m_oServer.AddClass("A", &m_oClass);
    const CLogRecorder oLog;

    m_oServer.RemoveClass("B");

    EXPECT_EQ(1, m_oServer.GetNumClasses());
    EXPECT_TRUE(oLog.Lines().empty());
}

TEST_F(CTOVClassServerTest, DoesNotTellARemovedDescriptor)
{
    const unsigned long ulId = m_oClass.GetClassId();

    CTOVClassServer::Instance().RemoveClass("CSomething");

    EXPECT_EQ(ulId, m_oClass.GetClassId());
    EXPECT_STREQ("CSomething", m_oClass.GetName());
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("CSomething"));
}

TEST_F(CTOVClassServerTest, GivesARemovedNameANewId)
{
    EXPECT_EQ(0u, m_oServer.AddClass("A", &m_oClass));
    m_oServer.RemoveClass("A");

    EXPECT_EQ(1u, m_oServer.AddClass("A", &m_oClass));
}

TEST_F(CTOVClassServerTest, NamesAreCaseSensitiveAndWhole)
{
    m_oServer.AddClass("CShape", &m_oClass);

    EXPECT_TRUE(m_oServer.HasClass("CShape"));
    EXPECT_FALSE(m_oServer.HasClass("CSHAPE"));
    EXPECT_FALSE(m_oServer.HasClass("CShap"));
    EXPECT_FALSE(m_oServer.HasClass("CShapes"));
    EXPECT_FALSE(m_oServer.HasClass(""));
}

TEST_F(CTOVClassServerTest, ReadsAMissingTextAsTheEmptyName)
{
    m_oServer.AddClass(CTOVStringA(), &m_oClass);

    EXPECT_TRUE(m_oServer.HasClass(CTOVStringA()));
    EXPECT_TRUE(m_oServer.HasClass(""));
    EXPECT_FALSE(m_oServer.HasClass("A"));
}

TEST_F(CTOVClassServerTest, HoldsItsOwnCopyOfTheName)
{
    CTOVStringA oName("CShape");
    m_oServer.AddClass(oName, &m_oClass);
    oName = "CChanged";

    EXPECT_TRUE(m_oServer.HasClass("CShape"));
}

TEST_F(CTOVClassServerTest, WalksInTheBytewiseOrderOfTheNames)
{
    for (const char* szName : {"b", "\xE9t\xE9", "B", "ab", "a", "_", "A1", "z", "A"})
        m_oServer.AddClass(szName, &m_oClass);

    const std::vector<std::string> aExpected = {"A", "A1", "B", "_", "a", "ab", "b", "z", "\xE9t\xE9"};
    EXPECT_EQ(aExpected, NamesOf(m_oServer));
}

TEST_F(CTOVClassServerTest, WalkEndsBehindTheLastName)
{
    m_oServer.AddClass("A", &m_oClass);
    m_oServer.AddClass("B", &m_oClass);
    CTOVStringA oNext("untouched");

    EXPECT_FALSE(m_oServer.GetNextClass("B", oNext));
    EXPECT_STREQ("untouched", oNext.GetString());
    EXPECT_TRUE(m_oServer.GetNextClass("A", oNext));
    EXPECT_STREQ("B", oNext.GetString());
}

TEST_F(CTOVClassServerTest, UnknownNameHasNoNext)
{
    m_oServer.AddClass("A", &m_oClass);
    m_oServer.AddClass("C", &m_oClass);
    CTOVStringA oNext("untouched");

    EXPECT_FALSE(m_oServer.GetNextClass("B", oNext));
    EXPECT_FALSE(m_oServer.GetNextClass("", oNext));
    EXPECT_STREQ("untouched", oNext.GetString());
}

TEST_F(CTOVClassServerTest, WalksOnWhenOtherClassesLeave)
{
    for (const char* szName : {"A", "B", "C", "D"})
        m_oServer.AddClass(szName, &m_oClass);
    CTOVStringA oName;
    m_oServer.GetFirstClass(oName);
    m_oServer.GetNextClass(oName, oName);

    m_oServer.RemoveClass("A");
    m_oServer.RemoveClass("C");

    EXPECT_TRUE(m_oServer.GetNextClass(oName, oName));
    EXPECT_STREQ("D", oName.GetString());
    EXPECT_FALSE(m_oServer.GetNextClass(oName, oName));
}

TEST_F(CTOVClassServerTest, WalkStopsAtANameThatHasLeft)
{
    m_oServer.AddClass("A", &m_oClass);
    m_oServer.AddClass("B", &m_oClass);
    CTOVStringA oName;
    m_oServer.GetFirstClass(oName);

    m_oServer.RemoveClass("A");

    EXPECT_FALSE(m_oServer.GetNextClass(oName, oName));
    EXPECT_TRUE(m_oServer.GetFirstClass(oName));
    EXPECT_STREQ("B", oName.GetString());
}

TEST_F(CTOVClassServerTest, RuntimeClassFindsADescriptor)
{
    EXPECT_EQ(&m_oClass, &TOVRuntimeClass("CSomething"));
    EXPECT_EQ(&m_oOther, &TOVRuntimeClass("CSomethingElse"));
}

TEST_F(CTOVClassServerTest, RuntimeClassOfAnUnknownNameIsTheInvalidClass)
{
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass("CNobody"));
    EXPECT_EQ(&CTOVClass::Invalid(), &TOVRuntimeClass(CTOVStringA()));
    EXPECT_STREQ("<invalid class>", TOVRuntimeClass("CNobody").GetName());
}

TEST_F(CTOVClassServerTest, CopyHasMapAndCounter)
{
    m_oServer.AddClass("A", &m_oClass);
    m_oServer.AddClass("B", &m_oClass);

    CTOVClassServer oCopy(m_oServer);

    EXPECT_EQ(2, oCopy.GetNumClasses());
    EXPECT_EQ(2u, oCopy.AddClass("C", &m_oClass));
    EXPECT_FALSE(m_oServer.HasClass("C"));
    EXPECT_EQ(2u, m_oServer.AddClass("D", &m_oClass));
}

TEST_F(CTOVClassServerTest, AssignmentTakesMapAndCounter)
{
    m_oServer.AddClass("A", &m_oClass);
    CTOVClassServer oTarget;
    oTarget.AddClass("X", &m_oClass);
    oTarget.AddClass("Y", &m_oClass);

    CTOVClassServer& oResult = (oTarget = m_oServer);

    EXPECT_EQ(&oTarget, &oResult);
    EXPECT_EQ(std::vector<std::string>{"A"}, NamesOf(oTarget));
    EXPECT_EQ(1u, oTarget.AddClass("B", &m_oClass));
}

TEST_F(CTOVClassServerTest, CopyOfTheProcessesServerJustGoes)
{
    {
        const CTOVClassServer oCopy(CTOVClassServer::Instance());
        EXPECT_EQ(CTOVClassServer::Instance().GetNumClasses(), oCopy.GetNumClasses());
    }

    EXPECT_EQ(&m_oClass, &TOVRuntimeClass("CSomething"));
}

TEST_F(CTOVClassServerTest, HoldsItsMembersInTheirOrder)
{
    struct sEntry
    {
        CTOVClass* pClass;
        unsigned long dwClassId;
    };

    EXPECT_EQ((SizeWithMembers<std::map<CTOVStringA, sEntry>, unsigned long>()), sizeof(CTOVClassServer));
    EXPECT_EQ((std::vector<std::ptrdiff_t>{offsetof(sEntry, pClass), offsetof(sEntry, dwClassId)}),
              OffsetsIn(sEntryMembers()));
    const std::vector<std::ptrdiff_t> aServer = OffsetsIn(sServerMembers());
    EXPECT_EQ(static_cast<std::ptrdiff_t>(sizeof(void*)), aServer[0]);
    EXPECT_LT(aServer[0], aServer[1]);
    EXPECT_TRUE(std::has_virtual_destructor_v<CTOVClassServer>);
}

namespace
{
// Prints what is logged until the very end of the process.
class CPrinter : public CLogRecorder
{
public:
    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list pArguments) override
    {
        std::vprintf(szFormat, pArguments);
        std::printf("\n");
        std::fflush(stdout);
    }
};
} // namespace

TOV_CHILD(LeavesClassesBehind)
{
    // Reachable to the end, so that leak checkers agree.
    static const CPrinter* const s_pPrinter = new CPrinter;
    static const CTOVClass* const s_apLeft[] = {new CTOVClass("CLeftSecond"), new CTOVClass("CLeftFirst")};
    EXPECT_NE(static_cast<const void*>(s_pPrinter), static_cast<const void*>(s_apLeft));
}

TEST(CTOVClassServerEndTest, UnregistersWhatIsLeftInTheOrderOfTheNames)
{
    const sChildResult oResult = RunChild("LeavesClassesBehind");
    const std::size_t nFirst = oResult.sOutput.find("RemoveClass() : Removing class CLeftFirst using map ");
    const std::size_t nSecond = oResult.sOutput.find("RemoveClass() : Removing class CLeftSecond using map ");

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
    ASSERT_NE(std::string::npos, nFirst) << oResult.sOutput;
    ASSERT_NE(std::string::npos, nSecond) << oResult.sOutput;
    EXPECT_LT(nFirst, nSecond);
}

TOV_CHILD(LeavesAClassUnderTwoNames)
{
    static const CPrinter* const s_pPrinter = new CPrinter;
    static CTOVClass* const s_pLeft = new CTOVClass("CLeftFirst");
    static const CTOVClass* const s_pOther = new CTOVClass("CLeftSecond");
    CTOVClassServer::Instance().AddClass("CAlias", s_pLeft);
    EXPECT_NE(static_cast<const void*>(s_pPrinter), static_cast<const void*>(s_pOther));
}

TEST(CTOVClassServerEndTest, DropsASecondNameInSilence)
{
    const sChildResult oResult = RunChild("LeavesAClassUnderTwoNames");

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sOutput;
    EXPECT_NE(std::string::npos, oResult.sOutput.find("Removing class CLeftFirst using map ")) << oResult.sOutput;
    EXPECT_NE(std::string::npos, oResult.sOutput.find("Removing class CLeftSecond using map ")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("Removing class CAlias")) << oResult.sOutput;
}

TEST_F(CTOVClassServerTest, TheProcessesServerFindsTheClassesThatItIsAssigned)
{
    CTOVClassServer& oInstance = CTOVClassServer::Instance();
    const auto pCopy = std::make_unique<CTOVClassServer>(oInstance);

    EXPECT_EQ(&oInstance, &(oInstance = *pCopy));

    EXPECT_EQ(NamesOf(*pCopy), NamesOf(oInstance));
    EXPECT_TRUE(oInstance.HasClass("CSomething"));
    EXPECT_FALSE(oInstance.HasClass("CNothing"));
}
