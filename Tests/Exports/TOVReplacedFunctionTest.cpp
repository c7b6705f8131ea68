// The library's calls of its own functions are direct, but this program's version of a hook is used all the same.
#include "Support/TOVTestSupport.h"

#include <Path/TOVPath.h>
#include <Test/TOVTestHooks.h>

TOV_PLAIN_NAMES_BEGIN
TOV_PROGRAM_EXPORT TOVTest::tCreatorMap& GetCreatorMapDirect();
TOV_PLAIN_NAMES_END

// The library uses the map before this program's statics are constructed and after they are destroyed.
TOVTest::tCreatorMap& GetCreatorMapDirect()
{
    static TOVTest::tCreatorMap* const s_pCreators = new TOVTest::tCreatorMap;
    return *s_pCreators;
}

TEST(TOVReplacedFunctionTest, TheLibraryUsesTheProgramsHook)
{
    static const char s_szName[] = "CSuiteOfTheProgram";
    const long lSuites = TOVTest::CTOVTestSuiteFactory::GetNumSuites();
    EXPECT_FALSE(TOVTest::CTOVTestSuiteFactory::HasClass(s_szName));

    GetCreatorMapDirect()[s_szName] = nullptr;
    EXPECT_TRUE(TOVTest::CTOVTestSuiteFactory::HasClass(s_szName));
    EXPECT_EQ(lSuites + 1, TOVTest::CTOVTestSuiteFactory::GetNumSuites());

    TOVTest::CTOVTestSuiteFactory::Unregister(s_szName);
    EXPECT_EQ(0u, GetCreatorMapDirect().count(s_szName));
}
