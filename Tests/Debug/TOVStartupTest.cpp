// The library's start-up and its clean-up, as seen from outside: by a debugger, and by a program that uses the library
// as early and as late as it can.
#include "Debug/TOVDebugInstruments.h"
#include "Debug/TOVDebuggerLines.h"
#include "Support/TOVSay.h"

#include <File/TOVFile.h>
#include <File/TOVVirtualFileSystem.h>
#include <Path/TOVPath.h>
#include <TOVRtti/TOVClassServer.h>
#include <TOVString/TOVStringA.h>
#include <TOVString/TOVStringW.h>

#include <cstdio>
#include <regex>

namespace
{
// The class names that a debugger's texts tell of, in their order, as the expression's first group gives them.
tTexts ClassesIn(const tTexts& aTexts, const char* szExpression)
{
    const std::regex oExpression(szExpression);
    tTexts aClasses;
    for (const std::string& sText : aTexts)
    {
        std::smatch oMatch;
        if (std::regex_match(sText, oMatch, oExpression))
            aClasses.push_back(oMatch[1]);
    }
    return aClasses;
}

constexpr char ADDING[] = "CTOVClassServer::AddClass\\(\\) : Adding class (.+)\\([0-9]+\\) using map [0-9a-f]+\\.";
constexpr char ADDING_ID[] = "CTOVClassServer::AddClass\\(\\) : Adding class .+\\(([0-9]+)\\) using map [0-9a-f]+\\.";
constexpr char ADDING_MAP[] = "CTOVClassServer::AddClass\\(\\) : Adding class .+\\([0-9]+\\) using map ([0-9a-f]+)\\.";
constexpr char REMOVING[] = "CTOVClassServer::RemoveClass\\(\\) : Removing class (.+) using map [0-9a-f]+\\.";
constexpr char REMOVING_MAP[] = "CTOVClassServer::RemoveClass\\(\\) : Removing class .+ using map ([0-9a-f]+)\\.";

// What the library could do while this program's own statics came to life.
struct sEarlyUse
{
    sEarlyUse()
        : bLogged(TOVDebug::_Log("Early", 1, 0x1, eSeverityTrace, "%s", "text")),
          bHasClasses(CTOVClassServer::Instance().HasClass(CTOVStringA("CTOVVirtualFileSystem"))),
          bHasEmptyTexts(CTOVStringA::Null().IsEmpty() && CTOVStringW::Null().IsEmpty() && CTOVPath::Null().IsEmpty()),
          bRefusedCheck(false), bFailedToOpen(false)
    {
        try
        {
            TOVDebug::Assert("false", "Early", 1);
        }
        catch (const TOVDebug::CTOVAssertException&)
        {
            bRefusedCheck = true;
        }
        try
        {
            CTOVFile oFile;
            oFile.Open("no such folder/no such file", ITOVFile::eFileOpenRead | ITOVFile::eFileOpenBinary);
        }
        catch (const ITOVFile::Exception&)
        {
            bFailedToOpen = true;
        }
    }

    bool bLogged;
    bool bHasClasses;
    bool bHasEmptyTexts;
    bool bRefusedCheck;
    bool bFailedToOpen;
};
const sEarlyUse s_oEarly;
} // namespace

TOV_CHILD(StartsAndEnds)
{
    MarkBegin();
    MarkEnd();
}

namespace
{
class TOVStartupTest : public testing::Test
{
protected:
    // One run serves all cases.
    static const sDebuggerTexts& Texts()
    {
        static const sDebuggerTexts s_oTexts = SplitAtMarks(RunDebugged("StartsAndEnds").aDebuggerTexts);
        return s_oTexts;
    }
};
} // namespace

TEST_F(TOVStartupTest, TheLoggerListensBeforeTheClassesAreMade)
{
    const tTexts aAdded = ClassesIn(Texts().aBefore, ADDING);
    const auto fnPlaceOf = [&aAdded](const char* szClass) {
        return std::find(aAdded.begin(), aAdded.end(), szClass) - aAdded.begin();
    };

    ASSERT_LT(fnPlaceOf("CTOVVirtualFileSystem"), static_cast<std::ptrdiff_t>(aAdded.size()))
        << Joined(Texts().aBefore);
    EXPECT_LT(fnPlaceOf("<invalid class>"), fnPlaceOf("ITOVVirtualFileSystem"));
    EXPECT_LT(fnPlaceOf("ITOVVirtualFileSystem"), fnPlaceOf("CTOVVirtualFileSystem"));
}

// Numbers 0 to 2 went to classes that the library's own test suites look at, before the logger listened.
TEST_F(TOVStartupTest, ClassesGetTheirNumbersInOrderFromOneServer)
{
    const tTexts aIds = ClassesIn(Texts().aBefore, ADDING_ID);
    const tTexts aMaps = ClassesIn(Texts().aBefore, ADDING_MAP);

    ASSERT_LE(3u, aIds.size());
    EXPECT_EQ("3", aIds[0]);
    for (std::size_t nClass = 1; nClass < aIds.size(); ++nClass)
    {
        EXPECT_EQ(std::stoul(aIds[nClass - 1]) + 1, std::stoul(aIds[nClass]));
        EXPECT_EQ(aMaps[0], aMaps[nClass]);
    }
}

// The server ends before the classes that are older than its holder, and removes these by name.
TEST_F(TOVStartupTest, TheCleanUpMirrorsTheStartUp)
{
    tTexts aExpected = ClassesIn(Texts().aBefore, ADDING);
    std::reverse(aExpected.begin(), aExpected.end());
    aExpected.insert(aExpected.end(), {"CBase", "CClass", "IInterface"});

    EXPECT_EQ(aExpected, ClassesIn(Texts().aBehind, REMOVING)) << Joined(Texts().aBehind);
}

TEST_F(TOVStartupTest, TheCleanUpEndsWithTheServerOfTheStartUp)
{
    const tTexts aMaps = ClassesIn(Texts().aBefore, ADDING_MAP);
    const tTexts aMapsAtEnd = ClassesIn(Texts().aBehind, REMOVING_MAP);

    ASSERT_FALSE(aMaps.empty());
    EXPECT_EQ(tTexts(aMaps.size() + 3, aMaps[0]), aMapsAtEnd);
}

TEST_F(TOVStartupTest, StartAndEndFailNoCheckAndWarnOfNothing)
{
    std::string sAll = Joined(Texts().aBefore) + Joined(Texts().aBehind);
    const std::string sEarlyCheck = "******* ASSERTION *******\nEarly(1) : Expression: TOV_ASSERT( false )\n";
    ASSERT_NE(std::string::npos, sAll.find(sEarlyCheck)) << sAll;
    sAll.erase(sAll.find(sEarlyCheck), sEarlyCheck.size());

    EXPECT_EQ(std::string::npos, sAll.find("ASSERTION")) << sAll;
    EXPECT_EQ(std::string::npos, sAll.find("already registered")) << sAll;
}

TEST_F(TOVStartupTest, TheLibraryIsAliveInTheProgramsOwnStartUp)
{
    EXPECT_TRUE(s_oEarly.bLogged);
    EXPECT_TRUE(s_oEarly.bHasClasses);
    EXPECT_TRUE(s_oEarly.bHasEmptyTexts);
    EXPECT_TRUE(s_oEarly.bRefusedCheck);
    EXPECT_TRUE(s_oEarly.bFailedToOpen);
}

namespace
{
// Tells what it hears of classes and whether it is ever closed down.
class CLastListener : public CRecordingListener
{
public:
    using CRecordingListener::CRecordingListener;

    void OnClosedown() override { Say("closedown"); }

    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list pArguments) override
    {
        const std::string sText = FormatPlainly(szFormat, pArguments);
        if (sText.find("CTOVVirtualFileSystem") != std::string::npos)
            Say("class removed");
        if (sText == "late")
            Say("late line heard");
    }
};

// A static of the program: it goes before the library does.
struct sLateUser
{
    ~sLateUser()
    {
        TOVDebug::_Log("Late", 1, 0x1, eSeverityTrace, "%s", "late");
        CTOVStringA oText("text");
        oText += "!";
        Say(oText.GetString());
    }
};
} // namespace

TOV_CHILD(EndsWithAListener)
{
    static const sLateUser s_oLate;
    TOVDebug::CTOVDebugServer::Instance().Register(&MakeImmortal<CLastListener>("last", MakeImmortal<tRecord>()));
    Say("main ends");
}

// The server is never destroyed: its listeners hear the clean-up, and nobody closes them down.
TEST_F(TOVStartupTest, AListenerHearsTheCleanUpToItsEndAndIsNotClosedDown)
{
    const sChildResult oResult = RunChild("EndsWithAListener");

    EXPECT_EQ(0, oResult.nExitCode);
    EXPECT_EQ("main ends; late line heard; text!; class removed; ", oResult.sOutput);
}
