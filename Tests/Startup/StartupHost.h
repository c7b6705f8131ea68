// What the host program does while the library is loaded and unloaded: it tells a debugger of everything that it is
// asked for, in children that were told to.
#pragma once

#include "Debug/TOVDebuggerLines.h"

// What a debugger hears from a child that tells, and runs the scenario.
sDebuggerTexts ObserveTelling(const std::string& sScenario);

// Starts and ends the telling in the children that are started from now on. They may use the library as well.
class CTellingChildren
{
public:
    explicit CTellingChildren(bool bUsing = false);
    ~CTellingChildren();
    CTellingChildren(const CTellingChildren&) = delete;
    CTellingChildren& operator=(const CTellingChildren&) = delete;
};

// Whether this process is such a child. The function can be called before the program's statics are made and after they
// are gone.
bool IsTelling();
bool IsUsing();

// Hands a line to the debugger without the library's help.
void TellDebugger(const char* szLine);
