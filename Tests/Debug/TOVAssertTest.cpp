// The entrances that end an operation or the process: Assert, Alternate_Assert and TOVPanic.
#include "Debug/TOVDebugInstruments.h"
#include "Support/TOVBlockableThread.h"
#include "Support/TOVObservedChild.h"
#include "Support/TOVSay.h"
#include "Support/Windows/TOVBoxCalls.h"

#include <Debug/TOVDebug.h>
#include <TOVDesignPatterns/TOVRefCount.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <type_traits>

namespace
{
constexpr int FAILED_EXIT = 255; // exit(-1)
constexpr int QUICK_EXIT = 77;

// What one call of Alternate_Assert adds to its question.
std::string Question()
{
    const std::string sDashes(88, '-');
    return "\n" + sDashes +
           "\n\nWould you like to debug the application?\n"
           "\n YES:           Debug or try to continue (if no debugger present) "
           "\n NO:             Try a clean shutdown (might throw more exceptions)"
           "\n CANCEL:     Force the application to exit\n"
           "\n" +
           sDashes + "\n";
}

// Tells what it hears, as a child's witness.
class CWitness : public CRecordingListener
{
public:
    CWitness() : CRecordingListener("heard", m_aRecord) { TOVDebug::CTOVDebugServer::Instance().Register(this); }

    void OnAssert(const char* szFile, unsigned long ulLine, const char* szExpression) override
    {
        Say("heard " + std::string(szExpression) + " at " + szFile + ' ' + std::to_string(ulLine));
    }

    void OnPanicV(const char* szFile, unsigned long ulLine, const char* szFormat, va_list pArguments) override
    {
        Say("panic " + FormatPlainly(szFormat, pArguments) + " at " + szFile + ' ' + std::to_string(ulLine));
    }

private:
    tRecord m_aRecord;
};

// A static object whose clean-up can be heard.
struct sTellsItsCleanUp
{
    ~sTellsItsCleanUp() { Say("clean-up"); }
};

void TellCleanUp()
{
    static sTellsItsCleanUp s_oTells;
    static_cast<void>(s_oTells);
}

sObservation WithAnswers(const std::vector<eUserAnswer>& aAnswers)
{
    sObservation oHow;
    oHow.aAnswers = aAnswers;
    return oHow;
}
} // namespace

TEST(TOVAssertTest, TellsTheListenersFileFirstAndExpressionLast)
{
    tRecord aRecord;
    CRecordingListener oA("A", aRecord);
    CRecordingListener oB("B", aRecord);
    TOVDebug::CTOVDebugServer::Instance().Register(&oA);
    TOVDebug::CTOVDebugServer::Instance().Register(&oB);
    aRecord.clear();

    EXPECT_THROW(TOVDebug::Assert("nCount > 0", "Folder/File.cpp", 148), TOVDebug::CTOVAssertException);

    EXPECT_EQ((tRecord{"A assert Folder/File.cpp(148): nCount > 0", "B assert Folder/File.cpp(148): nCount > 0"}),
              aRecord);
    TOVDebug::CTOVDebugServer::Instance().Unregister(&oB);
    TOVDebug::CTOVDebugServer::Instance().Unregister(&oA);
}

TEST(TOVAssertTest, TheLineHas32BitsForListeners)
{
    CLogRecorder oRecorder;

    EXPECT_THROW(TOVDebug::Assert("false", "File", -1), TOVDebug::CTOVAssertException);
    TOVDebug::_Log("File", static_cast<unsigned long>(-1), 0x1, eSeverityInfo, "text");

    ASSERT_EQ(1u, oRecorder.Checks().size());
    EXPECT_EQ(4294967295u, oRecorder.Checks()[0].ulLine);
    ASSERT_EQ(1u, oRecorder.Lines().size());
    EXPECT_EQ(4294967295u, oRecorder.Lines()[0].ulLine);
}

TOV_CHILD(AsksAboutALineBelowZero)
{
    MakeImmortal<CWitness>();
    TOVDebug::Alternate_Assert("false", "File", -1);
    TOVPanic("File", static_cast<unsigned long>(-1), "text");
}

TEST(TOVAssertTest, TheLineHas32BitsAtAQuestionAndAPanicToo)
{
    const sObservedChild oChild = RunObserved("AsksAboutALineBelowZero", WithAnswers({eUserYes, eUserOk}));

    EXPECT_EQ("heard false at File 4294967295; panic text at File 4294967295; ", oChild.sOutput);
}

TEST(TOVAssertTest, ThrowsClassOneAndCodeFfff)
{
    try
    {
        TOVDebug::Assert("false", "File", 1);
    }
    catch (TOVDebug::CTOVAssertException& oException)
    {
        EXPECT_EQ(CTOVException::eClassSystem, oException.GetClass());
        EXPECT_EQ(0xfffful, oException.GetCode());
        return;
    }
    FAIL() << "nothing thrown";
}

TEST(TOVAssertTest, IsCaughtAsTheRootOfExceptions)
{
    EXPECT_THROW(TOVDebug::Assert("false", "File", 1), CTOVException);
}

TEST(TOVAssertTest, HasReleasedTheLockWhenItThrows)
{
    try
    {
        TOVDebug::Assert("false", "File", 1);
    }
    catch (const CTOVException&)
    {
        CBlockableThread oOther([] { TOVDebug::_Log("File", 1, 0x1, eSeverityInfo, "text"); });
        EXPECT_TRUE(oOther.Finishes());
    }
}

TEST(TOVAssertTest, TellsTheListenersBeforeItUnwinds)
{
    tRecord aRecord;
    CRecordingListener oListener("A", aRecord);
    TOVDebug::CTOVDebugServer::Instance().Register(&oListener);
    aRecord.clear();
    struct sUnwinding
    {
        tRecord& aRecord;
        ~sUnwinding() { aRecord.push_back("unwound"); }
    };

    try
    {
        sUnwinding oUnwinding = {aRecord};
        TOVDebug::Assert("false", "File", 1);
    }
    catch (const CTOVException&)
    {
    }

    EXPECT_EQ((tRecord{"A assert File(1): false", "unwound"}), aRecord);
    TOVDebug::CTOVDebugServer::Instance().Unregister(&oListener);
}

TOV_CHILD(FailsACheckThatNobodyCatches)
{
    std::set_terminate([] {
        Say("terminated");
        std::_Exit(QUICK_EXIT);
    });
    MakeImmortal<CWitness>();
    TOVDebug::Assert("false", "File", 1);
}

TEST(TOVAssertTest, WithoutAHandlerTheProcessEndsInTheRuntimesWay)
{
    const sChildResult oResult = RunChild("FailsACheckThatNobodyCatches");

    EXPECT_EQ(QUICK_EXIT, oResult.nExitCode);
    EXPECT_EQ("heard false at File 1; terminated; ", oResult.sOutput);
}

TOV_CHILD(FailsAnOrdinaryCheck)
{
    try
    {
        TOVDebug::Assert("false", "File", 1);
    }
    catch (const CTOVException&)
    {
        Say("caught");
    }
}

TEST(TOVAssertTest, ShowsNoBox)
{
    const sObservedChild oChild = RunObserved("FailsAnOrdinaryCheck", WithAnswers({eUserOk}));

    EXPECT_EQ(0, oChild.nExitCode);
    EXPECT_EQ("caught; ", oChild.sOutput);
    EXPECT_TRUE(oChild.aBoxes.empty());
}

TEST(TOVAlternateAssertTest, AsksAQuestionOf401Characters)
{
    EXPECT_EQ(401u, Question().size());
    EXPECT_TRUE((std::is_same_v<bool, decltype(TOVDebug::Alternate_Assert("", "", 0))>));
}

// Asks as often as its argument says, and tells the results.
TOV_CHILD(AsksAlternately)
{
    TellCleanUp();
    MakeImmortal<CWitness>();
    for (int nTimes = std::atoi(aArguments[0].c_str()); nTimes > 0; --nTimes)
    {
        errno = EINTR; // of a call before, and no concern of this one
        Say(TOVDebug::Alternate_Assert("nCount > 0", "File", 148) ? "true" : "false");
    }
}

namespace
{
sObservedChild AskAlternately(const std::vector<eUserAnswer>& aAnswers, int nTimes, bool bDebugger = false)
{
    sObservation oHow = WithAnswers(aAnswers);
    oHow.bDebugger = bDebugger;
    oHow.aArguments = {std::to_string(nTimes)};
    return RunObserved("AsksAlternately", oHow);
}
} // namespace

TEST(TOVAlternateAssertTest, ShowsTheQuestionInABoxOfThreeButtons)
{
    const sObservedChild oChild = AskAlternately({eUserYes}, 1);

    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("TOV ASSERTION", oChild.aBoxes[0].sCaption);
    EXPECT_EQ(Question(), oChild.aBoxes[0].sText);
    EXPECT_EQ("Yes No Cancel", oChild.aBoxes[0].sButtons);
}

#if TOV_SYSTEM_WINDOWS
TOV_CHILD(TellsHowItAsks)
{
    TellBoxCalls();
    if (aArguments[0] == "panic")
        TOVPanic("File", 1, "text");
    else
        TOVDebug::Alternate_Assert("false", "File", 1);
}

TEST(TOVAlternateAssertTest, BringsTheDesktopToTheForegroundAndShowsItsBoxAboveAllOthers)
{
    sObservation oHow = WithAnswers({eUserYes});
    oHow.aArguments = {"question"};

    EXPECT_EQ("foreground desktop; box flags 40003, owner desktop; ", RunObserved("TellsHowItAsks", oHow).sOutput);
}

TEST(TOVPanicTest, ShowsItsBoxWithoutAnOwner)
{
    sObservation oHow = WithAnswers({eUserOk});
    oHow.aArguments = {"panic"};

    EXPECT_EQ("box flags 10, owner none; ", RunObserved("TellsHowItAsks", oHow).sOutput);
}
#endif

TEST(TOVAlternateAssertTest, TellsTheListenersBeforeItAsksAndWaitsForTheAnswer)
{
    const sObservedChild oChild = AskAlternately({eUserYes}, 1);

    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("heard nCount > 0 at File 148; ", oChild.aBoxes[0].sSaid);
}

TEST(TOVAlternateAssertTest, YesIsFalseWithoutADebugger)
{
    const sObservedChild oChild = AskAlternately({eUserYes}, 1);

    EXPECT_EQ("heard nCount > 0 at File 148; false; clean-up; ", oChild.sOutput);
    EXPECT_EQ(0, oChild.nExitCode);
}

TEST(TOVAlternateAssertTest, YesIsTrueWithADebugger)
{
    const sObservedChild oChild = AskAlternately({eUserYes}, 1, true);

    EXPECT_EQ("heard nCount > 0 at File 148; true; clean-up; ", oChild.sOutput);
    EXPECT_EQ(0, oChild.nExitCode);
}

TEST(TOVAlternateAssertTest, NoEndsTheProcessWithCleanUp)
{
    const sObservedChild oChild = AskAlternately({eUserNo}, 1);

    EXPECT_EQ("heard nCount > 0 at File 148; clean-up; ", oChild.sOutput);
    EXPECT_EQ(0, oChild.nExitCode);
}

TEST(TOVAlternateAssertTest, CancelEndsTheProcessWithoutCleanUp)
{
    const sObservedChild oChild = AskAlternately({eUserCancel}, 1);

    EXPECT_EQ("heard nCount > 0 at File 148; ", oChild.sOutput);
    EXPECT_EQ(0, oChild.nExitCode);
}

namespace
{
// Says each line that is logged, as the library does at its own clean-up.
class CLineWitness : public CRecordingListener
{
public:
    CLineWitness() : CRecordingListener("line", m_aRecord) { TOVDebug::CTOVDebugServer::Instance().Register(this); }

    void OnLogV(const char*, unsigned long, eTOVDebugSeverity, const char* szFormat, va_list pArguments) override
    {
        const std::string sText = FormatPlainly(szFormat, pArguments);
        Say(sText.find("Removing class") != std::string::npos ? "removing a class" : "a line");
    }

private:
    tRecord m_aRecord;
};
} // namespace

TOV_CHILD(HearsTheLibrarysCleanUp)
{
    CTOVRefCount::GetClass(); // comes to life here, after all that was there from the start
    MakeImmortal<CLineWitness>();
    if (TOVDebug::Alternate_Assert("false", "File", 1))
        Say("true");
}

TEST(TOVAlternateAssertTest, CancelPassesOverTheCleanUpOfTheLibraryItself)
{
    sObservation oHow = WithAnswers({eUserCancel});
    const sObservedChild oCancelled = RunObserved("HearsTheLibrarysCleanUp", oHow);
    EXPECT_EQ("", oCancelled.sOutput);
    EXPECT_EQ(0, oCancelled.nExitCode);

    oHow.aAnswers = {eUserNo};
    EXPECT_EQ(0u, RunObserved("HearsTheLibrarysCleanUp", oHow).sOutput.find("removing a class; "));
}

TEST(TOVAlternateAssertTest, AnyOtherAnswerIsFalseAlsoWithADebugger)
{
    for (const bool bDebugger : {false, true})
    {
        const sObservedChild oChild = AskAlternately({eUserOther}, 1, bDebugger);
        EXPECT_EQ("heard nCount > 0 at File 148; false; clean-up; ", oChild.sOutput);
        EXPECT_EQ(1u, oChild.aBoxes.size());
    }
}

TEST(TOVAlternateAssertTest, WithNobodyToAskItIsFalse)
{
    const sObservedChild oChild = AskAlternately({}, 1);

    EXPECT_EQ("heard nCount > 0 at File 148; false; clean-up; ", oChild.sOutput);
    EXPECT_EQ(0, oChild.nExitCode);
}

// Settled: the text is static, and every call appends the whole question once more.
TEST(TOVAlternateAssertTest, RepeatsTheQuestionInTheSecondBox)
{
    const sObservedChild oChild = AskAlternately({eUserYes, eUserYes}, 2);

    ASSERT_EQ(2u, oChild.aBoxes.size());
    EXPECT_EQ(Question(), oChild.aBoxes[0].sText);
    EXPECT_EQ(Question() + Question(), oChild.aBoxes[1].sText);
}

TEST(TOVAlternateAssertTest, StopsGrowingWhenItsBufferIsFull)
{
    const sObservedChild oChild = AskAlternately({eUserYes, eUserYes, eUserYes, eUserYes}, 4);

    ASSERT_EQ(4u, oChild.aBoxes.size());
    const std::string sFull = (Question() + Question() + Question()).substr(0, 1023);
    EXPECT_EQ(sFull, oChild.aBoxes[2].sText);
    EXPECT_EQ(sFull, oChild.aBoxes[3].sText);
    EXPECT_EQ(0, oChild.nExitCode);
}

TOV_CHILD(Panics)
{
    TellCleanUp();
    std::atexit([] { Say("exit"); });
    MakeImmortal<CWitness>();
    try
    {
        TOVPanic("Folder/File.cpp", 148, "%s after %d of %.1f", "lost", 7, 9.5);
    }
    catch (...)
    {
        Say("thrown");
    }
}

TEST(TOVPanicTest, TellsTheListenersAndExitsWithCleanUp)
{
    const sObservedChild oChild = RunObserved("Panics", WithAnswers({eUserOk}));

    EXPECT_EQ(FAILED_EXIT, oChild.nExitCode);
    EXPECT_EQ("panic lost after 7 of 9.5 at Folder/File.cpp 148; exit; clean-up; ", oChild.sOutput);
}

TEST(TOVPanicTest, ShowsTheMessageInABoxWithOneButton)
{
    const sObservedChild oChild = RunObserved("Panics", WithAnswers({eUserOk}));

    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("Critical Application Error", oChild.aBoxes[0].sCaption);
    EXPECT_EQ("Folder/File.cpp(148) : lost after 7 of 9.5", oChild.aBoxes[0].sText);
    EXPECT_EQ("OK", oChild.aBoxes[0].sButtons);
}

// The logger is the first listener, so that the others hear of it when the box has been closed.
TEST(TOVPanicTest, WaitsForTheUser)
{
    const sObservedChild oChild = RunObserved("Panics", WithAnswers({eUserOk}));

    ASSERT_EQ(1u, oChild.aBoxes.size());
    EXPECT_EQ("", oChild.aBoxes[0].sSaid);
    EXPECT_NE("", oChild.sOutput);
}

TEST(TOVPanicTest, EndsTheProcessAlsoWithNobodyToTell)
{
    const sObservedChild oChild = RunObserved("Panics", sObservation());

    EXPECT_EQ(FAILED_EXIT, oChild.nExitCode);
    EXPECT_NE(std::string::npos, oChild.sOutput.find("clean-up; ")) << oChild.sOutput;
}
