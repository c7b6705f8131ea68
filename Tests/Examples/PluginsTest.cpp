#include "Examples/ExampleProgram.h"
#include "Support/TOVAllocationCounter.h"

#include <PluginDatabase.h>

namespace
{
// As the program has it.
const CTOVClass s_oFilterClass("IFilter", &CTOVRefCount::GetClass());

const CTOVClass s_oOtherClass("IOther", &CTOVRefCount::GetClass());

std::string Plugin(const std::string& sName)
{
    return PathBesideThisProgram(sName + TOV_MODULE_SUFFIX);
}

const std::string ALL_GONE = "0 plug-ins are still loaded\n";
} // namespace

TEST(PluginsTest, SendsTheTextThroughOnePluginAfterTheOther)
{
    const sChildResult oResult = RunExample("tovfilter", {"a text", Plugin("tovupper"), Plugin("tovreverse")});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ("CUpperFilter    A TEXT\nCReverseFilter  TXET A\n" + ALL_GONE, oResult.sOutput);
}

TEST(PluginsTest, LoadsTheSamePluginTwice)
{
    const sChildResult oResult = RunExample("tovfilter", {"abc", Plugin("tovreverse"), Plugin("tovreverse")});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ("CReverseFilter  cba\nCReverseFilter  abc\n" + ALL_GONE, oResult.sOutput);
}

TEST(PluginsTest, FiltersAnEmptyText)
{
    const sChildResult oResult = RunExample("tovfilter", {"", Plugin("tovupper"), Plugin("tovreverse")});

    EXPECT_EQ(0, oResult.nExitCode) << oResult.sErrors;
    EXPECT_EQ("CUpperFilter    \nCReverseFilter  \n" + ALL_GONE, oResult.sOutput);
}

TEST(PluginsTest, ShowTheControlCharactersOfTheTextAsNumbers)
{
    EXPECT_EQ("CUpperFilter    \\x1b[2J\n" + ALL_GONE,
              RunExample("tovfilter", {"\x1b[2j", Plugin("tovupper")}).sOutput);
    EXPECT_EQ("tovfilter: a\\x1b[2J cannot be loaded\n", RunExample("tovfilter", {"abc", "a\x1b[2J"}).sErrors);
}

TEST(PluginsTest, UnloadsEverythingAfterAPluginThatCannotBeUsed)
{
    const std::string sOther = Plugin("OtherPlugin");

    const sChildResult oResult = RunExample("tovfilter", {"abc", Plugin("tovupper"), sOther});

    EXPECT_EQ(1, oResult.nExitCode);
    EXPECT_EQ(ALL_GONE, oResult.sOutput);
    EXPECT_EQ("tovfilter: " + sOther + " is no filter but a CTOVRefCount\n", oResult.sErrors);
}

TEST(PluginsTest, RefusesAFileThatIsNoPlugin)
{
    const CTempFolder oFolder;
    const std::string sText = oFolder.File("text.so");
    WriteWholeFile(sText, "no code\n");

    EXPECT_EQ("tovfilter: " + sText + " cannot be loaded\n", RunExample("tovfilter", {"abc", sText}).sErrors);
    EXPECT_EQ("tovfilter: missing cannot be loaded\n", RunExample("tovfilter", {"abc", "missing"}).sErrors);
    const std::string sLibrary = PathBesideThisProgram(TOV_SYSTEM_WINDOWS ? "TOVKernel.dll" : "libTOVKernel.so");
    EXPECT_EQ("tovfilter: " + sLibrary + " is no plug-in\n", RunExample("tovfilter", {"abc", sLibrary}).sErrors);
}

TEST(PluginsTest, AreKnownByTheirNumberAndTheirObject)
{
    CPluginDatabase oDatabase;
    {
        const CTOVHandle oUpper = oDatabase.Load(Plugin("tovupper").c_str());
        const CTOVHandle oReverse = oDatabase.Load(Plugin("tovreverse").c_str());
        EXPECT_EQ(2, oDatabase.GetNumPlugins());
        EXPECT_EQ(oReverse.Get(), oDatabase.GetHandle(static_cast<long>(oReverse)).Get());
        EXPECT_EQ(static_cast<long>(oReverse), static_cast<long>(oDatabase.GetHandle(oReverse.Get())));
        EXPECT_FALSE(oDatabase.GetHandle(4711L).IsValid());
        CTOVRefCount oNoPlugin;
        EXPECT_FALSE(oDatabase.GetHandle(&oNoPlugin).IsValid());

        EXPECT_TRUE(oUpper.Get()->IsKindOf(s_oFilterClass));
        EXPECT_TRUE(oUpper.Get()->IsKindOf(CTOVRefCount::GetClass()));
        EXPECT_FALSE(oUpper.Get()->IsInstanceOf(s_oFilterClass));
        EXPECT_NE(nullptr, oUpper.Get()->QueryInterface(s_oFilterClass));
        EXPECT_EQ(nullptr, oUpper.Get()->QueryInterface(s_oOtherClass));
    }
    EXPECT_EQ(0, oDatabase.GetNumPlugins());
    EXPECT_FALSE(oDatabase.GetHandle(0L).IsValid());
}

#if TOV_CAN_FAIL_ALLOCATIONS
TEST(PluginsTest, LeaveNothingBehindWhenMemoryIsExhausted)
{
    CPluginDatabase oDatabase;
    const std::string sFile = Plugin("tovupper");
    const CTOVHandle oFirst = oDatabase.Load(sFile.c_str()); // what the system itself keeps of a library, it has now
    long lKept = 0;
    bool bLoaded = false;
    for (unsigned long ulBlocks = 0; !bLoaded && lKept == 0; ++ulBlocks)
    {
        const CAllocationCounter oCounter;
        try
        {
            const CAllocationFailure oFailure(ulBlocks);
            const CTOVHandle oSecond = oDatabase.Load(sFile.c_str());
            bLoaded = true;
        }
        catch (const std::exception&)
        {
        }
        lKept = oCounter.Kept();
    }

    EXPECT_TRUE(bLoaded);
    EXPECT_EQ(0, lKept);
    EXPECT_EQ(1, oDatabase.GetNumPlugins());
}
#endif

TEST(PluginsTest, TellsItsUsage)
{
    ExpectComplaint("usage: tovfilter TEXT PLUGIN...", 2, RunExample("tovfilter", {"abc"}));
}
