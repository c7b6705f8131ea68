// The tables of the library's own suites, by the factory.
#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>
#include <Test/TOVTestSuiteFactory.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{
struct sSuiteRow
{
    const char* szClass;
    const char* szDescription;
    const char* szFileName;
    unsigned long ulLine;
    long lNumCases;
    unsigned long ulFirstCaseLine;
};

// In the order of their registration.
const sSuiteRow SUITES[] = {
    {"CTOVContainersTest", "TOVContainers", "TestSuites\\Test_TOVContainers", 33, 7, 47},
    {"CTOVDebugTest", "TOVDebug Test", "TestSuites\\Test_TOVDebug", 32, 0, 0},
    {"CTOVDesignPatternsTest", "TOVDesignPatterns", "TestSuites\\Test_TOVDesignPatterns", 31, 2, 39},
    {"CTOVExceptionTest", "TOVException Test", "TestSuites\\Test_TOVException", 32, 0, 0},
    {"CTOVPlatformMemoryApiTest", "TOVPlatform Memory API (Windows)", "TestSuites\\Test_TOVPlatform", 39, 4, 49},
    {"CTOVPlatformAsciiStringApiTest", "TOVPlatform Ascii String API Test (Windows)", "TestSuites\\Test_TOVPlatform",
     157, 29, 192},
    {"CTOVPlatformUnicodeStringApiTest", "TOVPlatform Unicode String API Test (Windows)",
     "TestSuites\\Test_TOVPlatform", 714, 29, 749},
    {"CTOVPlatformCharApiTest", "TOVPlatform Character API Test (Windows)", "TestSuites\\Test_TOVPlatform", 1295, 1,
     1304},
    {"CTOVProcessTest", "TOVProcess Test", "TestSuites\\Test_TOVProcess", 32, 0, 0},
    {"CTOVRttiTest", "TOVRtti", "TestSuites\\Test_TOVRtti", 68, 2, 76},
    {"CTOVStringTest", "TOVString Test", "TestSuites\\Test_TOVString", 33, 3, 47},
    {"CTOVSystemTest", "TOVSystem Test", "TestSuites\\Test_TOVSystem", 57, 3, 66},
};

typedef TOVTest::CTOVTestSuiteFactory tFactory;

// The key of a class name, which is another pointer; NULL if there is none.
const char* KeyOf(const std::string& sClass)
{
    const char* szKey = nullptr;
    for (bool bFound = tFactory::GetFirst(szKey); bFound; bFound = tFactory::GetNext(szKey, szKey))
    {
        if (szKey == sClass)
            return szKey;
    }
    return nullptr;
}

class TOVSuiteTablesTest : public testing::TestWithParam<sSuiteRow>
{
protected:
    TOVSuiteTablesTest() : m_pSuite(tFactory::New(KeyOf(GetParam().szClass))) {}

    void SetUp() override { ASSERT_NE(nullptr, m_pSuite); }

    const std::unique_ptr<TOVTest::CTOVTestSuite> m_pSuite;
};
} // namespace

TEST(TOVSuiteRegistrationTest, TheLibraryRegistersTwelveSuites)
{
    EXPECT_EQ(12, tFactory::GetNumSuites());
}

TEST(TOVSuiteRegistrationTest, TheFactoryWalksThemInTheOrderOfTheirRegistration)
{
    const char* szKey = nullptr;
    bool bFound = tFactory::GetFirst(szKey);
    for (const sSuiteRow& oRow : SUITES)
    {
        ASSERT_TRUE(bFound) << oRow.szClass;
        EXPECT_STREQ(oRow.szClass, szKey);
        bFound = tFactory::GetNext(szKey, szKey);
    }
    EXPECT_FALSE(bFound);
}

TEST(TOVSuiteRegistrationTest, ANameOfTheSameTextIsNoKey)
{
    const std::string sName = "CTOVContainersTest";

    EXPECT_FALSE(tFactory::HasClass(sName.c_str()));
    EXPECT_TRUE(tFactory::HasClass(KeyOf(sName)));
}

TEST_P(TOVSuiteTablesTest, TellsDescriptionFileAndLine)
{
    EXPECT_STREQ(GetParam().szDescription, m_pSuite->GetDescription());
    EXPECT_STREQ(GetParam().szFileName, m_pSuite->GetFileName());
    EXPECT_EQ(GetParam().ulLine, m_pSuite->GetLine());
}

TEST_P(TOVSuiteTablesTest, HasCasesFromItsFileLineByLine)
{
    // A case that is in the table only, and a line of the file's own in between.
    const bool bGap = std::string(GetParam().szClass) == "CTOVStringTest";

    ASSERT_EQ(GetParam().lNumCases, m_pSuite->GetNumTestCases());
    for (long lIndex = 0; lIndex < GetParam().lNumCases; ++lIndex)
    {
        const TOVTest::CTOVTestCase& oCase = m_pSuite->GetTestCase(lIndex);
        const unsigned long ulGap = bGap && lIndex > 0 ? 1 : 0;
        EXPECT_EQ(GetParam().ulFirstCaseLine + static_cast<unsigned long>(lIndex) + ulGap, oCase.GetLine());
        EXPECT_STREQ(GetParam().szFileName, oCase.GetFileName());
    }
}

TEST_P(TOVSuiteTablesTest, EndsWithTheInvalidCase)
{
    for (const long lIndex : {GetParam().lNumCases, GetParam().lNumCases + 1, GetParam().lNumCases + 1000})
    {
        const TOVTest::CTOVTestCase& oCase = m_pSuite->GetTestCase(lIndex);
        EXPECT_STREQ("<invalid test case>", oCase.GetDescription());
        EXPECT_STREQ("<invalid file name", oCase.GetFileName());
        EXPECT_EQ(0u, oCase.GetLine());
        EXPECT_NO_THROW(oCase.Run());
    }
}

INSTANTIATE_TEST_SUITE_P(All, TOVSuiteTablesTest, testing::ValuesIn(SUITES),
                         [](const testing::TestParamInfo<sSuiteRow>& oInfo) {
                             return std::string(oInfo.param.szClass);
                         });
