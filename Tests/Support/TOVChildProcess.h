// How a test starts programs as child processes; the test program itself can be one of them.
#pragma once

#include "Support/TOVTestSupport.h"

#include <chrono>
#include <map>
#include <optional>

// A child process that has not ended by then is ended from outside.
constexpr std::chrono::seconds CHILD_DEADLINE(240);

// Environment variables by name. A variable without a value does not exist.
typedef std::map<std::string, std::optional<std::string>> tVariables;

// These variables switch the leak check of the sanitizers off. A program that ends in the middle of its work does
// not release its memory, which is not a leak of the library.
extern const tVariables NO_LEAK_CHECK;

// A program, and the conditions under which it is started.
struct sProgram
{
    std::vector<std::string> aCommand; // full path and arguments
    std::string sFolder;               // its current folder; empty: the one of this process
    tVariables aVariables;             // what differs from the environment of this process
};

// The full path of the running test program, and that of another file in its folder.
std::string PathOfThisProgram();
std::string PathBesideThisProgram(const std::string& sName);

// This test program, which runs a scenario that is defined with TOV_CHILD. The leak check is off.
sProgram ScenarioProgram(const std::string& sScenario, const std::vector<std::string>& aArguments = {});

// Where the standard error of a program goes.
enum eErrors
{
    eErrorsAmongOutput,
    eErrorsApart
};

// Runs a program to its end, with pipes as its standard output and error. At the deadline the program is ended, and
// "<deadline passed>" follows what it has written. Throws std::runtime_error if no process can be started.
sChildResult RunProgram(const sProgram& oProgram, eErrors eWhere = eErrorsAmongOutput);

// Prepares this process, which may be meant to crash: no dialog, no core file, and no debugger that waits.
void PrepareChild();
