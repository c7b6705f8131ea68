// A child process with a user and a debugger. Both are real for the child: the instrument plays them with the means of
// the system.
#pragma once

#include <string>
#include <vector>

// What the user does with a box. eUserOther is an answer that is none of the three of a question.
enum eUserAnswer
{
    eUserOk,
    eUserYes,
    eUserNo,
    eUserCancel,
    eUserOther
};

// A box that was shown. On Windows it is a real message box, found and answered from another process; on Posix the user
// sits at the child's controlling terminal, a pseudo-terminal.
struct sShownBox
{
    std::string sCaption;
    std::string sText;
    std::string sButtons; // "Yes No Cancel" or "OK"
    std::string sSaid;    // standard output until the answer, which comes a while after the box
};

struct sObservation
{
    bool bDebugger = false;              // a debugger is attached from the start
    std::vector<eUserAnswer> aAnswers;   // to the boxes, in their order; if there are none, there is no user
    std::vector<std::string> aArguments; // for the scenario
};

struct sObservedChild
{
    int nExitCode;                           // the same as in sChildResult
    std::string sOutput;                     // standard output
    std::vector<std::string> aDebuggerTexts; // each piece that the debugger was given, and on Posix without a debugger
                                             // each piece that came out of standard error
    std::vector<sShownBox> aBoxes;
};

// Runs a scenario, defined with TOV_CHILD, and waits for its end under a deadline. Boxes beyond the answers are closed
// as eUserOther closes them.
sObservedChild RunObserved(const std::string& sScenario, const sObservation& oHow);
