// Declares the macros that define a test suite:
//
//     class CWordsTest : public TOVTest::CTOVTestSuite
//     {
//         TOV_TEST_SUITE(CWordsTest)
//         void CountsWords();
//         void JoinsWords();
//     };
//
//     TOV_TEST_CASES_BEGIN(CWordsTest, "Words")
//         TOV_TEST_CASE("counts words", CountsWords)
//         TOV_TEST_CASE("joins words", JoinsWords)
//     TOV_TEST_CASES_END
//     TOV_REGISTER_TEST_SUITE(CWordsTest)
//
//     void CWordsTest::CountsWords()
//     {
//         TOV_TEST_EQUALS(CountWords("one two"), 2);      // Test/TOVTestChecks.h
//     }
//
// The macros are used outside all namespaces, in the suite's source.
#pragma once

#include <Test/TOVTestCase.h>
#include <Test/TOVTestSuite.h>
#include <Test/TOVTestSuiteFactory.h>

namespace TOVTest
{
// Describes one row of a suite's table of cases. The table ends with a row without a function.
struct sTestEntry
{
    const char* szDescription;       // the name that reports show
    void (CTOVTestSuite::*pfTest)(); // null ends the table
    const char* szFileName;          // the source, and the line in it
    unsigned long ulLine;            // of the entry
};

// Registers a creator when its program or library is loaded. The creator's destructor unregisters it.
struct sTestRegistration
{
    // Registers the creator, which is not owned.
    sTestRegistration(const char* szName, ITOVTestSuiteCreator* pCreator)
    {
        CTOVTestSuiteFactory::Register(szName, pCreator);
    }
};
} // namespace TOVTest

// Goes into the class. It declares the operations that describe the suite, and its table. The members after it are
// private.
#define TOV_TEST_SUITE(Suite)                                                                                          \
public:                                                                                                                \
    long GetNumTestCases() const override;                                                                             \
    TOVTest::CTOVTestCase& GetTestCase(long lIndex) const override;                                                    \
    const char* GetDescription() const override;                                                                       \
    const char* GetFileName() const override;                                                                          \
    unsigned long GetLine() const override;                                                                            \
                                                                                                                       \
private:                                                                                                               \
    typedef Suite tTestSuite;                                                                                          \
    static const TOVTest::sTestEntry s_aTestEntries[];

// Goes into the source. It defines those operations, and begins the table of the cases, which are listed in order.
#define TOV_TEST_CASES_BEGIN(Suite, szDescription) TOV_TEST_CASES_BEGIN_AT(Suite, szDescription, __FILE__, __LINE__)

// Does the same with a given file and line. Each entry of the table is then written with TOV_TEST_CASE_AT.
// Settled: the file name of an invalid case lacks its closing bracket, unlike that of the base class.
#define TOV_TEST_CASES_BEGIN_AT(Suite, szSuite, szSuiteFile, ulSuiteLine)                                              \
    long Suite::GetNumTestCases() const                                                                                \
    {                                                                                                                  \
        long lCount = 0;                                                                                               \
        while (s_aTestEntries[lCount].pfTest != nullptr)                                                               \
            ++lCount;                                                                                                  \
        return lCount;                                                                                                 \
    }                                                                                                                  \
    TOVTest::CTOVTestCase& Suite::GetTestCase(long lIndex) const                                                       \
    {                                                                                                                  \
        if (lIndex < 0 || lIndex >= Suite::GetNumTestCases())                                                          \
            return SetupTestCase(nullptr, nullptr, "<invalid test case>", "<invalid file name", 0);                    \
        const TOVTest::sTestEntry& oEntry = s_aTestEntries[lIndex];                                                    \
        return SetupTestCase(this, oEntry.pfTest, oEntry.szDescription, oEntry.szFileName, oEntry.ulLine);             \
    }                                                                                                                  \
    const char* Suite::GetDescription() const                                                                          \
    {                                                                                                                  \
        return szSuite;                                                                                                \
    }                                                                                                                  \
    const char* Suite::GetFileName() const                                                                             \
    {                                                                                                                  \
        return szSuiteFile;                                                                                            \
    }                                                                                                                  \
    unsigned long Suite::GetLine() const                                                                               \
    {                                                                                                                  \
        return ulSuiteLine;                                                                                            \
    }                                                                                                                  \
    const TOVTest::sTestEntry Suite::s_aTestEntries[] = {

// Is an entry of the table: the name that reports show, and a member function without parameters.
#define TOV_TEST_CASE(szDescription, Function) TOV_TEST_CASE_AT(szDescription, Function, __FILE__, __LINE__)

// Is an entry with a given file and line.
#define TOV_TEST_CASE_AT(szDescription, Function, szFileName, ulLine)                                                  \
    {szDescription, static_cast<void (TOVTest::CTOVTestSuite::*)()>(&tTestSuite::Function), szFileName, ulLine},

// Ends the table.
#define TOV_TEST_CASES_END                                                                                             \
    {                                                                                                                  \
        nullptr, nullptr, nullptr, 0                                                                                   \
    }                                                                                                                  \
    }                                                                                                                  \
    ;

// Defines the creator of a suite, whose name is CTOVCreator_ and the suite's name. szName is the key of the factory: it
// must be the same pointer wherever the suite is registered.
// NOLINTBEGIN(bugprone-macro-parentheses): a class name cannot have parentheses.
#define TOV_TEST_CREATOR(Suite, szName)                                                                                \
    class CTOVCreator_##Suite : public TOVTest::ITOVTestSuiteCreator                                                   \
    {                                                                                                                  \
    public:                                                                                                            \
        TOVTest::CTOVTestSuite* New() override { return new Suite(); }                                                 \
        virtual ~CTOVCreator_##Suite() { TOVTest::CTOVTestSuiteFactory::Unregister(szName); }                          \
    };
// NOLINTEND(bugprone-macro-parentheses)

// Goes into the source. It registers the suite under its class name as long as its program or library is loaded.
#define TOV_REGISTER_TEST_SUITE(Suite)                                                                                 \
    static const char s_szNameOf##Suite[] = #Suite;                                                                    \
    TOV_TEST_CREATOR(Suite, s_szNameOf##Suite)                                                                         \
    static CTOVCreator_##Suite s_oCreatorOf##Suite;                                                                    \
    static const TOVTest::sTestRegistration s_oRegistrationOf##Suite(s_szNameOf##Suite, &s_oCreatorOf##Suite);
