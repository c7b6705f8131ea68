// Starts programs. The instruments for child processes, for terminals and for observed children are made of this.
#pragma once

#include "Support/TOVChildProcess.h"

#include <functional>
#include <sys/types.h>

// Owns an open descriptor and closes it at the end.
class CDescriptor
{
public:
    explicit CDescriptor(int nDescriptor = -1) : m_nDescriptor(nDescriptor) {}
    ~CDescriptor() { Set(-1); }
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    // Closes the descriptor that it owns, and owns this one from now on; -1 stands for none.
    void Set(int nDescriptor);

    int Get() const { return m_nDescriptor; }

private:
    int m_nDescriptor;
};

// A pipe. A program inherits an end only as one of its standard streams.
struct sPipe
{
    sPipe();

    CDescriptor oRead;
    CDescriptor oWrite;
};

// Appends what can be read, at most so many bytes, and waits if there is nothing yet. Returns false at the end.
bool ReadSome(int nDescriptor, std::string& sText, std::size_t nBytes = 65536);

// What a new process has from its beginning.
struct sStart
{
    // Its standard streams; -1 stands for /dev/null.
    int nInput = -1;
    int nOutput = -1;
    int nErrors = -1;

    bool bOwnSession = false; // it is cut off from the terminal of this process
    std::string sTerminal;    // controls its own session, and stands in the place of /dev/null above; empty: none

    std::function<void()> fnInChild; // the new process calls this before it becomes the program
};

// Starts a program and returns its process. A program that cannot be started ends with exit code 97 or 98.
pid_t StartProgram(const sProgram& oProgram, const sStart& oStart);

// The exit code that a status of waitpid holds, or -1 if a signal ended the process.
int ExitCodeOf(int nStatus);

// Waits without a deadline for the end of a process, and returns its exit code, or -1 if a signal ended it.
int WaitForExitCode(pid_t nProcess);

// Does the same as RunProgram, but the new process calls fnInChild before it becomes the program.
sChildResult RunProgramAfter(const std::function<void()>& fnInChild, const sProgram& oProgram, eErrors eWhere);
