// What a linked library exports is not the main program's, though the program itself calls it by its plain name.
#include "Support/TOVTestSupport.h"
#include "Test/TOVTestInstruments.h"

#include "Programs/ForeignHost.h"

#include <Test/TOVTestDynamicSingleton.h>
#include <Test/TOVTestListener.h>

#include <cstdio>

using TOVTest::CTOVTestListener;
using TOVTest::CTOVTestSuiteFactory;

namespace
{
constexpr char NAME[] = "CLinkedHostTest";

// The case needs that code takes the addresses, and not only calls the functions.
template<class T> T* AddressOf(T* pfFunction)
{
    T* volatile pfTaken = pfFunction;
    return pfTaken;
}

void Say(const char* szText)
{
    std::fputs(szText, stdout);
    std::fflush(stdout);
}

TOV_CHILD(SetsAListener)
{
    Say("before ");
    CTOVTestListener::SetListener(nullptr);
    Say("after ");
}
} // namespace

TEST(LinkedHostTest, CallsTheLibraryByThePlainNames)
{
    const int nBefore = GetForeignCalls();

    AddressOf (&::SetListener)(nullptr);
    EXPECT_EQ(&AddressOf(&::GetListener)(), &AddressOf(&::GetNull)());
    AddressOf (&::GetCreatorMapDirect)();

    EXPECT_EQ(nBefore + 4, GetForeignCalls());
}

TEST(LinkedHostTest, DoesNotLendTheLibrarysListeners)
{
    const int nBefore = GetForeignCalls();

    const CTOVTestListener* const pListener = &CTOVTestListener::Instance();
    const CTOVTestListener* const pNull = &CTOVTestListener::Null();
    EXPECT_EQ(nBefore, GetForeignCalls());

    EXPECT_EQ(pNull, pListener);
    EXPECT_NE(&AddressOf(&::GetNull)(), pNull);
}

TEST(LinkedHostTest, DoesNotLendTheLibrarysMap)
{
    CCopyCreator oCreator(CFunctionSuite("suite"));
    const int nBefore = GetForeignCalls();

    CTOVTestSuiteFactory::Register(NAME, &oCreator);
    EXPECT_TRUE(CTOVTestSuiteFactory::HasClass(NAME));
    EXPECT_EQ(1u, TOVTest::CTOVTestDynamicSingleton<TOVTest::tCreatorMap>::GetInstance().count(NAME));
    CTOVTestSuiteFactory::Unregister(NAME);

    EXPECT_EQ(nBefore, GetForeignCalls());
    EXPECT_TRUE(AddressOf(&::GetCreatorMapDirect)().empty());
}

TEST(LinkedHostTest, DiesWithoutASetListenerOfItsOwn)
{
    const sChildResult oResult = RunChild("SetsAListener");

    EXPECT_NE(0, oResult.nExitCode);
    EXPECT_EQ(0u, oResult.sOutput.find("before ")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("after ")) << oResult.sOutput;
    EXPECT_EQ(std::string::npos, oResult.sOutput.find("deadline")) << oResult.sOutput;
}
