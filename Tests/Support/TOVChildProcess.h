// Programs that a test starts as child processes, this test program among them.
#pragma once

#include "Support/TOVTestSupport.h"

#include <chrono>
#include <map>
#include <optional>

// Every child process is ended from outside when it has not come to its end by then.
constexpr std::chrono::seconds CHILD_DEADLINE(240);

// Environment variables: the value, or nothing for a variable that does not exist.
typedef std::map<std::string, std::optional<std::string>> tVariables;

// The sanitizers' leak check is off. A program that ends in the middle of things leaves memory behind, which is no leak
// of the library.
extern const tVariables NO_LEAK_CHECK;

// How a program is started.
struct sProgram
{
    std::vector<std::string> aCommand; // full path and arguments
    std::string sFolder;               // its current folder; empty: the one of this process
    tVariables aVariables;             // what differs from the environment of this process
};

// Full path of the running test program, and of another file in its folder.
std::string PathOfThisProgram();
std::string PathBesideThisProgram(const std::string& sName);

// This test program as it runs a scenario that is defined with TOV_CHILD, without leak check.
sProgram ScenarioProgram(const std::string& sScenario, const std::vector<std::string>& aArguments = {});

// Where a program's standard error goes.
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
