// The whole start-up and its clean-up in their order, as one sequence of what the host was asked and what a debugger
// heard from the library's logger.
#include "Debug/TOVDebuggerLines.h"
#include "Startup/StartupHost.h"
#include "Support/TOVTestSupport.h"

#include <Test/TOVTestSuiteFactory.h>

#include <regex>

namespace
{
const tTexts SUITES = {"CTOVContainersTest",
                       "CTOVDebugTest",
                       "CTOVDesignPatternsTest",
                       "CTOVExceptionTest",
                       "CTOVPlatformMemoryApiTest",
                       "CTOVPlatformAsciiStringApiTest",
                       "CTOVPlatformUnicodeStringApiTest",
                       "CTOVPlatformCharApiTest",
                       "CTOVProcessTest",
                       "CTOVRttiTest",
                       "CTOVStringTest",
                       "CTOVSystemTest"};

// What the texts tell, as "came X", "went X", "asked with N", "adding X N" and "removing X".
tTexts Events(const tTexts& aTexts)
{
    const std::regex oAdding(
        "CTOVClassServer::AddClass\\(\\) : Adding class (.+)\\(([0-9]+)\\) using map [0-9a-f]+\\.");
    const std::regex oRemoving("CTOVClassServer::RemoveClass\\(\\) : Removing class (.+) using map [0-9a-f]+\\.");
    tTexts aEvents;
    for (const std::string& sText : aTexts)
    {
        std::smatch oMatch;
        if (std::regex_match(sText, oMatch, oAdding))
            aEvents.push_back("adding " + oMatch[1].str() + " " + oMatch[2].str());
        else if (std::regex_match(sText, oMatch, oRemoving))
            aEvents.push_back("removing " + oMatch[1].str());
        else if (sText.rfind("came ", 0) == 0 || sText.rfind("went ", 0) == 0 || sText.rfind("asked ", 0) == 0)
            aEvents.push_back(sText.substr(0, sText.find('\n')));
    }
    return aEvents;
}

class TOVStartupOrderTest : public testing::Test
{
protected:
    // One run serves all cases.
    static const sDebuggerTexts& Texts()
    {
        static const sDebuggerTexts s_oTexts = ObserveTelling("AsksForTheSuites");
        return s_oTexts;
    }
};
} // namespace

TOV_CHILD(AsksForTheSuites)
{
    MarkBegin();
    TOVTest::CTOVTestSuiteFactory::GetNumSuites();
    MarkEnd();
}

// The suites' classes, of which the last has two bases, have the numbers 0 to 2 already when the logger begins to hear.
TEST_F(TOVStartupOrderTest, SuitesComeFirstThenTheLoggerThenTheClasses)
{
    tTexts aExpected;
    for (std::size_t nSuite = 0; nSuite < SUITES.size(); ++nSuite)
    {
        if (nSuite > 0)
            aExpected.push_back("came " + SUITES[nSuite - 1]);
        aExpected.push_back("asked with " + std::to_string(nSuite));
    }
    aExpected.push_back("adding <invalid class> 3");
    aExpected.push_back("adding ITOVVirtualFileSystem 4");
    aExpected.push_back("adding CTOVVirtualFileSystem 5");

    EXPECT_EQ(aExpected, Events(Texts().aBefore)) << Joined(Texts().aBefore);
}

TEST_F(TOVStartupOrderTest, AllTwelveSuitesAreThereWhenTheProgramBegins)
{
    EXPECT_EQ((tTexts{"came CTOVSystemTest", "asked with 12"}), Events(Texts().aBetween)) << Joined(Texts().aBetween);
}

// The mirror image. The logger goes before the descriptors of the suites do, and the suites go last.
TEST_F(TOVStartupOrderTest, TheCleanUpMirrorsTheStartUp)
{
    tTexts aExpected = {"removing CTOVVirtualFileSystem", "removing ITOVVirtualFileSystem"};
    const tTexts aEvents = Events(Texts().aBehind);
    ASSERT_LE(aExpected.size(), aEvents.size()) << Joined(Texts().aBehind);
    EXPECT_EQ(aExpected, tTexts(aEvents.begin(), aEvents.begin() + 2));

    tTexts aSuiteEvents;
    for (std::size_t nLeft = SUITES.size(); nLeft > 0; --nLeft)
    {
        if (nLeft < SUITES.size())
            aSuiteEvents.push_back("went " + SUITES[nLeft]);
        aSuiteEvents.push_back("asked with " + std::to_string(nLeft));
    }
    ASSERT_LE(aSuiteEvents.size(), aEvents.size());
    EXPECT_EQ(aSuiteEvents, tTexts(aEvents.end() - static_cast<std::ptrdiff_t>(aSuiteEvents.size()), aEvents.end()))
        << Joined(Texts().aBehind);
}

namespace
{
// Those lines of the texts that tell of a use of the library.
int CountUses(const tTexts& aTexts, const std::string& sLine)
{
    const std::string sAll = Joined(aTexts);
    int nCount = 0;
    for (std::size_t n = sAll.find(sLine); n != std::string::npos; n = sAll.find(sLine, n + 1))
        ++nCount;
    return nCount;
}
} // namespace

// Before the logger and the file handle table are made, and when they are gone: a line is logged, to nobody, and the
// first file is handle 0 each time.
TEST(TOVStartupUseTest, LogsAndOpensFilesBeforeTheStartUpAndAfterTheCleanUp)
{
    const CTellingChildren oTelling(true);
    const sObservedChild oChild = RunDebugged("AsksForTheSuites");
    const sDebuggerTexts oTexts = SplitAtMarks(oChild.aDebuggerTexts);

    EXPECT_EQ(0, oChild.nExitCode);
    for (const std::string& sLine : {std::string("used "), std::string("used 1 0 1\n")})
    {
        EXPECT_EQ(12, CountUses(oTexts.aBefore, sLine)) << Joined(oTexts.aBefore);
        EXPECT_EQ(1, CountUses(oTexts.aBetween, sLine)) << Joined(oTexts.aBetween);
        EXPECT_EQ(12, CountUses(oTexts.aBehind, sLine)) << Joined(oTexts.aBehind);
    }
}
