#include "Support/TOVTestSupport.h"
#include "Test/TOVControlledHost.h"
#include "Test/TOVTestInstruments.h"

#include <Test/TOVTestSuiteFactory.h>

#include <memory>
#include <type_traits>

using TOVTest::CTOVTestSuiteFactory;

namespace
{
// Names in the order of their addresses. The text of the last is that of the first.
constexpr char NAMES[][2] = {"m", "c", "x", "m"};

// A main program without a suite, and two suites.
class CTOVTestSuiteFactoryTest : public testing::Test
{
protected:
    CTOVTestSuiteFactoryTest() : m_oFirst(CFunctionSuite("first")), m_oSecond(CFunctionSuite("second")) {}

    void RegisterThree()
    {
        CTOVTestSuiteFactory::Register(NAMES[2], &m_oFirst);
        CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst);
        CTOVTestSuiteFactory::Register(NAMES[1], &m_oSecond);
    }

    static std::string DescriptionOfNew(const char* szName)
    {
        const std::unique_ptr<TOVTest::CTOVTestSuite> pSuite(CTOVTestSuiteFactory::New(szName));
        return pSuite != nullptr ? pSuite->GetDescription() : "none";
    }

    static std::vector<const char*> Walk()
    {
        std::vector<const char*> aNames;
        const char* szName = nullptr;
        for (bool bFound = CTOVTestSuiteFactory::GetFirst(szName); bFound;
             bFound = CTOVTestSuiteFactory::GetNext(szName, szName))
            aNames.push_back(szName);
        return aNames;
    }

    CControlledHost m_oHost;
    CCopyCreator m_oFirst;
    CCopyCreator m_oSecond;
};
} // namespace

static_assert(std::is_same_v<TOVTest::tCreatorMap, std::map<const char*, TOVTest::ITOVTestSuiteCreator*>>,
              "the map that a main program gives");
static_assert(!std::is_polymorphic_v<CTOVTestSuiteFactory>, "static operations only");
static_assert(sizeof(TOVTest::ITOVTestSuiteCreator) == sizeof(void*), "no data in a creator's base");
static_assert(!std::has_virtual_destructor_v<TOVTest::ITOVTestSuiteCreator>, "its one operation is New");

TEST_F(CTOVTestSuiteFactoryTest, HasNothingAtFirst)
{
    const char szBefore[] = "before";
    const char* szName = szBefore;

    EXPECT_EQ(0, CTOVTestSuiteFactory::GetNumSuites());
    EXPECT_FALSE(CTOVTestSuiteFactory::GetFirst(szName));
    EXPECT_EQ(szBefore, szName);
    EXPECT_FALSE(CTOVTestSuiteFactory::HasClass(NAMES[0]));
    EXPECT_EQ(nullptr, CTOVTestSuiteFactory::New(NAMES[0]));
}

TEST_F(CTOVTestSuiteFactoryTest, MakesTheSuiteOfARegisteredName)
{
    RegisterThree();

    EXPECT_EQ("first", DescriptionOfNew(NAMES[0]));
    EXPECT_EQ("second", DescriptionOfNew(NAMES[1]));
    EXPECT_EQ("first", DescriptionOfNew(NAMES[2]));
}

TEST_F(CTOVTestSuiteFactoryTest, MakesANewSuiteEachTime)
{
    RegisterThree();
    const int nBefore = CFunctionSuite::s_nAlive;

    const std::unique_ptr<TOVTest::CTOVTestSuite> pFirst(CTOVTestSuiteFactory::New(NAMES[0]));
    const std::unique_ptr<TOVTest::CTOVTestSuite> pSecond(CTOVTestSuiteFactory::New(NAMES[0]));

    EXPECT_NE(pFirst, pSecond);
    EXPECT_EQ(nBefore + 2, CFunctionSuite::s_nAlive);
}

TEST_F(CTOVTestSuiteFactoryTest, CountsEachNameOnce)
{
    RegisterThree();
    EXPECT_EQ(3, CTOVTestSuiteFactory::GetNumSuites());

    CTOVTestSuiteFactory::Register(NAMES[0], &m_oSecond);
    EXPECT_EQ(3, CTOVTestSuiteFactory::GetNumSuites());
}

TEST_F(CTOVTestSuiteFactoryTest, LeavesAKnownNameToItsCreator)
{
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst);
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oSecond);

    EXPECT_EQ("first", DescriptionOfNew(NAMES[0]));
}

TEST_F(CTOVTestSuiteFactoryTest, TellsNamesApartByAddress)
{
    RegisterThree();
    ASSERT_STREQ(NAMES[0], NAMES[3]);

    EXPECT_TRUE(CTOVTestSuiteFactory::HasClass(NAMES[0]));
    EXPECT_FALSE(CTOVTestSuiteFactory::HasClass(NAMES[3]));
    EXPECT_EQ(nullptr, CTOVTestSuiteFactory::New(NAMES[3]));
}

TEST_F(CTOVTestSuiteFactoryTest, KeepsNamesOfTheSameTextBesideEachOther)
{
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst);
    CTOVTestSuiteFactory::Register(NAMES[3], &m_oSecond);

    EXPECT_EQ(2, CTOVTestSuiteFactory::GetNumSuites());
    EXPECT_EQ("first", DescriptionOfNew(NAMES[0]));
    EXPECT_EQ("second", DescriptionOfNew(NAMES[3]));
}

TEST_F(CTOVTestSuiteFactoryTest, WalksInTheOrderOfAddresses)
{
    RegisterThree();

    EXPECT_EQ((std::vector<const char*>{NAMES[0], NAMES[1], NAMES[2]}), Walk());
}

TEST_F(CTOVTestSuiteFactoryTest, LeavesTheNameAloneAtTheEnd)
{
    RegisterThree();
    const char szBefore[] = "before";
    const char* szNext = szBefore;

    EXPECT_FALSE(CTOVTestSuiteFactory::GetNext(NAMES[2], szNext));
    EXPECT_EQ(szBefore, szNext);
}

TEST_F(CTOVTestSuiteFactoryTest, GoesOnFromARegisteredNameOnly)
{
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst);
    CTOVTestSuiteFactory::Register(NAMES[2], &m_oFirst);
    CTOVTestSuiteFactory::Register(NAMES[3], &m_oFirst);
    const char szBefore[] = "before";
    const char* szNext = szBefore;

    EXPECT_FALSE(CTOVTestSuiteFactory::GetNext(NAMES[1], szNext));
    EXPECT_EQ(szBefore, szNext);
    EXPECT_TRUE(CTOVTestSuiteFactory::GetNext(NAMES[0], szNext));
    EXPECT_EQ(NAMES[2], szNext);
}

TEST_F(CTOVTestSuiteFactoryTest, UnregistersByAddress)
{
    RegisterThree();

    CTOVTestSuiteFactory::Unregister(NAMES[3]);
    EXPECT_EQ(3, CTOVTestSuiteFactory::GetNumSuites());

    CTOVTestSuiteFactory::Unregister(NAMES[0]);
    EXPECT_FALSE(CTOVTestSuiteFactory::HasClass(NAMES[0]));
    EXPECT_EQ((std::vector<const char*>{NAMES[1], NAMES[2]}), Walk());
}

TEST_F(CTOVTestSuiteFactoryTest, IgnoresASecondUnregistering)
{
    RegisterThree();

    CTOVTestSuiteFactory::Unregister(NAMES[0]);
    CTOVTestSuiteFactory::Unregister(NAMES[0]);

    EXPECT_EQ(2, CTOVTestSuiteFactory::GetNumSuites());
}

TEST_F(CTOVTestSuiteFactoryTest, TakesANameAgainAfterUnregistering)
{
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst);
    CTOVTestSuiteFactory::Unregister(NAMES[0]);
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oSecond);

    EXPECT_EQ("second", DescriptionOfNew(NAMES[0]));
}

TEST_F(CTOVTestSuiteFactoryTest, SkipsWhatIsUnregisteredAheadOfAWalk)
{
    RegisterThree();
    const char* szName = nullptr;
    ASSERT_TRUE(CTOVTestSuiteFactory::GetFirst(szName));

    CTOVTestSuiteFactory::Unregister(NAMES[1]);

    EXPECT_TRUE(CTOVTestSuiteFactory::GetNext(szName, szName));
    EXPECT_EQ(NAMES[2], szName);
}

TEST_F(CTOVTestSuiteFactoryTest, EndsAWalkWhoseNameIsUnregistered)
{
    RegisterThree();
    const char* szName = nullptr;
    ASSERT_TRUE(CTOVTestSuiteFactory::GetFirst(szName));

    CTOVTestSuiteFactory::Unregister(szName);

    EXPECT_FALSE(CTOVTestSuiteFactory::GetNext(szName, szName));
}

TEST_F(CTOVTestSuiteFactoryTest, MeetsWhatIsRegisteredAheadOfAWalk)
{
    CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst);
    const char* szName = nullptr;
    ASSERT_TRUE(CTOVTestSuiteFactory::GetFirst(szName));

    CTOVTestSuiteFactory::Register(NAMES[1], &m_oFirst);

    EXPECT_TRUE(CTOVTestSuiteFactory::GetNext(szName, szName));
    EXPECT_EQ(NAMES[1], szName);
}

TEST_F(CTOVTestSuiteFactoryTest, GivesNullForACreatorThatMakesNothing)
{
    CBarrenCreator oBarren;
    CTOVTestSuiteFactory::Register(NAMES[0], &oBarren);

    EXPECT_TRUE(CTOVTestSuiteFactory::HasClass(NAMES[0]));
    EXPECT_EQ(nullptr, CTOVTestSuiteFactory::New(NAMES[0]));
    EXPECT_EQ(1, oBarren.m_nCalls);
}

TEST_F(CTOVTestSuiteFactoryTest, GivesNullForANullCreator)
{
    CTOVTestSuiteFactory::Register(NAMES[0], nullptr);

    EXPECT_TRUE(CTOVTestSuiteFactory::HasClass(NAMES[0]));
    EXPECT_EQ(1, CTOVTestSuiteFactory::GetNumSuites());
    EXPECT_EQ(nullptr, CTOVTestSuiteFactory::New(NAMES[0]));
}

TEST_F(CTOVTestSuiteFactoryTest, WritesIntoTheMapOfTheMainProgram)
{
    RegisterThree();

    EXPECT_EQ(3u, m_oHost.m_aCreators.size());
    EXPECT_EQ(&m_oSecond, m_oHost.m_aCreators[NAMES[1]]);
}

TEST_F(CTOVTestSuiteFactoryTest, ReadsTheMapOfTheMainProgram)
{
    m_oHost.m_aCreators[NAMES[1]] = &m_oSecond;

    EXPECT_TRUE(CTOVTestSuiteFactory::HasClass(NAMES[1]));
    EXPECT_EQ("second", DescriptionOfNew(NAMES[1]));
    EXPECT_EQ(std::vector<const char*>{NAMES[1]}, Walk());
}

TEST_F(CTOVTestSuiteFactoryTest, AsksForTheMapInEveryOperation)
{
    const char* szName = nullptr;
    const std::function<void()> OPERATIONS[] = {
        [&] { CTOVTestSuiteFactory::Register(NAMES[0], &m_oFirst); },
        [] { EXPECT_EQ("first", DescriptionOfNew(NAMES[0])); },
        [&] { CTOVTestSuiteFactory::GetFirst(szName); },
        [&] { CTOVTestSuiteFactory::GetNext(NAMES[0], szName); },
        [] { CTOVTestSuiteFactory::GetNumSuites(); },
        [] { CTOVTestSuiteFactory::HasClass(NAMES[0]); },
        [] { CTOVTestSuiteFactory::Unregister(NAMES[0]); },
    };

    for (const auto& fnOperation : OPERATIONS)
    {
        m_oHost.m_nMapCalls = 0;
        fnOperation();
        EXPECT_EQ(1, m_oHost.m_nMapCalls) << &fnOperation - OPERATIONS;
    }
}

TEST_F(CTOVTestSuiteFactoryTest, FollowsAChangeOfTheMap)
{
    RegisterThree();
    {
        const CControlledHost oOther;
        EXPECT_EQ(0, CTOVTestSuiteFactory::GetNumSuites());
    }

    EXPECT_EQ(3, CTOVTestSuiteFactory::GetNumSuites());
}

TEST_F(CTOVTestSuiteFactoryTest, CopiesKnowTheSuitesOfTheProgram)
{
    RegisterThree();
    const CTOVTestSuiteFactory oFactory;
    CTOVTestSuiteFactory oCopy(oFactory);
    oCopy = oFactory;

    EXPECT_EQ(3, oCopy.GetNumSuites());
}

TEST_F(CTOVTestSuiteFactoryTest, CopiesOfACreatorMakeTheSameSuite)
{
    CCopyCreator oCopy(m_oFirst);
    const std::unique_ptr<TOVTest::CTOVTestSuite> pFirst(oCopy.New());
    static_cast<TOVTest::ITOVTestSuiteCreator&>(oCopy) = m_oSecond;
    const std::unique_ptr<TOVTest::CTOVTestSuite> pSame(oCopy.New());

    EXPECT_STREQ("first", pFirst->GetDescription());
    EXPECT_STREQ("first", pSame->GetDescription()) << "the base has no data";
}
